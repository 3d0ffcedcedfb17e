#pragma once
// What the user may do while the program is inside a long operation: Escape and the Stop control call `cancel`; other
// input is held back or let through, as told. Dialogs that open meanwhile are never held back. Gates nest; the
// innermost one that still lives takes Escape. Interface thread; nothing raises.
//
// A close that is held back is done afterwards. That of the desktop, for a whole window, calls `cancel` as well; that
// of a window in the work area lets the operation go on, which may be another's.

#include "session/Pump.h"
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

class QMouseEvent;

class InputGate : public QObject
{
    Q_OBJECT
public:
    InputGate(PumpInput input, std::function<void()> cancel, QWidget *window = nullptr);
    ~InputGate() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool Holds(QObject *watched) const;
    InputGate *ForEscape();
    void NoteCloseButton(const QObject *watched, const QMouseEvent &event);
    PumpInput m_input;
    std::function<void()> m_cancel;
    QPointer<QWidget> m_window;
    QObject *m_modal; // the modal window at the start; compared and never followed, since it may have gone
    QObject *m_popup;
    QPointer<QWidget> m_pressed; // whose close button the mouse holds
    InputGate *m_outer;
};
