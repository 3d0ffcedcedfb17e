// What is read out of texts that a catalogue keeps: the checks of a table, the tables and columns of a view.
#include "ado/schema/CheckReader.h"
#include "ado/schema/ForeignKeyReader.h"
#include "ado/schema/ViewReader.h"
#include <QStringList>
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

// --- The text of a table, read for its checks.

std::string Checks(const char *createTable)
{
    QStringList texts;
    for (const Check &check : ReadChecks(QStringLiteral("t"), QString::fromUtf8(createTable)))
        texts += check.Name + u'=' + check.Clause;
    return texts.join(u';').toStdString();
}

TEST(CheckReader, FindsChecksAndTheirNames)
{
    EXPECT_EQ(Checks(""), "");
    EXPECT_EQ(Checks("CREATE TABLE t (a, b)"), "");
    EXPECT_EQ(Checks("CREATE TABLE t (a CHECK (a > 0), b check( b in (1, (2)) ))"),
              "CK_t_1=a > 0;CK_t_2=b in (1, (2))");
    EXPECT_EQ(Checks("CREATE TABLE t (a CONSTRAINT \"it\"\"s\" CHECK (a), CONSTRAINT [x y] CHECK (b))"),
              "it\"s=a;x y=b");
    // The name of another constraint is not the check's.
    EXPECT_EQ(Checks("CREATE TABLE t (a CONSTRAINT must NOT NULL CHECK (a), b CONSTRAINT u UNIQUE, CHECK (b))"),
              "CK_t_1=a;CK_t_2=b");
    EXPECT_EQ(Checks("CREATE TABLE \"t (CHECK (1))\" (a DEFAULT 'CHECK (2)' /* CHECK (3) */, -- CHECK (4)\n"
                     "[check] CHECK (a <> ')' AND b <> \")\" -- )\n AND c /* ) */), \"CHECK\" DEFAULT (5))"),
              "CK_t_1=a <> ')' AND b <> \")\" -- )\n AND c /* ) */");
    EXPECT_EQ(Checks("CREATE TABLE t (a CHECK (a"), "");
    EXPECT_EQ(Checks("CREATE TABLE t (a CHECK"), "");
    EXPECT_EQ(Checks("CREATE TABLE t (a CHECK (a = 'x"), "");
    EXPECT_EQ(Checks("CREATE TABLE t (a CONSTRAINT"), "");
}

// --- The same text, read for its foreign keys.

std::string Keys(const char *createTable)
{
    constexpr const char *kWhen[] = {"", "deferred", "immediate", "never"};
    QStringList texts;
    for (const ForeignKey &key : ReadForeignKeys(QString::fromUtf8(createTable)))
        texts += key.Name + u'=' + QLatin1String(kWhen[int(key.When)]);
    return texts.join(u';').toStdString();
}

TEST(ForeignKeyReader, FindsNamesAndWhetherKeysAreDeferred)
{
    EXPECT_EQ(Keys(""), "");
    EXPECT_EQ(Keys("CREATE TABLE t (a, b)"), "");
    EXPECT_EQ(Keys("CREATE TABLE t (a REFERENCES u, b CONSTRAINT k REFERENCES v (x) ON DELETE CASCADE)"),
              "=never;k=never");
    EXPECT_EQ(
        Keys("CREATE TABLE t (a, FOREIGN KEY (a) REFERENCES u, constraint [x y] foreign key (a) references v(b))"),
        "=never;x y=never");
    EXPECT_EQ(
        Keys("CREATE TABLE t (a REFERENCES u DEFERRABLE INITIALLY DEFERRED, b REFERENCES u DEFERRABLE, c REFERENCES "
             "u NOT DEFERRABLE INITIALLY DEFERRED, d REFERENCES u DEFERRABLE INITIALLY IMMEDIATE NOT NULL)"),
        "=deferred;=immediate;=never;=immediate");
    // The name of another constraint is not the key's.
    EXPECT_EQ(Keys("CREATE TABLE t (a CONSTRAINT must NOT NULL REFERENCES u, b CONSTRAINT p CHECK (b > 0) CONSTRAINT "
                   "\"it\"\"s\" "
                   "REFERENCES u)"),
              "=never;it\"s=never");
    EXPECT_EQ(Keys("CREATE TABLE \"REFERENCES\" (a DEFAULT 'REFERENCES u' /* REFERENCES u */, -- REFERENCES u\n"
                   "[references] CHECK (a <> ' REFERENCES u' ), b REFERENCES \"DEFERRABLE\" (\"DEFERRABLE\"))"),
              "=never");
    EXPECT_EQ(Keys("CREATE TABLE t (a REFERENCES"), "=never");
    EXPECT_EQ(Keys("CREATE TABLE t (a CONSTRAINT"), "");
}

// --- The text of a view, read for what it uses.

std::string Usage(const char *text)
{
    QStringList lines;
    for (const UsedName &used : ReadUsage(QStringLiteral("own"), QString::fromUtf8(text)))
        lines += used.Database + u'.' + used.Table + (used.Column.isEmpty() ? QString() : u'.' + used.Column);
    return lines.join(u' ').toStdString();
}

