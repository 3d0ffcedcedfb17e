#include "ado/TableKey.h"

#include "ado/BaseTable.h"
#include "ado/Guard.h"
#include "ado/family/Family.h"
#include <QSet>

namespace ADODB {

namespace {

constexpr qint64 kMostRows = 1000; // a key has a few columns

struct KeyRows
{
    QSet<QString> tables; // catalogue, schema and name of each
    QStringList columns;
};

KeyRows Read(ResultSet &rows)
{
    std::vector<ColumnStore> stores;
    for (const ColumnInfo &column : rows.Columns())
        stores.emplace_back(column.Type);
    KeyRows key;
    if (stores.size() < 4)
        return key;
    while (rows.Fetch(stores, kMostRows) > 0) {
    }
    for (qint64 row = 0; row < stores[3].Size(); ++row) {
        QStringList table;
        for (size_t part = 0; part < 3; ++part)
            table += stores[part].IsNull(row) ? QString() : stores[part].Text(row);
        key.tables += table.join(QChar(0));
        key.columns += stores[3].Text(row);
    }
    return key;
}

// The family's own word, where the catalogue has none.
KeyRows Asked(Session &session, const QString &query, const QString &table)
{
    const ExecuteResult result = session.Execute(query);
    KeyRows key;
    std::vector<ColumnStore> names;
    names.emplace_back(adVarWChar);
    while (result.Rows && result.Rows->Fetch(names, kMostRows) > 0) {
    }
    for (qint64 row = 0; row < names[0].Size(); ++row)
        key.columns += names[0].Text(row);
    key.tables += table;
    return key;
}

qsizetype IndexOfAnyCase(const QStringList &names, const QString &name)
{
    for (qsizetype i = 0; i < names.size(); ++i)
        if (names[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

} // namespace

void MarkKey(Session &session, const QString &table, const QStringList &names, std::vector<ColumnInfo> &columns)
{
    const Family &family = session.Family();
    const QStringList parts = NameParts(table, family);
    // What stands before the name is the catalogue where there are no schemas.
    const QString before = parts.size() > 1 ? parts[parts.size() - 2] : QString();
    const bool noSchemas = family.Names.DatabasesForSchemas;
    KeyRows key;
    try {
        const bool known = AsErrors([&] {
            const std::unique_ptr<ResultSet> rows = session.Catalogue(
                adSchemaPrimaryKeys, {noSchemas ? before : QString(), noSchemas ? QString() : before, parts.last()});
            if (rows)
                key = Read(*rows);
            if (rows && key.columns.isEmpty() && family.Rows.KeyQuery)
                key = Asked(session, family.Rows.KeyQuery(before, parts.last()), parts.last());
            return rows != nullptr;
        });
        if (!known)
            return; // as the driver told it with the rows
    } catch (const Error &) {
        key = {};
    }
    // A driver that tells keys with the rows does not say whether all of a key is among them.
    for (ColumnInfo &column : columns)
        column.IsKey = false;
    if (key.tables.size() != 1)
        return;
    std::vector<int> marked;
    for (const QString &name : key.columns) {
        qsizetype column = names.indexOf(name); // by its letters first: some servers tell "a" from "A"
        if (column < 0)
            column = IndexOfAnyCase(names, name);
        if (column < 0)
            return;
        marked.push_back(int(column));
    }
    for (const int column : marked)
        columns[size_t(column)].IsKey = true;
}

} // namespace ADODB
