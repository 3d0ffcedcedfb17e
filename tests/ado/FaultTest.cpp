// Every operation meets every fault at every call: it ends with an Error or well, and the program goes on.
#include "../support/FaultDriver.h"
#include "TempDatabase.h"
#include "ado/UARecordset.h"

#include <QCoreApplication>
#include <QElapsedTimer>

using namespace ADODB;

namespace {

QString ConnectionString()
{
    return QStringLiteral("Driver=Fault");
}

ConnectionPtr Filled()
{
    const ConnectionPtr connection = Connection::Create();
    connection->Open(ConnectionString());
    connection->Execute(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT);"
                                       "WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < 2500) "
                                       "INSERT INTO t SELECT i, 'b' || i FROM c"));
    return connection;
}

// Runs `work` with each fault at each of the first calls; whatever happens must be an Error of this layer.
template <class Work> int ErrorsOfAllFaults(Work &&work)
{
    int errors = 0;
    for (const fault::Kind kind : {fault::Kind::Break, fault::Kind::Refuse, fault::Kind::Truncate, fault::Kind::Delay,
                                   fault::Kind::NoMemory, fault::Kind::Foreign}) {
        for (int call = 0; call < 6; ++call) {
            SCOPED_TRACE(testing::Message() << "fault " << int(kind) << " at call " << call);
            fault::Driver driver;
            ConnectionPtr connection = Filled();
            driver.plan.Set(kind, call);
            const auto error = ErrorOf([&] { work(connection); });
            if (error) {
                ++errors;
                EXPECT_FALSE(error->Description.isEmpty());
                if (kind == fault::Kind::NoMemory) {
                    EXPECT_EQ(error->Number, adErrOutOfMemory);
                }
            }
            EXPECT_FALSE(connection->IsBusy());
            if (driver.plan.broken) {
                EXPECT_EQ(connection->State(), adStateClosed);
                driver.plan.Set(fault::Kind::None, -1);
                connection->Open(ConnectionString()); // the same object serves again
                EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 1")), "1");
            } else {
                driver.plan.Set(fault::Kind::None, -1);
                EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) > 2000 FROM t")), "1");
            }
        }
    }
    return errors;
}

TEST(Faults, Execute)
{
    EXPECT_GE(ErrorsOfAllFaults([](const ConnectionPtr &c) { c->Execute(QStringLiteral("SELECT * FROM t")); }), 15);
}

TEST(Faults, Transactions)
{
    EXPECT_GE(ErrorsOfAllFaults([](const ConnectionPtr &c) {
                  c->BeginTrans();
                  c->Execute(QStringLiteral("DELETE FROM t WHERE a = 1"));
                  c->CommitTrans();
                  c->BeginTrans();
                  c->RollbackTrans();
              }),
              15);
}

TEST(Faults, OpenSchema)
{
    ErrorsOfAllFaults([](const ConnectionPtr &c) {
        try {
            (void)c->OpenSchema(adSchemaTables);
        } catch (const Error &error) {
            if (error.Number != adErrFeatureNotAvailable)
                throw;
        }
    });
}

TEST(Faults, RecordsetOpenAndBatch)
{
    EXPECT_GE(ErrorsOfAllFaults([](const ConnectionPtr &c) {
                  const RecordsetPtr rows = Recordset::Create();
                  rows->Open(QStringLiteral("SELECT * FROM t WHERE a < 10"), c, adOpenStatic, adLockBatchOptimistic);
                  rows->Fields()[1].SetValue(QStringLiteral("changed"));
                  rows->Update();
                  rows->MoveNext();
                  rows->Delete();
                  rows->UpdateBatch();
              }),
              15);
}

