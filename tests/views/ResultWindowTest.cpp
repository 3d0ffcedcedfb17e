// What the result window does by itself, one small thing a test: its tabs, its keys, its log, its search, and that it
// takes the keyboard from nobody.
#include "ado/Connection.h"
#include "controls/BusyIndicator.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/TabStrip.h"
#include "controls/Twips.h"
#include "frame/Settings.h"
#include "tests/analyzer/FindAnswers.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include "views/frmHirarchy.h"
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ResultWindow : testing::Test
{
    QTemporaryDir folder;
    ShellDouble shell;
    DialogDouble dialogs;
    ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    frmHirarchy window;

    void SetUp() override
    {
        SetSettingsFile(folder.filePath(QStringLiteral("settings.ini")));
        connection->Open(QStringLiteral("Driver=SQLite;Database=:memory:"));
        window.KillOnError = false;
        window.resize(700, 400);
    }
    void TearDown() override
    {
        shell.Windows.clear(); // this one is not the shell's to delete
        SetSettingsFile(QString());
    }
    bool Run(const QString &sql)
    {
        window.ShowRec(sql, connection, QStringLiteral("done"));
        return QTest::qWaitFor([&] { return !window.IsRunning() && window.Caption() == u"done"; }, 20000);
    }
};

TEST_F(ResultWindow, OffersWhatItCanDo)
{
    clsMenuSettings can;
    can.CanSave = can.CanCopy = can.CanFind = can.CanPrint = true;
    EXPECT_EQ(window.MenuSettings(), can);
    for (const char *name : {"mnuCopy", "mnuFind", "mnuSave", "mnuPrint", "mnuClearLog", "mnuMax_Click", "mnuMin_Click",
                             "mnuAvg_Click", "mnuSum_Click", "mnuFitColumns"})
        EXPECT_TRUE(window.Offers(QLatin1String(name))) << name;
    EXPECT_FALSE(window.Offers(QStringLiteral("mnuPaste")));
}

TEST_F(ResultWindow, ShowsOneOfItsThreeViewsFromTheBeginning)
{
    EXPECT_TRUE(window.cmdStop->isHidden()); // nothing runs yet
    EXPECT_TRUE(window.lblRunning->isHidden());
    EXPECT_TRUE(window.ani->isHidden());
    QWidget *const views[] = {window.mfg, window.mfgMessge, window.txtData};
    for (const int tab : {1, 2, 3, 1}) {
        for (int view = 1; view <= 3; ++view)
            EXPECT_EQ(views[view - 1]->isHidden(), view != tab) << tab << view;
        window.ts->Select(tab == 3 ? 1 : tab + 1);
    }
}

// The log was as wide as the window had been when it was last looked at.
TEST_F(ResultWindow, TheLogFillsItsViewWheneverItComesUp)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto fits = [&] {
        const FlexGrid &log = *window.mfgMessge;
        return log.ColWidth(3) ==
               ToTwips(log.viewport()->width()) - log.ColWidth(0) - log.ColWidth(1) - log.ColWidth(2) - 50;
    };
    window.ts->Select(2);
    EXPECT_TRUE(fits());
    window.resize(1000, 400);
    EXPECT_TRUE(QTest::qWaitFor(fits));
    window.mfgMessge->SetColWidth(2, 4000); // the user drags an edge, and looks at the rows for a while
    EXPECT_FALSE(fits());
    window.ts->Select(1);
    window.ts->Select(2);
    EXPECT_TRUE(fits());
}

