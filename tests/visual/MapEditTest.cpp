#include "visual/logic/MapEdit.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

namespace {

class Edit : public testing::Test
{
protected:
    MapTables tables;
    MapJoins joins;
    JoinAnswer answer; // what the dialog gives
    std::vector<JoinQuestion> asked;
    QStringList told;
    MapEdit edit{tables, joins,
                 [this](const JoinQuestion &question) {
                     asked.push_back(question);
                     return answer;
                 },
                 [this](const JoinAnswer &made) {
                     told += made.Table1 + u'|' + made.Field1 + u'|' + made.Table2 + u'|' + made.Field2 + u'|' +
                             made.JoinType;
                 }};

    void SetUp() override
    {
        for (const char *name : {"Orders", "Orders", "Items"})
            tables.AddTable(S(name), {S("ID"), S("OrderID")}, {});
        tables.At(1)->Selected = 2; // ID, behind the star
    }
};

} // namespace

TEST_F(Edit, JoinsTheFieldsOfADirectDropAndTellsWithEmptyTexts)
{
    EXPECT_TRUE(edit.Drop(1, 3, 3));
    ASSERT_EQ(joins.Rows().size(), 1u);
    const MapJoin &row = joins.Rows()[0];
    EXPECT_EQ(row.Table1, S("Orders"));
    EXPECT_EQ(row.Field1, S("ID"));
    EXPECT_EQ(row.Operator, S("Inner Join"));
    EXPECT_EQ(row.Table2, S("Items"));
    EXPECT_EQ(row.Field2, S("OrderID"));
    EXPECT_EQ(row.Table1Index, 1);
    EXPECT_EQ(row.Table2Index, 3);
    EXPECT_EQ(told, QStringList{S("||||")});
    EXPECT_TRUE(asked.empty());
    EXPECT_TRUE(edit.Drop(1, 3, 3)); // twice: two joins
    EXPECT_EQ(joins.Rows().size(), 2u);
}

TEST_F(Edit, DoesNothingOnADropOntoItself)
{
    EXPECT_FALSE(edit.Drop(1, 1, 2));
    EXPECT_FALSE(edit.Drop(1, 1, 0));
    EXPECT_FALSE(edit.Drop(1, 9, 1));
    EXPECT_TRUE(joins.Rows().empty());
    EXPECT_TRUE(told.isEmpty());
    EXPECT_TRUE(asked.empty());
}

TEST_F(Edit, JoinsACopyOfTheTableToTheTable)
{
    EXPECT_TRUE(edit.Drop(1, 2, 2));
    EXPECT_EQ(joins.Rows()[0].Table2, S("Orders"));
    EXPECT_EQ(joins.Rows()[0].Table2Index, 2);
}

TEST_F(Edit, AsksWhereNoItemWasHit)
{
    answer = {false, S("Orders_Copy1"), S("ID"), S("Items"), S("OrderID"), S("Left Join")};
    EXPECT_TRUE(edit.Drop(2, 3, 0));
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].Table1, S("Orders"));
    EXPECT_EQ(asked[0].Name1, S("Orders_Copy1"));
    EXPECT_EQ(asked[0].Name2, S("Items"));
    EXPECT_TRUE(asked[0].FindMatch);
    EXPECT_EQ(joins.Rows()[0].Table1, S("Orders_Copy1")); // the alias, from the dialog
    EXPECT_EQ(joins.Rows()[0].Operator, S("Left Join"));
    EXPECT_EQ(told, QStringList{S("Orders_Copy1|ID|Items|OrderID|Left Join")});
}

TEST_F(Edit, TellsOfACancelledDialogWithEmptyTextsAndMakesNoJoin)
{
    answer = {true, S("Orders"), {}, S("Items"), {}, S("Inner Join")}; // OK with an empty list
    EXPECT_TRUE(edit.Drop(1, 3, 0));
    EXPECT_TRUE(joins.Rows().empty());
    EXPECT_EQ(told, QStringList{S("||||")});
}

TEST_F(Edit, ReadsTheFieldsOfACopyFromTheTableWhenItsJoinIsEditedAgain)
{
    // The alias stood in the row from the first edit on, and the fields were asked of a table of that name, which no
    // server has: the lists stayed empty, and OK counted as Cancel.
    answer = {false, S("Orders_Copy1"), S("ID"), S("Items"), S("OrderID"), S("Left Join")};
    edit.Drop(2, 3, 0);
    answer.JoinType = S("Right Join");
    EXPECT_TRUE(edit.ShowJoinProperties(1));
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[1].Table1, S("Orders"));
    EXPECT_EQ(asked[1].Name1, S("Orders_Copy1"));
    EXPECT_FALSE(asked[1].FindMatch);
    EXPECT_EQ(asked[1].Field1, S("ID"));
    EXPECT_EQ(asked[1].Operator, S("Left Join"));
    EXPECT_EQ(joins.Rows()[0].Operator, S("Right Join"));
    EXPECT_EQ(told.size(), 1); // an edit tells nothing
    EXPECT_FALSE(edit.ShowJoinProperties(2));
    answer.Cancelled = true;
    answer.JoinType = S("Left Join");
    EXPECT_FALSE(edit.ShowJoinProperties(1));
    EXPECT_EQ(joins.Rows()[0].Operator, S("Right Join"));
}

TEST_F(Edit, SurvivesAJoinThatGoesWhileItsDialogIsOpen)
{
    edit.Drop(1, 3, 2);
    edit.Ask = [&](const JoinQuestion &) {
        joins.Remove(1);
        return JoinAnswer{false, S("a"), S("b"), S("c"), S("d"), S("Inner Join")};
    };
    EXPECT_FALSE(edit.ShowJoinProperties(1));
}

TEST_F(Edit, RemovesATableWithTheJoinsOfAllItsCopies)
{
    edit.Drop(1, 3, 2);
    edit.Drop(2, 3, 2);
    EXPECT_EQ(edit.RemoveCurrentTable(S("2")), (std::vector<int>{1, 2}));
    EXPECT_EQ(tables.Numbers(), (std::vector<int>{1, 3}));
    EXPECT_TRUE(joins.Rows().empty());
    for (const char *tag : {"", "x", "2", "-1"})
        EXPECT_TRUE(edit.RemoveCurrentTable(S(tag)).empty());
    EXPECT_EQ(tables.Numbers().size(), 2u);
}

TEST_F(Edit, DrawsNoJoinWhoseTableOrFieldIsGoneAndListsItStill)
{
    const ItemFrameOf frame = [](const MapTable &, int item) { return ItemFrame{item * 200.0, 200}; };
    edit.Drop(1, 3, 3);
    const auto ends = [&] { return EndsOfRow(joins.Rows()[0], tables, frame, 8000, 6000); };
    ASSERT_TRUE(ends());
    EXPECT_EQ(ends()->Marker, u'C');
    tables.At(3)->Items.pop_back();
    EXPECT_FALSE(ends());
    tables.RemoveTable(3);
    EXPECT_FALSE(ends());
    EXPECT_EQ(joins.GetJoinStatement(false), S("Orders.ID = Items.OrderID"));
}

TEST_F(Edit, TouchesTheRowsOfATable)
{
    edit.Drop(1, 3, 2);
    EXPECT_TRUE(Touches(joins.Rows()[0], 1));
    EXPECT_TRUE(Touches(joins.Rows()[0], 3));
    EXPECT_FALSE(Touches(joins.Rows()[0], 2));
    EXPECT_TRUE(Touches(joins.Rows()[0], -1));
}
