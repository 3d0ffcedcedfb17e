#include "controls/TreeView.h"
#include "data/ProbeSQL.h"
#include "data/SchemaLoader.h"
#include "data/frmTree.h"
#include "tests/data/House.h"
#include "tests/support/ScriptedDriver.h"
#include "tests/support/WorkGate.h"
#include <QRegularExpression>

namespace {

QStringList Children(const Node *node)
{
    QStringList texts;
    for (int i = 1; i <= node->Children(); ++i)
        texts << node->Child(i)->Text();
    return texts;
}

class SchemaTest : public DataTest
{
protected:
    void SetUp() override
    {
        m_tree.AddSchemaImages();
        m_root = m_tree.Nodes().Add(nullptr, tvwLast, "Tables", "Tables");
    }
    void Load(const QString &type, Node *parent) { LoadStructure(&m_tree, parent, type, 2, 3, 6); }
    // A scripted schema: rows of (catalogue, schema, name, type), each with the fields a and b.
    void Script(const QList<QStringList> &tables, const QList<QStringList> &procedures = {})
    {
        m_driver.OnCatalogue = [tables, procedures](ADODB::SchemaEnum schema) -> std::unique_ptr<ADODB::ResultSet> {
            if (schema == ADODB::adSchemaTables)
                return std::make_unique<ScriptedRows>(
                    QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"}, tables);
            if (schema == ADODB::adSchemaProcedures && !procedures.isEmpty()) {
                auto rows = std::make_unique<ScriptedRows>(
                    QStringList{"PROCEDURE_SCHEMA", "PROCEDURE_NAME", "PROCEDURE_TYPE"}, procedures);
                rows->SetType(2, ADODB::adSmallInt);
                return rows;
            }
            return nullptr;
        };
        m_driver.OnExecute = [](const QString &sql) {
            if (sql.contains("refused"))
                throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("permission denied"));
            ADODB::ExecuteResult result;
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"a", "b"}, QList<QStringList>{});
            return result;
        };
        ASSERT_TRUE(OpenConnection("Scripted"));
        m_shell.Statuses.clear();
        m_driver.ClearLog();
    }
    ScriptedDriver m_driver;
    TreeView m_tree;
    Node *m_root = nullptr;
};

TEST_F(SchemaTest, TablesWithTheirFields)
{
    OpenSample({"create table b (x int, y text, z blob)", "create table a (only int)",
                "create table [order details] (id int)", "create view v as select x from b"});
    Load("TABLE", m_root);
    EXPECT_EQ(m_root->Tag(), "3");
    EXPECT_EQ(Children(m_root), (QStringList{"a", "b", "order details"}));
    const Node *b = m_tree.Nodes().Item("b");
    EXPECT_EQ(b->Parent(), m_root);
    EXPECT_EQ(b->Tag(), "3");
    EXPECT_EQ(Children(b), (QStringList{"x", "y", "z"}));
    EXPECT_EQ(b->Image(), 2);
    EXPECT_EQ(b->SelectedImage(), 3);
    const Node *y = m_tree.Nodes().Item("b-y");
    EXPECT_EQ(y->Text(), "y");
    EXPECT_EQ(y->Tag(), "");
    EXPECT_EQ(y->Image(), 6);
    EXPECT_EQ(y->SelectedImage(), 6);
    EXPECT_EQ(m_tree.Nodes().Item("order details")->Tag(), "1");
    EXPECT_EQ(m_shell.Statuses, (QStringList{"Loading Structure...", "Structure Loaded."}));
    EXPECT_EQ(gConn->CursorLocation(), 3);
}

TEST_F(SchemaTest, ViewsComeFromTheRowsetOfTheTables)
{
    Script({{"", "", "t", "TABLE"}, {"", "", "v", "VIEW"}});
    Load("table", m_root);
    Node *views = m_tree.Nodes().Add(nullptr, tvwLast, "Views", "Views");
    Load("View", views);
    EXPECT_EQ(Children(views), QStringList{"v"});
    EXPECT_EQ(views->Tag(), "1");
    EXPECT_EQ(m_tree.Nodes().Item("v")->Tag(), "2");
    EXPECT_EQ(m_driver.Log().count("[schema 20]"), 1);
}

TEST_F(SchemaTest, AViewPassAfterAReconnectListsTheFormerConnection)
{
    Script({{"", "", "old", "VIEW"}});
    Load("TABLE", m_root);
    Script({{"", "", "new", "VIEW"}});
    Load("VIEW", m_root);
    EXPECT_EQ(Children(m_root), QStringList{"old"});
}

