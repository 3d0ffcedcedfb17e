// The map on real servers: keys over two columns and in circles, names that need the server's own quotes, one name in
// two schemas.

#include "tests/visual/windows/MapFixture.h"
#include <QRegularExpression>

namespace {

struct ServerOfMap
{
    const char *name;
    const char *variable;
    const char *quote;
};

void PrintTo(const ServerOfMap &server, std::ostream *out)
{
    *out << server.name;
}

class MapServer : public MapTest, public testing::WithParamInterface<ServerOfMap>
{
protected:
    ADODB::ConnectionPtr m_admin;
    QString m_place;

    void SetUp() override
    {
        const QString text = qEnvironmentVariable(GetParam().variable);
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        m_admin = OpenExtraConnection(text);
        ASSERT_NE(m_admin, nullptr);
        m_place = QStringLiteral("map_%1").arg(QCoreApplication::applicationPid());
        ASSERT_NO_THROW(m_admin->Execute("CREATE DATABASE " + m_place));
        QString own = text;
        own.replace(QRegularExpression("Database=[^;]*"), "Database=" + m_place);
        ASSERT_TRUE(OpenConnection(own)) << LastOpenError();
    }
    void TearDown() override
    {
        MapTest::TearDown();
        gConn.reset();
        if (m_admin && !m_place.isEmpty()) {
            EXPECT_NO_THROW(m_admin->Execute("DROP DATABASE " + m_place));
        }
    }
    static QString Quoted(const QString &name)
    {
        const QString quote = QLatin1String(GetParam().quote);
        return quote + QString(name).replace(quote, quote + quote) + quote;
    }
    void Run(const QStringList &statements)
    {
        for (const QString &sql : statements)
            ASSERT_NO_THROW(gConn->Execute(sql)) << sql;
    }
};

} // namespace

TEST_P(MapServer, BringsEveryKeyOnceAndAStatementThatRuns)
{
    Run({"CREATE TABLE parent (a int, b int, PRIMARY KEY (a, b))",
         "CREATE TABLE child (id int PRIMARY KEY, pa int, pb int, boss int, FOREIGN KEY (pa, pb) REFERENCES parent "
         "(a, b), FOREIGN KEY (boss) REFERENCES child (id))",
         "CREATE TABLE left_one (id int PRIMARY KEY, r int)",
         "CREATE TABLE right_one (id int PRIMARY KEY, l int, FOREIGN KEY (l) REFERENCES left_one (id))",
         "ALTER TABLE left_one ADD FOREIGN KEY (r) REFERENCES right_one (id)"});
    Show({}, false);
    map->AddAll();
    EXPECT_EQ(map->Tables().Numbers().size(), 4u);
    EXPECT_EQ(map->Joins().Rows().size(), 5u);
    const QString sql = "SELECT * FROM " + map->GetTableList() + " WHERE " + map->GetJoinStatement(false);
    EXPECT_NO_THROW(gConn->Execute(sql)) << sql;
}

TEST_P(MapServer, ReachesTheVeryTableWhateverItsName)
{
    const QStringList names = {"a\"b]c'd", "Order Details", "select", "Capital", QString::fromUtf8("שלום")};
    for (const QString &name : names)
        Run({"CREATE TABLE " + Quoted(name) + " (x int)"});
    Show();
    for (const QString &name : names)
        ASSERT_NE(map->AddTable(name), nullptr) << name;
    QStringList aliases;
    for (int index : map->Tables().Numbers())
        aliases << map->lvTable(index)->Alias;
    EXPECT_EQ(aliases, names);
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM " + map->GetTableList())) << map->GetTableList();
    for (const QString &name : names)
        EXPECT_NO_THROW(gConn->Execute("SELECT " + map->StatementName(name) + ".x FROM " + map->StatementName(name)));
}

