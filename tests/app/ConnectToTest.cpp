// Connecting by an entry of the side bar, against real SQLite files.
#include "app/Menus.h"
#include "controls/StatusBar.h"
#include "data/frmAni.h"
#include "tests/app/ShellFixture.h"
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>

namespace {

class ConnectTo : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(QStringLiteral("a.sqlite")), QStringLiteral("a"), QStringLiteral("select 1"));
        gConns().Add(Database(QStringLiteral("b.sqlite")), QStringLiteral("b"), QString());
        gConns().Add(QStringLiteral("Driver=SQLite;Database=") + NoDatabase(), QStringLiteral("broken"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    QString NoDatabase()
    {
        const QString path = Folder.filePath(QStringLiteral("text.txt"));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(QByteArray("This is a text and no database at all. ").repeated(100));
        return path;
    }
    QList<int> Icons()
    {
        QList<int> icons;
        ExplorerBarItems &items = Window->eb->Bar(QStringLiteral("CONN"))->Items();
        for (int i = 1; i <= items.Count(); ++i)
            icons << items.Item(i)->Icon();
        return icons;
    }
    bool SchemaMenus() { return Window->menus->Item(QStringLiteral("mnuSQL"))->isEnabled(); }
};

TEST_F(ConnectTo, OpensMarksTheEntryAndMakesAnAnalyzer)
{
    EXPECT_EQ(Icons(), QList<int>({7, 7, 7}));
    ChildWindow *window = Window->ConnectTo(Entry(QStringLiteral("a")));
    ASSERT_TRUE(window);
    EXPECT_EQ(window, Analyzer);
    EXPECT_EQ(Analyzer->ConnName, QStringLiteral("a"));
    EXPECT_EQ(Analyzer->Body, QString()); // no text was given
    EXPECT_EQ(Analyzer->Caption(), QStringLiteral("SQL Analyzer: [a]"));
    EXPECT_TRUE(Analyzer->isVisible());
    EXPECT_EQ(Window->ActiveChild(), Analyzer);
    EXPECT_EQ(Icons(), QList<int>({1, 7, 7}));
    EXPECT_TRUE(IsConnected(false));
    EXPECT_TRUE(SchemaMenus());
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Done."));
    EXPECT_NE(Window->cursor().shape(), Qt::WaitCursor);
    EXPECT_EQ(Window->menus->Tag(QStringLiteral("mnuViewCS")), QStringLiteral("a"));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(ConnectTo, TheChosenEntryShowsConnectingMeanwhile)
{
    QList<QList<int>> seen;
    MadeInstead()[QStringLiteral("frmSQL")] = [&]() -> ChildWindow * {
        seen << Icons();
        return nullptr;
    };
    QTimer::singleShot(0, Window.get(), [&] { seen << Icons(); }); // runs inside the events that it lets through
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("b"))));
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0], QList<int>({7, 6, 7}));
    EXPECT_EQ(seen[1], QList<int>({7, 1, 7}));
}

TEST_F(ConnectTo, TextGoesIntoANewAnalyzer)
{
    ASSERT_TRUE(Window->ConnectTo(Entry(QStringLiteral("a")), QStringLiteral("select 2")));
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 2"));
    EXPECT_EQ(Analyzer->Caption(), QStringLiteral("SQL Analyzer: [a]"));
}

TEST_F(ConnectTo, TextIsDroppedWhereAnAnalyzerIsOpen)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    Analyzer->Body = QStringLiteral("mine");
    const QPointer<FakeChild> former = Analyzer;
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("b")), QStringLiteral("select 2")));
    EXPECT_EQ(former, Analyzer);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("mine"));
    EXPECT_EQ(Icons(), QList<int>({7, 1, 7}));
}

TEST_F(ConnectTo, WindowsThatFollowTheConnectionAreToldInTheirOrder)
{
    Child(QStringLiteral("frmGrid"), QStringLiteral("1"));
    Child(QStringLiteral("frmTextOutput")); // does not follow it
    Child(QStringLiteral("frmSQL"), QStringLiteral("1"));
    Log.clear();
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("b"))));
    EXPECT_EQ(Log.filter(QRegularExpression(QStringLiteral("SaveState|RefreshForm"))),
              QStringList({"frmGrid SaveState", "frmGrid RefreshForm b", "frmSQL SaveState", "frmSQL RefreshForm b"}));
}

