// A piece of work on a connection: what it holds, what a cancel of it ends, and who is not touched.
#include "ado/Claim.h"
#include "ado/Recordset.h"
#include "ado/UARecordset.h"
#include "tests/ado/TempDatabase.h"
#include "tests/support/Await.h"
#include "tests/support/ScriptedDriver.h"

using namespace ADODB;

namespace {

class Claims : public testing::Test
{
protected:
    Claims()
    {
        m_driver.OnExecute = [this](const QString &sql) {
            if (sql == u"stop here")
                m_gate.Pass();
            if (sql == u"until cancelled")
                m_driver.RunUntilCancelled(60);
            return ExecuteResult{};
        };
        m_driver.OnTransaction = [](const QString &) {};
        m_connection = Connection::Create();
        m_connection->Open(QStringLiteral("Scripted"));
    }
    void Execute(const QString &sql) { m_connection->Execute(sql); }

    ScriptedDriver m_driver;
    Gate m_gate;
    ConnectionPtr m_connection;
};

// Another's statement came between those of a transaction's run, joined it, and was rolled back with it.
TEST_F(Claims, AWholeOneKeepsTheConnectionBetweenItsStatements)
{
    std::thread holder([&] {
        const auto claim = Claim::On(m_connection, QStringLiteral("a run"), Claim::Whole);
        const Claim::Scope scope(claim);
        m_connection->BeginTrans();
        Execute(QStringLiteral("stop here"));
        Execute(QStringLiteral("second"));
        m_connection->CommitTrans();
    });
    Await([&] { return m_gate.Arrived(); });
    std::thread other([&] { Execute(QStringLiteral("other")); });
    m_gate.Open();
    holder.join();
    other.join();
    EXPECT_EQ(m_driver.Log(), (QStringList{"BEGIN", "stop here", "second", "COMMIT", "other"}));
    EXPECT_FALSE(m_connection->HasWork());
}

TEST_F(Claims, OneOfSingleTurnsLetsOthersIn)
{
    const auto claim = Claim::On(m_connection, QStringLiteral("a run"));
    std::thread worker([&] {
        const Claim::Scope scope(claim);
        Execute(QStringLiteral("stop here"));
        Await([&] { return m_driver.Log().contains(QStringLiteral("other")); });
        Execute(QStringLiteral("second"));
    });
    Await([&] { return m_gate.Arrived(); });
    std::thread other([&] { Execute(QStringLiteral("other")); });
    m_gate.Open();
    worker.join();
    other.join();
    EXPECT_EQ(m_driver.Log(), (QStringList{"stop here", "other", "second"}));
}

// A cancel stopped one statement, and those behind it still ran.
TEST_F(Claims, ACancelEndsAllOfItAndNothingFurtherReachesTheServer)
{
    const auto claim = Claim::On(m_connection, QStringLiteral("a run"), Claim::Whole);
    int first = 0, second = 0;
    std::thread worker([&] {
        const Claim::Scope scope(claim);
        first = NumberOf([&] { Execute(QStringLiteral("until cancelled")); });
        second = NumberOf([&] { Execute(QStringLiteral("second")); });
        const Claim::Shield shield; // what gives back what was begun
        Execute(QStringLiteral("taken back"));
    });
    Await([&] { return !m_driver.Log().isEmpty(); });
    claim->Cancel();
    worker.join();
    EXPECT_EQ(first, adErrOperationCancelled);
    EXPECT_EQ(second, adErrOperationCancelled);
    EXPECT_EQ(m_driver.Log(), (QStringList{"until cancelled", "taken back"}));
}

// Escape during the wait for another's statement stopped that one unasked.
TEST_F(Claims, GivingUpTheWaitTouchesNobodyElse)
{
    std::thread holder([&] { Execute(QStringLiteral("stop here")); });
    Await([&] { return m_gate.Arrived(); });
    const auto claim = Claim::On(m_connection, QStringLiteral("waits"));
    int number = 0;
    std::thread waiter([&] {
        const Claim::Scope scope(claim);
        number = NumberOf([&] { Execute(QStringLiteral("never")); });
    });
    Await([&] { return claim->WaitsFor() == u"stop here"; });
    claim->Cancel();
    waiter.join();
    EXPECT_EQ(number, adErrOperationCancelled);
    EXPECT_EQ(m_driver.Cancels, 0);
    EXPECT_EQ(m_connection->BusyWith(), u"stop here");
    m_gate.Open();
    holder.join();
    EXPECT_EQ(m_driver.Log(), QStringList{"stop here"});
}

// The rows of a run are a part of it: they keep the connection, and the commit comes behind them.
TEST_F(Claims, AsynchronousRowsBelongToTheWorkThatBeganThem)
{
    auto claim = Claim::On(m_connection, QStringLiteral("a run"), Claim::Whole);
    UARecordset rows;
    {
        const Claim::Scope scope(claim);
        rows.OpenRecordset(QStringLiteral("stop here"), m_connection, 3);
    }
    Await([&] { return m_gate.Arrived(); });
    claim->Leave();
    claim.reset();
    std::thread other([&] { Execute(QStringLiteral("other")); });
    EXPECT_TRUE(m_connection->IsBusy());
    m_gate.Open();
    other.join();
    EXPECT_EQ(m_driver.Log(), (QStringList{"stop here", "other"}));
}

TEST_F(Claims, ACancelOfItsRowsEndsTheWorkWhileMoreOfItMayCome)
{
    const auto claim = Claim::On(m_connection, QStringLiteral("a run"), Claim::Whole);
    UARecordset rows;
    {
        const Claim::Scope scope(claim);
        rows.OpenRecordset(QStringLiteral("until cancelled"), m_connection, 3);
    }
    Await([&] { return !m_driver.Log().isEmpty(); });
    rows.Cancel();
    Await([&] { return !rows.IsRunning(); });
    EXPECT_TRUE(claim->Cancelled());
}

// A cancel waited for the network where it was asked for: a silent server froze the window, and one stuck cancel
// stopped all others.
TEST_F(Claims, AStuckCancelHoldsUpNeitherItsCallerNorAnotherConnection)
{
    Gate stuck;
    m_driver.OnExecute = [&](const QString &) {
        m_gate.Pass();
        return ExecuteResult{};
    };
    m_driver.OnCancel = [&] { stuck.Pass(); };
    std::thread runs([&] { Execute(QStringLiteral("silent")); });
    Await([&] { return m_gate.Arrived(); });
    m_connection->Cancel(); // returns although the driver does not
    Await([&] { return stuck.Arrived(); });
    m_connection->CancelAll();

    TempDatabase database;
    const ConnectionPtr second = database.Open();
    int number = 0;
    std::thread endless([&] {
        number = NumberOf([&] {
            second->Execute(QStringLiteral(
                "WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) SELECT count(*) FROM c"));
        });
    });
    Await([&] { return second->IsBusy(); });
    second->Cancel();
    endless.join();
    EXPECT_EQ(number, adErrOperationCancelled);
    EXPECT_TRUE(Connection::AnyWork()); // the first one hangs on
    stuck.Open();
    m_gate.Open();
    runs.join();
    EXPECT_FALSE(Connection::AnyWork());
}

// Some drivers leave a lock taken after an error: on another thread the next statement then waited for ever.
TEST_F(Claims, TheDriverIsSpokenToOnOneThreadFromFirstToLast)
{
    std::mutex lock;
    std::set<std::thread::id> seen;
    const auto note = [&] {
        const std::lock_guard held(lock);
        seen.insert(std::this_thread::get_id());
    };
    m_driver.OnConnect = [&](const QString &, const QString &, const QString &) { note(); };
    m_driver.OnExecute = [&](const QString &) {
        note();
        return ExecuteResult{};
    };
    m_driver.OnTransaction = [&](const QString &) { note(); };
    m_driver.OnCatalogue = [&](SchemaEnum) {
        note();
        return nullptr;
    };
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Scripted"));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            connection->Execute(QStringLiteral("a"));
            Connection::Turn turn(connection, QStringLiteral("b"));
            turn.Begin();
            turn.Driver().Execute(QStringLiteral("b"));
            turn.Driver().Catalogue(adSchemaTables, {});
        });
    for (std::thread &thread : threads)
        thread.join();
    connection->BeginTrans();
    connection->RollbackTrans();
    UARecordset rows;
    rows.OpenRecordset(QStringLiteral("c"), connection, 2);
    Await([&] { return !rows.IsRunning(); });
    EXPECT_EQ(seen.size(), 1u);
    EXPECT_FALSE(seen.contains(std::this_thread::get_id()));
}

} // namespace
