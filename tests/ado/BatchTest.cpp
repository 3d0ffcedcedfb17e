// Writing rows back: batches by key and by original values, rows that are refused, single rows at once.
#include "TempDatabase.h"
#include "ado/BaseTable.h"
#include "ado/family/Family.h"
#include "tests/support/FaultDriver.h"
#include <cmath>

using namespace ADODB;

namespace {

struct Batches : testing::Test
{
    TempDatabase database;
    ConnectionPtr connection = database.Open();

    Batches()
    {
        connection->Execute(QStringLiteral(
            "CREATE TABLE \"or\"\"der [x]\" (id INTEGER PRIMARY KEY, name VARCHAR(20) UNIQUE, price DECIMAL_TEXT(9,2),"
            " day DATE, data BLOB);"
            "INSERT INTO \"or\"\"der [x]\" VALUES (1, 'one', '1.00', '2024-01-01', x'01'), (2, 'two', NULL, NULL, "
            "NULL),"
            " (3, 'three', '3.00', '2024-01-03', NULL);"
            "CREATE TABLE bare (a INT, b TEXT(10), c REAL); INSERT INTO bare VALUES (1, 'x', 0.1), (1, NULL, 0.2)"));
    }
    RecordsetPtr Open(const QString &sql, int lock = adLockBatchOptimistic) const
    {
        const RecordsetPtr rows = Recordset::Create();
        rows->Open(sql, connection, adOpenDynamic, lock);
        return rows;
    }
    RecordsetPtr Orders(int lock = adLockBatchOptimistic) const
    {
        return Open(QStringLiteral("SELECT * FROM \"or\"\"der [x]\" ORDER BY id"), lock);
    }
    QString All() const
    {
        return Scalar(connection,
                      QStringLiteral("SELECT group_concat(id || ':' || name || ':' || coalesce(price, '-'), ' ')"
                                     " FROM (SELECT * FROM \"or\"\"der [x]\" ORDER BY id)"));
    }
};

TEST_F(Batches, SendsChangesInsertionsAndDeletionsTogether)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[1].SetValue(QStringLiteral("ONE"));
    rows->Fields()[2].SetValue(QStringLiteral("9.50"));
    rows->Update();
    rows->MoveNext();
    rows->Delete();
    rows->AddNew();
    rows->Fields()[0].SetValue(4);
    rows->Fields()[1].SetValue(QStringLiteral("two")); // free once the deletion went first
    rows->Update();
    EXPECT_EQ(All(), "1:one:1.00 2:two:- 3:three:3.00"); // nothing before the batch
    rows->UpdateBatch();
    EXPECT_EQ(All(), "1:ONE:9.50 3:three:3.00 4:two:-");
    rows->UpdateBatch(); // with nothing left
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(Batches, CancelPutsEveryRowBack)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[1].SetValue(QStringLiteral("changed"));
    rows->Update();
    EXPECT_EQ(rows->Fields()[1].OriginalValue(), Value(QStringLiteral("one")));
    rows->MoveNext();
    rows->Delete();
    rows->AddNew();
    rows->Fields()[1].SetValue(QStringLiteral("new"));
    rows->CancelBatch();
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->CellText(0, 1), "one");
    EXPECT_EQ(rows->CellText(1, 1), "two");
    rows->UpdateBatch();
    EXPECT_EQ(All(), "1:one:1.00 2:two:- 3:three:3.00");
}

TEST_F(Batches, ARefusedRowStaysPendingAndTheOthersArrive)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[1].SetValue(QStringLiteral("three")); // taken by row 3
    rows->Update();
    rows->MoveNext();
    rows->Fields()[1].SetValue(QStringLiteral("TWO"));
    rows->Update();
    const auto error = ErrorOf([&] { rows->UpdateBatch(); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->SQLState, "23000");
    EXPECT_TRUE(error->Description.contains(QStringLiteral("UNIQUE constraint failed")));
    EXPECT_EQ(All(), "1:one:1.00 2:TWO:- 3:three:3.00");
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields()[1].Text(), "three"); // as it was edited
    rows->Fields()[1].SetValue(QStringLiteral("uno"));
    rows->UpdateBatch();
    EXPECT_EQ(All(), "1:uno:1.00 2:TWO:- 3:three:3.00");
}

