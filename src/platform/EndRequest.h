#pragma once

#include <functional>

namespace dravik {

/// Calls `handler` on the user-interface thread when the system asks the program to end: SIGTERM,
/// SIGINT and SIGHUP, on Windows the console's close, log-off and shut-down events. Session ends
/// that reach the windows come as a close of the main window instead.
void OnEndRequest(std::function<void()> handler);

}  // namespace dravik
