// Files from the command line and from a drop.
#include "app/CommandLine.h"
#include "app/TextFile.h"
#include "controls/ListView.h"
#include "data/frmGetSelection.h"
#include "tests/app/ShellFixture.h"
#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QUrl>

namespace {

class OpenFiles : public ShellTest
{
protected:
    void SetUp() override
    {
        ShellTest::SetUp();
        gConns().Add(Database(), QStringLiteral("a"), QString());
        Start(QStringLiteral("TestMode"), true);
    }
    QString Write(const QString &name, const QByteArray &bytes)
    {
        const QString path = Folder.filePath(name);
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return path;
    }
    // Chooses that row of the connection picker when it comes up; "" cancels.
    void Choose(const QString &row)
    {
        m_timer.setInterval(0);
        m_timer.disconnect();
        QObject::connect(&m_timer, &QTimer::timeout, Window.get(), [this, row] {
            auto *picker = qobject_cast<frmGetSelection *>(QApplication::activeModalWidget());
            if (!picker)
                return;
            m_timer.stop();
            ++Asked;
            Title = picker->windowTitle();
            if (row.isEmpty()) {
                picker->reject();
                return;
            }
            picker->SelectText(row);
            QTest::mouseClick(picker->cmdOK, Qt::LeftButton);
        });
        m_timer.start();
    }
    int Asked = 0;
    QString Title;

private:
    QTimer m_timer;
};

TEST_F(OpenFiles, AFileAsksForTheConnectionAndOpensInItsAnalyzer)
{
    const QString path = Write(QStringLiteral("my query.sql"), "select '\xC3\xA4'\r\nfrom t");
    Choose(QStringLiteral("a"));
    ChildWindow *window = Window->ProcessCommandLine(QuotedPath(path));
    EXPECT_EQ(Asked, 1);
    EXPECT_EQ(Title, QStringLiteral("Select Connection"));
    ASSERT_TRUE(window);
    EXPECT_EQ(window, Analyzer);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select '\u00e4'\r\nfrom t"));
    EXPECT_EQ(Analyzer->Caption(), QStringLiteral("SQL Analyzer: [a]"));
}

TEST_F(OpenFiles, TheSwitchGivesTheSameResult)
{
    const QString path = Write(QStringLiteral("q.sql"), "select 1");
    Choose(QStringLiteral("a"));
    ASSERT_TRUE(Window->ProcessCommandLine(QuotedPath(path) + QStringLiteral(" /R")));
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1"));
}

TEST_F(OpenFiles, CancelAndOtherOpenNothing)
{
    const QString path = Write(QStringLiteral("q.sql"), "select 1");
    Choose(QString());
    EXPECT_FALSE(Window->ProcessCommandLine(QuotedPath(path)));
    Choose(QStringLiteral("< other >"));
    EXPECT_FALSE(Window->ProcessCommandLine(QuotedPath(path)));
    EXPECT_EQ(Asked, 2);
    EXPECT_FALSE(Analyzer);
    EXPECT_FALSE(gConn);
}

TEST_F(OpenFiles, AMissingFileSaysNothing)
{
    EXPECT_FALSE(Window->ProcessCommandLine(QStringLiteral("\"\\no\\such.sql\" /R")));
    EXPECT_FALSE(Window->ProcessCommandLine(QStringLiteral("TestMode")));
    EXPECT_FALSE(Window->ProcessCommandLine(QString()));
    EXPECT_EQ(Asked, 0);
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
}

TEST_F(OpenFiles, DroppedFilesAreAppendedWithABlankLineBetween)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Write(QStringLiteral("1.sql"), "select 1")),
                  QUrl(QStringLiteral("https://example.org/x.sql")),
                  QUrl::fromLocalFile(Write(QStringLiteral("2 b.sql"), "select 2")),
                  QUrl::fromLocalFile(Write(QStringLiteral("3.sql"), "select 3"))});
    Choose(QStringLiteral("a"));
    QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Window.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Analyzer && Analyzer->Body.contains(QLatin1Char('3')); }));
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1\r\n\r\nselect 2\r\n\r\nselect 3"));
    EXPECT_EQ(Asked, 1);
}

TEST_F(OpenFiles, AnEmptyFirstFileTakesTheNextWithoutABlankLine)
{
    Choose(QStringLiteral("a"));
    Window->DropFiles({Write(QStringLiteral("0.sql"), ""), Write(QStringLiteral("1.sql"), "select 1")});
    ASSERT_TRUE(Analyzer);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1"));
}

TEST_F(OpenFiles, WithAnAnalyzerOpenTheDroppedTextIsLeftOut)
{
    Window->ConnectTo(Entry(QStringLiteral("a")));
    Analyzer->Body = QStringLiteral("mine");
    Choose(QStringLiteral("a"));
    Window->DropFiles({Write(QStringLiteral("1.sql"), "select 1"), Write(QStringLiteral("2.sql"), "select 2")});
    EXPECT_EQ(Analyzer->Body, QStringLiteral("mine"));
}

TEST_F(OpenFiles, AnUnreadableFileGetsTheSystemsWordsAndChangesNothing)
{
    const QString path = Write(QStringLiteral("q.sql"), "select 1");
    QString text, why;
    EXPECT_FALSE(ReadTextFile(Folder.path(), text, why)); // a folder cannot be read, whoever asks
    EXPECT_FALSE(why.isEmpty());
    Choose(QStringLiteral("a"));
    Window->DropFiles({path, Folder.filePath(QStringLiteral("gone.sql"))});
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.startsWith(Folder.filePath(QStringLiteral("gone.sql")) + QStringLiteral("\r\n")));
    EXPECT_GT(Dialogs.Boxes[0].Text.size(), Folder.filePath(QStringLiteral("gone.sql")).size() + 2);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1"));
}

TEST_F(OpenFiles, TextFilesAreUtf8OrElseWindows1252)
{
    QString text, why;
    ASSERT_TRUE(ReadTextFile(Write(QStringLiteral("a"), "\xEF\xBB\xBF\xC3\xA4\xE2\x82\xAC"), text, why));
    EXPECT_EQ(text, QStringLiteral("\u00e4\u20ac"));
    ASSERT_TRUE(ReadTextFile(Write(QStringLiteral("b"), "\xE4\x80 x"), text, why));
    EXPECT_EQ(text, QStringLiteral("\u00e4\u20ac x"));
    ASSERT_TRUE(ReadTextFile(Write(QStringLiteral("c"), ""), text, why));
    EXPECT_EQ(text, QString());
}

TEST_F(OpenFiles, ADragWithoutFilesIsNotTaken)
{
    QMimeData data;
    data.setText(QStringLiteral("select 1"));
    QDragEnterEvent enter(QPoint(200, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(Window.get(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

} // namespace
