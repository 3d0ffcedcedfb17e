#include "app/Menus.h"
#include "app/CommandTable.h"
#include "app/ToolbarTable.h"
#include "app/WorkArea.h"
#include "app/mdiMother.h"
#include "controls/CommandBar.h"
#include "controls/Twips.h"
#include "frame/ChildWindow.h"
#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <cstring>

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
    for (const CommandRow &row : CommandTable()) {
        if (!std::strcmp(row.Parent, NoMenu))
            continue;
        const QString parent = QString::fromLatin1(row.Parent), name = QString::fromLatin1(row.Name);
        QMenu *menu = m_menus.value(parent);
        if (row.Route == Calls::Separator) {
            menu->addSeparator();
            continue;
        }
        QString caption = WithMnemonic(QString::fromLatin1(row.Caption), taken[parent]);
        if (row.Route == Calls::Group) {
            QMenu *group = new QMenu(caption, &m_window);
            if (parent.isEmpty())
                m_window.menuBar()->addMenu(group);
            else if (menu)
                menu->addMenu(group);
            group->menuAction()->setObjectName(name);
            group->setObjectName(name);
            group->installEventFilter(this);
            connect(group, &QMenu::aboutToShow, this, [this, &row] { Follow(row.Name); });
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
        action->setEnabled(!row.IsLater);
        action->setCheckable(row.IsCheck);
        connect(action, &QAction::triggered, this, [this, &row, action] {
            const QString button = QString::fromLatin1(row.ButtonKey);
            if (row.IsCheck && m_window.cb->HasButton(button)) { // the window reads the state from its button
                m_window.cb->SetChecked(button, !m_window.cb->Checked(button));
                action->setChecked(m_window.cb->Checked(button));
            }
            m_window.Run(row);
        });
        m_items.insert(name, action);
    }
    connect(Menu(QStringLiteral("mnuWindow")), &QMenu::aboutToShow, this, &Menus::OnWindow);
}

bool Menus::eventFilter(QObject *watched, QEvent *event)
{
    const auto *menu = qobject_cast<QMenu *>(watched);
    if (event->type() != QEvent::KeyPress || !menu || !menu->activeAction())
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_F1 || (key->modifiers() & ~Qt::ShiftModifier))
        return false;
    const CommandRow *row = FindCommand(menu->activeAction()->objectName().toLatin1().constData());
    while (QWidget *popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            break;
    }
    m_window.ShowManual(row ? HelpPageOf(*row) : QString());
    return true;
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

void Menus::Enable(const CommandRow &row, bool on)
{
    if (QAction *item = Item(QString::fromLatin1(row.Name)))
        item->setEnabled(on && !row.IsLater);
}

void Menus::SetSchemaMenuEnabled(bool enabled)
{
    for (const CommandRow &row : CommandTable())
        if (row.Need == Needs::Connection)
            Enable(row, enabled);
}

bool FollowsToolbar(const CommandRow &row, const CommandBar &bar, const QString &activeForm)
{
    const ToolbarRow *toolbar = FindToolbar(row.Toolbar);
    if (!toolbar || activeForm != QLatin1String(toolbar->Form))
        return false;
    const QString button = QString::fromLatin1(*row.ButtonKey ? row.ButtonKey : row.DropsOf);
    return button.isEmpty() || (bar.HasButton(button) && bar.Enabled(button));
}

// The popup of a stored connection is the File menu too, and has nothing to do with the active child.
void Menus::Follow(const CommandRow &row)
{
    const bool popup = !std::strcmp(row.Parent, "mnuFile") && Tag(QStringLiteral("mnuFile")) == QLatin1String("P");
    const ChildWindow *child = popup ? nullptr : m_window.ActiveChild();
    switch (row.Need) {
    case Needs::Setting:
        if (child || !row.KeepsState)
            Enable(row, child && child->MenuSettings().*row.Setting);
        break;
    case Needs::Answer:
        Enable(row, child && child->Answers().Has(row.Answer));
        break;
    case Needs::Toolbar:
        Enable(row, child && FollowsToolbar(row, *m_window.cb, child->FormName()));
        if (row.IsCheck && *row.ButtonKey && std::strcmp(row.Parent, NoMenu)) {
            const QString button = QString::fromLatin1(row.ButtonKey); // there with its first window
            Item(QString::fromLatin1(row.Name))
                ->setChecked(m_window.cb->HasButton(button) && m_window.cb->Checked(button));
        }
        break;
    case Needs::Entry:
        Enable(row, popup);
        break;
    case Needs::Nothing:
    case Needs::Connection:
        break;
    }
}

void Menus::Follow(const char *parent)
{
    for (const CommandRow &row : CommandTable())
        if (!std::strcmp(row.Parent, parent))
            Follow(row);
}

void Menus::Refresh()
{
    for (const CommandRow &row : CommandTable())
        Follow(row);
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

void Menus::Popup(const QString &name, const QPoint &globalPosition)
{
    if (QMenu *menu = Menu(name))
        menu->exec(globalPosition);
}
