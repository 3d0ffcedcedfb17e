// SQLite's tables, columns and keys: the pragmas as tables, in the order of their arguments (CROSS JOIN keeps it; a
// plain join loses rows).
#include "ado/Driver.h"
#include "ado/family/sqlite/SqliteParts.h"

namespace ADODB {

namespace {

// A temporary table is a "TABLE" like any other: lists and trees choose by that word.
constexpr char kTables[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, CASE WHEN t.type = 'view' THEN 'VIEW' "
    "WHEN t.type = 'shadow' OR t.name LIKE 'sqlite!_%' ESCAPE '!' THEN 'SYSTEM TABLE' "
    "ELSE 'TABLE' END AS TABLE_TYPE FROM pragma_table_list t WHERE 1=1";

constexpr char kColumns[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, "
    "c.cid + 1 AS ORDINAL_POSITION, c.dflt_value AS COLUMN_DEFAULT, c.\"notnull\" = 0 AS IS_NULLABLE, c.type AS "
    "TYPE_NAME " SQLITE_TABLES "CROSS JOIN pragma_table_xinfo(t.name, t.schema) c WHERE c.hidden <> 1";

constexpr char kIndexes[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, " SQLITE_SCHEMA " AS INDEX_SCHEMA, "
    "i.name AS INDEX_NAME, i.origin = 'pk' AS PRIMARY_KEY, i.\"unique\" AS \"UNIQUE\", 0 AS CLUSTERED, 1 AS TYPE, "
    "x.seqno + 1 AS ORDINAL_POSITION, x.name AS COLUMN_NAME, x.\"desc\" + 1 AS COLLATION "
    "FROM pragma_table_list t CROSS JOIN pragma_index_list(t.name, t.schema) i CROSS JOIN pragma_index_xinfo(i.name, "
    "t.schema) x "
    "WHERE x.\"key\" = 1";

constexpr char kViews[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, t.sql AS VIEW_DEFINITION, 0 AS CHECK_OPTION, "
    "0 AS IS_UPDATABLE FROM " SQLITE_MASTERS " t WHERE t.type = 'view'";

constexpr char kForeignKeys[] =
    "SELECT " SQLITE_SCHEMA " AS PK_TABLE_SCHEMA, " SQLITE_TARGET " AS PK_TABLE_NAME, " SQLITE_TARGET_COLUMN
    " AS PK_COLUMN_NAME, " SQLITE_SCHEMA
    " AS FK_TABLE_SCHEMA, t.name AS FK_TABLE_NAME, f.\"from\" AS FK_COLUMN_NAME, f.seq + 1 AS ORDINAL, "
    "f.on_update AS UPDATE_RULE, f.on_delete AS DELETE_RULE, 'FK_' || t.name || '_' || f.id AS FK_NAME, "
    "3 AS DEFERRABILITY, " SQLITE_KEY
    " FROM pragma_table_list t CROSS JOIN pragma_foreign_key_list(t.name, t.schema) f WHERE 1=1";

constexpr char kPrimaryKeys[] =
    "SELECT " SQLITE_SCHEMA
    " AS TABLE_SCHEMA, t.name AS TABLE_NAME, c.name AS COLUMN_NAME, c.pk AS ORDINAL " SQLITE_TABLES
    "CROSS JOIN pragma_table_info(t.name, t.schema) c WHERE c.pk > 0 AND t.type <> 'view'";

// ANALYZE counts: the first number of each of a table's rows in sqlite_stat1 is how many rows that index or the table
// has, a partial index has fewer. Before the first ANALYZE the catalogue has no such table, and nobody knows the
// numbers.
constexpr char kStatistics[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME, CASE t.schema WHEN 'main' THEN (SELECT "
    "max(CAST(s.stat AS INTEGER)) FROM main.sqlite_stat1 s WHERE s.tbl = t.name) END AS CARDINALITY "
    "FROM pragma_table_list t WHERE t.type = 'table'" SQLITE_USER;
constexpr char kTablesWithoutStatistics[] =
    "SELECT " SQLITE_SCHEMA " AS TABLE_SCHEMA, t.name AS TABLE_NAME FROM pragma_table_list t "
    "WHERE t.type = 'table'" SQLITE_USER;

constexpr CatalogueQuery kQueries[] = {
    {adSchemaTables, kTables},
    {adSchemaColumns, kColumns, SQLITE_USER},
    {adSchemaIndexes, kIndexes, SQLITE_USER},
    {adSchemaViews, kViews},
    {adSchemaForeignKeys, kForeignKeys},
    {adSchemaPrimaryKeys, kPrimaryKeys, SQLITE_USER},
    {adSchemaStatistics, kStatistics},
    {adSchemaStatistics, kTablesWithoutStatistics},
};

// The text that stands for SQLITE_MASTERS on this connection.
QString SqliteMasters(Session &session)
{
    const ExecuteResult result = session.Execute(QStringLiteral("SELECT name FROM pragma_database_list"));
    std::vector<ColumnStore> names;
    for (const ColumnInfo &column : result.Rows->Columns())
        names.emplace_back(column.Type);
    while (result.Rows->Fetch(names, 100) > 0) {
    }
    QStringList texts;
    for (qint64 row = 0; row < names.front().Size(); ++row) {
        const QString name = names.front().Text(row);
        texts += QStringLiteral("SELECT '%1' AS schema, type, name, sql FROM \"%2\".sqlite_master")
                     .arg(QString(name).replace(u'\'', QLatin1String("''")),
                          QString(name).replace(u'"', QLatin1String("\"\"")));
    }
    return u'(' + texts.join(QLatin1String(" UNION ALL ")) + u')';
}

} // namespace

QString WithSqliteMasters(QString query, Session &session)
{
    const QLatin1String masters(SQLITE_MASTERS);
    if (query.contains(masters))
        query.replace(masters, SqliteMasters(session));
    return query;
}

std::span<const CatalogueQuery> SqliteObjects()
{
    return kQueries;
}

} // namespace ADODB
