// One edit changes exactly the row that was meant, or none and says so.
#include "tests/ado/ConformanceOneRow.h"

using namespace ADODB;

namespace conformance {

INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfOneRow,
                         testing::Values(Server::BuiltIn, Server::SqliteOdbc, Server::Postgres, Server::MariaDb),
                         NameOf);

// Without a key one Update met all equal rows, and one Delete removed them all. SQLite tells them apart by the row id.
TEST_P(ConformanceOfOneRow, EqualRowsAreNeverChangedTogether)
{
    for (const bool inTransaction : {false, true}) {
        SCOPED_TRACE(inTransaction);
        Run(QStringLiteral("DROP TABLE IF EXISTS e"));
        Run(QStringLiteral("CREATE TABLE e (a INTEGER, b VARCHAR(9))"));
        Run(QStringLiteral("INSERT INTO e VALUES (1, 'x'), (1, 'x'), (2, 'y'), (1, 'x')"));
        const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY a"));
        if (inTransaction)
            m_connection->BeginTrans();
        Set(rows, 2, 1, QStringLiteral("second"));
        Set(rows, 4, 1, QStringLiteral("two"));
        Remove(rows, 3);
        if (IsSqlite()) {
            rows->UpdateBatch();
            EXPECT_EQ(All(QStringLiteral("e ORDER BY a, b")), u"1:second 1:x 2:two");
        } else {
            ExpectTooMany(ErrorFrom([&] { rows->UpdateBatch(); }));
            EXPECT_EQ(All(QStringLiteral("e ORDER BY a, b")), u"1:x 1:x 1:x 2:two"); // the one that was sure
            ASSERT_EQ(rows->RefusedRows().size(), 2u);
            EXPECT_EQ(rows->RefusedRows()[0].Row, 1);
            EXPECT_EQ(rows->RefusedRows()[0].Status, adRecModified | adRecMultipleChanges);
            EXPECT_EQ(rows->RefusedRows()[1].Row, -1);
            EXPECT_EQ(rows->RefusedRows()[1].Status, adRecDeleted | adRecMultipleChanges);
            rows->SetAbsolutePosition(2);
            EXPECT_EQ(rows->Status(), adRecModified | adRecMultipleChanges);
            EXPECT_EQ(rows->Fields()[1].Text(), u"second"); // as it was edited
            ExpectTooMany(ErrorFrom([&] { rows->UpdateBatch(); }));
        }
        EXPECT_EQ(m_connection->InTransaction(), inTransaction);
        if (inTransaction)
            m_connection->CommitTrans();
    }
}

// The same, written at once.
TEST_P(ConformanceOfOneRow, AnEditAtOnceOfEqualRowsIsTakenBackToo)
{
    if (IsSqlite())
        return; // knows them apart
    Run(QStringLiteral("CREATE TABLE e (a INTEGER, b VARCHAR(9))"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 'x'), (1, 'x')"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"), adLockOptimistic);
    rows->Fields()[1].SetValue(QStringLiteral("one"));
    ExpectTooMany(ErrorFrom([&] { rows->Update(); }));
    EXPECT_EQ(rows->EditMode(), adEditInProgress);
    rows->CancelUpdate();
    ExpectTooMany(ErrorFrom([&] { rows->Delete(); }));
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(All(QStringLiteral("e")), u"1:x 1:x");
}

// A whole block with one row too many in it, and one that has gone: the others arrive, also in the blocks around it.
TEST_P(ConformanceOfOneRow, OneWrongRowOfABlockIsFoundAndTheOthersArrive)
{
    if (IsSqlite())
        return;
    Run(QStringLiteral("CREATE TABLE e (a INTEGER, b INTEGER)"));
    Run(Pick({"", "INSERT INTO e SELECT n, 0 FROM generate_series(1, 2500) n",
              "INSERT INTO e SELECT seq, 0 FROM seq_1_to_2500"}));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY a"));
    Run(QStringLiteral("INSERT INTO e VALUES (1234, 0)"));
    Run(QStringLiteral("DELETE FROM e WHERE a = 1300"));
    for (qint64 position = 1; position <= 2500; ++position)
        Set(rows, position, 1, 7);
    ErrorFrom([&] { rows->UpdateBatch(); });
    ASSERT_EQ(rows->RefusedRows().size(), 2u);
    EXPECT_EQ(rows->RefusedRows()[0].Row, 1233);
    EXPECT_EQ(rows->RefusedRows()[0].Status, adRecModified | adRecMultipleChanges);
    EXPECT_EQ(rows->RefusedRows()[1].Row, 1299);
    EXPECT_EQ(rows->RefusedRows()[1].Why.Number, adErrRowConflict);
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE b = 7")).ToInt64(), 2498);
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE b = 0")).ToInt64(), 2); // the two of 1234
}

