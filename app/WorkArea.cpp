#include "app/WorkArea.h"
#include "app/ChildPlaces.h"
#include "app/WindowTable.h"
#include "frame/ChildWindow.h"
#include <QAction>
#include <QContextMenuEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <cmath>

static constexpr int s_step = 28;            // a title bar's height: each title stays readable
static constexpr char s_chosen[] = "Chosen"; // of a child's frame: the place that the user gave it last

WorkArea::WorkArea(QWidget *parent) : QMdiArea(parent)
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setActivationOrder(QMdiArea::ActivationHistoryOrder);
    connect(this, &QMdiArea::subWindowActivated, this, &WorkArea::OnActivated);
}

WorkArea::~WorkArea()
{
    disconnect(this, nullptr, this, nullptr); // the children that go now activate nobody
}

static Stand PlaceOf(const QString &form)
{
    const WindowRow *row = FindWindow(form);
    return row ? row->Place : Stand::Ground;
}

bool WorkArea::SharePlace(const QString &form, const QString &other)
{
    return PlaceOf(form) == PlaceOf(other);
}

// Text above, rows below: a run leaves the focus with its Analyzer, and its rows are in sight all the same. Further
// windows of a kind stand a title bar's height away from the one before.
QRect WorkArea::FirstPlace(const QString &form, int same, const QSize &room)
{
    const QSize most = room.expandedTo(QSize(320, 240));
    QRect place(QPoint(0, 0), QSize(most.width() * 3 / 4, most.height() * 3 / 4));
    if (PlaceOf(form) == Stand::Text)
        place = QRect(0, 0, most.width(), most.height() * 11 / 20);
    else if (PlaceOf(form) == Stand::Rows)
        place = QRect(0, most.height() * 11 / 20, most.width(), most.height() - most.height() * 11 / 20);
    return Beside(place, same, most);
}

QRect WorkArea::Beside(QRect place, int same, const QSize &room)
{
    const int away = s_step * (same % 6);
    if (place.left() + away + place.width() > room.width())
        place.setLeft(qMin(place.left() + away, qMax(0, room.width() - s_step)));
    else
        place.moveLeft(place.left() + away);
    place.moveTop(qMin(place.top() + away, qMax(0, room.height() - place.height())));
    return place;
}

void WorkArea::AddChild(ChildWindow *child)
{
    if (!child || qobject_cast<QMdiSubWindow *>(child->parentWidget()))
        return;
    auto *window = new QMdiSubWindow;
    window->setWidget(child);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowIcon(windowIcon());
    const QKeySequence close(Qt::CTRL | Qt::Key_F4); // not every desktop has it among its own
    for (QAction *action : window->systemMenu()->actions())
        if (action->shortcuts() == QKeySequence::keyBindings(QKeySequence::Close) &&
            !action->shortcuts().contains(close))
            action->setShortcuts(action->shortcuts() << close);
    addSubWindow(window);                          // which makes this its event filter
    m_children.removeAll(QPointer<ChildWindow>()); // those that have gone
    m_children.append(child);
    const QSize room = maximumViewportSize();
    const std::optional<QRect> known = ReadChildPlace(child->FormName(), room);
    int same = 0; // windows that stand there already: a list and a result have one first place, and share its count
    for (const ChildWindow *other : Children())
        same += other != child &&
                (known ? other->FormName() == child->FormName() : SharePlace(other->FormName(), child->FormName()));
    window->setGeometry(known ? Beside(*known, same, room) : FirstPlace(child->FormName(), same, room));
    if (Children().size() <= 1 && ReadChildrenMaximised())
        m_maximise = window; // when it shows; as long as it stays so, the toolkit maximises the next ones
}

void WorkArea::Remember(const QMdiSubWindow *window)
{
    const auto *child = qobject_cast<const ChildWindow *>(window->widget());
    if (!child || window->isHidden() || window->isMinimized())
        return;
    if (child == m_active)
        WriteChildrenMaximised(window->isMaximized());
    if (!window->isMaximized() && window->property(s_chosen).toRect() == window->geometry())
        WriteChildPlace(child->FormName(), window->geometry());
}

// A child that closes leaves its place to the next one of its kind.
bool WorkArea::eventFilter(QObject *watched, QEvent *event)
{
    auto *window = qobject_cast<QMdiSubWindow *>(watched);
    switch (window ? event->type() : QEvent::None) {
    case QEvent::MouseButtonPress:
        m_held = window;
        break;
    case QEvent::MouseButtonRelease:
        m_held = nullptr;
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if ((m_held == window || QWidget::keyboardGrabber() == window) && !window->isMaximized() &&
            !window->isMinimized())
            window->setProperty(s_chosen, window->geometry());
        break;
    case QEvent::Close:
        Remember(window);
        break;
    default:
        break;
    }
    return QMdiArea::eventFilter(watched, event);
}

