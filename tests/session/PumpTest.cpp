#include "session/Pump.h"
#include "ado/UARecordset.h"
#include "session/PumpUntil.h"
#include "session/Work.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include <QCloseEvent>
#include <QDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>

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
                m_gate.Pass();
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
    // Does something on this thread's event loop, once, as soon as that is so.
    void When(const std::function<bool()> &ready, const std::function<void()> &act)
    {
        auto *look = new QTimer(&m_box);
        QObject::connect(look, &QTimer::timeout, &m_box, [look, ready, act] {
            if (!ready())
                return;
            delete look;
            act();
        });
        look->start(1);
    }
    bool Runs(const QString &sql) const { return m_driver.Log().contains(sql); }
    // While another's statement runs and does not end: makes the call, and presses Escape once the status says that it
    // waits. That must end the call alone.
    void BehindAnother(const std::function<void()> &call)
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
        When([this] { return m_shell.Status() == behind; }, [this] { QTest::keyClick(&m_box, Qt::Key_Escape); });
        EXPECT_THROW(call(), ADODB::Error);
        EXPECT_EQ(m_driver.Cancels, 0);
        EXPECT_TRUE(running.IsRunning());
        gate.Open();
        EXPECT_TRUE(Until([&] { return !running.IsRunning(); }));
        EXPECT_EQ(m_driver.Log(), QStringList{"slow"});
    }
    const QString behind = QStringLiteral("Waiting for: slow ... (Esc gives up waiting)");
    ScriptedDriver m_driver;
    Gate m_gate;
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
    const QString waiting = QStringLiteral("Waiting for: short ... (Esc cancels)");
    When([&] { return m_gate.Arrived() && m_shell.Status() == waiting; },
         [&] {
             QTest::keyClicks(&m_box, "typed");
             m_gate.Open();
         });
    SetStatus("Running");
    ExecutePumped(gConn, "short");
    EXPECT_EQ(m_box.text(), "typed");
    EXPECT_EQ(m_shell.Status(), "Running"); // as before
    EXPECT_EQ(m_shell.StopsOffered, 1);
    EXPECT_FALSE(m_shell.Stop); // taken away again
}

