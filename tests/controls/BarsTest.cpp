// Status bar, tab strip, side bar and command bar, by real events.

#include "controls/CommandBar.h"
#include "controls/ControlError.h"
#include "controls/ExplorerBar.h"
#include "controls/Icons.h"
#include "controls/Skin.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Twips.h"
#include "tests/support/Text.h"
#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

template <class Statement> int NumberOf(Statement &&statement)
{
    try {
        statement();
    } catch (const ControlError &error) {
        return error.Number;
    }
    return 0;
}

} // namespace

TEST(StatusBar, PanelsHoldWholeTextsAndSayTheirClicks)
{
    StatusBar bar;
    EXPECT_EQ(bar.AddPanel(sbrText, true), 1);
    EXPECT_EQ(bar.AddPanel(sbrText, false, 1500), 2);
    bar.resize(400, 24);
    bar.show();
    const QString sql = QString(5000, u'x') + S("\r\nfrom t");
    bar.SetPanelText(1, sql);
    bar.SetPanelText(9, S("nowhere"));
    EXPECT_EQ(bar.PanelText(1), sql);
    EXPECT_EQ(bar.PanelText(9), QString());
    EXPECT_GE(ToTwips(bar.PanelRect(2).width()), 1500);
    EXPECT_LE(bar.width(), 400);
    QSignalSpy clicks(&bar, &StatusBar::PanelClick);
    QTest::mouseClick(bar.childAt(bar.PanelRect(2).center()), Qt::LeftButton);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].toInt(), 2);
    QWidget *const first = bar.childAt(bar.PanelRect(1).center());
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Return);
    ASSERT_EQ(clicks.size(), 2);
    EXPECT_EQ(clicks[1][0].toInt(), 1);
}

TEST(StatusBar, AutomaticPanelsShowWhatIs)
{
    StatusBar bar;
    const int caps = bar.AddPanel(sbrCaps), num = bar.AddPanel(sbrNum), ins = bar.AddPanel(sbrIns);
    const int scroll = bar.AddPanel(sbrScrl), time = bar.AddPanel(sbrTime), date = bar.AddPanel(sbrDate);
    EXPECT_EQ(bar.PanelText(caps), S("CAPS"));
    EXPECT_EQ(bar.PanelText(date), QDate::currentDate().toString(S("yyyy-MM-dd")));
    EXPECT_EQ(bar.PanelText(time).size(), 5);
    EXPECT_FALSE(bar.PanelEnabled(num));
    EXPECT_FALSE(bar.PanelEnabled(scroll));
    EXPECT_TRUE(bar.PanelEnabled(ins));
    bar.SetOverwrite(true);
    EXPECT_FALSE(bar.PanelEnabled(ins));
    QWidget window;
    QKeyEvent capital(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, S("A"));
    QCoreApplication::sendEvent(&window, &capital);
    EXPECT_TRUE(bar.PanelEnabled(caps));
    QKeyEvent small(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, S("a"));
    QCoreApplication::sendEvent(&window, &small);
    EXPECT_FALSE(bar.PanelEnabled(caps));
    QKeyEvent shifted(QEvent::KeyPress, Qt::Key_A, Qt::ShiftModifier, S("A"));
    QCoreApplication::sendEvent(&window, &shifted);
    EXPECT_FALSE(bar.PanelEnabled(caps));
}

TEST(TabStrip, CountsFromOneAndSaysEveryChoice)
{
    TabStrip strip;
    EXPECT_EQ(strip.Selected(), 0);
    EXPECT_EQ(strip.AddTab(S("Data Grid"), S("G")), 1);
    strip.AddTab(S("Message(s)"));
    strip.AddTab(S("Data Drill Down"));
    EXPECT_EQ(strip.Selected(), 1);
    EXPECT_EQ(strip.Key(1), S("G"));
    QSignalSpy clicks(&strip, &TabStrip::Click);
    strip.Select(2);
    strip.Select(2);
    EXPECT_EQ(clicks.size(), 2);
    strip.resize(400, 30);
    strip.show();
    QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.tabRect(2).center());
    EXPECT_EQ(strip.Selected(), 3);
    QTest::keyClick(&strip, Qt::Key_Left);
    EXPECT_EQ(strip.Selected(), 2);
    EXPECT_EQ(NumberOf([&] { strip.Select(4); }), ctlErrIndex);
    EXPECT_EQ(NumberOf([&] { strip.Text(0); }), ctlErrIndex);
    strip.SetText(3, S("Other"));
    EXPECT_EQ(strip.Text(3), S("Other"));
}

