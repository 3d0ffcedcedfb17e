// SQL Server's catalogue: the standard's own views where it has them, of the current database, and the server's where
// it has none. All names in capitals stand so: a database may tell them apart by case.
#include "ado/family/sqlserver/SqlServerParts.h"

namespace ADODB {

namespace {

#define MS_TABLE "TABLE_CATALOG, TABLE_SCHEMA, TABLE_NAME"
#define MS_CONSTRAINT "CONSTRAINT_CATALOG, CONSTRAINT_SCHEMA, CONSTRAINT_NAME"
#define MS_VIEW "VIEW_CATALOG, VIEW_SCHEMA, VIEW_NAME"
#define MS_SIZES                                                                                                       \
    "DATA_TYPE AS TYPE_NAME, CHARACTER_MAXIMUM_LENGTH, CHARACTER_OCTET_LENGTH, NUMERIC_PRECISION, NUMERIC_SCALE"
#define MS_INFORMATION " FROM INFORMATION_SCHEMA."

constexpr char kTables[] =
    "SELECT " MS_TABLE
    ", CASE TABLE_TYPE WHEN 'BASE TABLE' THEN 'TABLE' ELSE TABLE_TYPE END AS TABLE_TYPE" MS_INFORMATION "TABLES";

constexpr char kColumns[] =
    "SELECT " MS_TABLE ", COLUMN_NAME, ORDINAL_POSITION, COLUMN_DEFAULT, IS_NULLABLE, " MS_SIZES
    ", DATETIME_PRECISION, CHARACTER_SET_CATALOG, CHARACTER_SET_SCHEMA, CHARACTER_SET_NAME, COLLATION_CATALOG, "
    "COLLATION_SCHEMA, COLLATION_NAME, DOMAIN_CATALOG, DOMAIN_SCHEMA, DOMAIN_NAME" MS_INFORMATION "COLUMNS";

constexpr char kViews[] =
    "SELECT " MS_TABLE ", VIEW_DEFINITION, CASE CHECK_OPTION WHEN 'NONE' THEN 0 ELSE 1 END AS CHECK_OPTION, "
    "IS_UPDATABLE" MS_INFORMATION "VIEWS";

constexpr char kProcedures[] =
    "SELECT ROUTINE_CATALOG AS PROCEDURE_CATALOG, ROUTINE_SCHEMA AS PROCEDURE_SCHEMA, ROUTINE_NAME AS PROCEDURE_NAME, "
    "CASE ROUTINE_TYPE WHEN 'PROCEDURE' THEN 3 WHEN 'FUNCTION' THEN 1 ELSE 2 END AS PROCEDURE_TYPE, "
    "ROUTINE_DEFINITION AS PROCEDURE_DEFINITION, CREATED AS DATE_CREATED, LAST_ALTERED AS "
    "DATE_MODIFIED" MS_INFORMATION "ROUTINES";

// PARAMETER_TYPE: 1 in, 2 in and out, 3 out, 4 what is returned, which stands at 0 and has no name.
constexpr char kParameters[] =
    "SELECT SPECIFIC_CATALOG AS PROCEDURE_CATALOG, SPECIFIC_SCHEMA AS PROCEDURE_SCHEMA, SPECIFIC_NAME AS "
    "PROCEDURE_NAME, CASE WHEN ORDINAL_POSITION = 0 THEN 'RETURN_VALUE' ELSE PARAMETER_NAME END AS PARAMETER_NAME, "
    "ORDINAL_POSITION, CASE WHEN ORDINAL_POSITION = 0 THEN 4 WHEN PARAMETER_MODE = 'INOUT' THEN 2 WHEN PARAMETER_MODE "
    "= 'OUT' THEN 3 ELSE 1 END AS PARAMETER_TYPE, 1 AS IS_NULLABLE, DATA_TYPE AS LOCAL_TYPE_NAME, " MS_SIZES
        MS_INFORMATION "PARAMETERS";

constexpr char kProcedureColumns[] =
    "SELECT TABLE_CATALOG AS PROCEDURE_CATALOG, TABLE_SCHEMA AS PROCEDURE_SCHEMA, TABLE_NAME AS PROCEDURE_NAME, "
    "COLUMN_NAME, 1 AS ROWSET_NUMBER, ORDINAL_POSITION, IS_NULLABLE, " MS_SIZES MS_INFORMATION "ROUTINE_COLUMNS";

constexpr char kChecks[] = "SELECT " MS_CONSTRAINT ", CHECK_CLAUSE" MS_INFORMATION "CHECK_CONSTRAINTS";

constexpr char kConstraintColumns[] =
    "SELECT " MS_TABLE ", COLUMN_NAME, " MS_CONSTRAINT MS_INFORMATION "CONSTRAINT_COLUMN_USAGE";
constexpr char kConstraintTables[] = "SELECT " MS_TABLE ", " MS_CONSTRAINT MS_INFORMATION "CONSTRAINT_TABLE_USAGE";

constexpr char kKeyColumns[] =
    "SELECT " MS_CONSTRAINT ", " MS_TABLE ", COLUMN_NAME, ORDINAL_POSITION" MS_INFORMATION "KEY_COLUMN_USAGE";

constexpr char kReferential[] =
    "SELECT " MS_CONSTRAINT ", UNIQUE_CONSTRAINT_CATALOG, UNIQUE_CONSTRAINT_SCHEMA, UNIQUE_CONSTRAINT_NAME, "
    "MATCH_OPTION, UPDATE_RULE, DELETE_RULE" MS_INFORMATION "REFERENTIAL_CONSTRAINTS";

constexpr char kTableConstraints[] =
    "SELECT " MS_CONSTRAINT ", " MS_TABLE ", CONSTRAINT_TYPE, IS_DEFERRABLE, INITIALLY_DEFERRED" MS_INFORMATION
    "TABLE_CONSTRAINTS";

constexpr char kPrimaryKeys[] =
    "SELECT k.TABLE_CATALOG, k.TABLE_SCHEMA, k.TABLE_NAME, k.COLUMN_NAME, k.ORDINAL_POSITION AS ORDINAL, "
    "k.CONSTRAINT_NAME AS PK_NAME" MS_INFORMATION "TABLE_CONSTRAINTS c JOIN INFORMATION_SCHEMA.KEY_COLUMN_USAGE k "
    "ON k.CONSTRAINT_SCHEMA = c.CONSTRAINT_SCHEMA AND k.CONSTRAINT_NAME = c.CONSTRAINT_NAME AND k.TABLE_NAME = "
    "c.TABLE_NAME WHERE c.CONSTRAINT_TYPE = 'PRIMARY KEY'";

constexpr char kForeignKeys[] =
    "SELECT DB_NAME() AS PK_TABLE_CATALOG, ps.name AS PK_TABLE_SCHEMA, po.name AS PK_TABLE_NAME, pc.name AS "
    "PK_COLUMN_NAME, DB_NAME() AS FK_TABLE_CATALOG, fs.name AS FK_TABLE_SCHEMA, fo.name AS FK_TABLE_NAME, fc.name AS "
    "FK_COLUMN_NAME, k.constraint_column_id AS ORDINAL, REPLACE(f.update_referential_action_desc, '_', ' ') AS "
    "UPDATE_RULE, REPLACE(f.delete_referential_action_desc, '_', ' ') AS DELETE_RULE, i.name AS PK_NAME, f.name AS "
    "FK_NAME, 3 AS DEFERRABILITY FROM sys.foreign_keys f JOIN sys.foreign_key_columns k ON k.constraint_object_id = "
    "f.object_id JOIN sys.objects po ON po.object_id = f.referenced_object_id JOIN sys.schemas ps ON ps.schema_id = "
    "po.schema_id JOIN sys.columns pc ON pc.object_id = k.referenced_object_id AND pc.column_id = "
    "k.referenced_column_id JOIN sys.objects fo ON fo.object_id = f.parent_object_id JOIN sys.schemas fs ON "
    "fs.schema_id = fo.schema_id JOIN sys.columns fc ON fc.object_id = k.parent_object_id AND fc.column_id = "
    "k.parent_column_id LEFT JOIN sys.indexes i ON i.object_id = f.referenced_object_id AND i.index_id = "
    "f.key_index_id";

// Kinds of index: 0 the heap itself, 1 clustered, 2 a tree beside the table, 7 hashed.
constexpr char kIndexes[] =
    "SELECT DB_NAME() AS TABLE_CATALOG, s.name AS TABLE_SCHEMA, o.name AS TABLE_NAME, DB_NAME() AS INDEX_CATALOG, "
    "s.name AS INDEX_SCHEMA, i.name AS INDEX_NAME, i.is_primary_key AS PRIMARY_KEY, i.is_unique AS \"UNIQUE\", "
    "CASE i.type WHEN 1 THEN 1 ELSE 0 END AS CLUSTERED, CASE i.type WHEN 1 THEN 1 WHEN 2 THEN 1 WHEN 7 THEN 2 ELSE 4 "
    "END AS \"TYPE\", NULLIF(i.fill_factor, 0) AS FILL_FACTOR, x.key_ordinal AS ORDINAL_POSITION, c.name AS "
    "COLUMN_NAME, CASE x.is_descending_key WHEN 1 THEN 2 ELSE 1 END AS \"COLLATION\", i.filter_definition AS "
    "FILTER_CONDITION FROM sys.indexes i JOIN sys.objects o ON o.object_id = i.object_id JOIN sys.schemas s ON "
    "s.schema_id = o.schema_id JOIN sys.index_columns x ON x.object_id = i.object_id AND x.index_id = i.index_id "
    "JOIN sys.columns c ON c.object_id = x.object_id AND c.column_id = x.column_id WHERE i.type > 0 AND x.key_ordinal "
    "> 0 AND o.is_ms_shipped = 0";

constexpr char kStatistics[] =
    "SELECT DB_NAME() AS TABLE_CATALOG, s.name AS TABLE_SCHEMA, o.name AS TABLE_NAME, SUM(p.rows) AS CARDINALITY "
    "FROM sys.objects o JOIN sys.schemas s ON s.schema_id = o.schema_id JOIN sys.partitions p ON p.object_id = "
    "o.object_id WHERE o.type = 'U' AND p.index_id IN (0, 1) GROUP BY s.name, o.name";

constexpr char kDomainColumns[] =
    "SELECT DOMAIN_CATALOG, DOMAIN_SCHEMA, DOMAIN_NAME, " MS_TABLE ", COLUMN_NAME" MS_INFORMATION "COLUMN_DOMAIN_USAGE";
constexpr char kViewColumns[] = "SELECT " MS_VIEW ", " MS_TABLE ", COLUMN_NAME" MS_INFORMATION "VIEW_COLUMN_USAGE";
constexpr char kViewTables[] = "SELECT " MS_VIEW ", " MS_TABLE MS_INFORMATION "VIEW_TABLE_USAGE";

constexpr char kColumnPrivileges[] = "SELECT GRANTOR, GRANTEE, " MS_TABLE
                                     ", COLUMN_NAME, PRIVILEGE_TYPE, IS_GRANTABLE" MS_INFORMATION "COLUMN_PRIVILEGES";
constexpr char kTablePrivileges[] =
    "SELECT GRANTOR, GRANTEE, " MS_TABLE ", PRIVILEGE_TYPE, IS_GRANTABLE" MS_INFORMATION "TABLE_PRIVILEGES";

// Rights on the database (class 0) and on its schemas (class 3).
constexpr char kUsagePrivileges[] =
    "SELECT g.name AS GRANTOR, e.name AS GRANTEE, DB_NAME() AS OBJECT_CATALOG, CASE p.class WHEN 0 THEN DB_NAME() ELSE "
    "s.name END AS OBJECT_NAME, p.class_desc AS OBJECT_TYPE, p.permission_name AS PRIVILEGE_TYPE, CASE p.state WHEN "
    "'W' THEN 1 ELSE 0 END AS IS_GRANTABLE FROM sys.database_permissions p JOIN sys.database_principals g ON "
    "g.principal_id = p.grantor_principal_id JOIN sys.database_principals e ON e.principal_id = "
    "p.grantee_principal_id LEFT JOIN sys.schemas s ON s.schema_id = p.major_id AND p.class = 3 WHERE p.class IN (0, "
    "3) AND p.state IN ('G', 'W')";

constexpr char kTrustees[] = "SELECT name AS TRUSTEE_NAME, CASE WHEN type IN ('R', 'G', 'X', 'A') THEN 2 ELSE 1 END AS "
                             "TRUSTEE_TYPE FROM sys.database_principals";
constexpr char kCatalogs[] = "SELECT name AS CATALOG_NAME FROM sys.databases";
constexpr char kSchemata[] =
    "SELECT CATALOG_NAME, SCHEMA_NAME, SCHEMA_OWNER, DEFAULT_CHARACTER_SET_CATALOG, DEFAULT_CHARACTER_SET_SCHEMA, "
    "DEFAULT_CHARACTER_SET_NAME" MS_INFORMATION "SCHEMATA";
constexpr char kCollations[] =
    "SELECT name AS COLLATION_NAME, 'PAD SPACE' AS PAD_ATTRIBUTE FROM sys.fn_helpcollations()";
constexpr char kCharacterSets[] = // the other rows of it are orders of sorting
    "SELECT name AS CHARACTER_SET_NAME, name AS FORM_OF_USE FROM sys.syscharsets WHERE type BETWEEN 1001 AND 1999";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaCatalogs, kCatalogs},
    {adSchemaCharacterSets, kCharacterSets},
    {adSchemaCollations, kCollations},
    {adSchemaColumns, kColumns},
    {adSchemaCheckConstraints, kChecks},
    {adSchemaConstraintColumnUsage, kConstraintColumns},
    {adSchemaConstraintTableUsage, kConstraintTables},
    {adSchemaKeyColumnUsage, kKeyColumns},
    {adSchemaReferentialConstraints, kReferential},
    {adSchemaTableConstraints, kTableConstraints},
    {adSchemaColumnsDomainUsage, kDomainColumns},
    {adSchemaIndexes, kIndexes},
    {adSchemaColumnPrivileges, kColumnPrivileges},
    {adSchemaTablePrivileges, kTablePrivileges},
    {adSchemaUsagePrivileges, kUsagePrivileges},
    {adSchemaProcedures, kProcedures},
    {adSchemaSchemata, kSchemata},
    {adSchemaStatistics, kStatistics},
    {adSchemaTables, kTables},
    {adSchemaViews, kViews},
    {adSchemaViewColumnUsage, kViewColumns},
    {adSchemaViewTableUsage, kViewTables},
    {adSchemaProcedureParameters, kParameters},
    {adSchemaForeignKeys, kForeignKeys},
    {adSchemaPrimaryKeys, kPrimaryKeys},
    {adSchemaProcedureColumns, kProcedureColumns},
    {adSchemaTrustees, kTrustees},
};

} // namespace

std::span<const CatalogueQuery> SqlServerQueries()
{
    return kQueries;
}

} // namespace ADODB
