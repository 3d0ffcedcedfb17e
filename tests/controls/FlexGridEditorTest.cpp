// Editors over the cells of a grid, by real events.

#include "controls/FlexGridEditor.h"
#include "controls/FlexGrid.h"
#include "controls/Twips.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// Columns: 0 text, 1 list, 2 hidden, 3 without an editor, 4 text again.
class GridEditors : public testing::Test
{
protected:
    GridEditors()
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(grid);
        column->addWidget(behind);
        grid->SetRows(40);
        grid->SetCols(5);
        grid->SetFixedCols(0);
        grid->SetColWidth(2, 0);
        editors = new FlexGridEditor(grid);
        editors->SetEditor(0, text);
        editors->SetEditor(1, list);
        editors->SetEditor(2, new QCheckBox);
        editors->SetEditor(4, text);
        list->addItems({"a", "b"});
        QObject::connect(editors, &FlexGridEditor::Opening, [this](QWidget *editor, qint64 row, int col) {
            told << QString("open %1 %2").arg(row).arg(col);
            if (editor == text)
                text->setText(grid->TextMatrix(row, col));
        });
        QObject::connect(editors, &FlexGridEditor::Closing, [this](QWidget *editor, qint64 row, int col) {
            told << QString("close %1 %2").arg(row).arg(col);
            if (editor == text && row < grid->Rows())
                grid->SetTextMatrix(row, col, text->text());
        });
        QObject::connect(editors, &FlexGridEditor::Pressed, [this](qint64 row, Qt::MouseButton button, const QPoint &) {
            told << QString("press %1 %2").arg(row).arg(int(button));
        });
        window.resize(420, 320);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }
    void Click(qint64 row, int col, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(grid->viewport(), button, {}, grid->CellRect(row, col).center());
        QCoreApplication::processEvents();
    }
    std::pair<qint64, int> Where() const
    {
        return editors->Current() ? std::pair(editors->Row(), editors->Col()) : std::pair<qint64, int>(-1, -1);
    }
    static void Key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    using At = std::pair<qint64, int>;
    QWidget window;
    FlexGrid *grid = new FlexGrid;
    QPushButton *behind = new QPushButton("behind");
    QLineEdit *text = new QLineEdit;
    QComboBox *list = new QComboBox;
    FlexGridEditor *editors = nullptr;
    QStringList told;
};

} // namespace

TEST_F(GridEditors, LieOverTheCellThatWasClicked)
{
    grid->SetTextMatrix(2, 0, "two");
    Click(2, 0);
    EXPECT_EQ(told, QStringList({"press 2 1", "open 2 0"}));
    ASSERT_TRUE(text->isVisible());
    EXPECT_TRUE(text->hasFocus());
    EXPECT_EQ(text->text(), "two");
    const QRect cell = grid->CellRect(2, 0);
    EXPECT_EQ(text->geometry(), QRect(cell.x(), cell.y(), ToPixels(ToTwips(cell.width()) - 10), cell.height()));
    EXPECT_EQ(grid->CellLeft(), ToTwips(cell.x()));
    EXPECT_EQ(grid->CellTop(), ToTwips(cell.y()));
    EXPECT_EQ(grid->CellWidth(), ToTwips(cell.width()));
    QTest::keyClicks(text, "!");
    told.clear();
    Click(3, 1);
    EXPECT_EQ(told, QStringList({"close 2 0", "press 3 1", "open 3 1"}));
    EXPECT_EQ(grid->TextMatrix(2, 0), "two!");
    EXPECT_FALSE(text->isVisible());
    EXPECT_TRUE(list->isVisible());
    Click(3, 3); // no editor there
    EXPECT_EQ(Where(), At(-1, -1));
    EXPECT_EQ(grid->Row(), 3);
    EXPECT_EQ(grid->Col(), 3);
}

TEST_F(GridEditors, HideForTheHeadingTheGroundAndTheRightButton)
{
    Click(2, 0);
    Click(0, 0);
    EXPECT_EQ(Where(), At(-1, -1));
    Click(2, 0);
    told.clear();
    Click(4, 1, Qt::RightButton);
    EXPECT_EQ(Where(), At(-1, -1));
    EXPECT_EQ(told, QStringList({"close 2 0", "press 4 2"}));
    EXPECT_TRUE(grid->hasFocus());
    grid->SetRows(3);
    Click(2, 0);
    told.clear();
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, {10, grid->viewport()->height() - 4});
    EXPECT_EQ(told, QStringList({"close 2 0", "press -1 2"}));
}

