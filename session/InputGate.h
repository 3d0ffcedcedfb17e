#pragma once
// What the user may do while the program is inside a long operation: Escape and the Stop control call `cancel`; other
// input is held back or let through, as told. Dialogs that open meanwhile are never held back. Gates nest; the
// innermost one that still lives takes Escape. Interface thread; nothing raises.

#include "session/Pump.h"
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

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
    void CloseLater(QWidget *window);
    PumpInput m_input;
    std::function<void()> m_cancel;
    QPointer<QWidget> m_window;
    QObject *m_modal; // the modal window at the start; compared and never followed, since it may have gone
    QObject *m_popup;
    InputGate *m_outer;
};
