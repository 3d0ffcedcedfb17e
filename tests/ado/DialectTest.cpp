// SQL Server's and Oracle's catalogue queries, though no server of theirs is here: each runs over a stand-in for the
// catalogue, tables and views of the same names and columns in a database of PostgreSQL, filled with what such a server
// would hold. What the rowsets say is then looked at.
#include "ado/DriverList.h"
#include "ado/family/Family.h"
#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/Schema.h"
#include "tests/ado/RowsetSample.h"
#include "tests/support/ScriptedDriver.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace ADODB;
using conformance::Server;

namespace {

// The standard's views are PostgreSQL's own, seen through a schema "ms"; those that it fills otherwise, and the
// server's own, are tables.
constexpr const char *kSqlServer[] = {
    "CREATE SCHEMA dbo",
    "SET search_path TO dbo, public",
    "CREATE FUNCTION public.db_name() RETURNS name LANGUAGE sql AS 'SELECT current_database()'",
    "CREATE DOMAIN percent AS integer",
    "CREATE TABLE boss (id INTEGER NOT NULL, part INTEGER NOT NULL, name VARCHAR(30) DEFAULT 'none', share percent, "
    "CONSTRAINT named CHECK (name <> ')'), CONSTRAINT once UNIQUE (name), CONSTRAINT pk_boss PRIMARY KEY (part, id))",
    "CREATE TABLE helper (id INTEGER NOT NULL CONSTRAINT pk_helper PRIMARY KEY, boss_part INTEGER, boss_id INTEGER, "
    "CONSTRAINT under FOREIGN KEY (boss_part, boss_id) REFERENCES boss (part, id) ON DELETE CASCADE)",
    "CREATE VIEW rich AS SELECT id, name FROM boss",
    "CREATE FUNCTION twice(n integer) RETURNS integer LANGUAGE sql AS 'SELECT 2 * n'",
    "CREATE PROCEDURE act() LANGUAGE sql AS 'SELECT 1'",
    "GRANT SELECT ON boss TO PUBLIC",
    "GRANT UPDATE (name) ON boss TO PUBLIC",
    "CREATE SCHEMA ms",
    "CREATE TABLE ms.parameters (specific_catalog text, specific_schema text, specific_name text, ordinal_position "
    "int, "
    "parameter_mode text, parameter_name text, data_type text, character_maximum_length int, character_octet_length "
    "int, numeric_precision int, numeric_scale int)",
    "INSERT INTO ms.parameters VALUES ('d', 'dbo', 'twice', 0, 'OUT', '', 'int', NULL, NULL, 10, 0), "
    "('d', 'dbo', 'twice', 1, 'IN', '@n', 'int', NULL, NULL, 10, 0), "
    "('d', 'dbo', 'act', 1, 'INOUT', '@all', 'nvarchar', -1, -1, NULL, NULL)",
    "CREATE TABLE ms.routine_columns (table_catalog text, table_schema text, table_name text, column_name text, "
    "ordinal_position int, is_nullable text, data_type text, character_maximum_length int, character_octet_length int, "
    "numeric_precision int, numeric_scale int)",
    "INSERT INTO ms.routine_columns VALUES ('d', 'dbo', 'pairs', 'b', 2, 'YES', 'varchar', 10, 10, NULL, NULL), "
    "('d', 'dbo', 'pairs', 'a', 1, 'NO', 'int', NULL, NULL, 10, 0)",
    "CREATE SCHEMA sys",
    "CREATE TABLE sys.schemas (schema_id int, name text)",
    "INSERT INTO sys.schemas VALUES (1, 'dbo')",
    "CREATE TABLE sys.objects (object_id int, name text, schema_id int, type char(2), is_ms_shipped int)",
    "INSERT INTO sys.objects VALUES (10, 'boss', 1, 'U', 0), (20, 'helper', 1, 'U', 0), (30, 'inner', 1, 'S', 1)",
    "CREATE TABLE sys.columns (object_id int, column_id int, name text)",
    "INSERT INTO sys.columns VALUES (10, 1, 'id'), (10, 2, 'part'), (10, 3, 'name'), (20, 1, 'id'), (20, 2, "
    "'boss_part'), (20, 3, 'boss_id'), (30, 1, 'x')",
    "CREATE TABLE sys.indexes (object_id int, index_id int, name text, type int, is_unique int, is_primary_key int, "
    "fill_factor int, filter_definition text)",
    "INSERT INTO sys.indexes VALUES (10, 1, 'pk_boss', 1, 1, 1, 0, NULL), (10, 2, 'by_name', 2, 0, 0, 80, "
    "'([id]>(1))'), "
    "(20, 0, NULL, 0, 0, 0, 0, NULL), (20, 3, 'pk_helper', 2, 1, 1, 0, NULL), (30, 1, 'hidden', 1, 1, 1, 0, NULL)",
    "CREATE TABLE sys.index_columns (object_id int, index_id int, column_id int, key_ordinal int, is_descending_key "
    "int)",
    "INSERT INTO sys.index_columns VALUES (10, 1, 2, 1, 0), (10, 1, 1, 2, 0), (10, 2, 3, 1, 1), (10, 2, 1, 0, 0), "
    "(20, 3, 1, 1, 0), (30, 1, 1, 1, 0)",
    "CREATE TABLE sys.foreign_keys (object_id int, name text, parent_object_id int, referenced_object_id int, "
    "key_index_id int, update_referential_action_desc text, delete_referential_action_desc text)",
    "INSERT INTO sys.foreign_keys VALUES (50, 'under', 20, 10, 1, 'NO_ACTION', 'CASCADE')",
    "CREATE TABLE sys.foreign_key_columns (constraint_object_id int, constraint_column_id int, parent_object_id int, "
    "parent_column_id int, referenced_object_id int, referenced_column_id int)",
    "INSERT INTO sys.foreign_key_columns VALUES (50, 1, 20, 2, 10, 2), (50, 2, 20, 3, 10, 1)",
    "CREATE TABLE sys.partitions (object_id int, index_id int, rows bigint)",
    "INSERT INTO sys.partitions VALUES (10, 1, 40), (10, 1, 2), (10, 2, 42), (20, 0, 7)",
    "CREATE TABLE sys.databases (name text)",
    "INSERT INTO sys.databases VALUES ('master'), ('shop')",
    "CREATE TABLE sys.database_principals (principal_id int, name text, type char(1))",
    "INSERT INTO sys.database_principals VALUES (1, 'dbo', 'S'), (2, 'reader', 'R')",
    "CREATE TABLE sys.database_permissions (class int, class_desc text, major_id int, grantee_principal_id int, "
    "grantor_principal_id int, permission_name text, state char(1))",
    "INSERT INTO sys.database_permissions VALUES (3, 'SCHEMA', 1, 2, 1, 'EXECUTE', 'W'), (0, 'DATABASE', 0, 2, 1, "
    "'CONNECT', 'G'), (0, 'DATABASE', 0, 2, 1, 'BACKUP', 'D'), (1, 'OBJECT_OR_COLUMN', 10, 2, 1, 'SELECT', 'G')",
    "CREATE TABLE sys.syscharsets (name text, type int)",
    "INSERT INTO sys.syscharsets VALUES ('iso_1', 1001), ('nocase_iso', 2001)",
    "CREATE FUNCTION sys.fn_helpcollations() RETURNS TABLE (name text, description text) LANGUAGE sql AS $$SELECT "
    "'Latin1_General_CI_AS', 'x'$$",
};
constexpr const char *kStandardViews[] = {
    "tables",
    "columns",
    "views",
    "routines",
    "check_constraints",
    "constraint_column_usage",
    "constraint_table_usage",
    "key_column_usage",
    "referential_constraints",
    "table_constraints",
    "column_domain_usage",
    "column_privileges",
    "table_privileges",
    "schemata",
    "view_column_usage",
    "view_table_usage",
};

constexpr const char *kOracle[] = {
    "CREATE SCHEMA ora",
    "SET search_path TO ora",
    "CREATE TABLE all_objects (owner text, object_name text, object_type text, created date, last_ddl_time date)",
    "INSERT INTO all_objects VALUES ('SHOP', 'BOSS', 'TABLE', '2020-02-03', '2021-02-03'), ('SHOP', 'RICH', 'VIEW', "
    "'2020-02-03', NULL), ('SYS', 'OBJ$', 'TABLE', NULL, NULL), ('SHOP', 'ACT', 'PROCEDURE', NULL, NULL), ('SHOP', "
    "'TWICE', 'FUNCTION', NULL, NULL), ('SYS', 'DBMS', 'PROCEDURE', NULL, NULL), ('SHOP', 'SQ', 'SEQUENCE', NULL, "
    "NULL)",
    "CREATE TABLE all_tab_comments (owner text, table_name text, comments text)",
    "INSERT INTO all_tab_comments VALUES ('SHOP', 'BOSS', 'who leads')",
    "CREATE TABLE all_tab_columns (owner text, table_name text, column_name text, column_id int, data_default text, "
    "nullable text, data_type text, data_length int, char_length int, data_precision int, data_scale int, "
    "character_set_name text)",
    "INSERT INTO all_tab_columns VALUES ('SHOP', 'BOSS', 'NAME', 3, '''none''', 'Y', 'VARCHAR2', 90, 30, NULL, NULL, "
    "'CHAR_CS'), ('SHOP', 'BOSS', 'ID', 1, NULL, 'N', 'NUMBER', 22, 0, 10, 2, NULL), ('SHOP', 'BOSS', 'BORN', 2, NULL, "
    "'Y', 'DATE', 7, 0, NULL, NULL, NULL), ('SHOP', 'BOSS', 'SEEN', 4, NULL, 'Y', 'TIMESTAMP(6) WITH TIME ZONE', 13, "
    "0, NULL, 6, NULL), ('SYS', 'OBJ$', 'X', 1, NULL, 'N', 'NUMBER', 22, 0, NULL, NULL, NULL)",
    "CREATE TABLE all_col_comments (owner text, table_name text, column_name text, comments text)",
    "INSERT INTO all_col_comments VALUES ('SHOP', 'BOSS', 'NAME', 'in full')",
    "CREATE TABLE all_views (owner text, view_name text, text text)",
    "INSERT INTO all_views VALUES ('SHOP', 'RICH', 'SELECT ID FROM BOSS'), ('SYS', 'ALL_X', 'SELECT 1')",
    "CREATE TABLE all_arguments (owner text, object_name text, package_name text, argument_name text, \"position\" "
    "int, "
    "in_out text, defaulted text, data_type text, data_length int, char_length int, data_precision int, data_scale "
    "int, "
    "data_level int)",
    "INSERT INTO all_arguments VALUES ('SHOP', 'TWICE', NULL, NULL, 0, 'OUT', 'N', 'NUMBER', 22, 0, NULL, NULL, 0), "
    "('SHOP', 'TWICE', NULL, 'N', 1, 'IN', 'Y', 'NUMBER', 22, 0, NULL, NULL, 0), ('SHOP', 'ACT', NULL, NULL, 1, NULL, "
    "NULL, NULL, NULL, NULL, NULL, NULL, 0), ('SHOP', 'PUT', 'PACK', 'A', 1, 'IN', 'N', 'NUMBER', 22, 0, NULL, NULL, "
    "0)",
    "CREATE TABLE all_indexes (owner text, index_name text, index_type text, table_owner text, table_name text, "
    "uniqueness text, distinct_keys int, leaf_blocks int)",
    "INSERT INTO all_indexes VALUES ('SHOP', 'PK_BOSS', 'NORMAL', 'SHOP', 'BOSS', 'UNIQUE', 9, 3), ('SHOP', 'BY_NAME', "
    "'BITMAP', 'SHOP', 'BOSS', 'NONUNIQUE', NULL, NULL)",
    "CREATE TABLE all_ind_columns (index_owner text, index_name text, column_name text, column_position int, descend "
    "text)",
    "INSERT INTO all_ind_columns VALUES ('SHOP', 'PK_BOSS', 'ID', 1, 'ASC'), ('SHOP', 'PK_BOSS', 'BORN', 2, 'DESC'), "
    "('SHOP', 'BY_NAME', 'NAME', 1, 'ASC')",
    "CREATE TABLE all_constraints (owner text, constraint_name text, constraint_type text, table_name text, "
    "search_condition text, r_owner text, r_constraint_name text, delete_rule text, \"deferrable\" text, deferred "
    "text, "
    "index_name text)",
    "INSERT INTO all_constraints VALUES ('SHOP', 'PK_BOSS', 'P', 'BOSS', NULL, NULL, NULL, NULL, 'NOT DEFERRABLE', "
    "'IMMEDIATE', 'PK_BOSS'), ('SHOP', 'UNDER', 'R', 'HELPER', NULL, 'SHOP', 'PK_BOSS', 'CASCADE', 'DEFERRABLE', "
    "'DEFERRED', NULL), ('SHOP', 'NAMED', 'C', 'BOSS', 'NAME <> ''x''', NULL, NULL, NULL, 'NOT DEFERRABLE', "
    "'IMMEDIATE', NULL), ('SHOP', 'READS', 'O', 'RICH', NULL, NULL, NULL, NULL, NULL, NULL, NULL)",
    "CREATE TABLE all_cons_columns (owner text, constraint_name text, table_name text, column_name text, \"position\" "
    "int)",
    "INSERT INTO all_cons_columns VALUES ('SHOP', 'PK_BOSS', 'BOSS', 'ID', 1), ('SHOP', 'PK_BOSS', 'BOSS', 'BORN', 2), "
    "('SHOP', 'UNDER', 'HELPER', 'BOSS_ID', 1), ('SHOP', 'UNDER', 'HELPER', 'BOSS_BORN', 2), ('SHOP', 'NAMED', 'BOSS', "
    "'NAME', NULL)",
    "CREATE TABLE all_tables (owner text, table_name text, num_rows bigint)",
    "INSERT INTO all_tables VALUES ('SHOP', 'BOSS', 42), ('SHOP', 'HELPER', NULL), ('SYS', 'OBJ$', 9)",
    "CREATE TABLE all_dependencies (owner text, name text, type text, referenced_owner text, referenced_name text, "
    "referenced_type text)",
    "INSERT INTO all_dependencies VALUES ('SHOP', 'RICH', 'VIEW', 'SHOP', 'BOSS', 'TABLE'), ('SHOP', 'RICH', 'VIEW', "
    "'SHOP', 'TWICE', 'FUNCTION'), ('SHOP', 'ACT', 'PROCEDURE', 'SHOP', 'BOSS', 'TABLE')",
    "CREATE TABLE all_tab_privs (grantor text, grantee text, table_schema text, table_name text, privilege text, "
    "grantable text)",
    "INSERT INTO all_tab_privs VALUES ('SHOP', 'GUEST', 'SHOP', 'BOSS', 'SELECT', 'YES')",
    "CREATE TABLE all_col_privs (grantor text, grantee text, table_schema text, table_name text, column_name text, "
    "privilege text, grantable text)",
    "INSERT INTO all_col_privs VALUES ('SHOP', 'GUEST', 'SHOP', 'BOSS', 'NAME', 'UPDATE', 'NO')",
    "CREATE TABLE user_sys_privs (username text, privilege text, admin_option text)",
    "INSERT INTO user_sys_privs VALUES ('SHOP', 'CREATE TABLE', 'YES')",
    "CREATE TABLE all_users (username text)",
    "INSERT INTO all_users VALUES ('SHOP')",
    "CREATE TABLE v$nls_valid_values (parameter text, value text)",
    "INSERT INTO v$nls_valid_values VALUES ('CHARACTERSET', 'AL32UTF8'), ('SORT', 'GERMAN_CI'), ('LANGUAGE', 'GERMAN')",
    "CREATE TABLE v$reserved_words (keyword text)",
    "INSERT INTO v$reserved_words VALUES ('SELECT'), ('!'), ('PIVOT')",
};

class Dialect : public testing::Test
{
protected:
    void Begin(DatabaseFamily family)
    {
        const QString string = conformance::ConnectionStringOf(Server::Postgres);
        if (string.isEmpty() && conformance::ServersArePromised())
            FAIL() << "a server was promised, and its connection string is missing";
        if (string.isEmpty())
            GTEST_SKIP() << "no connection string for PostgreSQL";
        m_owner = Connection::Create();
        m_owner->Open(string);
        m_place = QStringLiteral("dialect%1_%2").arg(QCoreApplication::applicationPid()).arg(int(family));
        m_owner->Execute(QStringLiteral("CREATE DATABASE %1").arg(m_place));
        QString own = string;
        own.replace(QRegularExpression(QStringLiteral("Database=[^;]*")), QStringLiteral("Database=") + m_place);
        m_stand = DriverFor(own).Connect(own, QString(), QString());
        const auto run = [&](const QString &sql) { (void)m_stand->Execute(sql); };
        if (family == DatabaseFamily::SQLServer) {
            for (const char *sql : kSqlServer)
                run(QString::fromLatin1(sql));
            for (const char *view : kStandardViews)
                run(QStringLiteral("CREATE VIEW ms.%1 AS SELECT * FROM information_schema.%1")
                        .arg(QLatin1String(view)));
        } else {
            for (const char *sql : kOracle)
                run(QString::fromLatin1(sql));
        }
        m_driver = std::make_unique<ScriptedDriver>();
        m_driver->FamilyIs = family;
        m_driver->OnExecute = [this](QString sql) {
            return m_stand->Execute(sql.replace(QLatin1String("INFORMATION_SCHEMA."), QLatin1String("ms.")));
        };
        m_connection = Connection::Create();
        m_connection->Open(QStringLiteral("Scripted"));
    }
    void TearDown() override
    {
        m_connection.reset();
        m_driver.reset();
        m_stand.reset();
        if (m_owner)
            m_owner->Execute(QStringLiteral("DROP DATABASE %1").arg(m_place));
    }
    std::string Lines(SchemaEnum schema, const char *fields, const QStringList &restrictions = {})
    {
        const QStringList lines =
            rowsets::LinesOf(m_connection->OpenSchema(schema, restrictions), QString::fromLatin1(fields));
        return lines.join(u' ').toStdString();
    }
    // The one statement of a rowset is its own query, and the driver's functions are not asked.
    void EveryRowsetIsOneQuery()
    {
        for (int schema = adSchemaAsserts; schema <= adSchemaTrustees; ++schema) {
            SCOPED_TRACE(schema);
            m_driver->ClearLog();
            switch (SourceOf(FamilyOf(m_driver->FamilyIs), schema)) {
            case RowsetSource::Refused:
                EXPECT_EQ(conformance::ErrorFrom([&] { m_connection->OpenSchema(schema); }).Description,
                          u"Object or provider is not capable of performing requested operation.");
                EXPECT_TRUE(m_driver->Log().isEmpty());
                break;
            case RowsetSource::Native:
                EXPECT_GT(m_connection->OpenSchema(schema)->RecordCount(), 0);
                EXPECT_TRUE(m_driver->Log().isEmpty());
                break;
            case RowsetSource::Catalogue:
                EXPECT_GT(m_connection->OpenSchema(schema)->RecordCount(), 0);
                EXPECT_EQ(m_driver->Log().size(), 1) << m_driver->Log().join(u'\n').toStdString();
                break;
            }
        }
    }
    ConnectionPtr m_owner, m_connection;
    QString m_place;
    std::unique_ptr<Session> m_stand;
    std::unique_ptr<ScriptedDriver> m_driver;
};

class SqlServerDialect : public Dialect
{
protected:
    void SetUp() override { Begin(DatabaseFamily::SQLServer); }
    QStringList Dbo(QStringList more = {}) const { return QStringList{QString(), QStringLiteral("dbo")} + more; }
};

TEST_F(SqlServerDialect, EveryRowsetIsOneQuery)
{
    EveryRowsetIsOneQuery();
}

TEST_F(SqlServerDialect, Objects)
{
    const std::string place = m_place.toStdString();
    EXPECT_EQ(Lines(adSchemaTables, "TABLE_NAME TABLE_TYPE", Dbo()), "boss|TABLE helper|TABLE rich|VIEW");
    EXPECT_EQ(Lines(adSchemaTables, "TABLE_CATALOG TABLE_SCHEMA", Dbo({QStringLiteral("boss")})), place + "|dbo");
    EXPECT_EQ(
        Lines(adSchemaColumns,
              "COLUMN_NAME ORDINAL_POSITION DATA_TYPE IS_NULLABLE COLUMN_HASDEFAULT CHARACTER_MAXIMUM_LENGTH "
              "DOMAIN_NAME",
              Dbo({QStringLiteral("boss")})),
        "id|1|3|False|False|~|~ part|2|3|False|False|~|~ name|3|200|True|True|30|~ share|4|3|True|False|~|percent");
    EXPECT_EQ(Lines(adSchemaViews, "TABLE_NAME CHECK_OPTION", Dbo()), "rich|False");
    EXPECT_EQ(Lines(adSchemaProcedures, "PROCEDURE_NAME PROCEDURE_TYPE", Dbo()), "act|3 twice|1");
    EXPECT_EQ(Lines(adSchemaProcedureParameters,
                    "PROCEDURE_NAME PARAMETER_NAME ORDINAL_POSITION PARAMETER_TYPE DATA_TYPE CHARACTER_MAXIMUM_LENGTH "
                    "LOCAL_TYPE_NAME"),
              "act|@all|1|2|202|~|nvarchar twice|RETURN_VALUE|0|4|3|~|int twice|@n|1|1|3|~|int");
    EXPECT_EQ(
        Lines(adSchemaProcedureColumns, "PROCEDURE_NAME COLUMN_NAME DATA_TYPE IS_NULLABLE CHARACTER_MAXIMUM_LENGTH"),
        "pairs|a|3|False|~ pairs|b|200|True|10");
    EXPECT_EQ(Lines(adSchemaIndexes, "TABLE_NAME INDEX_NAME PRIMARY_KEY UNIQUE CLUSTERED TYPE FILL_FACTOR "
                                     "ORDINAL_POSITION COLUMN_NAME COLLATION FILTER_CONDITION"),
              "boss|pk_boss|True|True|True|1|~|1|part|1|~ boss|pk_boss|True|True|True|1|~|2|id|1|~ "
              "helper|pk_helper|True|True|False|1|~|1|id|1|~ boss|by_name|False|False|False|1|80|1|name|2|([id]>(1))");
    EXPECT_EQ(Lines(adSchemaStatistics, "TABLE_NAME CARDINALITY"), "boss|42 helper|7");
    EXPECT_EQ(Lines(adSchemaViewTableUsage, "VIEW_NAME TABLE_NAME", {{}, QStringLiteral("dbo")}), "rich|boss");
    EXPECT_EQ(Lines(adSchemaViewColumnUsage, "VIEW_NAME TABLE_NAME COLUMN_NAME", {{}, QStringLiteral("dbo")}),
              "rich|boss|id rich|boss|name");
}

TEST_F(SqlServerDialect, Constraints)
{
    EXPECT_EQ(Lines(adSchemaPrimaryKeys, "TABLE_NAME COLUMN_NAME ORDINAL PK_NAME", Dbo()),
              "boss|part|1|pk_boss boss|id|2|pk_boss helper|id|1|pk_helper");
    EXPECT_EQ(Lines(adSchemaForeignKeys,
                    "PK_TABLE_SCHEMA PK_TABLE_NAME PK_COLUMN_NAME FK_TABLE_NAME FK_COLUMN_NAME ORDINAL "
                    "UPDATE_RULE DELETE_RULE PK_NAME FK_NAME DEFERRABILITY"),
              "dbo|boss|part|helper|boss_part|1|NO ACTION|CASCADE|pk_boss|under|3 "
              "dbo|boss|id|helper|boss_id|2|NO ACTION|CASCADE|pk_boss|under|3");
    EXPECT_EQ(Lines(adSchemaCheckConstraints, "CHECK_CLAUSE", Dbo({QStringLiteral("named")})),
              "(((name)::text <> ')'::text))");
    EXPECT_EQ(Lines(adSchemaReferentialConstraints, "CONSTRAINT_NAME UNIQUE_CONSTRAINT_NAME DELETE_RULE", Dbo()),
              "under|pk_boss|CASCADE");
    EXPECT_EQ(Lines(adSchemaTableConstraints, "CONSTRAINT_NAME CONSTRAINT_TYPE IS_DEFERRABLE",
                    {{}, QStringLiteral("dbo"), {}, {}, {}, QStringLiteral("helper"), QStringLiteral("FOREIGN KEY")}),
              "under|FOREIGN KEY|False");
    EXPECT_EQ(Lines(adSchemaKeyColumnUsage, "TABLE_NAME COLUMN_NAME ORDINAL_POSITION", Dbo({QStringLiteral("under")})),
              "helper|boss_part|1 helper|boss_id|2");
    EXPECT_EQ(Lines(adSchemaConstraintTableUsage, "CONSTRAINT_NAME", Dbo({QStringLiteral("boss")})),
              "once pk_boss under"); // the stand-in leaves checks out
    EXPECT_EQ(
        Lines(adSchemaConstraintColumnUsage, "CONSTRAINT_NAME", Dbo({QStringLiteral("boss"), QStringLiteral("name")})),
        "named once");
    EXPECT_EQ(Lines(adSchemaColumnsDomainUsage, "DOMAIN_NAME TABLE_NAME COLUMN_NAME", {{}, QStringLiteral("dbo")}),
              "percent|boss|share");
}

TEST_F(SqlServerDialect, RightsAndTheServer)
{
    EXPECT_EQ(Lines(adSchemaTablePrivileges, "TABLE_NAME PRIVILEGE_TYPE IS_GRANTABLE",
                    {{}, QStringLiteral("dbo"), {}, {}, QStringLiteral("PUBLIC")}),
              "boss|SELECT|False");
    const auto grantsOn = [&](const char *grantee) {
        return Lines(
            adSchemaColumnPrivileges, "PRIVILEGE_TYPE IS_GRANTABLE",
            {{}, QStringLiteral("dbo"), QStringLiteral("boss"), QStringLiteral("name"), {}, QLatin1String(grantee)});
    };
    EXPECT_EQ(grantsOn("PUBLIC"), "SELECT|False UPDATE|False");
    EXPECT_EQ(grantsOn("brindle"), "INSERT|True REFERENCES|True SELECT|True UPDATE|True");
    EXPECT_EQ(Lines(adSchemaUsagePrivileges, "GRANTOR GRANTEE OBJECT_NAME OBJECT_TYPE PRIVILEGE_TYPE IS_GRANTABLE"),
              "dbo|reader|dbo|SCHEMA|EXECUTE|True dbo|reader|" + m_place.toStdString() + "|DATABASE|CONNECT|False");
    EXPECT_EQ(Lines(adSchemaTrustees, "TRUSTEE_NAME TRUSTEE_TYPE"), "dbo|1 reader|2");
    EXPECT_EQ(Lines(adSchemaCatalogs, "CATALOG_NAME"), "master shop");
    EXPECT_EQ(Lines(adSchemaSchemata, "SCHEMA_NAME SCHEMA_OWNER", Dbo()), "dbo|brindle");
    EXPECT_EQ(Lines(adSchemaCharacterSets, "CHARACTER_SET_NAME"), "iso_1");
    EXPECT_EQ(Lines(adSchemaCollations, "COLLATION_NAME PAD_ATTRIBUTE"), "Latin1_General_CI_AS|PAD SPACE");
    EXPECT_EQ(Lines(adSchemaProviderTypes, "TYPE_NAME FIXED_PREC_SCALE",
                    {QString::number(adCurrency), QStringLiteral("True")}),
              "money|True");
    const std::string literals = Lines(adSchemaDBInfoLiterals, "Literal LiteralValue Maxlen");
    EXPECT_NE(literals.find("17|~|128"), std::string::npos) << literals;
    EXPECT_NE(literals.find("9|[|~"), std::string::npos) << literals;
}

class OracleDialect : public Dialect
{
protected:
    void SetUp() override { Begin(DatabaseFamily::Oracle); }
};

TEST_F(OracleDialect, EveryRowsetIsOneQuery)
{
    EveryRowsetIsOneQuery();
}

TEST_F(OracleDialect, Objects)
{
    EXPECT_EQ(Lines(adSchemaTables, "TABLE_CATALOG TABLE_SCHEMA TABLE_NAME TABLE_TYPE DESCRIPTION"),
              "~|SYS|OBJ$|SYSTEM TABLE|~ ~|SHOP|BOSS|TABLE|who leads ~|SHOP|RICH|VIEW|~");
    EXPECT_EQ(Lines(adSchemaTables, "DATE_CREATED DATE_MODIFIED", {{}, {}, QStringLiteral("BOSS")}),
              "2020-02-03|2021-02-03");
    EXPECT_EQ(Lines(adSchemaColumns, "COLUMN_NAME DATA_TYPE IS_NULLABLE COLUMN_HASDEFAULT CHARACTER_MAXIMUM_LENGTH "
                                     "NUMERIC_PRECISION NUMERIC_SCALE DESCRIPTION"),
              "ID|131|False|False|~|10|2|~ BORN|135|True|False|~|~|~|~ NAME|200|True|True|30|~|~|in full "
              "SEEN|135|True|False|~|~|6|~");
    // The server's own are there for those who name them.
    EXPECT_EQ(Lines(adSchemaColumns, "COLUMN_NAME", {{}, QStringLiteral("SYS")}), "X");
    EXPECT_EQ(Lines(adSchemaViews, "TABLE_NAME VIEW_DEFINITION"), "RICH|SELECT ID FROM BOSS");
    EXPECT_EQ(Lines(adSchemaProcedures, "PROCEDURE_NAME PROCEDURE_TYPE"), "ACT|3 TWICE|1");
    EXPECT_EQ(Lines(adSchemaProcedureParameters,
                    "PROCEDURE_NAME PARAMETER_NAME ORDINAL_POSITION PARAMETER_TYPE PARAMETER_HASDEFAULT DATA_TYPE"),
              "TWICE|RETURN_VALUE|0|4|False|131 TWICE|N|1|1|True|131");
    EXPECT_EQ(Lines(adSchemaIndexes,
                    "INDEX_NAME PRIMARY_KEY UNIQUE TYPE ORDINAL_POSITION COLUMN_NAME COLLATION CARDINALITY "
                    "PAGES"),
              "PK_BOSS|True|True|1|1|ID|1|9|3 PK_BOSS|True|True|1|2|BORN|2|9|3 BY_NAME|False|False|4|1|NAME|1|~|~");
    EXPECT_EQ(Lines(adSchemaStatistics, "TABLE_NAME CARDINALITY"), "BOSS|42 HELPER|~");
    EXPECT_EQ(Lines(adSchemaViewTableUsage, "VIEW_SCHEMA VIEW_NAME TABLE_NAME"), "SHOP|RICH|BOSS");
}

TEST_F(OracleDialect, Constraints)
{
    EXPECT_EQ(Lines(adSchemaPrimaryKeys, "TABLE_NAME COLUMN_NAME ORDINAL PK_NAME"),
              "BOSS|ID|1|PK_BOSS BOSS|BORN|2|PK_BOSS");
    EXPECT_EQ(Lines(adSchemaForeignKeys,
                    "PK_TABLE_NAME PK_COLUMN_NAME FK_TABLE_NAME FK_COLUMN_NAME ORDINAL UPDATE_RULE "
                    "DELETE_RULE PK_NAME FK_NAME DEFERRABILITY"),
              "BOSS|ID|HELPER|BOSS_ID|1|NO ACTION|CASCADE|PK_BOSS|UNDER|1 "
              "BOSS|BORN|HELPER|BOSS_BORN|2|NO ACTION|CASCADE|PK_BOSS|UNDER|1");
    EXPECT_EQ(Lines(adSchemaCheckConstraints, "CONSTRAINT_NAME CHECK_CLAUSE"), "NAMED|NAME <> 'x'");
    EXPECT_EQ(Lines(adSchemaReferentialConstraints, "CONSTRAINT_NAME UNIQUE_CONSTRAINT_NAME DELETE_RULE"),
              "UNDER|PK_BOSS|CASCADE");
    EXPECT_EQ(Lines(adSchemaTableConstraints, "CONSTRAINT_NAME CONSTRAINT_TYPE IS_DEFERRABLE INITIALLY_DEFERRED"),
              "NAMED|CHECK|False|False PK_BOSS|PRIMARY KEY|False|False UNDER|FOREIGN KEY|True|True");
    EXPECT_EQ(Lines(adSchemaKeyColumnUsage, "CONSTRAINT_NAME COLUMN_NAME ORDINAL_POSITION"),
              "PK_BOSS|ID|1 PK_BOSS|BORN|2 UNDER|BOSS_ID|1 UNDER|BOSS_BORN|2");
    // A foreign key uses what it refers to.
    EXPECT_EQ(Lines(adSchemaConstraintTableUsage, "TABLE_NAME CONSTRAINT_NAME"), "BOSS|NAMED BOSS|PK_BOSS BOSS|UNDER");
    EXPECT_EQ(Lines(adSchemaConstraintColumnUsage, "COLUMN_NAME CONSTRAINT_NAME"),
              "BORN|PK_BOSS BORN|UNDER ID|PK_BOSS ID|UNDER NAME|NAMED");
}

TEST_F(OracleDialect, RightsAndTheServer)
{
    EXPECT_EQ(Lines(adSchemaTablePrivileges, "GRANTEE TABLE_NAME PRIVILEGE_TYPE IS_GRANTABLE"),
              "GUEST|BOSS|SELECT|True");
    EXPECT_EQ(Lines(adSchemaColumnPrivileges, "COLUMN_NAME PRIVILEGE_TYPE IS_GRANTABLE"), "NAME|UPDATE|False");
    EXPECT_EQ(Lines(adSchemaUsagePrivileges, "GRANTEE PRIVILEGE_TYPE IS_GRANTABLE"), "SHOP|CREATE TABLE|True");
    EXPECT_EQ(Lines(adSchemaSchemata, "SCHEMA_NAME SCHEMA_OWNER"), "SHOP|SHOP");
    EXPECT_EQ(Lines(adSchemaTrustees, "TRUSTEE_NAME TRUSTEE_TYPE"), "SHOP|1");
    EXPECT_EQ(Lines(adSchemaCharacterSets, "CHARACTER_SET_NAME"), "AL32UTF8");
    EXPECT_EQ(Lines(adSchemaCollations, "COLLATION_NAME"), "GERMAN_CI");
    EXPECT_EQ(Lines(adSchemaDBInfoKeywords, "Keyword"), "PIVOT SELECT");
    EXPECT_EQ(Lines(adSchemaProviderTypes, "TYPE_NAME", {QString::number(adDBTimeStamp), QStringLiteral("True")}),
              "timestamp");
}

} // namespace
