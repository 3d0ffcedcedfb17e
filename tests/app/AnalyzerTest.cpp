// The real Analyzer in the real main window.
#include "analyzer/frmSQL.h"
#include "app/Menus.h"
#include "app/Session.h"
#include "app/WorkArea.h"
#include "app/frmHelp.h"
#include "controls/CommandBar.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "data/ConnectionStore.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

class AnalyzerInTheShell : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        MadeInstead().clear(); // the real Analyzer
        gConns().Add(Database(QStringLiteral("a.sqlite")), QStringLiteral("a"),
                     QStringLiteral("select 41 + 1 as answer"));
        gConns().Add(Database(QStringLiteral("b.sqlite")), QStringLiteral("b"), QStringLiteral("select 2"));
        Start(QStringLiteral("TestMode"), true);
        Window->ConnectTo(Entry(QStringLiteral("a")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
        Window->activateWindow();
        SQL->txtSQL->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == SQL->txtSQL; }));
    }
    frmHirarchy *Result()
    {
        for (ChildWindow *child : Window->Children())
            if (auto *result = qobject_cast<frmHirarchy *>(child))
                return result;
        return nullptr;
    }
    QPointer<frmSQL> SQL;
};

TEST_F(AnalyzerInTheShell, ItComesWithTheConnectionsTextAndItsCaption)
{
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 41 + 1 as answer"));
    EXPECT_EQ(SQL->Caption(), QStringLiteral("SQL Analyzer: [a]"));
    EXPECT_TRUE(Window->cb->Enabled(QStringLiteral("SQLRun")));
}

TEST_F(AnalyzerInTheShell, F5RunsAndTheRowsStandBesideTheText)
{
    QTest::keyClick(SQL->txtSQL, Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Result() && ResultRows(Result()) == 1; }));
    EXPECT_FALSE(Result()->parentWidget()->geometry().intersects(SQL->parentWidget()->geometry()));
    EXPECT_EQ(Window->ActiveChild(), SQL); // the focus comes back
}

TEST_F(AnalyzerInTheShell, TheMenuRunsToo)
{
    Window->menus->Follow("mnuQuery");
    QAction *run = Window->menus->Item(QStringLiteral("mnuRun"));
    EXPECT_TRUE(run->isEnabled());
    run->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Result() && ResultRows(Result()) == 1; }));
}

TEST_F(AnalyzerInTheShell, AnotherConnectionTakesTheWindowWithIt)
{
    SQL->SetText(QStringLiteral("select 3"));
    Window->ConnectTo(Entry(QStringLiteral("b")), QStringLiteral("dropped"));
    EXPECT_EQ(gConns().Item(QStringLiteral("a"))->Extra, QStringLiteral("select 3"));
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 2"));
    EXPECT_EQ(SQL->Caption(), QStringLiteral("SQL Analyzer: [b]"));
}

TEST_F(AnalyzerInTheShell, ItsTextIsInTheStoreAfterTheEnd)
{
    SQL->SetText(QStringLiteral("select 'kept'\r\nfrom t"));
    Window->close();
    clsConns conns;
    ASSERT_TRUE(LoadConnections(AppFile(QStringLiteral("es.dat")), conns));
    EXPECT_EQ(conns.Item(QStringLiteral("a"))->Extra, QStringLiteral("select 'kept'\r\nfrom t"));
}

TEST_F(AnalyzerInTheShell, F1IsTheQuickListsAndTheManualStaysShut)
{
    QTest::keyClick(SQL->txtSQL, Qt::Key_F1);
    EXPECT_FALSE(Window->findChild<frmHelp *>());
    EXPECT_TRUE(SQL->lvQuickList->isVisible());
    QTest::keyClick(SQL->lvQuickList, Qt::Key_Escape);
    SQL->txtSQL->setFocus();
    Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger(); // goes to the editor as well
    EXPECT_FALSE(Window->findChild<frmHelp *>());
    EXPECT_TRUE(SQL->lvQuickList->isVisible());
}

// A click on a connection gave it that connection's name and text.
TEST_F(AnalyzerInTheShell, AScratchWindowKeepsItsTextThroughAConnect)
{
    Window->Command("mnuSQL");
    QPointer<frmSQL> scratch = qobject_cast<frmSQL *>(Window->ActiveChild());
    ASSERT_TRUE(scratch && scratch != SQL);
    scratch->SetText(QStringLiteral("select 9"));
    EXPECT_EQ(scratch->Caption(), QStringLiteral("SQL Analyzer: [a]"));
    Window->ConnectTo(Entry(QStringLiteral("b")));
    ASSERT_TRUE(scratch);
    EXPECT_EQ(scratch->Text(), QStringLiteral("select 9"));
    EXPECT_EQ(scratch->ConnName(), QString());
    EXPECT_EQ(scratch->Caption(), QStringLiteral("SQL Analyzer: [b]")); // what it runs on, not whose text it holds
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 2"));
    scratch->CloseChild();
    EXPECT_EQ(gConns().Item(QStringLiteral("b"))->Extra, QStringLiteral("select 2"));
}

// It stayed behind what had been opened since, and the rows came unseen.
TEST_F(AnalyzerInTheShell, TheReusedResultComesToTheFront)
{
    const auto run = [this] {
        QTest::keyClick(SQL->txtSQL, Qt::Key_F5);
        return QTest::qWaitFor([&] { return Result() && ResultRows(Result()) == 1; });
    };
    ASSERT_TRUE(run());
    Window->Command("mnuSQL");
    auto *other = Window->ActiveChild();
    ASSERT_NE(other, SQL);
    other->parentWidget()->setGeometry(Result()->parentWidget()->geometry());
    other->parentWidget()->raise();
    SQL->ShowChild();
    SQL->txtSQL->setFocus();
    const auto above = [&](QWidget *one, QWidget *two) {
        const QList<QMdiSubWindow *> order = Window->Area->subWindowList(QMdiArea::StackingOrder);
        return order.indexOf(qobject_cast<QMdiSubWindow *>(one->parentWidget())) >
               order.indexOf(qobject_cast<QMdiSubWindow *>(two->parentWidget()));
    };
    ASSERT_TRUE(above(other, Result()));
    ASSERT_TRUE(run());
    EXPECT_TRUE(above(Result(), other));
    EXPECT_EQ(Window->ActiveChild(), SQL);
}

// With a text that fills the work area the new windows stood behind it.
TEST_F(AnalyzerInTheShell, ANewResultOfSeveralCanBeSeen)
{
    Window->cb->SetChecked(QStringLiteral("SQLMulti"), true);
    SQL->ToolBar(QStringLiteral("SQLMulti"));
    SQL->parentWidget()->showMaximized();
    QTest::keyClick(SQL->txtSQL, Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Result() && ResultRows(Result()) == 1; }));
    QWidget *frame = Result()->parentWidget();
    EXPECT_TRUE(frame->isMinimized());
    EXPECT_FALSE(frame->visibleRegion().isEmpty());
}

TEST_F(AnalyzerInTheShell, AScratchWindowKeepsNoText)
{
    Window->Command("mnuSQL");
    auto *scratch = qobject_cast<frmSQL *>(Window->ActiveChild());
    ASSERT_TRUE(scratch && scratch != SQL);
    EXPECT_EQ(scratch->Text(), QString());
    scratch->SetText(QStringLiteral("select 9"));
    scratch->CloseChild();
    EXPECT_EQ(gConns().Item(QStringLiteral("a"))->Extra, QStringLiteral("select 41 + 1 as answer"));
    EXPECT_EQ(Window->ActiveChild(), SQL);
}

} // namespace