// A row id is given again once its row has gone: the values must be the same as well.
TEST_P(ConformanceOfOneRow, ARowIdThatWasGivenAgainIsAConflict)
{
    if (!IsSqlite())
        return;
    Run(QStringLiteral("CREATE TABLE e (a INTEGER, b TEXT)"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 'x'), (2, 'y')"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    Set(rows, 2, 1, QStringLiteral("mine"));
    Run(QStringLiteral("DELETE FROM e WHERE a = 2"));
    Run(QStringLiteral("INSERT INTO e VALUES (3, 'z')")); // takes the same one
    EXPECT_EQ(ErrorFrom([&] { rows->UpdateBatch(); }).Number, adErrRowConflict);
    EXPECT_EQ(All(QStringLiteral("e")), u"1:x 3:z");
}

// What differs by case, by blanks at the end, in long text or in bytes alone is another row.
TEST_P(ConformanceOfOneRow, RowsThatDifferInTextOrBytesAloneAreTwoRows)
{
    Run(QStringLiteral("CREATE TABLE e (v VARCHAR(20), l %1, b %2)")
            .arg(QLatin1String(Expects().LongText), QLatin1String(Expects().Blob)));
    const QString one = Bytes(QStringLiteral("01"));
    const QString two = Bytes(QStringLiteral("02"));
    Run(QStringLiteral("INSERT INTO e VALUES ('x', 'long', %1), ('X', 'long', %1), ('x ', 'long', %1), "
                       "('x', 'Long', %1), ('x', 'long', %2), ('x', NULL, NULL), ('x', '', NULL)")
            .arg(one, two));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    for (qint64 position = 1; position <= 7; ++position)
        Set(rows, position, 0, QStringLiteral("row %1").arg(position));
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("e ORDER BY v")), u"row 1:long:0x01 row 2:long:0x01 row 3:long:0x01 row 4:Long:0x01 "
                                                   u"row 5:long:0x02 row 6:~:~ row 7::~");
    for (qint64 position = 7; position >= 2; --position)
        Remove(rows, position);
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("e")), u"row 1:long:0x01");
}

// A table of one text column could not be edited.
TEST_P(ConformanceOfOneRow, ATableOfOneLongTextCanBeEdited)
{
    Run(QStringLiteral("CREATE TABLE e (l %1)").arg(QLatin1String(Expects().LongText)));
    const QString text = QString(100'000, u'ä') + QStringLiteral("'\"\\ 🎉");
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    rows->AddNew();
    rows->Fields()[0].SetValue(text);
    rows->Update();
    rows->UpdateBatch();
    Set(rows, 1, 0, text + u'x');
    rows->UpdateBatch();
    EXPECT_TRUE(Cell(QStringLiteral("SELECT l FROM e")).ToText() == text + u'x');
    Remove(rows, 1);
    rows->UpdateBatch();
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e")).ToInt64(), 0);
}

