// Values come back exactly as they were stored, whatever driver carries them.
#include "tests/ado/Conformance.h"
#include <bit>
#include <limits>

using namespace ADODB;

namespace conformance {

TEST_P(Conformance, WholeNumbersKeepAll64Bits)
{
    Run(QStringLiteral("CREATE TABLE t (a BIGINT, b INTEGER, c SMALLINT)"));
    Run(QStringLiteral("INSERT INTO t VALUES (9223372036854775807, 2147483647, 32767)"));
    Run(QStringLiteral("INSERT INTO t VALUES (-9223372036854775808, -2147483648, -32768)"));
    Run(QStringLiteral("INSERT INTO t VALUES (9007199254740993, 0, NULL)"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT a, b, c FROM t ORDER BY a"));
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->CellValue(0, 0), Value(std::numeric_limits<qint64>::min()));
    EXPECT_EQ(rows->CellValue(1, 0), Value(qint64(9007199254740993)));
    EXPECT_EQ(rows->CellValue(2, 0), Value(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(rows->CellText(1, 0), u"9007199254740993");
    EXPECT_EQ(rows->CellValue(0, 1), Value(qint64(-2147483648LL)));
    EXPECT_EQ(rows->CellValue(2, 2), Value(qint64(32767)));
    EXPECT_TRUE(rows->CellIsNull(1, 2));
    EXPECT_EQ(rows->Column(0).Type, adBigInt);
    // SQLite keeps 64 bits in any of them, and its own library's driver says so.
    EXPECT_EQ(rows->Column(1).Type, Is(Server::BuiltIn) ? adBigInt : adInteger);
    EXPECT_EQ(rows->Column(2).Type, Is(Server::BuiltIn) ? adBigInt : adSmallInt);
}

TEST_P(Conformance, UnsignedWholeNumbersKeepTheirUpperHalf)
{
    if (!Is(Server::MariaDb)) { // no unsigned types there: a decimal, or SQLite's double
        const Value value = Cell(QStringLiteral("SELECT 18446744073709551615"));
        EXPECT_NEAR(value.ToDouble(), 18446744073709551615.0, Is(Server::SqliteOdbc) ? 1e5 : 0);
        if (Is(Server::Postgres)) {
            EXPECT_EQ(value.ToText(), u"18446744073709551615");
        }
        return;
    }
    Run(QStringLiteral("CREATE TABLE t (a BIGINT UNSIGNED, b INT UNSIGNED, c TINYINT UNSIGNED)"));
    Run(QStringLiteral("INSERT INTO t VALUES (18446744073709551615, 4294967295, 255)"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT * FROM t"));
    EXPECT_EQ(rows->Column(0).Type, adUnsignedBigInt);
    EXPECT_EQ(rows->CellValue(0, 0), Value(quint64(18446744073709551615ULL)));
    EXPECT_EQ(rows->CellText(0, 1), u"4294967295");
    EXPECT_EQ(rows->CellText(0, 2), u"255");
}

TEST_P(Conformance, DecimalsKeep38Digits)
{
    if (IsSqlite()) { // it has no decimals of its own: exact digits are kept as text there
        const QString digits = QStringLiteral("1234567890123456789012345678.0123456789");
        Run(QStringLiteral("CREATE TABLE t (a TEXT)"));
        Run(QStringLiteral("INSERT INTO t VALUES ('%1')").arg(digits));
        EXPECT_EQ(Cell(QStringLiteral("SELECT a FROM t")).ToText(), digits);
        return;
    }
    Run(QStringLiteral("CREATE TABLE t (a DECIMAL(38, 10), b DECIMAL(38, 0))"));
    Run(QStringLiteral("INSERT INTO t VALUES (1234567890123456789012345678.0123456789, "
                       "-99999999999999999999999999999999999999)"));
    Run(QStringLiteral("INSERT INTO t VALUES (0.1, NULL)"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT a, b FROM t ORDER BY a DESC"));
    EXPECT_EQ(rows->Column(0).Type, adNumeric);
    EXPECT_EQ(rows->Column(0).Precision, 38);
    EXPECT_EQ(rows->Column(0).NumericScale, 10);
    EXPECT_EQ(rows->CellText(0, 0), u"1234567890123456789012345678.0123456789");
    EXPECT_EQ(rows->CellText(0, 1), u"-99999999999999999999999999999999999999");
    EXPECT_EQ(rows->CellText(1, 0), u"0.1000000000");
    EXPECT_TRUE(rows->CellIsNull(1, 1));
}

// SQLite's ODBC driver hands doubles over as 15 digits and turns what is near the limit into infinity; the built-in
// driver is there for those who need them whole.
TEST_P(Conformance, DoublesComeBackBitForBit)
{
    const double numbers[] = {0.1, 0.30000000000000004, 1.0 / 3, -123456.789, 5e-324, 1.7976931348623157e308, 2.5};
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, d DOUBLE PRECISION)"));
    int number = 0;
    for (const double value : numbers)
        Run(QStringLiteral("INSERT INTO t VALUES (%1, %2)").arg(++number).arg(QString::number(value, 'g', 17)));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT d FROM t ORDER BY n"));
    ASSERT_EQ(rows->RecordCount(), std::ssize(numbers));
    EXPECT_EQ(rows->Column(0).Type, adDouble);
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
        const Value value = rows->CellValue(row, 0);
        const double expected = numbers[row];
        if (Is(Server::SqliteOdbc) && QString::number(expected, 'g', 15).toDouble() != expected) {
            EXPECT_NE(value.ToDouble(), 0) << row;
            continue;
        }
        ASSERT_NE(value.As<double>(), nullptr) << row;
        EXPECT_EQ(std::bit_cast<quint64>(*value.As<double>()), std::bit_cast<quint64>(expected)) << row;
    }
}

TEST_P(Conformance, NullIsNotAnEmptyText)
{
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, s VARCHAR(20), l %1)").arg(QLatin1String(Expects().LongText)));
    Run(QStringLiteral("INSERT INTO t VALUES (1, '', ''), (2, NULL, NULL), (3, ' ', 'x')"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT s, l FROM t ORDER BY n"));
    for (int column = 0; column < 2; ++column) {
        EXPECT_FALSE(rows->CellIsNull(0, column)) << column;
        EXPECT_EQ(rows->CellText(0, column), u"") << column;
        EXPECT_TRUE(rows->CellIsNull(1, column)) << column;
        EXPECT_EQ(rows->CellText(1, column), u"") << column;
    }
    EXPECT_EQ(rows->CellText(2, 0), u" ");
}

TEST_P(Conformance, MomentsKeepTheFractionsOfTheirSeconds)
{
    Run(QStringLiteral("CREATE TABLE t (d DATE, h %1, m %2)")
            .arg(Pick({"TIME", "TIME", "TIME(6)"}), Pick({"TIMESTAMP", "TIMESTAMP", "DATETIME(6)"})));
    Run(QStringLiteral("INSERT INTO t VALUES ('2024-02-29', '23:59:59.123456', '1999-12-31 23:59:59.000001')"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT d, h, m FROM t"));
    EXPECT_EQ(rows->Column(0).Type, adDBDate);
    EXPECT_EQ(rows->Column(1).Type, adDBTime);
    EXPECT_EQ(rows->Column(2).Type, adDBTimeStamp);
    EXPECT_EQ(rows->CellValue(0, 0), Value(Date{2024, 2, 29}));
    EXPECT_EQ(rows->CellValue(0, 1), Value(Time{23, 59, 59, 123456000}));
    EXPECT_EQ(rows->CellValue(0, 2), Value(Timestamp{{1999, 12, 31}, {23, 59, 59, 1000}}));
}

TEST_P(Conformance, DatesThatNoCalendarHasStayAsTheyWereWritten)
{
    if (Is(Server::Postgres)) { // refuses them
        EXPECT_EQ(ErrorOf(QStringLiteral("SELECT DATE '2020-00-01'")).SQLState, u"22008");
        return;
    }
    if (Is(Server::MariaDb))
        Run(QStringLiteral("SET sql_mode = ''"));
    Run(QStringLiteral("CREATE TABLE t (d DATE, h %1, m %2)")
            .arg(Pick({"TIME", "", "TIME(1)"}), Pick({"TIMESTAMP", "", "DATETIME"})));
    Run(QStringLiteral("INSERT INTO t VALUES ('0000-00-00', '-838:59:59.5', '2020-00-01 00:00:00')"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT d, h, m FROM t"));
    EXPECT_EQ(rows->CellText(0, 0), u"0000-00-00");
    EXPECT_TRUE(rows->CellText(0, 1).startsWith(u"-838:59:59.5")) << rows->CellText(0, 1).toStdString();
    EXPECT_EQ(rows->CellText(0, 2), u"2020-00-01 00:00:00");
    EXPECT_FALSE(rows->CellIsNull(0, 0));
}

TEST_P(Conformance, TextOfAnyScriptSurvives)
{
    const char *texts[] = {"Größe",
                           "Ελλάδα",
                           "Привет",
                           "日本語",
                           "𠜎𠜱𠝹",
                           "مرحبا",
                           "👩‍👩‍👧 🎉",
                           "é vs e\u0301",
                           "tab\tand\r\nlines\nof \\ and ' and \"",
                           "%_[]{};--"};
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, s VARCHAR(200), l %1)").arg(QLatin1String(Expects().LongText)));
    int number = 0;
    for (const char *text : texts) {
        QString literal = Utf(text).replace(u'\'', QLatin1String("''"));
        if (Is(Server::MariaDb))
            literal.replace(u'\\', QLatin1String("\\\\"));
        Run(QStringLiteral("INSERT INTO t VALUES (%1, '%2', '%2')").arg(++number).arg(literal));
    }
    const RecordsetPtr rows = Run(QStringLiteral("SELECT s, l FROM t ORDER BY n"));
    ASSERT_EQ(rows->RecordCount(), std::ssize(texts));
    for (qint64 row = 0; row < rows->RecordCount(); ++row) {
        EXPECT_EQ(rows->CellText(row, 0), Utf(texts[row])) << texts[row];
        EXPECT_EQ(rows->CellText(row, 1), Utf(texts[row])) << texts[row];
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT '日本 🎉' AS x")).ToText(), Utf("日本 🎉"));
}

TEST_P(Conformance, BytesComeBackAsTheyAre)
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all.append(char(byte));
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, b %1)").arg(QLatin1String(Expects().Blob)));
    const QString literal = QString::fromLatin1(Expects().Bytes);
    const QString hex = QString::fromLatin1(all.toHex());
    Run(QStringLiteral("INSERT INTO t VALUES (1, %1)").arg(literal.arg(hex)));
    Run(QStringLiteral("INSERT INTO t VALUES (2, %1)").arg(literal.arg(hex.repeated(100))));
    Run(QStringLiteral("INSERT INTO t VALUES (3, %1)").arg(literal.arg(QString())));
    Run(QStringLiteral("INSERT INTO t VALUES (4, NULL)"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT b FROM t ORDER BY n"));
    EXPECT_EQ(rows->Column(0).Type, adBinary);
    EXPECT_EQ(rows->CellValue(0, 0), Value(all));
    EXPECT_EQ(rows->CellValue(1, 0), Value(all.repeated(100)));
    EXPECT_EQ(rows->CellValue(2, 0), Value(QByteArray("")));
    EXPECT_FALSE(rows->CellIsNull(2, 0));
    EXPECT_TRUE(rows->CellIsNull(3, 0));
}

TEST_P(Conformance, BooleansAreBooleans)
{
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, b %1)").arg(Pick({"BOOLEAN", "BOOLEAN", "BIT(1)"})));
    Run(QStringLiteral("INSERT INTO t VALUES (1, %1), (2, %2), (3, NULL)")
            .arg(Pick({"1", "true", "b'1'"}), Pick({"0", "false", "b'0'"})));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT b FROM t ORDER BY n"));
    EXPECT_EQ(rows->Column(0).Type, adBoolean);
    EXPECT_EQ(rows->CellValue(0, 0), Value(true));
    EXPECT_EQ(rows->CellValue(1, 0), Value(false));
    EXPECT_TRUE(rows->CellIsNull(2, 0));
    EXPECT_EQ(rows->CellText(0, 0), u"True");
}

TEST_P(Conformance, ATextOfTenMegabytesIsWhole)
{
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, l %1)").arg(QLatin1String(Expects().LongText)));
    const QString unit = Utf("ж0123456789");
    if (IsSqlite())
        Run(QStringLiteral("INSERT INTO t VALUES (1, replace(hex(zeroblob(500000)), '00', '%1%1'))").arg(unit));
    else
        Run(QStringLiteral("INSERT INTO t VALUES (1, repeat('%1', 1000000))").arg(unit));
    Run(QStringLiteral("INSERT INTO t VALUES (2, 'short'), (3, NULL)"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT l, n FROM t ORDER BY n"));
    ASSERT_EQ(rows->RecordCount(), 3);
    EXPECT_TRUE(rows->CellText(0, 0) == unit.repeated(1000000));
    EXPECT_EQ(rows->CellText(1, 0), u"short");
    EXPECT_TRUE(rows->CellIsNull(2, 0));
    EXPECT_EQ(rows->CellText(2, 1), u"3");
}

TEST_P(Conformance, ATextOfTenMegabytesGoesInByAStatement)
{
    Run(QStringLiteral("CREATE TABLE t (l %1)").arg(QLatin1String(Expects().LongText)));
    const QString text = Utf("zehn Megabyte und 日本 ").repeated(400000);
    Run(QStringLiteral("INSERT INTO t VALUES ('%1')").arg(text));
    EXPECT_TRUE(Cell(QStringLiteral("SELECT l FROM t")).ToText() == text);
}

// Cells of every length around the sizes of the bound buffers, in an order that keeps changing them.
TEST_P(Conformance, CellsOfAllLengthsAreWholeInEveryRow)
{
    Run(QStringLiteral("CREATE TABLE t (n INTEGER, s VARCHAR(4000), l %1)").arg(QLatin1String(Expects().LongText)));
    m_connection->BeginTrans();
    const auto lengthOf = [](qint64 n) {
        return n % 97 == 0 ? 20000 + n : n % 7 == 0 ? 250 + n % 13 : n < 1500 ? n % 40 : 200 + n % 1200;
    };
    for (qint64 first = 0; first < 3500; first += 100) {
        QStringList rows;
        for (qint64 n = first; n < first + 100; ++n) {
            const QString text = QString::number(n) + QString(lengthOf(n), QChar(u'a' + int(n % 26)));
            rows += QStringLiteral("(%1, '%2', '%3')").arg(n).arg(text.left(4000), text);
        }
        Run(QStringLiteral("INSERT INTO t VALUES ") + rows.join(u','));
    }
    m_connection->CommitTrans();
    const RecordsetPtr rows = Run(QStringLiteral("SELECT n, s, l, n AS again FROM t ORDER BY n"));
    ASSERT_EQ(rows->RecordCount(), 3500);
    for (qint64 n = 0; n < 3500; ++n) {
        const QString text = QString::number(n) + QString(lengthOf(n), QChar(u'a' + int(n % 26)));
        ASSERT_EQ(rows->CellText(n, 0), QString::number(n));
        ASSERT_TRUE(rows->CellText(n, 1) == text.left(4000)) << n;
        ASSERT_TRUE(rows->CellText(n, 2) == text) << n;
        ASSERT_EQ(rows->CellText(n, 3), QString::number(n));
    }
}

TEST_P(Conformance, TwoHundredThousandRowsArrive)
{
    const QString sql = Pick(
        {"WITH RECURSIVE g(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < 200000) "
         "SELECT n, n * 1.5 AS d, 'row ' || n AS s, CASE WHEN n % 3 = 0 THEN NULL ELSE n END AS x FROM g",
         "SELECT n, n * 1.5::float8 AS d, 'row ' || n AS s, CASE WHEN n % 3 = 0 THEN NULL ELSE n END AS x "
         "FROM generate_series(1, 200000) n",
         "SELECT seq AS n, seq * 1.5e0 AS d, concat('row ', seq) AS s, CASE WHEN seq % 3 = 0 THEN NULL ELSE seq END "
         "AS x FROM seq_1_to_200000"});
    const RecordsetPtr rows = Run(sql);
    ASSERT_EQ(rows->RecordCount(), 200000);
    for (qint64 row = 0; row < 200000; row += 1 + row % 17) {
        const qint64 n = row + 1;
        ASSERT_EQ(rows->CellValue(row, 0).ToInt64(), n);
        ASSERT_EQ(rows->CellValue(row, 1).ToDouble(), double(n) * 1.5);
        ASSERT_EQ(rows->CellText(row, 2), QStringLiteral("row %1").arg(n));
        ASSERT_EQ(rows->CellIsNull(row, 3), n % 3 == 0);
    }
    EXPECT_EQ(rows->CellText(199999, 2), u"row 200000");
}

TEST_P(Conformance, AnEmptyResultHasItsColumns)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER, b VARCHAR(10))"));
    const RecordsetPtr rows = Run(QStringLiteral("SELECT * FROM t WHERE 1=0"));
    EXPECT_EQ(rows->State(), adStateOpen);
    ASSERT_EQ(rows->ColumnCount(), 2);
    EXPECT_EQ(rows->Column(0).Name, u"a");
    EXPECT_EQ(rows->Column(1).Name, u"b");
    EXPECT_EQ(rows->Column(1).Type, Is(Server::BuiltIn) ? adVarWChar : adVarChar);
    EXPECT_EQ(rows->Column(1).DefinedSize, 10);
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_TRUE(rows->Bof() && rows->Eof());
}

} // namespace conformance
