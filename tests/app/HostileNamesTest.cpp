// Hostile names on each server, through everything that the program does with a table's name: connecting, the tree, the
// lists, Clear, Drop, Browse, the definition, the generators, the syntax check. Nothing reaches another object than the
// one that was picked: afterwards every row of every other table is there, and no file is.
//
// What went wrong: connecting sent "SELECT * FROM " + name as a batch, so a table called
// "victim;DELETE/**/FROM/**/victim;--" emptied another one by a click on the connection; Clear Table on "Dept2" emptied
// dept2 on PostgreSQL.
#include "tests/app/HostileNames.h"
#include "ado/ObjectName.h"
#include "ado/StatementText.h"
#include "ado/family/Family.h"
#include "analyzer/frmGetSQLStructure.h"
#include "analyzer/frmSQL.h"
#include "analyzer/frmScriptMask.h"
#include "app/CommandTable.h"
#include "app/WorkArea.h"
#include "controls/DataGrid.h"
#include "controls/ListView.h"
#include "controls/RichTextBox.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "data/frmGetSelection.h"
#include "data/frmGrid.h"
#include "sqltext/Statements.h"
#include "tests/app/ShellFixture.h"
#include "views/frmInline.h"
#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTimer>

namespace {

struct Way
{
    const char *name;
    const char *variable; // "" for the built-in driver
};

constexpr char kVictims[] = "victim";

class HostileNames : public ShellTest, public testing::WithParamInterface<Way>
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        const QString variable = QLatin1String(GetParam().variable);
        m_text = variable.isEmpty() ? QStringLiteral("Driver=SQLite;Database=place")
                                    : qEnvironmentVariable(GetParam().variable);
        if (m_text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        const QRegularExpression database(QStringLiteral("Database=[^;]*"));
        if (IsSqlite()) {
            m_text.replace(database, QStringLiteral("Database=") + Folder.filePath(QStringLiteral("a.sqlite")));
            Database(); // the file
        } else {
            m_admin = ADODB::Connection::Create();
            m_admin->Open(m_text);
            m_place = QStringLiteral("hostile_%1").arg(QCoreApplication::applicationPid());
            m_admin->Execute(QStringLiteral("CREATE DATABASE ") + m_place);
            m_text.replace(database, QStringLiteral("Database=") + m_place);
        }
        m_owner = ADODB::Connection::Create();
        m_owner->Open(m_text);
        if (IsSqlite())
            m_owner->Execute(QStringLiteral("PRAGMA synchronous = OFF"));
        m_family = &m_owner->Family();
        MadeInstead().clear(); // the real Analyzer
    }
    void TearDown() override
    {
        ShellTest::TearDown();
        m_owner.reset();
        if (m_admin)
            m_admin->Execute(QStringLiteral("DROP DATABASE ") + m_place);
    }
    bool IsSqlite() const { return QByteArray(GetParam().name).contains("SQLite"); }
    bool Is(ADODB::DatabaseFamily family) const { return m_family->Id == family; }

    QString Quoted(const QString &name) const { return ADODB::InQuotes(*m_family, {}, name); }

    QStringList Names() const
    {
        QStringList names;
        for (const char *name : kHostileNames)
            names += QString::fromUtf8(name);
        if (QByteArray(GetParam().name) ==
            "SQLiteOdbc") // its driver reads braces as its own, within quotes too, and refuses
            names.removeOne(QStringLiteral("{fn now()}"));
        names += QString(63, u'n');
        if (IsSqlite())
            names += QString(300, u'm') + u';';
        names += QStringLiteral("t;ATTACH'%1'AS/**/x;CREATE/**/TABLE/**/x.y(a);--").arg(QStringLiteral("made.db"));
        return names;
    }

