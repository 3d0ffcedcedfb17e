#pragma once
// The work area of the main window: its children in the order of their making, which of them is active, and how they
// are arranged. Owned by the main window; owns the children. Interface thread; nothing is raised.
//
// A child is active until another one is, or until it closes: the program losing the desktop's focus changes nothing.
//
// A kind of window comes up where the user's hand left the last one of it; what a command did to it does not count.
// Children that were maximised come up maximised.

#include <QList>
#include <QMdiArea>
#include <QPointer>

class ChildWindow;
class QMdiSubWindow;

class WorkArea : public QMdiArea
{
    Q_OBJECT
public:
    explicit WorkArea(QWidget *parent = nullptr);
    ~WorkArea() override;

    void AddChild(ChildWindow *child); // takes it; not yet shown
    QList<ChildWindow *> Children() const;
    ChildWindow *ActiveChild() const;
    void ActivateChild(ChildWindow *child);
    void RememberPlaces(); // of all children, as each does when it closes
    bool CloseAll();       // each child's own Unload runs; false when one stayed open
    void FocusActive();    // gives the keyboard to the active child
    void ShowSystemMenu(); // of the active child: move, size, minimise ... without a mouse

    // Where a new child of that form stands, in a room of that size (pixels), beside so many of its own kind.
    static QRect FirstPlace(const QString &form, int same, const QSize &room);
    static bool SharePlace(const QString &form, const QString &other); // kinds whose first place is the same
    static QRect Beside(QRect place, int same, const QSize &room);     // that far from the ones before
    void Cascade();
    void TileHorizontally(); // one above the other
    void TileVertically();   // side by side
    void ArrangeIcons();     // the minimised ones in rows along the bottom

signals:
    void ActiveChildChanged(ChildWindow *child);    // null: none is left
    void ContextMenu(const QPoint &globalPosition); // right button on the empty ground

protected:
    bool viewportEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Remember(const QMdiSubWindow *window);
    void OnActivated(QMdiSubWindow *window);
    void Tile(bool stacked);
    QList<QMdiSubWindow *> Arrangeable(bool minimised, QMdiArea::WindowOrder order) const;

    QList<QPointer<ChildWindow>> m_children;
    QPointer<ChildWindow> m_active;
    QPointer<QMdiSubWindow> m_maximise; // comes up maximised
    QPointer<QMdiSubWindow> m_held;     // whose frame the mouse holds
};
