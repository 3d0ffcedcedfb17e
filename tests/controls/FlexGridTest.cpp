// Shape, texts, colours, heights and sorting of a grid that holds its own texts.

#include "controls/FlexGrid.h"
#include "controls/Attempt.h"
#include "controls/ControlError.h"
#include "controls/Twips.h"
#include <QAccessible>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

const QString logFormat = QStringLiteral("    | Type          |Time Stamp                     |Value");

QStringList Column(const FlexGrid &grid, int col, qint64 from = 1)
{
    QStringList texts;
    for (qint64 r = from; r < grid.Rows(); ++r)
        texts << grid.TextMatrix(r, col);
    return texts;
}

void Fill(FlexGrid &grid, const QStringList &texts)
{
    grid.SetRows(texts.size() + 1);
    for (qsizetype i = 0; i < texts.size(); ++i)
        grid.SetTextMatrix(i + 1, 1, texts[i]);
}

} // namespace

TEST(FlexGrid, StartsWithOneFixedRowAndColumn)
{
    FlexGrid grid;
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.FixedCols(), 1);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
}

TEST(FlexGrid, RaisesOutOfRangeCellsAndGoesOn)
{
    FlexGrid grid;
    for (const auto &[row, col] : {std::pair<int, int>{2, 0}, {-1, 0}, {0, 2}, {0, -1}}) {
        int number = 0;
        try {
            grid.TextMatrix(row, col);
        } catch (const ControlError &error) {
            number = error.Number;
        }
        EXPECT_EQ(number, ctlErrSubscript) << row << "," << col;
    }
    EXPECT_THROW(grid.SetTextMatrix(2, 0, QStringLiteral("x")), ControlError);
    EXPECT_THROW(grid.SetRow(2), ControlError);
    EXPECT_THROW(grid.SetColSel(-1), ControlError);
    EXPECT_THROW(grid.RowHeight(2), ControlError);
    EXPECT_THROW(grid.RemoveItem(2), ControlError);
    QString why;
    EXPECT_FALSE(Attempt([&] { grid.SetCol(9); }, &why));
    EXPECT_FALSE(why.isEmpty());
    EXPECT_EQ(grid.Col(), 1);
}

TEST(FlexGrid, KeepsTextsWhenItGrowsAndDropsThemWhenItShrinks)
{
    FlexGrid grid;
    grid.SetTextMatrix(1, 1, QStringLiteral("a"));
    grid.SetRows(5);
    grid.SetCols(4);
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("a"));
    EXPECT_EQ(grid.TextMatrix(4, 3), QString());
    grid.SetTextMatrix(4, 3, QStringLiteral("z"));
    grid.SetRows(2);
    grid.SetRows(5);
    EXPECT_EQ(grid.TextMatrix(4, 3), QString());
    grid.SetCols(1);
    grid.SetCols(4);
    EXPECT_EQ(grid.TextMatrix(1, 1), QString());
}

TEST(FlexGrid, ShrinkingTakesTheCurrentCellAlong)
{
    FlexGrid grid;
    grid.SetRows(10);
    grid.Select(9, 1, 8, 1);
    grid.SetRows(3);
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.RowSel(), 2);
    grid.SetRows(0);
    EXPECT_EQ(grid.Text(), QString());
}

