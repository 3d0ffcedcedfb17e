#pragma once
// The loop under RunPumped and the wait handler: processes events until ready() is true. See Pump.h.

#include "data/Pump.h"

// `status` is asked again and again, since what is waited for may change; "" leaves the status bar alone.
void PumpUntil(const std::function<QString()> &status, const std::function<bool()> &ready,
               const std::function<void()> &cancel, PumpInput input);

QString WaitText(const QString &sql); // "Waiting for: <sql> ... (Esc cancels)"
