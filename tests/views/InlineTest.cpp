// Editing a table in place: what goes in, what is refused and told, what stays pending.
#include "tests/views/Inline.h"
#include "ado/ObjectName.h"
#include <QClipboard>
#include <QInputMethodEvent>

using namespace ADODB;

TEST_P(Inline, EditsAddsAndDeletesInOneBatch)
{
    gConn->SetCursorLocation(adUseServer);
    Open();
    EXPECT_EQ(gConn->CursorLocation(), adUseServer) << "as it was before";
    gConn->SetCursorLocation(adUseClient);
    EXPECT_EQ(Window().Caption(), "t Table");
    EXPECT_EQ(Grid().Caption(), "t Table");
    ASSERT_EQ(Grid().Rows(), 3);

    Enter(0, 2, QStringLiteral("11"));
    Delete(1);
    Enter(2, 0, QStringLiteral("4"));
    Enter(2, 1, QStringLiteral("four"));
    EXPECT_TRUE(Window().HasChanges());
    EXPECT_EQ(Window().SB->PanelText(3), "3 unsaved");
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, name, amount FROM t ORDER BY id")), "1,one,10 2,two,20 3,three,~")
        << "nothing goes out before it is saved";

    Window().mnuSave();
    ASSERT_EQ(dialogs.Boxes.size(), 1) << dialogs.LastText().toStdString();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(dialogs.LastTitle(), "Save");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbInformation);
    EXPECT_TRUE(shell.Statuses.contains("Saving..."));
    EXPECT_EQ(shell.Status(), "");
    EXPECT_FALSE(Window().HasChanges());
    EXPECT_EQ(Window().SB->PanelText(3), "");
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, name, amount FROM t ORDER BY id")), "1,one,11 3,three,~ 4,four,~");

    // The row just added is a row like every other.
    Enter(2, 2, QStringLiteral("44"));
    Window().mnuSave();
    EXPECT_EQ(Seen(QStringLiteral("SELECT amount FROM t WHERE id = 4")), "44");
}

TEST_P(Inline, WhatAnotherUserDidMeanwhileIsToldRowByRow)
{
    Open();
    Enter(0, 2, QStringLiteral("11"));
    Enter(1, 2, QStringLiteral("21"));
    Enter(2, 2, QStringLiteral("31"));
    Do(other, QStringLiteral("UPDATE t SET amount = 99 WHERE id = 1"));
    Do(other, QStringLiteral("DELETE FROM t WHERE id = 2"));
    Window().mnuSave();
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: Row cannot be located for updating."))
        << dialogs.LastText().toStdString();
    EXPECT_EQ(dialogs.LastTitle(), "Error");
    ASSERT_EQ(RefusedRows(), 2);
    EXPECT_EQ(Refused(1, 1), "1");
    EXPECT_EQ(Refused(1, 2), "id = 1");
    EXPECT_EQ(Refused(2, 2), "id = 2");
    EXPECT_TRUE(Refused(2, 3).startsWith("Row cannot be located for updating.")) << Refused(2, 3).toStdString();
    EXPECT_TRUE(Window().HasChanges());
    EXPECT_EQ(Window().Rows()->PendingCount(), 2);
    EXPECT_EQ(Grid().DataSource()->CellText(0, 2), "11") << "as it was edited";
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, amount FROM t ORDER BY id")), "1,99 3,31");

    // A click on the line leads to its row.
    QTest::mouseClick(Window().mfgRefused->viewport(), Qt::LeftButton, {},
                      Window().mfgRefused->CellRect(2, 2).center());
    EXPECT_EQ(Grid().Row(), 1);
}