class ExplorerBarTest : public testing::Test
{
protected:
    ExplorerBarTest()
    {
        bar.AddBar(S("CONN"), S("Connections"));
        bar.AddBar(S("TB"), S("Tool Bar"));
        bar.Bar(S("TB"))->Items().Add(S("RUN"), S("SQL Analyzer"), 0, S("Open SQL Analyzer"));
        bar.Bar(S("TB"))->Items().Add(S("OPEN"), S("Open"));
        bar.Bar(S("CONN"))->Items().Add({}, S("Sample"), 7, {}, S("CONN"));
        bar.resize(180, 300);
        bar.show();
    }
    ExplorerBar bar;
};

TEST_F(ExplorerBarTest, NumbersConnectionsByThemselvesAndNeverTwice)
{
    ExplorerBarItems &items = bar.Bar(S("CONN"))->Items();
    EXPECT_EQ(items.Item(1)->Key(), S("C:1"));
    EXPECT_EQ(items.Item(1)->Tag(), S("CONN"));
    EXPECT_EQ(items.Add({}, S("Second"))->Key(), S("C:2"));
    items.Remove(S("C:1"));
    EXPECT_EQ(items.Add({}, S("Third"))->Key(), S("C:3"));
    EXPECT_EQ(items.Count(), 2);
    EXPECT_EQ(NumberOf([&] { items.Item(S("C:1")); }), ctlErrElementNotFound);
    EXPECT_EQ(NumberOf([&] { items.Remove(S("C:1")); }), ctlErrElementNotFound);
    EXPECT_EQ(NumberOf([&] { items.Item(3); }), ctlErrIndex);
    EXPECT_EQ(bar.Bar(S("TB"))->Items().Add({}, S("keyless"))->Key(), QString());
    EXPECT_EQ(NumberOf([&] { bar.Bar(S("TB"))->Items().Add(S("RUN"), S("x")); }), ctlErrKeyNotUnique);
    EXPECT_EQ(NumberOf([&] { bar.AddBar(S("TB"), S("x")); }), ctlErrKeyNotUnique);
    EXPECT_EQ(NumberOf([&] { bar.Bar(S("LOG")); }), ctlErrElementNotFound);
    EXPECT_EQ(bar.FindBar(S("LOG")), nullptr);
    EXPECT_EQ(bar.Bar(2)->Title(), S("Tool Bar"));
}

TEST_F(ExplorerBarTest, AWrappingBarShowsWholeTexts)
{
    bar.resize(170, 600);
    bar.show();
    ExplorerBarBar *const log = bar.AddBar(S("LOG"), S("Log"));
    ExplorerBarItem *const item =
        log->Items().Add(S("1"), S("update shippers set Shippe... 1 record have been affected"));
    ExplorerBarItem *const brief = log->Items().Add(S("2"), S("short"));
    const int line = bar.ItemRect(item).height();
    log->SetWraps(true);
    EXPECT_TRUE(log->Wraps());
    EXPECT_GE(bar.ItemRect(item).height(), 3 * bar.fontMetrics().height());
    EXPECT_EQ(bar.ItemRect(brief).height(), line);
    EXPECT_EQ(bar.ItemRect(brief).top(), bar.ItemRect(item).bottom() + 1);
    EXPECT_EQ(bar.ItemAt(bar.ItemRect(brief).center()), brief);
    bar.resize(700, 600);
    EXPECT_EQ(bar.ItemRect(item).height(), line);
    item->SetText(S("x"));
    bar.resize(170, 600);
    EXPECT_EQ(bar.ItemRect(item).height(), line);
}

TEST_F(ExplorerBarTest, ClicksReachTheEntry)
{
    QSignalSpy clicks(&bar, &ExplorerBar::ItemClick);
    ExplorerBarItem *const run = bar.Bar(S("TB"))->Items().Item(S("RUN"));
    QTest::mouseClick(bar.viewport(), Qt::LeftButton, {}, bar.ItemRect(run).center());
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].value<ExplorerBarItem *>(), run);
    run->SetEnabled(false);
    QTest::mouseClick(bar.viewport(), Qt::LeftButton, {}, bar.ItemRect(run).center());
    EXPECT_EQ(clicks.size(), 1);
    // pressed on one, let go on another: no click
    QTest::mousePress(bar.viewport(), Qt::LeftButton, {}, bar.HeaderRect(bar.Bar(1)).center());
    QTest::mouseRelease(bar.viewport(), Qt::LeftButton, {}, bar.ItemRect(bar.Bar(1)->Items().Item(1)).center());
    EXPECT_EQ(clicks.size(), 1);
    EXPECT_TRUE(bar.Bar(1)->Expanded());
}

