// The schema menus over databases that say what a test wants to hear: the statements that reach them, letter by letter,
// the ways round what they refuse, and the server's own words.
#include "app/WorkArea.h"
#include "sqltext/modTemplates.h"
#include "tests/app/SchemaFixture.h"
#include "tests/support/ScriptedDriver.h"
#include <QRegularExpression>

namespace {

constexpr char kSysIndexes[] =
    "  SELECT Object_Name(ID) as Table_Name,sysindexes.name AS Index_Name , sysindexes.minlen , sysindexes.maxlen , "
    "sysindexes.keycnt , sysindexes.dpages , sysindexes.used , sysindexes.rowcnt , sysindexes.rowmodctr FROM  "
    "sysindexes  WHERE  dpages >0 AND impid>=0";

class SchemaRoutes : public SchemaMenus
{
protected:
    void SetUp() override
    {
        SchemaMenus::SetUp();
        Driver.OnCatalogue = [this](ADODB::SchemaEnum schema) -> std::unique_ptr<ADODB::ResultSet> {
            if (schema == ADODB::adSchemaTables)
                return std::make_unique<ScriptedRows>(
                    QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"},
                    QList<QStringList>{{QString(), QString(), "Orders", "TABLE"},
                                       {QString(), QString(), "my view", "VIEW"},
                                       {QString(), QString(), "o'r", "TABLE"}});
            if (schema == ADODB::adSchemaIndexes && Indexes) // asked for each of the two tables
                return std::make_unique<ScriptedRows>(
                    QStringList{"TABLE_NAME", "INDEX_NAME"},
                    QList<QStringList>{{IndexesAsked++ % 2 == 0 ? "Orders" : "o'r", "by_day"}});
            return nullptr;
        };
        Driver.OnExecute = [this](const QString &sql) {
            if (Refuse && sql.contains(*Refuse))
                throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("the server says no"));
            ADODB::ExecuteResult result;
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"Index_Name"}, QList<QStringList>{{"by_day"}});
            result.RecordsAffected = 7;
            return result;
        };
    }
    void Open(const QString &text = QStringLiteral("Scripted;Database=shop"))
    {
        ASSERT_TRUE(OpenConnection(text));
        Driver.ClearLog();
    }
    QStringList Statements() const
    {
        QStringList statements = Driver.Log();
        statements.removeIf([](const QString &text) { return text.startsWith(u'['); });
        return statements;
    }
    ScriptedDriver Driver;
    std::optional<QString> Refuse; // statements that hold this
    bool Indexes = true;           // does the driver know them?
    int IndexesAsked = 0;
};

TEST_F(SchemaRoutes, TheIndexListAsksSysindexes)
{
    Open();
    Pick("Orders");
    Do("mnuTableIndex");
    EXPECT_EQ(Statements(), QStringList{QLatin1String(kSysIndexes) + " and id= OBJECT_ID('Orders')"});
    ASSERT_TRUE(Newest<frmHirarchy>());
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "Orders Indexes");
    EXPECT_EQ(Newest<frmHirarchy>()->mfg->RecordCount(), 1);
    Driver.ClearLog();
    Pick("< All");
    Do("mnuTableIndex");
    EXPECT_EQ(Preselected, "Orders");
    EXPECT_EQ(Statements(), QStringList{QLatin1String(kSysIndexes)});
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "< All Tables > Indexes");
    EXPECT_FALSE(Newest<frmGrid>());
}

// Three letters anywhere in the connection string decide.
TEST_F(SchemaRoutes, TheIndexListAsksOracle)
{
    Open(QStringLiteral("Scripted;Database=floral"));
    Pick("Orders");
    Do("mnuTableIndex");
    EXPECT_EQ(Statements(), QStringList{"Select * from ALL_INDEXES  Where Upper(Table_Name)='ORDERS'"});
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "Orders Indexes");
    Driver.ClearLog();
    Pick("< All");
    Do("mnuTableIndex");
    EXPECT_EQ(Statements(), QStringList{"Select * from ALL_INDEXES "});
}

