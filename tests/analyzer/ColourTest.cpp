// Colouring as one types, the history, and the show of the bracket pairs.
#include "AnalyzerFixture.h"
#include <QInputMethodEvent>
#include <QScrollBar>

TEST_F(Analyzer, TypingColoursKeywords)
{
    Type(QStringLiteral("select a"));
    EXPECT_EQ(window->Text(), QStringLiteral("select a"));
    EXPECT_EQ(Colours(), "11111100");
    EXPECT_EQ(window->txtSQL->SelStart(), 8);
    Press(Qt::Key_Return);
    Type(QStringLiteral("from 'x' --y"));
    EXPECT_EQ(window->Text(), QStringLiteral("select a\r\nfrom 'x' --y"));
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(1), "111103330444");
    EXPECT_EQ(window->txtSQL->SelStart(), window->Text().size());
}

TEST_F(Analyzer, AWordThatGrowsLosesItsColour)
{
    Type(QStringLiteral("select from"));
    EXPECT_EQ(Colours(), "11111101111");
    Type(QStringLiteral("age"));
    EXPECT_EQ(Colours(), "11111100000000");
}

TEST_F(Analyzer, AKeywordInTheMiddleOfALineKeepsTheCaret)
{
    window->SetText(QStringLiteral("select a  b\r\nfrom t"));
    window->txtSQL->SetSelStart(9);
    Type(QStringLiteral("where"));
    EXPECT_EQ(window->Text(), QStringLiteral("select a where b\r\nfrom t"));
    EXPECT_EQ(window->txtSQL->SelStart(), 14);
    EXPECT_EQ(Colours(), "1111110001111100");
    EXPECT_EQ(Colours(1), "111100");
}

TEST_F(Analyzer, ATextWithoutKeywordsDoesNotRecurse)
{
    Type(QStringLiteral("abc"));
    EXPECT_EQ(window->Text(), QStringLiteral("abc"));
    EXPECT_EQ(Colours(), "000");
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(window->Text(), QString());
    Type(QStringLiteral("  "));
    EXPECT_EQ(window->Text(), QStringLiteral("  "));
}

TEST_F(Analyzer, ABlankBehindAClosingBracketIsEaten)
{
    Type(QStringLiteral("from [t] where"));
    EXPECT_EQ(window->Text(), QStringLiteral("from [t]where"));
}

TEST_F(Analyzer, ATabAtTheVeryStartBecomesABlank)
{
    window->SetText(QStringLiteral("\tselect"));
    EXPECT_EQ(window->Text(), QStringLiteral(" select"));
    EXPECT_EQ(Colours(), "0111111");
}

TEST_F(Analyzer, ScrollingAndSelectionStayThroughAColouring)
{
    QString text;
    for (int i = 0; i < 300; ++i)
        text += QStringLiteral("select a from t where b = %1\r\n").arg(i);
    window->SetText(text);
    RichTextBox *box = window->txtSQL;
    box->SetSelStart(text.size() / 2);
    QTest::keyClick(box, Qt::Key_Left, Qt::ShiftModifier);
    const int view = box->verticalScrollBar()->value();
    const int position = box->textCursor().position();
    const int anchor = box->textCursor().anchor();
    window->FixText(true, true, 2);
    window->FixText(false, false, 2);
    EXPECT_EQ(box->verticalScrollBar()->value(), view);
    EXPECT_EQ(box->textCursor().position(), position);
    EXPECT_EQ(box->textCursor().anchor(), anchor);
    EXPECT_EQ(box->Text(), text);
}

TEST_F(Analyzer, AnInputMethodsTextIsColouredLikeTyping)
{
    Type(QStringLiteral("select "));
    QInputMethodEvent compose(QStringLiteral("\u4F60"), {});
    QCoreApplication::sendEvent(window->txtSQL, &compose);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("\u4F60 from"));
    QCoreApplication::sendEvent(window->txtSQL, &commit);
    EXPECT_EQ(window->Text(), QStringLiteral("select \u4F60 from"));
    EXPECT_EQ(Colours(), "1111110001111");
}

