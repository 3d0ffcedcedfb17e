#include "session/Pump.h"
#include "ado/UARecordset.h"
#include "session/PumpUntil.h"
#include "session/Work.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include <QCloseEvent>
#include <QDialog>
#include <QLineEdit>

namespace {

class PumpTest : public DataTest
{
protected:
    void SetUp() override
    {
        m_driver.OnExecute = [this](const QString &sql) {
            if (sql == "slow")
                m_driver.RunUntilCancelled(10);
            if (sql == "short")
                m_driver.RunUntilCancelled(0.3);
            if (sql == "bad")
                throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("server says no"));
            ADODB::ExecuteResult result;
            result.RecordsAffected = 7;
            return result;
        };
        ASSERT_TRUE(OpenConnection("Scripted"));
        m_shell.Statuses.clear();
        m_box.show();
        m_box.setFocus();
    }
    ScriptedDriver m_driver;
    QLineEdit m_box;
};

TEST_F(PumpTest, AQuickStatementPassesNoEvents)
{
    bool ran = false;
    QTimer::singleShot(0, &m_box, [&] { ran = true; });
    qint64 affected = 0;
    const int former = SetQuickWait(20000);
    ExecutePumped(gConn, "quick", &affected);
    SetQuickWait(former);
    EXPECT_EQ(affected, 7);
    EXPECT_FALSE(ran);
    EXPECT_TRUE(m_shell.Statuses.isEmpty());
    EXPECT_EQ(m_shell.StopsOffered, 0);
}

TEST_F(PumpTest, WindowsAnswerWhileAStatementRuns)
{
    QTimer::singleShot(60, &m_box, [&] { QTest::keyClicks(&m_box, "typed"); });
    SetStatus("Running");
    ExecutePumped(gConn, "short");
    EXPECT_EQ(m_box.text(), "typed");
    EXPECT_TRUE(m_shell.Statuses.contains("Waiting for: short ... (Esc cancels)"));
    EXPECT_EQ(m_shell.Status(), "Running"); // as before
    EXPECT_EQ(m_shell.StopsOffered, 1);
    EXPECT_FALSE(m_shell.Stop); // taken away again
}

