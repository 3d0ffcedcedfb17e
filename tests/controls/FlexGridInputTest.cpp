// Keys and mouse of the grid, by real events.

#include "controls/FlexGrid.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>
#include <memory>

namespace {

std::unique_ptr<FlexGrid> Shown(qint64 rows = 201, int cols = 8)
{
    auto grid = std::make_unique<FlexGrid>();
    grid->SetRows(rows);
    grid->SetCols(cols);
    for (qint64 r = 1; r < rows; ++r)
        for (int c = 1; c < cols; ++c)
            grid->SetTextMatrix(r, c, QStringLiteral("%1/%2").arg(r).arg(c));
    grid->resize(400, 300);
    grid->show();
    grid->setFocus();
    QCoreApplication::processEvents();
    return grid;
}

void Press(FlexGrid &grid, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(&grid, key, modifiers);
}

std::pair<qint64, int> Cell(const FlexGrid &grid)
{
    return {grid.Row(), grid.Col()};
}

using Place = std::pair<qint64, int>;

} // namespace

TEST(FlexGridKeys, ArrowsMoveAndStopAtTheFixedCells)
{
    const auto grid = Shown();
    Press(*grid, Qt::Key_Down);
    Press(*grid, Qt::Key_Right);
    EXPECT_EQ(Cell(*grid), Place(2, 2));
    for (int i = 0; i < 5; ++i) {
        Press(*grid, Qt::Key_Up);
        Press(*grid, Qt::Key_Left);
    }
    EXPECT_EQ(Cell(*grid), Place(1, 1));
}

TEST(FlexGridKeys, HomeAndEndStayInTheRowAndWithControlSpanTheGrid)
{
    const auto grid = Shown();
    Press(*grid, Qt::Key_Down);
    Press(*grid, Qt::Key_End);
    EXPECT_EQ(Cell(*grid), Place(2, 7));
    EXPECT_FALSE(grid->CellRect(2, 7).isNull());
    Press(*grid, Qt::Key_Home);
    EXPECT_EQ(Cell(*grid), Place(2, 1));
    Press(*grid, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(Cell(*grid), Place(200, 7));
    EXPECT_TRUE(grid->RowIsVisible(200));
    Press(*grid, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(Cell(*grid), Place(1, 1));
    EXPECT_EQ(grid->TopRow(), 1);
}

TEST(FlexGridKeys, PagesKeepTheCellInView)
{
    const auto grid = Shown();
    Press(*grid, Qt::Key_PageDown);
    const qint64 page = grid->Row() - 1;
    EXPECT_GT(page, 5);
    EXPECT_TRUE(grid->RowIsVisible(grid->Row()));
    for (int i = 0; i < 40; ++i)
        Press(*grid, Qt::Key_PageDown);
    EXPECT_EQ(grid->Row(), 200);
    Press(*grid, Qt::Key_PageUp);
    EXPECT_EQ(grid->Row(), 200 - page);
}

TEST(FlexGridKeys, ShiftExtendsAndAMoveEndsTheBlock)
{
    const auto grid = Shown();
    Press(*grid, Qt::Key_Down, Qt::ShiftModifier);
    Press(*grid, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Cell(*grid), Place(1, 1));
    EXPECT_EQ(grid->RowSel(), 2);
    EXPECT_EQ(grid->ColSel(), 2);
    Press(*grid, Qt::Key_Down);
    EXPECT_EQ(grid->Row(), grid->RowSel());
    Press(*grid, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(grid->RowSel(), 200);
    EXPECT_EQ(grid->ColSel(), 7);
}

TEST(FlexGridKeys, SelectAllTakesEveryCellThatIsNotFixed)
{
    const auto grid = Shown();
    Press(*grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Cell(*grid), Place(1, 1));
    EXPECT_EQ(grid->RowSel(), 200);
    EXPECT_EQ(grid->ColSel(), 7);
}

TEST(FlexGridKeys, ReturnOpensAndTheMenuKeyAsksForTheMenu)
{
    const auto grid = Shown();
    QSignalSpy opened(grid.get(), &FlexGrid::DoubleClick), menu(grid.get(), &FlexGrid::MouseUp);
    Press(*grid, Qt::Key_Return);
    EXPECT_EQ(opened.size(), 1);
    Press(*grid, Qt::Key_Menu);
    ASSERT_EQ(menu.size(), 1);
    EXPECT_EQ(menu[0][0].value<Qt::MouseButton>(), Qt::RightButton);
}

TEST(FlexGridKeys, LeavesOtherKeysToTheWindow)
{
    QWidget window;
    auto *const grid = new FlexGrid(&window);
    window.show();
    grid->setFocus();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(grid, &escape);
    EXPECT_FALSE(escape.isAccepted());
}

TEST(FlexGridKeys, AGridOfFixedRowsOnlyTakesThemCalmly)
{
    const auto grid = Shown(1, 1);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Menu})
        Press(*grid, key);
    Press(*grid, Qt::Key_A, Qt::ControlModifier);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {5, 5});
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {200, 200});
    grid->SetRows(0);
    grid->SetCols(0);
    Press(*grid, Qt::Key_Down);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {5, 5});
    EXPECT_FALSE(grid->grab().isNull());
}

