// What the ODBC driver does beside the conformance: its lists, its strings, its refusals, its trace.
#include "ado/odbc/OdbcDriver.h"
#include "ado/Recordset.h"
#include "tests/ado/Conformance.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <clocale>
#include <gtest/gtest.h>

using namespace ADODB;
using conformance::ErrorFrom;

TEST(OdbcDriver, CompletesWhatTheDriverManagerGets)
{
    const auto completed = [](const char *text) {
        return Odbc::Completed(QString::fromLatin1(text), QStringLiteral("me"), QStringLiteral("p;w"));
    };
    EXPECT_EQ(completed("DSN=x;UID=old;PWD=old"), u"DSN=x;UID=me;PWD={p;w}");
    EXPECT_EQ(completed("DRIVER=FreeTDS;Server=s"), u"DRIVER=FreeTDS;Server=s;UID=me;PWD={p;w};ClientCharset=UTF-8");
    EXPECT_EQ(completed("Driver={FreeTDS};clientcharset=CP1252"),
              u"Driver={FreeTDS};clientcharset=CP1252;UID=me;PWD={p;w}");
    EXPECT_EQ(Odbc::Completed(QStringLiteral("DSN=x;UID=old"), QString(), QString()), u"DSN=x;UID=old"); // as it was
}

// The driver's file, below the folders of any architecture; "" where there is none.
static QString SqliteDriverFile()
{
    QStringList folders = {QStringLiteral("/usr/lib/odbc"), QStringLiteral("/usr/lib64"),
                           QStringLiteral("/usr/local/lib")};
    const QStringList architectures = QDir(QStringLiteral("/usr/lib")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &architecture : architectures)
        folders += QStringLiteral("/usr/lib/%1/odbc").arg(architecture);
    for (const QString &folder : folders)
        if (const QString file = folder + QStringLiteral("/libsqlite3odbc.so"); QFile::exists(file))
            return file;
    return {};
}

TEST(OdbcDriver, TakesADriverFileByItsPath)
{
    const QString file = SqliteDriverFile();
    if (file.isEmpty() && conformance::ServersArePromised())
        FAIL() << "the drivers were promised, and SQLite's lies in none of the folders that are known here";
    if (file.isEmpty())
        GTEST_SKIP() << "SQLite's driver lies elsewhere on this machine";
    QTemporaryDir folder;
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("Driver=%1;Database=%2").arg(file, folder.filePath(QStringLiteral("a.db"))));
    EXPECT_EQ(connection->Execute(QStringLiteral("SELECT 'x'"))->CellText(0, 0), u"x");
    EXPECT_EQ(
        ErrorFrom([] { Connection::Create()->Open(QStringLiteral("Driver=libsqlite3odbc.so;Database=x")); }).Number,
        adErrProviderNotFound);
}

TEST(OdbcDriver, ListsWhatTheDriverManagerKnows)
{
    const QStringList drivers = OdbcDrivers();
    EXPECT_TRUE(drivers.contains(QStringLiteral("SQLite3"))) << drivers.join(u' ').toStdString();
    EXPECT_TRUE(drivers.contains(QStringLiteral("PostgreSQL Unicode")));
    EXPECT_TRUE(drivers.contains(QStringLiteral("MariaDB Unicode")));
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("odbc.ini")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Shop books]\nDriver=SQLite3\nDatabase=/nowhere.db\n");
    file.close();
    qputenv("ODBCINI", file.fileName().toLocal8Bit());
    EXPECT_TRUE(OdbcDataSources().contains(QStringLiteral("Shop books")));
    qunsetenv("ODBCINI");
}

TEST(OdbcDriver, NamesADriverThatIsNotInstalled)
{
    for (const char *driver : {"{No Such Driver}", "/no/such/driver.so"}) {
        const Error error = ErrorFrom(
            [&] { Connection::Create()->Open(QStringLiteral("Driver=%1;Server=x").arg(QLatin1String(driver))); });
        EXPECT_EQ(error.Number, adErrProviderNotFound);
        EXPECT_TRUE(error.Description.contains(u"is not installed")) << error.what();
        EXPECT_TRUE(error.Description.contains(QString::fromLatin1(driver).remove(u'{').remove(u'}'))) << error.what();
    }
}

TEST(OdbcDriver, ReportsADataSourceThatIsNotThere)
{
    const Error error = ErrorFrom([] { Connection::Create()->Open(QStringLiteral("DSN=no such source")); });
    EXPECT_EQ(error.SQLState, u"IM002");
    EXPECT_FALSE(error.Description.isEmpty());
}

TEST(OdbcDriver, ReportsAServerThatIsNotThere)
{
    const Error error = ErrorFrom([] {
        Connection::Create()->Open(
            QStringLiteral("DRIVER={PostgreSQL Unicode};Server=127.0.0.1;Port=1;Database=x;UID=y;PWD=z"));
    });
    EXPECT_TRUE(error.SQLState.startsWith(u"08")) << error.what();
    EXPECT_FALSE(error.IsLoginFailure());
}

TEST(OdbcDriver, TracesCallsWithoutTheirArguments)
{
    QTemporaryDir folder;
    const QString trace = folder.filePath(QStringLiteral("trace")), place = folder.filePath(QStringLiteral("a.db"));
    qputenv("BRINDLEWICK_ODBC_TRACE", trace.toLocal8Bit());
    const ConnectionPtr connection = Connection::Create();
    connection->Open(QStringLiteral("DRIVER=SQLite3;Database=%1;PWD=topsecret").arg(place));
    connection->Execute(QStringLiteral("SELECT 1"));
    connection->Close();
    qunsetenv("BRINDLEWICK_ODBC_TRACE");
    Connection::Create()->Open(QStringLiteral("DRIVER=SQLite3;Database=%1").arg(place)); // closes the trace
    QFile file(trace);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains("SQLDriverConnect SUCCESS")) << text.toStdString();
    EXPECT_TRUE(text.contains("SQLExecDirect SUCCESS"));
    EXPECT_TRUE(text.contains(" ms\n"));
    EXPECT_FALSE(text.contains("topsecret"));
}

namespace conformance {

// The programs of the desktop follow the user's locale; the plain one must do as well.
TEST_P(Conformance, TheLocaleDoesNotMatter)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char *locale : {"C", "C.UTF-8"}) {
        ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
        const ConnectionPtr connection = NewConnection();
        const RecordsetPtr rows = connection->Execute(QStringLiteral("SELECT 'Größe 日本 🎉' AS x, 1.5 AS d"));
        EXPECT_EQ(rows->CellText(0, 0), Utf("Größe 日本 🎉")) << locale;
        EXPECT_EQ(rows->CellText(0, 1), u"1.5") << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace conformance
