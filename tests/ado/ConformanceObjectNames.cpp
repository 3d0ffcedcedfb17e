// The rules of names against the servers: a name written by them reaches its own table, and the words that they keep
// back are those that the server refuses.
#include "ado/ObjectName.h"
#include "ado/family/Family.h"
#include "tests/ado/Conformance.h"

using namespace ADODB;

namespace conformance {

TEST_P(Conformance, AWrittenNameReachesItsOwnTable)
{
    const Family &family = m_connection->Family();
    QStringList names;
    for (const char *name : {"dept2",
                             "Dept2",
                             "DEPT2",
                             "a-b",
                             "a b",
                             "a\"b]c'd",
                             "`",
                             "[a]",
                             "select",
                             "user",
                             "between",
                             "keys",
                             "$a",
                             "a$b",
                             "_a",
                             "1a",
                             "12",
                             "1e5",
                             "1e",
                             "0x1",
                             "0xg",
                             "a.b",
                             "a;b",
                             "\xc3\x96l",
                             "\xc3\xb6l",
                             "a\tb",
                             "a\nb",
                             "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d",
                             "\xf0\x9f\x98\x80",
                             "?",
                             "{d '1'}",
                             "a\\",
                             "%s",
                             ":a",
                             "@a",
                             "#a"})
        names += Utf(name);
    int number = 0, bare = 0;
    QStringList made;
    for (const QString &name : names) {
        try {
            Run(QStringLiteral("CREATE TABLE %1 (n INTEGER)").arg(InQuotes(family, {}, name)));
        } catch (const Error &) {
            // SQLite tells no capitals apart, MariaDB has no names past U+FFFF
            EXPECT_TRUE(IsSqlite() ? name.toLower() == u"dept2"
                                   : Is(Server::MariaDb) && name == Utf("\xf0\x9f\x98\x80"))
                << name.toStdString();
            continue;
        }
        Run(QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(InQuotes(family, {}, name)).arg(made.size()));
        made += name;
    }
    for (const QString &name : made) {
        SCOPED_TRACE(name.toStdString());
        const QString written = PartName(family, {}, name);
        bare += written == name;
        const RecordsetPtr rows =
            m_connection->Execute(QStringLiteral("SELECT n FROM %1").arg(written), nullptr, adOneStatement);
        ASSERT_EQ(rows->RecordCount(), 1);
        EXPECT_EQ(rows->CellText(0, 0), QString::number(number));
        ++number;
        if (written == name)
            continue;
        // What the rules keep back is refused, or is another's; three of them only to be sure.
        try {
            const RecordsetPtr other =
                m_connection->Execute(QStringLiteral("SELECT n FROM %1").arg(name), nullptr, adOneStatement);
            if (other->State() == adStateOpen && other->RecordCount() == 1 && name != Utf("\xc3\x96l") &&
                name != u"1e" && name != u"0xg") {
                EXPECT_NE(other->CellText(0, 0), QString::number(number - 1));
            }
        } catch (const Error &) {
            // refused
        }
    }
    EXPECT_GE(bare, 4);
}

TEST_P(Conformance, TheWordsKeptBackAreThoseThatTheServerRefuses)
{
    const Family &family = m_connection->Family();
    QStringList words;
    const RecordsetPtr rows = Run(Pick(
        {"SELECT 1", "SELECT word FROM pg_catalog.pg_get_keywords()", "SELECT WORD FROM information_schema.KEYWORDS"}));
    if (IsSqlite())
        words =
            QStringLiteral("ABORT ACTION ADD AFTER ALL ALTER AND AS ASC BEGIN BETWEEN BY CASE CAST CHECK COLLATE "
                           "COLUMN COMMIT CONSTRAINT CREATE CROSS DEFAULT DELETE DESC DISTINCT DROP ELSE END ESCAPE "
                           "EXCEPT EXISTS EXPLAIN FOREIGN FROM FULL GROUP HAVING IF IN INDEX INNER INSERT INTERSECT "
                           "INTO IS ISNULL JOIN KEY LEFT LIKE LIMIT NATURAL NOT NOTHING NOTNULL NULL ON OR ORDER OUTER "
                           "PRIMARY RETURNING SELECT SET TABLE TEMP THEN TO TRANSACTION UNION UNIQUE UPDATE USER USING "
                           "VALUES VIEW WHEN WHERE WINDOW WITH")
                .split(u' ');
    else
        for (qint64 row = 0; row < rows->RecordCount(); ++row)
            words += rows->CellText(row, 0);
    const auto isWord = [](const QString &text) {
        for (const QChar c : text)
            if (c != u'_' && !c.isLetterOrNumber())
                return false;
        return !text.isEmpty();
    };
    int checked = 0;
    for (const QString &word : words) {
        if (!isWord(word))
            continue;
        ++checked;
        bool refused = false;
        for (const char *form :
             {"SELECT * FROM %1", "DELETE FROM %1", "ALTER TABLE %1 ADD b INTEGER", "DROP TABLE %1"}) {
            try {
                Run(QString::fromLatin1(form).arg(word)); // some words are functions that stand for a table
            } catch (const Error &error) {
                refused = refused || error.Description.contains(QStringLiteral("syntax"), Qt::CaseInsensitive) ||
                          error.Description.contains(QStringLiteral("incomplete input"));
            }
        }
        if (Is(Server::MariaDb)) // MySQL's own words are kept back too
            EXPECT_TRUE(!refused || IsReservedWord(family, word)) << word.toStdString();
        else
            EXPECT_EQ(refused, IsReservedWord(family, word)) << word.toStdString();
    }
    EXPECT_GT(checked, 60);
}

// Composed texts go as one statement: a second one is refused, and the first does not run either.
TEST_P(Conformance, OneStatementIsSentAsOne)
{
    Run(QStringLiteral("CREATE TABLE victim (a INTEGER)"));
    Run(QStringLiteral("INSERT INTO victim VALUES (1)"));
    const auto one = [&](const QString &sql) { return m_connection->Execute(sql, nullptr, adOneStatement); };
    for (const char *sql :
         {"DELETE FROM victim; DELETE FROM victim", "SELECT * FROM victim;DELETE/**/FROM/**/victim;-- where 0=1",
          "DELETE FROM victim; nonsense", "SELECT 1; SELECT ';'"})
        ErrorFrom([&] { one(QString::fromLatin1(sql)); });
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM victim")).ToInt64(), 1);
    EXPECT_EQ(one(QStringLiteral("SELECT a FROM victim; "))->RecordCount(), 1);
    EXPECT_EQ(one(QStringLiteral("SELECT ';' FROM victim -- it's; told"))->RecordCount(), 1);
    const QString odd = Quoted(QStringLiteral("t;DELETE/**/FROM/**/victim;--"));
    Run(QStringLiteral("CREATE TABLE %1 (a INTEGER)").arg(odd));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM %1 where 0=1").arg(odd))->RecordCount(), 0);
    EXPECT_EQ(Cell(QStringLiteral("SELECT count(*) FROM victim")).ToInt64(), 1);
    qint64 affected = 0;
    m_connection->Execute(QStringLiteral("DELETE FROM victim;"), &affected, adOneStatement);
    EXPECT_EQ(affected, 1);
}

} // namespace conformance
