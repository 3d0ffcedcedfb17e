#pragma once
// The loop under RunPumped and the wait handler: processes events until ready() is true. See Pump.h.

#include "data/Pump.h"

void PumpUntil(const QString &status, const std::function<bool()> &ready, const std::function<void()> &cancel,
               PumpInput input);
