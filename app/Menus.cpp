#include "app/Menus.h"
#include "app/MenuTable.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/CommandBar.h"
#include "controls/Twips.h"
#include "frame/ChildWindow.h"
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

QString WithMnemonic(const QString &caption, QString &taken)
{
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar letter = caption[i].toLower();
        if (!letter.isLetterOrNumber() || taken.contains(letter))
            continue;
        taken += letter;
        return caption.left(i) + QLatin1Char('&') + caption.mid(i);
    }
    return caption;
}

Menus::Menus(mdiMother &window) : QObject(&window), m_window(window)
{
    Build();
}

void Menus::Build()
{
    QHash<QString, QString> taken; // letters in use, by group
    for (const MenuRow &row : MenuTable()) {
        const QString parent = QString::fromLatin1(row.Parent), name = QString::fromLatin1(row.Name);
        QMenu *menu = m_menus.value(parent);
        if (row.Route == MenuRoute::Separator) {
            menu->addSeparator();
            continue;
        }
        QString caption = WithMnemonic(QString::fromLatin1(row.Caption), taken[parent]);
        if (row.Route == MenuRoute::Group) {
            QMenu *group = new QMenu(caption, &m_window);
            if (parent.isEmpty())
                m_window.menuBar()->addMenu(group);
            else if (menu)
                menu->addMenu(group);
            group->menuAction()->setObjectName(name);
            group->setObjectName(name);
            m_menus.insert(name, group);
            m_items.insert(name, group->menuAction());
            continue;
        }
        if (*row.Hint)
            caption += QLatin1Char('\t') + QString::fromLatin1(row.Hint);
        QAction *action = menu->addAction(caption);
        action->setObjectName(name);
        action->setMenuRole(QAction::NoRole);
        if (*row.Shortcut)
            action->setShortcut(QKeySequence(QString::fromLatin1(row.Shortcut), QKeySequence::PortableText));
        action->setEnabled(row.Route != MenuRoute::Later);
        connect(action, &QAction::triggered, this, [this, &row] { m_window.Run(row); });
        m_items.insert(name, action);
    }
    connect(Menu(QStringLiteral("mnuFile")), &QMenu::aboutToShow, this, &Menus::OnFile);
    connect(Menu(QStringLiteral("mnuEdit")), &QMenu::aboutToShow, this, &Menus::OnEdit);
    connect(Menu(QStringLiteral("mnuQuery")), &QMenu::aboutToShow, this, &Menus::OnQuery);
    connect(Menu(QStringLiteral("mnuWindow")), &QMenu::aboutToShow, this, &Menus::OnWindow);
}

QAction *Menus::Item(const QString &name) const
{
    return m_items.value(name);
}
QMenu *Menus::Menu(const QString &name) const
{
    return m_menus.value(name);
}
QString Menus::Tag(const QString &name) const
{
    return ::Tag(Item(name));
}
void Menus::SetTag(const QString &name, const QString &tag)
{
    ::SetTag(Item(name), tag);
}

void Menus::Enable(const char *name, bool on)
{
    const MenuRow *row = FindMenuRow(name);
    if (QAction *item = Item(QString::fromLatin1(name)))
        item->setEnabled(on && row && row->Route != MenuRoute::Later);
}

void Menus::SetSchemaMenuEnabled(bool enabled)
{
    for (const MenuRow &row : MenuTable())
        if (row.NeedsSchema)
            Enable(row.Name, enabled);
}

// Print is not among the items that are first switched off: it keeps its last state while no child is active, and in
// the side bar's popup. That is meant. Open and Save stay off in that popup.
void Menus::OnFile()
{
    const bool popup = Tag(QStringLiteral("mnuFile")) == QLatin1String("P");
    for (const char *name : {"mnuSave", "mnuOpen", "mnuFileSnapshot"})
        Enable(name, false);
    Enable("mnuDeleteConn", popup);
    ChildWindow *child = m_window.ActiveChild();
    if (!child || popup)
        return;
    const clsMenuSettings can = child->MenuSettings();
    Enable("mnuSave", can.CanSave);
    Enable("mnuOpen", can.CanOpen);
    Enable("mnuPrint", can.CanPrint);
    Enable("mnuFileSnapshot", child->Offers(QStringLiteral("SnapShot")));
}

void Menus::OnEdit()
{
    const ChildWindow *child = m_window.ActiveChild();
    const clsMenuSettings can = child ? child->MenuSettings() : clsMenuSettings();
    Enable("mnuCopy", can.CanCopy);
    Enable("mnuCut", can.CanCut);
    Enable("mnuPaste", can.CanPaste);
    Enable("mnuUndo", can.CanUndo);
    Enable("mnuSelectAll", can.CanSelectAll);
    Enable("mnuFind", can.CanFind);
    Enable("mnuReplace", can.CanReplace);
}

// A row is on while its button is; the items that hang on a button go with it.
void Menus::OnQuery()
{
    const CommandBar *bar = m_window.cb;
    for (const MenuRow &row : MenuTable()) {
        if (row.Route != MenuRoute::Tool)
            continue;
        QString key = QString::fromLatin1(row.Operation);
        if (!bar->HasButton(key))
            key = QStringLiteral("SQLTrans");
        Enable(row.Name, bar->HasButton(key) && bar->Enabled(key));
    }
}

void Menus::OnWindow()
{
    QMenu *menu = Menu(QStringLiteral("mnuWindow"));
    for (QAction *action : menu->actions())
        if (action->objectName().isEmpty()) {
            menu->removeAction(action);
            action->deleteLater();
        }
    const QList<ChildWindow *> children = m_window.Children();
    if (children.isEmpty())
        return;
    menu->addSeparator();
    int number = 0;
    for (ChildWindow *child : children) {
        QString caption = child->Caption().replace(QLatin1Char('&'), QLatin1String("&&"));
        if (caption.size() > 80)
            caption = caption.left(79) + QChar(0x2026);
        ++number;
        QAction *action =
            menu->addAction((number < 10 ? QStringLiteral("&%1 ") : QStringLiteral("%1 ")).arg(number) + caption);
        action->setCheckable(true);
        action->setChecked(child == m_window.ActiveChild());
        connect(action, &QAction::triggered, this, [this, child = QPointer<ChildWindow>(child)] {
            if (child)
                m_window.Area->ActivateChild(child);
        });
    }
}

void Menus::Refresh()
{
    OnFile();
    OnEdit();
    OnQuery();
}

void Menus::Popup(const QString &name, const QPoint &globalPosition)
{
    if (QMenu *menu = Menu(name))
        menu->exec(globalPosition);
}
