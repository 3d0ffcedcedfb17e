// The rectangles of a chart: nothing meets anything, at any size, with any values.
#include "tests/views/ChartFixture.h"
#include <gtest/gtest.h>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Kind
{
    const char *Name;
    std::function<double(qint64, int)> Value;
    std::function<QString(qint64)> Label;
};

const std::vector<Kind> &Kinds()
{
    static const auto plain = [](qint64 row, int column) { return double((row * 7 + column * 3) % 11) + 1; };
    static const std::vector<Kind> kinds = {
        {"plain", plain, {}},
        {"negative", [](qint64 row, int column) { return double(row % 9) - 6 - column; }, {}},
        {"zero", [](qint64, int) { return 0.0; }, {}},
        {"large", [](qint64 row, int) { return row % 2 ? 1.7e308 : -1.7e308; }, {}},
        {"near", [](qint64 row, int) { return 1e15 + double(row % 3); }, {}},
        {"small", [](qint64 row, int) { return 5e-324 * double(row % 3); }, {}},
        {"infinite", [](qint64 row, int column) { return (row + column) % 3 ? 4.0 : kInfinity; }, {}},
        {"long labels", plain,
         [](qint64 row) { return QStringLiteral("A label of many words %1 ").arg(row).repeated(9); }},
        {"right to left", plain, [](qint64 row) { return QString::fromUtf8("تسمية طويلة جدا للصف %1").arg(row); }},
        {"lines and emoji", plain,
         [](qint64 row) { return QString::fromUtf8("👩‍👩‍👧‍👦\n\t%1 👍🏽").arg(row); }},
        {"no labels", plain, [](qint64) { return QString(); }},
    };
    return kinds;
}

void ExpectNothingMeets(const ChartPicture &picture)
{
    const QRectF all = QRectF(QPointF(), picture.Size).adjusted(-0.01, -0.01, 0.01, 0.01);
    for (size_t i = 0; i < picture.Texts.size(); ++i) {
        const ChartText &text = picture.Texts[i];
        ASSERT_FALSE(text.Text.isEmpty());
        EXPECT_TRUE(all.contains(text.Rect)) << qPrintable(text.Text) << " is out of the chart";
        if (text.Role != ChartRole::LegendEntry) {
            EXPECT_FALSE(text.Rect.intersects(picture.Legend)) << qPrintable(text.Text) << " meets the legend";
        } else {
            EXPECT_TRUE(picture.Legend.contains(text.Rect)) << qPrintable(text.Text) << " is out of the legend";
        }
        for (size_t j = i + 1; j < picture.Texts.size(); ++j)
            EXPECT_FALSE(text.Rect.intersects(picture.Texts[j].Rect))
                << qPrintable(text.Text) << " meets " << qPrintable(picture.Texts[j].Text);
    }
    if (!picture.Plot.isEmpty()) {
        EXPECT_TRUE(all.contains(picture.Plot));
        EXPECT_FALSE(picture.Plot.intersects(picture.Legend));
    }
    const QRectF room = picture.Plot.adjusted(-1, -12, 12, 1);
    for (const ChartMark &mark : picture.Marks) {
        for (const QPointF &point : mark.Points)
            ASSERT_TRUE(room.contains(point)) << point.x() << ' ' << point.y();
        for (const QRectF &rect : mark.Rects)
            ASSERT_TRUE(all.contains(rect.topLeft()) && all.contains(rect.bottomRight()))
                << rect.x() << ' ' << rect.y();
    }
}

size_t PointsOf(const ChartPicture &picture)
{
    size_t points = 0;
    for (const ChartMark &mark : picture.Marks)
        points += mark.Points.size() + mark.Rects.size();
    return points;
}

} // namespace

class ChartOfType : public testing::TestWithParam<int>
{
};
INSTANTIATE_TEST_SUITE_P(All, ChartOfType, testing::ValuesIn(kChartTypes));

