// Texts that are no ordinary query: empty ones, comments, settings of the session, procedures, several statements.
#include "ado/UARecordset.h"
#include "tests/ado/Conformance.h"
#include <QCoreApplication>
#include <QElapsedTimer>

using namespace ADODB;

namespace conformance {

TEST_P(Conformance, ATextWithoutAStatementDoesNothing)
{
    for (const char *text :
         {"", "   \r\n\t ", "-- only a comment", "-- one\r\n-- two\r\n", "/* a comment */", ";", " ; ; "}) {
        SCOPED_TRACE(text);
        qint64 affected = 77;
        const RecordsetPtr rows = m_connection->Execute(QString::fromLatin1(text), &affected);
        EXPECT_EQ(rows->State(), adStateClosed);
        EXPECT_EQ(affected, -1);
        EXPECT_EQ(Cell(QStringLiteral("SELECT 1")).ToInt64(), 1);
    }
}

TEST_P(Conformance, ASessionsSettingGivesNoRowsAndLasts)
{
    qint64 affected = 77;
    const RecordsetPtr rows = m_connection->Execute(
        Pick({"PRAGMA foreign_keys = OFF", "SET DateStyle TO 'German'", "SET @answer = 42"}), &affected);
    EXPECT_EQ(rows->State(), adStateClosed);
    EXPECT_LE(affected, 0);
    EXPECT_EQ(Cell(Pick({"PRAGMA foreign_keys", "SHOW DateStyle", "SELECT @answer"})).ToText(),
              Pick({"0", "German, DMY", "42"}));
    // The same by the asynchronous way: a recordset of no fields, not an error.
    UARecordset recordset;
    RecordsetPtr opened;
    QString words;
    QObject::connect(&recordset, &UARecordset::RecordsetOpened, [&](const RecordsetPtr &result) { opened = result; });
    QObject::connect(&recordset, &UARecordset::ErrorOccured, [&](int, const QString &text) { words = text; });
    for (const QString &sql : {Pick({"PRAGMA foreign_keys = ON", "SET DateStyle TO 'ISO'", "SET @answer = 43"}),
                               QStringLiteral("-- nothing")}) {
        opened.reset();
        recordset.OpenRecordset(sql, m_connection, 2);
        QElapsedTimer timer;
        for (timer.start(); !opened && words.isEmpty() && timer.elapsed() < 10000;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        ASSERT_NE(opened, nullptr) << words.toStdString();
        EXPECT_EQ(opened->ColumnCount(), 0);
        EXPECT_EQ(opened->RecordCount(), 0);
    }
}

TEST_P(Conformance, CommentsAndSemicolonsAroundAStatementChangeNothing)
{
    for (const char *text :
         {"-- before\r\nSELECT 7 AS a", "/* before */ SELECT 7 AS a", "SELECT 7 AS a -- after", "SELECT 7 AS a /* ; */",
          "SELECT 7 AS a;", "SELECT 7 AS a;\r\n", "(SELECT 7 AS a)", "SELECT 7 AS a ; -- after\r\n"}) {
        if (IsSqlite() && text[0] == '(')
            continue; // takes no brackets there
        if (Is(Server::SqliteOdbc) && QByteArrayView(text).contains(';') && !QByteArrayView(text).endsWith(';'))
            continue; // whatever stands behind a semicolon is another statement to this driver, and refused
        SCOPED_TRACE(text);
        const RecordsetPtr rows = Run(QString::fromLatin1(text));
        ASSERT_EQ(rows->State(), adStateOpen);
        ASSERT_EQ(rows->RecordCount(), 1);
        EXPECT_EQ(rows->CellText(0, 0), u"7");
    }
}

TEST_P(ConformanceOfServers, AProcedureGivesItsRowsOrNone)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    Run(Pick({"", "CREATE PROCEDURE act() LANGUAGE sql AS 'INSERT INTO t VALUES (1), (2)'",
              "CREATE PROCEDURE act() INSERT INTO t VALUES (1), (2)"}));
    const RecordsetPtr none = Run(QStringLiteral("CALL act()"));
    EXPECT_EQ(none->State(), adStateClosed);
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2);
    // There is no such statement on these servers: their words, and the connection goes on.
    EXPECT_TRUE(ErrorOf(QStringLiteral("EXEC act")).Description.contains(QLatin1String("syntax"), Qt::CaseInsensitive));
    EXPECT_EQ(Cell(QStringLiteral("SELECT COUNT(*) FROM t")).ToInt64(), 2);
}

TEST_P(Conformance, AQuestionMarkWithoutAValueIsAnErrorAndNoCrash)
{
    Run(QStringLiteral("CREATE TABLE t (a INTEGER)"));
    try { // SQLite takes it for null
        EXPECT_LE(Run(QStringLiteral("SELECT * FROM t WHERE a = ?"))->RecordCount(), 0);
    } catch (const Error &error) {
        EXPECT_FALSE(error.Description.isEmpty());
    }
    EXPECT_EQ(Cell(QStringLiteral("SELECT 1")).ToInt64(), 1);
}

} // namespace conformance
