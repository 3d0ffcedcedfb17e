// Painting of a DataGrid: the visible cells alone, each by as much of its text as a line can show.

#include "controls/DataGridBody.h"
#include "controls/Skin.h"
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace {

constexpr int kCellMargin = 3;
constexpr qint64 kCellShown = 600; // characters of one line that a cell can show

QColor Blend(const QColor &a, const QColor &b, double part)
{
    const auto mix = [part](int x, int y) { return int(x + (y - x) * part); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

bool StandsRight(ADODB::DataTypeEnum type)
{
    switch (type) {
    case ADODB::adSmallInt:
    case ADODB::adInteger:
    case ADODB::adSingle:
    case ADODB::adDouble:
    case ADODB::adCurrency:
    case ADODB::adDecimal:
    case ADODB::adTinyInt:
    case ADODB::adUnsignedTinyInt:
    case ADODB::adUnsignedSmallInt:
    case ADODB::adUnsignedInt:
    case ADODB::adBigInt:
    case ADODB::adUnsignedBigInt:
    case ADODB::adNumeric:
        return true;
    default:
        return false;
    }
}

QString LineOf(QString text)
{
    for (QChar &c : text)
        if (c < u' ')
            c = u' ';
    return text;
}

} // namespace

// What becomes of the row: "+" it is new, a pen it was changed, "!" the last save did not take it, "*" the row to come.
void DataGrid::Body::PaintMark(QPainter &painter, qint64 r, const QRect &head)
{
    const QColor ink = q->palette().color(QPalette::BrightText);
    painter.setPen(ink);
    painter.setBrush(ink);
    const QRect left(head.left() + 2, head.top(), head.height() / 2, head.height());
    const QRect right(left.right() + 1, head.top(), head.right() - left.right() - 3, head.height());
    if (r == row) {
        const QPoint middle = left.center();
        const QPoint arrow[] = {middle + QPoint(-2, -4), middle + QPoint(-2, 4), middle + QPoint(3, 0)};
        painter.drawPolygon(arrow, 3);
    }
    QString mark;
    if (!IsRecord(r)) {
        mark = QStringLiteral("*");
    } else {
        constexpr int refused = ADODB::adRecInvalid | ADODB::adRecMultipleChanges | ADODB::adRecCanceled |
                                ADODB::adRecConcurrencyViolation | ADODB::adRecIntegrityViolation |
                                ADODB::adRecPermissionDenied;
        const int status = source->RowStatus(r);
        if (status & refused) {
            painter.setPen(SkinColour(SkinRole::Focus));
            mark = QStringLiteral("!");
        } else if (status & ADODB::adRecNew) {
            mark = QStringLiteral("+");
        } else if (status & ADODB::adRecModified) {
            const QPoint middle = right.center();
            const QPoint pen[] = {middle + QPoint(-4, 5), middle + QPoint(-3, 1), middle + QPoint(3, -5),
                                  middle + QPoint(6, -2), middle + QPoint(0, 4)};
            painter.setBrush(SkinColour(SkinRole::Focus));
            painter.setPen(Qt::NoPen);
            painter.drawPolygon(pen, 5);
        }
    }
    if (mark.isEmpty())
        return;
    QFont bold = q->font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(right, int(Qt::AlignCenter), mark);
    painter.setFont(q->font());
}

void DataGrid::Body::PaintCell(QPainter &painter, qint64 r, int c, const QRect &cell)
{
    const QPalette &look = q->palette();
    const bool current = r == row && c == col;
    const bool null = IsRecord(r) && IsNull(r, c);
    QColor ground = look.color(null ? QPalette::AlternateBase : QPalette::Base), ink = look.color(QPalette::Text);
    if (InBlock(r, c) && (!current || row != rowSel || col != colSel || wholeRows)) {
        ground = look.color(QPalette::Highlight);
        ink = look.color(QPalette::HighlightedText);
    }
    painter.fillRect(cell, ground);
    painter.setPen(Blend(ground, look.color(QPalette::Text), 0.25));
    painter.drawLine(cell.topRight(), cell.bottomRight());
    painter.drawLine(cell.bottomLeft(), cell.bottomRight());
    const QRect room = cell.adjusted(kCellMargin, 0, -kCellMargin, -1);
    if (null) {
        QFont slanted = q->font();
        slanted.setItalic(true);
        painter.setFont(slanted);
        painter.setPen(ink);
        painter.drawText(room, int(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine), QStringLiteral("null"));
        painter.setFont(q->font());
    } else if (IsRecord(r)) {
        const QString text = LineOf(Start(r, c, kCellShown));
        const int side = StandsRight(source->Column(c).Type) ? Qt::AlignRight : Qt::AlignLeft;
        painter.setPen(ink);
        painter.drawText(room, int(side | Qt::AlignVCenter | Qt::TextSingleLine),
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
        if (source->CellIsPending(r, c)) { // a corner, so that it is seen which cell was changed
            const QPoint corner[] = {cell.topRight() + QPoint(-6, 0), cell.topRight(), cell.topRight() + QPoint(0, 6)};
            painter.setPen(Qt::NoPen);
            painter.setBrush(SkinColour(SkinRole::Focus));
            painter.drawPolygon(corner, 3);
        }
    }
    if (current) {
        painter.setPen(QPen(q->hasFocus() ? SkinColour(SkinRole::Focus) : ink, q->hasFocus() ? 2 : 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(cell.adjusted(1, 1, -2, -2));
    }
}

void DataGrid::Body::PaintRow(QPainter &painter, qint64 r, const QRect &line)
{
    int x = ColX(0);
    painter.setClipRect(line.adjusted(HeadWidth(), 0, 0, 0));
    for (int c = 0; c < q->Cols() && x <= line.right(); ++c) {
        const QRect cell(x, line.top(), widths[size_t(c)], line.height());
        if (cell.right() >= HeadWidth())
            PaintCell(painter, r, c, cell);
        x += widths[size_t(c)];
    }
    const QRect head(line.left(), line.top(), HeadWidth(), line.height());
    painter.setClipRect(head);
    painter.fillRect(head, q->palette().color(QPalette::Mid));
    painter.setPen(q->palette().color(QPalette::Base));
    painter.drawLine(head.bottomLeft(), head.bottomRight());
    painter.drawLine(head.topRight(), head.bottomRight());
    PaintMark(painter, r, head);
}

void DataGrid::Body::PaintHeads(QPainter &painter, const QRect &area)
{
    const QPalette &look = q->palette();
    const QRect line(0, 0, area.width(), RowHeight());
    painter.setClipRect(line);
    int x = ColX(0);
    for (int c = 0; c < q->Cols() && x <= line.right(); ++c) {
        const QRect cell(x, 0, widths[size_t(c)], line.height());
        painter.fillRect(cell, look.color(QPalette::Mid));
        painter.setPen(look.color(QPalette::BrightText));
        const QRect room = cell.adjusted(kCellMargin, 0, -kCellMargin, -1);
        painter.drawText(room, int(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                         painter.fontMetrics().elidedText(LineOf(q->ColCaption(c)), Qt::ElideRight, room.width()));
        painter.setPen(look.color(QPalette::Base));
        painter.drawLine(cell.topRight(), cell.bottomRight());
        x += widths[size_t(c)];
    }
    const QRect corner(0, 0, HeadWidth(), line.height());
    painter.fillRect(corner, look.color(QPalette::Mid));
    painter.setPen(look.color(QPalette::Base));
    painter.drawLine(corner.topRight(), corner.bottomRight());
}

void DataGrid::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), SkinColour(SkinRole::Editor));
    if (m->frozen) {
        painter.setOpacity(0.6);
        painter.drawPixmap(0, 0, m->picture);
        return;
    }
    const QRect area = viewport()->rect();
    if (!m->source || m->Lines() == 0 || Cols() == 0) { // no cell to show the keyboard on
        if (hasFocus()) {
            painter.setPen(QPen(SkinColour(SkinRole::Focus), 2));
            painter.drawRect(area.adjusted(1, 1, -2, -2));
        }
        if (!m->source)
            return;
    }
    int y = m->RowHeight();
    for (qint64 r = m->top; r < m->Lines() && y < area.height(); ++r, y += m->RowHeight())
        if (y + m->RowHeight() >= event->rect().top() && y <= event->rect().bottom())
            m->PaintRow(painter, r, QRect(0, y, area.width(), m->RowHeight()));
    if (event->rect().top() < m->RowHeight())
        m->PaintHeads(painter, area);
}
