// States of the menus, popups, the Window menu, and that every item reaches what its row says.
#include "app/Menus.h"
#include "app/CommandTable.h"
#include "app/WorkArea.h"
#include "controls/StatusBar.h"
#include "frame/Shell.h"
#include "tests/app/ShellFixture.h"
#include <QAction>
#include <QApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTimer>
#include <stdexcept>

namespace {

const QStringList s_edit = {"mnuCopy", "mnuCut", "mnuPaste", "mnuUndo", "mnuSelectAll", "mnuFind", "mnuReplace"};

class MenusTest : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    bool Enabled(const QString &name) { return Window->menus->Item(name)->isEnabled(); }
    QStringList EnabledOf(const QStringList &names)
    {
        QStringList enabled;
        for (const QString &name : names)
            if (Enabled(name))
                enabled << name;
        return enabled;
    }
    // Runs while the next popup is open, then closes it.
    void InPopup(std::function<void(QMenu *)> look)
    {
        QTimer::singleShot(0, Window.get(), [look] {
            auto *popup = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(popup);
            look(popup);
            if (popup)
                popup->close();
        });
    }
};

TEST_F(MenusTest, EditWithoutAChildIsAllOff)
{
    Window->mnuEdit_Click();
    EXPECT_EQ(EnabledOf(s_edit), QStringList());
}

TEST_F(MenusTest, EditFollowsTheFieldsOfTheActiveChild)
{
    FakeChild *child = Child(QStringLiteral("frmGrid"));
    bool clsMenuSettings::*const fields[] = {&clsMenuSettings::CanCopy,      &clsMenuSettings::CanCut,
                                             &clsMenuSettings::CanPaste,     &clsMenuSettings::CanUndo,
                                             &clsMenuSettings::CanSelectAll, &clsMenuSettings::CanFind,
                                             &clsMenuSettings::CanReplace};
    for (int i = 0; i < 7; ++i) {
        child->Can = clsMenuSettings();
        child->Can.*fields[i] = true;
        Window->mnuEdit_Click();
        EXPECT_EQ(EnabledOf(s_edit), QStringList(s_edit[i]));
    }
}

TEST_F(MenusTest, FileFollowsTheActiveChild)
{
    const QStringList items = {"mnuOpen", "mnuSave", "mnuFileSnapshot", "mnuPrint", "mnuDeleteConn"};
    Window->menus->Follow("mnuFile");
    EXPECT_EQ(EnabledOf(items), QStringList("mnuPrint")); // never switched off without a child
    FakeChild *child = Child(QStringLiteral("frmChart"));
    child->Can.CanSave = true;
    child->Names.Add(ChildName::SnapShot);
    Window->menus->Follow("mnuFile");
    EXPECT_EQ(EnabledOf(items), QStringList({"mnuSave", "mnuFileSnapshot"}));
    child->Can = clsMenuSettings();
    child->Can.CanOpen = child->Can.CanPrint = true;
    child->Names = {};
    Window->menus->Follow("mnuFile");
    EXPECT_EQ(EnabledOf(items), QStringList({"mnuOpen", "mnuPrint"}));
    child->CloseChild();
    Window->menus->Follow("mnuFile");
    EXPECT_EQ(EnabledOf(items), QStringList("mnuPrint")); // its last state
}

TEST_F(MenusTest, TheSideBarsPopupIsTheFileMenuWithTagP)
{
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    child->Can.CanSave = child->Can.CanOpen = true;
    ExplorerBarItem *entry = Entry(QStringLiteral("a"));
    QStringList enabled;
    QString tag, key, text;
    InPopup([&](QMenu *popup) {
        EXPECT_EQ(popup->objectName(), QStringLiteral("mnuFile"));
        tag = Window->menus->Tag(QStringLiteral("mnuFile"));
        key = Window->menus->Tag(QStringLiteral("mnuDeleteConn"));
        text = Window->menus->Tag(QStringLiteral("mnuViewCS"));
        enabled = EnabledOf({"mnuSave", "mnuOpen", "mnuDeleteConn", "mnuViewCS"});
    });
    QTest::mouseClick(Window->eb->viewport(), Qt::RightButton, {}, Window->eb->ItemRect(entry).center());
    QContextMenuEvent menu(QContextMenuEvent::Mouse, Window->eb->ItemRect(entry).center(),
                           Window->eb->viewport()->mapToGlobal(Window->eb->ItemRect(entry).center()));
    if (tag.isEmpty())
        QApplication::sendEvent(Window->eb->viewport(), &menu);
    EXPECT_EQ(tag, QStringLiteral("P"));
    EXPECT_EQ(key, entry->Key());
    EXPECT_EQ(text, QStringLiteral("a"));
    EXPECT_EQ(enabled, QStringList({"mnuDeleteConn", "mnuViewCS"}));
    EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuFile")), QString());
    EXPECT_FALSE(Enabled(QStringLiteral("mnuDeleteConn")));
    EXPECT_TRUE(Enabled(QStringLiteral("mnuSave")));
}

