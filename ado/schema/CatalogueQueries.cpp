#include "ado/schema/CatalogueQueries.h"

namespace ADODB {

namespace {

constexpr DatabaseFamily kSQLite = DatabaseFamily::SQLite;
constexpr DatabaseFamily kPostgres = DatabaseFamily::PostgreSQL;
constexpr DatabaseFamily kMySQL = DatabaseFamily::MySQL;

// --- SQLite: the pragmas as tables, in the order of their arguments (CROSS JOIN keeps it; a plain join loses rows).
// Only attached databases have a schema; the main one has none, as over ODBC.

#define SQLITE_SCHEMA "CASE WHEN t.schema IN ('main', 'temp') THEN NULL ELSE t.schema END"
#define SQLITE_USER " AND t.name NOT LIKE 'sqlite!_%' ESCAPE '!'"

constexpr char kSQLiteTables[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, CASE WHEN t.type = 'view' THEN 'VIEW' "
    "WHEN t.type = 'shadow' OR t.name LIKE 'sqlite!_%' ESCAPE '!' THEN 'SYSTEM TABLE' "
    "WHEN t.schema = 'temp' THEN 'LOCAL TEMPORARY' ELSE 'TABLE' END AS TABLE_TYPE FROM pragma_table_list t WHERE 1=1";

constexpr char kSQLiteColumns[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, "
    "c.cid + 1 AS ORDINAL_POSITION, c.dflt_value AS COLUMN_DEFAULT, c.\"notnull\" = 0 AS IS_NULLABLE, c.type AS "
    "TYPE_NAME "
    "FROM pragma_table_list t CROSS JOIN pragma_table_xinfo(t.name, t.schema) c WHERE c.hidden <> 1";

constexpr char kSQLiteIndexes[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, " SQLITE_SCHEMA " AS INDEX_SCHEMA, "
    "i.name AS INDEX_NAME, i.origin = 'pk' AS PRIMARY_KEY, i.\"unique\" AS \"UNIQUE\", 0 AS CLUSTERED, 1 AS TYPE, "
    "x.seqno + 1 AS ORDINAL_POSITION, x.name AS COLUMN_NAME, x.\"desc\" + 1 AS COLLATION "
    "FROM pragma_table_list t CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_xinfo(i.name, "
    "t.schema) x "
    "WHERE x.\"key\" = 1";

constexpr char kSQLiteViews[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, CASE t.schema "
    "WHEN 'main' THEN (SELECT s.sql FROM main.sqlite_master s WHERE s.type = 'view' AND s.name = t.name) "
    "WHEN 'temp' THEN (SELECT s.sql FROM sqlite_temp_master s WHERE s.type = 'view' AND s.name = t.name) "
    "END AS VIEW_DEFINITION, 0 AS CHECK_OPTION, 0 AS IS_UPDATABLE FROM pragma_table_list t WHERE t.type = 'view'";

// A key may name its target in another case than the target's own, and may leave the target's columns out: then they
// are its primary key.
constexpr char kSQLiteForeignKeys[] =
    "SELECT " SQLITE_SCHEMA " AS PK_TABLE_SCHEMA, COALESCE((SELECT p.name FROM pragma_table_list(f.\"table\") p "
    "WHERE p.schema = t.schema), f.\"table\") AS PK_TABLE_NAME, "
    "COALESCE((SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE lower(c.name) = lower(f.\"to\")), "
    "f.\"to\", (SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE c.pk = f.seq + 1)) AS "
    "PK_COLUMN_NAME, "
    "" SQLITE_SCHEMA
    " AS FK_TABLE_SCHEMA, t.name AS FK_TABLE_NAME, f.\"from\" AS FK_COLUMN_NAME, f.seq + 1 AS ORDINAL, "
    "f.on_update AS UPDATE_RULE, f.on_delete AS DELETE_RULE, 'FK_' || t.name || '_' || f.id AS FK_NAME, "
    "3 AS DEFERRABILITY FROM pragma_table_list t CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE 1=1";

constexpr char kSQLitePrimaryKeys[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, c.pk AS ORDINAL "
    "FROM pragma_table_list t CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND t.type <> 'view'";

// --- PostgreSQL: its own catalogue, which has what information_schema hides from others than the owner.

#define PG_USER                                                                                                        \
    " AND n.nspname <> 'information_schema' AND (left(n.nspname, 3) <> 'pg_' OR n.oid = "                              \
    "pg_catalog.pg_my_temp_schema())"
#define PG_RULE(column)                                                                                                \
    "CASE con." column " WHEN 'c' THEN 'CASCADE' WHEN 'n' THEN 'SET NULL' WHEN 'd' THEN 'SET DEFAULT' "                \
    "WHEN 'r' THEN 'RESTRICT' ELSE 'NO ACTION' END"

constexpr char kPostgresTables[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, CASE "
    "WHEN n.nspname IN ('pg_catalog', 'information_schema') THEN CASE WHEN c.relkind = 'v' THEN 'SYSTEM VIEW' "
    "ELSE 'SYSTEM TABLE' END WHEN c.relkind IN ('v', 'm') THEN 'VIEW' WHEN c.relpersistence = 't' THEN 'LOCAL "
    "TEMPORARY' "
    "ELSE 'TABLE' END AS TABLE_TYPE, pg_catalog.obj_description(c.oid, 'pg_class') AS DESCRIPTION "
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND left(n.nspname, 8) <> 'pg_toast' "
    "AND (left(n.nspname, 8) <> 'pg_temp_' OR n.oid = pg_catalog.pg_my_temp_schema())";

constexpr char kPostgresColumns[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "a.attname AS COLUMN_NAME, a.attnum AS ORDINAL_POSITION, pg_catalog.pg_get_expr(d.adbin, d.adrelid) AS "
    "COLUMN_DEFAULT, "
    "NOT a.attnotnull AS IS_NULLABLE, CASE WHEN t.typtype = 'd' THEN pg_catalog.format_type(t.typbasetype, "
    "t.typtypmod) "
    "ELSE pg_catalog.format_type(a.atttypid, a.atttypmod) END AS TYPE_NAME, "
    "CASE WHEN t.typtype = 'd' THEN t.typname END AS DOMAIN_NAME, "
    "pg_catalog.col_description(c.oid, a.attnum) AS DESCRIPTION "
    "FROM pg_catalog.pg_attribute a JOIN pg_catalog.pg_class c ON c.oid = a.attrelid "
    "JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace JOIN pg_catalog.pg_type t ON t.oid = a.atttypid "
    "LEFT JOIN pg_catalog.pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum "
    "WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'p', 'v', 'm', 'f')";

constexpr char kPostgresIndexes[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "current_database() AS INDEX_CATALOG, n.nspname AS INDEX_SCHEMA, i.relname AS INDEX_NAME, "
    "x.indisprimary AS PRIMARY_KEY, x.indisunique AS \"UNIQUE\", x.indisclustered AS CLUSTERED, "
    "CASE am.amname WHEN 'btree' THEN 1 WHEN 'hash' THEN 2 ELSE 4 END AS \"TYPE\", k.n AS ORDINAL_POSITION, "
    "COALESCE(a.attname, pg_catalog.pg_get_indexdef(x.indexrelid, k.n, true)) AS COLUMN_NAME, "
    "CASE WHEN x.indoption[k.n - 1] & 1 = 1 THEN 2 ELSE 1 END AS \"COLLATION\", "
    "CASE WHEN i.reltuples >= 0 THEN i.reltuples::bigint END AS CARDINALITY, i.relpages AS PAGES, "
    "pg_catalog.pg_get_expr(x.indpred, x.indrelid) AS FILTER_CONDITION "
    "FROM pg_catalog.pg_index x JOIN pg_catalog.pg_class c ON c.oid = x.indrelid "
    "JOIN pg_catalog.pg_class i ON i.oid = x.indexrelid JOIN pg_catalog.pg_am am ON am.oid = i.relam "
    "JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "CROSS JOIN LATERAL generate_series(1, x.indnkeyatts) AS k(n) "
    "LEFT JOIN pg_catalog.pg_attribute a ON a.attrelid = x.indrelid AND a.attnum = x.indkey[k.n - 1] WHERE true";

constexpr char kPostgresProcedures[] =
    "SELECT current_database() AS PROCEDURE_CATALOG, n.nspname AS PROCEDURE_SCHEMA, p.proname AS PROCEDURE_NAME, "
    "CASE p.prokind WHEN 'p' THEN 3 ELSE 1 END AS PROCEDURE_TYPE, "
    "CASE WHEN p.prokind IN ('p', 'f') THEN pg_catalog.pg_get_functiondef(p.oid) END AS PROCEDURE_DEFINITION, "
    "pg_catalog.obj_description(p.oid, 'pg_proc') AS DESCRIPTION "
    "FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace WHERE true";

constexpr char kPostgresViews[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "pg_catalog.pg_get_viewdef(c.oid) AS VIEW_DEFINITION, "
    "COALESCE(array_to_string(c.reloptions, ',') LIKE '%check_option%', false) AS CHECK_OPTION, "
    "pg_catalog.pg_relation_is_updatable(c.oid, false) & 20 = 20 AS IS_UPDATABLE, "
    "pg_catalog.obj_description(c.oid, 'pg_class') AS DESCRIPTION "
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace WHERE c.relkind IN ('v', 'm')";

constexpr char kPostgresForeignKeys[] =
    "SELECT current_database() AS PK_TABLE_CATALOG, pn.nspname AS PK_TABLE_SCHEMA, pc.relname AS PK_TABLE_NAME, "
    "pa.attname AS PK_COLUMN_NAME, current_database() AS FK_TABLE_CATALOG, n.nspname AS FK_TABLE_SCHEMA, "
    "fc.relname AS FK_TABLE_NAME, fa.attname AS FK_COLUMN_NAME, k.n AS ORDINAL, " PG_RULE(
        "confupdtype") " AS UPDATE_RULE, " PG_RULE("confdeltype") " AS DELETE_RULE, pi.relname AS PK_NAME, con.conname "
                                                                  "AS FK_NAME, "
                                                                  "CASE WHEN NOT con.condeferrable THEN 3 WHEN "
                                                                  "con.condeferred THEN 1 ELSE 2 END AS DEFERRABILITY "
                                                                  "FROM pg_catalog.pg_constraint con JOIN "
                                                                  "pg_catalog.pg_class pc ON pc.oid = con.confrelid "
                                                                  "JOIN pg_catalog.pg_namespace pn ON pn.oid = "
                                                                  "pc.relnamespace JOIN pg_catalog.pg_class fc ON "
                                                                  "fc.oid = con.conrelid "
                                                                  "JOIN pg_catalog.pg_namespace n ON n.oid = "
                                                                  "fc.relnamespace LEFT JOIN pg_catalog.pg_class pi ON "
                                                                  "pi.oid = con.conindid "
                                                                  "CROSS JOIN LATERAL unnest(con.conkey, con.confkey) "
                                                                  "WITH ORDINALITY AS k(fk, pk, n) "
                                                                  "JOIN pg_catalog.pg_attribute pa ON pa.attrelid = "
                                                                  "con.confrelid AND pa.attnum = k.pk "
                                                                  "JOIN pg_catalog.pg_attribute fa ON fa.attrelid = "
                                                                  "con.conrelid AND fa.attnum = k.fk WHERE con.contype "
                                                                  "= 'f'";

constexpr char kPostgresPrimaryKeys[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "a.attname AS COLUMN_NAME, k.n AS ORDINAL, con.conname AS PK_NAME FROM pg_catalog.pg_constraint con "
    "JOIN pg_catalog.pg_class c ON c.oid = con.conrelid JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "CROSS JOIN LATERAL unnest(con.conkey) WITH ORDINALITY AS k(attnum, n) "
    "JOIN pg_catalog.pg_attribute a ON a.attrelid = con.conrelid AND a.attnum = k.attnum WHERE con.contype = 'p'";

// --- MySQL and MariaDB: the current database only. A database is a catalogue there, and there are no schemas.

constexpr char kMySQLTables[] =
    "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, "
    "CASE TABLE_TYPE WHEN 'BASE TABLE' THEN 'TABLE' WHEN 'SYSTEM VERSIONED' THEN 'TABLE' ELSE TABLE_TYPE END AS "
    "TABLE_TYPE, "
    "CASE WHEN TABLE_TYPE <> 'VIEW' THEN NULLIF(TABLE_COMMENT, '') END AS DESCRIPTION, CREATE_TIME AS DATE_CREATED, "
    "UPDATE_TIME AS DATE_MODIFIED FROM information_schema.TABLES WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kMySQLColumns[] =
    "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION, "
    "NULLIF(COLUMN_DEFAULT, 'NULL') AS COLUMN_DEFAULT, IS_NULLABLE, COLUMN_TYPE AS TYPE_NAME, "
    "CHARACTER_MAXIMUM_LENGTH, "
    "CHARACTER_OCTET_LENGTH, DATETIME_PRECISION, CHARACTER_SET_NAME, COLLATION_NAME, "
    "NULLIF(COLUMN_COMMENT, '') AS DESCRIPTION FROM information_schema.COLUMNS WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kMySQLIndexes[] =
    "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, INDEX_SCHEMA AS INDEX_CATALOG, INDEX_NAME, "
    "INDEX_NAME = 'PRIMARY' AS PRIMARY_KEY, NON_UNIQUE = 0 AS `UNIQUE`, INDEX_NAME = 'PRIMARY' AS CLUSTERED, "
    "CASE INDEX_TYPE WHEN 'BTREE' THEN 1 WHEN 'HASH' THEN 2 WHEN 'FULLTEXT' THEN 3 ELSE 4 END AS TYPE, "
    "SEQ_IN_INDEX AS ORDINAL_POSITION, COLUMN_NAME, CASE COLLATION WHEN 'D' THEN 2 WHEN 'A' THEN 1 END AS COLLATION, "
    "CARDINALITY FROM information_schema.STATISTICS WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kMySQLProcedures[] =
    "SELECT ROUTINE_SCHEMA AS PROCEDURE_CATALOG, ROUTINE_NAME AS PROCEDURE_NAME, "
    "CASE ROUTINE_TYPE WHEN 'PROCEDURE' THEN 3 WHEN 'FUNCTION' THEN 1 ELSE 2 END AS PROCEDURE_TYPE, "
    "ROUTINE_DEFINITION AS PROCEDURE_DEFINITION, NULLIF(ROUTINE_COMMENT, '') AS DESCRIPTION, CREATED AS DATE_CREATED, "
    "LAST_ALTERED AS DATE_MODIFIED FROM information_schema.ROUTINES WHERE ROUTINE_SCHEMA = DATABASE()";

constexpr char kMySQLViews[] =
    "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, VIEW_DEFINITION, CHECK_OPTION <> 'NONE' AS CHECK_OPTION, "
    "IS_UPDATABLE FROM information_schema.VIEWS WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kMySQLForeignKeys[] =
    "SELECT k.REFERENCED_TABLE_SCHEMA AS PK_TABLE_CATALOG, k.REFERENCED_TABLE_NAME AS PK_TABLE_NAME, "
    "k.REFERENCED_COLUMN_NAME AS PK_COLUMN_NAME, k.TABLE_SCHEMA AS FK_TABLE_CATALOG, k.TABLE_NAME AS FK_TABLE_NAME, "
    "k.COLUMN_NAME AS FK_COLUMN_NAME, k.ORDINAL_POSITION AS ORDINAL, r.UPDATE_RULE, r.DELETE_RULE, "
    "r.UNIQUE_CONSTRAINT_NAME AS PK_NAME, k.CONSTRAINT_NAME AS FK_NAME, 3 AS DEFERRABILITY "
    "FROM information_schema.KEY_COLUMN_USAGE k JOIN information_schema.REFERENTIAL_CONSTRAINTS r "
    "ON r.CONSTRAINT_SCHEMA = k.CONSTRAINT_SCHEMA AND r.CONSTRAINT_NAME = k.CONSTRAINT_NAME AND r.TABLE_NAME = "
    "k.TABLE_NAME "
    "WHERE k.TABLE_SCHEMA = DATABASE() AND k.REFERENCED_TABLE_NAME IS NOT NULL";

constexpr char kMySQLPrimaryKeys[] =
    "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION AS ORDINAL, "
    "CONSTRAINT_NAME AS PK_NAME FROM information_schema.KEY_COLUMN_USAGE "
    "WHERE TABLE_SCHEMA = DATABASE() AND CONSTRAINT_NAME = 'PRIMARY'";

constexpr CatalogueQuery kCatalogueQueries[] = {
    {kSQLite, adSchemaTables, kSQLiteTables, ""},
    {kSQLite, adSchemaColumns, kSQLiteColumns, SQLITE_USER},
    {kSQLite, adSchemaIndexes, kSQLiteIndexes, SQLITE_USER},
    {kSQLite, adSchemaViews, kSQLiteViews, ""},
    {kSQLite, adSchemaForeignKeys, kSQLiteForeignKeys, ""},
    {kSQLite, adSchemaPrimaryKeys, kSQLitePrimaryKeys, SQLITE_USER},
    {kPostgres, adSchemaTables, kPostgresTables, ""},
    {kPostgres, adSchemaColumns, kPostgresColumns, PG_USER},
    {kPostgres, adSchemaIndexes, kPostgresIndexes, PG_USER},
    {kPostgres, adSchemaProcedures, kPostgresProcedures, PG_USER},
    {kPostgres, adSchemaViews, kPostgresViews, PG_USER},
    {kPostgres, adSchemaForeignKeys, kPostgresForeignKeys, PG_USER},
    {kPostgres, adSchemaPrimaryKeys, kPostgresPrimaryKeys, PG_USER},
    {kMySQL, adSchemaTables, kMySQLTables, ""},
    {kMySQL, adSchemaColumns, kMySQLColumns, ""},
    {kMySQL, adSchemaIndexes, kMySQLIndexes, ""},
    {kMySQL, adSchemaProcedures, kMySQLProcedures, ""},
    {kMySQL, adSchemaViews, kMySQLViews, ""},
    {kMySQL, adSchemaForeignKeys, kMySQLForeignKeys, ""},
    {kMySQL, adSchemaPrimaryKeys, kMySQLPrimaryKeys, ""},
};

} // namespace

const CatalogueQuery *FindCatalogueQuery(DatabaseFamily family, SchemaEnum schema)
{
    for (const std::span<const CatalogueQuery> queries :
         {std::span<const CatalogueQuery>(kCatalogueQueries), SqliteQueries(), PostgresQueries(), PostgresGrants(),
          MySQLQueries()})
        for (const CatalogueQuery &query : queries)
            if (query.Family == family && query.Schema == schema)
                return &query;
    return nullptr;
}

bool HasCatalogueQueries(DatabaseFamily family)
{
    return FindCatalogueQuery(family, adSchemaTables) != nullptr;
}

} // namespace ADODB
