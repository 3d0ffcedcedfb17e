#include "sqltext/BraceShow.h"

#include "tests/support/ExpectCases.h"

#include <QJsonArray>

namespace {

clsBraceStacker Stack(const QJsonObject &args)
{
    clsBraceStacker brace;
    brace.SetTextBody(args[u"text"].toString(), args[u"open"].toString(), args[u"close"].toString());
    return brace;
}

clsBraceStacker Stack(const QString &text, const QString &open, const QString &close)
{
    clsBraceStacker brace;
    brace.SetTextBody(text, open, close);
    return brace;
}

} // namespace

TEST(Brace, Cases)
{
    // A focus that a case gives as null is not checked there.
    for (const cases::Case &one : cases::Of(QStringLiteral("brace"))) {
        const clsBraceStacker brace = Stack(one.args);
        const QJsonArray focusWanted = one.want.toObject()[u"focus"].toArray();
        QJsonArray groups, broken, focus;
        for (qsizetype i = 1; i <= brace.GetLength(); ++i) {
            groups.append(QJsonArray{brace.Opener(i), brace.Closer(i)});
            broken.append(brace.IsBroken(i));
            const clsBraceStacker::Focus shown = brace.FocusOnGroup(i);
            QJsonValue selStart = QJsonValue::Null;
            if (shown.selStart)
                selStart = *shown.selStart;
            if (focusWanted.at(i - 1).isNull())
                focus.append(QJsonValue::Null);
            else
                focus.append(QJsonObject{{QStringLiteral("rtf"), shown.rtf}, {QStringLiteral("selStart"), selStart}});
        }
        const QJsonObject got{{QStringLiteral("balanced"), brace.IsBalanced()},
                              {QStringLiteral("length"), brace.GetLength()},
                              {QStringLiteral("groups"), groups},
                              {QStringLiteral("broken"), broken},
                              {QStringLiteral("focus"), focus},
                              {QStringLiteral("original"), brace.GetOriginal()}};
        EXPECT_TRUE(cases::Matches(one.want, got)) << "text.jsonl:" << one.line;
    }
    ExpectCases("brace_isbroken",
                [](const QJsonObject &args) -> QJsonValue { return Stack(args).IsBroken(args[u"i"].toInt()); });
    ExpectCases("brace_focus",
                [](const QJsonObject &args) -> QJsonValue { return Stack(args).FocusOnGroup(args[u"i"].toInt()).rtf; });
}

TEST(Brace, ColumnBehindTheLastGroupIsBroken)
{
    const clsBraceStacker brace = Stack(QStringLiteral("(a)"), QStringLiteral("("), QStringLiteral(")"));
    EXPECT_FALSE(brace.IsBroken(1));
    EXPECT_TRUE(brace.IsBroken(2));
    EXPECT_FALSE(brace.IsBroken(3));
    EXPECT_TRUE(clsBraceStacker().FocusOnGroup(1).rtf.isEmpty());
}

TEST(Brace, WritesBehindTheTableAreDropped)
{
    const clsBraceStacker brace = Stack(QStringLiteral("))(("), QStringLiteral("("), QStringLiteral(")"));
    EXPECT_EQ(brace.GetLength(), 2);
    EXPECT_TRUE(brace.IsBalanced());
    EXPECT_EQ(brace.Closer(1), 1);
    EXPECT_EQ(brace.Closer(2), 2);
    EXPECT_EQ(brace.Opener(3), 3);
    EXPECT_EQ(brace.Opener(4), 0);
}

TEST(Brace, CountsTheMarksOfTheFrame)
{
    const clsBraceStacker brace =
        Stack(QStringLiteral("{\\rtf1{\\fonttbl}a}"), QStringLiteral("{"), QStringLiteral("}"));
    EXPECT_EQ(brace.GetLength(), 2);
    EXPECT_EQ(brace.Opener(1), 1);
    EXPECT_EQ(brace.Closer(1), 18);
    EXPECT_EQ(brace.FocusOnGroup(2).rtf, QStringLiteral("{\\rtf1\\b {\\fonttbl}\\b0 a}"));
}

TEST(Brace, DeepNestingIsPairedInOneWalk)
{
    constexpr int depth = 200000;
    const clsBraceStacker brace =
        Stack(QString(depth, u'(') + QString(depth, u')'), QStringLiteral("("), QStringLiteral(")"));
    EXPECT_EQ(brace.GetLength(), depth);
    EXPECT_EQ(brace.Closer(1), 2 * depth);
    EXPECT_EQ(brace.Closer(depth), depth + 1);
}

TEST(BraceShow, TellsTheMarksOfEachKind)
{
    EXPECT_EQ(BracketMarks(BracketKindOf(0)).first, QStringLiteral("("));
    EXPECT_EQ(BracketMarks(BracketKindOf(1)).second, QStringLiteral("]"));
    EXPECT_EQ(BracketMarks(BracketKindOf(2)).first, QStringLiteral("{"));
    EXPECT_EQ(BracketMarks(BracketKindOf(3)).second, QStringLiteral("'"));
    EXPECT_EQ(BracketMarks(BracketKindOf(4)).first, QStringLiteral("\""));
    EXPECT_EQ(BracketMarks(BracketKindOf(5)).second, QStringLiteral(")"));
    EXPECT_EQ(BracketMarks(BracketKindOf(-1)).first, QStringLiteral("("));
}

TEST(BraceShow, LightsUpThePairsAndRestores)
{
    const QString text = QStringLiteral("(a)(");
    BraceShow show;
    EXPECT_FALSE(show.Interrupt());
    show.Parse(text, BracketKind::Round);
    const struct
    {
        const char *rtf;
        int interval;
        bool running;
    } want[] = {{"\\b (a)\\b0 (", 500, true}, {"(a)\\i (", 1500, true}, {"(a)(", 1500, true}, {"(a)(", 10, false}};
    for (const auto &row : want) {
        const BraceShow::Step step = show.Tick();
        EXPECT_EQ(step.rtf.toStdString(), row.rtf);
        EXPECT_EQ(step.interval, row.interval);
        EXPECT_EQ(step.running, row.running);
    }
    EXPECT_FALSE(show.Running());
}

TEST(BraceShow, ASecondShowStartsFromTheOriginal)
{
    BraceShow show;
    show.Parse(QStringLiteral("(a)"), BracketKind::Round);
    show.Tick();
    EXPECT_EQ(show.Interrupt(), QStringLiteral("(a)"));
    show.Parse(QStringLiteral("(a)"), BracketKind::Round);
    EXPECT_EQ(show.Tick().selStart, 2);
}

// ")(" has a second column, behind its one group: it is never shown.
TEST(Brace, AGroupPastTheLengthIsNotShown)
{
    const clsBraceStacker brace = Stack(QStringLiteral(")("), QStringLiteral("("), QStringLiteral(")"));
    ASSERT_EQ(brace.GetLength(), 1);
    ASSERT_EQ(brace.Opener(2), 2);
    for (const qsizetype group : {-1, 0, 2, 3}) {
        EXPECT_EQ(brace.FocusOnGroup(group).rtf, QStringLiteral(")(")) << group;
        EXPECT_FALSE(brace.FocusOnGroup(group).selStart) << group;
    }
    EXPECT_EQ(brace.FocusOnGroup(1).rtf, QStringLiteral("\\i )("));
}
