#include "ado/rowset/Rowsets.h"
#include <algorithm>
#include <utility>

namespace ADODB {

Value AsRowsetType(Value value, DataTypeEnum type)
{
    if (value.IsNull())
        return value;
    switch (type) {
    case adVarWChar:
    case adGUID:
        return value.As<QString>() ? value : Value(value.ToText());
    case adBoolean:
        if (const QString *text = value.As<QString>())
            return Value(*text == u"1" || *text == u"t" || text->compare(u"YES", Qt::CaseInsensitive) == 0);
        return Value(value.ToBool());
    case adUnsignedBigInt:
        return value.As<quint64>() ? value : Value(quint64(qMax<qint64>(0, value.ToInt64())));
    case adDate:
        return value;
    case adUnsignedInt: // a length past what the standard's four bytes hold is "no known limit"
        return value.ToInt64() > 0xffffffffLL || value.ToInt64() < 0 ? Value() : Value(value.ToInt64());
    default:
        return Value(value.ToInt64());
    }
}

namespace {

int Compare(const Value &left, const Value &right)
{
    if (left.IsNull() || right.IsNull())
        return int(right.IsNull()) - int(left.IsNull()) < 0 ? -1 : int(left.IsNull()) == int(right.IsNull()) ? 0 : 1;
    if (const QString *a = left.As<QString>())
        if (const QString *b = right.As<QString>())
            return a->compare(*b);
    const qint64 a = left.ToInt64(), b = right.ToInt64();
    return a < b ? -1 : a > b ? 1 : 0;
}

} // namespace

RowsetWriter::RowsetWriter(const Rowset &rowset) : m_rowset(rowset), m_row(rowset.Columns.size()) {}

void RowsetWriter::Put(int column, Value value)
{
    if (column >= 0)
        m_row[size_t(column)] = AsRowsetType(std::move(value), m_rowset.Columns[size_t(column)].Type);
}

void RowsetWriter::Put(QStringView column, Value value)
{
    Put(RowsetIndex(m_rowset, column), std::move(value));
}

void RowsetWriter::EndRow(const QStringList &restrictions)
{
    std::vector<Value> row(m_rowset.Columns.size());
    std::swap(row, m_row);
    for (qsizetype number = 0; number < restrictions.size() && number < qsizetype(m_rowset.Restrictions.size());
         ++number) {
        if (restrictions[number].isNull())
            continue;
        const int column = RowsetIndex(m_rowset, QString::fromLatin1(m_rowset.Restrictions[size_t(number)]));
        if (row[size_t(column)].IsNull() || row[size_t(column)].ToText() != restrictions[number])
            return;
    }
    m_rows.push_back(std::move(row));
}

void RowsetWriter::Sort()
{
    std::vector<size_t> keys;
    for (const char *name : m_rowset.Order)
        keys.push_back(size_t(RowsetIndex(m_rowset, QString::fromLatin1(name))));
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [&](const std::vector<Value> &left, const std::vector<Value> &right) {
                         for (const size_t column : keys)
                             if (const int order = Compare(left[column], right[column]))
                                 return order < 0;
                         return false;
                     });
}

std::vector<ColumnInfo> ColumnsOf(const Rowset &rowset)
{
    std::vector<ColumnInfo> columns;
    for (const RowsetColumn &column : rowset.Columns) {
        ColumnInfo info;
        info.Name = QString::fromLatin1(column.Name);
        info.Type = column.Type;
        info.DefinedSize = column.Type == adVarWChar ? -1 : 0;
        info.Attributes = adFldIsNullable;
        columns.push_back(info);
    }
    return columns;
}

std::vector<ColumnStore> RowsetWriter::Stores() const
{
    std::vector<ColumnStore> stores;
    for (size_t column = 0; column < m_rowset.Columns.size(); ++column) {
        ColumnStore store(m_rowset.Columns[column].Type);
        store.Reserve(qint64(m_rows.size()));
        for (const std::vector<Value> &row : m_rows)
            store.Append(row[column]);
        stores.push_back(std::move(store));
    }
    return stores;
}

} // namespace ADODB
