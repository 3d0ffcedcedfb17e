// The program without a mouse and without eyes: keys reach everything, the focus shows, controls have names.
#include "analyzer/frmSQL.h"
#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/SideBarTable.h"
#include "app/ToolbarTable.h"
#include "app/WorkArea.h"
#include "controls/CommandBar.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "tests/app/EveryWindow.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>

namespace {

// What a user acts on, and not a part of another such control.
bool IsInteractive(const QWidget *widget)
{
    if (widget->focusPolicy() == Qt::NoFocus || widget->isHidden() ||
        widget->objectName().startsWith(QLatin1String("qt_")))
        return false;
    if (qobject_cast<const QScrollBar *>(widget) || widget->parentWidget()->inherits("QComboBoxPrivateContainer"))
        return false;
    if (qobject_cast<const QLineEdit *>(widget) && widget->parentWidget() &&
        (qobject_cast<const QComboBox *>(widget->parentWidget()) ||
         qobject_cast<const QAbstractSpinBox *>(widget->parentWidget())))
        return false;
    for (const QWidget *above = widget->parentWidget(); above && above->parentWidget() && !above->isWindow();
         above = above->parentWidget())
        if (const auto *area = qobject_cast<const QAbstractScrollArea *>(above->parentWidget());
            area && above == area->viewport() && !area->inherits("QMdiArea"))
            return false; // inside a view
    if (const auto *area = qobject_cast<const QAbstractScrollArea *>(widget->parentWidget());
        area && widget == area->viewport())
        return false;
    return true;
}

QString SpokenName(QWidget *widget)
{
    QAccessibleInterface *access = QAccessible::queryAccessibleInterface(widget);
    return access ? access->text(QAccessible::Name).trimmed() : QString();
}

class Access : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
        Window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    }
    frmHirarchy *Rows()
    {
        auto *result = new frmHirarchy;
        result->KillOnError = false;
        Window->AddChild(result);
        result->ShowChild();
        return result;
    }
    static QString FocusName()
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
};

TEST_F(Access, EveryControlOfEveryWindowHasAName)
{
    QSet<QString> kinds;
    const auto walk = [&](QWidget *window, const char *where) {
        for (QWidget *control : window->findChildren<QWidget *>())
            if (IsInteractive(control)) {
                kinds << QString::fromLatin1(control->metaObject()->className());
                EXPECT_FALSE(SpokenName(control).isEmpty())
                    << where << ": " << control->metaObject()->className() << ' ' << qPrintable(control->objectName());
            }
    };
    walk(Window.get(), "mdiMother");
    for (const AnyWindow &row : EveryWindow()) {
        std::unique_ptr<QWidget> window(row.Make());
        window->show();
        walk(window.get(), row.Name);
        window->hide();
    }
    for (const char *kind : {"QPushButton", "QLineEdit", "QComboBox", "QCheckBox", "RichTextBox", "TreeView",
                             "ListView", "FlexGrid", "TabStrip", "Splitter", "QToolButton", "ExplorerBar"})
        EXPECT_TRUE(kinds.contains(QString::fromLatin1(kind))) << kind; // the walk met them
}

// A picture of the control must tell whether it has the keyboard.
TEST_F(Access, TheFocusShowsOnEveryControlOfEveryWindow)
{
    const int flash = QApplication::cursorFlashTime();
    QApplication::setCursorFlashTime(0); // a caret that stands
    int looked = 0;
    const auto walk = [&](QWidget *window, const char *where) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window)) << where;
        for (QWidget *control : window->findChildren<QWidget *>()) {
            if (!IsInteractive(control) || !control->isEnabled() || !control->isVisible() || control->focusProxy() ||
                !(control->focusPolicy() & Qt::TabFocus) || control->window() != window)
                continue;
            if (auto *text = qobject_cast<QPlainTextEdit *>(control); text && text->isReadOnly())
                continue; // a page to be read: the keyboard scrolls it
            if (qobject_cast<QTextEdit *>(control))
                continue;
            if (QWidget *before = QApplication::focusWidget())
                before->clearFocus();
            if (const auto *view = qobject_cast<QAbstractItemView *>(control);
                view && view->model() && view->model()->rowCount() == 0)
                continue; // no row to be marked
            const QImage without = control->grab().toImage();
            control->setFocus(Qt::ShortcutFocusReason); // as by a key
            if (!control->hasFocus() && !control->isAncestorOf(QApplication::focusWidget()))
                continue;
            EXPECT_FALSE(control->grab().toImage() == without)
                << where << ": " << control->metaObject()->className() << ' ' << qPrintable(control->objectName());
            ++looked;
        }
    };
    walk(Window.get(), "mdiMother");
    for (const AnyWindow &row : EveryWindow()) {
        std::unique_ptr<QWidget> window(row.Make());
        window->show();
        walk(window.get(), row.Name);
        window->hide();
    }
    QApplication::setCursorFlashTime(flash);
    EXPECT_GT(looked, 50);
}