TEST_F(SchemaRoutes, WhatFailsGoesToTheRowsetAndThenToTheMessage)
{
    for (const char *text : {"Scripted;Database=shop", "Scripted;Database=floral"}) {
        SCOPED_TRACE(text);
        Open(QString::fromLatin1(text));
        Refuse = QStringLiteral("INDEXES");
        if (!IsOracle())
            Refuse = QStringLiteral("sysindexes");
        Indexes = true;
        Pick("Orders");
        Do("mnuTableIndex");
        EXPECT_EQ(Statements().size(), 1); // one of the two, never the other
        ASSERT_TRUE(Newest<frmGrid>());
        EXPECT_EQ(Newest<frmGrid>()->Caption(), "Indexes");
        EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), 1);
        EXPECT_TRUE(Dialogs.Boxes.isEmpty());
        Indexes = false;
        Pick("Orders");
        Do("mnuTableIndex");
        ASSERT_EQ(Dialogs.Boxes.size(), 1);
        EXPECT_EQ(Dialogs.LastTitle(), "Index");
        EXPECT_EQ(Dialogs.LastText(),
                  "Your database either does not support this feature or is encountering an error.");
        EXPECT_EQ(Dialogs.Boxes.last().Icon, mbExclamation);
        Dialogs.Boxes.clear();
        Window->Area->CloseAll();
    }
}

TEST_F(SchemaRoutes, ViewsComeFromTheTablesWhereThereIsNoRowsetOfTheirOwn)
{
    Open();
    Do("mnuViews");
    ASSERT_TRUE(Newest<frmHirarchy>());
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "Views");
    EXPECT_EQ(Newest<frmHirarchy>()->mfg->RecordCount(), 1);
    EXPECT_EQ(Driver.Log(), QStringList({"[schema 23]", "[schema 20]"}));
    EXPECT_EQ(LastStatus(), "");
}

TEST_F(SchemaRoutes, TheHandlerWithoutAnItemShowsTheTables)
{
    Open();
    EXPECT_TRUE(Window->Command("mnuTables"));
    ASSERT_TRUE(Newest<frmHirarchy>());
    EXPECT_EQ(Newest<frmHirarchy>()->Caption(), "Tables");
    EXPECT_EQ(Newest<frmHirarchy>()->mfg->RecordCount(), 3);
    EXPECT_FALSE(Window->Command("mnuNothing"));
}

TEST_F(SchemaRoutes, WhatChangesReachesTheServerAsItIs)
{
    Open();
    Pick("Orders");
    Do("mnuClearTable");
    EXPECT_EQ(Statements(), QStringList{"DELETE FROM Orders"});
    EXPECT_EQ(Dialogs.LastText(), "7 rows where affected.");
    EXPECT_EQ(Dialogs.LastTitle(), "Clear Data [Orders]");
    EXPECT_EQ(Dialogs.Boxes.first().Icon, mbExclamation);
    EXPECT_EQ(Dialogs.Boxes.first().Buttons, mbYesNo);
    EXPECT_EQ(Dialogs.Boxes.last().Icon, mbInformation);
    EXPECT_EQ(LastStatus(), "Done.");
    Driver.ClearLog();
    Pick("my view");
    Do("mnuDropView");
    EXPECT_EQ(Statements(), QStringList{"DROP VIEW \"my view\""});
    EXPECT_EQ(Dialogs.LastTitle(), "Delete"); // and no message of a result
    Driver.ClearLog();
    Pick("Orders");
    Dialogs.Answers << mbNo;
    Do("mnuDropTable");
    EXPECT_TRUE(Statements().isEmpty());
    Refuse = QStringLiteral("DROP");
    Pick("Orders");
    Do("mnuDropTable");
    EXPECT_EQ(Statements(), QStringList{"DROP TABLE Orders"});
    EXPECT_EQ(Dialogs.LastTitle(), "Error");
    EXPECT_EQ(Dialogs.LastText(), "Error: the server says no");
}

