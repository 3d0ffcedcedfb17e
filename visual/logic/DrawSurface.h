#pragma once
// What the routes are drawn on: a window's layer when the program runs, a recorder in the tests. Lengths are in the
// surface's own scale; colours are 0xBBGGRR, 0 is black.

#include <QString>

class DrawSurface
{
public:
    virtual ~DrawSurface() = default;

    virtual void Line(double X1, double Y1, double X2, double Y2, qint32 Color) = 0;
    virtual void Pixel(double X, double Y) = 0;
    virtual void Print(double X, double Y, const QString &Text) = 0;

    // How many units the surface counts from its left to its right edge, and from top to bottom. A scale of 0 is taken
    // as 1.
    virtual void SetScale(double Width, double Height) = 0;
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
};
