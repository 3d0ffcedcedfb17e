// The shapes of the rowsets about what lies below tables, views and procedures.
#include "ado/rowset/RowsetParts.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kStatistics[] = {
    ROWSET_TABLE,
    {"CARDINALITY", adUnsignedBigInt},
};

constexpr RowsetColumn kViewColumns[] = {
    ROWSET_NAME("VIEW"),
    ROWSET_TABLE,
    ROWSET_COLUMN,
};
constexpr const char *kViewBy[] = {"VIEW_CATALOG", "VIEW_SCHEMA", "VIEW_NAME"};
constexpr const char *kViewColumnsOrder[] = {"VIEW_CATALOG", "VIEW_SCHEMA", "VIEW_NAME",  "TABLE_CATALOG",
                                             "TABLE_SCHEMA", "TABLE_NAME",  "COLUMN_NAME"};

constexpr RowsetColumn kViewTables[] = {
    ROWSET_NAME("VIEW"),
    ROWSET_TABLE,
};
constexpr const char *kViewTablesOrder[] = {"VIEW_CATALOG",  "VIEW_SCHEMA",  "VIEW_NAME",
                                            "TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};

constexpr RowsetColumn kParameters[] = {
    ROWSET_PROCEDURE,
    {"PARAMETER_NAME", adVarWChar},
    {"ORDINAL_POSITION", adUnsignedSmallInt},
    {"PARAMETER_TYPE", adUnsignedSmallInt},
    {"PARAMETER_HASDEFAULT", adBoolean},
    {"PARAMETER_DEFAULT", adVarWChar},
    {"IS_NULLABLE", adBoolean},
    {"DATA_TYPE", adUnsignedSmallInt},
    ROWSET_SIZES,
    {"DESCRIPTION", adVarWChar},
    {"TYPE_NAME", adVarWChar},
    {"LOCAL_TYPE_NAME", adVarWChar},
};
constexpr const char *kParametersBy[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME", "PARAMETER_NAME"};
constexpr const char *kParametersOrder[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                            "ORDINAL_POSITION"};

constexpr RowsetColumn kProcedureColumns[] = {
    ROWSET_PROCEDURE,
    ROWSET_COLUMN,
    {"ROWSET_NUMBER", adUnsignedInt},
    {"ORDINAL_POSITION", adUnsignedInt},
    {"IS_NULLABLE", adBoolean},
    {"DATA_TYPE", adUnsignedSmallInt},
    {"TYPE_GUID", adGUID},
    ROWSET_SIZES,
    {"DESCRIPTION", adVarWChar},
};
constexpr const char *kProcedureColumnsBy[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                               "COLUMN_NAME"};
constexpr const char *kProcedureColumnsOrder[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                                  "ROWSET_NUMBER", "ORDINAL_POSITION"};

constexpr Rowset kRowsets[] = {
    {adSchemaStatistics, kStatistics, kByTable, kByTable},
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