TEST_F(ConnectTo, TheOpenConnectionAgainRunsItAll)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    const ADODB::ConnectionPtr former = gConn;
    Log.clear();
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("a"))));
    EXPECT_NE(gConn, former);
    EXPECT_TRUE(Log.contains(QStringLiteral("frmSQL RefreshForm a")));
}

// A mistyped file became an empty database without a word.
TEST_F(ConnectTo, AFileThatIsNotThereIsMadeOnlyWhenTheUserSaysSo)
{
    const QString path = Folder.filePath(QStringLiteral("mistyped.sqlite"));
    ASSERT_TRUE(gConns().Item(QStringLiteral("b")));
    gConns().Item(QStringLiteral("b"))->ConnectionString = QStringLiteral("Driver=SQLite;Database=") + path;
    Dialogs.Answers << mbNo;
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("b"))));
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[0].Buttons, mbYesNo);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.contains(path)) << qPrintable(Dialogs.Boxes[0].Text);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.endsWith(QStringLiteral("Do you want to create it?")));
    EXPECT_TRUE(Dialogs.Boxes[1].Text.endsWith(QStringLiteral("\r\nFaild to connect.")));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(IsConnected(false));
    Dialogs.Boxes.clear();
    Dialogs.Answers << mbYes;
    EXPECT_TRUE(Window->ConnectTo(Entry(QStringLiteral("b"))));
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_TRUE(IsConnected(false));
    EXPECT_EQ(gConns().Item(QStringLiteral("b"))->ConnectionString, QStringLiteral("Driver=SQLite;Database=") + path);
    Dialogs.Boxes.clear();
    Window->ConnectTo(Entry(QStringLiteral("b")));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty()); // it is there now
}

TEST_F(ConnectTo, AFailureShowsTheDriversWordsAndKeepsTheOldString)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("broken"))));
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Connection"));
    EXPECT_EQ(Dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.contains(QStringLiteral("not a database"))) << qPrintable(Dialogs.Boxes[0].Text);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.endsWith(QStringLiteral("\r\nFaild to connect.")));
    EXPECT_EQ(Icons(), QList<int>({7, 7, 7})); // though the windows still hold data of the earlier connection
    EXPECT_FALSE(IsConnected(false));
    EXPECT_FALSE(SchemaMenus());
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Done."));
    EXPECT_NE(Window->cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(Analyzer);
}

TEST_F(ConnectTo, AFailureShowsTheEntrysTextInTheStatusBarMeanwhile)
{
    // The message box is the last moment before "Done.": the panel still says what the opening said.
    QString during;
    Dialogs.OnBox = [&](const MsgBoxRequest &) {
        during = Window->SB->PanelText(1);
        return int(mbOK);
    };
    Window->ConnectTo(Entry(QStringLiteral("broken")));
    EXPECT_EQ(during, QStringLiteral("Cannot open connection!"));
}

TEST_F(ConnectTo, AnEntryWithoutAMemberOpensTheOldConnectionAgain)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    gConns().Remove(QStringLiteral("b"));
    Window->ConnectTo(Entry(QStringLiteral("b")));
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Sync"));
    EXPECT_EQ(Dialogs.Boxes[0].Icon, mbCritical);
    EXPECT_EQ(Dialogs.Boxes[0].Text, QStringLiteral("Brindlewick core files seem to be out of sync. Please restart the "
                                                    "program to fix this error."));
    EXPECT_TRUE(IsConnected(false));
    EXPECT_TRUE(gConn->ConnectionString().contains(QStringLiteral("a.sqlite")));
    EXPECT_EQ(Icons(), QList<int>({7, 1, 7}));
}

TEST_F(ConnectTo, AnEntryWithoutAMemberAtTheStartFails)
{
    gConns().Remove(QStringLiteral("b"));
    Window->ConnectTo(Entry(QStringLiteral("b"))); // there is no former string to open
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Sync"));
    EXPECT_TRUE(Dialogs.Boxes[1].Text.endsWith(QStringLiteral("\r\nFaild to connect.")));
    EXPECT_EQ(Icons(), QList<int>({7, 7, 7}));
}

