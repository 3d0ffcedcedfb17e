// Hierarchies of a grid with chapters in any place and many rows: what is shown, against a plain walk over the family.
#include "MakeRecordset.h"
#include "ado/shape/ShapeChapters.h"
#include "controls/FlexGrid.h"
#include "tests/support/Text.h"
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <random>

using namespace ADODB;

namespace {

RecordsetPtr Kids(const QString &name, const QStringList &texts)
{
    QList<QStringList> rows;
    for (const QString &text : texts)
        rows << QStringList{text};
    return MakeTexts({name}, rows);
}

// id, chapter "a", name, chapter "b": two rows.
RecordsetPtr TwoChapters()
{
    std::vector<ColumnInfo> columns{NamedColumn(S("id"), adVarWChar), NamedColumn(S("a"), adChapter),
                                    NamedColumn(S("name"), adVarWChar), NamedColumn(S("b"), adChapter)};
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : columns)
        stores.emplace_back(column.Type);
    const auto row = [&](const char *id, const char *name, const QStringList &a, const QStringList &b) {
        stores[0].Append(S(id));
        stores[1].Append(Value(Chapter(Kids(S("A"), a))));
        stores[2].Append(S(name));
        stores[3].Append(Value(Chapter(Kids(S("B"), b))));
    };
    row("1", "one", {S("a1"), S("a2")}, {S("b1")});
    row("2", "two", {}, {S("b2")});
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

QString ShownRows(const FlexGrid &grid)
{
    QStringList rows;
    for (qint64 row = 0; row < grid.Rows(); ++row) {
        QStringList cells;
        for (int col = 1; col < grid.Cols(); ++col)
            cells += grid.TextMatrix(row, col);
        rows += cells.join(u':');
    }
    return rows.join(u' ');
}

} // namespace

// The first of two chapters used to be shown as an empty column, and only the last one opened.
TEST(FlexGridChapters, EachIsABandAndNoneAColumn)
{
    FlexGrid grid;
    grid.SetDataSource(TwoChapters());
    EXPECT_EQ(grid.Bands(), 3);
    EXPECT_EQ(grid.Cols(), 3);
    EXPECT_EQ(ShownRows(grid), S("id:name 1:one 2:two"));
    grid.ExpandAll();
    EXPECT_EQ(ShownRows(grid), S("id:name 1:one A: a1: a2: B: b1: 2:two B: b2:"));
    EXPECT_EQ(grid.BandLevel(2), 1);
    EXPECT_EQ(grid.BandLevel(6), 2);
    EXPECT_EQ(grid.ColHeaderCaption(1, 1), S("A"));
    EXPECT_EQ(grid.ColHeaderCaption(2, 1), S("B"));
    EXPECT_EQ(grid.ColHeaderCaption(0, 2), S("name"));
    EXPECT_EQ(grid.BandIndent(2), 3);
    grid.SetFixedRows(0);
    grid.SetRow(7);
    grid.SetCol(2);
    grid.SetSort(flexSortGenericDescending);
    EXPECT_EQ(ShownRows(grid), S("id:name 2:two B: b2: 1:one A: a1: a2: B: b1:"));
    EXPECT_TRUE(grid.IsExpanded(1));
    grid.resize(300, 300);
    EXPECT_FALSE(grid.grab().isNull());
}

namespace {

// A family as anybody would write it down.
struct Person
{
    QString text;
    bool open = false;
    std::vector<std::vector<Person>> chapters;
};

void Show(const std::vector<Person> &people, bool names, const QString &head, QStringList &rows)
{
    if (names)
        rows += head;
    for (const Person &person : people) {
        rows += person.text;
        if (person.open)
            for (size_t i = 0; i < person.chapters.size(); ++i)
                if (!person.chapters[i].empty())
                    Show(person.chapters[i], true, head + QString::number(i), rows);
    }
}

RecordsetPtr RowsOf(const std::vector<Person> &people, int chapters, const QString &head)
{
    std::vector<ColumnInfo> columns{NamedColumn(head, adVarWChar)};
    for (int i = 0; i < chapters; ++i)
        columns.push_back(NamedColumn(S("c%1").arg(i), adChapter));
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : columns)
        stores.emplace_back(column.Type);
    for (const Person &person : people) {
        stores[0].Append(person.text);
        for (int i = 0; i < chapters; ++i)
            stores[size_t(i) + 1].Append(
                Value(Chapter(RowsOf(person.chapters[size_t(i)], chapters - 1, head + QString::number(i)))));
    }
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

// The person that a row of the view is; null for a row of names.
Person *PersonAt(std::vector<Person> &people, qint64 &row)
{
    if (row-- == 0)
        return nullptr;
    for (Person &person : people) {
        if (row-- == 0)
            return &person;
        if (person.open)
            for (auto &chapter : person.chapters) {
                if (chapter.empty())
                    continue;
                if (Person *found = PersonAt(chapter, row))
                    return found;
                if (row < 0)
                    return nullptr;
            }
    }
    return nullptr;
}

void SetAll(std::vector<Person> &people, bool open)
{
    for (Person &person : people) {
        bool below = false;
        for (auto &chapter : person.chapters) {
            below = below || !chapter.empty();
            SetAll(chapter, open);
        }
        person.open = open && below;
    }
}

} // namespace

