// How a table map is painted: lines below, tables over them from the lowest to the topmost.

#include "controls/Skin.h"
#include "visual/MapSurface.h"
#include <QPaintEvent>
#include <QPainter>

namespace {

struct MapInk
{
    QColor ground, text, heading, headingText, frame, mark, selected, selectedText;
};

MapInk InkOf(const MapLook &look, bool gray)
{
    if (gray)
        return {MapColour(look.TableBack),
                MapColour(look.TableFore),
                QColor(224, 224, 224),
                Qt::black,
                Qt::black,
                Qt::black,
                QColor(200, 200, 200),
                Qt::black};
    return {MapColour(look.TableBack),        MapColour(look.TableFore),          SkinColour(SkinRole::Button),
            SkinColour(SkinRole::ButtonText), SkinColour(SkinRole::Editor),       SkinColour(SkinRole::Focus),
            SkinColour(SkinRole::Selection),  SkinColour(SkinRole::SelectionText)};
}

constexpr int kTextLeft = 5, kTextBesideCheck = 20;

void DrawCheck(QPainter &painter, const QRect &box, bool checked, const QColor &colour)
{
    painter.setPen(colour);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    if (!checked)
        return;
    painter.setPen(QPen(colour, 2));
    painter.drawPolyline(QPolygonF{box.topLeft() + QPointF(2.5, 5.5), box.topLeft() + QPointF(4.5, 8),
                                   box.topLeft() + QPointF(8.5, 2.5)});
}

} // namespace

void MapSurface::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), MapColour(m.look.SurfaceBack));
    m.layers.Paint(painter, event->rect());
    if (m.keyJoin && hasFocus()) {
        painter.setPen(QPen(InkOf(m.look, m.gray).mark, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(m.layers.Bounds(m.keyJoin));
    }
    for (int index : m.tables.Stack()) {
        const MapTable &table = *m.tables.At(index);
        if (event->region().intersects(m.BoxRect(table)))
            PaintTable(painter, table);
    }
    if (hasFocus() && !m.keyJoin && !m.tables.At(m.tables.CurrentTable)) { // no table to carry the mark
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(InkOf(m.look, m.gray).mark, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    PaintDrag(painter);
}

void MapSurface::PaintTable(QPainter &painter, const MapTable &table) const
{
    const MapInk ink = InkOf(m.look, m.gray);
    const QRect box = m.BoxRect(table);
    const bool current = table.Index == m.tables.CurrentTable && !m.keyJoin;
    painter.fillRect(box, ink.ground);
    const QRect heading(box.left() + 1, box.top() + 1, box.width() - 2, m.RowHeight());
    painter.fillRect(heading, ink.heading);
    painter.setPen(ink.headingText);
    const auto text = [&](const QRect &place, const QString &words) {
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         fontMetrics().elidedText(words, Qt::ElideRight, place.width()));
    };
    text(heading.adjusted(kTextLeft, 0, -kTextLeft, 0), table.Alias);
    for (int item = 1; size_t(item) <= table.Items.size(); ++item) {
        const MapItem &field = table.Items[size_t(item - 1)];
        const QRect row = m.ItemRect(table, item);
        const bool chosen = current && item == table.Selected;
        if (chosen && hasFocus())
            painter.fillRect(row, ink.selected);
        const QColor colour = chosen && hasFocus() ? ink.selectedText : ink.text;
        if (m.tables.CheckBoxes)
            DrawCheck(painter, m.CheckRect(row), field.Checked, colour);
        painter.setPen(colour);
        text(row.adjusted(m.tables.CheckBoxes ? kTextBesideCheck : kTextLeft, 0, -2, 0), field.Text);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(ink.frame);
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    if (current && hasFocus()) {
        painter.setPen(QPen(ink.mark, 2));
        painter.drawRect(box.adjusted(1, 1, -1, -1));
    }
}

// The field on its way, from its item to the pointer; by keyboard the item that waits for its other end.
void MapSurface::PaintDrag(QPainter &painter) const
{
    const MapTable *table = m.tables.At(m_dragging ? m.dragSource : m.keySource);
    if (!table)
        return;
    const QRect from = m.ItemRect(*table, table->Selected);
    painter.setPen(QPen(InkOf(m.look, m.gray).mark, 2, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(from.adjusted(1, 1, -2, -2));
    if (m_dragging)
        painter.drawLine(from.center(), m_at);
}
