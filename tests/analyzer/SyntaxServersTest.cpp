// The syntax check on real servers: it tells what is wrong in their own words and leaves every row as it was.
#include "analyzer/SyntaxCheck.h"
#include "data/modMain.h"
#include "sqltext/clsColorTable.h"
#include <QCoreApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Server
{
    const char *name;
    const char *variable; // "" for the built-in one
    bool namelessSubSelect;
    bool definitionsRollBack;
};

void PrintTo(const Server &server, std::ostream *out)
{
    *out << server.name;
}

class SyntaxServers : public testing::TestWithParam<Server>
{
protected:
    void SetUp() override
    {
        InitColorTable();
        QString text = QStringLiteral("Driver=SQLite;Database=") + m_folder.filePath(QStringLiteral("t.sqlite"));
        if (*GetParam().variable) {
            const QString server = qEnvironmentVariable(GetParam().variable);
            if (server.isEmpty()) {
                ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1")
                    << GetParam().variable << " is not set";
                GTEST_SKIP() << "no server here";
            }
            m_admin = OpenExtraConnection(server);
            ASSERT_NE(m_admin, nullptr);
            m_place = QStringLiteral("syntax_%1").arg(QCoreApplication::applicationPid());
            ASSERT_NO_THROW(m_admin->Execute(QStringLiteral("CREATE DATABASE ") + m_place));
            text = server;
            text.replace(QRegularExpression(QStringLiteral("Database=[^;]*")), QStringLiteral("Database=") + m_place);
        }
        ASSERT_TRUE(OpenConnection(text)) << qPrintable(LastOpenError());
        for (const char *sql :
             {"create table t(a int primary key, b varchar(20))", "insert into t values (1, 'one'), (2, 'two')"})
            ASSERT_NO_THROW(gConn->Execute(QString::fromLatin1(sql)));
    }
    void TearDown() override
    {
        gConn.reset();
        if (m_admin && !m_place.isEmpty()) {
            EXPECT_NO_THROW(m_admin->Execute(QStringLiteral("DROP DATABASE ") + m_place));
        }
    }
    static QString Report(const char *sql) { return SyntaxCheck(gConn).Report(QString::fromLatin1(sql)); }
    static QString Rows()
    {
        QString rows;
        const ADODB::RecordsetPtr read = gConn->Execute(QStringLiteral("select a, b from t order by a"));
        for (qint64 row = 0; row < read->RecordCount(); ++row)
            rows += read->CellText(row, 0) + u'=' + read->CellText(row, 1) + u' ';
        return rows;
    }
    const QString m_before = QStringLiteral("1=one 2=two ");

private:
    QTemporaryDir m_folder;
    ADODB::ConnectionPtr m_admin;
    QString m_place;
};

} // namespace

TEST_P(SyntaxServers, WhatAltersIsTriedAndTakenBack)
{
    for (const char *sql :
         {"update t set a = a + 10", "delete from t", "insert into t values (3, 'three')",
          "insert into t values (3, 'x')\r\n\r\ndelete from t where a = 1\r\n\r\nupdate t set b = ''"}) {
        EXPECT_EQ(Report(sql), QString()) << sql;
        EXPECT_EQ(Rows(), m_before) << sql;
        EXPECT_FALSE(gConn->InTransaction());
    }
}

TEST_P(SyntaxServers, WhatIsWrongIsToldInTheServersWordsAndTheOthersAreTried)
{
    const QString report = Report("update t sett a = 1\r\n\r\ndelete from t\r\n\r\ninsert into nowhere values (1)");
    EXPECT_EQ(report.count(QStringLiteral("\\b \\cf5 ")), 2) << qPrintable(report);
    EXPECT_TRUE(report.contains(QStringLiteral("\\cf0  update t sett a = 1\\par \\par"))) << qPrintable(report);
    EXPECT_TRUE(report.contains(QStringLiteral("\\cf0  insert into nowhere values (1)\\par \\par")));
    EXPECT_TRUE(report.contains(QStringLiteral("syntax"), Qt::CaseInsensitive)) << qPrintable(report);
    EXPECT_TRUE(report.section(QStringLiteral("\\b0"), 1, 1).contains(QStringLiteral("nowhere")));
    EXPECT_EQ(Rows(), m_before);
    EXPECT_FALSE(gConn->InTransaction());
}

TEST_P(SyntaxServers, AReadingIsTriedAsOneOfNoRows)
{
    const QString report = Report("select a, b from t");
    if (GetParam().namelessSubSelect)
        EXPECT_EQ(report, QString());
    else
        EXPECT_TRUE(report.startsWith(QStringLiteral("\\b \\cf5 "))) << qPrintable(report);
    EXPECT_TRUE(Report("select nothing from t where a = 1").contains(QStringLiteral("\\b \\cf5 ")));
    EXPECT_EQ(Rows(), m_before);
    EXPECT_FALSE(gConn->InTransaction());
}

// No transaction of its own is to be had, and what the user has done so far is neither lost nor committed.
TEST_P(SyntaxServers, ATransactionOfTheUsersOwnGoesOn)
{
    gConn->BeginTrans();
    gConn->Execute(QStringLiteral("update t set b = 'mine' where a = 1"));
    EXPECT_TRUE(Report("delete from t").contains(QStringLiteral(" Cannot check this statement. ")));
    Report("select a from t");
    EXPECT_TRUE(gConn->InTransaction());
    EXPECT_EQ(Rows(), QStringLiteral("1=mine 2=two "));
    gConn->RollbackTrans();
    EXPECT_EQ(Rows(), m_before);
    gConn->BeginTrans();
    gConn->Execute(QStringLiteral("update t set b = 'mine' where a = 1"));
    Report("delete from t");
    gConn->CommitTrans();
    EXPECT_EQ(Rows(), QStringLiteral("1=mine 2=two "));
}

// A server that commits definitions by itself really makes the table. The manual warns of it.
TEST_P(SyntaxServers, DefinitionsAreTakenBackWhereTheServerCan)
{
    EXPECT_EQ(Report("create table made(a int)"), QString());
    const auto made = [] {
        try {
            gConn->Execute(QStringLiteral("select a from made"));
            return true;
        } catch (const ADODB::Error &) {
            return false;
        }
    };
    EXPECT_EQ(made(), !GetParam().definitionsRollBack);
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_EQ(Rows(), m_before);
}

INSTANTIATE_TEST_SUITE_P(Servers, SyntaxServers,
                         testing::Values(Server{"SQLite", "", true, true},
                                         Server{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", false, true},
                                         Server{"MariaDB", "BRINDLEWICK_TEST_MARIADB", false, false}),
                         [](const auto &info) { return info.param.name; });
