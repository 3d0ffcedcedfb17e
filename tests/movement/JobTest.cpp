// Whole imports and transfers without a window: stopped, refused and broken at each of their steps, what is told is
// what is there, and nothing is left open.
#include "ado/Claim.h"
#include "ado/Error.h"
#include "movement/logic/ExactFit.h"
#include "movement/logic/ImportJob.h"
#include "movement/logic/PreviewQueries.h"
#include "movement/logic/TransferJob.h"
#include "tests/support/FaultDriver.h"
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Jobs : testing::Test
{
    QTemporaryDir folder;
    ImportProgress progress;

    ADODB::ConnectionPtr Database(const QString &name = QStringLiteral("a")) const
    {
        const auto connection = ADODB::Connection::Create();
        connection->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=%1/%2.sqlite").arg(folder.path(), name));
        return connection;
    }
    QString Lines(int count, const QByteArray &name = "n") const
    {
        QFile file(folder.filePath(QStringLiteral("flat.csv")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("id,name\n");
        for (int i = 1; i <= count; ++i)
            file.write(QByteArray::number(i) + ',' + name + '\n');
        return file.fileName();
    }
    static ImportOrder Order(const ADODB::ConnectionPtr &connection, const QString &file, const QString &tolerance)
    {
        return {connection, [] { return QStringLiteral("SELECT * FROM goods WHERE 1=0"); },
                file,       QStringLiteral(","),
                true,       {QStringLiteral("id"), QStringLiteral("name")},
                tolerance};
    }
    static qint64 Count(const ADODB::ConnectionPtr &connection)
    {
        return connection->Execute(QStringLiteral("SELECT COUNT(*) FROM goods"))->CellValue(0, 0).ToInt64();
    }
};

} // namespace

TEST_F(Jobs, StoppedAtAnyMomentAnImportLeavesNothingOpenAndTellsWhatIsIn)
{
    const auto connection = Database();
    connection->Execute(QStringLiteral("CREATE TABLE goods(id INTEGER PRIMARY KEY, name TEXT)"));
    const QString file = Lines(5);
    bool finished = false;
    for (int stopAt = 1; !finished; ++stopAt) {
        ASSERT_LT(stopAt, 100);
        connection->Execute(QStringLiteral("DELETE FROM goods"));
        int asked = 0;
        const ImportOutcome outcome = RunImport(Order(connection, file, QStringLiteral("0")), progress,
                                                {[&] { return ++asked < stopAt; },
                                                 [] {
                                                     ADD_FAILURE();
                                                     return false;
                                                 }});
        finished = outcome.Ending == ImportOutcome::Finished;
        EXPECT_TRUE(finished || outcome.Ending == ImportOutcome::Stopped) << stopAt;
        EXPECT_FALSE(connection->InTransaction()) << stopAt;
        EXPECT_EQ(Count(connection), outcome.In) << stopAt;
        EXPECT_EQ(outcome.In, finished ? 5 : 0) << stopAt;
        EXPECT_EQ(StatusOf(outcome), finished ? "5 rows are in." : "Canceling... 0 rows are in.");
    }
}

TEST_F(Jobs, BrokenOrRefusedAtAnyCallOfTheServerAnImportTellsWhatIsIn)
{
    const QString file = Lines(5);
    for (const fault::Kind kind : {fault::Kind::Refuse, fault::Kind::Break}) {
        bool reached = true;
        for (int call = 0; reached; ++call) {
            ASSERT_LT(call, 100);
            fault::Driver driver;
            const auto connection = ADODB::Connection::Create();
            connection->Open(QStringLiteral("Driver=Fault"));
            connection->Execute(QStringLiteral("CREATE TABLE goods(id INTEGER PRIMARY KEY, name TEXT)"));
            driver.plan.Set(kind, call);
            bool asked = false;
            const ImportOutcome outcome = RunImport(Order(connection, file, QStringLiteral("0")), progress,
                                                    {[] { return true; }, [&] { return asked = true; }});
            reached = driver.plan.calls > call;
            driver.plan.at = -1;
            driver.plan.broken = false;
            const std::string place = "call " + std::to_string(call);
            EXPECT_EQ(Count(connection), outcome.In) << place;
            EXPECT_FALSE(connection->InTransaction() && kind == fault::Kind::Refuse && outcome.RolledBack) << place;
            if (outcome.Ending == ImportOutcome::Finished && !asked) {
                // Either nothing went wrong, or what did was a look at the catalogue that can be done without.
                EXPECT_EQ(outcome.In, 5) << place;
                EXPECT_EQ(StatusOf(outcome), "5 rows are in.");
            } else {
                EXPECT_TRUE(asked || !outcome.Why.isEmpty() || !outcome.Log.isEmpty()) << place;
            }
        }
    }
}

TEST_F(Jobs, AFailedCommitThatIsToleratedLeavesNoTransactionBehind)
{
    fault::Driver driver;
    const auto connection = ADODB::Connection::Create();
    connection->Open(QStringLiteral("Driver=Fault"));
    connection->Execute(QStringLiteral("CREATE TABLE goods(id INTEGER PRIMARY KEY, name TEXT)"));
    const QString file = Lines(3);
    bool commit = false, batch = false;
    for (int call = 0; call < 20; ++call) {
        driver.plan.Set(fault::Kind::None, -1);
        connection->Execute(QStringLiteral("DELETE FROM goods"));
        driver.plan.Set(fault::Kind::Refuse, call);
        const ImportOutcome outcome = RunImport(Order(connection, file, QStringLiteral("-1")), progress,
                                                {[] { return true; }, [] { return false; }});
        driver.plan.Set(fault::Kind::None, -1);
        EXPECT_FALSE(connection->InTransaction()) << call;
        EXPECT_EQ(Count(connection), outcome.In) << call;
        if (!outcome.Log.contains("Record 5)refused"))
            continue;
        EXPECT_EQ(outcome.Ending, ImportOutcome::Finished) << call;
        (outcome.In == 3 ? commit : batch) = true;
    }
    EXPECT_TRUE(commit) << "its refusal was never met";
    EXPECT_TRUE(batch) << "its refusal was never met";
}

TEST_F(Jobs, AFileThatIsCutInTheMiddleIsToldByItsLine)
{
    const auto connection = Database();
    connection->Execute(QStringLiteral("CREATE TABLE goods(id INTEGER PRIMARY KEY, name TEXT)"));
    const QString file = Lines(4'000, QByteArray(1'000, 'n')); // more than is read in one go
    int asked = 0;
    const ImportOutcome outcome = RunImport(Order(connection, file, QStringLiteral("-1")), progress,
                                            {[&] {
                                                 if (++asked == 10) {
                                                     EXPECT_TRUE(QFile::resize(file, 1'500'000));
                                                 }
                                                 return true;
                                             },
                                             [] { return false; }});
    EXPECT_EQ(outcome.Ending, ImportOutcome::Failed);
    EXPECT_TRUE(outcome.OfFile);
    EXPECT_TRUE(outcome.Why.startsWith("Line ")) << outcome.Why.toStdString();
    EXPECT_TRUE(outcome.Why.endsWith(": The file became shorter while it was read.")) << outcome.Why.toStdString();
    EXPECT_EQ(Count(connection), 0);
    EXPECT_FALSE(connection->InTransaction());
}

