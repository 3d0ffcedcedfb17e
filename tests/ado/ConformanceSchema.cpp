// The schema rowsets over every driver, on one small sample: their columns by name, order and type, and their content.
#include "ado/family/Family.h"
#include "ado/schema/Schema.h"
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

namespace {

using Rows = std::vector<QStringList>;

// The named fields of each row, joined by "|"; null is "~".
QStringList Lines(const RecordsetPtr &rows, const QStringList &fields)
{
    QStringList lines;
    std::vector<int> columns;
    for (const QString &field : fields)
        for (int column = 0; column < rows->ColumnCount(); ++column)
            if (rows->Column(column).Name.compare(field, Qt::CaseInsensitive) == 0)
                columns.push_back(column);
    EXPECT_EQ(qsizetype(columns.size()), fields.size());
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
        QStringList cells;
        for (const int column : columns)
            cells += rows->CellIsNull(row, column) ? QStringLiteral("~") : rows->CellText(row, column);
        lines += cells.join(u'|');
    }
    return lines;
}

QString Names(const RecordsetPtr &rows)
{
    QStringList names;
    for (int column = 0; column < rows->ColumnCount(); ++column)
        names += rows->Column(column).Name;
    return names.join(u' ');
}

const char *const kSample[] = {
    "CREATE TABLE boss (id INTEGER NOT NULL, part INTEGER NOT NULL, name VARCHAR(30) DEFAULT 'none', PRIMARY KEY "
    "(part, id))",
    "CREATE TABLE helper (id INTEGER NOT NULL PRIMARY KEY, boss_part INTEGER, boss_id INTEGER, chief INTEGER, "
    "pay DECIMAL(10, 2), born DATE, "
    "FOREIGN KEY (boss_part, boss_id) REFERENCES boss (part, id) ON DELETE CASCADE, "
    "FOREIGN KEY (chief) REFERENCES helper (id) ON UPDATE SET NULL)",
    "CREATE UNIQUE INDEX by_pay ON helper (pay, born DESC)",
    "CREATE INDEX by_born ON helper (born)",
    "CREATE VIEW rich AS SELECT id, pay FROM helper WHERE pay > 10",
};

} // namespace

namespace {

// A session whose family nobody knows: what there is to learn comes from the driver's functions.
class Stranger : public Session
{
public:
    explicit Stranger(Session &real) : m_real(real) {}
    ExecuteResult Execute(const QString &sql) override
    {
        ADD_FAILURE() << "no query is known for a stranger: " << sql.toStdString();
        return {};
    }
    qint64 ExecuteBatch(const Batch &) override { return 0; }
    void Begin() override {}
    void Commit() override {}
    void Rollback() override {}
    std::unique_ptr<ResultSet> Catalogue(SchemaEnum schema, const QStringList &restrictions) override
    {
        return m_real.Catalogue(schema, restrictions);
    }
    const ADODB::Family &Family() const override { return NoFamily(); }
    QString ProductName() const override { return QStringLiteral("Strange"); }
    QString ProductVersion() const override { return {}; }
    QString IdentifierQuote() const override { return {}; }
    QString DatabaseName() const override { return {}; }
    void Cancel() noexcept override {}
    bool IsAlive() const override { return true; }

private:
    Session &m_real;
};

} // namespace

class ConformanceOfSchemas : public Conformance
{
protected:
    void SetUp() override
    {
        Conformance::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        for (const char *statement : kSample)
            Run(QString::fromLatin1(statement));
    }

    // What this test made, whatever else the server holds: the schema is a restriction on PostgreSQL alone.
    QStringList Mine(std::initializer_list<QString> restrictions) const
    {
        QStringList list(restrictions);
        if (!OwnSchema().isNull())
            list[1] = m_place;
        return list;
    }
    QString Catalogue() const
    {
        const QString own = QString::fromLatin1(Expects().Catalogue);
        return own.isEmpty() ? m_place : own;
    }
    QString Schema() const { return OwnSchema().isNull() ? QStringLiteral("~") : m_place; }
};

INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfSchemas,
                         testing::Values(Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb),
                         [](const testing::TestParamInfo<Server> &server) {
                             return std::string(server.param == Server::BuiltIn      ? "BuiltIn"
                                                : server.param == Server::SqliteOdbc ? "SqliteOdbc"
                                                : server.param == Server::Postgres   ? "Postgres"
                                                                                     : "MariaDb");
                         });

