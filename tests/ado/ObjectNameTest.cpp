// Which texts a family reads as an object, and how a name is written so that it reaches it. No server is needed.
#include "ado/ObjectName.h"
#include "ado/StatementText.h"
#include "ado/family/Family.h"
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

using enum DatabaseFamily;

QString U(const char *text)
{
    return QString::fromUtf8(text);
}

struct Reading
{
    DatabaseFamily family;
    const char *text, *name;
    bool reads;
};

TEST(ObjectName, AFamilyReadsATextAsTheVeryObjectOrNot)
{
    constexpr Reading readings[] = {
        // Folding: the fault was that "Dept2" went bare to PostgreSQL, which took dept2.
        {PostgreSQL, "dept2", "dept2", true},
        {PostgreSQL, "Dept2", "Dept2", false},
        {PostgreSQL, "\"Dept2\"", "Dept2", true},
        {PostgreSQL,
         "gr\xc3\xb6\xc3\x9f"
         "e",
         "gr\xc3\xb6\xc3\x9f"
         "e",
         true},
        {PostgreSQL, "\xc3\x96l", "\xc3\x96l", false},
        {Oracle, "DEPT", "DEPT", true},
        {Oracle, "dept", "dept", false},
        {Oracle, "_DEPT", "_DEPT", false},
        {SQLite, "Dept2", "Dept2", true},
        {MySQL, "Dept2", "Dept2", true},
        {SQLServer, "Dept2", "Dept2", true},
        // Brackets.
        {SQLite, "[Order Details]", "Order Details", true},
        {SQLServer, "[Order Details]", "Order Details", true},
        {SQLServer, "[a]]b]", "a]b", true},
        {SQLite, "[a]]b]", "a]b", false}, // no sign there for a bracket within
        {MySQL, "[Order Details]", "Order Details", false},
        {PostgreSQL, "[Order Details]", "Order Details", false},
        {Oracle, "[Order Details]", "Order Details", false},
        {Other, "[Order Details]", "Order Details", false},
        {SQLite, "[order details]", "[order details]", false}, // the name itself has the brackets
        {SQLite, "(select 1 x)", "select 1 x", false},
        // Key words, in any case.
        {SQLite, "select", "select", false},
        {SQLite, "user", "user", true},
        {PostgreSQL, "user", "user", false},
        {PostgreSQL, "between", "between", true},
        {MySQL, "KEYS", "KEYS", false},
        {MySQL, "user", "user", true},
        {SQLServer, "user", "user", false},
        {Oracle, "LEVEL", "LEVEL", false},
        {Other, "order", "order", false},
        // Signs.
        {SQLite, "a-b", "a-b", false},
        {PostgreSQL, "a;b", "a;b", false},
        {MySQL, "a.b", "a.b", false},
        {MySQL, "$a", "$a", true},
        {SQLite, "$a", "$a", false},
        {PostgreSQL, "a$b", "a$b", true},
        {SQLServer, "#t", "#t", false},
        {SQLite, "", "", false},
        {SQLite, "\"\"", "", true},
        // Digits.
        {SQLite, "2020_sales", "2020_sales", false},
        {MySQL, "2020_sales", "2020_sales", true},
        {MySQL, "2020", "2020", false},
        {MySQL, "1e5", "1e5", false},
        {MySQL, "0x1f", "0x1f", false},
        // Any sign past ASCII is a letter to three of them, but MySQL has no names past U+FFFF.
        {SQLite, "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80", true},
        {PostgreSQL, "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80", true},
        {MySQL, "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80", false},
    };
    for (const Reading &each : readings)
        EXPECT_EQ(ReadsAs(FamilyOf(each.family), U(each.text), U(each.name)), each.reads)
            << int(each.family) << ' ' << each.text << " as " << each.name;
}

TEST(ObjectName, TheOwnQuotesAreDoubledInside)
{
    EXPECT_EQ(InQuotes(FamilyOf(SQLite), {}, U("a\"b]c'd")), U("\"a\"\"b]c'd\""));
    EXPECT_EQ(InQuotes(FamilyOf(PostgreSQL), {}, U("a\"b")), U("\"a\"\"b\""));
    EXPECT_EQ(InQuotes(FamilyOf(MySQL), {}, U("a`b\"c")), U("`a``b\"c`"));
    EXPECT_EQ(InQuotes(FamilyOf(SQLServer), {}, U("a]b")), U("[a]]b]"));
    EXPECT_EQ(InQuotes(FamilyOf(Oracle), {}, U("a b")), U("\"a b\""));
    EXPECT_EQ(InQuotes(FamilyOf(Other), U("'"), U("a'b")), U("'a''b'"));
    EXPECT_EQ(InQuotes(FamilyOf(Other), U(" "), U("a]b")), U("[a]]b]")); // a driver that says it has none
    for (const DatabaseFamily family : {SQLite, PostgreSQL, MySQL, SQLServer, Oracle})
        for (const char *name : {"", "select", "a\"b]c'd`e", "\"", "]", "`", "a;b--", "x\r\ny"})
            EXPECT_TRUE(ReadsAs(FamilyOf(family), InQuotes(FamilyOf(family), {}, U(name)), U(name)))
                << int(family) << name;
}

