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
        QString text =
            QStringLiteral("Driver=SQLite;Create=Yes;Database=") + m_folder.filePath(QStringLiteral("t.sqlite"));
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
        m_other = OpenExtraConnection(text);
        ASSERT_NE(m_other, nullptr);
        for (const char *sql :
             {"create table t(a int primary key, b varchar(20))", "insert into t values (1, 'one'), (2, 'two')"})
            ASSERT_NO_THROW(gConn->Execute(QString::fromLatin1(sql)));
    }
    void TearDown() override
    {
        m_other.reset();
        gConn.reset();
        if (m_admin && !m_place.isEmpty()) {
            EXPECT_NO_THROW(m_admin->Execute(QStringLiteral("DROP DATABASE ") + m_place));
        }
    }
    static QString Report(const char *sql) { return SyntaxCheck(gConn).Report(QString::fromLatin1(sql)); }
    // What stands there by the connection of the check, and by another one, which sees only what is committed.
    static QString Rows() { return RowsOf(gConn); }
    QString Committed() const { return RowsOf(m_other); }
    // Of all columns, so that an altered table shows as well; the server's words when it cannot be read.
    static QString RowsOf(const ADODB::ConnectionPtr &connection, const char *table = "t")
    {
        try {
            QString rows;
            const ADODB::RecordsetPtr read =
                connection->Execute(QStringLiteral("select * from %1 order by 1").arg(QLatin1String(table)));
            for (qint64 row = 0; row < read->RecordCount(); ++row) {
                QStringList cells;
                for (int i = 0; i < read->Fields().Count(); ++i)
                    cells += read->CellText(row, i);
                rows += cells.join(u'=') + u' ';
            }
            return rows;
        } catch (const ADODB::Error &error) {
            return error.Description;
        }
    }
    const QString m_before = QStringLiteral("1=one 2=two ");

private:
    QTemporaryDir m_folder;
    ADODB::ConnectionPtr m_admin, m_other;
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

// What the server takes and what it refuses: neither leaves anything behind.
TEST_P(SyntaxServers, NoStatementOnRowsLeavesAnything)
{
    for (const char *sql : {"insert into t values (3, 'three')",
                            "insert into t (a) values (4)",
                            "insert into t select a + 10, b from t",
                            "insert into t values (1, 'twice')",
                            "update t set b = 'x'",
                            "update t set a = a + 100 where b = 'one'",
                            "update t set a = 1",
                            "delete from t",
                            "delete from t where a = 2",
                            "delete from t where a = 1 returning a",
                            "with d as (select 1 as x) delete from t where a in (select x from d)",
                            "with d as (delete from t returning a) select a from d",
                            "replace into t values (1, 'new')",
                            "truncate table t",
                            "truncate t",
                            "merge into t using t as s on t.a = s.a when matched then delete",
                            "select a from t for update",
                            "select a into made from t",
                            "call nothing()",
                            "insert into t values (3, 'x'); delete from t",
                            "select 1; delete from t",
                            "select 1) x; delete from t; --",
                            "-- a remark\r\ndelete from t",
                            "delete from t\r\n\r\ncommit",
                            "delete from t where a = 1; commit",
                            "delete from t; rollback; delete from t",
                            "commit; delete from t",
                            "insert into t values (3, 'it''s'); /* ; */ end",
                            "insert or rollback into t values (1, 'x')",
                            "do $$ begin delete from t; commit; end $$",
                            "do $$ begin delete from t; end $$",
                            "select 1) x; commit; truncate t; select * from (select 1",
                            "begin\r\n\r\ndelete from t\r\n\r\ncommit",
                            "insert into t values (3, 'x')\r\n\r\nupdate t set sett\r\n\r\ndelete from t"}) {
        Report(sql);
        EXPECT_EQ(Rows(), m_before) << sql;
        EXPECT_EQ(Committed(), m_before) << sql;
        EXPECT_FALSE(gConn->InTransaction()) << sql;
    }
}

// A server that commits definitions by itself really does them, and so does a table without transactions with its rows.
// The manual warns of it.
TEST_P(SyntaxServers, DefinitionsAreTakenBackWhereTheServerCan)
{
    const bool back = GetParam().definitionsRollBack;
    EXPECT_EQ(Report("create table made(a int)"), QString());
    EXPECT_EQ(RowsOf(gConn, "made").isEmpty(), !back); // the words of a table that is not there
    EXPECT_EQ(Report("alter table t add c int"), QString());
    EXPECT_EQ(Rows(), back ? m_before : QStringLiteral("1=one= 2=two= "));
    EXPECT_EQ(Report("create index quick on t(b)"), QString());
    EXPECT_EQ(Report("create index quick on t(b)").isEmpty(), back); // a second one of the name is refused
    // What stands before a definition is in a transaction of its own, and is not committed with it.
    EXPECT_EQ(Report("delete from t\r\n\r\ncreate view seen as select a from t"), QString());
    EXPECT_EQ(Rows().count(u'='), back ? 2 : 4);
    EXPECT_FALSE(gConn->InTransaction());
    const QString before = Rows();
    EXPECT_EQ(Report("drop table t"), QString());
    EXPECT_EQ(Rows() == before, back);
    EXPECT_EQ(Committed() == before, back);
    EXPECT_FALSE(gConn->InTransaction());
    if (!back) { // it has tables without transactions as well
        gConn->Execute(QStringLiteral("create table loose(a int) engine=MyISAM"));
        EXPECT_EQ(Report("insert into loose values (7)"), QString());
        EXPECT_EQ(RowsOf(gConn, "loose"), QStringLiteral("7 "));
    }
}

INSTANTIATE_TEST_SUITE_P(Servers, SyntaxServers,
                         testing::Values(Server{"SQLite", "", true, true},
                                         Server{"PostgreSQL", "BRINDLEWICK_TEST_POSTGRES", false, true},
                                         Server{"MariaDB", "BRINDLEWICK_TEST_MARIADB", false, false}),
                         [](const auto &server) { return server.param.name; });
