// "Browse Data" for real: the picker, the window, its commands from the menus, another connection, the way out.
#include "app/SideBar.h"
#include "controls/CellEditor.h"
#include "controls/DataGrid.h"
#include "session/Pump.h"
#include "tests/app/SchemaFixture.h"
#include "views/frmInline.h"
#include <QClipboard>

namespace {

class Browse : public SchemaMenus
{
protected:
    void SetUp() override
    {
        SchemaMenus::SetUp();
        InstallWaitHandler();
        Window->show();
        OpenSample();
    }
    void TearDown() override
    {
        SchemaMenus::TearDown();
        RemoveWaitHandler();
    }
    frmInline *Opened(const QString &table)
    {
        Pick(table);
        Do("mnuBrowesTable");
        return Newest<frmInline>();
    }
    QString Stored() { return gConn->Execute(QStringLiteral("select group_concat(a) from t"))->CellText(0, 0); }
};

} // namespace

TEST_F(Browse, AsksForATableAndOpensItToBeEdited)
{
    frmInline *const table = Opened(QStringLiteral("t"));
    ASSERT_TRUE(table);
    EXPECT_EQ(table->Caption(), "t Table");
    EXPECT_EQ(table->dg->Rows(), 2);
    EXPECT_EQ(Window->ActiveChild(), table);
    EXPECT_EQ(LastStatus(), "");

    // A name that only the server's quotes reach, and a cancelled picker.
    ASSERT_TRUE(Opened(QStringLiteral("two words")));
    EXPECT_EQ(Newest<frmInline>()->Caption(), "two words Table");
    const auto before = Window->Children().size();
    Pick(QString());
    Do("mnuBrowesTable");
    EXPECT_EQ(Window->Children().size(), before);
    EXPECT_EQ(Preselected, "two words") << "the table picked last";
}

TEST_F(Browse, WithoutAConnectionItSaysSo)
{
    gConn.reset();
    Do("mnuBrowesTable");
    EXPECT_EQ(Dialogs.LastTitle(), "Conection");
    EXPECT_FALSE(Newest<frmInline>());
}

TEST_F(Browse, TheMenusReachIt)
{
    frmInline *const table = Opened(QStringLiteral("t"));
    ASSERT_TRUE(table);
    ASSERT_TRUE(table->dg->SetCurrentCell(0, 0));
    QApplication::clipboard()->setText(QStringLiteral("17"));
    Do("mnuPaste");
    EXPECT_EQ(table->dg->DataSource()->CellText(0, 0), "17");
    Do("mnuSave");
    EXPECT_EQ(Dialogs.LastText(), "Changes to this table have been saved.");
    EXPECT_EQ(Stored(), "17,2");
    // The menu's Cut only copies.
    Do("mnuCut");
    EXPECT_EQ(QApplication::clipboard()->text(), "17");
    EXPECT_EQ(table->dg->DataSource()->CellText(0, 0), "17");
    // The window's own cuts.
    table->mnuCut();
    EXPECT_TRUE(table->dg->DataSource()->CellIsNull(0, 0));
}

TEST_F(Browse, AnotherConnectionAsksAboutChangesAndTheWindowGoesWithIt)
{
    frmInline *const table = Opened(QStringLiteral("t"));
    ASSERT_TRUE(table);
    ASSERT_TRUE(table->dg->SetCurrentCell(0, 0));
    ASSERT_TRUE(table->dg->SetCellText(QStringLiteral("5")));
    gConns().Add(Database(QStringLiteral("b.sqlite")), QStringLiteral("b"), QString());
    AddConnectionEntry(*Window->eb, QStringLiteral("b"));
    const ADODB::ConnectionPtr former = gConn;
    Dialogs.Answers = {mbYes};
    Window->ConnectTo(Entry(QStringLiteral("b")));
    EXPECT_EQ(former->Execute(QStringLiteral("select group_concat(a) from t"))->CellText(0, 0), "5,2")
        << "saved where it was edited";
    EXPECT_EQ(table->Rows()->ActiveConnection(), gConn);
    EXPECT_EQ(table->dg->Rows(), 0);
}