TEST_F(GridEditors, FollowTheKeysFromCellToCell)
{
    Click(2, 0);
    Key(Qt::Key_Down);
    EXPECT_EQ(Where(), At(3, 0));
    EXPECT_TRUE(text->hasFocus());
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_EQ(Where(), At(1, 0));
    Key(Qt::Key_Up); // the first row
    EXPECT_EQ(Where(), At(1, 0));
    Key(Qt::Key_Tab);
    EXPECT_EQ(Where(), At(1, 1));
    Key(Qt::Key_Right); // the grid behind a list must not hear it
    Key(Qt::Key_Left);
    EXPECT_EQ(Where(), At(1, 1));
    Key(Qt::Key_Return); // neither to the hidden column nor to the one without an editor
    EXPECT_EQ(Where(), At(1, 4));
    Key(Qt::Key_Tab);
    EXPECT_EQ(Where(), At(2, 0));
    Key(Qt::Key_Backtab);
    EXPECT_EQ(Where(), At(1, 4));
    Key(Qt::Key_Left); // within the text
    EXPECT_EQ(Where(), At(1, 4));
    Key(Qt::Key_Escape);
    EXPECT_EQ(Where(), At(-1, -1));
    EXPECT_TRUE(grid->hasFocus());
    Key(Qt::Key_Left); // over the hidden column's neighbour
    EXPECT_EQ(grid->Col(), 3);
    Key(Qt::Key_Left); // over the hidden column
    EXPECT_EQ(Where(), At(1, 1));
    Key(Qt::Key_Escape);
    Key(Qt::Key_Down);
    EXPECT_EQ(Where(), At(2, 1));
    Key(Qt::Key_Escape);
    Key(Qt::Key_F2);
    EXPECT_EQ(Where(), At(2, 1));
    editors->KeyMove = [](int, qint64 row) { return row; };
    Key(Qt::Key_Down);
    EXPECT_EQ(Where(), At(2, 1));
}

TEST_F(GridEditors, LeaveTheGridBehindTheLastCell)
{
    grid->SetRows(3);
    Click(2, 4);
    Key(Qt::Key_Tab);
    EXPECT_EQ(Where(), At(-1, -1));
    Click(1, 0);
    Key(Qt::Key_Backtab);
    EXPECT_EQ(Where(), At(-1, -1));
}

TEST_F(GridEditors, StayOnTheirCellWhenTheGridScrollsOrChanges)
{
    Click(2, 0);
    grid->SetColWidth(0, 3000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return text->width() >= 195; }));
    grid->SetTopRow(2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return text->y() == grid->CellRect(2, 0).y(); }));
    grid->SetTopRow(20); // out of sight
    EXPECT_TRUE(QTest::qWaitFor([&] { return !text->isVisible(); }));
    EXPECT_EQ(told.last(), "close 2 0");
    grid->SetTopRow(1);
    Click(2, 0);
    grid->SetRows(2); // the row is gone
    EXPECT_TRUE(QTest::qWaitFor([&] { return !text->isVisible(); }));
}

TEST_F(GridEditors, TakeDropsOfOneKind)
{
    editors->TakeDrops("application/x-test");
    QByteArray got;
    QObject::connect(editors, &FlexGridEditor::Dropped, [&](const QByteArray &data, const QPoint &) { got = data; });
    const auto drop = [&](const char *type) {
        QMimeData mime;
        mime.setData(type, "field");
        QDragEnterEvent enter({20, 40}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(grid->viewport(), &enter);
        QDropEvent event({20, 40}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QCoreApplication::sendEvent(grid->viewport(), &event);
        return enter.isAccepted() && event.isAccepted();
    };
    EXPECT_TRUE(grid->viewport()->acceptDrops());
    EXPECT_FALSE(drop("text/plain"));
    EXPECT_EQ(got, QByteArray());
    EXPECT_TRUE(drop("application/x-test"));
    EXPECT_EQ(got, "field");
}
