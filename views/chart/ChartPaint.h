#pragma once
// Paints a laid-out chart: on the screen, into a picture, on paper, into a file of vectors. It stands on white, since
// it is copied, saved and printed as it stands. Interface thread; nothing raises.

#include "views/logic/ChartLayout.h"
#include <QColor>
#include <QFont>
#include <QImage>

class QPainter;

enum class ChartPalette
{
    Plain,
    ForAllEyes // told apart by those too who see some colours alike
};
QColor ChartColour(ChartPalette palette, int number);

class ChartPainter
{
public:
    // Letters are as large as the font's, in dots of so many to the inch.
    explicit ChartPainter(const QFont &font, double dotsPerInch = 96);

    ChartMeasure Measure() const;
    void Paint(QPainter &painter, const ChartPicture &picture, ChartPalette palette) const;
    QImage Paint(const ChartPicture &picture, ChartPalette palette, double scale = 1) const;
    const QFont &Font(ChartFace face) const { return m_fonts[size_t(face)]; }

private:
    QFont m_fonts[3]; // by face
};
