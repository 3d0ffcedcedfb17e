#pragma once
// The bar between two parts of a window: dragged, or moved with the arrow keys, it says where it went, and the window
// lays out its parts. Owned by its parent, in whose coordinates it moves. Interface thread; nothing raises.
//
// All lengths are twips. Where it may go and how it is dragged are cSplitDDC's rules.

#include "controls/cSplitDDC.h"

class Splitter : public QWidget
{
    Q_OBJECT
public:
    explicit Splitter(QWidget *parent = nullptr, SplitOrientation orientation = spltVertical);

    SplitOrientation Orientation() const { return m_split.Orientation(); }
    void SetOrientation(SplitOrientation orientation);
    int Border(int edge) const { return m_split.Border(edge); }
    void SetBorder(int edge, int twips) { m_split.SetBorder(edge, twips); }

    int Position() const { return m_split.Position(); }           // Left, or Top of a lying bar
    void SetPosition(int twips) { m_split.SetPosition(twips); }   // kept within the borders; raises no signal
    int Within(int twips) const { return m_split.Within(twips); } // the nearest position that the borders allow

signals:
    void Moving(int position); // while it is dragged
    void Moved(int position);  // when it was let go, or moved by a key
    // After Moved, when a drag has ended elsewhere than it began: where the bar stood, and how far from there the
    // pointer was when it let go.
    void Dropped(int former, int travel);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int Pointer(const QMouseEvent *event) const;
    cSplitDDC m_split;
};
