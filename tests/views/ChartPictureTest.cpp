// The twelve kinds of chart against pictures that were looked at. With BRINDLEWICK_GOLDEN=1 they are written anew, to
// be read in review. A few pixels may differ: fonts are smoothed in several ways.
#include "tests/support/Places.h"
#include "tests/views/ChartFixture.h"
#include "views/chart/ChartPaint.h"
#include <QImage>
#include <gtest/gtest.h>

namespace {

QFont TestFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    return font;
}

const ChartData &Cities()
{
    static const ChartData data = [] {
        const double values[][3] = {{12, 5, -3}, {7.5, 9, 4}, {-4, 2, 8}, {15, 11, 6}, {9, 0, 2.5}, {3, 14, 10}};
        const char *const names[] = {"Aachen",  "Łódź", "Αθήνα",
                                     "القاهرة", "Київ", "A city with a long name, on the sea"};
        ChartData chart = MakeChart(
            3, 6, [&](qint64 row, int column) { return values[row][column]; },
            [&](qint64 row) { return QString::fromUtf8(names[row]); });
        chart.SetColumnLabel(1, QStringLiteral("Orders"));
        chart.SetColumnLabel(2, QStringLiteral("Returns"));
        chart.SetColumnLabel(3, QStringLiteral("Balance"));
        return chart;
    }();
    return data;
}

void Compare(const QString &name, const QImage &picture)
{
    const QString path = places::Source() + QStringLiteral("/tests/views/golden/%1.png").arg(name);
    if (qEnvironmentVariable("BRINDLEWICK_GOLDEN") == "1") {
        ASSERT_TRUE(picture.save(path)) << qPrintable(path);
        return;
    }
    const QImage golden = QImage(path).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(golden.isNull()) << qPrintable(path);
    ASSERT_EQ(golden.size(), picture.size());
    const auto far = [](QRgb a, QRgb b) {
        return qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b)) > 90;
    };
    int differ = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            differ += far(golden.pixel(x, y), picture.pixel(x, y)) ? 1 : 0;
    EXPECT_LT(differ, picture.width() * picture.height() / 400) << qPrintable(name);
}

QImage Painted(const ChartData &data, const ChartOptions &options, const QSizeF &size = {480, 320},
               ChartPalette palette = ChartPalette::Plain)
{
    const ChartPainter painter(TestFont());
    return painter.Paint(LayOutChart(data, options, size, painter.Measure()), palette);
}

} // namespace

class ChartPictureOf : public testing::TestWithParam<int>
{
};
INSTANTIATE_TEST_SUITE_P(All, ChartPictureOf, testing::ValuesIn(kChartTypes));

TEST_P(ChartPictureOf, IsTheOneThatWasLookedAt)
{
    ChartOptions options;
    options.Type = GetParam();
    options.ShowLegend = true;
    options.Title = QStringLiteral("Orders by city");
    options.FootNote = QStringLiteral("select city, orders, returns, balance from cities");
    Compare(QStringLiteral("chart-%1").arg(GetParam()), Painted(Cities(), options));
}

TEST(ChartPictureTest, FiveThousandRowsAreTheOnesThatWereLookedAt)
{
    const ChartData data = MakeChart(3, 5000, [](qint64 row, int column) {
        return std::sin(double(row) / 300 + column) * 10 + (row == 2500 ? 20 : 0);
    });
    ChartOptions options;
    options.Title = QStringLiteral("Many rows");
    for (const int type : {chart2DLine, chart2DBar, chart3DArea}) {
        options.Type = type;
        Compare(QStringLiteral("many-%1").arg(type), Painted(data, options));
    }
}

TEST(ChartPictureTest, ColoursForEveryEyeAndALogarithmicAxisAreTheOnesThatWereLookedAt)
{
    const ChartData data =
        MakeChart(4, 12, [](qint64 row, int column) { return std::pow(3.0, double(row) / 2 + column); });
    ChartOptions options;
    options.Type = chart2DLine;
    options.Logarithmic = true;
    options.ShowLegend = true;
    Compare(QStringLiteral("eyes"), Painted(data, options, {480, 320}, ChartPalette::ForAllEyes));
}

TEST(ChartPictureTest, APieOfManySlicesIsTheOneThatWasLookedAt)
{
    ChartOptions options;
    options.Type = chart2DPie;
    Compare(QStringLiteral("slices"),
            Painted(MakeChart(1, 40, [](qint64 row, int) { return double(row) + 1; }), options));
}

// What a chart's letters need must be what the painter then takes: with real fonts, nothing meets anything either.
TEST(ChartPictureTest, RealLettersKeepToTheirRectangles)
{
    const ChartPainter painter(TestFont());
    for (const int type : {chart2DBar, chart2DPie, chart2DXY}) {
        ChartOptions options;
        options.Type = type;
        options.ShowLegend = type == chart2DBar;
        const ChartPicture picture = LayOutChart(Cities(), options, {480, 320}, painter.Measure());
        for (size_t i = 0; i < picture.Texts.size(); ++i)
            for (size_t j = i + 1; j < picture.Texts.size(); ++j)
                EXPECT_FALSE(picture.Texts[i].Rect.intersects(picture.Texts[j].Rect))
                    << type << ": " << qPrintable(picture.Texts[i].Text) << ", " << qPrintable(picture.Texts[j].Text);
        // Painted alone, each text leaves what is beyond its rectangle white.
        for (const ChartText &text : picture.Texts) {
            ChartPicture alone;
            alone.Size = picture.Size;
            alone.Texts = {text};
            const QImage image = painter.Paint(alone, ChartPalette::Plain);
            const QRect room = text.Rect.toAlignedRect().adjusted(-1, -1, 1, 1);
            int ink = 0, beyond = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (image.pixelColor(x, y).lightness() < 200)
                        ++(room.contains(x, y) ? ink : beyond);
            EXPECT_GT(ink, 0) << qPrintable(text.Text);
            EXPECT_EQ(beyond, 0) << qPrintable(text.Text);
        }
    }
}

// Neighbours in a palette are told apart, and all are seen on white.
TEST(ChartPictureTest, ColoursAreSeen)
{
    for (const ChartPalette palette : {ChartPalette::Plain, ChartPalette::ForAllEyes})
        for (int number = 0; number < 24; ++number) {
            EXPECT_NE(ChartColour(palette, number), ChartColour(palette, number + 1));
            EXPECT_LT(ChartColour(palette, number).lightnessF(), 0.85);
        }
}
