#pragma once
// Freezes the painting of one widget during a bulk change. Locks nest; the outermost one lets the widget paint again,
// and every way out of the block releases its own. The widget may die meanwhile. Interface thread.

#include <QPointer>
#include <QWidget>

class RedrawLock
{
public:
    explicit RedrawLock(QWidget *widget);
    ~RedrawLock();
    RedrawLock(const RedrawLock &) = delete;
    RedrawLock &operator=(const RedrawLock &) = delete;

    void Release(); // earlier than the end of the block; a second call does nothing

private:
    QPointer<QWidget> m_widget;
};
