// The asynchronous recordset: its signals, order, cancel, late events, and what it shares with synchronous calls.
#include "ado/UARecordset.h"
#include "TempDatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <thread>

using namespace ADODB;

namespace {

QString EndlessQuery()
{
    return QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) SELECT count(*) FROM c");
}

QString EndlessRows()
{
    return QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) SELECT i FROM c");
}

bool SpinUntil(const std::function<bool()> &ready, int ms = 20000)
{
    QElapsedTimer timer;
    timer.start();
    while (!ready() && timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
    return ready();
}

// Hears one UARecordset and keeps what it said, in order.
struct Listener
{
    UARecordset async;
    std::vector<std::string> heard;
    RecordsetPtr rows;
    int number = 0;
    QString words;
    bool onOwnThread = true;

    Listener()
    {
        const auto note = [this, home = QThread::currentThread()](const char *what) {
            heard.emplace_back(what);
            onOwnThread = onOwnThread && QThread::currentThread() == home;
        };
        QObject::connect(&async, &UARecordset::GotTableDefinition,
                         [note](const std::vector<ColumnInfo> &) { note("definition"); });
        QObject::connect(&async, &UARecordset::RecordsetOpened, [this, note](const RecordsetPtr &recordset) {
            rows = recordset;
            note("opened");
        });
        QObject::connect(&async, &UARecordset::ErrorOccured, [this, note](int code, const QString &text) {
            number = code;
            words = text;
            note("error");
        });
    }
    bool Ended() const { return !heard.empty() && heard.back() != "definition"; }
};

TEST(UARecordset, DeliversTheDefinitionAndThenAllRows)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener listener;
    listener.async.OpenRecordset(QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE "
                                                "i < 30000) SELECT i, 'x' || i AS t FROM c"),
                                 connection, 2);
    EXPECT_TRUE(listener.heard.empty()); // never inside the call
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"definition", "opened"}));
    EXPECT_TRUE(listener.onOwnThread);
    EXPECT_EQ(listener.rows->RecordCount(), 30000);
    EXPECT_EQ(listener.rows->CellText(29999, 1), "x30000");
    EXPECT_EQ(listener.async.RowsSoFar(), 30000);
    EXPECT_FALSE(listener.async.IsRunning());
    EXPECT_FALSE(connection->IsBusy());
    const double seconds = listener.async.ElapsedSeconds();
    const auto now = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() == now) {
    }
    EXPECT_EQ(listener.async.ElapsedSeconds(), seconds); // stands still
}

TEST(UARecordset, AStatementWithoutRowsGivesAnEmptyRecordset)
{
    TempDatabase database;
    Listener listener;
    listener.async.OpenRecordset(QStringLiteral("CREATE TABLE t (a)"), database.Open(), 3);
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"opened"}));
    EXPECT_EQ(listener.rows->State(), adStateOpen);
    EXPECT_EQ(listener.rows->Fields().Count(), 0);
    EXPECT_EQ(listener.rows->RecordCount(), 0);
}

TEST(UARecordset, AResultWithoutRowsStillHasItsDefinition)
{
    TempDatabase database;
    Listener listener;
    listener.async.OpenRecordset(QStringLiteral("SELECT 1 AS a WHERE 1 = 0"), database.Open(), 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"definition", "opened"}));
    EXPECT_EQ(listener.rows->RecordCount(), 0);
    EXPECT_EQ(listener.rows->Fields()[0].Name(), "a");
}

TEST(UARecordset, ReportsTheDriversWords)
{
    TempDatabase database;
    Listener listener;
    listener.async.OpenRecordset(QStringLiteral("SELECT * FROM missing"), database.Open(), 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.words, "no such table: missing");
    listener.async.OpenRecordset(QStringLiteral("SELECT 1"), nullptr, 2);
    EXPECT_EQ(listener.heard.size(), 1u);
    ASSERT_TRUE(SpinUntil([&] { return listener.heard.size() == 2; }));
    EXPECT_EQ(listener.number, adErrObjectClosed);
    listener.async.OpenRecordset(QStringLiteral("SELECT 1"), Connection::Create(), 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.heard.size() == 3; }));
    EXPECT_EQ(listener.number, adErrObjectClosed);
}