TEST(FlexGrid, AddsAtTheEndAndAtAPlaceAndRemoves)
{
    FlexGrid grid;
    grid.SetCols(3);
    grid.SetRows(1);
    grid.AddItem(QStringLiteral("0\ta\tb"));
    grid.AddItem(QStringLiteral("\tc"));
    grid.AddItem(QStringLiteral("\tfirst\tx\tcut"), 1);
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(Column(grid, 1), (QStringList{QStringLiteral("first"), QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_EQ(grid.TextMatrix(2, 0), QStringLiteral("0"));
    grid.RemoveItem(1);
    EXPECT_EQ(Column(grid, 1), (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    grid.AddItem(QString());
    grid.SetTextMatrix(3, 1, QStringLiteral("later"));
    EXPECT_EQ(Column(grid, 1), (QStringList{QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("later")}));
    EXPECT_THROW(grid.AddItem(QStringLiteral("x"), 99), ControlError);
}

TEST(FlexGrid, TwentyThousandLogRowsAreQuick)
{
    FlexGrid grid;
    grid.SetFormatString(logFormat);
    for (int i = 0; i < 20000; ++i) {
        grid.AddItem(QString());
        grid.SetTextMatrix(grid.Rows() - 1, 3, QStringLiteral("line"));
        grid.SetRowHeight(grid.Rows() - 1, i % 50 == 0 ? 720 : 240);
    }
    EXPECT_EQ(grid.Rows(), 20002);
    grid.SetTopRow(grid.Rows() - 1);
    EXPECT_TRUE(grid.RowIsVisible(grid.Rows() - 1));
}

TEST(FlexGrid, FormatStringNamesColumnsAndFitsThem)
{
    FlexGrid grid;
    grid.SetFormatString(logFormat);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.TextMatrix(0, 0), QString());
    EXPECT_EQ(grid.TextMatrix(0, 1), QStringLiteral("Type"));
    EXPECT_EQ(grid.TextMatrix(0, 2), QStringLiteral("Time Stamp"));
    EXPECT_EQ(grid.TextMatrix(0, 3), QStringLiteral("Value"));
    EXPECT_GT(grid.ColWidth(2), grid.ColWidth(1));
    EXPECT_EQ(grid.FormatString(), logFormat);
    grid.SetFormatString(QStringLiteral("<left|^middle|>right"));
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.TextMatrix(0, 1), QStringLiteral("middle"));
}

TEST(FlexGrid, ClearTakesTextsAndColoursAndKeepsTheShape)
{
    FlexGrid grid;
    grid.SetFormatString(logFormat);
    grid.AddItem(QStringLiteral("\ta\tb\tc"));
    grid.SetRow(2);
    grid.SetCellBackColor(Qt::yellow);
    grid.Clear();
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.TextMatrix(2, 1), QString());
    EXPECT_EQ(grid.TextMatrix(0, 1), QString());
    EXPECT_NE(grid.CellBackColor(), QColor(Qt::yellow));
    grid.SetRows(2);
    grid.SetFormatString(logFormat);
    EXPECT_EQ(grid.TextMatrix(0, 3), QStringLiteral("Value"));
}

TEST(FlexGrid, ClearStructureLeavesTheSmallestGrid)
{
    FlexGrid grid;
    grid.SetFormatString(logFormat);
    grid.SetFixedRows(0);
    grid.ClearStructure();
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.FormatString(), QString());
    EXPECT_EQ(grid.ColWidth(1), 960);
}

TEST(FlexGrid, RowHeightsFollowTheirRows)
{
    FlexGrid grid;
    grid.SetRows(6);
    EXPECT_GE(ToPixels(grid.RowHeight(1)), std::max(16, grid.fontMetrics().height() + 4));
    grid.SetRowHeight(3, 720);
    EXPECT_EQ(grid.RowHeight(3), 720);
    EXPECT_EQ(grid.RowPos(4) - grid.RowPos(3), 3 * grid.DefaultRowHeight());
    EXPECT_EQ(grid.RowPos(3) - grid.RowPos(2), grid.DefaultRowHeight());
    grid.RemoveItem(2);
    EXPECT_EQ(grid.RowHeight(2), 720);
    EXPECT_EQ(grid.RowHeight(3), grid.DefaultRowHeight());
    grid.AddItem(QString(), 1);
    EXPECT_EQ(grid.RowHeight(3), 720);
    grid.RemoveItem(3);
    EXPECT_EQ(grid.RowHeight(3), grid.DefaultRowHeight());
    EXPECT_EQ(grid.RowPos(0), 0);
}

TEST(FlexGrid, SettingRowOrColEndsTheBlock)
{
    FlexGrid grid;
    grid.SetRows(9);
    grid.SetCols(5);
    QSignalSpy cells(&grid, &FlexGrid::RowColChange), blocks(&grid, &FlexGrid::SelChange);
    grid.Select(2, 1, 4, 3);
    EXPECT_EQ(cells.size(), 1);
    grid.SetRowSel(5);
    EXPECT_EQ(grid.RowSel(), 5);
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(cells.size(), 1);
    EXPECT_EQ(blocks.size(), 2);
    grid.SetCol(2);
    EXPECT_EQ(grid.RowSel(), 2);
    EXPECT_EQ(grid.ColSel(), 2);
    grid.SetCol(2);
    EXPECT_EQ(cells.size(), 2);
}

TEST(FlexGrid, ClipIsTheBlockInEitherDirection)
{
    FlexGrid grid;
    grid.SetRows(3);
    grid.SetCols(3);
    for (int r = 1; r < 3; ++r)
        for (int c = 1; c < 3; ++c)
            grid.SetTextMatrix(r, c, QString::number(r * 10 + c));
    grid.Select(2, 2, 1, 1);
    EXPECT_EQ(grid.Clip(), QStringLiteral("11\t12\r21\t22"));
    EXPECT_EQ(grid.Text(), QStringLiteral("22"));
}

TEST(FlexGrid, CellColoursBelongToOneCell)
{
    FlexGrid grid;
    grid.SetRows(4);
    grid.SetRow(2);
    grid.SetCellBackColor(QColor(255, 255, 0));
    grid.SetCellForeColor(Qt::red);
    EXPECT_EQ(grid.CellBackColor(), QColor(255, 255, 0));
    grid.SetRow(3);
    EXPECT_EQ(grid.CellBackColor(), grid.BackColor());
    grid.SetRow(2);
    EXPECT_EQ(grid.CellForeColor(), QColor(Qt::red));
    grid.SetCellBackColor(grid.BackColor());
    grid.SetCellForeColor(grid.ForeColor());
    EXPECT_EQ(grid.CellBackColor(), grid.BackColor());
    grid.SetBackColor(Qt::blue); // a cell without a colour of its own follows the grid
    EXPECT_EQ(grid.CellBackColor(), QColor(Qt::blue));
}

TEST(FlexGridSort, TellsNumbersFromTexts)
{
    FlexGrid grid;
    Fill(grid, {QStringLiteral("10"), QStringLiteral("9"), QStringLiteral("-1"), QStringLiteral("100")});
    grid.SetSort(flexSortGenericAscending);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("-1,9,10,100"));
    grid.SetSort(flexSortGenericDescending);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("100,10,9,-1"));
    Fill(grid, {QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("10")});
    grid.SetSort(flexSortGenericAscending);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("10,A,b,C"));
}

