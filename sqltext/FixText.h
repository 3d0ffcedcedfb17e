#pragma once
// Which part of a text is coloured anew, and when: the part of FixText that needs no window. The window keeps one
// FixTextState and its own guard against the change event that the colouring itself raises. Interface thread only;
// nothing raises.
//
// Positions are zero-based UTF-16 units, CR LF counts as two. A range may run past the end: the control clips it.

#include <QString>
#include <QStringView>

class EditControl;

struct FixRange
{
    qsizetype start = 0;
    qsizetype length = 0;
    bool operator==(const FixRange &) const = default;
};

// What the visible part is reckoned from.
struct FixView
{
    qsizetype firstVisibleLine = 0; // from 0
    qsizetype visibleLineCount = 0; // how many lines fit, plus 1
};

enum class FixMode
{
    Line = 0,
    Visible = 1,
    Window = 2
};

// The three ranges round a caret. Line and Window read no more of the text than the line or the window.
FixRange SelectLine(QStringView text, qsizetype caret);
FixRange SelectVisibleRange(QStringView text, const FixView &view);
FixRange SelectWindow(QStringView text, qsizetype caret);

// The range to colour: a selection stays as it is, and so it does when `all` is set; otherwise by mode.
FixRange SelectFixRange(QStringView text, bool all, FixMode mode, const FixRange &selection, const FixView &view);

// The part of a range that the text has.
FixRange Clipped(QStringView text, const FixRange &range);
// The same with no end in the middle of CR LF: the start goes in front of the CR, the end behind the LF.
FixRange Snapped(QStringView text, const FixRange &range);
// The same, widened to the lines that it touches, without their last line end.
FixRange WholeLines(QStringView text, const FixRange &range);
// Blank ranges are not worth colouring by themselves: then the whole text is. True for a text of 3 and more of which
// the range, its ends moved out of the middle of CR LF, holds nothing but blanks and line ends.
bool IsBlankRange(QStringView text, const FixRange &range);

// What the colouring is called with, after a TAB at the start of the text was replaced by a blank.
struct FixCall
{
    QString text;
    QString selText; // empty: the whole text
    qsizetype caretPos = 0;
};
FixCall PlanFixText(const QString &text, bool all, FixMode mode, const FixRange &selection, const FixView &view = {});

// The same on a control: selects, colours, and puts the selection back.
void FixControl(EditControl &control, bool all, FixMode mode, const FixView &view = {});

// A window's memory of its last colouring.
class FixTextState
{
public:
    // Has the length changed by more than 3 since the last colouring, so that the state goes into the history?
    bool ChangedMuch(qsizetype length) const { return qAbs(length - m_lastLength) > 3; }
    // Nothing to do for a call that asks to look at the length and finds it as it was.
    bool IsIdle(bool all, bool checkLength, qsizetype length) const
    {
        return checkLength && !all && length == m_lastLength;
    }
    void Coloured(qsizetype length) { m_lastLength = length; }

    // For Return, Up and Down: true when more than half a second has passed since it was true last. `now` in seconds,
    // of a clock that never goes back.
    bool TakeKeyTime(double now)
    {
        if (!(now - m_lastTime > 0.5))
            return false;
        m_lastTime = now;
        return true;
    }

private:
    qsizetype m_lastLength = 0;
    double m_lastTime = 0;
};
