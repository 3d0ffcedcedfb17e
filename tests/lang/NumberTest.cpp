#include "lang/Text.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace lang;

TEST(Val, ReadsTheLeadingNumber)
{
    const std::pair<const char *, double> rows[] = {
        {"", 0},
        {"abc", 0},
        {"12abc", 12},
        {"1,234", 1},
        {"1.5.6", 1.5},
        {"-3", -3},
        {"+3", 3},
        {"- 3", -3},
        {"--3", 0},
        {"1 2 3", 123},
        {" \t\n7", 7},
        {"1\r2", 1},
        {".5", 0.5},
        {".", 0},
        {"5.", 5},
        {"1e3", 1000},
        {"1D3", 1000},
        {"1e", 1},
        {"1e+", 1},
        {"1E-2x", 0.01},
        {"&HFF", 255},
        {"&hff", 255},
        {"&O17", 15},
        {"&H", 0},
        {"&X1", 0},
        {"&O19", 1},
        {"2 e 2", 200},
        {"$5", 0},
        {"1e2e3", 100},
        {"0x10", 0},
        {"1d2", 100},
        {"1/2", 1},
        // Each end of the ranges of digits, and what stands next to them.
        {"1029384756", 1029384756},
        {"90:1", 90},
        {"20/1", 20},
        {"1e10", 1e10},
        {"&H1-2", 1},
        {"&H9A0f", 39439},
        {"&Hg", 0},
        {"&H1@", 1},
        {"&O70", 56},
        {"&O8", 0},
        {"\n5", 5},
        {"1\t2", 12},
        {"+-3", 0},
        {"-&H1", 0},
        {"1+2", 1},
        {"1e-3", 0.001},
        {"1e 3", 1000},
        {"1e+x", 1},
        {"..5", 0},
        {"0.05", 0.05},
        {"&", 0},
    };
    for (const auto &[text, want] : rows)
        EXPECT_DOUBLE_EQ(Val(S(text)), want) << text;
    EXPECT_EQ(Val(S("-1e999")), -std::numeric_limits<double>::max());
    EXPECT_EQ(Val(S("1e-999")), 0);
}

TEST(IsNumeric, LooksAtTheWholeText)
{
    for (const char *text :
         {"1",   " 1 ",  "-1",  "+1",   "1,234", "1,234,567.5", "$5", "5$", "-$5", "$-5", "(5)",    "($5)",
          "1e5", "1E-5", "1D5", "&HFF", "&o17",  ".5",          "5.", "5-", "€3",  "- 5", " ( 5 ) "})
        EXPECT_TRUE(IsNumeric(S(text))) << text;
    for (const char *text : {"",    " ",  "a",   "1a", "1 2", "1.2.3", "--1",     "-1-", "(5",    "5)", "-(5)", "1e",
                             "1e+", "&H", "&HG", ".",  "-",   "$",     "1,2.3,4", ",5",  "1e999", "()", "\t"})
        EXPECT_FALSE(IsNumeric(S(text))) << text;
}

TEST(IsNumeric, TakesEachSignOnceOnEitherSide)
{
    for (const char *text :
         {"0", "10", "( 5 )", "5+", "$ 5", "5 $", "(5) ", "(5)$", "$(5)", "1e+5", "&H10", "&H1", "&O10", "1,", "1,.5"})
        EXPECT_TRUE(IsNumeric(S(text))) << text;
    for (const char *text : {"+5+",  "-5+", "$5$", "((5))", "(5))", "+(5)", "(+5)", "(-5)", "(5)-", ")5(", "5(",
                             "1e5x", "&O8", "&",   "&X1",   "&H1x", "1\t",  "1e 5", "5 5",  "$$5",  "-"})
        EXPECT_FALSE(IsNumeric(S(text))) << text;
}

TEST(CLng, RoundsAndStaysWithinItsRange)
{
    const double edge = 9223372036854775808.0; // 2^63, the first that does not fit
    EXPECT_EQ(CLng(edge), std::numeric_limits<qint64>::max());
    EXPECT_EQ(CLng(std::nextafter(edge, 0)), 9223372036854774784);
    EXPECT_EQ(CLng(-edge), std::numeric_limits<qint64>::min());
    EXPECT_EQ(CLng(std::nextafter(-edge, 0)), -9223372036854774784);
    EXPECT_EQ(CLng(-2 * edge), std::numeric_limits<qint64>::min());
    EXPECT_EQ(CLng(std::numeric_limits<double>::infinity()), std::numeric_limits<qint64>::max());
    EXPECT_EQ(CLng(-std::numeric_limits<double>::infinity()), std::numeric_limits<qint64>::min());
    EXPECT_EQ(CLng(std::nan("")), 0);
    EXPECT_EQ(CLng(2.5), 2);
    EXPECT_EQ(CLng(3.5), 4);
    EXPECT_EQ(CLng(-2.5), -2);
    EXPECT_EQ(CLng(4503599627370495.5), 4503599627370496);
}

