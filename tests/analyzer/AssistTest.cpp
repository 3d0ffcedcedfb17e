// Bulk edits and what they leave behind: text, selection, history, colours; and the show of brackets that they end.
#include "AnalyzerFixture.h"
#include "StructureAnswer.h"
#include "controls/ListView.h"
#include "tests/support/Text.h"
#include <QClipboard>
#include <QComboBox>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QFile>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QUrl>
#include <memory>

namespace {

struct Assist : Analyzer
{
    void Select(qsizetype start, qsizetype length) const
    {
        window->txtSQL->SetSelStart(start);
        window->txtSQL->SetSelLength(length);
    }
    // As from outside: over the editor and let go there.
    void DropOnEditor(const QMimeData &data, const QPoint &place) const
    {
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->txtSQL->viewport(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window->txtSQL->viewport(), &move);
        EXPECT_TRUE(move.isAccepted());
        QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
        QCoreApplication::sendEvent(window->txtSQL->viewport(), &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction); // whoever gave it keeps it
        QTest::qWait(30);
    }
    void DropNode(const char *key, const QPoint &place) const
    {
        TreeView *tree = window->TV;
        tree->SetSelectedItem(tree->Nodes().Item(S(key)));
        const std::unique_ptr<QMimeData> data(tree->model()->mimeData({tree->currentIndex()}));
        DropOnEditor(*data, place);
    }
    void DropFiles(const QStringList &names) const
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &name : names)
            urls += QUrl::fromLocalFile(folder.filePath(name));
        data.setUrls(urls);
        DropOnEditor(data, QPoint(5, 5));
    }
    void Write(const char *name, const char *content) const
    {
        QFile file(folder.filePath(S(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    // Until the show of brackets has written its emphasis into the text.
    void WaitForShow(const QString &plain) const
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->txtSQL->TextRTF() != plain; }, 3000));
    }
};

struct Edit
{
    const char *name;
    std::function<void(Assist &test)> run;
};

} // namespace

// What was typed since the last entry of the history is there again too: undo may go back past it, to that entry, and
// then the way forward leads there. No bulk edit has an entry of its own.
TEST_F(Assist, EachBulkEditCanBeUndone)
{
    Write("q.sql", "select 2");
    const Edit edits[] = {
        {"comment", [](Assist &t) { t.Press(Qt::Key_F11); }},
        {"uncomment", [](Assist &t) { t.Press(Qt::Key_F12); }},
        {"indent", [](Assist &t) { t.Press(Qt::Key_Tab); }},
        {"outdent", [](Assist &t) { t.Press(Qt::Key_Backtab, Qt::ShiftModifier); }},
        {"indent button", [](Assist &t) { t.window->ToolBar(S("SQLTabIn")); }},
        {"format", [](Assist &t) { t.Press(Qt::Key_F2); }},
        {"break",
         [](Assist &t) {
             t.dialogs.Inputs << S("x");
             t.Press(Qt::Key_Pause);
         }},
        {"insert", [](Assist &t) { t.window->InsertString(S("new")); }},
        {"insert text", [](Assist &t) { t.window->InsertText(S("new")); }},
        {"field dropped", [](Assist &t) { t.DropNode("customers-name", QPoint(5, 5)); }},
        {"table dropped",
         [](Assist &t) {
             StructureAnswer answer;
             t.DropNode("orders", QPoint(5, 5));
         }},
        {"files dropped", [](Assist &t) { t.DropFiles({S("q.sql")}); }},
        {"paste",
         [](Assist &t) {
             QGuiApplication::clipboard()->setText(S("pasted\nlines"));
             t.Press(Qt::Key_V, Qt::ControlModifier);
             QGuiApplication::clipboard()->clear();
         }},
    };
    for (const Edit &edit : edits) {
        SCOPED_TRACE(edit.name);
        window = Make(QString()); // a full history forgets a state at each further one
        window->SetText(S("--from a\r\n\tb where c\r\n"));
        window->txtSQL->SetSelStart(window->Text().size());
        Type(S("xy"));
        Select(0, window->Text().size());
        const QString before = window->Text();
        edit.run(*this);
        EXPECT_NE(window->Text(), before);
        window->mnuUndo();
        for (int i = 0; i < 4 && window->Text() != before; ++i)
            window->Redo();
        EXPECT_EQ(window->Text(), before);
        EXPECT_EQ(Colours(0), "44444444");
    }
}

