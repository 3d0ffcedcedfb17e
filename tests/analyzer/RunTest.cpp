// Running statements: what is asked, what goes where, what the log says, and what errors do.
#include "AnalyzerFixture.h"
#include "controls/FlexGrid.h"
#include <QTimer>

namespace {

const QString twoSelects = QStringLiteral("select 1\r\n\r\nselect 2");

} // namespace

TEST_F(Analyzer, ASelectOpensTheReusedWindow)
{
    window->SetText(QStringLiteral("select name from customers"));
    EXPECT_TRUE(window->RunSQL());
    ASSERT_EQ(Results().size(), 1);
    frmHirarchy *result = Results().front();
    WaitForResults();
    EXPECT_EQ(result->Statement(), QStringLiteral("select name from customers"));
    EXPECT_EQ(result->CallerSQLForm(), static_cast<ResultOwner *>(window.data()));
    EXPECT_FALSE(result->KillOnError);
    EXPECT_TRUE(window->RunSQL());
    ASSERT_EQ(Results().size(), 1);
    EXPECT_EQ(Results().front(), result);
    WaitForResults();
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Analyzer, TheTitleOfTheResultNamesTheConnection)
{
    gConns().Add(QStringLiteral("x"), QStringLiteral("Shop"), QString());
    window = Make(QStringLiteral("Shop"));
    window->SetText(QStringLiteral("select 1"));
    window->RunSQL();
    WaitForResults();
    EXPECT_EQ(Results().front()->Caption(), QStringLiteral("SQL Result: Shop"));
}

TEST_F(Analyzer, TwoSelectsOpenTwoWindowsWhenBothAreRun)
{
    window->SetText(twoSelects);
    window->mnuSelectAll();
    window->RunSQL();
    EXPECT_EQ(Results().size(), 2);
    WaitForResults();
    window->txtSQL->SetSelStart(10); // on the blank line: the whole text
    window->RunSQL();
    EXPECT_EQ(Results().size(), 4);
    WaitForResults();
}

TEST_F(Analyzer, OnlyTheStatementAtTheCaretRuns)
{
    window->SetText(twoSelects);
    window->txtSQL->SetSelStart(14);
    window->RunSQL();
    ASSERT_EQ(Results().size(), 1);
    WaitForResults();
    EXPECT_EQ(Results().front()->Statement(), QStringLiteral("select 2"));
}

TEST_F(Analyzer, OnlyTheSelectionRuns)
{
    window->SetText(QStringLiteral("select 1 from nowhere"));
    window->txtSQL->SetSelStart(0);
    window->txtSQL->SetSelLength(8);
    window->RunSQL();
    WaitForResults();
    EXPECT_EQ(Results().front()->Statement(), QStringLiteral("select 1"));
}

TEST_F(Analyzer, SeveralOutputsOpenAWindowForEachRun)
{
    bar.SetChecked(QStringLiteral("SQLMulti"), true);
    window->ToolBar(QStringLiteral("SQLMulti"));
    window->SetText(QStringLiteral("select 1"));
    window->RunSQL();
    window->RunSQL();
    EXPECT_EQ(Results().size(), 2);
    for (frmHirarchy *result : Results())
        EXPECT_TRUE(result->isMinimized());
    WaitForResults();
}

TEST_F(Analyzer, TheSplitSharesTheWorkArea)
{
    bar.SetChecked(QStringLiteral("SQLSplit"), true);
    window->Activated(); // reads the check
    window->SetText(QStringLiteral("select 1"));
    window->RunSQL();
    EXPECT_EQ(window->geometry(), QRect(0, 0, 780, 280));
    // Here it is a window of its own, and once its first events have come the platform puts it behind its frame.
    const QRect below = Results().front()->geometry();
    const int frame = below.left() - Results().front()->frameGeometry().left();
    EXPECT_TRUE(below.left() == 0 || below.left() == frame) << below.left();
    EXPECT_EQ(QRect(QPoint(0, below.top()), below.size()), QRect(0, 280, 780, 280));
    WaitForResults();
}

TEST_F(Analyzer, AnAlteringStatementIsAskedForAndCounted)
{
    window->SetText(QStringLiteral("update customers set name = 'x'"));
    EXPECT_TRUE(window->RunSQL());
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.Boxes[0].Text, QStringLiteral("This SQL statement(s) may alter the data or structure of the "
                                                    "database. Are you sure you want to continue?"));
    EXPECT_EQ(dialogs.Boxes[0].Title, QStringLiteral("SQL"));
    EXPECT_EQ(dialogs.Boxes[0].Icon, int(mbExclamation));
    EXPECT_EQ(dialogs.Boxes[0].Buttons, int(mbYesNo));
    EXPECT_EQ(Log(), QStringList{QStringLiteral("update customers set name... 2 records have been affected")});
    EXPECT_EQ(side.Bar(QStringLiteral("LOG"))->Title(), QStringLiteral("Log"));
    EXPECT_TRUE(Results().isEmpty());
}

