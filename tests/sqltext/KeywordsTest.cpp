// The keyword file: what is read of it, and what damaged, huge and missing ones come to.
#include "sqltext/Keywords.h"
#include "tests/support/Places.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kShipped = (places::Source() + QStringLiteral("/data/files"));

QStringList Loaded(const QByteArray &bytes, const QString &mode = QStringLiteral("VB"))
{
    QTemporaryDir dir;
    for (const char *name : {"Tokens.col", "C++Color.col"}) {
        QFile file(dir.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    KeywordSet list;
    LoadKeywords(mode, list, dir.path());
    return list.Words();
}

TEST(Keywords, LinesAreTakenWhole)
{
    EXPECT_EQ(Loaded("SELECT\r\n FROM \r\n\r\norder by"), (QStringList{"SELECT", " FROM ", "", "order by"}));
    EXPECT_EQ(Loaded("a\nb\rc\r\n"), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(Loaded("\xEF\xBB\xBF"
                     "a\n"),
              QStringList{"a"});
    EXPECT_EQ(Loaded("caf\xC3\xA9\n"), QStringList{QStringLiteral(u"caf\u00E9")});
    EXPECT_EQ(Loaded("caf\xE9\x80\n"), QStringList{QStringLiteral(u"caf\u00E9\u20AC")});
}

TEST(Keywords, OnlyOneModeFillsTheList)
{
    EXPECT_TRUE(Loaded("a\n", QStringLiteral("C++")).isEmpty());
    EXPECT_TRUE(Loaded("a\n", QStringLiteral("vb")).isEmpty());
    EXPECT_TRUE(Loaded("a\n", QString()).isEmpty());
}

TEST(Keywords, LoadingAppends)
{
    KeywordSet list(QStringList{"first"});
    LoadKeywords(QStringLiteral("VB"), list, kShipped);
    EXPECT_EQ(list.Words().first(), QStringLiteral("first"));
    EXPECT_GT(list.Words().size(), 600);
}

TEST(Keywords, AMissingFileLeavesTheListAsItIs)
{
    KeywordSet list(QStringList{"kept"});
    for (const char *mode : {"VB", "C++"})
        LoadKeywords(QString::fromLatin1(mode), list, QStringLiteral("/nonexistent/folder"));
    EXPECT_EQ(list.Words(), QStringList{"kept"});
    QTemporaryDir dir;
    QDir(dir.path()).mkdir(QStringLiteral("Tokens.col")); // a folder in its place
    LoadKeywords(QStringLiteral("VB"), list, dir.path());
    EXPECT_EQ(list.Words(), QStringList{"kept"});
}

TEST(Keywords, ForeignFilesAreSurvived)
{
    EXPECT_EQ(Loaded(QByteArray(60, 'x') + "\nSELECT\n" + QByteArray(50, 'y')),
              (QStringList{"SELECT", QString(50, 'y')}));
    EXPECT_TRUE(Loaded(QByteArray(5'000'000, 'z')).isEmpty());
    EXPECT_LE(Loaded(QByteArray(3'000'000, '\n')).size(), 1 << 20);
    QByteArray binary;
    for (int i = 0; i < 200'000; ++i)
        binary += char(i * 7919 >> 3);
    const KeywordSet noise(Loaded(binary));
    EXPECT_FALSE(noise.Words().isEmpty());
}

TEST(Keywords, TheShippedListIsSound)
{
    KeywordSet list;
    LoadKeywords(QStringLiteral("VB"), list, kShipped);
    QStringList words = list.Words();
    for (const QString &word : words) {
        EXPECT_EQ(word, word.toUpper());
        EXPECT_FALSE(word.isEmpty() || word.contains(u' '));
    }
    EXPECT_EQ(words.removeDuplicates(), 0);
    for (const char *word : {"SELECT", "FROM", "WHERE", "NVARCHAR", "ROWNUM", "ILIKE", "AUTO_INCREMENT", "PRAGMA"})
        EXPECT_TRUE(words.contains(QString::fromLatin1(word))) << word;
}

TEST(Keywords, GlobalListStartsEmpty)
{
    gKeywordSet.Append(QStringLiteral("x"));
    ClearKeywordSet();
    EXPECT_TRUE(gKeywordSet.Words().isEmpty());
}

TEST(Keywords, MatchCaseOfUnequalLengths)
{
    EXPECT_EQ(MatchCase(QStringLiteral("se"), QStringLiteral("SELECT")).toStdString(), "seELECT");
    EXPECT_EQ(MatchCase(QString(), QStringLiteral("SELECT")).toStdString(), "SELECT");
    EXPECT_EQ(MatchCase(QStringLiteral("selection"), QStringLiteral("SELECT")).toStdString(), "select");
    EXPECT_EQ(MatchCase(QStringLiteral(u"\u00E9A"), QStringLiteral(u"\u00C9a")), QStringLiteral(u"\u00C9A"));
}

TEST(Keywords, Letters)
{
    EXPECT_TRUE(IsAlpha(QStringLiteral("A")) && IsAlpha(QStringLiteral("m")));
    for (const char *other : {"@", "[", "1", "_", ""})
        EXPECT_FALSE(IsAlpha(QString::fromLatin1(other))) << other;
    EXPECT_FALSE(IsAlpha(QStringLiteral(u"\u00E9")));
}

TEST(Keywords, WordEnds)
{
    int ends = 0;
    for (int unit = 0; unit < 0x10000; ++unit) {
        const bool exact = IsWordEnd(QChar(unit));
        ends += exact;
        EXPECT_EQ(IsWordEndAnyCase(QChar(unit)), exact || unit == 0xCE) << unit;
    }
    EXPECT_EQ(ends, 11);
}

} // namespace
