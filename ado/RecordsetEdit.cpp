// Edits of the current row. Until Update they live in a buffer; a batch remembers what each row was.
#include "ado/RecordsetBody.h"

#include "ado/BaseTable.h"

#include <algorithm>

namespace ADODB {

void Field::SetValue(const Value &value)
{
    Recordset::Body &body = *m_recordset->m;
    body.NeedWritable();
    if (body.WritesBack() && body.baseColumns[m_index].isEmpty())
        RaiseReadOnly(); // an expression, whatever its alias says
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

void Recordset::Body::RevertRow(std::uint32_t storeRow)
{
    if (pending.KindOf(storeRow) == PendingRows::Inserted) {
        SetGone(storeRow, true);
        return;
    }
    for (size_t i = 0; i < stores.size(); ++i) {
        qint64 place = 0;
        if (const ColumnStore *const was = pending.Original(storeRow, i, place))
            stores[i].Set(storeRow, was->At(place));
    }
    SetGone(storeRow, false);
}

void Recordset::Update()
{
    m->NeedOpen();
    if (m->editMode == adEditNone)
        return;
    Body &body = *m;
    try {
        std::vector<bool> touched;
        for (const auto &value : body.buffer)
            touched.push_back(value.has_value());
        if (body.editMode == adEditAdd) {
            const std::uint32_t row = std::uint32_t(body.AppendRow(body.buffer));
            try {
                if (body.WritesBack())
                    body.pending.Insert(row, touched);
                if (body.WritesAtOnce())
                    body.Send({row});
            } catch (...) {
                body.pending.Erase(row);
                body.refusals.clear();
                body.RemoveLastRow();
                throw; // the row stays in the buffer, to be mended or given up
            }
            body.currentGone = false;
            body.position = body.Count() - 1;
        } else {
            const std::uint32_t row = std::uint32_t(body.NeedCurrent());
            const std::vector<Value> before = body.RowValues(row);
            const bool wasPending = body.pending.KindOf(row) != PendingRows::None;
            try {
                if (body.WritesBack())
                    body.pending.Modify(row, touched, body.stores);
                for (size_t i = 0; i < body.stores.size(); ++i)
                    if (body.buffer[i])
                        body.stores[i].Set(row, *body.buffer[i]);
                if (body.WritesAtOnce())
                    body.Send({row});
            } catch (...) {
                for (size_t i = 0; i < body.stores.size(); ++i)
                    body.stores[i].Set(row, before[i]);
                if (!wasPending)
                    body.pending.Erase(row);
                if (body.WritesAtOnce())
                    body.refusals.clear();
                throw;
            }
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
        if (body.pending.KindOf(row) == PendingRows::Inserted) {
            body.pending.Erase(row); // the server has never seen it
            body.refusals.erase(row);
        } else if (body.WritesBack()) {
            body.pending.Delete(row, body.stores);
            if (body.WritesAtOnce()) {
                try {
                    body.Send({row});
                } catch (...) {
                    body.pending.Erase(row);
                    body.refusals.clear();
                    throw;
                }
            }
        }
        body.SetGone(row, true);
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
    const std::vector<std::uint32_t> rows = m->pending.Rows();
    if (!rows.empty())
        m->Send(rows);
}

void Recordset::CancelBatch()
{
    m->NeedWritable();
    CancelUpdate();
    for (const std::uint32_t row : m->pending.Rows())
        m->RevertRow(row);
    m->pending.Clear();
    m->refusals.clear();
    const qint64 position = m->position;
    m->ShowRows();
    m->currentGone = false;
    m->position = std::min(position, m->Count());
}

int Recordset::UpdateResync() const
{
    return m->updateResync;
}

void Recordset::SetUpdateResync(int what)
{
    m->updateResync = what;
}

int Recordset::Body::StatusOf(std::uint32_t storeRow) const
{
    int status = adRecUnmodified;
    switch (pending.KindOf(storeRow)) {
    case PendingRows::None:
        return status;
    case PendingRows::Inserted:
        status = adRecNew;
        break;
    case PendingRows::Modified:
        status = adRecModified;
        break;
    case PendingRows::Deleted:
        status = adRecDeleted;
        break;
    }
    const auto refused = refusals.find(storeRow);
    if (refused == refusals.end())
        return status;
    const Error &why = refused->second;
    if (why.Number == adErrRowConflict)
        return status | adRecConcurrencyViolation;
    if (why.Number == adErrOperationCancelled)
        return status | adRecCanceled;
    if (why.SQLState == u"21000")
        return status | adRecMultipleChanges;
    if (why.SQLState.startsWith(u"23"))
        return status | adRecIntegrityViolation;
    return status | (why.SQLState == u"42501" ? adRecPermissionDenied : adRecInvalid);
}

int Recordset::Status() const
{
    if (m->editMode == adEditAdd)
        return adRecNew;
    return m->StatusOf(std::uint32_t(m->NeedCurrent()));
}

qint64 Recordset::PendingCount() const
{
    return m->pending.Count();
}

void Recordset::SetProgress(std::function<void(qint64)> progress)
{
    m->progress = std::move(progress);
}

bool Recordset::CanWrite(int column) const
{
    (void)Column(column);
    if (m->lockType == adLockReadOnly || !m->connection)
        return m->lockType != adLockReadOnly;
    if (!m->hasBase) {
        try {
            BaseTableOf(m->source, m->infos, m->connection->Property(QStringLiteral("Identifier Quote")).toString(),
                        m->connection->Family());
            m->hasBase = true;
        } catch (const Error &) {
            m->hasBase = false;
        }
    }
    return *m->hasBase && !m->baseColumns[column].isEmpty();
}

std::vector<RefusedRow> Recordset::RefusedRows() const
{
    std::vector<RefusedRow> refused;
    for (const auto &[storeRow, why] : m->refusals) {
        RefusedRow row;
        row.Row = storeRow;
        if (!m->allVisible) {
            const auto found = std::lower_bound(m->order.begin(), m->order.end(), storeRow);
            row.Row = found != m->order.end() && *found == storeRow ? found - m->order.begin() : -1;
        }
        row.Status = m->StatusOf(storeRow);
        row.Why = why;
        QStringList key;
        for (size_t i = 0; i < m->infos.size(); ++i) {
            qint64 place = storeRow;
            const ColumnStore *const was = m->pending.Original(storeRow, i, place);
            if (m->infos[i].IsKey)
                key += m->infos[i].Name + QStringLiteral(" = ") +
                       (was ? was->Text(place) : m->stores[i].Text(qint64(storeRow)));
        }
        row.Key = key.join(QStringLiteral(", "));
        refused.push_back(std::move(row));
    }
    return refused;
}

} // namespace ADODB
