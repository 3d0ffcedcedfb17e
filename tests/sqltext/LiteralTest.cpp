// The fast forms against the rules written down word by word, on many random texts.
#include "sqltext/FindText.h"
#include "sqltext/clsBraceStacker.h"
#include "sqltext/clsDStreamBuffer.h"

#include "lang/Text.h"

#include <gtest/gtest.h>

#include <random>

using namespace lang;

namespace {

class Dice
{
public:
    explicit Dice(unsigned seed) : m_engine(seed) {}
    int Roll(int sides) { return int(m_engine() % unsigned(sides)); }
    QString Text(const QStringList &pieces, int most)
    {
        QString text;
        for (int count = Roll(most + 1); count > 0; --count)
            text += pieces.at(Roll(int(pieces.size())));
        return text;
    }

private:
    std::mt19937 m_engine;
};

QStringList List(std::initializer_list<const char *> items)
{
    QStringList list;
    for (const char *item : items)
        list += QString::fromUtf8(item);
    return list;
}

// Plain strings, every position tested, the text copied at each replacement.
struct LiteralFind
{
    QString text;
    qsizetype selStart;
    qsizetype selLength = 0;
    QList<FindAnswer> answers;
    QList<qsizetype> hits = {};
    bool message = false;

    // As the editor selects: no half of a line end.
    void SelText(const QString &with)
    {
        const auto inside = [this](qsizetype at) { return at > 0 && Mid(text, at, 2) == u"\r\n"; };
        qsizetype end = selStart + selLength;
        if (selLength > 0 && inside(end))
            ++end;
        if (inside(selStart))
            --selStart;
        selLength = selLength > 0 ? end - selStart : 0;
        text = Left(text, selStart) + with + Mid(text, selStart + selLength + 1);
        selStart += with.size();
        selLength = 0;
    }

    bool IsHit(const FindAnswer &answer, qsizetype p, qsizetype textLength) const
    {
        const QString set = QString::fromUtf8("   \r \n,)(:$&\u00EE\r\n\t");
        const qsizetype length = answer.criteria.size();
        QString chunk = Mid(text, p + 1, length);
        QString pattern = answer.criteria;
        if (answer.exactMatch) {
            if (p > 1 && InStr(set, Mid(text, p - 1, 1)) == 0)
                return false;
            if (p < textLength && InStr(set, Mid(text, p + length + 1, 1)) == 0)
                return false;
        }
        if (!answer.caseSensitive) {
            chunk = UCase(chunk);
            pattern = UCase(pattern);
        }
        return Like(chunk, pattern);
    }

    void Run()
    {
        const qsizetype saved = selStart;
        FindAnswer answer = Next();
        while (!answer.cancelled) {
            const bool all = answer.doReplaceAll;
            if (all)
                selStart = selLength = 0;
            const qsizetype textLength = text.size();
            int pass = 0;
            bool again = false;
            while (!again) {
                for (qsizetype p = selStart; p <= textLength - answer.criteria.size(); ++p) {
                    if (!IsHit(answer, p, textLength))
                        continue;
                    hits += p;
                    selStart = std::min(p, text.size());
                    selLength = std::min(answer.criteria.size(), text.size() - selStart);
                    if (all) {
                        SelText(answer.replaceWith);
                        continue;
                    }
                    answer = Next();
                    if (answer.cancelled)
                        return;
                    if (answer.doReplace)
                        SelText(answer.replaceWith);
                    if (answer.doReplaceAll) {
                        again = true;
                        break;
                    }
                    pass = 0;
                }
                if (again)
                    break;
                if (++pass > 2) {
                    message = true;
                    selStart = saved;
                    selLength = 0;
                    return;
                }
                if (all)
                    return;
            }
        }
    }

    FindAnswer Next() { return answers.isEmpty() ? FindAnswer() : answers.takeFirst(); }
};

} // namespace

