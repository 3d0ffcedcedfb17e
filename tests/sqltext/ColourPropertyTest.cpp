// The fast colouring against the literal chain, on random texts and random keyword lists.
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/sqltext/LiteralColour.h"
#include "tests/support/Places.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace {

using Random = QRandomGenerator;

QString Pick(Random &random, const QStringList &list)
{
    return list[random.bounded(int(list.size()))];
}

QString RandomCase(Random &random, QString text)
{
    const quint32 kind = random.bounded(4u);
    for (QChar &c : text) {
        const bool upper = kind == 0 || (kind == 1 && random.bounded(2) == 0);
        c = kind == 3 ? c : upper ? c.toUpper() : c.toLower();
    }
    return text;
}

// What a text is thrown together from, apart from the keywords themselves.
const QStringList kPieces = {"'",
                             "'",
                             "\"",
                             "\"",
                             "--",
                             "--",
                             "-",
                             "---",
                             "[",
                             "]",
                             "{",
                             "}",
                             "\\",
                             "\\\\",
                             "\r\n",
                             "\r\n",
                             "\r",
                             "\n",
                             "\t",
                             " ",
                             " ",
                             " ",
                             "  ",
                             ",",
                             "(",
                             ")",
                             ":",
                             "$",
                             "&",
                             ".",
                             ";",
                             "0",
                             "1",
                             "10",
                             "a",
                             "x",
                             "cf1",
                             "cf0",
                             "tab",
                             "par",
                             "\\cf0 ",
                             "\\cf1 ",
                             "\\cf2 ",
                             "\\cf3 ",
                             "\\cf4 ",
                             "\\CF0 ",
                             "\\Cf1 ",
                             "\\cf\\cf1 1 ",
                             "\\cf\\cf0 0 ",
                             "\\CF3 ",
                             "\\i0",
                             "\\par ",
                             "f0 ",
                             "cf0 select",
                             "1 select",
                             QString(QChar(0xEE)),
                             QString(QChar(0xCE)),
                             QString(QChar(0x17F)),
                             QString(QChar(0x212A)),
                             QString(QChar(0xE9)),
                             QString(QChar(0xC9)),
                             QString::fromUcs4(U"\U0001F600"),
                             QString(QChar(0xD83D)),
                             QString(QChar(0xDE00)),
                             QString::fromUcs4(U"\U00010400"),
                             QString::fromUcs4(U"\U00010428"),
                             QString(QChar(0)),
                             QString(QChar(0x130)),
                             QString(QChar(0xDF))};

QString RandomText(Random &random, const QStringList &words)
{
    QString text;
    const int count = random.bounded(24);
    for (int i = 0; i < count; ++i) {
        const quint32 kind = random.bounded(10u);
        if (kind < 5 && !words.isEmpty()) {
            const QString word = RandomCase(random, Pick(random, words));
            text += word;
            // The same word again, in contact or sharing some letters.
            if (random.bounded(4) == 0)
                text += word.mid(random.bounded(int(word.size()) + 1));
            if (random.bounded(6) == 0)
                text += word;
        } else {
            text += Pick(random, kPieces);
        }
        if (random.bounded(3) == 0)
            text += u' ';
    }
    // Letters that fold into ASCII from outside.
    if (random.bounded(12) == 0)
        text.replace(u's', QChar(0x17F));
    if (random.bounded(12) == 0)
        text.replace(u'K', QChar(0x212A));
    return text;
}

QStringList Shipped()
{
    KeywordSet list;
    LoadKeywords(QStringLiteral("VB"), list, (places::Source() + QStringLiteral("/data/files")));
    return list.Words();
}

std::string Show(const QString &text)
{
    return text.toHtmlEscaped().toStdString();
}

void ExpectSame(const QString &text, const QStringList &keywords, const KeywordSet &set, bool whole)
{
    ASSERT_EQ(ColourBody(text, set, whole), literal::ColourBody(text, keywords, whole))
        << "text: " << Show(text) << "\nkeywords: " << Show(keywords.join(u'|'));
}

class ColourProperty : public testing::Test
{
protected:
    void SetUp() override { InitColorTable(); }
};

TEST_F(ColourProperty, TheShippedList)
{
    const QStringList shipped = Shipped();
    ASSERT_GE(shipped.size(), 600);
    const KeywordSet set(shipped);
    Random random(101);
    for (int i = 0; i < 600; ++i)
        ASSERT_NO_FATAL_FAILURE(ExpectSame(RandomText(random, shipped), shipped, set, random.bounded(2) == 0));
}