TEST(FlexGridMouse, AClickChoosesAndSaysSo)
{
    const auto grid = Shown();
    QSignalSpy clicks(grid.get(), &FlexGrid::Click), ups(grid.get(), &FlexGrid::MouseUp);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(3, 2).center());
    EXPECT_EQ(Cell(*grid), Place(3, 2));
    EXPECT_EQ(clicks.size(), 1);
    ASSERT_EQ(ups.size(), 1);
    EXPECT_EQ(ups[0][1].toPoint(), grid->CellRect(3, 2).center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(3, 2).center());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::ShiftModifier, grid->CellRect(6, 3).center());
    EXPECT_EQ(Cell(*grid), Place(3, 2));
    EXPECT_EQ(grid->RowSel(), 6);
}

TEST(FlexGridMouse, DoubleClickCountsOnCellsOnly)
{
    const auto grid = Shown();
    QSignalSpy doubles(grid.get(), &FlexGrid::DoubleClick);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(2, 2).center());
    EXPECT_EQ(doubles.size(), 1);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(0, 2).center());
    EXPECT_EQ(doubles.size(), 1);
}

TEST(FlexGridMouse, ARightClickInsideTheBlockKeepsIt)
{
    const auto grid = Shown();
    grid->Select(2, 1, 5, 3);
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, grid->CellRect(4, 2).center());
    EXPECT_EQ(grid->RowSel(), 5);
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, grid->CellRect(7, 2).center());
    EXPECT_EQ(Cell(*grid), Place(7, 2));
    EXPECT_EQ(grid->RowSel(), 7);
}

TEST(FlexGridMouse, HeaderFixedCellAndCornerSelectWhole)
{
    const auto grid = Shown();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(0, 3).center());
    EXPECT_EQ(grid->Col(), 3);
    EXPECT_EQ(grid->ColSel(), 3);
    EXPECT_EQ(grid->Row(), 1);
    EXPECT_EQ(grid->RowSel(), 200);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(4, 0).center());
    EXPECT_EQ(Cell(*grid), Place(4, 1));
    EXPECT_EQ(grid->ColSel(), 7);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(0, 0).center());
    EXPECT_EQ(grid->RowSel(), 200);
    EXPECT_EQ(grid->ColSel(), 7);
}

TEST(FlexGridMouse, DraggingSelectsAndScrollsPastTheEdge)
{
    const auto grid = Shown();
    const QPoint from = grid->CellRect(2, 1).center();
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, from);
    const auto drag = [&](const QPoint &to) {
        QMouseEvent move(QEvent::MouseMove, to, grid->viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(grid->viewport(), &move);
    };
    drag(grid->CellRect(6, 2).center());
    EXPECT_EQ(grid->RowSel(), 6);
    EXPECT_EQ(grid->ColSel(), 2);
    const qint64 top = grid->TopRow();
    drag({from.x(), grid->viewport()->height() + 60});
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid->TopRow() > top + 5; }, 5000));
    EXPECT_GT(grid->RowSel(), 15);
    drag({from.x(), 100});
    const qint64 rested = grid->TopRow();
    QTest::qWait(150);
    EXPECT_EQ(grid->TopRow(), rested);
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, {from.x(), 100});
    EXPECT_EQ(Cell(*grid), Place(2, 1));
}

TEST(FlexGridMouse, AHeadersEdgeResizesAndIsNoClick)
{
    const auto grid = Shown();
    QSignalSpy ups(grid.get(), &FlexGrid::MouseUp);
    const int before = grid->ColWidth(2);
    const QRect head = grid->CellRect(0, 2);
    const QPoint edge(head.right() + 1, head.center().y());
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, edge);
    const QPoint to = edge + QPoint(40, 0);
    QMouseEvent move(QEvent::MouseMove, to, grid->viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(grid->viewport(), &move);
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(grid->ColWidth(2), before + ToTwips(40));
    EXPECT_EQ(ups.size(), 0);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, to);
    EXPECT_LT(grid->ColWidth(2), before + ToTwips(40));
}

TEST(FlexGridMouse, TheWheelScrollsByRowsAndKeepsTheRest)
{
    const auto grid = Shown();
    const auto turn = [&](int angle) {
        QWheelEvent wheel(QPointF(50, 50), grid->viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, angle}, {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid->viewport(), &wheel);
    };
    turn(-120);
    EXPECT_EQ(grid->TopRow(), 1 + QApplication::wheelScrollLines());
    turn(120);
    EXPECT_EQ(grid->TopRow(), 1);
    for (int i = 0; i < 40; ++i) // forty small turns are one row, as they come from a touchpad
        turn(-1);
    EXPECT_EQ(grid->TopRow(), 2);
}

TEST(FlexGridView, ScrollBarsReachTheLastRowAndColumn)
{
    const auto grid = Shown(201, 20);
    grid->verticalScrollBar()->setValue(grid->verticalScrollBar()->maximum());
    EXPECT_TRUE(grid->RowIsVisible(200));
    grid->horizontalScrollBar()->setValue(grid->horizontalScrollBar()->maximum());
    EXPECT_LE(grid->CellRect(200, 19).right(), grid->viewport()->width());
    EXPECT_GT(grid->LeftCol(), 1);
    grid->SetTopRow(50);
    grid->SetLeftCol(3);
    EXPECT_EQ(grid->TopRow(), 50);
    EXPECT_EQ(grid->LeftCol(), 3);
    EXPECT_EQ(grid->RowPos(50), grid->RowHeight(0));
    EXPECT_TRUE(grid->CellRect(49, 3).isNull());
    EXPECT_EQ(grid->MouseRow(grid->CellRect(52, 4).center()), 52);
    EXPECT_EQ(grid->MouseCol(grid->CellRect(52, 4).center()), 4);
}
