#include "app/SchemaTable.h"
#include "ado/Types.h"
#include <cstring>

using namespace ADODB;

// The titles of the first kind are the rowsets' own names. "Foregin" is meant to stand so.
static constexpr SchemaRow s_rows[] = {
    {"mnuAsserts", adSchemaAsserts, "Asserts", ""},
    {"mnuCharacterSets", adSchemaCharacterSets, "CharacterSets", ""},
    {"mnuCheckConstraints", adSchemaCheckConstraints, "CheckConstraints", ""},
    {"mnuCollations", adSchemaCollations, "Collations", ""},
    {"mnuColumnPrivileges", adSchemaColumnPrivileges, "ColumnPrivileges", ""},
    {"mnuColumnsDomainUsage", adSchemaColumnsDomainUsage, "ColumnsDomainUsage", ""},
    {"mnuConstraintColumnUsage", adSchemaConstraintColumnUsage, "ConstraintColumnUsage", ""},
    {"mnuConstraintTableUsage", adSchemaConstraintTableUsage, "ConstraintTableUsage", ""},
    {"mnuCubes", adSchemaCubes, "Cubes", ""},
    {"mnuDBInfoKeywords", adSchemaDBInfoKeywords, "DBInfoKeywords", ""},
    {"mnuDBInfoLiterals", adSchemaDBInfoLiterals, "DBInfoLiterals", ""},
    {"mnuDimensions", adSchemaDimensions, "Dimensions", ""},
    {"mnuHierarchies", adSchemaHierarchies, "Hierarchies", ""},
    {"mnuKeyColumnUsage", adSchemaKeyColumnUsage, "KeyColumnUsage", ""},
    {"mnuLevels", adSchemaLevels, "Levels", ""},
    {"mnuMeasures", adSchemaMeasures, "Measures", ""},
    {"mnuMembers", adSchemaMembers, "Members", ""},
    {"mnuProcedureColumns", adSchemaProcedureColumns, "ProcedureColumns", ""},
    {"mnuProcedureParameters", adSchemaProcedureParameters, "ProcedureParameters", ""},
    {"mnuProcedures", adSchemaProcedures, "Procedures", ""},
    {"mnuProperties", adSchemaProperties, "Properties", ""},
    {"mnuProviderTypes", adSchemaProviderTypes, "ProviderTypes", ""},
    {"mnuSchemata", adSchemaSchemata, "Schemata", ""},
    {"mnuSQLLanguages", adSchemaSQLLanguages, "SQLLanguages", ""},
    {"mnuStatistics", adSchemaStatistics, "Statistics", ""},
    {"mnuTableConstraints", adSchemaTableConstraints, "TableConstraints", ""},
    {"mnuTablePrivileges", adSchemaTablePrivileges, "TablePrivileges", ""},
    {"mnuTables", adSchemaTables, "Tables", ""}, // no menu item leads here
    {"mnuTranslations", adSchemaTranslations, "Translations", ""},
    {"mnuTrustees", adSchemaTrustees, "Trustees", ""},
    {"mnuUsagePrivileges", adSchemaUsagePrivileges, "UsagePrivileges", ""},
    {"mnuViewColumnUsage", adSchemaViewColumnUsage, "ViewColumnUsage", ""},
    {"mnuViewTableUsage", adSchemaViewTableUsage, "ViewTableUsage", ""},
    {"mnuTableFields", adSchemaColumns, "Table #TABLE# Fields", "Table_Name"},
    {"mnuTablePrimaryKeyList", adSchemaPrimaryKeys, "Table #TABLE# Primary Keys", "Table_Name"},
    {"mnuTableForeginKeyList", adSchemaForeignKeys, "Table #TABLE# Foreign Keys", "FK_TABLE_NAME"},
    {"mnuTableIndex", adSchemaIndexes, "Indexes", "Table_Name"},
};

std::span<const SchemaRow> SchemaTable()
{
    return s_rows;
}

const SchemaRow *FindSchemaRow(const char *menu)
{
    for (const SchemaRow &row : s_rows)
        if (!std::strcmp(row.Menu, menu))
            return &row;
    return nullptr;
}
