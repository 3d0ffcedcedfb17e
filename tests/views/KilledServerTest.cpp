// A server that is killed, as by a crash, while its rows are on their way into the result window.
#include "ado/Connection.h"
#include "ado/Error.h"
#include "controls/FlexGrid.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "data/modMain.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/Places.h"
#include "tests/support/ShellDouble.h"
#include "views/frmHirarchy.h"
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct Server
{
    const char *name;
    const char *rows; // a statement of many rows, 1.5 GB
};

std::ostream &operator<<(std::ostream &out, const Server &server)
{
    return out << server.name;
}

class KilledServer : public testing::TestWithParam<Server>
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("BRINDLEWICK_TEST_SERVERS"))
            GTEST_SKIP() << "servers are started by ./test";
        QProcess start;
        start.start(m_script, {QStringLiteral("start"), m_servers, QLatin1String(GetParam().name)});
        ASSERT_TRUE(start.waitForFinished(60000));
        ASSERT_EQ(start.exitCode(), 0) << start.readAllStandardError().toStdString();
        m_started = true;
        const QString lines = QString::fromUtf8(start.readAllStandardOutput());
        const qsizetype from = lines.indexOf(u'\'') + 1;
        m_connection = ADODB::Connection::Create();
        m_connection->Open(lines.mid(from, lines.indexOf(u'\'', from) - from));
        gConn = m_connection;
    }
    void TearDown() override
    {
        gConn.reset();
        m_connection.reset();
        if (m_started) {
            EXPECT_EQ(QProcess::execute(m_script, {QStringLiteral("stop"), m_servers}), 0);
        }
    }

    const QString m_script = (places::Source() + QStringLiteral("/tests/servers/servers"));
    QTemporaryDir m_folder;
    const QString m_servers = m_folder.filePath(QStringLiteral("own"));
    bool m_started = false;
    ShellDouble m_shell;
    DialogDouble m_dialogs;
    ADODB::ConnectionPtr m_connection;
};

TEST_P(KilledServer, IsToldInTheWindowWhichServesTheNextConnection)
{
    const QPointer<frmHirarchy> window(new frmHirarchy);
    window->KillOnError = false;
    window->show();
    window->ShowRec(QLatin1String(GetParam().rows), m_connection, QStringLiteral("SQL Result: doomed"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_connection->IsBusy(); }));
    ASSERT_TRUE(window->IsRunning());
    EXPECT_FALSE(window->cmdStop->isHidden());
    ASSERT_EQ(QProcess::execute(m_script, {QStringLiteral("kill"), m_servers}), 0);

    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->IsRunning() && window->cmdStop->isHidden(); }, 30000));
    ASSERT_FALSE(window.isNull());
    EXPECT_TRUE(window->isVisible());
    const QString last = window->mfgMessge->TextMatrix(window->mfgMessge->Rows() - 1, 3);
    EXPECT_TRUE(last.startsWith("Error: ")) << last.toStdString();
    EXPECT_GT(last.size(), 12) << last.toStdString();
    EXPECT_FALSE(last.contains("cancel", Qt::CaseInsensitive)) << last.toStdString();
    EXPECT_EQ(window->ts->Selected(), 2);
    EXPECT_EQ(window->mfg->TextMatrix(1, 1), "") << "nothing of half a result is shown";

    // The dead connection says so again and again; another one serves the same window.
    EXPECT_THROW(m_connection->Execute(QStringLiteral("SELECT 1")), ADODB::Error);
    const ADODB::ConnectionPtr other = ADODB::Connection::Create();
    other->Open(QStringLiteral("Driver=SQLite;Database=:memory:"));
    window->ShowRec(QStringLiteral("SELECT 6 * 7"), other, QStringLiteral("SQL Result: alive"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->Caption() == u"SQL Result: alive"; }, 20000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->IsRunning(); }, 20000));
    EXPECT_EQ(window->mfg->TextMatrix(1, 1), "42");
    EXPECT_EQ(window->ts->Selected(), 1);
    window->Unload();
    delete window.data();
}

// Between the statements of a hierarchy: the first has given its rows, the second is on its way.
TEST_P(KilledServer, IsToldOfAHierarchyToo)
{
    const bool postgres = QLatin1String(GetParam().name) == u"postgres";
    const QString first = QStringLiteral("SELECT 1 AS id");
    const QString second = QStringLiteral("SELECT %1 AS pid, s FROM (%2) many_rows")
                               .arg(QLatin1String(postgres ? "n" : "seq"), QLatin1String(GetParam().rows));
    const QString asks = postgres
                             ? QStringLiteral("SELECT count(*) FROM pg_stat_activity WHERE state = 'active' AND "
                                              "query LIKE '%many_' || 'rows%'")
                             : QStringLiteral("SELECT count(*) FROM information_schema.processlist WHERE info LIKE "
                                              "concat('%many_', 'rows%') AND info NOT LIKE '%processlist%'");
    const QPointer<frmHirarchy> window(new frmHirarchy);
    window->SetDataSource(QStringLiteral("SHAPE {%1} APPEND ({%2} RELATE id TO pid)").arg(first, second));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_connection->Execute(asks)->CellValue(0, 0).ToInt64() > 0; }, 30000));
    ASSERT_TRUE(window->IsRunning());
    ASSERT_EQ(QProcess::execute(m_script, {QStringLiteral("kill"), m_servers}), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->IsRunning() && window->cmdStop->isHidden(); }, 30000));
    const QString last = window->mfgMessge->TextMatrix(window->mfgMessge->Rows() - 1, 3);
    EXPECT_TRUE(last.startsWith("Error: ")) << last.toStdString();
    EXPECT_GT(last.size(), 12) << last.toStdString();
    EXPECT_FALSE(last.contains("cancel", Qt::CaseInsensitive)) << last.toStdString();
    EXPECT_EQ(window->ts->Selected(), 2);
    EXPECT_EQ(window->mfg->DataSource(), nullptr); // nothing of half a hierarchy
    EXPECT_TRUE(window->isVisible());
    // Another connection serves the same window.
    const QString file = m_folder.filePath(QStringLiteral("other.sqlite"));
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=") + file);
    window->SetDataSource(QStringLiteral("SHAPE {SELECT 1 AS id} APPEND ({SELECT 1 AS pid} RELATE id TO pid)"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->mfg->DataSource() != nullptr; }, 20000));
    EXPECT_EQ(window->mfg->Bands(), 2);
    window->Unload();
    delete window.data();
}

INSTANTIATE_TEST_SUITE_P(Servers, KilledServer,
                         testing::Values(Server{"postgres",
                                                "SELECT n, repeat('x', 500) AS s FROM generate_series(1, 3000000) n"},
                                         Server{"mariadb", "SELECT seq, repeat('x', 500) AS s FROM seq_1_to_3000000"}),
                         [](const auto &server) { return std::string(server.param.name); });

} // namespace