TEST_P(ConformanceOfSchemas, Tables)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaTables);
    EXPECT_EQ(Names(all), u"TABLE_CATALOG TABLE_SCHEMA TABLE_NAME TABLE_TYPE TABLE_GUID DESCRIPTION TABLE_PROPID "
                          u"DATE_CREATED DATE_MODIFIED");
    const RecordsetPtr mine = m_connection->OpenSchema(adSchemaTables, Mine({{}, {}, {}, {}}));
    QStringList lines = Lines(mine, {QStringLiteral("Table_Name"), QStringLiteral("Table_Type")});
    lines.removeAll(QStringLiteral("sqlite_schema|SYSTEM TABLE"));
    lines.removeAll(QStringLiteral("sqlite_temp_schema|SYSTEM TABLE"));
    EXPECT_EQ(lines.join(u' '), u"boss|TABLE helper|TABLE rich|VIEW");
    const RecordsetPtr one = m_connection->OpenSchema(adSchemaTables, Mine({{}, {}, QStringLiteral("boss"), {}}));
    EXPECT_EQ(
        Lines(one, {QStringLiteral("TABLE_CATALOG"), QStringLiteral("TABLE_SCHEMA"), QStringLiteral("TABLE_NAME")})
            .join(u' '),
        Catalogue() + u'|' + Schema() + QStringLiteral("|boss"));
    const RecordsetPtr views = m_connection->OpenSchema(adSchemaTables, Mine({{}, {}, {}, QStringLiteral("VIEW")}));
    EXPECT_EQ(Lines(views, {QStringLiteral("TABLE_NAME")}).join(u' '), u"rich");
    // As the windows use it.
    all->SetFilter(QStringLiteral("TABLE_TYPE = 'TABLE'"));
    const QStringList tables = Lines(all, {QStringLiteral("TABLE_NAME")});
    EXPECT_TRUE(tables.contains(QStringLiteral("helper")));
    EXPECT_FALSE(tables.contains(QStringLiteral("rich")));
    for (const QString &name : tables)
        EXPECT_FALSE(name.startsWith(u"pg_") || name.startsWith(u"sqlite_") || name.startsWith(u"sql_"))
            << name.toStdString();
}

TEST_P(ConformanceOfSchemas, SystemTablesKeepTheirTypes)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaTables);
    const QStringList lines = Lines(all, {QStringLiteral("TABLE_NAME"), QStringLiteral("TABLE_TYPE")});
    if (IsSqlite()) {
        EXPECT_TRUE(lines.contains(QStringLiteral("sqlite_schema|SYSTEM TABLE")));
    } else if (Is(Server::Postgres)) {
        EXPECT_TRUE(lines.contains(QStringLiteral("pg_class|SYSTEM TABLE")));
        EXPECT_TRUE(lines.contains(QStringLiteral("pg_views|SYSTEM VIEW")));
        Run(QStringLiteral("CREATE MATERIALIZED VIEW stored AS SELECT * FROM helper"));
        Run(QStringLiteral("CREATE TEMPORARY TABLE passing (a INTEGER)"));
        const RecordsetPtr again =
            m_connection->OpenSchema(adSchemaTables, {QString(), QString(), QStringLiteral("stored")});
        EXPECT_EQ(Lines(again, {QStringLiteral("TABLE_TYPE")}).join(u' '), u"VIEW");
        const RecordsetPtr passing =
            m_connection->OpenSchema(adSchemaTables, {QString(), QString(), QStringLiteral("passing")});
        EXPECT_EQ(Lines(passing, {QStringLiteral("TABLE_TYPE")}).join(u' '), u"TABLE");
    } else {
        for (const QString &line : lines) // the current database alone
            EXPECT_FALSE(line.startsWith(QLatin1String("user|")) || line.endsWith(QLatin1String("SYSTEM VIEW")));
        Run(QStringLiteral("USE information_schema"));
        const RecordsetPtr system = m_connection->OpenSchema(adSchemaTables);
        EXPECT_TRUE(Lines(system, {QStringLiteral("TABLE_NAME"), QStringLiteral("TABLE_TYPE")})
                        .contains(QStringLiteral("TABLES|SYSTEM VIEW")));
        Run(QStringLiteral("USE ") + m_place);
    }
}