TEST_F(Batches, SeveralRefusedRowsAreCounted)
{
    const RecordsetPtr rows = Orders();
    for (int i = 0; i < 3; ++i) {
        rows->AddNew();
        rows->Fields()[1].SetValue(QStringLiteral("one"));
        rows->Update();
    }
    const auto error = ErrorOf([&] { rows->UpdateBatch(); });
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->Description.endsWith(QStringLiteral("3 rows were refused; they stay as they were edited.")));
    rows->CancelBatch();
    EXPECT_EQ(rows->RecordCount(), 3);
}

TEST_F(Batches, ARowThatSomebodyElseTookIsAConflict)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[1].SetValue(QStringLiteral("mine"));
    rows->Update();
    connection->Execute(QStringLiteral("DELETE FROM \"or\"\"der [x]\" WHERE id = 1"));
    EXPECT_EQ(NumberOf([&] { rows->UpdateBatch(); }), adErrRowConflict);
}

TEST_F(Batches, WithoutAKeyTheOriginalValuesFindTheRow)
{
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM bare"));
    rows->MoveLast(); // (1, NULL, 0.2)
    rows->Fields()[0].SetValue(2);
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT group_concat(a || coalesce(b, '-')) FROM bare")), "1x,2-");
    rows->Fields()[0].SetValue(3); // found by the values that were sent before
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT group_concat(a || coalesce(b, '-')) FROM bare")), "1x,3-");
}

TEST_F(Batches, OnlyWhatWasSetIsInserted)
{
    connection->Execute(
        QStringLiteral("CREATE TABLE d (id INTEGER PRIMARY KEY, a TEXT DEFAULT 'default', b TEXT DEFAULT 'x')"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM d"));
    rows->AddNew();
    rows->Fields()[2].SetValue(Value());
    rows->Update();
    rows->AddNew();
    rows->Update();
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT group_concat(a || coalesce(b, '-')) FROM d")),
              "default-,defaultx");
}

TEST_F(Batches, AnInsertedRowThatGoesAgainIsNeverSent)
{
    const RecordsetPtr rows = Orders();
    rows->AddNew();
    rows->Fields()[1].SetValue(QStringLiteral("short life"));
    rows->Update();
    rows->Delete();
    rows->UpdateBatch();
    EXPECT_EQ(All(), "1:one:1.00 2:two:- 3:three:3.00");
}

TEST_F(Batches, OptimisticRowsGoAtOnceAndARefusedOneStaysInTheBuffer)
{
    const RecordsetPtr rows = Orders(adLockOptimistic);
    rows->Fields()[1].SetValue(QStringLiteral("uno"));
    rows->Update();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT name FROM \"or\"\"der [x]\" WHERE id = 1")), "uno");
    rows->Fields()[1].SetValue(QStringLiteral("two"));
    EXPECT_NE(NumberOf([&] { rows->Update(); }), 0);
    EXPECT_EQ(rows->EditMode(), adEditInProgress);
    EXPECT_EQ(rows->CellText(0, 1), "uno");
    rows->CancelUpdate();
    rows->AddNew();
    rows->Fields()[1].SetValue(QStringLiteral("two"));
    EXPECT_NE(NumberOf([&] { rows->Update(); }), 0);
    EXPECT_EQ(rows->RecordCount(), 3);
    rows->Fields()[1].SetValue(QStringLiteral("four"));
    rows->Update();
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->MoveFirst();
    rows->Delete();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) FROM \"or\"\"der [x]\"")), "3");
}

TEST_F(Batches, AJoinHasNoTableToWriteTo)
{
    const RecordsetPtr rows = Open(QStringLiteral("SELECT o.id, b.a FROM \"or\"\"der [x]\" o, bare b"));
    rows->Fields()[0].SetValue(5);
    rows->Update();
    const auto error = ErrorOf([&] { rows->UpdateBatch(); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "Insufficient base table information for updating or refreshing.");
}

TEST_F(Batches, ManyRowsAreOneStatementAndOneCommit)
{
    connection->Execute(QStringLiteral("CREATE TABLE many (i INTEGER, t TEXT)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM many"));
    for (int i = 0; i < 20000; ++i) {
        rows->AddNew();
        rows->Fields()[0].SetValue(i);
        rows->Fields()[1].SetValue(QStringLiteral("text %1").arg(i));
        rows->Update();
    }
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) || ' ' || sum(i) FROM many")), "20000 199990000");
    EXPECT_FALSE(connection->InTransaction());
}

