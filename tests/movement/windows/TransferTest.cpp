// Transfers between all pairs of databases: the grid, the rows, every type, what is refused.
#include "tests/movement/windows/TransferFixture.h"
#include <QApplication>
#include <QTimer>

TEST_P(Transfer, FillsTheGridByExactNamesAndShowsTheFirstRows)
{
    FillSource(60);
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    EXPECT_EQ(window->txtConn[1]->text(), "Current");
    EXPECT_EQ(window->txtConn[1]->toolTip(), "Current Connection");
    EXPECT_FALSE(window->cmdGetConn[1]->isEnabled());
    EXPECT_TRUE(window->cmdGetConn[0]->isEnabled());
    const bool folds = qstrcmp(GetParam().from.name, "PostgreSQL") == 0;
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"Source:", "id", "name", folds ? "price" : "", ""}));
    EXPECT_EQ(RowOf(window->mfg, 1), (QStringList{"Destination:", "id", "name", "price", "note"}));
    EXPECT_EQ(window->mfg->Rows(), 52) << "the preview has 50 rows";
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"", "1", "n1", folds ? "10" : "", ""}));
    EXPECT_EQ(window->mnuPopup->Fields().size(), 3);
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << Box(0).toStdString();
}

TEST_P(Transfer, CopiesTheRowsBothWays)
{
    FillSource(3);
    for (const bool import : {true, false}) {
        dialogs.Boxes.clear();
        to->Run("DELETE FROM target");
        ASSERT_NO_FATAL_FAILURE(Begin(import));
        dialogs.Inputs << "it's";
        ASSERT_NO_FATAL_FAILURE(Choose(4, window->mnuString));
        EXPECT_EQ(window->mfg->TextMatrix(0, 4), "'it''s'");
        EXPECT_EQ(window->mfg->TextMatrix(2, 4), "it''s");
        ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuPopup->mnuField[2]));
        EXPECT_EQ(window->mfg->TextMatrix(2, 3), "10") << "the preview follows each change";
        Go();
        ASSERT_EQ(dialogs.Boxes.size(), 1) << Box(0).toStdString();
        EXPECT_EQ(Box(0), import ? "Import/Import Complate. 3 records have been imported."
                                 : "Export/Export Complate.3 records have been exported.");
        EXPECT_EQ(dialogs.Boxes[0].Icon, mbInformation);
        EXPECT_TRUE(HasGone());
        EXPECT_EQ(to->Rows("SELECT * FROM target ORDER BY id"),
                  (QStringList{"1|n1|10|it''s", "2|n2|20|it''s", "3|n3|30|it''s"}));
        EXPECT_EQ(shell.Status(), "3 rows are in.");
    }
}

TEST_P(Transfer, ASelectWithACommentAtItsEndIsASource)
{
    FillSource(3);
    ASSERT_NO_FATAL_FAILURE(Begin(true, "SELECT id + 10 AS id, name FROM source WHERE id > 2 -- the last"));
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << Box(0).toStdString();
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"Source:", "id", "name", "", ""}));
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"", "13", "n3", "", ""}));
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 1 record have been imported.");
    EXPECT_EQ(to->Rows("SELECT id, name, note FROM target"), QStringList("13|n3|null"));
}

