#pragma once

#include <chrono>
#include <functional>

#include "platform/Events.h"

namespace dravik {

/// Pumps events until the condition holds. The limit only ends a test that has failed already.
inline bool Until(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        WaitForEvents(0.005);
    }
    return true;
}

/// Runs the event loop a while longer, for what must not happen.
inline void Settle() {
    for (int round = 0; round < 20; ++round) WaitForEvents(0.002);
}

}  // namespace dravik
