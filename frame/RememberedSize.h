#pragma once
// Windows of their own come up in the size that the user gave them last; the settings keep it by class name. Interface
// thread; nothing raises.

#include <QRect>

class QWidget;

// Once, when the window is made. The size is set before the window shows and written when it hides, when it is not the
// one it came up with.
void RememberSize(QWidget *window);
// A place for a window in the middle of its owner, moved and, if need be, made smaller until it lies on the screen,
// title and frame included. Pixels.
QRect WholeOnScreen(const QSize &window, const QRect &owner, const QRect &screen, const QMargins &frame);
// Gives a window such a place, in its remembered size or the one that it has.
void PlaceWhole(QWidget *window, const QWidget *owner);
