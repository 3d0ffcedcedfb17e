// PostgreSQL's constraints, texts, types, routines: from its own catalogue, which shows them whoever owns them.
#include "ado/family/postgres/PostgresParts.h"

namespace ADODB {

namespace {

#define PG_CONSTRAINT                                                                                                  \
    "current_database() AS CONSTRAINT_CATALOG, n.nspname AS CONSTRAINT_SCHEMA, con.conname AS CONSTRAINT_NAME"
// A check of a domain has no table; its clause stands in its definition alone, between "CHECK (" and ")".
constexpr char kChecks[] =
    "SELECT " PG_CONSTRAINT ", CASE WHEN con.conrelid <> 0 THEN pg_catalog.pg_get_expr(con.conbin, con.conrelid) "
    "ELSE substring(pg_catalog.pg_get_constraintdef(con.oid) FROM 7) END AS CHECK_CLAUSE, "
    "pg_catalog.obj_description(con.oid, 'pg_constraint') AS DESCRIPTION FROM pg_catalog.pg_constraint con "
    "JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace WHERE con.contype = 'c'";

// The columns that a constraint speaks of: a foreign key's are those that it refers to.
constexpr char kConstraintColumns[] = "SELECT " PG_TABLE(
    "tn",
    "c") ", a.attname AS COLUMN_NAME, " PG_CONSTRAINT
         " FROM pg_catalog.pg_constraint con JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace "
         "JOIN pg_catalog.pg_class c ON c.oid = CASE con.contype WHEN 'f' THEN con.confrelid ELSE con.conrelid END "
         "JOIN pg_catalog.pg_namespace tn ON tn.oid = c.relnamespace "
         "JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid "
         "AND a.attnum = ANY (CASE con.contype WHEN 'f' THEN con.confkey ELSE con.conkey END) "
         "WHERE con.contype IN ('c', 'f', 'p', 'u')";

constexpr char kConstraintTables[] = "SELECT " PG_TABLE(
    "tn",
    "c") ", " PG_CONSTRAINT
         " FROM pg_catalog.pg_constraint con JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace "
         "JOIN pg_catalog.pg_class c ON c.oid = CASE con.contype WHEN 'f' THEN con.confrelid ELSE con.conrelid END "
         "JOIN pg_catalog.pg_namespace tn ON tn.oid = c.relnamespace WHERE con.contype IN ('c', 'f', 'p', 'u')";

constexpr char kKeyColumns[] = "SELECT " PG_CONSTRAINT ", " PG_TABLE(
    "tn", "c") ", a.attname AS COLUMN_NAME, k.n AS ORDINAL_POSITION "
               "FROM pg_catalog.pg_constraint con JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace "
               "JOIN pg_catalog.pg_class c ON c.oid = con.conrelid JOIN pg_catalog.pg_namespace tn ON tn.oid = "
               "c.relnamespace "
               "CROSS JOIN LATERAL unnest(con.conkey) WITH ORDINALITY AS k(attnum, n) "
               "JOIN pg_catalog.pg_attribute a ON a.attrelid = con.conrelid AND a.attnum = k.attnum "
               "WHERE con.contype IN ('f', 'p', 'u')";

constexpr char kReferential[] = "SELECT " PG_CONSTRAINT ", current_database() AS UNIQUE_CONSTRAINT_CATALOG, "
                                "ino.nspname AS UNIQUE_CONSTRAINT_SCHEMA, i.relname AS UNIQUE_CONSTRAINT_NAME, "
                                "CASE con.confmatchtype WHEN 'f' THEN 'FULL' WHEN 'p' THEN 'PARTIAL' ELSE 'NONE' END "
                                "AS MATCH_OPTION, " PG_RULE("confupdtype") " AS UPDATE_RULE, " PG_RULE(
                                    "confdeltype") " AS DELETE_RULE, "
                                                   "pg_catalog.obj_description(con.oid, 'pg_constraint') AS "
                                                   "DESCRIPTION FROM pg_catalog.pg_constraint con "
                                                   "JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace LEFT "
                                                   "JOIN pg_catalog.pg_class i ON i.oid = "
                                                   "con.conindid LEFT JOIN pg_catalog.pg_namespace ino ON ino.oid = "
                                                   "i.relnamespace WHERE con.contype = 'f'";

constexpr char kTableConstraints[] = "SELECT " PG_CONSTRAINT ", " PG_TABLE(
    "tn",
    "c") ", CASE con.contype WHEN 'c' THEN 'CHECK' WHEN 'f' THEN "
         "'FOREIGN KEY' WHEN 'p' THEN 'PRIMARY KEY' ELSE 'UNIQUE' END AS CONSTRAINT_TYPE, con.condeferrable AS "
         "IS_DEFERRABLE, con.condeferred AS INITIALLY_DEFERRED, pg_catalog.obj_description(con.oid, 'pg_constraint') "
         "AS "
         "DESCRIPTION FROM pg_catalog.pg_constraint con JOIN pg_catalog.pg_namespace n ON n.oid = con.connamespace "
         "JOIN pg_catalog.pg_class c ON c.oid = con.conrelid JOIN pg_catalog.pg_namespace tn ON tn.oid = "
         "c.relnamespace "
         "WHERE con.contype IN ('c', 'f', 'p', 'u')";

constexpr char kDomainColumns[] =
    "SELECT current_database() AS DOMAIN_CATALOG, dn.nspname AS DOMAIN_SCHEMA, t.typname AS DOMAIN_NAME, " PG_TABLE(
        "n", "c") ", a.attname AS COLUMN_NAME FROM pg_catalog.pg_attribute a "
                  "JOIN pg_catalog.pg_type t ON t.oid = a.atttypid AND t.typtype = 'd' "
                  "JOIN pg_catalog.pg_namespace dn ON dn.oid = t.typnamespace JOIN pg_catalog.pg_class c ON c.oid = "
                  "a.attrelid "
                  "JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
                  "WHERE a.attnum > 0 AND NOT a.attisdropped AND c.relkind IN ('r', 'p', 'v', 'm', 'f')";

constexpr char kCatalogs[] =
    "SELECT d.datname AS CATALOG_NAME, pg_catalog.shobj_description(d.oid, 'pg_database') AS DESCRIPTION "
    "FROM pg_catalog.pg_database d WHERE d.datallowconn";

// An encoding is all that a character set is here; the database's own has a collation to go with it.
constexpr char kCharacterSets[] =
    "SELECT pg_catalog.pg_encoding_to_char(e) AS CHARACTER_SET_NAME, pg_catalog.pg_encoding_to_char(e) AS FORM_OF_USE, "
    "CASE WHEN d.encoding = e THEN d.datcollate END AS DEFAULT_COLLATE_NAME "
    "FROM generate_series(0, 99) e CROSS JOIN pg_catalog.pg_database d "
    "WHERE d.datname = current_database() AND pg_catalog.pg_encoding_to_char(e) <> ''";

constexpr char kCollations[] =
    "SELECT current_database() AS COLLATION_CATALOG, n.nspname AS COLLATION_SCHEMA, co.collname AS COLLATION_NAME, "
    "NULLIF(pg_catalog.pg_encoding_to_char(co.collencoding), '') AS CHARACTER_SET_NAME, 'NO PAD' AS PAD_ATTRIBUTE "
    "FROM pg_catalog.pg_collation co JOIN pg_catalog.pg_namespace n ON n.oid = co.collnamespace WHERE true";

constexpr char kSchemata[] =
    "SELECT current_database() AS CATALOG_NAME, n.nspname AS SCHEMA_NAME, pg_catalog.pg_get_userbyid(n.nspowner) AS "
    "SCHEMA_OWNER, pg_catalog.pg_encoding_to_char(d.encoding) AS DEFAULT_CHARACTER_SET_NAME "
    "FROM pg_catalog.pg_namespace n JOIN pg_catalog.pg_database d ON d.datname = current_database() WHERE true";

constexpr char kLanguages[] =
    "SELECT 'PostgreSQL' AS SQL_LANGUAGE_SOURCE, current_setting('server_version') AS SQL_LANGUAGE_IMPLEMENTATION, "
    "CASE WHEN l.lanname = 'sql' THEN 'DIRECT' ELSE 'MODULE' END AS SQL_LANGUAGE_BINDING_STYLE, "
    "l.lanname AS SQL_LANGUAGE_PROGRAMMING_LANGUAGE FROM pg_catalog.pg_language l";

constexpr char kStatistics[] =
    "SELECT " PG_TABLE("n", "c") ", CASE WHEN c.reltuples >= 0 THEN c.reltuples::bigint END AS CARDINALITY "
                                 "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
                                 "WHERE c.relkind IN ('r', 'p', 'm', 'f')";

constexpr char kTranslations[] =
    "SELECT current_database() AS TRANSLATION_CATALOG, n.nspname AS TRANSLATION_SCHEMA, v.conname AS "
    "TRANSLATION_NAME, pg_catalog.pg_encoding_to_char(v.conforencoding) AS SOURCE_CHARACTER_SET_NAME, "
    "pg_catalog.pg_encoding_to_char(v.contoencoding) AS TARGET_CHARACTER_SET_NAME "
    "FROM pg_catalog.pg_conversion v JOIN pg_catalog.pg_namespace n ON n.oid = v.connamespace WHERE true";

// The types that a column can have: no rows of tables, no arrays, none of the server's inner ones ("pg_node_tree").
constexpr char kTypes[] =
    "SELECT pg_catalog.format_type(t.oid, NULL) AS TYPE_NAME, t.typname AS LOCAL_TYPE_NAME, "
    "CASE WHEN t.typtype = 'd' THEN pg_catalog.format_type(t.typbasetype, t.typtypmod) END AS BASE_TYPE_NAME, "
    "CASE WHEN t.typcategory NOT IN ('N', 'B') THEN '''' END AS LITERAL_PREFIX, "
    "CASE WHEN t.typcategory NOT IN ('N', 'B') THEN '''' END AS LITERAL_SUFFIX, "
    "CASE WHEN t.typname = 'numeric' THEN 'precision,scale' WHEN t.typname IN ('bpchar', 'varchar', 'bit', 'varbit') "
    "THEN 'length' WHEN t.typmodin <> 0 THEN 'precision' END AS CREATE_PARAMS, NOT t.typnotnull AS IS_NULLABLE, "
    "t.typcategory = 'S' AS CASE_SENSITIVE, CASE WHEN t.typcategory = 'S' THEN 4 ELSE 3 END AS SEARCHABLE, "
    "CASE WHEN t.typname = 'oid' THEN true WHEN t.typcategory = 'N' THEN false END AS UNSIGNED_ATTRIBUTE, "
    "t.typname = 'money' AS FIXED_PREC_SCALE, false AS AUTO_UNIQUE_VALUE, "
    "CASE t.typname WHEN 'bool' THEN 1 WHEN 'int2' THEN 5 WHEN 'int4' THEN 10 WHEN 'int8' THEN 19 WHEN 'float4' THEN 7 "
    "WHEN 'float8' THEN 15 WHEN 'numeric' THEN 1000 WHEN 'bpchar' THEN 10485760 WHEN 'varchar' THEN 10485760 "
    "WHEN 'text' THEN 1073741823 WHEN 'bytea' THEN 1073741823 WHEN 'date' THEN 10 WHEN 'time' THEN 15 "
    "WHEN 'timestamp' THEN 26 WHEN 'uuid' THEN 36 END AS COLUMN_SIZE, "
    "CASE WHEN t.typname = 'numeric' THEN 0 END AS MINIMUM_SCALE, "
    "CASE WHEN t.typname = 'numeric' THEN 1000 END AS MAXIMUM_SCALE, "
    "t.typname IN ('text', 'bytea', 'json', 'jsonb', 'xml') AS IS_LONG, t.typname IN ('bool', 'int2', 'int4', 'int8', "
    "'float4', 'float8', 'numeric', 'bpchar', 'varchar', 'text', 'bytea', 'date', 'time', 'timestamp', 'uuid') AS "
    "BEST_MATCH, t.typlen > 0 AS IS_FIXEDLENGTH FROM pg_catalog.pg_type t "
    "JOIN pg_catalog.pg_namespace n ON n.oid = t.typnamespace WHERE t.typtype IN ('b', 'd', 'e', 'r', 'm') "
    "AND t.typcategory NOT IN ('A', 'Z') AND t.typname NOT LIKE 'pg\\_%' AND n.nspname <> 'information_schema'";

constexpr char kKeywords[] = "SELECT upper(k.word) AS \"Keyword\" FROM pg_catalog.pg_get_keywords() k";

// A rule rewrites a view into its query; what the rule depends on is what the view uses.
#define PG_VIEW_USAGE                                                                                                  \
    "FROM pg_catalog.pg_class v JOIN pg_catalog.pg_namespace n ON n.oid = v.relnamespace "                             \
    "JOIN pg_catalog.pg_rewrite w ON w.ev_class = v.oid "                                                              \
    "JOIN pg_catalog.pg_depend d ON d.classid = 'pg_catalog.pg_rewrite'::regclass AND d.objid = w.oid "                \
    "AND d.refclassid = 'pg_catalog.pg_class'::regclass AND d.refobjid <> v.oid "                                      \
    "JOIN pg_catalog.pg_class c ON c.oid = d.refobjid AND c.relkind IN ('r', 'p', 'v', 'm', 'f') "                     \
    "JOIN pg_catalog.pg_namespace tn ON tn.oid = c.relnamespace "
#define PG_VIEW "current_database() AS VIEW_CATALOG, n.nspname AS VIEW_SCHEMA, v.relname AS VIEW_NAME"

constexpr char kViewColumns[] = "SELECT DISTINCT " PG_VIEW ", " PG_TABLE(
    "tn", "c") ", a.attname AS COLUMN_NAME " PG_VIEW_USAGE
               "JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum = d.refobjsubid AND a.attnum > 0 "
               "WHERE v.relkind IN ('v', 'm')";

constexpr char kViewTables[] =
    "SELECT DISTINCT " PG_VIEW ", " PG_TABLE("tn", "c") " " PG_VIEW_USAGE "WHERE v.relkind IN ('v', 'm')";

// In the order of the call, with what comes back at 0. PARAMETER_TYPE: 1 in, 2 in and out, 3 out, 4 what is returned.
// Defaults belong to the last of those that go in.
constexpr char kParameters[] =
    "SELECT current_database() AS PROCEDURE_CATALOG, n.nspname AS PROCEDURE_SCHEMA, p.proname AS PROCEDURE_NAME, "
    "CASE WHEN x.n = 0 THEN 'RETURN_VALUE' ELSE COALESCE(NULLIF(p.proargnames[x.n], ''), '$' || x.n) END AS "
    "PARAMETER_NAME, x.n AS ORDINAL_POSITION, CASE WHEN x.n = 0 THEN 4 WHEN p.proargmodes[x.n] = 'b' THEN 2 "
    "WHEN p.proargmodes[x.n] = 'o' THEN 3 ELSE 1 END AS PARAMETER_TYPE, "
    "x.n > 0 AND pg_catalog.pg_get_function_arg_default(p.oid, x.n::int) IS NOT NULL AS PARAMETER_HASDEFAULT, "
    "CASE WHEN x.n > 0 THEN pg_catalog.pg_get_function_arg_default(p.oid, x.n::int) END AS PARAMETER_DEFAULT, "
    "true AS IS_NULLABLE, pg_catalog.format_type(x.t, NULL) AS TYPE_NAME, ty.typname AS LOCAL_TYPE_NAME "
    "FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace CROSS JOIN LATERAL "
    "(SELECT p.prorettype AS t, 0::bigint AS n WHERE p.prokind <> 'p' AND p.prorettype <> 'pg_catalog.void'::regtype "
    "UNION ALL SELECT a.t, a.n FROM unnest(COALESCE(p.proallargtypes, p.proargtypes::oid[])) WITH ORDINALITY AS a(t, "
    "n) WHERE p.proargmodes IS NULL OR p.proargmodes[a.n] <> 't') x "
    "LEFT JOIN pg_catalog.pg_type ty ON ty.oid = x.t WHERE true";

// The fields of the rows that a function returns: named in its head, or those of the table whose rows they are.
constexpr char kProcedureColumns[] =
    "SELECT current_database() AS PROCEDURE_CATALOG, n.nspname AS PROCEDURE_SCHEMA, p.proname AS PROCEDURE_NAME, "
    "x.c AS COLUMN_NAME, 1 AS ROWSET_NUMBER, x.n AS ORDINAL_POSITION, true AS IS_NULLABLE, "
    "pg_catalog.format_type(x.t, x.m) AS TYPE_NAME "
    "FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace "
    "JOIN pg_catalog.pg_type rt ON rt.oid = p.prorettype CROSS JOIN LATERAL "
    "(SELECT p.proargnames[a.n] AS c, a.t, -1 AS m, row_number() OVER (ORDER BY a.n) AS n "
    "FROM unnest(p.proallargtypes) WITH ORDINALITY AS a(t, n) WHERE p.proargmodes[a.n] IN ('t', 'o', 'b') "
    "UNION ALL SELECT a.attname, a.atttypid, a.atttypmod, row_number() OVER (ORDER BY a.attnum) "
    "FROM pg_catalog.pg_attribute a WHERE a.attrelid = rt.typrelid AND a.attnum > 0 AND NOT a.attisdropped) x "
    "WHERE p.proretset";

constexpr char kTrustees[] = "SELECT r.rolname AS TRUSTEE_NAME, CASE WHEN r.rolcanlogin THEN 1 ELSE 2 END AS "
                             "TRUSTEE_TYPE FROM pg_catalog.pg_roles r";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaCatalogs, kCatalogs},
    {adSchemaCharacterSets, kCharacterSets},
    {adSchemaCollations, kCollations},
    {adSchemaCheckConstraints, kChecks, PG_USER},
    {adSchemaConstraintColumnUsage, kConstraintColumns, PG_USER},
    {adSchemaConstraintTableUsage, kConstraintTables, PG_USER},
    {adSchemaKeyColumnUsage, kKeyColumns, PG_USER},
    {adSchemaReferentialConstraints, kReferential, PG_USER},
    {adSchemaTableConstraints, kTableConstraints, PG_USER},
    {adSchemaColumnsDomainUsage, kDomainColumns, PG_USER},
    {adSchemaSchemata, kSchemata},
    {adSchemaSQLLanguages, kLanguages},
    {adSchemaStatistics, kStatistics, PG_USER},
    {adSchemaTranslations, kTranslations},
    {adSchemaProviderTypes, kTypes},
    {adSchemaViewColumnUsage, kViewColumns, PG_USER},
    {adSchemaViewTableUsage, kViewTables, PG_USER},
    {adSchemaProcedureParameters, kParameters, PG_USER},
    {adSchemaProcedureColumns, kProcedureColumns, PG_USER},
    {adSchemaDBInfoKeywords, kKeywords},
    {adSchemaTrustees, kTrustees},
};

} // namespace

std::span<const CatalogueQuery> PostgresQueries()
{
    return kQueries;
}

} // namespace ADODB
