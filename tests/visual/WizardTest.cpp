#include "tests/support/Text.h"
#include "visual/logic/WizardStatement.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

WizardRow Row(const char *table, const char *field, const char *alias = "", const char *show = "Y",
              const char *group = "Group By", const char *order = "", const char *criteria = "", const char *or1 = "",
              const char *or2 = "", const char *or3 = "")
{
    return {S(table), S(field), S(alias), S(show), S(group), S(order), S(criteria), S(or1), S(or2), S(or3), {}};
}

WizardRows GridOf(std::vector<WizardRow> rows, bool grouped = false)
{
    WizardRows grid;
    rows.push_back({});
    grid.Assign(std::move(rows));
    grid.GroupMode = grouped;
    return grid;
}

} // namespace

TEST(WizardStatement, PutsTheFirstColumnOfCriteriaLast)
{
    const WizardRows rows = GridOf({Row("T", "F", "", "Y", "Group By", "", "", "= 1", "= 2", "= 3"),
                                    Row("T", "G", "", "Y", "Group By", "", "= 4")});
    EXPECT_EQ(BuildCriteria(rows, false, {}), S("(T.F = 1) OR (T.F = 2) OR (T.F = 3) OR (T.G = 4)"));
    EXPECT_EQ(BuildCriteria(rows, false, S("False")),
              S("False\r\n AND (T.F = 1) OR (T.F = 2) OR (T.F = 3) OR (T.G = 4)"));
    EXPECT_EQ(BuildCriteria(rows, true, S("A.x = B.y")), // joins belong to WHERE alone
              S("(T.F = 1) OR (T.F = 2) OR (T.F = 3) OR (T.G = 4)"));
}

TEST(WizardStatement, JoinsTheRowsOfAColumnInOneBracket)
{
    const WizardRows rows =
        GridOf({Row("T", "F", "", "Y", "Group By", "", "= 1"), Row("T", "G", "", "N", "", "", "> 2"),
                Row("T", "H", "", "Y", "Group By", "", "  ")});
    EXPECT_EQ(BuildCriteria(rows, false, {}), S("(T.F = 1 AND T.G > 2)"));
}

TEST(WizardStatement, SendsTheCriterionOfAnAggregateToHaving)
{
    const WizardRows rows = GridOf({Row("T", "F", "", "Y", "Avg", "", "> 1"),
                                    Row("T", "G", "", "Y", "Where", "", "= 2"), Row("T", "H", "", "Y", "", "", "= 3")},
                                   true);
    EXPECT_EQ(BuildCriteria(rows, false, {}), S("(T.G = 2 AND T.H = 3)"));
    EXPECT_EQ(BuildCriteria(rows, true, {}), S("(Avg (T.F) > 1)"));
}

TEST(WizardStatement, ListsAWhereRowAsATermAndLeavesItOutOfTheGroups)
{
    WizardRows rows = GridOf({Row("T", "F", "", "N", "Where"), Row("T", "A"), Row("T", "B", "", "N", "")}, true);
    EXPECT_EQ(BuildFieldList(rows, true), S("T.A , T.B "));
    EXPECT_EQ(BuildFieldList(rows, false), S("Where (T.F) AS EXP1, T.A , T.B "));
}

TEST(WizardStatement, UsesAnAliasOfAnAggregateOnceAndReplacesItInTheGrid)
{
    WizardRows rows = GridOf({Row("T", "F", "Total", "Y", "Sum")}, true);
    EXPECT_EQ(BuildFieldList(rows, false), S("Sum (T.F) AS Total"));
    EXPECT_EQ(rows.TextMatrix(1, wcAlias), S("EXP1"));
    EXPECT_EQ(BuildFieldList(rows, false), S("Sum (T.F) AS EXP1"));
    EXPECT_EQ(rows.TextMatrix(1, wcAlias), S("EXP2"));
}

TEST(WizardStatement, NamesAnExpression)
{
    WizardRows rows = GridOf({Row("T", "a + b"), Row("T", " c"), Row("T", "*")});
    EXPECT_EQ(BuildFieldList(rows, false), S("(a + b) As EXP1, T. c, T.*"));
    EXPECT_EQ(rows.TextMatrix(1, wcAlias), S("EXP1"));
}

TEST(WizardStatement, OrdersWithABlankWhereItAscends)
{
    const WizardRows rows =
        GridOf({Row("T", "F", "", "N", "", "Ascending"), Row("Order Details", "G", "", "N", "", "Descending"),
                Row("T", "H", "", "Y", "", ""), Row("T", "", "", "", "", "Ascending")});
    EXPECT_EQ(BuildOrderBy(rows), S("T.F ,[Order Details].G Desc"));
}

