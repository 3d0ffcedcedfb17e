#include "ado/UARecordset.h"
#include "data/frmLogin.h"
#include "session/Pump.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include <QLineEdit>

namespace {

class ConnectionTest : public DataTest
{
protected:
    // Refuses everybody but "me" with "secret".
    void AskForLogin(int number = ADODB::adErrLoginFailed, const QString &words = QStringLiteral("who are you?"))
    {
        m_driver.OnConnect = [this, number, words](const QString &, const QString &user, const QString &password) {
            ++m_attempts;
            if (user != "me" || password != "secret")
                throw ADODB::Error(number, words);
        };
    }
    void TypeLogin(const QString &user, const QString &password, const QString &reason = {})
    {
        WithDialog([=](QWidget *dialog) {
            auto *login = qobject_cast<frmLogin *>(dialog);
            ASSERT_NE(login, nullptr);
            EXPECT_TRUE(login->Cancelled);
            EXPECT_EQ(login->lblReason->text(), reason);
            EXPECT_EQ(login->lblReason->isVisible(), !reason.isEmpty());
            EXPECT_EQ(login->windowTitle(), "Login");
            EXPECT_TRUE(login->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
            QTest::keyClicks(login->txtUserName, user);
            QTest::keyClicks(login->txtPassword, password);
            QTest::keyClick(login->txtPassword, Qt::Key_Return);
        });
    }

    ScriptedDriver m_driver;
    std::atomic<int> m_attempts = 0;
};

TEST_F(ConnectionTest, SuccessSetsStatusMenusAndPointer)
{
    EXPECT_TRUE(OpenConnection("Scripted"));
    EXPECT_EQ(m_shell.Statuses, (QStringList{"Opening Connection ...", "Connection Opened."}));
    EXPECT_TRUE(m_shell.SchemaMenu);
    EXPECT_FALSE(m_shell.Hourglass);
    EXPECT_EQ(gConn->State(), ADODB::adStateOpen);
    EXPECT_EQ(gConn->CursorLocation(), ADODB::adUseClient);
    EXPECT_EQ(gConn->ConnectionString(), "Scripted");
    EXPECT_EQ(LastOpenError(), "");
}

TEST_F(ConnectionTest, FailureKeepsANewClosedObjectAndThePointer)
{
    ASSERT_TRUE(OpenConnection("Scripted"));
    const auto before = gConn;
    m_driver.OnConnect = [](const QString &, const QString &, const QString &) {
        throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("no such server"));
    };
    EXPECT_FALSE(OpenConnection("Scripted"));
    EXPECT_NE(gConn, before);
    EXPECT_EQ(gConn->State(), ADODB::adStateClosed);
    EXPECT_EQ(m_shell.Status(), "Cannot open connection!");
    EXPECT_FALSE(m_shell.SchemaMenu);
    EXPECT_TRUE(m_shell.Hourglass); // the caller resets it
    EXPECT_EQ(LastOpenError(), "no such server");
    EXPECT_EQ(m_dialogs, 0);
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(ConnectionTest, TheLoginIsAskedForUntilItIsRight)
{
    AskForLogin();
    TypeLogin("you", "x");
    // What was typed has been refused: the next window says why.
    QTimer::singleShot(0, [&] { QTimer::singleShot(150, [&] { TypeLogin("me", "secret", "who are you?"); }); });
    EXPECT_TRUE(OpenConnection("Scripted;Database=x"));
    EXPECT_EQ(m_attempts, 3);
    EXPECT_EQ(m_dialogs, 2);
    EXPECT_EQ(gConn->ConnectionString(), "Scripted;Database=x"); // what was typed does not enter it
    EXPECT_TRUE(m_shell.SchemaMenu);
}

TEST_F(ConnectionTest, TheWordPasswordInTheTextAsksToo)
{
    AskForLogin(ADODB::adErrProviderFailed, "your PassWord is wrong");
    TypeLogin("me", "secret");
    EXPECT_TRUE(OpenConnection("Scripted"));
    EXPECT_EQ(m_dialogs, 1);
}

TEST_F(ConnectionTest, ACancelledLoginFails)
{
    ASSERT_TRUE(OpenConnection("Scripted"));
    AskForLogin();
    WithDialog([](QWidget *dialog) { Click(dialog, "cmdCancel"); });
    EXPECT_FALSE(OpenConnection("Scripted"));
    EXPECT_EQ(m_shell.Status(), "Cannot open connection!");
    EXPECT_FALSE(m_shell.SchemaMenu);
    EXPECT_EQ(gConn->State(), ADODB::adStateClosed);
    EXPECT_EQ(LastOpenError(), "who are you?");
    EXPECT_EQ(m_attempts, 1);
}

TEST_F(ConnectionTest, EscapeAndTheCloseBoxCancelTheLogin)
{
    AskForLogin();
    WithDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    EXPECT_FALSE(OpenConnection("Scripted"));
    WithDialog([](QWidget *dialog) { dialog->close(); });
    EXPECT_FALSE(OpenConnection("Scripted"));
    EXPECT_EQ(m_dialogs, 2);
}

TEST_F(ConnectionTest, AnotherErrorAfterALoginEndsTheAsking)
{
    m_driver.OnConnect = [](const QString &, const QString &user, const QString &) {
        if (user.isEmpty())
            throw ADODB::Error(ADODB::adErrLoginFailed, QStringLiteral("who?"));
        throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("the house is full"));
    };
    TypeLogin("me", "secret");
    EXPECT_FALSE(OpenConnection("Scripted"));
    EXPECT_EQ(m_dialogs, 1);
    EXPECT_EQ(LastOpenError(), "the house is full");
}

TEST_F(ConnectionTest, AnExtraConnectionTouchesNothing)
{
    ASSERT_TRUE(OpenConnection("Scripted;main"));
    const auto main = gConn;
    m_shell.Statuses.clear();
    const int menus = m_shell.SchemaMenuCalls;
    AskForLogin();
    TypeLogin("me", "secret");
    const auto extra = OpenExtraConnection("Scripted;extra");
    ASSERT_NE(extra, nullptr);
    EXPECT_EQ(extra->State(), ADODB::adStateOpen);
    EXPECT_EQ(gConn, main);
    EXPECT_TRUE(m_shell.Statuses.isEmpty());
    EXPECT_EQ(m_shell.SchemaMenuCalls, menus);
    WithDialog([](QWidget *dialog) { Click(dialog, "cmdCancel"); });
    EXPECT_EQ(OpenExtraConnection("Scripted;extra"), nullptr);
}

TEST_F(ConnectionTest, AServerThatDoesNotAnswerIsLeftBehindByEscape)
{
    WorkGate gate; // the server that does not answer
    std::atomic<bool> answered = false;
    m_driver.OnConnect = [&](const QString &, const QString &, const QString &) {
        gate.Pass();
        answered = true;
    };
    QWidget window;
    window.show();
    int rounds = 0; // of the event loop while the server is silent
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++rounds < 10 || !m_shell.Statuses.contains("Opening Connection ... (Esc cancels)"))
            return;
        timer.stop();
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    gate.WhenReached([&] { timer.start(0); }, false);
    EXPECT_FALSE(OpenConnection("Scripted"));
    EXPECT_GE(rounds, 10); // the event loop went on
    EXPECT_TRUE(m_shell.Statuses.contains("Opening Connection ... (Esc cancels)"));
    EXPECT_EQ(LastOpenError(), "Operation has been cancelled by the user.");
    EXPECT_EQ(m_dialogs, 0);
    EXPECT_EQ(gConn->State(), ADODB::adStateClosed);
    EXPECT_FALSE(answered);
    gate.Open();
    EXPECT_TRUE(Until([&] { return answered.load(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(gConn->State(), ADODB::adStateClosed); // the late one does not come back
}

TEST_F(ConnectionTest, IsConnectedTellsAndSaysSo)
{
    const auto refused = [&] {
        m_boxes.Boxes.clear();
        EXPECT_FALSE(IsConnected(false));
        EXPECT_TRUE(m_boxes.Boxes.isEmpty());
        m_shell.Hourglass = true;
        EXPECT_FALSE(IsConnected(true));
        EXPECT_FALSE(m_shell.Hourglass);
        ASSERT_EQ(m_boxes.Boxes.size(), 1);
        EXPECT_EQ(m_boxes.LastText(), "No current database connection is active.");
        EXPECT_EQ(m_boxes.LastTitle(), "Conection");
        EXPECT_EQ(m_boxes.Boxes.last().Icon, mbExclamation);
        EXPECT_EQ(m_boxes.Boxes.last().Buttons, mbOKOnly);
    };
    refused(); // empty
    gConn = ADODB::Connection::Create();
    refused(); // without a string
    gConn->SetConnectionString("Scripted");
    refused(); // closed
    ASSERT_TRUE(OpenConnection("Scripted"));
    m_boxes.Boxes.clear();
    EXPECT_TRUE(IsConnected(true));
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(ConnectionTest, TheProviderTestIsAsCoarseAsItIs)
{
    EXPECT_FALSE(IsOracle());
    ASSERT_TRUE(OpenConnection("Scripted;Database=temporary"));
    EXPECT_TRUE(IsOracle());
    ASSERT_TRUE(OpenConnection("Scripted;Database=books"));
    EXPECT_FALSE(IsOracle());
}

TEST_F(ConnectionTest, FieldLists)
{
    OpenSample({"create table t (a int, \"b c\" text, d blob)", "create table [order details] (x int, y int)"});
    EXPECT_EQ(GetFieldList("t", ", "), "a, b c, d");
    EXPECT_EQ(GetFieldList("order details", ""), "xy");
    EXPECT_EQ(GetFieldList("select a from t", ";"), "a"); // a statement goes into round brackets
    EXPECT_EQ(GetFieldList("missing", ","), "");
    gConn.reset();
    EXPECT_EQ(GetFieldList("t", ","), "");
}

TEST_F(ConnectionTest, CreateTableStatements)
{
    OpenSample(
        {"create table t (a int, \"b c\" varchar(30), d decimal(10,2))", "create table [order details] (x text)"});
    const QString made = CreateTableStatement("t");
    const QStringList lines = made.split("\r\n");
    ASSERT_EQ(lines.size(), 4) << qPrintable(made);
    EXPECT_EQ(lines[0], "CREATE TABLE t (");
    EXPECT_TRUE(lines[1].startsWith("\ta ")) << qPrintable(made);
    EXPECT_TRUE(lines[2].startsWith("\t[b c] ")) << qPrintable(made);
    EXPECT_TRUE(lines[2].endsWith("(30),")) << qPrintable(made);
    EXPECT_TRUE(lines[3].endsWith("(10,2))")) << qPrintable(made);
    EXPECT_TRUE(CreateTableStatement("order details").startsWith("CREATE TABLE order details (\r\n\tx "));
    EXPECT_EQ(CreateTableStatement("missing"), "");
    gConn.reset();
    EXPECT_EQ(CreateTableStatement("t"), "");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

} // namespace
