#pragma once
// Where a join is drawn: its two ends at the edges of the tables, the way between them, the marker of its kind. Pure;
// lengths in twips.

#include "visual/logic/MapJoins.h"
#include "visual/logic/MapTables.h"
#include "visual/logic/StepRoute.h"

#include <QString>

// The frame of a table on the surface, and of an item in it, measured from the table's top; a scrolled item may lie
// above 0 or below the table.
struct TableFrame
{
    double Left = 0, Top = 0, Width = 0, Height = 0;
};
struct ItemFrame
{
    double Top = 0, Height = 0;
};

constexpr double kMarkerSize = 300;
constexpr int kJoinWidth = 3; // pixels

struct JoinEnds
{
    double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0; // X1 is not right of X2
    bool Swapped = false;                  // the first end belongs to the second table
    char16_t Marker = 0;                   // 'L', 'R': the side of the outer table as drawn; 'C'
    double MarkerLeft = 0, MarkerTop = 0;

    StepLines Lines() const { return StepRoute(X1, Y1, X2, Y2); }
};

// outerWidth and outerHeight are those of the surface with its frame.
JoinEnds EndsOfJoin(const TableFrame &first, const ItemFrame &firstItem, const TableFrame &second,
                    const ItemFrame &secondItem, const QString &Operator, double outerWidth, double outerHeight);
