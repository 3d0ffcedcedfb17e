#include "app/WorkArea.h"
#include "data/ChildWindow.h"
#include <QContextMenuEvent>
#include <QMdiSubWindow>
#include <cmath>

static constexpr int s_step = 28; // a title bar's height: each title stays readable

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

// Text above, rows below: a run leaves the focus with its Analyzer, and its rows are in sight all the same. Further
// windows of a kind stand a title bar's height away from the one before.
QRect WorkArea::FirstPlace(const QString &form, int same, const QSize &room)
{
    const QSize most = room.expandedTo(QSize(320, 240));
    QRect place(QPoint(0, 0), QSize(most.width() * 3 / 4, most.height() * 3 / 4));
    if (form == QLatin1String("frmSQL"))
        place = QRect(0, 0, most.width(), most.height() * 11 / 20);
    else if (form == QLatin1String("frmHirarchy") || form == QLatin1String("frmGrid"))
        place = QRect(0, most.height() * 11 / 20, most.width(), most.height() - most.height() * 11 / 20);
    const int away = s_step * (same % 6);
    place.setLeft(place.left() + away);
    place.moveTop(qMin(place.top() + away, qMax(0, most.height() - place.height())));
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
    addSubWindow(window);
    m_children.removeAll(QPointer<ChildWindow>()); // those that have gone
    m_children.append(child);
    int same = 0;
    for (const ChildWindow *other : Children())
        same += other != child && other->FormName() == child->FormName();
    window->setGeometry(FirstPlace(child->FormName(), same, maximumViewportSize()));
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
