// The keys of the Analyzer.
#include "AnalyzerFixture.h"
#include <QClipboard>
#include <QGuiApplication>

TEST_F(Analyzer, F5RunsAndF2Formats)
{
    window->SetText(QStringLiteral("select a from t where b=1"));
    Press(Qt::Key_F2);
    EXPECT_TRUE(window->Text().contains(QStringLiteral("SELECT a\r\n FROM t\r\n WHERE b=1")));
    window->SetText(QStringLiteral("select 1"));
    Press(Qt::Key_F5);
    EXPECT_EQ(Results().size(), 1);
    WaitForResults();
}

TEST_F(Analyzer, FormattingASelectionLeavesTheRest)
{
    window->SetText(QStringLiteral("keep\r\n\r\nselect a from t"));
    window->txtSQL->SetSelStart(8);
    window->txtSQL->SetSelLength(15);
    window->FormatSQL();
    EXPECT_TRUE(window->Text().startsWith(QStringLiteral("keep\r\n\r\n")));
    EXPECT_TRUE(window->Text().endsWith(QStringLiteral("SELECT a\r\n FROM t")));
}

TEST_F(Analyzer, AKeyPressedElsewhereAndReleasedHereDoesNothing)
{
    window->SetText(QStringLiteral("select 1"));
    QTest::keyRelease(window->txtSQL, Qt::Key_F5);
    EXPECT_TRUE(Results().isEmpty());
}

TEST_F(Analyzer, FunctionKeysWorkInTheTreeToo)
{
    window->SetText(QStringLiteral("select 1"));
    window->TV->setFocus();
    QTest::keyClick(window->TV, Qt::Key_F5);
    EXPECT_EQ(Results().size(), 1);
    WaitForResults();
}

TEST_F(Analyzer, F10ShowsRoundBracketsAndTheTimerRuns)
{
    window->SetText(QStringLiteral("(a)"));
    Press(Qt::Key_F10);
    EXPECT_TRUE(window->tmrParseBrackets->isActive());
    window->SaveState();
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
}

TEST_F(Analyzer, F11CommentsOutAndF12In)
{
    window->SetText(QStringLiteral("a\r\nb"));
    window->txtSQL->SetSelStart(4);
    Press(Qt::Key_F11);
    EXPECT_EQ(window->Text(), QStringLiteral("a\r\n--b"));
    EXPECT_EQ(Colours(1), "444");
    Press(Qt::Key_F12);
    EXPECT_EQ(window->Text(), QStringLiteral("a\r\nb"));
    window->mnuSelectAll();
    Press(Qt::Key_F11);
    EXPECT_EQ(window->Text(), QStringLiteral("--a\r\n--b"));
    window->mnuSelectAll();
    Press(Qt::Key_F12);
    EXPECT_EQ(window->Text(), QStringLiteral("a\r\nb"));
}

TEST_F(Analyzer, TabStaysInTheEditor)
{
    Type(QStringLiteral("a"));
    Press(Qt::Key_Tab);
    Type(QStringLiteral("b"));
    EXPECT_EQ(window->Text(), QStringLiteral("a\tb"));
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
    window->SetText(QStringLiteral("a\r\nb"));
    window->mnuSelectAll();
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->Text(), QStringLiteral(" a\r\n\tb")); // a TAB at the very start turns into a blank
    window->txtSQL->SetSelStart(4);
    window->txtSQL->SetSelLength(2);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window->Text(), QStringLiteral(" a\r\nb"));
}

TEST_F(Analyzer, TabLeavesTheTree)
{
    window->TV->setFocus();
    ASSERT_EQ(window->focusWidget(), window->TV);
    QTest::keyClick(window->TV, Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}

TEST_F(Analyzer, DeleteAndBackspaceWithASelectionAreStates)
{
    for (const int key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        window->SetText(QStringLiteral("abcd"));
        window->txtSQL->SetSelStart(1);
        window->txtSQL->SetSelLength(2);
        Press(key);
        EXPECT_EQ(window->Text(), QStringLiteral("ad"));
        window->mnuUndo();
        EXPECT_EQ(window->Text(), QStringLiteral("abcd"));
        EXPECT_EQ(window->txtSQL->SelText(), QStringLiteral("bc"));
    }
}

TEST_F(Analyzer, ControlXCutsOnce)
{
    window->SetText(QStringLiteral("abcd"));
    window->txtSQL->SetSelStart(1);
    window->txtSQL->SetSelLength(2);
    QTest::keyPress(window->txtSQL, Qt::Key_Control);
    QTest::keyClick(window->txtSQL, Qt::Key_X, Qt::ControlModifier);
    QTest::keyRelease(window->txtSQL, Qt::Key_Control);
    EXPECT_EQ(window->Text(), QStringLiteral("ad"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("bc"));
    Type(QStringLiteral("x")); // Control is not held any more
    EXPECT_EQ(window->Text(), QStringLiteral("axd"));
    QGuiApplication::clipboard()->clear();
}

TEST_F(Analyzer, ControlIsForgottenWhenTheFocusGoes)
{
    window->SetText(QStringLiteral("ab"));
    QTest::keyPress(window->txtSQL, Qt::Key_Control);
    window->TV->setFocus();
    window->txtSQL->setFocus();
    window->mnuSelectAll();
    Type(QStringLiteral("x"));
    EXPECT_EQ(window->Text(), QStringLiteral("x"));
}

TEST_F(Analyzer, PastedLinesAreAllColoured)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("select a\nfrom t\nwhere c"));
    QTest::keyClick(window->txtSQL, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(window->Text(), QStringLiteral("select a\r\nfrom t\r\nwhere c"));
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(1), "111100");
    EXPECT_EQ(Colours(2), "1111100");
    window->mnuUndo();
    window->mnuUndo();
    EXPECT_EQ(window->Text(), QString());
    QGuiApplication::clipboard()->clear();
}

TEST_F(Analyzer, ThePauseKeyBreaksTheText)
{
    window->SetText(QStringLiteral("a and b and c"));
    dialogs.Inputs << QStringLiteral("and");
    Press(Qt::Key_Pause);
    ASSERT_EQ(dialogs.InputBoxes.size(), 1);
    EXPECT_EQ(dialogs.InputBoxes[0].Title, QStringLiteral("Line feed break"));
    EXPECT_EQ(dialogs.InputBoxes[0].Prompt, QStringLiteral("Enter the token you wish to break on."));
    EXPECT_EQ(dialogs.InputBoxes[0].Default, QString());
    EXPECT_EQ(window->Text(), QStringLiteral("a \r\nand b \r\nand c"));
    EXPECT_EQ(window->txtSQL->SelText(), window->Text());
    Press(Qt::Key_Pause); // cancelled
    EXPECT_EQ(window->Text(), QStringLiteral("a \r\nand b \r\nand c"));
}

TEST_F(Analyzer, TheRightButtonOpensTheEditMenu)
{
    QTest::mouseClick(window->txtSQL->viewport(), Qt::RightButton, {}, QPoint(10, 10));
    EXPECT_EQ(shell.Menus, QStringList(QStringLiteral("mnuEdit")));
}

// It showed brackets.
TEST_F(Analyzer, ShiftF10OpensTheEditMenu)
{
    window->SetText(QStringLiteral("(a)"));
    Press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(shell.Menus, QStringList(QStringLiteral("mnuEdit")));
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
}