TEST_P(ConformanceOfSchemas, Columns)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaColumns, Mine({{}, {}, {}, {}}));
    EXPECT_EQ(
        Names(all),
        u"TABLE_CATALOG TABLE_SCHEMA TABLE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID ORDINAL_POSITION "
        u"COLUMN_HASDEFAULT COLUMN_DEFAULT COLUMN_FLAGS IS_NULLABLE DATA_TYPE TYPE_GUID CHARACTER_MAXIMUM_LENGTH "
        u"CHARACTER_OCTET_LENGTH NUMERIC_PRECISION NUMERIC_SCALE DATETIME_PRECISION CHARACTER_SET_CATALOG "
        u"CHARACTER_SET_SCHEMA CHARACTER_SET_NAME COLLATION_CATALOG COLLATION_SCHEMA COLLATION_NAME DOMAIN_CATALOG "
        u"DOMAIN_SCHEMA DOMAIN_NAME DESCRIPTION");
    EXPECT_EQ(
        Lines(all, {QStringLiteral("TABLE_NAME"), QStringLiteral("COLUMN_NAME"), QStringLiteral("ORDINAL_POSITION")})
            .join(u' '),
        u"boss|id|1 boss|part|2 boss|name|3 helper|id|1 helper|boss_part|2 helper|boss_id|3 helper|chief|4 "
        u"helper|pay|5 helper|born|6 rich|id|1 rich|pay|2");
    const RecordsetPtr name =
        m_connection->OpenSchema(adSchemaColumns, Mine({{}, {}, QStringLiteral("boss"), QStringLiteral("name")}));
    ASSERT_EQ(name->RecordCount(), 1);
    EXPECT_EQ(Lines(name, {QStringLiteral("DATA_TYPE"), QStringLiteral("CHARACTER_MAXIMUM_LENGTH"),
                           QStringLiteral("IS_NULLABLE"), QStringLiteral("COLUMN_HASDEFAULT")})
                  .join(u' '),
              u"200|30|True|True");
    EXPECT_TRUE(Lines(name, {QStringLiteral("COLUMN_DEFAULT")})[0].startsWith(u"'none'"));
    const RecordsetPtr pay =
        m_connection->OpenSchema(adSchemaColumns, Mine({{}, {}, QStringLiteral("helper"), QStringLiteral("pay")}));
    EXPECT_EQ(
        Lines(pay, {QStringLiteral("DATA_TYPE"), QStringLiteral("NUMERIC_PRECISION"), QStringLiteral("NUMERIC_SCALE"),
                    QStringLiteral("COLUMN_HASDEFAULT"), QStringLiteral("COLUMN_DEFAULT")})
            .join(u' '),
        u"131|10|2|False|~");
    const RecordsetPtr id =
        m_connection->OpenSchema(adSchemaColumns, Mine({{}, {}, QStringLiteral("boss"), QStringLiteral("id")}));
    EXPECT_EQ(Lines(id, {QStringLiteral("DATA_TYPE"), QStringLiteral("IS_NULLABLE")}).join(u' '), u"3|False");
    // The server's own are there for those who name them, and do not bury the user's.
    const QStringList everything = Lines(m_connection->OpenSchema(adSchemaColumns), {QStringLiteral("TABLE_NAME")});
    EXPECT_FALSE(everything.contains(QStringLiteral("pg_class")));
    EXPECT_TRUE(everything.contains(QStringLiteral("helper")));
    if (Is(Server::Postgres)) {
        EXPECT_GT(m_connection->OpenSchema(adSchemaColumns, {QString(), QString(), QStringLiteral("pg_class")})
                      ->RecordCount(),
                  10);
    }
}

