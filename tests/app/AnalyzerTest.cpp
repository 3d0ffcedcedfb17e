// The real Analyzer in the real main window.
#include "analyzer/frmSQL.h"
#include "app/InstallAnalyzer.h"
#include "app/Menus.h"
#include "app/frmHelp.h"
#include "controls/CommandBar.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "data/ConnectionStore.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>

namespace {

class AnalyzerInTheShell : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        InstallAnalyzer();
        gConns().Add(Database(QStringLiteral("a.sqlite")), QStringLiteral("a"),
                     QStringLiteral("select 41 + 1 as answer"));
        gConns().Add(Database(QStringLiteral("b.sqlite")), QStringLiteral("b"), QStringLiteral("select 2"));
        Start(QStringLiteral("TestMode"), true);
        Window->ConnectTo(Entry(QStringLiteral("a")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
        Window->activateWindow();
        SQL->txtSQL->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == SQL->txtSQL; }));
    }
    frmHirarchy *Result()
    {
        for (ChildWindow *child : Window->Children())
            if (auto *result = qobject_cast<frmHirarchy *>(child))
                return result;
        return nullptr;
    }
    QPointer<frmSQL> SQL;
};

TEST_F(AnalyzerInTheShell, ItComesWithTheConnectionsTextAndItsCaption)
{
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 41 + 1 as answer"));
    EXPECT_EQ(SQL->Caption(), QStringLiteral("SQL Analyzer: [a]"));
    EXPECT_TRUE(Window->cb->Enabled(QStringLiteral("SQLRun")));
}

TEST_F(AnalyzerInTheShell, F5RunsAndTheRowsStandBesideTheText)
{
    QTest::keyClick(SQL->txtSQL, Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Result() && AnalyzerFactory::Current().ResultRows(Result()) == 1; }));
    EXPECT_FALSE(Result()->parentWidget()->geometry().intersects(SQL->parentWidget()->geometry()));
    EXPECT_EQ(Window->ActiveChild(), SQL); // the focus comes back
}

TEST_F(AnalyzerInTheShell, TheMenuRunsToo)
{
    Window->menus->OnQuery();
    QAction *run = Window->menus->Item(QStringLiteral("mnuRun"));
    EXPECT_TRUE(run->isEnabled());
    run->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Result() && AnalyzerFactory::Current().ResultRows(Result()) == 1; }));
}

TEST_F(AnalyzerInTheShell, AnotherConnectionTakesTheWindowWithIt)
{
    SQL->SetText(QStringLiteral("select 3"));
    Window->ConnectTo(Entry(QStringLiteral("b")), QStringLiteral("dropped"));
    EXPECT_EQ(gConns().Item(QStringLiteral("a"))->Extra, QStringLiteral("select 3"));
    EXPECT_EQ(SQL->Text(), QStringLiteral("select 2"));
    EXPECT_EQ(SQL->Caption(), QStringLiteral("SQL Analyzer: [b]"));
}

TEST_F(AnalyzerInTheShell, ItsTextIsInTheStoreAfterTheEnd)
{
    SQL->SetText(QStringLiteral("select 'kept'\r\nfrom t"));
    Window->close();
    clsConns conns;
    ASSERT_TRUE(LoadConnections(AppFile(QStringLiteral("es.dat")), conns));
    EXPECT_EQ(conns.Item(QStringLiteral("a"))->Extra, QStringLiteral("select 'kept'\r\nfrom t"));
}

TEST_F(AnalyzerInTheShell, F1IsTheQuickListsAndTheManualStaysShut)
{
    QTest::keyClick(SQL->txtSQL, Qt::Key_F1);
    EXPECT_FALSE(Window->findChild<frmHelp *>());
    EXPECT_TRUE(SQL->lvQuickList->isVisible());
    QTest::keyClick(SQL->lvQuickList, Qt::Key_Escape);
    SQL->txtSQL->setFocus();
    Window->menus->Item(QStringLiteral("mnuShowHelp"))->trigger(); // goes to the editor as well
    EXPECT_FALSE(Window->findChild<frmHelp *>());
    EXPECT_TRUE(SQL->lvQuickList->isVisible());
}

TEST_F(AnalyzerInTheShell, AScratchWindowKeepsNoText)
{
    Window->mnuSQL();
    auto *scratch = qobject_cast<frmSQL *>(Window->ActiveChild());
    ASSERT_TRUE(scratch && scratch != SQL);
    EXPECT_EQ(scratch->Text(), QString());
    scratch->SetText(QStringLiteral("select 9"));
    scratch->CloseChild();
    EXPECT_EQ(gConns().Item(QStringLiteral("a"))->Extra, QStringLiteral("select 41 + 1 as answer"));
    EXPECT_EQ(Window->ActiveChild(), SQL);
}

} // namespace
