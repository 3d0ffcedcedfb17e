// A real start and a real end of the main window.
#include "app/Menus.h"
#include "app/SingleInstance.h"
#include "controls/CommandBar.h"
#include "controls/Splitter.h"
#include "controls/StatusBar.h"
#include "controls/Twips.h"
#include "data/ConnectionStore.h"
#include "data/modKeywords.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Settled.h"
#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTimer>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

class StartTest : public ShellTest
{
protected:
    // Keeps the welcome away from windows that are shown.
    void AConnection() { gConns().Add(QStringLiteral("s"), QStringLiteral("there"), QString()); }
};

TEST_F(StartTest, ThirteenStepsStrictlyInOrder)
{
    Window = std::make_unique<mdiMother>();
    StartUp start(*Window, QStringLiteral("TestMode"), [] { return true; });
    QList<int> steps;
    start.BeforeStep = [&](int number) {
        steps << number;
        if (number == 2) {
            EXPECT_TRUE(Window->TestMode());
        }
        if (number == 5) {
            EXPECT_FALSE(Window->menus->Item(QStringLiteral("mnuSQL"))->isEnabled());
        }
        if (number == 9) {
            EXPECT_GT(gKeywordSet.Words().size(), 300); // the shipped list
            // It was a list of texts alone; windows read it as the recordset that it is.
            ASSERT_TRUE(gKeywords);
            ASSERT_EQ(gKeywords->Fields().Count(), 1);
            EXPECT_EQ(gKeywords->Fields()[0].Name(), QStringLiteral("KW"));
            EXPECT_EQ(gKeywords->Fields()[0].Type(), ADODB::adVarChar);
            EXPECT_EQ(gKeywords->Fields()[0].DefinedSize(), 50);
            EXPECT_EQ(gKeywords->Fields()[0].Attributes(), ADODB::adFldUnspecified);
            EXPECT_FALSE(gKeywords->ActiveConnection());
            ASSERT_EQ(gKeywords->RecordCount(), gKeywordSet.Words().size());
            for (qint64 row = 0; row < gKeywords->RecordCount(); ++row)
                ASSERT_EQ(gKeywords->CellText(row, 0), gKeywordSet.Words()[row]); // in the order of the file
            EXPECT_EQ(Window->eb->BarCount(), number > 9 ? 2 : 0) << number;
        }
        EXPECT_EQ(Window->cb->HasToolbar(QStringLiteral("MainTB")), number > 10) << number;
        if (number == 13) {
            EXPECT_EQ(Window->SB->PanelText(1), QString());
        }
    };
    bool shown = false;
    start.Show = [&] {
        shown = true;
        EXPECT_EQ(steps.last(), 13);
    };
    EXPECT_TRUE(start.Run());
    EXPECT_EQ(steps, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_TRUE(shown);
    EXPECT_EQ(StartSteps().size(), 13u);
}

TEST_F(StartTest, AnotherInstanceEndsItAtOnce)
{
    Window = std::make_unique<mdiMother>();
    StartUp start(*Window, QString(), [] { return false; });
    QList<int> steps;
    start.BeforeStep = [&](int number) { steps << number; };
    start.Show = [] { ADD_FAILURE() << "a second instance shows nothing"; };
    EXPECT_FALSE(start.Run());
    EXPECT_EQ(steps, QList<int>({1, 2}));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(StartTest, AMissingStoreGivesNoConnectionsAndNoMessage)
{
    Start();
    EXPECT_EQ(gConns().Count(), 0);
    EXPECT_EQ(Window->eb->Bar(QStringLiteral("CONN"))->Items().Count(), 0);
    EXPECT_EQ(Window->eb->Bar(QStringLiteral("CONN"))->Title(), QStringLiteral("Connections"));
    EXPECT_EQ(Window->eb->Bar(QStringLiteral("TB"))->Title(), QStringLiteral("Tool Bar"));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(StartTest, ConnectionsGoThroughARealEndAndARealStart)
{
    Start();
    gConns().Add(QStringLiteral("Driver=SQLite;Database=x;PWD=gehe\u00edm"), QStringLiteral("B\u00fccher"),
                 QStringLiteral("select\r\n1"));
    gConns().Add(QStringLiteral("DSN=y"), QStringLiteral("a"), QString());
    QSignalSpy ended(Window.get(), &mdiMother::Ended);
    EXPECT_TRUE(Window->close());
    EXPECT_EQ(ended.count(), 1);
    EXPECT_TRUE(gKeywordSet.Words().isEmpty());
    EXPECT_FALSE(gKeywords);
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Done."));
    EXPECT_EQ(QFileInfo(AppFile(QStringLiteral("es.dat"))).permissions() &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
    Window.reset();
    gConns().Clear();
    Start();
    ASSERT_EQ(gConns().Count(), 2);
    EXPECT_EQ((*gConns().begin())->Name, QStringLiteral("B\u00fccher"));
    EXPECT_EQ((*gConns().begin())->ConnectionString, QStringLiteral("Driver=SQLite;Database=x;PWD=gehe\u00edm"));
    EXPECT_EQ((*gConns().begin())->Extra, QStringLiteral("select\r\n1"));
    ExplorerBarItems &items = Window->eb->Bar(QStringLiteral("CONN"))->Items();
    ASSERT_EQ(items.Count(), 2);
    EXPECT_EQ(items.Item(1)->Text(), QStringLiteral("B\u00fccher"));
    EXPECT_EQ(items.Item(2)->Text(), QStringLiteral("a"));
    EXPECT_EQ(items.Item(2)->Tag(), QStringLiteral("CONN"));
    EXPECT_EQ(items.Item(2)->Icon(), 7);
    EXPECT_TRUE(items.Item(2)->Key().startsWith(QLatin1String("C:")));
}

// The end of the program stopped the windows for up to two seconds while another writer held the store.
TEST_F(StartTest, TheWindowLivesWhileAnotherWriterHoldsTheStore)
{
    clsConns former;
    former.Add(QStringLiteral("Driver=SQLite"), QStringLiteral("mine"), QStringLiteral("select 1"));
    QFile file(AppFile(QStringLiteral("es.dat")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(WriteConnections(former));
    file.close();
    Start(QStringLiteral("TestMode"), true); // with a connection: nobody is welcomed beside a save
    Window->SaveSettings();                  // makes the lock's file
    gConns().Item(QStringLiteral("mine"))->Extra = QStringLiteral("select 2");
    const int held = ::open(QFile::encodeName(AppFile(QStringLiteral("es.dat.lock"))).constData(), O_RDWR);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    const auto stored = [] {
        clsConns conns;
        LoadConnections(AppFile(QStringLiteral("es.dat")), conns);
        return conns.Item(QStringLiteral("mine"))->Extra;
    };
    int passes = 0;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
        if (++passes < 3)
            return;
        tick.stop();
        EXPECT_FALSE(Window->isHidden());
        EXPECT_EQ(stored(), QStringLiteral("select 1")); // the other one is still at it
        gConns().Item(QStringLiteral("mine"))->Extra = QStringLiteral("select 3");
        ::flock(held, LOCK_UN);
        Window->SaveAll(); // the end of the session comes into it: its save is the later one
    });
    tick.start(0);
    QSignalSpy ended(Window.get(), &mdiMother::Ended);
    EXPECT_TRUE(Window->close());
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(passes, 3);
    EXPECT_EQ(stored(), QStringLiteral("select 3"));

    // Who never lets go is not waited for without an end, and nothing is lost.
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    gConns().Item(QStringLiteral("mine"))->Extra = QStringLiteral("select 4");
    Window->SaveSettings();
    EXPECT_EQ(stored(), QStringLiteral("select 4"));
    ::close(held);
}

TEST_F(StartTest, OfTwoRecordsThatDifferInCaseTheSecondIsDropped)
{
    clsConns first, second;
    first.Add(QStringLiteral("s1"), QStringLiteral("Name"), QString());
    second.Add(QStringLiteral("s2"), QStringLiteral("NAME"), QString());
    second.Add(QStringLiteral("s3"), QStringLiteral("other"), QString());
    QFile file(AppFile(QStringLiteral("es.dat")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(WriteConnections(first) + WriteConnections(second));
    file.close();
    Start();
    ASSERT_EQ(gConns().Count(), 2);
    EXPECT_EQ(gConns().Item(QStringLiteral("name"))->ConnectionString, QStringLiteral("s1"));
    EXPECT_TRUE(gConns().Item(QStringLiteral("OTHER")));
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(StartTest, ADamagedStoreAndDamagedSettingsAreSurvived)
{
    for (const char *name : {"es.dat", "settings.ini"}) {
        QFile file(Folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        QByteArray bytes;
        for (int i = 0; i < 100000; ++i)
            bytes += static_cast<char>((i * 7919) >> 3);
        file.write(bytes);
    }
    Start();
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
    EXPECT_EQ(Window->SB->PanelText(1), QString());
}

TEST_F(StartTest, PlaceSizeAndSplitterAreReadInTwips)
{
    AConnection();
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("300,450"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("12000,9000"));
    SaveSetting(QStringLiteral("WindowState"), QStringLiteral("0"));
    SaveSetting(QStringLiteral("WindowSplit"), QStringLiteral("3000"));
    Window = std::make_unique<mdiMother>();
    StartUp start(*Window, QStringLiteral("TestMode"));
    start.Show = [&] { Window->ShowAsStored(); };
    ASSERT_TRUE(start.Run());
    EXPECT_FALSE(Window->isMaximized());
    EXPECT_EQ(Window->geometry(), QRect(20, 30, 800, 600));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Window->eb->width(), 200);
    EXPECT_EQ(Window->picSplit->Position(), 3000);
}

TEST_F(StartTest, ADragOfTheSplitterMakesTheSideBarWider)
{
    AConnection();
    Start(QStringLiteral("TestMode"), true);
    Splitter *split = Window->picSplit;
    EXPECT_EQ(split->Border(1), 10);
    EXPECT_EQ(split->Border(3), 150);
    EXPECT_EQ(split->Orientation(), spltVertical);
    const int before = Window->eb->width();
    QTest::mousePress(split, Qt::LeftButton, {}, {2, 50});
    QMouseEvent move(QEvent::MouseMove, QPoint(42, 50), split->mapToGlobal(QPoint(42, 50)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(split, &move);
    EXPECT_EQ(Window->eb->width(), before + 40); // under the pointer while it is dragged
    QTest::mouseRelease(split, Qt::LeftButton, {}, {2, 50});
    EXPECT_EQ(Window->eb->width(), before + 42 + 10); // old width, pointer, 150 twips
    QTest::mouseClick(split, Qt::LeftButton, {}, {2, 50});
    EXPECT_EQ(Window->eb->width(), before + 42 + 10); // a click is no move
    split->setFocus();
    QTest::keyClick(split, Qt::Key_Left);
    EXPECT_EQ(Window->eb->width(), before + 42);
    Window->close();
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSplit")), QString::number((before + 42) * 15));
}

TEST_F(StartTest, A4000TwipsWideWindowStaysAsDesigned)
{
    const QSize designed = mdiMother().size();
    SaveSetting(QStringLiteral("WindowState"), QStringLiteral("0"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("4000,9000"));
    Start();
    EXPECT_EQ(Window->size(), designed);
    Window.reset();
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("4001,9000"));
    Start();
    EXPECT_EQ(Window->size(), QSize(267, 600));
}

// The window was made wider than what is stored, and what was written at the end was that, in whole pixels.
TEST_F(StartTest, AStoredSizeThatNobodyChangedIsWrittenAsItWas)
{
    AConnection();
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("301,452"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("4001,9001"));
    SaveSetting(QStringLiteral("WindowState"), QStringLiteral("0"));
    const auto run = [&](bool drag) {
        Window = std::make_unique<mdiMother>();
        StartUp start(*Window, QStringLiteral("TestMode"));
        start.Show = [&] { Window->ShowAsStored(); };
        ASSERT_TRUE(start.Run());
        (void)QTest::qWaitForWindowExposed(Window.get());
        EXPECT_EQ(Window->geometry(), QRect(20, 30, 267, 600));
        if (drag)
            Window->resize(300, 600);
        Window->close();
    };
    run(false);
    EXPECT_EQ(GetSetting(QStringLiteral("WindowPos")), QStringLiteral("301,452"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")), QStringLiteral("4001,9001"));
    run(true);
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")), QStringLiteral("4500,9000"));
}

TEST_F(StartTest, AStoredPlaceThatNoScreenShowsIsBroughtBack)
{
    AConnection();
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("-60000,150"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("6000,6000"));
    SaveSetting(QStringLiteral("WindowState"), QStringLiteral("0"));
    Start();
    EXPECT_EQ(Window->geometry().topLeft(), QPoint(0, 10));
    EXPECT_EQ(Window->size(), QSize(400, 400));
}

TEST_F(StartTest, ATextPastSixteenMegabytesIsMentionedOnce)
{
    AConnection();
    gConns().Add(QStringLiteral("s"), QStringLiteral("Big"), QString(int(kLargeText) + 1, QLatin1Char('x')));
    const auto boxes = [this] {
        QStringList texts;
        for (const auto &box : Dialogs.Boxes)
            texts << box.Text;
        return texts.filter(QStringLiteral("16 MB"));
    };
    Start(QStringLiteral("TestMode"), true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !boxes().isEmpty(); }));
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_TRUE(boxes()[0].contains(QStringLiteral("Big")));
    Window->close();
    Window.reset();
    gConns().Clear();
    Start(QStringLiteral("TestMode"), true);
    EXPECT_TRUE(Settled()); // past the moment of the first
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_EQ(gConns().Item(QStringLiteral("Big"))->Extra.size(), kLargeText + 1);
}

// What another program wrote into the store while this one ran was gone with its end.
TEST_F(StartTest, TheEndKeepsWhatAnotherWriterAdded)
{
    Start();
    gConns().Add(QStringLiteral("s"), QStringLiteral("mine"), QString());
    ConnectionStore other(AppFile(QStringLiteral("es.dat")));
    clsConns theirs;
    theirs.Add(QStringLiteral("t"), QStringLiteral("theirs"), QString());
    ASSERT_TRUE(other.Save(theirs));
    Window->close();
    clsConns stored;
    ASSERT_TRUE(LoadConnections(AppFile(QStringLiteral("es.dat")), stored));
    EXPECT_TRUE(stored.Item(QStringLiteral("mine")));
    EXPECT_TRUE(stored.Item(QStringLiteral("theirs")));
}

TEST_F(StartTest, AMaximisedEndKeepsTheOlderPlaceAndSize)
{
    AConnection();
    SaveSetting(QStringLiteral("WindowPos"), QStringLiteral("300,450"));
    SaveSetting(QStringLiteral("WindowSize"), QStringLiteral("12000,9000"));
    SaveSetting(QStringLiteral("WindowSplit"), QStringLiteral("3000"));
    Window = std::make_unique<mdiMother>();
    StartUp start(*Window, QStringLiteral("TestMode"));
    start.Show = [&] { Window->ShowAsStored(); };
    ASSERT_TRUE(start.Run());
    EXPECT_TRUE(Window->isMaximized());
    Window->close();
    EXPECT_EQ(GetSetting(QStringLiteral("WindowState")), QStringLiteral("2"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowPos")), QStringLiteral("300,450"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")), QStringLiteral("12000,9000"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSplit")), QStringLiteral("3000"));
}

TEST_F(StartTest, AMinimisedEndWritesTheNormalPlace)
{
    AConnection();
    Start();
    Window->setGeometry(45, 60, 700, 500);
    Window->show();
    (void)QTest::qWaitForWindowExposed(Window.get());
    const QRect normal = Window->geometry();
    Window->showMinimized();
    Window->ShowAsStored(); // marks it as shown, by the stored state 2
    Window->showMinimized();
    Window->close();
    EXPECT_EQ(GetSetting(QStringLiteral("WindowState")), QStringLiteral("1"));
    EXPECT_EQ(GetSetting(QStringLiteral("WindowSize")),
              QStringLiteral("%1,%2").arg(normal.width() * 15).arg(normal.height() * 15));
}

TEST_F(StartTest, EveryChildClosesByItsOwnLogicAndThenAllIsSaved)
{
    AConnection();
    Start(QStringLiteral("TestMode"), true);
    Child(QStringLiteral("frmSQL"), QStringLiteral("1"));
    Child(QStringLiteral("frmGrid"));
    gConns().Add(QStringLiteral("s"), QStringLiteral("n"), QString());
    Log.clear();
    EXPECT_TRUE(Window->close());
    EXPECT_EQ(Log.filter(QStringLiteral("Unload")), QStringList({"frmSQL Unload", "frmGrid Unload"}));
    EXPECT_TRUE(QFile::exists(AppFile(QStringLiteral("es.dat"))));
    EXPECT_TRUE(Window->HasEnded());
}

TEST_F(StartTest, ExitClosesToo)
{
    AConnection();
    Start(QStringLiteral("TestMode"), true);
    Child(QStringLiteral("frmGrid"));
    Window->menus->Item(QStringLiteral("mnuExit"))->trigger();
    EXPECT_TRUE(Window->HasEnded());
    EXPECT_TRUE(Log.contains(QStringLiteral("frmGrid Unload")));
    EXPECT_TRUE(QFile::exists(AppFile(QStringLiteral("es.dat"))));
}

TEST_F(StartTest, TestModeIsTheWholeLineExactly)
{
    Start(QStringLiteral("TestMode"));
    EXPECT_TRUE(Window->TestMode());
    Window.reset();
    Start(QStringLiteral("testmode"));
    EXPECT_FALSE(Window->TestMode());
}

TEST_F(StartTest, StatusPanels)
{
    Start();
    EXPECT_EQ(Window->SB->Count(), 8);
    ::SetStatus(QStringLiteral("Working"));
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Working"));
    Shell::Current().SetCountPanel(QStringLiteral("Count = 3"));
    EXPECT_EQ(Window->SB->PanelText(2), QStringLiteral("Count = 3"));
}

TEST_F(StartTest, TheStopButtonShowsWhileThereIsSomethingToStop)
{
    AConnection();
    Start(QStringLiteral("TestMode"), true);
    auto *stop = Window->findChild<QWidget *>(QStringLiteral("cmdStop"));
    ASSERT_TRUE(stop);
    EXPECT_FALSE(stop->isVisible());
    int stopped = 0;
    Shell::Current().SetStop([&] { ++stopped; });
    EXPECT_TRUE(stop->isVisible());
    QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_EQ(stopped, 1);
    Shell::Current().SetStop(nullptr);
    EXPECT_FALSE(stop->isVisible());
}

TEST(SingleInstance, OnlyOneAtATime)
{
    QTemporaryDir folder;
    SingleInstance first(folder.path()), second(folder.path());
    EXPECT_TRUE(first.Take());
    EXPECT_FALSE(second.Take());
}

TEST(SingleInstance, TheLockOfADeadProcessDoesNotBlock)
{
    QTemporaryDir folder;
    QFile lock(folder.filePath(QStringLiteral("instance.lock")));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("999999\nBrindlewick\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    lock.close();
    EXPECT_TRUE(SingleInstance(folder.path()).Take());
}

TEST(SingleInstance, AHollowLockDoesNotBlockForEver)
{
    QTemporaryDir folder;
    QFile lock(folder.filePath(QStringLiteral("instance.lock")));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    lock.close();
    EXPECT_TRUE(SingleInstance(folder.path()).Take());
}

TEST(SingleInstance, WithoutAFolderToWriteTheProgramRunsAllTheSame)
{
    EXPECT_TRUE(SingleInstance(QStringLiteral("/proc/no-such-folder")).Take());
}

} // namespace