TEST_P(ChartOfType, NoTextMeetsAnotherOneOrTheLegendAtAnySize)
{
    for (const Kind &kind : Kinds())
        for (const qint64 rows : {1, 5, 5000}) {
            const ChartData data = MakeChart(3, rows, kind.Value, kind.Label);
            for (const QSizeF size : {QSizeF(720, 480), QSizeF(300, 200), QSizeF(1600, 300), QSizeF(150, 700),
                                      QSizeF(90, 60), QSizeF(3, 3), QSizeF(0, 0)})
                for (const bool with : {false, true}) {
                    SCOPED_TRACE(testing::Message() << kind.Name << ", " << rows << " rows, " << size.width() << " x "
                                                    << size.height() << (with ? " with legend" : ""));
                    ChartOptions options;
                    options.Type = GetParam();
                    options.ShowLegend = with;
                    options.Logarithmic = with && rows == 5;
                    options.Title = with ? QStringLiteral("Sales of all the years ").repeated(10) : QString();
                    options.FootNote =
                        with ? QStringLiteral("select city, amount from orders ").repeated(40) : QString();
                    const ChartPicture picture = LayOutChart(data, options, size, MeasureFixed);
                    ExpectNothingMeets(picture);
                    const bool isPie = GetParam() == chart2DPie;
                    const QLatin1String name(kind.Name);
                    const bool hasPositive = name != QLatin1String("zero") && name != QLatin1String("small") &&
                                             !(isPie && (rows == 1 || name == QLatin1String("negative")));
                    const bool hasX = GetParam() != chart2DXY || name != QLatin1String("infinite") || rows > 1;
                    const bool something = hasPositive && hasX && !options.Logarithmic;
                    if (size.width() >= 300 && size.height() >= 200 && something) {
                        EXPECT_GT(PointsOf(picture), 0U);
                    }
                }
        }
}

TEST_P(ChartOfType, NothingToDrawLeavesEmptyAxesAndALineThatSaysSo)
{
    const auto notice = [&](const ChartData &data) {
        ChartOptions options;
        options.Type = GetParam();
        options.ShowLegend = true;
        const ChartPicture picture = LayOutChart(data, options, {720, 480}, MeasureFixed);
        ExpectNothingMeets(picture);
        EXPECT_TRUE(picture.HasAxes);
        EXPECT_EQ(picture.Axes.size(), 2U);
        EXPECT_TRUE(picture.Marks.empty());
        QStringList lines;
        for (const ChartText &text : TextsOf(picture, ChartRole::Notice))
            lines += text.Text;
        return lines.join(u' ');
    };
    EXPECT_EQ(notice(ChartData()), QStringLiteral("There are no rows to chart."));
    EXPECT_EQ(notice(MakeChart(2, 0, {})), QStringLiteral("There are no rows to chart."));
    EXPECT_EQ(notice(MakeChart(2, 4, [](qint64, int) { return NAN; })),
              QStringLiteral("The columns of values hold no number."));
    EXPECT_TRUE(
        notice(MakeChart(2, 4, [](qint64, int) { return kInfinity; })).contains(QLatin1String("Infinite values")));
    EXPECT_EQ(notice(MakeChart(10000, 2, [](qint64, int) { return 1.0; })),
              QStringLiteral("10000 columns of values are more than a chart shows: choose 256 at most."));
}

TEST_P(ChartOfType, AsManyColumnsAsAreDrawnHaveRoom)
{
    const ChartData data = MakeChart(kMostColumns, 3, [](qint64 row, int column) { return double(row + column) + 1; });
    ChartOptions options;
    options.Type = GetParam();
    options.ShowLegend = true;
    const ChartPicture picture = LayOutChart(data, options, {720, 480}, MeasureFixed);
    ExpectNothingMeets(picture);
    EXPECT_FALSE(picture.Marks.empty());
    if (GetParam() != chart2DPie) { // the legend says how many it has no room for
        EXPECT_TRUE(TextsOf(picture, ChartRole::LegendEntry).back().Text.endsWith(QLatin1String(" more")));
    }
}

TEST(ChartLayoutTest, VeryManyRowsAreAsManyMarksAsTheWidthHoldsAndTheirPeakIsThere)
{
    constexpr qint64 rows = 200000, peak = 165432;
    const ChartData data = MakeChart(
        2, rows, [&](qint64 row, int column) { return column == 1 && row == peak ? 1000.0 : double(row % 10) + 1; },
        [](qint64) { return QStringLiteral("x"); });
    for (const int type : kChartTypes) {
        SCOPED_TRACE(type);
        ChartOptions options;
        options.Type = type;
        const ChartPicture picture = LayOutChart(data, options, {800, 400}, MeasureFixed);
        EXPECT_LT(PointsOf(picture), 50000U);
        EXPECT_LT(picture.Texts.size(), 60U);
        if (type == chart2DPie) {
            EXPECT_LE(picture.Slices.size(), size_t(2 * kMostSlices));
            continue;
        }
        double top = picture.Plot.bottom();
        for (const ChartMark &mark : picture.Marks) {
            for (const QPointF &point : mark.Points)
                top = std::min(top, point.y());
            for (const QRectF &rect : mark.Rects)
                top = std::min(top, rect.top());
        }
        EXPECT_NEAR(top, picture.Up.At(1000), 0.01);
    }
}

