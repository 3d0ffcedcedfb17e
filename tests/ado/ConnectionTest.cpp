// The connection: states, transactions, properties, turns across threads, the wait handler, cancel.
#include "TempDatabase.h"
#include "ado/Command.h"
#include "ado/family/Family.h"
#include "tests/support/Await.h"

#include <condition_variable>
#include <mutex>
#include <thread>

using namespace ADODB;

namespace {

QString EndlessSql()
{
    return QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) SELECT count(*) FROM c");
}

struct NoHandler
{ // whatever a test installs is gone after it
    ~NoHandler() { SetWaitHandler({}); }
};

TEST(Connection, ClosedItRaises)
{
    const ConnectionPtr connection = Connection::Create();
    EXPECT_EQ(connection->State(), adStateClosed);
    EXPECT_EQ(connection->ConnectionString(), "");
    EXPECT_EQ(NumberOf([&] { connection->Execute(QStringLiteral("SELECT 1")); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { connection->BeginTrans(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { connection->CommitTrans(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { connection->OpenSchema(adSchemaTables); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { connection->Close(); }), adErrObjectClosed);
    EXPECT_EQ(NumberOf([&] { connection->Property(QStringLiteral("DBMS Name")); }), adErrItemNotFound);
    connection->Cancel(); // nothing to cancel
    EXPECT_FALSE(connection->IsBusy());
    EXPECT_EQ(NumberOf([] { Command().Execute(); }), adErrObjectClosed);
}

TEST(Connection, OpensClosesAndOpensAgain)
{
    TempDatabase database;
    const ConnectionPtr connection = Connection::Create();
    connection->SetConnectionString(database.ConnectionString());
    connection->SetCursorLocation(3);
    connection->Open();
    EXPECT_EQ(connection->State(), adStateOpen);
    EXPECT_EQ(connection->CursorLocation(), 3);
    EXPECT_EQ(NumberOf([&] { connection->Open(); }), adErrObjectOpen);
    EXPECT_EQ(NumberOf([&] { connection->SetConnectionString(QStringLiteral("x")); }), adErrObjectOpen);
    connection->Close();
    EXPECT_EQ(connection->State(), adStateClosed);
    connection->Open();
    Command command;
    command.ActiveConnection = connection;
    command.CommandText = QStringLiteral("SELECT 7");
    EXPECT_EQ(command.Execute()->CellText(0, 0), "7");
}

TEST(Connection, TellsItsProperties)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    EXPECT_EQ(connection->Family().Id, DatabaseFamily::SQLite);
    EXPECT_EQ(connection->Property(QStringLiteral("DBMS Name")).toString(), "SQLite");
    EXPECT_TRUE(connection->Property(QStringLiteral("DBMS Version")).toString().startsWith(u'3'));
    EXPECT_EQ(connection->Property(QStringLiteral("Identifier Quote")).toString(), "\"");
    EXPECT_EQ(connection->Property(QStringLiteral("Current Catalog")).toString(), "");
    EXPECT_EQ(connection->Property(QStringLiteral("Data Provider")).toString(), "MSDASQL");
    EXPECT_EQ(NumberOf([&] { connection->Property(QStringLiteral("none such")); }), adErrItemNotFound);
    connection->SetProperty(QStringLiteral("Mine"), 5);
    EXPECT_EQ(connection->Property(QStringLiteral("MINE")).toInt(), 5);
}

TEST(Connection, TransactionsCommitAndRollBack)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (a)"));
    connection->BeginTrans();
    EXPECT_TRUE(connection->InTransaction());
    connection->Execute(QStringLiteral("INSERT INTO t VALUES (1)"));
    EXPECT_EQ(NumberOf([&] { connection->BeginTrans(); }), adErrNestedTransaction);
    connection->CommitTrans();
    EXPECT_FALSE(connection->InTransaction());
    connection->BeginTrans();
    connection->Execute(QStringLiteral("INSERT INTO t VALUES (2)"));
    connection->RollbackTrans();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) FROM t")), "1");
    EXPECT_EQ(NumberOf([&] { connection->CommitTrans(); }), adErrNoTransaction);
    EXPECT_EQ(NumberOf([&] { connection->RollbackTrans(); }), adErrNoTransaction);
}

TEST(Connection, ATypedBeginIsSeenAndATypedCommitToo)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("BEGIN"));
    EXPECT_TRUE(connection->InTransaction());
    EXPECT_EQ(NumberOf([&] { connection->BeginTrans(); }), adErrNestedTransaction);
    connection->CommitTrans();
    EXPECT_FALSE(connection->InTransaction());
    connection->BeginTrans();
    connection->Execute(QStringLiteral("COMMIT"));
    EXPECT_FALSE(connection->InTransaction());
    EXPECT_EQ(NumberOf([&] { connection->RollbackTrans(); }), adErrNoTransaction);
    connection->BeginTrans();
    EXPECT_NE(NumberOf([&] { connection->Execute(QStringLiteral("ROLLBACK; nonsense")); }), 0);
    EXPECT_FALSE(connection->InTransaction());
}

TEST(Connection, LettingGoOfItRollsBack)
{
    TempDatabase database;
    database.Open()->Execute(QStringLiteral("CREATE TABLE t (a)"));
    {
        const ConnectionPtr connection = database.Open();
        connection->BeginTrans();
        connection->Execute(QStringLiteral("INSERT INTO t VALUES (1)"));
    }
    EXPECT_EQ(Scalar(database.Open(), QStringLiteral("SELECT count(*) FROM t")), "0");
}

TEST(Turns, AreServedInTheOrderInWhichTheyWereTaken)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    constexpr int count = 8;
    std::vector<std::unique_ptr<Connection::Turn>> turns;
    for (int i = 0; i < count; ++i)
        turns.push_back(std::make_unique<Connection::Turn>(connection, QString::number(i)));
    std::mutex lock;
    std::vector<int> served;
    std::atomic<int> asking = 0;
    std::vector<std::thread> threads;
    for (int i = count - 1; i >= 0; --i) { // the last one asks first
        threads.emplace_back([&, i] {
            // Nobody begins before all do, but for the last one, who is there first.
            ++asking;
            while (i != count - 1 && asking < count)
                std::this_thread::yield();
            turns[size_t(i)]->Begin();
            {
                const std::lock_guard guard(lock);
                served.push_back(i);
            }
            turns[size_t(i)].reset();
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(served, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_FALSE(connection->IsBusy());
}

TEST(Turns, SayWhatTheyRun)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    EXPECT_EQ(connection->BusyWith(), "");
    Connection::Turn turn(connection, QStringLiteral("SELECT 1"));
    EXPECT_FALSE(connection->IsBusy()); // taken, not yet served
    EXPECT_THROW(turn.Driver(), Error);
    turn.Begin();
    turn.Begin(); // once more changes nothing
    EXPECT_TRUE(connection->IsBusy());
    EXPECT_EQ(connection->BusyWith(), "SELECT 1");
    EXPECT_EQ(turn.Driver().ProductName(), "SQLite");
    // A second one on the same thread could never be served: an error instead of a stand-still.
    EXPECT_EQ(NumberOf([&] { connection->Execute(QStringLiteral("SELECT 2")); }), adErrObjectOpen);
}

TEST(Turns, AWaitingOneCanBeCancelledAndHarmsNobody)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    auto first = std::make_unique<Connection::Turn>(connection, QStringLiteral("first"));
    first->Begin();
    Connection::Turn second(connection, QStringLiteral("second"));
    int number = 0;
    std::atomic<bool> waiting = false;
    std::thread waiter([&] {
        waiting = true;
        number = NumberOf([&] { second.Begin(); });
    });
    Await([&] { return waiting.load(); });
    second.Cancel(); // it may just as well not have begun to wait
    waiter.join();
    EXPECT_EQ(number, adErrOperationCancelled);
    EXPECT_EQ(first->Driver().Execute(QStringLiteral("SELECT 1")).RecordsAffected, -1); // still well
    first.reset();
}

TEST(Turns, ManyThreadsShareOneConnection)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (a INT)"));
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i)
        threads.emplace_back([connection] {
            for (int k = 0; k < 40; ++k) {
                connection->Execute(QStringLiteral("INSERT INTO t SELECT count(*) FROM t"));
                (void)connection->BusyWith();
                (void)connection->InTransaction();
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    // Each statement saw all before it: the numbers 0 to 239, each once.
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(DISTINCT a) || ' ' || max(a) FROM t")), "240 239");
}

TEST(WaitHandler, IsCalledOnItsThreadWithTheStatementThatHolds)
{
    NoHandler clean;
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    QString busyWith;
    std::atomic<int> calls = 0;
    SetWaitHandler(
        [&](Connection &, const QString &sql, const std::function<bool()> &ready, const std::function<void()> &) {
            busyWith = sql;
            EXPECT_FALSE(ready());
            ++calls;
            while (!ready())
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
    auto turn = std::make_unique<Connection::Turn>(connection, QStringLiteral("the long one"));
    std::thread worker([&] {
        turn->Begin();
        Await([&] { return calls == 1; });
        turn.reset();
    });
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 3")), "3");
    worker.join();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(busyWith, "the long one");
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 4")), "4");
    EXPECT_EQ(calls, 1); // an idle connection needs no waiting
}

TEST(WaitHandler, OtherThreadsBlockAndAHandlerThatReturnsTooEarlyDoesNoHarm)
{
    NoHandler clean;
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    std::atomic<int> calls = 0;
    SetWaitHandler(
        [&](Connection &, const QString &, const std::function<bool()> &, const std::function<void()> &) { ++calls; });
    auto turn = std::make_unique<Connection::Turn>(connection, QStringLiteral("held"));
    turn->Begin();
    std::atomic<bool> asking = false;
    std::thread other([&] {
        asking = true;
        EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
    });
    Await([&] { return asking.load(); });
    turn.reset();
    other.join();
    EXPECT_EQ(calls, 0);

    auto again = std::make_unique<Connection::Turn>(connection, QStringLiteral("held"));
    std::thread holder([&] {
        again->Begin();
        Await([&] { return calls == 1; });
        again.reset();
    });
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 2")), "2");
    holder.join();
    EXPECT_EQ(calls, 1);
}

TEST(WaitHandler, AnEventThatNeedsTheConnectionGoesBeforeTheCallThatWaits)
{
    NoHandler clean;
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    std::vector<std::string> order;
    std::atomic<int> depth = 0;
    SetWaitHandler(
        [&](Connection &, const QString &, const std::function<bool()> &ready, const std::function<void()> &) {
            if (depth++ == 0) { // an event inside the waiting
                Scalar(connection, QStringLiteral("SELECT 1"));
                order.push_back("inner");
            }
            while (!ready())
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        });
    auto turn = std::make_unique<Connection::Turn>(connection, QStringLiteral("held"));
    std::thread holder([&] {
        turn->Begin();
        Await([&] { return depth == 2; }); // both wait
        turn.reset();
    });
    Scalar(connection, QStringLiteral("SELECT 2"));
    order.push_back("outer");
    holder.join();
    EXPECT_EQ(order, (std::vector<std::string>{"inner", "outer"}));
}

TEST(WaitHandler, OneThatRaisesGivesTheTurnBack)
{
    NoHandler clean;
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    SetWaitHandler([](Connection &, const QString &, const std::function<bool()> &, const std::function<void()> &) {
        throw Error(adErrOperationCancelled, QStringLiteral("no patience"));
    });
    auto turn = std::make_unique<Connection::Turn>(connection, QStringLiteral("held"));
    EXPECT_EQ(NumberOf([&] { connection->Execute(QStringLiteral("SELECT 1")); }), adErrOperationCancelled);
    turn.reset();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 2")), "2");
}

TEST(Cancel, FromAnotherThreadAgainAndAgain)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    for (int round = 0; round < 5; ++round) {
        std::thread canceller([&] {
            Await([&] { return connection->IsBusy(); });
            connection->Cancel();
        });
        EXPECT_EQ(NumberOf([&] { connection->Execute(EndlessSql()); }), adErrOperationCancelled);
        canceller.join();
        EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
    }
}

TEST(Close, WhileAnotherThreadRunsWaitsForItsEnd)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    std::string result;
    std::thread runner([&] {
        result = Scalar(connection,
                        QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < "
                                       "200000) SELECT count(*) FROM c"))
                     .toStdString();
    });
    Await([&] { return connection->IsBusy() || !result.empty(); });
    connection->Close();
    runner.join();
    EXPECT_EQ(result, "200000");
    EXPECT_EQ(connection->State(), adStateClosed);
}

TEST(ResultLimit, StopsAResultThatIsTooLarge)
{
    struct Former
    {
        qint64 limit = ResultLimit();
        ~Former() { SetResultLimit(limit); }
    } former;
    EXPECT_GT(former.limit, 0);
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    SetResultLimit(1 << 20);
    const auto error = ErrorOf([&] {
        connection->Execute(QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) "
                                           "SELECT i, 'some text of the row ' || i FROM c"));
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number, adErrOutOfMemory);
    EXPECT_TRUE(error->Description.startsWith(QStringLiteral("The result is too large")));
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
    SetResultLimit(0); // no limit
    EXPECT_EQ(connection->Execute(QStringLiteral("SELECT hex(zeroblob(2000000))"))->RecordCount(), 1);
}

} // namespace
