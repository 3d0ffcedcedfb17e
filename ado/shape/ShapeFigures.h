#pragma once
// SUM, AVG, MIN, MAX, COUNT, STDEV and ANY over the rows of a chapter, and of the chapters below it. Nulls do not
// count.
//
// Whole numbers and decimals are summed exactly; a sum that no whole number can hold is refused (adErrDataConversion),
// never rounded in silence. One thread.

#include "ado/shape/ShapeChapters.h"
#include "ado/shape/ShapeTree.h"

namespace ADODB {

// Whole numbers of 38 digits, which the language itself does not name.
__extension__ typedef __int128 WideInt;
__extension__ typedef unsigned __int128 WideNatural;

// The type of the field that a figure over a field of this type gives.
ColumnInfo FigureColumn(ShapeFigure what, const ColumnInfo &over);

// Takes values one by one and gives the figure over them.
class Figure
{
public:
    Figure(ShapeFigure what, const ColumnInfo &over) : m_what(what), m_over(over) {}
    void Take(const Value &value);
    Value Result() const; // null over no values, but for COUNT

private:
    void Add(const Value &value);
    const ShapeFigure m_what;
    const ColumnInfo m_over;
    qint64 m_count = 0;
    Value m_best; // of MIN, MAX and ANY
    WideInt m_whole = 0;
    int m_scale = 0; // digits of m_whole behind the point
    double m_real = 0, m_mean = 0, m_squares = 0;
};

} // namespace ADODB
