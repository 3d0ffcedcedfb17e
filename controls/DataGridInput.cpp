// Keys and mouse of a DataGrid.

#include "controls/DataGridBody.h"
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace {
constexpr int kEdgeReach = 3; // pixels to either side of a heading's edge that move it
} // namespace

int DataGrid::Body::EdgeAt(const QPoint &position) const
{
    if (position.y() >= RowHeight())
        return -1;
    int edge = ColX(0);
    for (int c = 0; c < q->Cols(); ++c) {
        edge += widths[size_t(c)];
        if (edge >= HeadWidth() && std::abs(position.x() - edge) <= kEdgeReach)
            return c;
    }
    return -1;
}

void DataGrid::mousePressEvent(QMouseEvent *event)
{
    if (m->frozen || !m->source)
        return;
    const QPoint at = event->position().toPoint();
    if (const int edge = event->button() == Qt::LeftButton ? m->EdgeAt(at) : -1; edge >= 0) {
        m->drag = Body::Drag::Width;
        m->dragCol = edge;
        m->dragFrom = at.x();
        m->dragWidth = m->widths[size_t(edge)];
        return;
    }
    const qint64 r = RowAt(at.y());
    const int c = ColAt(at.x());
    if (r < 0 || !EndEdit(true))
        return;
    const bool head = at.x() < m->HeadWidth();
    if (!head && c < 0)
        return;
    if (event->button() == Qt::RightButton) {
        if (!m->InBlock(r, head ? m->col : c))
            m->SetBlock(r, head ? 0 : c, r, head ? 0 : c, head);
        emit ContextMenu(at);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (head)
        m->SetBlock(extend ? m->row : r, extend ? m->col : 0, r, extend ? m->colSel : 0, true);
    else if (extend)
        m->SetBlock(m->row, m->col, r, c, false);
    else
        m->SetBlock(r, c, r, c, false);
    EnsureVisible(m->rowSel, m->wholeRows ? -1 : m->colSel);
    m->drag = Body::Drag::Block;
}

void DataGrid::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = event->position().toPoint();
    if (m->drag == Body::Drag::None || m->frozen) {
        viewport()->setCursor(m->EdgeAt(at) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
        return;
    }
    if (m->drag == Body::Drag::Width) {
        m->widths[size_t(m->dragCol)] = std::max(8, m->dragWidth + at.x() - m->dragFrom);
        Refresh();
        return;
    }
    const qint64 r = at.y() < m->RowHeight() ? m->top - 1 : m->top + at.y() / m->RowHeight() - 1;
    const int c = ColAt(std::clamp(at.x(), m->HeadWidth(), viewport()->width() - 1));
    m->SetBlock(m->row, m->col, std::clamp<qint64>(r, 0, std::max<qint64>(0, m->Lines() - 1)), c < 0 ? m->colSel : c,
                m->wholeRows);
    EnsureVisible(m->rowSel, m->wholeRows ? -1 : m->colSel);
}

void DataGrid::mouseReleaseEvent(QMouseEvent *)
{
    m->drag = Body::Drag::None;
}

void DataGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (m->frozen || event->button() != Qt::LeftButton)
        return;
    const QPoint at = event->position().toPoint();
    if (const int edge = m->EdgeAt(at); edge >= 0)
        FitColumn(edge);
    else if (RowAt(at.y()) >= 0 && ColAt(at.x()) >= 0 && SetCurrentCell(RowAt(at.y()), ColAt(at.x())))
        EditCell();
}

void DataGrid::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (m->frozen)
        return;
    const bool sideways = event->modifiers() & Qt::ShiftModifier;
    const QPoint angle = event->angleDelta();
    const int across = sideways && angle.x() == 0 ? angle.y() : angle.x();
    if (across != 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - across / 2);
    if (sideways || angle.y() == 0)
        return;
    m->wheelRest += angle.y() / 120.0 * QApplication::wheelScrollLines();
    const double whole = std::trunc(m->wheelRest);
    m->wheelRest -= whole;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - int(whole));
}