TEST_P(Inline, AKeyThatIsTakenAndATownThatIsNotThereAreRefusedInTheServersWords)
{
    Open(QStringLiteral("town"));
    Enter(2, 0, QStringLiteral("3"));
    Enter(2, 1, QStringLiteral("Ulm"));
    Enter(3, 0, QStringLiteral("4"));
    Enter(3, 1, QStringLiteral("Trier"));
    Window().mnuSave();
    ASSERT_EQ(RefusedRows(), 1);
    EXPECT_EQ(Refused(1, 2), "id = 3");
    EXPECT_TRUE(Refused(1, 3).contains(IsMariaDb() ? "Duplicate" : "unique", Qt::CaseInsensitive))
        << Refused(1, 3).toStdString();
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, name FROM town ORDER BY id")), "1,Ulm 2,Bonn 4,Trier");
    // Mended and sent again, alone.
    Enter(2, 1, QStringLiteral("Speyer"));
    Window().mnuSave();
    EXPECT_EQ(RefusedRows(), 0);
    EXPECT_FALSE(Window().HasChanges());
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, name FROM town ORDER BY id")), "1,Ulm 2,Bonn 3,Speyer 4,Trier");

    Open();
    Enter(0, 6, QStringLiteral("77"));
    Window().mnuSave();
    ASSERT_EQ(RefusedRows(), 1);
    EXPECT_TRUE(Refused(1, 3).contains("foreign key", Qt::CaseInsensitive)) << Refused(1, 3).toStdString();
    EXPECT_EQ(Seen(QStringLiteral("SELECT townid FROM t WHERE id = 1")), "1");
}

TEST_P(Inline, TwinRowsWithoutAKeyAreToldOrMeetOneRow)
{
    Do(gConn, QStringLiteral("CREATE TABLE twins(a INTEGER, b VARCHAR(9))"));
    Do(gConn, QStringLiteral("INSERT INTO twins VALUES (1, 'x'), (1, 'x'), (2, 'y')"));
    Open(QStringLiteral("twins"));
    Enter(0, 1, QStringLiteral("z"));
    Enter(2, 1, QStringLiteral("w"));
    Window().mnuSave();
    if (IsSqlite()) { // its rows have a number of their own
        EXPECT_EQ(RefusedRows(), 0);
        EXPECT_EQ(Seen(QStringLiteral("SELECT a, b FROM twins ORDER BY a, b")), "1,x 1,z 2,w");
    } else {
        ASSERT_EQ(RefusedRows(), 1);
        EXPECT_EQ(Refused(1, 3),
                  "Key column information is insufficient or incorrect. Too many rows were affected by update.");
        EXPECT_EQ(Seen(QStringLiteral("SELECT a, b FROM twins ORDER BY a, b")), "1,x 1,x 2,w");
    }
}

// The row is locked by another user: saving waits beside living windows, and Escape gives it up with the edit pending.
TEST_P(Inline, ALockedRowIsWaitedForUntilItIsStopped)
{
    if (IsSqlite())
        GTEST_SKIP() << "a file has no locked rows";
    Open();
    Enter(0, 2, QStringLiteral("11"));
    Enter(1, 2, QStringLiteral("21"));
    other->BeginTrans();
    Do(other, QStringLiteral("UPDATE t SET amount = 98 WHERE id = 2"));
    int ticks = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&] {
        if (!Window().IsBusy())
            return;
        if (++ticks == 20) {
            EXPECT_TRUE(Grid().IsFrozen());
            EXPECT_TRUE(Window().cmdStop->isEnabled());
            Window().mnuSave(); // nothing of this gets in between
            Window().mnuPaste();
            Window().SetSource(QStringLiteral("town"));
            QTest::keyClick(&Grid(), Qt::Key_Escape);
        }
    });
    clock.start(5);
    Window().mnuSave();
    clock.stop();
    EXPECT_GE(ticks, 20) << "the windows lived";
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: Operation has been cancelled"))
        << dialogs.LastText().toStdString();
    EXPECT_TRUE(Window().HasChanges());
    EXPECT_GE(Window().Rows()->PendingCount(), 1);
    EXPECT_FALSE(Grid().IsFrozen());
    other->RollbackTrans();
    Window().mnuSave();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(Seen(QStringLiteral("SELECT id, amount FROM t ORDER BY id")), "1,11 2,21 3,~");
}