// Every type of the server finds its row by the value that was read, without any key.
TEST_P(ConformanceOfOneRow, EveryTypeFindsItsRow)
{
    struct Sample
    {
        const char *type, *value;
    };
    const std::vector<Sample> samples = IsSqlite() ? std::vector<Sample>{{"INTEGER", "7"},
                                                                         {"BIGINT", "9007199254740993"},
                                                                         {"REAL", "0.1"},
                                                                         {"FLOAT", "1.0/3"},
                                                                         {"DECIMAL(9,2)", "1.5"},
                                                                         {"TEXT COLLATE NOCASE", "'Abc'"},
                                                                         {"VARCHAR(20)", "'x '"},
                                                                         {"DATE", "'2024-02-29'"},
                                                                         {"TIMESTAMP", "'2024-02-29 10:00:00'"},
                                                                         {"TIMESTAMP", "'2024-02-29 10:00:00.500'"},
                                                                         {"TIMESTAMP", "'2024-02-29T10:00:00'"},
                                                                         {"TIME", "'10:00:00'"},
                                                                         {"BOOLEAN", "1"},
                                                                         {"BLOB", "x'00ff'"},
                                                                         {"LONGBLOB", "x'00ff00'"},
                                                                         {"INTEGER", "'no number'"}}
                                        : Is(Server::Postgres)
                                            ? std::vector<Sample>{{"real", "0.1"},
                                                                  {"real", "16777217"},
                                                                  {"double precision", "1.0/3"},
                                                                  {"numeric", "12345678901234567890.0123456789"},
                                                                  {"numeric(9,2)", "1.50"},
                                                                  {"json", "'{\"a\": 1}'"},
                                                                  {"jsonb", "'{\"a\": 1}'"},
                                                                  {"xml", "'<a/>'"},
                                                                  {"point", "'(1,2)'"},
                                                                  {"box", "'(1,1),(0,0)'"},
                                                                  {"path", "'((0,0),(1,1))'"},
                                                                  {"circle", "'<(0,0),1>'"},
                                                                  {"uuid", "'00000000-0000-0000-0000-00000000000a'"},
                                                                  {"interval", "'1 day 2 hours'"},
                                                                  {"int[]", "'{1,2}'"},
                                                                  {"bytea", "'\\x00ff'"},
                                                                  {"money", "12.3"},
                                                                  {"timestamptz", "'2024-02-29 10:00:00.123456+00'"},
                                                                  {"timestamp", "'2024-02-29 10:00:00.5'"},
                                                                  {"date", "'2024-02-29'"},
                                                                  {"time", "'10:00:00.25'"},
                                                                  {"timetz", "'10:00:00+05'"},
                                                                  {"boolean", "true"},
                                                                  {"bit(3)", "'101'"},
                                                                  {"inet", "'1.2.3.4'"},
                                                                  {"char(5)", "'ab'"},
                                                                  {"int4range", "'[1,5)'"},
                                                                  {"tsvector", "'a b'"}}
                                            : std::vector<Sample>{{"FLOAT", "0.1"},
                                                                  {"FLOAT", "0.123456789"},
                                                                  {"FLOAT", "16777217"},
                                                                  {"DOUBLE", "1.0/3"},
                                                                  {"DECIMAL(30,10)", "12345678901234567890.0123456789"},
                                                                  {"JSON", "'{\"a\": 1}'"},
                                                                  {"GEOMETRY", "POINT(1, 2)"},
                                                                  {"POINT", "POINT(1, 2)"},
                                                                  {"UUID", "'00000000-0000-0000-0000-00000000000a'"},
                                                                  {"INET6", "'::1'"},
                                                                  {"BIT(1)", "1"},
                                                                  {"BIT(12)", "6"},
                                                                  {"ENUM('x','y')", "'y'"},
                                                                  {"SET('x','y')", "'x,y'"},
                                                                  {"YEAR", "2024"},
                                                                  {"BIGINT UNSIGNED", "18446744073709551615"},
                                                                  {"TINYINT", "-7"},
                                                                  {"CHAR(5)", "'ab'"},
                                                                  {"VARCHAR(5) CHARACTER SET latin1", "'ä'"},
                                                                  {"BINARY(4)", "x'0100'"},
                                                                  {"VARBINARY(4)", "x'00ff'"},
                                                                  {"DATETIME(6)", "'2024-02-29 10:00:00.123456'"},
                                                                  {"TIMESTAMP", "'2024-02-29 10:00:00'"},
                                                                  {"DATE", "'2024-02-29'"},
                                                                  {"TIME(3)", "'10:00:00.25'"},
                                                                  {"TIME", "'100:00:00'"}};
    for (const Sample &sample : samples) {
        SCOPED_TRACE(std::string(sample.type) + " " + sample.value);
        Run(QStringLiteral("DROP TABLE IF EXISTS e"));
        Run(QStringLiteral("CREATE TABLE e (x %1, n INTEGER)").arg(Utf(sample.type)));
        Run(QStringLiteral("INSERT INTO e VALUES (%1, 1), (NULL, 2)").arg(Utf(sample.value)));
        const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
        for (int again = 0; again < 2; ++again) { // also by the values as they are after a batch
            for (qint64 position = 1; position <= 2; ++position)
                Set(rows, position, 1, 10 * int(position) + again);
            try {
                rows->UpdateBatch();
            } catch (const Error &error) {
                ADD_FAILURE() << error.what();
                break;
            }
        }
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE n IN (11, 21)")).ToInt64(), 2);
    }
}