TEST_F(Batches, InsideATransactionItFollowsTheTransaction)
{
    const RecordsetPtr rows = Orders();
    connection->BeginTrans();
    rows->Fields()[1].SetValue(QStringLiteral("gone"));
    rows->UpdateBatch();
    EXPECT_TRUE(connection->InTransaction());
    connection->RollbackTrans();
    EXPECT_EQ(All(), "1:one:1.00 2:two:- 3:three:3.00");
}

// A cancel that came while the key was asked for was lost, and the batch ran to its end.
TEST(BatchCancel, ACancelBeforeTheFirstStatementEndsTheBatch)
{
    fault::Driver driver;
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Driver=Fault"));
    connection->Execute(
        QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT); INSERT INTO t VALUES (1, 'x')"));
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(QStringLiteral("SELECT * FROM t"), connection, adOpenStatic, adLockBatchOptimistic);
    rows->Fields()[1].SetValue(QStringLiteral("changed"));
    driver.plan.atCatalogue = [&] { connection->Cancel(); };
    EXPECT_EQ(NumberOf([&] { rows->UpdateBatch(); }), adErrOperationCancelled);
    driver.plan.atCatalogue = {};
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT b FROM t")), "x");
    EXPECT_EQ(rows->Status(), adRecModified);
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT b FROM t")), "changed");
}

TEST_F(Batches, AnEmptyBlobIsWrittenAsOne)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[4].SetValue(QByteArray(""));
    rows->UpdateBatch();
    EXPECT_EQ(
        Scalar(connection, QStringLiteral("SELECT typeof(data) || length(data) FROM \"or\"\"der [x]\" WHERE id = 1")),
        "blob0");
    rows->Fields()[4].SetValue(Value());
    rows->UpdateBatch(); // found by the empty one
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT typeof(data) FROM \"or\"\"der [x]\" WHERE id = 1")), "null");
}

// The library stores a null in its place.
TEST_F(Batches, WhatIsNoNumberIsRefused)
{
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM bare"));
    rows->Fields()[2].SetValue(std::nan(""));
    EXPECT_EQ(NumberOf([&] { rows->UpdateBatch(); }), adErrDataConversion);
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT c FROM bare WHERE b = 'x'")), "0.1");
}

// The server gives up the whole transaction, and the rows that went before with it: none may count as written.
TEST_F(Batches, ARowThatRollsEverythingBackLeavesEverythingPending)
{
    connection->Execute(
        QStringLiteral("CREATE TABLE r (a INTEGER UNIQUE ON CONFLICT ROLLBACK); INSERT INTO r VALUES (3)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM r"));
    for (const int a : {1, 2, 3, 4}) {
        rows->AddNew();
        rows->Fields()[0].SetValue(a);
        rows->Update();
    }
    EXPECT_NE(NumberOf([&] { rows->UpdateBatch(); }), 0);
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT group_concat(a) FROM r")), "3");
    rows->SetAbsolutePosition(2);
    EXPECT_EQ(rows->Status(), adRecNew);
}

TEST_F(Batches, CloseInTheMiddleOfAnEditForgetsIt)
{
    const RecordsetPtr rows = Orders();
    rows->Fields()[1].SetValue(QStringLiteral("half"));
    EXPECT_EQ(rows->EditMode(), adEditInProgress);
    rows->Close();
    rows->Open(QStringLiteral("SELECT * FROM bare"), connection, adOpenDynamic, adLockBatchOptimistic);
    EXPECT_EQ(rows->EditMode(), adEditNone);
    rows->UpdateBatch();
    EXPECT_EQ(rows->Fields()[0].Text(), "1");
    EXPECT_EQ(All(), "1:one:1.00 2:two:- 3:three:3.00");
    EXPECT_EQ(rows->Status(), adRecUnmodified);
}

TEST_F(Batches, AColumnOutOfRangeIsAnError)
{
    const RecordsetPtr rows = Orders();
    for (const int column : {-1, 5}) {
        EXPECT_EQ(NumberOf([&] { rows->Fields()[column]; }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->Column(column); }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->CellText(0, column); }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->CellValue(0, column); }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->CellUtf8(0, column); }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->CellIsNull(0, column); }), adErrItemNotFound);
        EXPECT_EQ(NumberOf([&] { (void)rows->CompareCells(0, 1, column); }), adErrItemNotFound);
    }
    EXPECT_EQ(NumberOf([&] { (void)rows->CellText(3, 0); }), adErrNoCurrentRecord);
}

