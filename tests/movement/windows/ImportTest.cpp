// The import's window for real: files of every kind, mapping by mouse and by keys, refused rows, stops.
#include "controls/ProgressBar.h"
#include "movement/frmImportFlatFile.h"
#include "movement/logic/Counted.h"
#include "tests/movement/windows/Rooms.h"
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QTimer>
#include <sys/stat.h>

namespace {

struct Import : MovementTest, testing::TestWithParam<Database>
{
    std::unique_ptr<Place> place;
    QPointer<frmImportFlatFile> window;

    void SetUp() override
    {
        place = std::make_unique<Place>(GetParam(), QStringLiteral("imported"));
        if (!place->Connection) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam();
            GTEST_SKIP() << GetParam();
        }
        gConn = place->Connection;
        place->Run("CREATE TABLE goods(id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, price INTEGER)");
        Open();
    }
    void TearDown() override
    {
        delete window.data();
        if (gConn && gConn->State() == ADODB::adStateOpen && gConn->InTransaction())
            gConn->RollbackTrans();
    }
    void Open()
    {
        window = new frmImportFlatFile;
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }
    // File and table typed, as a user does who leaves each box with Tab.
    void Choose(const QString &file, const QString &table = QStringLiteral("goods"))
    {
        window->txtFileName->setFocus();
        window->txtFileName->selectAll();
        QTest::keyClicks(window->txtFileName, file);
        QTest::keyClick(window->txtFileName, Qt::Key_Tab);
        QCoreApplication::processEvents();
        window->txtTable->setFocus();
        QTest::keyClicks(window->txtTable, table);
        QTest::keyClick(window->txtTable, Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    void ChooseAndMap(const QByteArray &bytes, const QString &tolerance = QStringLiteral("0"))
    {
        Choose(Write(bytes));
        ASSERT_EQ(window->mnuPopup->Fields(), (QStringList{"id", "name", "price"}));
        const QStringList fields = {"id", "name", "price"};
        for (int column = 1; column < window->mfg->Cols(); ++column)
            ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, column, fields[column - 1]));
        window->txtErrorCount->setText(tolerance);
    }
    void Go() { ASSERT_NO_FATAL_FAILURE(ClickOn(window->cmdNext)); }
    bool HasGone()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    }
    static QByteArray Lines(int from, int to)
    {
        QByteArray bytes("id,name,price\n");
        for (int i = from; i <= to; ++i)
            bytes += QByteArray::number(i) + ",n" + QByteArray::number(i) + ',' + QByteArray::number(i * 10) + '\n';
        return bytes;
    }
};

} // namespace

TEST_P(Import, ShowsTheFileWithItsTitlesAndMapsByMouse)
{
    EXPECT_EQ(window->windowTitle(), "Import Flat File");
    EXPECT_EQ(window->cmbDilimiter->currentText(), ",");
    ChooseAndMap("\xEF\xBB\xBFid,\"the name\",price\r\n\r\n1,'x',2\n2,\"a,b\"\n");
    // The last line is cut inside its quotes, which stay.
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"File", "id", "the name", "price"}));
    EXPECT_EQ(RowOf(window->mfg, 1), (QStringList{"Table", "id", "name", "price"}));
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"1", "id", "the name", "price"}));
    EXPECT_EQ(RowOf(window->mfg, 3), (QStringList{"2", "1", "x", "2"}));
    EXPECT_EQ(RowOf(window->mfg, 4), (QStringList{"3", "2", "\"a", "b\""}));
    EXPECT_EQ(window->mfg->Rows(), 5);

    // The popup takes a column out again, and its title names the column.
    QTest::mouseClick(window->mfg->viewport(), Qt::RightButton, {}, window->mfg->CellRect(0, 2).center());
    EXPECT_EQ(window->mnuPopup->mnuTitle->text(), "Map File Column the name to:");
    auto *unmap = window->mnuPopup->findChild<QAction *>("mnuUnmap");
    ASSERT_TRUE(unmap);
    EXPECT_EQ(unmap->text(), "[Unmap Column]");
    EXPECT_EQ(unmap->data().toString(), "C");
    ASSERT_NO_FATAL_FAILURE(ClickEntry(window->mnuPopup, unmap));
    EXPECT_EQ(window->mfg->TextMatrix(1, 2), "");
    QTest::mouseClick(window->mfg->viewport(), Qt::RightButton, {}, window->mfg->CellRect(2, 0).center());
    EXPECT_FALSE(window->mnuPopup->isVisible()) << "the titles are no column";

    QTest::mouseClick(window->chkFirstIsData, Qt::LeftButton, {}, {8, window->chkFirstIsData->height() / 2});
    EXPECT_EQ(RowOf(window->mfg, 0), (QStringList{"File", "Col1", "Col2", "Col3"}));
    EXPECT_EQ(RowOf(window->mfg, 1), (QStringList{"Table", "", "", ""}));
    EXPECT_TRUE(window->lblNoLine->isVisible());
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
}