TEST(Literal, FindAndReplace)
{
    Dice dice(1);
    const QStringList pieces = List({"a", "b", "A", "B", " ", ",", "\r\n", "1", "\xc3\xae", "."});
    const QStringList criteria = List({"a", "ab", "A", "a?", "#", "[ab]", "*", "", "b ", "aa", "[!a]x", "\r\n"});
    const QStringList withs = List({"", "a", "ab", "aab", "x"});
    for (int round = 0; round < 20000; ++round) {
        LiteralFind literal{dice.Text(pieces, 14), 0, 0, {}};
        literal.selStart = dice.Roll(int(literal.text.size()) + 1);
        for (int i = dice.Roll(6); i >= 0; --i) {
            const int button = dice.Roll(6);
            literal.answers +=
                FindAnswer{button == 5,       criteria.at(dice.Roll(int(criteria.size()))), dice.Roll(3) == 0,
                           dice.Roll(2) == 0, withs.at(dice.Roll(int(withs.size()))),       button == 3,
                           button == 4};
        }
        QList<FindAnswer> answers = literal.answers;
        const QString text = literal.text;
        QString mirrored = text; // what a window shows that only repeats the single replacements
        const auto ask = [&](const FindHit &) { return answers.isEmpty() ? FindAnswer() : answers.takeFirst(); };
        const auto repeat = [&](const FindEdit &edit) { return mirrored.replace(edit.start, edit.length, edit.with); };
        const FindResult result = FindInText(text, literal.selStart, 0, ask, repeat);
        literal.Run();
        ASSERT_EQ(result.text, literal.text) << text.toStdString();
        ASSERT_EQ(result.hits, literal.hits) << text.toStdString();
        ASSERT_EQ(result.message, literal.message) << text.toStdString();
        ASSERT_EQ(result.selStart, literal.selStart) << text.toStdString();
        ASSERT_EQ(result.selLength, literal.selLength) << text.toStdString();
        if (!result.replacedAll) {
            ASSERT_EQ(mirrored, result.text) << text.toStdString();
        }
    }
}

TEST(Literal, BracePairs)
{
    Dice dice(2);
    const QStringList pieces = List({"(", "(", ")", ")", "a"});
    for (int round = 0; round < 20000; ++round) {
        const QString text = dice.Text(pieces, 20);
        clsBraceStacker brace;
        brace.SetTextBody(text, QStringLiteral("("), QStringLiteral(")"));
        // The pairing as it is told, in a table that is large enough for every column.
        std::vector<std::array<qsizetype, 2>> groups(size_t(text.size()) + 2, {0, 0});
        size_t top = 0;
        for (qsizetype i = 1; i <= text.size(); ++i) {
            if (text.at(i - 1) == u'(') {
                groups[++top][0] = i;
            } else if (text.at(i - 1) == u')') {
                size_t j = top;
                while (groups[j][1] != 0 && j != 0)
                    --j;
                if (groups[j][0] >= 1 && groups[j][1] == 0)
                    groups[j][1] = i;
                else
                    groups[++top][1] = i;
            }
        }
        for (qsizetype group = 1; group <= brace.GetLength(); ++group) {
            ASSERT_EQ(brace.Opener(group), groups[size_t(group)][0]) << text.toStdString() << " group " << group;
            ASSERT_EQ(brace.Closer(group), groups[size_t(group)][1]) << text.toStdString() << " group " << group;
        }
    }
}

TEST(Literal, StreamRemembersNothingWrong)
{
    Dice dice(3);
    const QStringList pieces = List({"a", ",", "\n", "\r\n", "--", "b"});
    const QStringList tokens = List({",", "--", "b", "", "\n"});
    for (int round = 0; round < 5000; ++round) {
        clsDStreamBuffer stream;
        QString buffer;
        qsizetype at = 0;
        for (int step = 0; step < 12; ++step) {
            if (dice.Roll(4) == 0) {
                const QString more = dice.Text(pieces, 6);
                stream.AppendString(more);
                buffer += more;
            }
            if (dice.Roll(20) == 0) {
                stream.Clear();
                buffer.clear();
                at = 0;
            }
            const QString token = tokens.at(dice.Roll(int(tokens.size())));
            qsizetype p = InStr(at + 1, buffer, token);
            const qsizetype q = InStr(at + 1, buffer, QStringLiteral("\n"));
            if (q < p)
                p = q;
            const QString want = p >= 1 ? Mid(buffer, at + 1, p - 1 - at) : Mid(buffer, at + 1);
            at = p >= 1 ? p : buffer.size();
            ASSERT_EQ(stream.ReadUntill2(token), want) << buffer.toStdString();
            ASSERT_EQ(stream.AtEndOfStream(), at == buffer.size());
        }
    }
}
