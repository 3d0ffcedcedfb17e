// PostgreSQL's tables, columns, keys and routines: from its own catalogue, which has what information_schema hides from
// others than the owner.
#include "ado/family/postgres/PostgresParts.h"

namespace ADODB {

namespace {

// A temporary table is a "TABLE" like any other: lists and trees choose by that word.
constexpr char kTables[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, CASE "
    "WHEN n.nspname IN ('pg_catalog', 'information_schema') THEN CASE WHEN c.relkind = 'v' THEN 'SYSTEM VIEW' "
    "ELSE 'SYSTEM TABLE' END WHEN c.relkind IN ('v', 'm') THEN 'VIEW' "
    "ELSE 'TABLE' END AS TABLE_TYPE, pg_catalog.obj_description(c.oid, 'pg_class') AS DESCRIPTION "
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND left(n.nspname, 8) <> 'pg_toast' "
    "AND (left(n.nspname, 8) <> 'pg_temp_' OR n.oid = pg_catalog.pg_my_temp_schema())";

constexpr char kColumns[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "a.attname AS COLUMN_NAME, a.attnum AS ORDINAL_POSITION, pg_catalog.pg_get_expr(d.adbin, d.adrelid) AS "
    "COLUMN_DEFAULT, "
    "NOT a.attnotnull AS IS_NULLABLE, CASE WHEN t.typtype = 'd' THEN pg_catalog.format_type(t.typbasetype, "
    "t.typtypmod) "
    "ELSE pg_catalog.format_type(a.atttypid, a.atttypmod) END AS TYPE_NAME, "
    "CASE WHEN t.typtype = 'd' THEN current_database() END AS DOMAIN_CATALOG, dn.nspname AS DOMAIN_SCHEMA, "
    "CASE WHEN t.typtype = 'd' THEN t.typname END AS DOMAIN_NAME, "
    "CASE WHEN co.oid IS NOT NULL THEN current_database() END AS COLLATION_CATALOG, con.nspname AS COLLATION_SCHEMA, "
    "co.collname AS COLLATION_NAME, "
    "pg_catalog.col_description(c.oid, a.attnum) AS DESCRIPTION "
    "FROM pg_catalog.pg_attribute a JOIN pg_catalog.pg_class c ON c.oid = a.attrelid "
    "JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace JOIN pg_catalog.pg_type t ON t.oid = a.atttypid "
    "LEFT JOIN pg_catalog.pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum "
    "LEFT JOIN pg_catalog.pg_namespace dn ON dn.oid = t.typnamespace AND t.typtype = 'd' "
    "LEFT JOIN pg_catalog.pg_collation co ON co.oid = a.attcollation AND co.collname <> 'default' "
    "LEFT JOIN pg_catalog.pg_namespace con ON con.oid = co.collnamespace "
    "WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'p', 'v', 'm', 'f')";

constexpr char kIndexes[] =
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

constexpr char kProcedures[] =
    "SELECT current_database() AS PROCEDURE_CATALOG, n.nspname AS PROCEDURE_SCHEMA, p.proname AS PROCEDURE_NAME, "
    "CASE p.prokind WHEN 'p' THEN 3 ELSE 1 END AS PROCEDURE_TYPE, "
    "CASE WHEN p.prokind IN ('p', 'f') THEN pg_catalog.pg_get_functiondef(p.oid) END AS PROCEDURE_DEFINITION, "
    "pg_catalog.obj_description(p.oid, 'pg_proc') AS DESCRIPTION "
    "FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace WHERE true";

constexpr char kViews[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "pg_catalog.pg_get_viewdef(c.oid) AS VIEW_DEFINITION, "
    "COALESCE(array_to_string(c.reloptions, ',') LIKE '%check_option%', false) AS CHECK_OPTION, "
    "pg_catalog.pg_relation_is_updatable(c.oid, false) & 20 = 20 AS IS_UPDATABLE, "
    "pg_catalog.obj_description(c.oid, 'pg_class') AS DESCRIPTION "
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace WHERE c.relkind IN ('v', 'm')";

constexpr char kForeignKeys[] =
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

constexpr char kPrimaryKeys[] =
    "SELECT current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME, "
    "a.attname AS COLUMN_NAME, k.n AS ORDINAL, con.conname AS PK_NAME FROM pg_catalog.pg_constraint con "
    "JOIN pg_catalog.pg_class c ON c.oid = con.conrelid JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "CROSS JOIN LATERAL unnest(con.conkey) WITH ORDINALITY AS k(attnum, n) "
    "JOIN pg_catalog.pg_attribute a ON a.attrelid = con.conrelid AND a.attnum = k.attnum WHERE con.contype = 'p'";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaTables, kTables},
    {adSchemaColumns, kColumns, PG_USER},
    {adSchemaIndexes, kIndexes, PG_USER},
    {adSchemaProcedures, kProcedures, PG_USER},
    {adSchemaViews, kViews, PG_USER},
    {adSchemaForeignKeys, kForeignKeys, PG_USER},
    {adSchemaPrimaryKeys, kPrimaryKeys, PG_USER},
};

} // namespace

std::span<const CatalogueQuery> PostgresObjects()
{
    return kQueries;
}

} // namespace ADODB