TEST_P(Inline, ValuesAreRefusedAtTheCellOrStoredExactly)
{
    Open();
    Enter(0, 2, QStringLiteral("ten"));
    EXPECT_EQ(shell.Status(), "Error in data integrity");
    EXPECT_TRUE(Window().SB->PanelText(1).contains("wrong type")) << Window().SB->PanelText(1).toStdString();
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << "the grid shows no box of its own";
    QTest::keyClick(Grid().Editor(), Qt::Key_Escape);
    Enter(0, 3, QStringLiteral("2024-02-30"));
    EXPECT_TRUE(Grid().IsEditing());
    QTest::keyClick(Grid().Editor(), Qt::Key_Escape);
    ASSERT_TRUE(Grid().SetCurrentCell(0, 1));
    QTest::keyClick(&Grid(), Qt::Key_Delete);
    EXPECT_TRUE(Window().SB->PanelText(1).contains("may not be null")) << Window().SB->PanelText(1).toStdString();
    EXPECT_FALSE(Window().HasChanges());

    const QString digits = QStringLiteral("1234567890123456789012345678.0123456789");
    const QString emoji = QStringLiteral("\U0001F600 \u4e2d \u0627\u0644\u0639 a\u0301");
    const QString huge = QStringLiteral("0123456789\u00e9").repeated(1'000'000);
    ASSERT_TRUE(Grid().SetCurrentCell(0, 4));
    const bool exact = Grid().SetCellText(digits);
    EXPECT_EQ(exact, !IsSqlite()) << "a number of that file keeps fifteen digits, and must not be bent to them";
    ASSERT_TRUE(Grid().SetCurrentCell(1, 5));
    QTest::keyClick(&Grid(), Qt::Key_F2);
    QInputMethodEvent composed;
    composed.setCommitString(emoji);
    QCoreApplication::sendEvent(Grid().Editor(), &composed);
    QTest::keyClick(Grid().Editor(), Qt::Key_Return);
    ASSERT_TRUE(Grid().SetCurrentCell(2, 5));
    QApplication::clipboard()->setText(huge);
    Window().mnuPaste();
    Enter(1, 3, QStringLiteral("2024-02-29"));
    Window().mnuSave();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    if (exact) {
        EXPECT_EQ(Seen(QStringLiteral("SELECT exact FROM t WHERE id = 1")), digits);
    }
    EXPECT_EQ(Seen(QStringLiteral("SELECT note FROM t WHERE id = 2")), emoji);
    EXPECT_TRUE(Seen(QStringLiteral("SELECT note FROM t WHERE id = 3")) == huge);
    EXPECT_EQ(Seen(QStringLiteral("SELECT day FROM t WHERE id = 2")), "2024-02-29");
}

// A server rounds a decimal with too many places without a word.
TEST_P(Inline, ADecimalWithMorePlacesThanItsFieldIsNotRounded)
{
    Do(gConn, QStringLiteral("CREATE TABLE price(id INTEGER PRIMARY KEY, p DECIMAL(10,2))"));
    Do(gConn, QStringLiteral("INSERT INTO price VALUES (1, 1.25)"));
    Open(QStringLiteral("price"));
    ASSERT_TRUE(Grid().SetCurrentCell(0, 1));
    if (!IsSqlite()) { // whose decimals keep what they are given, up to fifteen digits
        EXPECT_FALSE(Grid().SetCellText(QStringLiteral("1.005")));
        EXPECT_FALSE(Grid().SetCellText(QStringLiteral("123456789.5")));
        EXPECT_EQ(Window().Rows()->PendingCount(), 0);
    }
    EXPECT_TRUE(Grid().SetCellText(QStringLiteral("12345678.50")));
    Window().mnuSave();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(Seen(QStringLiteral("SELECT p FROM price")).toDouble(), 12345678.5);
}

