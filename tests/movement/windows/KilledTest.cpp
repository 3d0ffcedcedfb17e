// The server's end, or the connection's, in the middle of an import and of a transfer: what is in and what is not is
// told, and the table agrees.
#include "movement/frmDTS.h"
#include "movement/frmImportFlatFile.h"
#include "tests/movement/windows/Rooms.h"
#include "tests/support/Places.h"
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>
#include <atomic>
#include <thread>

namespace {

constexpr int kRows = 40'000;

// What the status bar tells: rows that are in, and those of which nothing is known.
struct Told
{
    qint64 in = -1, unknown = 0;
    explicit Told(const QString &status)
    {
        static const QRegularExpression rows(QStringLiteral("([0-9,]+) rows? (?:is|are) in")),
            rest(QStringLiteral("([0-9,]+) of which the server has told nothing"));
        const auto number = [](QString digits) { return digits.remove(u',').toLongLong(); };
        if (const auto match = rows.match(status); match.hasMatch())
            in = number(match.captured(1));
        if (const auto match = rest.match(status); match.hasMatch())
            unknown = number(match.captured(1));
    }
};

struct Ended : MovementTest, testing::TestWithParam<Database>
{
    std::unique_ptr<Place> place;
    ADODB::ConnectionPtr second;
    std::thread killer;
    std::atomic<bool> over = false, killed = false;

    void SetUp() override
    {
        place = std::make_unique<Place>(GetParam(), QStringLiteral("ended"));
        if (!place->Connection) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam();
            GTEST_SKIP() << GetParam();
        }
        place->Run("CREATE TABLE goods(id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL)");
        m_where = place->Rows(IsPostgres() ? "SELECT current_schema()" : "SELECT DATABASE()").value(0);
        second = ADODB::Connection::Create();
        second->Open(place->Connection->ConnectionString());
    }
    void TearDown() override
    {
        over = true;
        if (killer.joinable())
            killer.join();
        gConn.reset();
        if (place && place->Connection)
            place->Connection = Again();
    }
    bool IsPostgres() const { return qstrcmp(GetParam().name, "PostgreSQL") == 0; }
    ADODB::ConnectionPtr Again() const // another connection to the same place
    {
        const ADODB::ConnectionPtr fresh = ADODB::Connection::Create();
        fresh->Open(second->ConnectionString());
        fresh->Execute((IsPostgres() ? "SET search_path TO " : "USE ") + m_where);
        return fresh;
    }
    // Ends the session of this connection as soon as some of its rows can be seen from outside.
    void KillOnceRowsAreIn(const ADODB::ConnectionPtr &victim)
    {
        const QString id =
            victim->Execute(IsPostgres() ? "SELECT pg_backend_pid()" : "SELECT CONNECTION_ID()")->CellText(0, 0);
        killer = std::thread([this, id] {
            try {
                while (!over) {
                    if (second->Execute("SELECT COUNT(*) FROM " + m_where + ".goods")->CellValue(0, 0).ToInt64() == 0)
                        continue;
                    second->Execute((IsPostgres() ? "SELECT pg_terminate_backend(" + id + ")" : "KILL " + id));
                    killed = true;
                    return;
                }
            } catch (const ADODB::Error &error) {
                ADD_FAILURE() << error.what();
            }
        });
    }
    void ExpectTold()
    {
        over = true;
        killer.join();
        ASSERT_TRUE(killed) << "all rows were in before the first was seen";
        const Told told(shell.Status());
        const qint64 in = second->Execute("SELECT COUNT(*) FROM " + m_where + ".goods")->CellValue(0, 0).ToInt64();
        EXPECT_GT(in, 0);
        EXPECT_LT(in, kRows) << "it was not in the middle";
        EXPECT_GE(in, told.in) << shell.Status().toStdString();
        EXPECT_LE(in, told.in + told.unknown) << shell.Status().toStdString();
        // Only the block whose commit got no answer is in doubt.
        EXPECT_LE(in - told.in, 10'000) << shell.Status().toStdString();
        EXPECT_EQ(told.in + told.unknown, kRows) << shell.Status().toStdString();
    }
    QString m_where;
};

} // namespace