TEST_F(Analyzer, UndoBringsBackAState)
{
    window->SetText(QStringLiteral("select 1"));
    window->mnuSelectAll();
    Press(Qt::Key_Delete);
    EXPECT_EQ(window->Text(), QString());
    QTest::keyClick(window->txtSQL, Qt::Key_Z, Qt::ControlModifier); // past the entry of the text after the deletion
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
    EXPECT_EQ(Colours(), "11111100");
}

TEST_F(Analyzer, AnEntryBringsItsSelectionBack)
{
    window->SetText(QStringLiteral("select 1"));
    window->txtSQL->SetSelStart(7);
    window->txtSQL->SetSelLength(1);
    Press(Qt::Key_Delete); // one character: no entry of the text afterwards
    EXPECT_EQ(window->Text(), QStringLiteral("select "));
    window->mnuUndo();
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
    EXPECT_EQ(window->txtSQL->SelText(), QStringLiteral("1"));
}

TEST_F(Analyzer, UndoOfNothingLeavesTheText)
{
    window->mnuUndo();
    window->Redo();
    EXPECT_EQ(window->Text(), QString());
}

TEST_F(Analyzer, ASpaceIsAStateOfItsOwn)
{
    Type(QStringLiteral("ab"));
    Press(Qt::Key_Space);
    Type(QStringLiteral("c"));
    window->mnuUndo();
    EXPECT_EQ(window->Text(), QStringLiteral("ab"));
}

TEST_F(Analyzer, BracketPairsLightUpAndTheTextComesBack)
{
    window->SetText(QStringLiteral("f((a) b"));
    window->txtSQL->SetSelStart(3);
    const QString before = window->txtSQL->TextRTF();
    window->Parse(0);
    QTimer *timer = window->tmrParseBrackets;
    ASSERT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 10);
    const auto tick = [&] {
        const QString shown = window->txtSQL->TextRTF();
        timer->setInterval(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != shown || !timer->isActive(); }, 3000));
    };
    tick(); // group 1 is open: italic up to the end
    EXPECT_EQ(timer->interval(), 1500);
    EXPECT_TRUE(window->txtSQL->TextRTF().contains(QStringLiteral("\\i (")));
    tick(); // group 2 is a pair
    EXPECT_EQ(timer->interval(), 500);
    EXPECT_TRUE(window->txtSQL->TextRTF().contains(QStringLiteral("\\b (")));
    tick();
    EXPECT_EQ(window->txtSQL->TextRTF(), before);
    EXPECT_TRUE(timer->isActive());
    timer->setInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !timer->isActive(); }, 3000));
    EXPECT_EQ(timer->interval(), 10);
    EXPECT_EQ(window->txtSQL->TextRTF(), before);
    EXPECT_EQ(window->txtSQL->SelStart(), 3);
}

TEST_F(Analyzer, WhatReadsTheTextDuringAShowReadsTheUsersOwn)
{
    gConns().Add(QStringLiteral("x"), QStringLiteral("Shop"), QString());
    window = Make(QStringLiteral("Shop"));
    const QString text = QStringLiteral("select '{a}'");
    window->SetText(text);
    const QString before = window->txtSQL->TextRTF();
    window->Parse(2); // curly brackets are those of the RTF frame too
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != before; }));
    window->SaveState();
    EXPECT_EQ(gConns().Item(QStringLiteral("shop"))->Extra, text);
    EXPECT_EQ(window->Text(), text);
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
}

TEST_F(Analyzer, ASecondShowBeginsWithThePlainText)
{
    window->SetText(QStringLiteral("(a)"));
    const QString before = window->txtSQL->TextRTF();
    window->Parse(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != before; }));
    window->Parse(0);
    EXPECT_EQ(window->txtSQL->TextRTF(), before);
    window->SaveState();
    EXPECT_EQ(window->txtSQL->TextRTF(), before);
}
