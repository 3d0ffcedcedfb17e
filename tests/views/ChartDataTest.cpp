// What a chart takes from its source, without a window.
#include "views/logic/ChartData.h"
#include "tests/controls/MakeRecordset.h"
#include "tests/views/ChartFixture.h"
#include <cmath>
#include <gtest/gtest.h>

namespace {

ChartGrid GridOf(const QList<QStringList> &cells)
{
    return {cells.size(), int(cells.first().size()), [cells](qint64 row, int column) { return cells[row][column]; }};
}

QStringList RowLabels(const ChartData &chart)
{
    QStringList labels;
    for (qint64 row = 1; row <= chart.RowCount(); ++row)
        labels += chart.RowLabel(row);
    return labels;
}

ADODB::RecordsetPtr Sales()
{
    const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
    rows->Fields().Append(QStringLiteral("city"), ADODB::adVarWChar, 20);
    rows->Fields().Append(QStringLiteral("amount"), ADODB::adDouble);
    rows->Fields().Append(QStringLiteral("note"), ADODB::adVarWChar, 20);
    rows->Open();
    return rows;
}

void AddSale(const ADODB::RecordsetPtr &rows, const QString &city, const ADODB::Value &amount, const QString &note)
{
    rows->AddNew();
    rows->Fields()[QStringLiteral("city")].SetValue(ADODB::Value(city));
    rows->Fields()[QStringLiteral("amount")].SetValue(amount);
    rows->Fields()[QStringLiteral("note")].SetValue(ADODB::Value(note));
    rows->Update();
}

} // namespace

TEST(ChartDataTest, ACellWithoutANumberIsZeroAndLabelsAreJoinedByOneBlank)
{
    ChartData chart;
    FillChart(chart, GridOf({{"", "A", "B", "N"}, {"", " a ", "b", "12x"}, {"", "", "c", "x"}, {"", "d", "", "-1e2"}}),
              QStringLiteral("1,2"), QStringLiteral("3"));
    EXPECT_EQ(chart.ColumnCount(), 1);
    EXPECT_EQ(chart.ColumnLabel(1), QStringLiteral("N"));
    EXPECT_EQ(RowLabels(chart), QStringList({"a b", "c", "d "}));
    EXPECT_EQ(chart.Data(1, 1), QStringLiteral("12"));
    EXPECT_EQ(chart.Data(2, 1), QStringLiteral("0"));
    EXPECT_EQ(chart.Data(3, 1), QStringLiteral("-100"));
}

TEST(ChartDataTest, AMissingListEndsTheFillingAtOnce)
{
    ChartData chart;
    FillChart(chart, GridOf({{"", "A"}, {"", "1"}}), QStringLiteral("1"), QStringLiteral("1"));
    ASSERT_EQ(chart.RowCount(), 1);
    FillChart(chart, GridOf({{"", "A"}, {"", "1"}, {"", "2"}}), QString(), QStringLiteral("1"));
    FillChart(chart, GridOf({{"", "A"}, {"", "1"}, {"", "2"}}), QStringLiteral("1"), QString());
    EXPECT_EQ(chart.RowCount(), 1); // as it was
}

