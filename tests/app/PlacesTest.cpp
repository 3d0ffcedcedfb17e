// Windows come up where and as large as the user left them.
#include "app/ChildPlaces.h"
#include "app/SideBarTable.h"
#include "app/WorkArea.h"
#include "app/frmHelp.h"
#include "controls/ExplorerBar.h"
#include "data/frmGetSelection.h"
#include "frame/RememberedSize.h"
#include "tests/app/ShellFixture.h"
#include <QApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStyle>
#include <QTimer>

namespace {

class Places : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Again();
    }
    // An end and a start.
    void Again()
    {
        if (Window)
            Window->close();
        Window.reset();
        gConns().Clear();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        SaveSetting(QStringLiteral("WindowState"), QStringLiteral("0"));
        Start(QStringLiteral("TestMode"), true);
        Window->resize(1000, 700);
        QCoreApplication::processEvents();
    }
    QMdiSubWindow *Frame(const char *form)
    {
        return qobject_cast<QMdiSubWindow *>(Child(QString::fromLatin1(form))->parentWidget());
    }
    // By its title, with the mouse.
    static void Drag(QMdiSubWindow *frame, const QPoint &way)
    {
        const QPoint grip(60, 10);
        QMouseEvent over(QEvent::MouseMove, grip, frame->mapToGlobal(grip), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(frame, &over);
        QTest::mousePress(frame, Qt::LeftButton, {}, grip);
        QMouseEvent move(QEvent::MouseMove, grip + way, frame->mapToGlobal(grip + way), Qt::NoButton, Qt::LeftButton,
                         {});
        QApplication::sendEvent(frame, &move);
        QTest::mouseRelease(frame, Qt::LeftButton, {}, frame->mapFromGlobal(frame->mapToGlobal(grip)));
    }
    // By its lower right corner.
    static void Stretch(QMdiSubWindow *frame, const QPoint &way)
    {
        const QPoint corner = frame->rect().bottomRight();
        QMouseEvent over(QEvent::MouseMove, corner, frame->mapToGlobal(corner), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(frame, &over);
        QTest::mousePress(frame, Qt::LeftButton, {}, corner);
        QMouseEvent move(QEvent::MouseMove, corner + way, frame->mapToGlobal(corner + way), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(frame, &move);
        QTest::mouseRelease(frame, Qt::LeftButton, {}, frame->rect().bottomRight());
    }
};

TEST_F(Places, AChildComesUpWhereTheLastOfItsKindWasPut)
{
    QMdiSubWindow *frame = Frame("frmTree");
    QCoreApplication::processEvents();
    const QRect first = frame->geometry();
    Drag(frame, QPoint(70, 40));
    Stretch(frame, QPoint(-120, -90));
    const QRect chosen = frame->geometry();
    ASSERT_EQ(chosen.x(), first.x() + 70);
    ASSERT_EQ(chosen.y(), first.y() + 40);
    ASSERT_EQ(chosen.width(), first.width() - 120);
    ASSERT_EQ(chosen.height(), first.height() - 90);
    frame->close();
    EXPECT_EQ(Frame("frmTree")->geometry(), chosen);
    EXPECT_EQ(Frame("frmTree")->geometry().topLeft(), chosen.topLeft() + QPoint(28, 28)); // beside the one before
    EXPECT_NE(Frame("frmGrid")->geometry(), chosen);                                      // another kind
    Again();
    EXPECT_EQ(Frame("frmTree")->geometry(), chosen);
}

TEST_F(Places, WhatACommandArrangedIsNotRemembered)
{
    QMdiSubWindow *frame = Frame("frmTree");
    const QRect first = frame->geometry();
    Window->Command("mnuTileVertically");
    ASSERT_NE(frame->geometry(), first);
    frame->close();
    EXPECT_EQ(Frame("frmTree")->geometry(), first);
}

TEST_F(Places, MaximisedChildrenComeUpMaximised)
{
    QMdiSubWindow *frame = Frame("frmTree");
    EXPECT_FALSE(frame->isMaximized());
    frame->showMaximized();
    Again();
    frame = Frame("frmTree");
    EXPECT_TRUE(frame->isMaximized());
    EXPECT_EQ(frame->widget()->size(), Window->Area->viewport()->size());
    QMdiSubWindow *second = Frame("frmGrid");
    EXPECT_TRUE(second->isMaximized());
    second->showNormal();
    Again();
    EXPECT_FALSE(Frame("frmTree")->isMaximized());
}

TEST_F(Places, AStoredPlaceIsFittedIntoASmallerRoom)
{
    WriteChildPlace(QStringLiteral("frmX"), QRect(900, 700, 600, 400));
    EXPECT_EQ(ReadChildPlace(QStringLiteral("frmX"), QSize(2000, 1500)), QRect(900, 700, 600, 400));
    EXPECT_EQ(ReadChildPlace(QStringLiteral("frmX"), QSize(1000, 800)), QRect(400, 400, 600, 400));
    EXPECT_EQ(ReadChildPlace(QStringLiteral("frmX"), QSize(500, 300)), QRect(0, 0, 500, 300));
    EXPECT_TRUE(ReadChildPlace(QStringLiteral("frmX"), QSize(0, 0)));
    EXPECT_FALSE(ReadChildPlace(QStringLiteral("frmY"), QSize(1000, 800)));
    for (const char *damaged :
         {"", "1,2,3", "a,b,c,d", "0,0,10,10", "0,0,1e300,9000", "0,0,nan,nan", "0,0,-9000,9000"}) {
        SaveSetting(QStringLiteral("Place_frmX"), QString::fromLatin1(damaged));
        EXPECT_FALSE(ReadChildPlace(QStringLiteral("frmX"), QSize(1000, 800))) << damaged;
    }
}

TEST_F(Places, ADialogComesUpInTheSizeItWasGiven)
{
    const auto show = [&](const QSize &wanted) {
        QSize size;
        frmGetSelection dialog(Window.get());
        QTimer::singleShot(0, &dialog, [&] {
            size = dialog.size();
            if (wanted.isValid())
                dialog.resize(wanted);
            dialog.reject();
        });
        dialog.ShowModal();
        return size;
    };
    const QSize designed = show({});
    EXPECT_EQ(GetSetting(QStringLiteral("Size_frmGetSelection")), QString()); // nobody changed it
    EXPECT_EQ(show(QSize(500, 380)), designed);
    EXPECT_EQ(show({}), QSize(500, 380));
    for (const char *damaged : {"x", "1,1", "1e9,1e9", "nan,9000"}) {
        SaveSetting(QStringLiteral("Size_frmGetSelection"), QString::fromLatin1(damaged));
        EXPECT_EQ(show({}), designed) << damaged;
    }
    SaveSetting(QStringLiteral("Size_frmGetSelection"), QStringLiteral("900000,900000"));
    const QSize screen = Window->screen()->availableSize();
    EXPECT_EQ(show({}), screen);
}

TEST_F(Places, TheHelpWindowTooAndOnlyWhenItIsNormal)
{
    frmHelp help;
    help.show();
    help.resize(600, 444);
    help.hide();
    EXPECT_EQ(GetSetting(QStringLiteral("Size_frmHelp")), QStringLiteral("9000,6660"));
    frmHelp other;
    other.show();
    EXPECT_EQ(other.size(), QSize(600, 444));
    other.showMaximized();
    other.hide();
    EXPECT_EQ(GetSetting(QStringLiteral("Size_frmHelp")), QStringLiteral("9000,6660"));
}

// At the start the desktop enlarges the main window while the first question is up already.
TEST_F(Places, ADialogInTheMiddleOfItsOwnerStaysThere)
{
    Window->setGeometry(10, 10, 600, 400);
    frmGetSelection dialog(Window.get());
    dialog.show();
    (void)QTest::qWaitForWindowExposed(&dialog);
    const QPoint away = dialog.geometry().center() - Window->geometry().center();
    Window->setGeometry(0, 0, 780, 780);
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.geometry().center() - Window->geometry().center(), away);
    dialog.move(200, 300); // by the user's hand
    Window->setGeometry(30, 30, 500, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.pos(), QPoint(200, 300));
}

// The first result window stood exactly on the first list.
TEST_F(Places, ListsAndResultsShareTheirPlacesAndTheirCount)
{
    QMdiSubWindow *list = Frame("frmGrid");
    QMdiSubWindow *result = Frame("frmHirarchy");
    EXPECT_NE(list->geometry().topLeft(), result->geometry().topLeft());
    EXPECT_FALSE(result->geometry().contains(list->geometry()));
    QMdiSubWindow *tree = Frame("frmTree");
    QMdiSubWindow *text = Frame("frmTextOutput");
    EXPECT_NE(tree->geometry().topLeft(), text->geometry().topLeft());
    EXPECT_EQ(Frame("frmSQL")->geometry().topLeft(), QPoint(0, 0)); // the first of its own kind
    // Where the user put the last one of a kind counts more.
    Drag(result, QPoint(-10, -30));
    const QRect chosen = result->geometry();
    result->close();
    EXPECT_EQ(Frame("frmHirarchy")->geometry(), chosen);
}

// With the program low on the screen, the manual's lower half was below it.
TEST_F(Places, HelpOpensOnTheScreenWhole)
{
    const QRect screen = Window->screen()->availableGeometry();
    for (const QPoint &corner : {screen.bottomRight() - QPoint(150, 120), screen.topLeft() - QPoint(800, 500)}) {
        Window->move(corner);
        QCoreApplication::processEvents();
        auto *help = new frmHelp(Window.get());
        help->ShowPage();
        QCoreApplication::processEvents();
        EXPECT_TRUE(screen.contains(help->frameGeometry())) << help->x() << "," << help->y() << " " << help->width();
        EXPECT_GE(help->y() - screen.top(), 0);
        EXPECT_GT(help->width(), 400);
        EXPECT_GT(help->height(), 300);
        delete help;
    }
    const QMargins frame(8, 36, 8, 8);
    const QRect desk(100, 50, 1000, 700);
    EXPECT_EQ(WholeOnScreen({400, 300}, {300, 200, 600, 400}, desk, frame), QRect(400, 250, 400, 300)); // its middle
    EXPECT_EQ(WholeOnScreen({400, 300}, {2000, 2000, 600, 400}, desk, frame), QRect(692, 442, 400, 300));
    EXPECT_EQ(WholeOnScreen({4000, 3000}, {300, 200, 600, 400}, desk, frame), QRect(108, 86, 984, 656));
}

// A connection that was lost went on showing its lit icon.
TEST_F(Places, TheIconOfALostConnectionTellsIt)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    ASSERT_EQ(Entry(QStringLiteral("a"))->Icon(), IconConnected);
    QTest::qWait(700);
    EXPECT_EQ(Entry(QStringLiteral("a"))->Icon(), IconConnected);
    gConn->Close(); // as a session does that finds its server gone
    EXPECT_TRUE(QTest::qWaitFor([&] { return Entry(QStringLiteral("a"))->Icon() == IconNotConnected; }));
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_EQ(Entry(QStringLiteral("a"))->Icon(), IconConnected);
}

} // namespace
