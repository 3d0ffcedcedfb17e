// A statement can be stopped from another thread, and its connection goes on; a lost server is an error, never a crash.
#include "ado/UARecordset.h"
#include "tests/ado/Conformance.h"
#include "tests/support/Await.h"
#include "tests/support/Places.h"
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <atomic>
#include <csignal>
#include <memory>
#include <thread>

using namespace ADODB;

namespace conformance {

namespace {

// Runs for many seconds on the server, and gives rows in the end.
const Dialect kLong = {"WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < 400000000) "
                       "SELECT count(*) FROM g",
                       "SELECT pg_sleep(60)",
                       "SELECT COUNT(*) FROM seq_1_to_100000 a JOIN seq_1_to_100000 b ON (a.seq + b.seq) % 7 = 3"};

// Off the event loop.
void WaitUntil(const std::function<bool()> &ready, int milliseconds = 20000)
{
    QElapsedTimer timer;
    timer.start();
    while (!ready() && timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

} // namespace

TEST_P(Conformance, CancelFromAnotherThreadStopsTheStatement)
{
    for (int round = 0; round < 2; ++round) {
        std::atomic<bool> ended{false};
        const std::function<bool()> runs = InTheMiddle();
        std::thread other([&] {
            Await(runs);
            while (!ended) { // as callers do: until the turn has ended
                m_connection->Cancel();
                std::this_thread::yield();
            }
        });
        const Error error = ErrorOf(Pick(kLong)); // which takes a minute and more
        ended = true;
        other.join();
        EXPECT_EQ(error.Number, adErrOperationCancelled) << error.what();
        EXPECT_EQ(m_connection->State(), adStateOpen);
        EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
    }
}

TEST_P(Conformance, CancelOfAnIdleConnectionHitsNothing)
{
    m_connection->Cancel();
    EXPECT_EQ(Cell(QStringLiteral("SELECT 1")).ToInt64(), 1);
    m_connection->Cancel();
    EXPECT_EQ(Cell(QStringLiteral("SELECT 2")).ToInt64(), 2);
}

TEST_P(Conformance, ACancelledStatementLeavesItsTransactionToTheUser)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES (1)"));
    const std::function<bool()> runs = InTheMiddle();
    std::thread other([&] {
        Await(runs);
        m_connection->Cancel();
    });
    ErrorOf(Pick(kLong));
    other.join();
    m_connection->RollbackTrans();
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 0);
}

// About 900 MB of rows: read by blocks they are counted, but some drivers take them all in before the first block.
TEST_P(Conformance, AResultPastTheLimitIsStoppedWhereverItGrows)
{
    const Dialect large = {
        "WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < 900000) "
        "SELECT n, replace(hex(zeroblob(500)), '0', 'x') FROM g",
        "SELECT n, repeat('x', 1000) FROM generate_series(1, 900000) g(n)",
        "SELECT seq, REPEAT('x', 1000) FROM seq_1_to_900000",
    };
    struct Former
    {
        qint64 limit = ResultLimit();
        ~Former() { SetResultLimit(limit); }
    } former;
    SetResultLimit(50 << 20);
    const Error error = ErrorOf(Pick(large));
    EXPECT_EQ(error.Number, adErrOutOfMemory) << error.what();
    EXPECT_TRUE(error.Description.startsWith(QStringLiteral("The result is too large"))) << error.what();
    EXPECT_EQ(m_connection->State(), adStateOpen);
    EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
}

TEST_P(Conformance, ASecondStatementWaitsAndASecondConnectionDoesNot)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    std::atomic<bool> ended{false};
    const std::function<bool()> runs = InTheMiddle();
    std::thread other([&] {
        try {
            Run(Pick(kLong));
        } catch (const Error &) {
        }
        ended = true;
    });
    Await(runs);
    EXPECT_EQ(NewConnection()->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 0);
    EXPECT_FALSE(ended);
    auto next = std::make_unique<Connection::Turn>(m_connection, QStringLiteral("next"));
    EXPECT_TRUE(next->WaitsFor().contains(QStringLiteral("SELECT")));
    m_connection->Cancel();
    next->Begin(); // waits for the cancelled one
    EXPECT_NO_THROW(next->Driver().Execute(QStringLiteral("SELECT COUNT(*) FROM t")));
    next.reset();
    other.join();
    EXPECT_TRUE(ended);
}

