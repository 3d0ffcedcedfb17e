// The join editors on real servers, which read names and statements in brackets in ways of their own.

#include "tests/visual/windows/MapFixture.h"
#include "visual/frmJoin.h"
#include "visual/ucJoin.h"
#include <QComboBox>

namespace {

struct JoinPlace
{
    const char *name;
    const char *variable;
    const char *quote;
};

void PrintTo(const JoinPlace &server, std::ostream *out)
{
    *out << server.name;
}

QString TextOf(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts.join(',');
}

// On tables that end with the connection.
class JoinServer : public MapTest, public testing::WithParamInterface<JoinPlace>
{
protected:
    using DataTest::Click;
    void SetUp() override
    {
        const QString text = qEnvironmentVariable(GetParam().variable);
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        ASSERT_TRUE(OpenConnection(text)) << LastOpenError();
        Run({"CREATE TEMPORARY TABLE join_orders (id int, customer int, note varchar(20))",
             "CREATE TEMPORARY TABLE join_items (price int, id int)",
             "CREATE TEMPORARY TABLE " + Quoted("Order Details") + " (x int, " + Quoted("Unit Price") + " int)"});
    }
    void TearDown() override
    {
        MapTest::TearDown();
        gConn.reset();
    }
    static bool IsPostgres() { return QLatin1String(GetParam().name) == QLatin1String("PostgreSQL"); }
    static QString Quoted(const QString &name) { return GetParam().quote + name + GetParam().quote; }
    static void Run(const QStringList &statements)
    {
        for (const QString &sql : statements)
            ASSERT_NO_THROW(gConn->Execute(sql)) << sql;
    }
};

} // namespace

TEST_P(JoinServer, ReadsTheFieldsOfATable)
{
    frmJoin form;
    form.LoadFields("join_orders", "join_orders", 0);
    form.LoadFields("Order Details", "Order Details", 1);
    EXPECT_EQ(TextOf(form.cmbField[0]), "id,customer,note");
    EXPECT_EQ(TextOf(form.cmbField[1]), "x,Unit Price");
    form.LoadFields("join_nowhere", "join_nowhere", 1);
    EXPECT_EQ(TextOf(form.cmbField[1]), "");
}

// Both refuse a statement in brackets that has no name behind it, and its list stayed empty.
TEST_P(JoinServer, ReadsTheFieldsOfAStatement)
{
    frmJoin form;
    form.LoadFields("SELECT id AS number, note FROM join_orders", "first", 0);
    form.LoadFields("SELECT i.*, 1 AS one FROM join_items i WHERE price > 3", "second", 1);
    EXPECT_EQ(TextOf(form.cmbField[0]), "number,note");
    EXPECT_EQ(TextOf(form.cmbField[1]), "price,id,one");
    form.LoadFields("SELECT nothing FROM join_orders", "refused", 1);
    EXPECT_EQ(TextOf(form.cmbField[1]), "");
    form.LoadFields("SELECT 1) a; DROP TABLE join_orders; SELECT (1", "two at once", 1);
    EXPECT_EQ(TextOf(form.cmbField[1]), "");
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM join_orders"));
}

TEST_P(JoinServer, JoinsTwoTablesOfAMap)
{
    Show({"join_orders", "Order Details"});
    AskWithJoinDialog(*map);
    WithDialog([](QWidget *dialog) {
        auto *form = qobject_cast<frmJoin *>(dialog);
        ASSERT_NE(form, nullptr);
        QTest::keyClick(form->cmbField[0], Qt::Key_Down);
        Click(dialog, "cmdOK");
    });
    Drag(Item(1, 2), BlankOf(2));
    ASSERT_EQ(map->Joins().Rows().size(), 1u);
    const QString sql = "SELECT * FROM " + map->GetTableList() + " WHERE " + map->GetJoinStatement(false);
    EXPECT_NO_THROW(gConn->Execute(sql)) << sql;
    EXPECT_EQ(map->Joins().Rows()[0].Field1, "customer");
}

TEST_P(JoinServer, ReadsTheVeryTableOfTwoThatShareAName)
{
    if (!IsPostgres())
        GTEST_SKIP() << "no schemas in a database here";
    const QString schema = QString("joins_%1").arg(QCoreApplication::applicationPid());
    Run({"CREATE SCHEMA " + schema, "CREATE TABLE " + schema + ".join_orders (key int, word int)"});
    Show({"join_items"});
    const MapTable *placed = map->AddTable(ADODB::ObjectName{{}, schema, "join_orders"});
    ASSERT_NE(placed, nullptr);
    PutAt(placed->Index, {400, 40});
    AskWithJoinDialog(*map);
    QString fields, name;
    WithDialog([&](QWidget *dialog) {
        const auto *form = qobject_cast<frmJoin *>(dialog);
        ASSERT_NE(form, nullptr);
        fields = TextOf(form->cmbField[1]);
        name = form->txtTable2->text();
        Click(dialog, "cmdOK");
    });
    Drag(Item(1, 2), BlankOf(2));
    EXPECT_EQ(fields, "key,word"); // not id, customer, note
    EXPECT_EQ(name, schema + ".join_orders");
    Run({"DROP SCHEMA " + schema + " CASCADE"});
}

TEST_P(JoinServer, FillsTheListsOfAStep)
{
    ucJoin step;
    step.SetPreviousTag("SELECT id, note FROM join_orders");
    EXPECT_EQ(TextOf(step.cmbField[0]), "id,note");
    step.SetPreviousTag("join_orders");
    EXPECT_EQ(TextOf(step.cmbField[0]), "id,customer,note");
    const auto type = [&](const QString &text) {
        step.cmbTable->lineEdit()->selectAll();
        QTest::keyClicks(step.cmbTable->lineEdit(), text);
        QTest::keyClick(step.cmbTable->lineEdit(), Qt::Key_Return);
    };
    type("join_items");
    EXPECT_EQ(TextOf(step.cmbField[1]), "price,id");
    EXPECT_EQ(step.GetSQL(), "join_orders T1 Inner Join join_items T2 ON ( T1.id= T2.id)");
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM " + step.GetSQL()));
    type("select price as p from join_items");
    EXPECT_EQ(TextOf(step.cmbField[1]), "p");
    type("Order Details");
    EXPECT_EQ(TextOf(step.cmbField[1]), "x,Unit Price");
}

INSTANTIATE_TEST_SUITE_P(Servers, JoinServer,
                         testing::Values(JoinPlace{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", "\""},
                                         JoinPlace{"MariaDB", "BRINDLEWICK_TEST_MARIADB", "`"}),
                         [](const auto &test) { return std::string(test.param.name); });
