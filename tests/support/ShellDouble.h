#pragma once
// A main window for tests of windows: notes what it is told, keeps the children in a list, lays them out as plain
// top-level widgets. Installs itself for as long as it lives.

#include "frame/ChildWindow.h"
#include "frame/Shell.h"
#include <QPointer>
#include <QStringList>

class ShellDouble : public Shell
{
public:
    ShellDouble() { Install(this); }
    ~ShellDouble() override
    {
        CloseAll();
        Install(nullptr);
    }

    QStringList Statuses; // every text of panel 1, oldest first
    QString CountPanel;   // panel 2
    bool Hourglass = false;
    int HourglassCalls = 0;
    bool SchemaMenu = false;
    int SchemaMenuCalls = 0;
    std::function<void()> Stop; // what a Stop control would do now
    int StopsOffered = 0;
    QList<QPointer<ChildWindow>> Windows;
    QPointer<ChildWindow> Active;
    bool Test = false;
    int MenuRefreshes = 0;
    QStringList Menus; // those shown as popups
    QString MenuTag;   // of the last one
    QWidget *Main = nullptr;
    ExplorerBar *Side = nullptr;
    CommandBar *Bar = nullptr;
    QRect Client{0, 0, 780, 560};

    QString Status() const { return Statuses.isEmpty() ? QString() : Statuses.last(); }
    // The newest child of a form name that still lives, null when there is none.
    ChildWindow *Child(const QString &formName) const
    {
        for (auto i = Windows.size(); i-- > 0;)
            if (Windows[i] && Windows[i]->FormName() == formName)
                return Windows[i];
        return nullptr;
    }
    void CloseAll()
    {
        const auto windows = Windows;
        for (const auto &window : windows)
            delete window.data();
        Windows.clear();
    }

    void SetStatus(const QString &text) override { Statuses << text; }
    void SetCountPanel(const QString &text) override { CountPanel = text; }
    void SetHourglass(bool on) override
    {
        Hourglass = on;
        ++HourglassCalls;
    }
    void SetSchemaMenuEnabled(bool enabled) override
    {
        SchemaMenu = enabled;
        ++SchemaMenuCalls;
    }
    void SetStop(const std::function<void()> &stop) override
    {
        Stop = stop;
        StopsOffered += stop ? 1 : 0;
    }
    void AddChild(ChildWindow *child) override
    {
        Windows << child;
        Active = child;
    }
    QList<ChildWindow *> Children() const override
    {
        QList<ChildWindow *> list;
        for (const auto &window : Windows)
            if (window)
                list << window;
        return list;
    }
    ChildWindow *ActiveChild() const override { return Active; }
    QRect ClientArea() const override { return Client; }
    QWidget *MainWindow() const override { return Main; }
    ExplorerBar *SideBar() const override { return Side; }
    CommandBar *Commands() const override { return Bar; }
    bool TestMode() const override { return Test; }
    void ShowMenu(const QString &name, const QPoint &, const QString &tag) override
    {
        Menus << name;
        MenuTag = tag;
    }
    void RefreshMenus() override { ++MenuRefreshes; }
};
