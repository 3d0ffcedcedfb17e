// Saving to a server that goes away, or stands still, in the middle.
#include "tests/support/Places.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/views/Inline.h"
#include <QProcess>

using namespace ADODB;

namespace {

struct InlineLost : Inline
{
    static constexpr int kRows = 400;

    // Every row of `many` changed, and another user's lock on the one in the middle, where saving stands still.
    void OpenWithALockInTheMiddle()
    {
        Do(gConn, QStringLiteral("CREATE TABLE many(id INTEGER PRIMARY KEY, a INTEGER)"));
        QStringList values;
        for (int id = 1; id <= kRows; ++id)
            values += QStringLiteral("(%1, 0)").arg(id);
        Do(gConn, QStringLiteral("INSERT INTO many VALUES ") + values.join(u','));
        m_killer = Connect();
        m_session = gConn
                        ->Execute(IsPostgres() ? QStringLiteral("SELECT pg_backend_pid()")
                                               : QStringLiteral("SELECT CONNECTION_ID()"))
                        ->CellText(0, 0);
        Open(QStringLiteral("many"));
        const RecordsetPtr rows = Window().Rows();
        for (qint64 row = 0; row < kRows; ++row) {
            ASSERT_TRUE(Grid().SetCurrentCell(row, 1));
            ASSERT_TRUE(Grid().SetCellText(QStringLiteral("1")));
        }
        other->BeginTrans();
        Do(other, QStringLiteral("UPDATE many SET a = 0 WHERE id = %1").arg(kRows / 2));
        if (IsMariaDb()) // which tells an equal value as no change, and locks all the same
            Do(other, QStringLiteral("SELECT * FROM many WHERE id = %1 FOR UPDATE").arg(kRows / 2));
    }
    void KillTheSession()
    {
        Attempt([&] {
            m_killer->Execute((IsPostgres() ? QStringLiteral("SELECT pg_terminate_backend(%1)")
                                            : QStringLiteral("KILL CONNECTION %1"))
                                  .arg(m_session));
        });
    }
    // A row is told as pending exactly when the table has it as it was.
    void ExpectTheTableIsAsTold()
    {
        const RecordsetPtr rows = Window().Rows();
        const RecordsetPtr table = other->Execute(QStringLiteral("SELECT id, a FROM many ORDER BY id"));
        ASSERT_EQ(table->RowCount(), kRows);
        int wrong = 0;
        for (qint64 row = 0; row < kRows; ++row)
            wrong += (rows->RowStatus(row) & adRecModified ? 1 : 0) != (table->CellText(row, 1) == u"0" ? 1 : 0);
        EXPECT_EQ(wrong, 0);
    }
    template <class Work> void Attempt(Work &&work)
    {
        try {
            work();
        } catch (const ADODB::Error &) { // the killing is told to the killer too, by some
        }
    }

    ConnectionPtr m_killer;
    QString m_session;
};

} // namespace

TEST_P(InlineLost, ASaveWhoseConnectionIsKilledTellsWhatIsIn)
{
    OpenWithALockInTheMiddle();
    QTimer clock;
    int ticks = 0;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (Window().IsBusy() && ++ticks == 30)
            KillTheSession();
    });
    clock.start(5);
    Window().mnuSave();
    clock.stop();
    EXPECT_GE(ticks, 30);
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: ")) << dialogs.LastText().toStdString();
    EXPECT_FALSE(dialogs.LastText().contains("cancel", Qt::CaseInsensitive)) << dialogs.LastText().toStdString();
    EXPECT_EQ(dialogs.LastTitle(), "Error");
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(Window().HasChanges());
    EXPECT_GT(Window().Rows()->PendingCount(), 0);
    other->RollbackTrans();
    ExpectTheTableIsAsTold();

    // The dead connection says so again; nothing of it is unsaid, and the window stays.
    const auto boxes = dialogs.Boxes.size();
    Window().mnuSave();
    EXPECT_GT(dialogs.Boxes.size(), boxes);
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: ")) << dialogs.LastText().toStdString();
    ExpectTheTableIsAsTold();
}

TEST_P(InlineLost, ASaveThatIsStoppedInTheMiddleTellsWhatIsIn)
{
    OpenWithALockInTheMiddle();
    QTimer clock;
    int ticks = 0;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (Window().IsBusy() && ++ticks == 30)
            QTest::mouseClick(Window().cmdStop, Qt::LeftButton);
    });
    clock.start(5);
    Window().mnuSave();
    clock.stop();
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: Operation has been cancelled"))
        << dialogs.LastText().toStdString();
    other->RollbackTrans();
    ExpectTheTableIsAsTold();
    Window().mnuSave();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    ExpectTheTableIsAsTold();
    EXPECT_EQ(Seen(QStringLiteral("SELECT sum(a) FROM many")), QString::number(kRows));
}

// The close box in the middle of a save stops it and asks about the rest, once its end has come.
TEST_P(InlineLost, ClosingInTheMiddleOfASaveStopsItAndAsksAboutTheRest)
{
    OpenWithALockInTheMiddle();
    QTimer clock;
    int ticks = 0;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (holder && Window().IsBusy() && ++ticks == 30) {
            EXPECT_FALSE(Window().close());
        }
    });
    clock.start(5);
    dialogs.Answers = {mbOK, mbCancel};
    Window().mnuSave();
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialogs.LastTitle() == u"Changes"; }, 20000));
    ASSERT_TRUE(holder && holder->isVisible());
    other->RollbackTrans();
    ExpectTheTableIsAsTold();
    dialogs.Answers = {mbNo};
    EXPECT_TRUE(Window().close());
}

