// What a cell shows of its text: values of any size, columns that are too narrow, and columns fitted to what is there.

#include "MakeRecordset.h"
#include "controls/FlexGrid.h"
#include "controls/ListView.h"
#include "controls/Twips.h"
#include "tests/support/PeakMemory.h"
#include <QAccessible>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace {

constexpr qint64 kHuge = 50 * 1000 * 1000;

ADODB::RecordsetPtr Huge()
{
    using namespace ADODB;
    const QByteArray value(kHuge, 'x');
    std::vector<ColumnInfo> columns{NamedColumn(QStringLiteral("Text"), adLongVarWChar),
                                    NamedColumn(QStringLiteral("Bytes"), adBinary)};
    std::vector<ColumnStore> stores;
    stores.emplace_back(adLongVarWChar);
    stores.emplace_back(adBinary);
    stores[0].AppendText(value.constData(), value.size());
    stores[1].AppendBytes(value.constData(), value.size());
    stores[0].AppendText("b", 1);
    stores[1].AppendBytes("c", 1);
    return Recordset::FromColumns(std::move(columns), std::move(stores));
}

// The pixels of a cell's inside that are not its ground.
int Inked(FlexGrid &grid, qint64 row, int col)
{
    const QImage picture = grid.viewport()->grab().toImage();
    const QRect cell = grid.CellRect(row, col).adjusted(1, 1, -2, -2);
    const QColor ground = picture.pixelColor(cell.topLeft());
    int inked = 0;
    for (int y = cell.top(); y <= cell.bottom(); ++y)
        for (int x = cell.left(); x <= cell.right(); ++x)
            inked += picture.pixelColor(x, y) != ground;
    return inked;
}

QString Hover(FlexGrid &grid, qint64 row, int col)
{
    const QPoint at = grid.CellRect(row, col).center();
    QHelpEvent event(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
    QApplication::sendEvent(grid.viewport(), &event);
    return event.isAccepted() ? QToolTip::text() : QString();
}

QPoint Edge(const FlexGrid &grid, int col)
{
    return {grid.CellRect(0, col).right() + 1, grid.CellRect(0, col).center().y()};
}

int TextWidth(const FlexGrid &grid, const QString &text)
{
    return grid.fontMetrics().horizontalAdvance(text);
}

} // namespace

// Each painting made the whole value as text first: 50 MB of bytes took 1.5 s and 300 MB a time.
TEST(FlexGridFit, OfAHugeValueOnlyWhatShowsIsMade)
{
    const ADODB::RecordsetPtr rows = Huge();
    FlexGrid grid;
    grid.resize(500, 200);
    const qint64 grown = PeakGrowth([&] {
        grid.SetDataSource(rows);
        AutoSize(&grid);
        grid.FitColumns();
        grid.SetColWidth(1, 3000);
        grid.SetColWidth(2, 3000);
        grid.grab();
        EXPECT_FALSE(Hover(grid, 1, 2).isEmpty());
        EXPECT_EQ(grid.CellStart(1, 2, 6), QStringLiteral("0x7878"));
        grid.SetRow(1);
        QAccessibleInterface *const access = QAccessible::queryAccessibleInterface(&grid);
        EXPECT_EQ(access->text(QAccessible::Value).size(), 2000);
    });
    EXPECT_GE(grown, 0);
    EXPECT_LT(grown, 32 * 1000 * 1000);
    EXPECT_EQ(grid.ReadCell(1, 1).Size(), kHuge);
    EXPECT_EQ(grid.ReadCell(2, 2).Next(10), QStringLiteral("0x63"));
    EXPECT_EQ(grid.ReadCell(0, 2).Next(10), QStringLiteral("Bytes"));
}

TEST(FlexGridFit, AListMakesNoMoreOfAHugeValueEither)
{
    const ADODB::RecordsetPtr rows = Huge();
    ListView list;
    list.resize(500, 200);
    list.AddColumn(QStringLiteral("Text"));
    list.AddColumn(QStringLiteral("Bytes"));
    ListBlock block;
    block.Recordset = rows;
    block.Count = 2;
    list.AddBlock(block);
    const qint64 grown = PeakGrowth([&] { list.grab(); });
    EXPECT_GE(grown, 0);
    EXPECT_LT(grown, 32 * 1000 * 1000);
    EXPECT_EQ(list.model()->index(1, 1).data().toString(), QStringLiteral("0x63"));
}

// The names stood in slits: without a row of data nothing was measured.
TEST(FlexGridFit, AnEmptyResultShowsItsNames)
{
    FlexGrid grid;
    grid.resize(400, 200);
    grid.SetDataSource(MakeTexts({QStringLiteral("customer"), QStringLiteral("id")}, {}));
    AutoSize(&grid);
    EXPECT_GE(ToPixels(grid.ColWidth(1)), TextWidth(grid, QStringLiteral("customer")) + 6);
    EXPECT_GT(Inked(grid, 0, 1), Inked(grid, 0, 2));
    EXPECT_GT(Inked(grid, 0, 2), 10);
    EXPECT_EQ(Hover(grid, 0, 1), QString()); // whole
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 1);
    grid.SetDataSource(MakeFamily({}));
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.RecordCount(), 0);
    EXPECT_FALSE(grid.CanExpand(1));
    grid.ExpandAll();
    EXPECT_FALSE(grid.grab().isNull());
}

