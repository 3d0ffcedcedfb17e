// A schema command that waits while the user goes to another connection: its window would show the former one's tables
// beside the new one's name. It did so: the command had been given the current connection itself, and compared that
// with the current connection.
#include "ado/UARecordset.h"
#include "session/Pump.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/ScriptedDriver.h"
#include <QTimer>

namespace {

class Switch : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
        InstallWaitHandler();
        m_driver.OnExecute = [this](const QString &) {
            m_gate.Pass();
            return ADODB::ExecuteResult{};
        };
        m_driver.OnCatalogue = [](ADODB::SchemaEnum) {
            return std::make_unique<ScriptedRows>(
                QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"},
                QList<QStringList>{{QString(), QString(), "Orders", "TABLE"}});
        };
        gConn = ADODB::Connection::Create();
        gConn->Open(QStringLiteral("Scripted"));
    }
    void TearDown() override
    {
        m_gate.Open();
        ShellTest::TearDown();
        RemoveWaitHandler();
    }
    // The forms of the windows that are open, but for the Analyzer that comes with a connection.
    QStringList Forms() const
    {
        QStringList forms;
        for (const ChildWindow *child : Window->Children())
            if (child->FormName() != u"frmSQL")
                forms += child->FormName();
        return forms;
    }
    Gate m_gate;
    ScriptedDriver m_driver;
};

TEST_F(Switch, AWindowOfTheConnectionThatWasLeftDoesNotOpen)
{
    UARecordset running;
    running.OpenRecordset(QStringLiteral("x"), gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_gate.Arrived(); }));
    const ADODB::ConnectionPtr former = gConn;
    // Once the command waits for that statement, a click on the other entry; the answer is to wait for what is under
    // way, and so the command's rowset arrives whole, when its connection is no longer the one of the windows.
    bool waited = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        if (!LastStatus().startsWith(QStringLiteral("Waiting for: x")))
            return;
        look.stop();
        waited = true;
        Dialogs.Answers << mbYes;
        QTimer::singleShot(0, Window.get(), [&] { m_gate.Open(); });
        Window->ConnectTo(Entry(QStringLiteral("a")));
    });
    look.start(5);
    Window->Command("mnuTableList");
    ASSERT_TRUE(waited);
    ASSERT_NE(gConn, former);
    EXPECT_TRUE(m_driver.Log().contains(QStringLiteral("[schema 20]"))) << "it was not asked for at all";
    EXPECT_EQ(Forms(), QStringList());
    EXPECT_EQ(LastStatus(), QStringLiteral("Error: The connection has been left meanwhile."));
}

// The same command, while the connection stays.
TEST_F(Switch, AWindowOfTheConnectionThatStaysOpensBehindTheWait)
{
    UARecordset running;
    running.OpenRecordset(QStringLiteral("x"), gConn, 3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_gate.Arrived(); }));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, Window.get(), [&] {
        if (LastStatus().startsWith(QStringLiteral("Waiting for: x")))
            m_gate.Open();
    });
    look.start(5);
    Window->Command("mnuTableList");
    EXPECT_EQ(Forms(), QStringList{QStringLiteral("frmGrid")});
}

} // namespace
