#pragma once
// The bar between two parts of a window: dragged, or moved with the arrow keys, it says where it went, and the window
// lays out its parts. Owned by its parent, in whose coordinates it moves. Interface thread; nothing is raised.
//
// All lengths are twips. Borders are the least distances to the parent's edges: 1 left, 2 top, 3 right, 4 bottom.

#include <QWidget>
#include <array>

enum SplitOrientation
{
    spltVertical = 1,
    spltHorizontal = 2
}; // 1: a standing bar that moves left and right

class Splitter : public QWidget
{
    Q_OBJECT
public:
    explicit Splitter(QWidget *parent = nullptr, SplitOrientation orientation = spltVertical);

    SplitOrientation Orientation() const { return m_orientation; }
    void SetOrientation(SplitOrientation orientation);
    int Border(int edge) const;
    void SetBorder(int edge, int twips);

    int Position() const;        // Left, or Top of a lying bar
    void SetPosition(int twips); // kept within the borders; raises no signal
    int Within(int twips) const; // the nearest position that the borders allow

signals:
    void Moving(int position); // while it is dragged
    void Moved(int position);  // when it was let go, or moved by a key

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int Along(const QPoint &point) const { return m_orientation == spltVertical ? point.x() : point.y(); }
    SplitOrientation m_orientation;
    std::array<int, 5> m_borders{};
    int m_grip = -1; // pixels from the bar's own edge to the pointer while it is dragged, else -1
};
