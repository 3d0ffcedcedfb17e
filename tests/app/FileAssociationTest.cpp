// The association of *.sql files: the files made of the record, and the command that writes them.
#include "app/FileAssociation.h"
#include "app/Menus.h"
#include "tests/app/ShellFixture.h"
#include <QAction>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

FileAssociation Record()
{
    FileAssociation record;
    record.ProductKey = QStringLiteral("Brindlewick");
    record.Description = QStringLiteral("Brindlewick");
    record.ClassName = QStringLiteral("BrindlewickData");
    record.Extension = QStringLiteral(".sql");
    record.ContentType = QStringLiteral("application/sql");
    record.Commands = {{QStringLiteral("Open"), QStringLiteral("/opt/b w/Brindlewick"), QString()},
                       {QStringLiteral("Run"), QStringLiteral("/opt/b w/Brindlewick"), QStringLiteral("/R")}};
    record.Icon = QStringLiteral("brindlewick");
    record.Images = {{0, "<svg/>"}, {48, "png"}};
    return record;
}

QString Content(const FileAssociation &record, const QString &path)
{
    for (const AssociationFile &file : AssociationFiles(record))
        if (file.Path == path)
            return QString::fromUtf8(file.Content);
    return {};
}

QStringList Paths(const FileAssociation &record)
{
    QStringList paths;
    for (const AssociationFile &file : AssociationFiles(record))
        paths << file.Path;
    return paths;
}

const QString s_entry = QStringLiteral("applications/brindlewick.desktop");
const QString s_mime = QStringLiteral("mime/packages/brindlewick.xml");

TEST(FileAssociation, TheEntryHasBothCommandsAndTheFirstIsTheDefault)
{
    EXPECT_EQ(Content(Record(), s_entry), QStringLiteral("[Desktop Entry]\n"
                                                         "Type=Application\n"
                                                         "Name=Brindlewick\n"
                                                         "GenericName=Database Client\n"
                                                         "Exec=\"/opt/b w/Brindlewick\" %f\n"
                                                         "Icon=brindlewick\n"
                                                         "Terminal=false\n"
                                                         "Categories=Development;Database;\n"
                                                         "MimeType=application/sql;\n"
                                                         "StartupWMClass=Brindlewick\n"
                                                         "Actions=Open;Run;\n"
                                                         "\n"
                                                         "[Desktop Action Open]\n"
                                                         "Name=Open\n"
                                                         "Exec=\"/opt/b w/Brindlewick\" %f\n"
                                                         "\n"
                                                         "[Desktop Action Run]\n"
                                                         "Name=Run\n"
                                                         "Exec=\"/opt/b w/Brindlewick\" %f /R\n"));
}

TEST(FileAssociation, TheIconIsWrittenInItsSizesAndScalable)
{
    EXPECT_EQ(Paths(Record()), (QStringList{s_mime, s_entry, "icons/hicolor/scalable/apps/brindlewick.svg",
                                            "icons/hicolor/scalable/mimetypes/application-sql.svg",
                                            "icons/hicolor/48x48/apps/brindlewick.png",
                                            "icons/hicolor/48x48/mimetypes/application-sql.png"}));
    EXPECT_EQ(Content(Record(), QStringLiteral("icons/hicolor/48x48/apps/brindlewick.png")), QStringLiteral("png"));
}

// The program had an icon, and its files went on showing that of any text: the type must name one, and the theme must
// have one under the type's own name.
TEST(FileAssociation, TheFilesOfTheTypeGetTheIcon)
{
    EXPECT_TRUE(Content(Record(), s_mime).contains(QLatin1String("<icon name=\"brindlewick\"/>")));
    EXPECT_EQ(Content(Record(), QStringLiteral("icons/hicolor/48x48/mimetypes/application-sql.png")),
              QStringLiteral("png"));
    EXPECT_EQ(Content(Record(), QStringLiteral("icons/hicolor/scalable/mimetypes/application-sql.svg")),
              QStringLiteral("<svg/>"));
}

TEST(FileAssociation, AnEmptyIconWithItsNumberWritesNone)
{
    FileAssociation record = Record();
    record.Icon = QStringLiteral(",0");
    EXPECT_EQ(Paths(record), (QStringList{s_mime, s_entry}));
    EXPECT_FALSE(Content(record, s_entry).contains(QLatin1String("Icon")));
    EXPECT_FALSE(Content(record, s_mime).contains(QLatin1String("icon")));
}

TEST(FileAssociation, ThePointOfTheExtensionIsNeverDoubled)
{
    FileAssociation record = Record();
    const QString with = Content(record, s_mime);
    EXPECT_TRUE(with.contains(QLatin1String("<glob pattern=\"*.sql\"/>"))) << with.toStdString();
    record.Extension = QStringLiteral("sql");
    EXPECT_EQ(Content(record, s_mime), with);
}

