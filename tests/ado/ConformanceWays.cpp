// The same rows by other ways: drivers' own options that change how they fetch, and the way of drivers that cannot read
// a cell twice.
#include "ado/odbc/OdbcRows.h"
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

namespace {

QString TextOf(qint64 n)
{
    const qint64 length = n % 50 == 7 ? 30000 + n : n % 5 == 0 ? 250 + n % 13 : n % 40;
    return QString::number(n) + QString(length, QChar(u'a' + int(n % 26)));
}

} // namespace

class ConformanceOfWays : public Conformance
{
protected:
    static constexpr qint64 kRows = 600;

    void SetUp() override
    {
        Conformance::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        Run(QStringLiteral("CREATE TABLE t (n INTEGER, s VARCHAR(20), l %1, d DOUBLE PRECISION, b %2)")
                .arg(QLatin1String(Expects().LongText), QLatin1String(Expects().Blob)));
        m_connection->BeginTrans();
        const QString hex = QString::fromLatin1(Expects().Bytes);
        for (qint64 n = 0; n < kRows; ++n)
            Run(QStringLiteral("INSERT INTO t VALUES (%1, %2, '%3', %1.5, %4)")
                    .arg(n)
                    .arg(n % 3 == 0 ? QStringLiteral("NULL") : QStringLiteral("'s%1'").arg(n), TextOf(n),
                         hex.arg(QString::fromLatin1(TextOf(n).toUtf8().toHex()))));
        m_connection->CommitTrans();
    }

    QString Statement() const
    {
        return QStringLiteral("SELECT n, s, l, d, b FROM %1t ORDER BY n")
            .arg(m_place.isEmpty() ? QString() : m_place + u'.');
    }

    void Check(const RecordsetPtr &rows)
    {
        ASSERT_EQ(rows->RecordCount(), kRows);
        for (qint64 n = 0; n < kRows; ++n) {
            ASSERT_EQ(rows->CellText(n, 0), QString::number(n));
            ASSERT_EQ(rows->CellIsNull(n, 1), n % 3 == 0);
            ASSERT_TRUE(rows->CellText(n, 2) == TextOf(n)) << n;
            ASSERT_EQ(rows->CellValue(n, 3).ToDouble(), double(n) + 0.5);
            ASSERT_TRUE(rows->CellValue(n, 4) == Value(TextOf(n).toUtf8())) << n;
        }
    }
};

static std::string WayName(const testing::TestParamInfo<Server> &info)
{
    return info.param == Server::SqliteOdbc ? "SqliteOdbc" : info.param == Server::Postgres ? "Postgres" : "MariaDb";
}

INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfWays,
                         testing::Values(Server::SqliteOdbc, Server::Postgres, Server::MariaDb), WayName);

TEST_P(ConformanceOfWays, TheDriversOwnOptionsChangeNoValue)
{
    const QStringList options = Is(Server::Postgres)  ? QStringList{"UseDeclareFetch=1;Fetch=64", "BoolsAsChar=0",
                                                                   "MaxLongVarcharSize=100", "UseServerSidePrepare=0"}
                                : Is(Server::MariaDb) ? QStringList{"OPTION=67108864", "NO_SSPS=1"}
                                                      : QStringList{"StepAPI=1", "NoTXN=1"};
    for (const QString &option : options) {
        SCOPED_TRACE(option.toStdString());
        const ConnectionPtr connection = Connection::Create();
        connection->Open(m_string + u';' + option);
        Check(connection->Execute(Statement()));
    }
}

TEST_P(ConformanceOfWays, EveryWayToReadLongCellsGivesThemWhole)
{
    for (const Odbc::ReRead way : {Odbc::ReRead::Scroll, Odbc::ReRead::Columns, Odbc::ReRead::SetPos}) {
        if (way == Odbc::ReRead::SetPos && !Is(Server::Postgres))
            continue; // the drivers that only pretend to position
        SCOPED_TRACE(int(way));
        const auto link = std::make_shared<Odbc::Link>(m_string.toUtf8(), way);
        Odbc::Handle statement = link->NewStatement();
        ODBC_TRY(SQLSetStmtAttr, statement.Get(), SQL_ATTR_CURSOR_TYPE, reinterpret_cast<SQLPOINTER>(SQL_CURSOR_STATIC),
                 0);
        QByteArray sql = Statement().toUtf8();
        ODBC_CALL(SQLExecDirect, statement, reinterpret_cast<SQLCHAR *>(sql.data()), SQLINTEGER(sql.size()));
        Odbc::OdbcRows rows(link, std::move(statement));
        Check(ReadAll(rows));
    }
}

TEST_P(ConformanceOfWays, AResultOutlivesItsConnectionWithoutHarm)
{
    auto link = std::make_shared<Odbc::Link>(m_string.toUtf8());
    Odbc::Handle statement = link->NewStatement();
    QByteArray sql = Statement().toUtf8();
    ODBC_CALL(SQLExecDirect, statement, reinterpret_cast<SQLCHAR *>(sql.data()), SQLINTEGER(sql.size()));
    const auto rows = std::make_unique<Odbc::OdbcRows>(link, std::move(statement));
    link->Close();
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : rows->Columns())
        stores.emplace_back(column.Type);
    EXPECT_EQ(rows->Fetch(stores, 10), 0);
    EXPECT_EQ(ErrorFrom([&] { link->NewStatement(); }).Number, adErrObjectClosed);
}

// With a cursor on the server the rows come in portions, so the server can be lost between two of them.
TEST_P(ConformanceOfWays, AServerLostInTheMiddleOfAFetchIsAnError)
{
    if (!Is(Server::Postgres))
        return; // the other drivers hold all rows by then
    const ConnectionPtr connection = Connection::Create();
    connection->Open(m_string + QStringLiteral(";UseDeclareFetch=1;Fetch=50"));
    const qint64 id = connection->Execute(QStringLiteral("SELECT pg_backend_pid()"))->CellValue(0, 0).ToInt64();
    Connection::Turn turn(connection, Statement());
    turn.Begin();
    ExecuteResult result =
        turn.Driver().Execute(QStringLiteral("SELECT n, repeat('x', 300) AS s FROM generate_series(1, 200000) n"));
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : result.Rows->Columns())
        stores.emplace_back(column.Type);
    EXPECT_GT(result.Rows->Fetch(stores, 100), 0);
    Run(QStringLiteral("SELECT pg_terminate_backend(%1)").arg(id));
    const Error error = ErrorFrom([&] {
        while (result.Rows->Fetch(stores, 1000) > 0) {
        }
    });
    EXPECT_FALSE(error.Description.isEmpty());
    EXPECT_LT(stores[0].Size(), 200000);
    EXPECT_FALSE(turn.Driver().IsAlive());
}

} // namespace conformance