TEST(FlexGridChapters, OpenAndCloseAsAPlainWalkSays)
{
    std::mt19937 dice(5);
    const auto roll = [&](int most) { return int(dice() % unsigned(most)); };
    for (int round = 0; round < 30; ++round) {
        int number = 0;
        const std::function<std::vector<Person>(int, int)> make = [&](int count, int levels) {
            std::vector<Person> people;
            for (int i = 0; i < count; ++i) {
                Person person{S("p%1").arg(++number), false, {}};
                for (int chapter = 0; chapter < levels; ++chapter)
                    person.chapters.push_back(make(roll(4), levels - 1));
                people.push_back(std::move(person));
            }
            return people;
        };
        std::vector<Person> family = make(2 + roll(8), 2);
        family[0].chapters = {make(2, 1), make(2, 1)}; // so that every band is there
        for (auto &chapter : family[0].chapters)
            chapter[0].chapters = {make(1, 0)};
        FlexGrid grid;
        grid.SetDataSource(RowsOf(family, 2, S("h")));
        for (int step = 0; step < 60; ++step) {
            const int what = roll(20);
            if (what == 0) {
                grid.ExpandAll();
                SetAll(family, true);
            } else if (what == 1) {
                grid.CollapseAll();
                SetAll(family, false);
            } else if (what == 2) {
                const bool down = roll(2) == 0;
                grid.SetFixedRows(0);
                grid.SetRow(1);
                grid.SetCol(1);
                grid.SetSort(down ? flexSortGenericDescending : flexSortGenericAscending);
                std::stable_sort(family.begin(), family.end(), [down](const Person &a, const Person &b) {
                    return down ? a.text > b.text : a.text < b.text;
                });
            } else {
                const qint64 row = roll(int(grid.Rows()));
                qint64 rest = row;
                Person *const person = PersonAt(family, rest);
                const bool below = person && std::any_of(person->chapters.begin(), person->chapters.end(),
                                                         [](const auto &chapter) { return !chapter.empty(); });
                ASSERT_EQ(grid.CanExpand(row), below);
                if (person && person->open) {
                    ASSERT_TRUE(grid.IsExpanded(row));
                    grid.Collapse(row);
                    person->open = false;
                    for (auto &chapter : person->chapters)
                        SetAll(chapter, false);
                } else if (below) {
                    grid.Expand(row);
                    person->open = true;
                }
            }
            QStringList wanted;
            Show(family, true, S("h"), wanted);
            QStringList got;
            for (qint64 row = 0; row < grid.Rows(); ++row)
                got += grid.TextMatrix(row, 1);
            ASSERT_EQ(got.join(u' ').toStdString(), wanted.join(u' ').toStdString()) << round << ' ' << step;
        }
    }
}

TEST(FlexGridChapters, RowsAreTakenAwayAddedAndCut)
{
    FlexGrid grid;
    grid.SetDataSource(TwoChapters());
    grid.ExpandAll();
    grid.SetTextMatrix(3, 1, S("mine"));
    grid.RemoveItem(2);
    EXPECT_EQ(ShownRows(grid), S("id:name 1:one mine: a2: B: b1: 2:two B: b2:"));
    grid.AddItem(S("\tnew"));
    EXPECT_EQ(grid.TextMatrix(grid.Rows() - 1, 1), S("new"));
    grid.AddItem(S("\tfirst"), 1);
    EXPECT_EQ(ShownRows(grid), S("id:name first: 1:one mine: a2: B: b1: 2:two B: b2: new:"));
    grid.SetRows(6);
    EXPECT_EQ(ShownRows(grid), S("id:name first: 1:one mine: a2: B:"));
    grid.Collapse(2);
    EXPECT_EQ(ShownRows(grid), S("id:name first: 1:one"));
    grid.Expand(2); // what was taken away of the view is in the recordset still
    EXPECT_EQ(grid.Rows(), 3 + 5);
    grid.SetRows(0);
    EXPECT_EQ(grid.Rows(), 0);
    grid.SetRows(2);
    EXPECT_FALSE(grid.grab().isNull());
}

