// The grid that edits, by real keys and clicks over a real table.
#include "controls/DataGrid.h"
#include "ado/Connection.h"
#include "controls/CellEditor.h"
#include "tests/support/DialogDouble.h"
#include <QAccessible>
#include <QApplication>
#include <QInputMethodEvent>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

using namespace ADODB;

namespace {

class Editing : public testing::Test
{
protected:
    void SetUp() override
    {
        connection = Connection::Create();
        connection->Open(QStringLiteral("Driver=SQLite;Database=:memory:"));
        connection->Execute(QStringLiteral("CREATE TABLE t (id INTEGER PRIMARY KEY, name VARCHAR(20) NOT NULL, "
                                           "amount INTEGER, day DATE, note TEXT, flag BOOLEAN)"));
        connection->Execute(QStringLiteral("INSERT INTO t VALUES (1, 'one', 10, '2024-01-31', NULL, 1), "
                                           "(2, 'two', NULL, '2024-02-29', '', 0), (3, 'three', 30, NULL, 'x', NULL)"));
        rows = Recordset::Create();
        rows->Open(QStringLiteral("SELECT * FROM t"), connection, adOpenDynamic, adLockBatchOptimistic);
        grid.resize(640, 300);
        grid.SetDataSource(rows);
        QObject::connect(&grid, &DataGrid::Error, &grid, [this](int number, const QString &words, int *response) {
            told << words;
            numbers << number;
            if (silent)
                *response = 0;
        });
        QObject::connect(&grid, &DataGrid::Change, &grid, [this] { ++changes; });
        grid.show();
        grid.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
    }
    void Key(int key, Qt::KeyboardModifiers held = {})
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), held);
    }
    void Type(const QString &text) // the first key may move the keyboard to the editor
    {
        for (const QChar c : text)
            QTest::keyClicks(QApplication::focusWidget(), c);
    }
    void At(qint64 row, int col) { ASSERT_TRUE(grid.SetCurrentCell(row, col)); }

    enum Column
    {
        Id,
        Name,
        Amount,
        Day,
        Note,
        Flag
    };
    ConnectionPtr connection;
    RecordsetPtr rows;
    DialogDouble dialogs;
    DataGrid grid;
    QStringList told;
    QList<int> numbers;
    bool silent = true;
    int changes = 0;
};

} // namespace

TEST_F(Editing, ArrowsMoveReturnEditsAndTakesEscapeGivesTheFormerValueBack)
{
    Key(Qt::Key_Right);
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), Name);
    EXPECT_EQ(rows->AbsolutePosition(), 2) << "the recordset's current row goes along";
    Key(Qt::Key_F2);
    ASSERT_TRUE(grid.IsEditing());
    EXPECT_EQ(grid.Editor()->Text(), "two");
    Type(QStringLiteral("deux"));
    Key(Qt::Key_Escape);
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_TRUE(grid.hasFocus());
    EXPECT_EQ(rows->CellText(1, Name), "two");
    EXPECT_EQ(changes, 0);

    Key(Qt::Key_Return);
    Type(QStringLiteral("deux"));
    Key(Qt::Key_Return);
    EXPECT_EQ(rows->CellText(1, Name), "deux");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(rows->PendingCount(), 1);
    EXPECT_TRUE(rows->RowStatus(1) & adRecModified);
    EXPECT_TRUE(rows->CellIsPending(1, Name));
    EXPECT_FALSE(rows->CellIsPending(1, Amount));

    // An editor that nothing was changed in changes nothing, a null neither.
    At(1, Amount);
    Key(Qt::Key_F2);
    Key(Qt::Key_Return);
    EXPECT_TRUE(rows->CellIsNull(1, Amount));
    EXPECT_EQ(changes, 1);
}

TEST_F(Editing, TypingReplacesAndTabGoesOnToTheNextCell)
{
    At(0, Name);
    Type(QStringLiteral("uno"));
    ASSERT_TRUE(grid.IsEditing());
    Key(Qt::Key_Tab);
    EXPECT_EQ(rows->CellText(0, Name), "uno");
    EXPECT_EQ(grid.Col(), Amount);
    Type(QStringLiteral("11"));
    Key(Qt::Key_Down);
    EXPECT_EQ(rows->CellValue(0, Amount), Value(qint64(11)));
    EXPECT_EQ(grid.Row(), 1);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid.Col(), Name);
    At(0, Flag);
    Key(Qt::Key_Tab);
    EXPECT_EQ(grid.Row(), 1) << "behind the last cell of a row comes the next row";
    EXPECT_EQ(grid.Col(), Id);
}

