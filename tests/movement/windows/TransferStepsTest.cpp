// The transfer's steps: the popup, the pickers, the tolerance, the boxes, the stop.
#include "controls/ListView.h"
#include "controls/ProgressBar.h"
#include "data/frmConnectionString.h"
#include "data/frmGetSelection.h"
#include "tests/movement/windows/TransferFixture.h"
#include <QApplication>
#include <QTimer>

namespace {
struct OnePair : Transfer
{
};
} // namespace

TEST_P(OnePair, ThePopupHoldsTheConstantsAndTheNumberIsOffered)
{
    FillSource(2);
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    ASSERT_NO_FATAL_FAILURE(Popup(2));
    EXPECT_EQ(window->mnuPopup->mnuTitle->text(), "Map File Column name to:");
    EXPECT_EQ(window->mnuUnMap->text(), "Unmap Column");
    EXPECT_EQ(window->mnuStaticValue->title(), "Static Value");
    EXPECT_EQ(window->mnuString->text(), "String");
    EXPECT_EQ(window->mnuNumeric->text(), "Numeric");
    EXPECT_EQ(window->mnuNull->text(), "NULL");
    EXPECT_EQ(window->mfg->Col(), 2) << "the column is the current one";
    window->mnuPopup->close();

    ASSERT_NO_FATAL_FAILURE(Choose(2, window->mnuUnMap));
    EXPECT_EQ(window->mfg->TextMatrix(0, 2), "");
    EXPECT_EQ(window->mfg->TextMatrix(2, 2), "");
    ASSERT_NO_FATAL_FAILURE(Choose(2, window->mnuNull));
    EXPECT_EQ(window->mfg->TextMatrix(0, 2), "NULL");
    EXPECT_EQ(window->mfg->TextMatrix(2, 2), "NULL");

    dialogs.Inputs << "3x"
                   << "3x"
                   << ""
                   << "2.50";
    dialogs.Answers << mbNo << mbYes;
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(dialogs.InputBoxes[0].Title, "Numeric");
    EXPECT_EQ(dialogs.InputBoxes[0].Prompt, "Please enter the number you wish to append:");
    EXPECT_EQ(Box(0), "Numeric/The value you entered was invalid would you like to replace it with 3");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "");
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "3");
    EXPECT_EQ(window->mfg->TextMatrix(3, 3), "3");
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "3") << "an empty answer ends the command";
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "2.50");
    ASSERT_NO_FATAL_FAILURE(Choose(4, window->mnuString));
    EXPECT_EQ(dialogs.InputBoxes.last().Title, "String");
    EXPECT_EQ(dialogs.InputBoxes.last().Prompt, "Please enter the string you wish to append:");
    EXPECT_EQ(window->mfg->TextMatrix(0, 4), "");
}

TEST_P(OnePair, AToleranceOfTwoStopsAtTheThirdErrorAndTheWindowStays)
{
    from->Run("INSERT INTO source VALUES(1, 'a', 1), (NULL, 'b', 2), (NULL, 'c', 3), (NULL, 'd', 4), (5, 'e', 5)");
    to->Run("CREATE TABLE strict(id INTEGER, name VARCHAR(40), price INTEGER)");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "SELECT CASE WHEN id IS NULL THEN 'none' ELSE id END AS id, name FROM source"));
    Type(1, "strict");
    window->txtErrorCount->setText("2");
    dialogs.Answers << mbNo;
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Box(0), "Errors/Too many errors occurred. You you like to view the log?");
    EXPECT_FALSE(HasGone());
    EXPECT_TRUE(window->cmdNext->isEnabled());
    EXPECT_FALSE(window->PB->isVisible());
    EXPECT_EQ(to->Count("strict"), 0) << "the batch was never sent";

    window->txtErrorCount->setText("3");
    dialogs.Boxes.clear();
    dialogs.Answers << mbNo;
    Go();
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(Box(1), "Import/Import Complate. 5 records have been imported.") << "as many as were read";
    EXPECT_EQ(shell.Status(), "2 rows are in, 3 refused.") << "and this is what is there";
    EXPECT_EQ(to->Rows("SELECT id, name FROM strict ORDER BY id"), (QStringList{"1|a", "5|e"}));
}

TEST_P(OnePair, NothingToCopyAndNothingMappedEndWithTheReportOfNone)
{
    ASSERT_NO_FATAL_FAILURE(Begin(false));
    Go();
    EXPECT_EQ(Box(0), "Export/Export Complate.0 records have been exported.");
    EXPECT_TRUE(HasGone());
    FillSource(2);
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    for (const int column : {1, 2})
        ASSERT_NO_FATAL_FAILURE(Choose(column, window->mnuUnMap));
    Go();
    EXPECT_EQ(Box(1), "Import/Import Complate. 0 records have been imported.");
    EXPECT_EQ(to->Count("target"), 0);
}

