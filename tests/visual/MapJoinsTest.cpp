#include "tests/support/Text.h"
#include "visual/logic/JoinClause.h"
#include "visual/logic/JoinEnds.h"
#include "visual/logic/MapLinks.h"

#include <gtest/gtest.h>

#include <random>

namespace {

MapJoin Join(const char *left, const char *kind, const char *right)
{
    return {S(left), 1, S("a"), S(kind), S(right), 2, S("b"), 0};
}

struct Web
{
    MapTables tables;
    MapJoins joins;
    QStringList unreadable, told;
    MapLinker linker{tables, joins,
                     [this](const QString &name) {
                         return tables.AddTable(name, unreadable.contains(name) ? QStringList() : QStringList{S("ID")},
                                                {});
                     },
                     [this](const MapJoin &row) { told += row.Table1 + u'.' + row.Field1; }, nullptr};
};

} // namespace

TEST(MapJoins, StandTwiceWhenTheyAreMadeTwice)
{
    MapJoins joins;
    EXPECT_EQ(joins.Add(Join("A", "Inner Join", "B")), 1);
    EXPECT_EQ(joins.Add(Join("A", "Inner Join", "B")), 2);
    EXPECT_TRUE(joins.JoinExists(S("A"), S("a"), S("B"), S("b")));
    EXPECT_FALSE(joins.JoinExists(S("B"), S("b"), S("A"), S("a"))); // the other direction is another join
    EXPECT_EQ(joins.GetJoinStatement(false), S("A.a = B.b\r\n AND A.a = B.b"));
}

TEST(MapJoins, LeaveAGapInTheNumbersOfTheLayers)
{
    MapJoins joins;
    for (int i = 0; i < 3; ++i)
        joins.Add(Join("A", "Inner Join", "B"));
    EXPECT_TRUE(joins.Remove(2));
    EXPECT_FALSE(joins.Remove(2));
    EXPECT_EQ(joins.OfLayer(2), nullptr);
    EXPECT_EQ(joins.Add(Join("A", "Inner Join", "B")), 4);
    joins.Remove(4);
    EXPECT_EQ(joins.Add(Join("A", "Inner Join", "B")), 4); // the highest is used again
    joins.Clear();
    EXPECT_EQ(joins.LayerUBound(), 0);
}

TEST(MapJoins, SayFalseWhereTheNotationHasNoWords)
{
    MapJoins joins;
    EXPECT_EQ(joins.GetJoinStatement(false), QString());
    joins.Add(Join("A", "Left Join", "B C"));
    joins.Add(Join("A", "Right Join", "B C"));
    joins.Add(Join("A", "", "B C"));
    joins.Add(Join("A", "Inner Join", "B C"));
    EXPECT_EQ(joins.GetJoinStatement(false), S("False\r\n AND A.a =* [B C].b\r\n AND \r\n AND A.a = [B C].b"));
    EXPECT_EQ(joins.GetJoinStatement(true), S("A.a = [B C].b (+)\r\n AND False\r\n AND \r\n AND A.a = [B C].b"));
}

TEST(MapJoins, BringNoSeparatorBehindAnEmptyBeginning)
{
    MapJoins joins;
    joins.Add(Join("A", "Cross Join", "B"));
    joins.Add(Join("A", "Inner Join", "B"));
    EXPECT_EQ(joins.GetJoinStatement(false), S("A.a = B.b"));
}

TEST(MapJoins, GoByNameWithATableAndSoWithAllItsCopies)
{
    MapJoins joins;
    joins.Add(Join("A", "Inner Join", "B"));
    joins.Add(Join("C", "Inner Join", "A"));
    joins.Add(Join("A_Copy1", "Inner Join", "B")); // edited: it bears the alias, and stays
    EXPECT_EQ(joins.RemoveOfTable(S("A")), (std::vector<int>{1, 2}));
    EXPECT_EQ(joins.Rows().size(), 1u);
    EXPECT_EQ(joins.OfLayer(3)->Table1, S("A_Copy1"));
}

