// The statement whose joins stand in FROM.

#include "visual/logic/JoinedStatement.h"

#include <gtest/gtest.h>

namespace {

QString S(const char *text)
{
    return QString::fromUtf8(text);
}

JoinedSource Source(int index, const char *alias, const char *written = nullptr)
{
    const QString own = S(written ? written : alias);
    return {index, S(alias), own, own == S(alias) ? own : S(alias), own != S(alias), {S("*"), S("ID"), S("K"), S("L")}};
}

JoinedWriting Map(const char *aliases)
{
    JoinedWriting writing;
    int index = 0;
    for (const QString &alias : S(aliases).split(u' '))
        writing.Sources.push_back(Source(++index, alias.toUtf8().constData()));
    return writing;
}

MapJoin Join(int first, const char *field1, const char *kind, int second, const char *field2)
{
    MapJoin join;
    join.Table1Index = first;
    join.Field1 = S(field1);
    join.Operator = S(kind);
    join.Table2Index = second;
    join.Field2 = S(field2);
    return join;
}

const char *const kInner = "Inner Join", *const kLeft = "Left Join", *const kRight = "Right Join";

WizardRow Row(const char *table, const char *field, const char *alias = "", const char *show = "Y",
              const char *group = "Group By", const char *order = "", const char *criteria = "", const char *or1 = "")
{
    return {S(table), S(field), S(alias), S(show), S(group), S(order), S(criteria), S(or1), {}, {}, {}};
}

WizardRows Grid(std::vector<WizardRow> rows, bool grouped = false)
{
    WizardRows grid;
    rows.push_back({});
    grid.Assign(std::move(rows));
    grid.GroupMode = grouped;
    return grid;
}

QString InOneLine(QString text)
{
    return text.replace(S("\r\n "), S(" ")).replace(S("\r\n"), S(" "));
}

QString From(const JoinedWriting &writing, const std::vector<MapJoin> &joins)
{
    return InOneLine(ComposeFrom(writing, joins));
}

QString Joined(const WizardRows &rows, const JoinedWriting &writing, const std::vector<MapJoin> &joins)
{
    return InOneLine(ComposeJoined(rows, writing, joins).SQLText);
}

} // namespace

TEST(JoinedFrom, NamesTablesThatNoLineTiesTogetherSideBySide)
{
    EXPECT_EQ(From({}, {}), QString());
    EXPECT_EQ(From(Map("A"), {}), S("A"));
    EXPECT_EQ(From(Map("A B C"), {Join(1, "ID", kInner, 3, "K")}), S("A INNER JOIN C ON A.ID = C.K, B"));
}

TEST(JoinedFrom, SaysAnOuterJoinFromTheSideThatStays)
{
    EXPECT_EQ(From(Map("A B"), {Join(1, "ID", kLeft, 2, "K")}), S("A LEFT JOIN B ON A.ID = B.K"));
    EXPECT_EQ(From(Map("A B"), {Join(2, "ID", kLeft, 1, "K")}), S("B LEFT JOIN A ON B.ID = A.K"));
    // A right join begins at its right table, so that no later inner join takes its rows away.
    EXPECT_EQ(From(Map("A B"), {Join(1, "ID", kRight, 2, "K")}), S("B LEFT JOIN A ON A.ID = B.K"));
    // Both ends stay with the middle as the one that may miss: the second end can only come from the right.
    EXPECT_EQ(From(Map("A B C"), {Join(1, "ID", kLeft, 2, "K"), Join(3, "ID", kLeft, 2, "L")}),
              S("A LEFT JOIN B ON A.ID = B.K RIGHT JOIN C ON C.ID = B.L"));
}

TEST(JoinedFrom, TakesInnerJoinsBeforeOuterOnes)
{
    EXPECT_EQ(From(Map("A B C"), {Join(1, "ID", kLeft, 2, "K"), Join(1, "L", kInner, 3, "ID")}),
              S("A INNER JOIN C ON A.L = C.ID LEFT JOIN B ON A.ID = B.K"));
}

TEST(JoinedFrom, PutsAKeyOfSeveralColumnsIntoOneCondition)
{
    const std::vector<MapJoin> key = {Join(1, "ID", kInner, 2, "K"), Join(1, "L", kInner, 2, "L"),
                                      Join(1, "ID", kInner, 2, "K")}; // the same line twice says it once
    EXPECT_EQ(From(Map("A B"), key), S("A INNER JOIN B ON A.ID = B.K AND A.L = B.L"));
    // One line of the key was made an outer join: that is the join. Drawn the other way round it is still one.
    EXPECT_EQ(From(Map("A B"), {Join(1, "ID", kInner, 2, "K"), Join(2, "L", kRight, 1, "L")}),
              S("A LEFT JOIN B ON A.ID = B.K AND B.L = A.L"));
}