TEST_P(OnePair, NextIsOnWhileBothTablesAreNamed)
{
    ASSERT_NO_FATAL_FAILURE(Open(false));
    EXPECT_EQ(window->txtConn[0]->text(), "Current");
    EXPECT_FALSE(window->cmdGetConn[0]->isEnabled());
    EXPECT_FALSE(window->cmdNext->isEnabled());
    QTest::keyClicks(window->txtTable[0], "source");
    EXPECT_FALSE(window->cmdNext->isEnabled());
    QTest::keyClicks(window->txtTable[1], "target");
    EXPECT_TRUE(window->cmdNext->isEnabled());
    Go(); // no other connection: nothing happens
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    ClickOn(window->cmdGetTable[1]); // nor is another connection's table picked in its place
    EXPECT_EQ(shell.Status(), "Choose the other connection first.");
    window->txtTable[0]->clear();
    EXPECT_FALSE(window->cmdNext->isEnabled());
}

TEST_P(OnePair, ThePickersGiveConnectionAndTables)
{
    FillSource(1);
    gConns().Add(from->Connection->ConnectionString(), "stored", QString());
    ASSERT_NO_FATAL_FAILURE(Open(true));
    const auto pick = [&](QPushButton *button, const QString &text) {
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto *form = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!form)
                return;
            look.stop();
            EXPECT_EQ(form->cmdOK->text(), "&OK");
            EXPECT_EQ(form->cmdCancel->text(), "&Cancel");
            QTest::keyClicks(form->txtCri, text);
            QTest::keyClick(form->txtCri, Qt::Key_Return);
        });
        look.start(5);
        ClickOn(button);
        EXPECT_FALSE(look.isActive()) << text.toStdString();
    };
    pick(window->cmdGetConn[0], "stored");
    EXPECT_EQ(window->txtConn[0]->text(), "stored");
    pick(window->cmdGetTable[0], "source");
    EXPECT_EQ(window->txtTable[0]->text(), "source");
    pick(window->cmdGetTable[1], "target");
    EXPECT_EQ(window->txtTable[1]->text(), "target");
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"Source:", "id", "name", "", ""}));
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 1 record have been imported.");

    // "< other >" asks for a string.
    ASSERT_NO_FATAL_FAILURE(Open(true));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (auto *form = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget())) {
            QTest::keyClicks(form->txtCri, "< other");
            QTest::keyClick(form->txtCri, Qt::Key_Return);
        } else if (auto *asked = qobject_cast<frmConnectionString *>(QApplication::activeModalWidget())) {
            look.stop();
            QTest::keyClick(asked, Qt::Key_Escape);
        }
    });
    look.start(5);
    ClickOn(window->cmdGetConn[0]);
    EXPECT_FALSE(look.isActive()) << "the dialog of the string came up";
    EXPECT_EQ(window->txtConn[0]->text(), "");
}

TEST_P(OnePair, AFieldCalledByANumberOrNullIsReadAsAConstant)
{
    from->Run("CREATE TABLE odd(\"NULL\" INTEGER, \"2000\" INTEGER)");
    from->Run("INSERT INTO odd VALUES(7, 8)");
    to->Run("CREATE TABLE odder(\"NULL\" INTEGER, \"2000\" INTEGER)");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "odd"));
    Type(1, "odder");
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"", "NULL", "2000"}));
    Go();
    EXPECT_EQ(to->Rows("SELECT * FROM odder"), QStringList("null|2000"));
}

TEST_P(OnePair, ASourceAndADestinationThatAreTheSameTableEnd)
{
    to->Run("INSERT INTO target(id, name) VALUES(1, 'a'), (2, 'b')");
    gConn = to->Connection;
    window = new frmDTS;
    window->SetMode(true);
    window->show();
    const ADODB::ConnectionPtr second = ADODB::Connection::Create();
    second->Open(to->Connection->ConnectionString());
    window->UseOther(second, "again");
    Type(0, "SELECT id + 2 AS id, name FROM target");
    Type(1, "target");
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 2 records have been imported.");
    EXPECT_EQ(to->Rows("SELECT id FROM target ORDER BY id").join(','), "1,2,3,4");
}

TEST_P(OnePair, EscapeStopsTheCopyAndTheWindowStays)
{
    from->Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) INSERT INTO source "
              "SELECT i, 'n' || i, i FROM n");
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    QString said;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().startsWith("Copying"))
            return;
        look.stop();
        EXPECT_TRUE(window->PB->isVisible());
        EXPECT_EQ(window->PB->Max(), 200'001);
        QTest::keyClick(window->cmdCancel, Qt::Key_Escape);
        said = window->lblProgress->text();
    });
    look.start(5);
    Go();
    EXPECT_EQ(said, "Canceling...");
    EXPECT_FALSE(HasGone());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(shell.Status(), "Canceling... 0 rows are in.");
    EXPECT_EQ(to->Count("target"), 0);
}

TEST_P(OnePair, AnErrorOfThePreviewIsShownInTheServersWords)
{
    ASSERT_NO_FATAL_FAILURE(Open(true));
    window->UseOther(from->Connection, QStringLiteral("other"));
    Type(1, "target");
    Type(0, "no_such_table");
    ASSERT_FALSE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(dialogs.Boxes[0].Title, "Error");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_TRUE(dialogs.Boxes[0].Text.contains("no_such_table")) << dialogs.Boxes[0].Text.toStdString();
    dialogs.Boxes.clear();
    dialogs.Answers << mbNo;
    Go(); // an error before the rows goes through the same handler, and none is copied
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(Box(1), "Import/Import Complate. 0 records have been imported.");
}

INSTANTIATE_TEST_SUITE_P(Sqlite, OnePair, testing::Values(Pair{kSqlite, kSqlite}));
