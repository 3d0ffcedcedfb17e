#include "lang/Text.h"

#include <gtest/gtest.h>

using lang::Like;

namespace {

struct Row
{
    const char *text;
    const char *pattern;
    bool want;
};

const Row Rows[] = {
    {"", "", true},
    {"a", "", false},
    {"", "*", true},
    {"", "?", false},
    {"abc", "abc", true},
    {"abc", "ABC", false},
    {"abc", "a*", true},
    {"abc", "*c", true},
    {"abc", "a?c", true},
    {"abc", "a??c", false},
    {"a1c", "a#c", true},
    {"abc", "a#c", false},
    {"abc", "[a-c]*", true},
    {"abc", "[!a-c]*", false},
    {"xbc", "[!a-c]*", true},
    {"xbc", "[!a]*", true}, // one character behind the mark is a list too
    {"abc", "[!a]*", false},
    {"!bc", "[!a]*", true},
    {"a]c", "a]c", true},
    {"a-c", "a[-x]c", true},
    {"axc", "a[x-]c", true},
    {"a-c", "a[x-]c", true},
    {"ac", "a[]c", true},
    {"a!c", "a[!]c", true},
    {"a[c", "a[[]c", true},
    {"a*c", "a[*]c", true},
    {"abc", "a[*]c", false},
    {"a\\c", "a\\c", true},
    {"a\\*", "a\\*", true},
    {"a\\bc", "a\\*", true},
    {"aab", "*ab", true},
    {"ab\r\ncd", "*b*c*", true},
    {"mississippi", "*iss*ip*i", true},
    {"mississippi", "*iss*issi", false},
};

} // namespace

TEST(Like, MatchesByTheTable)
{
    for (const Row &row : Rows)
        EXPECT_EQ(Like(QString::fromUtf8(row.text), QString::fromUtf8(row.pattern)), row.want)
            << row.text << " against " << row.pattern;
}

TEST(Like, RaisesOnAMalformedPattern)
{
    EXPECT_THROW(Like(QStringLiteral("a"), QStringLiteral("[a")), lang::BadPattern);
    EXPECT_THROW(Like(QStringLiteral(""), QStringLiteral("*[")), lang::BadPattern);
    EXPECT_THROW(Like(QStringLiteral("x"), QStringLiteral("a[b")), lang::BadPattern);
    EXPECT_THROW(Like(QStringLiteral("x"), QStringLiteral("[z-a]")), lang::BadPattern);
}

TEST(Like, DoesNotBacktrackExponentially)
{
    const QString text(20000, u'a');
    QString pattern;
    for (int i = 0; i < 30; ++i)
        pattern += QStringLiteral("*a");
    // A walk that tried every way would not come back within the age of the world.
    EXPECT_FALSE(Like(text, pattern + u'b'));
    EXPECT_TRUE(Like(text, pattern));
}