TEST_F(Assist, FormattingWhatIsAsLongAsBeforeCanBeUndone)
{
    window->SetText(S("  select a"));
    window->txtSQL->SetSelStart(10);
    Type(S("b"));
    Press(Qt::Key_F2);
    EXPECT_EQ(window->Text(), S("   SELECT ab")); // double blanks are one blank at first
    window->mnuUndo();                            // the entry of SetText
    EXPECT_EQ(window->Text(), S("  select a"));
    window->Redo();
    EXPECT_EQ(window->Text(), S("  select ab"));
    EXPECT_EQ(window->txtSQL->SelStart(), 11);
}

TEST_F(Assist, AnEditThatChangesNothingIsNoState)
{
    window->SetText(S("abcdef"));
    Press(Qt::Key_F12); // no comment there
    window->mnuUndo();  // the one entry is that of SetText
    EXPECT_EQ(window->Text(), QString());
    window->Redo();
    EXPECT_EQ(window->Text(), S("abcdef"));
    window->Redo();
    EXPECT_EQ(window->Text(), S("abcdef"));
}

TEST_F(Assist, BulkEditsKeepTheSelectionOverTheChange)
{
    window->SetText(S("x\r\nab\r\ncd"));
    Select(4, 5);
    Press(Qt::Key_F11);
    EXPECT_EQ(window->Text(), S("x\r\n--ab\r\n--cd"));
    EXPECT_EQ(window->txtSQL->SelText(), S("--ab\r\n--cd")); // widened to the start of its first line
    Press(Qt::Key_F12);
    EXPECT_EQ(window->txtSQL->SelText(), S("ab\r\ncd")); // to whole lines
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->txtSQL->SelText(), S("\tab\r\n\tcd"));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window->txtSQL->SelText(), S("ab\r\ncd"));
    EXPECT_EQ(window->Text(), S("x\r\nab\r\ncd"));
}

TEST_F(Assist, AllLinesOfAChangedCaseKeepTheirColours)
{
    window->SetText(S("select a\r\nfrom t\r\nwhere c"));
    Select(0, 16); // a keyword behind it keeps its colour meanwhile
    window->ToolBar(S("SQLUCase"));
    EXPECT_EQ(window->Text(), S("SELECT A\r\nFROM T\r\nwhere c"));
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(1), "111100");
    EXPECT_EQ(Colours(2), "1111100");
    window->txtSQL->SetSelStart(0);
    window->ToolBar(S("SQLLCase")); // nothing selected
    EXPECT_EQ(window->Text(), S("SELECT A\r\nFROM T\r\nwhere c"));
}

// Only the selection is coloured anew; what was not touched must keep the colours that it has.
TEST_F(Assist, WhatABulkEditLeavesKeepsItsColours)
{
    window->SetText(S("select a\r\nfrom t"));
    {
        StructureAnswer answer([](frmGetSQLStructure &ask) {
            ask.cmbType->setCurrentIndex(5); // longer than all there was
            QTest::keyClick(&ask, Qt::Key_Return);
        });
        DropNode("orders", QPoint(300, 200)); // behind the text
    }
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(1), "111100");
    window->SetText(S("select a\r\n1\r\n2\r\n3\r\n4\r\nfrom t"));
    Select(10, 10);
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->Text(), S("select a\r\n\t1\r\n\t2\r\n\t3\r\n\t4\r\nfrom t"));
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(5), "111100");
    window->SetText(S("from t\r\nselect a, b\r\n1\r\n2 from"));
    Select(15, 10); // from the middle of its first line to the middle of its last
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->Text(), S("from t\r\n\tselect a, b\r\n\t1\r\n\t2 from"));
    EXPECT_EQ(Colours(0), "111100");
    EXPECT_EQ(Colours(1), "011111100000");
    EXPECT_EQ(Colours(3), "0001111");
}

// The show of curly brackets writes into the text what a bulk edit must not take for the user's.
TEST_F(Assist, ABulkEditDuringTheShowOfBracketsWorksOnTheUsersText)
{
    const Edit edits[] = {
        {"comment", [](Assist &t) { t.window->CommentIn(); }},
        {"uncomment", [](Assist &t) { t.window->RemoveComment(); }},
        {"indent", [](Assist &t) { t.window->Indent(0); }},
        {"insert", [](Assist &t) { t.window->InsertText(S("x")); }},
        {"break",
         [](Assist &t) {
             t.dialogs.Inputs << S("zz");
             t.window->BreakText();
         }},
        {"case", [](Assist &t) { t.window->ChangeCase(true); }},
        {"undo", [](Assist &t) { t.window->mnuUndo(); }},
        {"file", [](Assist &t) { t.DropFiles({S("q.sql")}); }},
        {"list",
         [](Assist &t) {
             t.window->ShowQuickList();
             QTest::keyClick(t.window->lvQuickList, Qt::Key_Escape);
         }},
    };
    Write("q.sql", "more");
    for (const Edit &edit : edits) {
        SCOPED_TRACE(edit.name);
        window->SetText(S("select '{a} {b}' from t"));
        const QString plain = window->txtSQL->TextRTF();
        window->Parse(2);
        WaitForShow(plain);
        edit.run(*this);
        EXPECT_FALSE(window->tmrParseBrackets->isActive());
        EXPECT_TRUE(window->Text().contains(S("select '{a} {b}' from t"))) << qPrintable(window->Text());
    }
}

