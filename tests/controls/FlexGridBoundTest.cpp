// The grid on recordsets: what it answers, what it does not keep, a million rows, and hierarchies.

#include "MakeRecordset.h"
#include "controls/ControlError.h"
#include "controls/FlexGrid.h"
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

TEST(FlexGridBound, AnswersNamesAndCells)
{
    FlexGrid grid;
    grid.SetDataSource(MakeRows(20));
    EXPECT_EQ(grid.Rows(), 21);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.RecordCount(), 20);
    EXPECT_EQ(grid.TextMatrix(0, 0), QString());
    EXPECT_EQ(grid.TextMatrix(0, 2), QStringLiteral("Name"));
    EXPECT_EQ(grid.TextMatrix(3, 1), QStringLiteral("3"));
    EXPECT_EQ(grid.TextMatrix(3, 2), QStringLiteral("name 3"));
    EXPECT_EQ(grid.TextMatrix(3, 3), QStringLiteral("1.5"));
    EXPECT_TRUE(grid.CellIsNull(10, 3));
    EXPECT_EQ(grid.TextMatrix(10, 3), QString());
    EXPECT_FALSE(grid.CellIsNull(9, 3));
    EXPECT_FALSE(grid.CellIsNull(0, 3));
    EXPECT_EQ(grid.TextMatrix(3, 0), QString());
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_THROW(grid.TextMatrix(21, 1), ControlError);
}

TEST(FlexGridBound, NeverMovesTheRecordset)
{
    const ADODB::RecordsetPtr rows = MakeRows(20);
    rows->MoveFirst();
    rows->Move(4);
    FlexGrid grid;
    grid.SetDataSource(rows);
    grid.resize(300, 300);
    grid.grab();
    EXPECT_EQ(rows->AbsolutePosition(), 5);
}

TEST(FlexGridBound, AnEmptyResultHasNamesAndNoRow)
{
    FlexGrid grid;
    grid.SetDataSource(MakeRows(0));
    EXPECT_EQ(grid.Rows(), 2); // with the names alone, nothing was measured: the names stood in slits
    EXPECT_EQ(grid.RecordCount(), 0);
    EXPECT_EQ(grid.TextMatrix(0, 1), QStringLiteral("Id"));
    EXPECT_EQ(grid.TextMatrix(1, 1), QString());
    EXPECT_FALSE(grid.CellIsNull(1, 1));
    EXPECT_FALSE(grid.grab().isNull());
    QTest::keyClick(&grid, Qt::Key_Down);
    grid.SetSort(flexSortNumericDescending);
    AutoSize(&grid);
    EXPECT_GE(grid.ColWidth(2), grid.fontMetrics().horizontalAdvance(QStringLiteral("Name")) * 15 + 60);
    EXPECT_EQ(grid.RecordCount(), 0);
}

TEST(FlexGridBound, AResultWithoutFieldsIsSurvived)
{
    FlexGrid grid;
    grid.SetDataSource(ADODB::Recordset::FromColumns({}, {}));
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.RecordCount(), 0);
    EXPECT_FALSE(grid.grab().isNull());
    grid.SetDataSource(nullptr);
    EXPECT_EQ(grid.Rows(), 2);
}

TEST(FlexGridBound, KeepsAnOverwrittenCellAndNothingThatIsTheSame)
{
    FlexGrid grid;
    const ADODB::RecordsetPtr rows = MakeRows(5);
    grid.SetDataSource(rows);
    grid.SetTextMatrix(2, 2, QStringLiteral("other"));
    EXPECT_EQ(grid.TextMatrix(2, 2), QStringLiteral("other"));
    EXPECT_EQ(rows->CellText(1, 1), QStringLiteral("name 2"));
    grid.SetTextMatrix(2, 2, QStringLiteral("name 2"));
    EXPECT_EQ(grid.TextMatrix(2, 2), QStringLiteral("name 2"));
    grid.SetTextMatrix(3, 0, QStringLiteral("*"));
    EXPECT_EQ(grid.TextMatrix(3, 0), QStringLiteral("*"));
    grid.SetTextMatrix(4, 3, QString());
    EXPECT_EQ(grid.TextMatrix(4, 3), QString());
    grid.SetRows(8);
    EXPECT_EQ(grid.TextMatrix(7, 2), QString());
    grid.SetTextMatrix(7, 2, QStringLiteral("new"));
    EXPECT_EQ(grid.TextMatrix(7, 2), QStringLiteral("new"));
    grid.RemoveItem(1);
    EXPECT_EQ(grid.TextMatrix(1, 2), QStringLiteral("name 2"));
    EXPECT_EQ(grid.TextMatrix(6, 2), QStringLiteral("new"));
}

