// Edits of a DataGrid: each goes into the recordset at once, or is refused and told.

#include "ado/Rounding.h"
#include "controls/DataGridBody.h"
#include "controls/Dialogs.h"
#include "lang/Text.h"
#include <QPointer>
#include <algorithm>

bool DataGrid::Body::IsNull(qint64 r, int c) const
{
    try {
        return source->CellIsNull(r, c);
    } catch (const ADODB::Error &) {
        return false;
    }
}

QString DataGrid::Body::Start(qint64 r, int c, qint64 most) const
{
    try {
        return ADODB::CellStart(*source, r, c, most);
    } catch (const ADODB::Error &) { // the row has just gone
        return {};
    }
}

bool DataGrid::Body::IsText(int c) const
{
    switch (source->Column(c).Type) {
    case ADODB::adEmpty:
    case ADODB::adVariant:
    case ADODB::adBSTR:
    case ADODB::adChar:
    case ADODB::adWChar:
    case ADODB::adVarChar:
    case ADODB::adVarWChar:
    case ADODB::adLongVarWChar:
        return true;
    default:
        return false;
    }
}

// A field that has no empty value takes an empty entry as null.
ADODB::Value DataGrid::Body::Entered(int c, const QString &text) const
{
    if (!IsText(c) && lang::Trim(text).isEmpty())
        return {};
    return text;
}

void DataGrid::Body::Store(qint64 r, int c, const ADODB::Value &value)
{
    if (!readOnly.isEmpty())
        throw ADODB::Error(ADODB::adErrFeatureNotAvailable, readOnly);
    if (!source->CanWrite(c))
        throw ADODB::Error(ADODB::Fault::ReadOnly);
    const ADODB::ColumnInfo &info = source->Column(c);
    const bool mayBeNull = info.Attributes == ADODB::adFldUnspecified || (info.Attributes & ADODB::adFldIsNullable);
    if (value.IsNull() && !mayBeNull)
        throw ADODB::Error(ADODB::adErrDataConversion, tr("The field may not be null."));
    if (IsRecord(r))
        source->SetAbsolutePosition(r + 1);
    else
        source->AddNew();
    try {
        source->Fields()[c].SetValue(value);
        if (const ADODB::ConnectionPtr connection = source->ActiveConnection())
            ADODB::RaiseIfRounded(source->Fields()[c].GetValue(), info, connection->Family());
        source->Update();
    } catch (...) {
        source->CancelUpdate();
        throw;
    }
}

bool DataGrid::Body::Try(const QString &where, const std::function<void()> &edit)
{
    try {
        edit();
        return true;
    } catch (const ADODB::Error &error) {
        Tell(error.Number, where.isEmpty() ? error.Description : where + QStringLiteral(": ") + error.Description);
    } catch (const std::bad_alloc &) {
        Tell(ADODB::adErrOutOfMemory, tr("There is not enough memory for this value."));
    }
    return false;
}

void DataGrid::Body::Tell(int number, const QString &description)
{
    int response = 1;
    const QPointer<DataGrid> alive(q);
    emit q->Error(number, description, &response);
    if (alive && response != 0)
        MsgBox(description, mbExclamation, QStringLiteral("Error"), alive);
}

bool DataGrid::Body::OpenEditor(const QString &text, bool typed)
{
    if (!editor->SetText(text, IsText(col), LongestEdit) && !typed) {
        Tell(ADODB::adErrInvalidArgument,
             tr("%1: the text holds characters that an editor would change. It can be replaced: type or paste over it.")
                 .arg(q->CellLabel(row, col)));
        return false;
    }
    editor->SetTyped(typed);
    editor->setPlaceholderText(IsRecord(row) && IsNull(row, col) && !typed ? QStringLiteral("null") : QString());
    q->EnsureVisible(row, col);
    editor->show();
    PlaceEditor();
    editor->setFocus();
    if (typed)
        editor->moveCursor(QTextCursor::End);
    else
        editor->selectAll();
    return true;
}

bool DataGrid::EditCell()
{
    if (!m->Live() || Cols() == 0 || !EndEdit(true))
        return false;
    QString text;
    const bool ready = m->Try(CellLabel(m->row, m->col), [&] {
        if (!m->readOnly.isEmpty())
            throw ADODB::Error(ADODB::adErrFeatureNotAvailable, m->readOnly);
        if (!m->source->CanWrite(m->col))
            throw ADODB::Error(ADODB::Fault::ReadOnly);
        if (!m->IsRecord(m->row))
            return;
        const qint64 size =
            std::max(m->source->CellUtf8(m->row, m->col).size(), m->source->CellBytes(m->row, m->col).size() * 2);
        if (size > LongestEdit)
            throw ADODB::Error(ADODB::adErrInvalidArgument,
                               tr("the value is too long to be edited in its cell. It can be replaced: type or paste "
                                  "over it."));
        text = m->source->CellText(m->row, m->col);
    });
    return ready && m->OpenEditor(text, false);
}