// A decimal that was declared without digits keeps all of them; its driver tells made up ones.
TEST_P(Inline, ADecimalWithoutDeclaredDigitsTakesThemAll)
{
    if (!IsPostgres())
        GTEST_SKIP() << "one server alone has such a type";
    Do(gConn, QStringLiteral("CREATE TABLE free(id INTEGER PRIMARY KEY, n NUMERIC, at TIMESTAMP)"));
    Do(gConn, QStringLiteral("INSERT INTO free VALUES (1, 1)"));
    Open(QStringLiteral("free"));
    const QString digits = QStringLiteral("123456789012345678901234567890.12345678901234567890");
    ASSERT_TRUE(Grid().SetCurrentCell(0, 1));
    EXPECT_TRUE(Grid().SetCellText(digits));
    ASSERT_TRUE(Grid().SetCurrentCell(0, 2));
    EXPECT_TRUE(Grid().SetCellText(QStringLiteral("2024-02-29 12:00:00.123456")));
    EXPECT_FALSE(Grid().SetCellText(QStringLiteral("2024-02-29 12:00:00.1234567")));
    Window().mnuSave();
    EXPECT_EQ(Seen(QStringLiteral("SELECT n, at FROM free")), digits + ",2024-02-29 12:00:00.123456");
}

TEST_P(Inline, AViewOpensToBeReadAndRefusesTheFirstKey)
{
    Do(gConn, QStringLiteral("CREATE VIEW v AS SELECT id, name FROM t"));
    Open(QStringLiteral("v"));
    EXPECT_EQ(Grid().Rows(), 3);
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, Grid().CellRect(0, 1).center());
    QTest::keyClick(&Grid(), Qt::Key_X);
    EXPECT_FALSE(Grid().IsEditing());
    EXPECT_TRUE(Window().SB->PanelText(1).contains("Current Recordset does not support updating"))
        << Window().SB->PanelText(1).toStdString();
    EXPECT_EQ(shell.Status(), "Error in data integrity");
    Delete(0);
    EXPECT_EQ(Grid().Rows(), 3);
    EXPECT_FALSE(Window().HasChanges());

    if (!IsSqlite())
        return; // the others want a name for a statement in place of a table
    Open(QStringLiteral("SELECT t.id, t.name, town.name AS town FROM t JOIN town ON t.townid = town.id"));
    EXPECT_EQ(Grid().Rows(), 2);
    QTest::keyClick(&Grid(), Qt::Key_X);
    EXPECT_FALSE(Grid().IsEditing());
    EXPECT_EQ(Window().Rows()->PendingCount(), 0);
}

TEST_P(Inline, ATableWhoseNameIsAStatementIsATable)
{
    const QString name = QStringLiteral("t;DELETE/**/FROM/**/t;--");
    const QString quoted = IsMariaDb() ? u'`' + name + u'`' : u'"' + name + u'"';
    Do(gConn, QStringLiteral("CREATE TABLE %1(id INTEGER PRIMARY KEY, a INTEGER)").arg(quoted));
    Do(gConn, QStringLiteral("INSERT INTO %1 VALUES (1, 2)").arg(quoted));
    ADODB::ObjectName object;
    object.Name = name;
    Window().SetSource(object);
    ASSERT_TRUE(Window().Rows()) << dialogs.LastText().toStdString();
    EXPECT_EQ(Window().Caption(), name + " Table");
    Enter(0, 1, QStringLiteral("3"));
    Window().mnuSave();
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(Seen(QStringLiteral("SELECT a FROM ") + quoted), "3");
    EXPECT_EQ(Seen(QStringLiteral("SELECT count(*) FROM t")), "3");
    // As a bare text it is that table too, or nothing.
    Window().SetSource(name);
    EXPECT_EQ(Seen(QStringLiteral("SELECT count(*) FROM t")), "3");
}

