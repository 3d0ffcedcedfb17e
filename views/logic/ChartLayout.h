#pragma once
// Where everything in a chart stands: texts, axes, marks and legend as rectangles and points, without a pixel painted.
//
// Lengths are pixels from the upper left corner, letters are points. No text meets another one, nor the legend, nor the
// edge: what has no room is cut with dots, then left out; labels of rows thin out evenly. Where many rows share a pixel
// the least and the largest of them are kept. So the number of marks depends on the size, not on the rows.
// Pure values: any thread that owns the data; nothing raises but for want of memory.

#include "views/logic/ChartData.h"
#include "views/logic/ChartScale.h"
#include <QLineF>
#include <QRectF>

enum class ChartFace
{
    Title,
    Label, // of rows and values, of the legend
    Note,  // foot note and notices
};
inline constexpr double kLeastPoints = 7; // of any text
double FacePoints(ChartFace face, double basePoints);
using ChartMeasure = std::function<QSizeF(const QString &text, ChartFace face)>;

struct ChartOptions
{
    int Type = chart2DBar;
    bool ShowLegend = false;
    QString Title, FootNote;
    bool Logarithmic = false;
    qint64 FirstRow = 0, Rows = -1; // the part that is shown; -1 for all behind the first
};

enum class ChartRole
{
    Title,
    FootNote,
    RowLabel,
    ValueLabel,
    LegendEntry,
    SliceLabel,
    PieTitle,
    Notice,
};
struct ChartText
{
    QString Text;
    QRectF Rect;
    ChartFace Face = ChartFace::Label;
    ChartRole Role = ChartRole::RowLabel;
};

enum class ChartShade
{
    Full,
    Light,  // the top of a body
    Dark,   // its side, and the band of a line
    Sheer,  // what lies behind shows
    Outline // the line around it
};
struct ChartMark
{
    enum Kind
    {
        Boxes,
        Polygon,
        Polyline,
        Band, // from the line of points back to the line behind it, kDepth away
        Dots,
        Slice, // a part of the ellipse in Boxes[0], from Start, over Span; degrees, counted as a clock turns, 0 at its
               // top
    };
    Kind What = Boxes;
    int Colour = 0; // number in the palette, taken round
    ChartShade Shade = ChartShade::Full;
    std::vector<QPointF> Points;
    std::vector<QRectF> Rects;
    double Start = 0, Span = 0, Size = 0; // Size: of dots
};

inline constexpr QPointF kDepth{9, -7}; // how far a body reaches back

struct ChartSlice // of a pie, for whoever asks what lies under the pointer
{
    QRectF Pie;
    double Start = 0, Span = 0;
    QString Label, Column;
    double Value = 0, Share = 0;
};

struct ChartPicture
{
    QSizeF Size;
    QRectF Plot, Legend; // empty where there is none
    bool HasAxes = false;
    ChartScale Across, Up;             // Across: the values of an XY chart
    qint64 FirstRow = 0, RowCount = 0; // the rows that stand in Plot from left to right, each in its slot
    std::vector<QLineF> Grid, Axes;
    std::vector<ChartText> Texts;
    std::vector<ChartMark> Marks, Swatches;
    std::vector<ChartSlice> Slices;
    QString Notice; // what could not be shown, and why

    double SlotWidth() const { return RowCount > 0 ? Plot.width() / double(RowCount) : 0; }
    double RowX(qint64 row) const { return Plot.left() + (double(row - FirstRow) + 0.5) * SlotWidth(); }
};

inline constexpr int kMostColumns = 256; // that can be drawn
inline constexpr int kMostSlices = 24;

ChartPicture LayOutChart(const ChartData &data, const ChartOptions &options, const QSizeF &size,
                         const ChartMeasure &measure);
