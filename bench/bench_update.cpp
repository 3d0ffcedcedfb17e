// UpdateBatch of 100,000 changed rows, beside the plainest loop over the same driver that writes the same rows: one
// statement prepared once, its values bound once, run for each row in one transaction, its count looked at. SQLite by
// its own library; PostgreSQL and MariaDB over ODBC, from BRINDLEWICK_TEST_POSTGRES and BRINDLEWICK_TEST_MARIADB.
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "bench/Figures.h"

#include <QTemporaryDir>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>

namespace {

using namespace ADODB;

constexpr int kRows = 100000;
constexpr int kRounds = 5;

// Writes `now` over `former` in every row, each found by its key and its former value; gives how many were met.
using Loop = std::function<qint64(qint64 former, qint64 now)>;

class BareOdbc
{
public:
    explicit BareOdbc(QByteArray connectionString)
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        m_open =
            SQL_SUCCEEDED(SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR *>(connectionString.data()),
                                           SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    }
    ~BareOdbc()
    {
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    BareOdbc(const BareOdbc &) = delete;
    BareOdbc &operator=(const BareOdbc &) = delete;

    qint64 Write(qint64 former, qint64 now)
    {
        if (!m_open)
            return -1;
        SetAutocommit(SQL_AUTOCOMMIT_OFF);
        SQLHSTMT statement = nullptr;
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement);
        char text[] = "UPDATE bench_update SET v = ? WHERE id = ? AND v = ?";
        SQLPrepare(statement, reinterpret_cast<SQLCHAR *>(text), SQL_NTS);
        qint64 id = 0;
        SQLLEN length = sizeof id;
        qint64 *values[] = {&now, &id, &former};
        for (SQLUSMALLINT number = 1; number <= 3; ++number)
            SQLBindParameter(statement, number, SQL_PARAM_INPUT, SQL_C_SBIGINT, SQL_BIGINT, 19, 0, values[number - 1],
                             sizeof id, &length);
        qint64 met = 0;
        for (id = 1; id <= kRows; ++id) {
            SQLLEN count = 0;
            if (SQL_SUCCEEDED(SQLExecute(statement)) && SQL_SUCCEEDED(SQLRowCount(statement, &count)))
                met += qint64(count);
        }
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        SQLEndTran(SQL_HANDLE_DBC, m_connection, SQL_COMMIT);
        SetAutocommit(SQL_AUTOCOMMIT_ON);
        return met;
    }

private:
    void SetAutocommit(SQLULEN mode)
    {
        SQLSetConnectAttr(m_connection, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(mode), SQL_IS_UINTEGER);
    }

    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    bool m_open = false;
};

qint64 WriteBare(sqlite3 *database, qint64 former, qint64 now)
{
    sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(database, "UPDATE bench_update SET v = ? WHERE id = ? AND v = ?", -1, &statement, nullptr);
    qint64 met = 0;
    for (int id = 1; id <= kRows; ++id) {
        sqlite3_bind_int64(statement, 1, now);
        sqlite3_bind_int64(statement, 2, id);
        sqlite3_bind_int64(statement, 3, former);
        if (sqlite3_step(statement) == SQLITE_DONE)
            met += sqlite3_changes(database);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    return met;
}

// False when one of the two did not write every row.
bool Measure(const char *name, const ConnectionPtr &connection, const QString &fill, const Loop &bare)
{
    connection->Execute(QStringLiteral("DROP TABLE IF EXISTS bench_update"));
    connection->Execute(
        QStringLiteral("CREATE TABLE bench_update (id INTEGER NOT NULL PRIMARY KEY, v INTEGER, name VARCHAR(60))"));
    connection->Execute(fill);
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(QStringLiteral("SELECT * FROM bench_update ORDER BY id"), connection, adOpenStatic,
               adLockBatchOptimistic);
    if (rows->RecordCount() != kRows)
        return false;
    qint64 value = 0; // of every row
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
            rows->Fields()[1].SetValue(value + 1);
            rows->Update();
        }
        const double ours = bench::Seconds([&] { rows->UpdateBatch(); });
        qint64 met = 0;
        const double peer = bench::Seconds([&] { met = bare(value + 1, value + 2); });
        value += 2;
        if (met != kRows) // so ours wrote them all
            return false;
        // The recordset shall know what the other one wrote.
        rows->Close();
        rows->Open(QStringLiteral("SELECT * FROM bench_update ORDER BY id"), connection, adOpenStatic,
                   adLockBatchOptimistic);
        ratios.push_back(ours / peer);
        std::fprintf(stderr, "  ours %.3f s, peer %.3f s\n", ours, peer);
    }
    bench::Figure(name, bench::Median(ratios), 1.5);
    connection->Execute(QStringLiteral("DROP TABLE bench_update"));
    return true;
}

bool MeasureSqlite()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("update.sqlite"));
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=") + path);
    sqlite3 *database = nullptr;
    if (sqlite3_open(path.toUtf8().constData(), &database) != SQLITE_OK)
        return false;
    const bool measured =
        Measure("sqlite_update_100k_vs_bare", connection,
                QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE "
                               "i < 100000) INSERT INTO bench_update SELECT i, 0, 'row ' || i FROM c"),
                [&](qint64 former, qint64 now) { return WriteBare(database, former, now); });
    sqlite3_close(database);
    return measured;
}

bool MeasureOdbc(const char *name, const char *variable, const char *fill)
{
    const QString string = qEnvironmentVariable(variable);
    if (string.isEmpty()) {
        std::fprintf(stderr, "  %s names no server\n", variable);
        return false;
    }
    const ConnectionPtr connection = Connection::Create();
    connection->Open(string);
    BareOdbc bare(string.toUtf8());
    return Measure(name, connection, QString::fromLatin1(fill),
                   [&](qint64 former, qint64 now) { return bare.Write(former, now); });
}

} // namespace

int main()
{
    try {
        bool all = MeasureSqlite();
        all = MeasureOdbc("postgres_update_100k_vs_bare", "BRINDLEWICK_TEST_POSTGRES",
                          "INSERT INTO bench_update SELECT i, 0, 'row ' || i FROM generate_series(1, 100000) i") &&
              all;
        all = MeasureOdbc("mariadb_update_100k_vs_bare", "BRINDLEWICK_TEST_MARIADB",
                          "INSERT INTO bench_update SELECT seq, 0, CONCAT('row ', seq) FROM seq_1_to_100000") &&
              all;
        return all ? 0 : 2;
    } catch (const Error &error) {
        std::fprintf(stderr, "  %s\n", error.what());
        return 2;
    }
}
