// The syntax check's three ways in their order, on servers that a test makes up: what is sent, and what is not.
#include "analyzer/SyntaxCheck.h"
#include "data/modMain.h"
#include "sqltext/clsColorTable.h"
#include "tests/support/ScriptedDriver.h"
#include <gtest/gtest.h>

namespace {

const QString on = QStringLiteral("SET NOEXEC ON");
const QString off = QStringLiteral("SET NOEXEC OFF");
const QString begin = QStringLiteral("BEGIN");
const QString rollback = QStringLiteral("ROLLBACK");
const QString cannot = QStringLiteral(
    " Cannot check this statement. Brindlewick doesnt support this databases DML syntax checking. \\b0 \\par ");

QString Wrapped(const QString &statement)
{
    return QStringLiteral("SELECT * FROM (") + statement + QStringLiteral(") WHERE 1=0");
}

QString Entry(const QString &words, const QString &statement)
{
    return QStringLiteral("\\b \\cf5  ") + words + QStringLiteral("\\b0 \\par \\cf0  ") + statement +
           QStringLiteral("\\par \\par");
}

struct Syntax : testing::Test
{
    ScriptedDriver driver;
    QStringList refused; // statements that fail, and transaction words
    QString sql;

    void SetUp() override
    {
        InitColorTable();
        driver.OnExecute = [this](const QString &statement) {
            Refuse(statement);
            return ADODB::ExecuteResult{};
        };
        driver.OnTransaction = [this](const QString &words) { Refuse(words); };
        gConn = ADODB::Connection::Create();
        gConn->Open(QStringLiteral("Scripted"));
    }
    void TearDown() override { gConn.reset(); }
    void Refuse(const QString &statement) const
    {
        if (refused.contains(statement))
            throw ADODB::Error(-1, QStringLiteral("no ") + statement);
    }
    QString Report(const QString &text) const { return SyntaxCheck(gConn).Report(text); }
};

} // namespace

TEST_F(Syntax, TheFirstWaySwitchesOnTriesAndSwitchesOff)
{
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("update t set a=1")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("update t set a=1"), off}));
}

TEST_F(Syntax, AnErrorInTheFirstWayIsToldAndLeavesTheServerSwitchedOn)
{
    refused << QStringLiteral("selct");
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("selct")), QStringLiteral("no selct"));
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("selct")}));
}

TEST_F(Syntax, WhereTheServerDoesNotSwitchTheFirstWayGivesTheMark)
{
    refused << on;
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("select 1")), QStringLiteral("`"));
    EXPECT_EQ(driver.Log(), QStringList(on));
    driver.ClearLog();
    refused = QStringList(off);
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("select 1")), QStringLiteral("`"));
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("select 1"), off}));
}

TEST_F(Syntax, TheSecondWayRollsBackWhatItTried)
{
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("delete from t")), QString());
    EXPECT_EQ(driver.Log(), QStringList({begin, QStringLiteral("delete from t"), rollback}));
    EXPECT_FALSE(gConn->InTransaction());
}

TEST_F(Syntax, AnErrorInTheSecondWayIsToldAndRolledBack)
{
    refused << QStringLiteral("delete");
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("delete")), QStringLiteral("no delete"));
    EXPECT_EQ(driver.Log(), QStringList({begin, QStringLiteral("delete"), rollback}));
    EXPECT_FALSE(gConn->InTransaction());
    driver.ClearLog();
    refused << rollback; // the error of the statement is what counts
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("delete")), QStringLiteral("no delete"));
    EXPECT_EQ(driver.Log(), QStringList({begin, QStringLiteral("delete"), rollback}));
}

TEST_F(Syntax, WithoutTransactionsTheSecondWayGivesTheMark)
{
    refused << begin;
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("delete from t")), QStringLiteral("`"));
    EXPECT_EQ(driver.Log(), QStringList(begin));
    driver.ClearLog();
    refused = QStringList(rollback);
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("delete from t")), QStringLiteral("`"));
    EXPECT_EQ(driver.Log(), QStringList({begin, QStringLiteral("delete from t"), rollback}));
}

