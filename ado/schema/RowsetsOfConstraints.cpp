// The shapes of the rowsets about constraints, keys and domains.
#include "ado/schema/Rowsets.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kAsserts[] = {
    {"CONSTRAINT_CATALOG", adVarWChar}, {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
    {"IS_DEFERRABLE", adBoolean},       {"INITIALLY_DEFERRED", adBoolean}, {"DESCRIPTION", adVarWChar},
};
constexpr const char *kConstraintBy[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME"};

constexpr RowsetColumn kCheckConstraints[] = {
    {"CONSTRAINT_CATALOG", adVarWChar}, {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
    {"CHECK_CLAUSE", adVarWChar},       {"DESCRIPTION", adVarWChar},
};

constexpr RowsetColumn kConstraintColumns[] = {
    {"TABLE_CATALOG", adVarWChar},      {"TABLE_SCHEMA", adVarWChar},      {"TABLE_NAME", adVarWChar},
    {"COLUMN_NAME", adVarWChar},        {"COLUMN_GUID", adGUID},           {"COLUMN_PROPID", adUnsignedInt},
    {"CONSTRAINT_CATALOG", adVarWChar}, {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
};
constexpr const char *kTableColumnBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "COLUMN_NAME"};
constexpr const char *kConstraintColumnsOrder[] = {"TABLE_CATALOG",  "TABLE_SCHEMA",       "TABLE_NAME",
                                                   "COLUMN_NAME",    "CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA",
                                                   "CONSTRAINT_NAME"};

constexpr RowsetColumn kConstraintTables[] = {
    {"TABLE_CATALOG", adVarWChar},      {"TABLE_SCHEMA", adVarWChar},      {"TABLE_NAME", adVarWChar},
    {"CONSTRAINT_CATALOG", adVarWChar}, {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
};
constexpr const char *kTableBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};
constexpr const char *kConstraintTablesOrder[] = {"TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                                  "CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME"};

constexpr RowsetColumn kKeyColumns[] = {
    {"CONSTRAINT_CATALOG", adVarWChar},  {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
    {"TABLE_CATALOG", adVarWChar},       {"TABLE_SCHEMA", adVarWChar},      {"TABLE_NAME", adVarWChar},
    {"COLUMN_NAME", adVarWChar},         {"COLUMN_GUID", adGUID},           {"COLUMN_PROPID", adUnsignedInt},
    {"ORDINAL_POSITION", adUnsignedInt},
};
constexpr const char *kKeyColumnsBy[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME", "TABLE_CATALOG",
                                         "TABLE_SCHEMA",       "TABLE_NAME",        "COLUMN_NAME"};
constexpr const char *kKeyColumnsOrder[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME",
                                            "TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                            "ORDINAL_POSITION"};

constexpr RowsetColumn kReferential[] = {
    {"CONSTRAINT_CATALOG", adVarWChar},
    {"CONSTRAINT_SCHEMA", adVarWChar},
    {"CONSTRAINT_NAME", adVarWChar},
    {"UNIQUE_CONSTRAINT_CATALOG", adVarWChar},
    {"UNIQUE_CONSTRAINT_SCHEMA", adVarWChar},
    {"UNIQUE_CONSTRAINT_NAME", adVarWChar},
    {"MATCH_OPTION", adVarWChar},
    {"UPDATE_RULE", adVarWChar},
    {"DELETE_RULE", adVarWChar},
    {"DESCRIPTION", adVarWChar},
};

constexpr RowsetColumn kTableConstraints[] = {
    {"CONSTRAINT_CATALOG", adVarWChar}, {"CONSTRAINT_SCHEMA", adVarWChar}, {"CONSTRAINT_NAME", adVarWChar},
    {"TABLE_CATALOG", adVarWChar},      {"TABLE_SCHEMA", adVarWChar},      {"TABLE_NAME", adVarWChar},
    {"CONSTRAINT_TYPE", adVarWChar},    {"IS_DEFERRABLE", adBoolean},      {"INITIALLY_DEFERRED", adBoolean},
    {"DESCRIPTION", adVarWChar},
};
constexpr const char *kTableConstraintsBy[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME",
                                               "TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                               "CONSTRAINT_TYPE"};

constexpr RowsetColumn kDomainColumns[] = {
    {"DOMAIN_CATALOG", adVarWChar}, {"DOMAIN_SCHEMA", adVarWChar}, {"DOMAIN_NAME", adVarWChar},
    {"TABLE_CATALOG", adVarWChar},  {"TABLE_SCHEMA", adVarWChar},  {"TABLE_NAME", adVarWChar},
    {"COLUMN_NAME", adVarWChar},    {"COLUMN_GUID", adGUID},       {"COLUMN_PROPID", adUnsignedInt},
};
constexpr const char *kDomainColumnsBy[] = {"DOMAIN_CATALOG", "DOMAIN_SCHEMA", "DOMAIN_NAME", "COLUMN_NAME"};
constexpr const char *kDomainColumnsOrder[] = {"DOMAIN_CATALOG", "DOMAIN_SCHEMA", "DOMAIN_NAME", "TABLE_CATALOG",
                                               "TABLE_SCHEMA",   "TABLE_NAME",    "COLUMN_NAME"};

constexpr Rowset kRowsets[] = {
    {adSchemaAsserts, kAsserts, kConstraintBy, kConstraintBy},
    {adSchemaCheckConstraints, kCheckConstraints, kConstraintBy, kConstraintBy},
    {adSchemaConstraintColumnUsage, kConstraintColumns, kTableColumnBy, kConstraintColumnsOrder},
    {adSchemaConstraintTableUsage, kConstraintTables, kTableBy, kConstraintTablesOrder},
    {adSchemaKeyColumnUsage, kKeyColumns, kKeyColumnsBy, kKeyColumnsOrder},
    {adSchemaReferentialConstraints, kReferential, kConstraintBy, kConstraintBy},
    {adSchemaTableConstraints, kTableConstraints, kTableConstraintsBy, kTableConstraintsBy},
    {adSchemaColumnsDomainUsage, kDomainColumns, kDomainColumnsBy, kDomainColumnsOrder},
};

} // namespace

std::span<const Rowset> RowsetsOfConstraints()
{
    return kRowsets;
}

} // namespace ADODB