TEST_F(Analyzer, NoLeavesTheDatabaseAlone)
{
    dialogs.Answers << mbNo;
    window->SetText(QStringLiteral("delete from customers"));
    EXPECT_TRUE(window->RunSQL());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from customers")), 2);
    EXPECT_FALSE(side.FindBar(QStringLiteral("LOG")));
}

TEST_F(Analyzer, OneRecordHasNoPluralAndTwentyFiveCharactersNoDots)
{
    window->SetText(QStringLiteral("delete from orders where 1")); // 26
    window->RunSQL();
    EXPECT_EQ(Log().last(), QStringLiteral("delete from orders where ... 0 records have been affected"));
    window->SetText(QStringLiteral("insert into orders(id)\r\nvalues(7)"));
    window->RunSQL();
    EXPECT_TRUE(Log().last().endsWith(QStringLiteral(" 1 record have been affected"))) << qPrintable(Log().last());
    EXPECT_EQ(Log().size(), 1); // each run begins a new log
}

TEST_F(Analyzer, AWordThatAltersRunsWithoutAResultWindow)
{
    window->SetText(QStringLiteral("select Update from t"));
    window->RunSQL();
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_TRUE(Results().isEmpty());
    EXPECT_EQ(Log(), QStringList{QStringLiteral("select Update from t 0 records have been affected")});
    dialogs.Boxes.clear();
    window->SetText(QStringLiteral("select 1 as Updated"));
    window->RunSQL();
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(Results().size(), 1);
    WaitForResults();
}

TEST_F(Analyzer, AFailedStatementLogsTheCountBeforeItAndTheRunGoesOn)
{
    window->SetText(QStringLiteral("update customers set name = 'a'\r\n\r\ndelete from nowhere\r\n\r\n"
                                   "insert into orders(id) values (1)"));
    window->mnuSelectAll();
    EXPECT_FALSE(window->RunSQL());
    EXPECT_EQ(dialogs.Boxes.size(), 1); // the question, and no message
    EXPECT_EQ(Log(), (QStringList{QStringLiteral("update customers set name... 2 records have been affected"),
                                  QStringLiteral("delete from nowhere 2 records have been affected"),
                                  QStringLiteral("insert into orders(id) va... 1 record have been affected")}));
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 1);
}

TEST_F(Analyzer, BlanksRunNothing)
{
    window->SetText(QStringLiteral("   "));
    EXPECT_TRUE(window->RunSQL());
    window->SetText(QString());
    EXPECT_TRUE(window->RunSQL());
    window->SetText(QStringLiteral(" \r\n\r\n  \r\n"));
    EXPECT_TRUE(window->RunSQL());
    EXPECT_TRUE(Results().isEmpty());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Analyzer, ALockedRunButtonStopsTheRun)
{
    bar.SetEnabled(QStringLiteral("SQLRun"), false);
    window->SetText(QStringLiteral("delete from customers"));
    EXPECT_TRUE(window->RunSQL());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from customers")), 2);
}

TEST_F(Analyzer, WithoutAConnectionItSaysSo)
{
    gConn.reset();
    window->SetText(QStringLiteral("select 1"));
    EXPECT_TRUE(window->RunSQL());
    EXPECT_EQ(dialogs.LastText(), QStringLiteral("No current database connection is active."));
    EXPECT_TRUE(window->RunSQL_Trans());
    EXPECT_EQ(dialogs.Boxes.size(), 2);
}

TEST_F(Analyzer, GoGoesToTheServer)
{
    window->SetText(QStringLiteral("select 1\r\nGO"));
    window->RunSQL();
    WaitForResults();
    EXPECT_EQ(Results().front()->Statement(), QStringLiteral("select 1 GO"));
}

TEST_F(Analyzer, ATransactionRunsTheWholeText)
{
    window->SetText(QStringLiteral("insert into orders(id) values (1)\r\n\r\nselect * from orders\r\n\r\n"
                                   "insert into orders(id) values (2)"));
    window->txtSQL->SetSelLength(6);
    EXPECT_TRUE(window->RunSQL_Trans());
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 2);
    EXPECT_EQ(Results().size(), 1);
    EXPECT_EQ(Log().size(), 2);
    WaitForResults();
}

TEST_F(Analyzer, ATransactionThatFailsIsRolledBack)
{
    window->SetText(QStringLiteral("insert into orders(id) values (1)\r\n\r\ninsert into nowhere values (2)"));
    EXPECT_FALSE(window->RunSQL_Trans());
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(dialogs.LastTitle(), QStringLiteral("Error"));
    EXPECT_EQ(dialogs.Boxes[1].Icon, int(mbExclamation));
    EXPECT_TRUE(dialogs.LastText().endsWith(QStringLiteral("\r\nWill now atempt to rollback.")));
    EXPECT_TRUE(dialogs.LastText().contains(QStringLiteral("nowhere")));
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 0);
    EXPECT_FALSE(gConn->InTransaction());
}