TEST_P(Import, ADelimiterOfTheListIsWrittenIntoTheBoxAndAnyOtherIsTyped)
{
    Choose(Write("a;b|c\n"));
    EXPECT_EQ(window->mfg->Cols(), 2);
    const std::pair<const char *, int> rows[] = {{"Semicolon", 3}, {"Bar", 3}, {"Tab", 2}, {"Comma", 2}, {"Space", 2}};
    for (const auto &[entry, columns] : rows) {
        QComboBox *box = window->cmbDilimiter;
        box->setFocus();
        box->showPopup();
        const int index = box->findText(QLatin1String(entry));
        ASSERT_GE(index, 0);
        QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {},
                          box->view()->visualRect(box->model()->index(index, 0)).center());
        ASSERT_TRUE(QTest::qWaitFor([&] { return !box->view()->isVisible(); }, 20000));
        EXPECT_EQ(box->currentText(), DelimiterOf(QLatin1String(entry))) << entry;
        EXPECT_EQ(window->mfg->Cols(), columns) << entry;
    }
    window->cmbDilimiter->lineEdit()->selectAll();
    QTest::keyClicks(window->cmbDilimiter->lineEdit(), ";b");
    QTest::keyClick(window->cmbDilimiter->lineEdit(), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(RowOf(window->mfg, 2), (QStringList{"1", "a", "|c"}));
}

TEST_P(Import, BringsTheLinesInAndSaysHowMany)
{
    ChooseAndMap("id,name,price\n1,'one',10\n\n2,\"d'\xC3\xA9t\xC3\xA9 \xF0\x9F\x98\x80\"\n3, three ,\xE2\x80\x8A\n",
                 "-1");
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbInformation);
    EXPECT_TRUE(HasGone());
    // A field that is no number is left out, and the row goes in; a field that the line lacks is not stored.
    EXPECT_EQ(
        place->Rows("SELECT * FROM goods ORDER BY id"),
        (QStringList{"1|one|10", QString::fromUtf8("2|d'\xC3\xA9t\xC3\xA9 \xF0\x9F\x98\x80|null"), "3| three |null"}));
    EXPECT_EQ(shell.Status(), "3 rows are in, 1 without a field that was refused.");
    EXPECT_TRUE(Log().startsWith("\r\nRecord 4)[price] ")) << Log().toStdString();
    EXPECT_FALSE(gConn->InTransaction());
}

TEST_P(Import, WithTheBoxClearNoLineGoesIn)
{
    ChooseAndMap(Lines(1, 3));
    QTest::mouseClick(window->chkFirstIsData, Qt::LeftButton, {}, {8, window->chkFirstIsData->height() / 2});
    ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, 1, "id"));
    Go();
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(place->Count("goods"), 0);
    EXPECT_EQ(shell.Status(), "0 rows are in.");
    EXPECT_TRUE(HasGone());
}

TEST_P(Import, EachRefusedRowIsToldByItsLineWhereverItStands)
{
    place->Run("INSERT INTO goods VALUES(1, 'first', 0), (51, 'middle', 0), (100, 'last', 0)");
    ChooseAndMap(Lines(1, 100), "-1");
    Go();
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(place->Count("goods"), 100);
    EXPECT_EQ(place->Rows("SELECT name FROM goods WHERE id IN (1, 2, 51, 100) ORDER BY id"),
              (QStringList{"first", "n2", "middle", "last"}));
    EXPECT_EQ(shell.Status(), "97 rows are in, 3 refused.");
    const QString log = Log();
    for (const int line : {2, 52, 101}) // one more than the id: the first line holds the names
        EXPECT_TRUE(log.contains(QStringLiteral("\r\nRecord %1)").arg(line))) << line << '\n' << log.toStdString();
    EXPECT_EQ(log.count(QStringLiteral("Record ")), 4) << log.toStdString(); // the batch itself, and each row
    EXPECT_TRUE(log.contains("unique", Qt::CaseInsensitive) || log.contains("duplicate", Qt::CaseInsensitive))
        << log.toStdString();
}

