#pragma once
// What a table map is painted on, with its mouse and its keys. Made by the map, which it forwards to. Interface thread.
//
// Keys: Tab goes from table to table and then from join to join; arrows, Home and End to an item, Space checks it,
// Control with arrows carries the table (with Shift by a pixel), Control+J takes the item as one end of a join and at
// another table as the other one. On a join Return opens its dialog; Delete removes a join or a table, the Menu key
// pops up, Escape gives up.

#include "visual/ucTableMapBody.h"
#include <QWidget>

class MapSurface : public QWidget
{
    Q_OBJECT
public:
    explicit MapSurface(ucTableMap &map);

    ucTableMap &Map() const { return m_map; }
    void Announce(); // what the keyboard is on, to those who listen
    void ForgetMouse();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void PaintTable(QPainter &painter, const MapTable &table) const;
    void PaintDrag(QPainter &painter) const;
    void Press(QMouseEvent *event);
    void Release(QMouseEvent *event);
    void DragOut();
    bool ItemKey(int key);
    bool TableKey(QKeyEvent *event);
    void JoinKey();
    QString Tip(const QPoint &pixel) const;

    ucTableMap &m_map;
    ucTableMap::Body &m;
    MapHit m_pressed; // what the button went down on
    Qt::MouseButton m_button = Qt::NoButton;
    QPoint m_from, m_at;
    bool m_dragging = false; // a field
    bool m_moved = false;    // far enough to be meant
};

bool MapAccessInstalled(); // named by the surface, so that the linker keeps that source
