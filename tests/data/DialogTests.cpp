#include "data/frmAni.h"
#include "data/frmConnectionString.h"
#include "data/frmFind.h"
#include "data/frmGetSelection.h"
#include "data/frmLogin.h"
#include "data/frmNewConnection.h"
#include "frame/ModalForm.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace {

class DialogTest : public DataTest
{
protected:
    // Every text of a window fits into its control, and every control that takes the focus has a name.
    static void ExpectTidy(QWidget *window)
    {
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
        for (QPushButton *button : window->findChildren<QPushButton *>()) {
            EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text();
            EXPECT_GE(button->height(), button->minimumSizeHint().height()) << button->text();
            EXPECT_FALSE(button->text().isEmpty() && button->accessibleName().isEmpty());
        }
        for (QLabel *label : window->findChildren<QLabel *>()) {
            const bool measured = !label->text().isEmpty() && !label->wordWrap();
            EXPECT_TRUE(!measured || label->width() >= label->sizeHint().width()) << label->text();
        }
        for (QLineEdit *line : window->findChildren<QLineEdit *>()) {
            const bool ownName = !qobject_cast<QComboBox *>(line->parentWidget());
            EXPECT_TRUE(!ownName || !line->accessibleName().isEmpty()) << line->objectName();
        }
        EXPECT_TRUE(window->rect().contains(window->childrenRect()));
    }
};

TEST_F(DialogTest, EveryDialogIsTidy)
{
    frmNewConnection connection;
    ExpectTidy(&connection);
    frmLogin login;
    ExpectTidy(&login);
    frmGetSelection selection;
    selection.SetTitle("Tables");
    ExpectTidy(&selection);
    frmConnectionString text;
    ExpectTidy(&text);
    frmFind find;
    ExpectTidy(&find);
    frmAni ani;
    ExpectTidy(&ani);
}

TEST_F(DialogTest, NewConnectionTakesBothBoxes)
{
    frmNewConnection form;
    EXPECT_EQ(form.windowTitle(), "New Connection");
    EXPECT_EQ(form.cmdCancel->text(), "Cancel");
    EXPECT_EQ(form.cmdOK->text(), "OK");
    EXPECT_EQ(form.cmdGetCS->text(), "...");
    QStringList labels;
    for (const QLabel *label : form.findChildren<QLabel *>())
        labels << label->text();
    EXPECT_EQ(labels, (QStringList{"Connection Name", "Connection String"}));
    EXPECT_FALSE(form.cmdOK->isEnabled());
    WithDialog([&](QWidget *) {
        QTest::keyClicks(form.txtName, " x ");
        EXPECT_FALSE(form.cmdOK->isEnabled());
        QTest::keyClicks(form.txtCS, "   ");
        EXPECT_FALSE(form.cmdOK->isEnabled());
        QTest::keyClick(form.txtCS, Qt::Key_Return); // nothing to confirm yet
        EXPECT_TRUE(form.isVisible());
        QTest::keyClicks(form.txtCS, "DSN=x");
        EXPECT_TRUE(form.cmdOK->isEnabled());
        QTest::keyClick(form.txtCS, Qt::Key_Return);
    });
    form.ShowModal();
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(form.ConnName, " x ");
    EXPECT_EQ(form.ConnString, "   DSN=x");
}

TEST_F(DialogTest, EscapeCloseBoxAndCancelLeaveTheFields)
{
    for (int way = 0; way < 3; ++way) {
        frmNewConnection form;
        form.txtName->setText("a");
        form.txtCS->setText("b");
        WithDialog([&](QWidget *dialog) {
            if (way == 0)
                QTest::keyClick(dialog, Qt::Key_Escape);
            else if (way == 1)
                dialog->close();
            else
                Click(dialog, "cmdCancel");
        });
        form.ShowModal();
        EXPECT_TRUE(form.Cancelled);
        EXPECT_EQ(form.ConnName, "");
    }
}