TEST_P(Conformance, TheAsynchronousRecordsetReportsInOrder)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER, b VARCHAR(20))"));
    Run(QStringLiteral("INSERT INTO t VALUES (1, 'one'), (2, 'two')"));
    QStringList seen;
    RecordsetPtr opened;
    UARecordset recordset;
    QObject::connect(&recordset, &UARecordset::GotTableDefinition, [&](const std::vector<ColumnInfo> &columns) {
        seen += QStringLiteral("definition of %1").arg(columns.size());
    });
    QObject::connect(&recordset, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &rows) {
        seen += QStringLiteral("rows");
        opened = rows;
    });
    QObject::connect(&recordset, &UARecordset::ErrorOccured,
                     [&](int, const QString &description) { seen += description; });
    recordset.OpenRecordset(QStringLiteral("SELECT a, b FROM t ORDER BY a"), m_connection, 2);
    EXPECT_TRUE(seen.isEmpty()); // nothing arrives inside the call
    WaitUntil([&] { return opened != nullptr || seen.size() > 1; });
    EXPECT_EQ(seen.join(u'|'), u"definition of 2|rows");
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->CellText(1, 1), u"two");

    seen.clear();
    recordset.OpenRecordset(QStringLiteral("SELECT * FROM nothing_here"), m_connection, 2);
    WaitUntil([&] { return !seen.isEmpty(); });
    ASSERT_EQ(seen.size(), 1);
    EXPECT_TRUE(seen[0].contains(u"nothing_here")) << seen[0].toStdString();

    seen.clear();
    int number = 0;
    QObject::connect(&recordset, &UARecordset::ErrorOccured, [&](int error, const QString &) { number = error; });
    const std::function<bool()> runs = InTheMiddle();
    recordset.OpenRecordset(Pick(kLong), m_connection, 2);
    WaitUntil(runs);
    EXPECT_TRUE(recordset.IsRunning());
    recordset.Cancel();
    WaitUntil([&] { return !seen.isEmpty(); });
    EXPECT_EQ(number, adErrOperationCancelled);
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2);
}

// The session is ended by the administrator while its statement runs.
TEST_P(ConformanceOfServers, AnEndedSessionIsAnErrorAndANewConnectionWorks)
{
    const qint64 id = Cell(Pick({"", "SELECT pg_backend_pid()", "SELECT CONNECTION_ID()"})).ToInt64();
    const ConnectionPtr second = NewConnection();
    const std::function<bool()> runs = InTheMiddle();
    std::thread administrator([&] {
        Await(runs);
        second->Execute(Pick({"", "SELECT pg_terminate_backend(%1)", "KILL CONNECTION %1"}).arg(id));
    });
    const Error error = ErrorOf(Pick(kLong));
    administrator.join();
    EXPECT_NE(error.Number, adErrOperationCancelled);
    EXPECT_FALSE(error.Description.isEmpty());
    EXPECT_NO_THROW(ErrorOf(QStringLiteral("SELECT 1")));
    EXPECT_EQ(m_connection->State(), adStateClosed);
    m_connection = NewConnection();
    EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
}

// MariaDB's driver leaves its lock taken by the thread that met an error in a text of several statements: the next
// statement waited for ever on another thread.
TEST_P(ConformanceOfServers, AnErrorInATextOfSeveralStatementsLeavesNothingTaken)
{
    QString string = m_string;
    if (Is(Server::MariaDb))
        string += QStringLiteral(";OPTION=67108864"); // several statements in one text
    const ConnectionPtr connection = Connection::Create();
    connection->Open(string);
    for (const char *text : {"SELECT * FROM nothing_here; SELECT 1", "SELECT 1; SELECT * FROM nothing_here"}) {
        Error error;
        std::thread([&] { error = ErrorFrom([&] { connection->Execute(QString::fromLatin1(text)); }); }).join();
        EXPECT_TRUE(error.Description.contains(u"nothing_here")) << error.what();
        QString answer;
        std::thread([&] { answer = connection->Execute(QStringLiteral("SELECT 6 * 7"))->CellText(0, 0); }).join();
        EXPECT_EQ(answer, u"42") << text;
    }
    EXPECT_FALSE(connection->OpenSchema(adSchemaTables)->Fields().Count() == 0);
}

