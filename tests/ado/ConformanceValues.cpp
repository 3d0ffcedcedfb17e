// Values and objects that a driver would hide, cut or mistake: dates past its years, passwords that it decodes, bare
// names of tables, temporary tables, earlier results of a statement.
#include "ado/ConnectionString.h"
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

namespace {

struct Moment
{
    const char *Type, *Literal, *Text;
};

// PostgreSQL's ODBC driver made today's date of the infinity of a date, a year 9999 of a timestamp's, 1202-11-21 of
// 12024-01-01, and dropped the BC of a date.
constexpr Moment kMoments[] = {
    {"date", "infinity", "infinity"},
    {"date", "-infinity", "-infinity"},
    {"date", "0044-03-15 BC", "0044-03-15 BC"},
    {"date", "0001-01-01", "0001-01-01"},
    {"date", "2024-02-29", "2024-02-29"},
    {"date", "9999-12-31", "9999-12-31"},
    {"date", "10000-01-01", "10000-01-01"},
    {"date", "12024-01-01", "12024-01-01"},
    {"date", "99999-06-15", "99999-06-15"},
    {"date", "5874897-12-31", "5874897-12-31"},
    {"timestamp", "infinity", "infinity"},
    {"timestamp", "-infinity", "-infinity"},
    {"timestamp", "0044-03-15 12:00:00.5 BC", "0044-03-15 12:00:00.5 BC"},
    {"timestamp", "9999-12-31 23:59:59", "9999-12-31 23:59:59"},
    {"timestamp", "2024-02-29 23:59:59.000001", "2024-02-29 23:59:59.000001"},
    {"timestamp", "12024-05-06 07:08:09.25", "12024-05-06 07:08:09.25"},
    {"timestamp", "294276-12-31 23:59:59", "294276-12-31 23:59:59"},
    {"timestamptz", "infinity", "infinity"},
    {"timestamptz", "2024-02-29 23:59:59.5+00", "2024-02-29 23:59:59.5"},
    {"timestamptz", "12024-05-06 07:08:09+00", "12024-05-06 07:08:09"},
};

// Dates past the driver's years are PostgreSQL's alone.
class ConformanceOfDates : public Conformance
{
};
INSTANTIATE_TEST_SUITE_P(Over, ConformanceOfDates, testing::Values(Server::Postgres),
                         [](const testing::TestParamInfo<Server> &) { return std::string("Postgres"); });

} // namespace

