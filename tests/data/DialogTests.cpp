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

class FindTest : public DialogTest
{
protected:
    // Opens the dialog, lets `act` end it, gives what came out.
    template <class Act> std::unique_ptr<frmFind> Ask(Act act, bool replace = true)
    {
        auto form = std::make_unique<frmFind>();
        form->EnableReplace(replace);
        WithDialog([&, act](QWidget *) { act(*form); });
        form->ShowModal();
        return form;
    }
    static void Type(QComboBox *combo, const QString &text)
    {
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo->lineEdit(), text);
    }
};

TEST_F(FindTest, TheWindowAsItStands)
{
    frmFind form;
    EXPECT_EQ(form.windowTitle(), "Find");
    QStringList texts;
    for (const QLabel *label : form.findChildren<QLabel *>())
        texts << label->text();
    EXPECT_EQ(texts, (QStringList{"Find What:", "Replace With:", "Option"}));
    EXPECT_EQ(form.chkCase->text(), "Case Sensitive");
    EXPECT_EQ(form.chkExact->text(), "Exact Match");
    EXPECT_EQ(form.cmdFind->text(), "Find &Next");
    EXPECT_EQ(form.cmdReplace->text(), "&Replace");
    EXPECT_EQ(form.cmdReplaceAll->text(), "Replace &All");
    EXPECT_EQ(form.cmdCancel->text(), "&Cancel");
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.cmdReplace->isEnabled() || form.cmdReplaceAll->isEnabled() || form.cmbReplace->isEnabled());
    EXPECT_FALSE(form.chkCase->isChecked() || form.chkExact->isChecked());
}

TEST_F(FindTest, FindNextByReturn)
{
    const auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "abc");
        Type(find.cmbReplace, "not taken");
        QTest::mouseClick(find.chkCase, Qt::LeftButton, {}, QPoint(8, find.chkCase->height() / 2));
        QTest::keyClick(find.cmbCri->lineEdit(), Qt::Key_Return);
    });
    EXPECT_FALSE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "abc");
    EXPECT_TRUE(form->CaseSensitive);
    EXPECT_FALSE(form->ExactMatch);
    EXPECT_EQ(form->ReplaceWith, "");
    EXPECT_FALSE(form->DoReplace || form->DoReplaceAll);
    EXPECT_EQ(GetSetting("0FindList"), "abc");
    EXPECT_EQ(GetSetting("SearchCase"), "1");
    EXPECT_EQ(GetSetting("SearchExact"), "0");
    EXPECT_EQ(GetSetting("0ReplaceList", "none"), "none");
}

TEST_F(FindTest, ReplaceAndReplaceAll)
{
    auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "a");
        Type(find.cmbReplace, "b");
        Click(&find, "cmdReplace");
    });
    EXPECT_TRUE(!form->Cancelled && form->DoReplace && !form->DoReplaceAll);
    EXPECT_EQ(form->ReplaceWith, "b");
    EXPECT_EQ(GetSetting("0ReplaceList"), "b");
    form = Ask([](frmFind &find) {
        EXPECT_EQ(find.cmbReplace->currentText(), ""); // the text must be given again; the list offers it
        EXPECT_EQ(find.cmbReplace->itemText(0), "b");
        Type(find.cmbReplace, "c");
        Click(&find, "cmdReplaceAll");
    });
    EXPECT_TRUE(!form->DoReplace && form->DoReplaceAll);
    EXPECT_EQ(form->ReplaceWith, "c");
    EXPECT_EQ(form->Criteria, "a"); // the last one is offered
    EXPECT_EQ(GetSetting("0ReplaceList"), "c");
    EXPECT_EQ(GetSetting("1ReplaceList"), "b");
}

TEST_F(FindTest, CancelKeepsEverything)
{
    SaveSetting("0FindList", "old");
    const auto form = Ask([](frmFind &find) {
        EXPECT_EQ(find.cmbCri->currentText(), "old");
        Type(find.cmbCri, "new");
        QTest::keyClick(&find, Qt::Key_Escape);
    });
    EXPECT_TRUE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "");
    EXPECT_EQ(GetSetting("0FindList"), "old");
}

TEST_F(FindTest, ElevenEntriesAreKeptAndOneIsOffered)
{
    const auto form = Ask([](frmFind &find) {
        for (int i = 0; i < 12; ++i)
            find.cmbCri->addItem(QStringLiteral("e%1").arg(i));
        Type(find.cmbCri, "last");
        Click(&find, "cmdFind");
    });
    EXPECT_EQ(form->cmbCri->count(), 13);
    EXPECT_EQ(GetSetting("0FindList"), "last");
    EXPECT_EQ(GetSetting("10FindList"), "e9");
    EXPECT_EQ(GetSetting("11FindList", "none"), "none");
    frmFind again;
    EXPECT_EQ(again.cmbCri->count(), 1);
    EXPECT_EQ(again.cmbCri->currentText(), "last");
}

