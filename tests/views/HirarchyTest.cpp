// The result window for real: a SQLite file behind it, keys and mouse in front of it.
#include "tests/views/Hirarchy.h"
#include "controls/LongTextBox.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "samples/Sample.h"
#include "views/ResultOwner.h"
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

namespace {

struct Owner : QWidget, ResultOwner
{
    int activated = 0, runs = 0;
    void ActivateOwner() override { ++activated; }
    bool RunSQL() override { return ++runs > 0; }
    QWidget *OwnerWidget() override { return this; }
};

TEST_F(Hirarchy, ARunShowsItsRowsItsLogAndItsPanels)
{
    ASSERT_TRUE(Run(QStringLiteral("select *\r\nfrom t")));
    EXPECT_EQ(window.mfg->Rows(), 4);
    EXPECT_EQ(window.mfg->Cols(), 4);
    EXPECT_EQ(window.mfg->TextMatrix(0, 2), "name");
    EXPECT_EQ(window.mfg->TextMatrix(1, 2), "Anna, \"A\"");
    EXPECT_EQ(window.mfg->TextMatrix(2, 2), "");
    EXPECT_EQ(window.SB->PanelText(1), "select * from t");
    EXPECT_EQ(window.SB->PanelText(3), "Record Count= 3");
    EXPECT_TRUE(window.SB->PanelText(4).startsWith("QueryTime= 00:00:0")) << window.SB->PanelText(4).toStdString();
    EXPECT_EQ(window.ts->Selected(), 1);
    EXPECT_FALSE(window.mfg->isHidden());
    EXPECT_TRUE(window.mfgMessge->isHidden());
    EXPECT_TRUE(window.txtData->isHidden());
    EXPECT_TRUE(window.cmdStop->isHidden());
    const QStringList log = Log();
    EXPECT_TRUE(log.contains("Executing SQL ..."));
    EXPECT_TRUE(log.contains("Loading Results..."));
    EXPECT_TRUE(log.contains("Record Count= 3"));
}

TEST_F(Hirarchy, AnEmptyResultCountsNoRecords)
{
    ASSERT_TRUE(Run(QStringLiteral("select * from t where 1=0")));
    EXPECT_EQ(window.SB->PanelText(3), "Record Count= 0");
    EXPECT_EQ(window.mfg->TextMatrix(0, 1), "id");
}

// Only the last of several results showed, and nothing said that there had been others.
TEST_F(Hirarchy, OfSeveralResultsTheFirstShowsAndTheLogSaysHowManyThereWere)
{
    ASSERT_TRUE(Run(QStringLiteral("select name from t where id = 1; select 2; select 3, 4")));
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "Anna, \"A\"");
    EXPECT_EQ(window.SB->PanelText(3), "Record Count= 1");
    const QString told = QStringLiteral("The statement gave 3 results. This is the first one.");
    EXPECT_TRUE(Log().contains(told));
    EXPECT_EQ(shell.Status(), told);
    ASSERT_TRUE(Run(QStringLiteral("select 1")));
    EXPECT_EQ(Log().filter(QStringLiteral("results")).size(), 1); // of the former run
}

TEST_F(Hirarchy, AFailureIsToldInTheServersWordsAndTheWindowStays)
{
    ASSERT_TRUE(Run(QStringLiteral("select * from nowhere")));
    ASSERT_FALSE(Log().isEmpty());
    EXPECT_TRUE(Log().last().startsWith("Error: ")) << Log().last().toStdString();
    EXPECT_TRUE(Log().last().contains("no such table: nowhere"));
    EXPECT_EQ(window.ts->Selected(), 2);
    ASSERT_TRUE(Run(QStringLiteral("select 1"))); // the connection is usable
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "1");
}

TEST_F(Hirarchy, WithKillOnErrorAFailureClosesTheWindow)
{
    auto *doomed = new frmHirarchy;
    doomed->setAttribute(Qt::WA_DeleteOnClose);
    Owner owner;
    doomed->SetCallerSQLForm(&owner);
    doomed->ShowRec(QStringLiteral("select * from nowhere"), connection, QStringLiteral("x"));
    const QPointer<frmHirarchy> watched(doomed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return watched.isNull() || !watched->isVisible(); }, 10000));
    EXPECT_EQ(owner.activated, 1);
    delete watched.data();
}

