// The built-in driver: opening, types and their exactness, errors, several statements, cancel.
#include "TempDatabase.h"
#include "ado/sqlite/SqliteTypes.h"

#include <QFile>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <thread>

using namespace ADODB;

namespace {

TEST(Sqlite, AFileThatIsNoDatabaseFailsAtOpenInTheLibrarysWords)
{
    TempDatabase database;
    QFile file(database.File());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    const ConnectionPtr connection = Connection::Create();
    const auto error = ErrorOf([&] { connection->Open(database.ConnectionString()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "file is not a database");
    EXPECT_EQ(connection->State(), adStateClosed);
}

// A mistyped name became an empty database without a word.
TEST(Sqlite, AMissingFileIsAnErrorAndIsMadeWhenTheStringSaysSo)
{
    const TempDatabase database;
    const QString plain = QStringLiteral("Driver={SQLite};Database=") + database.File();
    for (const char *further : {"", ";Mode=ReadOnly", ";Create=No", ";Mode=ReadOnly;Create=Yes"}) {
        const ConnectionPtr connection = Connection::Create();
        const auto error = ErrorOf([&] { connection->Open(plain + QLatin1String(further)); });
        ASSERT_TRUE(error) << further;
        EXPECT_EQ(error->Number, adErrFileNotFound) << further;
        EXPECT_TRUE(error->Description.contains(database.File())) << error->what();
        EXPECT_TRUE(error->Description.endsWith(QLatin1String("does not exist."))) << error->what();
        EXPECT_EQ(connection->State(), adStateClosed);
        EXPECT_FALSE(QFile::exists(database.File())) << further;
    }
    Connection::Create()->Open(plain + QStringLiteral(";create=yes"));
    EXPECT_TRUE(QFile::exists(database.File()));
    const ConnectionPtr connection = Connection::Create();
    connection->Open(plain); // and now it is there
    connection->Execute(QStringLiteral("CREATE TABLE t (a)"));
    const auto error = ErrorOf(
        [] { Connection::Create()->Open(QStringLiteral("Driver=SQLite;Create=Yes;Database=/no/such/folder/x.db")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "unable to open database file");
    EXPECT_NE(NumberOf([&] { Connection::Create()->Open(QStringLiteral("Driver=SQLite")); }), 0);
}

TEST(Sqlite, NamesThatNeedNoFileOpen)
{
    const TempDatabase database;
    const QString uri = QStringLiteral("file:") + database.File();
    for (const QString &name :
         {QStringLiteral(":memory:"), QStringLiteral("file::memory:"),
          QStringLiteral("file:shared?mode=memory&cache=shared"), uri + QStringLiteral("?mode=rwc")}) {
        const ConnectionPtr connection = Connection::Create();
        connection->Open(QStringLiteral("Driver=SQLite;Database={%1}").arg(name));
        connection->Execute(QStringLiteral("CREATE TABLE t (a)"));
        EXPECT_EQ(connection->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 0) << qPrintable(name);
    }
    EXPECT_FALSE(QFile::exists(QStringLiteral("shared")));
    EXPECT_TRUE(QFile::exists(database.File())); // the URI said so
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Driver=SQLite;Database={%1?mode=rw}").arg(uri));
    connection->Close();
    EXPECT_EQ(NumberOf([&] { connection->Open(QStringLiteral("Driver=SQLite;Database={%1x}").arg(uri)); }),
              adErrFileNotFound);
    EXPECT_FALSE(QFile::exists(database.File() + u'x'));
}

TEST(Sqlite, AFieldSaysWhetherItMayBeNullOrWritten)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (must INTEGER NOT NULL, may INTEGER)"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT must, may, may + 1, 7 FROM t"));
    EXPECT_EQ(rows->Fields()[0].Attributes(), adFldUpdatable);
    EXPECT_EQ(rows->Fields()[1].Attributes(), adFldUpdatable | adFldIsNullable);
    EXPECT_EQ(rows->Fields()[2].Attributes(), adFldIsNullable);
    EXPECT_EQ(rows->Fields()[3].Attributes(), adFldIsNullable);
}

TEST(Sqlite, ATextThatLooksLikeADateStaysATextInANumericColumn)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (n NUMERIC(10,2), d DATE, h TIME, m TIMESTAMP)"));
    connection->Execute(QStringLiteral("INSERT INTO t VALUES ('2024-02-29', '23:59:59', '2024-02-29', '23:59:59'), "
                                       "('23:59:59', '1.5', '1.5', '1.5')"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT * FROM t"));
    for (int column = 0; column < 4; ++column)
        EXPECT_NE(rows->CellValue(0, column).As<QString>(), nullptr) << column;
    EXPECT_EQ(rows->CellText(0, 0), "2024-02-29");
    EXPECT_EQ(rows->CellValue(1, 0), Value(QStringLiteral("23:59:59")));
}

TEST(Sqlite, ReadOnlyModeRefusesWrites)
{
    TempDatabase database;
    database.Open()->Execute(QStringLiteral("CREATE TABLE t (a)"));
    const ConnectionPtr connection = Connection::Create();
    connection->Open(database.ConnectionString() + QStringLiteral(";Mode=ReadOnly"));
    const auto error = ErrorOf([&] { connection->Execute(QStringLiteral("INSERT INTO t VALUES (1)")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->SQLState, "25006");
}

struct TypeCase
{
    const char *declaration;
    DataTypeEnum type;
    qint64 size;
    int precision, scale;
};

class SqliteType : public testing::TestWithParam<TypeCase>
{
};

TEST_P(SqliteType, IsReadFromTheDeclaration)
{
    TempDatabase database;
    const TypeCase expected = GetParam();
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (a %1)").arg(QLatin1String(expected.declaration)));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT a FROM t"));
    const Field &field = rows->Fields()[0];
    EXPECT_EQ(field.Type(), expected.type);
    EXPECT_EQ(field.DefinedSize(), expected.size);
    EXPECT_EQ(field.Precision(), expected.precision);
    EXPECT_EQ(field.NumericScale(), expected.scale);
}

INSTANTIATE_TEST_SUITE_P(
    Declarations, SqliteType,
    testing::Values(TypeCase{"INTEGER", adBigInt, 8, 19, 0}, TypeCase{"int", adBigInt, 8, 19, 0},
                    TypeCase{"UNSIGNED BIG INT", adBigInt, 8, 19, 0}, TypeCase{"REAL", adDouble, 8, 15, 0},
                    TypeCase{"DOUBLE PRECISION", adDouble, 8, 15, 0}, TypeCase{"FLOAT", adDouble, 8, 15, 0},
                    TypeCase{"BOOLEAN", adBoolean, 2, 0, 0}, TypeCase{"DECIMAL(12, 3)", adNumeric, 19, 12, 3},
                    TypeCase{"DECIMAL_TEXT(19,4)", adNumeric, 19, 19, 4}, TypeCase{"NUMERIC", adNumeric, 19, 0, 0},
                    TypeCase{"DATE", adDBDate, 6, 0, 0}, TypeCase{"TIME", adDBTime, 6, 0, 0},
                    TypeCase{"DATETIME", adDBTimeStamp, 16, 0, 0}, TypeCase{"TIMESTAMP", adDBTimeStamp, 16, 0, 0},
                    TypeCase{"BLOB", adBinary, -1, 0, 0}, TypeCase{"UUID", adGUID, 16, 0, 0},
                    TypeCase{"VARCHAR(40)", adVarWChar, 40, 0, 0}, TypeCase{"NCHAR(5)", adVarWChar, 5, 0, 0},
                    TypeCase{"TEXT", adLongVarWChar, -1, 0, 0}, TypeCase{"INTERVAL", adVarWChar, -1, 0, 0},
                    TypeCase{"VARCHAR(99999999999999999999)", adVarWChar, 9999999999, 0, 0},
                    TypeCase{"WHATEVER", adVarWChar, -1, 0, 0}));

// SQLite's parser takes no such declarations, and the reader must take any text.
TEST(Sqlite, ABrokenDeclarationGivesATypeAllTheSame)
{
    const auto read = [](const char *declaration) {
        ColumnInfo column;
        const bool known = SqliteDeclaredType(declaration, column);
        return QStringLiteral("%1 %2 %3 %4")
            .arg(known)
            .arg(int(column.Type))
            .arg(column.Precision)
            .arg(column.NumericScale);
    };
    EXPECT_EQ(read("DECIMAL(,5)"), "1 131 5 0"); // the first number is the precision, wherever it stands
    EXPECT_EQ(read("DECIMAL(5,)"), "1 131 5 0");
    EXPECT_EQ(read("DECIMAL(5"), "1 131 5 0");
    EXPECT_EQ(read("DECIMAL(5)(7)"), "1 131 5 0");
    EXPECT_EQ(read("(,5)"), "0 202 0 0");
    EXPECT_EQ(read(""), "0 202 0 0");
}

TEST(Sqlite, KeepsEveryValueExactly)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    const RecordsetPtr rows = connection->Execute(
        QString::fromUtf8("SELECT 9223372036854775807, -9223372036854775808, 9007199254740993, 0.1, 1e308, '', NULL, "
                          "'\xD0\x96\xCE\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80', x'00FF10', x''"));
    EXPECT_EQ(rows->CellValue(0, 0), Value(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(rows->CellValue(0, 1), Value(std::numeric_limits<qint64>::min()));
    EXPECT_EQ(rows->CellText(0, 2), "9007199254740993");
    EXPECT_EQ(rows->CellValue(0, 3), Value(0.1));
    EXPECT_EQ(rows->CellValue(0, 4), Value(1e308));
    EXPECT_EQ(rows->CellValue(0, 5), Value(QString::fromUtf8("")));
    EXPECT_FALSE(rows->CellIsNull(0, 5));
    EXPECT_TRUE(rows->CellIsNull(0, 6));
    EXPECT_EQ(rows->CellText(0, 7), QString::fromUtf8("\xD0\x96\xCE\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"));
    EXPECT_EQ(rows->CellValue(0, 8), Value(QByteArray("\x00\xFF\x10", 3)));
    EXPECT_EQ(rows->CellText(0, 8), "0x00FF10");
    EXPECT_EQ(rows->CellValue(0, 9), Value(QByteArray("")));
}

TEST(Sqlite, DecimalsOf38DigitsAndMomentsKeepTheirDigits)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral(
        "CREATE TABLE t (d DECIMAL_TEXT(38,4), n NUMERIC(10,2), day DATE, t TIME, m TIMESTAMP);"
        "INSERT INTO t VALUES ('-1234567890123456789012345678901234.5600', 12.5, '2024-02-29', '23:59:59.123456789',"
        " '1999-12-31 23:59:59.5');"
        "INSERT INTO t VALUES ('0.10', 7, 'not a day', 5, '2024-01-02T03:04:05');"
        "INSERT INTO t VALUES (NULL, 'x', NULL, NULL, '2024-01-02')"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT * FROM t"));
    EXPECT_EQ(rows->CellText(0, 0), "-1234567890123456789012345678901234.5600");
    EXPECT_EQ(rows->CellText(0, 1), "12.5");
    EXPECT_EQ(rows->CellValue(0, 2), Value(Date{2024, 2, 29}));
    EXPECT_EQ(rows->CellText(0, 3), "23:59:59.123456789");
    EXPECT_EQ(rows->CellValue(0, 4), Value(Timestamp{{1999, 12, 31}, {23, 59, 59, 500000000}}));
    // What does not fit its column stays what it is.
    EXPECT_EQ(rows->CellText(1, 1), "7");
    EXPECT_EQ(rows->CellText(1, 2), "not a day");
    EXPECT_EQ(rows->CellValue(1, 3), Value(5));
    EXPECT_EQ(rows->CellText(1, 4), "2024-01-02T03:04:05");
    EXPECT_EQ(rows->CellText(2, 1), "x");
    EXPECT_EQ(rows->CellText(2, 4), "2024-01-02");
}

TEST(Sqlite, BooleansAreZeroAndOneAndOtherNumbersStayNumbers)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (b BOOLEAN); INSERT INTO t VALUES (0), (1), (7)"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT b FROM t"));
    EXPECT_EQ(rows->CellValue(0, 0), Value(false));
    EXPECT_EQ(rows->CellText(1, 0), "True");
    EXPECT_EQ(rows->CellValue(2, 0), Value(7));
}

TEST(Sqlite, AColumnWithoutATypeTakesThatOfItsFirstValue)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    const auto typeOf = [&](const char *values) {
        return connection->Execute(QStringLiteral("SELECT column1 FROM (VALUES %1)").arg(QLatin1String(values)))
            ->Fields()[0]
            .Type();
    };
    EXPECT_EQ(typeOf("(NULL), (NULL), (3)"), adBigInt);
    EXPECT_EQ(typeOf("(NULL), (2.5)"), adDouble);
    EXPECT_EQ(typeOf("(3), (2.5)"), adDouble);
    EXPECT_EQ(typeOf("('x'), (2.5)"), adVarWChar);
    EXPECT_EQ(typeOf("(x'01')"), adBinary);
    EXPECT_EQ(typeOf("(NULL)"), adVarWChar);
    const RecordsetPtr mixed = connection->Execute(
        QStringLiteral("SELECT column1 FROM (VALUES (NULL), (3), (2.5), (9007199254740993), ('x'))"));
    EXPECT_TRUE(mixed->CellIsNull(0, 0));
    EXPECT_EQ(mixed->CellText(1, 0), "3");
    EXPECT_EQ(mixed->CellText(2, 0), "2.5");
    EXPECT_EQ(mixed->CellText(3, 0), "9007199254740993");
    EXPECT_EQ(mixed->CellText(4, 0), "x");
}

