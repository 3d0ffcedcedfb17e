// Mouse and keys of a FlexGrid.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {
constexpr int kGripWidth = 4; // pixels on either side of a header's edge
constexpr int kAutoScrollMilliseconds = 40;
constexpr int kLeastWidth = 8;         // pixels
constexpr qsizetype kLongestWord = 60; // characters of a tool tip that stay together
} // namespace

int FlexGrid::Body::ResizeColumnAt(const QPoint &position) const
{
    if (position.y() < 0 || position.y() >= FrozenHeight())
        return -1;
    for (int c = cols - 1; c >= 0; --c) {
        const int edge = ColX(c) + WidthOf(c);
        if (c >= FrozenCols() && edge < FrozenWidth())
            break;
        if (std::abs(position.x() - edge) <= kGripWidth)
            return c;
    }
    return -1;
}

void FlexGrid::Body::DragTo(const QPoint &position)
{
    dragAt = position;
    const QRect area = q->viewport()->rect();
    const QRect body(FrozenWidth(), FrozenHeight(), std::max(1, area.width() - FrozenWidth()),
                     std::max(1, area.height() - FrozenHeight()));
    const QPoint inside(std::clamp(position.x(), body.left(), body.right()),
                        std::clamp(position.y(), body.top(), body.bottom()));
    qint64 r = drag == Drag::Columns ? rowSel : q->MouseRow(inside);
    int c = drag == Drag::Rows ? colSel : q->MouseCol(inside);
    if (r < 0)
        r = rows - 1;
    if (c < 0)
        c = cols - 1;
    SetBlock(row, col, r, c);
    const bool outside = !body.contains(position);
    if (outside && !autoScroll.isActive())
        autoScroll.start(kAutoScrollMilliseconds, q);
    else if (!outside)
        autoScroll.stop();
}

void FlexGrid::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m->autoScroll.timerId())
        return QAbstractScrollArea::timerEvent(event);
    // The farther the pointer is from the cells, the faster they go by.
    const int below = m->dragAt.y() - viewport()->height(), above = m->FrozenHeight() - m->dragAt.y();
    const int right = m->dragAt.x() - viewport()->width(), left = m->FrozenWidth() - m->dragAt.x();
    const auto rows = [this](int distance) { return 1 + distance * distance / (m->DefaultHeight() * 40); };
    if (m->drag != Body::Drag::Columns && (below > 0 || above > 0))
        verticalScrollBar()->setValue(verticalScrollBar()->value() + (below > 0 ? rows(below) : -rows(above)));
    if (m->drag != Body::Drag::Rows && (right > 0 || left > 0))
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + (right > 0 ? 16 + right : -16 - left));
    m->DragTo(m->dragAt);
}

void FlexGrid::mousePressEvent(QMouseEvent *event)
{
    const QPoint at = event->position().toPoint();
    m->pressed = true;
    if (event->button() != Qt::LeftButton) {
        // A right click outside the block moves the current cell, so that a menu speaks of what was clicked.
        const qint64 r = MouseRow(at);
        const int c = MouseCol(at);
        if (r >= m->FrozenRows() && c >= m->FrozenCols() && !m->InBlock(r, c))
            m->SetBlock(r, c, r, c);
        return;
    }
    m->dragCol = m->ResizeColumnAt(at);
    if (m->dragCol >= 0) {
        m->drag = Body::Drag::Width;
        m->dragFrom = at.x();
        m->dragWidth = m->WidthOf(m->dragCol);
        return;
    }
    const qint64 r = MouseRow(at);
    const int c = MouseCol(at);
    const qint64 firstRow = std::min(m->FrozenRows(), m->rows - 1);
    const int firstCol = std::min(m->FrozenCols(), m->cols - 1);
    if (m->hierarchical && r >= m->FrozenRows() && CanExpand(r) && m->ExpanderRect(r).contains(at)) {
        IsExpanded(r) ? Collapse(r) : Expand(r);
        return;
    }
    if (r < 0 || c < 0 || m->rows == 0 || m->cols == 0)
        return;
    if (r < m->FrozenRows() && c < m->FrozenCols()) { // the corner: everything
        m->SetBlock(firstRow, firstCol, m->rows - 1, m->cols - 1);
    } else if (r < m->FrozenRows()) { // a header: its column
        m->drag = Body::Drag::Columns;
        m->SetBlock(firstRow, c, m->rows - 1, c);
    } else if (c < m->FrozenCols()) { // a fixed cell: its row
        m->drag = Body::Drag::Rows;
        m->SetBlock(r, firstCol, r, m->cols - 1);
    } else {
        m->drag = Body::Drag::Block;
        if (event->modifiers() & Qt::ShiftModifier)
            m->SetBlock(m->row, m->col, r, c);
        else
            m->SetBlock(r, c, r, c);
        EnsureVisible(r, c);
    }
}

void FlexGrid::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint at = event->position().toPoint();
    if (m->drag == Body::Drag::Width) {
        SetColWidth(m->dragCol, ToTwips(std::max(kLeastWidth, m->dragWidth + at.x() - m->dragFrom)));
        return;
    }
    if (event->buttons() & Qt::LeftButton) {
        if (m->drag != Body::Drag::None)
            m->DragTo(at);
        return;
    }
    if (m->ResizeColumnAt(at) >= 0)
        viewport()->setCursor(Qt::SplitHCursor);
    else
        viewport()->unsetCursor();
}

