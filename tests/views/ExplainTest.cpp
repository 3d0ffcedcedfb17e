// The execution plan for real: the windows of a text's statements, over doubles of the two servers that know the
// classic forms and over the three databases that are asked in their own words.
#include "ado/Connection.h"
#include "controls/FlexGrid.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "controls/Twips.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/ShellDouble.h"
#include "views/ExplainSQL.h"
#include "views/frmExecutionPlan.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using ADODB::Error;
using ADODB::ExecuteResult;

namespace {

const QString kBox = QStringLiteral("Execution Plan Faild. Make sure of the following\r\n Your SQL statement is "
                                    "valid.\r\n Your database is supported by Brindlewick's Excution Plan.");
const QStringList kStanding{
    "Execution plan could not be displayed please verify:", "1) Your database suppports this feature.",
    "2) Your SQL statement is valid.", "3) This feature supprts your database."};

QStringList NodesOf(const frmExecutionPlan &window)
{
    QStringList texts;
    for (int number = 1; number <= window.TV->Nodes().Count(); ++number)
        texts += window.TV->Nodes().Item(number)->Text();
    return texts;
}

struct Explain : testing::Test
{
    ShellDouble shell;
    DialogDouble dialogs;
    Explain() { InstallWaitHandler(); }
    ~Explain() override
    {
        shell.CloseAll();
        gConn.reset();
        RemoveWaitHandler();
    }
    void Connect(const QString &text)
    {
        gConn = ADODB::Connection::Create();
        gConn->Open(text);
        gConn->SetCursorLocation(ADODB::adUseClient);
    }
    QList<frmExecutionPlan *> Windows() const
    {
        QList<frmExecutionPlan *> list;
        for (ChildWindow *const child : shell.Children())
            if (auto *const window = qobject_cast<frmExecutionPlan *>(child))
                list += window;
        return list;
    }
};

ExecuteResult ServerRows()
{
    ExecuteResult result;
    result.Rows = std::make_unique<ScriptedRows>(
        QStringList{"StmtText", "LogicalOp", "DefinedValues", "TotalSubTreeCost", "EstimateRows", "AvgRowSize",
                    "EstimateCPU", "EstimateIO", "Parent", "NodeID"},
        QList<QStringList>{{"select * from t", {}, {}, "0.126", "12", {}, {}, {}, "0", "1"},
                           {"x", "Table Scan", "t.a", "0.5", "12", "34", "0.004", "2", "1", "2"}});
    return result;
}

} // namespace

TEST_F(Explain, AWindowSaysWhatToLookAtUntilItsPlanComes)
{
    frmExecutionPlan window;
    EXPECT_EQ(window.Caption(), "Execution Plan");
    EXPECT_EQ(NodesOf(window), kStanding);
    const Node *const root = window.TV->Nodes().Item(1);
    EXPECT_TRUE(root->Expanded());
    EXPECT_EQ(root->Children(), 3);
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(window.TV->Nodes().Item(number)->Image(), window.TV->ImageIndex(QStringLiteral("R")));
    EXPECT_EQ(window.picSplit->Border(1), 100);
    EXPECT_EQ(window.picSplit->Border(3), 100);
}

TEST_F(Explain, EachStatementIsPlannedOnAConnectionOfItsOwnAndGetsAWindow)
{
    ScriptedDriver driver;
    QStringList opened;
    driver.OnConnect = [&](const QString &text, const QString &, const QString &) { opened += text; };
    driver.OnExecute = [](const QString &sql) { return sql.startsWith("select") ? ServerRows() : ExecuteResult{}; };
    Connect(QStringLiteral("Scripted=1"));
    const QString text = QStringLiteral("select * from t\r\n\r\nselect * from u");
    ExplainSQL(text);

    EXPECT_EQ(opened, (QStringList{"Scripted=1", "Scripted=1", "Scripted=1"}));
    EXPECT_EQ(driver.Log(), (QStringList{"SET SHOWPLAN_All ON", "select * from t", "SET SHOWPLAN_All OFF",
                                         "SET SHOWPLAN_All ON", "select * from u", "SET SHOWPLAN_All OFF"}));
    ASSERT_EQ(Windows().size(), 2);
    for (const frmExecutionPlan *const window : Windows()) {
        EXPECT_EQ(window->SB->PanelText(1), text);
        EXPECT_EQ(NodesOf(*window),
                  (QStringList{"select * from t   Cost(0.13)   Rows(12)",
                               "Table Scan [t.a]   Cost(0.5)   Rows(12)   AvgRowSize(34)   CPU(0)   IO(2)"}));
        EXPECT_EQ(window->TV->Nodes().Item(2)->Parent(), window->TV->Nodes().Item(1));
        EXPECT_TRUE(window->TV->Nodes().Item(1)->Expanded());
        EXPECT_EQ(window->TV->topLevelItem(0)->child(0)->foreground(0).color(), QColor(255, 255, 0));
        EXPECT_EQ(window->TV->topLevelItem(0)->foreground(0).color(), SkinColour(SkinRole::ListText));
        EXPECT_EQ(window->mfg->RecordCount(), 2);
        EXPECT_EQ(window->mfg->TextMatrix(2, 2), "Table Scan");
    }
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(gConn->CursorLocation(), ADODB::adUseClient);
}