TEST(ObjectName, APlacedNameSaysWhoseItIs)
{
    EXPECT_EQ(PlacedName(FamilyOf(PostgreSQL), {}, {U("db"), U("second"), U("t")}), U("second.t"));
    EXPECT_EQ(PlacedName(FamilyOf(PostgreSQL), {}, {U("db"), U("Second"), U("select")}), U("\"Second\".\"select\""));
    EXPECT_EQ(PlacedName(FamilyOf(MySQL), {}, {U("shop"), {}, U("a b")}), U("shop.`a b`"));
    EXPECT_EQ(PlacedName(FamilyOf(SQLite), {}, ObjectOf(FamilyOf(SQLite), {}, {}, U("t"))), U("main.t"));
    EXPECT_EQ(PlacedName(FamilyOf(SQLite), {}, ObjectOf(FamilyOf(SQLite), {}, U("temp"), U("t"))), U("temp.t"));
    EXPECT_EQ(PlacedName(FamilyOf(SQLServer), {}, {U("db"), U("dbo"), U("a b")}), U("db.dbo.[a b]"));
    EXPECT_EQ(PlacedName(FamilyOf(Oracle), {}, {{}, U("HR"), U("emp")}), U("HR.\"emp\""));
}

TEST(ObjectName, TheQuestionWhereANameLeadsHoldsItAsALiteral)
{
    EXPECT_TRUE(WhereQuery(FamilyOf(PostgreSQL), U("a'b\\c")).contains(U("= E'a''b\\\\c' ")));
    EXPECT_TRUE(WhereQuery(FamilyOf(SQLite), U("a'b")).contains(U("pragma_table_list('a''b')")));
    EXPECT_TRUE(WhereQuery(FamilyOf(SQLServer), U("a]'b")).contains(U("OBJECT_ID(N'[a]]''b]')")));
    EXPECT_EQ(WhereQuery(FamilyOf(Other), U("t")), QString());
}

// A text of several statements is never taken for one; where a server's settings decide, neither is it.
TEST(OneStatement, IsReadAsTheFamilyReads)
{
    struct Case
    {
        DatabaseFamily family;
        const char *sql;
        bool one;
    };
    constexpr Case cases[] = {
        {PostgreSQL, "SELECT 1", true},
        {PostgreSQL, "SELECT 1;", true},
        {PostgreSQL, "SELECT 1; -- told\n ; /* and */ ", true},
        {PostgreSQL, "SELECT 1; SELECT 2", false},
        {PostgreSQL, "DELETE FROM t;DELETE/**/FROM/**/t;--", false},
        {PostgreSQL, "DELETE FROM \"t;DELETE/**/FROM/**/t;--\"", true},
        {PostgreSQL, "DELETE FROM \"t\"\";DELETE FROM t\"", true},
        {PostgreSQL, "DELETE FROM \"t\";DELETE FROM t\"", false},
        {PostgreSQL, "SELECT 'a;b'", true},
        {PostgreSQL, "SELECT '\\'; DELETE FROM t; --'", false},
        {PostgreSQL, "SELECT $$a;b$$", false},
        {PostgreSQL, "SELECT [1];DELETE FROM t", false},
        {PostgreSQL, "/* /* */ ; */ SELECT 1", true},
        {PostgreSQL, "-- a\r;DELETE FROM t", false}, // the line has ended there
        {MySQL, "DELETE FROM `t;DELETE FROM t`", true},
        {MySQL, "DELETE FROM \"t\\\";DELETE FROM t; -- \"", false},
        {MySQL, "SELECT 1 --;DELETE FROM t", false}, // no comment without a blank
        {MySQL, "SELECT 1 # ; more", true},
        {MySQL, "SELECT 1 /*! ; DELETE FROM t */", false},
        {MySQL, "SELECT 1 /* /* */ ; DELETE FROM t /* */ */", false},
        {SQLServer, "SELECT * FROM [a;b]", true},
        {SQLServer, "SELECT * FROM [a]];b]", true},
        {SQLServer, "SELECT * FROM [a];b]", false},
        {SQLite, "SELECT * FROM [a];b]", false},
        {SQLite, "SELECT '\\';DELETE FROM t; --'", false},
        {Oracle, "SELECT q'[it's;]' FROM t", false},
        {Other, "SELECT \"a;b\"", true},
        {Other, "SELECT `a;b`", false},
        {Other, "SELECT [a;b]", false},
    };
    for (const Case &each : cases)
        EXPECT_EQ(IsOneStatement(FamilyOf(each.family), U(each.sql)), each.one) << int(each.family) << ' ' << each.sql;
    EXPECT_FALSE(IsOneStatement(FamilyOf(SQLite), QString(QChar(0))));
    EXPECT_THROW(RaiseUnlessOneStatement(FamilyOf(MySQL), U("a;b")), Error);
}

} // namespace