TEST_F(Syntax, ATransactionOfTheUsersOwnIsLeftAlone)
{
    gConn->BeginTrans();
    driver.ClearLog();
    refused << on;
    EXPECT_EQ(Report(QStringLiteral("delete from t")), Entry(cannot, QStringLiteral("delete from t")));
    EXPECT_EQ(driver.Log(), QStringList(on));
    EXPECT_TRUE(gConn->InTransaction());
}

TEST_F(Syntax, WhereAFailureWouldEndTheUsersTransactionNothingIsSent)
{
    driver.FamilyIs = ADODB::DatabaseFamily::PostgreSQL;
    gConn = ADODB::Connection::Create();
    gConn->Open(QStringLiteral("Scripted"));
    gConn->BeginTrans();
    driver.ClearLog();
    EXPECT_EQ(Report(QStringLiteral("delete from t\r\n\r\nselect 1")),
              Entry(cannot, QStringLiteral("delete from t")) + Entry(cannot, QStringLiteral("select 1")));
    EXPECT_EQ(driver.Log(), QStringList());
    gConn->RollbackTrans();
    driver.ClearLog();
    EXPECT_EQ(Report(QStringLiteral("select 1")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("select 1"), off}));
}

TEST_F(Syntax, WithoutAConnectionBothWaysGiveTheMark)
{
    gConn.reset();
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("select 1")), QStringLiteral("`"));
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("select 1")), QStringLiteral("`"));
    gConn = ADODB::Connection::Create(); // and while it is closed
    EXPECT_EQ(CheckSyntaxSQL(QStringLiteral("select 1")), QStringLiteral("`"));
    EXPECT_EQ(CheckSyntaxTrans(QStringLiteral("select 1")), QStringLiteral("`"));
}

TEST_F(Syntax, WhereNoExecWorksNothingElseIsTried)
{
    EXPECT_EQ(Report(QStringLiteral("select 1")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("select 1"), off}));
}

TEST_F(Syntax, OneWrongOfTwoMarksBothAndTheWholeTextIsTriedTwice)
{
    const QString text = QStringLiteral("select 1\r\n\r\nselct 2");
    refused << text;
    EXPECT_EQ(Report(text), Entry(QStringLiteral("no ") + text, QStringLiteral("select 1")) +
                                Entry(QStringLiteral("no ") + text, QStringLiteral("selct 2")));
    EXPECT_EQ(driver.Log(), QStringList({on, text, on, text}));
}

TEST_F(Syntax, WithoutNoExecASelectIsTriedWrappedInATransaction)
{
    refused << on;
    EXPECT_EQ(Report(QStringLiteral("select a from t")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, begin, Wrapped(QStringLiteral("select a from t")), rollback}));
    driver.ClearLog();
    refused << Wrapped(QStringLiteral("select b"));
    EXPECT_EQ(Report(QStringLiteral("select b")),
              Entry(QStringLiteral("no SELECT * FROM (select b) WHERE 1=0"), QStringLiteral("select b")));
    EXPECT_EQ(driver.Log(), QStringList({on, begin, Wrapped(QStringLiteral("select b")), rollback}));
}

TEST_F(Syntax, WithoutNoExecAnAlteringStatementIsTriedAsItIs)
{
    refused << on;
    EXPECT_EQ(Report(QStringLiteral("update t set a='@'")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, begin, QStringLiteral("update t set a='@'"), rollback}));
}

TEST_F(Syntax, AnAtSignInAStatementStays)
{
    refused << on;
    EXPECT_EQ(Report(QStringLiteral("select @a, '@'")), QString());
    EXPECT_EQ(driver.Log().value(2), Wrapped(QStringLiteral("select @a, '@'")));
}