TEST(FileAssociation, WithoutAContentTypeTheClassNameMakesIt)
{
    FileAssociation record = Record();
    record.ContentType.clear();
    EXPECT_EQ(AssociationType(record), QStringLiteral("application/x-brindlewickdata"));
    EXPECT_TRUE(Content(record, s_entry).contains(QLatin1String("MimeType=application/x-brindlewickdata;\n")));
    EXPECT_TRUE(Content(record, s_mime).contains(QLatin1String("type=\"application/x-brindlewickdata\"")));
}

TEST(FileAssociation, WithoutCommandsThereAreNoActions)
{
    FileAssociation record = Record();
    record.Commands.clear();
    const QString text = Content(record, s_entry);
    EXPECT_FALSE(text.contains(QLatin1String("Exec")));
    EXPECT_FALSE(text.contains(QLatin1String("Action")));
}

TEST(FileAssociation, AFolderWithOddLettersIsQuotedForTheDesktop)
{
    EXPECT_EQ(ExecArgument(QStringLiteral("/a b")), QStringLiteral("\"/a b\""));
    EXPECT_EQ(ExecArgument(QStringLiteral("/a\"$`\\%")), QStringLiteral("\"/a\\\"\\$\\`\\\\%%\""));
    FileAssociation record = Record();
    record.Commands[0].Program = QStringLiteral("/o\"d%d");
    EXPECT_TRUE(Content(record, s_entry).contains(QLatin1String("\nExec=\"/o\\\\\"d%%d\" %f\n")));
}

// The desktop's own validators read what is written, for a plain folder and for one with odd letters.
TEST(FileAssociation, TheDesktopsValidatorsAccept)
{
    const QString desktop = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    const QString mime = QStandardPaths::findExecutable(QStringLiteral("update-mime-database"));
    if (desktop.isEmpty() || mime.isEmpty()) {
        ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), QStringLiteral("1")) << "a whole run has them";
        GTEST_SKIP() << "the validators are not installed";
    }
    for (const char *const program : {"/opt/b w/Brindlewick", "/o\"d%d`$\\/Brindlewick"}) {
        const QTemporaryDir folder;
        for (const AssociationFile &each : AssociationFiles(BrindlewickAssociation(QString::fromLatin1(program)))) {
            const QString path = folder.filePath(each.Path);
            ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(each.Content);
        }
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(desktop, {folder.filePath(s_entry)});
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
        process.start(mime, {folder.filePath(QStringLiteral("mime"))});
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAll().toStdString();
        QFile globs(folder.filePath(QStringLiteral("mime/globs2")));
        ASSERT_TRUE(globs.open(QIODevice::ReadOnly));
        EXPECT_TRUE(globs.readAll().contains("application/sql:*.sql\n"));
    }
}

TEST(FileAssociation, TheProgramsOwnRecord)
{
    const FileAssociation record = BrindlewickAssociation(QStringLiteral("/x/Brindlewick"));
    EXPECT_EQ(record.ProductKey, QStringLiteral("Brindlewick"));
    EXPECT_EQ(record.Description, QStringLiteral("Brindlewick"));
    EXPECT_EQ(record.ClassName, QStringLiteral("BrindlewickData"));
    EXPECT_EQ(record.Extension, QStringLiteral(".sql"));
    ASSERT_EQ(record.Commands.size(), 2);
    EXPECT_EQ(record.Commands[0].Name, QStringLiteral("Open"));
    EXPECT_EQ(record.Commands[1].Name, QStringLiteral("Run"));
    ASSERT_EQ(record.Images.size(), 9);
    for (const AssociationIcon &image : record.Images) {
        if (!image.Size) {
            EXPECT_TRUE(image.Content.contains("<svg"));
            continue;
        }
        const QImage picture = QImage::fromData(image.Content, "PNG");
        EXPECT_EQ(picture.size(), QSize(image.Size, image.Size));
        EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);                             // beyond the round corner
        EXPECT_EQ(picture.pixelColor(image.Size / 2, image.Size / 8).alpha(), 255); // the ground
    }
}

