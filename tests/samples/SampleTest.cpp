// The sample database is the same each time and holds what a newcomer's first look must show rightly.
#include "samples/Sample.h"
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Sample : testing::Test
{
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("sample.sqlite"));
    sqlite3 *database = nullptr;

    void SetUp() override
    {
        ASSERT_EQ(MakeSample(path.toStdString(), {300, 80, 2000}), "");
        ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    }
    void TearDown() override { sqlite3_close(database); }

    std::string One(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
        std::string text = "(no row)";
        if (sqlite3_step(statement) == SQLITE_ROW) {
            const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
            text = bytes ? bytes : "(null)";
        }
        sqlite3_finalize(statement);
        return text;
    }
};

TEST_F(Sample, TheSameBytesEachTime)
{
    const QString again = folder.filePath(QStringLiteral("again.sqlite"));
    ASSERT_EQ(MakeSample(again.toStdString(), {300, 80, 2000}), "");
    ASSERT_GT(Bytes(path).size(), 100000);
    EXPECT_EQ(Bytes(path), Bytes(again));
}

TEST_F(Sample, ItsKeysHold)
{
    EXPECT_EQ(One("PRAGMA foreign_key_check"), "(no row)");
    EXPECT_EQ(One("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(One("SELECT count(*) FROM pragma_foreign_key_list('orders')"), "3");
}

TEST_F(Sample, ItHoldsWhatAClientMustShowRightly)
{
    EXPECT_EQ(One("SELECT count(*) FROM sqlite_master WHERE type='view'"), "3");
    EXPECT_EQ(One("SELECT count(*) FROM sqlite_master WHERE name LIKE '%\"%' AND type='table'"), "1");
    EXPECT_EQ(One("SELECT count(*) > 0 FROM employees WHERE Badge > 9007199254740992"), "1");
    EXPECT_EQ(One("SELECT typeof(CreditLimit) FROM customers WHERE CreditLimit IS NOT NULL"), "text");
    EXPECT_EQ(One("SELECT count(*) > 0 FROM orders WHERE Remark = ''"), "1");
    EXPECT_EQ(One("SELECT count(*) > 0 FROM orders WHERE Remark IS NULL"), "1");
    EXPECT_EQ(One("SELECT count(*) > 0 FROM customers WHERE CompanyName LIKE '%北京%'"), "1");
    EXPECT_EQ(One("SELECT typeof(Picture) FROM categories"), "blob");
    EXPECT_EQ(One("SELECT count(*) FROM employees WHERE ReportsTo IS NULL"), "1");
}

TEST_F(Sample, AFolderThatCannotBeWrittenIsTold)
{
    EXPECT_NE(MakeSample("/nowhere/at/all/sample.sqlite", {1, 1, 1}), "");
}

} // namespace