TEST(CStr, WritesFifteenDigitsAndNoMore)
{
    EXPECT_EQ(CStr(0.0), S("0"));
    EXPECT_EQ(CStr(-0.0), S("0"));
    EXPECT_EQ(CStr(1.0), S("1"));
    EXPECT_EQ(CStr(-1.5), S("-1.5"));
    EXPECT_EQ(CStr(0.1 + 0.2), S("0.3"));
    EXPECT_EQ(CStr(1.0 / 3), S("0.333333333333333"));
    EXPECT_EQ(CStr(123456789012345.0), S("123456789012345"));
    EXPECT_EQ(CStr(1e15), S("1E+15"));
    EXPECT_EQ(CStr(1e20), S("1E+20"));
    EXPECT_EQ(CStr(-2.5e-7), S("-2.5E-07"));
    EXPECT_EQ(CStr(1e300), S("1E+300"));
    EXPECT_EQ(CStr(std::numeric_limits<qint64>::min()), S("-9223372036854775808"));
    EXPECT_EQ(CStr(std::nan("")), S("-1.#IND"));
    EXPECT_EQ(CStr(std::numeric_limits<double>::infinity()), S("1.#INF"));
    EXPECT_EQ(CStr(-std::numeric_limits<double>::infinity()), S("-1.#INF"));
    EXPECT_EQ(CStr(true), S("True"));
    EXPECT_EQ(CStr(false), S("False"));
    EXPECT_EQ(Str(3), S(" 3"));
    EXPECT_EQ(Str(0), S(" 0"));
    EXPECT_EQ(Str(-3), S("-3"));
}

TEST(Round, SendsTheHalfToTheEvenNeighbour)
{
    EXPECT_EQ(Round(0.5), 0);
    EXPECT_EQ(Round(1.5), 2);
    EXPECT_EQ(Round(2.5), 2);
    EXPECT_EQ(Round(-2.5), -2);
    EXPECT_DOUBLE_EQ(Round(0.125, 2), 0.12);
    EXPECT_DOUBLE_EQ(Round(0.375, 2), 0.38);
    EXPECT_EQ(Round(1e300, 2), 1e300);
    EXPECT_EQ(CLng(3.5), 4);
    EXPECT_EQ(CLng(4.5), 4);
    EXPECT_EQ(CLng(1e30), std::numeric_limits<qint64>::max());
    EXPECT_EQ(CLng(-1e30), std::numeric_limits<qint64>::min());
    // 2^63 is the first double past the largest integer; the one before it still is one, and so is -2^63.
    EXPECT_EQ(CLng(9223372036854775808.0), std::numeric_limits<qint64>::max());
    EXPECT_EQ(CLng(9223372036854774784.0), 9223372036854774784);
    EXPECT_EQ(CLng(-9223372036854775808.0), std::numeric_limits<qint64>::min());
    EXPECT_EQ(CLng(-9223372036854774784.0), -9223372036854774784);
    EXPECT_EQ(CLng(std::nan("")), 0);
}

TEST(CDate, LeavesOutThePartThatIsZero)
{
    EXPECT_EQ(CDate(QDateTime(QDate(2020, 2, 3), QTime(4, 5, 6))), S("2020-02-03 04:05:06"));
    EXPECT_EQ(CDate(QDateTime(QDate(2020, 2, 3), QTime(0, 0))), S("2020-02-03"));
    EXPECT_EQ(CDate(QDateTime(QDate(1899, 12, 30), QTime(4, 5, 6))), S("04:05:06"));
    EXPECT_EQ(CDate(QDateTime(QDate(), QTime(4, 5, 6))), S("04:05:06"));
    EXPECT_EQ(CDate(QDateTime()), S(""));
}

TEST(Rnd, RunsTheSameSequenceEveryTime)
{
    // The generator is one for the process; each test runs in a process of its own under ctest.
    const float want[] = {.7055475f, .533424f, .5795186f, .2895625f, .301948f};
    for (float number : want)
        EXPECT_NEAR(Rnd(), number, 5e-8f);
}

TEST(FormatSeconds, HasTwoDigitsInEachPart)
{
    EXPECT_EQ(FormatSeconds(0), S("00:00:00"));
    EXPECT_EQ(FormatSeconds(59.3), S("00:00:59"));
    EXPECT_EQ(FormatSeconds(59.7), S("00:01:00"));
    EXPECT_EQ(FormatSeconds(3661), S("01:01:01"));
    EXPECT_EQ(FormatSeconds(360000), S("100:00:00"));
    EXPECT_EQ(FormatSeconds(-5), S("-00:00:05"));
}

TEST(FormatSeconds, Cases)
{
    ExpectCases("format_seconds",
                [](const QJsonObject &args) -> QJsonValue { return FormatSeconds(args[u"seconds"].toDouble()); });
}
