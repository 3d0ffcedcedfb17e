#pragma once
// Twips are the unit in which sizes are stored and compared: always 15 to a logical pixel, whatever the screen.
// Tag is the free text that every window, control and menu item carries. Interface thread; nothing raises.

#include <QObject>
#include <QString>
#include <QVariant>

inline constexpr int TwipsPerPixel = 15;

constexpr int ToPixels(qint64 twips)
{
    return int(twips / TwipsPerPixel);
}
constexpr int ToTwips(qint64 pixels)
{
    return int(pixels * TwipsPerPixel);
}

inline QString Tag(const QObject *object)
{
    return object ? object->property("Tag").toString() : QString();
}
inline void SetTag(QObject *object, const QString &text)
{
    if (object)
        object->setProperty("Tag", text);
}
