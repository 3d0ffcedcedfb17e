// What passes between the interface thread and the workers: the pump, the wait handler, works that speak back, works
// that are left behind; over a scripted driver, and over the drivers of real servers. Run under the thread sanitizer as
// well (scripts/test-threads).
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "ado/UARecordset.h"
#include "session/Pump.h"
#include "session/PumpUntil.h"
#include "session/Status.h"
#include "session/Work.h"
#include "tests/support/ScriptedDriver.h"
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using namespace ADODB;

class Board : public StatusBoard
{
public:
    Board() { Install(this); }
    ~Board() override { Install(nullptr); }
    void SetStatus(const QString &text) override { Status = text; }
    void SetStop(const std::function<void()> &stop) override { Stop = stop; }
    QString Status;
    std::function<void()> Stop;
};

class Threads : public testing::Test
{
protected:
    Threads()
    {
        m_driver.OnExecute = [this](const QString &sql) {
            if (sql == u"slow")
                m_driver.RunUntilCancelled(20);
            if (sql == u"gate")
                m_gate.Pass();
            ExecuteResult result;
            result.RecordsAffected = 7;
            result.Rows =
                std::make_unique<ScriptedRows>(QStringList(QStringLiteral("a")), QList<QStringList>(2000, {sql}));
            return result;
        };
        InstallWaitHandler();
    }
    ~Threads() override
    {
        RemoveWaitHandler();
        SetQuickWait(m_quick);
    }

    ConnectionPtr Open(const QString &text = QStringLiteral("Scripted")) const
    {
        const ConnectionPtr connection = Connection::Create();
        connection->Open(text);
        return connection;
    }
    // Once, on the event loop, as soon as that is so.
    void When(const std::function<bool()> &ready, const std::function<void()> &act)
    {
        auto *look = new QTimer(&m_here);
        QObject::connect(look, &QTimer::timeout, &m_here, [look, ready, act] {
            if (!ready())
                return;
            delete look;
            act();
        });
        look->start(1);
    }

    const int m_quick = SetQuickWait(0); // every work lets events in between
    Board m_board;
    ScriptedDriver m_driver;
    Gate m_gate;
    QObject m_here;
};

TEST_F(Threads, AWorkSpeaksToTheInterfaceThreadAgainAndAgain)
{
    const auto work = std::make_shared<Work>();
    int posted = 0, called = 0;
    std::vector<int> made;
    work->Run({}, [&] {
        for (int i = 0; i < 500; ++i) {
            made.push_back(i);
            work->Post([&] { ++posted; });
            work->OnWindow([&] { called += made.back() == i; });
        }
    });
    EXPECT_EQ(posted, 500);
    EXPECT_EQ(called, 500);
}

TEST_F(Threads, AStatementIsStoppedInTheMiddle)
{
    const ConnectionPtr connection = Open();
    for (int round = 0; round < 5; ++round) {
        m_driver.ClearLog();
        When([&] { return m_driver.Log().contains(QStringLiteral("slow")); }, [&] { m_board.Stop(); });
        EXPECT_THROW(ExecutePumped(connection, QStringLiteral("slow")), Error);
        EXPECT_EQ(ExecutePumped(connection, QStringLiteral("quick"))->RecordCount(), 2000);
    }
}

TEST_F(Threads, ACallBehindAnotherOneIsServedAfterIt)
{
    const ConnectionPtr connection = Open();
    UARecordset running;
    RecordsetPtr rows;
    QObject::connect(&running, &UARecordset::RecordsetOpened, &m_here, [&](const RecordsetPtr &all) { rows = all; });
    running.OpenRecordset(QStringLiteral("gate"), connection, 2);
    When([&] { return m_board.Status.endsWith(QStringLiteral("(Esc gives up waiting)")); }, [&] { m_gate.Open(); });
    EXPECT_EQ(connection->Execute(QStringLiteral("behind"))->CellText(1999, 0), u"behind");
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows != nullptr; }));
    EXPECT_EQ(rows->CellText(0, 0), u"gate");
}

