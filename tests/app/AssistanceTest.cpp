// The tool bar's buttons, their menus and the keys that edit, search and show, through the real main window: every
// click and every key is a real one, and what it must lead to is read back from the real Analyzer.
#include "analyzer/frmCode.h"
#include "analyzer/frmSQL.h"
#include "app/Menus.h"
#include "controls/CommandBar.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/TreeView.h"
#include "data/frmFind.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Text.h"
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace {

class Assistance : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        MadeInstead().clear(); // the real Analyzer
        gConns().Add(Database(), S("a"), QString());
        Start(S("TestMode"), true);
        Window->showNormal(); // wide enough for every button and menu
        Window->resize(1500, 900);
        Window->ConnectTo(Entry(S("a")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !Window->cb->ButtonRect(S("SQLRefresh")).isEmpty(); }));
        TakeFocus();
    }
    // After a dialog or a menu this platform makes no window the active one by itself.
    void TakeFocus()
    {
        Window->activateWindow();
        SQL->txtSQL->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == SQL->txtSQL; }));
    }
    void TearDown() override
    {
        QGuiApplication::clipboard()->clear();
        ShellTest::TearDown();
    }
    void Write(const char *text, qsizetype selStart = 0, qsizetype selLength = 0)
    {
        TakeFocus();
        SQL->SetText(S(text));
        SQL->txtSQL->SetSelStart(selStart);
        SQL->txtSQL->SetSelLength(selLength);
    }
    void WriteSelected(const char *text) { Write(text, 0, S(text).size()); }
    void ClickButton(const char *key)
    {
        const QRect face = Window->cb->ButtonRect(S(key));
        ASSERT_FALSE(face.isEmpty()) << key;
        ASSERT_TRUE(Window->cb->Enabled(S(key))) << key;
        const QPoint place(face.left() + 8, face.center().y());
        QWidget *const button = Window->cb->childAt(place);
        QTest::mouseClick(button, Qt::LeftButton, {}, button->mapFrom(Window->cb, place));
        EXPECT_EQ(Window->focusWidget(), SQL->txtSQL) << key; // the editor keeps the focus
    }
    // Clicks an item of the menu that comes up by `open`.
    void ClickItem(const QString &caption, const std::function<void()> &open)
    {
        bool clicked = false;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu || !menu->isVisible())
                return;
            timer.stop();
            for (QAction *action : menu->actions())
                if (action->text().section(u'\t', 0, 0).remove(u'&') == caption) {
                    clicked = true;
                    EXPECT_TRUE(action->isEnabled()) << qPrintable(caption);
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                    return;
                }
            menu->close();
        });
        timer.start(5);
        open();
        EXPECT_TRUE(QTest::qWaitFor([&] { return clicked; })) << qPrintable(caption);
        EXPECT_FALSE(QApplication::activePopupWidget());
    }
    // An item of the menu that hangs on the arrow of a button.
    void ClickDropDown(const char *key, const char *caption)
    {
        ClickItem(S(caption), [&] {
            const QRect face = Window->cb->ButtonRect(S(key));
            ASSERT_FALSE(face.isEmpty()) << key;
            const QPoint place(face.right() - 3, face.center().y());
            QWidget *const button = Window->cb->childAt(place);
            QTest::mouseClick(button, Qt::LeftButton, {}, button->mapFrom(Window->cb, place));
        });
    }
    // An item of a menu of the menu bar, opened by a click.
    void ClickMenu(const char *menu, const char *caption)
    {
        ClickItem(S(caption), [&] {
            QMenu *const opened = Window->menus->Menu(S(menu));
            QTest::mouseClick(Window->menuBar(), Qt::LeftButton, {},
                              Window->menuBar()->actionGeometry(opened->menuAction()).center());
        });
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(SQL->txtSQL, Qt::Key(key), modifiers); }
    // Until the next search dialog is up; then types and takes it. Gives how often one was shown.
    int FindBy(const std::function<void()> &open, const QString &what)
    {
        int shown = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
            if (!find || !find->isVisible())
                return;
            if (++shown > 1) {
                QTest::keyClick(find, Qt::Key_Escape);
                return;
            }
            find->cmbCri->lineEdit()->selectAll();
            QTest::keyClicks(find->cmbCri->lineEdit(), what);
            QTest::keyClick(find->cmbCri->lineEdit(), Qt::Key_Return);
        });
        timer.start(5);
        open();
        return shown;
    }
    // The show of a kind of brackets emphasises this stretch of the RTF.
    void ExpectShow(const char *emphasised, const std::function<void()> &start)
    {
        Write("f( [x] ) 'q' \"d\"");
        const QString plain = SQL->txtSQL->TextRTF();
        start();
        EXPECT_TRUE(SQL->tmrParseBrackets->isActive());
        EXPECT_TRUE(QTest::qWaitFor([&] { return SQL->txtSQL->TextRTF() != plain; }, 3000));
        EXPECT_TRUE(SQL->txtSQL->TextRTF().contains(S(emphasised))) << qPrintable(SQL->txtSQL->TextRTF());
        SQL->SaveState(); // ends it
        EXPECT_EQ(SQL->txtSQL->TextRTF(), plain);
    }
    frmCode *Code() const
    {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *code = qobject_cast<frmCode *>(widget); code && code->isVisible())
                return code;
        return nullptr;
    }
    QPointer<frmSQL> SQL;
};