TEST(ChartLayoutTest, LettersAreNeverSmallerThanSevenPoints)
{
    for (const double base : {1.0, 6.0, 9.0, 15.0})
        for (const ChartFace face : {ChartFace::Title, ChartFace::Label, ChartFace::Note})
            EXPECT_GE(FacePoints(face, base), 7);
    EXPECT_GT(FacePoints(ChartFace::Label, 15), 13);
}

TEST(ChartLayoutTest, LabelsOfRowsThinOutEvenly)
{
    const auto value = [](qint64 row, int) { return double(row); };
    ChartOptions options;
    const ChartPicture few = LayOutChart(MakeChart(1, 5, value), options, {720, 480}, MeasureFixed);
    EXPECT_EQ(TextsOf(few, ChartRole::RowLabel).size(), 5U);

    const ChartPicture many = LayOutChart(MakeChart(1, 5000, value), options, {720, 480}, MeasureFixed);
    const std::vector<ChartText> labels = TextsOf(many, ChartRole::RowLabel);
    ASSERT_GT(labels.size(), 4U);
    ASSERT_LT(labels.size(), 12U);
    for (size_t i = 0; i < labels.size(); ++i)
        EXPECT_EQ(labels[i].Text,
                  QStringLiteral("Row %1").arg(i * 1000 + 1 - (i > 0 && labels.size() > 6 ? i * 500 : 0)));
}

TEST(ChartLayoutTest, LongLabelsOfFewRowsAreCutAndStandBelowTheirRow)
{
    const ChartData data = MakeChart(
        1, 5, [](qint64 row, int) { return double(row) + 1; },
        [](qint64 row) { return QStringLiteral("%1 is a label that is far too long for its place").arg(row); });
    const ChartPicture picture = LayOutChart(data, {}, {720, 480}, MeasureFixed);
    const std::vector<ChartText> labels = TextsOf(picture, ChartRole::RowLabel);
    ASSERT_EQ(labels.size(), 5U);
    for (size_t i = 0; i < labels.size(); ++i) {
        EXPECT_TRUE(labels[i].Text.endsWith(QChar(0x2026)));
        EXPECT_TRUE(labels[i].Text.startsWith(QString::number(i)));
        EXPECT_NEAR(labels[i].Rect.center().x(), picture.RowX(qint64(i)), 1);
        EXPECT_GE(labels[i].Rect.top(), picture.Plot.bottom());
    }
}

TEST(ChartLayoutTest, BarsStandOnZeroAndAreAsHighAsTheirValue)
{
    const ChartPicture picture =
        LayOutChart(MakeChart(1, 2, [](qint64 row, int) { return row ? -5.0 : 10.0; }), {}, {720, 480}, MeasureFixed);
    const std::vector<ChartMark> bars = MarksOf(picture, ChartMark::Boxes);
    ASSERT_EQ(bars.size(), 2U);
    const double zero = picture.Up.At(0);
    EXPECT_NEAR(bars[0].Rects[0].bottom(), zero, 0.01);
    EXPECT_NEAR(bars[1].Rects[0].top(), zero, 0.01);
    EXPECT_NEAR(bars[0].Rects[0].height(), 2 * bars[1].Rects[0].height(), 0.01);
    EXPECT_EQ(picture.Axes.size(), 3U); // the line of zero
}

TEST(ChartLayoutTest, ACombinationIsBarsAndLines)
{
    ChartOptions options;
    options.Type = chart2DCombination;
    const ChartPicture picture =
        LayOutChart(MakeChart(3, 4, [](qint64 row, int column) { return double(row + column); }), options, {720, 480},
                    MeasureFixed);
    EXPECT_EQ(MarksOf(picture, ChartMark::Boxes).size(), 4U);
    EXPECT_EQ(MarksOf(picture, ChartMark::Polyline).size(), 2U);
}

