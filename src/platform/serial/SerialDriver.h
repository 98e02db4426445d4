#pragma once

namespace dravik {

/// What the driver of an open serial line does beyond POSIX, where the system has ways to ask it.

/// Sets both directions to a speed for which termios has no name, such as 10400. False when the
/// driver does not come near it.
bool SetUnnamedSpeed(int descriptor, int baudrate);

/// Whether there is a program and not a device at the other end. False where that cannot be told.
bool IsPseudoTerminal(int descriptor);

/// Whether somebody has marked the device for exclusive use; a privileged process can open it all
/// the same. False where that cannot be told.
bool IsMarked(int descriptor);

/// How many characters the driver has lost since the system started; 0 where it does not count.
int CountOverruns(int descriptor);

}  // namespace dravik
