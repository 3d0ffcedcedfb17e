#pragma once
// What can be read in a picture: the colours of a text and of its ground, as they were painted.

#include "controls/Skin.h"
#include <QHash>
#include <QImage>
#include <QList>
#include <QWidget>

struct TextReading
{
    QColor Text, Ground;
    double Ratio = 1; // the least that the text has against the ground of any line of pixels that it crosses
};

inline QImage PictureOf(QWidget &widget, int scale = 2)
{
    QImage picture(widget.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::magenta); // what nobody paints is seen
    widget.render(&picture);
    return picture;
}

// The rectangle is in logical pixels of the picture, and holds one text on one ground, which may be shaded from above
// to below; the ground is what most of a line shows.
inline TextReading ReadText(const QImage &picture, const QRect &rect)
{
    using Counts = QHash<QRgb, int>;
    const auto most = [](const Counts &counts) {
        auto found = counts.cbegin();
        for (auto i = counts.cbegin(); i != counts.cend(); ++i)
            if (i.value() > found.value())
                found = i;
        return QColor(found.key());
    };
    const int scale = int(picture.devicePixelRatio());
    const QRect area = QRect(rect.topLeft() * scale, rect.size() * scale) & picture.rect();
    Counts all;
    QList<Counts> lines(area.height());
    for (int y = 0; y < area.height(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) {
            const QRgb pixel = picture.pixel(x, area.top() + y);
            ++all[pixel];
            ++lines[y][pixel];
        }
    TextReading reading;
    if (all.isEmpty())
        return reading;
    reading.Ground = most(all);
    for (auto i = all.cbegin(); i != all.cend(); ++i)
        if (const double ratio = Contrast(QColor(i.key()), reading.Ground); ratio > reading.Ratio && i.value() >= 4) {
            reading.Ratio = ratio;
            reading.Text = QColor(i.key());
        }
    for (const Counts &line : lines)
        if (reading.Text.isValid() && line.contains(reading.Text.rgb()) && most(line) != reading.Text)
            reading.Ratio = std::min(reading.Ratio, Contrast(reading.Text, most(line)));
    return reading;
}