TEST_P(ConformanceOfSchemas, Indexes)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaIndexes, Mine({{}, {}, {}, {}, {}}));
    EXPECT_EQ(
        Names(all),
        u"TABLE_CATALOG TABLE_SCHEMA TABLE_NAME INDEX_CATALOG INDEX_SCHEMA INDEX_NAME PRIMARY_KEY UNIQUE CLUSTERED "
        u"TYPE FILL_FACTOR INITIAL_SIZE NULLS SORT_BOOKMARKS AUTO_UPDATE NULL_COLLATION ORDINAL_POSITION COLUMN_NAME "
        u"COLUMN_GUID COLUMN_PROPID COLLATION CARDINALITY PAGES FILTER_CONDITION INTEGRATED");
    const QStringList fields{QStringLiteral("TABLE_NAME"),       QStringLiteral("INDEX_NAME"),
                             QStringLiteral("UNIQUE"),           QStringLiteral("PRIMARY_KEY"),
                             QStringLiteral("ORDINAL_POSITION"), QStringLiteral("COLUMN_NAME")};
    const QStringList lines = Lines(all, fields);
    EXPECT_TRUE(lines.contains(QStringLiteral("helper|by_pay|True|False|1|pay"))) << lines.join(u' ').toStdString();
    EXPECT_TRUE(lines.contains(QStringLiteral("helper|by_pay|True|False|2|born")));
    EXPECT_TRUE(lines.contains(QStringLiteral("helper|by_born|False|False|1|born")));
    EXPECT_EQ(lines.filter(QLatin1String("|True|True|1|part")).size(), 1);
    EXPECT_EQ(lines.filter(QLatin1String("|True|True|2|id")).size(), 1);
    const RecordsetPtr one = m_connection->OpenSchema(
        adSchemaIndexes, Mine({{}, {}, QStringLiteral("by_pay"), {}, QStringLiteral("helper")}));
    EXPECT_EQ(one->RecordCount(), 2);
    EXPECT_EQ(Lines(one, {QStringLiteral("TYPE")}).join(u' '), u"1 1");
    if (!Is(Server::MariaDb)) { // which took DESC for a comment until lately
        EXPECT_EQ(Lines(one, {QStringLiteral("COLLATION")}).join(u' '), u"1 2");
    }
    EXPECT_EQ(
        m_connection->OpenSchema(adSchemaIndexes, Mine({{}, {}, {}, {}, QStringLiteral("nothing")}))->RecordCount(), 0);
}

TEST_P(ConformanceOfSchemas, Views)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaViews, Mine({{}, {}, {}}));
    EXPECT_EQ(Names(all),
              u"TABLE_CATALOG TABLE_SCHEMA TABLE_NAME VIEW_DEFINITION CHECK_OPTION IS_UPDATABLE DESCRIPTION "
              u"DATE_CREATED DATE_MODIFIED");
    EXPECT_EQ(Lines(all, {QStringLiteral("TABLE_NAME"), QStringLiteral("CHECK_OPTION")}).join(u' '), u"rich|False");
    EXPECT_TRUE(Lines(all, {QStringLiteral("VIEW_DEFINITION")})[0].contains(u"helper"));
    EXPECT_EQ(m_connection->OpenSchema(adSchemaViews, Mine({{}, {}, QStringLiteral("boss")}))->RecordCount(), 0);
}

TEST_P(ConformanceOfSchemas, ForeignKeys)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaForeignKeys);
    EXPECT_EQ(Names(all),
              u"PK_TABLE_CATALOG PK_TABLE_SCHEMA PK_TABLE_NAME PK_COLUMN_NAME PK_COLUMN_GUID PK_COLUMN_PROPID "
              u"FK_TABLE_CATALOG FK_TABLE_SCHEMA FK_TABLE_NAME FK_COLUMN_NAME FK_COLUMN_GUID FK_COLUMN_PROPID ORDINAL "
              u"UPDATE_RULE DELETE_RULE PK_NAME FK_NAME DEFERRABILITY");
    const QStringList fields{QStringLiteral("PK_TABLE_NAME"), QStringLiteral("PK_COLUMN_NAME"),
                             QStringLiteral("FK_TABLE_NAME"), QStringLiteral("FK_COLUMN_NAME"),
                             QStringLiteral("ORDINAL"),       QStringLiteral("DELETE_RULE")};
    QStringList restrictions{{}, {}, QStringLiteral("boss"), {}, {}, {}};
    restrictions[1] = OwnSchema();
    EXPECT_EQ(Lines(m_connection->OpenSchema(adSchemaForeignKeys, restrictions), fields).join(u' '),
              u"boss|part|helper|boss_part|1|CASCADE boss|id|helper|boss_id|2|CASCADE");
    QStringList toItself{{}, {}, QStringLiteral("helper"), {}, {}, QStringLiteral("helper")};
    toItself[4] = OwnSchema();
    const RecordsetPtr own = m_connection->OpenSchema(adSchemaForeignKeys, toItself);
    ASSERT_EQ(own->RecordCount(), 1);
    EXPECT_EQ(Lines(own, {QStringLiteral("PK_COLUMN_NAME"), QStringLiteral("FK_COLUMN_NAME"),
                          QStringLiteral("UPDATE_RULE"), QStringLiteral("DEFERRABILITY")})
                  .join(u' '),
              u"id|chief|SET NULL|3");
    EXPECT_NE(Lines(own, {QStringLiteral("FK_NAME")})[0], u"~");
    EXPECT_GE(all->RecordCount(), 3);
}