TEST_F(Hirarchy, TheFocusGoesBackToTheAnalyzerAndF5RunsItAgain)
{
    Owner owner;
    window.SetCallerSQLForm(&owner);
    ASSERT_TRUE(Run(QStringLiteral("select 1")));
    EXPECT_EQ(owner.activated, 1);
    QTest::keyClick(window.mfg, Qt::Key_F5);
    EXPECT_EQ(owner.runs, 1);
    EXPECT_EQ(owner.activated, 2);
}

TEST_F(Hirarchy, AnAnalyzerThatHasGoneIsNotCalled)
{
    {
        Owner owner;
        window.SetCallerSQLForm(&owner);
    }
    EXPECT_EQ(window.CallerSQLForm(), nullptr);
    ASSERT_TRUE(Run(QStringLiteral("select 1")));
    QTest::keyClick(window.mfg, Qt::Key_F5);
}

TEST_F(Hirarchy, StopCancelsTheStatementAndEscapeToo)
{
    for (const bool byKey : {false, true}) {
        window.ShowRec(Counting(2000000000), connection, QStringLiteral("long"));
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return window.cmdStop->isVisible() && !window.lblRunning->text().isEmpty(); }));
        ASSERT_TRUE(QTest::qWaitFor([&] { return connection->IsBusy(); }));
        EXPECT_TRUE(window.IsRunning());
        if (byKey)
            QTest::keyClick(window.mfgMessge, Qt::Key_Escape);
        else
            QTest::mouseClick(window.cmdStop, Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !window.IsRunning() && window.Caption() == "long"; }, 20000));
        EXPECT_TRUE(Log().last().startsWith("Error: "));
        EXPECT_TRUE(window.cmdStop->isHidden());
        ASSERT_TRUE(Run(QStringLiteral("select 7")));
        EXPECT_EQ(window.mfg->TextMatrix(1, 1), "7");
    }
}

TEST_F(Hirarchy, ClosingCancelsAndNothingArrivesLate)
{
    window.ShowRec(Counting(2000000000), connection, QStringLiteral("long"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return connection->IsBusy(); }));
    window.close(); // the statement takes many minutes by itself
    EXPECT_EQ(connection->Execute(QStringLiteral("select 5"))->CellText(0, 0), "5");
    EXPECT_TRUE(QTest::qWaitFor([&] { return holder.isNull(); }));
}

TEST_F(Hirarchy, TheLogKeepsTypeTimeAndLines)
{
    window.AppendMessage(QStringLiteral("a\tb\r\nc"), QStringLiteral("Log"), true);
    const qint64 row = window.mfgMessge->Rows() - 1;
    EXPECT_EQ(window.mfgMessge->TextMatrix(row, 1), "Log");
    EXPECT_EQ(window.mfgMessge->TextMatrix(row, 2).size(), 19);
    EXPECT_EQ(window.mfgMessge->TextMatrix(row, 3), "a    b\r\nc");
    EXPECT_EQ(window.mfgMessge->RowHeight(row), 480);
    EXPECT_EQ(window.mfgMessge->Row(), row);
    EXPECT_EQ(window.ts->Selected(), 2);
    window.mnuClearLog();
    EXPECT_EQ(window.mfgMessge->Rows(), 2);
    EXPECT_EQ(window.mfgMessge->TextMatrix(0, 3), "Value");
    EXPECT_EQ(window.mfgMessge->TextMatrix(1, 3), "");
}

TEST_F(Hirarchy, StatisticsOverTheSelectedBlock)
{
    ASSERT_TRUE(Run(QStringLiteral("select id, amount from t")));
    window.mfg->Select(1, 1, 3, 2);
    window.mnuSum_Click();
    EXPECT_EQ(window.txtData->toPlainText(), "Sum = 6");
    EXPECT_EQ(window.ts->Selected(), 3);
    window.mnuAvg_Click();
    EXPECT_EQ(window.txtData->toPlainText(), "Average = 1");
    window.mfg->Select(3, 2, 1, 2); // the same block, drawn from below
    window.mnuMax_Click();
    EXPECT_EQ(window.mfg->Row(), 1); // the first of the equal ones
    EXPECT_EQ(window.mfg->Col(), 2);
    EXPECT_EQ(window.mfg->CellBackColor(), QColor(255, 255, 0));
    window.mfg->Select(1, 1, 3, 2);
    window.mnuMin_Click();
    EXPECT_EQ(window.mfg->Row(), 2);
    EXPECT_EQ(window.mfg->Col(), 2);
}