void FlexGrid::mouseReleaseEvent(QMouseEvent *event)
{
    const bool click =
        m->pressed && m->drag != Body::Drag::Width; // letting a column's edge go is no click on the header
    m->drag = Body::Drag::None;
    m->pressed = false;
    m->autoScroll.stop();
    if (!click)
        return;
    const QPoint at = event->position().toPoint();
    if (event->button() == Qt::LeftButton)
        emit Click();
    emit MouseUp(event->button(), at);
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m->pressed = false; // the release that follows is no click of its own
    const int c = m->ResizeColumnAt(event->position().toPoint());
    if (c >= 0)
        return FitColumn(c);
    const qint64 r = MouseRow(event->position().toPoint());
    if (r >= m->FrozenRows())
        emit DoubleClick();
}

void FlexGrid::wheelEvent(QWheelEvent *event)
{
    const bool sideways = event->modifiers() & Qt::ShiftModifier;
    const QPoint angle = event->angleDelta(), pixels = event->pixelDelta();
    const int across = sideways && angle.x() == 0 ? angle.y() : angle.x();
    if (across != 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - across / 2);
    if (!sideways && (angle.y() != 0 || pixels.y() != 0)) {
        // What is less than a row is kept for the next turn of the wheel.
        m->wheelRest += pixels.y() != 0 ? double(pixels.y()) / m->DefaultHeight()
                                        : angle.y() / 120.0 * QApplication::wheelScrollLines();
        const double whole = std::trunc(m->wheelRest);
        m->wheelRest -= whole;
        verticalScrollBar()->setValue(verticalScrollBar()->value() - int(whole));
    }
    event->accept();
}

bool FlexGrid::Body::MoveKey(QKeyEvent *event)
{
    const bool control = event->modifiers() & Qt::ControlModifier;
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    const qint64 firstRow = FrozenRows();
    const int firstCol = FrozenCols();
    if (rows <= firstRow || cols <= firstCol)
        return false;
    const qint64 page = std::max<qint64>(1, (q->viewport()->height() - FrozenHeight()) / DefaultHeight() - 1);
    qint64 r = extend ? rowSel : row;
    int c = extend ? colSel : col;
    switch (event->key()) {
    case Qt::Key_Up:
        r = control ? firstRow : r - 1;
        break;
    case Qt::Key_Down:
        r = control ? rows - 1 : r + 1;
        break;
    case Qt::Key_Left:
        c = control ? firstCol : c - 1;
        break;
    case Qt::Key_Right:
        c = control ? cols - 1 : c + 1;
        break;
    case Qt::Key_PageUp:
        r -= page;
        break;
    case Qt::Key_PageDown:
        r += page;
        break;
    case Qt::Key_Home:
        c = firstCol;
        r = control ? firstRow : r;
        break;
    case Qt::Key_End:
        c = cols - 1;
        r = control ? rows - 1 : r;
        break;
    default:
        return false;
    }
    r = std::clamp(r, firstRow, rows - 1);
    c = std::clamp(c, firstCol, cols - 1);
    if (extend)
        SetBlock(row, col, r, c);
    else
        SetBlock(r, c, r, c);
    q->EnsureVisible(r, c);
    return true;
}

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    if (m->MoveKey(event)) {
        event->accept();
        return;
    }
    const bool row = m->row >= m->FrozenRows() && m->row < m->rows;
    if (event->matches(QKeySequence::SelectAll) && m->rows > m->FrozenRows() && m->cols > m->FrozenCols()) {
        m->SetBlock(m->FrozenRows(), m->FrozenCols(), m->rows - 1, m->cols - 1);
    } else if (row && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        emit DoubleClick();
    } else if (row && (event->key() == Qt::Key_Menu ||
                       (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier))) {
        const QRect cell = CellRect(m->row, m->col);
        emit MouseUp(Qt::RightButton, cell.isNull() ? viewport()->rect().center() : cell.center());
    } else if (row && event->key() == Qt::Key_Plus && CanExpand(m->row)) {
        Expand(m->row);
    } else if (row && event->key() == Qt::Key_Minus && CanExpand(m->row)) {
        Collapse(m->row);
    } else {
        event->ignore();
    }
}

// Hovering over a text that is cut off shows it whole.
bool FlexGrid::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    auto *const help = static_cast<QHelpEvent *>(event);
    const QString text = m->HiddenText(help->pos());
    if (text.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        // As rich text, so that long lines are broken, words without a blank too; nothing in it is taken for markup.
        QString lines = text;
        for (qsizetype at = 0, run = 0; at < lines.size(); ++at) {
            run = lines[at].isSpace() ? 0 : run + 1;
            if (run > kLongestWord && !lines[at].isLowSurrogate()) {
                lines.insert(at, QChar(0x200B)); // a place to break, of no width
                run = 0;
            }
        }
        const auto shown = QStringLiteral("<div style=\"white-space:pre-wrap\">%1</div>").arg(lines.toHtmlEscaped());
        const QRect cell = CellRect(MouseRow(help->pos()), MouseCol(help->pos()));
        QToolTip::showText(help->globalPos(), shown, viewport(), cell);
    }
    return true;
}

void FlexGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void FlexGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

bool FlexGrid::event(QEvent *event)
{
    // Escape and the commands' keys belong to the window; the keys that move in the grid do not.
    if (event->type() == QEvent::ShortcutOverride) {
        auto *const key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}
