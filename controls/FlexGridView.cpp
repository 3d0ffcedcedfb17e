// Geometry and scrolling of a FlexGrid. Rows scroll by rows, so that any count of them fits a scroll bar; columns
// scroll by pixels. Pixels inside, twips outside.

#include "controls/FlexGridBody.h"
#include "controls/Twips.h"
#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace {
constexpr int kClassicHeight = 240; // twips of one line
constexpr int kDefaultWidth = 960;  // twips
constexpr int kExpanderWidth = 20;  // pixels
constexpr int kIndentStep = 12;     // pixels a band's indent step
} // namespace

// One line of text with room to breathe, and never less than the classic row.
int FlexGrid::Body::DefaultHeight() const
{
    return std::max(ToPixels(kClassicHeight), q->fontMetrics().height() + 4);
}

// A height that was set counts in classic lines, so that text of N lines fits with any font.
int FlexGrid::Body::HeightOf(qint64 r) const
{
    const auto own = heights.constFind(r);
    return own == heights.cend() ? DefaultHeight() : int(qint64(*own) * DefaultHeight() / kClassicHeight);
}

qint64 FlexGrid::Body::HeightBetween(qint64 from, qint64 to) const
{
    if (from > to)
        return -HeightBetween(to, from);
    qint64 sum = (to - from) * DefaultHeight();
    for (auto own = heights.lowerBound(from); own != heights.cend() && own.key() < to; ++own)
        sum += HeightOf(own.key()) - DefaultHeight();
    return sum;
}

int FlexGrid::Body::WidthOf(int c) const
{
    const int twips = size_t(c) < widths.size() && widths[size_t(c)] >= 0 ? widths[size_t(c)] : kDefaultWidth;
    const int pixels = ToPixels(twips);
    return hierarchical && c == 0 ? std::max(pixels, kExpanderWidth) : pixels;
}

const std::vector<int> &FlexGrid::Body::Edges() const
{
    if (edges.empty()) {
        edges.resize(size_t(cols) + 1);
        for (int c = 0; c < cols; ++c)
            edges[size_t(c) + 1] = edges[size_t(c)] + WidthOf(c);
    }
    return edges;
}

// The row of names stays in place while it serves as the first band's header, also without fixed rows.
qint64 FlexGrid::Body::FrozenRows() const
{
    const qint64 names = source && bands[0].header ? 1 : 0;
    return std::min(rows, std::max(fixedRows, names));
}

int FlexGrid::Body::FrozenCols() const
{
    return std::min(cols, std::max(fixedCols, hierarchical ? 1 : 0));
}

int FlexGrid::Body::FrozenHeight() const
{
    return int(HeightBetween(0, FrozenRows()));
}

int FlexGrid::Body::FrozenWidth() const
{
    return Edges()[size_t(FrozenCols())];
}

int FlexGrid::Body::ColX(int c) const
{
    const int x = Edges()[size_t(c)];
    return c < FrozenCols() ? x : x - q->horizontalScrollBar()->value();
}

// The first row of the last page.
qint64 FlexGrid::Body::LastTop() const
{
    const int room = q->viewport()->height() - FrozenHeight();
    qint64 top = rows;
    int used = 0;
    while (top > FrozenRows() && used + HeightOf(top - 1) <= room)
        used += HeightOf(--top);
    return std::max(FrozenRows(), std::min(top, rows - 1));
}

void FlexGrid::Body::Stale()
{
    edges.clear();
    UpdateScrollBars();
    q->viewport()->update();
}

void FlexGrid::Body::UpdateScrollBars()
{
    const qint64 frozen = FrozenRows();
    const qint64 last = LastTop();
    topRow = std::clamp(topRow, frozen, std::max(frozen, last));
    QScrollBar *const vertical = q->verticalScrollBar();
    vertical->setRange(0, int(std::max<qint64>(0, last - frozen)));
    vertical->setPageStep(int(std::max<qint64>(1, rows - last)));
    vertical->setSingleStep(1);
    vertical->setValue(int(topRow - frozen));
    const int room = q->viewport()->width() - FrozenWidth();
    int indent = 0;
    for (size_t band = 1; band < bands.size(); ++band)
        indent = std::max(indent, bands[band].indent * kIndentStep);
    QScrollBar *const horizontal = q->horizontalScrollBar();
    horizontal->setRange(0, std::max(0, Edges().back() - FrozenWidth() + indent - room));
    horizontal->setPageStep(std::max(1, room));
    horizontal->setSingleStep(24);
}