TEST_F(ExplorerBarTest, HeadersOpenAndClose)
{
    QSignalSpy headers(&bar, &ExplorerBar::BarClick);
    QTest::mouseClick(bar.viewport(), Qt::LeftButton, {}, bar.HeaderRect(bar.Bar(2)).center());
    EXPECT_FALSE(bar.Bar(2)->Expanded());
    EXPECT_EQ(headers.size(), 1);
    EXPECT_TRUE(bar.ItemRect(bar.Bar(2)->Items().Item(1)).isEmpty());
    bar.Bar(2)->Items().Item(2)->EnsureVisible();
    EXPECT_TRUE(bar.Bar(2)->Expanded());
}

TEST_F(ExplorerBarTest, TheRightButtonAndTheMenuKeyAskForTheMenu)
{
    QSignalSpy menus(&bar, &ExplorerBar::ItemRightClick);
    const QPoint at = bar.ItemRect(bar.Bar(1)->Items().Item(1)).center();
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, at, bar.viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(bar.viewport(), &mouse);
    ASSERT_EQ(menus.size(), 1);
    EXPECT_EQ(menus[0][0].value<ExplorerBarItem *>()->Text(), S("Sample"));
    QContextMenuEvent empty(QContextMenuEvent::Mouse, {5, 295}, bar.viewport()->mapToGlobal(QPoint(5, 295)));
    QCoreApplication::sendEvent(bar.viewport(), &empty);
    EXPECT_EQ(menus.size(), 1);
    QTest::mouseClick(bar.viewport(), Qt::LeftButton, {}, at);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {0, 0}, {0, 0});
    QCoreApplication::sendEvent(bar.viewport(), &key);
    EXPECT_EQ(menus.size(), 2);
}

TEST_F(ExplorerBarTest, EveryEntryIsReachedByKeys)
{
    QSignalSpy clicks(&bar, &ExplorerBar::ItemClick);
    bar.setFocus();
    QTest::keyClick(&bar, Qt::Key_Home);
    QStringList seen;
    for (int i = 0; i < 6; ++i) {
        if (bar.Current())
            seen << bar.Current()->Text();
        QTest::keyClick(&bar, Qt::Key_Down);
    }
    seen.removeDuplicates();
    EXPECT_EQ(seen, (QStringList{S("Sample"), S("SQL Analyzer"), S("Open")}));
    QTest::keyClick(&bar, Qt::Key_Return);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].value<ExplorerBarItem *>()->Key(), S("OPEN"));
    QTest::keyClick(&bar, Qt::Key_Left); // closes the bar of the entry
    EXPECT_FALSE(bar.Bar(S("TB"))->Expanded());
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_TRUE(bar.Bar(S("TB"))->Expanded());
}

TEST_F(ExplorerBarTest, ScrollsAndFreezes)
{
    bar.SetRedraw(false);
    bar.SetRedraw(false);
    for (int i = 0; i < 200; ++i)
        bar.Bar(S("CONN"))->Items().Add({}, QString::number(i));
    bar.SetRedraw(true);
    EXPECT_FALSE(bar.Redraw());
    bar.SetRedraw(true);
    EXPECT_TRUE(bar.Redraw());
    EXPECT_GT(bar.verticalScrollBar()->maximum(), 2000);
    ExplorerBarItem *const last = bar.Bar(S("TB"))->Items().Item(S("OPEN"));
    last->EnsureVisible();
    EXPECT_TRUE(bar.viewport()->rect().contains(bar.ItemRect(last)));
    EXPECT_EQ(bar.ItemAt(bar.ItemRect(last).center()), last);
}

TEST_F(ExplorerBarTest, WhatGoesAwayIsForgotten)
{
    ExplorerBarItem *const item = bar.Bar(S("CONN"))->Items().Item(1);
    QTest::mouseClick(bar.viewport(), Qt::LeftButton, {}, bar.ItemRect(item).center());
    EXPECT_EQ(bar.Current(), item);
    QObject::connect(&bar, &ExplorerBar::ItemClick, &bar, [this] { bar.RemoveBar(S("CONN")); });
    QTest::keyClick(&bar, Qt::Key_Return); // its own handler takes the entry away
    EXPECT_EQ(bar.Current(), nullptr);
    EXPECT_EQ(bar.BarCount(), 1);
    bar.RemoveBar(S("CONN"));
    QTest::keyClick(&bar, Qt::Key_Return);
    bar.Bar(1)->Items().Clear();
    EXPECT_FALSE(bar.grab().isNull());
}