TEST_F(ResultWindow, ReturnShowsTheCellOfTheViewThatIsUp)
{
    ASSERT_TRUE(Run(QStringLiteral("select 'the cell' as x")));
    window.mfg->Select(1, 1, 1, 1);
    window.AppendMessage(QStringLiteral("the line"), QStringLiteral("Log"), false);
    window.mfgMessge->SetCol(3);
    QTest::keyClick(window.mfg, Qt::Key_Return);
    EXPECT_EQ(window.ts->Selected(), 3);
    EXPECT_EQ(window.txtData->toPlainText(), u"the cell");
    window.ts->Select(2);
    QTest::keyClick(window.mfgMessge, Qt::Key_Enter);
    EXPECT_EQ(window.ts->Selected(), 3);
    EXPECT_EQ(window.txtData->toPlainText(), u"the line");
    QTest::keyClick(window.txtData, Qt::Key_Return); // the box's own
    EXPECT_TRUE(window.txtData->toPlainText().endsWith(u"the line"));
}

TEST_F(ResultWindow, TheLogIsUpWhileAStatementRuns)
{
    window.ShowRec(QStringLiteral("select 1"), connection, QStringLiteral("done"));
    EXPECT_EQ(window.ts->Selected(), 2);
    EXPECT_EQ(window.Caption(), "Loading Results...");
    EXPECT_FALSE(window.cmdStop->isHidden());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.Caption() == u"done"; }, 20000));
    EXPECT_EQ(window.ts->Selected(), 1);
    EXPECT_TRUE(window.cmdStop->isHidden());
}

// Rows or a failure that arrive while the user works elsewhere.
TEST_F(ResultWindow, WhatArrivesTakesTheKeyboardFromNobody)
{
    window.show();
    QWidget other;
    for (const char *sql : {"select 1", "select * from nowhere"}) {
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        ASSERT_TRUE(Run(QLatin1String(sql)));
        EXPECT_TRUE(other.isActiveWindow()) << sql;
        EXPECT_TRUE(window.isVisible()) << sql;
    }
    window.showMinimized();
    window.hide();
    ASSERT_TRUE(window.isMinimized());
    for (const char *sql : {"select 1", "select * from nowhere"}) {
        ASSERT_TRUE(Run(QLatin1String(sql)));
        EXPECT_FALSE(window.isVisible()) << sql;
    }
    window.showNormal();
    window.hide();
    for (const char *sql : {"select 1", "select * from nowhere"}) {
        ASSERT_TRUE(Run(QLatin1String(sql)));
        EXPECT_TRUE(window.isVisible()) << sql;
        window.hide();
    }
}

TEST_F(ResultWindow, TheHeadingsOfBandsComeAndGo)
{
    ASSERT_TRUE(Run(QStringLiteral("select 1 as a")));
    window.SpanColumns(true);
    EXPECT_TRUE(window.mfg->ColHeader(0));
    window.SpanColumns(false);
    EXPECT_FALSE(window.mfg->ColHeader(0));
    EXPECT_EQ(window.mfg->FixedRows(), 1);
    window.SpanColumns(true);
    window.SetDataSourceRec(connection->Execute(QStringLiteral("select 2 as b")));
    EXPECT_FALSE(window.mfg->ColHeader(0));
    EXPECT_EQ(window.mfg->FixedCols(), 1);
    EXPECT_EQ(window.mfg->TextMatrix(0, 1), "b");
}

TEST_F(ResultWindow, TheLogIsShownAtItsNewestLine)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    for (int line = 0; line < 100; ++line)
        window.AppendMessage(QString::number(line), QStringLiteral("Log"), line == 99);
    EXPECT_EQ(window.ts->Selected(), 2);
    const qint64 last = window.mfgMessge->Rows() - 1;
    EXPECT_EQ(window.mfgMessge->Row(), last);
    EXPECT_GT(window.mfgMessge->TopRow(), 1);
    EXPECT_FALSE(window.mfgMessge->CellRect(last, 3).isEmpty());
}