    // Every table gets two rows; what the server has no such name for is left out, and little is.
    void MakeTables()
    {
        m_owner->Execute(QStringLiteral("CREATE TABLE victim (h INTEGER, i INTEGER)"));
        m_owner->Execute(QStringLiteral("INSERT INTO victim VALUES (1, 2), (3, 4)"));
        const QStringList names = Names();
        for (const QString &name : names) {
            try {
                m_owner->Execute(QStringLiteral("CREATE TABLE %1 (h INTEGER, i INTEGER)").arg(Quoted(name)));
            } catch (const ADODB::Error &) {
                continue;
            }
            m_owner->Execute(QStringLiteral("INSERT INTO %1 VALUES (1, 2), (3, 4)").arg(Quoted(name)));
            m_made += name;
        }
        EXPECT_GE(m_made.size(), names.size() - 4);
        EXPECT_GE(m_made.size(), 30);
    }
    QString Count(const QString &name)
    {
        return m_owner->Execute(QStringLiteral("SELECT count(*) FROM ") + Quoted(name))->CellText(0, 0);
    }
    // All but `changed` as they were made.
    void ExpectAllThere(const QStringList &changed = {})
    {
        for (const QString &name : m_made + QStringList{QString::fromLatin1(kVictims)})
            if (!changed.contains(name)) {
                EXPECT_EQ(Count(name), QStringLiteral("2")) << name.toStdString();
            }
        const QStringList files = QDir(Folder.path()).entryList(QDir::Files) + QDir::current().entryList(QDir::Files);
        EXPECT_FALSE(files.contains(QStringLiteral("made.db")));
        EXPECT_FALSE(files.contains(QStringLiteral("made.db;")));
    }
    void Connect()
    {
        gConns().Add(m_text, QStringLiteral("it"), QString());
        Start(QStringLiteral("TestMode"), true);
        Window->ConnectTo(Entry(QStringLiteral("it")));
        SQL = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(SQL);
    }
    // Answers the next picker with the row of exactly this text, of several the one with this number.
    void Pick(const QString &name, int number = 0)
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [timer, name, number] {
            auto *picker = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!picker || !picker->isVisible())
                return;
            timer->deleteLater();
            timer->stop();
            int seen = 0;
            // From the end: the row in front of all objects may have a table's name.
            for (qint64 row = picker->lvResults->Count(); row-- > 0;)
                if (picker->lvResults->Text(row) == name && seen++ == number) {
                    picker->lvResults->SelectRow(row);
                    QTest::keyClick(picker, Qt::Key_Return);
                    return;
                }
            ADD_FAILURE() << "not in the list: " << name.toStdString();
            picker->reject();
        });
        timer->start(2);
    }
    void Do(const char *menu)
    {
        const CommandRow *row = FindCommand(menu);
        ASSERT_TRUE(row) << menu;
        Window->Run(*row);
    }
    // Answers the dialog of statement types as it stands: a SELECT.
    void AnswerStructure()
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [timer] {
            auto *ask = qobject_cast<frmGetSQLStructure *>(QApplication::activeModalWidget());
            if (!ask || !ask->isVisible())
                return;
            timer->deleteLater();
            timer->stop();
            QTest::keyClick(ask, Qt::Key_Return);
        });
        timer->start(2);
    }
    template <class Form> Form *Newest()
    {
        const QList<ChildWindow *> children = Window->Children();
        for (auto i = children.size(); i-- > 0;)
            if (auto *form = qobject_cast<Form *>(children[i]))
                return form;
        return nullptr;
    }
    void CloseOthers()
    {
        for (ChildWindow *child : Window->Children())
            if (child != SQL)
                child->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        SQL->ShowChild();
    }
    // Lists and trees make no field of such a name by rule, or put it below another key.
    static bool HasFieldsInTree(const QString &name) { return !name.contains(u'$'); }

    QString m_text, m_place;
    ADODB::ConnectionPtr m_admin, m_owner;
    const ADODB::Family *m_family = &ADODB::NoFamily();
    QStringList m_made;
    QPointer<frmSQL> SQL;
    QObject m_context;
};

