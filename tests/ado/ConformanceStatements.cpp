// Statements, their counts, their errors, transactions, and names of all kinds.
#include "ado/family/Family.h"
#include "ado/odbc/OdbcDriver.h"
#include "tests/ado/Conformance.h"
#include <QFile>

using namespace ADODB;

namespace conformance {

namespace {

const char *const kColumnNames[] = {"two words",  "a\"b]c'd", "[x]",       "per%cent", "under_score",
                                    "semi;colon", "Ünï 日本", "back`tick", "question?"};

} // namespace

TEST_P(Conformance, AffectedRowsAreCounted)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    EXPECT_EQ(Affected(QStringLiteral("INSERT INTO t VALUES (1), (2), (3)")), 3);
    EXPECT_EQ(Affected(QStringLiteral("UPDATE t SET a = a + 10 WHERE a > 1")), 2);
    EXPECT_EQ(Affected(QStringLiteral("UPDATE t SET a = 0 WHERE a = 77")), 0); // no row is no error
    EXPECT_EQ(Affected(QStringLiteral("DELETE FROM t")), 3);
    EXPECT_EQ(Affected(QStringLiteral("SELECT * FROM t")), -1); // what drivers count of a SELECT means nothing
    EXPECT_EQ(Run(QStringLiteral("DELETE FROM t"))->State(), adStateClosed);
}

TEST_P(Conformance, ErrorsCarryTheServersWords)
{
    const Error missing = ErrorOf(QStringLiteral("SELECT * FROM no_such_table"));
    EXPECT_TRUE(missing.Description.contains(u"no_such_table")) << missing.what();
    const Error syntax = ErrorOf(QStringLiteral("SELEKT 1"));
    EXPECT_TRUE(syntax.Description.contains(QLatin1String("syntax"), Qt::CaseInsensitive)) << syntax.what();
    Run(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY)"));
    Run(QStringLiteral("INSERT INTO t VALUES (1)"));
    const Error twice = ErrorOf(QStringLiteral("INSERT INTO t VALUES (1)"));
    const struct
    {
        const Error &told;
        const char *state;
    } states[] = {{missing, Expects().NoTable}, {syntax, Expects().Syntax}, {twice, Expects().Twice}};
    for (const auto &row : states) {
        const QString state = QString::fromLatin1(row.state);
        EXPECT_EQ(state.isEmpty() ? state : row.told.SQLState, state) << row.told.what();
    }
    if (Is(Server::MariaDb)) { // whose driver tells the server's own numbers
        EXPECT_EQ(missing.NativeError, 1146);
        EXPECT_EQ(twice.NativeError, 1062);
    }
    if (IsSqlite()) {
        EXPECT_TRUE(twice.Description.contains(u"UNIQUE")) << twice.what();
    }
    EXPECT_EQ(m_connection->State(), adStateOpen);
    EXPECT_EQ(Cell(QStringLiteral("SELECT 41 + 1")).ToInt64(), 42); // and the connection goes on
}

TEST_P(Conformance, AWrongPasswordIsALoginFailure)
{
    if (IsSqlite()) { // there is nobody to refuse: credentials are not looked at
        Connection::Create()->Open(m_string, QStringLiteral("somebody"), QStringLiteral("secret"));
        return;
    }
    const ConnectionPtr connection = Connection::Create();
    const Error error =
        ErrorFrom([&] { connection->Open(m_string, QStringLiteral("brindle"), QStringLiteral("wrong")); });
    EXPECT_EQ(error.Number, adErrLoginFailed) << error.what();
    EXPECT_TRUE(error.Description.contains(QLatin1String("password"), Qt::CaseInsensitive)) << error.what();
    EXPECT_EQ(connection->State(), adStateClosed);
    EXPECT_TRUE(ErrorFrom([&] {
                    connection->Open(m_string, QStringLiteral("nobody"), QStringLiteral("x}y"));
                }).IsLoginFailure());
}

TEST_P(Conformance, CredentialsOfALoginWinOverThoseInTheString)
{
    if (IsSqlite()) {
        EXPECT_EQ(m_connection->ConnectionString(), m_string);
        return;
    }
    QString without = ConnectionStringOf(GetParam());
    without.replace(QLatin1String("wick;42"), QLatin1String("not this"));
    const ConnectionPtr connection = Connection::Create();
    EXPECT_TRUE(ErrorFrom([&] { connection->Open(without); }).IsLoginFailure());
    connection->Open(without, QStringLiteral("brindle"), QStringLiteral("wick;42"));
    EXPECT_EQ(connection->State(), adStateOpen);
    EXPECT_EQ(connection->ConnectionString(), without); // as it was given
    const QString user = Pick({"", "p}w{d;", "p;w d"}), name = m_place + QStringLiteral("_u");
    MakeUser(name, user);
    const ConnectionPtr other = Connection::Create();
    EXPECT_NO_THROW(other->Open(without, name, user));
    other->State() == adStateOpen ? other->Close() : void();
    Run(QStringLiteral("DROP USER %1").arg(name));
}