TEST_F(Syntax, WithoutTransactionsASelectRunsWrappedAndForReal)
{
    refused << on << begin;
    EXPECT_EQ(Report(QStringLiteral("select a from t")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, begin, Wrapped(QStringLiteral("select a from t"))}));
    refused << Wrapped(QStringLiteral("select b"));
    EXPECT_EQ(Report(QStringLiteral("select b")),
              Entry(QStringLiteral("no SELECT * FROM (select b) WHERE 1=0"), QStringLiteral("select b")));
}

TEST_F(Syntax, WithoutTransactionsAnUpdateCannotBeCheckedAndIsNotSent)
{
    refused << on << begin;
    EXPECT_EQ(Report(QStringLiteral("update t set a=1")), Entry(cannot, QStringLiteral("update t set a=1")));
    EXPECT_EQ(driver.Log(), QStringList({on, begin}));
}

// Whatever the server, the roll-back would come too late.
TEST_F(Syntax, AStatementThatEndsTheTransactionIsNotTried)
{
    refused << on;
    for (const char *ending : {"delete from t; commit", "select 1; rollback; select 2"}) {
        driver.ClearLog();
        EXPECT_EQ(Report(QString::fromLatin1(ending)), Entry(cannot, QString::fromLatin1(ending)));
        EXPECT_EQ(driver.Log(), QStringList(on)) << ending;
    }
    driver.ClearLog();
    EXPECT_EQ(Report(QStringLiteral("commit")), QString()); // alone it is wrapped, and harmless
    EXPECT_EQ(driver.Log(), QStringList({on, begin, Wrapped(QStringLiteral("commit")), rollback}));
    driver.ClearLog();
    refused.clear(); // the first way parses alone
    EXPECT_EQ(Report(QStringLiteral("delete from t; commit")), QString());
    EXPECT_EQ(driver.Log(), QStringList({on, QStringLiteral("delete from t; commit"), off}));
}

TEST_F(Syntax, EachStatementGoesItsOwnWay)
{
    refused << on << QStringLiteral("drop x");
    EXPECT_EQ(Report(QStringLiteral("select 1\r\n\r\ndrop x\r\n\r\ndelete from t")),
              Entry(QStringLiteral("no drop x"), QStringLiteral("drop x")));
    EXPECT_EQ(driver.Log(),
              QStringList({on, begin, Wrapped(QStringLiteral("select 1")), rollback, on, begin,
                           QStringLiteral("drop x"), rollback, on, begin, QStringLiteral("delete from t"), rollback}));
}

TEST_F(Syntax, ATextOfNothingAsksNothing)
{
    for (const char *text : {"", "   ", "\r\n\r\n \r\n\r\n"})
        EXPECT_EQ(Report(QString::fromLatin1(text)), QString());
    EXPECT_EQ(driver.Log(), QStringList());
}

TEST_F(Syntax, ACancelBeforeASteppedIntoStatementSendsNothing)
{
    SyntaxCheck check(gConn);
    check.Cancel();
    EXPECT_EQ(check.Report(QStringLiteral("select 1")), QString());
    EXPECT_TRUE(check.Cancelled());
    EXPECT_EQ(driver.Log(), QStringList());
}

TEST_F(Syntax, ACancelStopsTheStatementButNotTheRollBack)
{
    refused << on;
    SyntaxCheck check(gConn);
    driver.OnExecute = [&](const QString &statement) {
        Refuse(statement);
        std::thread([&] { check.Cancel(); }).join();
        driver.RunUntilCancelled(20);
        return ADODB::ExecuteResult{};
    };
    driver.OnTransaction = [&](const QString &words) {
        if (words == rollback)
            std::thread([&] { check.Cancel(); }).join();
    };
    EXPECT_EQ(check.Report(QStringLiteral("update a\r\n\r\nupdate b")),
              Entry(QStringLiteral("stopped by the user"), QStringLiteral("update a")));
    EXPECT_EQ(driver.Log(), QStringList({on, begin, QStringLiteral("update a"), rollback}));
    EXPECT_EQ(driver.Cancels, 1);
    EXPECT_FALSE(gConn->InTransaction());
}
