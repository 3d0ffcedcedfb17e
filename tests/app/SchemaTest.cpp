// The schema menus over a SQLite file.
#include "tests/app/SchemaFixture.h"

namespace {

class SchemaMenusOfAFile : public SchemaMenus
{
protected:
    void SetUp() override
    {
        SchemaMenus::SetUp();
        OpenSample();
    }
};

TEST_F(SchemaMenusOfAFile, AWholeRowsetShowsUnderItsName)
{
    for (const CommandRow &row : CommandTable()) {
        if (row.Route != Calls::Rowset || *row.Rowset.FilterField)
            continue;
        const auto before = Window->Children().size();
        Window->Run(row);
        if (Window->Children().size() == before)
            continue; // this database has no such notion
        ASSERT_TRUE(Newest<frmHirarchy>());
        EXPECT_EQ(Newest<frmHirarchy>()->Caption(), QLatin1String(row.Rowset.Title));
    }
}

TEST_F(SchemaMenusOfAFile, ARefusedRowsetIsToldInTheStatusBarAndOpensNothing)
{
    Do("mnuCubes");
    EXPECT_TRUE(Window->Children().isEmpty());
    EXPECT_TRUE(LastStatus().contains("not capable of performing requested operation")) << LastStatus().toStdString();
}

TEST_F(SchemaMenusOfAFile, FieldsOfAChosenTable)
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

TEST_F(SchemaMenusOfAFile, AllTablesStandsInTheTitleAsItIs)
{
    Pick("< All");
    Do("mnuTableFields");
    auto *grid = Newest<frmGrid>();
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->Caption(), "Table < All Tables > Fields");
    EXPECT_GE(grid->lvResults->Count(), 5);
}

TEST_F(SchemaMenusOfAFile, KeysOfAChosenTable)
{
    gConn->Execute(QStringLiteral("create table child(id integer primary key, up integer references parent(id))"));
    gConn->Execute(QStringLiteral("create table parent(id integer primary key)"));
    Pick("child");
    Do("mnuTableForeginKeyList");
    ASSERT_TRUE(Newest<frmGrid>());
    EXPECT_EQ(Newest<frmGrid>()->Caption(), "Table child Foreign Keys");
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 1);
    Pick("parent");
    Do("mnuTableForeginKeyList"); // what refers to it is another's key
    EXPECT_EQ(Newest<frmGrid>()->Caption(), "Table parent Foreign Keys");
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 0);
    Pick("< All");
    Do("mnuTablePrimaryKeyList");
    EXPECT_EQ(Newest<frmGrid>()->Caption(), "Table < All Tables > Primary Keys");
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 2);
}

// Signs of patterns and brackets stand for themselves in the filter of a chosen table.
TEST_F(SchemaMenusOfAFile, AnOddNameFindsItsOwnFields)
{
    for (const char *name : {"a%b", "axxb", "a_c", "axc", "[in]", "*", "two  blanks", "say \"\"x\"\"", "#TABLE#"})
        gConn->Execute(QStringLiteral("create table \"%1\"(\"%1 1\" int, \"%1 2\" int)").arg(QLatin1String(name)));
    for (const char *name : {"a%b", "axxb", "a_c", "axc", "[in]", "*", "two  blanks", "say \"x\"", "#TABLE#"}) {
        SCOPED_TRACE(name);
        Pick(QString::fromLatin1(name));
        Do("mnuTableFields");
        auto *grid = Newest<frmGrid>();
        ASSERT_TRUE(grid);
        EXPECT_EQ(grid->Caption(), QStringLiteral("Table ") + name + QStringLiteral(" Fields"));
        ASSERT_EQ(grid->lvResults->Count(), 2);
        EXPECT_EQ(grid->lvResults->SubItem(0, 3), QLatin1String(name) + QStringLiteral(" 1"));
        EXPECT_EQ(grid->lvResults->SubItem(1, 3), QLatin1String(name) + QStringLiteral(" 2"));
    }
}

TEST_F(SchemaMenusOfAFile, AQuoteInTheNameBreaksTheFilter)
{
    Pick("it's");
    Do("mnuTableFields");
    EXPECT_FALSE(Newest<frmGrid>());
    EXPECT_TRUE(LastStatus().startsWith("Error: "));
}

TEST_F(SchemaMenusOfAFile, ACancelledPickerEndsTheCommand)
{
    Pick("");
    Do("mnuTablePrimaryKeyList");
    EXPECT_TRUE(Window->Children().isEmpty());
    EXPECT_EQ(Window->menus->Tag("mnuDBTables"), "");
}