TEST_F(SchemaTest, SystemSchemasAreLeftOutByTheirExactNames)
{
    Script({{"", "SYS", "one", "TABLE"},
            {"", "OUTLN", "two", "TABLE"},
            {"", "sys", "three", "TABLE"},
            {"", "Outln", "four", "TABLE"},
            {"", QString(), "five", "TABLE"}});
    Load("TABLE", m_root);
    QStringList listed = Children(m_root);
    listed.sort();
    EXPECT_EQ(listed, (QStringList{"five", "four", "three"}));
}

TEST_F(SchemaTest, ADollarNameHasNoFieldsAndIsNotAsked)
{
    Script({{"", "", "a$b", "TABLE"}, {"", "", "plain", "TABLE"}});
    Load("TABLE", m_root);
    EXPECT_EQ(m_root->Tag(), "2");
    const Node *dollar = m_tree.Nodes().Item("a$b");
    EXPECT_EQ(dollar->Tag(), "");
    EXPECT_EQ(dollar->Children(), 0);
    EXPECT_EQ(m_driver.Log().filter("SELECT"), QStringList{"SELECT * FROM plain where 0=1"});
}

TEST_F(SchemaTest, ARefusedObjectHasNoChildrenAndNoMessage)
{
    Script({{"", "", "refused", "TABLE"}, {"", "", "given", "TABLE"}});
    Load("TABLE", m_root);
    EXPECT_EQ(m_tree.Nodes().Item("refused")->Children(), 0);
    EXPECT_EQ(m_tree.Nodes().Item("refused")->Tag(), "");
    EXPECT_EQ(m_tree.Nodes().Item("given")->Tag(), "2");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

TEST_F(SchemaTest, ANameThatIsThereGivesItsFieldsToTheObjectBefore)
{
    Script({{"", "x", "t", "TABLE"}, {"", "y", "u", "TABLE"}, {"", "z", "t", "TABLE"}});
    int asked = 0;
    m_driver.OnExecute = [&](const QString &) {
        ADODB::ExecuteResult result;
        const QStringList third = ++asked == 3 ? QStringList{"a", "b", "c"} : QStringList{"a", "b"};
        result.Rows = std::make_unique<ScriptedRows>(third, QList<QStringList>{});
        return result;
    };
    Load("TABLE", m_root);
    EXPECT_EQ(Children(m_root), (QStringList{"t", "u"}));
    EXPECT_EQ(m_root->Tag(), "3"); // the counter rises all the same
    EXPECT_EQ(Children(m_tree.Nodes().Item("t")), (QStringList{"a", "b"}));
    EXPECT_EQ(Children(m_tree.Nodes().Item("u")), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(m_tree.Nodes().Item("u")->Tag(), "3");
}

TEST_F(SchemaTest, ATableCalledLikeTheRootIsNotAdded)
{
    Script({{"", "", "Tables", "TABLE"}});
    Load("TABLE", m_root);
    EXPECT_EQ(m_root->Children(), 0);
    EXPECT_EQ(m_root->Tag(), "1");
}

TEST_F(SchemaTest, ProceduresAreThreeAndFunctionsOne)
{
    Script({}, {{"", "p", "3"}, {"", "f", "1"}, {"SYS", "hidden", "3"}, {"", "other", "2"}});
    Load("PROCEDURE", m_root);
    EXPECT_EQ(Children(m_root), QStringList{"p"});
    EXPECT_EQ(m_tree.Nodes().Item("p")->Tag(), "");
    Node *functions = m_tree.Nodes().Add(nullptr, tvwLast, "Functions", "Functions");
    Load("FUNCTION", functions);
    EXPECT_EQ(Children(functions), QStringList{"f"});
    EXPECT_TRUE(m_driver.Log().filter("SELECT").isEmpty());
}

TEST_F(SchemaTest, WithoutProceduresNothingIsAdded)
{
    OpenSample({"create table t (a int)"});
    Load("TABLE", m_root);
    Node *procedures = m_tree.Nodes().Add(nullptr, tvwLast, "Procedures", "Procedures");
    Load("PROCEDURE", procedures);
    EXPECT_EQ(procedures->Children(), 0);
    EXPECT_EQ(procedures->Tag(), "0");
    EXPECT_EQ(m_shell.Status(), "Structure Loaded.");
    EXPECT_EQ(gConn->CursorLocation(), 3);
}

TEST_F(SchemaTest, AnotherTypeDoesNothingButTheStatus)
{
    OpenSample({"create table t (a int)"});
    m_root->SetTag("kept");
    Load("SYNONYM", m_root);
    EXPECT_EQ(m_root->Tag(), "kept");
    EXPECT_EQ(m_root->Children(), 0);
    EXPECT_EQ(m_shell.Statuses, (QStringList{"Loading Structure...", "Structure Loaded."}));
}

TEST_F(SchemaTest, WithoutAParentObjectsStandAtTheRoot)
{
    OpenSample({"create table t (a int)"});
    Load("TABLE", nullptr);
    EXPECT_EQ(m_tree.Nodes().Item("t")->Parent(), nullptr);
    EXPECT_EQ(m_root->Tag(), "");
}

TEST_F(SchemaTest, WithoutAConnectionOnlyTheMessage)
{
    Load("TABLE", m_root);
    EXPECT_EQ(m_boxes.LastTitle(), "Conection");
    EXPECT_TRUE(m_shell.Statuses.isEmpty());
    EXPECT_EQ(m_root->Children(), 0);
}

TEST_F(SchemaTest, NamesAreData)
{
    // Each of these parsed, and its second statement ran with the connecting: names that the parser refuses first show
    // nothing.
    const QString file = Path("made.db");
    const QStringList names{"t;DELETE/**/FROM/**/t;--",
                            "t;DROP/**/TABLE/**/t;--",
                            "t;ATTACH'" + file + "'AS/**/x;CREATE/**/TABLE/**/x.y(a);--",
                            "a\"b]c'd",
                            "it's; drop table t",
                            "t where 1=0; delete from t; select * from t"};
    OpenSample({"create table t (a int)", "insert into t values (1), (2)"});
    for (const QString &name : names)
        gConn->Execute("create table \"" + QString(name).replace('"', "\"\"") + "\" (h int, i int)");
    Load("TABLE", m_root);
    EXPECT_EQ(m_root->Tag(), "7");
    for (const QString &name : names)
        EXPECT_EQ(Children(m_tree.Nodes().Item(name)), (QStringList{"h", "i"})) << name;
    EXPECT_EQ(gConn->Execute("select count(*) from t")->CellText(0, 0), "2");
    EXPECT_FALSE(QFile::exists(file));
}

// What is asked by a SELECT reaches the object too: where the catalogue does not answer, the names go in quotes.
TEST_F(SchemaTest, NamesAreDataWhereEachIsAsked)
{
    Script({{"", "", "t;DELETE/**/FROM/**/t;--", "TABLE"}, {"", "", "order", "TABLE"}, {"", "", "t", "TABLE"}});
    Load("TABLE", m_root);
    QStringList asked = m_driver.Log().filter("SELECT");
    asked.sort();
    EXPECT_EQ(asked,
              (QStringList{"SELECT * FROM \"order\" where 0=1", "SELECT * FROM \"t;DELETE/**/FROM/**/t;--\" where 0=1",
                           "SELECT * FROM t where 0=1"}));
}

// Two objects of one name: the node knows which of them it is.
TEST_F(SchemaTest, ANodeKnowsItsObject)
{
    m_driver.FamilyIs = ADODB::DatabaseFamily::PostgreSQL;
    Script({});
    m_driver.OnExecute = [](const QString &sql) {
        ADODB::ExecuteResult result;
        if (sql.contains("TABLE_TYPE"))
            result.Rows = std::make_unique<ScriptedRows>(
                QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"},
                QList<QStringList>{{"db", "one", "t", "TABLE"}, {"db", "two", "u", "TABLE"}});
        else if (sql.contains("pg_table_is_visible"))
            result.Rows = std::make_unique<ScriptedRows>(
                QStringList{"n", "r", "s", "v"}, QList<QStringList>{{"one", "t", "0", "1"}, {"two", "u", "0", "0"}});
        else
            result.Rows = std::make_unique<ScriptedRows>(QStringList{"a"}, QList<QStringList>{});
        return result;
    };
    Load("TABLE", m_root);
    EXPECT_EQ(ObjectOf(m_tree.Nodes().Item("t")), (ADODB::ObjectName{"db", "one", "t"}));
    EXPECT_EQ(ObjectOf(m_tree.Nodes().Item("u")), (ADODB::ObjectName{"db", "two", "u"}));
    EXPECT_EQ(m_driver.Log().filter("where 0=1"),
              (QStringList{"SELECT * FROM t where 0=1", "SELECT * FROM two.u where 0=1"}));
}

// A server that can say what the plain name finds is asked three questions, however many tables there are.
TEST_F(SchemaTest, OneQuestionAnswersForAllTables)
{
    QList<QStringList> tables, columns, readable;
    for (int i = 0; i < 40; ++i) {
        const QString name = QStringLiteral("t%1").arg(i);
        tables << QStringList{"db", "public", name, "TABLE"};
        // Columns come in any order; the position decides.
        columns << QStringList{"db", "public", name, "second", "2"} << QStringList{"db", "public", name, "first", "1"};
        readable << QStringList{"public", name, i == 7 ? "0" : "1", "1"};
    }
    tables << QStringList{"db", "other", "t1", "VIEW"};
    m_driver.FamilyIs = ADODB::DatabaseFamily::PostgreSQL;
    Script({});
    m_driver.OnExecute = [=](const QString &sql) {
        ADODB::ExecuteResult result;
        if (sql.contains("has_table_privilege")) {
            result.Rows =
                std::make_unique<ScriptedRows>(QStringList{"nspname", "relname", "readable", "visible"}, readable);
        } else if (sql.contains("TABLE_TYPE")) {
            result.Rows = std::make_unique<ScriptedRows>(
                QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"}, tables);
        } else if (sql.contains("ORDINAL_POSITION")) {
            auto rows = std::make_unique<ScriptedRows>(
                QStringList{"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "COLUMN_NAME", "ORDINAL_POSITION"}, columns);
            rows->SetType(4, ADODB::adInteger);
            result.Rows = std::move(rows);
        } else if (sql.contains("FROM t7 ")) {
            throw ADODB::Error(ADODB::adErrProviderFailed, QStringLiteral("permission denied for table t7"));
        }
        return result;
    };
    Load("TABLE", m_root);
    EXPECT_EQ(m_root->Tag(), "40");
    EXPECT_EQ(Children(m_tree.Nodes().Item("t3")), (QStringList{"first", "second"}));
    EXPECT_EQ(m_tree.Nodes().Item("t3")->Tag(), "2");
    EXPECT_EQ(m_tree.Nodes().Item("t7")->Children(), 0); // not readable: the SELECT decided
    EXPECT_EQ(m_driver.Log().filter("where 0=1"), QStringList{"SELECT * FROM t7 where 0=1"});
}

TEST_F(SchemaTest, WindowsPaintAndEscapeStops)
{
    QList<QStringList> tables;
    for (int i = 0; i < 200; ++i)
        tables << QStringList{"", "", QStringLiteral("t%1").arg(i), "TABLE"};
    Script(tables);
    // Escape comes while the twentieth table is asked, and before it answers.
    WorkGate gate;
    std::atomic<int> asked = 0;
    m_driver.OnExecute = [&](const QString &) {
        if (++asked == 20)
            gate.Pass();
        ADODB::ExecuteResult result;
        result.Rows = std::make_unique<ScriptedRows>(QStringList{"a"}, QList<QStringList>{});
        return result;
    };
    m_tree.show();
    int rounds = 0; // of the event loop while the table is asked
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++rounds < 10)
            return;
        timer.stop();
        QTest::keyClick(&m_tree, Qt::Key_Escape);
        gate.Open();
    });
    gate.WhenReached([&] { timer.start(0); }, false);
    Load("TABLE", m_root);
    EXPECT_EQ(rounds, 10);
    EXPECT_LE(m_driver.Log().filter("SELECT").size(), 21);
    EXPECT_EQ(m_shell.Status(), "Structure Loaded.");
    EXPECT_EQ(gConn->CursorLocation(), 3);
    EXPECT_EQ(gConn->State(), ADODB::adStateOpen);
}

// 2,000 tables of 10 columns: the windows go on, what is done of it is told, and Escape leaves what is there.
TEST_F(SchemaTest, AWideSchemaFillsWithProgressWhileTheWindowsPaint)
{
    QList<QStringList> tables;
    QStringList fields;
    for (int i = 0; i < 2000; ++i)
        tables << QStringList{"", "", QStringLiteral("t%1").arg(i), "TABLE"};
    for (int i = 0; i < 10; ++i)
        fields << QStringLiteral("field %1").arg(i);
    Script(tables);
    m_driver.OnExecute = [fields](const QString &) {
        ADODB::ExecuteResult result;
        result.Rows = std::make_unique<ScriptedRows>(fields, QList<QStringList>{});
        return result;
    };
    m_tree.show();
    int rounds = 0; // of the event loop; bench/bench_tree.cpp measures the time between them
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++rounds; });
    timer.start(0);
    EXPECT_TRUE(LoadStructure(&m_tree, m_root, "TABLE", 2, 3, 6));
    EXPECT_GT(rounds, 5);
    timer.stop();
    EXPECT_EQ(m_root->Tag(), "2000");
    EXPECT_EQ(m_tree.Nodes().Count(), 1 + 2000 * 11);
    const QStringList told =
        m_shell.Statuses.filter(QRegularExpression("^Loading Structure\\.\\.\\. \\d+ of 2000 \\(Esc cancels\\)$"));
    EXPECT_GE(told.size(), 19); // while the tree is built; and while the tables are asked
    EXPECT_EQ(m_shell.Status(), "Structure Loaded.");

    // Again, stopped while it is built.
    m_tree.Nodes().Clear();
    m_root = m_tree.Nodes().Add(nullptr, tvwLast, "Tables", "Tables");
    QTimer stop;
    QObject::connect(&stop, &QTimer::timeout, [&] {
        if (m_tree.Nodes().Count() > 1000)
            QTest::keyClick(&m_tree, Qt::Key_Escape);
    });
    stop.start(0);
    EXPECT_FALSE(LoadStructure(&m_tree, m_root, "TABLE", 2, 3, 6));
    EXPECT_GT(m_root->Tag().toInt(), 50);
    EXPECT_LT(m_root->Tag().toInt(), 2000);
    EXPECT_EQ(m_root->Tag().toInt(), m_root->Children());
    EXPECT_EQ(m_shell.Status(), "Structure Loaded.");
}

