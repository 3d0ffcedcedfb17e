#include "tests/ado/Conformance.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace ADODB;

namespace conformance {

QString ConnectionStringOf(Server server)
{
    switch (server) {
    case Server::BuiltIn:
        return QStringLiteral("Driver=SQLite;Create=Yes;Database=place");
    case Server::SqliteOdbc:
        return qEnvironmentVariable("BRINDLEWICK_TEST_SQLITE_ODBC");
    case Server::Postgres:
        return qEnvironmentVariable("BRINDLEWICK_TEST_POSTGRES");
    case Server::MariaDb:
        return qEnvironmentVariable("BRINDLEWICK_TEST_MARIADB");
    }
    return {};
}

bool ServersArePromised()
{
    return qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS") == u"1";
}

void Conformance::SetUp()
{
    m_string = ConnectionStringOf(GetParam());
    if (m_string.isEmpty() && ServersArePromised())
        FAIL() << "this server was promised, and its connection string is missing";
    if (m_string.isEmpty())
        GTEST_SKIP() << "no connection string for this server";
    if (IsSqlite())
        m_string.replace(QRegularExpression(QStringLiteral("Database=[^;]*")),
                         QStringLiteral("Database=") + m_folder.filePath(QStringLiteral("place.sqlite")));
    else
        m_place = QStringLiteral("p%1_%2")
                      .arg(QCoreApplication::applicationPid())
                      .arg(quint64(quintptr(this)) & 0xffffff, 0, 16);
    m_connection = Connection::Create();
    m_connection->Open(m_string);
    if (Is(Server::Postgres))
        Run(QStringLiteral("CREATE SCHEMA %1").arg(m_place));
    if (Is(Server::MariaDb))
        Run(QStringLiteral("CREATE DATABASE %1 CHARACTER SET utf8mb4").arg(m_place));
    m_connection->Close();
    m_connection = NewConnection();
}

void Conformance::TearDown()
{
    if (m_place.isEmpty() || !m_connection)
        return;
    try {
        m_connection.reset();
        const ConnectionPtr last = Connection::Create();
        last->Open(ConnectionStringOf(GetParam()));
        last->Execute(Is(Server::Postgres) ? QStringLiteral("DROP SCHEMA %1 CASCADE").arg(m_place)
                                           : QStringLiteral("DROP DATABASE %1").arg(m_place));
    } catch (const Error &error) {
        ADD_FAILURE() << error.what();
    }
}

ConnectionPtr Conformance::NewConnection()
{
    const ConnectionPtr connection = Connection::Create();
    connection->Open(m_string);
    if (IsSqlite()) // these files live a moment
        connection->Execute(QStringLiteral("PRAGMA synchronous = OFF"));
    if (Is(Server::Postgres))
        connection->Execute(QStringLiteral("SET search_path TO %1").arg(m_place));
    if (Is(Server::MariaDb))
        connection->Execute(QStringLiteral("USE %1").arg(m_place));
    return connection;
}

QString Conformance::Pick(const Dialect &dialect) const
{
    const char *text = IsSqlite() ? dialect.Sqlite : Is(Server::Postgres) ? dialect.Postgres : dialect.MariaDb;
    return QString::fromUtf8(text);
}

QString Conformance::Quoted(const QString &name) const
{
    const QString quote = m_connection->Property(QStringLiteral("Identifier Quote")).toString();
    QString inner = name;
    return quote + inner.replace(quote, quote + quote) + quote;
}

Value Conformance::Cell(const QString &sql, int column)
{
    const RecordsetPtr rows = Run(sql);
    if (rows->RecordCount() < 1 || column >= rows->ColumnCount()) {
        ADD_FAILURE() << "no such cell: " << sql.toStdString();
        return {};
    }
    return rows->CellValue(0, column);
}

qint64 Conformance::Affected(const QString &sql)
{
    qint64 affected = -99;
    m_connection->Execute(sql, &affected);
    return affected;
}

Error Conformance::ErrorOf(const QString &sql)
{
    return ErrorFrom([&] { Run(sql); });
}

static std::string NameOf(const testing::TestParamInfo<Server> &info)
{
    constexpr const char *kNames[] = {"BuiltIn", "SqliteOdbc", "Postgres", "MariaDb"};
    return kNames[int(info.param)];
}

INSTANTIATE_TEST_SUITE_P(Over, Conformance,
                         testing::Values(Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfServers, testing::Values(Server::Postgres, Server::MariaDb), NameOf);
INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfFiles, testing::Values(Server::BuiltIn, Server::SqliteOdbc), NameOf);

} // namespace conformance
