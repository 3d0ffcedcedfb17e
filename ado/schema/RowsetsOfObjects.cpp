// The shapes of the rowsets about what lies below tables, views and procedures.
#include "ado/schema/Rowsets.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kStatistics[] = {
    {"TABLE_CATALOG", adVarWChar},
    {"TABLE_SCHEMA", adVarWChar},
    {"TABLE_NAME", adVarWChar},
    {"CARDINALITY", adUnsignedBigInt},
};
constexpr const char *kTableBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};

constexpr RowsetColumn kViewColumns[] = {
    {"VIEW_CATALOG", adVarWChar},  {"VIEW_SCHEMA", adVarWChar},  {"VIEW_NAME", adVarWChar},
    {"TABLE_CATALOG", adVarWChar}, {"TABLE_SCHEMA", adVarWChar}, {"TABLE_NAME", adVarWChar},
    {"COLUMN_NAME", adVarWChar},   {"COLUMN_GUID", adGUID},      {"COLUMN_PROPID", adUnsignedInt},
};
constexpr const char *kViewBy[] = {"VIEW_CATALOG", "VIEW_SCHEMA", "VIEW_NAME"};
constexpr const char *kViewColumnsOrder[] = {"VIEW_CATALOG", "VIEW_SCHEMA", "VIEW_NAME",  "TABLE_CATALOG",
                                             "TABLE_SCHEMA", "TABLE_NAME",  "COLUMN_NAME"};

constexpr RowsetColumn kViewTables[] = {
    {"VIEW_CATALOG", adVarWChar},  {"VIEW_SCHEMA", adVarWChar},  {"VIEW_NAME", adVarWChar},
    {"TABLE_CATALOG", adVarWChar}, {"TABLE_SCHEMA", adVarWChar}, {"TABLE_NAME", adVarWChar},
};
constexpr const char *kViewTablesOrder[] = {"VIEW_CATALOG",  "VIEW_SCHEMA",  "VIEW_NAME",
                                            "TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};

constexpr RowsetColumn kParameters[] = {
    {"PROCEDURE_CATALOG", adVarWChar},
    {"PROCEDURE_SCHEMA", adVarWChar},
    {"PROCEDURE_NAME", adVarWChar},
    {"PARAMETER_NAME", adVarWChar},
    {"ORDINAL_POSITION", adUnsignedSmallInt},
    {"PARAMETER_TYPE", adUnsignedSmallInt},
    {"PARAMETER_HASDEFAULT", adBoolean},
    {"PARAMETER_DEFAULT", adVarWChar},
    {"IS_NULLABLE", adBoolean},
    {"DATA_TYPE", adUnsignedSmallInt},
    {"CHARACTER_MAXIMUM_LENGTH", adUnsignedInt},
    {"CHARACTER_OCTET_LENGTH", adUnsignedInt},
    {"NUMERIC_PRECISION", adUnsignedSmallInt},
    {"NUMERIC_SCALE", adSmallInt},
    {"DESCRIPTION", adVarWChar},
    {"TYPE_NAME", adVarWChar},
    {"LOCAL_TYPE_NAME", adVarWChar},
};
constexpr const char *kParametersBy[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME", "PARAMETER_NAME"};
constexpr const char *kParametersOrder[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                            "ORDINAL_POSITION"};

constexpr RowsetColumn kProcedureColumns[] = {
    {"PROCEDURE_CATALOG", adVarWChar},
    {"PROCEDURE_SCHEMA", adVarWChar},
    {"PROCEDURE_NAME", adVarWChar},
    {"COLUMN_NAME", adVarWChar},
    {"COLUMN_GUID", adGUID},
    {"COLUMN_PROPID", adUnsignedInt},
    {"ROWSET_NUMBER", adUnsignedInt},
    {"ORDINAL_POSITION", adUnsignedInt},
    {"IS_NULLABLE", adBoolean},
    {"DATA_TYPE", adUnsignedSmallInt},
    {"TYPE_GUID", adGUID},
    {"CHARACTER_MAXIMUM_LENGTH", adUnsignedInt},
    {"CHARACTER_OCTET_LENGTH", adUnsignedInt},
    {"NUMERIC_PRECISION", adUnsignedSmallInt},
    {"NUMERIC_SCALE", adSmallInt},
    {"DESCRIPTION", adVarWChar},
};
constexpr const char *kProcedureColumnsBy[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                               "COLUMN_NAME"};
constexpr const char *kProcedureColumnsOrder[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                                  "ROWSET_NUMBER", "ORDINAL_POSITION"};

constexpr Rowset kRowsets[] = {
    {adSchemaStatistics, kStatistics, kTableBy, kTableBy},
    {adSchemaViewColumnUsage, kViewColumns, kViewBy, kViewColumnsOrder},
    {adSchemaViewTableUsage, kViewTables, kViewBy, kViewTablesOrder},
    {adSchemaProcedureParameters, kParameters, kParametersBy, kParametersOrder},
    {adSchemaProcedureColumns, kProcedureColumns, kProcedureColumnsBy, kProcedureColumnsOrder},
};

} // namespace

std::span<const Rowset> RowsetsOfObjects()
{
    return kRowsets;
}

} // namespace ADODB
