// The syntax check through the window: its key and button, its box, its report.
#include "AnalyzerFixture.h"
#include "data/frmTextOutput.h"
#include "tests/support/ScriptedDriver.h"
#include <QTimer>
#include <thread>

namespace {

const QString allIsWell = QStringLiteral("Syntax check complate. No sytax errors found.");

struct SyntaxWindow : Analyzer
{
    frmTextOutput *Output() const
    {
        return qobject_cast<frmTextOutput *>(shell.Child(QStringLiteral("frmTextOutput")));
    }
};

} // namespace

TEST_F(SyntaxWindow, F7SaysThatAllIsWellAndChangesNothing)
{
    window->SetText(QStringLiteral("delete from customers\r\n\r\nselect * from names"));
    window->mnuSelectAll();
    Press(Qt::Key_F7);
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.LastTitle(), QStringLiteral("Syntax Check"));
    EXPECT_EQ(dialogs.LastText(), allIsWell);
    EXPECT_EQ(dialogs.Boxes.last().Icon, 0);
    EXPECT_FALSE(Output());
    EXPECT_EQ(Count(QStringLiteral("select count(*) from customers")), 2);
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_FALSE(shell.Hourglass);
    EXPECT_EQ(shell.HourglassCalls, 2);
    EXPECT_TRUE(Results().isEmpty());
}

TEST_F(SyntaxWindow, TheButtonOpensTheReport)
{
    window->SetText(QStringLiteral("delete from nowhere"));
    window->ToolBar(QStringLiteral("SQLSyntax"));
    ASSERT_TRUE(Output());
    EXPECT_EQ(Output()->Caption(), QStringLiteral("Error Log"));
    EXPECT_EQ(Output()->PlainText().toStdString(), " no such table: nowhere\r\n delete from nowhere\r\n");
    EXPECT_TRUE(Output()->isVisible());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_FALSE(shell.Hourglass);
    // Bold and in the error's colour; the statement below it plain.
    const QTextDocument *shown = Output()->txtResult->document();
    const auto formatOf = [&](int line) {
        Output()->txtResult->ShowAllColours();
        QTextCharFormat format;
        for (const auto &range : shown->findBlockByNumber(line).layout()->formats())
            if (range.start <= 3 && range.start + range.length > 3)
                format.merge(range.format);
        return format;
    };
    EXPECT_GE(formatOf(0).fontWeight(), int(QFont::Bold));
    EXPECT_EQ(formatOf(0).foreground().color(), QColor(247, 205, 108));
    EXPECT_LT(formatOf(1).fontWeight(), int(QFont::Bold));
    EXPECT_NE(formatOf(1).foreground().color(), QColor(247, 205, 108));
}

TEST_F(SyntaxWindow, EachCheckHasAReportOfItsOwn)
{
    window->SetText(QStringLiteral("delete from nowhere"));
    Press(Qt::Key_F7);
    const QPointer<frmTextOutput> first = Output();
    window->txtSQL->setFocus();
    Press(Qt::Key_F7);
    EXPECT_TRUE(first);
    EXPECT_NE(Output(), first.data());
}

TEST_F(SyntaxWindow, AnEmptyTextIsFine)
{
    window->SetText(QString());
    Press(Qt::Key_F7);
    EXPECT_EQ(dialogs.LastText(), allIsWell);
}

TEST_F(SyntaxWindow, OnlyWhatARunWouldTakeIsChecked)
{
    window->SetText(QStringLiteral("delete from nowhere\r\n\r\nselect 1"));
    window->txtSQL->SetSelStart(window->Text().size());
    Press(Qt::Key_F7);
    EXPECT_EQ(dialogs.LastText(), allIsWell);
    window->txtSQL->SetSelStart(2);
    Press(Qt::Key_F7);
    ASSERT_TRUE(Output());
    EXPECT_FALSE(Output()->PlainText().contains(QStringLiteral("select 1")));
}

TEST_F(SyntaxWindow, WithoutAConnectionNothingIsChecked)
{
    gConn.reset();
    window->SetText(QStringLiteral("delete from nowhere"));
    Press(Qt::Key_F7);
    EXPECT_FALSE(Output());
    EXPECT_FALSE(shell.Hourglass);
    for (const auto &box : dialogs.Boxes)
        EXPECT_NE(box.Title, QStringLiteral("Syntax Check"));
}

TEST_F(SyntaxWindow, EscapeStopsTheCheckAndTheKeysAreHeldBackMeanwhile)
{
    gConn.reset();
    ScriptedDriver driver;
    driver.OnExecute = [&](const QString &sql) -> ADODB::ExecuteResult {
        if (sql.startsWith(QLatin1String("SET NOEXEC")))
            throw ADODB::Error(-1, QStringLiteral("what?"));
        driver.RunUntilCancelled(30);
        return {};
    };
    driver.OnTransaction = [](const QString &) {};
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted"));
    window->SetText(QStringLiteral("update a\r\n\r\nupdate b"));
    window->mnuSelectAll();
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, window.data(), [&] {
        QTest::keyClick(window->txtSQL, Qt::Key_X); // held back
        QTest::keyClick(window->txtSQL, Qt::Key_F7);
        QTest::keyClick(window->txtSQL, Qt::Key_Escape);
    });
    press.start(100);
    Press(Qt::Key_F7);
    press.stop();
    EXPECT_EQ(window->Text(), QStringLiteral("update a\r\n\r\nupdate b"));
    EXPECT_EQ(driver.Log(), QStringList({QStringLiteral("SET NOEXEC ON"), QStringLiteral("BEGIN"),
                                         QStringLiteral("update a"), QStringLiteral("ROLLBACK")}));
    ASSERT_TRUE(Output());
    EXPECT_TRUE(Output()->PlainText().contains(QStringLiteral("stopped by the user")));
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_FALSE(shell.Hourglass);
    gConn.reset();
}

