// UpdateBatch over every driver: what is refused stays pending and can be sent again, the rest is written.
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

class ConformanceOfEdits : public Conformance
{
protected:
    void SetUp() override
    {
        Conformance::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        Run(QStringLiteral("CREATE TABLE t (id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(20) UNIQUE, n INTEGER)"));
        Run(QStringLiteral("INSERT INTO t VALUES (1, 'one', 10), (2, 'two', NULL), (3, 'three', 30), (4, 'four', 40)"));
    }
    RecordsetPtr Open(const QString &sql = QStringLiteral("SELECT * FROM t ORDER BY id")) const
    {
        const RecordsetPtr rows = Recordset::Create();
        rows->Open(sql, m_connection, adOpenDynamic, adLockBatchOptimistic);
        return rows;
    }
    static void Edit(const RecordsetPtr &rows, qint64 position, const QString &name)
    {
        rows->SetAbsolutePosition(position);
        rows->Fields()[1].SetValue(name);
        rows->Update();
    }
    using Conformance::All;
    QString All() { return All(QStringLiteral("t ORDER BY id")); }
};

INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfEdits,
                         testing::Values(Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb),
                         NameOf);

TEST_P(ConformanceOfEdits, ChangesInsertionsAndDeletionsGoTogether)
{
    const RecordsetPtr rows = Open();
    Edit(rows, 1, QStringLiteral("uno"));
    rows->SetAbsolutePosition(2);
    rows->Delete();
    rows->AddNew();
    rows->Fields()[0].SetValue(5);
    rows->Fields()[1].SetValue(QStringLiteral("two")); // free once the deletion went first
    rows->Update();
    EXPECT_EQ(All(), u"1:one:10 2:two:~ 3:three:30 4:four:40"); // nothing before the batch
    rows->UpdateBatch();
    EXPECT_EQ(All(), u"1:uno:10 3:three:30 4:four:40 5:two:~");
    rows->UpdateBatch(); // with nothing left
    EXPECT_EQ(All(), u"1:uno:10 3:three:30 4:four:40 5:two:~");
}

TEST_P(ConformanceOfEdits, ARowThatSomebodyTookIsAConflictAndStaysPending)
{
    for (const bool inTransaction : {false, true}) {
        SCOPED_TRACE(inTransaction);
        Run(QStringLiteral("UPDATE t SET name = 'two' WHERE id = 2"));
        const RecordsetPtr rows = Open();
        const QString tag = inTransaction ? QStringLiteral("b") : QStringLiteral("a");
        Edit(rows, 1, QStringLiteral("one") + tag);
        Edit(rows, 2, QStringLiteral("two") + tag);
        Edit(rows, 3, QStringLiteral("three") + tag);
        NewConnection()->Execute(QStringLiteral("DELETE FROM t WHERE id = 2"));
        if (inTransaction)
            m_connection->BeginTrans();
        const Error error = ErrorFrom([&] { rows->UpdateBatch(); });
        EXPECT_EQ(error.Number, adErrRowConflict) << error.what();
        if (inTransaction)
            m_connection->CommitTrans();
        EXPECT_EQ(All(), QStringLiteral("1:one%1:10 3:three%1:30 4:four:40").arg(tag));
        EXPECT_EQ(rows->CellText(1, 1), QStringLiteral("two") + tag); // as it was edited
        // Sent again it is the same conflict; once the row is there again it is written.
        EXPECT_EQ(ErrorFrom([&] { rows->UpdateBatch(); }).Number, adErrRowConflict);
        Run(QStringLiteral("INSERT INTO t VALUES (2, 'two', NULL)"));
        rows->UpdateBatch();
        EXPECT_EQ(All(), QStringLiteral("1:one%1:10 2:two%1:~ 3:three%1:30 4:four:40").arg(tag));
    }
}

