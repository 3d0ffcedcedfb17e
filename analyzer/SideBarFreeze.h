#pragma once
// The side bar, not painted while one of these lives. False where the main window has no bar. Interface thread.

#include "controls/ExplorerBar.h"
#include "frame/Shell.h"
#include <QPointer>

class SideBarFreeze
{
public:
    SideBarFreeze() : m_bar(Shell::Current().SideBar())
    {
        if (m_bar)
            m_bar->SetRedraw(false);
    }
    ~SideBarFreeze()
    {
        if (m_bar)
            m_bar->SetRedraw(true);
    }
    SideBarFreeze(const SideBarFreeze &) = delete;
    SideBarFreeze &operator=(const SideBarFreeze &) = delete;
    ExplorerBar *operator->() const { return m_bar; }
    explicit operator bool() const { return m_bar; }

private:
    QPointer<ExplorerBar> m_bar;
};
