// When and what is coloured anew.
#include "sqltext/FixText.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/clsColorTable.h"
#include "tests/sqltext/EditDouble.h"

#include <gtest/gtest.h>

namespace {

TEST(FixTextRange, Line)
{
    const QString text = QStringLiteral("ab\r\ncd\r\nef");
    EXPECT_EQ(SelectLine(text, 5), (FixRange{4, 4})); // the line with its line end
    EXPECT_EQ(SelectLine(text, 0), (FixRange{0, 4}));
    EXPECT_EQ(SelectLine(text, 2), (FixRange{0, 4}));
    EXPECT_EQ(Clipped(text, SelectLine(text, 9)), (FixRange{8, 2}));
    EXPECT_EQ(Clipped(u"ab\r\ne", SelectLine(u"ab\r\ne", 5)), (FixRange{3, 2})); // so short a line: from the LF before
    EXPECT_EQ(SelectLine(QString(), 0), (FixRange{0, 1}));
    EXPECT_EQ(SelectLine(text, 100), SelectLine(text, text.size()));
    // A lone CR or LF is no line end.
    EXPECT_EQ(SelectLine(u"ab\rcd\nef", 4), (FixRange{0, 8}));
}

TEST(FixTextRange, ABlankLineColoursTheWhole)
{
    const QString text = QStringLiteral("abc\r\n");
    const FixRange end = SelectLine(text, 5); // begins in the middle of CR LF
    EXPECT_EQ(end, (FixRange{4, 6}));
    EXPECT_TRUE(IsBlankRange(text, end));
    EXPECT_EQ(PlanFixText(text, false, FixMode::Line, {5, 0}).selText, QString());
    EXPECT_EQ(PlanFixText(QStringLiteral("ab\r\n   \r\ncd"), false, FixMode::Line, {5, 0}).selText, QString());
    EXPECT_EQ(PlanFixText(QStringLiteral("ab\r\n \t\r\ncd"), false, FixMode::Line, {5, 0}).selText.toStdString(),
              " \t\r\n");
    EXPECT_FALSE(IsBlankRange(u"  ", {0, 2})); // too short to be looked at
    EXPECT_TRUE(IsBlankRange(u"abc", {1, 0}));
    EXPECT_FALSE(IsBlankRange(u"a\rb\n ", {1, 1}));
}

TEST(FixTextRange, Window)
{
    const QString longWord(400, u'x');
    EXPECT_EQ(SelectWindow(longWord, 128), (FixRange{0, 400}));
    EXPECT_EQ(SelectWindow(longWord, 400), (FixRange{0, 400}));
    QString words;
    while (words.size() < 1'000)
        words += QStringLiteral("word ");
    // From a blank (counted from one) to a blank.
    EXPECT_EQ(SelectWindow(words, 500), (FixRange{370, 260}));
    EXPECT_EQ(SelectWindow(words, 127).start, 0);
    EXPECT_EQ(SelectWindow(words, 137).start, 0); // nearer than 10 to the start
    EXPECT_EQ(SelectWindow(words, 138).start, 10);
    EXPECT_EQ(SelectWindow(words, 865), (FixRange{735, 265})); // nearer than 10 to the end
    EXPECT_EQ(SelectWindow(QStringLiteral(u"\u00CE").repeated(400), 300), (FixRange{0, 400})); // no word end here
    EXPECT_EQ(SelectWindow(QStringLiteral(u"\u00EE").repeated(400), 200), (FixRange{72, 256}));
}

TEST(FixTextRange, VisiblePart)
{
    const QString text = QStringLiteral("a\r\nb\r\nc\r\nd");
    EXPECT_EQ(SelectVisibleRange(text, {0, 4}), (FixRange{0, 10}));
    EXPECT_EQ(SelectVisibleRange(text, {0, 3}), (FixRange{1, 10})); // leaves out the first character
    EXPECT_EQ(SelectVisibleRange(text, {2, 3}), (FixRange{5, 6}));  // begins on an LF
    EXPECT_EQ(SelectVisibleRange(text, {99, 3}), (FixRange{8, 3}));
}

TEST(FixTextRange, ASelectionAndAllStay)
{
    EXPECT_EQ(SelectFixRange(u"abcdef", false, FixMode::Line, {2, 3}, {}), (FixRange{2, 3}));
    EXPECT_EQ(SelectFixRange(u"abcdef", true, FixMode::Window, {2, 0}, {}), (FixRange{2, 0}));
    const FixCall call = PlanFixText(QStringLiteral("abcdef"), true, FixMode::Window, {2, 3});
    EXPECT_EQ(call.selText.toStdString(), "cde"); // "all" with a selection colours the selection
    EXPECT_EQ(call.caretPos, 3);
}

TEST(FixTextRange, ATabAtTheStartBecomesABlank)
{
    const FixCall call = PlanFixText(QStringLiteral("\tabc"), false, FixMode::Window, {4, 0});
    EXPECT_EQ(call.text.toStdString(), " abc");
    EXPECT_EQ(call.selText, QString());
    EXPECT_EQ(call.caretPos, 2);
}

// A key press in a long text must not cost a walk over all of it.
TEST(FixTextRange, ALongTextIsNotWalked)
{
    const QString text = QString(20'000'000, u'x') + QStringLiteral("\r\nselect a\r\n") + QString(20'000'000, u'y');
    // A walk each time would take many times what a test may last.
    for (int i = 0; i < 100'000; ++i)
        EXPECT_EQ(SelectLine(text, 20'000'005), (FixRange{20'000'002, 10}));
}

TEST(FixTextState, HistoryAndIdleCalls)
{
    FixTextState state;
    EXPECT_FALSE(state.ChangedMuch(3));
    EXPECT_TRUE(state.ChangedMuch(4));
    state.Coloured(10);
    EXPECT_TRUE(state.ChangedMuch(6) && state.ChangedMuch(14));
    EXPECT_FALSE(state.ChangedMuch(7) || state.ChangedMuch(13));
    EXPECT_TRUE(state.IsIdle(false, true, 10));
    EXPECT_FALSE(state.IsIdle(true, true, 10) || state.IsIdle(false, false, 10) || state.IsIdle(false, true, 11));
}

TEST(FixTextState, KeysAreHalfASecondApart)
{
    FixTextState state;
    EXPECT_TRUE(state.TakeKeyTime(100));
    EXPECT_FALSE(state.TakeKeyTime(100.5));
    EXPECT_TRUE(state.TakeKeyTime(100.51));
    EXPECT_FALSE(state.TakeKeyTime(100.9));
}

class FixControlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        InitColorTable();
        ClearKeywordSet();
        gKeywordSet.Append(QStringLiteral("SELECT"));
    }
};

TEST_F(FixControlTest, ColoursTheLineAndPutsTheCaretBack)
{
    EditDouble control(QStringLiteral("ab\r\nselect\r\nef"));
    control.SetSelStart(6);
    control.log.clear();
    FixControl(control, false, FixMode::Line);
    EXPECT_EQ(control.log,
              (QStringList{"SelStart 4", "SelLength 8", "SelRTF", "SelStart 5", "SelStart 6", "SelLength 0"}));
    EXPECT_EQ(control.Text().toStdString(), "ab\r\nselect\r\nef");
}

TEST_F(FixControlTest, ABlankLineColoursAll)
{
    EditDouble control(QStringLiteral("select\r\n"));
    control.SetSelStart(8);
    control.log.clear();
    FixControl(control, false, FixMode::Line);
    EXPECT_TRUE(control.log.contains(QStringLiteral("TextRTF")));
    EXPECT_EQ(control.SelStart(), 8);
    EXPECT_EQ(control.document.runs.front(), (RtfRun{0, 6, 1, false, false}));
}

TEST_F(FixControlTest, ATabAtTheStart)
{
    EditDouble control(QStringLiteral("\tselect"));
    control.SetSelStart(3);
    control.log.clear();
    FixControl(control, false, FixMode::Line);
    EXPECT_EQ(control.Text().toStdString(), " select");
    EXPECT_TRUE(control.log.contains(QStringLiteral("TextRTF")));
    EXPECT_EQ(control.SelStart(), 3);
}

TEST_F(FixControlTest, ASelectionStaysSelected)
{
    EditDouble control(QStringLiteral("x select y"));
    control.SetSelStart(2);
    control.SetSelLength(6);
    FixControl(control, true, FixMode::Window);
    EXPECT_EQ(control.SelStart(), 2);
    EXPECT_EQ(control.SelLength(), 6);
}

// The window began between CR and LF: its start went down and its end with it, one character too soon.
TEST(FixControl, AWindowThatBeginsInALineEndReachesAsFarAsItShould)
{
    const QString text = QString(20, u'a') + QStringLiteral("\r\n") + QString(127, u'b') + QString(128, u'c') +
                         QStringLiteral(" tail of the text");
    EditDouble control(text);
    const qsizetype caret = 20 + 1 + 128; // the window begins behind the CR
    const FixRange window = SelectWindow(text, caret);
    ASSERT_EQ(window.start, 21);
    control.SetSelStart(window.start);
    control.SetSelLength(window.length);
    EXPECT_EQ(control.SelText(), text.mid(20, window.length + 1));
    EXPECT_EQ(Snapped(text, window), (FixRange{20, window.length + 1}));
}

TEST(FixTextRange, WholeLines)
{
    const QString text = QStringLiteral("ab\r\ncd\r\n\r\nef");
    EXPECT_EQ(WholeLines(text, {0, 0}), (FixRange{0, 2}));
    EXPECT_EQ(WholeLines(text, {1, 4}), (FixRange{0, 6}));
    EXPECT_EQ(WholeLines(text, {3, 0}), (FixRange{0, 2})); // between CR and LF
    EXPECT_EQ(WholeLines(text, {5, 1}), (FixRange{4, 2}));
    EXPECT_EQ(WholeLines(text, {8, 0}), (FixRange{8, 0}));
    EXPECT_EQ(WholeLines(text, {11, 99}), (FixRange{10, 2}));
    EXPECT_EQ(WholeLines(u"", {0, 0}), (FixRange{0, 0}));
}

} // namespace
