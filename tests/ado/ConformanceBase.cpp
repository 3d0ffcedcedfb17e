#include "tests/ado/Conformance.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace ADODB;

namespace conformance {

QString ConnectionStringOf(Server server)
{
    const Expected &row = ExpectedOf(server);
    return row.Environment ? qEnvironmentVariable(row.Environment) : QString::fromLatin1(row.String);
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
    if (Expects().MakePlace)
        Run(QString::fromLatin1(Expects().MakePlace).arg(m_place));
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
        last->Execute(QString::fromLatin1(Expects().DropPlace).arg(m_place));
    } catch (const Error &error) {
        ADD_FAILURE() << error.what();
    }
}

ConnectionPtr Conformance::NewConnection()
{
    const ConnectionPtr connection = Connection::Create();
    connection->Open(m_string);
    connection->Execute(QString::fromLatin1(Expects().Enter).replace(QLatin1String("%1"), m_place));
    return connection;
}

QString Conformance::Pick(const Dialect &dialect) const
{
    switch (Expects().Family) {
    case DatabaseFamily::SQLite:
        return QString::fromUtf8(dialect.Sqlite);
    case DatabaseFamily::PostgreSQL:
        return QString::fromUtf8(dialect.Postgres);
    default:
        return QString::fromUtf8(dialect.MariaDb);
    }
}

void Conformance::MakeUser(const QString &name, const QString &password)
{
    QString sql = QString::fromLatin1(Expects().MakeUser); // no arg(): a host may be "%"
    Run(sql.replace(QLatin1String("%1"), name).replace(QLatin1String("%2"), password));
    if (Expects().LetIn)
        Run(QString::fromLatin1(Expects().LetIn).arg(name));
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

QString Conformance::All(const QString &table)
{
    const RecordsetPtr rows = Run(QStringLiteral("SELECT * FROM ") + table);
    QStringList lines;
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->ColumnCount(); ++column)
            cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
        lines += cells.join(u':');
    }
    return lines.join(u' ');
}

std::function<bool()> Conformance::InTheMiddle()
{
    if (IsSqlite())
        return [connection = m_connection] { return connection->IsBusy(); };
    const QString id = Cell(Pick({"", "SELECT pg_backend_pid()", "SELECT CONNECTION_ID()"})).ToText();
    const QString look =
        Pick({"", "SELECT count(*) FROM pg_stat_activity WHERE pid = %1 AND state = 'active'",
              "SELECT count(*) FROM information_schema.processlist WHERE id = %1 AND info IS NOT NULL"})
            .arg(id);
    return [second = NewConnection(), look] { return second->Execute(look)->CellText(0, 0) == QLatin1String("1"); };
}

Error Conformance::ErrorOf(const QString &sql)
{
    return ErrorFrom([&] { Run(sql); });
}

std::string NameOf(const testing::TestParamInfo<Server> &info)
{
    return ExpectedOf(info.param).Name;
}

INSTANTIATE_TEST_SUITE_P(Over, Conformance,
                         testing::Values(Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfServers, testing::Values(Server::Postgres, Server::MariaDb), NameOf);
INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfFiles, testing::Values(Server::BuiltIn, Server::SqliteOdbc), NameOf);

} // namespace conformance