TEST_F(Assistance, CommentAndIndentHaveButtonsMenusAndKeys)
{
    const std::function<void()> commentOut[] = {[&] { ClickButton("SQLCommIn"); },
                                                [&] { ClickMenu("mnuQuery", "Block Comment"); },
                                                [&] { Press(Qt::Key_F11); }};
    for (const auto &act : commentOut) {
        Write("a\r\nb", 3);
        act();
        EXPECT_EQ(SQL->Text(), S("a\r\n--b"));
    }
    const std::function<void()> commentIn[] = {[&] { ClickButton("SQLCommOut"); },
                                               [&] { ClickMenu("mnuQuery", "Remove Comment"); },
                                               [&] { Press(Qt::Key_F12); }};
    for (const auto &act : commentIn) {
        Write("a\r\n--b", 5);
        act();
        EXPECT_EQ(SQL->Text(), S("a\r\nb"));
    }
    const std::function<void()> in[] = {[&] { ClickButton("SQLTabIn"); },
                                        [&] { ClickMenu("mnuQuery", "Block Indent"); }, [&] { Press(Qt::Key_Tab); }};
    for (const auto &act : in) {
        Write("x\r\na\r\nb", 3, 4);
        act();
        EXPECT_EQ(SQL->Text(), S("x\r\n\ta\r\n\tb"));
        EXPECT_EQ(SQL->txtSQL->SelText(), S("\ta\r\n\tb"));
    }
    const std::function<void()> out[] = {[&] { ClickButton("SQLTabOut"); },
                                         [&] { ClickMenu("mnuQuery", "Remove Indent"); },
                                         [&] { Press(Qt::Key_Backtab, Qt::ShiftModifier); }};
    for (const auto &act : out) {
        Write("x\r\n\ta\r\n\tb", 3, 6);
        act();
        EXPECT_EQ(SQL->Text(), S("x\r\na\r\nb"));
    }
}

TEST_F(Assistance, CaseHasButtonsAndMenus)
{
    WriteSelected("Ab \u00E4");
    ClickButton("SQLUCase");
    EXPECT_EQ(SQL->Text(), S("AB \u00C4"));
    WriteSelected("Ab \u00C4");
    ClickButton("SQLLCase");
    EXPECT_EQ(SQL->Text(), S("ab \u00E4"));
    WriteSelected("Ab");
    ClickMenu("mnuQuery", "Upper Case");
    EXPECT_EQ(SQL->Text(), S("AB"));
    WriteSelected("Ab");
    ClickMenu("mnuQuery", "Lower Case");
    EXPECT_EQ(SQL->Text(), S("ab"));
}