TEST(ChartLayoutTest, ALineIsPartedWhereAValueIsInfinite)
{
    ChartOptions options;
    options.Type = chart2DLine;
    const ChartPicture picture = LayOutChart(
        MakeChart(1, 7, [](qint64 row, int) { return row == 3 ? kInfinity : 2.0; }), options, {720, 480}, MeasureFixed);
    EXPECT_EQ(MarksOf(picture, ChartMark::Polyline).size(), 2U);
    EXPECT_EQ(picture.Notice, QStringLiteral("Infinite values are not drawn: 1."));
    EXPECT_EQ(TextsOf(picture, ChartRole::Notice).size(), 1U);
}

TEST(ChartLayoutTest, TheFirstColumnOfAnXYChartIsX)
{
    ChartOptions options;
    options.Type = chart2DXY;
    options.ShowLegend = true;
    const ChartData data =
        MakeChart(3, 4, [](qint64 row, int column) { return column ? double(row) : 100.0 * double(row); });
    const ChartPicture picture = LayOutChart(data, options, {720, 480}, MeasureFixed);
    const std::vector<ChartMark> dots = MarksOf(picture, ChartMark::Dots);
    ASSERT_EQ(dots.size(), 2U);
    ASSERT_EQ(dots[0].Points.size(), 4U);
    EXPECT_NEAR(dots[0].Points[3].x(), picture.Across.At(300), 0.01);
    EXPECT_NEAR(dots[0].Points[3].y(), picture.Up.At(3), 0.01);
    const std::vector<ChartText> legend = TextsOf(picture, ChartRole::LegendEntry);
    ASSERT_EQ(legend.size(), 2U);
    EXPECT_EQ(legend[0].Text, QStringLiteral("Column 2"));

    const ChartPicture one =
        LayOutChart(MakeChart(1, 4, [](qint64, int) { return 1.0; }), options, {720, 480}, MeasureFixed);
    EXPECT_TRUE(one.Marks.empty());
    EXPECT_FALSE(TextsOf(one, ChartRole::Notice).empty());
}

TEST(ChartLayoutTest, WithOneColumnTheRowsAreTheSlicesOfAPieWithSeveralEachHasItsPie)
{
    ChartOptions options;
    options.Type = chart2DPie;
    options.ShowLegend = true;
    const auto value = [](qint64 row, int) { return double(row) + 1; };
    const ChartPicture one = LayOutChart(MakeChart(1, 4, value), options, {720, 480}, MeasureFixed);
    ASSERT_EQ(one.Slices.size(), 4U);
    double span = 0;
    for (const ChartSlice &slice : one.Slices)
        span += slice.Span;
    EXPECT_NEAR(span, 360, 1e-9);
    EXPECT_NEAR(one.Slices[3].Share, 0.4, 1e-9);
    EXPECT_EQ(TextsOf(one, ChartRole::LegendEntry)[0].Text, QStringLiteral("Row 1"));
    EXPECT_TRUE(TextsOf(one, ChartRole::PieTitle).empty());

    const ChartPicture three = LayOutChart(MakeChart(3, 4, value), options, {720, 480}, MeasureFixed);
    EXPECT_EQ(three.Slices.size(), 12U);
    EXPECT_EQ(TextsOf(three, ChartRole::PieTitle).size(), 3U);
    EXPECT_EQ(TextsOf(three, ChartRole::LegendEntry).size(), 4U);
    EXPECT_FALSE(three.Slices[0].Pie.intersects(three.Slices[4].Pie));
}

TEST(ChartLayoutTest, PastTwentyFourSlicesTheSmallestAreJoined)
{
    ChartOptions options;
    options.Type = chart2DPie;
    const auto value = [](qint64 row, int) { return double((row * 17) % 30) + 1; };
    const ChartPicture whole = LayOutChart(MakeChart(1, 24, value), options, {720, 480}, MeasureFixed);
    ASSERT_EQ(whole.Slices.size(), 24U);
    EXPECT_EQ(whole.Slices.back().Label, QStringLiteral("Row 24"));

    const ChartPicture joined = LayOutChart(MakeChart(1, 30, value), options, {720, 480}, MeasureFixed);
    ASSERT_EQ(joined.Slices.size(), 24U);
    EXPECT_EQ(joined.Slices.back().Label, QStringLiteral("7 others"));
    EXPECT_EQ(joined.Slices.back().Value, 1 + 2 + 3 + 4 + 5 + 6 + 7); // the seven smallest of 1 to 30
}

