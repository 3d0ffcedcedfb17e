#include "tests/data/House.h"
#include <QFileInfo>
#include <QLocale>
#include <QSettings>
#include <sys/stat.h>

namespace {

class SettingsTest : public DataTest
{
protected:
    QString File() const { return Path(QStringLiteral("settings.ini")); }
    void Reopen() const { SetSettingsFile(File()); }
};

TEST_F(SettingsTest, WhatWasSavedIsReadBackInAnyCase)
{
    SaveSetting("FindLocY", "12");
    EXPECT_EQ(GetSetting("FindLocy"), "12");
    Reopen();
    EXPECT_EQ(GetSetting("FINDLOCY", "other"), "12");
    EXPECT_EQ(GetSetting("FindLocX", "other"), "other");
}

TEST_F(SettingsTest, EveryTextSurvives)
{
    const QStringList texts{"",
                            " ",
                            "a,b",
                            "\"quoted\"",
                            "@Variant(x)",
                            "%n",
                            "line\r\nend",
                            "x;y=z",
                            QStringLiteral("\u0436\u4E2D\U0001F600"),
                            "1,5",
                            "[section]"};
    for (int i = 0; i < texts.size(); ++i)
        SaveSetting(QString::number(i) + "FindList", texts[i]);
    Reopen();
    for (int i = 0; i < texts.size(); ++i)
        EXPECT_EQ(GetSetting(QString::number(i) + "FindList", "missing"), texts[i]);
}

TEST_F(SettingsTest, ValuesLieInTheSectionInLowerCase)
{
    SaveSetting("WindowPos", "15,30");
    SyncSettings();
    QSettings file(File(), QSettings::IniFormat);
    EXPECT_EQ(file.allKeys(), QStringList{"settings/windowpos"});
}

TEST_F(SettingsTest, NumbersDoNotFollowTheLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    SaveSettingNumber("WindowSplit", 2500.5);
    EXPECT_EQ(GetSetting("WindowSplit"), "2500.5");
    EXPECT_EQ(GetSettingNumber("WindowSplit", 0), 2500.5);
    EXPECT_EQ(GetSettingNumber("Missing", -1), -1);
    QLocale::setDefault(before);
}

TEST_F(SettingsTest, AnUnquotedCommaOfAnEditedFileIsAText)
{
    Write(File(), "[settings]\nwindowsize=6000,5000\n");
    Reopen();
    EXPECT_EQ(GetSetting("WindowSize"), "6000,5000");
}

TEST_F(SettingsTest, ForeignAndDamagedFilesReadAsNothing)
{
    const QList<QByteArray> contents{QByteArray("\1\2\xFF\xFE garbage [[["), QByteArray(5000, '['),
                                     QByteArray("[settings]\nwindowstate=@Variant(\\0\\0\\0\\x7F\\xFF)\n"),
                                     "[settings]\nwindowstate=@Invalid()\n",
                                     "\xEF\xBB\xBF[other]\nwindowstate=1\nmore=yes\n"};
    for (const QByteArray &content : contents) {
        SetSettingsFile({});
        Write(File(), content);
        Reopen();
        EXPECT_EQ(GetSetting("WindowState", "2"), "2") << content.left(30).toStdString();
        SaveSetting("WindowState", "1");
        EXPECT_EQ(GetSetting("WindowState"), "1");
    }
}

TEST_F(SettingsTest, AHugeFileIsPutAside)
{
    QFile file(File());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64(200) * 1024 * 1024));
    file.close();
    Reopen();
    EXPECT_EQ(GetSetting("WindowState", "2"), "2");
    SaveSetting("WindowState", "0");
    SyncSettings();
    EXPECT_LT(QFileInfo(File()).size(), 1000);
    EXPECT_EQ(QFileInfo(File() + ".foreign").size(), qint64(200) * 1024 * 1024);
}

TEST_F(SettingsTest, AFolderInItsPlaceIsSurvived)
{
    SetSettingsFile({});
    ASSERT_TRUE(QDir().mkpath(File()));
    Reopen();
    SaveSetting("WindowState", "0");
    SyncSettings();
    EXPECT_EQ(GetSetting("Other", "x"), "x");
}