TEST(UARecordset, CancelEndsItAndTheConnectionServesOn)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    for (const QString &sql : {EndlessQuery(), EndlessRows()}) {
        for (const bool inTheMiddle : {false, true}) {
            Listener listener;
            listener.async.OpenRecordset(sql, connection, 2);
            if (inTheMiddle) {
                ASSERT_TRUE(SpinUntil(
                    [&] { return connection->IsBusy() && (sql != EndlessRows() || listener.async.RowsSoFar() > 0); }));
            }
            EXPECT_TRUE(listener.async.IsRunning());
            listener.async.Cancel();
            listener.async.Cancel();                                  // twice is once
            ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); })); // neither has an end of its own
            EXPECT_EQ(listener.number, adErrOperationCancelled);
            EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
            listener.async.Cancel(); // nothing runs any more
        }
    }
}

TEST(UARecordset, AQueuedOneIsCancelledAtOnceAndTheRunningOneGoesOn)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener first, second;
    first.async.OpenRecordset(EndlessQuery(), connection, 2);
    second.async.OpenRecordset(QStringLiteral("SELECT 2"), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return connection->IsBusy(); }));
    second.async.Cancel();
    ASSERT_TRUE(SpinUntil([&] { return second.Ended(); }));
    EXPECT_EQ(second.number, adErrOperationCancelled);
    EXPECT_TRUE(first.heard.empty());
    EXPECT_TRUE(first.async.IsRunning());
    first.async.Cancel();
    ASSERT_TRUE(SpinUntil([&] { return first.Ended(); }));
}

TEST(UARecordset, DestroyedWhileItRunsItCancelsAndSaysNothing)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    int heard = 0;
    {
        UARecordset async;
        QObject::connect(&async, &UARecordset::ErrorOccured, [&](int, const QString &) { ++heard; });
        QObject::connect(&async, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &) { ++heard; });
        async.OpenRecordset(EndlessRows(), connection, 2);
        while (async.RowsSoFar() == 0)
            std::this_thread::yield();
    }
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1"); // waits for the worker to let go
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, 0);
}

TEST(UARecordset, DestroyedWithItsResultInTheMailboxItSaysNothing)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    int heard = 0;
    for (int round = 0; round < 50; ++round) {
        auto async = std::make_unique<UARecordset>();
        QObject::connect(async.get(), &UARecordset::RecordsetOpened, [&](const RecordsetPtr &) { ++heard; });
        async->OpenRecordset(QStringLiteral("SELECT 1"), connection, 2);
        while (round % 2 == 0 && async->IsRunning())
            std::this_thread::yield();
        async.reset();
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, 0);
}

TEST(UARecordset, ANewStatementTakesTheOldOnesPlace)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener listener;
    listener.async.OpenRecordset(EndlessRows(), connection, 2);
    while (listener.async.RowsSoFar() == 0)
        std::this_thread::yield();
    listener.async.OpenRecordset(QStringLiteral("SELECT 'second'"), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"definition", "opened"}));
    EXPECT_EQ(listener.rows->CellText(0, 0), "second");
}

TEST(UARecordset, AReceiverMayOpenTheNextOrDestroyTheSender)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    UARecordset *async = new UARecordset;
    std::vector<QString> results;
    QObject::connect(async, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &rows) {
        results.push_back(rows->CellText(0, 0));
        if (results.size() == 1)
            async->OpenRecordset(QStringLiteral("SELECT 2"), connection, 2);
        else
            delete std::exchange(async, nullptr);
    });
    async->OpenRecordset(QStringLiteral("SELECT 1"), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return results.size() == 2; }));
    EXPECT_EQ(results[1], "2");
    EXPECT_EQ(async, nullptr);

    auto *other = new UARecordset;
    bool opened = false;
    QObject::connect(other, &UARecordset::GotTableDefinition, [&] { delete std::exchange(other, nullptr); });
    QObject::connect(other, &UARecordset::RecordsetOpened, [&] { opened = true; });
    other->OpenRecordset(QStringLiteral("SELECT 1"), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return other == nullptr; }));
    QCoreApplication::processEvents();
    EXPECT_FALSE(opened);
}

