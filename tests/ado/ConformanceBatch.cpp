// One statement for many rows: exact values, every refused row reported, the others kept.
#include "tests/ado/Conformance.h"
#include <map>

using namespace ADODB;

namespace conformance {

namespace {

std::vector<ColumnStore> NumbersAndTexts(qint64 rows)
{
    std::vector<ColumnStore> columns;
    columns.emplace_back(adBigInt);
    columns.emplace_back(adVarWChar);
    columns.emplace_back(adDouble);
    for (qint64 row = 0; row < rows; ++row) {
        columns[0].AppendInt64(row);
        const QByteArray text = QStringLiteral("row %1 日本 🎉").arg(row).toUtf8();
        if (row % 10 == 3)
            columns[1].AppendNull();
        else
            columns[1].AppendText(text.constData(), row % 10 == 4 ? 0 : text.size());
        columns[2].AppendDouble(double(row) / 3);
    }
    return columns;
}

// Runs a statement for the rows of columns that are all there.
qint64 RunBatch(const ConnectionPtr &connection, const QString &sql, const std::vector<ColumnStore> &columns,
                const std::function<void(qint64, const Error &)> &refused)
{
    Connection::Turn turn(connection, QStringLiteral("batch"));
    turn.Begin();
    Batch batch;
    batch.Sql = sql;
    for (const ColumnStore &column : columns)
        batch.Types.push_back(column.Type());
    qint64 next = 0, written = 0;
    batch.Next = [&](std::vector<ColumnStore> &into, qint64 most) {
        const qint64 rows = std::min(most, columns.front().Size() - next);
        for (const qint64 end = next + rows; next < end; ++next)
            for (size_t column = 0; column < columns.size(); ++column)
                into[column].AppendFrom(columns[column], next);
        return rows;
    };
    batch.Refused = refused;
    batch.Written = [&](qint64 rows) { written = rows; };
    const qint64 affected = turn.Driver().ExecuteBatch(batch);
    EXPECT_EQ(written, columns.front().Size());
    return affected;
}

} // namespace

TEST_P(Conformance, ABatchWritesEveryRow)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY, b VARCHAR(60), c DOUBLE PRECISION)"));
    const std::vector<ColumnStore> columns = NumbersAndTexts(2500);
    std::map<qint64, QString> failed;
    qint64 affected = 0;
    affected = RunBatch(m_connection, QStringLiteral("INSERT INTO t VALUES (?, ?, ?)"), columns,
                        [&](qint64 row, const Error &error) { failed[row] = error.Description; });
    EXPECT_EQ(affected, 2500);
    EXPECT_TRUE(failed.empty()) << failed.begin()->second.toStdString();
    const RecordsetPtr rows = Run(QStringLiteral("SELECT a, b, c FROM t ORDER BY a"));
    ASSERT_EQ(rows->RecordCount(), 2500);
    for (qint64 row = 0; row < 2500; ++row) {
        ASSERT_EQ(rows->CellValue(row, 0).ToInt64(), row);
        ASSERT_EQ(rows->CellIsNull(row, 1), row % 10 == 3) << row;
        ASSERT_EQ(rows->CellText(row, 1), columns[1].Text(row)) << row;
        if (Is(Server::SqliteOdbc)) // reads 15 digits
            ASSERT_NEAR(rows->CellValue(row, 2).ToDouble(), double(row) / 3, 1e-11) << row;
        else
            ASSERT_EQ(rows->CellValue(row, 2).ToDouble(), double(row) / 3) << row;
    }
}

TEST_P(Conformance, ABatchReportsTheRowsThatFailAndKeepsTheOthers)
{
    for (const bool inTransaction : {false, true}) {
        Run(QStringLiteral("DROP TABLE IF EXISTS t"));
        Run(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY, b VARCHAR(60), c DOUBLE PRECISION)"));
        Run(QStringLiteral("INSERT INTO t VALUES (5, 'there', 0), (1500, 'there', 0)"));
        if (inTransaction)
            m_connection->BeginTrans();
        std::map<qint64, Error> failed;
        qint64 affected = 0;
        affected = RunBatch(m_connection, QStringLiteral("INSERT INTO t VALUES (?, ?, ?)"), NumbersAndTexts(2500),
                            [&](qint64 row, const Error &error) { failed[row] = error; });
        EXPECT_EQ(affected, 2498);
        ASSERT_EQ(failed.size(), 2u) << failed.rbegin()->second.what();
        EXPECT_TRUE(failed.contains(5) && failed.contains(1500));
        EXPECT_FALSE(failed[5].Description.isEmpty());
        if (inTransaction)
            m_connection->CommitTrans();
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2500);
        EXPECT_EQ(Cell(QStringLiteral("SELECT b FROM t WHERE a = 5")).ToText(), u"there");
    }
}

TEST_P(Conformance, ABatchCarriesEveryKindOfValue)
{
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, f %1, m %2, b %3, d DATE, ts %4, tm %5)")
            .arg(Pick({"BOOLEAN", "BOOLEAN", "BIT(1)"}), Pick({"TEXT", "NUMERIC(38,10)", "DECIMAL(38,10)"}),
                 Pick({"BLOB", "BYTEA", "BLOB"}), Pick({"TIMESTAMP", "TIMESTAMP", "DATETIME(6)"}),
                 Pick({"TIME", "TIME", "TIME(6)"})));
    const DataTypeEnum types[] = {adBigInt, adBoolean, adNumeric, adBinary, adDBDate, adDBTimeStamp, adDBTime};
    const Value values[] = {Value(7),
                            Value(true),
                            Value(Decimal{"-1234567890123456789012345678.0123456789"}),
                            Value(QByteArray("\0\1\xff", 3)),
                            Value(Date{2024, 2, 29}),
                            Value(Timestamp{{1999, 12, 31}, {23, 59, 59, 123456000}}),
                            Value(Time{12, 34, 56, 654321000})};
    std::vector<ColumnStore> columns;
    for (size_t column = 0; column < std::size(types); ++column) {
        ColumnStore store(types[column]);
        store.Append(values[column]);
        store.AppendNull();
        columns.push_back(std::move(store));
    }
    QStringList failed;
    EXPECT_EQ(RunBatch(m_connection, QStringLiteral("INSERT INTO t VALUES (?, ?, ?, ?, ?, ?, ?)"), columns,
                       [&](qint64, const Error &error) { failed += error.Description; }),
              2);
    EXPECT_EQ(failed.join(u' '), u"");
    const RecordsetPtr rows =
        Run(QStringLiteral("SELECT f, m, b, d, ts, tm FROM t ORDER BY CASE WHEN n IS NULL THEN 1 ELSE 0 END"));
    ASSERT_EQ(rows->RecordCount(), 2);
    for (int column = 0; column < 6; ++column) {
        EXPECT_EQ(rows->CellText(0, column), values[column + 1].ToText()) << column;
        EXPECT_TRUE(rows->CellIsNull(1, column)) << column;
    }
}

} // namespace conformance