// A server that stops answering: the cancel goes to the network and hangs there, and whoever asked for it goes on.
TEST_P(ConformanceOfServers, ASilentServerHoldsUpNobodyWhoCancels)
{
    const QString script = (places::Source() + QStringLiteral("/tests/servers/servers"));
    const QString folder = m_folder.filePath(QStringLiteral("silent"));
    QProcess start;
    start.start(script, {QStringLiteral("start"), folder, Pick({"", "postgres", "mariadb"})});
    ASSERT_TRUE(start.waitForFinished(60000));
    ASSERT_EQ(start.exitCode(), 0) << start.readAllStandardError().toStdString();
    const QString lines = QString::fromUtf8(start.readAllStandardOutput());
    const qsizetype from = lines.indexOf(u'\'') + 1;
    const ConnectionPtr connection = Connection::Create();
    connection->Open(lines.mid(from, lines.indexOf(u'\'', from) - from));
    Error error;
    std::thread runs([&] { error = ErrorFrom([&] { connection->Execute(Pick(kLong)); }); });
    WaitUntil([&] { return connection->IsBusy(); });
    QProcess::execute(script, {QStringLiteral("pause"), folder});
    connection->Cancel(); // comes back although nobody answers
    EXPECT_TRUE(connection->IsBusy());
    Error other; // meanwhile another connection's statement is cancelled as ever
    std::thread well([&] { other = ErrorOf(Pick(kLong)); });
    WaitUntil([&] { return m_connection->IsBusy(); });
    m_connection->Cancel();
    well.join();
    EXPECT_EQ(other.Number, adErrOperationCancelled) << other.what();
    QProcess::execute(script, {QStringLiteral("resume"), folder});
    runs.join();
    EXPECT_EQ(error.Number, adErrOperationCancelled) << error.what();
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("stop"), folder}), 0);
}

// A server of its own, killed like a crash while a large result is on its way.
TEST_P(ConformanceOfServers, AKilledServerIsAnErrorAndTheProgramGoesOn)
{
    const QString script = (places::Source() + QStringLiteral("/tests/servers/servers"));
    const QString folder = m_folder.filePath(QStringLiteral("own"));
    const QString kind = Pick({"", "postgres", "mariadb"});
    QProcess start;
    start.start(script, {QStringLiteral("start"), folder, kind});
    ASSERT_TRUE(start.waitForFinished(60000));
    ASSERT_EQ(start.exitCode(), 0) << start.readAllStandardError().toStdString();
    const QString lines = QString::fromUtf8(start.readAllStandardOutput());
    const qsizetype from = lines.indexOf(u'\'') + 1;
    const ConnectionPtr connection = Connection::Create();
    connection->Open(lines.mid(from, lines.indexOf(u'\'', from) - from));
    const QString sql = Pick({"", "SELECT n, repeat('x', 500) AS s FROM generate_series(1, 3000000) n",
                              "SELECT seq, repeat('x', 500) AS s FROM seq_1_to_3000000"});
    std::thread killer([&] {
        Await([&] { return connection->IsBusy(); });
        QProcess::execute(script, {QStringLiteral("kill"), folder});
    });
    const Error error = ErrorFrom([&] { connection->Execute(sql); });
    killer.join();
    EXPECT_FALSE(error.Description.isEmpty());
    EXPECT_NE(error.Number, adErrOperationCancelled);
    EXPECT_FALSE(ErrorFrom([&] { connection->Execute(QStringLiteral("SELECT 1")); }).Description.isEmpty());
    EXPECT_EQ(connection->State(), adStateClosed);
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("stop"), folder}), 0);
    EXPECT_FALSE(QFile::exists(folder));
    EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42); // the other server's connection is as it was
}

} // namespace conformance
