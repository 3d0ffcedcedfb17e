// Where things lie: boxes and items on the surface, bars, the layers of the joins, and tables that are carried.

#include "controls/Twips.h"
#include "visual/MapSurface.h"
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

namespace {

// The table that all others are made from, twips.
constexpr double kTemplateWidth = 2250, kTemplateHeight = 1800;
constexpr double kLine = 1.3;
constexpr int kFrame = 1, kCheck = 11, kCheckLeft = 4; // pixels
constexpr int kBarStep = 300;                          // twips that an arrow of a bar goes

int Pixel(double twips)
{
    return qRound(twips / TwipsPerPixel);
}

} // namespace

int ucTableMap::Body::RowHeight() const
{
    return int(surface->fontMetrics().height() * kLine);
}

MapMeasures ucTableMap::Body::Measures() const
{
    return {double(ToTwips(surface->width())), double(ToTwips(surface->height())), kTemplateWidth, kTemplateHeight,
            double(ToTwips(surface->fontMetrics().height()))};
}

QRect ucTableMap::Body::BoxRect(const MapTable &table) const
{
    return {Pixel(table.Left), Pixel(table.Top), Pixel(table.Width), Pixel(table.Height)};
}

QRect ucTableMap::Body::ItemRect(const MapTable &table, int item) const
{
    const QRect box = BoxRect(table).adjusted(kFrame, kFrame, -kFrame, -kFrame);
    return QRect(box.left(), box.top() + item * RowHeight(), Pixel(table.ColumnWidth) - 2 * kFrame, RowHeight()) & box;
}

QRect ucTableMap::Body::CheckRect(const QRect &item) const
{
    return {item.left() + kCheckLeft, item.top() + (item.height() - kCheck) / 2, kCheck, kCheck};
}

MapHit ucTableMap::Body::At(const QPoint &pixel) const
{
    const std::vector<int> &stack = tables.Stack();
    for (auto index = stack.rbegin(); index != stack.rend(); ++index) {
        const MapTable &table = *tables.At(*index);
        const QRect box = BoxRect(table);
        if (!box.contains(pixel))
            continue;
        const int row = (pixel.y() - box.top() - kFrame) / RowHeight();
        MapHit hit{row < 1 ? MapHit::Heading : MapHit::Blank, *index};
        if (row >= 1 && size_t(row) <= table.Items.size()) {
            hit.what = MapHit::Item;
            hit.item = row;
            hit.check = tables.CheckBoxes && CheckRect(ItemRect(table, row)).adjusted(-3, -3, 3, 3).contains(pixel);
        }
        return hit;
    }
    // A pixel is hit in its middle: layers count from corner to corner.
    if (const int join = layers.At(QPointF(pixel) + QPointF(0.5, 0.5)))
        return {MapHit::Join, 0, 0, join};
    return {};
}

void ucTableMap::Body::LayOut()
{
    const int thick = map->VScroll1->sizeHint().width(), high = map->HScroll1->sizeHint().height();
    const int width = std::max(map->width() - thick, 0), height = std::max(map->height() - high, 0);
    surface->setGeometry(0, 0, width, height);
    map->VScroll1->setGeometry(width, 0, thick, height);
    map->HScroll1->setGeometry(0, height, width, high);
    layers.Resize(ToTwips(width), ToTwips(height));
    MeasureBars();
}

void ucTableMap::Body::MeasureBars()
{
    std::vector<const MapTable *> all;
    for (int index : tables.Numbers())
        all.push_back(tables.At(index));
    const MapExtent extent = MeasureTables(ToTwips(surface->width()), ToTwips(surface->height()), all);
    FitBar(across, extent.Ranges.X, false);
    FitBar(down, extent.Ranges.Y, true);
    SettleBar(across, extent.MinLeft);
    SettleBar(down, extent.MinTop);
    const auto show = [](QScrollBar *bar, const MapScrollBar &model) {
        const QSignalBlocker quiet(bar); // the tables stay where they are
        bar->setEnabled(model.Enabled);
        bar->setRange(0, model.Enabled ? model.Max : 0);
        bar->setPageStep(std::max(model.LargeChange, 1));
        bar->setSingleStep(std::clamp(model.Max, 1, kBarStep));
        bar->setValue(model.Value);
        SetTag(bar, model.Tag);
    };
    show(map->HScroll1, across);
    show(map->VScroll1, down);
}