TEST(MapLinks, BringEachKeyOnceHoweverOftenTheyAreAsked)
{
    Web web;
    const ForeignKeyRow keys[] = {{S("P"), S("a"), S("C"), S("x")},
                                  {S("P"), S("b"), S("C"), S("y")}, // the key's second column
                                  {S("C"), S("a"), S("C"), S("up")}};
    web.linker.AddAll(keys);
    web.linker.AddAll(keys);
    EXPECT_EQ(web.joins.Rows().size(), 3u);
    EXPECT_EQ(web.tables.Numbers().size(), 2u);
    EXPECT_EQ(web.told, (QStringList{S("P.a"), S("P.b"), S("C.a")}));
    EXPECT_EQ(web.joins.Rows()[2].Table1Index, web.joins.Rows()[2].Table2Index);
}

TEST(MapLinks, PassOverAKeyOntoATableThatCannotBeRead)
{
    Web web;
    web.unreadable = {S("Secret")};
    const ForeignKeyRow keys[] = {{S("P"), S("a"), S("Secret"), S("x")}, {S("P"), S("a"), S("C"), S("x")}};
    web.linker.AddAll(keys);
    ASSERT_EQ(web.joins.Rows().size(), 1u);
    EXPECT_EQ(web.joins.Rows()[0].Table2, S("C"));
    web.tables.CurrentTable = 1;
    web.linker.AddLinked(keys); // the row would have joined the table with itself
    ASSERT_EQ(web.joins.Rows().size(), 2u);
    EXPECT_EQ(web.joins.Rows()[1].Table2Index, 3);
}

TEST(MapLinks, BringANewTableForEachKeyOfTheCurrentOne)
{
    Web web;
    web.linker.AddTable(S("Child"));
    const ForeignKeyRow keys[] = {{S("Parent"), S("ID"), S("Child"), S("P1")},
                                  {S("Parent"), S("ID"), S("Child"), S("P2")},
                                  {S("Other"), S("ID"), S("Parent"), S("O")}};
    web.linker.AddLinked(keys);
    EXPECT_EQ(web.tables.GetTableList(), S("Child ,Parent ,Parent_Copy1"));
    EXPECT_EQ(web.told, (QStringList{S("Child.P1"), S("Child.P2")}));
    // The table's own number stays on the primary side.
    EXPECT_EQ(web.joins.Rows()[0].Table2Index, 1);
    EXPECT_EQ(web.joins.Rows()[0].Table1Index, 2);
}

TEST(MapLinks, DoNothingWithoutACurrentTableAndKeepWhatIsThereWhenStopped)
{
    Web web;
    const ForeignKeyRow keys[] = {{S("P"), S("a"), S("C"), S("x")}, {S("P"), S("a"), S("D"), S("x")}};
    web.linker.AddLinked(keys);
    EXPECT_EQ(web.tables.UBound(), 0);
    int asked = 0;
    web.linker.Stopped = [&] { return ++asked > 1; };
    web.linker.AddAll(keys);
    EXPECT_EQ(web.tables.GetTableList(), S("P ,C"));
    EXPECT_EQ(web.joins.Rows().size(), 1u);
}

TEST(MapLinks, RowsAndLayersStayTogetherOverARandomWalk)
{
    Web web;
    std::mt19937 random(3);
    const char *names[] = {"A", "B", "C", "D", "E"};
    int layers = 0;
    for (int step = 0; step < 10000; ++step) {
        const auto name = [&] { return S(names[random() % 5]); };
        const ForeignKeyRow key{name(), S("a"), name(), QString::number(random() % 4)};
        const int before = int(web.joins.Rows().size());
        switch (random() % 5) {
        case 0:
            web.linker.AddAll({&key, 1});
            break;
        case 1:
            web.linker.AddLinked({&key, 1});
            break;
        case 2:
            layers -= int(web.joins.RemoveOfTable(name()).size());
            web.tables.UnloadTable();
            break;
        case 3:
            layers -= web.joins.Remove(int(random() % 8)) ? 1 : 0;
            break;
        default:
            web.tables.CurrentTable = int(random() % 6);
        }
        layers += std::max(0, int(web.joins.Rows().size()) - before);
        ASSERT_EQ(int(web.joins.Rows().size()), layers);
        for (const MapJoin &row : web.joins.Rows())
            ASSERT_EQ(web.joins.OfLayer(row.Index), &row); // no number twice
        if (web.tables.UBound() > 60) {
            web.tables.ClearMap();
            web.joins.Clear();
            layers = 0;
        }
    }
}