// By key the row was overwritten, though somebody else had changed the very same column meanwhile.
TEST_P(ConformanceOfOneRow, WhatSomebodyElseChangedMeanwhileIsAConflict)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, a VARCHAR(20), b INTEGER)"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 'one', 1), (2, 'two', 2), (3, 'three', 3)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY id"));
    for (qint64 position = 1; position <= 3; ++position)
        Set(rows, position, 1, QStringLiteral("mine"));
    NewConnection()->Execute(QStringLiteral("UPDATE e SET a = 'theirs' WHERE id = 2"));
    NewConnection()->Execute(QStringLiteral("UPDATE e SET b = 30 WHERE id = 3"));
    EXPECT_EQ(ErrorFrom([&] { rows->UpdateBatch(); }).Number, adErrRowConflict);
    EXPECT_EQ(All(QStringLiteral("e ORDER BY id")), u"1:mine:1 2:theirs:2 3:mine:30");
    ASSERT_EQ(rows->RefusedRows().size(), 1u);
    EXPECT_EQ(rows->RefusedRows()[0].Row, 1);
    EXPECT_EQ(rows->RefusedRows()[0].Key, u"id = 2");
    EXPECT_EQ(rows->RefusedRows()[0].Status, adRecModified | adRecConcurrencyViolation);
}

// Each refused row was told by the first one's error alone.
TEST_P(ConformanceOfOneRow, EachRefusedRowHasItsOwnError)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, u INTEGER UNIQUE, n INTEGER NOT NULL)"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 1, 1), (2, 2, 2), (3, 3, 3), (4, 4, 4)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY id"));
    Set(rows, 1, 1, 4);
    Set(rows, 2, 2, Value());
    Set(rows, 3, 1, 30);
    NewConnection()->Execute(QStringLiteral("DELETE FROM e WHERE id = 3"));
    Set(rows, 4, 2, 40);
    const Error error = ErrorFrom([&] { rows->UpdateBatch(); });
    EXPECT_TRUE(error.Description.endsWith(QStringLiteral("3 rows were refused; they stay as they were edited.")))
        << error.what();
    const std::vector<RefusedRow> refused = rows->RefusedRows();
    ASSERT_EQ(refused.size(), 3u);
    EXPECT_EQ(refused[0].Key, u"id = 1");
    EXPECT_NE(refused[0].Why.Description, refused[1].Why.Description);
    EXPECT_EQ(refused[2].Status, adRecModified | adRecConcurrencyViolation);
    EXPECT_EQ(All(QStringLiteral("e ORDER BY id")), u"1:1:1 2:2:2 4:4:40");
    rows->CancelBatch();
    EXPECT_TRUE(rows->RefusedRows().empty());
    rows->SetAbsolutePosition(1);
    EXPECT_EQ(rows->Status(), adRecUnmodified);
}

