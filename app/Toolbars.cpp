#include "app/Toolbars.h"
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
static void BuildToolbar(CommandBar &bar, const QString &toolbar, const QString &title, std::span<const ButtonRow> rows,
                         int tag)
{
    if (bar.HasToolbar(toolbar))
        return;
    bar.AddToolbar(toolbar, title);
    for (const ButtonRow &row : rows) {
        const QString key = QString::fromLatin1(row.Key);
        if (row.Kind == ButtonKind::Separator) {
            bar.AddSeparator(toolbar, key);
            continue;
        }
        CommandButtonKind kind = row.Kind == ButtonKind::Check ? cbrCheck : cbrButton;
        for (const DropDownRow &item : DropDowns())
            if (key == QLatin1String(item.Button))
                kind = cbrDropDown;
        bar.AddButton(toolbar, key, QString::fromLatin1(row.Tooltip), kind, row.Later ? QVariant() : QVariant(tag));
        for (const DropDownRow &item : DropDowns())
            if (key == QLatin1String(item.Button))
                bar.AddMenuItem(key, QString::fromLatin1(item.Key), QString::fromLatin1(item.Caption));
        bar.SetEnabled(key, false);
    }
}

void BuildSQLToolbar(CommandBar &bar)
{
    BuildToolbar(bar, QStringLiteral("SQL"), QStringLiteral("SQL"), SQLToolbar(), SQLToolbarTag);
}

void BuildDiagramToolbar(CommandBar &bar)
{
    BuildToolbar(bar, QStringLiteral("DTB"), QStringLiteral("Diagram"), DiagramToolbar(), DiagramToolbarTag);
}

void LockToolbars(CommandBar &bar, const ChildWindow *active)
{
    const QString form = active ? active->FormName() : QString();
    if (form == QLatin1String("frmSQL"))
        BuildSQLToolbar(bar);
    if (form == QLatin1String("frmDiagram"))
        BuildDiagramToolbar(bar);
    bar.SetEnabledByData(int(SQLToolbarTag), form == QLatin1String("frmSQL"));
    bar.SetEnabledByData(int(DiagramToolbarTag), form == QLatin1String("frmDiagram"));
}
