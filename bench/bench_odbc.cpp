// PostgreSQL over ODBC: 1,000,000 rows of 8 mixed columns from the statement to a full recordset, beside a bare loop
// over the same driver that fetches blocks of 1000 rows into buffers bound by each column's own type and keeps nothing.
// The server comes from BRINDLEWICK_TEST_POSTGRES.
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "bench/Figures.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sql.h>
#include <sqlext.h>

namespace {

const qint64 kRows = bench::Size(1000000);
constexpr char kStatement[] = "SELECT * FROM bench_rows";
constexpr char kMake[] =
    "CREATE TABLE bench_rows AS SELECT i AS id, 'Customer number ' || (i::bigint * 7919 % 100003) AS name, "
    "((i % 1000) || '.' || lpad((i::bigint * 31 % 10000)::text, 4, '0'))::numeric(19, 4) AS price, i * 1.25::float8 / "
    "7 AS "
    "amount, date '2000-01-01' + i % 9000 AS day, timestamp '2000-01-01' + (i::bigint * 37 % 300000000) * interval '1 "
    "second' "
    "+ (100 + i % 900) * interval '1 millisecond' AS moment, CASE WHEN i % 10 <> 0 THEN 'A note of ordinary length "
    "about row "
    "' || i END AS note, i % 2 = 0 AS flag FROM generate_series(1, %1) i";

// The plainest loop that the interface allows, on a connection of its own.
class Bare
{
public:
    explicit Bare(QByteArray connectionString)
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        m_open =
            SQL_SUCCEEDED(SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR *>(connectionString.data()),
                                           SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
    }
    ~Bare()
    {
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }

    qint64 Read()
    {
        constexpr int kColumns = 8, kBlock = 1000, kWidth = 256;
        // id, name, price, amount, day, moment, note, flag: what reads each with the least work.
        constexpr SQLSMALLINT kTypes[kColumns] = {SQL_C_SBIGINT,   SQL_C_CHAR,           SQL_C_CHAR, SQL_C_DOUBLE,
                                                  SQL_C_TYPE_DATE, SQL_C_TYPE_TIMESTAMP, SQL_C_CHAR, SQL_C_CHAR};
        if (!m_open)
            return -1;
        SQLHSTMT statement = nullptr;
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement);
        SQLULEN got = 0;
        SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN(kBlock)), 0);
        SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &got, 0);
        const auto cells = std::make_unique<char[]>(size_t(kColumns) * kBlock * kWidth);
        const auto lengths = std::make_unique<SQLLEN[]>(size_t(kColumns) * kBlock);
        for (int column = 0; column < kColumns; ++column)
            SQLBindCol(statement, SQLUSMALLINT(column + 1), kTypes[column], cells.get() + column * kBlock * kWidth,
                       kWidth, lengths.get() + column * kBlock);
        qint64 rows = 0;
        char text[] = "SELECT * FROM bench_rows";
        if (SQL_SUCCEEDED(SQLExecDirect(statement, reinterpret_cast<SQLCHAR *>(text), SQL_NTS)))
            while (SQL_SUCCEEDED(SQLFetch(statement)))
                rows += qint64(got);
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return rows;
    }

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    bool m_open = false;
};

} // namespace

int main()
{
    using namespace ADODB;
    const QString string = qEnvironmentVariable("BRINDLEWICK_TEST_POSTGRES");
    if (string.isEmpty()) {
        std::fprintf(stderr, "  BRINDLEWICK_TEST_POSTGRES names no server\n");
        return 2;
    }
    try {
        const ConnectionPtr connection = Connection::Create();
        connection->Open(string);
        connection->Execute(QStringLiteral("DROP TABLE IF EXISTS bench_rows"));
        connection->Execute(QString::fromLatin1(kMake).arg(kRows));
        Bare bare(string.toUtf8());
        RecordsetPtr rows = connection->Execute(QString::fromLatin1(kStatement));
        if (rows->RecordCount() != kRows || bare.Read() != kRows)
            return 2;
        const auto ours = [&] {
            rows.reset();
            rows = connection->Execute(QString::fromLatin1(kStatement));
        };
        bench::Figure("postgres_1M_vs_bare_odbc", bench::Ratio(5, ours, [&] { bare.Read(); }), 1.15);
        connection->Execute(QStringLiteral("DROP TABLE bench_rows"));
    } catch (const Error &error) {
        std::fprintf(stderr, "  %s\n", error.what());
        return 2;
    }
    return 0;
}