TEST_P(Conformance, DatesOfAnyYearComeExactly)
{
    if (Is(Server::MariaDb)) { // knows the years to 9999 alone
        EXPECT_EQ(Cell(QStringLiteral("SELECT DATE '9999-12-31'")).ToText(), u"9999-12-31");
        return;
    }
    if (IsSqlite()) { // keeps any text
        Run(QStringLiteral("CREATE TABLE t (d DATE)"));
        for (const char *text : {"infinity", "12024-01-01", "0044-03-15 BC"}) {
            Run(QStringLiteral("DELETE FROM t"));
            Run(QStringLiteral("INSERT INTO t VALUES ('%1')").arg(QLatin1String(text)));
            EXPECT_EQ(Cell(QStringLiteral("SELECT d FROM t")).ToText(), QLatin1String(text));
        }
        return;
    }
    Run(QStringLiteral("SET TimeZone = 'UTC'"));
    for (const Moment &moment : kMoments) {
        const QString value = QStringLiteral("%1 '%2'").arg(QLatin1String(moment.Type), QLatin1String(moment.Literal));
        const RecordsetPtr rows = Run(QStringLiteral("SELECT %1 AS a, 7 AS b, CAST(NULL AS date) AS c").arg(value));
        ASSERT_EQ(rows->RecordCount(), 1);
        EXPECT_EQ(rows->CellText(0, 0), QLatin1String(moment.Text)) << moment.Type;
        EXPECT_EQ(rows->CellText(0, 1), u"7");
        EXPECT_TRUE(rows->CellIsNull(0, 2));
        EXPECT_EQ(rows->Column(0).Name, u"a");
        EXPECT_EQ(rows->Column(0).Type, moment.Type[0] == 'd' ? adDBDate : adDBTimeStamp);
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT date '12024-01-01'")), Value(Date{12024, 1, 1}));
    EXPECT_EQ(Cell(QStringLiteral("SELECT date '2024-02-29'")), Value(Date{2024, 2, 29}));
}

TEST_P(ConformanceOfDates, DatesComeExactlyWhateverTheQueryLooksLike)
{
    Run(QStringLiteral("CREATE TABLE t (n integer PRIMARY KEY, d date NOT NULL, s varchar(20))"));
    Run(QStringLiteral("INSERT INTO t VALUES (1, '0044-03-15 BC', 'a;b'), (2, 'infinity', 'b')"));
    Run(QStringLiteral("CREATE VIEW v AS SELECT * FROM t"));
    for (const char *sql :
         {"SELECT d FROM t ORDER BY n", "select d from t order by n;", "SELECT d FROM t ORDER BY n -- the end; of it",
          "SELECT d FROM t WHERE s <> ';' ORDER BY n ; -- end", "/* first; */ SELECT d FROM t ORDER BY n",
          "WITH x AS (SELECT * FROM t) SELECT d FROM x ORDER BY n", "(SELECT d FROM t ORDER BY n)",
          "SELECT d FROM v ORDER BY n", "SELECT d FROM t ORDER BY n FOR UPDATE", "SELECT d, d FROM t ORDER BY n",
          "VALUES (date '0044-03-15 BC'), ('infinity')"}) {
        const RecordsetPtr rows = Run(QString::fromLatin1(sql));
        ASSERT_EQ(rows->RecordCount(), 2) << sql;
        EXPECT_EQ(rows->CellText(0, 0), u"0044-03-15 BC") << sql;
        EXPECT_EQ(rows->CellText(1, 0), u"infinity") << sql;
    }
    const RecordsetPtr rows = Run(QStringLiteral("SELECT d, s, n FROM t ORDER BY n"));
    EXPECT_EQ(rows->Column(0).BaseTable, u"t"); // so that it can be edited
    EXPECT_EQ(rows->Column(0).BaseColumn, u"d");
    EXPECT_EQ(rows->Column(0).Attributes & adFldIsNullable, 0);
    EXPECT_NE(rows->Column(1).Attributes & adFldIsNullable, 0);
    EXPECT_EQ(rows->Column(1).DefinedSize, 20);
    // It is asked for once: what a query does is done once.
    Run(QStringLiteral("CREATE SEQUENCE once"));
    EXPECT_EQ(Run(QStringLiteral("SELECT nextval('once'), current_date"))->CellText(0, 0), u"1");
    EXPECT_EQ(Run(QStringLiteral("SELECT nextval('once'), current_date"))->CellText(0, 0), u"2");
}

// What RETURNING gave came from the driver: a date before Christ came as one after.
TEST_P(ConformanceOfDates, DatesThatAStatementReturnsComeExactly)
{
    Run(QStringLiteral("CREATE TABLE t (n serial, d date, m timestamp)"));
    const auto texts = [](const RecordsetPtr &rows) {
        QStringList list;
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            list << rows->CellText(row, 0) + u'|' + rows->CellText(row, 1);
        return list;
    };
    const RecordsetPtr added = Run(
        QStringLiteral("INSERT INTO t (d, m) VALUES ('0044-03-15 BC', '0044-03-15 01:02:03 BC'), "
                       "('infinity', '-infinity'), ('12024-01-01', '2024-02-29 01:02:03.5') returning d, m; -- so"));
    EXPECT_EQ(texts(added),
              QStringList({QStringLiteral("0044-03-15 BC|0044-03-15 01:02:03 BC"), QStringLiteral("infinity|-infinity"),
                           QStringLiteral("12024-01-01|2024-02-29 01:02:03.5")}));
    EXPECT_EQ(added->Column(0).Name, u"d");
    EXPECT_EQ(added->Column(0).Type, adDBDate);
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) || ' ' || max(n) FROM t")).ToText(), u"3 3"); // done once
    EXPECT_EQ(
        texts(Run(QStringLiteral("UPDATE t SET m = d WHERE d < '0001-01-01' AND d > '-infinity' RETURNING d, m"))),
        QStringList(QStringLiteral("0044-03-15 BC|0044-03-15 00:00:00 BC")));
    EXPECT_EQ(texts(Run(QStringLiteral("DELETE FROM t WHERE d < '0001-01-01' RETURNING d, n"))),
              QStringList(QStringLiteral("0044-03-15 BC|1")));
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM t")).ToInt64(), 2);
}