TEST(FlexGridSort, CanBeGivenUpAndThenLeavesTheOrder)
{
    FlexGrid grid;
    QStringList texts;
    for (int i = 0; i < 5000; ++i)
        texts << QString::number(i * 7919 % 5003);
    Fill(grid, texts);
    int asked = 0;
    EXPECT_FALSE(grid.SetSort(flexSortNumericAscending, [&] { return ++asked < 3; }));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(Column(grid, 1), texts);
    EXPECT_EQ(grid.Sort(), flexSortNone);
    EXPECT_TRUE(grid.SetSort(flexSortNumericAscending, [&] { return ++asked > 0; }));
    EXPECT_GT(asked, 5);
    EXPECT_EQ(grid.TextMatrix(1, 1), "0");
    EXPECT_EQ(grid.Sort(), flexSortNumericAscending);
}

TEST(FlexGridSort, AGridThatChangesOrGoesMeanwhileIsLeftAlone)
{
    auto *grid = new FlexGrid;
    Fill(*grid, QStringList(5000, QStringLiteral("x")));
    EXPECT_FALSE(grid->SetSort(flexSortGenericAscending, [&] {
        grid->SetRows(2);
        return true;
    }));
    EXPECT_EQ(grid->Rows(), 2);
    Fill(*grid, QStringList(5000, QStringLiteral("x")));
    EXPECT_FALSE(grid->SetSort(flexSortGenericAscending, [&] {
        delete grid;
        return true;
    }));
}

TEST(FlexGridSort, NumericReadsLeadingNumbers)
{
    FlexGrid grid;
    Fill(grid, {QStringLiteral("9 apples"), QStringLiteral("x"), QStringLiteral("10"), QStringLiteral("-3")});
    grid.SetSort(flexSortNumericAscending);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("-3,x,9 apples,10"));
    grid.SetSort(flexSortNumericDescending);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("10,9 apples,x,-3"));
    EXPECT_EQ(grid.Sort(), 4);
}