TEST(Sqlite, ATypeThatChangesLateInALongResultIsKept)
{
    TempDatabase database;
    const RecordsetPtr rows = database.Open()->Execute(
        QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < 5000) "
                       "SELECT CASE WHEN i < 3000 THEN NULL WHEN i < 4000 THEN i ELSE 'row ' || i END FROM c"));
    ASSERT_EQ(rows->RecordCount(), 5000);
    EXPECT_TRUE(rows->CellIsNull(2998, 0));
    EXPECT_EQ(rows->CellValue(2999, 0), Value(3000));
    EXPECT_EQ(rows->CellText(4999, 0), "row 5000");
}

TEST(Sqlite, SeveralStatementsRunInOrderAndTheFirstRowsAreTheResult)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    qint64 affected = 0;
    const RecordsetPtr rows = connection->Execute(
        QStringLiteral("CREATE TABLE t (a INT); INSERT INTO t VALUES (1), (2), (3); SELECT a FROM t; -- and ; then\r\n"
                       "SELECT count(*) AS n FROM t; DELETE FROM t WHERE a = 1; /* done */ ;"),
        &affected);
    ASSERT_EQ(rows->State(), adStateOpen);
    EXPECT_EQ(rows->Fields()[0].Name(), "a");
    EXPECT_EQ(rows->RecordCount(), 3); // read before the deletion ran
    ASSERT_EQ(rows->FurtherResults(), 1);
    const RecordsetPtr next = rows->NextRecordset();
    EXPECT_EQ(next->Fields()[0].Name(), "n");
    EXPECT_EQ(next->CellText(0, 0), "3");
    EXPECT_EQ(affected, 4);
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT count(*) FROM t")), "2");
}