TEST(WizardStatement, SaysWhatIsMissing)
{
    WizardRows rows = GridOf({Row("T", "F", "", "N")});
    EXPECT_EQ(QString::fromUtf16(ComposeStatement(rows, {}, {}).Message).left(30), S("You need to add a data source "));
    EXPECT_EQ(QString::fromUtf16(ComposeStatement(rows, S("T"), {}).Message),
              S("You need to select fields to display before continuing."));
    EXPECT_TRUE(ComposeStatement(rows, S("T"), {}).SQLText.isEmpty());
}

TEST(WizardStatement, ComposesTheClausesInTheirOrder)
{
    WizardRows rows = GridOf(
        {Row("T", "A", "", "Y", "Group By", "Descending", "> 0"), Row("T", "F", "S", "Y", "Sum", "", "> 1")}, true);
    const WizardResult result = ComposeStatement(rows, S("T ,U"), S("T.x = U.y"));
    EXPECT_EQ(result.Message, nullptr);
    EXPECT_EQ(result.SQLText, S("Select T.A , Sum (T.F) AS S From T ,U Where T.x = U.y\r\n AND (T.A > 0) Group By T.A  "
                                "Having (Sum (T.F) > 1) Order By T.A Desc"));
}

TEST(WizardStatement, ComposesCriteriaAsTheyAreTyped)
{
    WizardRows rows = GridOf({Row("T", "F")});
    rows.TypeCriteria(1, wcCriteria, S("= 'x -- \r\n/*"));
    EXPECT_EQ(ComposeStatement(rows, S("T"), {}).SQLText, S("Select T.F From T Where (T.F = 'x -- \r\n/*)"));
}

TEST(WizardRows, PutAComparisonInFrontOfACriterionThatHasNone)
{
    EXPECT_EQ(CriteriaCell(S("5")), S("= 5"));
    EXPECT_EQ(CriteriaCell(S("<5")), S("<5"));
    EXPECT_EQ(CriteriaCell(S(">=5")), S(">=5"));
    EXPECT_EQ(CriteriaCell(S(" 5")), S(" 5"));
    EXPECT_EQ(CriteriaCell(S("\t5")), S("= \t5"));
    EXPECT_EQ(CriteriaCell({}), QString());
}

TEST(WizardRows, ReadTheFieldsOfATableOrOfAStatement)
{
    EXPECT_EQ(*WizardFieldsQuery(S("Orders")), S("SELECT * FROM Orders where 1=0"));
    EXPECT_EQ(*WizardFieldsQuery(S("Order Details")),
              S("SELECT * FROM ([Order Details]) thisisjustadumbytable where 1=0"));
    EXPECT_EQ(*WizardFieldsQuery(S("select 1")), S("SELECT * FROM ((select 1)) thisisjustadumbytable where 1=0"));
}

TEST(WizardRows, KeepAnItemCheckedWhileAnotherRowShowsIt)
{
    WizardRows rows = GridOf({Row("T", "F"), Row("T", "F")});
    EXPECT_TRUE(rows.SetShown(1, false));
    EXPECT_FALSE(rows.SetShown(2, false));
    EXPECT_TRUE(rows.SetShown(2, true));
    EXPECT_EQ(rows.TextMatrix(1, wcShow), S("N"));
}

TEST(WizardRows, AlwaysEndInAnEmptyRow)
{
    WizardRows rows;
    EXPECT_EQ(rows.Count(), 1);
    rows.ItemChecked(S("T"), S("F"), true);
    EXPECT_EQ(rows.Count(), 2);
    rows.RemoveRow(2);
    EXPECT_EQ(rows.Count(), 2);
    rows.RemoveRow(1);
    EXPECT_EQ(rows.Count(), 1);
    rows.RemoveRow(1);
    EXPECT_EQ(rows.Count(), 1);
    rows.ItemChecked(S("T"), S("F"), true);
    rows.TableRemoved(S("T"));
    EXPECT_EQ(rows.Count(), 1);
    rows.TableRemoved({}); // the empty row bears the empty name
    EXPECT_EQ(rows.Count(), 1);
    rows.InsertRow(1);
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_THROW(rows.RemoveRow(3), std::out_of_range);
    EXPECT_THROW(rows.InsertRow(0), std::out_of_range);
    EXPECT_THROW((void)rows.TextMatrix(1, 11), std::out_of_range);
}