TEST_F(PumpTest, EscapeCancelsOnTheServerAndTheConnectionGoesOn)
{
    When([&] { return Runs("slow"); }, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    qint64 affected = 5;
    EXPECT_THROW(ExecutePumped(gConn, "slow", &affected), ADODB::Error);
    EXPECT_EQ(m_driver.Cancels, 1);
    EXPECT_EQ(affected, 5); // not touched
    ExecutePumped(gConn, "quick", &affected);
    EXPECT_EQ(affected, 7);
}

TEST_F(PumpTest, TheStopControlCancelsToo)
{
    When([&] { return Runs("slow"); },
         [&] {
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
    When([&] { return m_gate.Arrived(); },
         [&] {
             gConn.reset();
             m_gate.Open();
         });
    qint64 affected = 0;
    ExecutePumped(gConn, "short", &affected);
    EXPECT_EQ(affected, 7);
}

TEST_F(PumpTest, InputIsHeldBackWhereToldSo)
{
    int cancels = 0;
    When([&] { return m_gate.Arrived(); },
         [&] {
             QTest::keyClicks(&m_box, "lost");
             QTest::mouseClick(&m_box, Qt::LeftButton);
             QTest::keyClick(&m_box, Qt::Key_Escape);
             EXPECT_EQ(cancels, 1);
             m_gate.Open();
         });
    RunPumped(
        {}, [&] { m_gate.Pass(); }, [&] { ++cancels; }, PumpInput::EscapeOnly);
    EXPECT_EQ(m_box.text(), "");
    EXPECT_EQ(cancels, 1);
    QTest::keyClicks(&m_box, "x");
    EXPECT_EQ(m_box.text(), "x"); // and let through again
}

TEST_F(PumpTest, ADialogThatOpensMeanwhileTakesItsInput)
{
    When([&] { return m_gate.Arrived(); },
         [&] {
             QDialog dialog;
             QLineEdit line(&dialog);
             When([&] { return line.isVisible(); },
                  [&] {
                      QTest::keyClicks(&line, "yes");
                      QTest::keyClick(&dialog, Qt::Key_Escape);
                  });
             dialog.exec();
             EXPECT_EQ(line.text(), "yes");
             m_gate.Open();
         });
    int cancels = 0;
    RunPumped(
        {}, [&] { m_gate.Pass(); }, [&] { ++cancels; }, PumpInput::EscapeOnly);
    EXPECT_EQ(cancels, 0); // Escape was the dialog's
}

// Giving up the wait stopped the other's statement.
TEST_F(PumpTest, ACallOnABusyConnectionWaitsAliveAndCanBeGivenUpAlone)
{
    InstallWaitHandler();
    BehindAnother([] { gConn->Execute("quick"); });
    gConn->Execute("quick");
    EXPECT_EQ(m_driver.Log(), (QStringList{"slow", "quick"}));
    RemoveWaitHandler();
}

// What stood in the status bar was the own work, and Escape stopped another's statement.
TEST_F(PumpTest, WorkBehindAnothersStatementSaysSoAndEscapeGivesItUpAlone)
{
    int stopped = 0;
    BehindAnother([&] {
        const auto connection = gConn;
        RunPumpedOn(
            connection, "Own work", [&] { connection->Execute("never"); }, [&] { ++stopped; }, PumpInput::EscapeOnly);
    });
    EXPECT_EQ(stopped, 1);
    // Before it is known that it waits, which takes its thread's start, the own work may be told; never afterwards.
    EXPECT_FALSE(m_shell.Statuses.mid(m_shell.Statuses.indexOf(behind)).contains("Own work"));
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
        // Once the status says that the inner one waits for both of the outer one's.
        When([&] { return m_shell.Status().endsWith("(Esc gives up waiting)"); }, [&] { gate.Open(); });
        ExecutePumped(connection, "inner");
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

// The child's own close button was swallowed for good, while the main window's was kept.
TEST_F(PumpTest, TheCloseButtonOfAChildIsDoneAfterwards)
{
    QMdiArea area;
    area.resize(700, 500);
    const auto make = [&](int y) {
        QMdiSubWindow *child = area.addSubWindow(new QWidget);
        child->setAttribute(Qt::WA_DeleteOnClose);
        child->setGeometry(20, y, 300, 150);
        child->show();
        return QPointer(child);
    };
    const QPointer<QMdiSubWindow> first = make(10), second = make(170), third = make(330);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    // The button's place, as the toolkit finds it: where a click closes the first one.
    QPoint button;
    for (int x = first->width() - 1; x > 0 && first && first->isVisible(); --x) {
        button = QPoint(x, 15);
        QTest::mouseClick(first, Qt::LeftButton, {}, button);
        QCoreApplication::processEvents();
        if (first && (first->isMinimized() || first->isMaximized()))
            break;
    }
    ASSERT_TRUE(!first || !first->isVisible()) << "no close button was found";

    int cancels = 0;
    When([&] { return m_gate.Arrived(); },
         [&] {
             QTest::mouseClick(second, Qt::LeftButton, {}, button);
             // One that is let go elsewhere, and one beside the button, close nothing.
             QTest::mousePress(third, Qt::LeftButton, {}, button);
             QTest::mouseRelease(third, Qt::LeftButton, {}, QPoint(40, 15));
             QTest::mouseClick(third, Qt::LeftButton, {}, QPoint(60, 15));
             QCoreApplication::processEvents();
             EXPECT_TRUE(second && second->isVisible());
             m_gate.Open();
         });
    RunPumped(
        {}, [&] { m_gate.Pass(); }, [&] { ++cancels; }, PumpInput::EscapeOnly);
    EXPECT_TRUE(Until([&] { return !second; }));
    EXPECT_EQ(cancels, 0); // what was loading may be another's
    QCoreApplication::processEvents();
    EXPECT_TRUE(third && third->isVisible());
}

TEST_F(PumpTest, TheProgramsEndCancelsWhatRunsAndWhatIsQueuedBehindIt)
{
    UARecordset running;
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return Runs("slow"); }));
    When([&] { return m_shell.Status() == behind; }, [] { EndPumps(true); });
    EXPECT_THROW(ExecutePumped(gConn, "slow"), ADODB::Error);
    EndPumps(false);
    EXPECT_EQ(m_driver.Log(), QStringList{"slow"}); // what waited never reached the server
    EXPECT_TRUE(Until([] { return !ADODB::Connection::AnyWork(); }));
    EXPECT_EQ(m_driver.Cancels, 1);
    EndPumps(true);
    EXPECT_THROW(ExecutePumped(gConn, "quick"), ADODB::Error); // nothing begins any more
    EndPumps(false);
}

TEST_F(PumpTest, ABreatherStopsALoop)
{
    When([] { return true; }, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    Breather breather;
    for (qint64 turns = 0; turns < 1'000'000'000 && breather.Breathe();)
        ++turns;
    EXPECT_TRUE(breather.Cancelled());
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