// All of what is under way is cancelled at the way out, and whatever begins then is refused: an answer of Yes would
// have saved nothing.
TEST_F(Browse, TheWayOutAsksWhileThereIsStillAWayToSave)
{
    frmInline *const table = Opened(QStringLiteral("t"));
    ASSERT_TRUE(table);
    ASSERT_TRUE(table->dg->SetCurrentCell(0, 0));
    ASSERT_TRUE(table->dg->SetCellText(QStringLiteral("5")));
    const ADODB::ConnectionPtr connection = gConn;
    Dialogs.Answers = {mbYes, mbOK};
    Window->close();
    EXPECT_TRUE(Window->HasEnded());
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[0].Title, "Changes");
    EXPECT_EQ(Dialogs.LastText(), "Changes to this table have been saved.");
    EndPumps(false);
    EXPECT_EQ(connection->Execute(QStringLiteral("select group_concat(a) from t"))->CellText(0, 0), "5,2");
}

TEST_F(Browse, CancelAtTheWayOutEndsTheProgramAndSavesNothing)
{
    frmInline *const table = Opened(QStringLiteral("t"));
    ASSERT_TRUE(table);
    ASSERT_TRUE(table->dg->SetCurrentCell(0, 0));
    ASSERT_TRUE(table->dg->SetCellText(QStringLiteral("5")));
    const ADODB::ConnectionPtr connection = gConn;
    Dialogs.Answers = {mbCancel};
    Window->close();
    EXPECT_TRUE(Window->HasEnded());
    EXPECT_EQ(Dialogs.Boxes.size(), 1) << "asked once";
    EndPumps(false);
    EXPECT_EQ(connection->Execute(QStringLiteral("select group_concat(a) from t"))->CellText(0, 0), "1,2");
}

namespace {

// A save that stands still at another user's lock, and the program is to end.
class BrowseLocked : public Browse
{
protected:
    void SetUp() override
    {
        Browse::SetUp();
        const QString text = qEnvironmentVariable("BRINDLEWICK_TEST_POSTGRES");
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1");
            GTEST_SKIP() << "no server";
        }
        m_other = ADODB::Connection::Create();
        m_other->Open(text);
        m_other->Execute(QStringLiteral("DROP TABLE IF EXISTS ") + m_name);
        m_other->Execute(QStringLiteral("CREATE TABLE %1(a INTEGER PRIMARY KEY, b INTEGER)").arg(m_name));
        m_other->Execute(QStringLiteral("INSERT INTO %1 VALUES (1, 0)").arg(m_name));
        ASSERT_TRUE(OpenConnection(text));
        m_table = Opened(m_name);
        ASSERT_TRUE(m_table && m_table->Rows());
        ASSERT_TRUE(m_table->dg->SetCurrentCell(0, 1));
        ASSERT_TRUE(m_table->dg->SetCellText(QStringLiteral("7")));
        m_other->BeginTrans();
        m_other->Execute(QStringLiteral("UPDATE %1 SET b = 0").arg(m_name));
        m_clock.setInterval(5);
        QObject::connect(&m_clock, &QTimer::timeout, &m_clock, [this] {
            if (!m_table || !m_table->IsBusy() || ++m_ticks < 20)
                return;
            m_clock.stop();
            Window->close();
        });
        m_clock.start();
    }
    void TearDown() override
    {
        EndPumps(false);
        if (m_other) {
            if (m_other->InTransaction())
                m_other->RollbackTrans();
            m_other->Execute(QStringLiteral("DROP TABLE IF EXISTS ") + m_name);
        }
        Browse::TearDown();
    }
    QString Locked() { return m_other->Execute(QStringLiteral("SELECT b FROM ") + m_name)->CellText(0, 0); }

    const QString m_name = QStringLiteral("browse_locked_%1").arg(QCoreApplication::applicationPid());
    ADODB::ConnectionPtr m_other;
    QPointer<frmInline> m_table;
    QTimer m_clock;
    int m_ticks = 0;
};

} // namespace

TEST_F(BrowseLocked, QuittingInTheMiddleOfASaveCanWaitForIt)
{
    Dialogs.OnBox = [this](const MsgBoxRequest &request) {
        if (request.Title == u"Changes")
            m_other->RollbackTrans(); // the lock goes while the question is up
        return int(mbYes);
    };
    Window->Command("mnuSave");
    EXPECT_TRUE(Window->HasEnded());
    EndPumps(false);
    EXPECT_EQ(Locked(), "7");
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.startsWith("The table is still being saved."));
}

TEST_F(BrowseLocked, QuittingInTheMiddleOfASaveCanStopIt)
{
    Dialogs.Answers = {mbNo, mbNo};
    Window->Command("mnuSave");
    EXPECT_TRUE(Window->HasEnded());
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[1].Title, "Changes") << "what did not go out is told";
    EndPumps(false);
    m_other->RollbackTrans();
    EXPECT_EQ(Locked(), "0");
}