TEST(Sqlite, CountsRowsForChangesAndNothingForDefinitions)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    qint64 affected = 99;
    EXPECT_EQ(connection->Execute(QStringLiteral("CREATE TABLE t (a)"), &affected)->State(), adStateClosed);
    EXPECT_EQ(affected, -1);
    connection->Execute(QStringLiteral("INSERT INTO t VALUES (1), (2)"), &affected);
    EXPECT_EQ(affected, 2);
    connection->Execute(QStringLiteral("UPDATE t SET a = 5 WHERE a > 9"), &affected);
    EXPECT_EQ(affected, 0);
    connection->Execute(QStringLiteral("SELECT * FROM t"), &affected);
    EXPECT_EQ(affected, -1);
    const RecordsetPtr returned =
        connection->Execute(QStringLiteral("INSERT INTO t VALUES (7) RETURNING a"), &affected);
    EXPECT_EQ(returned->CellText(0, 0), "7");
    EXPECT_EQ(affected, 1);
    affected = 42;
    EXPECT_NE(NumberOf([&] { connection->Execute(QStringLiteral("DELETE FROM missing"), &affected); }), 0);
    EXPECT_EQ(affected, 42); // not touched when the call raises
    connection->Execute(QStringLiteral("  -- nothing at all"), &affected);
    EXPECT_EQ(affected, -1);
}

