#include "sqltext/FindText.h"

#include "tests/support/ExpectCases.h"
#include "tests/support/Text.h"

#include <QJsonArray>
#include <QRegularExpression>

namespace {

QJsonArray Numbers(const auto &list)
{
    QJsonArray result;
    for (const auto &number : list)
        result.append(number);
    return result;
}

QJsonObject Shown(const FindResult &result)
{
    return {{QStringLiteral("hits"), Numbers(result.hits)},
            {QStringLiteral("message"), result.message},
            {QStringLiteral("text"), result.text},
            {QStringLiteral("selStart"), result.selStart},
            {QStringLiteral("selLength"), result.selLength}};
}

FindAnswer Answer(const QJsonObject &args)
{
    const QString button = args[u"button"].toString();
    return {button == u"cancel",    args[u"criteria"].toString(),    args[u"exact"].toBool(),
            args[u"case"].toBool(), args[u"replaceWith"].toString(), button == u"replace",
            button == u"replaceall"};
}

FindAnswer Next(const char *criteria)
{
    return {false, S(criteria), false, false, {}, false, false};
}

FindResult Script(const QString &text, qsizetype selStart, const QList<FindAnswer> &answers)
{
    qsizetype asked = 0;
    return FindInText(text, selStart, 0, [&](const FindHit &) { return answers.value(asked++); });
}

} // namespace

TEST(Find, Cases)
{
    ExpectCases("find_hits", [](const QJsonObject &args) -> QJsonValue {
        int asked = 0;
        return Shown(FindInText(args[u"text"].toString(), args[u"selStart"].toInteger(), 0, [&](const FindHit &) {
            FindAnswer answer = Answer(args);
            answer.cancelled = asked++ >= args[u"maxHits"].toInt();
            return answer;
        }));
    });
    ExpectCases("replace_all", [](const QJsonObject &args) -> QJsonValue {
        return Shown(FindInText(args[u"text"].toString(), args[u"selStart"].toInteger(), 0, [&](const FindHit &) {
            FindAnswer answer = Answer(args);
            answer.doReplaceAll = true;
            return answer;
        }));
    });
    ExpectCases("find_script", [](const QJsonObject &args) -> QJsonValue {
        QList<FindAnswer> answers;
        for (const QJsonValue &answer : args[u"answers"].toArray())
            answers += Answer(answer.toObject());
        return Shown(Script(args[u"text"].toString(), args[u"selStart"].toInteger(), answers));
    });
    ExpectCases("tree_find", [](const QJsonObject &args) -> QJsonValue {
        QStringList nodes;
        for (const QJsonValue &node : args[u"nodes"].toArray())
            nodes += node.toString();
        int asked = 0;
        const TreeFindResult result = FindInTree(nodes, args[u"selected"].toInt(), [&](int) {
            FindAnswer answer = Answer(args);
            answer.cancelled = asked++ >= args[u"maxHits"].toInt();
            return answer;
        });
        return QJsonObject{{QStringLiteral("hits"), Numbers(result.hits)}, {QStringLiteral("message"), result.message}};
    });
    const auto entries = [](const QJsonObject &args) {
        QStringList list;
        for (const QJsonValue &entry : args[u"entries"].toArray())
            list += entry.toString();
        return list;
    };
    ExpectCases("combo_push", [&](const QJsonObject &args) -> QJsonValue {
        return QJsonArray::fromStringList(PushEntry(entries(args), args[u"text"].toString()));
    });
    ExpectCases("saved_list_keys", [&](const QJsonObject &args) -> QJsonValue {
        QJsonArray keys;
        for (const auto &[key, entry] : SavedListKeys(entries(args), args[u"suffix"].toString()))
            keys.append(QJsonArray{key, entry});
        return keys;
    });
}

