// Files from the command line and from a drop.
#include "app/CommandLine.h"
#include "controls/ListView.h"
#include "data/frmGetSelection.h"
#include "frame/QueryFile.h"
#include "tests/app/ShellFixture.h"
#include "tests/support/Settled.h"
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QElapsedTimer>
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

// A file manager that proposes a move deletes what was taken so.
TEST_F(OpenFiles, DroppedFilesAreTakenAsCopies)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Write(QStringLiteral("1.sql"), "select 1"))});
    Choose(QStringLiteral("a"));
    const Qt::DropActions possible = Qt::MoveAction | Qt::CopyAction;
    QDragEnterEvent enter(QPoint(200, 200), possible, &data, Qt::LeftButton, Qt::NoModifier);
    enter.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(Window.get(), &enter);
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    QDragMoveEvent move(QPoint(201, 200), possible, &data, Qt::LeftButton, Qt::NoModifier);
    move.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(Window.get(), &move);
    EXPECT_TRUE(move.isAccepted());
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
    QDropEvent drop(QPointF(200, 200), possible, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(Qt::MoveAction);
    QApplication::sendEvent(Window.get(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Analyzer && !Analyzer->Body.isEmpty(); }));
    EXPECT_TRUE(QFile::exists(Folder.filePath(QStringLiteral("1.sql"))));
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
    EXPECT_FALSE(ReadQueryFile(Folder.path(), text, why)); // a folder cannot be read, whoever asks
    EXPECT_FALSE(why.isEmpty());
    Choose(QStringLiteral("a"));
    Window->DropFiles({path, Folder.filePath(QStringLiteral("gone.sql"))});
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_TRUE(Dialogs.Boxes[0].Text.startsWith(Folder.filePath(QStringLiteral("gone.sql")) + QStringLiteral("\r\n")));
    EXPECT_GT(Dialogs.Boxes[0].Text.size(), Folder.filePath(QStringLiteral("gone.sql")).size() + 2);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1"));
}

// The question for the connection did not come for a file that is there and cannot be read.
TEST_F(OpenFiles, AnUnreadableFileOfTheCommandLineAsksForTheConnectionAllTheSame)
{
    const QString path = Write(QStringLiteral("q.sql"), QByteArray("\x89PNG\0\0", 6));
    Choose(QString());
    EXPECT_FALSE(Window->ProcessCommandLine(QuotedPath(path)));
    EXPECT_EQ(Asked, 1);
    EXPECT_TRUE(Dialogs.Boxes.isEmpty());
    EXPECT_FALSE(gConn);
    Choose(QStringLiteral("a"));
    EXPECT_EQ(Window->ProcessCommandLine(QuotedPath(path)), Analyzer);
    EXPECT_EQ(Asked, 2);
    ASSERT_EQ(Dialogs.Boxes.size(), 1);
    EXPECT_EQ(Dialogs.Boxes[0].Text, path + QStringLiteral("\r\nIt is not a text file."));
    EXPECT_TRUE(IsConnected(false));
    EXPECT_EQ(Analyzer->Body, QString());
}

TEST_F(OpenFiles, ABinaryFileIsRefusedWithAMessageAndChangesNothing)
{
    const QByteArray picture = QByteArray("\x89PNG\r\n\x1a\n", 8) + QByteArray(4, '\0') + "IHDR";
    const QByteArray late = QByteArray(200000, 'x') + '\0'; // text to begin with
    for (const QByteArray &bytes : {picture, late}) {
        const QString binary = Write(QStringLiteral("b.sql"), bytes);
        Dialogs.Boxes.clear();
        Window->DropFiles({binary});
        ASSERT_EQ(Dialogs.Boxes.size(), 1);
        EXPECT_EQ(Dialogs.Boxes[0].Text, binary + QStringLiteral("\r\nIt is not a text file."));
        EXPECT_EQ(Dialogs.Boxes[0].Icon, mbExclamation);
        EXPECT_EQ(Asked, 0); // for no connection either
        EXPECT_FALSE(Analyzer);
        EXPECT_FALSE(gConn);
    }
    // Behind a good one the text stays as it was, and the next one follows it.
    Dialogs.Boxes.clear();
    Choose(QStringLiteral("a"));
    Window->DropFiles({Write(QStringLiteral("1.sql"), "select 1"), Folder.filePath(QStringLiteral("b.sql")),
                       Write(QStringLiteral("2.sql"), "select 2")});
    EXPECT_EQ(Dialogs.Boxes.size(), 1);
    ASSERT_TRUE(Analyzer);
    EXPECT_EQ(Analyzer->Body, QStringLiteral("select 1\r\n\r\nselect 2"));
}

TEST_F(OpenFiles, AFolderAndWhatIsGoneGetAMessageToo)
{
    for (const QString &path :
         {Folder.path(), Folder.filePath(QStringLiteral("gone.sql")), QStringLiteral("/dev/zero")}) {
        Dialogs.Boxes.clear();
        Window->DropFiles({path, Write(QStringLiteral("1.sql"), "select 1")});
        ASSERT_EQ(Dialogs.Boxes.size(), 1) << qPrintable(path);
        EXPECT_TRUE(Dialogs.Boxes[0].Text.startsWith(path + QStringLiteral("\r\n")));
        EXPECT_EQ(Asked, 0);
        EXPECT_FALSE(Analyzer);
    }
}

// A start with a file and no connection yet: the question for the connection comes alone, the welcome after it.
TEST_F(OpenFiles, TheWelcomeWaitsForTheQuestion)
{
    gConns().Clear();
    Window.reset();
    QStringList titles;
    QTimer look;
    look.setInterval(10);
    int looks = 0;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (titles.isEmpty() || titles.last() != dialog->windowTitle()) {
            titles << dialog->windowTitle();
            looks = 0;
        }
        if (++looks > 3 && NothingIsPutOff()) // the window's activation has been told, and what follows from it
            dialog->reject();
    });
    look.start();
    Start(QuotedPath(Write(QStringLiteral("q.sql"), "select 1")), true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return titles.size() == 2 && !QApplication::activeModalWidget(); }, 10000));
    look.stop();
    EXPECT_EQ(titles, QStringList({"Select Connection", "Add Connection"}));
}

TEST_F(OpenFiles, TextFilesAreUtf8OrElseWindows1252)
{
    QString text, why;
    ASSERT_TRUE(ReadQueryFile(Write(QStringLiteral("a"), "\xEF\xBB\xBF\xC3\xA4\xE2\x82\xAC"), text, why));
    EXPECT_EQ(text, QStringLiteral("\u00e4\u20ac"));
    ASSERT_TRUE(ReadQueryFile(Write(QStringLiteral("b"), "\xE4\x80 x"), text, why));
    EXPECT_EQ(text, QStringLiteral("\u00e4\u20ac x"));
    ASSERT_TRUE(ReadQueryFile(Write(QStringLiteral("c"), ""), text, why));
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