TEST(JoinedFrom, ClosesACircleInTheConditionOfItsLastTable)
{
    EXPECT_EQ(From(Map("A B C"),
                   {Join(1, "ID", kInner, 2, "K"), Join(2, "ID", kInner, 3, "K"), Join(3, "ID", kInner, 1, "K")}),
              S("A INNER JOIN B ON A.ID = B.K INNER JOIN C ON B.ID = C.K AND C.ID = A.K"));
    // Each waits for the other: some table begins all the same, and none is lost.
    EXPECT_EQ(From(Map("A B"), {Join(1, "ID", kLeft, 2, "K"), Join(2, "ID", kLeft, 1, "K")}),
              S("A LEFT JOIN B ON A.ID = B.K AND B.ID = A.K"));
    EXPECT_EQ(
        From(Map("A B C"), {Join(1, "ID", kLeft, 2, "K"), Join(2, "ID", kLeft, 3, "K"), Join(3, "ID", kLeft, 1, "K")}),
        S("A LEFT JOIN B ON A.ID = B.K LEFT JOIN C ON B.ID = C.K AND C.ID = A.K"));
}

TEST(JoinedFrom, GivesACopyANameOfItsOwn)
{
    JoinedWriting writing = Map("Orders");
    writing.Sources.push_back(Source(2, "Orders_Copy1", "Orders"));
    EXPECT_EQ(From(writing, {Join(1, "ID", kLeft, 2, "K")}),
              S("Orders LEFT JOIN Orders AS Orders_Copy1 ON Orders.ID = Orders_Copy1.K"));
    writing.As = false;
    EXPECT_EQ(From(writing, {Join(1, "ID", kLeft, 2, "K")}),
              S("Orders LEFT JOIN Orders Orders_Copy1 ON Orders.ID = Orders_Copy1.K"));
}

TEST(JoinedFrom, LeavesOutALineWhoseTableOrFieldIsGone)
{
    EXPECT_EQ(From(Map("A B"), {Join(1, "ID", kInner, 3, "K"), Join(1, "gone", kInner, 2, "K")}), S("A, B"));
}

TEST(JoinedStatement, WritesColumnsAsTheServerReadsThem)
{
    JoinedWriting writing = Map("A");
    writing.Sources[0].Fields << S("Unit Price");
    writing.Field = [](const QString &field) { return u'"' + field + u'"'; };
    const WizardRows rows = Grid({Row("A", "Unit Price", "", "Y", "", "Descending", "> 1"), Row("A", "*"),
                                  Row("A", "ID + 1"), Row("A", "ID", "EXP1"), Row("A", "ID*2")});
    EXPECT_EQ(Joined(rows, writing, {}),
              S("Select A.\"Unit Price\", A.*, (ID + 1) As EXP2, A.\"ID\" As EXP1, A.ID*2 From A "
                "Where (A.\"Unit Price\" > 1) Order By A.\"Unit Price\" Desc"));
    EXPECT_EQ(rows.TextMatrix(3, wcAlias), QString()); // the grid stays as it is
}

TEST(JoinedStatement, KeepsAlternativesApartFromTheJoins)
{
    const WizardRows rows =
        Grid({Row("A", "ID", "", "Y", "", "", "= 1", "= 2"), Row("A", "K", "", "N", "", "", "= 3")});
    EXPECT_EQ(Joined(rows, Map("A B"), {Join(1, "ID", kInner, 2, "K")}),
              S("Select A.ID From A INNER JOIN B ON A.ID = B.K Where (A.ID = 1 AND A.K = 3) OR (A.ID = 2)"));
}

TEST(JoinedStatement, GroupsInWordsThatServersKnow)
{
    const WizardRows rows = Grid({Row("A", "K"), Row("A", "ID", "", "Y", "Count Distinct", "", "> 1"),
                                  Row("A", "*", "", "Y", "Count"), Row("A", "L", "", "Y", "Where", "", "= 5"),
                                  Row("A", "ID", "Most", "Y", "Max", "Descending"), Row("A", "L", "", "N", "Group By")},
                                 true);
    EXPECT_EQ(Joined(rows, Map("A"), {}),
              S("Select A.K, Count(Distinct A.ID) As EXP1, Count(*) As EXP2, Max(A.ID) As Most From A "
                "Where (A.L = 5) Group By A.K, A.L Having (Count(Distinct A.ID) > 1) Order By Max(A.ID) Desc"));
}

// A comment in a criterion ends with its line.
TEST(JoinedStatement, PutsEachClauseAndEachJoinOnALine)
{
    const WizardRows rows = Grid({Row("A", "ID", "", "Y", "", "Ascending", "= 1")});
    EXPECT_EQ(ComposeJoined(rows, Map("A B"), {Join(1, "ID", kInner, 2, "K")}).SQLText,
              S("Select A.ID\r\nFrom A\r\n INNER JOIN B ON A.ID = B.K\r\nWhere (A.ID = 1)\r\nOrder By A.ID"));
}

TEST(JoinedStatement, SaysWhatIsMissing)
{
    EXPECT_EQ(ComposeJoined(Grid({Row("A", "ID")}), {}, {}).Message, kWizardNoTable);
    EXPECT_EQ(ComposeJoined(Grid({Row("A", "ID", "", "N")}), Map("A"), {}).Message, kWizardNoField);
}
