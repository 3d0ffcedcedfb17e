#include "session/Pump.h"
#include "ado/UARecordset.h"
#include "session/PumpUntil.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
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

TEST_F(PumpTest, ACallOnABusyConnectionWaitsAliveAndCanBeCancelled)
{
    InstallWaitHandler();
    UARecordset running;
    QString words;
    QObject::connect(&running, &UARecordset::ErrorOccured, [&](int, const QString &text) { words = text; });
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return m_driver.Log().contains("slow"); }));
    QTimer::singleShot(400, &m_box, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    qint64 affected = 0;
    gConn->Execute("quick", &affected);
    EXPECT_EQ(affected, 7);
    EXPECT_EQ(m_driver.Log(), (QStringList{"slow", "quick"}));
    EXPECT_TRUE(m_shell.Statuses.contains("Waiting for: slow ... (Esc cancels)"));
    EXPECT_TRUE(Until([&] { return !words.isEmpty(); }));
    RemoveWaitHandler();
}

TEST_F(PumpTest, WorkBehindAnothersStatementSaysSoAndEscapeCancelsThatOneAlone)
{
    UARecordset running;
    QString words;
    QObject::connect(&running, &UARecordset::ErrorOccured, [&](int, const QString &text) { words = text; });
    running.OpenRecordset("slow", gConn, 2);
    ASSERT_TRUE(Until([&] { return m_driver.Log().contains("slow"); }));
    QTimer::singleShot(400, &m_box, [&] { QTest::keyClick(&m_box, Qt::Key_Escape); });
    int cancels = 0;
    qint64 affected = 0;
    const auto connection = gConn;
    RunPumpedOn(
        connection, "Own work", [&] { connection->Execute("short", &affected); }, [&] { ++cancels; },
        PumpInput::EscapeOnly);
    EXPECT_EQ(affected, 7); // the work itself was done
    EXPECT_EQ(cancels, 0);
    EXPECT_EQ(m_driver.Cancels, 1);
    EXPECT_TRUE(m_shell.Statuses.contains("Waiting for: slow ... (Esc cancels)"));
    EXPECT_TRUE(m_shell.Statuses.contains("Own work")); // once its turn has come
    EXPECT_TRUE(Until([&] { return !words.isEmpty(); }));
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
    EXPECT_EQ(m_driver.Log(), (QStringList{"slow", "slow"}));
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
