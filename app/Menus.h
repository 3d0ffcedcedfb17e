#pragma once
// The menu bar and the popups, built from CommandTable, and their states. Each item's action has the row's name as
// object name and carries a Tag text. Owned by the main window. Interface thread; nothing is raised.

#include <QHash>
#include <QObject>
#include <QString>

class CommandBar;
class QAction;
class QMenu;
class mdiMother;
struct CommandRow;

class Menus : public QObject
{
    Q_OBJECT
public:
    explicit Menus(mdiMother &window);

    QAction *Item(const QString &name) const; // a group's action for a group; null for an unknown name
    QMenu *Menu(const QString &name) const;   // of a group
    QString Tag(const QString &name) const;
    void SetTag(const QString &name, const QString &tag);

    void SetSchemaMenuEnabled(bool enabled);
    void Follow(const char *parent); // the rows of a group by what each needs of the active child, as the group opens
    void Refresh();                  // all of them, so that shortcuts follow the active child
    void OnWindow();                 // the list of the children

    // Shows a group as a popup and returns when it has gone.
    void Popup(const QString &name, const QPoint &globalPosition);

    // F1 on an item of an open menu: closes the menus and opens the manual at that command's page.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Build();
    void Follow(const CommandRow &row);
    void Enable(const CommandRow &row, bool on);
    mdiMother &m_window;
    QHash<QString, QAction *> m_items;
    QHash<QString, QMenu *> m_menus;
};

// Is a row of a toolbar's window on? It follows its own toolbar and its own button, whatever else is open.
bool FollowsToolbar(const CommandRow &row, const CommandBar &bar, const QString &activeForm);

// The caption with a "&" before the first letter or digit that no sibling has taken; as it is when none is free.
QString WithMnemonic(const QString &caption, QString &taken);