TEST_P(Import, ARefusedRowPastTheToleranceSaysThatNothingIsTakenBack)
{
    place->Run("INSERT INTO goods VALUES(3, 'there', 0)");
    ChooseAndMap(Lines(1, 5));
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(dialogs.Boxes[0].Text, "Errors have exceeded tolerance level.");
    EXPECT_EQ(dialogs.Boxes[1].Text, "Changes have not been rolled back.");
    ASSERT_FALSE(HasGone());
    EXPECT_EQ(place->Rows("SELECT id, name FROM goods ORDER BY id"),
              (QStringList{"1|n1", "2|n2", "3|there", "4|n4", "5|n5"}));
    EXPECT_EQ(shell.Status(), "Canceling... 4 rows are in, 1 refused.");
    EXPECT_TRUE(Log().contains("\r\nRecord 4)")) << Log().toStdString();
    // The window serves on: the boxes are on, the mapping stands.
    EXPECT_TRUE(window->cmdNext->isEnabled());
    EXPECT_TRUE(window->txtFileName->isEnabled());
    EXPECT_EQ(window->mfg->TextMatrix(1, 2), "name");
    EXPECT_FALSE(window->PB->isVisible());
}

TEST_P(Import, AFieldPastTheToleranceRollsBackAndTheWindowStays)
{
    ChooseAndMap("id,name,price\n1,a,1\n2,b,many\n3,c,3\n");
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 1) << Box(1).toStdString();
    EXPECT_EQ(dialogs.Boxes[0].Text, "Errors have exceeded tolerance level.");
    EXPECT_EQ(place->Count("goods"), 0);
    EXPECT_TRUE(Log().startsWith("\r\nRecord 3)[price] ")) << Log().toStdString();
    EXPECT_TRUE(shell.Status().startsWith("Canceling... 0 rows are in")) << shell.Status().toStdString();
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_FALSE(HasGone());
}

TEST_P(Import, ATransactionThatIsOpenIsAskedAbout)
{
    gConn->BeginTrans();
    ChooseAndMap(Lines(1, 2));
    dialogs.Answers << mbNo;
    Go();
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(dialogs.Boxes[0].Title, "Transaction session faild");
    EXPECT_EQ(
        dialogs.Boxes[0].Text,
        "The connection is not allowing a transaction to begin. If you continue without a transaction session all "
        "modification cannot be rolled back. Would you like to contuinue wihtout a trasaction session?");
    EXPECT_EQ(dialogs.Boxes[0].Buttons, mbYesNo);
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(place->Count("goods"), 0);
    ASSERT_FALSE(HasGone());
    dialogs.Answers << mbYes;
    Go();
    EXPECT_EQ(Box(2), "Import/Import complete.");
    EXPECT_EQ(place->Count("goods"), 2);
    EXPECT_TRUE(gConn->InTransaction()) << "the user's transaction is the user's to end";
    gConn->RollbackTrans();
    EXPECT_EQ(place->Count("goods"), 0);
}

TEST_P(Import, FilesThatCannotBeReadAreToldAndNothingIsLeftOpen)
{
    Choose(folder.filePath("none.csv"));
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Box(0), "File Error/File does not exist.");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    Go();
    EXPECT_EQ(Box(1), "File Error/File does not exist.");
    EXPECT_FALSE(gConn->InTransaction());

    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    for (const QString &path : {folder.path(), pipe}) {
        dialogs.Boxes.clear();
        window->txtFileName->setText(path);
        window->Preview();
        EXPECT_EQ(Box(0), "File Error/It is not a file.") << path.toStdString();
        Go();
        EXPECT_EQ(Box(1), "File Error/It is not a file.") << path.toStdString();
        EXPECT_FALSE(gConn->InTransaction());
        EXPECT_FALSE(HasGone());
    }
    dialogs.Boxes.clear();
    window->txtFileName->clear();
    Go();
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << "without a file's name nothing is said";
    EXPECT_FALSE(gConn->InTransaction());
}