TEST(FlexGridBound, ARecordsetThatShrinksBehindTheGridLeavesEmptyCells)
{
    FlexGrid grid;
    const ADODB::RecordsetPtr rows = MakeTexts({QStringLiteral("A")}, {{QStringLiteral("x")}, {QStringLiteral("y")}});
    grid.SetDataSource(rows);
    rows->SetFilter(QStringLiteral("A = 'y'"));
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("y"));
    EXPECT_EQ(grid.TextMatrix(2, 1), QString());
    EXPECT_FALSE(grid.grab().isNull());
}

TEST(FlexGridBound, SortsByTypeWithoutMovingRows)
{
    FlexGrid grid;
    const ADODB::RecordsetPtr rows = MakeRows(30);
    grid.SetDataSource(rows);
    grid.SetCol(3);
    grid.SetSort(flexSortNumericDescending);
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("29"));
    EXPECT_TRUE(grid.CellIsNull(30, 3));
    EXPECT_EQ(grid.TextMatrix(28, 1), QStringLiteral("10")); // the nulls keep their order
    EXPECT_EQ(grid.TextMatrix(30, 1), QStringLiteral("30"));
    grid.SetCol(2);
    grid.SetSort(flexSortGenericAscending);
    EXPECT_EQ(grid.TextMatrix(1, 2), QStringLiteral("name 1"));
    EXPECT_EQ(grid.TextMatrix(2, 2), QStringLiteral("name 10"));
    grid.SetSort(flexSortNumericAscending); // texts without a number are all 0
    EXPECT_EQ(grid.TextMatrix(0, 2), QStringLiteral("Name"));
    EXPECT_EQ(rows->CellText(0, 0), QStringLiteral("1"));
}

TEST(FlexGridBound, SortsTextColumnsOfNumbersAsNumbersWhereAsked)
{
    FlexGrid grid;
    grid.SetDataSource(
        MakeTexts({QStringLiteral("N")},
                  {{QStringLiteral("10")}, {QStringLiteral("9")}, {QString()}, {QStringLiteral("1,234")}}));
    grid.SetSort(flexSortNumericAscending);
    EXPECT_EQ(grid.TextMatrix(1, 1), QString());
    EXPECT_EQ(grid.TextMatrix(2, 1), QStringLiteral("1,234")); // reads as 1
    EXPECT_EQ(grid.TextMatrix(3, 1), QStringLiteral("9"));
}

TEST(FlexGridBound, AMillionRowsBindAndJumpAtOnce)
{
    const ADODB::RecordsetPtr rows = MakeRows(1000000);
    const qint64 held = rows->BytesHeld();
    FlexGrid grid;
    grid.resize(500, 400);
    grid.SetDataSource(rows);
    EXPECT_EQ(grid.Rows(), 1000001);
    grid.show();
    for (const qint64 row : {1LL, 999999LL, 500000LL, 123456LL, 1000000LL}) {
        grid.SetRow(row);
        grid.EnsureVisible(row, 1);
        EXPECT_TRUE(grid.RowIsVisible(row));
        EXPECT_EQ(grid.Text(), QString::number(row));
        EXPECT_FALSE(grid.CellRect(row, 1).isNull());
    }
    EXPECT_EQ(grid.verticalScrollBar()->maximum(), grid.TopRow() - 1);
    grid.grab();
    EXPECT_LT(rows->BytesHeld(), held + 1000); // nothing was made of cells that were not read
    QTest::keyClick(&grid, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(grid.TopRow(), 1);
    grid.SetCol(1);
    grid.SetSort(flexSortNumericDescending);
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("1000000"));
}

TEST(FlexGridBound, AHugeCellPaintsAndMeasuresCalmly)
{
    FlexGrid grid;
    grid.SetDataSource(
        MakeTexts({QStringLiteral("T")}, {{QString(4000000, QChar(0x4e2d))}, {QStringLiteral("b\r\nc")}, {QString()}}));
    grid.resize(300, 200);
    EXPECT_FALSE(grid.grab().isNull());
    AutoSize(&grid);
    EXPECT_FALSE(grid.grab().isNull());
    EXPECT_EQ(grid.TextMatrix(1, 1).size(), 4000000);
}