INSTANTIATE_TEST_SUITE_P(Servers, InlineLost,
                         testing::Values(InlineDatabase{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                                         InlineDatabase{"MariaDB", "BRINDLEWICK_TEST_MARIADB"}),
                         InlineName);

// A server that stands still: the windows live, the stop waits for it as a stop must, and nothing is lost.
TEST(InlineStill, AServerThatStandsStillHoldsNoWindow)
{
    if (qEnvironmentVariableIsEmpty("BRINDLEWICK_TEST_SERVERS"))
        GTEST_SKIP() << "servers are started by ./test";
    const QString script = places::Source() + QStringLiteral("/tests/servers/servers");
    const QTemporaryDir folder;
    const QString home = folder.filePath(QStringLiteral("own"));
    QProcess start;
    start.start(script, {QStringLiteral("start"), home, QStringLiteral("postgres")});
    ASSERT_TRUE(start.waitForFinished(60000));
    ASSERT_EQ(start.exitCode(), 0);
    const QString lines = QString::fromUtf8(start.readAllStandardOutput());
    const qsizetype from = lines.indexOf(u'\'') + 1;
    InstallWaitHandler();
    {
        ShellDouble shell;
        DialogDouble dialogs;
        gConn = Connection::Create();
        gConn->Open(lines.mid(from, lines.indexOf(u'\'', from) - from));
        gConn->Execute(QStringLiteral("CREATE TABLE still(id INTEGER PRIMARY KEY, a INTEGER)"));
        gConn->Execute(QStringLiteral("INSERT INTO still VALUES (1, 0), (2, 0)"));
        const QPointer<frmInline> window(new frmInline);
        window->show();
        window->SetSource(QStringLiteral("still"));
        ASSERT_TRUE(window->dg->SetCurrentCell(0, 1));
        ASSERT_TRUE(window->dg->SetCellText(QStringLiteral("7")));
        ASSERT_EQ(QProcess::execute(script, {QStringLiteral("pause"), home}), 0);
        int ticks = 0;
        QTimer clock;
        QObject::connect(&clock, &QTimer::timeout, [&] {
            ++ticks;
            if (ticks == 20)
                QTest::mouseClick(window->cmdStop, Qt::LeftButton);
            if (ticks == 60)
                QProcess::execute(script, {QStringLiteral("resume"), home});
        });
        clock.start(5);
        window->mnuSave();
        clock.stop();
        EXPECT_GE(ticks, 60) << "the window lived while its server did not";
        ASSERT_FALSE(window.isNull());
        EXPECT_EQ(dialogs.Boxes.size(), 1);
        const bool saved = dialogs.LastTitle() == u"Save";
        const QString stored = gConn->Execute(QStringLiteral("SELECT a FROM still WHERE id = 1"))->CellText(0, 0);
        EXPECT_EQ(stored, saved ? "7" : "0") << dialogs.LastText().toStdString();
        EXPECT_EQ(window->Rows()->PendingCount(), saved ? 0 : 1);
        delete window.data();
        gConn.reset();
    }
    RemoveWaitHandler();
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("stop"), home}), 0);
}

// A table that takes its time to open: the window lives, says how far it has come, and Escape gives it up.
TEST(InlineOpening, EscapeGivesItUpAndTheWindowStays)
{
    InstallWaitHandler();
    {
        ShellDouble shell;
        DialogDouble dialogs;
        ScriptedDriver driver;
        driver.OnExecute = [&driver](const QString &sql) {
            if (sql.contains(QLatin1String("slow")))
                driver.RunUntilCancelled(20);
            return ADODB::ExecuteResult{};
        };
        gConn = Connection::Create();
        gConn->Open(QStringLiteral("Scripted"));
        gConn->SetCursorLocation(adUseServer);
        const QPointer<frmInline> window(new frmInline);
        window->show();
        QStringList told;
        QTimer clock;
        QObject::connect(&clock, &QTimer::timeout, [&] {
            if (!window->IsBusy() || !shell.Status().startsWith("Opening slow"))
                return;
            told += shell.Status();
            if (told.size() == 5) {
                EXPECT_TRUE(window->cmdStop->isEnabled());
                QTest::keyClick(window->dg, Qt::Key_Escape);
            }
        });
        clock.start(5);
        window->SetSource(QStringLiteral("slow"));
        clock.stop();
        ASSERT_GE(told.size(), 5);
        EXPECT_EQ(told[0], "Opening slow ... 0 rows (Esc stops)");
        ASSERT_FALSE(window.isNull());
        EXPECT_FALSE(window->IsBusy());
        EXPECT_FALSE(window->cmdStop->isEnabled());
        EXPECT_FALSE(window->Rows());
        EXPECT_EQ(gConn->CursorLocation(), adUseServer);
        EXPECT_TRUE(dialogs.LastText().startsWith("Error: ")) << dialogs.LastText().toStdString();
        EXPECT_EQ(window->dg->Cols(), 0);
        QTest::keyClick(window->dg, Qt::Key_X); // nothing to edit, and nothing to fall over
        delete window.data();
        gConn.reset();
    }
    RemoveWaitHandler();
}
