// The members of an Analyzer that need no Analyzer: its text, the show of its brackets, its list of names.
#include "analyzer/QueryText.h"
#include "analyzer/QuickPane.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "sqltext/IntColorAll.h"
#include "sqltext/Keywords.h"
#include "sqltext/clsColorTable.h"
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

struct Query : testing::Test
{
    QWidget window;
    RichTextBox editor{&window};
    QueryText text{&editor};

    void SetUp() override
    {
        InitColorTable();
        gKeywordSet = KeywordSet({QStringLiteral("SELECT"), QStringLiteral("FROM")});
        editor.resize(400, 200);
    }
    void SelectAll() { editor.selectAll(); }
};

} // namespace

TEST_F(Query, WhatIsLoadedIsColouredAndWhatRunsIsTheSelectionFirst)
{
    text.SetText(QStringLiteral("select 1\r\n\r\nselect 2"));
    EXPECT_TRUE(editor.HasColour(1));
    editor.SetSelStart(0);
    EXPECT_EQ(text.RunText(), QStringLiteral("select 1"));
    editor.SetSelLength(6);
    EXPECT_EQ(text.RunText(), QStringLiteral("select"));
}

TEST_F(Query, UndoGoesBackThroughEveryBulkEditAndRedoForward)
{
    text.SetText(QStringLiteral("a"));
    text.BeginHere();
    text.Bulk({QStringLiteral("b"), 0, 0});
    text.Bulk({QStringLiteral("c"), 0, 0});
    text.Undo();
    EXPECT_EQ(editor.Text(), QStringLiteral("b"));
    text.Undo();
    EXPECT_EQ(editor.Text(), QStringLiteral("a"));
    text.Redo();
    EXPECT_EQ(editor.Text(), QStringLiteral("b"));
}

TEST_F(Query, WhoeverTakesTheTextEndsTheShowOfItsBracketsAndGetsItAsItWas)
{
    text.SetText(QStringLiteral("select (a), (b)"));
    const QString before = editor.TextRTF();
    text.ShowBrackets(BracketKind::Round);
    QMetaObject::invokeMethod(text.Brackets().Timer(), "timeout");
    EXPECT_NE(editor.TextRTF(), before);
    EXPECT_EQ(text.Edited().text, QStringLiteral("select (a), (b)"));
    EXPECT_EQ(editor.TextRTF(), before);
    EXPECT_FALSE(text.Brackets().Timer()->isActive());
    text.Undo(); // the show was no edit: what comes before it is the empty editor
    EXPECT_EQ(editor.Text(), QString());
}

TEST(BracketShow, ItLoadsPairAfterPairAndTheTextOfItsBeginningLast)
{
    QStringList loaded;
    BracketShow show([&](const QString &rtf) { loaded += rtf; });
    const auto tick = [&] { QMetaObject::invokeMethod(show.Timer(), "timeout"); };
    show.Begin(QStringLiteral("[a]"), BracketKind::Square);
    EXPECT_TRUE(show.Timer()->isActive());
    for (int i = 0; i < 9 && show.Running(); ++i)
        tick();
    EXPECT_FALSE(show.Running());
    EXPECT_FALSE(show.Timer()->isActive());
    ASSERT_EQ(loaded.size(), 3); // the pair, the plain text, the text as it was
    EXPECT_NE(loaded.first(), QStringLiteral("[a]"));
    EXPECT_EQ(loaded.last(), QStringLiteral("[a]"));
    show.End(); // nothing runs: nothing is loaded
    EXPECT_EQ(loaded.size(), 3);
    show.Begin(QStringLiteral("[b]"), BracketKind::Square);
    show.End();
    EXPECT_EQ(loaded.last(), QStringLiteral("[b]"));
}

TEST_F(Query, TheListOpensAtTheWordAndPutsTheChosenNameInItsPlace)
{
    QuickPane pane(&window, text);
    QSignalSpy toggled(&pane, &QuickPane::Toggled);
    pane.Fill({QStringLiteral("CUSTOMERS"), QStringLiteral("ORDERS")});
    text.SetText(QStringLiteral("select * from ord"));
    editor.SetSelStart(17);
    EXPECT_TRUE(pane.List()->isHidden());
    pane.Open();
    EXPECT_FALSE(pane.List()->isHidden());
    EXPECT_EQ(pane.List()->SelectedRow(), 1);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    EXPECT_FALSE(pane.KeyDown(&letter)); // the list searches by it
    QKeyEvent comma(QEvent::KeyPress, Qt::Key_Comma, Qt::NoModifier, QStringLiteral(","));
    EXPECT_TRUE(pane.KeyDown(&comma));
    EXPECT_EQ(editor.Text(), QStringLiteral("select * from ORDERS"));
    EXPECT_TRUE(pane.List()->isHidden());
    EXPECT_EQ(toggled.count(), 2);
}

TEST_F(Query, EscapeClosesTheListAndANewFillingForgetsTheFormerNames)
{
    QuickPane pane(&window, text);
    pane.Fill({QStringLiteral("CUSTOMERS")});
    pane.Fill({QStringLiteral("ORDERS")});
    EXPECT_EQ(pane.List()->Count(), 1);
    text.SetText(QStringLiteral("cust"));
    editor.SetSelStart(4);
    pane.Open();
    EXPECT_EQ(pane.List()->SelectedRow(), -1);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    EXPECT_TRUE(pane.KeyDown(&escape));
    EXPECT_TRUE(pane.List()->isHidden());
    pane.Open();
    pane.Take(); // nothing is chosen
    EXPECT_EQ(editor.Text(), QStringLiteral("cust"));
}