TEST_F(Jobs, ABatchsErrorNamesEachRowAndNoRowOfItsOwn)
{
    // What the batch raised once bore the number of the last row, as if that one had been refused.
    const auto from = Database("from"), to = Database("to");
    from->Execute("CREATE TABLE goods AS SELECT 1 AS id UNION SELECT 2 UNION SELECT 3");
    to->Execute("CREATE TABLE goods(id INTEGER PRIMARY KEY)");
    to->Execute("INSERT INTO goods VALUES(2)");
    TransferProgress shown;
    const TransferOutcome outcome = RunTransfer({true,
                                                 from,
                                                 to,
                                                 [] { return QStringLiteral("SELECT * FROM goods"); },
                                                 [] { return QStringLiteral("SELECT * FROM goods WHERE 1=0"); },
                                                 {{"id", "id"}},
                                                 "0"},
                                                shown, [] { return true; });
    EXPECT_EQ(outcome.In, 2);
    EXPECT_EQ(outcome.Refused, 1);
    EXPECT_EQ(outcome.Errors, 1);
    EXPECT_TRUE(outcome.Log.contains("\r\nRow 2: ")) << outcome.Log.toStdString();
    EXPECT_FALSE(outcome.Log.contains("(row ")) << outcome.Log.toStdString();
}

