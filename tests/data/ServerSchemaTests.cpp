// The schema loader on real servers: whichever way the fields were read, the tree says what a SELECT on each table
// says.
#include "controls/TreeView.h"
#include "data/ProbeSQL.h"
#include "data/SchemaFields.h"
#include "data/SchemaLoader.h"
#include "tests/data/House.h"
#include <QRegularExpression>

namespace {

struct Server
{
    const char *name;
    const char *variable;
    const char *quote;
};

void PrintTo(const Server &server, std::ostream *out)
{
    *out << server.name;
}

class ServerSchemaTest : public DataTest, public testing::WithParamInterface<Server>
{
protected:
    void SetUp() override
    {
        const QString text = qEnvironmentVariable(GetParam().variable);
        if (text.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        // A database of its own: other tests make and drop tables on the same server meanwhile.
        m_admin = OpenExtraConnection(text);
        ASSERT_NE(m_admin, nullptr);
        m_place = QStringLiteral("schema_%1").arg(QCoreApplication::applicationPid());
        ASSERT_NO_THROW(m_admin->Execute("CREATE DATABASE " + m_place));
        QString own = text;
        own.replace(QRegularExpression("Database=[^;]*"), "Database=" + m_place);
        ASSERT_TRUE(OpenConnection(own)) << LastOpenError();
        for (const QString &name : Names())
            ASSERT_NO_THROW(
                gConn->Execute("CREATE TABLE " + Quoted(name) + " (zulu int, alpha varchar(20), mike int)"));
        ASSERT_NO_THROW(gConn->Execute("CREATE VIEW schema_view AS SELECT zulu, mike FROM schema_a"));
        gKeywordSet = KeywordSet({"SELECT", "ORDER", "USER", "GROUP"});
    }
    void TearDown() override
    {
        gConn.reset();
        if (!m_admin || m_place.isEmpty())
            return;
        EXPECT_NO_THROW(m_admin->Execute("DROP DATABASE " + m_place));
    }
    ADODB::ConnectionPtr m_admin;
    QString m_place;
    static QString Quoted(const QString &name)
    {
        const QString quote = QLatin1String(GetParam().quote);
        return quote + name + quote;
    }
    static QStringList Names()
    {
        return {"schema_a", "schema_b", "Schema_Capital", "schema blank", "user", "order", "schema$dollar"};
    }
    static QStringList Children(const Node *node)
    {
        QStringList texts;
        for (int i = 1; i <= node->Children(); ++i)
            texts << node->Child(i)->Text();
        return texts;
    }
};

TEST_P(ServerSchemaTest, TheTreeSaysWhatASelectSays)
{
    for (const char *type : {"TABLE", "VIEW"}) {
        TreeView tree;
        if (QLatin1String(type) == QLatin1String("VIEW")) {
            TreeView first;
            LoadStructure(&first, nullptr, "TABLE", 0, 0, 0);
        }
        LoadStructure(&tree, nullptr, type, 0, 0, 0);
        int objects = 0;
        for (int i = 1; i <= tree.Nodes().Count(); ++i) {
            const Node *node = tree.Nodes().Item(i);
            if (node->Parent())
                continue;
            ++objects;
            QStringList wanted;
            QString tag;
            const auto rows =
                node->Text().contains('$') ? nullptr : ProbeSQL("SELECT * FROM " + Quoted(node->Text()) + " where 0=1");
            if (rows) {
                for (int column = 0; column < rows->ColumnCount(); ++column)
                    wanted << rows->Column(column).Name;
                tag = QString::number(rows->ColumnCount());
            }
            EXPECT_EQ(Children(node), wanted) << type << " " << node->Text();
            EXPECT_EQ(node->Tag(), tag) << type << " " << node->Text();
        }
        if (QLatin1String(type) == QLatin1String("VIEW"))
            EXPECT_NE(tree.Nodes().Find("schema_view"), nullptr);
        else
            for (const QString &name : Names())
                EXPECT_NE(tree.Nodes().Find(name), nullptr) << name;
        EXPECT_GT(objects, 0);
    }
}

// Names that need quotes too: they were left to a SELECT each, which ran what stood in them.
TEST_P(ServerSchemaTest, TablesAreAnsweredTogether)
{
    const std::atomic<bool> stop = false;
    SchemaFields fields(gConn, stop);
    fields.ReadAll();
    const QStringList known = fields.Known();
    EXPECT_TRUE(known.contains("schema_a")) << known.join(' ');
    EXPECT_TRUE(known.contains("schema_b")) << known.join(' ');
    for (const char *name : {"schema blank", "user", "order", "Schema_Capital"})
        EXPECT_TRUE(known.contains(name)) << name;
}

INSTANTIATE_TEST_SUITE_P(Servers, ServerSchemaTest,
                         testing::Values(Server{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", "\""},
                                         Server{"MariaDB", "BRINDLEWICK_TEST_MARIADB", "`"}),
                         [](const auto &server) { return std::string(server.param.name); });

} // namespace