TEST_P(MapServer, BringsAHugeSchemaByTheCatalogue)
{
    QStringList statements = {"CREATE TABLE hub (id int PRIMARY KEY)"};
    for (int i = 0; i < 60; ++i)
        statements << QString("CREATE TABLE spoke_%1 (id int, hub int, FOREIGN KEY (hub) REFERENCES hub (id))").arg(i);
    Run(statements);
    Show({}, false);
    map->AddAll();
    EXPECT_EQ(map->Tables().Numbers().size(), 61u);
    EXPECT_EQ(map->Joins().Rows().size(), 60u);
    for (int index : map->Tables().Numbers())
        EXPECT_EQ(map->lvTable(index)->Items.back().Text, map->lvTable(index)->Tag == "hub" ? "id" : "hub");
}

TEST_P(MapServer, TellsTwoTablesOfOneNameApart)
{
    if (QLatin1String(GetParam().name) != QLatin1String("PostgreSQL"))
        GTEST_SKIP() << "no schemas in a database here";
    Run({"CREATE SCHEMA other", "CREATE TABLE orders (id int PRIMARY KEY)",
         "CREATE TABLE other.orders (key int PRIMARY KEY)",
         "CREATE TABLE items (o int REFERENCES orders (id), k int REFERENCES other.orders (key))"});
    Show({}, false);
    map->AddAll();
    ASSERT_EQ(map->Tables().Numbers().size(), 3u);
    EXPECT_EQ(map->Joins().Rows().size(), 2u);
    const MapTable *plain = nullptr, *placed = nullptr;
    for (int index : map->Tables().Numbers()) {
        plain = map->lvTable(index)->Tag == "orders" ? map->lvTable(index) : plain;
        placed = map->lvTable(index)->Tag == "other.orders" ? map->lvTable(index) : placed;
    }
    ASSERT_NE(plain, nullptr);
    ASSERT_NE(placed, nullptr);
    EXPECT_EQ(plain->Items.back().Text, "id");
    EXPECT_EQ(placed->Items.back().Text, "key");
    for (const MapJoin &row : map->Joins().Rows())
        EXPECT_FALSE(map->PF(row.Index)->IsEmpty());
    const QString sql = "SELECT * FROM " + map->GetTableList() + " WHERE " + map->GetJoinStatement(false);
    EXPECT_NO_THROW(gConn->Execute(sql)) << sql;
}

TEST_P(MapServer, BringsNoBoxForATableWithoutRights)
{
    if (QLatin1String(GetParam().name) != QLatin1String("PostgreSQL"))
        GTEST_SKIP() << "the rights of roles are asked on the other server";
    Run({"CREATE TABLE hidden (id int PRIMARY KEY)", "CREATE TABLE open_one (id int PRIMARY KEY)",
         "CREATE TABLE middle_one (h int REFERENCES hidden (id), o int REFERENCES open_one (id))",
         "DROP ROLE IF EXISTS map_reader", "CREATE ROLE map_reader",
         "GRANT SELECT ON open_one, middle_one TO map_reader", "SET ROLE map_reader"});
    Show({}, false);
    EXPECT_EQ(map->AddTable("hidden"), nullptr);
    map->AddAll();
    for (int index : map->Tables().Numbers())
        EXPECT_NE(map->lvTable(index)->Tag, "hidden");
    Run({"RESET ROLE", "DROP OWNED BY map_reader", "DROP ROLE map_reader"});
}

// Both refuse a statement in brackets that has no name behind it, and no box came.
TEST_P(MapServer, ShowsAStatementThatTheServerWantsANameFor)
{
    Run({"CREATE TABLE plain (id int, note varchar(20))"});
    Show();
    const MapTable *table = map->AddTable("SELECT id AS number, note FROM plain");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->Items.size(), 3u);
    EXPECT_EQ(table->Items[1].Text, "number");
    EXPECT_EQ(map->AddTable("SELECT nothing FROM plain"), nullptr);
    EXPECT_EQ(map->AddTable("SELECT 1) a; DROP TABLE plain; SELECT (1"), nullptr);
    EXPECT_NO_THROW(gConn->Execute("SELECT * FROM plain"));
}

INSTANTIATE_TEST_SUITE_P(Servers, MapServer,
                         testing::Values(ServerOfMap{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", "\""},
                                         ServerOfMap{"MariaDB", "BRINDLEWICK_TEST_MARIADB", "`"}),
                         [](const auto &server) { return std::string(server.param.name); });
