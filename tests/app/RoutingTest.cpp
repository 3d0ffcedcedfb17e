// Side bar and command bar, clicked for real, and the commands on stored connections.
#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/ToolbarTable.h"
#include "controls/CommandBar.h"
#include "controls/StatusBar.h"
#include "data/frmNewConnection.h"
#include "data/frmTextOutput.h"
#include "tests/app/ShellFixture.h"
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace {

class Routing : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(QStringLiteral("Driver=x;PWD={a\\b}"), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    void ClickTool(const char *key)
    {
        ExplorerBarItem *item = Window->eb->Bar(QStringLiteral("TB"))->Items().Item(QString::fromLatin1(key));
        QTest::mouseClick(Window->eb->viewport(), Qt::LeftButton, {}, Window->eb->ItemRect(item).center());
    }
    frmTextOutput *Output()
    {
        for (ChildWindow *child : Window->Children())
            if (auto *output = qobject_cast<frmTextOutput *>(child))
                return output;
        return nullptr;
    }
    // Types into the New Connection dialogs that come up, one after another; the last one is cancelled.
    void AnswerNewConnection(QList<QPair<QString, QString>> answers)
    {
        m_answers = std::move(answers);
        m_timer.setInterval(0);
        QObject::connect(&m_timer, &QTimer::timeout, Window.get(), [this] {
            auto *dialog = qobject_cast<frmNewConnection *>(QApplication::activeModalWidget());
            if (!dialog || dialog == m_last)
                return;
            m_last = dialog;
            Shown << qMakePair(dialog->txtName->text(), dialog->txtCS->text());
            Selected << dialog->txtName->selectedText();
            if (m_answers.isEmpty()) {
                m_timer.stop();
                dialog->reject();
                return;
            }
            const auto [name, text] = m_answers.takeFirst();
            dialog->txtName->setText(name);
            dialog->txtCS->setText(text);
            EXPECT_TRUE(dialog->cmdOK->isEnabled());
            QTest::mouseClick(dialog->cmdOK, Qt::LeftButton);
            m_last = nullptr; // the next dialog may stand at the same address
        });
        m_timer.start();
    }
    QList<QPair<QString, QString>> Shown;
    QStringList Selected;

private:
    QList<QPair<QString, QString>> m_answers;
    QTimer m_timer;
    frmNewConnection *m_last = nullptr;
};

TEST_F(Routing, TheToolBarEntriesReachTheActiveChild)
{
    FakeChild *child = Child(QStringLiteral("frmSQL"));
    Log.clear();
    ClickTool("OPEN");
    ClickTool("SAVE");
    EXPECT_EQ(child->StatusSeen, QStringLiteral("Saving..."));
    EXPECT_NE(Window->SB->PanelText(1), QStringLiteral("Saving...")); // it goes when the save is done
    for (const char *key : {"PRINT", "FIND"})
        ClickTool(key);
    EXPECT_EQ(Log, QStringList({"frmSQL mnuOpen", "frmSQL mnuSave", "frmSQL mnuPrint", "frmSQL mnuFind"}));
}

TEST_F(Routing, SaveWithoutAChildDoesNothing)
{
    ClickTool("SAVE");
    EXPECT_EQ(Window->SB->PanelText(1), QString()); // nothing that would stay there for good
    EXPECT_TRUE(Log.isEmpty());
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
    EXPECT_TRUE(Dialogs.FileDialogs.isEmpty());
}

TEST_F(Routing, TheMainToolbarHasAButtonForEachEntryAndTheSameRoutes)
{
    EXPECT_EQ(Window->cb->ButtonKeys(QStringLiteral("MainTB")),
              QStringList({"MTBCONN", "MTBRUN", "MTBOPEN", "MTBSAVE", "MTBPRINT", "MTBFIND", "Seporator", "MTBHELP"}));
    EXPECT_EQ(Window->cb->ToolTip(QStringLiteral("MTBFIND")), QStringLiteral("Search"));
    Child(QStringLiteral("frmSQL"));
    Log.clear();
    for (const char *key : {"MTBOPEN", "MTBSAVE", "MTBPRINT", "MTBFIND"})
        QTest::mouseClick(Window->cb->childAt(Window->cb->ButtonRect(QString::fromLatin1(key)).center()),
                          Qt::LeftButton);
    EXPECT_EQ(Log, QStringList({"frmSQL mnuOpen", "frmSQL mnuSave", "frmSQL mnuPrint", "frmSQL mnuFind"}));
    Window->cb->Press(QStringLiteral("MTBRUN")); // no connection is open
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Conection"));
}

TEST_F(Routing, TheSqlToolbarLivesWithItsWindows)
{
    EXPECT_FALSE(Window->cb->HasToolbar(QStringLiteral("SQL")));
    FakeChild *analyzer = Child(QStringLiteral("frmSQL"));
    ASSERT_TRUE(Window->cb->HasToolbar(QStringLiteral("SQL")));
    QStringList keys;
    for (const char *key : FindToolbar("SQL")->Buttons)
        keys << QString::fromLatin1(key);
    EXPECT_EQ(Window->cb->ButtonKeys(QStringLiteral("SQL")), keys);
    for (const char *key : FindToolbar("SQL")->Buttons)
        if (const CommandRow *row = FindButton(key)) {
            EXPECT_EQ(Window->cb->Enabled(QString::fromLatin1(key)), !row->IsLater) << key;
        }
    EXPECT_EQ(Window->cb->Kind(QStringLiteral("SQLMulti")), cbrCheck);
    EXPECT_EQ(Window->cb->Kind(QStringLiteral("SQLSplit")), cbrCheck);
    Log.clear();
    Window->cb->Press(QStringLiteral("SQLRun"));
    Window->cb->Press(QStringLiteral("SQLWiz"));
    EXPECT_EQ(Log, QStringList({"frmSQL ToolBar SQLRun", "frmSQL ToolBar SQLWiz"}));
    Child(QStringLiteral("frmGrid"));
    EXPECT_FALSE(Window->cb->Enabled(QStringLiteral("SQLRun")));
    analyzer->ShowChild();
    EXPECT_TRUE(Window->cb->Enabled(QStringLiteral("SQLRun")));
    Child(QStringLiteral("frmSQL")); // a second one does not build it twice
    EXPECT_EQ(Window->cb->ButtonKeys(QStringLiteral("SQL")), keys);
}

// The buttons are there, and none of them is a dead click.
TEST_F(Routing, TheDiagramToolbarIsThereAndLeadsToItsWindow)
{
    EXPECT_FALSE(Window->cb->HasToolbar(QStringLiteral("DTB")));
    Child(QStringLiteral("frmDiagram"));
    ASSERT_TRUE(Window->cb->HasToolbar(QStringLiteral("DTB")));
    EXPECT_FALSE(Window->cb->HasToolbar(QStringLiteral("SQL")));
    QStringList keys;
    for (const char *key : FindToolbar("DTB")->Buttons) {
        keys << QString::fromLatin1(key);
        const CommandRow *row = FindButton(key);
        if (!row)
            continue;
        EXPECT_EQ(Window->cb->Enabled(keys.last()), !row->IsLater) << key;
        EXPECT_EQ(Window->cb->ToolTip(keys.last()), QString::fromLatin1(row->Tip));
        Log.clear();
        Window->cb->Press(keys.last());
        EXPECT_EQ(Log.size(), row->IsLater ? 0 : 1) << key;
    }
    EXPECT_EQ(Window->cb->ButtonKeys(QStringLiteral("DTB")), keys);
    EXPECT_EQ(Window->cb->Kind(QStringLiteral("DTBB&W")), cbrCheck);
}

// The window reads from the button whether it is gray, so the item has to turn the button first.
TEST_F(Routing, AnItemThatHoldsAStateTurnsItsButton)
{
    Child(QStringLiteral("frmDiagram"));
    const QString button = QStringLiteral("DTBB&W");
    QAction *item = Window->menus->Item(QStringLiteral("mnuDiagramGray"));
    for (const bool on : {true, false}) {
        Log.clear();
        item->trigger();
        EXPECT_EQ(Window->cb->Checked(button), on);
        EXPECT_EQ(item->isChecked(), on);
        EXPECT_EQ(Log.size(), 1);
    }
    Window->cb->Press(button);
    Window->RefreshMenus();
    EXPECT_TRUE(item->isChecked()) << "the item shows what the button holds";
}

TEST_F(Routing, EntriesThatAWindowAddedGoBackToIt)
{
    Child(QStringLiteral("frmSQL"));
    ExplorerBarItem *item = Window->eb->AddBar(QStringLiteral("DYNA"), QStringLiteral("History Bar"))
                                ->Items()
                                .Add(QStringLiteral("SAVE"), QStringLiteral("orders"));
    Log.clear();
    Window->SideBarClick(item); // a key of the fixed entries, but in another bar
    EXPECT_EQ(Log, QStringList("frmSQL Dyna SAVE/orders"));
}

TEST_F(Routing, NewConnectionAddsAnEntryAndOpensNothing)
{
    AnswerNewConnection({{QStringLiteral("Neu"), QStringLiteral("DSN=z")}});
    ClickTool("CONN");
    ASSERT_EQ(Shown.size(), 1);
    EXPECT_EQ(Shown[0], qMakePair(QString(), QString()));
    ASSERT_TRUE(gConns().Item(QStringLiteral("neu")));
    EXPECT_EQ(gConns().Item(QStringLiteral("neu"))->ConnectionString, QStringLiteral("DSN=z"));
    EXPECT_EQ(gConns().Item(QStringLiteral("neu"))->Extra, QString());
    ASSERT_TRUE(Entry(QStringLiteral("Neu")));
    EXPECT_EQ(Entry(QStringLiteral("Neu"))->Icon(), 7);
    EXPECT_EQ(Entry(QStringLiteral("Neu"))->Tag(), QStringLiteral("CONN"));
    EXPECT_NE(Entry(QStringLiteral("Neu"))->Key(), Entry(QStringLiteral("a"))->Key());
    EXPECT_FALSE(gConn);
    EXPECT_FALSE(QFile::exists(AppFile(QStringLiteral("es.dat")))); // written only at the end
    EXPECT_EQ(Window->SB->PanelText(1), QString());
}

TEST_F(Routing, ANameInUseIsRefusedWhateverItsCase)
{
    AnswerNewConnection({{QStringLiteral("A"), QStringLiteral("DSN=z")}});
    Window->Command("mnuConn");
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Connection Name"));
    EXPECT_EQ(Dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(Dialogs.Boxes[0].Text,
              QStringLiteral("This name is aready in use. Please enter another connection name."));
    ASSERT_EQ(Shown.size(), 2);
    EXPECT_EQ(Shown[1], qMakePair(QStringLiteral("A"), QStringLiteral("DSN=z"))); // what was typed comes again
    EXPECT_EQ(Selected[1], QStringLiteral("A"));
    EXPECT_EQ(gConns().Count(), 1);
    EXPECT_FALSE(Entry(QStringLiteral("A")));
}

TEST_F(Routing, ViewShowsTheStringInClear)
{
    Window->Command("mnuViewCS"); // for no connection: nothing happens
    EXPECT_FALSE(Output());
    Window->menus->SetTag(QStringLiteral("mnuViewCS"), QStringLiteral("a"));
    Window->Command("mnuViewCS");
    ASSERT_TRUE(Output());
    EXPECT_EQ(Output()->PlainText().trimmed(), QStringLiteral("Driver=x;PWD={a\\b}"));
    EXPECT_TRUE(Output()->isVisible());
}

TEST_F(Routing, DeleteLeavesTheOpenConnectionAlone)
{
    gConns().Add(Database(), QStringLiteral("b"), QString());
    Window.reset();
    Start(QStringLiteral("TestMode"), true);
    gConns().Item(QStringLiteral("b"));
    ASSERT_FALSE(Entry(QStringLiteral("b")) == nullptr);
    Window->ConnectTo(Entry(QStringLiteral("b")));
    const ADODB::ConnectionPtr open = gConn;
    Window->menus->SetTag(QStringLiteral("mnuDeleteConn"), Entry(QStringLiteral("b"))->Key());
    Window->Command("mnuDeleteConn");
    EXPECT_FALSE(Entry(QStringLiteral("b")));
    EXPECT_FALSE(gConns().Item(QStringLiteral("b")));
    EXPECT_EQ(gConn, open);
    EXPECT_TRUE(IsConnected(false));
    Window->menus->SetTag(QStringLiteral("mnuDeleteConn"), QStringLiteral("C:999"));
    Window->Command("mnuDeleteConn"); // unknown: nothing happens
    EXPECT_TRUE(Entry(QStringLiteral("a")));
}

} // namespace