INSTANTIATE_TEST_SUITE_P(Ways, HostileNames,
                         testing::Values(Way{"SQLite", ""}, Way{"SQLiteOdbc", "BRINDLEWICK_TEST_SQLITE_ODBC"},
                                         Way{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES"},
                                         Way{"MariaDB", "BRINDLEWICK_TEST_MARIADB"}),
                         [](const auto &server) { return std::string(server.param.name); });

TEST_P(HostileNames, ConnectingReadsTheirFieldsAndRunsNothing)
{
    MakeTables();
    Connect();
    ExpectAllThere();
    for (const QString &name : m_made) {
        Node *node = SQL->TV->Nodes().Find(name);
        ASSERT_TRUE(node) << name.toStdString();
        EXPECT_EQ(node->Children(), HasFieldsInTree(name) ? 2 : 0) << name.toStdString();
    }
}

// What the tree gives to the editor: one statement, of that very table, as often as it is asked of the server.
TEST_P(HostileNames, WhatTheTreeOffersReachesTheTable)
{
    MakeTables();
    Connect();
    int offered = 0;
    for (const QString &name : m_made) {
        SCOPED_TRACE(name.toStdString());
        SQL->SetText(QString());
        AnswerStructure();
        emit SQL->TV->NodeDblClick(SQL->TV->Nodes().Find(name));
        const QString text = SQL->Text();
        if (text.isEmpty()) {
            EXPECT_TRUE(LastStatus().startsWith(QStringLiteral("The editor cannot hold")))
                << LastStatus().toStdString();
            EXPECT_FALSE(Is(ADODB::DatabaseFamily::PostgreSQL)); // which has a notation for every name
            continue;
        }
        ++offered;
        const QStringList statements = SplitStatements(text);
        ASSERT_EQ(statements.size(), 1) << text.toStdString();
        EXPECT_TRUE(ADODB::IsOneStatement(*m_family, statements.first())) << text.toStdString();
        // The row count of a table that nobody else has.
        m_owner->Execute(QStringLiteral("INSERT INTO %1 VALUES (5, 6)").arg(Quoted(name)));
        EXPECT_EQ(gConn->Execute(statements.first())->RecordCount(), 3) << text.toStdString();
        m_owner->Execute(QStringLiteral("DELETE FROM %1 WHERE h = 5").arg(Quoted(name)));
        SQL->CheckSyntax();
        CloseOthers();
    }
    EXPECT_GE(offered, 30);
    ExpectAllThere();
}

TEST_P(HostileNames, ListsDefinitionAndGeneratorsReadAndRunNothing)
{
    MakeTables();
    Connect();
    int turn = 0;
    for (const QString &name : m_made) {
        SCOPED_TRACE(name.toStdString());
        if (++turn > 30)
            break; // windows take their time
        Pick(name);
        Do("mnuDDL");
        auto *definition = qobject_cast<frmSQL *>(Window->ActiveChild());
        ASSERT_TRUE(definition && definition != SQL);
        const QString text = definition->Text();
        EXPECT_TRUE(text.startsWith(QStringLiteral("CREATE TABLE "))) << text.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("\th "))) << text.toStdString();
        EXPECT_TRUE(text.endsWith(u')')) << text.toStdString();
        EXPECT_TRUE(ADODB::IsOneStatement(*m_family, text)) << text.toStdString();
        EXPECT_EQ(SplitStatements(text).size(), 1) << text.toStdString();
        CloseOthers();
        Pick(name);
        Do("mnuTableFields");
        Pick(name);
        Do("mnuTableIndex");
        Pick(name);
        Do("mnuMask");
        if (auto *mask = Newest<frmScriptMask>()) {
            mask->Run();
            EXPECT_TRUE(mask->txtCode->Text().contains(QStringLiteral("\"h\""))) << mask->txtCode->Text().toStdString();
        } else {
            ADD_FAILURE() << "no mask";
        }
        CloseOthers();
        SQL->SetText(QString());
        Pick(name);
        Do("mnuInsert");
        EXPECT_LE(SplitStatements(SQL->Text()).size(), 1) << SQL->Text().toStdString();
        EXPECT_TRUE(ADODB::IsOneStatement(*m_family, SQL->Text())) << SQL->Text().toStdString();
        SQL->SetText(QString());
        Pick(name);
        Do("mnuEditTable");
        const QString line = SQL->Text().section(QStringLiteral("\r\n"), 1, 1);
        EXPECT_TRUE(ADODB::IsOneStatement(*m_family, line)) << line.toStdString();
        CloseOthers();
    }
    ExpectAllThere();
}

