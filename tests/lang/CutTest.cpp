#include "lang/Text.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

using namespace lang;

TEST(Trim, TakesBlanksAndNothingElse)
{
    EXPECT_EQ(Trim(S("  a b  ")), S("a b"));
    EXPECT_EQ(Trim(S(" \t a \r\n ")), S("\t a \r\n"));
    EXPECT_EQ(Trim(S("   ")), S(""));
    EXPECT_EQ(LTrim(S("   ")), S(""));
    EXPECT_EQ(RTrim(S("   ")), S(""));
    EXPECT_EQ(Trim(S(" a")), S("a"));
    EXPECT_EQ(Trim(S("a ")), S("a"));
    EXPECT_EQ(Trim(S("a")), S("a"));
    EXPECT_FALSE(Trim(S(" ")).isNull()); // a text of blanks is an empty text, not none
    EXPECT_EQ(Trim(S("")), S(""));
    EXPECT_EQ(LTrim(S("  a  ")), S("a  "));
    EXPECT_EQ(RTrim(S("  a  ")), S("  a"));
    for (const char *blanks : {" ", "  ", "   "}) {
        EXPECT_EQ(LTrim(S(blanks)), S(""));
        EXPECT_EQ(RTrim(S(blanks)), S(""));
    }
    EXPECT_EQ(Trim(QString(QChar(0xA0))), QString(QChar(0xA0)));
}

TEST(Split, KnowsTheEdges)
{
    EXPECT_EQ(Split(S(""), S(",")).size(), 0);
    EXPECT_EQ(Split(S(""), S("")).size(), 0);
    EXPECT_EQ(Split(S("abc"), S("")), QStringList({S("abc")}));
    EXPECT_EQ(Split(S("a,,b,"), S(",")), QStringList({S("a"), S(""), S("b"), S("")}));
    EXPECT_EQ(Split(S("aXbxc"), S("x")), QStringList({S("aXb"), S("c")}));
    EXPECT_EQ(Split(S("aXbxc"), S("x"), Compare::Text), QStringList({S("a"), S("b"), S("c")}));
    EXPECT_EQ(Split(S("aaa"), S("aa")), QStringList({S(""), S("a")}));
}

TEST(InStr, CountsFromOneAndFindsTheEmptyText)
{
    EXPECT_EQ(InStr(S("abcabc"), S("c")), 3);
    EXPECT_EQ(InStr(4, S("abcabc"), S("c")), 6);
    EXPECT_EQ(InStr(7, S("abcabc"), S("c")), 0);
    EXPECT_EQ(InStr(S("abc"), S("")), 1);
    EXPECT_EQ(InStr(3, S("abc"), S("")), 3);
    EXPECT_EQ(InStr(4, S("abc"), S("")), 0);
    EXPECT_EQ(InStr(S(""), S("a")), 0);
    EXPECT_EQ(InStr(S(""), S("")), 0);
    EXPECT_EQ(InStr(S("abc"), S("B")), 0);
    EXPECT_EQ(InStr(S("abc"), S("B"), Compare::Text), 2);
}

TEST(InStrRev, SeeksFromTheRight)
{
    EXPECT_EQ(InStrRev(S("a.b.c"), S(".")), 4);
    EXPECT_EQ(InStrRev(S("abc"), S(".")), 0);
    EXPECT_EQ(InStrRev(S("abc"), S("")), 3);
    EXPECT_EQ(InStrRev(S(""), S("")), 0);
    EXPECT_EQ(InStrRev(S("aXa"), S("x"), Compare::Text), 2);
    EXPECT_EQ(InStrRev(S("abc"), S("c")), 3);
}

TEST(Parts, AreClippedToTheText)
{
    EXPECT_EQ(Left(S("abc"), 2), S("ab"));
    EXPECT_EQ(Left(S("abc"), 9), S("abc"));
    EXPECT_EQ(Left(S("abc"), -1), S(""));
    EXPECT_EQ(Right(S("abc"), 2), S("bc"));
    EXPECT_EQ(Right(S("abc"), 9), S("abc"));
    EXPECT_EQ(Right(S("abc"), -2), S(""));
    EXPECT_EQ(Mid(S("abc"), 2), S("bc"));
    EXPECT_EQ(Mid(S("abc"), 2, 1), S("b"));
    EXPECT_EQ(Mid(S("abc"), 4), S(""));
    EXPECT_EQ(Mid(S("abc"), 1, 0), S(""));
    EXPECT_EQ(Mid(S("abc"), 3, 9), S("c"));
}

TEST(Replace, WalksOnceFromLeftToRight)
{
    EXPECT_EQ(Replace(S("aaaa"), S("aa"), S("a")), S("aa"));
    EXPECT_EQ(Replace(S("abc"), S(""), S("x")), S("abc"));
    EXPECT_EQ(Replace(S("abAB"), S("AB"), S("x")), S("abx"));
    EXPECT_EQ(Replace(S("abAB"), S("AB"), S("x"), Compare::Text), S("xx"));
    EXPECT_EQ(Replace(S("aba"), S("a"), S("")), S("b"));
    EXPECT_EQ(Replace(S(""), S("a"), S("b")), S(""));
}

TEST(Case, KeepsTheLength)
{
    EXPECT_EQ(UCase(S("aß1")), S("Aß1"));
    EXPECT_EQ(LCase(S("ÀB")), S("àb"));
}
