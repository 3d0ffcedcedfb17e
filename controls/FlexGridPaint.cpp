// Painting of a FlexGrid: the visible cells of four panes, each pane clipped once.

#include "controls/FlexGridBody.h"
#include "controls/Skin.h"
#include "lang/Text.h"
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace {

constexpr int kTextMargin = 3;
constexpr int kSortMark = 14; // pixels that the mark of sorting takes

QColor Mix(const QColor &a, const QColor &b, double part)
{
    const auto mix = [part](int x, int y) { return int(x + (y - x) * part); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor Readable(const QColor &ground)
{
    return Contrast(Qt::black, ground) >= Contrast(Qt::white, ground) ? Qt::black : Qt::white;
}

void DrawTriangle(QPainter &painter, const QRectF &room, bool open, const QColor &colour)
{
    const QPointF middle = room.center();
    QPolygonF shape;
    if (open)
        shape << middle + QPointF(-4.5, -2) << middle + QPointF(4.5, -2) << middle + QPointF(0, 3.5);
    else
        shape << middle + QPointF(-2, -4.5) << middle + QPointF(-2, 4.5) << middle + QPointF(3.5, 0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(shape);
    painter.restore();
}

// One line of a cell: all of it, or its start and an ellipsis. Where not even a letter and the ellipsis fit, the first
// letters are cut at the cell's edge and three dots say so: a cell that holds something never looks empty.
void DrawLine(QPainter &painter, const QRect &room, int flags, const QString &line)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const QString fitted = metrics.elidedText(line, Qt::ElideRight, room.width());
    flags |= Qt::TextSingleLine;
    if (fitted.size() > 1 || fitted == line) {
        painter.drawText(room, flags, fitted);
        return;
    }
    const QRect whole = room.adjusted(1 - kTextMargin, 0, kTextMargin - 1, 0);
    painter.save();
    painter.setClipRect(whole, Qt::IntersectClip);
    const bool fits = metrics.horizontalAdvance(line) <= whole.width();
    painter.drawText(whole, fits ? flags : (flags & ~Qt::AlignHorizontal_Mask) | Qt::AlignLeft, line.left(8));
    if (!fits)
        for (int dot = 0; dot < 3; ++dot)
            painter.fillRect(whole.right() - 2 * dot, whole.bottom() - 2, 1, 1, painter.pen().color());
    painter.restore();
}

// Line ends and tabs show as blanks.
QString OneLine(QString text)
{
    for (QChar &c : text)
        if (c < u' ')
            c = u' ';
    return text;
}

} // namespace

int FlexGrid::Body::LinesIn(const QRect &room) const
{
    return room.height() < q->fontMetrics().height() * 2 ? 1 : std::max(1, (room.height() + 1) / DefaultHeight());
}

QRect FlexGrid::Body::TextRoom(qint64 r, int c, const QRect &cell) const
{
    QRect room = cell.adjusted(kTextMargin, 0, -kTextMargin, -1);
    if (IsNames(r) && sortCol == c && sort != 0 && r == 0 && room.width() > 24)
        room.setRight(room.right() - kSortMark);
    return room;
}

void FlexGrid::Body::PaintText(QPainter &painter, const QString &text, const QRect &room, int align) const
{
    if (text.isEmpty() || room.width() + 2 * kTextMargin <= 2)
        return;
    const int side = align == flexAlignCenter  ? Qt::AlignHCenter
                     : align == flexAlignRight ? Qt::AlignRight
                                               : Qt::AlignLeft;
    if (LinesIn(room) == 1) {
        DrawLine(painter, room, int(side | Qt::AlignVCenter), OneLine(text));
        return;
    }
    QRect line = room.adjusted(0, 2, 0, 0);
    line.setHeight(DefaultHeight());
    for (QString piece : lang::Split(text, QStringLiteral("\n"))) {
        if (piece.endsWith(u'\r'))
            piece.chop(1);
        if (line.top() >= room.bottom())
            break;
        DrawLine(painter, line, int(side | Qt::AlignTop), OneLine(piece));
        line.translate(0, DefaultHeight());
    }
}

// Measured as it is painted, by lines where the row shows several.
QString FlexGrid::Body::HiddenText(const QPoint &position) const
{
    const qint64 r = q->MouseRow(position);
    const int c = q->MouseCol(position);
    const QRect cell = r < 0 || c < 0 ? QRect() : q->CellRect(r, c);
    if (cell.isNull())
        return {};
    const QRect room = TextRoom(r, c, cell);
    const QString text = ShownText(r, c);
    const QStringList pieces = lang::Split(text, QStringLiteral("\n"));
    const int shown = LinesIn(room);
    bool hidden = pieces.size() > shown;
    for (const QString &line : pieces)
        hidden = hidden || q->fontMetrics().horizontalAdvance(OneLine(line)) > room.width();
    if (!hidden)
        return {};
    return text.size() < shownLimit ? text : text + QChar(0x2026); // more than that fits no screen
}

void FlexGrid::Body::PaintCell(QPainter &painter, qint64 r, int c, const QRect &cell)
{
    const bool names = IsNames(r);
    const bool fixed = r < fixedRows || c < fixedCols || names;
    const bool current = r == row && c == col;
    const bool single = row == rowSel && col == colSel;
    QColor ground = fixed ? q->BackColorFixed() : q->BackColor();
    QColor text = fixed ? q->ForeColorFixed() : q->ForeColor();
    if (!fixed && IsNull(r, c))
        ground = Mix(ground, Contrast(Qt::white, ground) > 4.5 ? Qt::black : Qt::gray, 0.18);
    const auto own = colours.constFind({Id(r), c});
    if (own != colours.cend()) {
        if (own->back.isValid()) {
            ground = own->back;
            text = Readable(ground);
        }
        if (own->fore.isValid())
            text = own->fore;
    }
    if (!fixed && InBlock(r, c) && !current) {
        ground = Colour(backSel, QPalette::Highlight);
        text = Colour(foreSel, QPalette::HighlightedText);
    }
    painter.fillRect(cell, ground);
    painter.setPen(Mix(ground, q->ForeColor(), fixed ? 0.30 : 0.18));
    painter.drawLine(cell.topRight(), cell.bottomRight());
    painter.drawLine(cell.bottomLeft(), cell.bottomRight());
    const QRect room = TextRoom(r, c, cell), margins = cell.adjusted(kTextMargin, 0, -kTextMargin, -1);
    if (room != margins) {
        const QRectF mark(margins.right() - 11, room.top(), 11, room.height());
        painter.save();
        if (sort == flexSortGenericAscending || sort == flexSortNumericAscending) {
            painter.translate(mark.center());
            painter.rotate(180);
            painter.translate(-mark.center());
        }
        DrawTriangle(painter, mark, true, text);
        painter.restore();
    }
    painter.setPen(text);
    PaintText(painter, ShownText(r, c, shownLimit * std::min(LinesIn(room), 200)), room,
              size_t(c) < aligns.size() ? aligns[size_t(c)] : flexAlignLeft);
    if (current && !names) {
        const bool focus = q->hasFocus();
        painter.setPen(QPen(focus ? SkinColour(SkinRole::Focus) : text, focus && single ? 2 : 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(cell.adjusted(1, 1, focus && single ? -2 : -2, -2));
    }
}

void FlexGrid::Body::PaintPane(QPainter &painter, qint64 firstRow, qint64 lastRow, int firstCol, int lastCol,
                               const QRect &clip)
{
    if (clip.isEmpty() || firstCol >= lastCol)
        return;
    painter.setClipRect(clip);
    int y = firstRow < FrozenRows() ? 0 : FrozenHeight();
    for (qint64 r = firstRow; r < lastRow && y <= clip.bottom(); ++r) {
        const int height = HeightOf(r);
        if (y + height > clip.top()) {
            const int shift = firstCol < FrozenCols() || r < FrozenRows() ? 0 : IndentPixels(r);
            if (shift > 0 && ColX(firstCol) + shift > clip.left()) {
                painter.fillRect(QRect(clip.left(), y, ColX(firstCol) + shift - clip.left(), height),
                                 Colour(backBkg, QPalette::Dark));
            }
            for (int c = firstCol; c < lastCol; ++c) {
                const QRect cell(ColX(c) + shift, y, WidthOf(c), height);
                if (cell.left() > clip.right())
                    break;
                if (cell.width() > 0 && cell.right() >= clip.left())
                    PaintCell(painter, r, c, cell);
            }
        }
        y += height;
    }
}

void FlexGrid::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect area = viewport()->rect();
    painter.fillRect(event->rect(), m->Colour(m->backBkg, QPalette::Dark));
    const qint64 frozenRows = m->FrozenRows();
    const int frozenCols = m->FrozenCols();
    const int top = m->FrozenHeight(), left = m->FrozenWidth();
    const int firstCol = LeftCol();
    const QRect body = event->rect() & QRect(left, top, area.width() - left, area.height() - top);
    const QRect side = event->rect() & QRect(0, top, left, area.height() - top);
    const QRect head = event->rect() & QRect(left, 0, area.width() - left, top);
    const QRect corner = event->rect() & QRect(0, 0, left, top);
    m->PaintPane(painter, m->topRow, m->rows, m->hierarchical ? frozenCols : firstCol, m->cols, body);
    m->PaintPane(painter, m->topRow, m->rows, 0, frozenCols, side);
    m->PaintPane(painter, 0, frozenRows, firstCol, m->cols, head);
    m->PaintPane(painter, 0, frozenRows, 0, frozenCols, corner);
    if (!m->hierarchical)
        return;
    painter.setClipRect(QRect(0, top, area.width(), area.height() - top));
    int y = top;
    for (qint64 r = m->topRow; r < m->rows && y < area.height(); y += m->HeightOf(r), ++r)
        if (CanExpand(r))
            DrawTriangle(painter, m->ExpanderRect(r), IsExpanded(r),
                         m->BandRow(r).band == 0 ? ForeColorFixed() : ForeColor());
}
