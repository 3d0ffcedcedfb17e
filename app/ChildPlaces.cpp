#include "app/ChildPlaces.h"
#include "controls/Twips.h"
#include "frame/Settings.h"
#include "lang/Text.h"
#include <QStringList>
#include <cmath>

static constexpr QSize s_least(160, 90); // pixels; less cannot be used
static const QString s_maximised = QStringLiteral("ChildrenMaximised");

static QString PlaceKey(const QString &form)
{
    return QStringLiteral("Place_") + form;
}

std::optional<QRect> ReadChildPlace(const QString &form, const QSize &room)
{
    const QStringList parts = lang::Split(GetSetting(PlaceKey(form)), QStringLiteral(","));
    if (parts.size() != 4)
        return std::nullopt;
    int pixels[4];
    for (int i = 0; i < 4; ++i) {
        const double twips = lang::Val(parts[i]);
        if (!std::isfinite(twips) || std::abs(twips) > 1e6)
            return std::nullopt;
        pixels[i] = ToPixels(std::lround(twips));
    }
    QRect place(pixels[0], pixels[1], pixels[2], pixels[3]);
    if (place.width() < s_least.width() || place.height() < s_least.height())
        return std::nullopt;
    place.setSize(place.size().boundedTo(room.expandedTo(s_least)));
    place.moveLeft(qBound(0, place.left(), qMax(0, room.width() - place.width())));
    place.moveTop(qBound(0, place.top(), qMax(0, room.height() - place.height())));
    return place;
}

void WriteChildPlace(const QString &form, const QRect &place)
{
    QStringList parts;
    for (const int pixels : {place.x(), place.y(), place.width(), place.height()})
        parts << QString::number(ToTwips(pixels));
    SaveSetting(PlaceKey(form), parts.join(QLatin1Char(',')));
}

bool ReadChildrenMaximised()
{
    return GetSettingNumber(s_maximised, 0) == 1;
}

void WriteChildrenMaximised(bool maximised)
{
    SaveSetting(s_maximised, maximised ? QStringLiteral("1") : QStringLiteral("0"));
}
