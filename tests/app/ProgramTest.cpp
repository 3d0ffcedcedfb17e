// The program itself, as a process of its own.
#include "ado/Recordset.h"
#include "data/ConnectionStore.h"
#include "data/clsConns.h"
#include "tests/support/Places.h"
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <gtest/gtest.h>

namespace {

const QString s_bin = (places::Binary() + QStringLiteral("/bin/"));

class Program : public testing::Test
{
protected:
    void Prepare(QProcess &process, const QString &program = QStringLiteral("Brindlewick"),
                 const QStringList &arguments = {}, const QString &picture = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("BRINDLEWICK_HOME"), m_home.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.path()); // the toolkit says so when it is missing
        if (!picture.isEmpty())
            environment.insert(QStringLiteral("BRINDLEWICK_SESSION"), picture);
        process.setProcessEnvironment(environment);
        process.setProgram(s_bin + program);
        process.setArguments(arguments);
    }
    int Run(QProcess &process)
    {
        process.start();
        if (!process.waitForFinished(90000)) {
            process.kill();
            process.waitForFinished();
            return -1;
        }
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }
    int Store(const QStringList &arguments)
    {
        QProcess process;
        Prepare(process, QStringLiteral("brindlewick-store"), arguments);
        return Run(process);
    }
    QString Path(const QString &name) { return m_home.filePath(name); }
    QTemporaryDir m_home;
};

TEST_F(Program, ASecondInstanceEndsSilentlyAndADeadOneDoesNotBlock)
{
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("n"), QStringLiteral("DSN=x")}), 0);
    QProcess first;
    Prepare(first);
    first.start();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(Path(QStringLiteral("instance.lock"))); }, 20000));
    QProcess second;
    Prepare(second);
    EXPECT_EQ(Run(second), 0);
    EXPECT_EQ(second.readAllStandardOutput(), QByteArray());
    EXPECT_EQ(second.readAllStandardError(), QByteArray());
    EXPECT_EQ(first.state(), QProcess::Running);
    first.kill(); // its lock stays behind
    first.waitForFinished();
    ASSERT_TRUE(QFile::exists(Path(QStringLiteral("instance.lock"))));
    QProcess third;
    Prepare(third);
    third.start();
    EXPECT_FALSE(third.waitForFinished(1500)); // it runs on
    third.kill();
    third.waitForFinished();
}

// Asked to end from outside, the program died where it stood: nothing was saved.
TEST_F(Program, ASignalToEndSavesAsExitDoes)
{
    for (const int signal : {SIGTERM, SIGHUP}) {
        QFile::remove(Path(QStringLiteral("es.dat")));
        QFile::remove(Path(QStringLiteral("settings.ini")));
        ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("n"), QStringLiteral("DSN=x")}), 0);
        QProcess program;
        Prepare(program);
        program.start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(Path(QStringLiteral("instance.lock"))); }, 20000));
        // The handlers stand before the lock is taken; the window saves its place whenever it ends.
        ASSERT_EQ(::kill(pid_t(program.processId()), signal), 0);
        ASSERT_TRUE(program.waitForFinished(20000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << signal;
        EXPECT_EQ(program.exitCode(), 0) << signal;
        EXPECT_TRUE(QFile::exists(Path(QStringLiteral("settings.ini")))) << signal;
        EXPECT_FALSE(QFile::exists(Path(QStringLiteral("instance.lock")))) << signal;
        clsConns conns;
        ASSERT_TRUE(LoadConnections(Path(QStringLiteral("es.dat")), conns));
        EXPECT_EQ(conns.Count(), 1) << signal;
    }
}

// A server that stops answering kept a process without a window behind, with the lock, and no text was saved.
TEST_F(Program, ASilentServerDoesNotKeepTheProgram)
{
    if (qEnvironmentVariable("BRINDLEWICK_TEST_POSTGRES").isEmpty()) {
        ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1");
        GTEST_SKIP() << "no server here";
    }
    const QString script = places::Source() + QStringLiteral("/tests/servers/servers");
    const QString folder = Path(QStringLiteral("own"));
    QProcess servers;
    servers.start(script, {QStringLiteral("start"), folder, QStringLiteral("postgres")});
    ASSERT_TRUE(servers.waitForFinished(60000));
    ASSERT_EQ(servers.exitCode(), 0) << servers.readAllStandardError().toStdString();
    const QString lines = QString::fromUtf8(servers.readAllStandardOutput());
    const qsizetype from = lines.indexOf(u'\'') + 1;
    const QString text = lines.mid(from, lines.indexOf(u'\'', from) - from);
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("Sample"), text, QStringLiteral("select pg_sleep(50)")}), 0);
    QProcess program;
    Prepare(program, QStringLiteral("Brindlewick"), {}, Path(QStringLiteral("s.png")));
    program.start();
    {
        const ADODB::ConnectionPtr look = ADODB::Connection::Create();
        look->Open(text);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return look->Execute(QStringLiteral("select 1 from pg_stat_activity where state = 'active' and query = "
                                                    "'select pg_sleep(50)'"))
                           ->RecordCount() > 0;
            },
            40000));
    }
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("pause"), folder}), 0);
    EXPECT_EQ(::kill(pid_t(program.processId()), SIGTERM), 0);
    EXPECT_TRUE(program.waitForFinished(20000)); // the statement itself would take longer
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_FALSE(QFile::exists(Path(QStringLiteral("instance.lock"))));
    EXPECT_TRUE(QFile::exists(Path(QStringLiteral("settings.ini"))));
    clsConns conns;
    EXPECT_TRUE(LoadConnections(Path(QStringLiteral("es.dat")), conns));
    ASSERT_TRUE(conns.Item(QStringLiteral("Sample")));
    EXPECT_EQ(conns.Item(QStringLiteral("Sample"))->Extra, QStringLiteral("select pg_sleep(50)"));
    program.kill();
    program.waitForFinished();
    QProcess::execute(script, {QStringLiteral("resume"), folder});
    EXPECT_EQ(QProcess::execute(script, {QStringLiteral("stop"), folder}), 0);
}