// Escape during the wait stopped the other's statement, and the check went on.
TEST_F(SyntaxWindow, WhileAnothersStatementRunsEscapeGivesTheCheckUp)
{
    gConn.reset();
    ScriptedDriver driver;
    std::atomic<bool> stopped = false;
    driver.OnExecute = [&](const QString &sql) -> ADODB::ExecuteResult {
        if (sql == QLatin1String("slow")) {
            try {
                driver.RunUntilCancelled(30);
            } catch (const ADODB::Error &) {
                stopped = true;
            }
        }
        return {};
    };
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted"));
    std::thread other([connection = gConn] { connection->Execute(QStringLiteral("slow")); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return driver.Log().size() == 1; }));
    window->SetText(QStringLiteral("delete from t"));
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, window.data(), [&] {
        if (shell.Status().startsWith(QLatin1String("Waiting for: slow")))
            QTest::keyClick(window->txtSQL, Qt::Key_Escape);
    });
    press.start(20);
    Press(Qt::Key_F7);
    press.stop();
    EXPECT_FALSE(stopped);
    EXPECT_EQ(driver.Cancels, 0);
    EXPECT_TRUE(gConn->IsBusy());
    gConn->Cancel();
    other.join();
    EXPECT_EQ(driver.Log(), QStringList{QStringLiteral("slow")}); // nothing of the check was sent
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    gConn.reset();
}

namespace {

// SQL Server's way with NOEXEC: a connection that has it on reads what comes and does nothing of it.
struct NoExec : SyntaxWindow
{
    ScriptedDriver driver;
    bool off = false; // the connection does nothing
    int rows = 2;
    void SetUp() override
    {
        SyntaxWindow::SetUp();
        driver.FamilyIs = ADODB::DatabaseFamily::SQLServer;
        driver.OnConnect = [this](const QString &, const QString &, const QString &) { off = false; };
        driver.OnExecute = [this](const QString &sql) -> ADODB::ExecuteResult {
            if (sql.startsWith(QLatin1String("SET NOEXEC")))
                off = sql.endsWith(QLatin1String("ON"));
            else if (sql.contains(QLatin1String("delet ")))
                throw ADODB::Error(-1, QStringLiteral("Incorrect syntax near 'delet'."));
            else if (sql.contains(QLatin1String("delete")) && !off)
                rows = 0;
            return {};
        };
        driver.OnTransaction = [](const QString &) {};
        ASSERT_TRUE(OpenConnection(QStringLiteral("Scripted")));
        driver.ClearLog();
    }
    void TearDown() override
    {
        gConn.reset();
        SyntaxWindow::TearDown();
    }
};

const QString noExecOn = QStringLiteral("SET NOEXEC ON");
const QString noExecOff = QStringLiteral("SET NOEXEC OFF");

} // namespace

TEST_F(NoExec, WhatIsRightIsReadAndTheServerGoesOn)
{
    window->SetText(QStringLiteral("delete from t\r\n\r\nselect 1"));
    window->mnuSelectAll();
    const QString text = window->Text();
    Press(Qt::Key_F7);
    EXPECT_EQ(driver.Log(), QStringList({noExecOn, text, noExecOff, noExecOn, text, noExecOff}));
    EXPECT_EQ(dialogs.LastText(), allIsWell);
    EXPECT_EQ(rows, 2);
    EXPECT_FALSE(off);
    window->SetText(QStringLiteral("delete from t"));
    Press(Qt::Key_F5);
    EXPECT_EQ(rows, 0);
}

// It stays switched on, and that is meant: later runs do nothing until somebody connects again.
TEST_F(NoExec, WhatIsWrongLeavesTheServerDoingNothingUntilTheNextConnection)
{
    window->SetText(QStringLiteral("select 1\r\n\r\ndelet from t"));
    window->mnuSelectAll();
    const QString text = window->Text();
    window->ToolBar(QStringLiteral("SQLSyntax"));
    EXPECT_EQ(driver.Log(), QStringList({noExecOn, text, noExecOn, text}));
    ASSERT_TRUE(Output());
    EXPECT_EQ(Output()->PlainText().toStdString(), " Incorrect syntax near 'delet'.\r\n select 1\r\n\r\n"
                                                   " Incorrect syntax near 'delet'.\r\n delet from t\r\n");
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(window->Text(), text);
    window->SetText(QStringLiteral("delete from t"));
    Press(Qt::Key_F5);
    EXPECT_EQ(rows, 2);
    ASSERT_TRUE(OpenConnection(QStringLiteral("Scripted")));
    Press(Qt::Key_F5);
    EXPECT_EQ(rows, 0);
}