// The reader of the statement took the table out of a comment.
TEST_P(ConformanceOfOneRow, ATableInACommentIsNotWrittenTo)
{
    Run(QStringLiteral("CREATE TABLE k4 (id INTEGER NOT NULL PRIMARY KEY, a VARCHAR(20))"));
    Run(QStringLiteral("CREATE TABLE other (id INTEGER NOT NULL PRIMARY KEY, a VARCHAR(20))"));
    for (const char *table : {"k4", "other"})
        Run(QStringLiteral("INSERT INTO %1 VALUES (1, 'x')").arg(QLatin1String(table)));
    int number = 0;
    for (const char *sql : {"select * /* not from other */ from k4", "select * -- from other\nfrom k4",
                            "select id, a, ' from other ' as c from k4 where a <> 'from other'"}) {
        SCOPED_TRACE(sql);
        const QString text = QStringLiteral("n%1").arg(++number);
        const RecordsetPtr rows = Open(Utf(sql));
        Set(rows, 1, 1, text);
        rows->UpdateBatch();
        EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM k4")).ToText(), text);
        EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM other")).ToText(), u"x");
    }
}

// The rows came from one table, and the edit goes to that one, whatever its name means by now.
TEST_P(ConformanceOfOneRow, TheTableThatWasReadIsTheOneThatIsWritten)
{
    if (!Is(Server::Postgres))
        return; // others have no path of schemas
    Run(QStringLiteral("CREATE TABLE w (id INTEGER PRIMARY KEY, a INTEGER)"));
    Run(QStringLiteral("INSERT INTO w VALUES (1, 1)"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM w"));
    Run(QStringLiteral("CREATE TEMPORARY TABLE w (id INTEGER PRIMARY KEY, a INTEGER)"));
    Run(QStringLiteral("INSERT INTO w VALUES (1, 1)"));
    Set(rows, 1, 1, 2);
    rows->UpdateBatch();
    EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM %1.w").arg(m_place)).ToInt64(), 2);
    EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM pg_temp.w")).ToInt64(), 1);
}

// "upper(t) as t" was written into t, and an alias chose the column that has its name.
TEST_P(ConformanceOfOneRow, AnAliasChoosesNoColumn)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, t VARCHAR(20), u VARCHAR(20))"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 'tee', 'you')"));
    const RecordsetPtr rows = Open(QStringLiteral("SELECT id, upper(t) AS t, t AS u, u AS \"x\" FROM e")
                                       .replace(u'"', QLatin1String(Expects().Quote)));
    EXPECT_EQ(ErrorFrom([&] { rows->Fields()[1].SetValue(QStringLiteral("no")); }).Number, adErrFeatureNotAvailable);
    EXPECT_EQ(rows->EditMode(), adEditNone);
    Set(rows, 1, 2, QStringLiteral("new t"));
    Set(rows, 1, 3, QStringLiteral("new u"));
    rows->UpdateBatch();
    EXPECT_EQ(All(QStringLiteral("e")), u"1:new t:new u");
}

// Rows that are no rows of a table cannot be written back, though the driver tells a table.
TEST_P(ConformanceOfOneRow, JoinsGroupsAndUnionsHaveNoTable)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, a INTEGER)"));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 1), (2, 2)"));
    for (const char *sql :
         {"SELECT x.id, y.a FROM e x, e y WHERE x.id <> y.id", "SELECT x.id, y.a FROM e x JOIN e y ON x.id <> y.id",
          "SELECT DISTINCT a, id FROM e", "SELECT a, MAX(id) AS id FROM e GROUP BY a",
          "WITH w AS (SELECT * FROM e) SELECT * FROM w", "SELECT q.* FROM (SELECT * FROM e) q"}) {
        SCOPED_TRACE(sql);
        const RecordsetPtr rows = Open(Utf(sql));
        const Error error = ErrorFrom([&] {
            rows->Fields()[0].SetValue(7);
            rows->UpdateBatch();
        });
        EXPECT_TRUE(error.Number == adErrFeatureNotAvailable ||
                    error.Description.startsWith(QStringLiteral("Insufficient base table information")))
            << error.what();
        EXPECT_EQ(All(QStringLiteral("e ORDER BY id")), u"1:1 2:2");
    }
}