TEST_P(Ended, AnImportTellsWhatIsInWhenItsSessionEnds)
{
    QByteArray bytes("id,name\n");
    for (int i = 1; i <= kRows; ++i)
        bytes += QByteArray::number(i) + ",n" + QByteArray::number(i) + '\n';
    gConn = place->Connection;
    const QPointer<frmImportFlatFile> window(new frmImportFlatFile);
    window->show();
    window->txtFileName->setText(Write(bytes));
    window->Preview();
    QTest::keyClicks(window->txtTable, "goods");
    QTest::keyClick(window->txtTable, Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, 1, "id"));
    ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, 2, "name"));
    KillOnceRowsAreIn(gConn);
    ClickOn(window->cmdNext);
    ASSERT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(dialogs.Boxes[0].Text, "Errors have exceeded tolerance level.");
    EXPECT_EQ(dialogs.Boxes[1].Text, "Changes have not been rolled back.");
    EXPECT_TRUE(Log().contains("the server has told nothing")) << Log().toStdString();
    ExpectTold();
    ASSERT_TRUE(window) << "the window stays";
    // It serves the next connection.
    gConn = Again();
    gConn->Execute("DELETE FROM goods");
    dialogs.Boxes.clear();
    ClickOn(window->cmdNext); // the table is read on the new one
    ClickOn(window->cmdNext);
    EXPECT_EQ(Box(0), "Import/Import complete.");
    EXPECT_EQ(gConn->Execute("SELECT COUNT(*) FROM goods")->CellText(0, 0), QString::number(kRows));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_P(Ended, ATransferTellsWhatIsInWhenTheDestinationsSessionEnds)
{
    const Place from(kSqlite, QStringLiteral("from"));
    from.Run(QStringLiteral("CREATE TABLE source AS WITH RECURSIVE n(id) AS (SELECT 1 UNION ALL SELECT id + 1 FROM n "
                            "WHERE id < %1) SELECT id, 'n' || id AS name FROM n")
                 .arg(kRows));
    gConn = from.Connection;
    const QPointer<frmDTS> window(new frmDTS);
    window->SetMode(false);
    window->show();
    window->UseOther(place->Connection, QStringLiteral("doomed"));
    for (const auto &[side, name] : {std::pair(0, "source"), std::pair(1, "goods")}) {
        window->txtTable[size_t(side)]->setFocus();
        QTest::keyClicks(window->txtTable[size_t(side)], name);
        QTest::keyClick(window->txtTable[size_t(side)], Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    ASSERT_EQ(RowOf(window->mfg, 0), (QStringList{"Source:", "id", "name"}));
    KillOnceRowsAreIn(place->Connection);
    dialogs.Answers << mbNo;
    ClickOn(window->cmdNext);
    EXPECT_EQ(Box(0), "Errors/Tolerable errors occurred. You you like to view the log?");
    ExpectTold();
    gConn.reset();
    delete window.data();
}

INSTANTIATE_TEST_SUITE_P(Servers, Ended, testing::Values(kPostgres, kMariaDb),
                         [](const auto &database) { return std::string(database.param.name); });

namespace {

struct Killed : MovementTest, testing::TestWithParam<const char *>
{
};

} // namespace

// The whole server, as by a crash: the window is alive, and what is known is told.
TEST_P(Killed, AnImportSaysSoAndItsWindowStays)
{
    if (qEnvironmentVariableIsEmpty("BRINDLEWICK_TEST_SERVERS"))
        GTEST_SKIP() << "servers are started by ./test";
    const QString script = places::Source() + QStringLiteral("/tests/servers/servers"), home = folder.filePath("own");
    QProcess start;
    start.start(script, {QStringLiteral("start"), home, QLatin1String(GetParam())});
    ASSERT_TRUE(start.waitForFinished(60000));
    ASSERT_EQ(start.exitCode(), 0) << start.readAllStandardError().toStdString();
    const QString lines = QString::fromUtf8(start.readAllStandardOutput());
    const qsizetype from = lines.indexOf(u'\'') + 1;
    gConn = ADODB::Connection::Create();
    gConn->Open(lines.mid(from, lines.indexOf(u'\'', from) - from));
    gConn->Execute("CREATE TABLE goods(id INTEGER NOT NULL PRIMARY KEY)");
    QByteArray bytes("id\n");
    for (int i = 1; i <= kRows; ++i)
        bytes += QByteArray::number(i) + '\n';
    const QPointer<frmImportFlatFile> window(new frmImportFlatFile);
    window->show();
    window->txtFileName->setText(Write(bytes));
    window->Preview();
    QTest::keyClicks(window->txtTable, "goods");
    QTest::keyClick(window->txtTable, Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_NO_FATAL_FAILURE(MapByMouse(*window, window->mnuPopup, 1, "id"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!window->IsRunning() || !window->lblProgress->text().contains("sending"))
            return;
        look.stop();
        EXPECT_EQ(QProcess::execute(script, {QStringLiteral("kill"), home, QLatin1String(GetParam())}), 0);
    });
    look.start(5);
    ClickOn(window->cmdNext);
    EXPECT_FALSE(look.isActive());
    EXPECT_EQ(Box(0).section(u'/', 1), "Errors have exceeded tolerance level.");
    const Told told(shell.Status());
    EXPECT_LT(told.in, kRows);
    EXPECT_EQ(told.in + told.unknown, kRows) << shell.Status().toStdString();
    EXPECT_FALSE(Log().isEmpty());
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->cmdNext->isEnabled());
    dialogs.Boxes.clear();
    dialogs.Answers << mbNo;
    ClickOn(window->cmdNext); // the dead connection says so, and asks what it asks where no transaction begins
    EXPECT_FALSE(dialogs.Boxes.isEmpty());
    delete window.data();
    gConn.reset();
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("stop"), home}), 0);
}

INSTANTIATE_TEST_SUITE_P(Servers, Killed, testing::Values("postgres", "mariadb"),
                         [](const auto &server) { return std::string(server.param); });
