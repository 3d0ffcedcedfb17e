// One edit changes one row also where a table takes nothing back: MariaDB's older kinds of tables ignore a rollback.
#include "tests/ado/ConformanceOneRow.h"

using namespace ADODB;

namespace conformance {

// Both of two equal rows were changed, and the batch ended with the
// server's words that this could not be taken back.
TEST_P(ConformanceOfOneRow, EqualRowsOfATableWithoutTransactionsStayAsTheyAre)
{
    if (!Is(Server::MariaDb))
        return;
    for (const char *engine : {"MyISAM", "Aria", "Aria TRANSACTIONAL=0"}) {
        for (const bool inTransaction : {false, true}) {
            SCOPED_TRACE(engine);
            SCOPED_TRACE(inTransaction);
            Run(QStringLiteral("DROP TABLE IF EXISTS e"));
            Run(QStringLiteral("CREATE TABLE e (a INTEGER, b VARCHAR(9), c DATE) ENGINE=%1")
                    .arg(QLatin1String(engine)));
            Run(QStringLiteral("INSERT INTO e VALUES (1, 'x', NULL), (1, 'x', NULL), (2, 'y', '2024-02-29'), "
                               "(3, 'z', NULL), (4, 'x', NULL), (5, 'X', NULL)"));
            const RecordsetPtr rows = Open(QStringLiteral("SELECT * FROM e ORDER BY a"));
            if (inTransaction)
                m_connection->BeginTrans();
            Run(QStringLiteral("DELETE FROM e WHERE a = 5")); // somebody else was faster
            Set(rows, 3, 1, QStringLiteral("two"));
            Set(rows, 1, 1, QStringLiteral("first"));
            Set(rows, 4, 0, 33);
            Set(rows, 6, 1, QStringLiteral("gone"));
            Remove(rows, 5);
            Remove(rows, 2);
            ErrorFrom([&] { rows->UpdateBatch(); });
            EXPECT_EQ(All(QStringLiteral("e ORDER BY a")), u"1:x:~ 1:x:~ 2:two:2024-02-29 33:z:~");
            ASSERT_EQ(rows->RefusedRows().size(), 3u);
            EXPECT_EQ(rows->RefusedRows()[0].Status, adRecModified | adRecMultipleChanges);
            ExpectTooMany(rows->RefusedRows()[0].Why);
            EXPECT_EQ(rows->RefusedRows()[1].Status, adRecDeleted | adRecMultipleChanges);
            EXPECT_EQ(rows->RefusedRows()[2].Status & adRecMultipleChanges, 0); // the one that has gone
            if (inTransaction)
                m_connection->CommitTrans();
        }
    }
}

// Whether a table takes a rollback is asked by its name, whatever characters that has. A temporary table may be listed
// nowhere: then nobody knows, and its rows are counted.
TEST_P(ConformanceOfOneRow, ATableIsAskedWhetherItTakesARollback)
{
    if (!Is(Server::MariaDb))
        return;
    struct Kind
    {
        const char *create, *engine, *answer;
    };
    const Kind kinds[] = {{"CREATE TABLE ", "InnoDB", "1"},
                          {"CREATE TABLE ", "MyISAM", "0"},
                          {"CREATE TEMPORARY TABLE ", "MyISAM", nullptr}};
    const auto answer = [&](const QString &database, const QString &name) {
        const RecordsetPtr rows = Run(FamilyOf(Expects().Family).Transactions.TakesBack(database, name));
        return rows->RecordCount() == 1 ? rows->CellText(0, 0) : QStringLiteral("nobody knows");
    };
    for (const QString &name : {QStringLiteral("e"), QStringLiteral("it's\\"), QStringLiteral("\\'; %1 %2")}) {
        SCOPED_TRACE(name.toStdString());
        for (const Kind &kind : kinds) {
            SCOPED_TRACE(kind.create);
            SCOPED_TRACE(kind.engine);
            const QString quoted = Quoted(name);
            Run(QLatin1String(kind.create) + quoted + QStringLiteral(" (a INTEGER) ENGINE=") +
                QLatin1String(kind.engine));
            for (const QString &database : {QString(), m_place}) { // the current one, and the one that is named
                if (kind.answer) {
                    EXPECT_EQ(answer(database, name), QLatin1String(kind.answer));
                }
            }
            Run(QStringLiteral("INSERT INTO ") + quoted + QStringLiteral(" VALUES (1), (1), (2)"));
            const RecordsetPtr rows =
                Open(QStringLiteral("SELECT * FROM ") + quoted + QStringLiteral(" ORDER BY a"), adLockOptimistic);
            rows->Fields()[0].SetValue(7);
            ExpectTooMany(ErrorFrom([&] { rows->Update(); }));
            rows->CancelUpdate();
            Set(rows, 3, 0, 8);
            EXPECT_EQ(All(quoted + QStringLiteral(" ORDER BY a")), u"1 1 8");
            Run(QStringLiteral("DROP TABLE ") + quoted);
        }
    }
}

} // namespace conformance
