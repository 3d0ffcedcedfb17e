// Does the place in a result matter? A jump to any row of a grid of 1,000,000 rows and its painting, against the same
// in a grid of 1,000 rows.
#include "ado/Recordset.h"
#include "bench/Figures.h"
#include "controls/FlexGrid.h"
#include <QApplication>
#include <random>

namespace {

ADODB::RecordsetPtr MakeRows(qint64 count)
{
    using namespace ADODB;
    std::vector<ColumnInfo> columns(8);
    std::vector<ColumnStore> stores;
    for (int c = 0; c < 8; ++c) {
        columns[size_t(c)].Name = QStringLiteral("Column %1").arg(c);
        columns[size_t(c)].Type = c % 2 == 0 ? adInteger : adVarWChar;
        stores.emplace_back(columns[size_t(c)].Type);
        for (qint64 r = 0; r < count; ++r) {
            if (c % 2 == 0) {
                stores.back().AppendInt64(r * 7919 + c);
            } else {
                const QByteArray text = "value " + QByteArray::number(r % 1000) + " of a column";
                stores.back().AppendText(text.constData(), text.size());
            }
        }
    }
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

void Jump(FlexGrid &grid, std::mt19937 &random, int times)
{
    std::uniform_int_distribution<qint64> rows(1, grid.Rows() - 1);
    for (int i = 0; i < times; ++i) {
        const qint64 row = rows(random);
        grid.SetRow(row);
        grid.EnsureVisible(row, 1);
        grid.viewport()->repaint();
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    FlexGrid large, small;
    large.SetDataSource(MakeRows(bench::Size(1000000)));
    small.SetDataSource(MakeRows(1000));
    for (FlexGrid *const grid : {&large, &small}) {
        grid->resize(900, 600);
        grid->show();
    }
    QCoreApplication::processEvents();
    std::mt19937 random(1);
    Jump(large, random, 20);
    Jump(small, random, 20);
    const double ratio = bench::Ratio(
        9, [&] { Jump(large, random, 200); }, [&] { Jump(small, random, 200); });
    bench::Figure("grid_jump_1M_vs_1000", ratio, 1.5);
    return 0;
}
