// The schema menus for real: the main window, a SQLite file, pickers answered by keys.
#include "app/MenuTable.h"
#include "app/Menus.h"
#include "app/SchemaCommands.h"
#include "app/SchemaTable.h"
#include "controls/FlexGrid.h"
#include "controls/ListView.h"
#include "data/frmGetSelection.h"
#include "data/frmGrid.h"
#include "data/frmTree.h"
#include "tests/app/ShellFixture.h"
#include "views/frmHirarchy.h"
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTimer>

namespace {

class SchemaMenus : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        AnalyzerFactory::Current().SetFileFilter = [this](ChildWindow *, const QString &filter) { Filter = filter; };
        Start();
        ASSERT_TRUE(OpenConnection(Database()));
        for (const char *sql :
             {"create table \"two words\"(\"a b\" varchar(30), n numeric(10,2), i bigint)",
              "create table \"it's\"(x integer)", "create view v as select a from t", "insert into t values (1),(2)"})
            gConn->Execute(QString::fromLatin1(sql));
    }
    void Do(const char *menu)
    {
        const MenuRow *row = FindMenuRow(menu);
        ASSERT_TRUE(row) << menu;
        Window->Run(*row);
    }
    // Answers the next picker with this row, or with Escape for "".
    void Pick(const QString &row)
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [this, timer, row] {
            auto *picker = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!picker || !picker->isVisible())
                return;
            timer->deleteLater();
            timer->stop();
            const qint64 chosen = picker->lvResults->SelectedRow();
            Preselected = chosen < 0 ? QString() : picker->lvResults->Text(chosen);
            if (row.isEmpty()) {
                QTest::keyClick(picker, Qt::Key_Escape);
                return;
            }
            QTest::keyClicks(picker->txtCri, row);
            QTest::keyClick(picker->txtCri, Qt::Key_Return);
        });
        timer->start(10);
    }
    template <class Form> Form *Newest()
    {
        const QList<ChildWindow *> children = Window->Children();
        for (auto i = children.size(); i-- > 0;)
            if (auto *form = qobject_cast<Form *>(children[i]))
                return form;
        return nullptr;
    }

    QString Filter, Preselected;
    QObject m_context;
};

TEST_F(SchemaMenus, AWholeRowsetShowsUnderItsName)
{
    for (const SchemaRow &row : SchemaTable()) {
        if (*row.FilterField)
            continue;
        const auto before = Window->Children().size();
        Do(row.Menu);
        if (Window->Children().size() == before)
            continue; // this database has no such notion
        ASSERT_TRUE(Newest<frmHirarchy>());
        EXPECT_EQ(Newest<frmHirarchy>()->Caption(), QLatin1String(row.Title));
    }
}

TEST_F(SchemaMenus, ARefusedRowsetIsToldInTheStatusBarAndOpensNothing)
{
    Do("mnuCubes");
    EXPECT_TRUE(Window->Children().isEmpty());
    EXPECT_TRUE(LastStatus().contains("not capable of performing requested operation")) << LastStatus().toStdString();
}

TEST_F(SchemaMenus, FieldsOfAChosenTable)
{
    Pick("two words");
    Do("mnuTableFields");
    auto *grid = Newest<frmGrid>();
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->Caption(), "Table two words Fields");
    EXPECT_EQ(grid->lvResults->Count(), 3);
    EXPECT_EQ(Window->menus->Tag("mnuDBTables"), "two words");
    Pick("t");
    Do("mnuTableFields");
    EXPECT_EQ(Preselected, "two words"); // the last one chosen is chosen again
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 1);
}

TEST_F(SchemaMenus, AllTablesStandsInTheTitleAsItIs)
{
    Pick("< All");
    Do("mnuTableFields");
    auto *grid = Newest<frmGrid>();
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->Caption(), "Table < All Tables > Fields");
    EXPECT_GE(grid->lvResults->Count(), 5);
}

TEST_F(SchemaMenus, AQuoteInTheNameBreaksTheFilter)
{
    Pick("it's");
    Do("mnuTableFields");
    EXPECT_FALSE(Newest<frmGrid>());
    EXPECT_TRUE(LastStatus().startsWith("Error: "));
}