// Small lists, much used: words that contain, repeat and overlap one another.
TEST_F(ColourProperty, WordsInContact)
{
    const QStringList words = {"select", "SEL",     "ect", "or",   "order", "ORDER BY", "BY",  "else", "elselse",
                               "text",   "TEXTEXT", "in",  "inin", "a",     "aa",       "aaa", "aba",  "ab",
                               "abab",   "b",       "cf",  "cf0",  "cf1",   "f0",       "tab", "par",  "0",
                               "1",      "10",      "c",   "f",    "k",     "s",        "sk",  "IS",   "is"};
    Random random(202);
    for (int i = 0; i < 25'000; ++i) {
        QStringList keywords;
        const int count = random.bounded(8);
        for (int k = 0; k < count; ++k)
            keywords += RandomCase(random, Pick(random, words));
        const QStringList used = random.bounded(3) == 0 || keywords.isEmpty() ? words : keywords;
        ASSERT_NO_FATAL_FAILURE(
            ExpectSame(RandomText(random, used), keywords, KeywordSet(keywords), random.bounded(2) == 0));
    }
}

// Lists that no sane file holds: blanks, signs, parts of switches, other scripts, empty lines, the same again.
TEST_F(ColourProperty, OddKeywords)
{
    const QStringList words = {"",
                               " ",
                               "  ",
                               "\\",
                               "\\\\",
                               "\\cf1 ",
                               "\\cf0",
                               "cf1 ",
                               "f1 select",
                               "1 select",
                               "0 ",
                               " select",
                               "select ",
                               " select ",
                               ",",
                               "(",
                               ")",
                               "(select)",
                               "--",
                               "-",
                               "'",
                               "\"",
                               "[",
                               "]",
                               "{",
                               "}",
                               "\t",
                               "\r\n",
                               "\r",
                               "\n",
                               ".",
                               "&",
                               "$a$",
                               "order by",
                               "order",
                               "by",
                               "select",
                               "is not null",
                               "not null",
                               "a b",
                               "b a",
                               "a a",
                               "a",
                               "tab ",
                               "\\tab",
                               "par",
                               QString(QChar(0xEE)),
                               QString(QChar(0xE9)),
                               "caf" + QString(QChar(0xC9)),
                               QString(QChar(0x17F)),
                               "ma" + QString(QChar(0xDF)),
                               QString(QChar(0x212A)),
                               QString::fromUcs4(U"\U00010400"),
                               QString(QChar(0xD83D)),
                               QString(QChar(0)),
                               "0",
                               "1"};
    Random random(303);
    for (int i = 0; i < 15'000; ++i) {
        QStringList keywords;
        const int count = random.bounded(random.bounded(10) == 0 ? 40 : 8);
        for (int k = 0; k < count; ++k)
            keywords += RandomCase(random, Pick(random, words));
        ASSERT_NO_FATAL_FAILURE(
            ExpectSame(RandomText(random, words), keywords, KeywordSet(keywords), random.bounded(2) == 0));
    }
}

// Random strings over few letters, as texts and as keywords: all ways to meet, overlap and repeat come up.
TEST_F(ColourProperty, FewLetters)
{
    Random random(404);
    const auto word = [&](int longest) {
        QString text;
        const int length = random.bounded(longest + 1);
        for (int i = 0; i < length; ++i)
            text += QStringLiteral("aAbB ,")[random.bounded(6)];
        return text;
    };
    for (int i = 0; i < 25'000; ++i) {
        QStringList keywords;
        const int count = random.bounded(7);
        for (int k = 0; k < count; ++k) {
            keywords += word(5);
            if (random.bounded(3) > 0)
                keywords.last().remove(u' ').remove(u',');
        }
        ASSERT_NO_FATAL_FAILURE(ExpectSame(word(24), keywords, KeywordSet(keywords), random.bounded(2) == 0));
    }
}

// Of a long list of odd keywords only those are tried that the text can hold, or can come to hold with the switches of
// the keywords before.
TEST_F(ColourProperty, AKeywordThatArisesFromSwitches)
{
    QStringList keywords;
    for (int i = 0; i < 40; ++i)
        keywords += QStringLiteral("odd ") + QString::number(i);
    keywords += {"select", ",\\cf1", "t\\cf0", "\\cf0", "1 select\\", "1 SELECT\\CF0"};
    const KeywordSet set(keywords);
    for (const char *text : {"a ,select b", ",select", "select", "a select,select", "odd 1,select odd 39", "\\cf1", ""})
        ExpectSame(QString::fromLatin1(text), keywords, set, true);
    const QString text = QStringLiteral("a ,select");
    EXPECT_NE(ColourBody(text, set, true), ColourBody(text, QStringList{"select"}, true));
}

// No letter outside ASCII but these two folds into it; the walk by words counts on that.
TEST_F(ColourProperty, LettersThatFoldIntoAscii)
{
    for (int unit = 128; unit < 0x10000; ++unit) {
        if (QChar(unit).toCaseFolded().unicode() < 128) {
            EXPECT_TRUE(unit == 0x17F || unit == 0x212A) << unit;
        }
    }
}

} // namespace