// The last paths and statements of a user stand there; a file made by an older version was readable by everybody.
TEST_F(SettingsTest, OnlyTheOwnerMayRead)
{
    const auto mode = [](const QString &path) {
        struct stat info = {};
        return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
    };
    const mode_t former = ::umask(0);
    SaveSetting("WindowState", "1");
    SyncSettings();
    EXPECT_EQ(mode(File()), 0600u);
    SetSettingsFile({});
    ASSERT_EQ(::chmod(QFile::encodeName(File()).constData(), 0644), 0);
    Reopen();
    EXPECT_EQ(GetSetting("WindowState"), "1");
    EXPECT_EQ(mode(File()), 0600u);
    SaveSetting("WindowState", "2");
    SyncSettings();
    EXPECT_EQ(mode(File()), 0600u);
    SetSettingsFile(Path("new folder/settings.ini"));
    SaveSetting("WindowState", "1");
    SyncSettings();
    EXPECT_EQ(mode(Path("new folder/settings.ini")), 0600u);
    ::umask(former);
}

TEST_F(SettingsTest, APipeInItsPlaceDoesNotHang)
{
    SetSettingsFile({});
    ASSERT_EQ(::mkfifo(QFile::encodeName(File()).constData(), 0600), 0);
    Reopen();
    EXPECT_EQ(GetSetting("Other", "x"), "x");
    SaveSetting("WindowState", "0");
    SyncSettings();
    struct stat info = {};
    ASSERT_EQ(::lstat(QFile::encodeName(File()).constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
}

class PathTest : public DataTest
{
};

TEST_F(PathTest, NotationsThereAndBack)
{
    const QString folder = Path("a b");
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString file = folder + "/q.sql";
    Write(file, "x");
    const QString written = ToProgramPath(file);
    EXPECT_FALSE(written.contains('/'));
    EXPECT_TRUE(written.startsWith('\\'));
    EXPECT_EQ(ToNative(written), file);
    EXPECT_EQ(ToNative(file), file);
    EXPECT_EQ(ToNative("\\not\\there.sql"), "/not/there.sql");
    EXPECT_EQ(ToNative(""), "");
}

TEST_F(PathTest, ARelativeNameBecomesAbsolute)
{
    EXPECT_EQ(ToNative(ToProgramPath("x.sql")), QDir::current().absoluteFilePath("x.sql"));
}

TEST_F(PathTest, NamesThatHoldABackslashAreFound)
{
    ASSERT_TRUE(QDir().mkpath(Path("in\\side")));
    const QString file = Path("in\\side/a\\b.sql");
    Write(file, "x");
    EXPECT_EQ(ToNative(file), file);
    EXPECT_EQ(ToNative(ToProgramPath(file)), file);
}

TEST_F(PathTest, FilesOfTheProgramLieInItsFolder)
{
    EXPECT_EQ(AppFile("es.dat"), Path("es.dat"));
    EXPECT_EQ(DataFile("no such file"), Path("no such file"));
    Write(Path("Tokens.col"), "SELECT\n");
    EXPECT_EQ(DataFile("Tokens.col"), Path("Tokens.col"));
    SetAppPath({});
    const QString folder = AppPath();
    EXPECT_TRUE(QFileInfo(folder).isWritable());
}

class ConnsTest : public DataTest
{
};

TEST_F(ConnsTest, NamesCompareWithoutCase)
{
    clsConns conns;
    clsConn *first = conns.Add("string", "Main", "text");
    EXPECT_EQ(conns.Item("mAIN"), first);
    EXPECT_EQ(first->Name, "Main");
    EXPECT_EQ(first->ConnectionString, "string");
    EXPECT_EQ(first->Extra, "text");
    EXPECT_EQ(conns.Item("other"), nullptr);
    try {
        conns.Add("x", "MAIN", "");
        ADD_FAILURE() << "a second member of the name was taken";
    } catch (const CollectionError &error) {
        EXPECT_EQ(error.Number, 457);
    }
    EXPECT_EQ(conns.Count(), 1);
    conns.Remove("unknown");
    EXPECT_EQ(conns.Count(), 1);
    conns.Remove("MAIN");
    EXPECT_EQ(conns.Count(), 0);
    EXPECT_EQ(conns.Item("Main"), nullptr);
    conns.Add("y", "MAIN", "");
    EXPECT_EQ(conns.Count(), 1);
}

TEST_F(ConnsTest, MembersComeInTheOrderOfInsertion)
{
    clsConns conns;
    for (const char *name : {"z", "a", "M", "b"})
        conns.Add({}, QString::fromLatin1(name), {});
    conns.Remove("A");
    QString order;
    for (const auto &conn : conns)
        order += conn->Name;
    EXPECT_EQ(order, "zMb");
}

TEST_F(ConnsTest, TheProgramHasOneList)
{
    EXPECT_EQ(&gConns(), &gConns());
}

} // namespace