TEST_P(ConformanceOfSchemas, PrimaryKeys)
{
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaPrimaryKeys, Mine({{}, {}, {}}));
    EXPECT_EQ(Names(all),
              u"TABLE_CATALOG TABLE_SCHEMA TABLE_NAME COLUMN_NAME COLUMN_GUID COLUMN_PROPID ORDINAL PK_NAME");
    EXPECT_EQ(
        Lines(all, {QStringLiteral("TABLE_NAME"), QStringLiteral("COLUMN_NAME"), QStringLiteral("ORDINAL")}).join(u' '),
        u"boss|part|1 boss|id|2 helper|id|1");
    EXPECT_EQ(m_connection->OpenSchema(adSchemaPrimaryKeys, Mine({{}, {}, QStringLiteral("helper")}))->RecordCount(),
              1);
    EXPECT_EQ(m_connection->OpenSchema(adSchemaPrimaryKeys, Mine({{}, {}, QStringLiteral("rich")}))->RecordCount(), 0);
}

TEST_P(ConformanceOfSchemas, Procedures)
{
    if (IsSqlite()) { // has no such notion
        const Error error = ErrorFrom([&] { m_connection->OpenSchema(adSchemaProcedures); });
        EXPECT_EQ(error.Number, adErrFeatureNotAvailable);
        EXPECT_EQ(error.Description, u"Object or provider is not capable of performing requested operation.");
        return;
    }
    Run(Pick({"", "CREATE PROCEDURE act() LANGUAGE sql AS 'DELETE FROM helper'",
              "CREATE PROCEDURE act() DELETE FROM helper"}));
    Run(Pick({"", "CREATE FUNCTION twice(n integer) RETURNS integer LANGUAGE sql AS 'SELECT 2 * n'",
              "CREATE FUNCTION twice(n INTEGER) RETURNS INTEGER DETERMINISTIC RETURN 2 * n"}));
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaProcedures, Mine({{}, {}, {}, {}}));
    EXPECT_EQ(Names(all), u"PROCEDURE_CATALOG PROCEDURE_SCHEMA PROCEDURE_NAME PROCEDURE_TYPE PROCEDURE_DEFINITION "
                          u"DESCRIPTION DATE_CREATED DATE_MODIFIED");
    EXPECT_EQ(Lines(all, {QStringLiteral("PROCEDURE_NAME"), QStringLiteral("PROCEDURE_TYPE")}).join(u' '),
              u"act|3 twice|1");
    EXPECT_TRUE(Lines(all, {QStringLiteral("PROCEDURE_DEFINITION")})[0].contains(u"helper"));
    EXPECT_EQ(Lines(m_connection->OpenSchema(adSchemaProcedures, Mine({{}, {}, {}, QStringLiteral("3")})),
                    {QStringLiteral("PROCEDURE_NAME")})
                  .join(u' '),
              u"act");
    const QStringList everything =
        Lines(m_connection->OpenSchema(adSchemaProcedures), {QStringLiteral("PROCEDURE_NAME")});
    EXPECT_FALSE(everything.contains(QStringLiteral("pg_backend_pid")));
}