TEST_F(Hirarchy, ABlockWithoutNumbersSumsToNothing)
{
    ASSERT_TRUE(Run(QStringLiteral("select name from t")));
    window.mfg->Select(1, 1, 3, 1);
    window.mnuSum_Click();
    EXPECT_EQ(window.txtData->toPlainText(), "Sum = 0");
    window.txtData->setPlainText(QStringLiteral("before"));
    window.mnuAvg_Click();
    EXPECT_EQ(window.txtData->toPlainText(), "before");
    window.mnuMax_Click();
    EXPECT_NE(window.mfg->CellBackColor(), QColor(255, 255, 0));
}

TEST_F(Hirarchy, TheHeadingSortsAndTheFirstClickSortsDown)
{
    window.resize(700, 400);
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("select id, name from t")));
    const auto click = [&](int column) {
        window.mfg->Select(1, column, 1, column);
        const QRect heading = window.mfg->CellRect(0, column);
        ASSERT_FALSE(heading.isEmpty());
        QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, heading.center());
    };
    click(1);
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "3");
    click(1);
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "1");
    EXPECT_EQ(window.mfg->TextMatrix(3, 1), "3");
}

TEST_F(Hirarchy, ALongSortSaysSoStopsOnEscapeAndLeavesTheStatus)
{
    window.resize(700, 400);
    window.show();
    ASSERT_TRUE(Run(Counting(300000)));
    SetStatus(QStringLiteral("Done."));
    window.mfg->Select(1, 1, 1, 1);
    QTimer::singleShot(0, &window, [&] { QTest::keyClick(window.mfg, Qt::Key_Escape); });
    const QPoint heading = window.mfg->CellRect(0, 1).center();
    QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, heading);
    EXPECT_TRUE(shell.Statuses.contains(QStringLiteral("Sorting ... (Esc stops)")));
    EXPECT_EQ(shell.Status(), "Done.");
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "1") << "given up";
    QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, heading);
    EXPECT_EQ(window.mfg->TextMatrix(1, 1), "300000") << "the first click that sorts sorts down";
}

TEST_F(Hirarchy, TheRightButtonOpensItsOwnMenuAndNoOther)
{
    struct Ground : QWidget // stands for the work area, which has a menu of its own
    {
        int menus = 0;
        void contextMenuEvent(QContextMenuEvent *) override { ++menus; }
    } ground;
    window.setParent(&ground);
    ground.show();
    for (FlexGrid *grid : {window.mfg, window.mfgMessge}) {
        const QPoint at(30, 30);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid->viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid->viewport(), &event);
        const QStringList before = shell.Menus;
        QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, at);
        EXPECT_EQ(shell.Menus, before + QStringList("mnuStats"));
        EXPECT_EQ(shell.MenuTag, grid == window.mfg ? "R" : "M");
    }
    EXPECT_EQ(ground.menus, 0);
    window.setParent(nullptr);
}

TEST_F(Hirarchy, ANewRunForgetsThePanelsOfTheFormerOne)
{
    ASSERT_TRUE(Run(QStringLiteral("select id from t")));
    window.mfg->Select(2, 1, 2, 1);
    EXPECT_EQ(window.SB->PanelText(2), "Cell [2,1]");
    window.ClearForRun();
    for (const int panel : {2, 3, 4})
        EXPECT_EQ(window.SB->PanelText(panel), "");
    EXPECT_EQ(window.mfg->Rows(), 2);
}

TEST_F(Hirarchy, ADoubleClickShowsTheCellInFull)
{
    window.resize(700, 400);
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("select 'one' || char(10) || 'two' as x")));
    QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, window.mfg->CellRect(1, 1).center());
    QTest::mouseDClick(window.mfg->viewport(), Qt::LeftButton, {}, window.mfg->CellRect(1, 1).center());
    EXPECT_EQ(window.ts->Selected(), 3);
    EXPECT_EQ(window.txtData->toPlainText(), "one\ntwo");
    emit window.SB->PanelClick(1);
    EXPECT_TRUE(window.txtData->toPlainText().startsWith("select 'one'"));
}

