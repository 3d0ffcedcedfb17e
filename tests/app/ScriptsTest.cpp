// The Scripts menu over a real connection, with the real windows.
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "analyzer/frmTextManipulation.h"
#include "app/Menus.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/StatusBar.h"
#include "data/frmGetSelection.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>
#include <QTimer>

namespace {

class Scripts : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        MadeInstead().clear(); // the real Analyzer
        gConns().Add(Database(QStringLiteral("a.sqlite")), QStringLiteral("a"), QStringLiteral("select \"a\" from t"));
        Start(QStringLiteral("TestMode"), true);
    }
    void Connect()
    {
        Window->ConnectTo(Entry(QStringLiteral("a")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
    }
    // Triggers an item and answers the list of tables: with the table of that name, or with Escape.
    void Pick(const char *item, const QString &table)
    {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto *ask = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!ask || !ask->isVisible())
                return;
            ++Asked;
            if (!table.isEmpty())
                ask->SelectText(table);
            QTest::keyClick(ask, table.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        timer.start(5);
        Window->menus->Item(QString::fromLatin1(item))->trigger();
    }
    ChildWindow *Child(const char *form) const
    {
        for (ChildWindow *child : Window->Children())
            if (child->FormName() == QLatin1String(form))
                return child;
        return nullptr;
    }
    QList<frmTextManipulation *> Pages() const { return Window->findChildren<frmTextManipulation *>(); }
    QPointer<frmSQL> SQL;
    int Asked = 0;
};

TEST_F(Scripts, TheItemsFollowTheConnection)
{
    for (const char *name : {"mnuMask", "mnuInsert", "mnuASP"})
        EXPECT_FALSE(Window->menus->Item(QString::fromLatin1(name))->isEnabled()) << name;
    Connect();
    for (const char *name : {"mnuMask", "mnuInsert", "mnuASP"})
        EXPECT_TRUE(Window->menus->Item(QString::fromLatin1(name))->isEnabled()) << name;
}

TEST_F(Scripts, WithoutAConnectionTheySayIt)
{
    Window->Command("mnuMask");
    Window->Command("mnuInsert");
    Window->Command("mnuASP");
    EXPECT_EQ(Dialogs.Boxes.size(), 3);
    EXPECT_EQ(Dialogs.LastTitle(), QStringLiteral("Conection"));
    EXPECT_TRUE(Pages().isEmpty());
}

TEST_F(Scripts, AMaskOfATableFollowsTheConnection)
{
    Connect();
    Pick("mnuMask", QString());
    EXPECT_FALSE(Child("frmScriptMask"));
    Pick("mnuMask", QStringLiteral("t"));
    EXPECT_EQ(Asked, 2);
    QPointer<frmScriptMask> mask = qobject_cast<frmScriptMask *>(Child("frmScriptMask"));
    ASSERT_TRUE(mask);
    EXPECT_EQ(Window->ActiveChild(), mask);
    mask->Run();
    EXPECT_EQ(mask->txtCode->Text(), QStringLiteral("rsData.Fields(\"a\").Value = txta"));
    Window->ConnectTo(Entry(QStringLiteral("a")));
    ASSERT_TRUE(mask);
    EXPECT_EQ(mask->Table(), QStringLiteral("t"));
}

TEST_F(Scripts, AnInsertStatementGoesIntoTheActiveAnalyzerElseIntoANewOne)
{
    Connect();
    const auto before = Window->Children().size();
    Pick("mnuInsert", QString());
    EXPECT_EQ(SQL->Text(), QStringLiteral("select \"a\" from t"));
    SQL->SetText(QString());
    Pick("mnuInsert", QStringLiteral("t"));
    EXPECT_EQ(SQL->Text(), QStringLiteral("INSERT INTO t (a) VALUES (  [Values])\r\n"));
    EXPECT_EQ(Window->Children().size(), before);
    ShellTest::Child(QStringLiteral("frmGrid"));
    Pick("mnuInsert", QStringLiteral("t"));
    auto *fresh = qobject_cast<frmSQL *>(Window->ActiveChild());
    ASSERT_TRUE(fresh);
    EXPECT_NE(fresh, SQL);
    EXPECT_EQ(fresh->ConnName(), QString());
    EXPECT_TRUE(fresh->Text().startsWith(QStringLiteral("INSERT INTO t (a)")));
}

TEST_F(Scripts, ThePageIsMadeOfTheAnalyzersStatement)
{
    Connect();
    Window->menus->Item(QStringLiteral("mnuASP"))->trigger();
    ASSERT_EQ(Pages().size(), 1);
    EXPECT_TRUE(Pages()[0]->isVisible());
    const QStringList lines = Pages()[0]->etb->Text().split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.first(), QStringLiteral("<%"));
    EXPECT_EQ(lines.last(), QStringLiteral("%>"));
    EXPECT_TRUE(lines.contains(QStringLiteral(" CONN.Open \"") + gConn->ConnectionString() + QLatin1Char('"')));
    EXPECT_TRUE(lines.contains(QStringLiteral(" Set rsData = CONN.EXECUTE(\"select \"\"a\"\" from t\")")));
}

TEST_F(Scripts, ThePageOfAResultIsMadeOfItsStatement)
{
    Connect();
    SQL->SetText(QStringLiteral("select 7 as n"));
    SQL->RunSQL();
    QPointer<frmHirarchy> result;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        result = qobject_cast<frmHirarchy *>(Child("frmHirarchy"));
        return result && !result->IsRunning();
    }));
    result->ShowChild();
    Window->menus->Item(QStringLiteral("mnuStatsASP"))->trigger();
    ASSERT_EQ(Pages().size(), 1);
    EXPECT_TRUE(Pages()[0]->etb->Text().contains(QStringLiteral("CONN.EXECUTE(\"select 7 as n\")")));
}

TEST_F(Scripts, APageOfAnotherWindowIsRefusedInTheStatusBar)
{
    Connect();
    ShellTest::Child(QStringLiteral("frmGrid"));
    Window->Command("mnuASP");
    EXPECT_TRUE(Pages().isEmpty());
    EXPECT_EQ(Window->SB->PanelText(1), QStringLiteral("Generate ASP needs an Analyzer or a result."));
}

} // namespace
