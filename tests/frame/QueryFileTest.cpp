// Query files of any size: read beside living windows, given up with Escape, or refused with words.
#include "frame/QueryFile.h"
#include "session/Status.h"
#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

struct Statuses : StatusBoard
{
    QStringList all;
    Statuses() { Install(this); }
    ~Statuses() override { Install(nullptr); }
    void SetStatus(const QString &text) override { all << text; }
};

struct QueryFile : testing::Test
{
    QTemporaryDir folder;
    QString text = QStringLiteral("before"), why = QStringLiteral("before");

    QString Write(const char *name, const QByteArray &bytes, qint64 size = -1)
    {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        EXPECT_TRUE(size < 0 || file.resize(size));
        return file.fileName();
    }
};

// The whole of 100 MB was read and coloured on the interface thread: minutes without an answer.
TEST_F(QueryFile, AFileThatTheEditorCannotTakeIsRefusedWithWords)
{
    EXPECT_FALSE(ReadQueryFile(Write("large.sql", "select 1", 100 * 1000 * 1000), text, why));
    EXPECT_EQ(why, QStringLiteral("It is too large for the editor: 100000000 bytes, and it takes %1 at most.")
                       .arg(QueryFileLimit));
    EXPECT_EQ(text, QStringLiteral("before"));
    EXPECT_TRUE(ReadQueryFile(Write("most.sql", QByteArray(QueryFileLimit, 'x')), text, why));
    EXPECT_EQ(text.size(), QueryFileLimit);
    EXPECT_EQ(why, QString());
    EXPECT_FALSE(ReadQueryFile(Write("more.sql", QByteArray(QueryFileLimit + 1, 'x')), text, why));
}

TEST_F(QueryFile, EventsGoOnWhileAFileIsReadAndEscapeGivesItUp)
{
    // Its last byte is no UTF-8: it is decoded a second time.
    const QString path = Write("slow.sql", QByteArray(QueryFileLimit - 1, 'x') + '\xE4');
    QWidget window;
    window.show();
    int events = 0;
    QTimer pulse;
    QObject::connect(&pulse, &QTimer::timeout, &pulse, [&] { ++events; });
    pulse.start(0);
    EXPECT_TRUE(ReadQueryFile(path, text, why));
    EXPECT_EQ(text.size(), QueryFileLimit);
    EXPECT_EQ(text.back(), QChar(0xE4));
    EXPECT_GT(events, 0);

    text = QStringLiteral("before");
    QTimer::singleShot(0, &window, [&] { QTest::keyClick(&window, Qt::Key_Escape); });
    EXPECT_FALSE(ReadQueryFile(path, text, why));
    EXPECT_EQ(why, QString()); // nothing to tell: the user knows
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST_F(QueryFile, TheStatusIsPutBack)
{
    Statuses statuses;
    SetStatus(QStringLiteral("Opening..."));
    EXPECT_TRUE(ReadQueryFile(Write("q.sql", "select 1"), text, why));
    EXPECT_EQ(statuses.all, QStringList({"Opening..."})); // a short reading says nothing
    EXPECT_FALSE(ReadQueryFile(folder.filePath("nowhere.sql"), text, why));
    EXPECT_FALSE(why.isEmpty());
    EXPECT_EQ(LastStatus(), QStringLiteral("Opening..."));
    SetStatus(QString());
}

// The last letter of a file that is no UTF-8 was taken for the first byte of a character to come, and lost.
TEST_F(QueryFile, ALastLetterThatIsNoUtf8IsKept)
{
    ASSERT_TRUE(ReadQueryFile(Write("a.sql", "select '\xFC\xE4"), text, why));
    EXPECT_EQ(text, QStringLiteral("select '\u00FC\u00E4"));
    ASSERT_TRUE(ReadQueryFile(Write("b.sql", "sch\xF6n\xF6"), text, why));
    EXPECT_EQ(text, QStringLiteral("sch\u00F6n\u00F6"));
    ASSERT_TRUE(ReadQueryFile(Write("c.sql", "-- caf\xE9"), text, why));
    EXPECT_EQ(text, QStringLiteral("-- caf\u00E9"));
}

} // namespace
