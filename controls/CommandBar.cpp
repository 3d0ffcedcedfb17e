#include "controls/CommandBar.h"
#include "controls/ControlError.h"
#include "controls/Icons.h"
#include "controls/Skin.h"
#include <QAction>
#include <QCoreApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

namespace {

// While its menu was open a button heard nothing of the mouse: one that has gone would leave it lit.
void LoseMouse(QToolButton *face)
{
    if (face->rect().contains(face->mapFromGlobal(QCursor::pos())))
        return;
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(face, &leave);
    face->update();
}

} // namespace

CommandBar::CommandBar(QWidget *parent) : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSpacing(4);
    m_layout->addStretch(1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Command bar"));
}

const CommandBar::Button &CommandBar::At(const QString &key) const
{
    const auto button = m_buttons.constFind(key);
    if (button == m_buttons.cend())
        throw ControlError(ctlErrElementNotFound, QStringLiteral("Element not found"));
    return *button;
}

const CommandBar::Toolbar &CommandBar::BarAt(const QString &key) const
{
    const auto toolbar = m_toolbars.constFind(key);
    if (toolbar == m_toolbars.cend())
        throw ControlError(ctlErrElementNotFound, QStringLiteral("Element not found"));
    return *toolbar;
}

void CommandBar::AddToolbar(const QString &key, const QString &title)
{
    if (m_toolbars.contains(key))
        throw ControlError(ctlErrKeyNotUnique, QStringLiteral("Key is not unique in collection"));
    auto *const bar = new QToolBar(title.isEmpty() ? key : title, this);
    bar->setIconSize(QSize(20, 20));
    bar->setMovable(false);
    bar->setAccessibleName(bar->windowTitle());
    bar->setProperty("Key", key);
    m_layout->insertWidget(m_layout->count() - 1, bar);
    m_toolbars.insert(key, {bar, {}});
}

void CommandBar::SetToolbarVisible(const QString &key, bool visible)
{
    BarAt(key).bar->setVisible(visible);
}

bool CommandBar::ToolbarVisible(const QString &key) const
{
    return !BarAt(key).bar->isHidden();
}

void CommandBar::RemoveToolbar(const QString &key)
{
    const auto toolbar = m_toolbars.constFind(key);
    if (toolbar == m_toolbars.cend())
        return;
    for (const QString &button : toolbar->keys)
        m_buttons.remove(button);
    toolbar->bar->hide();
    toolbar->bar->deleteLater(); // a click of one of its buttons may be under way
    m_toolbars.erase(toolbar);
}

QStringList CommandBar::ButtonKeys(const QString &toolbarKey) const
{
    return BarAt(toolbarKey).keys;
}

void CommandBar::AddButton(const QString &toolbarKey, const QString &key, const QString &toolTip,
                           CommandButtonKind kind, const QVariant &itemData)
{
    const Toolbar &toolbar = BarAt(toolbarKey);
    if (m_buttons.contains(key))
        throw ControlError(ctlErrKeyNotUnique, QStringLiteral("Key is not unique in collection"));
    Button button;
    button.toolbar = toolbarKey;
    button.kind = kind;
    button.data = itemData;
    if (kind == cbrSeparator) {
        button.action = toolbar.bar->addSeparator();
    } else {
        button.action = toolbar.bar->addAction(ToolIcon(key), toolTip);
        button.action->setToolTip(toolTip);
        button.action->setCheckable(kind == cbrCheck);
        auto *const face = qobject_cast<QToolButton *>(toolbar.bar->widgetForAction(button.action));
        face->setFocusPolicy(Qt::TabFocus);
        face->setAccessibleName(toolTip);
        face->setObjectName(key);
        face->installEventFilter(this);
        const QList<QToolButton *> faces = Faces(); // Tab goes as they stand, whenever a toolbar was made
        if (const qsizetype here = faces.indexOf(face); here > 0)
            QWidget::setTabOrder(faces[here - 1], face);
        if (kind == cbrDropDown) {
            button.menu = new QMenu(face);
            ApplySkin(button.menu); // a toolbar may be made long after its window was painted
            face->setMenu(button.menu);
            face->setPopupMode(QToolButton::MenuButtonPopup); // the button itself is clicked as any other
            connect(button.menu, &QMenu::aboutToHide, face,
                    [face] { QTimer::singleShot(0, face, [face] { LoseMouse(face); }); });
        }
        connect(button.action, &QAction::triggered, this, [this, key] { emit ButtonClick(key); });
    }
    m_buttons.insert(key, button);
    m_toolbars[toolbarKey].keys << key;
    Arrange(toolbarKey);
}