TEST_F(SchemaRoutes, BrowsingAViewQuotesItsName)
{
    Open();
    Pick("my view");
    Do("mnuViewBrowesData");
    ASSERT_TRUE(Newest<frmGrid>());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Newest<frmGrid>()->Caption().startsWith("Browes View my view Data "); }))
        << Newest<frmGrid>()->Caption().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Statements() == QStringList{"SELECT * FROM \"my view\""}; }));
}

TEST_F(SchemaRoutes, TemplatesGoIntoTheActiveWindow)
{
    Open();
    FakeChild *analyzer = Child(QStringLiteral("frmSQL"), QStringLiteral("1"));
    Do("mnuAddTable");
    EXPECT_EQ(analyzer->Inserted, NewTableTemplate(QStringLiteral("[table_name]")));
    analyzer->Inserted.clear();
    Do("mnuAddView");
    EXPECT_EQ(analyzer->Inserted, NewViewTemplate(QStringLiteral("[view_name]")));
    analyzer->Inserted.clear();
    Pick("Orders");
    Do("mnuEditTable");
    EXPECT_EQ(analyzer->Inserted, ModifyTableTemplate(QStringLiteral("Orders")));
    analyzer->Inserted.clear();
    Pick("");
    Do("mnuEditTable");
    EXPECT_EQ(analyzer->Inserted, "");
    EXPECT_TRUE(Statements().isEmpty());
}

TEST_F(SchemaRoutes, WithoutAConnectionThereIsTheMessageAndNothingElse)
{
    QList<const CommandRow *> rows;
    for (const CommandRow &row : CommandTable())
        if (row.Route == Calls::Schema || row.Route == Calls::Rowset || row.Route == Calls::Window)
            rows << &row;
    EXPECT_GT(rows.size(), 40);
    SetStatus(QStringLiteral("as it was"));
    for (const CommandRow *row : rows) {
        SCOPED_TRACE(row->Name);
        Window->Run(*row);
        ASSERT_EQ(Dialogs.Boxes.size(), 1);
        EXPECT_EQ(Dialogs.LastTitle(), "Conection");
        EXPECT_EQ(Dialogs.LastText(), "No current database connection is active.");
        Dialogs.Boxes.clear();
        EXPECT_TRUE(Window->Children().isEmpty());
        // Asking for a table begins with words of its own.
        EXPECT_TRUE(LastStatus() == "as it was" || LastStatus() == "Show Specific Schema")
            << LastStatus().toStdString();
    }
}

// --- Real servers and a user without rights there.

struct RealServer
{
    const char *Name, *Variable;
};

