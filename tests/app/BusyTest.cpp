// While a statement runs: what waits for the connection says so in the status bar, and Stop cancels the statement.
#include "ado/UARecordset.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "session/Pump.h"
#include "tests/app/ShellFixture.h"
#include <QPushButton>
#include <QTimer>

namespace {

class Busy : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
        InstallWaitHandler();
        Window->ConnectTo(Entry(QStringLiteral("a")));
        ASSERT_TRUE(IsConnected(false));
    }
    void TearDown() override
    {
        ShellTest::TearDown();
        RemoveWaitHandler();
    }
    // Closes the window as soon as it is so; looked at from the event loop of whatever waits.
    void CloseOnce(std::function<bool()> ready)
    {
        QObject::connect(&m_look, &QTimer::timeout, Window.get(), [this, ready = std::move(ready)] {
            if (!ready())
                return;
            m_look.stop();
            Window->close();
        });
        m_look.start(5);
    }
    // The number of the error that the statement ends with; 0 when it comes to its own end.
    static int Failure(const QString &sql)
    {
        try {
            ExecutePumped(gConn, sql);
        } catch (const ADODB::Error &error) {
            return error.Number;
        }
        return 0;
    }
    QTimer m_look;
    const QString m_long = QStringLiteral(
        "with recursive c(i) as (select 1 union all select i+1 from c where i<2000000000) select max(i) from c");
};

TEST_F(Busy, AWaitingCallSaysWhatItWaitsForAndStopEndsTheWait)
{
    UARecordset running;
    int failed = 0;
    QObject::connect(&running, &UARecordset::ErrorOccured, &running, [&](int number) { failed = number; });
    running.OpenRecordset(m_long, gConn, 3);
    QString status;
    bool offered = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        if (!Window->SB->PanelText(1).startsWith(QStringLiteral("Waiting for: with recursive")))
            return;
        look.stop();
        status = Window->SB->PanelText(1);
        offered = Window->cmdStop->isVisible();
        QTest::mouseClick(Window->cmdStop, Qt::LeftButton);
    });
    look.start(20);
    EXPECT_NO_THROW(gConn->Execute(QStringLiteral("insert into t values (1)"))); // usable afterwards
    EXPECT_TRUE(offered);
    EXPECT_FALSE(status.isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return failed != 0; }));
    EXPECT_EQ(failed, ADODB::adErrOperationCancelled);
    EXPECT_FALSE(Window->cmdStop->isVisible());
    EXPECT_FALSE(Window->SB->PanelText(1).startsWith(QStringLiteral("Waiting")));
}

TEST_F(Busy, ALoadOfTheTreeSaysWhatItWaitsForAndGoesOnAfterEscape)
{
    UARecordset running;
    running.OpenRecordset(m_long, gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([] { return gConn->IsBusy(); }));
    bool said = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        said = Window->SB->PanelText(1).startsWith(QStringLiteral("Waiting for: with recursive"));
        if (!said)
            return;
        look.stop();
        QTest::keyClick(Window.get(), Qt::Key_Escape);
    });
    look.start(20);
    TreeView tree;
    LoadStructure(&tree, nullptr, QStringLiteral("TABLE"), 1, 1, 1);
    EXPECT_TRUE(said);
    EXPECT_GT(tree.Nodes().Count(), 0); // only the statement was cancelled
    EXPECT_TRUE(QTest::qWaitFor([&] { return !running.IsRunning(); }));
}

TEST_F(Busy, ClosingTheWindowCancelsWhatIsQueuedToo)
{
    UARecordset running;
    running.OpenRecordset(m_long, gConn, 3);
    CloseOnce([] { return LastStatus().startsWith(QStringLiteral("Waiting for: with recursive")); });
    EXPECT_EQ(Failure(m_long), ADODB::adErrOperationCancelled);
    EXPECT_TRUE(Window->HasEnded());
}

TEST_F(Busy, ClosingTheWindowCancelsWhatItsCallersWaitFor)
{
    CloseOnce([] { return gConn && gConn->IsBusy(); });
    EXPECT_EQ(Failure(m_long), ADODB::adErrOperationCancelled);
    EXPECT_TRUE(Window->HasEnded());
}

} // namespace
