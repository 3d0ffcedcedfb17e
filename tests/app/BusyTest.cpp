// While a statement runs: what waits for the connection says so in the status bar, and Stop cancels the statement.
#include "ado/UARecordset.h"
#include "controls/Attempt.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "data/SchemaLoader.h"
#include "session/Pump.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/ScriptedDriver.h"
#include <QElapsedTimer>
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

// Stop took the other's statement with it.
TEST_F(Busy, AWaitingCallSaysWhatItWaitsForAndStopGivesUpTheWaitAlone)
{
    UARecordset running;
    running.OpenRecordset(m_long, gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([] { return gConn->IsBusy(); }));
    bool offered = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        const QString status = Window->SB->PanelText(1);
        if (!status.startsWith(QStringLiteral("Waiting for: with recursive")) ||
            !status.endsWith(QStringLiteral("(Esc gives up waiting)")))
            return;
        look.stop();
        offered = Window->cmdStop->isVisible();
        QTest::mouseClick(Window->cmdStop, Qt::LeftButton);
    });
    look.start(20);
    EXPECT_THROW(gConn->Execute(QStringLiteral("insert into t values (1)")), ADODB::Error);
    EXPECT_TRUE(offered);
    EXPECT_TRUE(running.IsRunning());
    EXPECT_FALSE(Window->cmdStop->isVisible());
    EXPECT_FALSE(Window->SB->PanelText(1).startsWith(QStringLiteral("Waiting")));
    running.Cancel();
    EXPECT_NO_THROW(gConn->Execute(QStringLiteral("insert into t values (1)"))); // usable afterwards
}

TEST_F(Busy, ALoadOfTheTreeSaysWhatItWaitsForAndEscapeGivesItUp)
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
    EXPECT_FALSE(LoadStructure(&tree, nullptr, QStringLiteral("TABLE"), 1, 1, 1));
    EXPECT_TRUE(said);
    EXPECT_TRUE(running.IsRunning()); // nobody asked for its end
    running.Cancel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !running.IsRunning(); }));
}

// The click on another connection switched in the middle of a run.
TEST_F(Busy, ASwitchWhileWorkIsUnderWayAsksAndStays)
{
    UARecordset running;
    running.OpenRecordset(m_long, gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([] { return gConn->IsBusy(); }));
    const ADODB::ConnectionPtr former = gConn;
    Dialogs.Answers << mbCancel;
    Window->ConnectTo(Entry(QStringLiteral("a")));
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Buttons, int(mbYesNoCancel));
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Connection"));
    EXPECT_TRUE(Dialogs.Boxes[0].Text.contains(QStringLiteral("with recursive")));
    EXPECT_EQ(gConn, former);
    EXPECT_TRUE(running.IsRunning());
    Dialogs.Answers << mbNo; // cancels it, and goes
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_NE(gConn, former);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !running.IsRunning(); }));
}

TEST_F(Busy, ASwitchMayWaitForTheEndOfTheWork)
{
    ScriptedDriver driver;
    Gate gate;
    driver.OnExecute = [&](const QString &) {
        gate.Pass();
        return ADODB::ExecuteResult{};
    };
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted"));
    UARecordset running;
    running.OpenRecordset(QStringLiteral("x"), gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gate.Arrived(); }));
    Dialogs.Answers << mbYes;
    bool waited = false;
    QTimer::singleShot(0, Window.get(), [&] {
        waited = gConn->ConnectionString() == QLatin1String("Scripted") && running.IsRunning();
        gate.Open();
    });
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_TRUE(waited);
    EXPECT_FALSE(running.IsRunning());
    EXPECT_TRUE(gConn->ConnectionString().contains(QStringLiteral("a.sqlite")));
    EXPECT_EQ(driver.Cancels, 0);
}

// The cancel hung in the silent server on the interface thread: the window stayed dead, and no text was saved.
TEST_F(Busy, ASilentServerDoesNotHoldUpTheEnd)
{
    ScriptedDriver driver;
    Gate statement, cancel;
    driver.OnExecute = [&](const QString &) {
        statement.Pass();
        return ADODB::ExecuteResult{};
    };
    driver.OnCancel = [&] { cancel.Pass(); };
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted"));
    bool saved = false, ended = false;
    QObject::connect(Window.get(), &mdiMother::Ended, Window.get(), [&] {
        ended = true;
        saved = QFile::exists(Folder.filePath(QStringLiteral("es.dat"))) && ADODB::Connection::AnyWork();
        statement.Open(); // what the program leaves to the end of its process, this test must end
        cancel.Open();
    });
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        if (!statement.Arrived())
            return;
        look.stop();
        Window->close();
    });
    look.start(5);
    EXPECT_NO_THROW(Attempt([&] { ExecutePumped(gConn, QStringLiteral("x")); }));
    EXPECT_TRUE(ended);
    EXPECT_TRUE(saved);
    EXPECT_FALSE(Window->isVisible());
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