TEST_F(ConnectTo, AfterAFailureTheStringOfTheLastSuccessIsTheCurrentOne)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    Window->ConnectTo(Entry(QStringLiteral("broken")));
    gConns().Remove(QStringLiteral("b"));
    Window->ConnectTo(Entry(QStringLiteral("b"))); // unknown: the current string is opened again
    EXPECT_TRUE(IsConnected(false));
    EXPECT_TRUE(gConn->ConnectionString().contains(QStringLiteral("a.sqlite")));
}

TEST_F(ConnectTo, ASecondClickMeanwhileIsIgnored)
{
    QTimer::singleShot(0, Window.get(), [&] { EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("b")))); });
    ASSERT_TRUE(Window->ConnectTo(Entry(QStringLiteral("a"))));
    EXPECT_EQ(Icons(), QList<int>({1, 7, 7}));
    EXPECT_TRUE(gConn->ConnectionString().contains(QStringLiteral("a.sqlite")));
}

TEST_F(ConnectTo, AnEntryDeletedMeanwhileDoesNoHarm)
{
    QTimer::singleShot(0, Window.get(), [&] {
        Window->menus->SetTag(QStringLiteral("mnuDeleteConn"), Entry(QStringLiteral("a"))->Key());
        Window->Command("mnuDeleteConn");
    });
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("a"))));
    EXPECT_FALSE(Entry(QStringLiteral("a")));
    EXPECT_FALSE(IsConnected(false));
}

TEST_F(ConnectTo, AWindowThatGoesMeanwhileDoesNoHarm)
{
    Child(QStringLiteral("frmGrid"), QStringLiteral("1"));
    const QPointer<ChildWindow> second = Child(QStringLiteral("frmTree"), QStringLiteral("1"));
    MadeInstead()[QStringLiteral("frmSQL")] = []() -> ChildWindow * { return nullptr; };
    QTimer::singleShot(0, Window.get(), [second] { delete second; });
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_FALSE(second);
    EXPECT_TRUE(Log.contains(QStringLiteral("frmGrid RefreshForm a")));
}

TEST_F(ConnectTo, TheMainWindowMayCloseMeanwhile)
{
    QTimer::singleShot(0, Window.get(), [&] { Window->close(); });
    EXPECT_FALSE(Window->ConnectTo(Entry(QStringLiteral("a"))));
    EXPECT_TRUE(Window->HasEnded());
    EXPECT_FALSE(Analyzer);
}

TEST_F(ConnectTo, TheWaitingWindowShowsUnlessInTestMode)
{
    const auto waiting = [] {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *ani = qobject_cast<frmAni *>(widget); ani && ani->isVisible())
                return ani->windowTitle();
        return QString();
    };
    QString during;
    QTimer::singleShot(0, Window.get(), [&] { during = waiting(); });
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_EQ(during, QString());
    Window->SetTestMode(false);
    QTimer::singleShot(0, Window.get(), [&] { during = waiting(); });
    Window->ConnectTo(Entry(QStringLiteral("a")));
    EXPECT_EQ(during, QStringLiteral("Connecting..."));
    EXPECT_EQ(waiting(), QString());
}

TEST_F(ConnectTo, AClickOnTheEntryConnects)
{
    QTest::mouseClick(Window->eb->viewport(), Qt::LeftButton, {},
                      Window->eb->ItemRect(Entry(QStringLiteral("b"))).center());
    EXPECT_TRUE(IsConnected(false));
    EXPECT_EQ(Icons(), QList<int>({7, 1, 7}));
}

TEST_F(ConnectTo, AScratchAnalyzerBelongsToNoConnection)
{
    Window->Command("mnuSQL");
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("Conection"));
    EXPECT_FALSE(Analyzer);
    Window->ConnectTo(Entry(QStringLiteral("a")));
    const QPointer<FakeChild> first = Analyzer;
    Window->Command("mnuSQL");
    ASSERT_TRUE(Analyzer);
    EXPECT_NE(Analyzer, first);
    EXPECT_EQ(Analyzer->ConnName, QString());
    EXPECT_EQ(Analyzer->Caption(), QStringLiteral("SQL Analyzer[a]"));
    EXPECT_EQ(Window->ActiveChild(), Analyzer);
}

} // namespace