// "9" under "c" was an empty cell, since not even the ellipsis fitted.
TEST(FlexGridFit, ACellThatHoldsSomethingNeverLooksEmpty)
{
    FlexGrid grid;
    grid.resize(400, 200);
    grid.SetDataSource(MakeTexts({QStringLiteral("i"), QStringLiteral("l"), QStringLiteral("heading")},
                                 {{QStringLiteral("9"), QStringLiteral("WW"), QStringLiteral("a longer text")}}));
    AutoSize(&grid);
    grid.SetCol(3); // the current cell's frame stays out of the picture
    EXPECT_LT(ToPixels(grid.ColWidth(1)), TextWidth(grid, QStringLiteral("9")) + 12); // as wide as its heading alone
    EXPECT_GT(Inked(grid, 1, 1), 8);
    EXPECT_GT(Inked(grid, 1, 2), 8);
    EXPECT_TRUE(Hover(grid, 1, 2).contains(QStringLiteral("WW")));
    EXPECT_TRUE(Hover(grid, 1, 3).contains(QStringLiteral("a longer text")));
    EXPECT_EQ(Hover(grid, 0, 3), QString());
}

TEST(FlexGridFit, HoveringShowsTheTextAsItIsAndNoMarkup)
{
    FlexGrid grid;
    grid.resize(400, 200);
    grid.SetDataSource(MakeTexts({QStringLiteral("t")}, {{QStringLiteral("<b>one</b>\nand two")}}));
    const QString shown = Hover(grid, 1, 1);
    EXPECT_TRUE(shown.contains(QStringLiteral("&lt;b&gt;one&lt;/b&gt;\nand two"))) << shown.toStdString();
    grid.SetRowHeight(1, 480);
    grid.SetColWidth(1, 6000);
    EXPECT_EQ(Hover(grid, 1, 1), QString()); // both lines show
    const QPoint below(50, grid.viewport()->height() - 5);
    QHelpEvent event(QEvent::ToolTip, below, grid.viewport()->mapToGlobal(below));
    QApplication::sendEvent(grid.viewport(), &event);
    EXPECT_FALSE(event.isAccepted());
}

// The double click's release was taken for a click on the heading, and sorted.
TEST(FlexGridFit, ADoubleClickOnAHeadingsEdgeFitsAndDoesNoMore)
{
    FlexGrid grid;
    grid.resize(600, 200);
    const QString text = QStringLiteral("a text that is longer than its heading");
    grid.SetDataSource(MakeTexts({QStringLiteral("c"), QStringLiteral("d")}, {{text, QStringLiteral("x")}}));
    AutoSize(&grid);
    grid.show();
    QSignalSpy released(&grid, &FlexGrid::MouseUp), opened(&grid, &FlexGrid::DoubleClick);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, Edge(grid, 1));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, Edge(grid, 1));
    EXPECT_GE(ToPixels(grid.ColWidth(1)), TextWidth(grid, text) + 6);
    EXPECT_LE(ToPixels(grid.ColWidth(1)), TextWidth(grid, text) + 16);
    EXPECT_EQ(Hover(grid, 1, 1), QString());
    EXPECT_EQ(released.size(), 0);
    EXPECT_EQ(opened.size(), 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(0, 1).center()); // a click is one again
    EXPECT_EQ(released.size(), 1);
}

TEST(FlexGridFit, FitColumnsFitsEveryColumnToWhatIsThere)
{
    FlexGrid grid;
    grid.resize(600, 200);
    grid.SetDataSource(MakeRows(300));
    grid.SetColWidth(0, 450);
    grid.SetTopRow(250);
    grid.SetTextMatrix(2, 2, QString(60, u'W')); // far above what shows
    grid.FitColumns();
    EXPECT_EQ(grid.ColWidth(0), 450); // the fixed column holds no text
    EXPECT_LT(ToPixels(grid.ColWidth(2)), TextWidth(grid, QString(60, u'W')));
    EXPECT_GE(ToPixels(grid.ColWidth(2)), TextWidth(grid, QStringLiteral("name 250")) + 6);
    grid.SetTopRow(1);
    grid.FitColumn(2);
    EXPECT_GE(ToPixels(grid.ColWidth(2)), TextWidth(grid, QString(60, u'W')) + 6);
}

// 240 read back as the font's own height, 270 or so.
TEST(FlexGridFit, AHeightReadsBackAsItWasSet)
{
    FlexGrid grid;
    grid.SetRows(5);
    for (const int height : {240, 480, 300, 0}) {
        grid.SetRowHeight(3, height);
        EXPECT_EQ(grid.RowHeight(3), height);
    }
    grid.SetRowHeight(3, 240);
    EXPECT_EQ(grid.RowPos(4) - grid.RowPos(3), grid.DefaultRowHeight()); // one line of the font all the same
    grid.SetRowHeight(3, -1);
    EXPECT_EQ(grid.RowHeight(3), grid.DefaultRowHeight());
}

// A row of many lines showed no more than 2000 characters of them.
TEST(FlexGridFit, ATallRowShowsItsLastLineToo)
{
    FlexGrid grid;
    grid.resize(900, 1400);
    grid.SetCols(2);
    grid.SetColWidth(1, 12000);
    grid.SetTextMatrix(1, 1, QString(QString(99, u'x') + u'\n').repeated(29) + QStringLiteral("WWW"));
    grid.SetRowHeight(1, 240 * 30);
    const QImage picture = grid.viewport()->grab().toImage();
    const QRect cell = grid.CellRect(1, 1);
    const int line = cell.height() / 30;
    int inked = 0;
    for (int y = cell.bottom() - line; y < cell.bottom() - 2; ++y)
        for (int x = cell.left() + 3; x < cell.left() + 40; ++x)
            inked += picture.pixelColor(x, y) != picture.pixelColor(cell.right() - 30, y);
    EXPECT_GT(inked, 20);
}
