// Batches of rows in transactions and under a cancel, and what is bound for a row.
#include "tests/ado/ConformanceOneRow.h"
#include <atomic>
#include <chrono>
#include <thread>

using namespace ADODB;

namespace conformance {

TEST_P(ConformanceOfOneRow, ABatchInATypedTransactionIsPartOfIt)
{
    Run(QStringLiteral("CREATE TABLE e (a INTEGER, b INTEGER)"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 1), (2, 2), (3, 3)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY a"));
    Run(QStringLiteral("BEGIN"));
    for (qint64 position = 1; position <= 3; ++position)
        Set(rows, position, 1, 7);
    rows->UpdateBatch();
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE b = 7")).ToInt64(), 3);
    Run(QStringLiteral("ROLLBACK"));
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE b = 7")).ToInt64(), 0);
}

// Each row was a commit of its own: 20,000 insertions took minutes.
TEST_P(ConformanceOfOneRow, ABatchIsOneTransactionOverSqlite)
{
    if (!IsSqlite())
        return;
    Run(QStringLiteral("CREATE TABLE e (id INTEGER PRIMARY KEY, a INTEGER CHECK (a <> 500))"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    for (int i = 1; i <= 3000; ++i) {
        rows->AddNew();
        rows->Fields()[0].SetValue(i);
        rows->Fields()[1].SetValue(i);
        rows->Update();
    }
    // A reader of the same file sees none of the rows, or all.
    const ConnectionPtr reader = NewConnection();
    std::atomic<bool> ended{false};
    std::vector<qint64> seen;
    std::thread other([&] {
        while (!ended)
            try {
                seen.push_back(reader->Execute(QStringLiteral("SELECT COUNT(*) FROM e"))->CellValue(0, 0).ToInt64());
            } catch (const Error &) {
            }
    });
    ErrorFrom([&] { rows->UpdateBatch(); });
    ended = true;
    other.join();
    for (const qint64 count : seen)
        EXPECT_TRUE(count == 0 || count == 2999) << count;
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e")).ToInt64(), 2999);
}

// A cancel that came before the server had anything to cancel was lost, and the batch ran to its end.
TEST_P(ConformanceOfOneRow, ABatchCanBeStoppedAtAnyMoment)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, a INTEGER)"));
    for (const bool inTransaction : {false, true}) {
        for (const qint64 after : {0, 1, 1500}) {
            SCOPED_TRACE(after);
            Run(QStringLiteral("DELETE FROM e"));
            if (inTransaction)
                m_connection->BeginTrans();
            qint64 written = 0;
            {
                Connection::Turn turn(m_connection, QStringLiteral("batch"));
                turn.Begin();
                Batch batch;
                batch.Sql = QStringLiteral("INSERT INTO e VALUES (?, ?)");
                batch.Types = {adInteger, adInteger};
                qint64 next = 0;
                batch.Next = [&](std::vector<ColumnStore> &columns, qint64 most) {
                    if (next >= after)
                        turn.Cancel(); // in the middle: between two blocks, when no statement runs
                    (void)turn.Driver();
                    for (const qint64 end = next + most; next < end; ++next)
                        for (ColumnStore &column : columns)
                            column.AppendInt64(next);
                    return most;
                };
                batch.Refused = [](qint64, const Error &error) { ADD_FAILURE() << error.what(); };
                batch.Written = [&](qint64 rows) { written = rows; };
                EXPECT_EQ(ErrorFrom([&] { turn.Driver().ExecuteBatch(batch); }).Number, adErrOperationCancelled);
            }
            if (inTransaction)
                m_connection->CommitTrans();
            EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e")).ToInt64(), written); // what was told is true
        }
    }
}

// MariaDB: it ended as a success, or as a "Function sequence error".
TEST_P(ConformanceOfOneRow, ACancelledStatementWithoutRowsIsCancelled)
{
    const QString sql =
        Pick({"CREATE TABLE e AS WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < 400000000) "
              "SELECT count(*) FROM g",
              "DO $$BEGIN PERFORM pg_sleep(60); END$$", "DO SLEEP(60)"});
    for (int round = 0; round < 3; ++round) {
        std::atomic<bool> ended{false};
        std::thread other([&] {
            while (!ended) { // as callers do: until the turn has ended
                m_connection->Cancel();
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        });
        const Error error = ErrorOf(sql);
        ended = true;
        other.join();
        EXPECT_EQ(error.Number, adErrOperationCancelled) << error.what();
        EXPECT_EQ(Cell(QStringLiteral("SELECT 6 * 7")).ToInt64(), 42);
    }
}

// Bytes past what the driver's own type holds became their words: "0x00...".
TEST_P(ConformanceOfOneRow, ManyBytesStayBytes)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, b %1)")
            .arg(Pick({"LONGBLOB", "BYTEA", "LONGBLOB"})));
    Run(QStringLiteral("INSERT INTO e VALUES (1, NULL)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    EXPECT_EQ(rows->Column(1).Type, adBinary);
    QByteArray bytes(3'000'000, '\0');
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(i * 7 % 256);
    Set(rows, 1, 1, bytes);
    rows->UpdateBatch();
    EXPECT_EQ(
        Cell(Pick({"SELECT length(b) FROM e", "SELECT octet_length(b) FROM e", "SELECT length(b) FROM e"})).ToInt64(),
        bytes.size());
    EXPECT_TRUE(Cell(QStringLiteral("SELECT b FROM e")) == Value(bytes));
    Set(rows, 1, 1, QByteArray("")); // found by the long ones, and an empty one is no null
    rows->UpdateBatch();
    EXPECT_FALSE(Cell(QStringLiteral("SELECT b FROM e")).IsNull());
    EXPECT_EQ(Cell(QStringLiteral("SELECT b FROM e")).ToText(), Value(QByteArray("")).ToText());
}

} // namespace conformance
