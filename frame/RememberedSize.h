#pragma once
// Windows of their own come up in the size that the user gave them last; the settings keep it by class name. Interface
// thread; nothing is raised.

class QWidget;

// Once, when the window is made. The size is set before the window shows and written when it hides, when it is not the
// one it came up with.
void RememberSize(QWidget *window);