TEST_F(Explain, OracleIsAskedThroughItsPlanTable)
{
    ScriptedDriver driver;
    driver.OnExecute = [](const QString &sql) {
        ExecuteResult result;
        if (sql.startsWith("SELECT"))
            result.Rows = std::make_unique<ScriptedRows>(
                QStringList{"Operation", "Options", "Object_Owner", "Object_Name", "Object_type", "Cost", "CPU_Cost",
                            "IO_Cost", "Parent_ID", "ID"},
                QList<QStringList>{{"SELECT STATEMENT", {}, {}, {}, {}, "3", {}, {}, {}, "0"},
                                   {"TABLE ACCESS", "FULL", "S", "T", "TABLE", "3", "10", "2", "0", "1"}});
        return result;
    };
    Connect(QStringLiteral("Scripted=1;Driver=oracle in home"));
    ExplainSQL(QStringLiteral("select 1 from dual"));
    EXPECT_EQ(driver.Log(), (QStringList{"DELETE FROM PLAN_TABLE", "EXPLAIN PLAN FOR select 1 from dual",
                                         "SELECT * FROM PLAN_TABLE"}));
    ASSERT_EQ(Windows().size(), 1);
    EXPECT_EQ(NodesOf(*Windows()[0]), (QStringList{"SELECT STATEMENT   Cost(3)",
                                                   "TABLE ACCESS [FULL] S.T (TABLE)   Cost(3)   CPU(10)   IO(2)"}));
    EXPECT_EQ(Windows()[0]->TV->topLevelItem(0)->child(0)->foreground(0).color(), QColor(255, 255, 0));
}

TEST_F(Explain, AServerOfNeitherFormIsToldForEachStatementAndTheWindowsKeepTheirMessage)
{
    ScriptedDriver driver;
    driver.OnExecute = [](const QString &) -> ExecuteResult {
        throw Error(ADODB::adErrProviderFailed, QStringLiteral("unknown word SHOWPLAN_All"));
    };
    Connect(QStringLiteral("Scripted=1"));
    ExplainSQL(QStringLiteral("select 1\r\n\r\nselect 2"));
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(dialogs.Boxes[0].Text, kBox);
    EXPECT_EQ(dialogs.Boxes[0].Title, "Execution Plan");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(driver.Log(), (QStringList{"SET SHOWPLAN_All ON", "SET SHOWPLAN_All ON"})) << "no statement has run";
    ASSERT_EQ(Windows().size(), 2);
    EXPECT_EQ(NodesOf(*Windows()[1]), kStanding);
    EXPECT_EQ(Windows()[1]->mfg->DataSource(), nullptr);
}

TEST_F(Explain, RowsOfAnotherFormShowRawBesideTheTreeAsItStood)
{
    ScriptedDriver driver;
    driver.OnExecute = [](const QString &sql) {
        ExecuteResult result;
        if (sql.startsWith("select"))
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"a", "b"}, QList<QStringList>{{"1", "2"}});
        return result;
    };
    Connect(QStringLiteral("Scripted=1"));
    ExplainSQL(QStringLiteral("select 1"));
    ASSERT_EQ(Windows().size(), 1);
    EXPECT_TRUE(NodesOf(*Windows()[0]).isEmpty()) << "the tree was cleared before the rows were read";
    EXPECT_EQ(Windows()[0]->mfg->TextMatrix(1, 2), "2");
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_F(Explain, WithoutAConnectionNothingOpens)
{
    ExplainSQL(QStringLiteral("select 1"));
    EXPECT_TRUE(Windows().isEmpty());
    EXPECT_EQ(dialogs.Boxes.size(), 1);
}