bool DataGrid::EditCell(const QString &typed)
{
    if (!m->Live() || Cols() == 0 || !EndEdit(true))
        return false;
    const bool ready = m->Try(CellLabel(m->row, m->col), [&] {
        if (!m->readOnly.isEmpty())
            throw ADODB::Error(ADODB::adErrFeatureNotAvailable, m->readOnly);
        if (!m->source->CanWrite(m->col))
            throw ADODB::Error(ADODB::Fault::ReadOnly);
    });
    return ready && m->OpenEditor(typed, true);
}

bool DataGrid::IsEditing() const
{
    return !m->editor->isHidden();
}

bool DataGrid::EndEdit(bool take)
{
    if (m->editor->isHidden() || m->ending)
        return true;
    m->ending = true;
    const QPointer<DataGrid> alive(this);
    const bool changed = take && m->Live() && m->editor->IsChanged();
    if (changed &&
        !m->Try(CellLabel(m->row, m->col), [&] { m->Store(m->row, m->col, m->Entered(m->col, m->editor->Text())); })) {
        if (alive) {
            m->ending = false;
            m->editor->selectAll();
        }
        return false;
    }
    const bool focused = m->editor->hasFocus();
    m->editor->hide();
    if (focused)
        setFocus();
    m->ending = false;
    Refresh();
    if (changed)
        emit Change();
    return true;
}

bool DataGrid::SetCellText(const QString &text)
{
    if (!m->Live() || Cols() == 0 || !EndEdit(true))
        return false;
    const bool done = m->Try(CellLabel(m->row, m->col), [&] { m->Store(m->row, m->col, m->Entered(m->col, text)); });
    Refresh();
    if (done)
        emit Change();
    return done;
}

bool DataGrid::SetCellNull()
{
    if (!m->Live() || Cols() == 0 || !EndEdit(true))
        return false;
    const int firstCol = m->wholeRows ? 0 : std::min(m->col, m->colSel);
    const int lastCol = m->wholeRows ? Cols() - 1 : std::max(m->col, m->colSel);
    const qint64 last = std::min(std::max(m->row, m->rowSel), Rows() - 1), current = m->row;
    bool done = true, any = false;
    for (qint64 r = std::min(m->row, m->rowSel); done && r <= last; ++r)
        for (int c = firstCol; done && c <= lastCol; ++c)
            if (!m->IsNull(r, c)) {
                done = m->Try(CellLabel(r, c), [&] { m->Store(r, c, ADODB::Value()); });
                any = any || done;
            }
    m->row = current;
    m->FollowRow();
    Refresh();
    if (any)
        emit Change();
    return done;
}

bool DataGrid::UndoCell()
{
    if (!EndEdit(false) || !m->IsRecord(m->row) || m->col >= Cols() || !m->source->CellIsPending(m->row, m->col) ||
        (m->source->RowStatus(m->row) & ADODB::adRecNew))
        return false;
    const bool done =
        m->Try(CellLabel(m->row, m->col), [&] { m->Store(m->row, m->col, m->source->CellOriginal(m->row, m->col)); });
    Refresh();
    if (done)
        emit Change();
    return done;
}

bool DataGrid::DuplicateRow()
{
    if (!EndEdit(true) || !m->IsRecord(m->row))
        return false;
    const qint64 from = m->row;
    const bool done = m->Try(QString(), [&] {
        if (!m->readOnly.isEmpty())
            throw ADODB::Error(ADODB::adErrFeatureNotAvailable, m->readOnly);
        ADODB::Recordset &rows = *m->source;
        rows.AddNew();
        try {
            for (int c = 0; c < Cols(); ++c) // a key is the row's own: the server makes it, or the user enters it
                if (rows.CanWrite(c) && !rows.Column(c).IsKey && !rows.CellIsNull(from, c))
                    rows.Fields()[c].SetValue(rows.CellValue(from, c));
            rows.Update();
        } catch (...) {
            rows.CancelUpdate();
            throw;
        }
    });
    if (done) {
        Refresh();
        SetCurrentCell(Rows() - 1, m->col);
        emit Change();
    }
    return done;
}

bool DataGrid::DeleteRows()
{
    if (!m->Live() || !EndEdit(false))
        return false;
    const qint64 first = std::min(m->row, m->rowSel), last = std::min(std::max(m->row, m->rowSel), Rows() - 1);
    bool done = true, any = false;
    for (qint64 r = last; done && r >= first; --r) {
        done = m->Try(tr("Row %1").arg(r + 1), [&] {
            if (!m->readOnly.isEmpty())
                throw ADODB::Error(ADODB::adErrFeatureNotAvailable, m->readOnly);
            m->source->SetAbsolutePosition(r + 1);
            m->source->Delete();
        });
        any = any || done;
    }
    if (any) {
        m->row = m->rowSel = first;
        m->wholeRows = false;
        m->colSel = m->col;
        Refresh();
        m->FollowRow();
        emit Change();
        m->Moved();
    }
    return done && any;
}
