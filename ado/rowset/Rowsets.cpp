#include "ado/rowset/RowsetParts.h"

namespace ADODB {

namespace {

constexpr RowsetColumn kTables[] = {
    ROWSET_TABLE,
    {"TABLE_TYPE", adVarWChar},
    {"TABLE_GUID", adGUID},
    {"DESCRIPTION", adVarWChar},
    {"TABLE_PROPID", adUnsignedInt},
    {"DATE_CREATED", adDate},
    {"DATE_MODIFIED", adDate},
};
constexpr const char *kTablesBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"};
constexpr const char *kTablesOrder[] = {"TABLE_TYPE", "TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME"};

constexpr RowsetColumn kColumns[] = {
    ROWSET_TABLE,
    ROWSET_COLUMN,
    {"ORDINAL_POSITION", adUnsignedInt},
    {"COLUMN_HASDEFAULT", adBoolean},
    {"COLUMN_DEFAULT", adVarWChar},
    {"COLUMN_FLAGS", adUnsignedInt},
    {"IS_NULLABLE", adBoolean},
    {"DATA_TYPE", adUnsignedSmallInt},
    {"TYPE_GUID", adGUID},
    ROWSET_SIZES,
    {"DATETIME_PRECISION", adUnsignedInt},
    ROWSET_NAME("CHARACTER_SET"),
    ROWSET_NAME("COLLATION"),
    ROWSET_NAME("DOMAIN"),
    {"DESCRIPTION", adVarWChar},
};
constexpr const char *kColumnsOrder[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "ORDINAL_POSITION"};

constexpr RowsetColumn kIndexes[] = {
    ROWSET_TABLE,
    ROWSET_NAME("INDEX"),
    {"PRIMARY_KEY", adBoolean},
    {"UNIQUE", adBoolean},
    {"CLUSTERED", adBoolean},
    {"TYPE", adUnsignedSmallInt},
    {"FILL_FACTOR", adInteger},
    {"INITIAL_SIZE", adInteger},
    {"NULLS", adInteger},
    {"SORT_BOOKMARKS", adBoolean},
    {"AUTO_UPDATE", adBoolean},
    {"NULL_COLLATION", adInteger},
    {"ORDINAL_POSITION", adUnsignedInt},
    ROWSET_COLUMN,
    {"COLLATION", adSmallInt},
    {"CARDINALITY", adUnsignedBigInt},
    {"PAGES", adInteger},
    {"FILTER_CONDITION", adVarWChar},
    {"INTEGRATED", adBoolean},
};
constexpr const char *kIndexesBy[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "INDEX_NAME", "TYPE", "TABLE_NAME"};
constexpr const char *kIndexesOrder[] = {"UNIQUE",     "TYPE",       "INDEX_CATALOG",   "INDEX_SCHEMA",
                                         "TABLE_NAME", "INDEX_NAME", "ORDINAL_POSITION"};

constexpr RowsetColumn kProcedures[] = {
    ROWSET_PROCEDURE,
    {"PROCEDURE_TYPE", adSmallInt},
    {"PROCEDURE_DEFINITION", adVarWChar},
    {"DESCRIPTION", adVarWChar},
    {"DATE_CREATED", adDate},
    {"DATE_MODIFIED", adDate},
};
constexpr const char *kProceduresBy[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME", "PROCEDURE_TYPE"};
constexpr const char *kProceduresOrder[] = {"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME"};

constexpr RowsetColumn kViews[] = {
    ROWSET_TABLE,
    {"VIEW_DEFINITION", adVarWChar},
    {"CHECK_OPTION", adBoolean},
    {"IS_UPDATABLE", adBoolean},
    {"DESCRIPTION", adVarWChar},
    {"DATE_CREATED", adDate},
    {"DATE_MODIFIED", adDate},
};

constexpr RowsetColumn kForeignKeys[] = {
    ROWSET_NAME("PK_TABLE"),     {"PK_COLUMN_NAME", adVarWChar},
    {"PK_COLUMN_GUID", adGUID},  {"PK_COLUMN_PROPID", adUnsignedInt},
    ROWSET_NAME("FK_TABLE"),     {"FK_COLUMN_NAME", adVarWChar},
    {"FK_COLUMN_GUID", adGUID},  {"FK_COLUMN_PROPID", adUnsignedInt},
    {"ORDINAL", adUnsignedInt},  {"UPDATE_RULE", adVarWChar},
    {"DELETE_RULE", adVarWChar}, {"PK_NAME", adVarWChar},
    {"FK_NAME", adVarWChar},     {"DEFERRABILITY", adSmallInt},
};
constexpr const char *kForeignKeysBy[] = {"PK_TABLE_CATALOG", "PK_TABLE_SCHEMA", "PK_TABLE_NAME",
                                          "FK_TABLE_CATALOG", "FK_TABLE_SCHEMA", "FK_TABLE_NAME"};
constexpr const char *kForeignKeysOrder[] = {"FK_TABLE_CATALOG", "FK_TABLE_SCHEMA", "FK_TABLE_NAME", "FK_NAME",
                                             "ORDINAL"};

constexpr RowsetColumn kPrimaryKeys[] = {
    ROWSET_TABLE,
    ROWSET_COLUMN,
    {"ORDINAL", adUnsignedInt},
    {"PK_NAME", adVarWChar},
};
constexpr const char *kPrimaryKeysOrder[] = {"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "ORDINAL"};

constexpr Rowset kRowsets[] = {
    {adSchemaTables, kTables, kTablesBy, kTablesOrder},
    {adSchemaColumns, kColumns, kByTableColumn, kColumnsOrder},
    {adSchemaIndexes, kIndexes, kIndexesBy, kIndexesOrder},
    {adSchemaProcedures, kProcedures, kProceduresBy, kProceduresOrder},
    {adSchemaViews, kViews, kByTable, kByTable},
    {adSchemaForeignKeys, kForeignKeys, kForeignKeysBy, kForeignKeysOrder},
    {adSchemaPrimaryKeys, kPrimaryKeys, kByTable, kPrimaryKeysOrder},
};

} // namespace

const Rowset *FindRowset(int schema)
{
    for (const std::span<const Rowset> rowsets :
         {std::span<const Rowset>(kRowsets), RowsetsOfConstraints(), RowsetsOfServer(), RowsetsOfObjects()})
        for (const Rowset &rowset : rowsets)
            if (rowset.Schema == schema)
                return &rowset;
    return nullptr;
}

int RowsetIndex(const Rowset &rowset, QStringView column)
{
    for (size_t index = 0; index < rowset.Columns.size(); ++index)
        if (column.compare(QLatin1String(rowset.Columns[index].Name), Qt::CaseInsensitive) == 0)
            return int(index);
    return -1;
}

void RaiseNotCapable()
{
    throw Error(Fault::NotCapable);
}

} // namespace ADODB