TEST_P(HostileNames, ViewsShowTheirOwnRows)
{
    const QStringList names{QStringLiteral("victim;DELETE/**/FROM/**/victim;--"), QStringLiteral("Order Details"),
                            QStringLiteral("a\"b]c'd"), QStringLiteral("select"), QStringLiteral("a;b")};
    MakeTables();
    for (qsizetype i = 0; i < names.size(); ++i)
        m_owner->Execute(QStringLiteral("CREATE VIEW %1 AS SELECT %2 AS n").arg(Quoted(u'v' + names[i])).arg(i + 100));
    Connect();
    for (qsizetype i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i].toStdString());
        Pick(u'v' + names[i]);
        Do("mnuViewBrowesData");
        auto *grid = Newest<frmGrid>();
        ASSERT_TRUE(grid);
        ASSERT_TRUE(QTest::qWaitFor([&] { return grid->lvResults->Count() == 1; }));
        EXPECT_EQ(grid->lvResults->Text(0), QString::number(i + 100));
        CloseOthers();
        Pick(u'v' + names[i]);
        Do("mnuDropView");
        EXPECT_THROW(m_owner->Execute(QStringLiteral("SELECT * FROM ") + Quoted(u'v' + names[i])), ADODB::Error);
    }
    ExpectAllThere();
}

TEST_P(HostileNames, AnEditMeetsTheTableThatWasPicked)
{
    MakeTables();
    Connect();
    for (const QString &name : std::as_const(m_made)) {
        Pick(name);
        Do("mnuBrowesTable");
        auto *const table = Newest<frmInline>();
        if (table && !table->Rows() && QByteArray(GetParam().name) == "SQLiteOdbc") { // which reads on in the name
            EXPECT_EQ(Dialogs.LastText(), QStringLiteral("Error: [SQLite]only one SQL statement allowed"));
            continue;
        }
        ASSERT_TRUE(table->dg->SetCellText(QStringLiteral("77"))) << name.toStdString();
        Do("mnuSave");
        EXPECT_EQ(m_owner->Execute(QStringLiteral("SELECT sum(h) FROM ") + Quoted(name))->CellText(0, 0), u"80");
    }
    ExpectAllThere();
}

TEST_P(HostileNames, ClearAndDropMeetTheTableThatWasPicked)
{
    MakeTables();
    Connect();
    const QStringList names = m_made;
    QStringList cleared;
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        Pick(name);
        Do("mnuClearTable");
        EXPECT_EQ(Dialogs.LastText(), QStringLiteral("2 rows where affected."));
        EXPECT_EQ(Count(name), QStringLiteral("0"));
        cleared += name;
        if (cleared.size() % 8 == 0)
            ExpectAllThere(cleared);
    }
    ExpectAllThere(cleared);
    for (const QString &name : names)
        m_owner->Execute(QStringLiteral("INSERT INTO %1 VALUES (1, 2), (3, 4)").arg(Quoted(name)));
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        Pick(name);
        Do("mnuDropTable");
        EXPECT_THROW(Count(name), ADODB::Error);
        m_made.removeOne(name);
        if (m_made.size() % 8 == 0)
            ExpectAllThere();
    }
    ExpectAllThere();
}