TEST_F(SchemaMenus, ACancelledPickerEndsTheCommand)
{
    Pick("");
    Do("mnuTablePrimaryKeyList");
    EXPECT_TRUE(Window->Children().isEmpty());
    EXPECT_EQ(Window->menus->Tag("mnuDBTables"), "");
}

TEST_F(SchemaMenus, ListsOfTablesAndViews)
{
    Do("mnuTableList");
    ASSERT_TRUE(Newest<frmGrid>());
    EXPECT_EQ(Newest<frmGrid>()->Caption(), "All Objects");
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 3);
    Do("mnuViews");
    ASSERT_TRUE(Newest<frmHirarchy>());
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "Views");
    EXPECT_EQ(Newest<frmHirarchy>()->mfg->RecordCount(), 1);
    Do("mnuStructureTree");
    EXPECT_TRUE(Newest<frmTree>());
}

TEST_F(SchemaMenus, TheIndexListFallsBackToItsRowset)
{
    gConn->Execute(QStringLiteral("create index ti on t(a)"));
    Pick("t");
    Do("mnuTableIndex");
    ASSERT_TRUE(Newest<frmGrid>());
    EXPECT_EQ(Newest<frmGrid>()->Caption(), "Indexes");
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 1);
    Pick("it's");
    Do("mnuTableIndex");
    EXPECT_EQ(Dialogs.LastTitle(), "Index");
    EXPECT_EQ(Dialogs.LastText(), "Your database either does not support this feature or is encountering an error.");
}

TEST_F(SchemaMenus, ClearingAsksAndCounts)
{
    Pick("t");
    Dialogs.Answers << mbNo;
    Do("mnuClearTable");
    EXPECT_EQ(Dialogs.LastTitle(), "Delete");
    EXPECT_EQ(Dialogs.LastText(), "Are you sure you want to clear all data in this table? [t]");
    EXPECT_EQ(gConn->Execute("select count(*) from t")->CellText(0, 0), "2");
    Pick("t");
    Do("mnuClearTable");
    EXPECT_EQ(Dialogs.LastTitle(), "Clear Data [t]");
    EXPECT_EQ(Dialogs.LastText(), "2 rows where affected.");
    Pick("t");
    Do("mnuClearTable");
    EXPECT_EQ(Dialogs.LastText(), "0 rows where affected.");
}

TEST_F(SchemaMenus, DroppingAsksAndAFailureIsTold)
{
    Pick("two words");
    Do("mnuDropTable");
    EXPECT_EQ(Dialogs.LastText(), "Are you sure you want to remove this table? [two words]");
    EXPECT_EQ(gConn->Execute("select count(*) from sqlite_master where name='two words'")->CellText(0, 0), "0");
    Pick("v");
    Do("mnuDropView");
    EXPECT_EQ(Dialogs.LastText(), "Are you sure you want to remove this view? [v]");
    EXPECT_EQ(gConn->Execute("select count(*) from sqlite_master where name='v'")->CellText(0, 0), "0");
    Pick("it's");
    Do("mnuDropTable"); // the name is not quoted, so the statement fails
    EXPECT_EQ(Dialogs.LastTitle(), "Error");
    EXPECT_TRUE(Dialogs.LastText().startsWith("Error: "));
}

TEST_F(SchemaMenus, TheDefinitionOpensInAScratchWindow)
{
    Pick("two words");
    Do("mnuDDL");
    ASSERT_TRUE(Analyzer);
    EXPECT_EQ(Analyzer->ConnName, "");
    EXPECT_EQ(Analyzer->Body,
              "CREATE TABLE two words (\r\n\t[a b] VarWChar(30),\r\n\tn Numeric(10,2),\r\n\ti BigInt\r\n)");
    EXPECT_EQ(Filter, "SQL File [*.sql] |*.sql");
    Pick("<All");
    Do("mnuDDL");
    EXPECT_TRUE(Analyzer->Body.contains("CREATE TABLE t (\r\n\ta "));
    EXPECT_TRUE(Analyzer->Body.endsWith(")\r\n\r\n"));
    EXPECT_FALSE(Analyzer->Body.contains("CREATE TABLE v"));
}

TEST_F(SchemaMenus, WithoutAnAnalyzerATemplateGoesNowhere)
{
    Do("mnuAddTable");
    Do("mnuAddView");
    EXPECT_TRUE(Window->Children().isEmpty());
}

} // namespace
