#pragma once
// The command bar: toolbars that are found by key, with buttons that are found by key. Owned by its parent. Interface
// thread.
//
// Button keys are unique in the whole bar: one that is there raises ControlError 35602; asking for a toolbar or button
// that is not there raises 35601. A button's image is ToolIcon of its key. Every button is reached with Tab and,
// from toolbar to toolbar, with the arrow keys; Alt+Down opens a drop-down button's menu.

#include <QHash>
#include <QIcon>
#include <QVariant>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QMenu;
class QToolBar;
class QToolButton;

enum CommandButtonKind
{
    cbrButton = 0,
    cbrCheck,
    cbrDropDown,
    cbrSeparator
};

class CommandBar : public QWidget
{
    Q_OBJECT
public:
    explicit CommandBar(QWidget *parent = nullptr);

    void AddToolbar(const QString &key, const QString &title = {});
    bool HasToolbar(const QString &key) const { return m_toolbars.contains(key); }
    void SetToolbarVisible(const QString &key, bool visible);
    bool ToolbarVisible(const QString &key) const;
    void RemoveToolbar(const QString &key);                  // with its buttons; no such toolbar: nothing happens
    QStringList ButtonKeys(const QString &toolbarKey) const; // in order, separators too

    // Neighbouring separators are drawn as one. A drop-down button opens its menu.
    void AddButton(const QString &toolbarKey, const QString &key, const QString &toolTip,
                   CommandButtonKind kind = cbrButton, const QVariant &itemData = {});
    void AddSeparator(const QString &toolbarKey, const QString &key) { AddButton(toolbarKey, key, {}, cbrSeparator); }
    void AddMenuItem(const QString &buttonKey, const QString &itemKey, const QString &text);

    bool HasButton(const QString &key) const { return m_buttons.contains(key); }
    QString ToolTip(const QString &key) const;
    CommandButtonKind Kind(const QString &key) const;
    bool Enabled(const QString &key) const;
    void SetEnabled(const QString &key, bool on);
    bool Checked(const QString &key) const;
    void SetChecked(const QString &key, bool on); // raises no click
    QVariant ItemData(const QString &key) const;
    void SetItemData(const QString &key, const QVariant &data);
    void SetEnabledByData(const QVariant &data, bool on); // every button that carries this item data
    void SetIcon(const QString &key, const QIcon &icon);

    void Press(const QString &key);                 // as a click; nothing on a disabled button
    QRect ButtonRect(const QString &key) const;     // pixels in the bar; empty when it is not shown
    bool FocusFirst();                              // the keyboard to the first button that is on; false when none is
    QPoint PopupPosition(const QString &key) const; // global, below the button

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void ButtonClick(const QString &key);
    void MenuItemClick(const QString &buttonKey, const QString &itemKey);

private:
    struct Button
    {
        QAction *action = nullptr;
        QMenu *menu = nullptr;
        QString toolbar;
        CommandButtonKind kind = cbrButton;
        QVariant data;
    };
    struct Toolbar
    {
        QToolBar *bar = nullptr;
        QStringList keys;
    };
    const Button &At(const QString &key) const;
    const Toolbar &BarAt(const QString &key) const;
    void Arrange(const QString &toolbarKey);
    QList<QToolButton *> Faces() const; // the buttons of all toolbars, from left to right
    bool MoveFocus(const QToolButton *from, int key);

    QHash<QString, Toolbar> m_toolbars;
    QHash<QString, Button> m_buttons;
    QHBoxLayout *m_layout;
};
