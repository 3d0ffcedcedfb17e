#pragma once
// A surface that writes down what is drawn on it.

#include "visual/logic/DrawSurface.h"

#include <QJsonArray>

class RecordingSurface : public DrawSurface
{
public:
    QJsonArray Lines, Pixels, Texts; // [x1, y1, x2, y2, colour], [x, y], [x, y, number]
    double Width = 0, Height = 0;

    void Line(double X1, double Y1, double X2, double Y2, qint32 Color) override
    {
        Lines.append(QJsonArray{X1, Y1, X2, Y2, Color});
    }
    void Pixel(double X, double Y) override { Pixels.append(QJsonArray{X, Y}); }
    void Print(double X, double Y, const QString &Text) override { Texts.append(QJsonArray{X, Y, Text.toInt()}); }
    void SetScale(double width, double height) override
    {
        Width = width;
        Height = height;
    }
    double ScaleWidth() const override { return Width; }
    double ScaleHeight() const override { return Height; }
};