// Two tables called t. The plain name leads to the first; the second is cleared by its own name.
TEST_P(HostileNames, OfTwoTablesOfOneNameThePickedOneIsMet)
{
    MakeTables();
    if (Is(ADODB::DatabaseFamily::MySQL))
        return; // lists one database's tables at a time
    Connect();
    QString first, second;
    if (IsSqlite()) {
        gConn->Execute(QStringLiteral("CREATE TEMPORARY TABLE victim (h INTEGER)"));
        gConn->Execute(QStringLiteral("ATTACH '%1' AS \"an other\"").arg(Folder.filePath(QStringLiteral("b.sqlite"))));
        gConn->Execute(QStringLiteral("CREATE TABLE \"an other\".twin (h INTEGER)"));
        gConn->Execute(QStringLiteral("CREATE TABLE main.twin (h INTEGER)"));
        first = QStringLiteral("main.twin");
        second = QStringLiteral("\"an other\".twin");
    } else {
        gConn->Execute(QStringLiteral("CREATE SCHEMA \"an other\""));
        gConn->Execute(QStringLiteral("CREATE TABLE \"an other\".twin (h INTEGER)"));
        gConn->Execute(QStringLiteral("CREATE TABLE public.twin (h INTEGER)"));
        first = QStringLiteral("public.twin");
        second = QStringLiteral("\"an other\".twin");
    }
    const auto rows = [](const QString &table) {
        return gConn->Execute(QStringLiteral("SELECT count(*) FROM ") + table)->CellText(0, 0).toInt();
    };
    QStringList cleared;
    for (int number = 0; number < 2; ++number) {
        for (const QString &table : {first, second}) {
            gConn->Execute(QStringLiteral("DELETE FROM ") + table);
            gConn->Execute(QStringLiteral("INSERT INTO %1 VALUES (1)").arg(table));
        }
        Pick(QStringLiteral("twin"), number);
        Do("mnuClearTable");
        EXPECT_EQ(rows(first) + rows(second), 1);
        cleared += rows(first) == 0 ? first : second;
    }
    EXPECT_NE(cleared[0], cleared[1]);
    if (IsSqlite()) {
        // The temporary table is in front of the other one: each is found all the same.
        gConn->Execute(QStringLiteral("INSERT INTO temp.victim VALUES (1)"));
        int answered = 0;
        for (int number = 0; number < 2; ++number) {
            QString type =
                gConn->OpenSchema(ADODB::adSchemaTables, {{}, QStringLiteral("temp"), QStringLiteral("victim"), {}})
                    ->Fields()[QStringLiteral("TABLE_TYPE")]
                    .Text();
            if (number == 1 && type != QLatin1String("TABLE"))
                break; // the picker lists what the rowset calls a table
            Pick(QStringLiteral("victim"), number);
            Do("mnuClearTable");
            ++answered;
            EXPECT_EQ(rows(QStringLiteral("temp.victim")) + rows(QStringLiteral("main.victim")),
                      answered == 2                                                   ? 0
                      : Dialogs.LastText() == QLatin1String("2 rows where affected.") ? 1
                                                                                      : 2);
        }
        EXPECT_GE(answered, 1);
        return;
    }
    // A search path that leads elsewhere, set after the tree was filled.
    gConn->Execute(QStringLiteral("SET search_path TO \"an other\", public"));
    Pick(QStringLiteral("victim"));
    Do("mnuClearTable");
    EXPECT_EQ(Dialogs.LastText(), QStringLiteral("2 rows where affected."));
    Pick(QStringLiteral("twin"), 0);
    Do("mnuClearTable");
    Pick(QStringLiteral("twin"), 1);
    Do("mnuClearTable");
    EXPECT_EQ(rows(first) + rows(second), 0);
}

} // namespace