TEST(ViewReader, TellsTablesColumnsAliasesAndFunctionsApart)
{
    EXPECT_EQ(Usage(""), "");
    EXPECT_EQ(Usage("select 1 AS `1`"), "");
    EXPECT_EQ(Usage("select 1 AS `1` from DUAL"), "");
    EXPECT_EQ(Usage("select `d`.`t`.`c` AS `c` from `d`.`t`"), "d.t d.t.c");
    EXPECT_EQ(Usage("select `x`.`c` AS `c` from `d`.`t` `x`"), "d.t d.t.c");
    EXPECT_EQ(Usage("select `t`.`c` AS `c` from `t`"), "own.t own.t.c"); // a server that leaves the current one out
    EXPECT_EQ(Usage("select `d`.`f`(`x`.`c`,1.5) AS `d.t` from (`d`.`t` `x` join `e`.`u` on(`x`.`a` = `e`.`u`.`b`))"),
              "d.t d.t.a d.t.c e.u e.u.b");
    EXPECT_EQ(Usage("select extract(year from `x`.`c`) AS `y` from `d`.`t` as `x` where `x`.`z` <> 'from `d`.`n`'"),
              "d.t d.t.c d.t.z");
    EXPECT_EQ(Usage("select `x`.`c` from `d`.`t` `x` where `x`.`a` = 'it\\'s from `d`.`n` \\\\' and `x`.`b`"),
              "d.t d.t.a d.t.b d.t.c");
    EXPECT_EQ(Usage("select `a``b`.`c.d` from `d``e`.`t.u` `a``b`"), "d`e.t.u d`e.t.u.c.d");
    // The server's own words stand without quotes: behind the second table "on" is no alias of it.
    EXPECT_EQ(Usage("select `on`.`a` AS `a` from (`d`.`t` `on` join `e`.`u` on(`on`.`a` = `e`.`u`.`b`))"),
              "d.t d.t.a e.u e.u.b");
}

TEST(ViewReader, FollowsSubSelects)
{
    // A derived table and a name of WITH have no columns of their own, but what stands in them has.
    EXPECT_EQ(Usage("select `q`.`n` from (select `d`.`t`.`c` AS `n` from `d`.`t`) `q`"), "d.t d.t.c");
    EXPECT_EQ(Usage("with w as (select `d`.`t`.`c` AS `n` from `d`.`t`)select `w`.`n` from `w`"), "d.t d.t.c");
    EXPECT_EQ(Usage("with odd name! as (select `d`.`t`.`c` AS `n` from `d`.`t`), x as (select 1)select `odd name!`.`n` "
                    "from (`odd name!` join `x`)"),
              "d.t d.t.c");
    EXPECT_EQ(Usage("with recursive w(`n`) as (select 1 union all select `w`.`n` + `d`.`t`.`c` from (`w` join "
                    "`d`.`t`))select `w`.`n` from `w`"),
              "d.t d.t.c");
    EXPECT_EQ(Usage("select `q`.`n` from ((select `d`.`t`.`c` AS `n` from `d`.`t`) union (select `d`.`u`.`c` from "
                    "`d`.`u`)) `q` join `d`.`v` on(`d`.`v`.`a`)"),
              "d.t d.t.c d.u d.u.c d.v d.v.a");
    // The inner alias hides the outer one; what the inner FROM does not name is the outer's.
    EXPECT_EQ(Usage("select `x`.`a` from `d`.`t` `x` where exists(select 1 from `d`.`u` `x` where `x`.`b`) and "
                    "exists(select 1 from `d`.`u` `y` where `y`.`b` = `x`.`c` limit 1)"),
              "d.t d.t.a d.t.c d.u d.u.b");
    EXPECT_EQ(Usage("select `j`.`n` from (`d`.`t` `x` join JSON_TABLE(`x`.`doc`, '$[*]' COLUMNS (`n` int path '$.a')) "
                    "`j`)"),
              "d.t d.t.doc");
    EXPECT_EQ(Usage("select `x`.`a` from `d`.`t` FOR SYSTEM_TIME ALL `x` use index (`i`) where `x`.`b`"),
              "d.t d.t.a d.t.b");
}

TEST(ViewReader, TakesAnyText)
{
    const QString whole =
        QStringLiteral("with w as (select `d`.`t`.`c` AS `n` from (`d`.`t` join `d`.`u` on(`d`.`u`.`a` "
                       "= 'x')) where `d`.`t`.`z` in (select 1 union select 2))select `w`.`n` from `w`");
    for (qsizetype length = 0; length <= whole.size(); ++length)
        (void)ReadUsage(QString(), whole.left(length));
    (void)ReadUsage(QString(), QString(200000, u'('));
    (void)ReadUsage(QString(), QStringLiteral("select ") + QStringLiteral("(select ").repeated(50000));
    (void)ReadUsage(QString(), QStringLiteral("select from from where . `a`.  ) `b` ("));
}

} // namespace