bool DataGrid::Body::MoveKey(const QKeyEvent &event)
{
    const bool control = event.modifiers() & Qt::ControlModifier, extend = event.modifiers() & Qt::ShiftModifier;
    const qint64 lastRow = std::max<qint64>(0, Lines() - 1), page = std::max<qint64>(1, RowsInView() - 1);
    const int lastCol = q->Cols() - 1;
    qint64 r = extend ? rowSel : row;
    int c = extend ? colSel : col;
    switch (event.key()) {
    case Qt::Key_Up:
        r = control ? 0 : r - 1;
        break;
    case Qt::Key_Down:
        r = control ? lastRow : r + 1;
        break;
    case Qt::Key_Left:
        c = control ? 0 : c - 1;
        break;
    case Qt::Key_Right:
        c = control ? lastCol : c + 1;
        break;
    case Qt::Key_PageUp:
        r -= page;
        break;
    case Qt::Key_PageDown:
        r += page;
        break;
    case Qt::Key_Home:
        c = 0;
        r = control ? 0 : r;
        break;
    case Qt::Key_End:
        c = lastCol;
        r = control ? lastRow : r;
        break;
    default:
        return false;
    }
    r = std::clamp<qint64>(r, 0, lastRow);
    c = std::clamp(c, 0, std::max(0, lastCol));
    if (extend)
        SetBlock(row, col, r, c, wholeRows);
    else
        SetBlock(r, c, r, c, false);
    q->EnsureVisible(r, c);
    return true;
}

// To the next cell, from the end of a row to the next one; false at the last cell of all.
bool DataGrid::Body::Step(bool next)
{
    qint64 r = row;
    int c = col + (next ? 1 : -1);
    if (c < 0 || c >= q->Cols()) {
        r += next ? 1 : -1;
        c = next ? 0 : q->Cols() - 1;
    }
    if (!Live() || q->Cols() == 0 || r < 0 || r >= Lines())
        return false;
    return q->SetCurrentCell(r, c) || true;
}

bool DataGrid::focusNextPrevChild(bool next)
{
    if (hasFocus() && m->Step(next))
        return true;
    return QAbstractScrollArea::focusNextPrevChild(next);
}

void DataGrid::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
    if (!m->Live() || Cols() == 0)
        return;
    const bool control = event->modifiers() & Qt::ControlModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    event->accept();
    if (m->MoveKey(*event))
        return;
    if (event->matches(QKeySequence::SelectAll)) {
        m->SetBlock(0, 0, std::max<qint64>(0, Rows() - 1), Cols() - 1, true);
    } else if (event->key() == Qt::Key_F2 || (isReturn && event->modifiers() == Qt::NoModifier)) {
        EditCell();
    } else if (event->key() == Qt::Key_Delete) {
        if (m->wholeRows || control)
            DeleteRows();
        else
            SetCellNull();
    } else if (event->key() == Qt::Key_Backspace) {
        EditCell(QString());
    } else if (event->key() == Qt::Key_Menu ||
               (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        const QRect cell = CellRect(m->row, m->col);
        emit ContextMenu(cell.isNull() ? viewport()->rect().center() : cell.center());
    } else if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ShiftModifier) {
        m->SetBlock(m->row, m->col, m->rowSel, m->colSel, true); // the rows, as by their heads
        viewport()->update();
    } else if (event->key() == Qt::Key_Space && m->source->Column(m->col).Type == ADODB::adBoolean) {
        const bool isTrue =
            m->IsRecord(m->row) && !m->IsNull(m->row, m->col) && m->Start(m->row, m->col, 8) == QLatin1String("True");
        SetCellText(isTrue ? QStringLiteral("False") : QStringLiteral("True"));
    } else if (!event->text().isEmpty() && event->text().at(0).isPrint() &&
               !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        EditCell(event->text());
    } else {
        event->ignore();
    }
}

// Composed characters begin an edit as a typed one does.
void DataGrid::inputMethodEvent(QInputMethodEvent *event)
{
    if (event->preeditString().isEmpty() && event->commitString().isEmpty())
        return;
    if (!IsEditing() && EditCell(QString()))
        QCoreApplication::sendEvent(m->editor, event);
}

QVariant DataGrid::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImCursorRectangle)
        return CellRect(m->row, m->col);
    return query == Qt::ImEnabled ? QVariant(true) : QAbstractScrollArea::inputMethodQuery(query);
}

// The grid's own keys are its own, also where a menu has them.
bool DataGrid::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && m->Live()) {
        auto *const key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_F2 || key->key() == Qt::Key_Delete || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void DataGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void DataGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}
