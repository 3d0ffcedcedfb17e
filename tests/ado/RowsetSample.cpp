#include "tests/ado/RowsetSample.h"
#include "ado/family/Family.h"
#include "ado/rowset/Rowsets.h"
#include <QCoreApplication>
#include <QMap>
#include <QRegularExpression>

using namespace ADODB;

namespace rowsets {

namespace {

constexpr const char *kTables[] = {
    "CREATE TABLE boss (id INTEGER NOT NULL, part INTEGER NOT NULL, name VARCHAR(30) DEFAULT 'none', "
    "CONSTRAINT named CHECK (name <> ')'), CONSTRAINT once UNIQUE (name), PRIMARY KEY (part, id))",
    "CREATE TABLE helper (id INTEGER NOT NULL PRIMARY KEY, boss_part INTEGER, boss_id INTEGER, chief INTEGER, "
    "pay DECIMAL(10, 2), born DATE, CONSTRAINT paid CHECK (pay > 0), "
    "CONSTRAINT under FOREIGN KEY (boss_part, boss_id) REFERENCES boss (part, id) ON DELETE CASCADE, "
    "CONSTRAINT led FOREIGN KEY (chief) REFERENCES helper (id) ON UPDATE SET NULL)",
    "CREATE UNIQUE INDEX by_pay ON helper (pay, born)",
    "CREATE VIEW rich AS SELECT id, pay FROM helper WHERE born IS NOT NULL",
};
constexpr const char *kPostgres[] = {
    "CREATE DOMAIN percent AS integer CONSTRAINT hundred CHECK (VALUE BETWEEN 0 AND 100)",
    "CREATE TABLE shares (share percent)",
    "CREATE SEQUENCE counter",
    "CREATE PROCEDURE act(INOUT n integer) LANGUAGE sql AS 'SELECT 1'",
    "CREATE FUNCTION twice(n integer, word varchar DEFAULT 'x') RETURNS integer LANGUAGE sql AS 'SELECT 2 * n'",
    "CREATE FUNCTION pairs(n integer) RETURNS TABLE (a integer, b text) LANGUAGE sql AS $$SELECT 1, 'x'::text$$",
    "CREATE FUNCTION bosses() RETURNS SETOF boss LANGUAGE sql AS 'SELECT * FROM boss'",
    "CREATE COLLATION own (provider = libc, locale = 'C')",
    "CREATE CONVERSION turn FOR 'LATIN1' TO 'UTF8' FROM iso8859_1_to_utf8",
    "CREATE ROLE %1_guest LOGIN PASSWORD 'g'",
    "GRANT USAGE ON SCHEMA %1 TO %1_guest",
    "GRANT SELECT ON boss TO %1_guest",
    "GRANT UPDATE (pay) ON helper TO %1_guest",
    "GRANT USAGE ON SEQUENCE counter TO %1_guest WITH GRANT OPTION",
};
constexpr const char *kMariaDb[] = {
    "CREATE PROCEDURE act(INOUT n INTEGER) SET n = 1",
    "CREATE FUNCTION twice(n INTEGER, word VARCHAR(20)) RETURNS INTEGER DETERMINISTIC RETURN 2 * n",
    "CREATE USER %1_guest IDENTIFIED BY 'g'",
    "GRANT SELECT ON boss TO %1_guest",
    "GRANT UPDATE (pay) ON helper TO %1_guest",
    "GRANT CREATE TEMPORARY TABLES ON %1.* TO %1_guest WITH GRANT OPTION",
};

} // namespace

const char *NameOf(Server server)
{
    constexpr const char *kNames[] = {"BuiltIn", "SqliteOdbc", "Postgres", "MariaDb"};
    return kNames[int(server)];
}

std::unique_ptr<Sample> Sample::Make(Server server)
{
    static int made = 0;
    std::unique_ptr<Sample> sample(new Sample(server));
    sample->m_string = conformance::ConnectionStringOf(server);
    if (sample->m_string.isEmpty())
        return nullptr;
    if (sample->IsSqlite())
        sample->m_string.replace(QRegularExpression(QStringLiteral("Database=[^;]*")),
                                 QStringLiteral("Database=") +
                                     sample->m_folder.filePath(QStringLiteral("place.sqlite")));
    const QString place = QStringLiteral("r%1_%2").arg(QCoreApplication::applicationPid()).arg(++made);
    sample->m_connection = Connection::Create();
    sample->m_connection->Open(sample->m_string);
    const auto run = [&](const char *sql) {
        sample->Run(QString::fromLatin1(sql).replace(QLatin1String("%1"), place));
    };
    if (!sample->IsSqlite())
        sample->m_place = place;
    if (server == Server::Postgres) {
        run("CREATE SCHEMA %1");
        run("SET search_path TO %1");
    } else if (server == Server::MariaDb) {
        run("CREATE DATABASE %1 CHARACTER SET utf8mb4");
        run("USE %1");
    }
    for (const char *sql : kTables)
        run(sql);
    if (server == Server::Postgres)
        for (const char *sql : kPostgres)
            run(sql);
    if (server == Server::MariaDb)
        for (const char *sql : kMariaDb)
            run(sql);
    return sample;
}

Sample::~Sample()
{
    if (m_place.isEmpty())
        return;
    try {
        if (Is(Server::Postgres))
            for (const char *sql : {"DROP SCHEMA %1 CASCADE", "DROP ROLE IF EXISTS %1_guest"})
                Run(QString::fromLatin1(sql).arg(m_place));
        else
            for (const char *sql : {"DROP DATABASE %1", "DROP USER IF EXISTS %1_guest"})
                Run(QString::fromLatin1(sql).arg(m_place));
    } catch (const Error &error) {
        ADD_FAILURE() << error.what();
    }
}

QString Sample::Guest() const
{
    return QString(Is(Server::MariaDb) ? QStringLiteral("'%1_guest'@'%'") : QStringLiteral("%1_guest"))
        .replace(QLatin1String("%1"), m_place);
}

const ADODB::Family &Sample::Family() const
{
    return FamilyOf(conformance::ExpectedOf(m_server).Family);
}

QString Sample::Quoted(QString name) const
{
    const QString quote = m_connection->Property(QStringLiteral("Identifier Quote")).toString();
    return quote + name.replace(quote, quote + quote) + quote;
}

QStringList Sample::Mine(int schema, const QMap<QString, QString> &also) const
{
    QStringList list;
    const Rowset *rowset = FindRowset(schema);
    if (!rowset)
        return list;
    const QString end = Is(Server::Postgres) ? QStringLiteral("_SCHEMA") : QStringLiteral("_CATALOG");
    bool placed = IsSqlite();
    for (const char *restriction : rowset->Restrictions) {
        const QString name = QString::fromLatin1(restriction);
        list += also.value(name);
        if (name == u"TRUSTEE_NAME" && !IsSqlite() && list.back().isNull())
            list.back() = Guest();
        const bool isPlace = name.endsWith(end) || name == (Is(Server::Postgres) ? u"SCHEMA_NAME" : u"CATALOG_NAME");
        if (!placed && isPlace) {
            list.back() = m_place;
            placed = true;
        } else if (schema == adSchemaCatalogs && Is(Server::Postgres)) {
            list.back() = QStringLiteral("conformance");
        }
    }
    return list;
}

RecordsetPtr Sample::Rows(int schema, const QMap<QString, QString> &also)
{
    return m_connection->OpenSchema(schema, Mine(schema, also));
}

QStringList Sample::Lines(int schema, const QString &fields, const QMap<QString, QString> &also)
{
    return LinesOf(Rows(schema, also), fields);
}

ConnectionPtr Sample::AsGuest(const QString &database) const
{
    QString string = m_string;
    if (!database.isEmpty())
        string.replace(QRegularExpression(QStringLiteral("Database=[^;]*")), QStringLiteral("Database=") + database);
    const ConnectionPtr connection = Connection::Create();
    connection->Open(string, m_place + QStringLiteral("_guest"), QStringLiteral("g"));
    return connection;
}

QStringList LinesOf(const RecordsetPtr &rows, const QString &fields)
{
    QStringList lines;
    std::vector<int> columns;
    for (const QString &field : fields.split(u' '))
        for (int column = 0; column < rows->ColumnCount(); ++column)
            if (rows->Column(column).Name.compare(field, Qt::CaseInsensitive) == 0)
                columns.push_back(column);
    EXPECT_EQ(qsizetype(columns.size()), fields.split(u' ').size()) << fields.toStdString();
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
        QStringList cells;
        for (const int column : columns)
            cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
        lines += cells.join(u'|');
    }
    return lines;
}

} // namespace rowsets
