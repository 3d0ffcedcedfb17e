// The transfer's window for real: both modes, the grid and its popup, every type over all pairs, errors, stops.
#include "controls/ListView.h"
#include "controls/ProgressBar.h"
#include "data/clsConns.h"
#include "data/frmConnectionString.h"
#include "data/frmGetSelection.h"
#include "movement/frmDTS.h"
#include "tests/movement/windows/Rooms.h"
#include <QAction>
#include <QApplication>
#include <QTimer>

namespace {

struct Pair
{
    Database from, to;
};
std::ostream &operator<<(std::ostream &out, const Pair &pair)
{
    return out << pair.from << " to " << pair.to;
}

struct Transfer : MovementTest, testing::TestWithParam<Pair>
{
    std::unique_ptr<Place> from, to;
    QPointer<frmDTS> window;

    void SetUp() override
    {
        from = std::make_unique<Place>(GetParam().from, QStringLiteral("moved_from"));
        to = std::make_unique<Place>(GetParam().to, QStringLiteral("moved_to"));
        if (!from->Connection || !to->Connection) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam();
            GTEST_SKIP() << GetParam();
        }
        from->Run("CREATE TABLE source(id INTEGER, name VARCHAR(40), Price INTEGER)");
        to->Run("CREATE TABLE target(id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, price INTEGER, note "
                "VARCHAR(40))");
    }
    void TearDown() override
    {
        delete window.data();
        gConns().Clear();
    }
    void Open(bool import)
    {
        gConn = (import ? to : from)->Connection;
        m_other = (import ? from : to)->Connection;
        window = new frmDTS;
        window->SetMode(import);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }
    ADODB::ConnectionPtr m_other;
    bool HasGone()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    }
    void Type(int side, const QString &table)
    {
        QLineEdit *box = window->txtTable[size_t(side)];
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, table);
        QTest::keyClick(box, Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    void FillSource(int rows)
    {
        QString values;
        for (int i = 1; i <= rows; ++i)
            values += QStringLiteral("%1(%2, 'n%2', %3)").arg(i > 1 ? "," : "").arg(i).arg(i * 10);
        if (rows > 0)
            from->Run(QStringLiteral("INSERT INTO source VALUES ") + values);
    }
    void Begin(bool import, const QString &source = QStringLiteral("source"))
    {
        ASSERT_NO_FATAL_FAILURE(Open(import));
        window->UseOther(m_other, QStringLiteral("other"));
        Type(0, source);
        Type(1, QStringLiteral("target"));
    }
    void Go() { ASSERT_NO_FATAL_FAILURE(ClickOn(window->cmdNext)); }
    // The popup of a column, by a right click on it.
    void Popup(int column)
    {
        QTest::mouseClick(window->mfg->viewport(), Qt::RightButton, {}, window->mfg->CellRect(1, column).center());
        ASSERT_TRUE(window->mnuPopup->isVisible());
    }
    void Choose(int column, QAction *entry)
    {
        ASSERT_NO_FATAL_FAILURE(Popup(column));
        if (window->mnuStaticValue->actions().contains(entry)) {
            ASSERT_NO_FATAL_FAILURE(ClickEntry(window->mnuPopup, window->mnuStaticValue->menuAction()));
            ASSERT_TRUE(QTest::qWaitFor([&] { return window->mnuStaticValue->isVisible(); }, 10000));
            ClickEntry(window->mnuStaticValue, entry);
        } else {
            ClickEntry(window->mnuPopup, entry);
        }
    }
};

} // namespace

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

namespace {
struct OnePair : Transfer
{
};
} // namespace

