// Pictures of windows: what is on them, the clipboard and the bitmap file.
#include "controls/clsCaptureWindow.h"
#include "tests/support/SmallDisk.h"
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// Red on the left half, blue on the right one.
class TwoHalves : public QWidget
{
public:
    TwoHalves() { resize(60, 40); }
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(0, 0, 30, 40, Qt::red);
        painter.fillRect(30, 0, 30, 40, Qt::blue);
    }
};

QColor At(const QPixmap &picture, int x, int y)
{
    return picture.toImage().pixelColor(x, y);
}

TEST(Capture, TheClientIsTheWholeWidgetEvenWhenItIsNotShown)
{
    TwoHalves window;
    const QPixmap picture = clsCaptureWindow::CaptureClientfromHwnd(&window);
    ASSERT_EQ(picture.size(), QSize(60, 40) * window.devicePixelRatioF());
    EXPECT_EQ(At(picture, 1, 20), QColor(Qt::red));
    EXPECT_EQ(At(picture, 58, 20), QColor(Qt::blue));
}

TEST(Capture, APartIsCutToTheWindow)
{
    TwoHalves window;
    const QPixmap part = clsCaptureWindow::CaptureWindow(&window, QRect(20, 10, 500, 10));
    ASSERT_EQ(part.size(), QSize(40, 10));
    EXPECT_EQ(At(part, 9, 5), QColor(Qt::red));
    EXPECT_EQ(At(part, 10, 5), QColor(Qt::blue));
    EXPECT_TRUE(clsCaptureWindow::CaptureWindow(&window, QRect(60, 0, 5, 5)).isNull());
    EXPECT_TRUE(clsCaptureWindow::CaptureWindow(&window, QRect()).isNull());
}

TEST(Capture, NoWindowGivesNoPicture)
{
    EXPECT_TRUE(clsCaptureWindow::CaptureClientfromHwnd(nullptr).isNull());
    EXPECT_TRUE(clsCaptureWindow::CaptureWindow(nullptr, QRect(0, 0, 5, 5)).isNull());
    EXPECT_TRUE(clsCaptureWindow::CaptureClient(nullptr).isNull());
    EXPECT_TRUE(clsCaptureWindow::CaptureForm(nullptr).isNull());
    EXPECT_TRUE(clsCaptureWindow::CreateBitmapPicture(QImage()).isNull());
}

TEST(Capture, TheClientOfWhatScrollsIsWithoutItsBars)
{
    QPlainTextEdit text;
    text.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    text.resize(200, 100);
    text.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&text));
    const QPixmap client = clsCaptureWindow::CaptureClient(&text);
    EXPECT_EQ(client.size(), text.viewport()->size());
    EXPECT_LT(client.width(), clsCaptureWindow::CaptureClientfromHwnd(&text).width());
}

TEST(Capture, TheScreenIsTheWholeScreen)
{
    TwoHalves window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QPixmap screen = clsCaptureWindow::CaptureScreen(&window);
    ASSERT_EQ(screen.size(), window.screen()->size() * window.devicePixelRatioF());
    EXPECT_EQ(clsCaptureWindow::CaptureScreen(nullptr).size(), QApplication::primaryScreen()->size());
}

TEST(Capture, TheFormOfAChildHasItsTitle)
{
    QMdiArea area;
    auto *inner = new TwoHalves;
    QMdiSubWindow *child = area.addSubWindow(inner);
    area.resize(300, 200);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&area));
    EXPECT_EQ(clsCaptureWindow::CaptureForm(inner).size(), child->size());
    EXPECT_GT(child->height(), inner->height());
    EXPECT_EQ(clsCaptureWindow::CaptureForm(&area).size(), area.size());
}

TEST(Capture, ThePictureOfBitsHasTheirColours)
{
    QImage bits(3, 2, QImage::Format_RGB32);
    bits.fill(QColor(1, 2, 3));
    const QPixmap picture = clsCaptureWindow::CreateBitmapPicture(bits);
    EXPECT_EQ(picture.size(), QSize(3, 2));
    EXPECT_EQ(At(picture, 2, 1), QColor(1, 2, 3));
}

TEST(Capture, TheClipboardGetsThePictureAndKeepsItBeforeNothing)
{
    TwoHalves window;
    ASSERT_TRUE(clsCaptureWindow::ToClipboard(clsCaptureWindow::CaptureClientfromHwnd(&window)));
    EXPECT_EQ(QApplication::clipboard()->image().pixelColor(1, 1), QColor(Qt::red));
    EXPECT_FALSE(clsCaptureWindow::ToClipboard(QPixmap()));
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(60, 40));
}

TEST(Capture, ABitmapFileReadsBackAndHasAWhiteGround)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    QImage bits(4, 4, QImage::Format_ARGB32_Premultiplied);
    bits.fill(Qt::transparent);
    bits.setPixelColor(1, 2, QColor(10, 20, 30));
    QString why;
    ASSERT_TRUE(clsCaptureWindow::SaveBitmap(clsCaptureWindow::CreateBitmapPicture(bits), path, why))
        << why.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(2), "BM");
    const QImage back(path);
    EXPECT_EQ(back.size(), QSize(4, 4));
    EXPECT_EQ(back.pixelColor(1, 2), QColor(10, 20, 30));
    EXPECT_EQ(back.pixelColor(0, 0), QColor(Qt::white));
}

TEST(Capture, ABitmapThatCannotBeWrittenLeavesTheOldFileWhole)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    QString why;
    EXPECT_FALSE(clsCaptureWindow::SaveBitmap(QPixmap(), path, why));
    EXPECT_FALSE(why.isEmpty());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "old");

    why.clear();
    QPixmap picture(2, 2);
    picture.fill(Qt::red);
    EXPECT_FALSE(clsCaptureWindow::SaveBitmap(picture, folder.filePath(QStringLiteral("none/a.bmp")), why));
    EXPECT_EQ(why, qt_error_string(ENOENT));
}

TEST(Capture, ABitmapThatDoesNotFitOnTheDiskLeavesTheOldFileWhole)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    QString why;
    QPixmap small(2, 2);
    small.fill(Qt::red);
    ASSERT_TRUE(clsCaptureWindow::SaveBitmap(small, path, why));
    QPixmap large(600, 400);
    large.fill(Qt::blue);
    for (const rlim_t bytes : {1000, 65536, 600 * 400 * 3}) { // the last lacks the head alone
        const SmallDisk disk(bytes);
        EXPECT_FALSE(clsCaptureWindow::SaveBitmap(large, path, why));
        EXPECT_EQ(why, qt_error_string(EFBIG));
    }
    EXPECT_EQ(QImage(path).size(), QSize(2, 2));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a.bmp"});
    EXPECT_TRUE(clsCaptureWindow::SaveBitmap(large, path, why)) << why.toStdString();
    EXPECT_EQ(QImage(path).size(), QSize(600, 400));
}

} // namespace
