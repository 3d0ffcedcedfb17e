#include "ado/BaseTable.h"

#include "ado/Error.h"
#include "ado/SelectText.h"
#include "ado/family/Family.h"
#include "lang/Text.h"

namespace ADODB {

namespace {

[[noreturn]] void NoBaseTable()
{
    throw Error(Fault::NoBaseTable);
}

// What the statement writes for each column; a star stands for as many as the other items leave.
QStringList WrittenColumns(const SelectText &select, const std::vector<ColumnInfo> &columns)
{
    QStringList names;
    const qsizetype spare = qsizetype(columns.size()) - qsizetype(select.Items.size()) + 1;
    int stars = 0;
    for (const SelectText::Item &item : select.Items) {
        if (!item.Star) {
            names += item.Column;
            continue;
        }
        ++stars;
        for (qsizetype i = 0; i < spare && names.size() < qsizetype(columns.size()); ++i)
            names += columns[size_t(names.size())].Name;
    }
    if (stars > 1 || names.size() != qsizetype(columns.size()))
        names = QStringList(qsizetype(columns.size()), QString());
    return names;
}

} // namespace

QString QuotedName(const QString &name, const QString &quote)
{
    if (quote.isEmpty())
        return name;
    return quote + lang::Replace(name, quote, quote + quote) + quote;
}

QStringList NameParts(const QString &written, const Family &family)
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
            part = family.Folded(part);
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

QString BaseTableOf(const QString &source, const std::vector<ColumnInfo> &columns, const QString &quote,
                    const Family &family)
{
    const ColumnInfo *told = nullptr;
    for (const ColumnInfo &column : columns) {
        if (column.BaseTable.isEmpty())
            continue;
        if (told && (told->BaseTable != column.BaseTable || told->BaseSchema != column.BaseSchema))
            NoBaseTable();
        told = &column;
    }
    const SelectText select = ReadSelect(source, family);
    if (!select.Plain)
        NoBaseTable();
    if (!told)
        return select.Table;
    const bool same = family.SameName(NameParts(select.Table, family).last(), told->BaseTable);
    if (!same && family.Rows.TellBehindViews)
        NoBaseTable();
    const QString name = QuotedName(told->BaseTable, quote);
    if (!told->BaseSchema.isEmpty())
        return QuotedName(told->BaseSchema, quote) + u'.' + name;
    return same ? select.Table : name;
}

QStringList BaseColumnsOf(const QString &source, const std::vector<ColumnInfo> &columns, const Family &family)
{
    bool told = false;
    for (const ColumnInfo &column : columns)
        told = told || !column.BaseTable.isEmpty();
    const QStringList written = WrittenColumns(ReadSelect(source, family), columns);
    QStringList names;
    for (size_t i = 0; i < columns.size(); ++i) {
        QString name;
        if (!told || !columns[i].BaseTable.isEmpty())
            name = columns[i].BaseColumn.isEmpty() ? written[qsizetype(i)] : columns[i].BaseColumn;
        for (const QString &other : names)
            if (!name.isEmpty() && family.SameName(name, other))
                name.clear();
        names += name;
    }
    return names;
}

} // namespace ADODB
