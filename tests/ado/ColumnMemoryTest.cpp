// A column whose memory ends in the middle of a value, and the bytes that it counts.
#include "ado/ColumnStore.h"
#include "tests/ado/FailingNew.h"
#include <gtest/gtest.h>
#include <vector>

using namespace ADODB;

namespace {

const std::vector<Value> &Values()
{
    static const std::vector<Value> values = {Value(),
                                              Value(true),
                                              Value(qint64(7)),
                                              Value(2.5),
                                              Value(Decimal{"-12.3400"}),
                                              Value(QStringLiteral("short")),
                                              Value(QString(100'000, u'x')),
                                              Value(QByteArray("\x00\x01", 2)),
                                              Value(QByteArray(100'000, 'y')),
                                              Value(Date{2024, 2, 29}),
                                              Value(Time{1, 2, 3, 4}),
                                              Value(Timestamp{{2024, 2, 29}, {1, 2, 3, 0}}),
                                              Value(Date{-44, 3, 15})};
    return values;
}

constexpr DataTypeEnum kTypes[] = {adBigInt, adUnsignedBigInt, adDouble, adBoolean,     adNumeric, adVarWChar,
                                   adBinary, adDBDate,         adDBTime, adDBTimeStamp, adVariant};

// Nobody noticed when what had been put into a store already was not taken back: every later row of the column showed
// the value of the row before it.
TEST(ColumnMemory, AValueForWhichThereIsNoMemoryLeavesTheColumnAsItWas)
{
    int failed = 0;
    for (const DataTypeEnum type : kTypes) {
        ColumnStore store(type);
        std::vector<Value> kept;
        for (const Value &value : Values()) {
            for (int at = 0;; ++at) {
                bool done = false;
                try {
                    const failing_new::Guard failing(at);
                    store.Append(value);
                    done = true;
                } catch (const std::bad_alloc &) {
                    ++failed;
                }
                if (done)
                    break;
                ASSERT_EQ(store.Size(), qint64(kept.size())) << type;
            }
            kept.push_back(store.At(store.Size() - 1));
            EXPECT_EQ(kept.back().ToText(), value.ToText()) << type;
            ASSERT_EQ(store.Size(), qint64(kept.size())) << type;
            for (size_t row = 0; row < kept.size(); ++row)
                ASSERT_EQ(store.At(qint64(row)), kept[row]) << type << " " << row;
        }
    }
    EXPECT_GT(failed, 50); // it did run out, again and again
}

TEST(ColumnMemory, ValuesOfAnyTypeAreCounted)
{
    ColumnStore any(adVariant);
    const qint64 before = any.BytesHeld();
    for (int i = 0; i < 10; ++i)
        any.Append(QString(50'000, u'x')); // two bytes a character
    EXPECT_GE(any.BytesHeld() - before, 10 * 2 * 50'000);
    EXPECT_LE(any.BytesHeld() - before, 10 * 2 * 50'000 * 11 / 10);
}

} // namespace
