#pragma once

#include <cmath>
#include <cstdint>

#include "platform/Clock.h"

namespace dravik {

/// Moves HighResTimer forward by so many seconds, so that a long silence need not be waited for.
inline void AdvanceHighResTimer(double seconds) {
    static std::int64_t (*const systemCounter)() = PerformanceCounter;
    static std::int64_t advanced = 0;
    advanced += std::llround(seconds * static_cast<double>(PerformanceFrequency()));
    PerformanceCounter = [] { return systemCounter() + advanced; };
}

}  // namespace dravik
