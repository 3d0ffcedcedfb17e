// Who may do what on PostgreSQL: the access lists of tables, columns, and of what one can use. An object without a list
// has its kind's default one, which gives its owner everything.
#include "ado/family/postgres/PostgresParts.h"

namespace ADODB {

namespace {

#define PG_WHO                                                                                                         \
    "pg_catalog.pg_get_userbyid(g.grantor) AS GRANTOR, CASE WHEN g.grantee = 0 THEN 'PUBLIC' ELSE "                    \
    "pg_catalog.pg_get_userbyid(g.grantee) END AS GRANTEE, "
#define PG_WHAT ", g.privilege_type AS PRIVILEGE_TYPE, g.is_grantable AS IS_GRANTABLE "

constexpr char kTables[] =
    "SELECT " PG_WHO "current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS TABLE_NAME" PG_WHAT
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace CROSS JOIN LATERAL "
    "pg_catalog.aclexplode(COALESCE(c.relacl, pg_catalog.acldefault('r', c.relowner))) g "
    "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f')";

// What is granted on a table is granted on each of its columns.
constexpr char kColumns[] =
    "SELECT DISTINCT " PG_WHO "current_database() AS TABLE_CATALOG, n.nspname AS TABLE_SCHEMA, c.relname AS "
    "TABLE_NAME, a.attname AS COLUMN_NAME" PG_WHAT
    "FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace "
    "JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped CROSS JOIN LATERAL "
    "(SELECT * FROM pg_catalog.aclexplode(COALESCE(c.relacl, pg_catalog.acldefault('r', c.relowner))) t "
    "UNION ALL SELECT * FROM pg_catalog.aclexplode(a.attacl) f) g "
    "WHERE c.relkind IN ('r', 'p', 'v', 'm', 'f') AND g.privilege_type IN ('SELECT', 'INSERT', 'UPDATE', 'REFERENCES')";

// Domains and types, sequences, schemas, languages, foreign servers and their wrappers.
constexpr char kUsage[] =
    "SELECT " PG_WHO "current_database() AS OBJECT_CATALOG, n.nspname AS OBJECT_SCHEMA, o.name AS OBJECT_NAME, "
    "o.kind AS OBJECT_TYPE" PG_WHAT "FROM ("
    "SELECT t.typnamespace AS space, t.typname AS name, CASE t.typtype WHEN 'd' THEN 'DOMAIN' ELSE 'TYPE' END AS kind, "
    "COALESCE(t.typacl, pg_catalog.acldefault('T', t.typowner)) AS acl FROM pg_catalog.pg_type t "
    "LEFT JOIN pg_catalog.pg_class c ON c.oid = t.typrelid WHERE t.typtype IN ('d', 'e', 'r') OR c.relkind = 'c' "
    "UNION ALL SELECT s.relnamespace, s.relname, 'SEQUENCE', COALESCE(s.relacl, pg_catalog.acldefault('s', "
    "s.relowner)) "
    "FROM pg_catalog.pg_class s WHERE s.relkind = 'S' "
    "UNION ALL SELECT m.oid, m.nspname, 'SCHEMA', COALESCE(m.nspacl, pg_catalog.acldefault('n', m.nspowner)) "
    "FROM pg_catalog.pg_namespace m "
    "UNION ALL SELECT NULL, l.lanname, 'LANGUAGE', COALESCE(l.lanacl, pg_catalog.acldefault('l', l.lanowner)) "
    "FROM pg_catalog.pg_language l "
    "UNION ALL SELECT NULL, f.srvname, 'FOREIGN SERVER', COALESCE(f.srvacl, pg_catalog.acldefault('S', f.srvowner)) "
    "FROM pg_catalog.pg_foreign_server f "
    "UNION ALL SELECT NULL, w.fdwname, 'FOREIGN DATA WRAPPER', COALESCE(w.fdwacl, pg_catalog.acldefault('F', "
    "w.fdwowner)) FROM pg_catalog.pg_foreign_data_wrapper w) o LEFT JOIN pg_catalog.pg_namespace n ON n.oid = o.space "
    "CROSS JOIN LATERAL pg_catalog.aclexplode(o.acl) g WHERE g.privilege_type = 'USAGE'";
constexpr char kUsersUsage[] = " AND (n.oid IS NULL OR n.nspname <> 'information_schema' AND left(n.nspname, 3) <> "
                               "'pg_')";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaColumnPrivileges, kColumns, PG_USER},
    {adSchemaTablePrivileges, kTables, PG_USER},
    {adSchemaUsagePrivileges, kUsage, kUsersUsage},
};

} // namespace

std::span<const CatalogueQuery> PostgresGrants()
{
    return kQueries;
}

} // namespace ADODB