int FlexGrid::Body::IndentPixels(qint64 r) const
{
    if (!hierarchical)
        return 0;
    const int band = tree.At(r).node->band;
    return band == 0 ? 0 : bands[size_t(band)].indent * kIndentStep;
}

// The triangle stands left of the row's first cell.
QRect FlexGrid::Body::ExpanderRect(qint64 r) const
{
    const QRect cell = q->CellRect(r, FrozenCols() < cols ? FrozenCols() : 0);
    const int y = int(FrozenHeight() + HeightBetween(topRow, r));
    const int x = tree.At(r).node->band == 0 ? FrozenWidth() : cell.isNull() ? FrozenWidth() : cell.left();
    return QRect(x - kExpanderWidth + 2, y, kExpanderWidth - 4, HeightOf(r));
}

qint64 FlexGrid::TopRow() const
{
    return m->topRow;
}

void FlexGrid::SetTopRow(qint64 row)
{
    m->CheckRow(row);
    verticalScrollBar()->setValue(int(std::clamp(row, m->FrozenRows(), m->LastTop()) - m->FrozenRows()));
}

int FlexGrid::LeftCol() const
{
    const int scrolled = horizontalScrollBar()->value() + m->FrozenWidth();
    int c = m->FrozenCols();
    while (c + 1 < m->cols && m->Edges()[size_t(c) + 1] <= scrolled)
        ++c;
    return c;
}

void FlexGrid::SetLeftCol(int col)
{
    m->CheckCol(col);
    horizontalScrollBar()->setValue(m->Edges()[size_t(std::max(col, m->FrozenCols()))] - m->FrozenWidth());
}

bool FlexGrid::RowIsVisible(qint64 row) const
{
    if (row < m->FrozenRows())
        return row >= 0;
    return row >= m->topRow && row < m->rows &&
           m->FrozenHeight() + m->HeightBetween(m->topRow, row + 1) <= viewport()->height();
}

void FlexGrid::EnsureVisible(qint64 row, int col)
{
    m->CheckRow(row);
    m->CheckCol(col);
    if (row >= m->FrozenRows() && row < m->topRow) {
        SetTopRow(row);
    } else if (row >= m->FrozenRows() && !RowIsVisible(row)) {
        const int room = viewport()->height() - m->FrozenHeight();
        qint64 top = row;
        int used = m->HeightOf(row);
        while (top > m->FrozenRows() && used + m->HeightOf(top - 1) <= room)
            used += m->HeightOf(--top);
        SetTopRow(top);
    }
    if (col < m->FrozenCols())
        return;
    const int left = m->Edges()[size_t(col)] - m->FrozenWidth() + (col > m->FrozenCols() ? m->IndentPixels(row) : 0);
    const int right = left + m->WidthOf(col);
    const int room = viewport()->width() - m->FrozenWidth();
    QScrollBar *const bar = horizontalScrollBar();
    if (right > bar->value() + room)
        bar->setValue(right - room);
    if (left < bar->value())
        bar->setValue(left);
}

qint64 FlexGrid::RowPos(qint64 row) const
{
    m->CheckRow(row);
    const qint64 pixels =
        row < m->FrozenRows() ? m->HeightBetween(0, row) : m->FrozenHeight() + m->HeightBetween(m->topRow, row);
    return pixels * TwipsPerPixel;
}

int FlexGrid::ColPos(int col) const
{
    m->CheckCol(col);
    return ToTwips(m->ColX(col));
}

int FlexGrid::DefaultRowHeight() const
{
    return ToTwips(m->DefaultHeight());
}

