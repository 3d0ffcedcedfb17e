#include "ado/schema/Schema.h"
#include "ado/Recordset.h"
#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/CheckReader.h"
#include "ado/schema/OwnRows.h"
#include "ado/schema/Rowsets.h"
#include "ado/schema/TypeNames.h"
#include "ado/schema/ViewReader.h"

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

// The columns of a query that are not the rowset's own (CatalogueQueries.h); null where the query has none.
struct WorkedOut
{
    const ColumnStore *TypeName = nullptr, *BaseTypeName = nullptr, *Default = nullptr, *CheckedTable = nullptr,
                      *ChecksIn = nullptr, *UsesIn = nullptr, *ViewDatabase = nullptr;

    explicit WorkedOut(const Held &held)
    {
        const struct
        {
            QLatin1String Name;
            const ColumnStore *&Store;
        } all[] = {{QLatin1String("TYPE_NAME"), TypeName},       {QLatin1String("BASE_TYPE_NAME"), BaseTypeName},
                   {QLatin1String("COLUMN_DEFAULT"), Default},   {QLatin1String("CHECKED_TABLE"), CheckedTable},
                   {QLatin1String("CHECKS_IN"), ChecksIn},       {QLatin1String("USES_IN"), UsesIn},
                   {QLatin1String("VIEW_CATALOG"), ViewDatabase}};
        for (size_t column = 0; column < held.Columns.size(); ++column)
            for (const auto &one : all)
                if (held.Columns[column].Name.compare(one.Name, Qt::CaseInsensitive) == 0)
                    one.Store = &held.Stores[column];
    }
};

QString TextAt(const ColumnStore *store, qint64 row)
{
    return !store || store->IsNull(row) ? QString() : store->Text(row);
}

RecordsetPtr FromQuery(Session &session, const Rowset &rowset, const CatalogueQuery &query,
                       const QStringList &restrictions)
{
    QString sql = TextOf(query, session);
    if (!NamesAnObject(rowset, restrictions))
        sql += QString::fromLatin1(query.UserOnly);
    const ExecuteResult result = session.Execute(sql);
    if (!result.Rows)
        RaiseNotCapable();
    const Held held = ReadWhole(*result.Rows);
    const WorkedOut worked(held);
    RowsetWriter writer(rowset);
    std::vector<int> targets;
    for (const ColumnInfo &column : held.Columns)
        targets.push_back(RowsetIndex(rowset, column.Name));
    const int hasDefault = RowsetIndex(rowset, u"COLUMN_HASDEFAULT"), usedColumn = RowsetIndex(rowset, u"COLUMN_NAME");
    for (qint64 row = 0; row < held.Rows(); ++row) {
        const auto put = [&] {
            if (worked.TypeName)
                PutType(
                    writer, session.Family(),
                    (worked.BaseTypeName && !worked.BaseTypeName->IsNull(row) ? worked.BaseTypeName : worked.TypeName)
                        ->At(row));
            for (size_t column = 0; column < targets.size(); ++column)
                if (targets[column] >= 0 && !held.Stores[column].IsNull(row))
                    writer.Put(targets[column], held.Stores[column].At(row));
            if (worked.Default)
                writer.Put(hasDefault, Value(!worked.Default->IsNull(row)));
        };
        if (worked.UsesIn) {
            for (const UsedName &used : ReadUsage(TextAt(worked.ViewDatabase, row), TextAt(worked.UsesIn, row))) {
                if (used.Column.isEmpty() != (usedColumn < 0))
                    continue;
                put();
                writer.Put(u"TABLE_CATALOG", Value(used.Database));
                writer.Put(u"TABLE_NAME", Value(used.Table));
                writer.Put(usedColumn, Value(used.Column));
                writer.EndRow(restrictions);
            }
        } else if (worked.CheckedTable && !worked.CheckedTable->IsNull(row)) {
            for (const Check &check : ReadChecks(TextAt(worked.CheckedTable, row), TextAt(worked.ChecksIn, row))) {
                put();
                writer.Put(u"CONSTRAINT_NAME", Value(check.Name));
                writer.Put(u"CHECK_CLAUSE", Value(check.Clause));
                writer.EndRow(restrictions);
            }
        } else {
            put();
            writer.EndRow(restrictions);
        }
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

RowsetSource SourceOf(DatabaseFamily family, int schema)
{
    const Rowset *rowset = FindRowset(schema);
    if (!rowset)
        return RowsetSource::Refused;
    if (HasOwnRows(family, rowset->Schema))
        return RowsetSource::Native;
    return FindCatalogueQueries(family, rowset->Schema).empty() ? RowsetSource::Refused : RowsetSource::Catalogue;
}

RecordsetPtr OpenSchemaRowset(Session &session, int schema, const QStringList &restrictions)
{
    const Rowset *rowset = FindRowset(schema);
    if (!rowset)
        RaiseNotCapable();
    if (HasOwnRows(session.Family(), rowset->Schema)) {
        RowsetWriter writer(*rowset);
        WriteOwnRows(session, writer, restrictions);
        writer.Sort();
        return Recordset::FromColumns(writer.Columns(), writer.Stores());
    }
    std::optional<Error> refused;
    if (HasCatalogueQueries(session.Family())) {
        const std::vector<const CatalogueQuery *> queries = FindCatalogueQueries(session.Family(), rowset->Schema);
        if (queries.empty())
            RaiseNotCapable();
        for (const CatalogueQuery *query : queries) {
            try {
                return FromQuery(session, *rowset, *query, restrictions);
            } catch (const Error &error) {
                // An older server may not have all that the query asks for; the next query or the driver's own way is
                // poorer but there.
                if (error.Number == adErrOperationCancelled || !session.IsAlive())
                    throw;
                refused = error;
            }
        }
    }
    try {
        return FromDriver(session, *rowset, restrictions);
    } catch (const Error &error) {
        // The server's words tell more than that the driver has no such function, or met the same refusal.
        if (refused && error.Number != adErrOperationCancelled && session.IsAlive())
            throw *refused;
        if (MeansNoSuchFunction(error))
            RaiseNotCapable();
        throw;
    }
}

} // namespace ADODB