TEST(WizardRows, TakeAHoleInTheMiddleFirst)
{
    WizardRows rows = GridOf({Row("T", "F"), {}, Row("T", "G")});
    EXPECT_EQ(rows.GetFreeRow(), 2);
    EXPECT_EQ(rows.Count(), 4);
    WizardRows full;
    full.Assign({Row("T", "F")});
    EXPECT_EQ(full.GetFreeRow(), 2);
    EXPECT_EQ(full.Count(), 2);
}

TEST(WizardRows, MoveByTheKeysUpAndDownOnly)
{
    const WizardRows rows = GridOf({Row("T", "F"), Row("T", "G")});
    EXPECT_EQ(rows.KeyMove(40, 1), 2);
    EXPECT_EQ(rows.KeyMove(40, 3), 3);
    EXPECT_EQ(rows.KeyMove(38, 2), 1);
    EXPECT_EQ(rows.KeyMove(38, 1), 1);
    EXPECT_EQ(rows.KeyMove(37, 2), 2);
    EXPECT_EQ(rows.KeyMove(39, 2), 2);
}

TEST(WizardRows, ClashWithAllFieldsOfTheTable)
{
    const WizardRows rows = GridOf({Row("T", "*", "", "N"), Row("T", "F"), Row("U", "F")});
    EXPECT_FALSE(rows.RowIsFree(2, false));
    EXPECT_TRUE(rows.RowIsFree(2, true)); // the clashing row is not shown
    EXPECT_TRUE(rows.RowIsFree(3, false));
}

// A criterion beside an empty field went into the text as ". = 1".
TEST(WizardStatement, SkipsARowWithoutAFieldInTheConditionsToo)
{
    const WizardRows rows = GridOf({Row("T", "", "", "", "", "", "= 1"), Row("T", "F", "", "Y", "", "", "= 2")});
    EXPECT_EQ(BuildCriteria(rows, false, {}), S("(T.F = 2)"));
}

TEST(WizardStatement, NamesEachTableAsTheServerReadsIt)
{
    WizardRows rows = GridOf({Row("select", "F", "", "Y", "Group By", "Ascending", "= 1"), Row("T", "G")});
    rows.StatementName = [](const QString &alias) { return alias == S("select") ? S("\"select\"") : alias; };
    EXPECT_EQ(ComposeStatement(rows, S("\"select\" ,T"), {}).SQLText,
              S("Select \"select\".F, T.G From \"select\" ,T Where (\"select\".F = 1) Order By \"select\".F "));
}

// The server's own text for the table, where it is known: neither a hostile name nor one with a blank in round brackets
// that most servers refuse.
TEST(WizardRows, ReadTheFieldsByTheServersOwnName)
{
    EXPECT_EQ(*WizardFieldsQuery(S("t;DELETE/**/FROM/**/x;--"), S("\"t;DELETE/**/FROM/**/x;--\"")),
              S("SELECT * FROM \"t;DELETE/**/FROM/**/x;--\" where 1=0"));
    EXPECT_EQ(*WizardFieldsQuery(S("Order Details"), S("`Order Details`")),
              S("SELECT * FROM `Order Details` where 1=0"));
    EXPECT_EQ(*WizardFieldsQuery(S("select 1"), S("(select 1)")),
              S("SELECT * FROM ((select 1)) thisisjustadumbytable where 1=0"));
    EXPECT_FALSE(WizardFieldsQuery(S(" "), S("x")));
}

// A row of a table without a field stood last when another table's rows went, or when an item was checked.
TEST(WizardRows, EndInAnEmptyRowBehindOneThatHasATableAlone)
{
    WizardRows rows;
    rows.Assign({Row("U", "F"), Row("T", "", "", "", "")});
    rows.TableRemoved(S("T"));
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(rows.TextMatrix(2, wcTable), QString());
    rows.Assign({Row("U", "F"), Row("T", "", "", "", "")});
    rows.ItemChecked(S("U"), S("G"), true);
    EXPECT_EQ(rows.Count(), 4);
    EXPECT_EQ(rows.TextMatrix(3, wcField), S("G"));
    EXPECT_EQ(rows.TextMatrix(4, wcField), QString());
}

TEST(WizardRows, KnowWhetherAFieldIsShown)
{
    const WizardRows rows = GridOf({Row("T", "F", "", "N"), Row("T", "G")});
    EXPECT_FALSE(rows.IsShown(S("T"), S("F")));
    EXPECT_TRUE(rows.IsShown(S("T"), S("G")));
    EXPECT_FALSE(rows.IsShown(S("U"), S("G")));
}
