// The schema rowsets over 2,000 tables of 10 columns with 1,000 foreign keys: each from the call to the full recordset,
// beside its bare catalogue query, the same text read on the same driver into buffers that nobody keeps. The servers
// come from BRINDLEWICK_TEST_POSTGRES and BRINDLEWICK_TEST_MARIADB. Arguments choose a family, and a rowset by number.
#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/Schema.h"
#include "bench/Figures.h"
#include "bench/Wide.h"

#include <cstdlib>
#include <memory>
#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>

namespace {

using namespace ADODB;

// Below this a ratio would tell of the call and not of the rows: a figure of such a rowset is what it takes more, in
// ms.
constexpr double kShort = 0.001;

// The plainest reader that the interface allows.
class Bare
{
public:
    virtual ~Bare() = default;
    virtual qint64 Read(const QByteArray &sql) = 0; // rows, or -1
};

class BareSqlite : public Bare
{
public:
    explicit BareSqlite(const QString &file) { sqlite3_open(file.toUtf8().constData(), &m_base); }
    ~BareSqlite() override { sqlite3_close(m_base); }
    qint64 Read(const QByteArray &sql) override
    {
        sqlite3_stmt *statement = nullptr;
        if (sqlite3_prepare_v2(m_base, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
            return -1;
        qint64 rows = 0;
        const int columns = sqlite3_column_count(statement);
        for (; sqlite3_step(statement) == SQLITE_ROW; ++rows)
            for (int column = 0; column < columns; ++column)
                m_touched += sqlite3_column_text(statement, column) != nullptr;
        sqlite3_finalize(statement);
        return rows;
    }

private:
    sqlite3 *m_base = nullptr;
    qint64 m_touched = 0;
};

class BareOdbc : public Bare
{
public:
    explicit BareOdbc(QByteArray connectionString)
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR *>(connectionString.data()), SQL_NTS, nullptr,
                         0, nullptr, SQL_DRIVER_NOPROMPT);
    }
    ~BareOdbc() override
    {
        SQLDisconnect(m_connection);
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    qint64 Read(const QByteArray &sql) override
    {
        constexpr int kBlock = 200, kWidth = 512;
        SQLHSTMT statement = nullptr;
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &statement);
        SQLULEN got = 0;
        SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN(kBlock)), 0);
        SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &got, 0);
        QByteArray text = sql;
        qint64 rows = -1;
        if (SQL_SUCCEEDED(SQLExecDirect(statement, reinterpret_cast<SQLCHAR *>(text.data()), SQL_NTS))) {
            SQLSMALLINT columns = 0;
            SQLNumResultCols(statement, &columns);
            m_cells.resize(size_t(columns) * kBlock * kWidth);
            m_lengths.resize(size_t(columns) * kBlock);
            for (int column = 0; column < columns; ++column)
                SQLBindCol(statement, SQLUSMALLINT(column + 1), SQL_C_CHAR,
                           m_cells.data() + size_t(column) * kBlock * kWidth, kWidth,
                           m_lengths.data() + size_t(column) * kBlock);
            rows = 0;
            while (SQL_SUCCEEDED(SQLFetch(statement)))
                rows += qint64(got);
        }
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return rows;
    }

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    std::vector<char> m_cells;
    std::vector<SQLLEN> m_lengths;
};

QByteArray TextOf(const ConnectionPtr &connection, SchemaEnum schema)
{
    Connection::Turn turn(connection, QStringLiteral("text"));
    turn.Begin();
    const CatalogueQuery *query = FindCatalogueQueries(connection->Family(), schema).front();
    return (TextOf(*query, turn.Driver()) + QString::fromLatin1(query->UserOnly)).toUtf8();
}

bool Measure(const char *name, bench::Wide &wide, Bare &bare, int only)
{
    for (int schema = adSchemaAsserts; schema <= adSchemaTrustees; ++schema) {
        if (SourceOf(wide.Connection->Family(), schema) != RowsetSource::Catalogue || (only >= 0 && schema != only))
            continue;
        const QByteArray sql = TextOf(wide.Connection, SchemaEnum(schema));
        qint64 ourRows = 0;
        const auto ours = [&] { ourRows = wide.Connection->OpenSchema(schema)->RecordCount(); };
        const auto peers = [&] { return bare.Read(sql); };
        ours();
        const double once = bench::Seconds(peers);
        const qint64 peersRows = peers();
        if (peersRows < 0) {
            std::fprintf(stderr, "  %s: the bare query of rowset %d fails\n", name, schema);
            return false;
        }
        // Short ones many times over, so that the clock can tell.
        const int times = bench::Quick() ? 1 : qBound(1, int(0.1 / qMax(once, 1e-5)), 500);
        std::vector<double> ratios, seconds, bareSeconds;
        for (int round = 0; round < bench::Rounds(once > 0.5 ? 3 : 7); ++round) {
            seconds.push_back(bench::Seconds([&] {
                                  for (int i = 0; i < times; ++i)
                                      ours();
                              }) /
                              times);
            bareSeconds.push_back(bench::Seconds([&] {
                                      for (int i = 0; i < times; ++i)
                                          peers();
                                  }) /
                                  times);
            ratios.push_back(seconds.back() / bareSeconds.back());
        }
        std::fprintf(stderr, "  %s %2d: %6lld rows of %6lld, ours %.2f ms, bare %.2f ms\n", name, schema, ourRows,
                     peersRows, 1000 * bench::Median(seconds), 1000 * bench::Median(bareSeconds));
        const QByteArray figure = QByteArray("schema_") + name + "_rowset_" + QByteArray::number(schema);
        if (bench::Median(bareSeconds) < kShort)
            bench::Figure((figure + "_ms_more").constData(),
                          1000 * (bench::Median(seconds) - bench::Median(bareSeconds)), 1);
        else
            bench::Figure(figure.constData(), bench::Median(ratios), 1.5);
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const struct
    {
        const char *Name, *Variable;
    } families[] = {{"sqlite", ""}, {"postgres", "BRINDLEWICK_TEST_POSTGRES"}, {"mariadb", "BRINDLEWICK_TEST_MARIADB"}};
    try {
        for (const auto &family : families) {
            if (argc > 1 && qstrcmp(argv[1], family.Name) != 0)
                continue;
            const std::unique_ptr<bench::Wide> wide = bench::Wide::Make(family.Variable);
            if (!wide) {
                std::fprintf(stderr, "  %s names no server\n", family.Variable);
                return 2;
            }
            const std::unique_ptr<Bare> bare = *family.Variable
                                                   ? std::unique_ptr<Bare>(new BareOdbc(wide->Text.toUtf8()))
                                                   : std::unique_ptr<Bare>(new BareSqlite(wide->File()));
            if (!Measure(family.Name, *wide, *bare, argc > 2 ? std::atoi(argv[2]) : -1))
                return 2;
        }
    } catch (const Error &error) {
        std::fprintf(stderr, "  %s\n", error.what());
        return 2;
    }
    return 0;
}