TEST_P(Import, AnEmptyFileAndOneOfBlankLinesBringNothing)
{
    for (const char *bytes : {"", "\n\r\n   \n"}) {
        if (!window)
            Open();
        dialogs.Boxes.clear();
        Choose(Write(bytes));
        EXPECT_EQ(window->mfg->TextMatrix(0, 0), "File");
        EXPECT_EQ(window->mfg->TextMatrix(0, 1), "");
        Go();
        EXPECT_EQ(Box(0), "Import/Import complete.");
        EXPECT_TRUE(HasGone());
        EXPECT_EQ(place->Count("goods"), 0);
    }
}

TEST_P(Import, ALineWithMoreFieldsThanTheFirstStopsThePreviewAndIsLeftOut)
{
    ChooseAndMap("id,name\n1,a\n2,b,c\n3,d\n", "-1");
    ASSERT_EQ(dialogs.Boxes.size(), 1);
    EXPECT_EQ(Box(0), "Error/File Inconsistent in data format. Cannot import this file,");
    EXPECT_EQ(dialogs.Boxes[0].Icon, mbExclamation);
    EXPECT_EQ(window->mfg->Rows(), 4);
    Go();
    EXPECT_EQ(place->Rows("SELECT id FROM goods ORDER BY id"), (QStringList{"1", "3"}));
    EXPECT_EQ(Log(), "\r\nRecord 3)Application-defined or object-defined error");
    EXPECT_EQ(shell.Status(), "2 rows are in, 1 line with too many fields left out.");
}

TEST_P(Import, ZeroBytesAndALongLineEndInWordsAndNotInACrash)
{
    const QByteArray large(3 << 20, 'x');
    ChooseAndMap("id,name\n1," + QByteArray("a\0b", 3) + "\n2," + large + "\n3,c\n", "-1");
    EXPECT_LE(window->mfg->TextMatrix(4, 2).size(), ImportPreviewBytes) << "a preview keeps no long text";
    Go();
    EXPECT_EQ(Box(0), "Import/Import complete.");
    // SQLite takes a text of any length, and PostgreSQL no zero byte: what is not in is told by its line.
    const QStringList in = place->Rows("SELECT id FROM goods ORDER BY id");
    EXPECT_TRUE(in.contains("3"));
    for (const int line : {2, 3}) {
        const bool isIn = in.contains(QString::number(line - 1));
        EXPECT_EQ(Log().contains(QStringLiteral("Record %1)").arg(line)), !isIn)
            << line << Log().left(2000).toStdString();
    }
}

TEST_P(Import, EscapeStopsTheReadingAtOnceAndTheWindowStays)
{
    ChooseAndMap(Lines(1, 400'000));
    QString said;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().contains("bytes"))
            return;
        look.stop();
        EXPECT_TRUE(window->PB->isVisible());
        EXPECT_FALSE(window->txtTable->isEnabled());
        EXPECT_TRUE(shell.Stop) << "the main window offers to stop it";
        QTest::keyClick(window->cmdCancel, Qt::Key_Escape);
        said = window->lblProgress->text();
    });
    look.start(5);
    Go();
    EXPECT_EQ(said, "Canceling...");
    EXPECT_TRUE(dialogs.Boxes.isEmpty());
    ASSERT_FALSE(HasGone());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(shell.Status(), "Canceling... 0 rows are in.");
    EXPECT_EQ(place->Count("goods"), 0);
    EXPECT_FALSE(gConn->InTransaction());
    EXPECT_TRUE(window->cmdNext->isEnabled());
}