TEST_F(Explain, EscapeWhileTheServerThinksOpensNothing)
{
    ScriptedDriver driver;
    Gate gate;
    driver.OnExecute = [&](const QString &) -> ExecuteResult {
        gate.Pass();
        throw Error(ADODB::adErrOperationCancelled, QStringLiteral("stopped"));
    };
    driver.OnCancel = [&] { gate.Open(); };
    Connect(QStringLiteral("Scripted=1"));
    QWidget focus;
    focus.show();
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, [&] {
        if (gate.Arrived()) {
            press.stop();
            QTest::keyClick(&focus, Qt::Key_Escape);
        }
    });
    press.start(1);
    ExplainSQL(QStringLiteral("select 1\r\n\r\nselect 2"));
    EXPECT_TRUE(Windows().isEmpty());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(driver.Log(), QStringList{"SET SHOWPLAN_All ON"});
    EXPECT_EQ(gConn->CursorLocation(), ADODB::adUseClient);
}

TEST_F(Explain, TheTreeIsCopiedAsText)
{
    frmExecutionPlan window;
    window.mnuCopy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              kStanding[0] + "\r\n  " + kStanding[1] + "\r\n  " + kStanding[2] + "\r\n  " + kStanding[3] + "\r\n");
}

// The databases that are asked in their own words.
struct PlanDatabase
{
    const char *name, *variable, *wholeTable;
};
std::ostream &operator<<(std::ostream &out, const PlanDatabase &database)
{
    return out << database.name;
}

struct ExplainOn : Explain, testing::WithParamInterface<PlanDatabase>
{
    QTemporaryDir folder;
    void SetUp() override
    {
        const char *const variable = GetParam().variable;
        const QString text = variable
                                 ? qEnvironmentVariable(variable)
                                 : QStringLiteral("Driver=SQLite;Create=Yes;Database=%1/p.sqlite").arg(folder.path());
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << variable;
            GTEST_SKIP() << variable;
        }
        Connect(text);
        gConn->Execute(QStringLiteral("CREATE TEMPORARY TABLE planned(id INTEGER PRIMARY KEY, v INTEGER)"));
        for (int i = 1; i <= 20; ++i)
            gConn->Execute(QStringLiteral("INSERT INTO planned VALUES (%1, %1)").arg(i));
    }
};

TEST_P(ExplainOn, AWholeTableStandsOutAndNothingRuns)
{
    ExplainSQL(QStringLiteral("select * from planned where v = 3\r\n\r\ndelete from planned"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << dialogs.LastText().toStdString();
    ASSERT_EQ(Windows().size(), 2);
    const frmExecutionPlan &window = *Windows()[0];
    const QString nodes = NodesOf(window).join(u'\n');
    EXPECT_TRUE(nodes.contains(QLatin1String(GetParam().wholeTable))) << nodes.toStdString();
    int marked = 0;
    for (int number = 1; number <= window.TV->Nodes().Count(); ++number)
        marked += window.TV->Nodes().Item(number)->Tag() == u"scan";
    EXPECT_EQ(marked, 1);
    EXPECT_GT(window.mfg->RecordCount(), 0);
    EXPECT_EQ(gConn->Execute(QStringLiteral("SELECT count(*) FROM planned"))->CellText(0, 0), "20");
}

TEST_P(ExplainOn, AWrongStatementIsToldAndASecondStatementIsNeverRun)
{
    ExplainSQL(QStringLiteral("select nothing from planned"));
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.Boxes[0].Text, kBox);
    EXPECT_TRUE(shell.Status().contains(u"nothing")) << shell.Status().toStdString();
    ExplainSQL(QStringLiteral("select 1; delete from planned"));
    EXPECT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(gConn->Execute(QStringLiteral("SELECT count(*) FROM planned"))->CellText(0, 0), "20");
}

TEST_P(ExplainOn, AnOpenTransactionStaysWhatItWas)
{
    gConn->BeginTrans();
    gConn->Execute(QStringLiteral("INSERT INTO planned VALUES (21, 21)"));
    ExplainSQL(QStringLiteral("select nothing from planned\r\n\r\nselect * from planned"));
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_TRUE(gConn->InTransaction());
    EXPECT_EQ(gConn->Execute(QStringLiteral("SELECT count(*) FROM planned"))->CellText(0, 0), "21");
    gConn->RollbackTrans();
    EXPECT_EQ(gConn->Execute(QStringLiteral("SELECT count(*) FROM planned"))->CellText(0, 0), "20");
}

INSTANTIATE_TEST_SUITE_P(Databases, ExplainOn,
                         testing::Values(PlanDatabase{"SQLite", nullptr, "SCAN planned"},
                                         PlanDatabase{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", "Seq Scan [planned]"},
                                         PlanDatabase{"MariaDB", "BRINDLEWICK_TEST_MARIADB", "planned [ALL]"}),
                         [](const auto &server) { return std::string(server.param.name); });