TEST_F(Assist, WhatIsTypedDuringTheShowOfBracketsStays)
{
    window->SetText(S("f(a) "));
    window->txtSQL->SetSelStart(5);
    QString plain = window->txtSQL->TextRTF();
    window->Parse(0);
    WaitForShow(plain);
    Type(S("b"));
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
    EXPECT_EQ(window->Text(), S("f(a) b"));
    plain = window->txtSQL->TextRTF();
    window->Parse(0);
    WaitForShow(plain);
    Press(Qt::Key_Left); // looking about is no edit
    EXPECT_TRUE(window->tmrParseBrackets->isActive());
    Press(Qt::Key_Delete);
    EXPECT_EQ(window->Text(), S("f(a) "));
    plain = window->txtSQL->TextRTF();
    window->Parse(0);
    WaitForShow(plain);
    QInputMethodEvent commit;
    commit.setCommitString(S("\u4F60"));
    QCoreApplication::sendEvent(window->txtSQL, &commit);
    EXPECT_EQ(window->Text(), S("f(a) \u4F60"));
    EXPECT_FALSE(window->tmrParseBrackets->isActive());
}

TEST_F(Assist, AFieldGoesInWhereItIsDropped)
{
    window->SetText(S("select from"));
    window->txtSQL->SetSelStart(7);
    const QPoint middle = window->txtSQL->cursorRect().center();
    window->txtSQL->SetSelStart(0);
    window->TV->setFocus();
    DropNode("customers-id", middle);
    EXPECT_EQ(window->Text(), S("select  id from"));
    EXPECT_EQ(window->txtSQL->SelStart(), 11);
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}

TEST_F(Assist, NoMarkOfTheDropStays)
{
    QApplication::setCursorFlashTime(0);
    window->SetText(S("select a\r\nfrom t\r\n\r\n"));
    window->txtSQL->SetSelStart(18);
    const QPoint end = window->txtSQL->cursorRect().center();
    DropNode("customers-id", end);
    window->activateWindow();
    window->txtSQL->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    window->txtSQL->SetSelStart(5);
    const QImage elsewhere = window->txtSQL->grab().toImage();
    window->txtSQL->SetSelStart(2);
    const QImage shown = window->txtSQL->grab().toImage();
    EXPECT_NE(shown, elsewhere); // the caret is drawn
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(window->txtSQL->viewport(), &leave);
    EXPECT_EQ(shown, window->txtSQL->grab().toImage());
}

TEST_F(Assist, ARootIsNotDropped)
{
    window->SetText(S("select"));
    DropNode("Tables", QPoint(5, 5));
    EXPECT_EQ(window->Text(), S("select"));
    QMimeData data;
    data.setData(S(RichTextBox::NodeMime), QByteArray()); // a node without a key
    DropOnEditor(data, QPoint(5, 5));
    EXPECT_EQ(window->Text(), S("select"));
    EXPECT_EQ(side.FindBar(S("DYNA"))->Items().Count(), 0);
}

TEST_F(Assist, AFileThatCannotBeReadLeavesTheTextAndItsSelection)
{
    window->SetText(S("select"));
    Select(1, 3);
    DropFiles({S("missing.sql")});
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(window->Text(), S("select"));
    EXPECT_EQ(window->txtSQL->SelText(), S("ele"));
    Write("q.sql", "more");
    DropFiles({S("missing.sql"), S("q.sql")});
    EXPECT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(window->Text(), S("select\r\n\r\nmore"));
}

TEST_F(Assist, TabFromTheTreeIsNotHeldBackByATabInTheEditor)
{
    Type(S("a"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(window->Text(), S("a\t"));
    window->TV->setFocus();
    QTest::keyClick(window->TV, Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
    window->TV->setFocus();
    QTest::keyClick(window->TV, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
}