TEST_P(OnePair, ThePopupHoldsTheConstantsAndTheNumberIsOffered)
{
    FillSource(2);
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    ASSERT_NO_FATAL_FAILURE(Popup(2));
    EXPECT_EQ(window->mnuPopup->mnuTitle->text(), "Map File Column name to:");
    EXPECT_EQ(window->mnuUnMap->text(), "Unmap Column");
    EXPECT_EQ(window->mnuStaticValue->title(), "Static Value");
    EXPECT_EQ(window->mnuString->text(), "String");
    EXPECT_EQ(window->mnuNumeric->text(), "Numeric");
    EXPECT_EQ(window->mnuNull->text(), "NULL");
    EXPECT_EQ(window->mfg->Col(), 2) << "the column is the current one";
    window->mnuPopup->close();

    ASSERT_NO_FATAL_FAILURE(Choose(2, window->mnuUnMap));
    EXPECT_EQ(window->mfg->TextMatrix(0, 2), "");
    EXPECT_EQ(window->mfg->TextMatrix(2, 2), "");
    ASSERT_NO_FATAL_FAILURE(Choose(2, window->mnuNull));
    EXPECT_EQ(window->mfg->TextMatrix(0, 2), "NULL");
    EXPECT_EQ(window->mfg->TextMatrix(2, 2), "NULL");

    dialogs.Inputs << "3x"
                   << "3x"
                   << ""
                   << "2.50";
    dialogs.Answers << mbNo << mbYes;
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(dialogs.InputBoxes[0].Title, "Numeric");
    EXPECT_EQ(dialogs.InputBoxes[0].Prompt, "Please enter the number you wish to append:");
    EXPECT_EQ(Box(0), "Numeric/The value you entered was invalid would you like to replace it with 3");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "");
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "3");
    EXPECT_EQ(window->mfg->TextMatrix(3, 3), "3");
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "3") << "an empty answer ends the command";
    ASSERT_NO_FATAL_FAILURE(Choose(3, window->mnuNumeric));
    EXPECT_EQ(window->mfg->TextMatrix(0, 3), "2.50");
    ASSERT_NO_FATAL_FAILURE(Choose(4, window->mnuString));
    EXPECT_EQ(dialogs.InputBoxes.last().Title, "String");
    EXPECT_EQ(dialogs.InputBoxes.last().Prompt, "Please enter the string you wish to append:");
    EXPECT_EQ(window->mfg->TextMatrix(0, 4), "");
}

TEST_P(OnePair, AToleranceOfTwoStopsAtTheThirdErrorAndTheWindowStays)
{
    from->Run("INSERT INTO source VALUES(1, 'a', 1), (NULL, 'b', 2), (NULL, 'c', 3), (NULL, 'd', 4), (5, 'e', 5)");
    to->Run("CREATE TABLE strict(id INTEGER, name VARCHAR(40), price INTEGER)");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "SELECT CASE WHEN id IS NULL THEN 'none' ELSE id END AS id, name FROM source"));
    Type(1, "strict");
    window->txtErrorCount->setText("2");
    dialogs.Answers << mbNo;
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Box(0), "Errors/Too many errors occurred. You you like to view the log?");
    EXPECT_FALSE(HasGone());
    EXPECT_TRUE(window->cmdNext->isEnabled());
    EXPECT_FALSE(window->PB->isVisible());
    EXPECT_EQ(to->Count("strict"), 0) << "the batch was never sent";

    window->txtErrorCount->setText("3");
    dialogs.Boxes.clear();
    dialogs.Answers << mbNo;
    Go();
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(Box(1), "Import/Import Complate. 5 records have been imported.") << "as many as were read";
    EXPECT_EQ(shell.Status(), "2 rows are in, 3 refused.") << "and this is what is there";
    EXPECT_EQ(to->Rows("SELECT id, name FROM strict ORDER BY id"), (QStringList{"1|a", "5|e"}));
}

TEST_P(OnePair, NothingToCopyAndNothingMappedEndWithTheReportOfNone)
{
    ASSERT_NO_FATAL_FAILURE(Begin(false));
    Go();
    EXPECT_EQ(Box(0), "Export/Export Complate.0 records have been exported.");
    EXPECT_TRUE(HasGone());
    FillSource(2);
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    for (const int column : {1, 2})
        ASSERT_NO_FATAL_FAILURE(Choose(column, window->mnuUnMap));
    Go();
    EXPECT_EQ(Box(1), "Import/Import Complate. 0 records have been imported.");
    EXPECT_EQ(to->Count("target"), 0);
}

TEST_P(OnePair, NextIsOnWhileBothTablesAreNamed)
{
    ASSERT_NO_FATAL_FAILURE(Open(false));
    EXPECT_EQ(window->txtConn[0]->text(), "Current");
    EXPECT_FALSE(window->cmdGetConn[0]->isEnabled());
    EXPECT_FALSE(window->cmdNext->isEnabled());
    QTest::keyClicks(window->txtTable[0], "source");
    EXPECT_FALSE(window->cmdNext->isEnabled());
    QTest::keyClicks(window->txtTable[1], "target");
    EXPECT_TRUE(window->cmdNext->isEnabled());
    Go(); // no other connection: nothing happens
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    ClickOn(window->cmdGetTable[1]); // nor is another connection's table picked in its place
    EXPECT_EQ(shell.Status(), "Choose the other connection first.");
    window->txtTable[0]->clear();
    EXPECT_FALSE(window->cmdNext->isEnabled());
}

