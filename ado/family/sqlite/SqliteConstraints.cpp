// SQLite's constraints, collations and databases. Its catalogue names no constraint but in the text of the table, so
// primary keys are named after their table, PK_table, and so are foreign ones without a name of their own,
// FK_table_number; a unique key is named by its index. The rows of checks bring
// that text in CHECKS_IN, from which the reader makes a row for each check; those of foreign keys say which key they
// are of.
#include "ado/family/sqlite/SqliteParts.h"

namespace ADODB {

namespace {

#define SQLITE_OWN "t.type = 'table' AND t.name NOT LIKE 'sqlite!_%' ESCAPE '!'"
// The texts of the tables that may hold a check.
#define SQLITE_TEXTS                                                                                                   \
    "FROM " SQLITE_MASTERS                                                                                             \
    " t WHERE t.type = 'table' AND t.sql LIKE '%CHECK%' AND t.name NOT LIKE 'sqlite!_%' ESCAPE "                       \
    "'!' AND t.sql NOT LIKE 'CREATE VIRTUAL %'"

constexpr char kChecks[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, t.name AS CHECKED_TABLE, t.sql AS CHECKS_IN " SQLITE_TEXTS;

constexpr char kConstraintColumns[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, " SQLITE_SCHEMA
    " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", t.name, x.name, " SQLITE_SCHEMA ", i.name, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_info(i.name, t.schema) x "
    "WHERE i.origin = 'u' AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA ", " SQLITE_TARGET
    ", " SQLITE_TARGET_COLUMN ", " SQLITE_SCHEMA ", 'FK_' || t.name || '_' || f.id, " SQLITE_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE " SQLITE_OWN;

constexpr char kConstraintTables[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, " SQLITE_SCHEMA
    " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, NULL AS CHECKED_TABLE, NULL AS "
    "CHECKS_IN, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk = 1 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", t.name, " SQLITE_SCHEMA ", i.name, NULL, NULL, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i WHERE i.origin = 'u' AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", " SQLITE_TARGET ", " SQLITE_SCHEMA
    ", 'FK_' || t.name || '_' || f.id, NULL, NULL, " SQLITE_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", t.name, " SQLITE_SCHEMA ", NULL, t.name, t.sql, " SQLITE_NO_KEY
    " " SQLITE_TEXTS;

constexpr char kKeyColumns[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, c.pk AS ORDINAL_POSITION, " SQLITE_NO_KEY
    " " SQLITE_TABLES "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", i.name, " SQLITE_SCHEMA ", t.name, x.name, x.seqno + 1, " SQLITE_NO_KEY
    " " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_info(i.name, t.schema) x "
    "WHERE i.origin = 'u' AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", 'FK_' || t.name || '_' || f.id, " SQLITE_SCHEMA ", t.name, f.\"from\", f.seq + 1, " SQLITE_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE " SQLITE_OWN;

constexpr char kReferential[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'FK_' || t.name || '_' || f.id AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS UNIQUE_CONSTRAINT_SCHEMA, f.\"match\" AS MATCH_OPTION, f.on_update AS UPDATE_RULE, f.on_delete AS "
    "DELETE_RULE, " SQLITE_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN;

constexpr char kTableConstraints[] =
    "SELECT " SQLITE_SCHEMA " AS CONSTRAINT_SCHEMA, 'PK_' || t.name AS CONSTRAINT_NAME, " SQLITE_SCHEMA
    " AS TABLE_SCHEMA, t.name AS TABLE_NAME, 'PRIMARY KEY' AS CONSTRAINT_TYPE, NULL AS CHECKED_TABLE, NULL AS "
    "CHECKS_IN, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk = 1 AND " SQLITE_OWN " UNION ALL SELECT " SQLITE_SCHEMA
    ", i.name, " SQLITE_SCHEMA ", t.name, 'UNIQUE', NULL, NULL, " SQLITE_NO_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_index_list(t.name, t.schema) i WHERE i.origin = 'u' AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", 'FK_' || t.name || '_' || f.id, " SQLITE_SCHEMA
    ", t.name, 'FOREIGN KEY', NULL, NULL, " SQLITE_KEY " " SQLITE_TABLES
    "CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE f.seq = 0 AND " SQLITE_OWN
    " UNION ALL SELECT " SQLITE_SCHEMA ", NULL, " SQLITE_SCHEMA ", t.name, 'CHECK', t.name, t.sql, " SQLITE_NO_KEY
    " " SQLITE_TEXTS;

constexpr char kCharacterSets[] =
    "SELECT e.encoding AS CHARACTER_SET_NAME, e.encoding AS FORM_OF_USE, 'BINARY' AS DEFAULT_COLLATE_NAME "
    "FROM pragma_encoding e";

constexpr char kCollations[] = "SELECT c.name AS COLLATION_NAME, CASE c.name WHEN 'RTRIM' THEN 'PAD SPACE' ELSE 'NO "
                               "PAD' END AS PAD_ATTRIBUTE FROM pragma_collation_list c";

// Each attached file, with the encoding that they share.
constexpr char kSchemata[] = "SELECT d.name AS SCHEMA_NAME, e.encoding AS DEFAULT_CHARACTER_SET_NAME "
                             "FROM pragma_database_list d CROSS JOIN pragma_encoding e";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaCharacterSets, kCharacterSets},
    {adSchemaCollations, kCollations},
    {adSchemaCheckConstraints, kChecks},
    {adSchemaConstraintColumnUsage, kConstraintColumns},
    {adSchemaConstraintTableUsage, kConstraintTables},
    {adSchemaKeyColumnUsage, kKeyColumns},
    {adSchemaReferentialConstraints, kReferential},
    {adSchemaTableConstraints, kTableConstraints},
    {adSchemaSchemata, kSchemata},
};

} // namespace

std::span<const CatalogueQuery> SqliteConstraints()
{
    return kQueries;
}

} // namespace ADODB