// A field of such a type refused the words.
TEST_P(ConformanceOfDates, AnInfinityIsStored)
{
    Run(QStringLiteral("CREATE TABLE t (n integer PRIMARY KEY, d date, m timestamp, z timestamptz, "
                       "b date DEFAULT '0044-03-15 BC', s time)"));
    Run(QStringLiteral("INSERT INTO t VALUES (1, '2024-02-29', '2024-02-29', '2024-02-29')"));
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(QStringLiteral("SELECT * FROM t ORDER BY n"), m_connection, adOpenStatic, adLockOptimistic);
    const auto set = [&](const char *field, const char *word) {
        rows->Fields()[QLatin1String(field)].SetValue(QString::fromLatin1(word));
    };
    set("d", "infinity");
    set("m", " -Infinity ");
    set("z", "infinity");
    rows->Update();
    set("d", "-infinity"); // its own former value stands in the condition
    rows->Update();
    EXPECT_EQ(Cell(QStringLiteral("SELECT d || ' ' || m || ' ' || z FROM t")).ToText(),
              u"-infinity -infinity infinity");
    EXPECT_EQ(ErrorFrom([&] { set("s", "infinity"); }).Number, adErrDataConversion); // a time has none
    EXPECT_EQ(ErrorFrom([&] { set("d", "infinite"); }).Number, adErrDataConversion);
    // What the server made of a row just added comes back exactly as well.
    rows->SetUpdateResync(adResyncInserts);
    rows->AddNew();
    rows->Fields()[QStringLiteral("n")].SetValue(qint64(2));
    set("m", "infinity");
    rows->Update();
    EXPECT_EQ(rows->Fields()[QStringLiteral("b")].Text(), u"0044-03-15 BC");
    EXPECT_EQ(rows->Fields()[QStringLiteral("m")].Text(), u"infinity");
    rows->Delete();
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM t")).ToInt64(), 1);
}

// What can be asked neither as a sub-select nor in front of one comes from the driver, which cannot tell such dates:
// they are marked, and none is shown as another day.
TEST_P(ConformanceOfDates, DatesThatTheDriverCannotTellAreMarked)
{
    Run(QStringLiteral("CREATE TABLE t (d date, m timestamp)"));
    const RecordsetPtr rows =
        Run(QStringLiteral("WITH x AS (INSERT INTO t VALUES ('12024-01-01', 'infinity'), ('infinity', '-infinity'), "
                           "('-infinity', '12024-01-01'), ('2024-02-29', '0044-03-15 01:02:03 BC'), "
                           "('9999-12-31', '9999-12-31 23:59:58') RETURNING d, m) SELECT d, m FROM x"));
    ASSERT_EQ(rows->RecordCount(), 5);
    const QString outside = QStringLiteral("<date outside 0001 to 9999>");
    EXPECT_EQ(rows->CellText(0, 0), outside);
    EXPECT_EQ(rows->CellText(0, 1), u"<9999-12-31 23:59:59 or infinity>");
    EXPECT_EQ(rows->CellText(1, 0), outside);
    EXPECT_EQ(rows->CellText(1, 1), u"<9999-01-01 00:00:00 BC or -infinity>");
    EXPECT_EQ(rows->CellText(2, 0), outside);
    EXPECT_EQ(rows->CellText(2, 1), outside);
    EXPECT_EQ(rows->CellValue(3, 0), Value(Date{2024, 2, 29}));
    EXPECT_EQ(rows->CellText(3, 1), u"0044-03-15 01:02:03 BC");
    EXPECT_EQ(rows->CellText(4, 0), u"9999-12-31");
    EXPECT_EQ(rows->CellText(4, 1), u"9999-12-31 23:59:58");
    const RecordsetPtr written =
        Run(QStringLiteral("WITH x AS (DELETE FROM t WHERE d = 'infinity' RETURNING d) SELECT d FROM x"));
    EXPECT_EQ(written->CellText(0, 0), outside);
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM t")).ToInt64(), 4); // done once
    // A table with such a rule writes in no WITH. That this was tried does the user's transaction no harm.
    Run(QStringLiteral("CREATE TABLE log (d date)"));
    Run(QStringLiteral("CREATE RULE also AS ON INSERT TO t DO ALSO INSERT INTO log VALUES (NEW.d)"));
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES ('2024-03-01')"));
    EXPECT_EQ(Run(QStringLiteral("INSERT INTO t VALUES ('infinity') RETURNING d"))->CellText(0, 0), outside);
    m_connection->CommitTrans();
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM log")).ToInt64(), 2);
}

