// Oracle's catalogue: the ALL_ views, which show what the user may see. Owners are schemas, and there are no
// catalogues. "o" is always the rowset's own object.
#include "ado/family/oracle/OracleParts.h"

namespace ADODB {

namespace {

// What every installation brings along.
#define ORA_USER                                                                                                       \
    " AND o.OWNER NOT IN ('SYS', 'SYSTEM', 'OUTLN', 'DBSNMP', 'APPQOSSYS', 'AUDSYS', 'CTXSYS', 'DVSYS', 'GSMADMIN_"    \
    "INTERNAL', 'LBACSYS', 'MDSYS', 'OJVMSYS', 'OLAPSYS', 'ORDDATA', 'ORDPLUGINS', 'ORDSYS', 'WMSYS', 'XDB')"
#define ORA_TABLE "o.OWNER AS TABLE_SCHEMA, o.TABLE_NAME"
#define ORA_CONSTRAINT "o.OWNER AS CONSTRAINT_SCHEMA, o.CONSTRAINT_NAME"
// The key that a foreign key refers to; for any other constraint itself.
#define ORA_MEANT                                                                                                      \
    "u.OWNER = COALESCE(o.R_OWNER, o.OWNER) AND u.CONSTRAINT_NAME = COALESCE(o.R_CONSTRAINT_NAME, o.CONSTRAINT_NAME)"
#define ORA_SIZES "o.DATA_TYPE AS TYPE_NAME, o.DATA_PRECISION AS NUMERIC_PRECISION, o.DATA_SCALE AS NUMERIC_SCALE"
// A type's own limit in characters; DATA_LENGTH counts bytes.
#define ORA_LENGTH                                                                                                     \
    "CASE WHEN o.DATA_TYPE LIKE '%CHAR%' THEN o.CHAR_LENGTH WHEN o.DATA_TYPE = 'RAW' THEN o.DATA_LENGTH END"
#define ORA_OCTETS "CASE WHEN o.DATA_TYPE LIKE '%CHAR%' OR o.DATA_TYPE = 'RAW' THEN o.DATA_LENGTH END"

constexpr char kTables[] =
    "SELECT o.OWNER AS TABLE_SCHEMA, o.OBJECT_NAME AS TABLE_NAME, CASE WHEN o.OWNER = 'SYS' THEN CONCAT('SYSTEM ', "
    "o.OBJECT_TYPE) ELSE o.OBJECT_TYPE END AS TABLE_TYPE, c.COMMENTS AS DESCRIPTION, o.CREATED AS DATE_CREATED, "
    "o.LAST_DDL_TIME AS DATE_MODIFIED FROM ALL_OBJECTS o LEFT JOIN ALL_TAB_COMMENTS c ON c.OWNER = o.OWNER AND "
    "c.TABLE_NAME = o.OBJECT_NAME WHERE o.OBJECT_TYPE IN ('TABLE', 'VIEW')";

constexpr char kColumns[] =
    "SELECT " ORA_TABLE ", o.COLUMN_NAME, o.COLUMN_ID AS ORDINAL_POSITION, o.DATA_DEFAULT AS COLUMN_DEFAULT, CASE "
    "o.NULLABLE WHEN 'Y' THEN 1 ELSE 0 END AS IS_NULLABLE, " ORA_SIZES ", " ORA_LENGTH
    " AS CHARACTER_MAXIMUM_LENGTH, " ORA_OCTETS " AS CHARACTER_OCTET_LENGTH, o.CHARACTER_SET_NAME, c.COMMENTS AS "
    "DESCRIPTION FROM ALL_TAB_COLUMNS o LEFT JOIN ALL_COL_COMMENTS c ON c.OWNER = o.OWNER AND c.TABLE_NAME = "
    "o.TABLE_NAME AND c.COLUMN_NAME = o.COLUMN_NAME WHERE 1 = 1";

constexpr char kViews[] = "SELECT o.OWNER AS TABLE_SCHEMA, o.VIEW_NAME AS TABLE_NAME, o.TEXT AS VIEW_DEFINITION "
                          "FROM ALL_VIEWS o WHERE 1 = 1";

constexpr char kProcedures[] =
    "SELECT o.OWNER AS PROCEDURE_SCHEMA, o.OBJECT_NAME AS PROCEDURE_NAME, CASE o.OBJECT_TYPE WHEN 'PROCEDURE' THEN 3 "
    "ELSE 1 END AS PROCEDURE_TYPE, o.CREATED AS DATE_CREATED, o.LAST_DDL_TIME AS DATE_MODIFIED FROM ALL_OBJECTS o "
    "WHERE o.OBJECT_TYPE IN ('PROCEDURE', 'FUNCTION')";

// What a function returns stands at 0; a procedure without parameters has a row without a type. PARAMETER_TYPE: 1 in, 2
// in and out, 3 out, 4 what is returned.
constexpr char kParameters[] =
    "SELECT o.OWNER AS PROCEDURE_SCHEMA, o.OBJECT_NAME AS PROCEDURE_NAME, COALESCE(o.ARGUMENT_NAME, 'RETURN_VALUE') AS "
    "PARAMETER_NAME, o.POSITION AS ORDINAL_POSITION, CASE WHEN o.POSITION = 0 THEN 4 WHEN o.IN_OUT = 'IN/OUT' THEN 2 "
    "WHEN o.IN_OUT = 'OUT' THEN 3 ELSE 1 END AS PARAMETER_TYPE, CASE o.DEFAULTED WHEN 'Y' THEN 1 ELSE 0 END AS "
    "PARAMETER_HASDEFAULT, 1 AS IS_NULLABLE, o.DATA_TYPE AS LOCAL_TYPE_NAME, " ORA_SIZES ", " ORA_LENGTH
    " AS CHARACTER_MAXIMUM_LENGTH FROM ALL_ARGUMENTS o WHERE o.PACKAGE_NAME IS NULL AND o.DATA_LEVEL = 0 AND "
    "o.DATA_TYPE IS NOT NULL";

constexpr char kIndexes[] =
    "SELECT o.TABLE_OWNER AS TABLE_SCHEMA, o.TABLE_NAME, o.OWNER AS INDEX_SCHEMA, o.INDEX_NAME, CASE WHEN "
    "k.CONSTRAINT_NAME IS NULL THEN 0 ELSE 1 END AS PRIMARY_KEY, CASE o.UNIQUENESS WHEN 'UNIQUE' THEN 1 ELSE 0 END AS "
    "\"UNIQUE\", 0 AS CLUSTERED, CASE WHEN o.INDEX_TYPE LIKE '%NORMAL%' THEN 1 ELSE 4 END AS \"TYPE\", "
    "c.COLUMN_POSITION AS ORDINAL_POSITION, c.COLUMN_NAME, CASE c.DESCEND WHEN 'DESC' THEN 2 ELSE 1 END AS "
    "\"COLLATION\", o.DISTINCT_KEYS AS CARDINALITY, o.LEAF_BLOCKS AS PAGES FROM ALL_INDEXES o JOIN ALL_IND_COLUMNS c "
    "ON c.INDEX_OWNER = o.OWNER AND c.INDEX_NAME = o.INDEX_NAME LEFT JOIN ALL_CONSTRAINTS k ON k.CONSTRAINT_TYPE = 'P' "
    "AND k.OWNER = o.TABLE_OWNER AND k.TABLE_NAME = o.TABLE_NAME AND k.INDEX_NAME = o.INDEX_NAME WHERE 1 = 1";

constexpr char kPrimaryKeys[] =
    "SELECT " ORA_TABLE ", u.COLUMN_NAME, u.POSITION AS ORDINAL, o.CONSTRAINT_NAME AS PK_NAME FROM ALL_CONSTRAINTS o "
    "JOIN ALL_CONS_COLUMNS u ON u.OWNER = o.OWNER AND u.CONSTRAINT_NAME = o.CONSTRAINT_NAME WHERE o.CONSTRAINT_TYPE = "
    "'P'";

constexpr char kForeignKeys[] =
    "SELECT u.OWNER AS PK_TABLE_SCHEMA, u.TABLE_NAME AS PK_TABLE_NAME, u.COLUMN_NAME AS PK_COLUMN_NAME, o.OWNER AS "
    "FK_TABLE_SCHEMA, o.TABLE_NAME AS FK_TABLE_NAME, c.COLUMN_NAME AS FK_COLUMN_NAME, c.POSITION AS ORDINAL, 'NO "
    "ACTION' AS UPDATE_RULE, o.DELETE_RULE, o.R_CONSTRAINT_NAME AS PK_NAME, o.CONSTRAINT_NAME AS FK_NAME, CASE WHEN "
    "o.DEFERRABLE = 'NOT DEFERRABLE' THEN 3 WHEN o.DEFERRED = 'DEFERRED' THEN 1 ELSE 2 END AS DEFERRABILITY FROM "
    "ALL_CONSTRAINTS o JOIN ALL_CONS_COLUMNS c ON c.OWNER = o.OWNER AND c.CONSTRAINT_NAME = o.CONSTRAINT_NAME JOIN "
    "ALL_CONS_COLUMNS u ON u.OWNER = o.R_OWNER AND u.CONSTRAINT_NAME = o.R_CONSTRAINT_NAME AND u.POSITION = "
    "c.POSITION WHERE o.CONSTRAINT_TYPE = 'R'";

// "NOT NULL" is a check there too.
constexpr char kChecks[] = "SELECT " ORA_CONSTRAINT ", o.SEARCH_CONDITION AS CHECK_CLAUSE FROM ALL_CONSTRAINTS o WHERE "
                           "o.CONSTRAINT_TYPE = 'C'";

constexpr char kConstraintColumns[] =
    "SELECT u.OWNER AS TABLE_SCHEMA, u.TABLE_NAME, u.COLUMN_NAME, " ORA_CONSTRAINT " FROM ALL_CONSTRAINTS o JOIN "
    "ALL_CONS_COLUMNS u ON " ORA_MEANT " WHERE o.CONSTRAINT_TYPE IN ('C', 'P', 'R', 'U')";
constexpr char kConstraintTables[] =
    "SELECT u.OWNER AS TABLE_SCHEMA, u.TABLE_NAME, " ORA_CONSTRAINT " FROM ALL_CONSTRAINTS o JOIN ALL_CONSTRAINTS u "
    "ON " ORA_MEANT " WHERE o.CONSTRAINT_TYPE IN ('C', 'P', 'R', 'U')";
constexpr char kKeyColumns[] =
    "SELECT " ORA_CONSTRAINT ", " ORA_TABLE ", u.COLUMN_NAME, u.POSITION AS ORDINAL_POSITION FROM ALL_CONSTRAINTS o "
    "JOIN ALL_CONS_COLUMNS u ON u.OWNER = o.OWNER AND u.CONSTRAINT_NAME = o.CONSTRAINT_NAME WHERE o.CONSTRAINT_TYPE "
    "IN ('P', 'R', 'U')";
constexpr char kReferential[] =
    "SELECT " ORA_CONSTRAINT ", o.R_OWNER AS UNIQUE_CONSTRAINT_SCHEMA, o.R_CONSTRAINT_NAME AS UNIQUE_CONSTRAINT_NAME, "
    "'NONE' AS MATCH_OPTION, 'NO ACTION' AS UPDATE_RULE, o.DELETE_RULE FROM ALL_CONSTRAINTS o WHERE o.CONSTRAINT_TYPE "
    "= 'R'";
constexpr char kTableConstraints[] =
    "SELECT " ORA_CONSTRAINT ", " ORA_TABLE ", CASE o.CONSTRAINT_TYPE WHEN 'C' THEN 'CHECK' WHEN 'P' THEN 'PRIMARY "
    "KEY' WHEN 'R' THEN 'FOREIGN KEY' ELSE 'UNIQUE' END AS CONSTRAINT_TYPE, CASE o.DEFERRABLE WHEN 'DEFERRABLE' THEN 1 "
    "ELSE 0 END AS IS_DEFERRABLE, CASE o.DEFERRED WHEN 'DEFERRED' THEN 1 ELSE 0 END AS INITIALLY_DEFERRED FROM "
    "ALL_CONSTRAINTS o WHERE o.CONSTRAINT_TYPE IN ('C', 'P', 'R', 'U')";

constexpr char kStatistics[] = "SELECT " ORA_TABLE ", o.NUM_ROWS AS CARDINALITY FROM ALL_TABLES o WHERE 1 = 1";

constexpr char kViewTables[] =
    "SELECT o.OWNER AS VIEW_SCHEMA, o.NAME AS VIEW_NAME, o.REFERENCED_OWNER AS TABLE_SCHEMA, o.REFERENCED_NAME AS "
    "TABLE_NAME FROM ALL_DEPENDENCIES o WHERE o.TYPE = 'VIEW' AND o.REFERENCED_TYPE IN ('TABLE', 'VIEW')";

constexpr char kTablePrivileges[] =
    "SELECT o.GRANTOR, o.GRANTEE, o.TABLE_SCHEMA, o.TABLE_NAME, o.PRIVILEGE AS PRIVILEGE_TYPE, o.GRANTABLE AS "
    "IS_GRANTABLE FROM ALL_TAB_PRIVS o";
constexpr char kColumnPrivileges[] =
    "SELECT o.GRANTOR, o.GRANTEE, o.TABLE_SCHEMA, o.TABLE_NAME, o.COLUMN_NAME, o.PRIVILEGE AS PRIVILEGE_TYPE, "
    "o.GRANTABLE AS IS_GRANTABLE FROM ALL_COL_PRIVS o";
// Rights on the server as a whole; only those of the user are told.
constexpr char kUsagePrivileges[] =
    "SELECT o.USERNAME AS GRANTEE, '*' AS OBJECT_NAME, 'SERVER' AS OBJECT_TYPE, o.PRIVILEGE AS PRIVILEGE_TYPE, "
    "o.ADMIN_OPTION AS IS_GRANTABLE FROM USER_SYS_PRIVS o";

constexpr char kSchemata[] = "SELECT USERNAME AS SCHEMA_NAME, USERNAME AS SCHEMA_OWNER FROM ALL_USERS";
constexpr char kTrustees[] = "SELECT USERNAME AS TRUSTEE_NAME, 1 AS TRUSTEE_TYPE FROM ALL_USERS";
constexpr char kCharacterSets[] = "SELECT VALUE AS CHARACTER_SET_NAME, VALUE AS FORM_OF_USE FROM V$NLS_VALID_VALUES "
                                  "WHERE PARAMETER = 'CHARACTERSET'";
constexpr char kCollations[] = "SELECT VALUE AS COLLATION_NAME FROM V$NLS_VALID_VALUES WHERE PARAMETER = 'SORT'";
constexpr char kKeywords[] = "SELECT KEYWORD AS \"Keyword\" FROM V$RESERVED_WORDS WHERE LENGTH(KEYWORD) > 1";

constexpr CatalogueQuery kQueries[] = {
    {adSchemaCharacterSets, kCharacterSets},
    {adSchemaCollations, kCollations},
    {adSchemaColumns, kColumns, ORA_USER},
    {adSchemaCheckConstraints, kChecks, ORA_USER},
    {adSchemaConstraintColumnUsage, kConstraintColumns, ORA_USER},
    {adSchemaConstraintTableUsage, kConstraintTables, ORA_USER},
    {adSchemaKeyColumnUsage, kKeyColumns, ORA_USER},
    {adSchemaReferentialConstraints, kReferential, ORA_USER},
    {adSchemaTableConstraints, kTableConstraints, ORA_USER},
    {adSchemaIndexes, kIndexes, ORA_USER},
    {adSchemaColumnPrivileges, kColumnPrivileges},
    {adSchemaTablePrivileges, kTablePrivileges},
    {adSchemaUsagePrivileges, kUsagePrivileges},
    {adSchemaProcedures, kProcedures, ORA_USER},
    {adSchemaSchemata, kSchemata},
    {adSchemaStatistics, kStatistics, ORA_USER},
    {adSchemaTables, kTables},
    {adSchemaViews, kViews, ORA_USER},
    {adSchemaViewTableUsage, kViewTables, ORA_USER},
    {adSchemaProcedureParameters, kParameters, ORA_USER},
    {adSchemaForeignKeys, kForeignKeys, ORA_USER},
    {adSchemaPrimaryKeys, kPrimaryKeys, ORA_USER},
    {adSchemaDBInfoKeywords, kKeywords},
    {adSchemaTrustees, kTrustees},
};

} // namespace

std::span<const CatalogueQuery> OracleQueries()
{
    return kQueries;
}

} // namespace ADODB
