#pragma once
// What moves a bar between two parts of a window, without being a window itself: the rules of Splitter, the bar.
//
// The bar is not owned and moves in its parent. All lengths are twips; pointers are measured along the way that the bar
// goes, from the parent's edge. Borders are the least distances to the parent's edges: 1 left, 2 top, 3 right, 4
// bottom. Interface thread; nothing raises.

#include <QPointer>
#include <QWidget>
#include <array>

enum SplitOrientation
{
    spltVertical = 1, // a standing bar that moves left and right
    spltHorizontal = 2
};

class cSplitDDC
{
public:
    QWidget *SplitObject() const { return m_bar; }
    void SetSplitObject(QWidget *bar) { m_bar = bar; }
    SplitOrientation Orientation() const { return m_orientation; }
    void SetOrientation(SplitOrientation orientation) { m_orientation = orientation; }
    int Border(int edge) const { return edge >= 1 && edge <= 4 ? m_borders[size_t(edge)] : 0; }
    void SetBorder(int edge, int twips);

    int Position() const;        // Left, or Top of a lying bar
    void SetPosition(int twips); // kept within the borders
    int Within(int twips) const; // the nearest position that the borders allow

    void SplitterMouseDown(int pointer);
    bool SplitterFormMouseMove(int pointer); // moves the bar; false when it is not held
    bool SplitterFormMouseUp(int pointer);   // lets it go; true when that ends a move, false after a mere click
    int Start() const { return m_start; }    // where the bar stood when it was taken hold of
    int Travel() const { return m_travel; }  // of the last move: from the bar's former edge to where it was let go

private:
    QPointer<QWidget> m_bar;
    SplitOrientation m_orientation = spltVertical;
    std::array<int, 5> m_borders{};
    bool m_held = false;
    int m_start = 0; // position at the mouse down
    int m_grip = 0;  // from the bar's edge to the pointer
    int m_travel = 0;
};