// Each changed row kept a copy of all of its values, and the batch made another of what it sent.
TEST_F(Batches, PendingRowsTakeLittleBesideTheRecordset)
{
    constexpr qint64 count = 200000, limit = 64 * count; // so 64 MB for a million
    connection->Execute(QStringLiteral("CREATE TABLE big (id INTEGER PRIMARY KEY, a INTEGER, b TEXT);"
                                       "WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < %1) "
                                       "INSERT INTO big SELECT n, n, 'text of row ' || n FROM g")
                            .arg(count));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM big"));
    ASSERT_EQ(rows->RecordCount(), count);
    rows->MoveFirst();
    for (; !rows->Eof(); rows->MoveNext()) {
        rows->Fields()[1].SetValue(7);
        rows->Update();
    }
    RecordProperty("pending_bytes", std::to_string(rows->PendingBytes()));
    EXPECT_LT(rows->PendingBytes(), limit);
    EXPECT_GT(rows->PendingBytes(), 16 * count - 4096); // what it must keep: where, and what it was
    rows->UpdateBatch();
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) FROM big WHERE a = 7")), QString::number(count));
    EXPECT_LT(rows->PendingBytes(), 4096);
}

TEST(BaseTable, IsWhatStandsBehindFrom)
{
    ColumnInfo column;
    column.BaseTable = QStringLiteral("t\"x");
    const auto table = [&](const char *sql, const std::vector<ColumnInfo> &columns) {
        return BaseTableOf(QString::fromLatin1(sql), columns, QStringLiteral("\""), NoFamily());
    };
    EXPECT_EQ(table("SELECT * FROM [order details]", {}), "[order details]");
    EXPECT_EQ(table("select a,b\r\nfrom\ts.\"t\"\"x\" where 1=0", {}), "s.\"t\"\"x\"");
    EXPECT_EQ(table("SELECT * FROM `a``b`", {}), "`a``b`");
    EXPECT_EQ(table("SELECT \"from\" FROM t", {}), "t");
    EXPECT_EQ(table("SELECT upper(a) FROM t", {column}), "\"t\"\"x\""); // too involved to read: the driver tells
    EXPECT_THROW(table("SELECT * FROM (SELECT 1)", {}), Error);
    EXPECT_THROW(table("SELECT 1", {}), Error);
    EXPECT_THROW(table("SELECT * FROM \"never closed", {}), Error);
    ColumnInfo other;
    other.BaseTable = QStringLiteral("u");
    EXPECT_THROW(table("SELECT * FROM t, u", {column, other}), Error);
    // Signs that a plain name may hold: they were never tried.
    EXPECT_EQ(table("SELECT * FROM #a@b$c_1 WHERE 1=0", {}), "#a@b$c_1");
    const QString beyond = QStringLiteral("SELECT * FROM t") + QString::fromUtf8("𝒳日") + QStringLiteral(" x");
    EXPECT_EQ(BaseTableOf(beyond, {}, QStringLiteral("\""), NoFamily()),
              QStringLiteral("t") + QString::fromUtf8("𝒳日"));
}

TEST(BaseTable, WhatTheDriverTellsWins)
{
    ColumnInfo column;
    column.BaseTable = QStringLiteral("k4");
    const auto table = [&](const char *sql, DatabaseFamily family) {
        return BaseTableOf(QString::fromLatin1(sql), {column}, QStringLiteral("\""), FamilyOf(family));
    };
    EXPECT_EQ(table("SELECT * FROM s.K4", DatabaseFamily::PostgreSQL), "s.K4"); // the same one, with its schema
    EXPECT_EQ(table("SELECT * FROM s.\"K4\"", DatabaseFamily::PostgreSQL), "\"k4\"");
    EXPECT_EQ(table("SELECT * FROM v", DatabaseFamily::MySQL), "\"k4\"");
    column.BaseSchema = QStringLiteral("a.b");
    EXPECT_EQ(table("SELECT * FROM s.k4", DatabaseFamily::PostgreSQL), "\"a.b\".\"k4\"");
    EXPECT_THROW(table("SELECT * FROM v", DatabaseFamily::SQLite), Error); // a view, whose rows may be others
}

} // namespace