TEST_F(Editing, NullIsApartFromEmpty)
{
    At(2, Note);
    Key(Qt::Key_Delete);
    EXPECT_TRUE(rows->CellIsNull(2, Note));
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Return);
    EXPECT_FALSE(rows->CellIsNull(2, Note));
    EXPECT_EQ(rows->CellText(2, Note), "");
    // A field without an empty value takes an empty entry as null.
    At(2, Amount);
    Key(Qt::Key_F2);
    Key(Qt::Key_Delete);
    Key(Qt::Key_Return);
    EXPECT_TRUE(rows->CellIsNull(2, Amount));
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(Editing, WhatTheFieldCannotHoldIsRefusedAtTheCellInItsOwnWords)
{
    struct Case
    {
        int column;
        const char *typed;
    };
    for (const Case &each : {Case{Amount, "ten"}, Case{Amount, "1.5"}, Case{Amount, "99999999999999999999"},
                             Case{Day, "2024-02-30"}, Case{Day, "tomorrow"}, Case{Flag, "perhaps"}}) {
        SCOPED_TRACE(each.typed);
        told.clear();
        numbers.clear();
        const Value before = rows->CellValue(0, each.column);
        At(0, each.column);
        Key(Qt::Key_F2);
        Type(QString::fromLatin1(each.typed));
        Key(Qt::Key_Return);
        ASSERT_EQ(told.size(), 1);
        EXPECT_EQ(numbers[0], adErrDataConversion);
        EXPECT_TRUE(told[0].contains("Application uses a value of the wrong type for the current operation."))
            << told[0].toStdString();
        EXPECT_TRUE(told[0].startsWith(grid.ColCaption(each.column)));
        EXPECT_TRUE(grid.IsEditing()) << "to be mended";
        EXPECT_EQ(grid.Editor()->Text(), each.typed);
        EXPECT_FALSE(grid.SetCurrentCell(1, 0)) << "nobody leaves it as it is";
        Key(Qt::Key_Escape);
        EXPECT_FALSE(grid.IsEditing());
        EXPECT_TRUE(rows->CellValue(0, each.column) == before);
    }
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(rows->PendingCount(), 0);
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Editing, NullIntoAFieldThatMustNotBeNullIsRefused)
{
    At(0, Name);
    Key(Qt::Key_Delete);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0], "name, row 1: The field may not be null.");
    EXPECT_EQ(rows->CellText(0, Name), "one");
    EXPECT_EQ(rows->PendingCount(), 0);
}

TEST_F(Editing, TheErrorEventIsABoxUnlessItIsSilenced)
{
    silent = false;
    At(0, Amount);
    EXPECT_FALSE(grid.SetCellText(QStringLiteral("ten")));
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.LastText(), told[0]);
    silent = true;
    EXPECT_FALSE(grid.SetCellText(QStringLiteral("ten")));
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(Editing, TheRowBehindTheLastBecomesARecordWithItsFirstValue)
{
    Key(Qt::Key_End, Qt::ControlModifier);
    ASSERT_TRUE(grid.IsNewRow());
    EXPECT_EQ(grid.Rows(), 3);
    At(3, Name);
    Type(QStringLiteral("four"));
    Key(Qt::Key_Tab);
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_FALSE(grid.IsNewRow());
    Type(QStringLiteral("40"));
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.Rows(), 4) << "the same record";
    EXPECT_TRUE(rows->RowStatus(3) & adRecNew);
    rows->UpdateBatch();
    EXPECT_EQ(connection->Execute(QStringLiteral("SELECT name, amount FROM t WHERE id = 4"))->CellText(0, 1), "40");

    // What is refused in the new row makes none.
    At(4, Amount);
    Type(QStringLiteral("x"));
    Key(Qt::Key_Return);
    Key(Qt::Key_Escape);
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(rows->PendingCount(), 0);
    EXPECT_EQ(rows->EditMode(), adEditNone);
}

TEST_F(Editing, RowsAreDeletedByTheirHeads)
{
    const QRect cell = grid.CellRect(1, 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(5, cell.center().y()));
    Key(Qt::Key_Delete);
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(rows->CellText(1, Name), "three");
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(rows->PendingCount(), 1);
    // By keys: the row as a whole, and the one below; the new row is none to delete.
    Key(Qt::Key_Space, Qt::ShiftModifier);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Delete);
    EXPECT_EQ(grid.Rows(), 1);
    At(1, 0);
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grid.Rows(), 1);
    rows->UpdateBatch();
    EXPECT_EQ(connection->Execute(QStringLiteral("SELECT group_concat(name) FROM t"))->CellText(0, 0), "one");
}

