#include "ado/schema/QueryRows.h"
#include <algorithm>
#include <numeric>

namespace ADODB {

const ColumnStore *HeldResult::Find(QLatin1String name) const
{
    for (size_t column = 0; column < Columns.size(); ++column)
        if (Columns[column].Name.compare(name, Qt::CaseInsensitive) == 0)
            return &Stores[column];
    return nullptr;
}

HeldResult ReadWhole(ResultSet &rows)
{
    HeldResult held;
    for (const ColumnInfo &column : rows.Columns())
        held.Stores.emplace_back(column.Type);
    while (rows.Fetch(held.Stores, 4096) > 0) {
    }
    held.Columns = rows.Columns();
    return held;
}

// What a cell sorts by: nulls first, then numbers and texts by their bytes.
struct QueryRows::Key
{
    QByteArrayView Text;
    QByteArray Owned; // behind Text where no store holds it
    qint64 Number = 0;
    enum Kind : char
    {
        Null,
        Whole,
        Utf8
    } Is = Null;

    int Compare(const Key &other) const
    {
        if (Is != other.Is)
            return Is < other.Is ? -1 : 1;
        if (Is == Utf8)
            return Text.compare(other.Text);
        return Number < other.Number ? -1 : Number > other.Number ? 1 : 0;
    }
};

QueryRows::QueryRows(const Rowset &rowset, HeldResult &result)
    : m_rowset(rowset), m_result(result), m_sources(rowset.Columns.size(), nullptr)
{
    for (size_t column = 0; column < result.Columns.size(); ++column)
        if (const int target = RowsetIndex(rowset, result.Columns[column].Name); target >= 0)
            m_sources[size_t(target)] = &result.Stores[column];
    m_rows.reserve(size_t(result.Rows()));
}

void QueryRows::SetSource(int column, ColumnStore store)
{
    if (column < 0)
        return;
    m_made.push_back(std::make_unique<ColumnStore>(std::move(store)));
    m_sources[size_t(column)] = m_made.back().get();
}

void QueryRows::Add(qint64 sourceRow)
{
    m_rows.push_back({sourceRow});
}

void QueryRows::Add(qint64 sourceRow, Cells own)
{
    for (auto &[column, value] : own)
        if (column >= 0)
            value = AsRowsetType(std::move(value), m_rowset.Columns[size_t(column)].Type);
    m_own.push_back(std::move(own));
    m_rows.push_back({sourceRow, qint64(m_own.size()) - 1});
}

const Value *QueryRows::OwnCell(const Row &row, int column) const
{
    if (row.Own < 0)
        return nullptr;
    const Cells &cells = m_own[size_t(row.Own)];
    for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell)
        if (cell->first == column)
            return &cell->second;
    return nullptr;
}

Value QueryRows::At(const Row &row, int column) const
{
    if (const Value *own = OwnCell(row, column))
        return *own;
    const ColumnStore *source = m_sources[size_t(column)];
    return source ? AsRowsetType(source->At(row.Source), m_rowset.Columns[size_t(column)].Type) : Value();
}

QueryRows::Key QueryRows::KeyOf(const Row &row, int column) const
{
    Key key;
    const bool isText = m_rowset.Columns[size_t(column)].Type == adVarWChar;
    const ColumnStore *source = m_sources[size_t(column)];
    if (isText && source && !source->IsNull(row.Source) && !OwnCell(row, column))
        key.Text = source->Utf8(row.Source);
    if (!key.Text.isNull()) {
        key.Is = Key::Utf8;
        return key;
    }
    const Value value = At(row, column);
    if (value.IsNull())
        return key;
    key.Is = isText ? Key::Utf8 : Key::Whole;
    if (isText)
        key.Text = key.Owned = value.ToText().toUtf8();
    else
        key.Number = value.ToInt64();
    return key;
}

void QueryRows::Restrict(const QStringList &restrictions)
{
    for (qsizetype number = 0; number < restrictions.size() && number < qsizetype(m_rowset.Restrictions.size());
         ++number) {
        if (restrictions[number].isNull())
            continue;
        const int column = RowsetIndex(m_rowset, QString::fromLatin1(m_rowset.Restrictions[size_t(number)]));
        m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(),
                                    [&](const Row &row) {
                                        const Value value = At(row, column);
                                        return value.IsNull() || value.ToText() != restrictions[number];
                                    }),
                     m_rows.end());
    }
}