TEST(Sqlite, ErrorsCarryWordsStateAndNumber)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE t (a INT PRIMARY KEY, b INT REFERENCES t (a))"));
    const auto stateOf = [&](const char *sql) {
        const auto error = ErrorOf([&] { connection->Execute(QString::fromLatin1(sql)); });
        return error ? error->SQLState : QStringLiteral("none");
    };
    EXPECT_EQ(stateOf("SELEC 1"), "42000");
    EXPECT_EQ(stateOf("SELECT * FROM missing"), "42S02");
    EXPECT_EQ(stateOf("SELECT missing FROM t"), "42S22");
    EXPECT_EQ(stateOf("CREATE TABLE t (a)"), "42S01");
    EXPECT_EQ(stateOf("INSERT INTO t VALUES (1, NULL); INSERT INTO t VALUES (1, NULL)"), "23000");
    EXPECT_EQ(stateOf("INSERT INTO t VALUES (2, 99)"), "23000"); // foreign keys are enforced
    EXPECT_EQ(stateOf("SELECT abs(-9223372036854775808)"), "HY000");
    const auto error = ErrorOf([&] { connection->Execute(QStringLiteral("SELECT * FROM \"a'b\"")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "no such table: a'b");
    EXPECT_EQ(error->NativeError, 1);
    EXPECT_STREQ(error->what(), "no such table: a'b");
    EXPECT_EQ(NumberOf([&] { connection->Execute(QString(QStringLiteral("SELECT 1")) + QChar(0) + u'2'); }),
              adErrProviderFailed);
}

TEST(Sqlite, NamesWithQuotesAndBracketsAreData)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    connection->Execute(QStringLiteral("CREATE TABLE \"a\"\"b]c'd\" (\"x\"\"y\" INT, [order details] INT)"));
    connection->Execute(QStringLiteral("INSERT INTO \"a\"\"b]c'd\" VALUES (1, 2)"));
    const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT * FROM \"a\"\"b]c'd\""));
    EXPECT_EQ(rows->Fields()[0].Name(), "x\"y");
    EXPECT_EQ(rows->Fields()[QStringLiteral("ORDER DETAILS")].Text(), "2");
    EXPECT_EQ(rows->Column(0).BaseTable, "a\"b]c'd");
}