class SchemaMenusOfAGuest : public SchemaMenus, public testing::WithParamInterface<RealServer>
{
protected:
    void SetUp() override
    {
        SchemaMenus::SetUp();
        m_text = qEnvironmentVariable(GetParam().Variable);
        if (m_text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().Variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        m_admin = ADODB::Connection::Create();
        m_admin->Open(m_text);
        m_guest = QStringLiteral("guest_%1").arg(QCoreApplication::applicationPid());
        m_admin->Execute(QStringLiteral("CREATE DATABASE %1").arg(m_guest));
        m_text.replace(QRegularExpression(QStringLiteral("Database=[^;]*")), QStringLiteral("Database=") + m_guest);
        const ADODB::ConnectionPtr owner = ADODB::Connection::Create();
        owner->Open(m_text);
        owner->Execute(QStringLiteral("CREATE TABLE closed (a INTEGER NOT NULL PRIMARY KEY)"));
        owner->Execute(QStringLiteral("CREATE TABLE ajar (b INTEGER)"));
        if (IsPostgres()) {
            owner->Execute(QStringLiteral("CREATE ROLE %1 LOGIN PASSWORD 'g'").arg(m_guest));
            owner->Execute(QStringLiteral("REVOKE SELECT ON pg_catalog.pg_roles FROM PUBLIC"));
        } else {
            owner->Execute(QStringLiteral("CREATE USER %1 IDENTIFIED BY 'g'").arg(m_guest));
        }
        owner->Execute(QStringLiteral("GRANT SELECT ON ajar TO %1").arg(m_guest));
        QString mine = m_text;
        mine.replace(QRegularExpression(QStringLiteral("UID=.*")), QStringLiteral("UID=%1;PWD=g").arg(m_guest));
        ASSERT_TRUE(OpenConnection(mine)) << LastOpenError().toStdString();
    }
    void TearDown() override
    {
        SchemaMenus::TearDown();
        if (!m_admin)
            return;
        m_admin->Execute(QStringLiteral("DROP DATABASE %1").arg(m_guest));
        m_admin->Execute((IsPostgres() ? QStringLiteral("DROP ROLE %1") : QStringLiteral("DROP USER %1")).arg(m_guest));
    }
    bool IsPostgres() const { return QLatin1String(GetParam().Name) == QLatin1String("PostgreSQL"); }
    ADODB::ConnectionPtr m_admin;
    QString m_text, m_guest;
};

INSTANTIATE_TEST_SUITE_P(Servers, SchemaMenusOfAGuest,
                         testing::Values(RealServer{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                                         RealServer{"MariaDB", "BRINDLEWICK_TEST_MARIADB"}),
                         [](const auto &server) { return std::string(server.param.Name); });

// Every command shows what the server allows; what it refuses is told in its words, and the next command works.
TEST_P(SchemaMenusOfAGuest, SeesWhatIsAllowedAndReadsTheRefusals)
{
    QStringList told;
    for (const CommandRow &row : CommandTable()) {
        if (row.Route != Calls::Rowset || *row.Rowset.FilterField)
            continue;
        SCOPED_TRACE(row.Name);
        const auto before = Window->Children().size();
        Window->Run(row);
        if (Window->Children().size() > before)
            continue;
        EXPECT_TRUE(LastStatus().startsWith("Error: ")) << LastStatus().toStdString();
        if (!LastStatus().contains("Object or provider is not capable of performing requested operation."))
            told << QLatin1String(row.Name) + ' ' + LastStatus();
    }
    ASSERT_EQ(told.size(), 1) << told.join('\n').toStdString();
    EXPECT_TRUE(told[0].startsWith("mnuTrustees Error: "));
    EXPECT_TRUE(
        told[0].contains(IsPostgres() ? "permission denied for view pg_roles" : "SELECT command denied to user"))
        << told[0].toStdString();
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());

    Do("mnuTableList");
    ASSERT_TRUE(Newest<frmGrid>());
    // PostgreSQL shows its catalogue to everybody; MariaDB shows what one may use.
    EXPECT_EQ(Newest<frmGrid>()->lvResults->Count(), IsPostgres() ? 2 : 1);
}

TEST_P(SchemaMenusOfAGuest, IsToldWhyNothingChanges)
{
    Pick("ajar");
    Do("mnuClearTable");
    EXPECT_EQ(Dialogs.LastTitle(), "Error");
    EXPECT_TRUE(Dialogs.LastText().contains(IsPostgres() ? "permission denied for table ajar"
                                                         : "DELETE command denied to user"))
        << Dialogs.LastText().toStdString();
    Pick("ajar");
    Do("mnuDropTable");
    EXPECT_TRUE(
        Dialogs.LastText().contains(IsPostgres() ? "must be owner of table ajar" : "DROP command denied to user"))
        << Dialogs.LastText().toStdString();
    EXPECT_NO_THROW(gConn->Execute(QStringLiteral("SELECT b FROM ajar")));
}

} // namespace