TEST_P(Conformance, StatementsAfterAClosingRaise)
{
    m_connection->Close();
    EXPECT_EQ(m_connection->State(), adStateClosed);
    EXPECT_EQ(ErrorOf(QStringLiteral("SELECT 1")).Number, adErrObjectClosed);
    EXPECT_EQ(ErrorFrom([&] { m_connection->BeginTrans(); }).Number, adErrObjectClosed);
}

TEST_P(Conformance, NamesAreData)
{
    for (const char *name : kColumnNames) {
        const QString table = Quoted(Utf(name)), column = Quoted(Utf(name) + u'c');
        Run(QStringLiteral("CREATE TABLE %1 (%2 INTEGER, b VARCHAR(20))").arg(table, column));
        Run(QStringLiteral("INSERT INTO %1 (%2, b) VALUES (1, 'one')").arg(table, column));
        const RecordsetPtr rows = Run(QStringLiteral("SELECT * FROM %1 WHERE %2 = 1").arg(table, column));
        ASSERT_EQ(rows->RecordCount(), 1) << name;
        EXPECT_EQ(rows->Column(0).Name, Utf(name) + u'c');
        EXPECT_EQ(rows->CellText(0, 1), u"one");
    }
    const RecordsetPtr tables = m_connection->OpenSchema(adSchemaTables);
    const RecordsetPtr columns = m_connection->OpenSchema(adSchemaColumns);
    for (const char *name : kColumnNames) {
        const auto holds = [&](const RecordsetPtr &rows, int field, const QString &text) {
            for (qint64 row = 0; row < rows->RecordCount(); ++row)
                if (rows->CellText(row, field) == text)
                    return true;
            return false;
        };
        EXPECT_TRUE(holds(tables, 2, Utf(name))) << name;
        EXPECT_TRUE(holds(columns, 3, Utf(name) + u'c')) << name;
        const QString schema = OwnSchema();
        const RecordsetPtr one = m_connection->OpenSchema(adSchemaColumns, {QString(), schema, Utf(name)});
        EXPECT_EQ(one->RecordCount(), 2) << name; // "%" and "_" stand for themselves
    }
}

TEST_P(Conformance, ACommitKeepsAndARollbackTakesBack)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES (1)"));
    EXPECT_EQ(NewConnection()->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 0);
    m_connection->CommitTrans();
    EXPECT_EQ(NewConnection()->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 1);
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES (2)"));
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2);
    m_connection->RollbackTrans();
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 1);
    Run(QStringLiteral("INSERT INTO t VALUES (3)")); // on its own again
    EXPECT_EQ(NewConnection()->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 2);
}

TEST_P(Conformance, TransactionsDoNotNest)
{
    EXPECT_EQ(ErrorFrom([&] { m_connection->CommitTrans(); }).Number, adErrNoTransaction);
    EXPECT_EQ(ErrorFrom([&] { m_connection->RollbackTrans(); }).Number, adErrNoTransaction);
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES (1)"));
    EXPECT_EQ(ErrorFrom([&] { m_connection->BeginTrans(); }).Number, adErrNestedTransaction);
    EXPECT_TRUE(m_connection->InTransaction());
    m_connection->CommitTrans(); // the outer one is untouched
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 1);
}

TEST_P(Conformance, ATypedTransactionIsNotTakenOver)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    for (int round = 0; round < 2; ++round) {
        Run(QStringLiteral("BEGIN"));
        Run(QStringLiteral("INSERT INTO t VALUES (1)"));
        EXPECT_EQ(ErrorFrom([&] { m_connection->BeginTrans(); }).Number, adErrNestedTransaction);
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 1);
        Run(QStringLiteral("ROLLBACK"));
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 0);
        m_connection->BeginTrans(); // and now it may
        m_connection->RollbackTrans();
    }
}

