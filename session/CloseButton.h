#pragma once
// The close buttons of the windows in a work area, which are drawn by the style and are no widgets of their own.
// Interface thread; nothing is raised.

class QMouseEvent;
class QObject;
class QWidget;

// The window whose close button stands where the mouse is, or null.
QWidget *WindowToClose(const QObject *watched, const QMouseEvent &event);