// What a type is called differs; what comes out on the other side must not.
TEST_P(Transfer, EveryTypeArrivesExactly)
{
    const auto types = [](const Database &database) -> QString {
        if (qstrcmp(database.name, "PostgreSQL") == 0)
            return "k INTEGER, big BIGINT, dec NUMERIC(38,10), dbl DOUBLE PRECISION, txt TEXT, day DATE, moment "
                   "TIMESTAMP(6), clock TIME(6), raw BYTEA";
        if (qstrcmp(database.name, "MariaDB") == 0)
            return "k INTEGER, big BIGINT, dec DECIMAL(38,10), dbl DOUBLE, txt TEXT, day DATE, moment DATETIME(6), "
                   "clock TIME(6), raw BLOB";
        return "k INTEGER, big BIGINT, dec DECIMAL(38,10), dbl DOUBLE, txt TEXT, day DATE, moment TIMESTAMP, clock "
               "TIME, raw BLOB";
    };
    // "dec" is a word of its own to MariaDB.
    from->Run("CREATE TABLE kinds(" + types(GetParam().from).replace(" dec ", " num ") + ")");
    to->Run("CREATE TABLE kinds(" + types(GetParam().to).replace(" dec ", " num ") + ")");
    const bool postgres = qstrcmp(GetParam().from.name, "PostgreSQL") == 0;
    const QString bytes = postgres ? "'\\x00ff10'" : "x'00ff10'";
    // SQLite keeps a decimal of so many digits as a double: there it is refused, and not rounded.
    const bool exact = GetParam().from.variable && GetParam().to.variable;
    const QString number = exact ? "1234567890123456789012345678.0123456789" : "12.0123456789";
    from->Run("INSERT INTO kinds VALUES"
              "(1, 9007199254740993, " +
              number +
              ", 0.1, 'Zoë \xE4\xB8\xAD', '2024-02-29', "
              "'2024-02-29 23:59:59.123456', '23:59:59.5', " +
              bytes +
              "),"
              "(2, -9223372036854775807, -0.5, -1e300, '', '0001-01-01', '1999-12-31 00:00:00', '00:00:00', " +
              bytes +
              "),"
              "(3, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "kinds"));
    Type(1, "kinds");
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 3 records have been imported.") << Log().toStdString();
    EXPECT_EQ(shell.Status(), "3 rows are in.");
    const QStringList had = from->Rows("SELECT * FROM kinds ORDER BY k"),
                      has = to->Rows("SELECT * FROM kinds ORDER BY k");
    ASSERT_EQ(has.size(), 3);
    for (qsizetype row = 0; row < 3; ++row) {
        QStringList wanted = had[row].split('|'), got = has[row].split('|');
        for (const int column : {2, 7}) { // a scale that is filled with zeros is the same number, or moment
            for (QStringList *cells : {&wanted, &got}) {
                QString &cell = (*cells)[column];
                while (cell.contains('.') && (cell.endsWith('0') || cell.endsWith('.')))
                    cell.chop(1);
            }
        }
        EXPECT_EQ(got.join('|').toStdString(), wanted.join('|').toStdString());
    }
}

// Rounded without a word, a sum is wrong and nobody knows.
TEST_P(Transfer, ADecimalThatSqliteWouldRoundIsRefused)
{
    if (GetParam().to.variable || !GetParam().from.variable)
        GTEST_SKIP() << "both keep all digits, or neither";
    from->Run("CREATE TABLE sums(id INTEGER, num DECIMAL(38,10))");
    from->Run("INSERT INTO sums VALUES(1, 1.5), (2, 1234567890123456789012345678.0123456789), (3, 99999999999999.9)");
    to->Run("CREATE TABLE sums(id INTEGER, num DECIMAL(38,10))");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "sums"));
    Type(1, "sums");
    dialogs.Answers << mbNo;
    Go();
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(shell.Status(), "2 rows are in, 1 refused.");
    EXPECT_EQ(to->Rows("SELECT id FROM sums ORDER BY id"), (QStringList{"1", "3"}));
}

TEST_P(Transfer, RefusedRowsAreToldByTheirPlaceAndTheOthersAreIn)
{
    FillSource(9);
    to->Run("INSERT INTO target(id, name) VALUES(1, 'a'), (5, 'b'), (9, 'c')");
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    QString log;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (auto *frame = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
            look.stop();
            log = frame->findChild<frmTextOutput *>()->PlainText();
            frame->reject();
        }
    });
    look.start(5);
    dialogs.Answers << mbYes;
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(dialogs.Boxes[0].Buttons, mbYesNo);
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(Box(1), "Import/Import Complate. 9 records have been imported.");
    EXPECT_EQ(shell.Status(), "6 rows are in, 3 refused.");
    for (const int row : {1, 5, 9})
        EXPECT_TRUE(log.contains(QStringLiteral("\r\nRow %1: ").arg(row))) << log.toStdString();
    EXPECT_TRUE(log.startsWith("\r\n\r\nError [")) << log.toStdString();
    EXPECT_EQ(to->Rows("SELECT id FROM target ORDER BY id").join(','), "1,2,3,4,5,6,7,8,9");
    EXPECT_EQ(to->Rows("SELECT name FROM target WHERE id = 5"), QStringList("b"));
    EXPECT_TRUE(HasGone());
}

INSTANTIATE_TEST_SUITE_P(Pairs, Transfer,
                         testing::Values(Pair{kSqlite, kSqlite}, Pair{kSqlite, kPostgres}, Pair{kSqlite, kMariaDb},
                                         Pair{kPostgres, kSqlite}, Pair{kPostgres, kPostgres},
                                         Pair{kPostgres, kMariaDb}, Pair{kMariaDb, kSqlite}, Pair{kMariaDb, kPostgres},
                                         Pair{kMariaDb, kMariaDb}),
                         [](const auto &pair) {
                             return std::string(pair.param.from.name) + "To" + pair.param.to.name;
                         });
