#include "ado/RecordsetBody.h"

#include <numeric>

namespace ADODB {

void RaiseClosed()
{
    throw Error(Fault::ObjectClosed);
}

void RaiseOpen()
{
    throw Error(Fault::ObjectOpen);
}

void RaiseNoCurrent()
{
    throw Error(Fault::NoCurrentRecord);
}

void RaiseNotFound()
{
    throw Error(Fault::ItemNotFound);
}

void RaiseReadOnly()
{
    throw Error(Fault::ReadOnly);
}

void RaiseOutOfMemory()
{
    throw Error(Fault::ResultTooLarge);
}

void Recordset::Body::NeedOpen() const
{
    if (state == adStateClosed)
        RaiseClosed();
}

void Recordset::Body::NeedWritable() const
{
    NeedOpen();
    if (lockType == adLockReadOnly)
        RaiseReadOnly();
}

qint64 Recordset::Body::NeedCurrent() const
{
    NeedOpen();
    if (!HasCurrent())
        RaiseNoCurrent();
    return StoreRow(position);
}

int Recordset::Body::ColumnOf(const QString &name) const
{
    for (size_t i = 0; i < infos.size(); ++i)
        if (CompareText(infos[i].Name, name) == 0)
            return int(i);
    return -1;
}

void Recordset::Body::MakeFields(Recordset *owner)
{
    items.clear();
    for (size_t i = 0; i < infos.size(); ++i) {
        auto field = std::make_unique<Field>();
        field->m_recordset = owner;
        field->m_index = int(i);
        items.push_back(std::move(field));
    }
}

void Recordset::Body::MakeOrder()
{
    if (!allVisible)
        return;
    std::vector<std::uint32_t> rows(static_cast<size_t>(storeRows));
    std::iota(rows.begin(), rows.end(), 0);
    order.swap(rows);
    allVisible = false;
}

void Recordset::Body::Clear()
{
    state = adStateClosed;
    lockType = adLockReadOnly;
    items.clear();
    infos.clear();
    baseColumns.clear();
    keyAsked = false;
    stores.clear();
    madeUp = isPart = false;
    std::vector<std::uint32_t>().swap(part);
    storeRows = 0;
    rowIds.reset();
    std::vector<bool>().swap(gone);
    allVisible = true;
    std::vector<std::uint32_t>().swap(order);
    position = -1;
    currentGone = false;
    filterText.clear();
    filter.reset();
    editMode = adEditNone;
    buffer.clear();
    pending.Clear();
    refusals.clear();
    unknown.Clear();
    unknownMasks.clear();
    connection.reset();
    further.clear();
    hasBase.reset();
}

void Recordset::Body::SetGone(std::uint32_t row, bool isGone)
{
    if (isGone && row >= gone.size())
        gone.resize(row + 1, false);
    if (row < gone.size())
        gone[row] = isGone;
}

Value Recordset::Body::Current(int column) const
{
    NeedOpen();
    if (editMode != adEditNone && buffer[size_t(column)])
        return *buffer[size_t(column)];
    if (editMode == adEditAdd)
        return {};
    return stores[size_t(column)].At(NeedCurrent());
}

std::vector<Value> Recordset::Body::RowValues(qint64 storeRow) const
{
    std::vector<Value> values;
    for (const ColumnStore &store : stores)
        values.push_back(store.At(storeRow));
    return values;
}

qint64 Recordset::Body::AppendRow(const std::vector<std::optional<Value>> &values)
{
    size_t done = 0;
    try {
        for (; done < stores.size(); ++done)
            stores[done].Append(values[done].value_or(Value()));
        if (rowIds)
            rowIds->AppendNull();
        if (!allVisible)
            order.push_back(std::uint32_t(storeRows));
    } catch (...) {
        for (size_t i = 0; i < done; ++i)
            stores[i].Remove(storeRows);
        if (rowIds && rowIds->Size() > storeRows)
            rowIds->Remove(storeRows);
        throw;
    }
    return storeRows++;
}

void Recordset::Body::RemoveLastRow()
{
    for (ColumnStore &store : stores)
        store.Remove(storeRows - 1);
    if (rowIds)
        rowIds->Remove(storeRows - 1);
    --storeRows;
    if (!allVisible && !order.empty() && order.back() == storeRows)
        order.pop_back();
}

} // namespace ADODB
