// Clicks in the side bar and in the command bar, on their way to the operations.

#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/SideBarTable.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/ExplorerBar.h"
#include "frame/ChildWindow.h"

void mdiMother::SideBarClick(ExplorerBarItem *item)
{
    if (!item)
        return;
    if (item->Tag() == QLatin1String(TagConnection)) {
        ConnectTo(item);
        return;
    }
    if (item->Bar()->Key() == QLatin1String(BarTools))
        if (const SideBarRow *row = FindSideBarRow(item->Key().toLatin1().constData()))
            if (Command(row->Command))
                return;
    const QString key = item->Key(), text = item->Text();
    if (ChildWindow *child = ActiveChild())
        Attempt([&] { child->DynaMenuItemClick(key, text); });
}

// The File menu as the popup of a stored connection. Its Tag is "P" while it is open and while the chosen item runs.
void mdiMother::SideBarRightClick(ExplorerBarItem *item, const QPoint &globalPosition)
{
    if (!item || !item->Key().startsWith(QLatin1String("C:")))
        return;
    menus->SetTag(QStringLiteral("mnuFile"), QStringLiteral("P"));
    menus->SetTag(QStringLiteral("mnuDeleteConn"), item->Key());
    menus->SetTag(QStringLiteral("mnuViewCS"), item->Text());
    menus->Follow("mnuFile");
    menus->Popup(QStringLiteral("mnuFile"), globalPosition);
    if (m_exit)
        return;
    menus->SetTag(QStringLiteral("mnuFile"), QString());
    menus->Follow("mnuFile"); // so that the shortcuts work again
}

void mdiMother::CommandBarClick(const QString &key)
{
    if (key.startsWith(QLatin1String("MTB"))) {
        if (ExplorerBarBar *tools = eb->FindBar(QString::fromLatin1(BarTools)))
            SideBarClick(tools->Items().Find(key.mid(3)));
        return;
    }
    const CommandRow *row = FindButton(key.toLatin1().constData());
    if (row && row->Route == Calls::Popup)
        return Run(*row);
    if (ChildWindow *child = ActiveChild())
        Attempt([&] { child->ToolBar(key); });
}

void mdiMother::CommandBarMenuClick(const QString &, const QString &itemKey)
{
    if (ChildWindow *child = ActiveChild())
        Attempt([&] { child->ToolBar(itemKey); });
}