TEST_F(Editing, AClickAwayTakesTheValueAndADoubleClickEdits)
{
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(0, Name).center());
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(0, Name).center());
    ASSERT_TRUE(grid.IsEditing());
    Type(QStringLiteral("eins"));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(2, Amount).center());
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_EQ(rows->CellText(0, Name), "eins");
    EXPECT_EQ(grid.Row(), 2);
}

// A plain text editor turns CR LF into LF and a blank that must not break into a plain one; an edit of another word of
// the value would have changed them unseen.
TEST_F(Editing, AnEditChangesNothingButWhatWasTyped)
{
    for (const QString &text : {QStringLiteral("a\r\nb"), QStringLiteral("a\nb\n"), QStringLiteral("a\rb"),
                                QStringLiteral("a\u00a0b"), QStringLiteral("\U0001F600 e\u0301 \u0627\u0644")}) {
        At(0, Note);
        ASSERT_TRUE(grid.SetCellText(text));
        Key(Qt::Key_F2);
        ASSERT_TRUE(grid.IsEditing());
        Key(Qt::Key_End, Qt::ControlModifier);
        Type(QStringLiteral("!"));
        Key(Qt::Key_Return);
        EXPECT_EQ(rows->CellText(0, Note), text + u'!');
    }
    // Where line ends are of several kinds the editor does not open, and says so; the value can be replaced.
    ASSERT_TRUE(grid.SetCellText(QStringLiteral("a\r\nb\nc")));
    Key(Qt::Key_F2);
    EXPECT_FALSE(grid.IsEditing());
    EXPECT_EQ(told.size(), 1);
    Type(QStringLiteral("new"));
    Key(Qt::Key_Return);
    EXPECT_EQ(rows->CellText(0, Note), "new");
}

TEST_F(Editing, AHugeValueIsReplacedAndNeverPutIntoTheEditor)
{
    const QString huge = QStringLiteral("0123456789").repeated(1'000'000);
    At(0, Note);
    ASSERT_TRUE(grid.Paste(huge));
    EXPECT_TRUE(rows->CellText(0, Note) == huge);
    (void)grid.grab();
    Key(Qt::Key_F2);
    EXPECT_FALSE(grid.IsEditing());
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains("too long")) << told[0].left(200).toStdString();
    rows->UpdateBatch();
    const RecordsetPtr stored = connection->Execute(QStringLiteral("SELECT note, length(note) FROM t WHERE id = 1"));
    EXPECT_TRUE(stored->CellText(0, 0) == huge);
    Type(QStringLiteral("short"));
    Key(Qt::Key_Return);
    EXPECT_EQ(rows->CellText(0, Note), "short");
}

TEST_F(Editing, WhatIsComposedBeginsAnEditAsATypedKeyDoes)
{
    At(0, Note);
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("\u65e5\u672c\U0001F600"));
    QCoreApplication::sendEvent(&grid, &event);
    ASSERT_TRUE(grid.IsEditing());
    Key(Qt::Key_Return);
    EXPECT_EQ(rows->CellText(0, Note), QStringLiteral("\u65e5\u672c\U0001F600"));
}

TEST_F(Editing, ABlockGoesToASpreadsheetAndComesBack)
{
    At(0, Note);
    ASSERT_TRUE(grid.SetCellText(QStringLiteral("two\r\nlines \"q\"\t.")));
    grid.Select(0, Name, 1, Note);
    const QString clip = grid.Clip();
    EXPECT_EQ(clip, "one\t10\t2024-01-31\t\"two\r\nlines \"\"q\"\"\t.\"\r\ntwo\t\t2024-02-29\t\r\n");
    // Behind the last row it makes rows; a first cell that is empty leaves the row to the next one.
    At(3, Name);
    ASSERT_TRUE(grid.Paste(clip));
    ASSERT_EQ(grid.Rows(), 5);
    for (const int column : {Name, Amount, Day, Note})
        EXPECT_EQ(rows->CellText(3, column), rows->CellText(0, column)) << column;
    EXPECT_TRUE(rows->CellIsNull(4, Amount));
    // The first value that does not fit ends it, and is told with its place.
    At(0, Name);
    EXPECT_FALSE(grid.Paste(QStringLiteral("a\t1\nb\tx\nc\t3\n")));
    EXPECT_TRUE(told.last().startsWith("amount, row 2: ")) << told.last().toStdString();
    EXPECT_EQ(rows->CellText(0, Name), "a");
    EXPECT_EQ(rows->CellText(2, Name), "three");
}

