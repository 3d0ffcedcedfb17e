#include "app/Toolbars.h"
#include "app/CommandTable.h"
#include "app/SideBarTable.h"
#include "app/ToolbarTable.h"
#include "controls/CommandBar.h"
#include "frame/ChildWindow.h"

void BuildMainToolbar(CommandBar &bar)
{
    const QString toolbar = QStringLiteral("MainTB");
    if (bar.HasToolbar(toolbar))
        return;
    bar.AddToolbar(toolbar, QStringLiteral("Main"));
    for (const SideBarRow &row : SideBarTable()) {
        const QString key = QStringLiteral("MTB") + QLatin1String(row.Key);
        if (key == QLatin1String("MTBHELP"))
            bar.AddSeparator(toolbar, QStringLiteral("Seporator"));
        bar.AddButton(toolbar, key, QString::fromLatin1(row.Tooltip));
    }
}

// Only live buttons carry the mark by which the toolbar is unlocked.
void BuildToolbar(CommandBar &bar, const ToolbarRow &toolbar)
{
    const QString toolbarKey = QString::fromLatin1(toolbar.Key);
    if (bar.HasToolbar(toolbarKey))
        return;
    bar.AddToolbar(toolbarKey, QString::fromLatin1(toolbar.Title));
    for (const char *name : toolbar.Buttons) {
        const QString key = QString::fromLatin1(name);
        const CommandRow *row = FindButton(name);
        if (!row) {
            bar.AddSeparator(toolbarKey, key);
            continue;
        }
        QList<const CommandRow *> choices;
        for (const CommandRow &choice : CommandTable())
            if (key == QLatin1String(choice.DropsOf))
                choices << &choice;
        const CommandButtonKind kind = !choices.isEmpty() ? cbrDropDown : row->IsCheck ? cbrCheck : cbrButton;
        bar.AddButton(toolbarKey, key, QString::fromLatin1(row->Tip), kind,
                      row->IsLater ? QVariant() : QVariant(toolbar.Mark));
        for (const CommandRow *choice : choices)
            bar.AddMenuItem(key, QString::fromLatin1(choice->Text), QString::fromLatin1(choice->DropCaption));
        bar.SetEnabled(key, false);
    }
}

void LockToolbars(CommandBar &bar, const ChildWindow *active)
{
    for (const ToolbarRow &toolbar : ToolbarTable()) {
        const bool on = active && active->FormName() == QLatin1String(toolbar.Form);
        if (on)
            BuildToolbar(bar, toolbar);
        bar.SetEnabledByData(toolbar.Mark, on);
    }
}