TEST_F(PumpTest, EscapeCancelsOnTheServerAndTheConnectionGoesOn)
{
    QTimer::singleShot(60, &m_box, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    QElapsedTimer since;
    since.start();
    qint64 affected = 5;
    EXPECT_THROW(ExecutePumped(gConn, "slow", &affected), ADODB::Error);
    EXPECT_LT(since.elapsed(), 2000);
    EXPECT_EQ(m_driver.Cancels, 1);
    EXPECT_EQ(affected, 5); // not touched
    ExecutePumped(gConn, "quick", &affected);
    EXPECT_EQ(affected, 7);
}

TEST_F(PumpTest, TheStopControlCancelsToo)
{
    QTimer::singleShot(60, &m_box, [&] {
        ASSERT_TRUE(m_shell.Stop);
        m_shell.Stop();
    });
    EXPECT_THROW(ExecutePumped(gConn, "slow"), ADODB::Error);
    EXPECT_EQ(m_driver.Cancels, 1);
}

TEST_F(PumpTest, TheServersErrorComesThrough)
{
    try {
        ExecutePumped(gConn, "bad");
        ADD_FAILURE() << "nothing was raised";
    } catch (const ADODB::Error &error) {
        EXPECT_EQ(error.Description, "server says no");
    }
    EXPECT_THROW(ExecutePumped(nullptr, "x"), ADODB::Error);
}

TEST_F(PumpTest, TheLastReferenceMayGoWhileItRuns)
{
    QTimer::singleShot(60, &m_box, [] { gConn.reset(); });
    qint64 affected = 0;
    ExecutePumped(gConn, "short", &affected);
    EXPECT_EQ(affected, 7);
}

TEST_F(PumpTest, InputIsHeldBackWhereToldSo)
{
    QTimer::singleShot(40, &m_box, [&] {
        QTest::keyClicks(&m_box, "lost");
        QTest::mouseClick(&m_box, Qt::LeftButton);
    });
    int cancels = 0;
    QTimer::singleShot(80, &m_box, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    RunPumped(
        {}, [] { std::this_thread::sleep_for(std::chrono::milliseconds(200)); }, [&] { ++cancels; },
        PumpInput::EscapeOnly);
    EXPECT_EQ(m_box.text(), "");
    EXPECT_EQ(cancels, 1);
    QTest::keyClicks(&m_box, "x");
    EXPECT_EQ(m_box.text(), "x"); // and let through again
}

TEST_F(PumpTest, ADialogThatOpensMeanwhileTakesItsInput)
{
    QTimer::singleShot(40, &m_box, [&] {
        QDialog dialog;
        QLineEdit line(&dialog);
        QTimer::singleShot(30, &dialog, [&] {
            QTest::keyClicks(&line, "yes");
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        dialog.exec();
        EXPECT_EQ(line.text(), "yes");
    });
    int cancels = 0;
    RunPumped(
        {}, [] { std::this_thread::sleep_for(std::chrono::milliseconds(250)); }, [&] { ++cancels; },
        PumpInput::EscapeOnly);
    EXPECT_EQ(cancels, 0); // Escape was the dialog's
}

// Giving up the wait stopped the other's statement.
TEST_F(PumpTest, ACallOnABusyConnectionWaitsAliveAndCanBeGivenUpAlone)
{
    InstallWaitHandler();
    Gate gate;
    m_driver.OnExecute = [&](const QString &sql) {
        if (sql == "slow")
            gate.Pass();
        return ADODB::ExecuteResult{};
    };
    UARecordset running;
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return gate.Arrived(); }));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &m_box, [&] {
        if (m_shell.Status() == "Waiting for: slow ... (Esc gives up waiting)")
            QTest::keyClick(&m_box, Qt::Key_Escape);
    });
    look.start(10);
    EXPECT_THROW(gConn->Execute("quick"), ADODB::Error);
    look.stop();
    EXPECT_EQ(m_driver.Cancels, 0);
    EXPECT_TRUE(running.IsRunning());
    gate.Open();
    gConn->Execute("quick");
    EXPECT_EQ(m_driver.Log(), (QStringList{"slow", "quick"}));
    RemoveWaitHandler();
}

// What stood in the status bar was the own work, and Escape stopped another's statement.
TEST_F(PumpTest, WorkBehindAnothersStatementSaysSoAndEscapeGivesItUpAlone)
{
    Gate gate;
    m_driver.OnExecute = [&](const QString &sql) {
        if (sql == "slow")
            gate.Pass();
        return ADODB::ExecuteResult{};
    };
    UARecordset running;
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return gate.Arrived(); }));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &m_box, [&] {
        if (m_shell.Status() == "Waiting for: slow ... (Esc gives up waiting)")
            QTest::keyClick(&m_box, Qt::Key_Escape);
    });
    look.start(10);
    int stopped = 0;
    const auto connection = gConn;
    EXPECT_THROW(
        RunPumpedOn(
            connection, "Own work", [&] { connection->Execute("never"); }, [&] { ++stopped; }, PumpInput::EscapeOnly),
        ADODB::Error);
    look.stop();
    EXPECT_EQ(stopped, 1);
    EXPECT_EQ(m_driver.Cancels, 0);
    EXPECT_FALSE(m_shell.Statuses.contains("Own work"));
    gate.Open();
    EXPECT_TRUE(Until([&] { return !running.IsRunning(); }));
    EXPECT_EQ(m_driver.Log(), QStringList{"slow"});
}

// A commit with a deferred trigger kept the windows dead.
TEST_F(PumpTest, ASynchronousCommitLeavesTheWindowsAlive)
{
    InstallWaitHandler();
    Gate gate;
    m_driver.OnTransaction = [&](const QString &words) {
        if (words == "COMMIT")
            gate.Pass();
    };
    gConn->BeginTrans();
    bool alive = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &m_box, [&] {
        if (!gate.Arrived())
            return;
        alive = true; // the event loop runs in the middle of the commit
        gate.Open();
    });
    look.start(5);
    gConn->CommitTrans();
    EXPECT_TRUE(alive);
    RemoveWaitHandler();
}