TEST(Find, WildcardsMatchWithinTheLengthOfTheCriteria)
{
    EXPECT_EQ(Script(S("xa1b"), 0, {Next("a#"), {}}).hits, QList<qsizetype>({1}));
    EXPECT_EQ(Script(S("xabc"), 0, {Next("[b-c]"), {}}).message, true); // five characters do not fit the pattern of one
    EXPECT_EQ(Script(S("ab*"), 0, {Next("[*]"), {}}).message, true);
    EXPECT_EQ(Script(S("abcd"), 1, {Next("b?"), {}}).hits, QList<qsizetype>({1}));
}

TEST(Find, MalformedPatternEndsSilently)
{
    const FindResult result = Script(S("a[b"), 1, {Next("[b")});
    EXPECT_FALSE(result.message);
    EXPECT_TRUE(result.hits.isEmpty());
    EXPECT_EQ(result.selStart, 1);
    // No place to try it at: the pattern is never read, so nothing was found.
    EXPECT_TRUE(Script(S("a"), 0, {Next("[bcd")}).message);
    EXPECT_FALSE(FindInTree({S("a")}, 1, [](int) { return Next("["); }).message);
}

TEST(Find, EmptyCriteriaHitsEveryPlace)
{
    const FindResult found = Script(S("ab"), 0, {Next(""), Next(""), Next(""), {}});
    EXPECT_EQ(found.hits, QList<qsizetype>({0, 1, 2}));
    FindAnswer all = Next("");
    all.doReplaceAll = true;
    all.replaceWith = S("xy");
    EXPECT_EQ(Script(S("ab"), 2, {all}).text, S("xxxyyyab"));
}

TEST(Find, ExactMatchLooksTwoPlacesBack)
{
    FindAnswer exact = Next("b");
    exact.exactMatch = true;
    EXPECT_EQ(Script(S("xb"), 0, {exact, {}}).hits, QList<qsizetype>({1})); // no left test at place 1
    EXPECT_EQ(Script(S(" xb"), 0, {exact, {}}).hits, QList<qsizetype>({2}));
    EXPECT_TRUE(Script(S("x b"), 0, {exact, {}}).message);
    EXPECT_TRUE(Script(S("bx"), 0, {exact, {}}).message);
}

TEST(Find, ASingleReplacementIsCarriedOutAtOnceAndTheSearchGoesOnInWhatThereIs)
{
    FindAnswer replace = Next("a");
    replace.doReplace = true;
    replace.replaceWith = S("X");
    QStringList events;
    const QList<FindAnswer> answers{Next("a"), replace, Next("a"), {}};
    const auto ask = [&](const FindHit &hit) {
        events += hit.first ? S("first") : S("hit %1+%2").arg(hit.selStart).arg(hit.selLength);
        return answers.value(events.filter(QRegularExpression(S("first|hit"))).size() - 1);
    };
    const auto carryOut = [&](const FindEdit &edit) {
        events += S("%1+%2 %3").arg(edit.start).arg(edit.length).arg(edit.with);
        return S("Xa--a"); // the window made something else of it
    };
    const FindResult result = FindInText(S("a-  a"), 0, 0, ask, carryOut);
    EXPECT_EQ(events, QStringList({S("first"), S("hit 0+1"), S("0+1 X"), S("hit 1+1"), S("hit 4+1")}));
    EXPECT_EQ(result.hits, QList<qsizetype>({0, 1, 4}));
    EXPECT_EQ(result.text, S("Xa--a"));
    EXPECT_FALSE(result.replacedAll);
}

TEST(Find, ReplacingAllTellsNobodyOfASingleReplacement)
{
    FindAnswer all = Next("a");
    all.doReplaceAll = true;
    all.replaceWith = S("X");
    int told = 0;
    const FindResult result = FindInText(
        S("a-a"), 0, 0, [&](const FindHit &) { return all; },
        [&](const FindEdit &) {
            ++told;
            return QString();
        });
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(result.replacedAll);
    EXPECT_EQ(result.text, S("X-X"));
}

