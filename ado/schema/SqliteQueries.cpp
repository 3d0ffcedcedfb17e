// SQLite's constraints, collations and databases. Its catalogue names no constraint but in the text of the table, so
// keys are named after their table: PK_table, FK_table_number, and a unique key by its index. The rows of checks bring
// that text in CHECKS_IN, from which the reader makes a row for each check.
#include "ado/schema/CatalogueQueries.h"

namespace ADODB {

namespace {

constexpr DatabaseFamily kFamily = DatabaseFamily::SQLite;

#define SQLITE_SCHEMA "CASE WHEN t.schema IN ('main', 'temp') THEN NULL ELSE t.schema END"
#define SQLITE_TABLES "FROM pragma_table_list t "
#define SQLITE_OWN "t.type = 'table' AND t.name NOT LIKE 'sqlite!_%' ESCAPE '!'"
// The texts of the tables, each read once; an attached database's own are not among them.
#define SQLITE_TEXTS                                                                                                   \
    "FROM (SELECT name, sql FROM main.sqlite_master WHERE type = 'table' UNION ALL SELECT name, sql FROM "             \
    "sqlite_temp_master WHERE type = 'table') s WHERE s.name NOT LIKE 'sqlite!_%' ESCAPE '!' AND s.sql NOT LIKE "      \
    "'CREATE VIRTUAL %'"

// The target as it is spelled where it was made, not as the key spells it.
#define SQLITE_TARGET                                                                                                  \
    "COALESCE((SELECT p.name FROM pragma_table_list(f.\"table\") p WHERE p.schema = t.schema), f.\"table\")"

constexpr char kChecks[] =
    "SELECT NULL AS CONSTRAINT_SCHEMA, s.name AS CHECKED_TABLE, s.sql AS CHECKS_IN " SQLITE_TEXTS;

constexpr char kConstraintColumns[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, " SQLITE_SCHEMA
    " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", t.name, x.name, " SQLITE_SCHEMA ", i.name " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_info(i.name, t.schema) x "
    "WHERE i.origin = 'u' AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA ", " SQLITE_TARGET
    ", COALESCE((SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE lower(c.name) = lower(f.\"to\")), "
    "f.\"to\", (SELECT c.name FROM pragma_table_info(f.\"table\", t.schema) c WHERE c.pk = f.seq + 1)), " SQLITE_SCHEMA
    ", 'FK_' || t.name || '_' || f.id " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE " SQLITE_OWN;

constexpr char kConstraintTables[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, " SQLITE_SCHEMA
    " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, NULL AS CHECKED_TABLE, NULL AS CHECKS_IN " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk = 1 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", t.name, " SQLITE_SCHEMA ", i.name, NULL, NULL " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i WHERE i.origin = 'u' AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", " SQLITE_TARGET ", " SQLITE_SCHEMA
    ", 'FK_' || t.name || '_' || f.id, NULL, NULL " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN
    " UNION ALL SELECT NULL, s.name, NULL, NULL, s.name, s.sql " SQLITE_TEXTS;

constexpr char kKeyColumns[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, c.pk AS ORDINAL_POSITION " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", i.name, " SQLITE_SCHEMA ", t.name, x.name, x.seqno + 1 " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_info(i.name, t.schema) x "
    "WHERE i.origin = 'u' AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", 'FK_' || t.name || '_' || f.id, " SQLITE_SCHEMA ", t.name, f.\"from\", f.seq + 1 " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE " SQLITE_OWN;

constexpr char kReferential[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'FK_' || t.name || '_' || f.id AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS UNIQUE_CONSTRAINT_SCHEMA, f.\"match\" AS MATCH_OPTION, f.on_update AS UPDATE_RULE, f.on_delete AS "
    "DELETE_RULE " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN;

constexpr char kTableConstraints[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS TABLE_SCHEMA, t.name AS TABLE_NAME, 'PRIMARY KEY' AS CONSTRAINT_TYPE, NULL AS CHECKED_TABLE, NULL AS "
    "CHECKS_IN " SQLITE_TABLES "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk = 1 AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", i.name, " SQLITE_SCHEMA ", t.name, 'UNIQUE', NULL, NULL " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i WHERE i.origin = 'u' AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", 'FK_' || t.name || '_' || f.id, " SQLITE_SCHEMA
    ", t.name, 'FOREIGN KEY', NULL, NULL " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN
    " UNION ALL SELECT NULL, NULL, NULL, s.name, 'CHECK', s.name, s.sql " SQLITE_TEXTS;

constexpr char kCharacterSets[] =
    "SELECT e.encoding AS CHARACTER_SET_NAME, e.encoding AS FORM_OF_USE, 'BINARY' AS DEFAULT_COLLATE_NAME "
    "FROM pragma_encoding e";

constexpr char kCollations[] = "SELECT c.name AS COLLATION_NAME, CASE c.name WHEN 'RTRIM' THEN 'PAD SPACE' ELSE 'NO "
                               "PAD' END AS PAD_ATTRIBUTE FROM pragma_collation_list c";

// Each attached file, with the encoding that they share.
constexpr char kSchemata[] = "SELECT d.name AS SCHEMA_NAME, e.encoding AS DEFAULT_CHARACTER_SET_NAME "
                             "FROM pragma_database_list d CROSS JOIN pragma_encoding e";

constexpr CatalogueQuery kQueries[] = {
    {kFamily, adSchemaCharacterSets, kCharacterSets, ""},
    {kFamily, adSchemaCollations, kCollations, ""},
    {kFamily, adSchemaCheckConstraints, kChecks, ""},
    {kFamily, adSchemaConstraintColumnUsage, kConstraintColumns, ""},
    {kFamily, adSchemaConstraintTableUsage, kConstraintTables, ""},
    {kFamily, adSchemaKeyColumnUsage, kKeyColumns, ""},
    {kFamily, adSchemaReferentialConstraints, kReferential, ""},
    {kFamily, adSchemaTableConstraints, kTableConstraints, ""},
    {kFamily, adSchemaSchemata, kSchemata, ""},
};

} // namespace

std::span<const CatalogueQuery> SqliteQueries()
{
    return kQueries;
}

} // namespace ADODB
