// The shapes of the rowsets about constraints, keys and domains.
#include "ado/rowset/RowsetParts.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kAsserts[] = {
    ROWSET_CONSTRAINT,
    {"IS_DEFERRABLE", adBoolean},
    {"INITIALLY_DEFERRED", adBoolean},
    {"DESCRIPTION", adVarWChar},
};

constexpr RowsetColumn kCheckConstraints[] = {
    ROWSET_CONSTRAINT,
    {"CHECK_CLAUSE", adVarWChar},
    {"DESCRIPTION", adVarWChar},
};

constexpr RowsetColumn kConstraintColumns[] = {
    ROWSET_TABLE,
    ROWSET_COLUMN,
    ROWSET_CONSTRAINT,
};
constexpr const char *kConstraintColumnsOrder[] = {"TABLE_CATALOG",  "TABLE_SCHEMA",       "TABLE_NAME",
                                                   "COLUMN_NAME",    "CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA",
                                                   "CONSTRAINT_NAME"};

constexpr RowsetColumn kConstraintTables[] = {
    ROWSET_TABLE,
    ROWSET_CONSTRAINT,
};
constexpr const char *kConstraintTablesOrder[] = {"TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                                  "CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME"};

constexpr RowsetColumn kKeyColumns[] = {
    ROWSET_CONSTRAINT,
    ROWSET_TABLE,
    ROWSET_COLUMN,
    {"ORDINAL_POSITION", adUnsignedInt},
};
constexpr const char *kKeyColumnsBy[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME", "TABLE_CATALOG",
                                         "TABLE_SCHEMA",       "TABLE_NAME",        "COLUMN_NAME"};
constexpr const char *kKeyColumnsOrder[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME",
                                            "TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                            "ORDINAL_POSITION"};

constexpr RowsetColumn kReferential[] = {
    ROWSET_CONSTRAINT,           ROWSET_NAME("UNIQUE_CONSTRAINT"), {"MATCH_OPTION", adVarWChar},
    {"UPDATE_RULE", adVarWChar}, {"DELETE_RULE", adVarWChar},      {"DESCRIPTION", adVarWChar},
};

constexpr RowsetColumn kTableConstraints[] = {
    ROWSET_CONSTRAINT,
    ROWSET_TABLE,
    {"CONSTRAINT_TYPE", adVarWChar},
    {"IS_DEFERRABLE", adBoolean},
    {"INITIALLY_DEFERRED", adBoolean},
    {"DESCRIPTION", adVarWChar},
};
constexpr const char *kTableConstraintsBy[] = {"CONSTRAINT_CATALOG", "CONSTRAINT_SCHEMA", "CONSTRAINT_NAME",
                                               "TABLE_CATALOG",      "TABLE_SCHEMA",      "TABLE_NAME",
                                               "CONSTRAINT_TYPE"};

constexpr RowsetColumn kDomainColumns[] = {
    ROWSET_NAME("DOMAIN"),
    ROWSET_TABLE,
    ROWSET_COLUMN,
};
constexpr const char *kDomainColumnsBy[] = {"DOMAIN_CATALOG", "DOMAIN_SCHEMA", "DOMAIN_NAME", "COLUMN_NAME"};
constexpr const char *kDomainColumnsOrder[] = {"DOMAIN_CATALOG", "DOMAIN_SCHEMA", "DOMAIN_NAME", "TABLE_CATALOG",
                                               "TABLE_SCHEMA",   "TABLE_NAME",    "COLUMN_NAME"};

constexpr Rowset kRowsets[] = {
    {adSchemaAsserts, kAsserts, kByConstraint, kByConstraint},
    {adSchemaCheckConstraints, kCheckConstraints, kByConstraint, kByConstraint},
    {adSchemaConstraintColumnUsage, kConstraintColumns, kByTableColumn, kConstraintColumnsOrder},
    {adSchemaConstraintTableUsage, kConstraintTables, kByTable, kConstraintTablesOrder},
    {adSchemaKeyColumnUsage, kKeyColumns, kKeyColumnsBy, kKeyColumnsOrder},
    {adSchemaReferentialConstraints, kReferential, kByConstraint, kByConstraint},
    {adSchemaTableConstraints, kTableConstraints, kTableConstraintsBy, kTableConstraintsBy},
    {adSchemaColumnsDomainUsage, kDomainColumns, kDomainColumnsBy, kDomainColumnsOrder},
};

} // namespace

std::span<const Rowset> RowsetsOfConstraints()
{
    return kRowsets;
}

} // namespace ADODB