// Each hit is marked and in sight; the next search goes on behind it, and its mark goes.
TEST_F(ResultWindow, SearchGoesFromHitToHitAndMarksOneAtATime)
{
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("with recursive c(i) as (select 1 union all select i+1 from c where i<200) "
                                   "select 'row ' || i as a, i as b, '' as z from c")));
    const QColor yellow(255, 255, 0);
    struct Seen
    {
        qint64 row;
        int column;
        bool marked, inSight;
        QString text;
    };
    QList<Seen> seen;
    const auto note = [&] {
        const FlexGrid &grid = *window.mfg;
        seen.append({grid.Row(), grid.Col(), grid.CellBackColor() == yellow && grid.CellForeColor() == QColor(0, 0, 0),
                     !grid.CellRect(grid.Row(), grid.Col()).isEmpty(), grid.TextMatrix(grid.Row(), grid.Col())});
    };
    const auto next = [&](frmFind &find) {
        note();
        FindNext(find);
    };
    window.ts->Select(2);
    FindAnswers answers({Find(QStringLiteral("99")), next, next, [&](frmFind &find) {
                             note();
                             QTest::mouseClick(find.cmdCancel, Qt::LeftButton);
                         }});
    window.mnuFind();
    EXPECT_EQ(answers.shown, 4);
    EXPECT_EQ(window.ts->Selected(), 1);
    ASSERT_EQ(seen.size(), 3);
    const std::pair<qint64, int> wanted[] = {{99, 1}, {99, 2}, {199, 1}};
    for (int hit = 0; hit < 3; ++hit) {
        EXPECT_EQ(seen[hit].row, wanted[hit].first) << hit;
        EXPECT_EQ(seen[hit].column, wanted[hit].second) << hit;
        EXPECT_TRUE(seen[hit].marked) << hit;
        EXPECT_TRUE(seen[hit].inSight) << hit;
        EXPECT_TRUE(seen[hit].text.contains(QStringLiteral("99"))) << hit;
    }
    for (const auto &[row, column] : wanted) { // no mark stays behind
        window.mfg->SetRow(row);
        window.mfg->SetCol(column);
        EXPECT_NE(window.mfg->CellBackColor(), yellow) << row;
    }
}

TEST_F(ResultWindow, ASearchThatIsGivenUpOrFindsNothingMarksNothing)
{
    ASSERT_TRUE(Run(QStringLiteral("select 'one' as a, '' as z")));
    {
        FindAnswers answers({}); // cancelled at once
        window.mnuFind();
        EXPECT_EQ(answers.shown, 1);
    }
    {
        FindAnswers answers({Find(QStringLiteral("two"))});
        window.mnuFind();
        EXPECT_EQ(answers.shown, 1);
    }
    window.mfg->SetRow(1);
    window.mfg->SetCol(1);
    EXPECT_NE(window.mfg->CellBackColor(), QColor(255, 255, 0));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(ResultWindow, TextsAndNumbersAreSortedAsSuchAndOnlyByTheHeading)
{
    window.show();
    ASSERT_TRUE(Run(QStringLiteral("select '9' as n, 'b' as t union all select '10', 'a' union all select '2', 'C'")));
    const auto click = [&](qint64 row, int column) {
        const QRect cell = window.mfg->CellRect(row, column);
        ASSERT_FALSE(cell.isEmpty());
        window.mfg->Select(1, column, 1, column);
        QTest::mouseClick(window.mfg->viewport(), Qt::LeftButton, {}, cell.center());
    };
    const auto column = [&](int number) {
        QStringList cells;
        for (qint64 row = 1; row < window.mfg->Rows(); ++row)
            cells += window.mfg->TextMatrix(row, number);
        return cells.join(u' ');
    };
    click(2, 1);
    EXPECT_EQ(column(1), u"9 10 2") << "a click on a row sorts nothing";
    click(0, 1);
    EXPECT_EQ(column(1), u"10 9 2");
    click(0, 1);
    EXPECT_EQ(column(1), u"2 9 10");
    click(0, 2);
    EXPECT_EQ(column(2), u"C b a");
    click(0, 2);
    EXPECT_EQ(column(2), u"a b C");
}

} // namespace