// A row just added had no key yet, so that nothing could be done with it until it was read again.
TEST_P(ConformanceOfOneRow, ARowJustAddedCanBeEditedAndDeleted)
{
    Run(Pick({"CREATE TABLE e (id INTEGER PRIMARY KEY, a VARCHAR(9), d VARCHAR(9) DEFAULT 'default')",
              "CREATE TABLE e (id SERIAL PRIMARY KEY, a VARCHAR(9), d VARCHAR(9) DEFAULT 'default')",
              "CREATE TABLE e (id INTEGER AUTO_INCREMENT PRIMARY KEY, a VARCHAR(9), d VARCHAR(9) DEFAULT 'default')"}));
    for (const bool inTransaction : {false, true}) {
        SCOPED_TRACE(inTransaction);
        Run(QStringLiteral("DELETE FROM e"));
        const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
        if (inTransaction)
            m_connection->BeginTrans();
        for (int i = 0; i < 250; ++i) {
            rows->AddNew();
            rows->Fields()[1].SetValue(QStringLiteral("row %1").arg(i));
            rows->Update();
        }
        rows->UpdateBatch();
        for (qint64 row = 0; row < 250; ++row)
            ASSERT_EQ(Cell(QStringLiteral("SELECT a FROM e WHERE id = %1").arg(rows->CellText(row, 0))).ToText(),
                      rows->CellText(row, 1));
        Set(rows, 100, 1, QStringLiteral("edited"));
        Set(rows, 200, 2, QStringLiteral("changed")); // what the server made of it is known, or not asked for
        const QString id = rows->CellText(99, 0);
        Remove(rows, 1);
        rows->UpdateBatch();
        EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM e WHERE id = %1").arg(id)).ToText(), u"edited");
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE d = 'changed'")).ToInt64(), 1);
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM e WHERE d = 'default'")).ToInt64(), 248);
        if (inTransaction)
            m_connection->CommitTrans();
    }
}

// What the server made of a column that was not set is unknown here, and must not be looked for.
TEST_P(ConformanceOfOneRow, DefaultsAreReadBackOnRequestAndAreNeverInTheWay)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, d VARCHAR(9) DEFAULT 'default')"));
    Run(QStringLiteral("CREATE TABLE bare (a INTEGER, d VARCHAR(9) DEFAULT 'default')"));
    for (const bool onRequest : {false, true}) {
        for (const char *table : {"e", "bare"}) {
            SCOPED_TRACE(table);
            const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM ") + QLatin1String(table));
            if (onRequest)
                rows->SetUpdateResync(adResyncAutoIncrement | adResyncInserts);
            const qint64 row = rows->RecordCount();
            rows->AddNew();
            rows->Fields()[0].SetValue(onRequest ? 2 : 1);
            rows->Update();
            rows->UpdateBatch();
            if (onRequest) {
                EXPECT_EQ(rows->CellText(row, 1), u"default");
            }
            Set(rows, row + 1, 1, QStringLiteral("mine"));
            rows->UpdateBatch();
            EXPECT_EQ(
                Cell(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE d = 'mine'").arg(QLatin1String(table))).ToInt64(),
                onRequest ? 2 : 1);
        }
    }
}

// MariaDB counts the rows that have changed: writing what stood there was a conflict that never ended.
TEST_P(ConformanceOfOneRow, WritingWhatTheServerRoundsToTheSameIsNoConflict)
{
    Run(QStringLiteral("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY, a VARCHAR(20), b %1)")
            .arg(Pick({"INTEGER", "INTEGER", "DATETIME"})));
    Run(QStringLiteral("INSERT INTO e VALUES (1, 'x', %1)").arg(Pick({"1", "1", "'2024-01-01 10:00:00'"})));
    qint64 met = -1;
    m_connection->Execute(QStringLiteral("UPDATE e SET a = 'x' WHERE id = 1"), &met);
    EXPECT_EQ(met, 1);
    if (!Is(Server::MariaDb))
        return;
    const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e"));
    Set(rows, 1, 2, Timestamp{{2024, 1, 1}, {10, 0, 0, 400'000'000}}); // stored without its fraction
    rows->UpdateBatch();
    EXPECT_EQ(Cell(QStringLiteral("SELECT b FROM e")).ToText(), u"2024-01-01 10:00:00");
}

} // namespace conformance