TEST_F(Access, EveryItemOfTheMenuBarHasALetterOfItsOwn)
{
    for (QAction *action : Window->menuBar()->actions())
        EXPECT_TRUE(action->text().contains(QLatin1Char('&'))) << qPrintable(action->text());
    // Within a menu the arrow keys reach what has run out of letters; there are few of those.
    int without = 0;
    for (const CommandRow &row : CommandTable())
        if (row.Route != Calls::Group && row.Route != Calls::Separator && std::strcmp(row.Parent, NoMenu) &&
            !Window->menus->Item(QString::fromLatin1(row.Name))->text().contains(QLatin1Char('&')))
            ++without;
    EXPECT_LE(without, 3);
}

TEST_F(Access, KeysLeadToTheBarsAndBack)
{
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    child->setFocusPolicy(Qt::StrongFocus);
    child->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(FocusName(), QStringLiteral("eb"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(FocusName(), QStringLiteral("MTBCONN"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), child);
    for (const Qt::Key key : {Qt::Key_1, Qt::Key_2}) {
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
        EXPECT_NE(QApplication::focusWidget(), child);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(QApplication::focusWidget(), child);
    }
}

TEST_F(Access, EveryEntryOfTheSideBarAnswersToTheKeyboard)
{
    QStringList wanted({Entry(QStringLiteral("a"))->Key()}), clicked;
    for (const SideBarRow &row : SideBarTable())
        wanted << QString::fromLatin1(row.Key);
    QObject::disconnect(Window->eb, &ExplorerBar::ItemClick, Window.get(), nullptr);
    QObject::connect(Window->eb, &ExplorerBar::ItemClick, Window.get(),
                     [&](ExplorerBarItem *item) { clicked << item->Key(); });
    QTest::keyClick(Window.get(), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(Window->eb, Qt::Key_Home);
    for (int spot = 0; spot < 10; ++spot) {
        if (spot != 0 && spot != 2) // the two headings would fold
            QTest::keyClick(Window->eb, spot % 2 ? Qt::Key_Return : Qt::Key_Space);
        QTest::keyClick(Window->eb, Qt::Key_Down);
    }
    EXPECT_EQ(clicked, wanted);
}

// From the first button the arrow keys go through all that are on; a space presses each.
TEST_F(Access, EveryButtonOfTheCommandBarAnswersToTheKeyboard)
{
    Child(QStringLiteral("frmSQL"));
    ASSERT_TRUE(Window->cb->HasToolbar(QStringLiteral("SQL")));
    QCoreApplication::processEvents(); // the new toolbar shows
    QStringList wanted, pressed;
    for (const SideBarRow &row : SideBarTable())
        wanted << QStringLiteral("MTB") + QLatin1String(row.Key);
    for (const char *key : FindToolbar("SQL")->Buttons)
        if (const CommandRow *row = FindButton(key); row && !row->IsLater)
            wanted << QString::fromLatin1(key);
    QObject::disconnect(Window->cb, &CommandBar::ButtonClick, Window.get(), nullptr);
    QObject::connect(Window->cb, &CommandBar::ButtonClick, Window.get(), [&](const QString &key) { pressed << key; });
    QTest::keyClick(Window.get(), Qt::Key_2, Qt::ControlModifier);
    for (qsizetype i = 0; i < wanted.size() + 3 && pressed.size() < wanted.size(); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    }
    EXPECT_EQ(pressed.join(u' ').toStdString(), wanted.join(u' ').toStdString());
}

TEST_F(Access, ADropDownOpensWithAltDown)
{
    Child(QStringLiteral("frmSQL"));
    auto *button = Window->cb->findChild<QToolButton *>(QStringLiteral("SQLTrans"));
    ASSERT_TRUE(button);
    button->setFocus(Qt::TabFocusReason);
    Log.clear();
    QTimer::singleShot(0, Window.get(), [] {
        auto *popup = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_TRUE(popup);
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
    });
    QTest::keyClick(button, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Log, QStringList("frmSQL ToolBar BT"));
}

// The statistics have no other place than the popup of the rows.
TEST_F(Access, TheMenuKeyOpensThePopupsOfRowsAndConnections)
{
    frmHirarchy *result = Rows();
    result->mfg->SetRows(3);
    result->mfg->SetRow(1);
    QStringList opened;
    const auto note = [&](QWidget *target, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTimer::singleShot(0, Window.get(), [&opened] {
            if (QWidget *popup = QApplication::activePopupWidget()) {
                opened << popup->objectName();
                popup->close();
            }
        });
        QTest::keyClick(target, key, modifiers);
        QTest::qWait(1);
    };
    note(result->mfg, Qt::Key_Menu, {});
    note(result->mfg, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(Window.get(), Qt::Key_1, Qt::ControlModifier);
    QTest::keyClick(Window->eb, Qt::Key_Home);
    QTest::keyClick(Window->eb, Qt::Key_Down);
    note(Window->eb, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(opened, QStringList({"mnuStats", "mnuStats", "mnuFile"}));
}

TEST_F(Access, ControlF4AndControlWCloseTheActiveChildAlone)
{
    for (const QKeySequence &keys : {QKeySequence(Qt::CTRL | Qt::Key_F4), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        FakeChild *first = Child(QStringLiteral("frmGrid")), *second = Child(QStringLiteral("frmTree"));
        Log.clear();
        QTest::keySequence(Window.get(), keys);
        EXPECT_EQ(Log.join(u'|').toStdString(), "frmTree Unload|frmTree Deactivated|frmGrid Activated");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(Window->Children(), QList<ChildWindow *>({first}));
        EXPECT_TRUE(second);
        QTest::keySequence(Window.get(), keys);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(Window->Children().isEmpty());
        QTest::keySequence(Window.get(), keys); // nothing is left to close
        EXPECT_FALSE(Window->HasEnded());
    }
}

TEST_F(Access, ControlTabGoesFromChildToChildOutOfTheEditorToo)
{
    auto *first = new frmSQL, *second = new frmSQL;
    for (frmSQL *child : {first, second}) {
        Window->AddChild(child);
        child->ShowChild();
        child->setFocus();
    }
    ASSERT_EQ(Window->ActiveChild(), second);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Control);
    EXPECT_EQ(Window->ActiveChild(), first);
    EXPECT_FALSE(second->Text().contains(QLatin1Char('\t')));
}

// The keyboard goes with what is seen.
TEST_F(Access, ADoubleClickOnACellKeepsTheKeyboardInTheResult)
{
    frmHirarchy *result = Rows();
    result->mfg->SetRows(3);
    result->mfg->SetTextMatrix(1, 1, QStringLiteral("Anna"));
    result->mfg->setFocus();
    const QRect cell = result->mfg->CellRect(1, 1);
    QTest::mouseClick(result->mfg->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(result->mfg->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(result->txtData->toPlainText(), QStringLiteral("Anna"));
    EXPECT_EQ(FocusName(), QStringLiteral("txtData"));
    QTest::mouseClick(result->findChild<QTabBar *>(), Qt::LeftButton, {},
                      result->findChild<QTabBar *>()->tabRect(0).center());
    EXPECT_EQ(FocusName(), QStringLiteral("mfg"));
    QTest::keyClick(result->mfg, Qt::Key_Return);
    EXPECT_EQ(FocusName(), QStringLiteral("txtData"));
}

TEST_F(Access, TheSplitterFollowsTheMouseAndTheKeys)
{
    Splitter *bar = Window->picSplit;
    const int before = bar->x();
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(2, 100));
    QTest::mouseMove(bar, QPoint(62, 100));
    EXPECT_EQ(bar->x(), before + 60);
    EXPECT_EQ(Window->eb->width(), before + 60); // while the button is still down
    EXPECT_EQ(Window->Area->x(), before + 60 + bar->width());
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(2, 100));
    const int dropped = Window->eb->width();
    EXPECT_GT(dropped, before + 60);         // it ends behind the pointer
    QTest::mouseMove(bar, QPoint(-40, 100)); // no button: nothing moves
    EXPECT_EQ(bar->x(), dropped);
    QTest::keyClick(bar, Qt::Key_Left);
    EXPECT_LT(Window->eb->width(), dropped);
    const int kept = bar->Position();
    Window->close();
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSplit")).toInt(), kept);
    // As far as it goes: something of either side is left.
    Window.reset();
    Start(QStringLiteral("TestMode"), true);
    bar = Window->picSplit;
    EXPECT_EQ(bar->Position(), kept);
    QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(2, 100));
    QTest::mouseMove(bar, QPoint(-5000, 100));
    EXPECT_EQ(bar->Position(), 0);
    QTest::mouseMove(bar, QPoint(9000, 100));
    QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(2, 100));
    EXPECT_EQ(bar->x(), Window->Area->parentWidget()->width() - bar->width() - 10);
}

} // namespace