TEST(Find, LengthOfTheTextIsTakenOnce)
{
    FindAnswer replace = Next("a");
    replace.doReplace = true;
    replace.replaceWith = S("XYZ");
    // The replacement pushed the second hit behind the old end of the text.
    const FindResult result = Script(S("a-a"), 0, {Next("a"), replace, Next("a")});
    EXPECT_EQ(result.hits, QList<qsizetype>({0}));
    EXPECT_TRUE(result.message);
    EXPECT_EQ(result.text, S("XYZ-a"));
}

TEST(Find, ReplaceAllStartsAtTheTop)
{
    FindAnswer all = Next("a");
    all.doReplaceAll = true;
    all.replaceWith = S("-");
    EXPECT_EQ(Script(S("abab"), 3, {all}).text, S("-b-b"));
    // "Replace" in the first dialog finds only.
    FindAnswer first = Next("a");
    first.doReplace = true;
    EXPECT_EQ(Script(S("abab"), 0, {first, {}}).text, S("abab"));
}

TEST(Find, ReplaceAllIsLinear)
{
    constexpr int count = 1'000'000; // moving the text at each hit would take many times what a test may last
    QString text;
    for (int i = 0; i < count; ++i)
        text += S("select ");
    FindAnswer all = Next("select");
    all.doReplaceAll = true;
    all.replaceWith = S("x");
    const FindResult result = Script(text, 0, {all});
    EXPECT_EQ(result.hits.size(), count);
    EXPECT_EQ(result.text.size(), 2 * count);
}

TEST(FindTree, NeedsASelectedNode)
{
    const TreeFindResult result = FindInTree({S("a")}, 0, [](int) { return Next("a"); });
    EXPECT_FALSE(result.message);
    EXPECT_TRUE(result.hits.isEmpty());
}

// The hit begins on an LF: its replacement took the line end and left the "a", "bXab".
TEST(Find, NoHalfOfALineEndIsReplaced)
{
    FindAnswer replace = Next("?a");
    replace.doReplace = true;
    replace.replaceWith = S("X");
    QList<FindAnswer> answers{Next("?a"), replace, {}};
    QList<FindEdit> edits;
    QString text = S("b\r\nab");
    const FindResult result = FindInText(
        text, 0, 0, [&](const FindHit &) { return answers.isEmpty() ? FindAnswer() : answers.takeFirst(); },
        [&](const FindEdit &edit) {
            edits += edit;
            return text.replace(edit.start, edit.length, edit.with);
        });
    EXPECT_EQ(result.hits.value(0), 2);
    ASSERT_EQ(edits.size(), 1);
    EXPECT_EQ(edits[0].start, 1);
    EXPECT_EQ(edits[0].length, 3);
    EXPECT_EQ(result.text, S("bXb"));
    replace.doReplace = false;
    replace.doReplaceAll = true;
    EXPECT_EQ(Script(S("b\r\nab"), 0, {replace}).text, S("bXb"));
    replace.criteria = S("a?"); // ends between CR and LF
    EXPECT_EQ(Script(S("ba\r\nb"), 0, {replace}).text, S("bXb"));
}

// Letters with a third form: the long s is an S in upper case, the dotless i an I.
TEST(Find, EveryLetterThatIsTheSameInUpperCaseIsAHit)
{
    EXPECT_EQ(Script(QStringLiteral("x\u017Felect"), 0, {Next("select"), {}}).hits, QList<qsizetype>({1}));
    EXPECT_EQ(Script(QStringLiteral("a\u0131n"), 0, {Next("in"), {}}).hits, QList<qsizetype>({1}));
    FindAnswer exact = Next("s");
    exact.caseSensitive = true;
    EXPECT_TRUE(Script(QStringLiteral("a\u017F"), 0, {exact}).hits.isEmpty());
    EXPECT_TRUE(Script(QStringLiteral("a\u0180"), 0, {Next("s")}).hits.isEmpty());
}