class CommandBarTest : public testing::Test
{
protected:
    CommandBarTest()
    {
        bar.AddToolbar(S("SQL"), S("SQL"));
        bar.AddSeparator(S("SQL"), S("SQLS"));
        bar.AddSeparator(S("SQL"), S("SQLS0"));
        bar.AddButton(S("SQL"), S("SQLRun"), S("Run"), cbrButton, 1);
        bar.AddButton(S("SQL"), S("SQLSplit"), S("Split"), cbrCheck, 1);
        bar.AddButton(S("SQL"), S("SQLParser"), S("Parser"), cbrDropDown, 1);
        bar.AddMenuItem(S("SQLParser"), S("P1"), S("Parse (Parenthesis)"));
        bar.resize(500, 40);
        bar.show();
    }
    QToolButton *Face(const char *key) { return bar.findChild<QToolButton *>(S(key)); }
    CommandBar bar;
};

TEST_F(CommandBarTest, ButtonsStandInOrderAndSayTheirKeys)
{
    EXPECT_EQ(bar.ButtonKeys(S("SQL")),
              (QStringList{S("SQLS"), S("SQLS0"), S("SQLRun"), S("SQLSplit"), S("SQLParser")}));
    EXPECT_EQ(bar.ToolTip(S("SQLRun")), S("Run"));
    EXPECT_EQ(bar.ToolTip(S("SQLS")), QString());
    EXPECT_EQ(bar.Kind(S("SQLS0")), cbrSeparator);
    QSignalSpy clicks(&bar, &CommandBar::ButtonClick);
    QTest::mouseClick(Face("SQLRun"), Qt::LeftButton);
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].toString(), S("SQLRun"));
    EXPECT_FALSE(bar.ButtonRect(S("SQLRun")).isEmpty());
    Face("SQLRun")->setFocus();
    QTest::keyClick(Face("SQLRun"), Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 2);
    EXPECT_EQ(Face("SQLRun")->accessibleName(), S("Run"));
}

TEST_F(CommandBarTest, AButtonWithAMenuIsAButtonAllTheSame)
{
    QSignalSpy clicks(&bar, &CommandBar::ButtonClick);
    QToolButton *const face = Face("SQLParser");
    EXPECT_GT(face->width(), Face("SQLRun")->width()) << "room for the arrow";
    QTest::mouseClick(face, Qt::LeftButton, {}, QPoint(face->height() / 3, face->height() / 2));
    ASSERT_EQ(clicks.size(), 1);
    EXPECT_EQ(clicks[0][0].toString(), S("SQLParser"));
    QMenu *const menu = face->menu();
    EXPECT_FALSE(menu->isVisible());
    EXPECT_GE(Contrast(menu->palette().color(QPalette::WindowText), menu->palette().color(QPalette::Window)), 4.5);
    EXPECT_EQ(menu->palette().color(QPalette::Window), SkinColour(SkinRole::BarTop));
    bool shown = false;
    QTimer::singleShot(0, menu, [&] { // the menu runs its own loop
        shown = menu->isVisible();
        menu->close();
    });
    QTest::mouseClick(face, Qt::LeftButton, {}, QPoint(face->width() - 3, face->height() / 2));
    EXPECT_TRUE(shown);
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(CommandBarTest, CheckButtonsKeepTheirState)
{
    QSignalSpy clicks(&bar, &CommandBar::ButtonClick);
    bar.SetChecked(S("SQLSplit"), true);
    EXPECT_EQ(clicks.size(), 0);
    EXPECT_TRUE(bar.Checked(S("SQLSplit")));
    QTest::mouseClick(Face("SQLSplit"), Qt::LeftButton);
    EXPECT_FALSE(bar.Checked(S("SQLSplit")));
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(CommandBarTest, ItemDataEnablesItsButtons)
{
    bar.SetItemData(S("SQLSplit"), 2);
    bar.SetEnabledByData(1, false);
    EXPECT_FALSE(bar.Enabled(S("SQLRun")));
    EXPECT_TRUE(bar.Enabled(S("SQLSplit")));
    QSignalSpy clicks(&bar, &CommandBar::ButtonClick);
    bar.Press(S("SQLRun"));
    QTest::mouseClick(Face("SQLRun"), Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 0);
    bar.SetEnabled(S("SQLRun"), true);
    bar.Press(S("SQLRun"));
    EXPECT_EQ(clicks.size(), 1);
    EXPECT_EQ(bar.ItemData(S("SQLSplit")).toInt(), 2);
}

TEST_F(CommandBarTest, MenuItemsSayBothKeys)
{
    QSignalSpy items(&bar, &CommandBar::MenuItemClick);
    QMenu *const menu = Face("SQLParser")->menu();
    ASSERT_NE(menu, nullptr);
    menu->actions().first()->trigger();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0][0].toString(), S("SQLParser"));
    EXPECT_EQ(items[0][1].toString(), S("P1"));
    EXPECT_EQ(NumberOf([&] { bar.AddMenuItem(S("SQLRun"), S("x"), S("x")); }), ctlErrElementNotFound);
}