TEST_F(Program, TheStoreToolAddsWhatIsNotThere)
{
    ASSERT_EQ(
        Store({QStringLiteral("add"), QStringLiteral("Sample"), QStringLiteral("DSN=x"), QStringLiteral("select 1")}),
        0);
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("SAMPLE"), QStringLiteral("DSN=y")}), 0);
    clsConns conns;
    ASSERT_TRUE(LoadConnections(Path(QStringLiteral("es.dat")), conns));
    ASSERT_EQ(conns.Count(), 1);
    EXPECT_EQ(conns.Item(QStringLiteral("sample"))->ConnectionString, QStringLiteral("DSN=x"));
    EXPECT_EQ(conns.Item(QStringLiteral("sample"))->Extra, QStringLiteral("select 1"));
    EXPECT_EQ(Store({}), 2);
    EXPECT_EQ(Store({QStringLiteral("add"), QStringLiteral("  "), QStringLiteral("DSN=y")}), 2);
    EXPECT_EQ(Store({QStringLiteral("remove"), QStringLiteral("Sample"), QStringLiteral("DSN=y")}), 2);
}

// Of 200 processes that added at once 56 were kept.
TEST_F(Program, TwoHundredStoreToolsAreAllKept)
{
    constexpr int tools = 200, together = 25;
    std::vector<std::unique_ptr<QProcess>> running;
    for (int begun = 0, ended = 0; ended < tools;) {
        for (; begun < tools && begun - ended < together; ++begun) {
            running.push_back(std::make_unique<QProcess>());
            Prepare(*running.back(), QStringLiteral("brindlewick-store"),
                    {QStringLiteral("add"), QStringLiteral("tool %1").arg(begun), QStringLiteral("DSN=x")});
            running.back()->start();
        }
        QProcess &next = *running[size_t(ended++)];
        ASSERT_TRUE(next.waitForFinished(90000));
        EXPECT_EQ(next.exitCode(), 0) << next.readAllStandardError().constData();
    }
    clsConns conns;
    ASSERT_TRUE(LoadConnections(Path(QStringLiteral("es.dat")), conns));
    EXPECT_EQ(conns.Count(), tools);
}

TEST_F(Program, TheLockAndTheSettingsAreTheirOwnersAlone)
{
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("n"), QStringLiteral("DSN=x")}), 0);
    QProcess program;
    Prepare(program);
    program.start();
    for (const char *name : {"instance.lock", "settings.ini", "es.dat", "es.dat.lock"}) {
        const QString path = Path(QString::fromLatin1(name));
        EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(path); }, 20000)) << name;
        EXPECT_EQ(QFile::permissions(path) &
                      (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                  QFile::Permissions())
            << name;
    }
    program.kill();
    program.waitForFinished();
}

TEST_F(Program, TheSessionPlaysAndLeavesAPicture)
{
    const QString sample = Path(QStringLiteral("sample.sqlite")), picture = Path(QStringLiteral("s.png"));
    {
        QProcess maker;
        Prepare(maker, QStringLiteral("make-sample"), {sample});
        ASSERT_EQ(Run(maker), 0);
    }
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("Sample"),
                     QStringLiteral("Driver=SQLite;Database=") + sample, QStringLiteral("SELECT * FROM customers")}),
              0);
    QProcess session;
    Prepare(session, QStringLiteral("Brindlewick"), {}, picture);
    EXPECT_EQ(Run(session), 0) << session.readAllStandardError().constData();
    EXPECT_TRUE(session.readAllStandardOutput().contains(picture.toLocal8Bit()));
    const QImage image(picture);
    EXPECT_EQ(image.size(), QSize(1280, 800));
    clsConns conns; // and it ended as any other run
    ASSERT_TRUE(LoadConnections(Path(QStringLiteral("es.dat")), conns));
    EXPECT_TRUE(conns.Item(QStringLiteral("Sample")));
}

TEST_F(Program, ASessionThatFailsSaysWhy)
{
    QProcess session;
    Prepare(session, QStringLiteral("Brindlewick"), {}, Path(QStringLiteral("s.png")));
    EXPECT_EQ(Run(session), 1);
    EXPECT_TRUE(session.readAllStandardError().contains("Sample"));
    EXPECT_FALSE(QFile::exists(Path(QStringLiteral("s.png"))));
}

TEST_F(Program, ASessionOverAFileThatIsNoDatabaseSaysWhy)
{
    QFile file(Path(QStringLiteral("x.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("no database ").repeated(500));
    file.close();
    ASSERT_EQ(Store({QStringLiteral("add"), QStringLiteral("Sample"),
                     QStringLiteral("Driver=SQLite;Database=") + file.fileName()}),
              0);
    QProcess session;
    Prepare(session, QStringLiteral("Brindlewick"), {}, Path(QStringLiteral("s.png")));
    EXPECT_EQ(Run(session), 1);
    EXPECT_TRUE(session.readAllStandardError().contains("not a database"));
}

} // namespace
