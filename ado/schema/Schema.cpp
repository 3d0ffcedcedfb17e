#include "ado/schema/Schema.h"
#include "ado/Recordset.h"
#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/Rowsets.h"
#include "ado/schema/TypeNames.h"

namespace ADODB {

namespace {

struct Held
{
    std::vector<ColumnInfo> Columns;
    std::vector<ColumnStore> Stores;
    qint64 Rows() const { return Stores.empty() ? 0 : Stores.front().Size(); }
};

Held ReadWhole(ResultSet &rows)
{
    Held held;
    for (const ColumnInfo &column : rows.Columns())
        held.Stores.emplace_back(column.Type);
    while (rows.Fetch(held.Stores, 4096) > 0) {
    }
    held.Columns = rows.Columns();
    return held;
}

// Restrictions that name a schema or a table lift the veil from the server's own objects.
bool NamesAnObject(const Rowset &rowset, const QStringList &restrictions)
{
    for (size_t number = 0; number < rowset.Restrictions.size() && qsizetype(number) < restrictions.size(); ++number) {
        const QLatin1String column(rowset.Restrictions[number]);
        if (!restrictions[qsizetype(number)].isNull() &&
            (column.endsWith(QLatin1String("_SCHEMA")) || column.endsWith(QLatin1String("TABLE_NAME"))))
            return true;
    }
    return false;
}

void PutType(RowsetWriter &writer, DatabaseFamily family, const Value &name)
{
    const DeclaredType type = ReadTypeName(family, name.ToText());
    writer.Put(u"DATA_TYPE", Value(int(type.Type)));
    if (type.Length >= 0)
        writer.Put(u"CHARACTER_MAXIMUM_LENGTH", Value(type.Length));
    if (type.Precision >= 0)
        writer.Put(u"NUMERIC_PRECISION", Value(type.Precision));
    if (type.Scale >= 0)
        writer.Put(u"NUMERIC_SCALE", Value(type.Scale));
}

RecordsetPtr FromQuery(Session &session, const Rowset &rowset, const CatalogueQuery &query,
                       const QStringList &restrictions)
{
    QString sql = QString::fromLatin1(query.Select);
    if (!NamesAnObject(rowset, restrictions))
        sql += QString::fromLatin1(query.UserOnly);
    const ExecuteResult result = session.Execute(sql);
    const Held held = ReadWhole(*result.Rows);
    RowsetWriter writer(rowset);
    std::vector<int> targets;
    int type = -1, standard = -1;
    for (size_t column = 0; column < held.Columns.size(); ++column) {
        const QString &name = held.Columns[column].Name;
        targets.push_back(RowsetIndex(rowset, name));
        if (name.compare(u"TYPE_NAME", Qt::CaseInsensitive) == 0)
            type = int(column);
        if (name.compare(u"COLUMN_DEFAULT", Qt::CaseInsensitive) == 0)
            standard = int(column);
    }
    for (qint64 row = 0; row < held.Rows(); ++row) {
        if (type >= 0)
            PutType(writer, query.Family, held.Stores[size_t(type)].At(row));
        for (size_t column = 0; column < targets.size(); ++column)
            if (!held.Stores[column].IsNull(row))
                writer.Put(targets[column], held.Stores[column].At(row));
        if (standard >= 0)
            writer.Put(u"COLUMN_HASDEFAULT", Value(!held.Stores[size_t(standard)].IsNull(row)));
        writer.EndRow(restrictions);
    }
    writer.Sort();
    return Recordset::FromColumns(writer.Columns(), writer.Stores());
}

void Copy(RowsetWriter &writer, const Held &held, const QStringList &restrictions)
{
    for (qint64 row = 0; row < held.Rows(); ++row) {
        for (size_t column = 0; column < held.Columns.size(); ++column)
            if (!held.Stores[column].IsNull(row))
                writer.Put(held.Columns[column].Name, held.Stores[column].At(row));
        writer.EndRow(restrictions);
    }
}

// Keys and indexes come table by table from the driver manager: it refuses to be asked for all at once.
bool GoesByTable(int schema)
{
    return schema == adSchemaIndexes || schema == adSchemaForeignKeys || schema == adSchemaPrimaryKeys;
}

RecordsetPtr FromDriver(Session &session, const Rowset &rowset, const QStringList &restrictions)
{
    RowsetWriter writer(rowset);
    if (!GoesByTable(rowset.Schema)) {
        const std::unique_ptr<ResultSet> rows = session.Catalogue(rowset.Schema, restrictions);
        if (!rows)
            RaiseNotCapable();
        Copy(writer, ReadWhole(*rows), restrictions);
        writer.Sort();
        return Recordset::FromColumns(writer.Columns(), writer.Stores());
    }
    const std::unique_ptr<ResultSet> tableRows = session.Catalogue(adSchemaTables, {});
    if (!tableRows)
        RaiseNotCapable();
    const Held tables = ReadWhole(*tableRows);
    const bool isForeign = rowset.Schema == adSchemaForeignKeys;
    for (qint64 row = 0; row < tables.Rows(); ++row) {
        if (tables.Stores[3].Text(row) != u"TABLE")
            continue;
        QStringList asked(qsizetype(rowset.Restrictions.size()));
        const char *names[] = {isForeign ? "FK_TABLE_CATALOG" : "TABLE_CATALOG",
                               isForeign ? "FK_TABLE_SCHEMA" : "TABLE_SCHEMA",
                               isForeign ? "FK_TABLE_NAME" : "TABLE_NAME"};
        for (size_t part = 0; part < 3; ++part)
            for (size_t number = 0; number < rowset.Restrictions.size(); ++number)
                if (qstrcmp(rowset.Restrictions[number], names[part]) == 0 && !tables.Stores[part].IsNull(row))
                    asked[qsizetype(number)] = tables.Stores[part].Text(row);
        const std::unique_ptr<ResultSet> rows = session.Catalogue(rowset.Schema, asked);
        if (!rows)
            RaiseNotCapable();
        Copy(writer, ReadWhole(*rows), restrictions);
    }
    writer.Sort();
    return Recordset::FromColumns(writer.Columns(), writer.Stores());
}

// States by which drivers say that they have no such function.
bool MeansNoSuchFunction(const Error &error)
{
    return error.SQLState == u"IM001" || error.SQLState == u"HYC00" || error.SQLState == u"S1C00";
}

} // namespace

RecordsetPtr OpenSchemaRowset(Session &session, int schema, const QStringList &restrictions)
{
    const Rowset *rowset = FindRowset(schema);
    if (!rowset)
        RaiseNotCapable();
    if (HasCatalogueQueries(session.Family())) {
        const CatalogueQuery *query = FindCatalogueQuery(session.Family(), rowset->Schema);
        if (!query)
            RaiseNotCapable();
        try {
            return FromQuery(session, *rowset, *query, restrictions);
        } catch (const Error &error) {
            // An older server may not have all that the query asks for; the driver's own way is poorer but there.
            if (error.Number == adErrOperationCancelled || !session.IsAlive())
                throw;
        }
    }
    try {
        return FromDriver(session, *rowset, restrictions);
    } catch (const Error &error) {
        if (MeansNoSuchFunction(error))
            RaiseNotCapable();
        throw;
    }
}

} // namespace ADODB
