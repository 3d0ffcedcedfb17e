// Query files: opened, saved, dropped; inserts.
#include "AnalyzerFixture.h"
#include "frame/QueryFile.h"
#include "sqltext/Statements.h"
#include "tests/support/Cases.h"
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QUrl>

namespace {

void Write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray Read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(QueryFile, IsUtf8OrElseWindows1252)
{
    EXPECT_EQ(DecodeQueryFile(QByteArrayLiteral("\xEF\xBB\xBF\x61\xC3\xA4")), QStringLiteral("a\u00E4"));
    EXPECT_EQ(DecodeQueryFile(QByteArrayLiteral("a\xE4\x80\x93")), QStringLiteral("a\u4013")); // UTF-8 goes first
    EXPECT_EQ(DecodeQueryFile(QByteArrayLiteral("a\xE4 \x80 \x93")), QStringLiteral("a\u00E4 \u20AC \u201C"));
    EXPECT_EQ(DecodeQueryFile(QByteArray()), QString());
    // A character that the file's end cuts off was dropped without a word.
    EXPECT_EQ(DecodeQueryFile(QByteArrayLiteral("a\xC3")), QStringLiteral("a\u00C3"));
}

TEST_F(Analyzer, SavesThePlainTextAndAsksForANameOnce)
{
    const QString path = folder.filePath(QStringLiteral("q.sql"));
    window->SetText(QStringLiteral("select '\u4F60'\r\nfrom t"));
    dialogs.Files << path;
    window->mnuSave();
    ASSERT_EQ(dialogs.FileDialogs.size(), 1);
    EXPECT_EQ(dialogs.FileDialogs[0].Title, QStringLiteral("Save Query File"));
    EXPECT_EQ(dialogs.FileDialogs[0].Filter, QStringLiteral("Query File [*.sql]|*.sql|Text FIles [*.txt]|*.txt"));
    EXPECT_EQ(dialogs.FileDialogs[0].DefaultExt, QStringLiteral("sql"));
    EXPECT_TRUE(dialogs.FileDialogs[0].Save);
    EXPECT_EQ(Read(path), QStringLiteral("select '\u4F60'\r\nfrom t").toUtf8());
    window->SetText(QStringLiteral("x"));
    window->mnuSave();
    EXPECT_EQ(dialogs.FileDialogs.size(), 1);
    EXPECT_EQ(Read(path), QByteArrayLiteral("x"));
    EXPECT_EQ(window->FileName(), path);
}

TEST_F(Analyzer, AsksBeforeItOverwrites)
{
    const QString path = folder.filePath(QStringLiteral("q.sql"));
    Write(path, QByteArrayLiteral("old"));
    window->SetText(QStringLiteral("new"));
    dialogs.Files << path << path << QString();
    dialogs.Answers << mbNo << mbYes;
    window->mnuSave();
    EXPECT_EQ(dialogs.LastText(),
              QStringLiteral("This file name already exists. Are you sure you want to overwrite this file?"));
    EXPECT_EQ(dialogs.LastTitle(), QStringLiteral("Save"));
    EXPECT_EQ(Read(path), QByteArrayLiteral("old"));
    EXPECT_EQ(window->FileName(), QString());
    window->mnuSave();
    EXPECT_EQ(Read(path), QByteArrayLiteral("new"));
}

TEST_F(Analyzer, AFileThatCannotBeWrittenLeavesTheText)
{
    window->SetText(QStringLiteral("text"));
    dialogs.Files << folder.filePath(QStringLiteral("no/such/folder/q.sql"));
    window->mnuSave();
    ASSERT_EQ(dialogs.Boxes.size(), 1); // the system's words
    EXPECT_EQ(window->Text(), QStringLiteral("text"));
    EXPECT_EQ(window->FileName(), QString());
}

TEST_F(Analyzer, OpensAQueryFile)
{
    const QString path = folder.filePath(QStringLiteral("q.sql"));
    Write(path, QByteArrayLiteral("select a\nfrom t\n"));
    dialogs.Files << path;
    window->mnuOpen();
    EXPECT_EQ(dialogs.FileDialogs[0].Title, QStringLiteral("Open Query File"));
    EXPECT_EQ(window->Text(), QStringLiteral("select a\r\nfrom t\r\n"));
    EXPECT_EQ(Colours(0), "11111100");
    EXPECT_EQ(Colours(1), "111100");
    EXPECT_EQ(window->FileName(), path);
}

TEST_F(Analyzer, AMissingFileChangesNothing)
{
    window->SetText(QStringLiteral("text"));
    dialogs.Files << folder.filePath(QStringLiteral("missing.sql"));
    window->mnuOpen();
    EXPECT_EQ(dialogs.LastText(), QStringLiteral("This file name noes not exists. "));
    EXPECT_EQ(dialogs.LastTitle(), QStringLiteral("Open"));
    EXPECT_EQ(window->Text(), QStringLiteral("text"));
    EXPECT_EQ(window->FileName(), QString());
    dialogs.Files << QString(); // cancelled
    window->mnuOpen();
    EXPECT_EQ(dialogs.Boxes.size(), 1);
    dialogs.Files << folder.path(); // a folder cannot be read
    window->mnuOpen();
    EXPECT_EQ(dialogs.Boxes.size(), 2);
    EXPECT_EQ(window->Text(), QStringLiteral("text"));
}

TEST_F(Analyzer, DroppedFilesGoBehindTheText)
{
    Write(folder.filePath(QStringLiteral("a.sql")), QByteArrayLiteral("select 1"));
    Write(folder.filePath(QStringLiteral("b.sql")), QByteArrayLiteral("select 2"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.sql"))),
                  QUrl::fromLocalFile(folder.filePath(QStringLiteral("b.sql")))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window->txtSQL->viewport(), &enter);
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window->txtSQL->viewport(), &drop);
    EXPECT_EQ(window->Text(), QStringLiteral("select 1\r\n\r\nselect 2"));
    EXPECT_EQ(Colours(2), "11111100");
}

TEST_F(Analyzer, InsertStringAndInsertText)
{
    window->SetText(QStringLiteral("old"));
    window->InsertString(QStringLiteral("new"));
    EXPECT_EQ(window->Text(), QStringLiteral("new\r\nold"));
    window->txtSQL->SetSelStart(1);
    window->txtSQL->SetSelLength(1);
    window->InsertString(QStringLiteral("EE"));
    EXPECT_EQ(window->Text(), QStringLiteral("nEEw\r\nold"));
    window->txtSQL->SetSelStart(0);
    window->InsertText(QStringLiteral("end"));
    EXPECT_EQ(window->Text(), QStringLiteral("nEEw\r\nold\r\nend"));
}

TEST_F(Analyzer, ThePrinterIsAskedFor)
{
    window->SetText(QStringLiteral("select 1"));
    window->mnuPrint();
    EXPECT_EQ(dialogs.PrintDialogs, 1);
    EXPECT_EQ(window->Text(), QStringLiteral("select 1"));
}

TEST(AnalyzerCases, TheLinesOfTheLog)
{
    const cases::Report report = cases::Run(QStringLiteral("log_line"), [](const QJsonObject &args) {
        return QJsonValue(LogLine(args[QStringLiteral("sql")].toString(), args[QStringLiteral("n")].toInteger()));
    });
    EXPECT_GE(report.ran, 7);
    EXPECT_TRUE(report.failures.isEmpty()) << qPrintable(report.failures.join(u'\n'));
}