TEST_F(FindTest, TheSameCriteriaTwiceIsOneEntry)
{
    for (int i = 0; i < 2; ++i)
        Ask([](frmFind &find) {
            Type(find.cmbCri, "same");
            Click(&find, "cmdFind");
            EXPECT_EQ(find.cmbCri->count(), 1);
        });
    EXPECT_EQ(GetSetting("1FindList", "none"), "none");
}

TEST_F(FindTest, TypedTextIsNotCompletedFromTheList)
{
    SaveSetting("0FindList", "SELECTED");
    const auto form = Ask([](frmFind &find) {
        Type(find.cmbCri, "sel");
        Click(&find, "cmdFind");
    });
    EXPECT_EQ(form->Criteria, "sel");
}

TEST_F(FindTest, ACriteriaGivenByTheWindow)
{
    frmFind form;
    form.SetCriteria("selected text");
    EXPECT_EQ(form.cmbCri->currentText(), "selected text");
    form.EnableReplace(true);
    form.cmbReplace->setEditText("x");
    form.EnableReplace(false);
    EXPECT_EQ(form.cmbReplace->currentText(), "");
}

TEST_F(FindTest, ThePlaceIsKeptInTwips)
{
    const auto place = [](frmFind &find, int x, int y) { find.setGeometry(QRect(QPoint(x, y), find.size())); };
    Ask([&](frmFind &find) {
        place(find, 40, 60);
        Click(&find, "cmdFind");
    });
    for (int i = 0; i < 3; ++i) { // a frame of the desktop does not make it wander
        EXPECT_EQ(GetSetting("FindLocX"), "600");
        EXPECT_EQ(GetSetting("FindLocY"), "900");
        Ask([](frmFind &find) {
            EXPECT_EQ(find.geometry().topLeft(), QPoint(40, 60));
            Click(&find, "cmdFind");
        });
    }
    Ask([&](frmFind &find) {
        place(find, 50, 70);
        QTest::keyClick(&find, Qt::Key_Escape); // by whatever way it goes
    });
    EXPECT_EQ(GetSetting("FindLocX"), "750");
}

TEST_F(FindTest, APlaceBelowOneIsTheMiddleOfTheScreen)
{
    SaveSetting("FindLocX", "0");
    SaveSetting("FindLocY", "900");
    Ask([](frmFind &find) {
        const QRect screen = find.screen()->geometry();
        EXPECT_NEAR(find.x(), (screen.width() - find.width()) / 2, 1);
        EXPECT_NEAR(find.y(), (screen.height() - find.height()) / 2, 1);
        find.close();
    });
}

TEST_F(FindTest, APlaceOnNoScreenIsTheMiddleOfTheScreen)
{
    SaveSetting("FindLocX", "300000");
    SaveSetting("FindLocY", "300000");
    Ask([](frmFind &find) {
        EXPECT_TRUE(find.screen()->geometry().contains(find.geometry()));
        find.close();
    });
}

TEST_F(FindTest, AnyTextIsOfferedAgainAsItWas)
{
    for (const QString &text :
         {QStringLiteral(" a b "), QStringLiteral("a,b;c"), QStringLiteral("%1 100%"), QStringLiteral("\"q\" 'q' \\"),
          QStringLiteral("a\r\n\tb"), QStringLiteral("\u4F60 \U0001F600"), QStringLiteral("@Invalid()")}) {
        const auto form = Ask([&](frmFind &find) {
            find.cmbCri->setEditText(text);
            Click(&find, "cmdFind");
        });
        EXPECT_EQ(form->Criteria, text);
        frmFind again;
        EXPECT_EQ(again.cmbCri->currentText(), text);
    }
}

TEST_F(FindTest, AnEmptyCriteriaIsTakenAndNotOffered)
{
    const auto form = Ask([](frmFind &find) { Click(&find, "cmdFind"); });
    EXPECT_FALSE(form->Cancelled);
    EXPECT_EQ(form->Criteria, "");
    frmFind again;
    EXPECT_EQ(again.cmbCri->count(), 0);
}

TEST_F(FindTest, TheWindowItBelongsToMayGo)
{
    auto *owner = new QWidget;
    owner->show();
    frmFind form(owner);
    WithDialog([&](QWidget *) { delete owner; });
    form.ShowModal();
    EXPECT_TRUE(form.Cancelled);
    EXPECT_FALSE(form.isVisible());
}

} // namespace