TEST(Sqlite, LongTextAndBytesOfTenMegabytesComeWhole)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    const RecordsetPtr rows =
        connection->Execute(QStringLiteral("SELECT replace(hex(zeroblob(5000000)), '0', 'z') AS t, zeroblob(10000000) "
                                           "AS b UNION ALL SELECT 'short', x'01'"));
    EXPECT_EQ(rows->CellText(0, 0), QString(10000000, u'z'));
    EXPECT_EQ(rows->CellValue(0, 1).As<QByteArray>()->size(), 10000000);
    EXPECT_EQ(rows->CellText(1, 0), "short");
    EXPECT_GT(rows->BytesHeld(), 20000000);
}

TEST(Sqlite, ExtensionsCannotBeLoaded)
{
    TempDatabase database;
    const auto error = ErrorOf([&] { database.Open()->Execute(QStringLiteral("SELECT load_extension('x')")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description, "not authorized");
}

TEST(Sqlite, CancelFromAnotherThreadEndsALongStatementAndLeavesTheConnectionUsable)
{
    TempDatabase database;
    const ConnectionPtr connection = database.Open();
    std::thread canceller([&] {
        while (!connection->IsBusy())
            std::this_thread::yield();
        connection->Cancel();
    });
    const auto error = ErrorOf([&] {
        connection->Execute(
            QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c) SELECT count(*) FROM c"));
    });
    canceller.join();
    ASSERT_TRUE(error); // the statement has no end of its own
    EXPECT_EQ(error->Number, adErrOperationCancelled);
    EXPECT_EQ(error->SQLState, "HY008");
    EXPECT_EQ(Scalar(connection, QStringLiteral("SELECT 5")), "5");
}

TEST(Sqlite, CancelEndsTheWaitForAnotherProcesssLock)
{
    TempDatabase database;
    const ConnectionPtr first = database.Open(), second = database.Open();
    first->Execute(QStringLiteral("CREATE TABLE t (a)"));
    first->Execute(QStringLiteral("BEGIN EXCLUSIVE"));
    std::thread canceller([&] {
        while (!second->IsBusy())
            std::this_thread::yield();
        second->Cancel();
    });
    const int number = NumberOf([&] { second->Execute(QStringLiteral("INSERT INTO t VALUES (1)")); });
    canceller.join();
    EXPECT_EQ(number, adErrOperationCancelled); // a wait to its end has the words of the lock
}

} // namespace