// The command in the real window, with a data folder and the desktop's helper of its own.
class Association : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        m_path = qgetenv("PATH");
        m_data = qgetenv("XDG_DATA_HOME");
        ASSERT_TRUE(QDir(Folder.path()).mkpath(QStringLiteral("bin")));
        qputenv("XDG_DATA_HOME", QFile::encodeName(Folder.filePath(QStringLiteral("data"))));
        qputenv("PATH", QFile::encodeName(Folder.filePath(QStringLiteral("bin"))));
        Start();
        Dialogs.Boxes.clear();
    }
    void TearDown() override
    {
        qputenv("PATH", m_path);
        m_data.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", m_data);
        ShellTest::TearDown();
    }
    // A helper that notes its arguments, says something and ends with this status.
    void Helper(const QString &name, int status = 0)
    {
        QFile file(Folder.filePath(QStringLiteral("bin/") + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("#!/bin/sh\necho \"%1 $*\" >> '%2'\necho 'no such luck' >&2\nexit %3\n")
                       .arg(name, Folder.filePath(QStringLiteral("calls")))
                       .arg(status)
                       .toUtf8());
        file.setPermissions(file.permissions() | QFileDevice::ExeUser);
    }
    void Click() { Window->menus->Item(QStringLiteral("mnuFileAssociation"))->trigger(); }
    QString Read(const QString &name)
    {
        QFile file(Folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    bool Wrote() { return QFileInfo::exists(Folder.filePath(QStringLiteral("data"))); }

    QByteArray m_path, m_data;
};

TEST_F(Association, IsAskedFirstAndNoWritesNothing)
{
    Helper(QStringLiteral("xdg-mime"));
    Dialogs.Answers << mbNo;
    Click();
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Title, QStringLiteral("File Association"));
    EXPECT_EQ(Dialogs.Boxes[0].Text,
              QStringLiteral("Are you sure you want all *.sql files to be associated with Brindlewick?"));
    EXPECT_EQ(Dialogs.Boxes[0].Buttons, int(mbYesNo));
    EXPECT_EQ(Dialogs.Boxes[0].Icon, int(mbExclamation));
    EXPECT_FALSE(Wrote());
    EXPECT_EQ(Read(QStringLiteral("calls")), QString());
}

TEST_F(Association, YesWritesTheFilesAndTellsTheDesktop)
{
    Helper(QStringLiteral("xdg-mime"));
    Helper(QStringLiteral("update-mime-database"));
    Helper(QStringLiteral("update-desktop-database"));
    Dialogs.Answers << mbYes;
    Click();
    EXPECT_EQ(Dialogs.Boxes.size(), 1); // nothing but the question
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/Brindlewick");
    EXPECT_TRUE(Read(QStringLiteral("data/") + s_entry).contains(ExecArgument(program) + QStringLiteral(" %f /R\n")));
    EXPECT_TRUE(Read(QStringLiteral("data/") + s_mime).contains(QLatin1String("*.sql")));
    EXPECT_TRUE(QFileInfo::exists(Folder.filePath(QStringLiteral("data/icons/hicolor/48x48/apps/brindlewick.png"))));
    EXPECT_TRUE(QFileInfo::exists(Folder.filePath(QStringLiteral("data/icons/hicolor/scalable/apps/brindlewick.svg"))));
    EXPECT_EQ(Read(QStringLiteral("calls")), QStringLiteral("update-mime-database %1/data/mime\n"
                                                            "update-desktop-database %1/data/applications\n"
                                                            "xdg-mime default brindlewick.desktop application/sql\n")
                                                 .arg(Folder.path()));
}

TEST_F(Association, AFolderThatCannotBeMadeIsSaidInTheSystemsWords)
{
    Helper(QStringLiteral("xdg-mime"));
    QFile file(Folder.filePath(QStringLiteral("data"))); // a file where the folder should be
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    Dialogs.Answers << mbYes;
    Click();
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[1].Title, QStringLiteral("File Association"));
    EXPECT_EQ(Dialogs.Boxes[1].Icon, int(mbExclamation));
    EXPECT_EQ(Dialogs.Boxes[1].Text, Folder.filePath(QStringLiteral("data/mime/packages")) + QStringLiteral("\r\n") +
                                         qt_error_string(ENOTDIR));
    EXPECT_EQ(Read(QStringLiteral("calls")), QString());
}

// Without the desktop's tools it said nothing of two of them, and of the third only that it could not be started.
TEST_F(Association, WhatWasAndWasNotDoneWithoutTheToolsIsSaid)
{
    Dialogs.Answers << mbYes << mbOK << mbYes << mbOK;
    Click();
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    EXPECT_EQ(Dialogs.Boxes[1].Icon, int(mbExclamation));
    EXPECT_EQ(Dialogs.Boxes[1].Text,
              QStringLiteral("Done:\r\n20 files are written below %1\r\n\r\nNot done:\r\n"
                             "The desktop's list of file types is brought up to date (update-mime-database is not "
                             "installed)\r\n"
                             "The desktop's list of programs is brought up to date (update-desktop-database is not "
                             "installed)\r\n"
                             "Brindlewick is the program that opens application/sql files (xdg-mime is not installed)")
                  .arg(Folder.filePath(QStringLiteral("data"))));
    EXPECT_TRUE(Wrote());
}

// One that fails is told in its own words and does not keep the others from their work.
TEST_F(Association, AHelperThatFailsIsSaidInItsWords)
{
    Helper(QStringLiteral("update-mime-database"), 3);
    Helper(QStringLiteral("update-desktop-database"));
    Helper(QStringLiteral("xdg-mime"));
    Dialogs.Answers << mbYes << mbOK;
    Click();
    ASSERT_EQ(Dialogs.Boxes.size(), 2);
    const QString text = Dialogs.Boxes[1].Text;
    EXPECT_TRUE(text.endsWith(QLatin1String("Not done:\r\nThe desktop's list of file types is brought up to date "
                                            "(update-mime-database: no such luck)")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("\r\nBrindlewick is the program that opens application/sql files\r\n")));
    EXPECT_TRUE(Read(QStringLiteral("calls")).contains(QLatin1String("xdg-mime default brindlewick.desktop")));
}

} // namespace