TEST(FlexGridBound, NullCellsStandOnAGroundOfTheirOwn)
{
    FlexGrid grid;
    grid.SetDataSource(MakeTexts({QStringLiteral("A")}, {{QStringLiteral("x")}, {QString()}, {QStringLiteral("")}}));
    grid.SetBackColor(QColor(38, 62, 21));
    grid.resize(300, 200);
    const QImage picture = grid.viewport()->grab().toImage();
    const auto ground = [&](int row) { return picture.pixelColor(grid.CellRect(row, 1).center() + QPoint(10, 0)); };
    EXPECT_NE(ground(2), ground(3));
    EXPECT_EQ(ground(3), QColor(38, 62, 21));
}

TEST(FlexGridBands, ShowTheFirstBandAndOpenOntoTheNext)
{
    FlexGrid grid;
    grid.SetDataSource(MakeFamily({1, 2, 3}));
    EXPECT_EQ(grid.Bands(), 2);
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(grid.RecordCount(), 3);
    EXPECT_EQ(grid.Cols(), 2); // the chapter is no column
    EXPECT_TRUE(grid.CanExpand(2));
    EXPECT_FALSE(grid.CanExpand(0));
    QSignalSpy changed(&grid, &FlexGrid::DataChanged);
    grid.Expand(2);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(grid.Rows(), 4 + 1 + 2); // a row of names and two children
    EXPECT_EQ(grid.BandLevel(3), 1);
    EXPECT_EQ(grid.TextMatrix(3, 1), QStringLiteral("Parent1"));
    EXPECT_EQ(grid.TextMatrix(4, 1), QStringLiteral("row 1 of level 1"));
    EXPECT_EQ(grid.TextMatrix(6, 1), QStringLiteral("row 3 of level 2"));
    EXPECT_EQ(grid.RecordCount(), 3);
    grid.Collapse(2);
    EXPECT_EQ(grid.Rows(), 4);
}

TEST(FlexGridBands, HeadersAndIndentsBelongToBands)
{
    FlexGrid grid;
    grid.SetDataSource(MakeFamily({1, 2, 3}, 3));
    EXPECT_EQ(grid.Bands(), 3);
    EXPECT_EQ(grid.ColHeaderCaption(0, 1), QStringLiteral("Parent3"));
    EXPECT_EQ(grid.ColHeaderCaption(2, 1), QStringLiteral("Parent1"));
    EXPECT_EQ(grid.ColHeaderCaption(2, 5), QString());
    grid.SetColHeader(1, false);
    grid.SetBandIndent(1, 5);
    EXPECT_EQ(grid.BandIndent(1), 5);
    grid.ExpandAll();
    // 3 rows, 1 + 2 + 3 below without names, below each of these 1..n with a row of names.
    EXPECT_EQ(grid.Rows(), 1 + 3 + 6 + (1 + 1 + 2 + 1 + 2 + 3) + 6);
    grid.CollapseAll();
    EXPECT_EQ(grid.Rows(), 4);
    grid.SetFixedRows(0);
    grid.SetRow(1);
    grid.SetSort(flexSortGenericDescending);
    EXPECT_EQ(grid.TextMatrix(1, 1), QStringLiteral("row 3 of level 3"));
}

TEST(FlexGridBands, OpenByKeysAndByTheTriangle)
{
    FlexGrid grid;
    grid.resize(400, 300);
    grid.SetDataSource(MakeFamily({1, 2, 3}));
    grid.show();
    grid.SetRow(3);
    QTest::keyClick(&grid, Qt::Key_Plus);
    EXPECT_TRUE(grid.IsExpanded(3));
    EXPECT_FALSE(grid.grab().isNull());
    QTest::keyClick(&grid, Qt::Key_Minus);
    EXPECT_FALSE(grid.IsExpanded(3));
    const QRect cell = grid.CellRect(1, 1);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {cell.left() - 9, cell.center().y()});
    EXPECT_TRUE(grid.IsExpanded(1));
    EXPECT_EQ(grid.Row(), 3 + 2); // the current cell stays on its row
    grid.RemoveItem(1);
    EXPECT_EQ(grid.Rows(), 3);
    grid.SetRows(1);
    EXPECT_FALSE(grid.grab().isNull());
}
