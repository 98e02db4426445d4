#pragma once

#include <functional>

namespace dravik {

/// Processes the window events that are pending and returns.
void PumpEvents();

/// Processes events, sleeping until something happens or `seconds` have passed. Takes next to no
/// processor time while nothing happens; timers keep their rhythm.
void WaitForEvents(double seconds);

/// Runs `work` on the user-interface thread once the events now pending are done. May be called
/// from any thread. Without an application object the work is dropped.
void PostToUserInterface(std::function<void()> work);

}  // namespace dravik
