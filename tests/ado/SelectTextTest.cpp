#include "ado/SelectText.h"
#include "ado/BaseTable.h"
#include "ado/family/Family.h"
#include <QStringList>
#include <gtest/gtest.h>

using namespace ADODB;

// "table alias: items" of a plain statement, "-" for another.
static std::string Told(const char *sql, DatabaseFamily family = DatabaseFamily::SQLite)
{
    const SelectText select = ReadSelect(QString::fromUtf8(sql), FamilyOf(family));
    if (!select.Plain)
        return "-";
    QStringList items;
    for (const SelectText::Item &item : select.Items)
        items += item.Star ? QStringLiteral("*") : item.Column.isEmpty() ? QStringLiteral("~") : item.Column;
    return QStringLiteral("%1 %2: %3").arg(select.Table, select.Alias, items.join(u',')).toStdString();
}

TEST(SelectText, TellsTheTableAndItsColumns)
{
    EXPECT_EQ(Told("select * from t"), "t : *");
    EXPECT_EQ(Told("  /* c */ SELECT a , t.b x, s.t.c AS y FROM s.t AS q WHERE 1 ;  "), "s.t q: a,b,c");
    EXPECT_EQ(Told("SELECT \"a b\", [c], `d`, \"e\"\"f\" FROM \"s.x\".[t] u ORDER BY 1 LIMIT 3"),
              "\"s.x\".[t] u: a b,c,d,e\"f");
    EXPECT_EQ(Told("SELECT upper(t) AS t, a+1, 'x' AS a, -a, a b c, 1, NULL x, (SELECT b FROM u) FROM t"),
              "t : ~,~,~,~,~,~,NULL,~");
    EXPECT_EQ(Told("SELECT t.*, a AS b FROM t"), "t : *,a");
    // A sign that is no letter, beyond ASCII: no table was found, so that its rows could not be edited.
    EXPECT_EQ(Told("SELECT * FROM vic\xe2\x80\xaetim"), "vic\xe2\x80\xaetim : *");
    EXPECT_EQ(Told("SELECT ALL a FROM t WHERE b IN (SELECT c FROM d UNION SELECT e FROM f)"), "t : a");
}

TEST(SelectText, StepsOverCommentsAndTexts)
{
    EXPECT_EQ(Told("select * /* not from other */ from k4"), "k4 : *");
    EXPECT_EQ(Told("select * -- from other\nfrom k4"), "k4 : *");
    EXPECT_EQ(Told("select ' from other ''', a from k4 where b = 'union'"), "k4 : ~,a");
    EXPECT_EQ(Told("select \"from other\" from k4 -- , u"), "k4 : from other");
    EXPECT_EQ(Told("select 'it\\'s from other' from k4", DatabaseFamily::MySQL), "k4 : ~");
    EXPECT_EQ(Told("select a # from other\n from k4", DatabaseFamily::MySQL), "k4 : a");
    EXPECT_EQ(Told("select a /*! , b */ from k4", DatabaseFamily::MySQL), "-"); // what stands in it runs
    EXPECT_EQ(Told("select 5--3\n from k4", DatabaseFamily::MySQL), "k4 : ~");
    // Comments stand within comments there too; the reader took the first end for the last.
    EXPECT_EQ(Told("select a /* /* b */ from other */ from k4", DatabaseFamily::SQLServer), "k4 : a");
    EXPECT_EQ(Told("select $a$ from other $a$, /* /* from x */ from y */ a from k4", DatabaseFamily::PostgreSQL),
              "k4 : ~,a");
    EXPECT_EQ(Told("select E'\\' from other', a[1] from k4", DatabaseFamily::PostgreSQL), "k4 : ~,~");
}

TEST(SelectText, OtherStatementsAreNotPlain)
{
    for (const char *sql : {"",
                            "SELECT",
                            "SELECT 1",
                            "INSERT INTO t SELECT * FROM u",
                            "WITH t AS (SELECT 1) SELECT * FROM t",
                            "SELECT * FROM t, u",
                            "SELECT * FROM t x, u",
                            "SELECT * FROM t JOIN u ON 1",
                            "SELECT * FROM t x LEFT JOIN u",
                            "SELECT * FROM t NATURAL JOIN u",
                            "SELECT * FROM (SELECT 1)",
                            "SELECT * FROM f(1)",
                            "SELECT DISTINCT a FROM t",
                            "SELECT a FROM t GROUP BY a",
                            "SELECT a FROM t WHERE 1 UNION SELECT a FROM u",
                            "SELECT a FROM t EXCEPT SELECT a FROM u",
                            "SELECT a FROM t; DELETE FROM t",
                            "SELECT a FROM t HAVING 1",
                            "SELECT a FROM \"never closed",
                            "SELECT a FROM t WHERE 'never closed",
                            "SELECT a FROM t /* never closed",
                            "SELECT (a FROM t",
                            "SELECT a FROM s.",
                            "SELECT a FROM 'text'",
                            "(SELECT a FROM t)"})
        EXPECT_EQ(Told(sql), "-") << sql;
    for (qsizetype length = 0; length < 60; ++length) // any text
        (void)ReadSelect(QStringLiteral("SELECT a, 'x', \"y\", (b) FROM s.t q WHERE /* c */ [d] = `e`").left(length),
                         FamilyOf(DatabaseFamily::SQLite));
}

TEST(BaseColumns, AnExpressionOrASecondViewOfAColumnIsNone)
{
    std::vector<ColumnInfo> columns(4);
    columns[0].Name = QStringLiteral("a");
    columns[1].Name = QStringLiteral("t");
    columns[2].Name = QStringLiteral("c");
    columns[3].Name = QStringLiteral("d");
    const auto names = [&](const char *sql, DatabaseFamily family = DatabaseFamily::SQLite) {
        return BaseColumnsOf(QString::fromLatin1(sql), columns, FamilyOf(family)).join(u',').toStdString();
    };
    // Nothing is told: the text alone decides.
    EXPECT_EQ(names("SELECT * FROM t"), "a,t,c,d");
    EXPECT_EQ(names("SELECT a, upper(t) AS t, b AS c, a AS d FROM t"), "a,,b,");
    EXPECT_EQ(names("SELECT x, *, y FROM t"), "x,t,c,y");
    EXPECT_EQ(names("SELECT t.*, u.* FROM t"), ",,,");
    EXPECT_EQ(names("SELECT a, b FROM t"), ",,,"); // not as many as there are
    // The driver tells of some: the others are expressions.
    for (const size_t told : {0u, 2u})
        columns[told].BaseTable = QStringLiteral("t");
    columns[2].BaseColumn = QStringLiteral("b");
    EXPECT_EQ(names("SELECT a, t, c, d FROM t"), "a,,b,");
    EXPECT_EQ(names("SELECT B AS a, t, c, d FROM t"), "B,,,");
    EXPECT_EQ(names("SELECT B AS a, t, c, d FROM t", DatabaseFamily::PostgreSQL), "B,,b,");
}
