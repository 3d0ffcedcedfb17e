// Runs on real servers, with two windows and two connections: nothing of one reaches the other.
#include "AnalyzerFixture.h"
#include <QCoreApplication>
#include <QRegularExpression>
#include <QTimer>

namespace {

struct RunServer
{
    const char *name;
    const char *variable;
    const char *sleep;   // the expression that waits for %1 seconds
    const char *running; // gives a row while another session runs a statement with these words
};

void PrintTo(const RunServer &server, std::ostream *out)
{
    *out << server.name;
}

class OwnRunServers : public Analyzer, public testing::WithParamInterface<RunServer>
{
protected:
    void SetUp() override
    {
        Analyzer::SetUp();
        const QString server = qEnvironmentVariable(GetParam().variable);
        if (server.isEmpty()) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam().variable << " is not set";
            GTEST_SKIP() << "no server here";
        }
        m_admin = Open(server);
        m_text = server;
        m_text.replace(QRegularExpression(QStringLiteral("Database=[^;]*")), QStringLiteral("Database=") + Place(1));
        for (const int place : {1, 2}) {
            m_admin->Execute(QStringLiteral("CREATE DATABASE ") + Place(place));
            gConn = Open(QString(m_text).replace(Place(1), Place(place)));
            gConn->Execute(QStringLiteral("create table t(a int primary key)"));
            gConn->Execute(QStringLiteral("insert into t values (1), (2)"));
        }
        m_second = gConn;
        gConn = Open(m_text);
        m_first = gConn;
        m_look = Open(m_text);
    }
    void TearDown() override
    {
        Analyzer::TearDown();
        m_first.reset();
        m_second.reset();
        m_look.reset();
        if (!m_admin)
            return;
        for (const int place : {1, 2})
            EXPECT_NO_THROW(m_admin->Execute(QStringLiteral("DROP DATABASE ") + Place(place)));
    }
    static ADODB::ConnectionPtr Open(const QString &text)
    {
        const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
        connection->Open(text);
        return connection;
    }
    static QString Place(int number)
    {
        return QStringLiteral("own_run_%1_%2").arg(QCoreApplication::applicationPid()).arg(number);
    }
    static QString Rows(const ADODB::ConnectionPtr &connection)
    {
        QStringList rows;
        const ADODB::RecordsetPtr read = connection->Execute(QStringLiteral("select a from t order by a"));
        for (qint64 row = 0; row < read->RecordCount(); ++row)
            rows += read->CellText(row, 0);
        return rows.join(u' ');
    }
    QString Slow(int seconds) const
    {
        return QStringLiteral("update t set a = a where a = 1 and %1 is not null")
            .arg(QString::fromLatin1(GetParam().sleep).arg(seconds));
    }
    // Does it once the server itself says that the slow statement runs.
    template <class Act> void WhileItRuns(Act act)
    {
        auto *look = new QTimer(&side);
        QObject::connect(look, &QTimer::timeout, [this, look, act] {
            const ADODB::RecordsetPtr seen = m_look->Execute(QString::fromLatin1(GetParam().running));
            if (seen->RecordCount() == 0 || !look->isActive())
                return;
            look->stop();
            act();
        });
        look->start(20);
    }
    void Text(frmSQL *in, const QString &text)
    {
        in->SetText(text);
        in->mnuSelectAll();
    }

    QString m_text;
    ADODB::ConnectionPtr m_admin, m_first, m_second, m_look;
};

} // namespace

// The DELETE behind the slow statement emptied the table of the database that the user had switched to.
TEST_P(OwnRunServers, ASwitchInTheMiddleSendsNothingElsewhere)
{
    Text(window, Slow(1) + QStringLiteral("\r\n\r\ndelete from t"));
    WhileItRuns([&] { gConn = m_second; });
    EXPECT_TRUE(window->RunSQL());
    EXPECT_EQ(Rows(m_second), "1 2");
    EXPECT_EQ(Rows(m_first), "");
}

TEST_P(OwnRunServers, AnothersStatementIsNotRolledBackWithATransactionRun)
{
    const QPointer<frmSQL> second = Make(QString());
    Text(window, Slow(1) + QStringLiteral("\r\n\r\ninsert into t values (50)\r\n\r\ninsert into nowhere values (1)"));
    Text(second, QStringLiteral("insert into t values (60)"));
    WhileItRuns([&] { EXPECT_TRUE(second->RunSQL()); });
    EXPECT_FALSE(window->RunSQL_Trans());
    EXPECT_EQ(Rows(m_first), "1 2 60");
    EXPECT_EQ(Rows(m_look), "1 2 60"); // committed
}

TEST_P(OwnRunServers, EscapeEndsTheBatchOnTheServer)
{
    Text(window, QStringLiteral("insert into t values (50)\r\n\r\n") + Slow(60) +
                     QStringLiteral("\r\n\r\ninsert into t values (60)"));
    WhileItRuns([&] { Press(Qt::Key_Escape); });
    EXPECT_FALSE(window->RunSQL());
    EXPECT_EQ(Rows(m_first), "1 2 50");
    ASSERT_EQ(Log().size(), 3);
    EXPECT_TRUE(Log()[1].endsWith("has been cancelled")) << qPrintable(Log()[1]);
    EXPECT_TRUE(Log()[2].endsWith("has not been run")) << qPrintable(Log()[2]);
}

TEST_P(OwnRunServers, ATransactionBegunByHandIsTheConnectionsAndEndsBetweenRuns)
{
    const QPointer<frmSQL> second = Make(QString());
    window->ToolBar(QStringLiteral("BT"));
    Text(second, QStringLiteral("insert into t values (50)")); // any window joins it
    second->RunSQL();
    EXPECT_EQ(Rows(m_look), "1 2");
    Text(window, Slow(1) + QStringLiteral("\r\n\r\ninsert into t values (60)"));
    WhileItRuns([&] { second->ToolBar(QStringLiteral("RT")); }); // and ends it, but not in the middle of the run
    window->RunSQL();
    EXPECT_EQ(Rows(m_first), "1 2");
    EXPECT_FALSE(m_first->InTransaction());
}

INSTANTIATE_TEST_SUITE_P(
    Over, OwnRunServers,
    testing::Values(
        RunServer{"Postgres", "BRINDLEWICK_TEST_POSTGRES", "pg_sleep(%1)::text",
                  "select 1 from pg_stat_activity where state = 'active' and datname = current_database() "
                  "and pid <> pg_backend_pid() and query like '%update t set a%'"}, // behind a savepoint too
        RunServer{"MariaDb", "BRINDLEWICK_TEST_MARIADB", "sleep(%1)",
                  "select 1 from information_schema.processlist where db = database() and info like "
                  "'update t set a%'"}),
    [](const auto &server) { return std::string(server.param.name); });
