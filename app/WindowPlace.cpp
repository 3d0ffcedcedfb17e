#include "app/WindowPlace.h"
#include "frame/Settings.h"
#include "lang/Text.h"
#include <QLocale>
#include <QStringList>
#include <cmath>

static QString SingleText(double number)
{
    return QLocale::c().toString(static_cast<float>(number), 'g', 7);
}

QString PairText(double first, double second)
{
    return SingleText(first) + QLatin1Char(',') + SingleText(second);
}

bool IsWindowPlaced(double width, double height)
{
    return height > 4000 && width > 4000;
}

QRect BroughtBack(const QRect &window, const QList<QRect> &screens)
{
    constexpr int hold = 80, edge = 40; // pixels of the upper edge that can be taken hold of
    const QRect upper(window.topLeft(), QSize(window.width(), qMin(window.height(), edge)));
    const QRect *nearest = nullptr;
    qint64 least = 0;
    for (const QRect &screen : screens) {
        const QRect seen = upper & screen;
        if (seen.width() >= qMin(hold, upper.width()) && seen.height() >= upper.height() / 2)
            return window;
        const QPointF way = QRectF(window).center() - QRectF(screen).center();
        const qint64 distance = std::llround(QPointF::dotProduct(way, way));
        if (!nearest || distance < least) {
            nearest = &screen;
            least = distance;
        }
    }
    if (!nearest)
        return window;
    const auto within = [](int at, int length, int from, int room) {
        return qBound(from, at, from + qMax(0, room - length));
    };
    return QRect(QPoint(within(window.x(), window.width(), nearest->x(), nearest->width()),
                        within(window.y(), window.height(), nearest->y(), nearest->height())),
                 window.size());
}

// A pair that lacks its second number reads as zero there, and so is not taken.
static std::pair<double, double> ReadPair(const QString &key, double first, double second)
{
    const QStringList parts = lang::Split(GetSetting(key, PairText(first, second)), QStringLiteral(","));
    const auto number = [](const QString &text) {
        const double value = lang::Val(text);
        return std::isfinite(value) && std::abs(value) < 1e6 ? value : 0.0;
    };
    return {number(parts.value(0)), number(parts.value(1))};
}

WindowPlace ReadWindowPlace(const QRectF &present, bool *moved)
{
    WindowPlace place;
    const auto [left, top] = ReadPair(QStringLiteral("WindowPos"), present.left(), present.top());
    const auto [width, height] = ReadPair(QStringLiteral("WindowSize"), present.width(), present.height());
    *moved = IsWindowPlaced(width, height);
    place.Place = *moved ? QRectF(left, top, width, height) : present;
    const double state = GetSettingNumber(QStringLiteral("WindowState"), vbMaximized);
    for (const int known : {vbNormal, vbMinimized, vbMaximized})
        if (state == known)
            place.State = known;
    const double split = GetSettingNumber(QStringLiteral("WindowSplit"), place.Split);
    if (std::isfinite(split) && split >= 0 && split < 1e6)
        place.Split = split;
    return place;
}

void WriteWindowPlace(const WindowPlace &place)
{
    SaveSetting(QStringLiteral("WindowState"), QString::number(place.State));
    if (place.State != vbMaximized) {
        SaveSetting(QStringLiteral("WindowPos"), PairText(place.Place.left(), place.Place.top()));
        SaveSetting(QStringLiteral("WindowSize"), PairText(place.Place.width(), place.Place.height()));
    }
    SaveSetting(QStringLiteral("WindowSplit"), SingleText(place.Split));
}
