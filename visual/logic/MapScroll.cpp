#include "visual/logic/MapScroll.h"

#include "lang/Text.h"

#include <algorithm>

namespace {

constexpr double kMargin = 500;
constexpr int kRangeWithoutLargeChange = 9;

int Whole(double number)
{
    return int(number);
}

} // namespace

MapExtent MeasureTables(double width, double height, std::span<const MapTable *const> tables)
{
    const int w = Whole(width), h = Whole(height);
    int left = w, top = h, right = 0, bottom = 0;
    for (const MapTable *table : tables) {
        left = std::min(left, Whole(table->Left));
        top = std::min(top, Whole(table->Top));
        right = std::max(right, Whole(table->Left + table->Width));
        bottom = std::max(bottom, Whole(table->Top + table->Height));
    }
    return {{std::max(right - w, 0) + std::max(-left, 0), std::max(bottom - h, 0) + std::max(-top, 0)}, left, top};
}

void FitBar(MapScrollBar &bar, int range, bool vertical)
{
    bar.Enabled = range >= 1;
    if (!bar.Enabled) {
        bar.Tag = QStringLiteral("0");
        return;
    }
    // A tenth of a range under 6 rounds to nothing, and a step of nothing would never arrive.
    if (!vertical || range > kRangeWithoutLargeChange)
        bar.LargeChange = std::max(1, int(lang::CLng(range / 10.0)));
    bar.Max = range;
}

void SettleBar(MapScrollBar &bar, int smallest)
{
    bar.Value = bar.Enabled ? std::max(-smallest, 0) : 0;
    bar.Tag = QString::number(bar.Value);
}

int ShiftOf(MapScrollBar &bar)
{
    const int delta = int(lang::Val(bar.Tag)) - bar.Value;
    bar.Tag = QString::number(bar.Value);
    return delta;
}

CarryEdges EdgesAt(double x, double y, double width, double height)
{
    CarryEdges edges;
    if (x <= kMargin || x >= width - kMargin)
        edges.LeftRight = x <= kMargin ? 'L' : 'R';
    if (y <= kMargin || y >= height - kMargin)
        edges.TopBottom = y <= kMargin ? 'T' : 'B';
    return edges;
}

bool ScrollTick(MapScrollBar &bar, bool forward)
{
    // The last step shrinks, so that it lands on the end.
    const int room = forward ? bar.Max - bar.Value : bar.Value;
    const int step = std::min(bar.LargeChange, room);
    if (step <= 0)
        return false;
    bar.Value += forward ? step : -step;
    return true;
}
