#pragma once
// The numbers of a map's two scroll bars and of the two timers that scroll by themselves while a table is carried to an
// edge. The bars scroll no canvas: a change of one shifts all tables. Pure; lengths in twips.

#include "visual/logic/MapTables.h"

#include <QString>

#include <span>

// One bar. Tag is the value that the tables were last shifted to, as text.
struct MapScrollBar
{
    bool Enabled = false;
    int Value = 0;
    int Max = 0;
    int LargeChange = 1;
    QString Tag = QStringLiteral("0");
};

struct MapRanges
{
    int X = 0, Y = 0;
};

// How far the tables reach over the surface on both sides together; their places are cut to whole numbers.
struct MapExtent
{
    MapRanges Ranges;
    int MinLeft = 0, MinTop = 0;
};
MapExtent MeasureTables(double width, double height, std::span<const MapTable *const> tables);

// A bar for a range: off below 1. The vertical one keeps its large change for a range of 9 and less.
void FitBar(MapScrollBar &bar, int range, bool vertical);
// The value that stands for where the tables are, so that what lies left of the surface can be brought back. No shift.
void SettleBar(MapScrollBar &bar, int smallest);

// A bar was moved: by how much all tables go, and the tag follows.
int ShiftOf(MapScrollBar &bar);

// What the timers are to do while a table is carried: 'L' and 'R', 'T' and 'B', or 0 for off.
struct CarryEdges
{
    char LeftRight = 0, TopBottom = 0;
};
CarryEdges EdgesAt(double x, double y, double width, double height);

// One tick of a timer; forward for 'R' and 'B'. False: the end is reached and the timer goes off.
bool ScrollTick(MapScrollBar &bar, bool forward);

constexpr int kAutoScrollMilliseconds = 100;
