// A run has its connection to itself: what a switch, another window, an Escape or a closed window do in the middle.
#include "AnalyzerFixture.h"
#include "controls/FlexGrid.h"
#include "tests/support/ScriptedDriver.h"
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace {

// Statements that end in "here" stop at the gate; those that end in "long" run until they are cancelled.
struct OwnRun : Analyzer
{
    ScriptedDriver driver;
    Gate gate;

    void SetUp() override
    {
        Analyzer::SetUp();
        driver.OnExecute = [this](const QString &sql) {
            if (sql.endsWith(u" here"))
                gate.Pass();
            if (sql.endsWith(u" long"))
                driver.RunUntilCancelled(60);
            ADODB::ExecuteResult result;
            result.RecordsAffected = 3;
            if (sql.startsWith(u"select"))
                result.Rows = std::make_unique<ScriptedRows>(QStringList{"a"}, QList<QStringList>{{"1"}});
            return result;
        };
        driver.OnTransaction = [](const QString &) {};
        gConn = ADODB::Connection::Create();
        gConn->Open(QStringLiteral("Scripted"));
    }
    void TearDown() override
    {
        gate.Open();
        Analyzer::TearDown();
    }
    // Does it once, as soon as `when` says so.
    template <class When, class Act> void Once(When when, Act act)
    {
        auto *look = new QTimer(&side);
        QObject::connect(look, &QTimer::timeout, [look, when, act] {
            if (!when())
                return;
            look->stop();
            act();
        });
        look->start(5);
    }
    // When a statement stands at the gate.
    template <class Act> void AtTheGate(Act act)
    {
        Once([this] { return gate.Arrived(); }, act);
    }
    // When the statement that runs until it is cancelled has reached the server.
    template <class Act> void OnceItRuns(Act act)
    {
        Once([this] { return driver.Log().contains(QStringLiteral("update t long")); }, act);
    }
    frmSQL *Second()
    {
        frmSQL *made = Make(QString());
        driver.ClearLog(); // of what it read of the schema
        return made;
    }
    void Text(frmSQL *in, const char *text)
    {
        in->SetText(QString::fromLatin1(text));
        in->mnuSelectAll();
    }
};

} // namespace

// The second statement went to the database that the user had switched to meanwhile, and emptied a table there.
TEST_F(OwnRun, ABatchStaysOnTheConnectionThatItBeganOn)
{
    Text(window, "update a here\r\n\r\ndelete from customers\r\n\r\nselect 1 as x");
    AtTheGate([&] {
        gConn = Connect(); // the SQLite file: as a click on another entry does
        gate.Open();
    });
    EXPECT_TRUE(window->RunSQL());
    WaitForResults();
    EXPECT_EQ(Count(QStringLiteral("select count(*) from customers")), 2);
    EXPECT_EQ(driver.Log(), (QStringList{"update a here", "delete from customers", "select 1 as x"}));
}

// Another window's statement joined the transaction of a run, and was rolled back with it after its log said "done".
TEST_F(OwnRun, AnothersStatementWaitsForTheEndOfATransactionRun)
{
    const QPointer<frmSQL> second = Second();
    Text(window, "update a here\r\n\r\nupdate b");
    Text(second, "update other");
    AtTheGate([&] {
        QTimer::singleShot(0, [&] { gate.Open(); });
        EXPECT_TRUE(second->RunSQL());
    });
    EXPECT_TRUE(window->RunSQL_Trans());
    EXPECT_EQ(driver.Log(), (QStringList{"BEGIN", "update a here", "update b", "COMMIT", "update other"}));
}

