#include "ado/PendingRows.h"
#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace ADODB;

// The model: for each row its kind and what its changed columns were.
TEST(PendingRows, BehaveAsAMapUnderRandomEdits)
{
    std::mt19937 random(7);
    std::vector<ColumnStore> stores;
    stores.emplace_back(adInteger);
    stores.emplace_back(adVarWChar);
    stores.emplace_back(adDouble);
    constexpr std::uint32_t count = 5000;
    for (std::uint32_t row = 0; row < count; ++row) {
        stores[0].AppendInt64(row);
        stores[1].Append(row % 3 == 0 ? Value() : Value(QStringLiteral("text %1").arg(row)));
        stores[2].AppendDouble(row / 3.0);
    }
    struct Model
    {
        PendingRows::Kind kind = PendingRows::Modified;
        std::map<size_t, Value> originals;
    };
    std::map<std::uint32_t, Model> model;
    PendingRows pending;
    for (int step = 0; step < 20000; ++step) {
        const std::uint32_t row = random() % count;
        const auto found = model.find(row);
        if (random() % 4 == 0) {
            pending.Erase(row);
            model.erase(row);
        } else if (random() % 5 == 0 && (found == model.end() || found->second.kind == PendingRows::Modified)) {
            pending.Delete(row, stores);
            model[row].kind = PendingRows::Deleted;
        } else if (found == model.end() || found->second.kind == PendingRows::Modified) {
            std::vector<bool> columns;
            for (size_t i = 0; i < 3; ++i)
                columns.push_back(random() % 2 == 0);
            pending.Modify(row, columns, stores);
            Model &edited = model[row];
            for (size_t i = 0; i < 3; ++i) {
                if (!columns[i])
                    continue;
                edited.originals.emplace(i, stores[i].At(row)); // the first one stays
                stores[i].Set(row, i == 1 ? Value(QStringLiteral("step %1").arg(step)) : Value(step));
            }
        }
    }
    ASSERT_GT(model.size(), 1000u);
    EXPECT_EQ(pending.Count(), qint64(model.size()));
    const std::vector<std::uint32_t> rows = pending.Rows();
    ASSERT_EQ(rows.size(), model.size());
    size_t index = 0;
    for (const auto &[row, one] : model) {
        EXPECT_EQ(rows[index++], row);
        ASSERT_EQ(pending.KindOf(row), one.kind);
        for (size_t i = 0; i < 3; ++i) {
            qint64 place = 0;
            const ColumnStore *const was = pending.Original(row, i, place);
            ASSERT_EQ(was != nullptr, one.originals.contains(i));
            ASSERT_EQ(pending.Has(row, i), one.originals.contains(i));
            if (was) {
                ASSERT_EQ(was->At(place), one.originals.at(i));
            }
        }
    }
    for (const std::uint32_t row : rows)
        pending.Erase(row);
    EXPECT_EQ(pending.Count(), 0);
    EXPECT_EQ(pending.KindOf(rows.front()), PendingRows::None);
}

TEST(PendingRows, AnInsertedRowKnowsWhichColumnsWereSet)
{
    PendingRows pending;
    pending.Insert(3, {true, false, false});
    pending.Modify(3, {false, false, true}, {});
    EXPECT_EQ(pending.KindOf(3), PendingRows::Inserted);
    EXPECT_TRUE(pending.Has(3, 0) && !pending.Has(3, 1) && pending.Has(3, 2));
    qint64 place = 0;
    EXPECT_EQ(pending.Original(3, 0, place), nullptr);
    pending.Clear();
    EXPECT_EQ(pending.KindOf(3), PendingRows::None);
}
