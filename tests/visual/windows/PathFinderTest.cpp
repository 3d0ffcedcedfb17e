#include "visual/ucPathFinder.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr int kSide = 100;
constexpr int kSideTwips = kSide * 15;

// A layer of 100 pixels square, scaled in twips.
struct Layer : ucPathFinder
{
    Layer()
    {
        Resize(kSideTwips, kSideTwips);
        SetScale(kSideTwips, kSideTwips);
        DrawWidth = 3;
    }
    QImage Picture(double ratio = 1) const
    {
        QImage image(int(kSide * ratio), int(kSide * ratio), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        QPainter painter(&image);
        Paint(painter);
        return image;
    }
};

int Coloured(const QImage &image, QRgb colour)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
}

void Step(Layer &layer)
{
    layer.X1 = 150; // 10, 10 to 90, 60 pixels: bent at 50
    layer.Y1 = 150;
    layer.X2 = 1350;
    layer.Y2 = 900;
    layer.DrawStep();
}

} // namespace

TEST(PathFinder, DrawsTheStepInBlackThreePixelsWide)
{
    Layer layer;
    layer.Look.Fore = 0x0000FF; // plays no part
    Step(layer);
    const QImage picture = layer.Picture();
    for (const QPoint &at : {QPoint(30, 10), QPoint(50, 30), QPoint(70, 60), QPoint(30, 9), QPoint(30, 11)})
        EXPECT_EQ(picture.pixel(at), qRgb(0, 0, 0)) << at.x() << "," << at.y();
    for (const QPoint &at : {QPoint(30, 13), QPoint(30, 7), QPoint(53, 30), QPoint(70, 10), QPoint(20, 60)})
        EXPECT_EQ(picture.pixel(at), qRgb(255, 255, 255)) << at.x() << "," << at.y();
    EXPECT_NEAR(Coloured(picture, qRgb(0, 0, 0)), 3 * (40 + 50 + 40), 20);
}

TEST(PathFinder, DrawsTheSameAtTwiceTheResolution)
{
    Layer layer;
    Step(layer);
    const QImage picture = layer.Picture(2);
    EXPECT_EQ(picture.pixel(60, 20), qRgb(0, 0, 0));
    EXPECT_EQ(picture.pixel(60, 27), qRgb(255, 255, 255));
    EXPECT_NEAR(Coloured(picture, qRgb(0, 0, 0)), 4 * Coloured(layer.Picture(), qRgb(0, 0, 0)), 60);
}

TEST(PathFinder, TakesTheMouseWhereItHasAPixelAndNowhereElse)
{
    Layer layer;
    EXPECT_FALSE(layer.Covers({30, 10}));
    Step(layer);
    EXPECT_TRUE(layer.Covers({30, 10}));
    EXPECT_TRUE(layer.Covers({30, 11}));
    EXPECT_FALSE(layer.Covers({30, 13}));
    EXPECT_TRUE(layer.Covers({50, 35}));
    EXPECT_FALSE(layer.Covers({60, 35})); // inside the bend, off the line
    layer.DrawMarker(u'C', 600, 375);     // 40 to 60, 25 to 45 pixels
    EXPECT_TRUE(layer.Covers({58, 35}));
    EXPECT_FALSE(layer.Covers({62, 35}));
    layer.Enabled = false;
    EXPECT_FALSE(layer.Covers({30, 10}));
    layer.Enabled = true;
    layer.Visible = false;
    EXPECT_FALSE(layer.Covers({30, 10}));
    EXPECT_EQ(Coloured(layer.Picture(), qRgb(255, 255, 255)), kSide * kSide);
}

TEST(PathFinder, HitsEachPixelThatItPaints)
{
    // The hit test counts distances and paints nothing: both must mean the same pixels.
    Layer layer;
    Step(layer);
    const QImage picture = layer.Picture();
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            if (picture.pixel(x, y) != qRgb(255, 255, 255)) {
                const bool near = layer.Covers({double(x), double(y)}) || layer.Covers({x + 1.0, y + 1.0});
                EXPECT_TRUE(near) << x << "," << y;
            } else {
                EXPECT_FALSE(layer.Covers({double(x), double(y)}) && layer.Covers({x + 1.0, y + 1.0})) << x << "," << y;
            }
        }
    }
}

TEST(PathFinder, ShowsTheOuterSideInItsMarker)
{
    const auto dark = [](const QImage &picture, int left) {
        return Coloured(picture.copy(left, 0, kSide / 2, kSide), qRgb(0, 0, 0));
    };
    Layer layer;
    layer.DrawMarker(u'L', 600, 600); // its middle is the layer's
    EXPECT_GT(dark(layer.Picture(), 0), 3 * dark(layer.Picture(), kSide / 2));
    layer.DrawMarker(u'R', 600, 600);
    EXPECT_GT(3 * dark(layer.Picture(), kSide / 2), dark(layer.Picture(), 0));
    EXPECT_GT(dark(layer.Picture(), kSide / 2), 3 * dark(layer.Picture(), 0));
    layer.DrawMarker(u'C', 600, 600);
    EXPECT_GT(Coloured(layer.Picture(), qRgb(0, 0, 0)), 0);
    layer.Cls();
    EXPECT_TRUE(layer.IsEmpty());
    EXPECT_EQ(Coloured(layer.Picture(), qRgb(255, 255, 255)), kSide * kSide);
}

TEST(PathFinder, DrawsARouteInUnitsOfItsGrid)
{
    Layer layer;
    QString told;
    layer.PathCalculated = [&](const QString &path, double) { told = path; };
    layer.InitializeMap(10, 10); // a cell is 10 pixels
    EXPECT_EQ(layer.ScaleWidth(), 10);
    layer.GetPath(1, 0, 1, 5);
    EXPECT_EQ(told, QStringLiteral(" 1\\12\\23\\34\\45\\56"));
    EXPECT_EQ(layer.Bounds(), QRectF(7, -3, 6, 56));
    EXPECT_TRUE(layer.Covers({10, 30}));
    layer.Cls();
    layer.ConnectEnds = true;
    layer.X1 = 0;
    layer.Y1 = 2;
    layer.X2 = 9;
    layer.Y2 = 5;
    layer.GetPath(1, 0, 1, 5);
    EXPECT_TRUE(layer.Covers({50, 50})); // the lead to the second end
    EXPECT_TRUE(layer.Covers({5, 10}));  // and to the first
}

TEST(PathFinder, TakesAScaleOfNothingAsOne)
{
    Layer layer;
    layer.InitializeMap(0, 0);
    EXPECT_EQ(layer.ScaleWidth(), 1);
    EXPECT_EQ(layer.ScaleHeight(), 1);
    layer.DisplayGrid(true);
    EXPECT_FALSE(layer.IsEmpty());
}

TEST(PathFinder, RaisesBeforeAGridIsThere)
{
    Layer layer;
    EXPECT_THROW(layer.GetPath(0, 0, 1, 1), std::logic_error);
    EXPECT_THROW(layer.DeletePoint(0, 0), std::logic_error);
}

TEST(PathFinder, IgnoresTheFlagsOfALine)
{
    Layer one, other;
    one.Line(0, 0, 0, 900, 900, 0x00FF00);
    other.Line(7, 0, 0, 900, 900, 0x00FF00);
    EXPECT_EQ(one.Picture(), other.Picture());
    EXPECT_GT(Coloured(one.Picture(), qRgb(0, 255, 0)), 60);
}
