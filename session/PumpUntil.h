#pragma once
// The loop under every work and under the wait handler: processes events until ready() is true. See Pump.h.

#include "session/Pump.h"
#include <QPointer>
#include <QWidget>

// `status` is asked again and again, since what is waited for may change; "" leaves the status bar alone. An Escape
// that is pressed in `window` calls this loop's cancel, whichever loop began last.
void PumpUntil(const std::function<QString()> &status, const std::function<bool()> &ready,
               const std::function<void()> &cancel, PumpInput input, QWidget *window = nullptr);

QString WaitText(const QString &sql);   // "Waiting for: <sql> ... (Esc cancels)": the statement is the caller's own
QString BehindText(const QString &sql); // "Waiting for: <sql> ... (Esc gives up waiting)": it is another's

bool IsEnding(); // the program ends, as EndPumps was told
void SetEnding(bool ending);

// Work that ends within this never lets an event in between, milliseconds. Gives the former value. Tests set it wide,
// so that a busy machine does not decide what they see.
int SetQuickWait(int milliseconds);
int QuickWait();