TEST_F(Jobs, APreviewReadsFiftyRowsAndItsStatementEnds)
{
    const auto connection = Database();
    connection->Execute("CREATE TABLE goods(id INTEGER)");
    connection->Execute(
        "INSERT INTO goods WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) "
        "SELECT i FROM n");
    EXPECT_EQ(ReadSource(connection, "goods")->RowCount(), 50);
    connection->Execute("DROP TABLE goods"); // which a statement that still read it would not allow
    EXPECT_EQ(PreviewStatements("t"), (QStringList{"SELECT Top 50 * FROM t", "SELECT * FROM t WHERE Rownum < 50",
                                                   "SELECT * FROM t LIMIT 50", "SELECT * FROM t"}));
    // A recursion without an end: whoever reads all of it never comes back.
    EXPECT_EQ(
        ReadSource(connection, "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n)")
            ->RowCount(),
        50);
}

TEST_F(Jobs, LongTextsOfAPreviewAreCut)
{
    EXPECT_EQ(ShownText(QString(50, 'x')), QString(50, 'x'));
    EXPECT_EQ(ShownText(QString(51, 'x')), QString(50, 'x') + "...");
    EXPECT_TRUE(IsStatement("select 1"));
    EXPECT_FALSE(IsStatement("selection"));
    EXPECT_FALSE(IsStatement("order details"));
}

TEST(ExactFit, DigitsThatCount)
{
    const std::pair<const char *, int> rows[] = {
        {"0", 0}, {"-12.3400", 4}, {"0.00120", 2}, {"1000", 1}, {"100.00", 1}, {"12345678901234567890.5", 21}, {"", 0}};
    for (const auto &[text, digits] : rows)
        EXPECT_EQ(SignificantDigits(text), digits) << text;
}

TEST(ExactFit, WhatWouldBeRoundedIsRefused)
{
    using ADODB::Decimal;
    using ADODB::Value;
    struct Row
    {
        Value value;
        ADODB::DataTypeEnum type;
        bool exactDecimals, good;
    };
    const Value many = Decimal{"12345678901234567890.5"}, few = Decimal{"123456789012.345"};
    for (const Row &row : {Row{many, ADODB::adNumeric, true, true}, Row{many, ADODB::adNumeric, false, false},
                           Row{few, ADODB::adNumeric, false, true}, Row{many, ADODB::adDouble, true, false},
                           Row{few, ADODB::adDouble, true, true}, Row{0.1, ADODB::adSingle, true, false},
                           Row{0.5, ADODB::adSingle, true, true}, Row{0.1, ADODB::adDouble, true, true},
                           Row{qint64(9007199254740993), ADODB::adNumeric, false, true},
                           Row{Decimal{"9007199254740993"}, ADODB::adNumeric, false, true},
                           Row{QStringLiteral("12345678901234567890.5"), ADODB::adNumeric, false, false},
                           Row{QStringLiteral("12345678901234567890.5"), ADODB::adVarWChar, false, true}}) {
        ADODB::ColumnInfo column;
        column.Type = row.type;
        const auto store = [&] { RaiseIfRounded(row.value, column, [&] { return row.exactDecimals; }); };
        if (row.good)
            EXPECT_NO_THROW(store()) << row.value.ToText().toStdString() << " in " << row.type;
        else
            EXPECT_THROW(store(), ADODB::Error) << row.value.ToText().toStdString() << " in " << row.type;
    }
}
