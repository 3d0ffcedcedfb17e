#pragma once
// What is drawn inside of a chart's axes, and the pies. For ChartLayout alone, which has laid the scales by then.

#include "views/logic/ChartLayout.h"

constexpr bool Is3D(int type)
{
    return type < 10 && type % 2 == 0;
}
// Can the value be drawn? What held no number is drawn as 0.
bool IsDrawn(double value, bool logarithmic);
double Drawn(double value);

void AddAxisMarks(ChartPicture &picture, const ChartData &data, const ChartOptions &options);

struct PieSlices
{
    std::vector<qint64> Rows; // that are a slice of their own, in their order
    std::vector<qint64> Others;
    QStringList Labels; // of all slices, the joined one last
};
PieSlices ChooseSlices(const ChartData &data, const std::vector<int> &columns);
// A pie for each column in the area; labels beside the slices where they have room. Gives how many pies had none.
int AddPies(ChartPicture &picture, const ChartData &data, const ChartOptions &options, const PieSlices &slices,
            const std::vector<int> &columns, const QRectF &area, const ChartMeasure &measure);