TEST_F(CommandBarTest, KeysAreUniqueAndToolbarsGo)
{
    EXPECT_EQ(NumberOf([&] { bar.AddButton(S("SQL"), S("SQLRun"), S("x")); }), ctlErrKeyNotUnique);
    EXPECT_EQ(NumberOf([&] { bar.AddToolbar(S("SQL")); }), ctlErrKeyNotUnique);
    EXPECT_EQ(NumberOf([&] { bar.AddButton(S("DTB"), S("x"), S("x")); }), ctlErrElementNotFound);
    EXPECT_EQ(NumberOf([&] { bar.SetEnabled(S("none"), true); }), ctlErrElementNotFound);
    bar.SetToolbarVisible(S("SQL"), false);
    EXPECT_FALSE(bar.ToolbarVisible(S("SQL")));
    EXPECT_TRUE(bar.ButtonRect(S("SQLRun")).isEmpty());
    bar.RemoveToolbar(S("SQL"));
    EXPECT_FALSE(bar.HasButton(S("SQLRun")));
    bar.RemoveToolbar(S("SQL"));
    bar.AddToolbar(S("SQL"));
    bar.AddButton(S("SQL"), S("SQLRun"), S("Run"));
    EXPECT_TRUE(bar.HasButton(S("SQLRun")));
}

// The mouse that had chosen from the menu was gone, and the button stayed lit.
TEST(CommandBarLook, ADropDownButtonDoesNotStayLit)
{
    CommandBar bar;
    bar.AddToolbar(S("T"));
    bar.AddButton(S("T"), S("SQLTrans"), S("Run Transaction"), cbrDropDown);
    bar.AddMenuItem(S("SQLTrans"), S("BT"), S("Begin"));
    bar.resize(300, 40);
    QCursor::setPos(250, 200); // else the window comes up below a mouse that lights the button
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    auto *face = bar.findChild<QToolButton *>(S("SQLTrans"));
    ASSERT_TRUE(face);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !face->underMouse(); }));
    const auto look = [&] { // what has been painted on the screen, not what would be if it were painted now
        const QPoint at = face->mapTo(&bar, QPoint(0, 0));
        return bar.screen()->grabWindow(bar.winId(), at.x(), at.y(), face->width(), face->height()).toImage();
    };
    const QImage dark = look();
    ASSERT_EQ(dark.size(), face->size());
    QEnterEvent enter(QPointF(3, 3), face->mapTo(&bar, QPointF(3, 3)), face->mapToGlobal(QPointF(3, 3)));
    QCoreApplication::sendEvent(face, &enter);
    ASSERT_TRUE(face->underMouse());
    ASSERT_TRUE(QTest::qWaitFor([&] { return look() != dark; })) << "there is no light that could go";
    bool opened = false;
    QTimer::singleShot(0, face, [&] {
        QWidget *popup = QApplication::activePopupWidget();
        opened = popup != nullptr;
        if (popup)
            QTest::keyClick(popup, Qt::Key_Escape);
    });
    face->showMenu();
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened && !QApplication::activePopupWidget(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !face->underMouse(); }));
    EXPECT_FALSE(face->isDown());
    EXPECT_TRUE(QTest::qWaitFor([&] { return look() == dark; })) << "the light is still painted";
}

// A bright drawing looked alive where a dim one looked off.
TEST(CommandBarLook, ButtonsThatAreOffLookAlike)
{
    for (const QString &key : ToolIconKeys()) {
        const QImage off = ToolIcon(key).pixmap(QSize(20, 20), QIcon::Disabled).toImage();
        bool any = false;
        for (int y = 0; y < off.height(); ++y)
            for (int x = 0; x < off.width(); ++x) {
                const QColor pixel = off.pixelColor(x, y);
                if (pixel.alpha() < 250)
                    continue; // an edge
                any = true;
                ASSERT_EQ(pixel.rgb(), SkinColour(SkinRole::DisabledText).rgb()) << qPrintable(key);
            }
        EXPECT_TRUE(any) << qPrintable(key);
    }
}