TEST_P(Inline, ATableThatIsNotThereIsToldAndTheFormerRowsStay)
{
    Open();
    Enter(0, 2, QStringLiteral("11"));
    Window().SetSource(QStringLiteral("nowhere"));
    EXPECT_TRUE(dialogs.LastText().startsWith("Error: ")) << dialogs.LastText().toStdString();
    EXPECT_EQ(Grid().Rows(), 3);
    EXPECT_EQ(Window().Rows()->PendingCount(), 1);
}

TEST_P(Inline, ClosingAsksOnlyAboutChangesAndTakesThreeAnswers)
{
    Open();
    EXPECT_TRUE(Window().close());
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << "no changes, no question";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto again = [&] {
        delete holder.data();
        holder = new frmInline;
        Shell::Current().AddChild(holder);
        holder->show();
        Open();
        Enter(RowOf(1), 2, QStringLiteral("11"));
        dialogs.Boxes.clear();
    };
    again();
    dialogs.Answers = {mbCancel};
    EXPECT_FALSE(Window().close());
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.LastTitle(), "Changes");
    EXPECT_EQ(dialogs.LastText(), "Changes have been made to this table and have not been saved.\r\nWould you like to "
                                  "save before exiting?");
    EXPECT_EQ(dialogs.Boxes[0].Buttons, mbYesNoCancel);
    EXPECT_TRUE(holder && holder->isVisible());
    EXPECT_EQ(Window().Rows()->PendingCount(), 1);

    dialogs.Answers = {mbNo};
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Seen(QStringLiteral("SELECT amount FROM t WHERE id = 1")), "10");

    again();
    dialogs.Answers = {mbYes, mbOK};
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(Seen(QStringLiteral("SELECT amount FROM t WHERE id = 1")), "11");

    // What was to be saved and was refused is not thrown away with the window.
    again();
    Enter(RowOf(1), 2, QStringLiteral("12"));
    Do(other, QStringLiteral("DELETE FROM t WHERE id = 1"));
    dialogs.Answers = {mbYes, mbOK};
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(holder && holder->isVisible());
    EXPECT_EQ(Window().Rows()->PendingCount(), 1);
}

TEST_P(Inline, AnotherConnectionAsksFirstAndOpensTheSameTable)
{
    Open();
    Enter(RowOf(1), 2, QStringLiteral("11"));
    const ConnectionPtr former = gConn;
    gConn = Connect();
    Use(gConn);
    dialogs.Answers = {mbCancel};
    Window().RefreshForm(QStringLiteral("again"));
    EXPECT_EQ(dialogs.LastTitle(), "Changes");
    EXPECT_EQ(Window().Rows()->ActiveConnection(), former) << "the rows stay with the connection they came from";
    EXPECT_EQ(Window().Rows()->PendingCount(), 1);
    Window().mnuSave();
    EXPECT_EQ(Seen(QStringLiteral("SELECT amount FROM t WHERE id = 1")), "11");

    Enter(RowOf(1), 2, QStringLiteral("12"));
    dialogs.Answers = {mbNo};
    Window().RefreshForm(QStringLiteral("again"));
    EXPECT_EQ(Window().Rows()->ActiveConnection(), gConn);
    EXPECT_EQ(Grid().DataSource()->CellText(RowOf(1), 2), "11");
    EXPECT_FALSE(Window().HasChanges());

    Enter(RowOf(1), 2, QStringLiteral("13"));
    dialogs.Answers = {mbYes, mbOK};
    Window().RefreshForm(QStringLiteral("again"));
    EXPECT_EQ(Seen(QStringLiteral("SELECT amount FROM t WHERE id = 1")), "13");
    EXPECT_EQ(Grid().DataSource()->CellText(RowOf(1), 2), "13");
}

INSTANTIATE_TEST_SUITE_P(Databases, Inline, kInlineDatabases, InlineName);
