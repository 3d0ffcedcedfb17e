#include "controls/clsCaptureWindow.h"
#include "controls/WholeFile.h"
#include <QAbstractScrollArea>
#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImageWriter>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScreen>
#include <QWidget>

QPixmap clsCaptureWindow::CaptureWindow(QWidget *window, const QRect &rectangle)
{
    if (!window)
        return {};
    const QRect part = rectangle & window->rect();
    return part.isEmpty() ? QPixmap() : window->grab(part);
}

QPixmap clsCaptureWindow::CaptureClientfromHwnd(QWidget *window)
{
    return window ? CaptureWindow(window, window->rect()) : QPixmap();
}

QPixmap clsCaptureWindow::CaptureClient(QWidget *window)
{
    const auto *area = qobject_cast<QAbstractScrollArea *>(window);
    return CaptureClientfromHwnd(area ? area->viewport() : window);
}

QPixmap clsCaptureWindow::CaptureForm(QWidget *window)
{
    for (QWidget *form = window; form; form = form->parentWidget())
        if (form->isWindow() || qobject_cast<QMdiSubWindow *>(form))
            return CaptureClientfromHwnd(form);
    return {};
}

QPixmap clsCaptureWindow::CaptureScreen(QWidget *window)
{
    QScreen *screen = window ? window->screen() : QGuiApplication::primaryScreen();
    return screen ? screen->grabWindow(0) : QPixmap();
}

QPixmap clsCaptureWindow::CreateBitmapPicture(const QImage &bits)
{
    return bits.isNull() ? QPixmap() : QPixmap::fromImage(bits);
}

bool clsCaptureWindow::ToClipboard(const QPixmap &picture)
{
    if (picture.isNull())
        return false;
    QGuiApplication::clipboard()->setImage(picture.toImage());
    return true;
}

bool clsCaptureWindow::SaveBitmap(const QPixmap &picture, const QString &path, QString &why)
{
    if (picture.isNull()) {
        why = QStringLiteral("There is no picture.");
        return false;
    }
    QImage flat(picture.size(), QImage::Format_RGB32); // a bitmap file has no transparency
    flat.fill(Qt::white);
    QImage bits = picture.toImage();
    bits.setDevicePixelRatio(1);
    QPainter(&flat).drawImage(0, 0, bits);

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "BMP");
    if (!writer.write(flat)) {
        why = writer.errorString();
        return false;
    }
    return WriteWholeFile(path, buffer.data(), why);
}
