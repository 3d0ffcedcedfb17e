#include "views/logic/ChartHit.h"

#include "lang/Text.h"
#include "views/logic/ChartMarks.h"
#include "views/logic/ChartWords.h"
#include <cmath>

namespace {

constexpr int kMostLines = 16;      // of values that are read out
constexpr double kNearest = 12;     // pixels to a point
constexpr qsizetype kMostText = 60; // characters of a label

QString ShortText(const QString &text)
{
    const QString flat = FlatText(text);
    return flat.size() > kMostText ? flat.left(kMostText) + QChar(0x2026) : flat;
}

QString RowName(const QString &label, qint64 row)
{
    const QString name = ShortText(label);
    return name.isEmpty() ? QStringLiteral("Row %1").arg(row + 1) : name;
}

QString ValueText(double value)
{
    if (std::isnan(value))
        return QStringLiteral("0 (no number)");
    return std::isinf(value) ? QStringLiteral("infinite") : lang::CStr(value);
}

ChartHit HitSlice(const ChartPicture &picture, const QPointF &position)
{
    for (const ChartSlice &slice : picture.Slices) {
        const QPointF from = position - slice.Pie.center();
        if (std::hypot(from.x(), from.y()) > slice.Pie.width() / 2)
            continue;
        double angle = std::atan2(from.x(), -from.y()) * 180 / 3.14159265358979323846;
        angle += angle < 0 ? 360 : 0;
        if (angle < slice.Start || angle > slice.Start + slice.Span)
            continue;
        const QString share = lang::CStr(lang::Round(slice.Share * 100, 2)) + u'%';
        return {ShortText(slice.Label) + u'\n' + ShortText(slice.Column) + QLatin1String(": ") +
                    lang::CStr(slice.Value) + QLatin1String(" (") + share + u')',
                position, false};
    }
    return {};
}

ChartHit HitPoint(const ChartData &data, const ChartPicture &picture, const QPointF &position)
{
    double best = kNearest * kNearest;
    qint64 bestRow = -1;
    int bestColumn = 0;
    QPointF at;
    for (int column = 1; column < data.ColumnCount(); ++column)
        for (qint64 row = 0; row < data.RowCount(); ++row) {
            const double x = data.Values(0)[row], y = data.Values(column)[row];
            if (!IsDrawn(x, false) || !IsDrawn(y, picture.Up.IsLogarithmic()))
                continue;
            const QPointF point(picture.Across.At(Drawn(x)), picture.Up.At(Drawn(y)));
            const QPointF away = point - position;
            if (const double distance = QPointF::dotProduct(away, away); distance < best) {
                best = distance;
                bestRow = row;
                bestColumn = column;
                at = point;
            }
        }
    if (bestRow < 0)
        return {};
    return {RowName(data.Label(bestRow), bestRow) + u'\n' + ShortText(data.Heading(0)) + QLatin1String(": ") +
                ValueText(data.Values(0)[bestRow]) + u'\n' + ShortText(data.Heading(bestColumn)) + QLatin1String(": ") +
                ValueText(data.Values(bestColumn)[bestRow]),
            at, false};
}

} // namespace

qint64 RowAtPixel(const ChartPicture &picture, double x)
{
    if (picture.RowCount < 1 || !picture.HasAxes)
        return -1;
    const double slot = (x - picture.Plot.left()) / picture.SlotWidth();
    return picture.FirstRow + std::clamp(qint64(std::floor(slot)), qint64(0), picture.RowCount - 1);
}

ChartHit HitChart(const ChartData &data, const ChartOptions &options, const ChartPicture &picture,
                  const QPointF &position)
{
    if (options.Type == chart2DPie)
        return HitSlice(picture, position);
    if (!picture.HasAxes || !picture.Plot.contains(position))
        return {};
    if (options.Type == chart2DXY)
        return picture.RowCount > 0 ? HitPoint(data, picture, position) : ChartHit();
    const qint64 row = RowAtPixel(picture, position.x());
    if (row < 0)
        return {};
    QString text = RowName(data.Label(row), row);
    const int columns = data.ColumnCount();
    for (int column = 0; column < std::min(columns, kMostLines); ++column)
        text += u'\n' + ShortText(data.Heading(column)) + QLatin1String(": ") + ValueText(data.Values(column)[row]);
    if (columns > kMostLines)
        text += QStringLiteral("\n%1 more").arg(columns - kMostLines);
    return {text, QPointF(picture.RowX(row), position.y()), true};
}