TEST(ChartLayoutTest, WhatCannotBeSlicedIsSaid)
{
    ChartOptions options;
    options.Type = chart2DPie;
    const ChartPicture some = LayOutChart(MakeChart(1, 4, [](qint64 row, int) { return row == 2 ? -1.0 : 1.0; }),
                                          options, {720, 480}, MeasureFixed);
    EXPECT_EQ(some.Slices.size(), 3U);
    EXPECT_EQ(some.Notice, QStringLiteral("Values below zero are in no pie: 1."));
    const ChartPicture none =
        LayOutChart(MakeChart(1, 4, [](qint64, int) { return 0.0; }), options, {720, 480}, MeasureFixed);
    EXPECT_TRUE(none.Slices.empty());
    EXPECT_EQ(none.Notice, QStringLiteral("There is nothing to divide: no value is above zero."));
}

TEST(ChartLayoutTest, ALogarithmicAxisHasPowersOfTenAndSaysWhatIsNotOnIt)
{
    ChartOptions options;
    options.Type = chart2DLine;
    options.Logarithmic = true;
    const ChartPicture picture =
        LayOutChart(MakeChart(1, 4, [](qint64 row, int) { return row == 0 ? 0.0 : std::pow(10.0, double(row)); }),
                    options, {720, 480}, MeasureFixed);
    EXPECT_EQ(picture.Up.Marks(), (std::vector<double>{10, 100, 1000}));
    EXPECT_NEAR(picture.Up.At(100), (picture.Up.At(10) + picture.Up.At(1000)) / 2, 0.01);
    EXPECT_TRUE(picture.Notice.contains(QLatin1String("logarithmic axis: 1.")));
}

TEST(ChartLayoutTest, APartOfTheRowsFillsTheWidth)
{
    ChartOptions options;
    options.FirstRow = 10;
    options.Rows = 5;
    const ChartData data = MakeChart(1, 100, [](qint64 row, int) { return double(row); });
    const ChartPicture picture = LayOutChart(data, options, {720, 480}, MeasureFixed);
    EXPECT_EQ(picture.RowCount, 5);
    ASSERT_EQ(TextsOf(picture, ChartRole::RowLabel).size(), 5U);
    EXPECT_EQ(TextsOf(picture, ChartRole::RowLabel)[0].Text, QStringLiteral("Row 11"));
    options.FirstRow = 500; // past the end
    EXPECT_EQ(LayOutChart(data, options, {720, 480}, MeasureFixed).RowCount, 1);
}

TEST(ChartScaleTest, EndsAreRoundAndHoldWhatIsShown)
{
    const struct
    {
        double Least, Most;
    } spans[] = {{0, 10}, {0, 9.7}, {-3, 12},        {1e15, 1e15 + 2}, {5, 5},
                 {0, 0},  {-7, -7}, {-1e308, 1e308}, {0, 5e-324},      {1e-200, 3e-200}};
    for (const auto &span : spans) {
        SCOPED_TRACE(testing::Message() << span.Least << " to " << span.Most);
        ChartScale scale = ChartScale::Around(span.Least, span.Most, 5);
        EXPECT_LT(scale.Least(), scale.Most());
        EXPECT_LE(scale.Least(), std::max(span.Least, -1e300));
        EXPECT_GE(scale.Most(), std::min(span.Most, 1e300));
        EXPECT_GE(scale.Marks().size(), 2U);
        EXPECT_LE(scale.Marks().size(), 12U);
        scale.Lay(100, 0);
        EXPECT_NEAR(scale.At(scale.Least()), 100, 1e-6);
        EXPECT_NEAR(scale.At(scale.Most()), 0, 1e-6);
        EXPECT_TRUE(std::isfinite(scale.At(span.Least)));
    }
    EXPECT_EQ(ChartScale::Around(0, 9.7, 5).Marks(), (std::vector<double>{0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(ChartScale::Around(17, 56, 5, true).Marks(), (std::vector<double>{10, 20, 50, 100}));
    EXPECT_EQ(ChartScale::Around(3, 3, 5, true).Marks(), (std::vector<double>{1, 2, 5, 10}));
}
