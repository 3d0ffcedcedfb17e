#include "ado/schema/Schema.h"
#include "ado/Recordset.h"
#include "ado/family/Family.h"
#include "ado/rowset/Rowsets.h"
#include "ado/schema/CatalogueQueries.h"
#include "ado/schema/CheckReader.h"
#include "ado/schema/KeysInText.h"
#include "ado/schema/OwnRows.h"
#include "ado/schema/QueryRows.h"
#include "ado/schema/TypeNames.h"
#include "ado/schema/ViewReader.h"
#include <QHash>

namespace ADODB {

namespace {

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

// The declared type of each row as a data type with its lengths. The names of types are few.
void SetTypes(QueryRows &rows, const Rowset &rowset, const Family &family, const HeldResult &held,
              const ColumnStore &names)
{
    const ColumnStore *bases = held.Find(QLatin1String("BASE_TYPE_NAME"));
    const int dataType = RowsetIndex(rowset, u"DATA_TYPE");
    const struct
    {
        const char *Column;
        qint64 DeclaredType::*Member;
    } lengths[] = {{"CHARACTER_MAXIMUM_LENGTH", &DeclaredType::Length},
                   {"NUMERIC_PRECISION", &DeclaredType::Precision},
                   {"NUMERIC_SCALE", &DeclaredType::Scale}};
    QHash<QString, DeclaredType> known;
    std::vector<DeclaredType> types;
    types.reserve(size_t(held.Rows()));
    for (qint64 row = 0; row < held.Rows(); ++row) {
        const QString name = (bases && !bases->IsNull(row) ? *bases : names).Text(row);
        auto found = known.constFind(name);
        if (found == known.constEnd())
            found = known.insert(name, ReadTypeName(family, name));
        types.push_back(*found);
    }
    ColumnStore numbers(rowset.Columns[size_t(dataType)].Type);
    for (const DeclaredType &type : types)
        numbers.AppendInt64(type.Type);
    rows.SetSource(dataType, std::move(numbers));
    for (const auto &length : lengths) { // a length that the catalogue gives itself is better
        const int column = RowsetIndex(rowset, QString::fromLatin1(length.Column));
        if (column < 0)
            continue;
        const ColumnStore *given = held.Find(QLatin1String(length.Column));
        ColumnStore store(rowset.Columns[size_t(column)].Type);
        for (qint64 row = 0; row < held.Rows(); ++row) {
            const qint64 declared = types[size_t(row)].*length.Member;
            if (given && !given->IsNull(row))
                store.Append(AsRowsetType(given->At(row), store.Type()));
            else if (declared >= 0)
                store.AppendInt64(declared);
            else
                store.AppendNull();
        }
        rows.SetSource(column, std::move(store));
    }
}

QString TextAt(const ColumnStore *store, qint64 row)
{
    return !store || store->IsNull(row) ? QString() : store->Text(row);
}

// A row for each table or column that the row's view uses.
void AddUses(QueryRows &rows, const Rowset &rowset, const HeldResult &held, const ColumnStore &texts)
{
    const ColumnStore *databases = held.Find(QLatin1String("VIEW_CATALOG"));
    const int catalogue = RowsetIndex(rowset, u"TABLE_CATALOG"), table = RowsetIndex(rowset, u"TABLE_NAME"),
              column = RowsetIndex(rowset, u"COLUMN_NAME");
    for (qint64 row = 0; row < held.Rows(); ++row)
        for (const UsedName &used : ReadUsage(TextAt(databases, row), TextAt(&texts, row)))
            if (used.Column.isEmpty() == (column < 0))
                rows.Add(row,
                         {{catalogue, Value(used.Database)}, {table, Value(used.Table)}, {column, Value(used.Column)}});
}

void AddRow(QueryRows &rows, qint64 row, const KeysInText &keys)
{
    QueryRows::Cells own = keys.CellsOf(row);
    if (own.empty())
        rows.Add(row); // as it came
    else
        rows.Add(row, std::move(own));
}

// A row for each check of the row's table, where it has one; else the row itself.
void AddChecks(QueryRows &rows, const Rowset &rowset, const HeldResult &held, const ColumnStore &tables,
               const KeysInText &keys)
{
    const ColumnStore *texts = held.Find(QLatin1String("CHECKS_IN"));
    const int name = RowsetIndex(rowset, u"CONSTRAINT_NAME"), clause = RowsetIndex(rowset, u"CHECK_CLAUSE");
    for (qint64 row = 0; row < held.Rows(); ++row) {
        if (tables.IsNull(row))
            AddRow(rows, row, keys);
        else
            for (const Check &check : ReadChecks(TextAt(&tables, row), TextAt(texts, row)))
                rows.Add(row, {{name, Value(check.Name)}, {clause, Value(check.Clause)}});
    }
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
    HeldResult held = ReadWhole(*result.Rows);
    QueryRows rows(rowset, held);
    if (const ColumnStore *types = held.Find(QLatin1String("TYPE_NAME"));
        types && RowsetIndex(rowset, u"DATA_TYPE") >= 0)
        SetTypes(rows, rowset, session.Family(), held, *types);
    if (const ColumnStore *defaults = held.Find(QLatin1String("COLUMN_DEFAULT"))) {
        ColumnStore has(adBoolean);
        for (qint64 row = 0; row < held.Rows(); ++row)
            has.AppendBool(!defaults->IsNull(row));
        rows.SetSource(RowsetIndex(rowset, u"COLUMN_HASDEFAULT"), std::move(has));
    }
    if (const ColumnStore *views = held.Find(QLatin1String("USES_IN"))) {
        AddUses(rows, rowset, held, *views);
    } else if (const ColumnStore *tables = held.Find(QLatin1String("CHECKED_TABLE"))) {
        AddChecks(rows, rowset, held, *tables, KeysInText(session, rowset, held));
    } else {
        const KeysInText keys(session, rowset, held);
        for (qint64 row = 0; row < held.Rows(); ++row)
            AddRow(rows, row, keys);
    }
    rows.Restrict(restrictions);
    rows.Sort();
    return Recordset::FromColumns(ColumnsOf(rowset), rows.TakeStores());
}

void Copy(RowsetWriter &writer, const HeldResult &held, const QStringList &restrictions)
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
    const HeldResult tables = ReadWhole(*tableRows);
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

RowsetSource SourceOf(const Family &family, int schema)
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