TEST(UARecordset, StatementsRunInTheOrderOfTheCallsAndCommitComesLast)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (i INTEGER PRIMARY KEY AUTOINCREMENT, n INT)"));
    connection->BeginTrans();
    std::vector<std::unique_ptr<Listener>> listeners;
    for (int i = 0; i < 10; ++i) {
        listeners.push_back(std::make_unique<Listener>());
        listeners.back()->async.OpenRecordset(
            QStringLiteral(
                "INSERT INTO t (n) SELECT %1 FROM (WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c "
                "WHERE i < 20000) SELECT count(*) FROM c)")
                .arg(i),
            connection, 2);
    }
    connection->CommitTrans(); // waits for all of them
    for (const auto &listener : listeners) {
        EXPECT_TRUE(SpinUntil([&] { return listener->Ended(); }));
        EXPECT_EQ(listener->number, 0) << listener->words.toStdString();
    }
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT group_concat(n) FROM (SELECT n FROM t ORDER BY i)")),
              "0,1,2,3,4,5,6,7,8,9");
    connection->Close(); // what was not committed would be gone
    EXPECT_EQ(Scalar(database.Open(), QStringLiteral("SELECT count(*) FROM t")), "10");
}

TEST(UARecordset, ASynchronousCallBehindItWaitsInTheHandlerWhichCanCancel)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener listener;
    listener.async.OpenRecordset(EndlessQuery(), connection, 2);
    int ticks = 0;
    QString busyWith;
    SetWaitHandler(
        [&](Connection &, const QString &sql, const std::function<bool()> &ready, const std::function<void()> &) {
            busyWith = sql;
            while (!ready()) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 5); // the windows go on painting
                if (++ticks == 5)
                    listener.async.Cancel();
            }
        });
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
    SetWaitHandler({});
    EXPECT_GE(ticks, 5);
    EXPECT_EQ(busyWith, EndlessQuery());
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.number, adErrOperationCancelled);
}

TEST(UARecordset, KeepsTheConnectionAliveUntilItIsDone)
{
    TempDatabase database;
    ConnectionPtr connection = database.Open();
    const std::weak_ptr<Connection> watch = connection;
    Listener listener;
    listener.async.OpenRecordset(QStringLiteral("SELECT 5"), connection, 2);
    connection.reset();
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    EXPECT_EQ(listener.rows->CellText(0, 0), "5");
    EXPECT_TRUE(SpinUntil([&] { return watch.expired(); }));
}

TEST(UARecordset, CloseWaitsForTheStatementThatRuns)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener first, second;
    first.async.OpenRecordset(QStringLiteral("SELECT 1"), connection, 2);
    connection->Close();
    second.async.OpenRecordset(QStringLiteral("SELECT 2"), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return first.Ended() && second.Ended(); }));
    EXPECT_EQ(first.heard.back(), "opened");
    EXPECT_EQ(second.number, adErrObjectClosed);
}

TEST(UARecordset, ReportsProgressWhileItReads)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    Listener listener;
    listener.async.OpenRecordset(EndlessRows(), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.async.RowsSoFar() > 5000 && !listener.heard.empty(); }));
    EXPECT_GT(listener.async.ElapsedSeconds(), 0);
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"definition"})); // before its rows
    listener.async.Cancel();
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
}

TEST(UARecordset, AResultPastTheLimitIsAMessageAndTheProgramGoesOn)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    const qint64 former = ResultLimit();
    SetResultLimit(1 << 20);
    Listener listener;
    listener.async.OpenRecordset(EndlessRows(), connection, 2);
    ASSERT_TRUE(SpinUntil([&] { return listener.Ended(); }));
    SetResultLimit(former);
    EXPECT_EQ(listener.number, adErrOutOfMemory);
    EXPECT_TRUE(listener.words.startsWith(QStringLiteral("The result is too large")));
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
}

} // namespace