TEST_P(Conformance, AFailingStatementDoesNotLoseATransaction)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER PRIMARY KEY)"));
    for (const bool typed : {false, true}) {
        SCOPED_TRACE(typed);
        Run(QStringLiteral("DELETE FROM t"));
        if (typed)
            Run(QStringLiteral("BEGIN"));
        else
            m_connection->BeginTrans();
        Run(QStringLiteral("INSERT INTO t VALUES (1)"));
        ErrorOf(QStringLiteral("INSERT INTO t VALUES (1)"));
        ErrorOf(QStringLiteral("SELECT no_such_column FROM t"));
        Run(QStringLiteral("INSERT INTO t VALUES (2)"));
        EXPECT_EQ(NewConnection()->Execute(QStringLiteral("SELECT * FROM t"))->RecordCount(), 0);
        if (typed)
            Run(QStringLiteral("COMMIT"));
        else
            m_connection->CommitTrans();
        EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2);
    }
}

TEST_P(Conformance, ClosingRollsBackWhatIsOpen)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    m_connection->BeginTrans();
    Run(QStringLiteral("INSERT INTO t VALUES (1)"));
    m_connection->Close();
    m_connection = NewConnection();
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 0);
}

TEST_P(Conformance, TheFirstResultWithRowsShowsAndALaterErrorIsRaised)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    if (Is(Server::SqliteOdbc))
        return; // its driver takes one statement a call
    if (Is(Server::MariaDb)) {
        // Several statements are an option of the string there; a procedure gives several results without it.
        EXPECT_EQ(ErrorOf(QStringLiteral("SELECT 1; SELECT 2")).SQLState, u"42000");
        Run(QStringLiteral("CREATE PROCEDURE two() BEGIN SELECT 1 AS a; SELECT 2 AS b, 3 AS c; END"));
        const RecordsetPtr rows = Run(QStringLiteral("CALL two()"));
        ASSERT_EQ(rows->ColumnCount(), 1);
        EXPECT_EQ(rows->CellText(0, 0), u"1");
        Run(QStringLiteral("CREATE PROCEDURE failing() BEGIN SELECT 1 AS a; SELECT * FROM nothing_here; END"));
        EXPECT_TRUE(ErrorOf(QStringLiteral("CALL failing()")).Description.contains(u"nothing_here"));
        return;
    }
    const RecordsetPtr rows = Run(QStringLiteral("INSERT INTO t VALUES (1), (2); SELECT 7; SELECT a, a + 1 FROM t"));
    ASSERT_EQ(rows->ColumnCount(), 1);
    EXPECT_EQ(rows->CellText(0, 0), u"7");
    EXPECT_TRUE(ErrorOf(QStringLiteral("SELECT 1; SELECT * FROM nothing_here")).Description.contains(u"nothing_here"));
}

TEST_P(Conformance, AProbeOfASelectGivesItsFieldsOnEveryServer)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER, b VARCHAR(10))"));
    const RecordsetPtr rows =
        Run(QStringLiteral("SELECT TEMP.* From (SELECT a, b, a AS c FROM t -- a comment\r\n) TEMP WHERE 1=0"));
    EXPECT_EQ(rows->ColumnCount(), 3);
    ErrorOf(QStringLiteral("SELECT TEMP.* From (SELECT a FROM t;) TEMP WHERE 1=0"));
}

TEST_P(Conformance, PropertiesNameTheServer)
{
    EXPECT_TRUE(
        m_connection->Property(QStringLiteral("DBMS Name")).toString().contains(QLatin1String(Expects().Product)));
    EXPECT_FALSE(m_connection->Property(QStringLiteral("dbms version")).toString().isEmpty());
    EXPECT_EQ(m_connection->Property(QStringLiteral("Identifier Quote")).toString(), QLatin1String(Expects().Quote));
    EXPECT_EQ(int(m_connection->Family().Id), int(Expects().Family));
    if (Expects().Own == Place::Catalogue) {
        EXPECT_EQ(m_connection->Property(QStringLiteral("Current Catalog")).toString(), m_place);
    }
}

TEST_P(ConformanceOfFiles, AFileThatIsNoDatabaseIsSaidSo)
{
    const QString path = m_folder.filePath(QStringLiteral("letter.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("Dear reader, this is no database. ").repeated(100));
    file.close();
    QString string = m_string;
    string.replace(m_folder.filePath(QStringLiteral("place.sqlite")), path);
    const ConnectionPtr connection = Connection::Create();
    const Error error = ErrorFrom([&] {
        connection->Open(string);
        connection->Execute(QStringLiteral("SELECT * FROM sqlite_master")); // the ODBC driver looks only now
    });
    EXPECT_TRUE(error.Description.contains(u"file is not a database")) << error.what();
}

} // namespace conformance