TEST(FlexGridChapters, HeightsAndTheCurrentRowGoWithTheirRows)
{
    FlexGrid grid;
    grid.SetDataSource(TwoChapters());
    grid.SetRow(2);
    grid.SetRowHeight(2, 500);
    QSignalSpy changed(&grid, &FlexGrid::DataChanged);
    grid.ExpandAll();
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(grid.Row(), 7);
    EXPECT_EQ(grid.RowHeight(7), 500);
    grid.SetSort(flexSortGenericDescending);
    EXPECT_EQ(grid.RowHeight(1), 500);
    grid.CollapseAll();
    EXPECT_EQ(grid.RowHeight(1), 500);
    EXPECT_EQ(grid.RowHeight(2), grid.DefaultRowHeight());
}

// Opening all took time in the square of the rows: this one would not have come to its end.
TEST(FlexGridChapters, AHundredThousandParentsOpen)
{
    constexpr qint64 parents = 100000, kids = 300000;
    ShapeGroups groups;
    std::vector<ColumnStore> stores;
    stores.emplace_back(adInteger);
    for (qint64 kid = 0; kid < kids; ++kid) {
        stores[0].AppendInt64(kid);
        groups.Rows.push_back(quint32(kid));
    }
    RecordsetPtr whole = Recordset::FromColumns({NamedColumn(S("kid"), adInteger)}, std::move(stores));
    std::vector<ColumnStore> top;
    top.emplace_back(adInteger);
    for (qint64 parent = 0; parent < parents; ++parent) {
        top[0].AppendInt64(parent);
        groups.OfParent.push_back(quint32(parent));
        groups.Starts.push_back(quint32(parent * 3));
    }
    groups.Starts.push_back(quint32(kids));
    top.emplace_back(std::make_shared<MatchedChapters>(std::move(whole), std::move(groups)), parents);
    FlexGrid grid;
    grid.resize(300, 300);
    grid.SetDataSource(
        Recordset::FromColumns({NamedColumn(S("id"), adInteger), NamedColumn(S("c"), adChapter)}, std::move(top)));
    grid.ExpandAll();
    EXPECT_EQ(grid.Rows(), 1 + parents + parents + kids);
    EXPECT_EQ(grid.TextMatrix(grid.Rows() - 1, 1), QString::number(kids - 1));
    EXPECT_EQ(grid.TextMatrix(1 + 5 * 50000, 1), S("50000"));
    EXPECT_EQ(grid.TextMatrix(1 + 5 * 50000 + 2, 1), S("150000"));
    grid.SetTopRow(200000);
    EXPECT_FALSE(grid.grab().isNull());
    for (qint64 row = 1 + 5 * (parents - 1); row > 0; row -= 5)
        grid.Collapse(row); // each, from the last to the first
    EXPECT_EQ(grid.Rows(), 1 + parents);
}

// The recordset is not the grid's: rows may go while they are shown, with what is open below them.
TEST(FlexGridChapters, RowsThatHaveGoneAreEmptyAndDoNotOpen)
{
    auto made = std::make_shared<MadeUpRows>();
    made->Columns = {NamedColumn(S("id"), adInteger), NamedColumn(S("c"), adChapter)};
    made->Below = {nullptr, std::make_shared<MadeUpRows>()};
    made->Below[1]->Columns = {NamedColumn(S("kid"), adInteger)};
    made->Below[1]->Below = {nullptr};
    const RecordsetPtr rows = made->NewRecordset();
    for (int row = 1; row <= 2; ++row) {
        rows->AddNew();
        rows->Fields()[0].SetValue(row);
        rows->Update();
        const RecordsetPtr kids = *rows->Fields()[1].GetValue().As<Chapter>();
        kids->AddNew();
        kids->Fields()[0].SetValue(10 * row);
        kids->Update();
    }
    FlexGrid grid;
    grid.resize(300, 300);
    grid.SetDataSource(rows);
    grid.Expand(1);
    EXPECT_EQ(ShownRows(grid), S("id 1 kid 10 2"));
    rows->MoveFirst();
    rows->Delete();
    rows->MoveFirst();
    rows->Delete();
    EXPECT_FALSE(grid.CanExpand(1));
    EXPECT_FALSE(grid.CanExpand(4));
    grid.ExpandAll();
    EXPECT_EQ(grid.TextMatrix(4, 1), QString());
    EXPECT_FALSE(grid.grab().isNull());
    grid.Collapse(1);
    EXPECT_EQ(grid.Rows(), 3);
}