TEST_P(OnePair, ThePickersGiveConnectionAndTables)
{
    FillSource(1);
    gConns().Add(from->Connection->ConnectionString(), "stored", QString());
    ASSERT_NO_FATAL_FAILURE(Open(true));
    const auto pick = [&](QPushButton *button, const QString &text) {
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto *form = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!form)
                return;
            look.stop();
            EXPECT_EQ(form->cmdOK->text(), "&OK");
            EXPECT_EQ(form->cmdCancel->text(), "&Cancel");
            QTest::keyClicks(form->txtCri, text);
            QTest::keyClick(form->txtCri, Qt::Key_Return);
        });
        look.start(5);
        ClickOn(button);
        EXPECT_FALSE(look.isActive()) << text.toStdString();
    };
    pick(window->cmdGetConn[0], "stored");
    EXPECT_EQ(window->txtConn[0]->text(), "stored");
    pick(window->cmdGetTable[0], "source");
    EXPECT_EQ(window->txtTable[0]->text(), "source");
    pick(window->cmdGetTable[1], "target");
    EXPECT_EQ(window->txtTable[1]->text(), "target");
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"Source:", "id", "name", "", ""}));
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 1 record have been imported.");
    // "< other >" asks for a string.
    ASSERT_NO_FATAL_FAILURE(Open(true));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (auto *form = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget())) {
            QTest::keyClicks(form->txtCri, "< other");
            QTest::keyClick(form->txtCri, Qt::Key_Return);
        } else if (auto *asked = qobject_cast<frmConnectionString *>(QApplication::activeModalWidget())) {
            look.stop();
            QTest::keyClick(asked, Qt::Key_Escape);
        }
    });
    look.start(5);
    ClickOn(window->cmdGetConn[0]);
    EXPECT_FALSE(look.isActive()) << "the dialog of the string came up";
    EXPECT_EQ(window->txtConn[0]->text(), "");
}

TEST_P(OnePair, AFieldCalledByANumberOrNullIsReadAsAConstant)
{
    from->Run("CREATE TABLE odd(\"NULL\" INTEGER, \"2000\" INTEGER)");
    from->Run("INSERT INTO odd VALUES(7, 8)");
    to->Run("CREATE TABLE odder(\"NULL\" INTEGER, \"2000\" INTEGER)");
    ASSERT_NO_FATAL_FAILURE(Begin(true, "odd"));
    Type(1, "odder");
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"", "NULL", "2000"}));
    Go();
    EXPECT_EQ(to->Rows("SELECT * FROM odder"), QStringList("null|2000"));
}

TEST_P(OnePair, ASourceAndADestinationThatAreTheSameTableEnd)
{
    to->Run("INSERT INTO target(id, name) VALUES(1, 'a'), (2, 'b')");
    gConn = to->Connection;
    window = new frmDTS;
    window->SetMode(true);
    window->show();
    const ADODB::ConnectionPtr second = ADODB::Connection::Create();
    second->Open(to->Connection->ConnectionString());
    window->UseOther(second, "again");
    Type(0, "SELECT id + 2 AS id, name FROM target");
    Type(1, "target");
    Go();
    EXPECT_EQ(Box(0), "Import/Import Complate. 2 records have been imported.");
    EXPECT_EQ(to->Rows("SELECT id FROM target ORDER BY id").join(','), "1,2,3,4");
}

TEST_P(OnePair, EscapeStopsTheCopyAndTheWindowStays)
{
    from->Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) INSERT INTO source "
              "SELECT i, 'n' || i, i FROM n");
    ASSERT_NO_FATAL_FAILURE(Begin(true));
    QString said;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().startsWith("Copying"))
            return;
        look.stop();
        EXPECT_TRUE(window->PB->isVisible());
        EXPECT_EQ(window->PB->Max(), 200'001);
        QTest::keyClick(window->cmdCancel, Qt::Key_Escape);
        said = window->lblProgress->text();
    });
    look.start(5);
    Go();
    EXPECT_EQ(said, "Canceling...");
    EXPECT_FALSE(HasGone());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(shell.Status(), "Canceling... 0 rows are in.");
    EXPECT_EQ(to->Count("target"), 0);
}

TEST_P(OnePair, AnErrorOfThePreviewIsShownInTheServersWords)
{
    ASSERT_NO_FATAL_FAILURE(Open(true));
    window->UseOther(from->Connection, QStringLiteral("other"));
    Type(1, "target");
    Type(0, "no_such_table");
    ASSERT_FALSE(dialogs.Boxes.isEmpty());
    EXPECT_EQ(dialogs.Boxes[0].Title, "Error");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_TRUE(dialogs.Boxes[0].Text.contains("no_such_table")) << dialogs.Boxes[0].Text.toStdString();
    dialogs.Boxes.clear();
    dialogs.Answers << mbNo;
    Go(); // an error before the rows goes through the same handler, and none is copied
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    EXPECT_EQ(Box(1), "Import/Import Complate. 0 records have been imported.");
}

INSTANTIATE_TEST_SUITE_P(Sqlite, OnePair, testing::Values(Pair{kSqlite, kSqlite}));