// A second window's commit ended the first one's transaction in the middle.
TEST_F(OwnRun, ACommitOfAnotherWindowWaitsForTheEndOfTheRun)
{
    const QPointer<frmSQL> second = Second();
    window->ToolBar(QStringLiteral("BT"));
    Text(window, "update a here\r\n\r\nupdate b");
    AtTheGate([&] {
        QTimer::singleShot(0, [&] { gate.Open(); });
        second->ToolBar(QStringLiteral("RT"));
    });
    EXPECT_TRUE(window->RunSQL());
    EXPECT_EQ(driver.Log(), (QStringList{"BEGIN", "update a here", "update b", "ROLLBACK"}));
    EXPECT_FALSE(gConn->InTransaction());
}

// Escape stopped one statement, those behind it still ran, and the log told the former count.
TEST_F(OwnRun, EscapeEndsTheBatchAndTheLogSaysWhatWasNotRun)
{
    Text(window, "insert into t values (50)\r\n\r\nupdate t long\r\n\r\ninsert into t values (60)");
    OnceItRuns([&] { Press(Qt::Key_Escape); });
    EXPECT_FALSE(window->RunSQL());
    EXPECT_EQ(driver.Log(), (QStringList{"insert into t values (50)", "update t long"}));
    EXPECT_EQ(Log(), (QStringList{"insert into t values (50) 3 records have been affected",
                                  "update t long has been cancelled", "insert into t values (60) has not been run"}));
}

TEST_F(OwnRun, AClosedWindowEndsItsBatch)
{
    Text(window, "update t long\r\n\r\ninsert into t values (60)");
    OnceItRuns([&] {
        window->CloseChild();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    window->RunSQL();
    EXPECT_EQ(driver.Log(), QStringList{"update t long"});
    EXPECT_TRUE(dialogs.Boxes.size() == 1); // the question alone
}

TEST_F(OwnRun, ACancelledTransactionRunIsRolledBack)
{
    Text(window, "update t long\r\n\r\ninsert into t values (60)");
    OnceItRuns([&] { Press(Qt::Key_Escape); });
    EXPECT_FALSE(window->RunSQL_Trans());
    EXPECT_EQ(driver.Log(), (QStringList{"BEGIN", "update t long", "ROLLBACK"}));
    EXPECT_TRUE(dialogs.LastText().endsWith(QStringLiteral("Will now atempt to rollback.")));
}

TEST_F(OwnRun, TheEndOfTheProgramEndsTheBatch)
{
    Text(window, "update t long\r\n\r\ninsert into t values (60)");
    OnceItRuns([&] { EndPumps(true); });
    EXPECT_FALSE(window->RunSQL());
    EndPumps(false);
    EXPECT_EQ(driver.Log(), QStringList{"update t long"});
}

// A line of the log went to whichever window's log stood there.
TEST_F(OwnRun, ALogLineGoesToTheWindowThatRanOrNowhere)
{
    const QPointer<frmSQL> second = Second();
    Text(window, "update first here");
    Text(second, "update second");
    AtTheGate([&] {
        QTimer::singleShot(0, [&] { gate.Open(); });
        second->RunSQL(); // takes the log over, and waits for the first one
    });
    window->RunSQL();
    EXPECT_EQ(Log(), QStringList{"update second 3 records have been affected"});
}

// A stop that was asked for stood in the window of the next run.
TEST_F(OwnRun, ARunStartedWhileTheFormerOneStopsShowsItsOwnState)
{
    frmHirarchy result;
    result.KillOnError = false;
    result.show();
    result.ShowRec(QStringLiteral("select here"), gConn, QStringLiteral("t"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return gate.Arrived(); }));
    result.StopRun();
    EXPECT_EQ(result.lblRunning->text(), QStringLiteral("Stopping ..."));
    result.ClearForRun();
    result.ShowRec(QStringLiteral("select 2"), gConn, QStringLiteral("t"));
    EXPECT_TRUE(result.cmdStop->isEnabled());
    EXPECT_NE(result.lblRunning->text(), QStringLiteral("Stopping ..."));
    // What it waits for is in sight.
    EXPECT_EQ(result.lblRunning->text(), QStringLiteral("Waiting for: select here"));
    gate.Open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !result.IsRunning(); }));
}
