#pragma once
// Pictures of windows, as the diagram and the chart take them for the clipboard and for bitmap files.
//
// The pictures are the caller's own; nothing is kept. Interface thread; nothing raises. Rectangles are in the
// widget's logical pixels, pictures in the screen's own, with its device pixel ratio. A widget need not be visible.

#include <QPixmap>
#include <QRect>

class QWidget;

class clsCaptureWindow
{
public:
    static QPixmap CaptureClientfromHwnd(QWidget *window); // the whole client rectangle
    static QPixmap CaptureWindow(QWidget *window,
                                 const QRect &rectangle); // null for a null window or an empty rectangle
    static QPixmap CaptureClient(QWidget *window); // what scrolls, without bars and frame, where the window has such
    static QPixmap CaptureForm(QWidget *window);   // with the title of a child window
    static QPixmap
    CaptureScreen(QWidget *window); // what the screen of this window shows; null where no screen may be read
    static QPixmap CreateBitmapPicture(const QImage &bits);

    // False for a picture without content, which leaves the clipboard as it is.
    static bool ToClipboard(const QPixmap &picture);
    // A bitmap file (*.bmp) with a white ground. The former file stays whole when the new one cannot be written;
    // `why` then has the system's words.
    static bool SaveBitmap(const QPixmap &picture, const QString &path, QString &why);
};
