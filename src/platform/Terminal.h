#pragma once

namespace dravik {

/// Lets what the program prints appear on the terminal that it was started from, and reads standard
/// input from there, where the system does not see to that by itself. Redirected streams stay.
void JoinTerminal();

}  // namespace dravik
