#include "app/CommandLine.h"
#include "frame/AppPath.h"
#include "tests/support/ExpectCases.h"
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <gtest/gtest.h>

static QJsonValue AsCase(const QString &command, bool exists)
{
    const auto parts = ParseCommandLine(command, [exists](const QString &) { return exists; });
    if (!parts)
        return QJsonValue();
    return QJsonObject{{QStringLiteral("file"), parts->File},
                       {QStringLiteral("opened"), parts->FileExists},
                       {QStringLiteral("looked"), QJsonArray::fromStringList(parts->Looked)},
                       {QStringLiteral("switchR"), parts->SwitchR}};
}

TEST(CommandLine, WorkedCases)
{
    ExpectCases("command_line", [](const QJsonObject &args) {
        return AsCase(args[QStringLiteral("command")].toString(), args[QStringLiteral("exists")].toBool());
    });
}

TEST(TestMode, WorkedCases)
{
    ExpectCases("test_mode",
                [](const QJsonObject &args) { return IsTestMode(args[QStringLiteral("command")].toString()); });
}

TEST(CommandLine, BlanksReturnAtOnce)
{
    EXPECT_FALSE(ParseCommandLine(QString(), [](const QString &) { return true; }));
    EXPECT_FALSE(ParseCommandLine(QStringLiteral("   "), [](const QString &) { return true; }));
    EXPECT_TRUE(ParseCommandLine(QStringLiteral("\t"), [](const QString &) { return false; }));
}

TEST(CommandLine, TheSwitchChangesNothingOfTheFile)
{
    const auto exists = [](const QString &name) { return name == QLatin1String("\\a b.sql"); };
    const auto with = ParseCommandLine(QStringLiteral("\"\\a b.sql\" /R"), exists);
    const auto without = ParseCommandLine(QStringLiteral("\"\\a b.sql\""), exists);
    ASSERT_TRUE(with && without);
    EXPECT_EQ(with->File, without->File);
    EXPECT_TRUE(with->FileExists);
    EXPECT_TRUE(without->FileExists);
    EXPECT_TRUE(with->SwitchR);
    EXPECT_EQ(with->Looked, QStringList(QStringLiteral("R")));
    EXPECT_TRUE(without->Looked.isEmpty());
}

TEST(CommandLine, TheSwitchIsTrimmedAndOfAnyCase)
{
    const auto parts = ParseCommandLine(QStringLiteral("x / r /RR"), [](const QString &) { return false; });
    EXPECT_EQ(parts->Looked, QStringList({QStringLiteral("X"), QStringLiteral("R"), QStringLiteral("RR")}));
    EXPECT_TRUE(parts->SwitchR);
    EXPECT_FALSE(ParseCommandLine(QStringLiteral("x /RR"), [](const QString &) { return false; })->SwitchR);
}

TEST(CommandLine, APathWithSlashesIsCutAtTheFirst)
{
    const auto parts = ParseCommandLine(QStringLiteral("/home/me/a.sql"), [](const QString &) { return false; });
    EXPECT_EQ(parts->File, QString());
    EXPECT_EQ(parts->Looked,
              QStringList({QString(), QStringLiteral("HOME"), QStringLiteral("ME"), QStringLiteral("A.SQL")}));
}

TEST(ComposeCommandLine, AFileBecomesItsQuotedPathInTheProgramsNotation)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("my query.sql"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const QString line = ComposeCommandLine({path, QStringLiteral("/R")});
    EXPECT_EQ(line,
              QLatin1Char('"') + QString(path).replace(QLatin1Char('/'), QLatin1Char('\\')) + QStringLiteral("\" /R"));
    const auto parts = ParseCommandLine(line, [](const QString &name) { return QFile::exists(ToNative(name)); });
    ASSERT_TRUE(parts);
    EXPECT_TRUE(parts->FileExists);
    EXPECT_EQ(ToNative(parts->File), path);
    EXPECT_TRUE(parts->SwitchR);
}

TEST(FileOfLine, FindsWhatTheLineHasTakenFromTheName)
{
    QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("a \"b\"")));
    for (const char *name : {"it's.sql", "the \"best\" one.sql", "back\\slash \"x\".sql", "a \"b\"/c.sql", "end.sql ",
                             "\xC3\xA4 \xE2\x82\xAC.sql"}) {
        const QString path = folder.filePath(QString::fromUtf8(name));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.close();
        const auto parts = ParseCommandLine(ComposeCommandLine({path}),
                                            [](const QString &line) { return !FileOfLine(line).isEmpty(); });
        ASSERT_TRUE(parts);
        EXPECT_TRUE(parts->FileExists) << name;
        EXPECT_EQ(FileOfLine(parts->File), path);
    }
    EXPECT_EQ(FileOfLine(QString()), QString());
    EXPECT_EQ(FileOfLine(ToProgramPath(folder.filePath(QStringLiteral("none.sql")))), QString());
    EXPECT_EQ(FileOfLine(ToProgramPath(folder.path())), QString()); // a folder is no file
}

TEST(ComposeCommandLine, OtherArgumentsStandAsTheyAre)
{
    EXPECT_EQ(ComposeCommandLine({QStringLiteral("TestMode")}), QStringLiteral("TestMode"));
    EXPECT_EQ(ComposeCommandLine({}), QString());
    EXPECT_EQ(ComposeCommandLine({QStringLiteral("/no/such.sql"), QStringLiteral("/R")}),
              QStringLiteral("/no/such.sql /R"));
    EXPECT_EQ(ComposeCommandLine({QDir::tempPath()}), QDir::tempPath()); // a folder is no file
}
