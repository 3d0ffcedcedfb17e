#include "visual/logic/JoinEnds.h"

#include <algorithm>
#include <utility>

namespace {

// The edge that faces the other table; tables at the same place both show their left one.
double FacingEdge(const TableFrame &own, const TableFrame &other)
{
    return other.Left > own.Left ? own.Left + own.Width : own.Left;
}

// At the lower edge of the item, or at the table's edge when the item is scrolled out of it.
double HeightOf(const TableFrame &table, const ItemFrame &item)
{
    const double at = table.Top + item.Top + item.Height;
    return at < table.Top ? table.Top : std::min(at, table.Top + table.Height);
}

char16_t MarkerOf(const QString &Operator, bool swapped)
{
    if (Operator == u"Inner Join")
        return u'C';
    const bool left = Operator == u"Left Join";
    return left != swapped ? u'L' : u'R';
}

} // namespace

JoinEnds EndsOfJoin(const TableFrame &first, const ItemFrame &firstItem, const TableFrame &second,
                    const ItemFrame &secondItem, const QString &Operator, double outerWidth, double outerHeight)
{
    JoinEnds ends;
    ends.X1 = FacingEdge(first, second);
    ends.Y1 = HeightOf(first, firstItem);
    ends.X2 = FacingEdge(second, first);
    ends.Y2 = HeightOf(second, secondItem);
    ends.Swapped = ends.X1 > ends.X2;
    if (ends.Swapped) {
        std::swap(ends.X1, ends.X2);
        std::swap(ends.Y1, ends.Y2);
    }
    ends.Marker = MarkerOf(Operator, ends.Swapped);
    ends.MarkerLeft = (ends.X1 + ends.X2) / 2 - outerWidth / 2000 - kMarkerSize / 2;
    ends.MarkerTop = (ends.Y1 + ends.Y2) / 2 - outerHeight / 1000 - kMarkerSize / 2;
    return ends;
}