TEST_P(ConformanceOfEdits, ADeletionOfWhatIsGoneIsAConflict)
{
    const RecordsetPtr rows = Open();
    for (const int position : {3, 2}) {
        rows->SetAbsolutePosition(position);
        rows->Delete();
    }
    NewConnection()->Execute(QStringLiteral("DELETE FROM t WHERE id = 3"));
    EXPECT_EQ(ErrorFrom([&] { rows->UpdateBatch(); }).Number, adErrRowConflict);
    EXPECT_EQ(All(), u"1:one:10 4:four:40");
    rows->CancelBatch(); // takes back what stayed pending, and nothing else
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_P(ConformanceOfEdits, ARowIsFoundByItsKey)
{
    const RecordsetPtr rows = Open();
    Edit(rows, 1, QStringLiteral("mine"));
    NewConnection()->Execute(QStringLiteral("UPDATE t SET n = 11 WHERE id = 1"));
    rows->UpdateBatch(); // what somebody else wrote in another column stays
    EXPECT_EQ(All(), u"1:mine:11 2:two:~ 3:three:30 4:four:40");
}

TEST_P(ConformanceOfEdits, AKeyOfSeveralColumnsAndAnOddNameFindsTheRow)
{
    const QString table = Pick({"\"odd \"\"name\"", "\"odd \"\"name\"", "`odd ``name`"});
    Run(QStringLiteral("CREATE TABLE %1 (x DOUBLE PRECISION, b INTEGER NOT NULL, a INTEGER NOT NULL, "
                       "PRIMARY KEY (a, b))")
            .arg(table));
    Run(QStringLiteral("INSERT INTO %1 VALUES (0.1, 1, 1), (0.1, 2, 1), (0.1, 1, 2)").arg(table));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM %1 ORDER BY a, b").arg(table));
    rows->SetAbsolutePosition(2);
    rows->Fields()[0].SetValue(0.5);
    rows->Update();
    rows->SetAbsolutePosition(3);
    rows->Delete();
    NewConnection()->Execute(QStringLiteral("UPDATE %1 SET x = 7 WHERE b = 1").arg(table)); // not the one changed here
    rows->UpdateBatch();
    EXPECT_EQ(All(table + QStringLiteral(" ORDER BY a, b")), u"7:1:1 0.5:2:1");
}

// Only a part of the key is shown: what it leaves open must not be met as well.
TEST_P(ConformanceOfEdits, APartOfAKeyIsNoKey)
{
    Run(QStringLiteral("CREATE TABLE p (a INTEGER NOT NULL, b INTEGER NOT NULL, c INTEGER, PRIMARY KEY (a, b))"));
    Run(QStringLiteral("INSERT INTO p VALUES (1, 1, 10), (1, 2, 20)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT a, c FROM p ORDER BY c"));
    rows->SetAbsolutePosition(1);
    rows->Fields()[1].SetValue(11);
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("p ORDER BY b")), u"1:1:11 1:2:20");
}

TEST_P(ConformanceOfEdits, ARefusedRowStaysPendingAndTheOthersArrive)
{
    const RecordsetPtr rows = Open();
    for (int id = 10; id < 13; ++id) {
        rows->AddNew();
        rows->Fields()[0].SetValue(id == 11 ? 4 : id); // taken
        rows->Fields()[1].SetValue(QStringLiteral("new %1").arg(id));
        rows->Update();
    }
    const Error error = ErrorFrom([&] { rows->UpdateBatch(); });
    EXPECT_NE(error.Number, adErrRowConflict);
    EXPECT_FALSE(error.Description.isEmpty());
    EXPECT_EQ(All(), u"1:one:10 2:two:~ 3:three:30 4:four:40 10:new 10:~ 12:new 12:~");
    rows->SetAbsolutePosition(6);
    EXPECT_EQ(rows->Fields()[1].Text(), u"new 11");
    rows->Fields()[0].SetValue(11);
    rows->UpdateBatch();
    EXPECT_EQ(All(), u"1:one:10 2:two:~ 3:three:30 4:four:40 10:new 10:~ 11:new 11:~ 12:new 12:~");
}

TEST_P(ConformanceOfEdits, RowsOfDefaultsAreWrittenEachOnce)
{
    Run(Pick({"CREATE TABLE d (id INTEGER PRIMARY KEY, a VARCHAR(9) DEFAULT 'x')",
              "CREATE TABLE d (id SERIAL PRIMARY KEY, a VARCHAR(9) DEFAULT 'x')",
              "CREATE TABLE d (id INTEGER AUTO_INCREMENT PRIMARY KEY, a VARCHAR(9) DEFAULT 'x')"}));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM d"));
    for (int i = 0; i < 3; ++i) {
        rows->AddNew();
        rows->Update();
    }
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("d ORDER BY id")), u"1:x 2:x 3:x");
}

TEST_P(ConformanceOfEdits, WithoutAKeyTheOriginalValuesFindTheRow)
{
    Run(QStringLiteral("CREATE TABLE bare (a INTEGER, b VARCHAR(20))"));
    Run(QStringLiteral("INSERT INTO bare VALUES (1, 'x'), (1, NULL), (NULL, NULL)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM bare"));
    for (qint64 row = 0; row < 3; ++row) {
        rows->SetAbsolutePosition(row + 1);
        if (rows->CellIsNull(row, 0))
            rows->Delete(); // by conditions without a single parameter
        else if (rows->CellIsNull(row, 1))
            Edit(rows, row + 1, QStringLiteral("was null"));
    }
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("bare ORDER BY b DESC")), u"1:x 1:was null");
}

TEST_P(ConformanceOfEdits, ARollbackTakesTheBatchBack)
{
    const RecordsetPtr rows = Open();
    m_connection->BeginTrans();
    Edit(rows, 1, QStringLiteral("gone"));
    rows->UpdateBatch();
    EXPECT_TRUE(m_connection->InTransaction());
    m_connection->RollbackTrans();
    EXPECT_EQ(All(), u"1:one:10 2:two:~ 3:three:30 4:four:40");
}

} // namespace conformance