TEST_F(Assistance, BreakingHasAButtonAMenuAndAKey)
{
    const std::function<void()> ways[] = {[&] { ClickButton("SQLBrake"); },
                                          [&] { ClickMenu("mnuQuery", "Break Text"); }, [&] { Press(Qt::Key_Pause); }};
    for (const auto &act : ways) {
        Write("a,b,c");
        Dialogs.Inputs = QStringList{S(",")};
        act();
        EXPECT_EQ(SQL->Text(), S("a\r\n,b\r\n,c"));
        EXPECT_EQ(SQL->txtSQL->SelText(), SQL->Text());
        act(); // cancelled
        EXPECT_EQ(SQL->Text(), S("a\r\n,b\r\n,c"));
    }
}

TEST_F(Assistance, FormattingHasAMenuAndAKey)
{
    const std::function<void()> ways[] = {[&] { ClickMenu("mnuQuery", "Format SQL"); }, [&] { Press(Qt::Key_F2); }};
    for (const auto &act : ways) {
        Write("select a from t where b=1");
        act();
        EXPECT_EQ(SQL->Text(), S("  SELECT a\r\n FROM t\r\n WHERE b=1"));
    }
}

TEST_F(Assistance, BracketsHaveButtonMenusAndAKey)
{
    ExpectShow("\\b (", [&] { Press(Qt::Key_F10); });
    ExpectShow("\\b (", [&] { ClickDropDown("SQLParser", "Round Brackets"); });
    ExpectShow("\\b \\i [", [&] { ClickDropDown("SQLParser", "Square Brackets"); });
    ExpectShow("\\b \\cf3 '", [&] { ClickDropDown("SQLParser", "Single Quotes"); });
    ExpectShow("\\b \\cf2 \"", [&] { ClickDropDown("SQLParser", "Double Quotes"); });
    // The button itself opens the menu of the window.
    ExpectShow("\\b (", [&] { ClickItem(S("Parse (Parenthesis)"), [&] { ClickButton("SQLParser"); }); });
    ExpectShow("\\b \\i [", [&] { ClickItem(S("Parse [Bracket]"), [&] { ClickButton("SQLParser"); }); });
    ExpectShow("\\b \\cf3 '", [&] { ClickItem(S("Parse 'Single Quote'"), [&] { ClickButton("SQLParser"); }); });
    ExpectShow("\\b \\cf2 \"", [&] { ClickItem(S("Parse \"Double Quote\""), [&] { ClickButton("SQLParser"); }); });
    // Curly brackets are those of the document's own notation too.
    for (const auto &act :
         {std::function<void()>([&] { ClickDropDown("SQLParser", "Curly Brackets"); }),
          std::function<void()>([&] { ClickItem(S("Parse {Curly Bracket}"), [&] { ClickButton("SQLParser"); }); })}) {
        Write("f{x}");
        act();
        EXPECT_TRUE(SQL->tmrParseBrackets->isActive());
        SQL->SaveState();
        EXPECT_EQ(SQL->Text(), S("f{x}"));
    }
}

TEST_F(Assistance, CodeHasAButtonItsMenuAndAKey)
{
    for (const auto &act : {std::function<void()>([&] { ClickDropDown("SQLVBS", "Clipboard"); }),
                            std::function<void()>([&] { Press(Qt::Key_F6); })}) {
        QGuiApplication::clipboard()->clear();
        Write("select \"a\" from t");
        act();
        EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(S("select \"a\" from t")));
    }
    Write("select 1 from t");
    EXPECT_FALSE(Code());
    ClickDropDown("SQLVBS", "Window");
    ASSERT_TRUE(Code());
    Code()->close();
    const QRect face = Window->cb->ButtonRect(S("SQLVBS"));
    QTest::mouseClick(Window->cb->childAt(face.left() + 8, face.center().y()), Qt::LeftButton, {}, QPoint(8, 8));
    ASSERT_TRUE(Code());
    Code()->close();
}

