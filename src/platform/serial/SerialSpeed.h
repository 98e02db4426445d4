#pragma once

namespace dravik {

/// Sets both directions of an open serial line to a speed for which termios has no name, such as
/// 10400. False when the driver does not come near it. Linux only.
bool SetUnnamedSpeed(int descriptor, int baudrate);

}  // namespace dravik
