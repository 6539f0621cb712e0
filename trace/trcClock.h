// The local time of day, as lines show it.
#pragma once

#include "trcLine.h"

namespace trc {

TimeOfDay localTimeOfDay() noexcept;

// Seconds of the performance counter.
double counterSeconds() noexcept;

// What the counter is divided by; 1 when the machine does not say.
double counterFrequency() noexcept;

}  // namespace trc