TEST_F(Assistance, RefreshReadsTheSchemaAgain)
{
    gConn->Execute(S("create table fresh(a integer)"));
    EXPECT_FALSE(SQL->TV->Nodes().Find(S("fresh")));
    Write("select 1");
    ClickButton("SQLRefresh");
    EXPECT_TRUE(SQL->TV->Nodes().Find(S("fresh")));
    EXPECT_EQ(SQL->Text(), S("select 1"));
    gConn->Execute(S("drop table fresh"));
    ClickMenu("mnuQuery", "Refresh");
    EXPECT_FALSE(SQL->TV->Nodes().Find(S("fresh")));
}

TEST_F(Assistance, TheListOfNamesHasTwoKeys)
{
    for (const bool control : {false, true}) {
        Write("select * from ", 14);
        QTest::keyClicks(SQL->txtSQL, S("t"));
        if (control)
            Press(Qt::Key_Space, Qt::ControlModifier);
        else
            Press(Qt::Key_F1);
        ASSERT_TRUE(SQL->lvQuickList->isVisible());
        QTest::keyClick(SQL->lvQuickList, Qt::Key_Return);
        EXPECT_EQ(SQL->Text(), S("select * from T"));
        EXPECT_EQ(Window->focusWidget(), SQL->txtSQL);
    }
}

TEST_F(Assistance, EveryWayIntoTheSearchLeadsToIt)
{
    const std::function<void()> ways[] = {
        [&] { Press(Qt::Key_F3); },
        [&] { Press(Qt::Key_F, Qt::ControlModifier); },
        [&] { Press(Qt::Key_H, Qt::ControlModifier); },
        [&] { ClickMenu("mnuEdit", "Find"); },
        [&] { ClickMenu("mnuEdit", "Replace"); },
        [&] { Window->cb->Press(S("MTBFIND")); },
        [&] {
            ExplorerBarItem *item = Window->eb->Bar(S("TB"))->Items().Item(S("FIND"));
            QTest::mouseClick(Window->eb->viewport(), Qt::LeftButton, {}, Window->eb->ItemRect(item).center());
        },
    };
    for (const auto &act : ways) {
        Write("select one from t");
        EXPECT_EQ(FindBy(act, S("one")), 2); // asked, and again at the hit
        EXPECT_EQ(SQL->txtSQL->SelStart(), 7);
        EXPECT_EQ(SQL->txtSQL->SelText(), S("one"));
        EXPECT_EQ(Window->focusWidget(), SQL->txtSQL);
    }
    // With the focus in the tree the same key searches there.
    TakeFocus();
    SQL->TV->setFocus();
    SQL->TV->SetSelectedItem(SQL->TV->Nodes().Item(1));
    EXPECT_EQ(FindBy([&] { QTest::keyClick(SQL->TV, Qt::Key_F3); }, S("view")), 2);
    EXPECT_EQ(SQL->TV->SelectedItem()->Key(), S("Views"));
}

TEST_F(Assistance, TheClipboardAndUndoHaveMenus)
{
    WriteSelected("abcdef");
    ClickMenu("mnuEdit", "Copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), S("abcdef"));
    SQL->txtSQL->SetSelStart(6);
    ClickMenu("mnuEdit", "Paste");
    EXPECT_EQ(SQL->Text(), S("abcdefabcdef"));
    ClickMenu("mnuEdit", "Select All");
    EXPECT_EQ(SQL->txtSQL->SelLength(), 12);
    Press(Qt::Key_Delete);
    EXPECT_EQ(SQL->Text(), QString());
    ClickMenu("mnuEdit", "Undo");
    if (SQL->Text().isEmpty())
        ClickMenu("mnuEdit", "Undo");
    EXPECT_EQ(SQL->Text(), S("abcdefabcdef"));
}

} // namespace