TEST_P(Import, StoppedWhileItSendsSaysWhatIsInAndTheTableAgrees)
{
    ChooseAndMap(Lines(1, 60'000));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().contains("sending"))
            return;
        look.stop();
        QTest::mouseClick(window->cmdCancel, Qt::LeftButton);
    });
    look.start(5);
    Go();
    ASSERT_FALSE(HasGone());
    EXPECT_TRUE(dialogs.Boxes.isEmpty()) << Box(0).toStdString();
    const qint64 in = place->Count("goods");
    EXPECT_LT(in, 60'000);
    const QString told = Grouped(in);
    EXPECT_TRUE(shell.Status().startsWith(QStringLiteral("Canceling... %1 row").arg(told)))
        << in << ' ' << shell.Status().toStdString();
    EXPECT_TRUE(shell.Status().endsWith(Grouped(60'000 - in) + " not sent.")) << shell.Status().toStdString();
    EXPECT_EQ(place->Count("goods"), in) << "and the connection is good for the next statement";
}

TEST_P(Import, ClosedInTheMiddleItStopsAndGoes)
{
    ChooseAndMap(Lines(1, 400'000));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().contains("bytes"))
            return;
        look.stop();
        window->close();
        EXPECT_TRUE(window && window->isVisible()) << "it goes when the work has ended";
    });
    look.start(5);
    Go();
    EXPECT_TRUE(HasGone());
    EXPECT_EQ(shell.Status(), "Canceling... 0 rows are in.");
    EXPECT_EQ(place->Count("goods"), 0);
    EXPECT_FALSE(gConn->InTransaction());
}

// What was mapped was looked at with another table before one's eyes: rows must not go into the table of that name on
// the connection that is the current one now.
TEST_P(Import, AConnectionThatHasChangedIsNotWrittenTo)
{
    ChooseAndMap(Lines(1, 3));
    const Place other(kSqlite, QStringLiteral("other"));
    other.Run("CREATE TABLE goods(id INTEGER, name TEXT, price INTEGER)");
    gConn = other.Connection;
    Go();
    EXPECT_EQ(shell.Status(), "The current connection has changed: look at the mapping again.");
    EXPECT_EQ(other.Count("goods"), 0);
    EXPECT_EQ(place->Count("goods"), 0);
    Go(); // the user has looked
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(other.Count("goods"), 3);
    EXPECT_EQ(place->Count("goods"), 0);
    gConn = place->Connection;
}

TEST_P(Import, ASwitchInTheMiddleLeavesTheRowsWhereTheyBegan)
{
    ChooseAndMap(Lines(1, 20'000));
    const Place other(kSqlite, QStringLiteral("other"));
    other.Run("CREATE TABLE goods(id INTEGER, name TEXT, price INTEGER)");
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().contains("bytes"))
            return;
        look.stop();
        gConn = other.Connection;
    });
    look.start(1);
    Go();
    EXPECT_FALSE(look.isActive()) << "the switch came too late";
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(place->Count("goods"), 20'000);
    EXPECT_EQ(other.Count("goods"), 0);
    EXPECT_EQ(shell.Status(), "20,000 rows are in.");
    gConn = place->Connection;
}

TEST_P(Import, ByTheKeyboardAlone)
{
    const QString path = Write("n\nx\n");
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    ASSERT_EQ(QApplication::focusWidget(), window->txtFileName);
    const auto type = [](const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); };
    const auto key = [](int code, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(code), with);
        QCoreApplication::processEvents();
    };
    place->Run("CREATE TABLE plain(n VARCHAR(9))");
    type(path);
    key(Qt::Key_T, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), window->txtTable);
    type("plain");
    key(Qt::Key_Tab);
    window->mfg->setFocus(Qt::TabFocusReason);
    key(Qt::Key_Menu);
    ASSERT_TRUE(window->mnuPopup->isVisible());
    QTest::keyClick(window->mnuPopup, Qt::Key_Down);
    QTest::keyClick(window->mnuPopup, Qt::Key_Down);
    QTest::keyClick(window->mnuPopup, Qt::Key_Return);
    EXPECT_EQ(window->mfg->TextMatrix(1, 1), "n");
    window->activateWindow(); // as a desktop does when the popup has gone
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    key(Qt::Key_I, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialogs.Boxes.isEmpty(); }, 20000)); // the button goes down first
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(place->Rows("SELECT * FROM plain"), QStringList("x"));
    EXPECT_TRUE(HasGone());
}

TEST_P(Import, ATableWithAHostileNameIsReachedAndNoOther)
{
    const QString quote = qstrcmp(GetParam().name, "MariaDB") == 0 ? QStringLiteral("`") : QStringLiteral("\"");
    const QString name = QStringLiteral("a\"b]c'd");
    const QString quoted = quote + (quote == u"\"" ? QString(name).replace(u'"', QLatin1String("\"\"")) : name) + quote;
    place->Run(QStringLiteral("CREATE TABLE %1(id INTEGER)").arg(quoted));
    Choose(Write("id\n7\n"), name);
    ASSERT_EQ(window->mnuPopup->Fields(), QStringList("id"));
    ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, 1, "id"));
    Go();
    EXPECT_EQ(place->Rows(QStringLiteral("SELECT id FROM ") + quoted), QStringList("7"));
    EXPECT_EQ(place->Count("goods"), 0);
}

INSTANTIATE_TEST_SUITE_P(Databases, Import, testing::Values(kSqlite, kPostgres, kMariaDb),
                         [](const auto &database) { return std::string(database.param.name); });