int FlexGrid::RowHeight(qint64 row) const
{
    m->CheckRow(row);
    return m->heights.value(row, DefaultRowHeight());
}

void FlexGrid::SetRowHeight(qint64 row, int twips)
{
    m->CheckRow(row);
    if (twips < 0)
        m->heights.remove(row);
    else
        m->heights.insert(row, twips);
    m->Stale();
}

int FlexGrid::ColWidth(int col) const
{
    m->CheckCol(col);
    return size_t(col) < m->widths.size() && m->widths[size_t(col)] >= 0 ? m->widths[size_t(col)] : kDefaultWidth;
}

void FlexGrid::SetColWidth(int col, int twips)
{
    m->CheckCol(col);
    if (m->widths.size() <= size_t(col))
        m->widths.resize(size_t(col) + 1, -1);
    m->widths[size_t(col)] = std::max(-1, twips);
    m->Stale();
}

void FlexGrid::SetColAlignment(int col, FlexAlign align)
{
    m->CheckCol(col);
    if (m->aligns.size() <= size_t(col))
        m->aligns.resize(size_t(col) + 1, flexAlignLeft);
    m->aligns[size_t(col)] = align;
    viewport()->update();
}

qint64 FlexGrid::MouseRow(const QPoint &position) const
{
    if (position.y() < 0)
        return -1;
    const bool frozen = position.y() < m->FrozenHeight();
    int y = frozen ? 0 : m->FrozenHeight();
    const qint64 end = frozen ? m->FrozenRows() : m->rows;
    for (qint64 r = frozen ? 0 : m->topRow; r < end && y <= viewport()->height(); ++r) {
        y += m->HeightOf(r);
        if (position.y() < y)
            return r;
    }
    return -1;
}

int FlexGrid::MouseCol(const QPoint &position) const
{
    if (position.x() < 0)
        return -1;
    const std::vector<int> &edges = m->Edges();
    int x = position.x();
    if (x >= m->FrozenWidth()) {
        const qint64 row = MouseRow(position);
        x += horizontalScrollBar()->value() - (row >= m->FrozenRows() ? m->IndentPixels(row) : 0);
        x = std::max(x, m->FrozenWidth());
    }
    const auto edge = std::upper_bound(edges.begin(), edges.end(), x);
    return edge == edges.end() ? -1 : int(edge - edges.begin()) - 1;
}

QRect FlexGrid::CellRect(qint64 row, int col) const
{
    m->CheckRow(row);
    m->CheckCol(col);
    const bool frozenRow = row < m->FrozenRows(), frozenCol = col < m->FrozenCols();
    if (!frozenRow && row < m->topRow)
        return {};
    const qint64 y = frozenRow ? m->HeightBetween(0, row) : m->FrozenHeight() + m->HeightBetween(m->topRow, row);
    if (y >= viewport()->height())
        return {};
    const int x = m->ColX(col) + (frozenCol || frozenRow ? 0 : m->IndentPixels(row));
    const QRect rect(x, int(y), m->WidthOf(col), m->HeightOf(row));
    const QRect pane(frozenCol ? 0 : m->FrozenWidth(), 0, viewport()->width(), viewport()->height());
    return rect.intersects(pane) ? rect : QRect();
}

int FlexGrid::CellLeft() const
{
    return ColPos(m->col) +
           (m->row >= m->FrozenRows() && m->col >= m->FrozenCols() ? ToTwips(m->IndentPixels(m->row)) : 0);
}

int FlexGrid::CellTop() const
{
    return int(RowPos(m->row));
}

int FlexGrid::CellWidth() const
{
    m->CheckCol(m->col);
    return ToTwips(m->WidthOf(m->col));
}

QSize FlexGrid::sizeHint() const
{
    return {480, 240};
}

void FlexGrid::resizeEvent(QResizeEvent *)
{
    m->UpdateScrollBars();
}

void FlexGrid::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m->Stale();
    else if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        viewport()->update();
}

void FlexGrid::scrollContentsBy(int, int)
{
    m->topRow = m->FrozenRows() + verticalScrollBar()->value();
    viewport()->update();
    emit Scrolled();
}