TEST_P(ConformanceOfSchemas, WhatNobodyHasIsRefused)
{
    for (const int schema : {int(adSchemaCubes), int(adSchemaAsserts), 4711}) {
        const Error error = ErrorFrom([&] { m_connection->OpenSchema(schema); });
        EXPECT_EQ(error.Number, adErrFeatureNotAvailable);
        EXPECT_EQ(error.Description, u"Object or provider is not capable of performing requested operation.");
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT 1")).ToInt64(), 1);
}

// The way for families without a catalogue of ours: the driver's functions, read by number, keys table by table.
TEST_P(ConformanceOfSchemas, TheDriversOwnFunctionsGiveTheSameNames)
{
    if (Is(Server::BuiltIn)) // has its catalogue only
        return;
    ConnectionPtr connection = m_connection;
    Connection::Turn turn(connection, QStringLiteral("catalogue"));
    turn.Begin();
    const auto rows = [&](SchemaEnum schema, const QStringList &restrictions) {
        const std::unique_ptr<ResultSet> result = turn.Driver().Catalogue(schema, restrictions);
        return ReadAll(*result);
    };
    const QString catalogue = OwnCatalogue(), schema = OwnSchema();
    QStringList tables = Lines(rows(adSchemaTables, {catalogue, schema, {}, {}}),
                               {QStringLiteral("TABLE_NAME"), QStringLiteral("TABLE_TYPE")});
    EXPECT_EQ(tables.filter(QLatin1String("|TABLE")).join(u' '), u"boss|TABLE helper|TABLE");
    EXPECT_TRUE(tables.contains(QStringLiteral("rich|VIEW")));
    EXPECT_EQ(Lines(rows(adSchemaColumns, {catalogue, schema, QStringLiteral("boss"), {}}),
                    {QStringLiteral("COLUMN_NAME"), QStringLiteral("ORDINAL_POSITION")})
                  .join(u' '),
              u"id|1 part|2 name|3");
    EXPECT_EQ(Lines(rows(adSchemaPrimaryKeys, {catalogue, schema, QStringLiteral("helper")}),
                    {QStringLiteral("TABLE_NAME"), QStringLiteral("COLUMN_NAME")})
                  .join(u' '),
              u"helper|id");
    const QStringList keys = Lines(rows(adSchemaForeignKeys, {{}, {}, {}, catalogue, schema, QStringLiteral("helper")}),
                                   {QStringLiteral("PK_TABLE_NAME"), QStringLiteral("FK_COLUMN_NAME")});
    EXPECT_EQ(keys.size(), 3);
    EXPECT_TRUE(keys.contains(QStringLiteral("boss|boss_part")));
    EXPECT_TRUE(Lines(rows(adSchemaIndexes, {catalogue, schema, {}, {}, QStringLiteral("helper")}),
                      {QStringLiteral("INDEX_NAME"), QStringLiteral("UNIQUE"), QStringLiteral("COLUMN_NAME")})
                    .contains(QStringLiteral("by_pay|True|pay")));
}

TEST_P(ConformanceOfSchemas, AnUnknownFamilyIsReadTableByTable)
{
    if (Is(Server::BuiltIn)) // is no stranger
        return;
    Connection::Turn turn(m_connection, QStringLiteral("catalogue"));
    turn.Begin();
    Stranger stranger(turn.Driver());
    QStringList restrictions{{}, {}, {}, {}, {}, QStringLiteral("helper")};
    restrictions[4] = OwnSchema();
    restrictions[3] = OwnCatalogue();
    const QStringList keys =
        Lines(OpenSchemaRowset(stranger, adSchemaForeignKeys, restrictions),
              {QStringLiteral("PK_TABLE_NAME"), QStringLiteral("PK_COLUMN_NAME"), QStringLiteral("FK_COLUMN_NAME")});
    EXPECT_EQ(keys.size(), 3);
    EXPECT_TRUE(keys.contains(QStringLiteral("boss|part|boss_part"))) << keys.join(u' ').toStdString();
    const QString catalogue = OwnCatalogue(), schema = OwnSchema();
    QStringList primary = Lines(OpenSchemaRowset(stranger, adSchemaPrimaryKeys, {catalogue, schema, {}}),
                                {QStringLiteral("TABLE_NAME"), QStringLiteral("COLUMN_NAME")});
    primary.sort(); // some drivers number the columns of a key as they stand in the table
    EXPECT_EQ(primary.join(u' '), u"boss|id boss|part helper|id");
    EXPECT_TRUE(Lines(OpenSchemaRowset(stranger, adSchemaIndexes, {catalogue, schema, {}, {}, {}}),
                      {QStringLiteral("INDEX_NAME"), QStringLiteral("COLUMN_NAME")})
                    .contains(QStringLiteral("by_born|born")));
    EXPECT_TRUE(
        Lines(OpenSchemaRowset(stranger, adSchemaViews, {catalogue, schema, {}}), {QStringLiteral("TABLE_NAME")})
            .contains(QStringLiteral("rich")));
    EXPECT_EQ(ErrorFrom([&] { OpenSchemaRowset(stranger, adSchemaTrustees, {}); }).Number, adErrFeatureNotAvailable);
}

} // namespace conformance