// The rowset's columns of order that say anything at all.
std::vector<int> QueryRows::Order() const
{
    std::vector<int> columns;
    for (const char *name : m_rowset.Order) {
        const int column = RowsetIndex(m_rowset, QString::fromLatin1(name));
        if (m_sources[size_t(column)] || !m_own.empty())
            columns.push_back(column);
    }
    return columns;
}

// Many a catalogue gives its rows in order; then nothing is gathered.
bool QueryRows::IsSorted(const std::vector<int> &order) const
{
    std::vector<Key> before(order.size());
    for (size_t row = 0; row < m_rows.size(); ++row) {
        int way = 0;
        for (size_t i = 0; i < order.size(); ++i) {
            Key key = KeyOf(m_rows[row], order[i]);
            if (row > 0 && way == 0)
                way = before[i].Compare(key);
            before[i] = std::move(key);
        }
        if (way > 0)
            return false;
    }
    return true;
}

void QueryRows::Sort()
{
    const std::vector<int> columns = Order();
    if (IsSorted(columns))
        return;
    std::vector<std::vector<Key>> keys; // by the order's column, then by row
    for (const int column : columns) {
        std::vector<Key> ofRows;
        ofRows.reserve(m_rows.size());
        for (const Row &row : m_rows)
            ofRows.push_back(KeyOf(row, column));
        keys.push_back(std::move(ofRows));
    }
    std::vector<size_t> order(m_rows.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](size_t left, size_t right) {
        for (const std::vector<Key> &ofRows : keys)
            if (const int way = ofRows[left].Compare(ofRows[right]))
                return way < 0;
        return false;
    });
    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    for (const size_t row : order)
        sorted.push_back(m_rows[row]);
    m_rows = std::move(sorted);
}

bool QueryRows::StandAsTheyCame() const
{
    if (!m_own.empty() || qint64(m_rows.size()) != m_result.Rows())
        return false;
    for (size_t row = 0; row < m_rows.size(); ++row)
        if (m_rows[row].Source != qint64(row))
            return false;
    return true;
}

ColumnStore QueryRows::StoreOf(int column) const
{
    const DataTypeEnum type = m_rowset.Columns[size_t(column)].Type;
    const ColumnStore *source = m_sources[size_t(column)];
    ColumnStore store(type);
    store.Reserve(qint64(m_rows.size()));
    if (!source && m_own.empty()) {
        store.AppendNulls(qint64(m_rows.size()));
        return store;
    }
    for (const Row &row : m_rows) {
        const Value *own = OwnCell(row, column);
        if (own) {
            store.Append(*own);
        } else if (!source || source->IsNull(row.Source)) {
            store.AppendNull();
        } else if (const QByteArrayView text = type == adVarWChar ? source->Utf8(row.Source) : QByteArrayView();
                   !text.isNull()) {
            store.AppendText(text.data(), text.size());
        } else {
            store.Append(AsRowsetType(source->At(row.Source), type));
        }
    }
    return store;
}

// The store itself where it is what StoreOf would make of it: null for none such.
ColumnStore *QueryRows::ReadyStore(int column)
{
    const DataTypeEnum type = m_rowset.Columns[size_t(column)].Type;
    const ColumnStore *source = m_sources[size_t(column)];
    if (!source || source->Type() != type)
        return nullptr;
    for (const std::unique_ptr<ColumnStore> &made : m_made)
        if (made.get() == source)
            return made.get();
    if (type != adVarWChar)
        return nullptr;
    for (qint64 row = 0; row < source->Size(); ++row)
        if (!source->IsNull(row) && source->Utf8(row).isNull()) // a value of another type among the texts
            return nullptr;
    for (ColumnStore &held : m_result.Stores)
        if (&held == source)
            return &held;
    return nullptr;
}

std::vector<ColumnStore> QueryRows::TakeStores()
{
    const bool asTheyCame = StandAsTheyCame();
    std::vector<ColumnStore> stores;
    for (int column = 0; column < int(m_rowset.Columns.size()); ++column) {
        ColumnStore *ready = asTheyCame ? ReadyStore(column) : nullptr;
        stores.push_back(ready ? std::move(*ready) : StoreOf(column));
    }
    return stores;
}

} // namespace ADODB