TEST(JoinEnds, UseTheLeftEdgeOfBothTablesAtTheSamePlace)
{
    const TableFrame table{100, 100, 1500, 2000}, below{100, 3000, 1000, 500};
    const JoinEnds ends = EndsOfJoin(table, {0, 200}, below, {0, 200}, S("Inner Join"), 8000, 6000);
    EXPECT_EQ(ends.X1, 100);
    EXPECT_EQ(ends.X2, 100);
    EXPECT_FALSE(ends.Swapped);
    EXPECT_EQ(ends.Lines()[1], QLineF(100, 300, 100, 3200));
}

TEST(JoinEnds, ShowTheOuterSideWhereItIsDrawn)
{
    const TableFrame left{0, 0, 1000, 1000}, right{4000, 0, 1000, 1000};
    const auto marker = [&](const TableFrame &first, const TableFrame &second, const char *kind) {
        return EndsOfJoin(first, {0, 200}, second, {0, 200}, S(kind), 8000, 6000).Marker;
    };
    EXPECT_EQ(marker(left, right, "Left Join"), u'L');
    EXPECT_EQ(marker(right, left, "Left Join"), u'R');
    EXPECT_EQ(marker(left, right, "Right Join"), u'R');
    EXPECT_EQ(marker(right, left, "Right Join"), u'L');
    EXPECT_EQ(marker(right, left, "Inner Join"), u'C');
}

TEST(JoinEnds, GoToTheEdgeOfTheTableForAFieldThatIsScrolledAway)
{
    const TableFrame left{0, 500, 1000, 1000}, right{4000, 500, 1000, 1000};
    const JoinEnds ends = EndsOfJoin(left, {-900, 200}, right, {1700, 200}, S("Inner Join"), 8000, 6000);
    EXPECT_EQ(ends.Y1, 500);
    EXPECT_EQ(ends.Y2, 1500);
}

TEST(JoinClause, TakesAStatementInSmallLettersOnlyWhereItComposes)
{
    JoinClause clause;
    clause.Previous = S("SELECT 1");
    clause.Table = S("SELECT 2");
    clause.Join = S("Cross Join");
    clause.Step = 3;
    EXPECT_EQ(clause.GetSQL(), S("SELECT 1 T4 Cross Join SELECT 2 T5"));
    EXPECT_EQ(clause.TableQuery(), S("SELECT * FROM (SELECT 2)TempTableX WHERE 1=0"));
    EXPECT_EQ(clause.PreviousQuery(), S("SELECT * FROM (SELECT 1) WHERE 1=0"));
}

TEST(JoinClause, ReadsFromTheTextThatTheServerWants)
{
    EXPECT_EQ(JoinFieldsQuery(S("other.a"), S("other.\"a\"")), S("SELECT * FROM other.\"a\" where 1=0"));
    EXPECT_FALSE(JoinFieldsQuery(S(" "), S("a")));
    JoinClause clause;
    clause.Previous = S("a b");
    clause.Table = S("c d");
    EXPECT_EQ(clause.PreviousQuery(S("(a b) x")), S("SELECT * FROM (a b) x WHERE 1=0"));
    EXPECT_EQ(clause.TableQuery(S("\"c d\"")), S("SELECT * FROM \"c d\" TempTableX WHERE 1=0"));
    clause.Previous = S("a");
    clause.Table = S("select 1");
    EXPECT_EQ(clause.PreviousQuery(S("\"a\"")), S("SELECT * FROM \"a\"  WHERE 1=0"));
    EXPECT_EQ(clause.TableQuery(S("x")), S("SELECT * FROM (select 1)TempTableX WHERE 1=0"));
}

TEST(JoinClause, ChoosesTheFirstPairInTheOrderOfTheFirstList)
{
    const std::optional<FieldMatch> match = FindMatch({S("x"), S("b"), S("a")}, {S("a"), S("B"), S("b")});
    ASSERT_TRUE(match);
    EXPECT_EQ(match->First, 1);
    EXPECT_EQ(match->Second, 2);
    EXPECT_FALSE(FindMatch({S("x")}, {S("X")}));
}