TEST_F(Threads, AWaitIsGivenUpAlone)
{
    const ConnectionPtr connection = Open();
    UARecordset running;
    running.OpenRecordset(QStringLiteral("gate"), connection, 2);
    When([&] { return m_board.Status.endsWith(QStringLiteral("(Esc gives up waiting)")); }, [&] { m_board.Stop(); });
    EXPECT_THROW(connection->Execute(QStringLiteral("never")), Error);
    EXPECT_EQ(m_driver.Cancels, 0);
    m_gate.Open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !running.IsRunning(); }));
    EXPECT_FALSE(m_driver.Log().contains(QStringLiteral("never")));
}

TEST_F(Threads, WhatIsLeftBehindOwnsWhatItTouches)
{
    const auto gate = std::make_shared<Gate>();
    const auto ended = std::make_shared<std::atomic<int>>(0);
    When([&] { return gate->Arrived(); }, [&] { m_board.Stop(); });
    EXPECT_FALSE(RunAbandonable(QStringLiteral("Reading ..."), [gate, ended] {
        gate->Pass();
        ++*ended;
    }));
    gate->Open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return *ended == 1; }));
}

TEST_F(Threads, TheProgramsEndStopsTheRunningAndTheWaiting)
{
    const ConnectionPtr connection = Open();
    UARecordset running;
    running.OpenRecordset(QStringLiteral("slow"), connection, 2);
    When([&] { return m_board.Status.endsWith(QStringLiteral("(Esc gives up waiting)")); }, [] { EndPumps(true); });
    EXPECT_THROW(ExecutePumped(connection, QStringLiteral("waiting")), Error);
    EndPumps(false);
    EXPECT_TRUE(QTest::qWaitFor([] { return !Connection::AnyWork(); }));
    EXPECT_FALSE(m_driver.Log().contains(QStringLiteral("waiting")));
}

// The way over ODBC: the driver's library speaks on the connection's own thread, the cancel comes from another one.
struct Way
{
    const char *Variable, *Long;
};

class ThreadsOverOdbc : public Threads, public testing::WithParamInterface<Way>
{
};
std::string WayName(const testing::TestParamInfo<Way> &way)
{
    constexpr const char *names[] = {"SqliteOdbc", "Postgres", "MariaDb"};
    return names[way.index];
}

constexpr Way kWays[] = {
    {"BRINDLEWICK_TEST_SQLITE_ODBC",
     "WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g) SELECT count(*) FROM g"},
    {"BRINDLEWICK_TEST_POSTGRES", "SELECT pg_sleep(60)"},
    {"BRINDLEWICK_TEST_MARIADB",
     "SELECT COUNT(*) FROM seq_1_to_100000 a JOIN seq_1_to_100000 b ON (a.seq + b.seq) % 7 = 3"},
};
INSTANTIATE_TEST_SUITE_P(Over, ThreadsOverOdbc, testing::ValuesIn(kWays), WayName);

TEST_P(ThreadsOverOdbc, StatementsRunAreReadAndAreStopped)
{
    const QString string = qEnvironmentVariable(GetParam().Variable);
    if (string.isEmpty()) {
        if (qEnvironmentVariableIntValue("BRINDLEWICK_TEST_SERVERS") == 1)
            FAIL() << GetParam().Variable << " names no server, and servers were promised";
        GTEST_SKIP() << GetParam().Variable << " names no server";
    }
    const ConnectionPtr connection = Open(string);
    const QString sql = QString::fromLatin1(GetParam().Long);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(ExecutePumped(connection, QStringLiteral("SELECT 6 * 7"))->CellText(0, 0), u"42");
        UARecordset running;
        int number = 0;
        QObject::connect(&running, &UARecordset::ErrorOccured, &m_here,
                         [&](int error, const QString &) { number = error; });
        running.OpenRecordset(sql, connection, 2);
        ASSERT_TRUE(QTest::qWaitFor([&] { return connection->IsBusy(); }));
        running.Cancel();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !running.IsRunning() && number != 0; }, 20000));
        EXPECT_EQ(number, adErrOperationCancelled);
        When([&] { return connection->IsBusy(); }, [&] { m_board.Stop(); });
        EXPECT_THROW(ExecutePumped(connection, sql), Error);
    }
    connection->Close();
}

} // namespace