TEST_F(MenusTest, TheRightButtonOnTheWorkAreaPopsTheFileMenuUpWithoutATag)
{
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    child->Can.CanSave = true;
    bool popped = false;
    InPopup([&](QMenu *popup) {
        popped = true;
        EXPECT_EQ(popup->objectName(), QStringLiteral("mnuFile"));
        EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuFile")), QString());
        EXPECT_TRUE(Enabled(QStringLiteral("mnuSave"))); // the states are those of the active child
        EXPECT_FALSE(Enabled(QStringLiteral("mnuOpen")));
    });
    QWidget *ground = Window->Area->viewport();
    const QPoint at(ground->width() - 3, ground->height() - 3);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, at, ground->mapToGlobal(at));
    QApplication::sendEvent(ground, &menu);
    EXPECT_TRUE(popped);
}

TEST_F(MenusTest, ToolEntriesHaveNoPopup)
{
    Window->SideBarRightClick(Window->eb->Bar(QStringLiteral("TB"))->Items().Find(QStringLiteral("CONN")), QPoint());
    EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuDeleteConn")), QString());
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(MenusTest, DeleteFromThePopupTakesTheEntryAndTheMember)
{
    InPopup([&](QMenu *) { Window->menus->Item(QStringLiteral("mnuDeleteConn"))->trigger(); });
    Window->SideBarRightClick(Entry(QStringLiteral("a")), QPoint(5, 5));
    EXPECT_FALSE(Entry(QStringLiteral("a")));
    EXPECT_FALSE(gConns().Item(QStringLiteral("a")));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty()); // not asked
}

TEST_F(MenusTest, ExitFromThePopupEndsWithoutTouchingTheMenu)
{
    InPopup([&](QMenu *) { Window->menus->Item(QStringLiteral("mnuExit"))->trigger(); });
    Window->SideBarRightClick(Entry(QStringLiteral("a")), QPoint(5, 5));
    EXPECT_TRUE(Window->HasEnded());
    EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuFile")), QStringLiteral("P"));
}

TEST_F(MenusTest, EveryItemReachesItsOperationAndNoneIsDead)
{
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    for (const CommandRow &row : CommandTable()) {
        SCOPED_TRACE(row.Name);
        if (row.Route == Calls::Separator || !std::strcmp(row.Parent, NoMenu))
            continue;
        QAction *item = Window->menus->Item(QString::fromLatin1(row.Name));
        ASSERT_TRUE(item);
        if (row.IsLater) {
            EXPECT_FALSE(item->isEnabled()); // no dead click
            continue;
        }
        if (row.Route != Calls::Child && row.Route != Calls::Tool)
            continue; // the schema's own tests run theirs on a connection
        item->setEnabled(true);
        Log.clear();
        item->trigger();
        QString wanted =
            row.Route == Calls::Tool ? QStringLiteral("ToolBar ") + QLatin1String(row.Text) : ToText(row.Answer);
        if (row.Answer == ChildName::Parse || row.Answer == ChildName::ChangeChartType)
            wanted += QStringLiteral(" %1").arg(row.Number);
        EXPECT_EQ(Log, QStringList(QStringLiteral("frmSQL ") + wanted));
        if (*row.Status) {
            EXPECT_EQ(child->StatusSeen, QString::fromLatin1(row.Status));
            EXPECT_NE(Window->SB->PanelText(1), QString::fromLatin1(row.Status)); // it stayed for good
        }
    }
    EXPECT_TRUE(child);
}

TEST_F(MenusTest, CutOnlyCopies)
{
    Child(QStringLiteral("frmSQL"))->Can.CanCut = true;
    Window->mnuEdit_Click();
    Log.clear();
    Window->menus->Item(QStringLiteral("mnuCut"))->trigger();
    EXPECT_EQ(Log, QStringList("frmSQL mnuCopy"));
}