TEST_F(Analyzer, TheItemsOfTheTransactionButton)
{
    window->ToolBar(QStringLiteral("BT"));
    EXPECT_TRUE(gConn->InTransaction());
    gConn->Execute(QStringLiteral("insert into orders(id) values (1)"));
    window->ToolBar(QStringLiteral("RT"));
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 0);
    window->ToolBar(QStringLiteral("RT"));
    EXPECT_TRUE(shell.Status().startsWith(QStringLiteral("Error: ")));
    window->ToolBar(QStringLiteral("BT"));
    window->SetText(QStringLiteral("insert into orders(id) values (3)"));
    window->ToolBar(QStringLiteral("CT"));
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 1);
    EXPECT_EQ(window->txtSQL->SelText(), QStringLiteral("insert into orders(id) values (3)"));
}

TEST_F(Analyzer, ACommitRunStopsAtTheFirstErrorAndKeepsTheTransaction)
{
    window->ToolBar(QStringLiteral("BT"));
    window->SetText(QStringLiteral("insert into orders(id) values (1)\r\n\r\ninsert into nowhere values (2)\r\n\r\n"
                                   "insert into orders(id) values (3)"));
    window->ToolBar(QStringLiteral("CT"));
    EXPECT_TRUE(gConn->InTransaction());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 1);
    EXPECT_TRUE(dialogs.LastText().endsWith(QStringLiteral("Will now atempt to rollback.")));
    const auto boxes = dialogs.Boxes.size();
    window->SetText(QStringLiteral("insert into nowhere values (2)")); // the next run is an ordinary one again
    EXPECT_FALSE(window->RunSQL());
    EXPECT_EQ(dialogs.Boxes.size(), boxes + 1);
    window->ToolBar(QStringLiteral("RT"));
}

TEST_F(Analyzer, ALongStatementLeavesTheProgramAliveAndCanBeStopped)
{
    window->SetText(
        QStringLiteral("insert into orders(id) with recursive c(i) as (select 1 union all select i + 1 from c "
                       "where i < 1000000000) select i from c where i % 1000000007 = 0"));
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (++ticks == 20 && shell.Stop)
            shell.Stop();
    });
    clock.start(10);
    EXPECT_FALSE(window->RunSQL());
    EXPECT_GE(ticks, 20);
    EXPECT_EQ(Log().size(), 1);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 0); // the connection is usable
}

TEST_F(Analyzer, EscapeStopsTheStatementOfItsResultWindow)
{
    window->SetText(QStringLiteral("select 1"));
    EXPECT_TRUE(window->RunSQL()); // the result window is there from now on, and the focus stays here at the next run
    WaitForResults();
    window->SetText(QStringLiteral("with recursive c(i) as (select 1 union all select i + 1 from c "
                                   "where i < 1000000000) select count(*) from c"));
    EXPECT_TRUE(window->RunSQL());
    ASSERT_EQ(Results().size(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gConn->IsBusy(); }));
    EXPECT_TRUE(Results()[0]->IsRunning());
    Press(Qt::Key_Escape);
    WaitForResults();
    const FlexGrid *log = Results()[0]->mfgMessge;
    EXPECT_TRUE(log->TextMatrix(log->Rows() - 1, 3).startsWith(QStringLiteral("Error: ")));
    EXPECT_EQ(Count(QStringLiteral("select 5")), 5);
}

TEST_F(Analyzer, ARunInsideARunDoesNothing)
{
    window->SetText(
        QStringLiteral("insert into orders(id) with recursive c(i) as (select 1 union all select i + 1 from c "
                       "where i < 300000) select i from c where i % 300000 = 0"));
    WhenBusy([&] { EXPECT_TRUE(window->RunSQL()); });
    EXPECT_TRUE(window->RunSQL());
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Count(QStringLiteral("select count(*) from orders")), 1);
}

TEST_F(Analyzer, AWindowMayBeClosedWhileItRuns)
{
    window->SetText(
        QStringLiteral("insert into orders(id) with recursive c(i) as (select 1 union all select i + 1 from c "
                       "where i < 300000) select i from c where i % 300000 = 0"));
    WhenBusy([&] {
        window->CloseChild();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    window->RunSQL();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_F(Analyzer, TheOwnerOfAResultComesForward)
{
    QWidget other;
    other.show();
    other.setFocus();
    window->ActivateOwner();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->focusWidget(), window->txtSQL);
    EXPECT_EQ(window->OwnerWidget(), window.data());
}
