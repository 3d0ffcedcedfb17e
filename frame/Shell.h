#pragma once
// What the windows below may ask of the main window. The main window implements it and installs itself; tests install a
// double. With nothing installed every request is taken and nothing happens. Interface thread only; nothing
// raises.

#include "session/Status.h"
#include <QList>
#include <QPointer>
#include <QRect>
#include <QString>
#include <functional>

class ChildWindow;
class CommandBar;
class ExplorerBar;
class QWidget;

class Shell : public StatusBoard
{
public:
    ~Shell() override;
    static Shell &Current();
    static void Install(Shell *shell); // null takes it away; the status board is installed with it

    virtual void SetCountPanel(const QString &text); // panel 2: "Count = ..."
    virtual void SetHourglass(bool on);              // not counted: the last call holds
    virtual void SetSchemaMenuEnabled(bool enabled);

    virtual void AddChild(ChildWindow *child); // takes it into the work area, which owns it from then on; not yet shown
    virtual QList<ChildWindow *> Children() const; // in the order of their making
    virtual ChildWindow *ActiveChild() const;
    virtual QRect ClientArea() const;    // of the work area, pixels
    virtual QWidget *MainWindow() const; // parent for dialogs; may be null

    virtual ExplorerBar *SideBar() const; // may be null
    virtual CommandBar *Commands() const; // may be null
    virtual bool TestMode() const;        // started with "TestMode"

    // A menu of the main window as a popup, by its name, as "mnuEdit" or "mnuStats"; the tag stays with it.
    virtual void ShowMenu(const QString &name, const QPoint &globalPosition, const QString &tag = {});
    virtual void RefreshMenus(); // a child's menu settings changed
};
