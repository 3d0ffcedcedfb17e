#include "ado/TableKey.h"

#include "ado/Guard.h"
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

// The one column that shows this column of the table; -1 for none or several.
int Showing(const std::vector<ColumnInfo> &columns, const QString &name)
{
    int found = -1;
    for (size_t i = 0; i < columns.size(); ++i) {
        const ColumnInfo &column = columns[i];
        if ((column.BaseColumn.isEmpty() ? column.Name : column.BaseColumn).compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (found >= 0)
            return -1;
        found = int(i);
    }
    return found;
}

} // namespace

QStringList NameParts(const QString &written, DatabaseFamily family)
{
    QStringList parts;
    for (qsizetype at = 0; at <= written.size(); ++at) {
        const QChar open = at < written.size() ? written[at] : QChar();
        const QChar close = open == u'[' ? QChar(u']') : open == u'"' || open == u'`' ? open : QChar();
        QString part;
        if (close.isNull()) {
            while (at < written.size() && written[at] != u'.')
                part += written[at++];
            // An unquoted name means the one that the server has folded it to.
            if (family == DatabaseFamily::PostgreSQL)
                part = part.toLower();
            else if (family == DatabaseFamily::Oracle)
                part = part.toUpper();
        } else {
            for (++at; at < written.size(); ++at) {
                if (written[at] != close)
                    part += written[at];
                else if (at + 1 < written.size() && written[at + 1] == close)
                    part += written[++at];
                else
                    break;
            }
            ++at;
        }
        parts += part;
    }
    return parts;
}

void MarkKey(Session &session, const QString &table, std::vector<ColumnInfo> &columns)
{
    const QStringList parts = NameParts(table, session.Family());
    // What stands before the name is the catalogue where there are no schemas.
    const QString before = parts.size() > 1 ? parts[parts.size() - 2] : QString();
    const bool noSchemas = session.Family() == DatabaseFamily::MySQL || session.Family() == DatabaseFamily::SQLite;
    KeyRows key;
    try {
        const bool known = AsErrors([&] {
            const std::unique_ptr<ResultSet> rows = session.Catalogue(
                adSchemaPrimaryKeys, {noSchemas ? before : QString(), noSchemas ? QString() : before, parts.last()});
            if (rows)
                key = Read(*rows);
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
        const int column = Showing(columns, name);
        if (column < 0)
            return;
        marked.push_back(column);
    }
    for (const int column : marked)
        columns[size_t(column)].IsKey = true;
}

} // namespace ADODB
