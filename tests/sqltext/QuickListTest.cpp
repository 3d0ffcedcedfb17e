#include "sqltext/QuickList.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <QJsonArray>
#include <random>

namespace {

QStringList Items(const QJsonObject &args)
{
    QStringList items;
    for (const QJsonValue &item : args[u"items"].toArray())
        items += item.toString();
    return items;
}

} // namespace

TEST(QuickList, Cases)
{
    ExpectCases("word_at_caret", [](const QJsonObject &args) -> QJsonValue {
        return GetWordAtCaret(args[u"text"].toString(), args[u"selStart"].toInteger());
    });
    ExpectCases("replace_word_text", [](const QJsonObject &args) -> QJsonValue {
        qsizetype caret = -1;
        return ReplaceWordAtCaret(args[u"text"].toString(), args[u"selStart"].toInteger(), args[u"newWord"].toString(),
                                  caret);
    });
    ExpectCases("find_in_quick_list", [](const QJsonObject &args) -> QJsonValue {
        return FindInQuickList(Items(args), args[u"word"].toString());
    });
    ExpectCases("quick_list_selection", [](const QJsonObject &args) -> QJsonValue {
        return QuickNames(Items(args)).Select(GetWordAtCaret(args[u"text"].toString(), args[u"selStart"].toInteger()));
    });
}

TEST(QuickList, WordAtTheVeryStart)
{
    EXPECT_EQ(GetWordAtCaret(S("abc"), 0), S("a"));
    EXPECT_EQ(GetWordAtCaret(S("1bc"), 0), S(""));
    EXPECT_EQ(GetWordAtCaret(S("_bc"), 0), S("_"));
    EXPECT_EQ(GetWordAtCaret(S("select cust"), 11), S("cust"));
    EXPECT_EQ(GetWordAtCaret(S("1bc"), 3), S("bc"));
    EXPECT_EQ(GetWordAtCaret(S("a,"), 2), S(""));
    EXPECT_EQ(GetWordAtCaret(S("abc"), 99), S("abc"));
}

TEST(QuickList, StarAndQuestionMarkEndAWord)
{
    EXPECT_EQ(GetWordAtCaret(S("a*bc"), 4), S("bc"));
    EXPECT_EQ(GetWordAtCaret(S("a?bc"), 4), S("bc"));
    EXPECT_EQ(GetWordAtCaret(S("a#bc"), 4), S("a#bc"));
}

TEST(QuickList, CaretGoesBehindTheNewWord)
{
    qsizetype caret = -1;
    EXPECT_EQ(ReplaceWordAtCaret(S("select cu from"), 9, S("CUSTOMERS"), caret), S("select CUSTOMERS from"));
    EXPECT_EQ(caret, 16);
    // A delimiter at the first character goes with the word.
    EXPECT_EQ(ReplaceWordAtCaret(S("(cu"), 3, S("X"), caret), S("X"));
    EXPECT_EQ(caret, 1);
    EXPECT_EQ(ReplaceWordAtCaret(S(""), 0, S("X"), caret), S("X"));
    EXPECT_EQ(caret, 1);
}

// By halving as well as by cutting letter after letter.
TEST(QuickList, TheLongestBeginningIsFound)
{
    std::mt19937 random(7);
    const auto text = [&](int most) {
        QString word;
        for (int i = int(random() % unsigned(most)) + 1; i > 0; --i)
            word += QLatin1Char("abc"[random() % 3]);
        return word;
    };
    for (int round = 0; round < 400; ++round) {
        QStringList items;
        for (int i = 0; i < 12; ++i)
            items += text(7);
        const QuickNames names(items);
        const QString word = text(12);
        qsizetype wanted = -1;
        for (QString prefix = word; !prefix.isEmpty() && wanted < 0; prefix.chop(1))
            wanted = names.Find(prefix);
        ASSERT_EQ(names.Select(word), wanted) << qPrintable(word);
    }
    // A word far longer than any name costs no more than the longest name does.
    EXPECT_EQ(QuickNames({S("b"), S("AB")}).Select(S("ab") + QString(1'000'000, u'b')), 1);
}

TEST(QuickList, LooksInsideOfNamesInOrder)
{
    const QuickNames names({S(""), S("CustomerOrders"), S("ORDERS")});
    EXPECT_EQ(names.Find(S("order")), 1);
    EXPECT_EQ(names.Find(S("orders\nOrders")), -1);
    EXPECT_EQ(names.Find(S("")), 1);
    EXPECT_EQ(names.Select(S("")), -1);
    EXPECT_EQ(names.Select(S("ordersxyz")), 1);
    EXPECT_EQ(QuickNames().Select(S("a")), -1);
}