TEST_F(DialogTest, TheTabKeyWalksThroughTheBoxes)
{
    frmNewConnection form;
    WithDialog([&](QWidget *dialog) {
        form.cmdOK->setEnabled(true);
        QStringList order;
        for (int i = 0; i < 5; ++i) {
            order << form.focusWidget()->objectName();
            QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(order, (QStringList{"txtName", "txtCS", "cmdGetCS", "cmdOK", "cmdCancel"}));
        dialog->close();
    });
    form.ShowModal();
}

TEST_F(DialogTest, ThePromptFillsTheConnectionString)
{
    frmNewConnection form;
    form.txtCS->setText("kept");
    WithDialog([&](QWidget *outer) {
        WithDialog([](QWidget *inner) {
            ASSERT_NE(qobject_cast<frmConnectionString *>(inner), nullptr);
            QTest::keyClick(inner, Qt::Key_Escape);
        });
        Click(outer, "cmdGetCS");
        EXPECT_EQ(form.txtCS->text(), "kept"); // cancelled
        WithDialog([](QWidget *inner) {
            auto *prompt = qobject_cast<frmConnectionString *>(inner);
            QTest::keyClicks(prompt->txtDatabase, "/tmp/x.db");
            Click(inner, "cmdOK");
        });
        Click(outer, "cmdGetCS");
        EXPECT_EQ(form.txtCS->text(), "Driver=SQLite;Database=/tmp/x.db");
        outer->close();
    });
    form.ShowModal();
    EXPECT_EQ(m_shell.Status(), "Get Connection String");
    EXPECT_EQ(m_dialogs, 3);
}

TEST_F(DialogTest, ConnectionPartsMakeStrings)
{
    ConnectionParts parts;
    parts.name = "SQLite";
    EXPECT_EQ(parts.ToString(), "Driver=SQLite");
    parts.database = "/a;b/x.db";
    EXPECT_EQ(parts.ToString(), "Driver=SQLite;Database={/a;b/x.db}");
    parts.kind = ConnectionParts::Kind::Driver;
    parts.name = "PostgreSQL Unicode";
    parts.server = "127.0.0.1";
    parts.port = "5432";
    parts.database = "d";
    parts.user = "me";
    parts.password = "p;w}d";
    parts.further = "UseDeclareFetch=1;Fetch=5000";
    EXPECT_EQ(parts.ToString(), "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=5432;Database=d;UID=me;PWD={p;w}}d};"
                                "UseDeclareFetch=1;Fetch=5000");
    // PostgreSQL's driver decodes a password with these signs, unless it stands in braces.
    parts.further.clear();
    for (const char *password : {"a%2Bb", "+", "100%"}) {
        parts.password = password;
        EXPECT_TRUE(parts.ToString().endsWith(QString(";UID=me;PWD={%1}").arg(password))) << parts.ToString();
    }
    parts = ConnectionParts();
    parts.kind = ConnectionParts::Kind::Driver;
    parts.name = "/opt/driver.so";
    EXPECT_EQ(parts.ToString(), "Driver=/opt/driver.so");
    parts.kind = ConnectionParts::Kind::Dsn;
    parts.name = "books";
    EXPECT_EQ(parts.ToString(), "DSN=books");
}

TEST_F(DialogTest, TheFileChooserAndTheTest)
{
    frmConnectionString form;
    EXPECT_EQ(form.txtResult->toPlainText(), "Driver=SQLite");
    EXPECT_FALSE(form.txtServer->isEnabled()); // a file has no server
    EXPECT_EQ(form.txtPassword->echoMode(), QLineEdit::Password);
    m_boxes.Files << Path("test.db");
    WithDialog([&](QWidget *dialog) {
        Click(dialog, "cmdFile");
        EXPECT_EQ(form.txtResult->toPlainText(), "Driver=SQLite;Database=" + Path("test.db"));
        Click(dialog, "cmdTest");
        EXPECT_TRUE(Until([&] { return form.lblTest->text().startsWith("The connection works."); }))
            << form.lblTest->text();
        form.txtResult->setPlainText("Driver=SQLite;Database=/no/such/folder/x.db");
        Click(dialog, "cmdTest");
        EXPECT_FALSE(form.lblTest->text().startsWith("The connection works."));
        EXPECT_FALSE(form.lblTest->text().isEmpty());
        form.txtResult->setPlainText("Driver={No Such Driver}");
        Click(dialog, "cmdTest");
        EXPECT_TRUE(form.lblTest->text().contains("No Such Driver")) << form.lblTest->text();
        form.txtResult->setPlainText(" DSN=edited\n;UID=x ");
        Click(dialog, "cmdOK");
    });
    form.ShowModal();
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(form.ConnectionString, "DSN=edited;UID=x");
    EXPECT_EQ(gConn, nullptr);
}

TEST_F(DialogTest, TheTestAsksBeforeItMakesAFile)
{
    const QString path = Path("mistyped.db");
    frmConnectionString form;
    WithDialog([&](QWidget *dialog) {
        form.txtResult->setPlainText("Driver=SQLite;Database=" + path);
        m_boxes.Answers << mbNo;
        Click(dialog, "cmdTest");
        ASSERT_EQ(m_boxes.Boxes.size(), 1);
        EXPECT_EQ(m_boxes.Boxes[0].Buttons, mbYesNo);
        EXPECT_TRUE(m_boxes.Boxes[0].Text.contains(path)) << m_boxes.Boxes[0].Text;
        EXPECT_TRUE(form.lblTest->text().contains("does not exist")) << form.lblTest->text();
        EXPECT_FALSE(QFile::exists(path));
        m_boxes.Answers << mbYes;
        Click(dialog, "cmdTest");
        EXPECT_TRUE(form.lblTest->text().startsWith("The connection works.")) << form.lblTest->text();
        EXPECT_TRUE(QFile::exists(path));
        Click(dialog, "cmdOK");
    });
    form.ShowModal();
    EXPECT_EQ(form.ConnectionString, "Driver=SQLite;Database=" + path);
}

TEST_F(DialogTest, OpeningItselfAsksNothing)
{
    const QString text = "Driver=SQLite;Database=" + Path("mistyped.db");
    EXPECT_FALSE(OpenConnection(text));
    EXPECT_EQ(LastOpenErrorNumber(), ADODB::adErrFileNotFound);
    EXPECT_EQ(OpenExtraConnection(text), nullptr);
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
    EXPECT_FALSE(QFile::exists(Path("mistyped.db")));
    ASSERT_TRUE(OpenConnection(text + ";Create=Yes"));
    EXPECT_EQ(LastOpenErrorNumber(), 0);
}

TEST_F(DialogTest, TheTestDoesNotFreezeAndEscapeEndsItAlone)
{
    ScriptedDriver driver;
    WorkGate gate; // the server that does not answer
    std::atomic<bool> answered = false;
    driver.OnConnect = [&](const QString &, const QString &, const QString &) {
        gate.Pass();
        answered = true;
    };
    frmConnectionString form;
    WithDialog([&](QWidget *) {
        form.txtResult->setPlainText("Scripted");
        int rounds = 0; // of the event loop while the server is silent
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (++rounds < 10)
                return;
            timer.stop();
            EXPECT_EQ(form.lblTest->text(), "Testing... (Esc cancels)");
            QTest::keyClick(&form, Qt::Key_Escape);
        });
        gate.WhenReached([&] { timer.start(0); }, false);
        Click(&form, "cmdTest");
        EXPECT_EQ(rounds, 10);
        EXPECT_EQ(form.lblTest->text(), "The test was given up.");
        EXPECT_TRUE(form.isVisible());
        EXPECT_FALSE(answered);
        gate.Open();
        EXPECT_TRUE(Until([&] { return answered.load(); }));
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    form.ShowModal();
    EXPECT_TRUE(form.Cancelled);
}

TEST_F(DialogTest, DriversOfTheDriverManagerAreListed)
{
    frmConnectionString form;
    EXPECT_EQ(form.cmbSource->itemText(0), "SQLite (built in)");
    EXPECT_EQ(form.cmbSource->findText("Driver: SQLite"), -1); // the name is the built-in one's
    const int postgres = form.cmbSource->findText("Driver: PostgreSQL Unicode");
    if (postgres < 0) {
        ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << "the drivers were promised";
        GTEST_SKIP() << "the driver is not installed here";
    }
    form.cmbSource->setCurrentIndex(postgres);
    EXPECT_TRUE(form.txtServer->isEnabled());
    EXPECT_FALSE(form.cmdFile->isEnabled());
    QTest::keyClicks(form.txtServer, "localhost");
    QTest::keyClicks(form.txtUser, "me");
    EXPECT_EQ(form.txtResult->toPlainText(), "Driver={PostgreSQL Unicode};Server=localhost;UID=me");
}

TEST_F(DialogTest, TheWaitingWindow)
{
    frmAni ani;
    EXPECT_EQ(ani.windowTitle(), "Status");
    EXPECT_TRUE(ani.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(ani.findChild<QLabel *>("lblText")->text(),
              "Please wait while Brindlewick attempts to connect to the database...");
    ani.SetCaption("Connecting...");
    ani.show();
    EXPECT_EQ(ani.windowTitle(), "Connecting...");
    EXPECT_FALSE(ani.isModal());
}

} // namespace