TEST_F(SchemaMenusOfAFile, ListsOfTablesAndViews)
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

TEST_F(SchemaMenusOfAFile, TheIndexListFallsBackToItsRowset)
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

TEST_F(SchemaMenusOfAFile, ClearingAsksAndCounts)
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

TEST_F(SchemaMenusOfAFile, DroppingAsksAndAFailureIsTold)
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
    Do("mnuDropTable"); // a quote in a name is a sign like any other
    EXPECT_EQ(gConn->Execute("select count(*) from sqlite_master where name='it''s'")->CellText(0, 0), "0");
    gConn->Execute("create table kept(x integer)");
    gConn->Execute("pragma query_only = on");
    Pick("kept");
    Do("mnuDropTable");
    EXPECT_EQ(Dialogs.LastTitle(), "Error");
    EXPECT_TRUE(Dialogs.LastText().startsWith("Error: "));
}

TEST_F(SchemaMenusOfAFile, TheDefinitionOpensInAScratchWindow)
{
    Pick("two words");
    Do("mnuDDL");
    ASSERT_TRUE(Analyzer);
    EXPECT_EQ(Analyzer->ConnName, "");
    EXPECT_EQ(Analyzer->Body,
              "CREATE TABLE two words (\r\n\t[a b] VarWChar(30),\r\n\tn Numeric(10,2),\r\n\ti BigInt\r\n)");
    EXPECT_EQ(Analyzer->Filter, "SQL File [*.sql] |*.sql");
    Pick("<All");
    Do("mnuDDL");
    EXPECT_TRUE(Analyzer->Body.contains("CREATE TABLE t (\r\n\ta "));
    EXPECT_TRUE(Analyzer->Body.endsWith(")\r\n\r\n"));
    EXPECT_FALSE(Analyzer->Body.contains("CREATE TABLE v"));
}

// The bracket was missing when the table could not be read, and nothing was said.
TEST_F(SchemaMenusOfAFile, ADefinitionEndsWithItsBracketAndTellsWhatFailed)
{
    gConn->Execute("create view broken as select b from t");
    QStringList failures;
    EXPECT_EQ(GenerateTableDDL(gConn, {{}, "main", "broken"}, &failures), "CREATE TABLE broken (\r\n)");
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].startsWith("broken: ")) << failures[0].toStdString();
    EXPECT_TRUE(failures[0].contains("no such column")) << failures[0].toStdString();
}

// The names of columns that would end the statement stand in quotes; all others as told.
TEST_F(SchemaMenusOfAFile, ADefinitionIsOneStatementWhateverItsColumnsAreCalled)
{
    gConn->Execute("create table odd(\"a); delete from t; --\" int, \"b c\" int, d varchar, \"e\"\"f\" int)");
    const QString text = GenerateTableDDL(gConn, {{}, "main", "odd"});
    EXPECT_TRUE(text.contains("\t\"a); delete from t; --\" ")) << text.toStdString();
    EXPECT_TRUE(text.contains("\t[b c] ")) << text.toStdString();
    EXPECT_TRUE(text.contains("\t\"e\"\"f\" ")) << text.toStdString();
    EXPECT_FALSE(text.contains("(-1)")) << text.toStdString(); // nobody knows the length
}

// A popup on another entry changed the name in the caption.
TEST_F(SchemaMenusOfAFile, TheDefinitionsCaptionNamesTheOpenConnection)
{
    EXPECT_EQ(Window->schema->ConnectionName(), Window->menus->Tag("mnuViewCS"));
    gConns().Add(Database("b.sqlite"), "b", QString());
    Window->eb->Bar("CONN")->Items().Add("C:b", "b");
    Window->ConnectTo(Entry("b"));
    Window->menus->SetTag("mnuViewCS", "Stored"); // as the popup does
    EXPECT_EQ(Window->schema->ConnectionName(), "b");
    Pick("t");
    Do("mnuDDL");
    ASSERT_TRUE(Analyzer);
    EXPECT_TRUE(Analyzer->Caption().endsWith(" [b]")) << Analyzer->Caption().toStdString();
}

TEST_F(SchemaMenusOfAFile, WithoutAnAnalyzerATemplateGoesNowhere)
{
    Do("mnuAddTable");
    Do("mnuAddView");
    EXPECT_TRUE(Window->Children().isEmpty());
}

} // namespace
