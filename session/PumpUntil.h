#pragma once
// The loop under RunPumped and the wait handler: processes events until ready() is true. See Pump.h.

#include "session/Pump.h"

// `status` is asked again and again, since what is waited for may change; "" leaves the status bar alone.
void PumpUntil(const std::function<QString()> &status, const std::function<bool()> &ready,
               const std::function<void()> &cancel, PumpInput input);

QString WaitText(const QString &sql); // "Waiting for: <sql> ... (Esc cancels)"

// Work that ends within this never lets an event in between, milliseconds. Gives the former value. Tests set it wide,
// so that a busy machine does not decide what they see.
int SetQuickWait(int milliseconds);