TEST(Faults, ABatchThatBreaksStaysPendingAndCanBeSentAgain)
{
    fault::Driver driver;
    int raised = 0, written = 0;
    for (int call = 0; call < 6; ++call) { // the question for the key, its rows, the batch, and past its end
        SCOPED_TRACE(call);
        const ConnectionPtr connection = Filled();
        const RecordsetPtr rows = Recordset::Create();
        rows->Open(QStringLiteral("SELECT * FROM t WHERE a < 10"), connection, adOpenStatic, adLockBatchOptimistic);
        rows->Fields()[1].SetValue(QStringLiteral("changed"));
        rows->Update();
        driver.plan.Set(fault::Kind::Refuse, call);
        const int number = NumberOf([&] { rows->UpdateBatch(); });
        driver.plan.Set(fault::Kind::None, -1);
        const QString now = Scalar(connection, QStringLiteral("SELECT b FROM t WHERE a = 1"));
        if (number == 0) { // without the key the row is found by its values
            EXPECT_EQ(now, "changed");
            ++written;
            continue;
        }
        EXPECT_EQ(number, adErrProviderFailed);
        EXPECT_EQ(now, "b1");
        rows->UpdateBatch();
        EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT b FROM t WHERE a = 1")), "changed");
        ++raised;
    }
    EXPECT_GE(raised, 1);
    EXPECT_GE(written, 1);
}

TEST(Faults, OpenFailsWithTheDriversWordsAndCanBeTriedAgain)
{
    fault::Driver driver;
    for (const fault::Kind kind :
         {fault::Kind::Break, fault::Kind::Refuse, fault::Kind::NoMemory, fault::Kind::Foreign}) {
        driver.plan.Set(kind, 0);
        const ConnectionPtr connection = Connection::Create();
        const auto error = ErrorOf([&] { connection->Open(ConnectionString()); });
        ASSERT_TRUE(error);
        EXPECT_EQ(connection->State(), adStateClosed);
        driver.plan.Set(fault::Kind::None, -1);
        connection->Open();
        EXPECT_EQ(connection->State(), adStateOpen);
    }
    const ConnectionPtr connection = Connection::Create();
    const auto error = ErrorOf([&] { connection->Open(ConnectionString(), QStringLiteral("wrong")); });
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->IsLoginFailure());
    connection->Open({}, QStringLiteral("right"), QStringLiteral("p"));
    EXPECT_EQ(connection->ConnectionString(), ConnectionString());
}

TEST(Faults, TheAsynchronousRecordsetReportsEachOneAndLivesOn)
{
    for (const fault::Kind kind : {fault::Kind::Break, fault::Kind::Refuse, fault::Kind::Truncate, fault::Kind::Delay,
                                   fault::Kind::NoMemory, fault::Kind::Foreign}) {
        for (int call = 0; call < 5; ++call) {
            SCOPED_TRACE(testing::Message() << "fault " << int(kind) << " at call " << call);
            fault::Driver driver;
            ConnectionPtr connection = Filled();
            driver.plan.Set(kind, call);
            UARecordset async;
            int opened = 0, failed = 0;
            QObject::connect(&async, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &rows) {
                ++opened;
                EXPECT_EQ(rows->RecordCount(), 2500);
            });
            QObject::connect(&async, &UARecordset::ErrorOccured, [&](int number, const QString &words) {
                ++failed;
                EXPECT_NE(number, 0);
                EXPECT_FALSE(words.isEmpty());
            });
            async.OpenRecordset(QStringLiteral("SELECT * FROM t"), connection, 2);
            QElapsedTimer timer;
            timer.start();
            while (opened + failed == 0 && timer.elapsed() < 10000)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
            EXPECT_EQ(opened + failed, 1);
            EXPECT_FALSE(async.IsRunning());
            EXPECT_FALSE(connection->IsBusy());
        }
    }
}

TEST(Faults, TheMessageIsTheDriversOwn)
{
    fault::Driver driver;
    const ConnectionPtr connection = Filled();
    driver.plan.Set(fault::Kind::Break, 2); // in the middle of the rows
    const auto error = ErrorOf([&] { connection->Execute(QStringLiteral("SELECT * FROM t")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "server closed the connection unexpectedly");
    EXPECT_EQ(error->SQLState, "08S01");
    EXPECT_EQ(error->NativeError, 7);
    EXPECT_EQ(connection->State(), adStateClosed);
    EXPECT_FALSE(connection->InTransaction());
}

} // namespace
