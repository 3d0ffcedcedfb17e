// Edits of the current row. Until Update they live in a buffer; a batch remembers what each row was.
#include "ado/RecordsetBody.h"

#include <algorithm>

namespace ADODB {

void Field::SetValue(const Value &value)
{
    Recordset::Body &body = *m_recordset->m;
    body.NeedWritable();
    Value fitting = Coerce(value, body.infos[size_t(m_index)]);
    if (body.editMode == adEditNone) {
        body.NeedCurrent();
        body.buffer.assign(body.infos.size(), std::nullopt);
        body.editMode = adEditInProgress;
    }
    body.buffer[size_t(m_index)] = std::move(fitting);
}

int Recordset::EditMode() const
{
    return m->editMode;
}

void Recordset::AddNew()
{
    m->NeedWritable();
    Update();
    m->buffer.assign(m->infos.size(), std::nullopt);
    m->editMode = adEditAdd;
}

void Recordset::CancelUpdate()
{
    m->NeedOpen();
    m->editMode = adEditNone;
    m->buffer.clear();
}

void Recordset::Body::Keep(qint64 storeRow, Pending::Kind kind)
{
    const auto found = pending.find(std::uint32_t(storeRow));
    if (found == pending.end())
        pending.emplace(std::uint32_t(storeRow), Pending{kind, RowValues(storeRow), {}});
    else if (found->second.kind != Pending::Inserted)
        found->second.kind = kind; // what it was at first stays
}

void Recordset::Body::RevertRow(std::uint32_t storeRow, const Pending &was)
{
    if (was.kind == Pending::Inserted) {
        gone.insert(storeRow);
        return;
    }
    for (size_t i = 0; i < stores.size(); ++i)
        stores[i].Set(storeRow, was.original[i]);
    gone.erase(storeRow);
}

void Recordset::Update()
{
    m->NeedOpen();
    if (m->editMode == adEditNone)
        return;
    Body &body = *m;
    try {
        if (body.editMode == adEditAdd) {
            const qint64 row = body.AppendRow(body.buffer);
            if (body.WritesBack()) {
                Body::Pending added{Body::Pending::Inserted, {}, {}};
                for (const auto &value : body.buffer)
                    added.touched.push_back(value.has_value());
                body.pending.emplace(std::uint32_t(row), std::move(added));
                if (body.WritesAtOnce()) {
                    try {
                        body.Send({std::uint32_t(row)});
                    } catch (...) {
                        body.pending.erase(std::uint32_t(row));
                        body.RemoveLastRow();
                        throw; // the row stays in the buffer, to be mended or given up
                    }
                }
            }
            body.currentGone = false;
            body.position = body.Count() - 1;
        } else {
            const qint64 row = body.NeedCurrent();
            const std::vector<Value> before = body.RowValues(row);
            const bool wasPending = body.pending.contains(std::uint32_t(row));
            if (body.WritesBack())
                body.Keep(row, Body::Pending::Modified);
            try {
                for (size_t i = 0; i < body.stores.size(); ++i)
                    if (body.buffer[i])
                        body.stores[i].Set(row, *body.buffer[i]);
                if (body.WritesAtOnce())
                    body.Send({std::uint32_t(row)});
            } catch (...) {
                for (size_t i = 0; i < body.stores.size(); ++i)
                    body.stores[i].Set(row, before[i]);
                if (!wasPending)
                    body.pending.erase(std::uint32_t(row));
                throw;
            }
            const auto inserted = body.pending.find(std::uint32_t(row));
            if (inserted != body.pending.end() && inserted->second.kind == Body::Pending::Inserted)
                for (size_t i = 0; i < body.stores.size(); ++i)
                    if (body.buffer[i])
                        inserted->second.touched[i] = true;
        }
    } catch (const std::bad_alloc &) {
        RaiseOutOfMemory();
    }
    body.editMode = adEditNone;
    body.buffer.clear();
}

void Recordset::Delete()
{
    m->NeedWritable();
    if (m->editMode == adEditAdd)
        return CancelUpdate();
    const std::uint32_t row = std::uint32_t(m->NeedCurrent());
    CancelUpdate();
    Body &body = *m;
    try {
        body.MakeOrder();
        const auto former = body.pending.find(row);
        if (former != body.pending.end() && former->second.kind == Body::Pending::Inserted) {
            body.pending.erase(former); // the server has never seen it
        } else if (body.WritesBack()) {
            body.Keep(row, Body::Pending::Deleted);
            if (body.WritesAtOnce()) {
                try {
                    body.Send({row});
                } catch (...) {
                    body.pending.erase(row);
                    throw;
                }
            }
        }
        body.gone.insert(row);
        body.order.erase(body.order.begin() + body.position);
        body.currentGone = true;
    } catch (const std::bad_alloc &) {
        RaiseOutOfMemory();
    }
}

void Recordset::UpdateBatch()
{
    m->NeedWritable();
    Update();
    std::vector<std::uint32_t> rows;
    for (const auto &entry : m->pending)
        rows.push_back(entry.first);
    if (!rows.empty())
        m->Send(rows);
}

void Recordset::CancelBatch()
{
    m->NeedWritable();
    CancelUpdate();
    for (const auto &[row, was] : m->pending)
        m->RevertRow(row, was);
    m->pending.clear();
    const qint64 position = m->position;
    m->ShowRows();
    m->currentGone = false;
    m->position = std::min(position, m->Count());
}

} // namespace ADODB
