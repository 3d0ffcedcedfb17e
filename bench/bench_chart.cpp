// A chart on the screen: 3 columns of 5,000 points beside the toolkit's own charts with the same points, and 1,000,000
// rows beside 5,000. Each figure is layout and painting from nothing, as after a change of size.
#include "bench/Figures.h"
#include "views/chart/Chart.h"
#include <QApplication>
#include <QtCharts/QChart>
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <cmath>

namespace {

constexpr QSize kSize(900, 600);
constexpr int kColumns = 3;

double ValueAt(qint64 row, int column)
{
    return std::sin(double(row) / 200 + column) * 50 + double((row * 7919 + column) % 23);
}

void Fill(Chart &chart, qint64 rows)
{
    ChartData &values = chart.Values;
    values.SetColumnCount(kColumns);
    values.SetRowCount(rows);
    for (qint64 row = 1; row <= rows; ++row) {
        values.SetRowLabel(row, QString::number(row));
        for (int column = 1; column <= kColumns; ++column)
            values.SetData(row, column, QString::number(ValueAt(row - 1, column - 1)));
    }
}

double SecondsOfOurs(qint64 rows)
{
    Chart chart;
    chart.resize(kSize);
    chart.SetChartType(chart2DLine);
    chart.SetShowLegend(true);
    chart.SetTitle(QStringLiteral("Values"));
    Fill(chart, rows);
    QImage picture(kSize, QImage::Format_RGB32);
    chart.Redraw();
    chart.render(&picture); // fonts are loaded
    std::vector<double> seconds;
    for (int round = 0; round < bench::Rounds(9); ++round)
        seconds.push_back(bench::Seconds([&] {
            chart.Redraw();
            chart.render(&picture);
        }));
    return bench::Median(seconds);
}

double SecondsOfToolkit(qint64 rows)
{
    auto *const chart = new QChart;
    chart->setTitle(QStringLiteral("Values"));
    for (int column = 0; column < kColumns; ++column) {
        auto *const series = new QLineSeries;
        series->setName(QStringLiteral("Column %1").arg(column));
        QList<QPointF> points;
        for (qint64 row = 0; row < rows; ++row)
            points.append({double(row), ValueAt(row, column)});
        series->replace(points);
        chart->addSeries(series);
    }
    chart->createDefaultAxes();
    QChartView view(chart);
    view.setRenderHint(QPainter::Antialiasing);
    view.resize(kSize);
    view.show();
    QCoreApplication::processEvents();
    QImage picture(kSize, QImage::Format_RGB32);
    static_cast<QWidget &>(view).render(&picture);
    std::vector<double> seconds;
    for (int round = 0; round < bench::Rounds(9); ++round)
        seconds.push_back(bench::Seconds([&] {
            view.resize(kSize + QSize(round % 2 + 1, 0)); // it lays its points out anew
            static_cast<QWidget &>(view).render(&picture);
        }));
    return bench::Median(seconds);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const qint64 few = 5000, many = bench::Size(1000000);
    const double ours = SecondsOfOurs(few), toolkit = SecondsOfToolkit(few), large = SecondsOfOurs(many);
    std::fprintf(stderr, "  3 x 5,000 points: %.1f ms, the toolkit's charts %.1f ms; %lld rows: %.1f ms\n", 1000 * ours,
                 1000 * toolkit, static_cast<long long>(many), 1000 * large);
    bench::Figure("chart_beside_toolkit", ours / toolkit, 0.5);
    bench::Figure("chart_million_rows", large / ours, 5);
    return 0;
}
