#pragma once
// The wait cursor for the length of a block; it is put back on every way out. Guards nest. Interface thread.
// With a widget only that window shows it, without one the whole program does.

#include <QPointer>
#include <QWidget>

class WaitCursor
{
public:
    explicit WaitCursor(QWidget *window = nullptr);
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

    void Release(); // earlier than the end of the block; a second call does nothing

private:
    QPointer<QWidget> m_window;
    bool m_whole;
    bool m_held = true;
};