TEST(ChartDataTest, ARecordsetGivesItsVisibleRowsAndStaysWhereItStands)
{
    const ADODB::RecordsetPtr rows = Sales();
    ChartData chart;
    FillChart(chart, *rows, QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(chart.RowCount(), 0);
    EXPECT_TRUE(RowLabels(chart).isEmpty());
    EXPECT_EQ(chart.ColumnLabel(1), QStringLiteral("amount"));

    AddSale(rows, QStringLiteral(" Bonn "), ADODB::Value(2.5), QStringLiteral("x"));
    AddSale(rows, QStringLiteral("Rome"), ADODB::Value(), QStringLiteral("7 apples"));
    AddSale(rows, QStringLiteral("Oslo"), ADODB::Value(-4.0), QStringLiteral("y"));
    rows->SetAbsolutePosition(2);
    FillChart(chart, *rows, QStringLiteral("0,2"), QStringLiteral("1,2"));
    EXPECT_EQ(RowLabels(chart), QStringList({"Bonn x", "Rome 7 apples", "Oslo y"}));
    EXPECT_EQ(chart.Data(1, 1), QStringLiteral("2.5"));
    EXPECT_EQ(chart.Data(2, 1), QStringLiteral("0")); // null
    EXPECT_EQ(chart.Data(2, 2), QStringLiteral("7"));
    EXPECT_EQ(rows->AbsolutePosition(), 2);

    rows->SetFilter(QStringLiteral("city = 'Oslo'"));
    FillChart(chart, *rows, QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_EQ(RowLabels(chart), QStringList("Oslo"));
}

TEST(ChartDataTest, AFieldThatIsNotThereRaisesAndLeavesTheChart)
{
    const ADODB::RecordsetPtr rows = Sales();
    AddSale(rows, QStringLiteral("Bonn"), ADODB::Value(1.0), QString());
    ChartData chart;
    FillChart(chart, *rows, QStringLiteral("0"), QStringLiteral("1"));
    EXPECT_THROW(FillChart(chart, *rows, QStringLiteral("0"), QStringLiteral("9")), ADODB::Error);
    EXPECT_EQ(RowLabels(chart), QStringList("Bonn"));
}

TEST(ChartDataTest, WhatWasFilledStaysWhenTheFillingIsStopped)
{
    QList<QStringList> cells{{"", "A"}};
    for (int row = 1; row <= 1000; ++row)
        cells << QStringList{"", QString::number(row)};
    ChartData chart;
    FillChart(chart, GridOf(cells), QStringLiteral("1"), QStringLiteral("1"), [] { return false; });
    EXPECT_EQ(chart.RowCount(), 1000);
    EXPECT_EQ(chart.Data(100, 1), QStringLiteral("100"));
    EXPECT_EQ(chart.Data(900, 1), QStringLiteral("0"));
}

TEST(ChartDataTest, InfinityIsZeroAsTextAndKnownToTheDrawing)
{
    for (const char *text : {"inf", "-Infinity", " +INF "}) {
        EXPECT_TRUE(std::isinf(ChartNumber(QLatin1String(text)))) << text;
        ChartData chart;
        FillChart(chart, GridOf({{"", "A"}, {"", QString::fromLatin1(text)}}), QStringLiteral("1"),
                  QStringLiteral("1"));
        EXPECT_EQ(chart.Data(1, 1), QStringLiteral("0"));
    }
    for (const char *text : {"", "abc", "-", "information", "nan"})
        EXPECT_TRUE(std::isnan(ChartNumber(QLatin1String(text)))) << text;
    EXPECT_EQ(ChartNumber(QStringLiteral("0")), 0);
    EXPECT_EQ(ChartNumber(QStringLiteral("&HFF")), 255);
    EXPECT_EQ(ChartNumber(QStringLiteral("- 5")), -5);
}

TEST(ChartDataTest, PropertiesOutOfRangeChangeNothing)
{
    ChartData chart;
    chart.SetColumnCount(2);
    chart.SetRowCount(1);
    chart.SetData(1, 3, QStringLiteral("5"));
    chart.SetData(2, 1, QStringLiteral("5"));
    chart.SetRowLabel(0, QStringLiteral("x"));
    chart.SetColumnLabel(3, QStringLiteral("x"));
    EXPECT_EQ(chart.Data(1, 3), QString());
    EXPECT_EQ(chart.Data(1, 1), QStringLiteral("0"));
    EXPECT_EQ(chart.RowLabel(0), QString());
    EXPECT_EQ(chart.ColumnLabel(3), QString());
}

TEST(ChartDataTest, MovesKeepTheOrderAndOkNeedsBothLists)
{
    ChartChoice choice;
    for (int column = 0; column < 6; ++column)
        choice.Fields.push_back({QStringLiteral("f%1").arg(column), column});
    EXPECT_FALSE(choice.IsComplete());
    choice.Move(&ChartChoice::Fields, &ChartChoice::Data, {4, 5});
    EXPECT_FALSE(choice.IsComplete());
    choice.Move(&ChartChoice::Fields, &ChartChoice::Labels, {1});
    EXPECT_TRUE(choice.IsComplete());
    choice.Move(&ChartChoice::Fields, &ChartChoice::Data, {0});
    EXPECT_EQ(ChartChoice::Tags(choice.Data), QStringLiteral("4,5,0"));
    choice.Move(&ChartChoice::Data, &ChartChoice::Fields, {0, 2});
    EXPECT_EQ(ChartChoice::Tags(choice.Fields), QStringLiteral("2,3,4,0"));
    EXPECT_EQ(ChartChoice::Tags(choice.Data), QStringLiteral("5"));
    EXPECT_EQ(ChartChoice::Tags(choice.Labels), QStringLiteral("1"));
    choice.Move(&ChartChoice::Labels, &ChartChoice::Fields, {0});
    EXPECT_FALSE(choice.IsComplete());
}

TEST(ChartDataTest, TheListsOfColumnsThatCanBeCharted)
{
    EXPECT_TRUE(ChartFields(ChartGrid{1, 1, [](qint64, int) { return QString(); }}).empty());
    EXPECT_EQ(ChartFields(*Sales()),
              (std::vector<ChartField>{
                  {QStringLiteral("city"), 0}, {QStringLiteral("amount"), 1}, {QStringLiteral("note"), 2}}));
}

TEST(ChartDataTest, WhatNoMemoryHoldsIsNotBegun)
{
    ChartData chart;
    const ChartGrid endless{qint64(1) << 40, 2, [](qint64, int) { return QStringLiteral("1"); }};
    EXPECT_THROW(FillChart(chart, endless, QStringLiteral("0"), QStringLiteral("1")), std::bad_alloc);
    EXPECT_EQ(chart.RowCount(), 0);
}

// The blocks of rows must say what a walk over the rows says, wherever the stretch begins and ends.
TEST(ChartDataTest, TheExtentOfAStretchIsThatOfItsRows)
{
    const ChartData chart = MakeChart(1, 2000, [](qint64 row, int) {
        return row % 97 == 5 ? INFINITY : row % 31 == 3 ? NAN : std::sin(double(row)) * double(row % 701) - 20;
    });
    for (const auto &[first, last] : std::vector<std::pair<qint64, qint64>>{
             {0, 2000}, {0, 256}, {1, 256}, {255, 513}, {700, 701}, {5, 6}, {300, 300}, {511, 1999}}) {
        ChartExtent plain;
        for (qint64 row = first; row < last; ++row)
            plain.Take(row, chart.Values(0)[row]);
        const ChartExtent extent = chart.Extent(0, first, last);
        EXPECT_EQ(extent.Least, plain.Least) << first << " to " << last;
        EXPECT_EQ(extent.Most, plain.Most);
        EXPECT_EQ(extent.LeastPositive, plain.LeastPositive);
        EXPECT_EQ(extent.LeastRow, plain.LeastRow);
        EXPECT_EQ(extent.MostRow, plain.MostRow);
        EXPECT_EQ(extent.Numbers, plain.Numbers);
        EXPECT_EQ(extent.Infinite, plain.Infinite);
        EXPECT_EQ(extent.Unfit, plain.Unfit);
        EXPECT_EQ(extent.Negative, plain.Negative);
    }
}

TEST(ChartDataTest, AChangedValueChangesTheExtent)
{
    ChartData chart = MakeChart(1, 600, [](qint64, int) { return 1.0; });
    EXPECT_EQ(chart.Extent(0, 0, 600).Most, 1);
    chart.SetData(301, 1, QStringLiteral("9"));
    EXPECT_EQ(chart.Extent(0, 0, 600).Most, 9);
    EXPECT_EQ(chart.Extent(0, 0, 600).MostRow, 300);
}
