#pragma once

namespace dravik {

/// Keeps a request to end (SIGTERM, SIGINT, SIGHUP, the console's events on Windows) from ending
/// the program at once. To be called before any thread starts.
void HoldBackEnd();

/// Sleeps until the system asks the program to end.
void WaitForEnd();

}  // namespace dravik
