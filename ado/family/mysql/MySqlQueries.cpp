// MySQL's and MariaDB's constraints, texts, rights, routines, from information_schema: of the current database where
// they belong to one. A database is a catalogue; only the schemata give its name in both places.
#include "ado/family/mysql/MySqlParts.h"

namespace ADODB {

namespace {

#define MY_CONSTRAINT "CONSTRAINT_SCHEMA AS CONSTRAINT_CATALOG, CONSTRAINT_NAME"

constexpr char kCatalogs[] = "SELECT SCHEMA_NAME AS CATALOG_NAME FROM information_schema.SCHEMATA";

constexpr char kCharacterSets[] = "SELECT CHARACTER_SET_NAME, CHARACTER_SET_NAME AS FORM_OF_USE, DEFAULT_COLLATE_NAME "
                                  "FROM information_schema.CHARACTER_SETS";

constexpr char kCollations[] =
    "SELECT COLLATION_NAME, CHARACTER_SET_NAME, CASE WHEN COLLATION_NAME LIKE '%nopad%' THEN 'NO PAD' ELSE 'PAD SPACE' "
    "END AS PAD_ATTRIBUTE FROM information_schema.COLLATIONS";

constexpr char kChecks[] = "SELECT " MY_CONSTRAINT ", CHECK_CLAUSE FROM information_schema.CHECK_CONSTRAINTS "
                           "WHERE CONSTRAINT_SCHEMA = DATABASE()";

// The columns that a constraint speaks of: a foreign key's are those that it refers to.
constexpr char kConstraintColumns[] =
    "SELECT COALESCE(REFERENCED_TABLE_SCHEMA, TABLE_SCHEMA) AS TABLE_CATALOG, COALESCE(REFERENCED_TABLE_NAME, "
    "TABLE_NAME) AS TABLE_NAME, COALESCE(REFERENCED_COLUMN_NAME, COLUMN_NAME) AS COLUMN_NAME, " MY_CONSTRAINT
    " FROM information_schema.KEY_COLUMN_USAGE WHERE CONSTRAINT_SCHEMA = DATABASE()";

constexpr char kConstraintTables[] =
    "SELECT COALESCE(r.UNIQUE_CONSTRAINT_SCHEMA, t.TABLE_SCHEMA) AS TABLE_CATALOG, "
    "COALESCE(r.REFERENCED_TABLE_NAME, t.TABLE_NAME) AS TABLE_NAME, "
    "t.CONSTRAINT_SCHEMA AS CONSTRAINT_CATALOG, t.CONSTRAINT_NAME FROM information_schema.TABLE_CONSTRAINTS t "
    "LEFT JOIN information_schema.REFERENTIAL_CONSTRAINTS r ON t.CONSTRAINT_TYPE = 'FOREIGN KEY' "
    "AND r.CONSTRAINT_SCHEMA = t.CONSTRAINT_SCHEMA AND r.CONSTRAINT_NAME = t.CONSTRAINT_NAME AND r.TABLE_NAME = "
    "t.TABLE_NAME WHERE t.TABLE_SCHEMA = DATABASE()";

constexpr char kKeyColumns[] =
    "SELECT " MY_CONSTRAINT ", TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, COLUMN_NAME, ORDINAL_POSITION "
    "FROM information_schema.KEY_COLUMN_USAGE WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kReferential[] =
    "SELECT " MY_CONSTRAINT ", UNIQUE_CONSTRAINT_SCHEMA AS UNIQUE_CONSTRAINT_CATALOG, UNIQUE_CONSTRAINT_NAME, "
    "MATCH_OPTION, UPDATE_RULE, DELETE_RULE FROM information_schema.REFERENTIAL_CONSTRAINTS "
    "WHERE CONSTRAINT_SCHEMA = DATABASE()";

constexpr char kTableConstraints[] =
    "SELECT " MY_CONSTRAINT ", TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, CONSTRAINT_TYPE, 0 AS IS_DEFERRABLE, "
    "0 AS INITIALLY_DEFERRED FROM information_schema.TABLE_CONSTRAINTS WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kColumnPrivileges[] =
    "SELECT GRANTEE, TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, COLUMN_NAME, PRIVILEGE_TYPE, IS_GRANTABLE "
    "FROM information_schema.COLUMN_PRIVILEGES WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kTablePrivileges[] =
    "SELECT GRANTEE, TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, PRIVILEGE_TYPE, IS_GRANTABLE "
    "FROM information_schema.TABLE_PRIVILEGES WHERE TABLE_SCHEMA = DATABASE()";

// Rights on whole databases, and on the server ("*").
constexpr char kUsagePrivileges[] =
    "SELECT GRANTEE, TABLE_SCHEMA AS OBJECT_CATALOG, TABLE_SCHEMA AS OBJECT_NAME, 'DATABASE' AS OBJECT_TYPE, "
    "PRIVILEGE_TYPE, IS_GRANTABLE FROM information_schema.SCHEMA_PRIVILEGES UNION ALL SELECT GRANTEE, NULL, '*', "
    "'SERVER', PRIVILEGE_TYPE, IS_GRANTABLE FROM information_schema.USER_PRIVILEGES";

constexpr char kSchemata[] =
    "SELECT SCHEMA_NAME AS CATALOG_NAME, SCHEMA_NAME, DEFAULT_CHARACTER_SET_NAME FROM information_schema.SCHEMATA";

constexpr char kStatistics[] = "SELECT TABLE_SCHEMA AS TABLE_CATALOG, TABLE_NAME, TABLE_ROWS AS CARDINALITY "
                               "FROM information_schema.TABLES WHERE TABLE_SCHEMA = DATABASE() AND TABLE_TYPE <> "
                               "'VIEW'";

// What a function returns stands at 0. PARAMETER_TYPE: 1 in, 2 in and out, 3 out, 4 what is returned.
constexpr char kParameters[] =
    "SELECT SPECIFIC_SCHEMA AS PROCEDURE_CATALOG, SPECIFIC_NAME AS PROCEDURE_NAME, COALESCE(PARAMETER_NAME, "
    "'RETURN_VALUE') AS PARAMETER_NAME, ORDINAL_POSITION, CASE WHEN ORDINAL_POSITION = 0 THEN 4 WHEN PARAMETER_MODE = "
    "'INOUT' THEN 2 WHEN PARAMETER_MODE = 'OUT' THEN 3 ELSE 1 END AS PARAMETER_TYPE, 0 AS PARAMETER_HASDEFAULT, "
    "1 AS IS_NULLABLE, DTD_IDENTIFIER AS TYPE_NAME, DATA_TYPE AS LOCAL_TYPE_NAME, CHARACTER_MAXIMUM_LENGTH, "
    "CHARACTER_OCTET_LENGTH FROM information_schema.PARAMETERS WHERE SPECIFIC_SCHEMA = DATABASE()";

// The server keeps no record of what a view uses, but its text with every name in full: the reader takes it from there.
constexpr char kViewUsage[] =
    "SELECT TABLE_SCHEMA AS VIEW_CATALOG, TABLE_NAME AS VIEW_NAME, VIEW_DEFINITION AS USES_IN "
    "FROM information_schema.VIEWS WHERE TABLE_SCHEMA = DATABASE()";

constexpr char kKeywords[] = "SELECT WORD AS `Keyword` FROM information_schema.KEYWORDS";

// Accounts, as the grants name them, and roles. Who may not read mysql.user gets the server's refusal.
constexpr char kTrustees[] =
    "SELECT CASE WHEN is_role = 'Y' THEN User ELSE CONCAT('''', User, '''@''', Host, '''') END "
    "AS TRUSTEE_NAME, CASE WHEN is_role = 'Y' THEN 2 ELSE 1 END AS TRUSTEE_TYPE FROM "
    "mysql.user";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaCatalogs, kCatalogs},
    {adSchemaCharacterSets, kCharacterSets},
    {adSchemaCollations, kCollations},
    {adSchemaCheckConstraints, kChecks},
    {adSchemaConstraintColumnUsage, kConstraintColumns},
    {adSchemaConstraintTableUsage, kConstraintTables},
    {adSchemaKeyColumnUsage, kKeyColumns},
    {adSchemaReferentialConstraints, kReferential},
    {adSchemaTableConstraints, kTableConstraints},
    {adSchemaColumnPrivileges, kColumnPrivileges},
    {adSchemaTablePrivileges, kTablePrivileges},
    {adSchemaUsagePrivileges, kUsagePrivileges},
    {adSchemaSchemata, kSchemata},
    {adSchemaStatistics, kStatistics},
    {adSchemaViewColumnUsage, kViewUsage},
    {adSchemaViewTableUsage, kViewUsage},
    {adSchemaProcedureParameters, kParameters},
    {adSchemaDBInfoKeywords, kKeywords},
    {adSchemaTrustees, kTrustees},
};

} // namespace

std::span<const CatalogueQuery> MySqlQueries()
{
    return kQueries;
}

} // namespace ADODB