TEST(FlexGridSort, KeepsEqualRowsInOrderAndTakesHeightsAndColoursAlong)
{
    FlexGrid grid;
    grid.SetCols(3);
    Fill(grid, {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a")});
    for (int r = 1; r <= 4; ++r)
        grid.SetTextMatrix(r, 2, QString::number(r));
    grid.SetRowHeight(2, 480);
    grid.SetRow(4);
    grid.SetCellBackColor(Qt::red);
    grid.SetRow(0); // sorting works on all rows of data, wherever the current cell is
    grid.SetSort(flexSortGenericAscending);
    EXPECT_EQ(Column(grid, 2).join(u','), QStringLiteral("2,4,1,3"));
    EXPECT_EQ(grid.RowHeight(1), 480);
    EXPECT_EQ(grid.RowHeight(2), grid.DefaultRowHeight());
    grid.SetRow(2);
    EXPECT_EQ(grid.CellBackColor(), QColor(Qt::red));
    EXPECT_EQ(grid.TextMatrix(0, 1), QString());
}

TEST(FlexGridSort, RowsMayBeAddedAndRemovedAfterwards)
{
    FlexGrid grid;
    Fill(grid, {QStringLiteral("3"), QStringLiteral("1"), QStringLiteral("2")});
    grid.SetSort(flexSortNumericAscending);
    grid.RemoveItem(2);
    grid.AddItem(QStringLiteral("\t7"));
    grid.AddItem(QStringLiteral("\t0"), 1);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("0,1,3,7"));
    grid.SetRows(2);
    EXPECT_EQ(Column(grid, 1).join(u','), QStringLiteral("0"));
}

TEST(FlexGridSort, SeveralColumnsFromTheLeft)
{
    FlexGrid grid;
    grid.SetCols(3);
    Fill(grid, {QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("b")});
    grid.SetTextMatrix(1, 2, QStringLiteral("2"));
    grid.SetTextMatrix(2, 2, QStringLiteral("9"));
    grid.SetTextMatrix(3, 2, QStringLiteral("1"));
    grid.Select(1, 1, 1, 2);
    grid.SetSort(flexSortGenericAscending);
    EXPECT_EQ(Column(grid, 2).join(u','), QStringLiteral("9,1,2"));
    grid.SetSort(99); // no such mode: nothing happens
    EXPECT_EQ(Column(grid, 2).join(u','), QStringLiteral("9,1,2"));
}

TEST(FlexGridAutoSize, TheLongestIsTheWidestOnTheScreen)
{
    FlexGrid grid;
    grid.SetCols(2);
    grid.SetRows(4);
    grid.SetTextMatrix(1, 1, QStringLiteral("iiiiiiiiii"));
    grid.SetTextMatrix(2, 1, QStringLiteral("WWWWWWWW"));
    AutoSize(&grid);
    EXPECT_EQ(grid.ColWidth(1), ToTwips(QFontMetrics(grid.font()).horizontalAdvance(QStringLiteral("WWWWWWWW "))) + 60);
}

TEST(FlexGridAutoSize, TakesTheLongestOfFiftyOneRowsButNeverTheLast)
{
    FlexGrid grid;
    grid.SetCols(3);
    grid.SetRows(60);
    grid.SetTextMatrix(0, 1, QStringLiteral("head"));
    grid.SetTextMatrix(50, 1, QStringLiteral("the longest seen"));
    grid.SetTextMatrix(51, 1, QStringLiteral("much longer, but below the fifty-first row"));
    AutoSize(&grid);
    const QFontMetrics metrics(grid.font());
    EXPECT_EQ(grid.ColWidth(1), ToTwips(metrics.horizontalAdvance(QStringLiteral("the longest seen "))) + 60);
    EXPECT_EQ(grid.ColWidth(2), ToTwips(metrics.horizontalAdvance(QStringLiteral(" "))) + 60);
    grid.SetRows(2); // the one row of data is the last: only the head counts
    grid.SetTextMatrix(1, 1, QStringLiteral("never measured"));
    AutoSize(&grid);
    EXPECT_EQ(grid.ColWidth(1), ToTwips(metrics.horizontalAdvance(QStringLiteral("head "))) + 60);
}

TEST(FlexGridAccess, SaysNameAndCell)
{
    FlexGrid grid;
    grid.SetFormatString(logFormat);
    grid.SetTextMatrix(1, 1, QStringLiteral("Log"));
    QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->text(QAccessible::Value), QStringLiteral("Log"));
    EXPECT_EQ(face->text(QAccessible::Description), QStringLiteral("Type, row 1"));
    grid.setAccessibleName(QStringLiteral("Messages"));
    EXPECT_EQ(face->text(QAccessible::Name), QStringLiteral("Messages"));
}