TEST_F(Hirarchy, ASchemaRowsetIsMountedAndAnEmptyOneShowsNothing)
{
    window.SetDataSourceRec(connection->Execute(QStringLiteral("select * from t")));
    EXPECT_EQ(window.mfg->Rows(), 4);
    EXPECT_EQ(window.mfg->TextMatrix(0, 1), "id");
    frmHirarchy other;
    other.SetDataSourceRec(connection->Execute(QStringLiteral("select * from t where 1=0")));
    EXPECT_EQ(other.mfg->DataSource(), nullptr);
}

// A double click on 20 MB froze the program for 15 s, and the text stayed in memory until the window closed.
TEST_F(Hirarchy, AHugeCellShowsItsFirstPartAtOnceAndGoesWithTheNextRun)
{
    window.resize(700, 400);
    window.show();
    ASSERT_TRUE(
        Run(QStringLiteral("select zeroblob(6000000) as b, replace(hex(zeroblob(1500000)), '00', 'word ') as t")));
    const std::weak_ptr<ADODB::Recordset> rows = window.mfg->DataSource();
    window.mfg->SetColWidth(1, 3000);
    for (const int column : {1, 2}) {
        const qint64 all = column == 1 ? 12000002 : 7500000;
        window.ts->Select(1);
        const QPoint cell = window.mfg->CellRect(1, column).center();
        QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(window.mfg->viewport(), Qt::LeftButton, {}, cell);
        EXPECT_EQ(window.ts->Selected(), 3);
        EXPECT_FALSE(window.txtData->IsComplete());
        EXPECT_GT(window.txtData->CharactersMade(), 1000);
        EXPECT_LT(window.txtData->CharactersMade(), 100000);
        EXPECT_TRUE(window.txtData->toPlainText().startsWith(column == 1 ? "0x0000" : "word word"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.txtData->CharactersMade() > all / 2; }, 60000));
        EXPECT_TRUE(shell.Status().startsWith("Loading the text of the cell ... ")) << shell.Status().toStdString();
        window.mnuCopy(); // all of it, though a part is still to come
        EXPECT_EQ(QApplication::clipboard()->text().size(), all);
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.txtData->IsComplete(); }, 60000));
        EXPECT_EQ(window.txtData->CharactersMade(), all);
        EXPECT_EQ(shell.Status(), "");
    }
    window.ts->Select(1);
    window.mfg->Select(1, 1, 1, 1);
    window.mnuCopy();
    EXPECT_EQ(QApplication::clipboard()->text().size(), 12000002);
    QApplication::clipboard()->clear();
    window.ClearForRun();
    ASSERT_TRUE(Run(QStringLiteral("select 1")));
    EXPECT_EQ(window.txtData->toPlainText(), "");
    EXPECT_TRUE(rows.expired());
}

TEST_F(Hirarchy, AnEmptyResultShowsItsNamesAndSavesNoRow)
{
    window.resize(700, 400);
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("select id, name as customer from t where 1=0")));
    EXPECT_EQ(window.mfg->Rows(), 2);
    EXPECT_EQ(window.SB->PanelText(3), "Record Count= 0");
    EXPECT_GT(window.mfg->ColWidth(2), window.mfg->fontMetrics().horizontalAdvance("customer") * 15);
    ASSERT_TRUE(window.SaveFile(folder.filePath("e.csv")));
    EXPECT_EQ(Bytes("e.csv"), "\"id\",\"customer\",\r\n\r\n");
}

TEST_F(Hirarchy, FitColumnsWorksOnTheGridThatThePopupWasOpenedOn)
{
    window.resize(900, 400);
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("select 'a text that is longer than its heading' as c")));
    const int before = window.mfg->ColWidth(1);
    const auto open = [](FlexGrid *grid) { QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, QPoint(30, 30)); };
    window.ts->Select(2);
    open(window.mfgMessge);
    window.mnuFitColumns();
    EXPECT_EQ(window.mfg->ColWidth(1), before);
    window.ts->Select(1);
    open(window.mfg);
    window.mnuFitColumns();
    EXPECT_GT(window.mfg->ColWidth(1), before);
}

TEST_F(Hirarchy, ALogRowOfOneLineReadsBackItsHeight)
{
    window.AppendMessage(QStringLiteral("one line"), QStringLiteral("Log"), true);
    EXPECT_EQ(window.mfgMessge->RowHeight(window.mfgMessge->Rows() - 1), 240);
}

} // namespace
