#pragma once
// The work area of the main window: its children in the order of their making, which of them is active, and how they
// are arranged. Owned by the main window; owns the children. Interface thread; nothing is raised.
//
// A child is active until another one is, or until it closes: the program losing the desktop's focus changes nothing.

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
    bool CloseAll(); // each child's own Unload runs; false when one stayed open

    // Where a new child of that form stands, in a room of that size (pixels), beside so many of its own kind.
    static QRect FirstPlace(const QString &form, int same, const QSize &room);
    void Cascade();
    void TileHorizontally(); // one above the other
    void TileVertically();   // side by side
    void ArrangeIcons();     // the minimised ones in rows along the bottom

signals:
    void ActiveChildChanged(ChildWindow *child);    // null: none is left
    void ContextMenu(const QPoint &globalPosition); // right button on the empty ground

protected:
    bool viewportEvent(QEvent *event) override;

private:
    void OnActivated(QMdiSubWindow *window);
    void Tile(bool stacked);
    QList<QMdiSubWindow *> Arrangeable(bool minimised, QMdiArea::WindowOrder order) const;

    QList<QPointer<ChildWindow>> m_children;
    QPointer<ChildWindow> m_active;
};