// A work that waited below another one on the stack could not go on, and the other waited for it.
TEST_F(PumpTest, AWorkGoesOnWhileItsCallerStandsBelowAnother)
{
    Gate gate;
    m_driver.OnExecute = [&](const QString &sql) {
        if (sql == "first")
            gate.Pass();
        return ADODB::ExecuteResult{};
    };
    const auto connection = gConn;
    bool inner = false;
    QTimer::singleShot(0, &m_box, [&] {
        ASSERT_TRUE(Until([&] { return gate.Arrived(); }));
        QTimer::singleShot(30, &m_box, [&] { gate.Open(); });
        ExecutePumped(connection, "inner"); // waits for both of the outer one's
        inner = true;
    });
    const auto work = Work::On(connection, "outer", ADODB::Claim::Whole);
    work->Run({}, [&] {
        connection->Execute("first");
        connection->Execute("second");
    });
    EXPECT_TRUE(inner);
    EXPECT_EQ(m_driver.Log(), (QStringList{"first", "second", "inner"}));
}

TEST_F(PumpTest, CallsOfAWorkReachTheInterfaceThreadInOrder)
{
    QStringList seen;
    const auto work = Work::On(gConn, "work");
    const auto here = std::this_thread::get_id();
    work->Run({}, [&] {
        work->Post([&] { seen << (std::this_thread::get_id() == here ? "posted" : "elsewhere"); });
        work->OnWindow([&] { seen << "called"; });
        EXPECT_THROW(work->OnWindow([] { throw ADODB::Error(7, "raised there"); }), ADODB::Error);
        work->Post([&] { seen << "last"; });
    });
    EXPECT_EQ(seen, (QStringList{"posted", "called", "last"}));
}

// The close box was swallowed while the program connected or loaded a structure.
TEST_F(PumpTest, ACloseBoxThatIsHeldBackGivesUpAndClosesAfterwards)
{
    QPointer<QWidget> window = new QWidget;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    Gate gate;
    int cancels = 0;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &m_box, [&] {
        if (!gate.Arrived())
            return;
        look.stop();
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close); // as the desktop's
        qApp->notify(window, &close);
        EXPECT_TRUE(window && window->isVisible());
    });
    look.start(5);
    RunPumped(
        {}, [&] { gate.Pass(); },
        [&] {
            ++cancels;
            gate.Open();
        },
        PumpInput::EscapeOnly);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(Until([&] { return !window; }));
}

TEST_F(PumpTest, TheProgramsEndCancelsWhatRunsAndWhatIsQueuedBehindIt)
{
    UARecordset running;
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return m_driver.Log().contains("slow"); }));
    QTimer::singleShot(60, &m_box, [] { EndPumps(true); });
    QElapsedTimer since;
    since.start();
    EXPECT_THROW(ExecutePumped(gConn, "slow"), ADODB::Error);
    EndPumps(false);
    EXPECT_LT(since.elapsed(), 5000);
    EXPECT_EQ(m_driver.Log(), QStringList{"slow"}); // what waited never reached the server
    EXPECT_TRUE(Until([] { return !ADODB::Connection::AnyWork(); }));
    EndPumps(true);
    EXPECT_THROW(ExecutePumped(gConn, "quick"), ADODB::Error); // nothing begins any more
    EndPumps(false);
}

TEST_F(PumpTest, ABreatherStopsALoop)
{
    QTimer::singleShot(50, &m_box, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    Breather breather;
    QElapsedTimer since;
    since.start();
    while (breather.Breathe() && since.elapsed() < 5000)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_TRUE(breather.Cancelled());
    EXPECT_LT(since.elapsed(), 5000);
}

TEST_F(PumpTest, ABreatherLeavesTheStatusAsItWas)
{
    SetStatus("Done.");
    {
        Breather breather("Sorting ...");
        EXPECT_EQ(m_shell.Status(), "Sorting ...");
    }
    EXPECT_EQ(m_shell.Status(), "Done.");
    {
        Breather breather("Sorting ...");
        SetStatus("Something else"); // what was said meanwhile stands
    }
    EXPECT_EQ(m_shell.Status(), "Something else");
}

} // namespace