// Separators that stand side by side, or at the start of the first toolbar, show as one or not at all.
void CommandBar::Arrange(const QString &toolbarKey)
{
    bool separated = false;
    for (const QString &key : BarAt(toolbarKey).keys) {
        const Button &button = At(key);
        if (button.kind == cbrSeparator)
            button.action->setVisible(!separated);
        separated = button.kind == cbrSeparator;
    }
}

void CommandBar::AddMenuItem(const QString &buttonKey, const QString &itemKey, const QString &text)
{
    QMenu *const menu = At(buttonKey).menu;
    if (!menu)
        throw ControlError(ctlErrElementNotFound, QStringLiteral("Element not found"));
    QAction *const item = menu->addAction(text);
    item->setProperty("Key", itemKey);
    connect(item, &QAction::triggered, this, [this, buttonKey, itemKey] { emit MenuItemClick(buttonKey, itemKey); });
}

QString CommandBar::ToolTip(const QString &key) const
{
    return At(key).kind == cbrSeparator ? QString() : At(key).action->toolTip();
}

CommandButtonKind CommandBar::Kind(const QString &key) const
{
    return At(key).kind;
}

bool CommandBar::Enabled(const QString &key) const
{
    return At(key).action->isEnabled();
}

void CommandBar::SetEnabled(const QString &key, bool on)
{
    At(key).action->setEnabled(on);
}

bool CommandBar::Checked(const QString &key) const
{
    return At(key).action->isChecked();
}

void CommandBar::SetChecked(const QString &key, bool on)
{
    At(key).action->setChecked(on);
}

QVariant CommandBar::ItemData(const QString &key) const
{
    return At(key).data;
}

void CommandBar::SetItemData(const QString &key, const QVariant &value)
{
    At(key);
    m_buttons[key].data = value;
}

void CommandBar::SetEnabledByData(const QVariant &value, bool on)
{
    for (const Button &button : m_buttons)
        if (button.data.isValid() && button.data == value && button.kind != cbrSeparator)
            button.action->setEnabled(on);
}

void CommandBar::SetIcon(const QString &key, const QIcon &icon)
{
    At(key).action->setIcon(icon);
}

void CommandBar::Press(const QString &key)
{
    At(key).action->trigger();
}

QList<QToolButton *> CommandBar::Faces() const
{
    QList<QToolButton *> faces;
    for (int i = 0; i < m_layout->count(); ++i)
        if (const auto *const bar = qobject_cast<QToolBar *>(m_layout->itemAt(i)->widget()))
            for (QAction *const action : bar->actions())
                if (auto *const face = qobject_cast<QToolButton *>(bar->widgetForAction(action)))
                    faces << face;
    return faces;
}

bool CommandBar::FocusFirst()
{
    for (QToolButton *const face : Faces())
        if (face->isVisible() && face->isEnabled()) {
            face->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
    return false;
}

// To the next button that can take the focus; at either end it stays.
bool CommandBar::MoveFocus(const QToolButton *from, int key)
{
    QList<QToolButton *> faces = Faces();
    const bool left = key == Qt::Key_Left || key == Qt::Key_Home;
    if (left != (layoutDirection() == Qt::RightToLeft && key != Qt::Key_Home && key != Qt::Key_End))
        std::reverse(faces.begin(), faces.end());
    const bool far = key == Qt::Key_Home || key == Qt::Key_End;
    QToolButton *to = nullptr;
    for (qsizetype i = far ? 0 : faces.indexOf(from) + 1; i < faces.size() && (far || !to); ++i)
        if (faces[i]->isVisible() && faces[i]->isEnabled())
            to = faces[i];
    if (to)
        to->setFocus(Qt::TabFocusReason);
    return true;
}

bool CommandBar::eventFilter(QObject *watched, QEvent *event)
{
    auto *const face = qobject_cast<QToolButton *>(watched);
    if (face && event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const bool alt = key->modifiers().testFlag(Qt::AltModifier);
        switch (key->key()) {
        case Qt::Key_Down:
            if (!alt || !face->menu())
                break;
            face->showMenu();
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
            return !alt && MoveFocus(face, key->key());
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

QRect CommandBar::ButtonRect(const QString &key) const
{
    const Button &button = At(key);
    QToolBar *const bar = BarAt(button.toolbar).bar;
    const QWidget *const face = bar->widgetForAction(button.action);
    if (!face || !face->isVisible())
        return {};
    return QRect(face->mapTo(this, QPoint()), face->size());
}

QPoint CommandBar::PopupPosition(const QString &key) const
{
    return mapToGlobal(ButtonRect(key).bottomLeft() + QPoint(0, 1));
}