TEST_F(MenusTest, WithoutAChildNothingHappens)
{
    for (const CommandRow &row : CommandTable())
        if (row.Route == Calls::Child || row.Route == Calls::Tool)
            Window->Run(row);
    EXPECT_TRUE(Log.isEmpty());
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(MenusTest, SchemaItemsFollowTheConnection)
{
    for (const bool on : {false, true, false}) {
        Shell::Current().SetSchemaMenuEnabled(on);
        for (const CommandRow &row : CommandTable())
            if (row.Need == Needs::Connection) {
                EXPECT_EQ(Enabled(QString::fromLatin1(row.Name)), on && !row.IsLater) << row.Name;
            }
    }
}

TEST_F(MenusTest, ShortcutsReachTheActiveChild)
{
    FakeChild *child = Child(QStringLiteral("frmTextOutput"));
    child->Can.CanSave = child->Can.CanFind = true;
    Window->RefreshMenus();
    Window->activateWindow();
    child->setFocusPolicy(Qt::StrongFocus);
    child->setFocus();
    Log.clear();
    QTest::keyClick(child, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(child, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(child, Qt::Key_O, Qt::ControlModifier); // off
    EXPECT_EQ(Log, QStringList({"frmTextOutput mnuSave", "frmTextOutput mnuFind"}));
}

TEST_F(MenusTest, MnemonicsAreDistinctWithinAMenu)
{
    const auto check = [](const QList<QAction *> &actions, const QString &where) {
        QSet<QChar> taken;
        for (QAction *action : actions) {
            const qsizetype at = action->text().indexOf(QLatin1Char('&'));
            if (at < 0)
                continue;
            const QChar letter = action->text()[at + 1].toLower();
            EXPECT_FALSE(taken.contains(letter)) << qPrintable(where + QLatin1Char(' ') + action->text());
            taken << letter;
        }
        return taken.size();
    };
    EXPECT_EQ(check(Window->menuBar()->actions(), QStringLiteral("bar")), 12);
    for (const CommandRow &row : CommandTable())
        if (row.Route == Calls::Group)
            check(Window->menus->Menu(QString::fromLatin1(row.Name))->actions(), QString::fromLatin1(row.Name));
    QString taken = QStringLiteral("fi");
    EXPECT_EQ(WithMnemonic(QStringLiteral("File"), taken), QStringLiteral("Fi&le"));
    EXPECT_EQ(WithMnemonic(QStringLiteral("Fil"), taken), QStringLiteral("Fil"));
}

TEST_F(MenusTest, TheWindowMenuListsTheChildrenAndActivatesThem)
{
    FakeChild *first = Child(QStringLiteral("frmGrid"));
    first->SetCaption(QStringLiteral("One & only"));
    FakeChild *second = Child(QStringLiteral("frmTree"));
    second->SetCaption(QStringLiteral("Two"));
    Window->menus->OnWindow();
    Window->menus->OnWindow(); // a second opening lists them once
    QStringList texts;
    QAction *one = nullptr;
    for (QAction *action : Window->menus->Menu(QStringLiteral("mnuWindow"))->actions())
        if (action->isCheckable()) {
            texts << action->text() + (action->isChecked() ? QStringLiteral(" *") : QString());
            if (!one)
                one = action;
        }
    EXPECT_EQ(texts, QStringList({"&1 One && only", "&2 Two *"}));
    one->trigger();
    EXPECT_EQ(Window->ActiveChild(), first);
}

TEST_F(MenusTest, ActivationIsToldAndOutlivesTheProgramsFocus)
{
    FakeChild *first = Child(QStringLiteral("frmGrid"));
    EXPECT_EQ(Log, QStringList("frmGrid Activated"));
    FakeChild *second = Child(QStringLiteral("frmTree"));
    EXPECT_EQ(Log.mid(1), QStringList({"frmGrid Deactivated", "frmTree Activated"}));
    EXPECT_EQ(Window->ActiveChild(), second);
    Log.clear();
    QEvent deactivate(QEvent::WindowDeactivate);
    QApplication::sendEvent(Window.get(), &deactivate);
    QApplication::sendEvent(Window->Area, &deactivate);
    EXPECT_EQ(Window->ActiveChild(), second);
    EXPECT_EQ(Log, QStringList());
    second->CloseChild();
    EXPECT_EQ(Window->ActiveChild(), first);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Window->Children(), QList<ChildWindow *>({first}));
    first->CloseChild();
    EXPECT_EQ(Window->ActiveChild(), nullptr);
}

TEST_F(MenusTest, TilingStacksAndSetsSideBySide)
{
    QList<QWidget *> frames;
    for (const char *form : {"frmGrid", "frmTree", "frmSQL"})
        frames << Child(QString::fromLatin1(form))->parentWidget();
    const QSize room = Window->Area->viewport()->size();
    const auto area = [&] {
        QRegion all;
        int sum = 0;
        for (QWidget *frame : frames) {
            all += frame->geometry();
            sum += frame->width() * frame->height();
        }
        EXPECT_EQ(sum, room.width() * room.height()); // none covers another
        EXPECT_EQ(all, QRegion(QRect(QPoint(), room)));
    };
    Window->menus->Item(QStringLiteral("mnuTileHorizantally"))->trigger();
    area();
    for (QWidget *frame : frames)
        EXPECT_EQ(frame->width(), room.width());
    Window->menus->Item(QStringLiteral("mnuTileVertically"))->trigger();
    area();
    for (QWidget *frame : frames)
        EXPECT_EQ(frame->height(), room.height());
    Window->menus->Item(QStringLiteral("mnuCascade"))->trigger();
    QSet<QPair<int, int>> corners;
    for (QWidget *frame : frames)
        corners << qMakePair(frame->x(), frame->y());
    EXPECT_EQ(corners.size(), 3);
}

TEST_F(MenusTest, NewChildrenStandWithinTheWorkAreaAndRowsBesideTheText)
{
    const QRect room(QPoint(0, 0), Window->Area->maximumViewportSize());
    const QWidget *text = Child(QStringLiteral("frmSQL"))->parentWidget();
    const QWidget *rows = Child(QStringLiteral("frmHirarchy"))->parentWidget();
    EXPECT_TRUE(room.contains(text->geometry()));
    EXPECT_TRUE(room.contains(rows->geometry()));
    EXPECT_FALSE(text->geometry().intersects(rows->geometry()));
    for (int i = 0; i < 8; ++i)
        for (const char *form : {"frmSQL", "frmHirarchy", "frmTree"}) {
            EXPECT_TRUE(room.contains(Child(QString::fromLatin1(form))->parentWidget()->geometry())) << form << i;
            EXPECT_NE(WorkArea::FirstPlace(QString::fromLatin1(form), 0, room.size()),
                      WorkArea::FirstPlace(QString::fromLatin1(form), 1, room.size()));
        }
    EXPECT_GE(WorkArea::FirstPlace(QStringLiteral("frmSQL"), 5, QSize(0, 0)).width(), 100);
}

TEST_F(MenusTest, IconsAreArrangedAlongTheBottom)
{
    QWidget *frame = Child(QStringLiteral("frmGrid"))->parentWidget();
    frame->showMinimized();
    frame->move(50, 50);
    Window->menus->Item(QStringLiteral("mnuArrangeIcons"))->trigger();
    EXPECT_EQ(frame->geometry().left(), 0);
    EXPECT_EQ(frame->y() + frame->height(), Window->Area->viewport()->height());
}

TEST_F(MenusTest, PopupsOfTheWindowsShowTheirItems)
{
    Child(QStringLiteral("frmHirarchy"));
    QString name;
    InPopup([&](QMenu *popup) {
        name = popup->objectName();
        Window->menus->Item(QStringLiteral("mnuMax"))->trigger();
    });
    Shell::Current().ShowMenu(QStringLiteral("mnuStats"), QPoint(3, 3), QStringLiteral("M"));
    EXPECT_EQ(name, QStringLiteral("mnuStats"));
    EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuStats")), QStringLiteral("M"));
    EXPECT_TRUE(Log.contains(QStringLiteral("frmHirarchy mnuMax_Click")));
    InPopup([&](QMenu *popup) { name = popup->objectName(); });
    Shell::Current().ShowMenu(QStringLiteral("mnuEdit"), QPoint(3, 3));
    EXPECT_EQ(name, QStringLiteral("mnuEdit"));
    Child(QStringLiteral("frmSQL")); // brings its toolbar
    InPopup([&](QMenu *popup) { name = popup->objectName(); });
    Window->CommandBarClick(QStringLiteral("SQLParser"));
    EXPECT_EQ(name, QStringLiteral("mnuParseMenu"));
}

// "Saving..." stayed for good.
TEST_F(MenusTest, TheStatusReturnsWhenTheSaveIsDoneOrDeclined)
{
    SetStatus(QStringLiteral("Done."));
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    QString during;
    child->OnSave = [&] { during = LastStatus(); };
    Window->Run(*FindCommand("mnuSave"));
    EXPECT_EQ(during, QStringLiteral("Saving..."));
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Done."));
    child->OnSave = [] { throw std::runtime_error("failed"); };
    Window->Run(*FindCommand("mnuStatsSave"));
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Done."));
    child->OnSave = [] { SetStatus(QStringLiteral("Error: the disk is full")); }; // what the command says stays
    Window->Run(*FindCommand("mnuSave"));
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Error: the disk is full"));
}

} // namespace
