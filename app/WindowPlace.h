#pragma once
// Place, size and state of the main window and its splitter, as the settings keep them: twips, 15 to a pixel at 96 dpi,
// whatever the screen. Plain values, no window. Interface thread (the settings are).

#include <QList>
#include <QRect>
#include <QRectF>
#include <QString>

enum WindowStateValue : int
{
    vbNormal = 0,
    vbMinimized = 1,
    vbMaximized = 2
};

struct WindowPlace
{
    QRectF Place;            // left, top, width, height; the normal ones when the window is minimised or maximised
    int State = vbMaximized; // what a first start shows
    double Split = 2500;     // left edge of the splitter bar
};

// Both sides must be above 4000: a damaged value cannot hide the window.
bool IsWindowPlaced(double width, double height);

// Where a window stands, in pixels, that is stored as `window`: there, when some screen shows enough of its upper edge
// to take hold of it, else moved onto the nearest screen. Its size stays.
QRect BroughtBack(const QRect &window, const QList<QRect> &screens);

// The stored place. `present` answers for what is missing. *moved tells whether the stored place and size are to be
// taken.
WindowPlace ReadWindowPlace(const QRectF &present, bool *moved);
// A maximised window leaves the stored place and size as they are.
void WriteWindowPlace(const WindowPlace &place);

// "left,top" with single precision and "." as decimal point.
QString PairText(double first, double second);