void ucTableMap::Body::BarMoved(Qt::Orientation orientation, int value)
{
    MapScrollBar &bar = orientation == Qt::Horizontal ? across : down;
    bar.Value = value;
    const int delta = ShiftOf(bar);
    SetTag(orientation == Qt::Horizontal ? map->HScroll1 : map->VScroll1, bar.Tag);
    Shift(orientation == Qt::Horizontal ? delta : 0, orientation == Qt::Horizontal ? 0 : delta);
}

void ucTableMap::Body::Shift(double deltaX, double deltaY)
{
    tables.Shift(deltaX, deltaY);
    layers.Shift(deltaX, deltaY); // the ends of all joins go as their tables do: none is looked for anew
    startLeft += deltaX;          // the place to give a carried one back to goes with the others
    startTop += deltaY;
    const int x = int(deltaX), y = int(deltaY);
    if (x % TwipsPerPixel == 0 && y % TwipsPerPixel == 0)
        surface->scroll(x / TwipsPerPixel, y / TwipsPerPixel); // whole pixels: what shows is moved, the rest is painted
    else
        surface->update();
}

void ucTableMap::Body::FollowJoins()
{
    layers.Follow(joins);
    if (keyJoin && !layers.PF(keyJoin))
        keyJoin = 0;
    DrawJoins();
    emit map->JoinsChanged();
}

void ucTableMap::Body::DrawJoins(int table)
{
    const int row = ToTwips(RowHeight()), frame = ToTwips(kFrame);
    const ItemFrameOf itemFrame = [=](const MapTable &, int item) {
        return ItemFrame{double(frame + item * row), double(row)};
    };
    if (!tables.CarriedTable)
        layers.DrawJoins(joins, tables, itemFrame, ToTwips(surface->width()), ToTwips(surface->height()), table);
    surface->update();
}

void ucTableMap::Body::StartCarry(int table)
{
    const MapTable *carried = tables.At(table);
    if (!carried)
        return;
    EndCarry();
    startLeft = carried->Left;
    startTop = carried->Top;
    tables.StartCarry(table);
    layers.ClearJoinLayers();
    layers.Enable(false);
    MeasureBars();
    surface->update();
}

void ucTableMap::Body::CarryTo(const QPoint &pixel)
{
    const MapTable *carried = tables.At(tables.CarriedTable);
    if (!carried)
        return;
    const QRect before = BoxRect(*carried);
    const double x = ToTwips(pixel.x()), y = ToTwips(pixel.y());
    tables.MoveCarried(x, y);
    surface->update(before);
    surface->update(BoxRect(*carried));
    const CarryEdges edges = EdgesAt(x, y, ToTwips(surface->width()), ToTwips(surface->height()));
    const auto set = [](QTimer *timer, char edge) {
        if (!edge) {
            timer->stop();
            return;
        }
        SetTag(timer, QString(QLatin1Char(edge)));
        if (!timer->isActive())
            timer->start();
    };
    set(map->tmrAutoScrollLR, edges.LeftRight);
    set(map->tmrAutoScrollTB, edges.TopBottom);
}

void ucTableMap::Body::EndCarry()
{
    map->tmrAutoScrollLR->stop();
    map->tmrAutoScrollTB->stop();
    if (!tables.CarriedTable)
        return;
    tables.EndCarry();
    layers.Enable(true);
    MeasureBars(); // what was carried off the surface can be brought back at once
    DrawJoins();
}

void ucTableMap::Body::GiveBack()
{
    if (MapTable *carried = tables.At(tables.CarriedTable)) {
        carried->Left = startLeft;
        carried->Top = startTop;
    }
    EndCarry();
}

void ucTableMap::Body::Tick(QTimer *timer, MapScrollBar &bar, char forward)
{
    const bool moved = bar.Enabled && ScrollTick(bar, Tag(timer) == QLatin1Char(forward));
    if (!moved)
        timer->stop();
    else
        (&bar == &across ? map->HScroll1 : map->VScroll1)->setValue(bar.Value); // shifts the tables
}

void ucTableMap::Body::CarryBy(int deltaX, int deltaY)
{
    MapTable *table = tables.At(tables.CurrentTable);
    if (!table)
        return;
    table->Left += deltaX;
    table->Top += deltaY;
    MeasureBars();
    DrawJoins(table->Index);
}