TEST_P(ConformanceOfDates, RowsWithDatesOfAnyYearAreEdited)
{
    Run(QStringLiteral("CREATE TABLE t (n integer PRIMARY KEY, d date, m timestamp)"));
    Run(QStringLiteral("INSERT INTO t VALUES (1, 'infinity', '-infinity'), (2, '12024-01-01', '12024-01-01 01:00:00'), "
                       "(3, '0044-03-15 BC', '0044-03-15 01:00:00 BC')"));
    const RecordsetPtr rows = Recordset::Create();
    rows->Open(QStringLiteral("SELECT * FROM t ORDER BY n"), m_connection, adOpenStatic, adLockOptimistic);
    for (; !rows->Eof(); rows->MoveNext()) { // the date's own former value stands in the condition
        rows->Fields()[QStringLiteral("d")].SetValue(Date{2024, 2, 29});
        rows->Update();
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM t WHERE d = '2024-02-29'")).ToInt64(), 3);
    EXPECT_EQ(Cell(QStringLiteral("SELECT string_agg(m::text, ' ' ORDER BY n) FROM t")).ToText(),
              u"-infinity 12024-01-01 01:00:00 0044-03-15 01:00:00 BC");
}

TEST_P(ConformanceOfServers, PasswordsOfAnyCharactersAreTaken)
{
    // PostgreSQL's driver decoded "%" and "+" of what the login window sent, so such a user never came in.
    const QString name = m_place + QStringLiteral("_p");
    for (const char *password : {"a%2Bb+c", "100%", "+", "%41", "p}w{d;%+"}) {
        const QString text = QLatin1String(password);
        MakeUser(name, text);
        const ConnectionPtr login = Connection::Create();
        EXPECT_NO_THROW(login->Open(ConnectionStringOf(GetParam()), name, text)) << password;
        login->State() == adStateOpen ? login->Close() : void();
        Run(QStringLiteral("DROP USER %1").arg(name));
    }
    if (!Is(Server::Postgres))
        return;
    // Whoever writes the string knows the driver: it goes out as it is written.
    Run(QStringLiteral("CREATE USER ") + name + QStringLiteral(" PASSWORD 'a%2Bb+c'"));
    const auto written = [&](const char *password) {
        QString text = WithAttribute(ConnectionStringOf(GetParam()), QStringLiteral("UID"), name);
        text.replace(QLatin1String("PWD={wick;42}"), QLatin1String("PWD=") + QLatin1String(password));
        const ConnectionPtr connection = Connection::Create();
        connection->Open(text);
        connection->Close();
    };
    EXPECT_NO_THROW(written("a%252Bb%2Bc"));
    EXPECT_NO_THROW(written("{a%2Bb+c}"));
    EXPECT_TRUE(ErrorFrom([&] { written("a%2Bb+c"); }).IsLoginFailure());
    Run(QStringLiteral("DROP USER %1").arg(name));
}

TEST_P(ConformanceOfServers, ALoginThatFailsForItsBlanksSaysSo)
{
    if (!Is(Server::MariaDb))
        return; // one driver drops them
    const QString name = m_place + QStringLiteral("_b"), note = QStringLiteral("drops the blanks at both ends");
    Run(QStringLiteral("CREATE USER %1@'%' IDENTIFIED BY ' x '").arg(name));
    const ConnectionPtr login = Connection::Create();
    const Error refused = ErrorFrom([&] { login->Open(ConnectionStringOf(GetParam()), name, QStringLiteral(" x ")); });
    EXPECT_TRUE(refused.IsLoginFailure());
    EXPECT_TRUE(refused.Description.contains(note)) << refused.what();
    const Error other = ErrorFrom([&] { login->Open(ConnectionStringOf(GetParam()), name, QStringLiteral("y")); });
    EXPECT_TRUE(other.IsLoginFailure());
    EXPECT_FALSE(other.Description.contains(note)) << other.what();
    Run(QStringLiteral("DROP USER %1").arg(name));
}

TEST_P(Conformance, ABareNameOpensItsTable)
{
    Run(QStringLiteral("CREATE TABLE %1 (a INTEGER)").arg(Quoted(QStringLiteral("Two words"))));
    Run(QStringLiteral("INSERT INTO %1 VALUES (7)").arg(Quoted(QStringLiteral("Two words"))));
    Run(QStringLiteral("CREATE TABLE %1 (a INTEGER)").arg(Quoted(QStringLiteral("values"))));
    Run(QStringLiteral("CREATE VIEW seen AS SELECT a + 1 AS b FROM %1").arg(Quoted(QStringLiteral("Two words"))));
    const auto open = [&](const QByteArray &source, int options = -1) {
        const RecordsetPtr rows = Recordset::Create();
        rows->Open(QString::fromUtf8(source), m_connection, adOpenStatic, adLockReadOnly, options);
        return rows;
    };
    EXPECT_EQ(open("Two words")->CellText(0, 0), u"7");
    EXPECT_EQ(open("seen")->CellText(0, 0), u"8");
    EXPECT_EQ(open("values")->ColumnCount(), 1);
    for (const char *name : {"select", "Select_2", "selections"}) {
        Run(QStringLiteral("CREATE TABLE %1 (a INTEGER)").arg(Quoted(QLatin1String(name))));
        EXPECT_EQ(open(name)->ColumnCount(), 1) << name;
    }
    // Any other text is sent as it stands.
    EXPECT_EQ(open("SELECT a + 2 FROM " + Quoted(QStringLiteral("Two words")).toUtf8())->CellText(0, 0), u"9");
    EXPECT_EQ(open("-- a note\nSELECT 3")->CellText(0, 0), u"3");
    EXPECT_EQ(open("WITH x AS (SELECT 4 AS a) SELECT a FROM x")->CellText(0, 0), u"4");
    if (Is(Server::Postgres)) {
        EXPECT_EQ(open("SHOW server_encoding")->CellText(0, 0), u"UTF8");
    }
    for (const auto &[text, options] : {std::pair{"two words", -1}, // letter by letter
                                        std::pair{"Two words ", -1}, std::pair{"no_such_table", -1},
                                        std::pair{"Two words", 1}}) { // said to be a statement
        SCOPED_TRACE(text);
        ErrorFrom([&] { open(text, options); });
    }
    if (Is(Server::Postgres)) { // of two schemas, the one that a plain name reaches
        Run(QStringLiteral("CREATE TABLE pg_temp.%1 (a INTEGER, b INTEGER)").arg(Quoted(QStringLiteral("Two words"))));
        EXPECT_EQ(open("Two words")->ColumnCount(), 2);
        Run(QStringLiteral("SET search_path TO pg_catalog"));
        EXPECT_EQ(open("seen")->CellText(0, 0), u"8");
    }
    // It is written back to that table.
    const RecordsetPtr rows = Recordset::Create();
    if (Is(Server::Postgres))
        Run(QStringLiteral("DROP TABLE pg_temp.%1").arg(Quoted(QStringLiteral("Two words"))));
    rows->Open(QStringLiteral("Two words"), m_connection, adOpenStatic, adLockOptimistic);
    rows->AddNew();
    rows->Fields()[0].SetValue(11);
    rows->Update();
    rows->Close();
    EXPECT_EQ(open("Two words")->RecordCount(), 2);
}

TEST_P(Conformance, TemporaryTablesAreTables)
{
    Run(QStringLiteral("CREATE TEMPORARY TABLE passing (a INTEGER, b VARCHAR(10))"));
    const RecordsetPtr all = m_connection->OpenSchema(adSchemaTables);
    all->SetFilter(QStringLiteral("TABLE_TYPE = 'TABLE' AND TABLE_NAME = 'passing'"));
    if (Is(Server::MariaDb)) { // a server of these versions lists them nowhere
        EXPECT_EQ(all->RecordCount(), 0);
        return;
    }
    EXPECT_EQ(all->RecordCount(), 1);
    const RecordsetPtr columns =
        m_connection->OpenSchema(adSchemaColumns, {QString(), QString(), QStringLiteral("passing")});
    EXPECT_EQ(columns->RecordCount(), 2);
}

TEST_P(Conformance, EarlierResultsAreThere)
{
    if (Is(Server::SqliteOdbc)) {
        // Its driver takes one statement a call.
        EXPECT_FALSE(ErrorOf(QStringLiteral("SELECT 1; SELECT 2")).Description.isEmpty());
        return;
    }
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    QString sql =
        QStringLiteral("SELECT 1 AS a; INSERT INTO t VALUES (5), (6); SELECT a, a + 1 AS b FROM t; SELECT 'x'");
    if (Is(Server::MariaDb)) { // several statements are an option of the string there
        Run(QStringLiteral("CREATE PROCEDURE three() BEGIN %1; END").arg(sql));
        sql = QStringLiteral("CALL three()");
    }
    const RecordsetPtr first = Run(sql);
    ASSERT_EQ(first->ColumnCount(), 1);
    EXPECT_EQ(first->CellText(0, 0), u"1");
    EXPECT_EQ(first->FurtherResults(), 2);
    const RecordsetPtr second = first->NextRecordset();
    ASSERT_TRUE(second);
    EXPECT_EQ(first->FurtherResults(), 0);
    ASSERT_EQ(second->ColumnCount(), 2);
    EXPECT_EQ(second->CellText(1, 1), u"7");
    EXPECT_EQ(second->FurtherResults(), 1);
    EXPECT_EQ(second->Source(), sql);
    EXPECT_EQ(second->ActiveConnection(), m_connection);
    const RecordsetPtr third = second->NextRecordset();
    ASSERT_TRUE(third);
    EXPECT_EQ(third->CellText(0, 0), u"x");
    EXPECT_EQ(third->NextRecordset(), nullptr);
    EXPECT_EQ(Run(QStringLiteral("SELECT 1"))->FurtherResults(), 0);
    const RecordsetPtr opened = Recordset::Create();
    opened->Open(sql, m_connection);
    EXPECT_EQ(opened->FurtherResults(), 2);
    opened->Close();
    EXPECT_EQ(opened->FurtherResults(), 0);
}

TEST_P(ConformanceOfServers, AUuidIsInSmallLetters)
{
    // PostgreSQL's driver made capitals of them.
    const QString small = QStringLiteral("a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11");
    Run(QStringLiteral("CREATE TABLE t (u uuid)"));
    Run(QStringLiteral("INSERT INTO t VALUES ('%1')").arg(small.toUpper()));
    EXPECT_EQ(Cell(QStringLiteral("SELECT u FROM t")).ToText(), small);
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM t WHERE u = '%1'").arg(small)).ToInt64(), 1);
}

} // namespace conformance