void WorkArea::FocusActive()
{
    if (m_active)
        m_active->setFocus(Qt::ShortcutFocusReason);
}

void WorkArea::ShowSystemMenu()
{
    if (auto *window = m_active ? qobject_cast<QMdiSubWindow *>(m_active->parentWidget()) : nullptr)
        window->showSystemMenu();
}

QList<ChildWindow *> WorkArea::Children() const
{
    QList<ChildWindow *> children;
    for (const QPointer<ChildWindow> &child : m_children)
        if (child && !child->isHidden())
            children << child;
    return children;
}

ChildWindow *WorkArea::ActiveChild() const
{
    return m_active;
}

void WorkArea::ActivateChild(ChildWindow *child)
{
    auto *window = child ? qobject_cast<QMdiSubWindow *>(child->parentWidget()) : nullptr;
    if (!window)
        return;
    if (window->isMinimized())
        window->showNormal();
    setActiveSubWindow(window);
}

void WorkArea::RememberPlaces()
{
    for (const ChildWindow *child : Children())
        if (const auto *window = qobject_cast<const QMdiSubWindow *>(child->parentWidget()))
            Remember(window);
}

bool WorkArea::CloseAll()
{
    bool all = true;
    QList<QPointer<ChildWindow>> children = m_children; // closing takes them out of the list
    for (const QPointer<ChildWindow> &child : children) {
        if (!child)
            continue;
        if (QPointer<QWidget> window = child->parentWidget())
            all = window->close() && all;
    }
    return all;
}

void WorkArea::OnActivated(QMdiSubWindow *window)
{
    if (!window && currentSubWindow() && m_active && m_active->parentWidget() == currentSubWindow())
        return; // only the desktop's focus went elsewhere
    QPointer<ChildWindow> child = window ? qobject_cast<ChildWindow *>(window->widget()) : nullptr;
    if (child == m_active)
        return;
    if (window && window == m_maximise) {
        m_maximise = nullptr;
        window->showMaximized();
    }
    QPointer<ChildWindow> former = m_active;
    m_active = child;
    if (former)
        former->Deactivated();
    emit ActiveChildChanged(child); // the toolbars are unlocked before the child reads them
    if (child)
        child->Activated();
}

bool WorkArea::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ContextMenu) {
        emit ContextMenu(static_cast<QContextMenuEvent *>(event)->globalPos());
        return true;
    }
    return QMdiArea::viewportEvent(event);
}

QList<QMdiSubWindow *> WorkArea::Arrangeable(bool minimised, QMdiArea::WindowOrder order) const
{
    QList<QMdiSubWindow *> windows;
    for (QMdiSubWindow *window : subWindowList(order))
        if (!window->isHidden() && window->isMinimized() == minimised)
            windows << window;
    return windows;
}

void WorkArea::Cascade()
{
    const QSize room = maximumViewportSize();
    const QSize size(qMax(320, room.width() * 2 / 3), qMax(240, room.height() * 2 / 3));
    QPoint at(0, 0);
    for (QMdiSubWindow *window : Arrangeable(false, QMdiArea::StackingOrder)) {
        window->showNormal();
        if (at.x() + size.width() > room.width() || at.y() + size.height() > room.height())
            at = QPoint(0, 0);
        window->setGeometry(QRect(at, size));
        at += QPoint(s_step, s_step);
    }
}

void WorkArea::Tile(bool stacked)
{
    const QList<QMdiSubWindow *> windows = Arrangeable(false, QMdiArea::CreationOrder);
    const QSize room = maximumViewportSize(); // no scroll bar is left when all fit
    const int count = int(windows.size());
    for (int i = 0; i < count; ++i) {
        windows[i]->showNormal();
        const int whole = stacked ? room.height() : room.width();
        const int from = whole * i / count, to = whole * (i + 1) / count;
        windows[i]->setGeometry(stacked ? QRect(0, from, room.width(), to - from)
                                        : QRect(from, 0, to - from, room.height()));
    }
}

void WorkArea::TileHorizontally()
{
    Tile(true);
}
void WorkArea::TileVertically()
{
    Tile(false);
}

void WorkArea::ArrangeIcons()
{
    const QSize room = viewport()->size();
    int x = 0, bottom = room.height();
    for (QMdiSubWindow *window : Arrangeable(true, QMdiArea::CreationOrder)) {
        if (x > 0 && x + window->width() > room.width()) {
            x = 0;
            bottom -= window->height();
        }
        window->move(x, bottom - window->height());
        x += window->width();
    }
}