TEST_F(Editing, ACellIsUndoneAndARowDuplicated)
{
    At(0, Amount);
    ASSERT_TRUE(grid.SetCellText(QStringLiteral("11")));
    ASSERT_TRUE(grid.SetCellText(QStringLiteral("12")));
    ASSERT_TRUE(grid.UndoCell());
    EXPECT_EQ(rows->CellText(0, Amount), "10") << "as the server has it, past all edits";
    At(1, Name);
    EXPECT_FALSE(grid.UndoCell()) << "nothing to undo";

    At(2, Name);
    ASSERT_TRUE(grid.DuplicateRow());
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(grid.Row(), 3);
    EXPECT_EQ(rows->CellText(3, Name), "three");
    EXPECT_TRUE(rows->CellIsNull(3, Day));
}

TEST_F(Editing, SpaceTurnsABoolean)
{
    At(0, Flag);
    Key(Qt::Key_Space);
    EXPECT_EQ(rows->CellText(0, Flag), "False");
    Key(Qt::Key_Space);
    EXPECT_EQ(rows->CellText(0, Flag), "True");
}

TEST_F(Editing, RowsThatAreOnlyReadRefuseTheFirstKey)
{
    const QString words = ADODB::Error(Fault::ReadOnly).Description;
    RecordsetPtr joined = Recordset::Create();
    joined->Open(QStringLiteral("SELECT a.name, b.amount FROM t a JOIN t b ON a.id = b.id"), connection, adOpenDynamic,
                 adLockBatchOptimistic);
    EXPECT_FALSE(joined->CanWrite(0));
    EXPECT_TRUE(rows->CanWrite(Name));
    grid.SetReadOnly(words);
    grid.SetDataSource(joined);
    Type(QStringLiteral("x"));
    EXPECT_FALSE(grid.IsEditing());
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains("Current Recordset does not support updating")) << told[0].toStdString();
    Key(Qt::Key_F2);
    Key(Qt::Key_Delete);
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_FALSE(grid.Paste(QStringLiteral("y")));
    EXPECT_EQ(told.size(), 5);
    EXPECT_EQ(joined->PendingCount(), 0);
    EXPECT_EQ(grid.Rows(), 3);
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_FALSE(grid.IsNewRow());
}

// Another thread has the rows: nothing may look at them, whatever the user does.
TEST_F(Editing, AFrozenGridShowsItsPictureAndAnswersToNothing)
{
    At(0, Name);
    grid.SetFrozen(true);
    rows->Close(); // reading a cell would raise now
    Type(QStringLiteral("x"));
    Key(Qt::Key_Down);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(60, 60));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, QPoint(60, 60));
    grid.verticalScrollBar()->setValue(1);
    grid.resize(500, 200);
    (void)grid.grab();
    EXPECT_FALSE(grid.SetCellText(QStringLiteral("x")));
    EXPECT_FALSE(grid.DeleteRows());
    EXPECT_EQ(grid.Clip(), "");
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(Editing, AScreenReaderHearsTheCellAndItsState)
{
    grid.SetCaption(QStringLiteral("t Table"));
    QAccessibleInterface *const access = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_TRUE(access);
    EXPECT_EQ(access->text(QAccessible::Name), "t Table");
    At(0, Name);
    EXPECT_EQ(access->text(QAccessible::Value), "one");
    EXPECT_EQ(access->text(QAccessible::Description), "name, row 1");
    ASSERT_TRUE(grid.SetCellText(QStringLiteral("uno")));
    EXPECT_EQ(access->text(QAccessible::Description), "name, row 1, changed");
    At(0, Note);
    EXPECT_EQ(access->text(QAccessible::Value), "null");
    At(3, Note);
    EXPECT_EQ(access->text(QAccessible::Value), "new row");
    EXPECT_FALSE(grid.Editor()->accessibleName().isEmpty());
}

TEST_F(Editing, ColumnsAreAsWideAsTheirContentAndCanBeDrawn)
{
    EXPECT_GT(grid.ColWidth(Day), grid.ColWidth(Id));
    const int before = grid.ColWidth(Name);
    const QPoint edge(grid.CellRect(0, Name).right() + 1, 5);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(grid.viewport(), edge + QPoint(40, 0));
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
    EXPECT_EQ(grid.ColWidth(Name), before + 40 * 15);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
    EXPECT_EQ(grid.ColWidth(Name), before);
}