TEST_F(SchemaTest, ATreeThatGoesMeanwhileIsSurvived)
{
    QList<QStringList> tables;
    for (int i = 0; i < 50; ++i)
        tables << QStringList{"", "", QStringLiteral("t%1").arg(i), "TABLE"};
    Script(tables);
    auto *tree = new TreeView;
    WorkGate gate;
    gate.WhenReached([&] { delete tree; });
    std::atomic<int> asked = 0;
    m_driver.OnExecute = [&](const QString &) {
        if (++asked == 10)
            gate.Pass();
        return ADODB::ExecuteResult();
    };
    LoadStructure(tree, nullptr, "TABLE", 1, 1, 2);
    EXPECT_TRUE(gate.Reached());
    EXPECT_EQ(m_shell.Status(), "Structure Loaded.");
}

TEST_F(SchemaTest, TheTreeWindowLoadsSavesAndFollows)
{
    OpenSample({"create table a (x int, y int)", "create table b (z int)"});
    auto *tree = new frmTree;
    EXPECT_EQ(tree->Tag, "1");
    tree->ShowChild();
    ASSERT_TRUE(Until([&] { return tree->tvTree->Nodes().Count() == 5; }));
    const Node *a = tree->tvTree->Nodes().Item("a");
    EXPECT_EQ(a->Parent(), nullptr);
    EXPECT_EQ(a->Image(), 1);
    EXPECT_EQ(a->SelectedImage(), 2);
    EXPECT_EQ(tree->tvTree->Nodes().Item("a-x")->Image(), 3);
    m_boxes.Files << Path("tree.csv");
    tree->mnuSave();
    EXPECT_EQ(Read(Path("tree.csv")), "Table,Field,\r\na,x,\r\na,y,\r\nb,z,\r\n");
    EXPECT_EQ(m_boxes.FileDialogs.last().Title, "Save CSV File");
    EXPECT_EQ(m_boxes.FileDialogs.last().DefaultExt, "CSV");
    EXPECT_EQ(m_boxes.FileDialogs.last().Filter, "Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt");
    Write(Path("tree.csv"), "former");
    m_boxes.Files << Path("tree.csv");
    m_boxes.Answers << mbNo;
    tree->mnuSave();
    EXPECT_EQ(m_boxes.LastText(), "This file name already exists. Are you sure you want to overwrite this file?");
    EXPECT_EQ(m_boxes.Boxes.last().Buttons, mbYesNo);
    EXPECT_EQ(Read(Path("tree.csv")), "former");
    gConn->Execute("drop table b");
    tree->RefreshForm("again");
    EXPECT_EQ(tree->tvTree->Nodes().Count(), 3);
}

TEST_F(SchemaTest, Probing)
{
    EXPECT_EQ(ProbeSQL("select 1"), nullptr); // no connection
    OpenSample({});
    const auto rows = ProbeSQL("select 1 as one, 2 as two");
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->ColumnCount(), 2);
    EXPECT_EQ(ProbeSQL("select nonsense from nowhere"), nullptr);
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
}

} // namespace
