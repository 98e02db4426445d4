#pragma once

#include <string>

namespace dravik {

/// Starts a program as a process of its own, minimised and with the focus where the system can do
/// that, and does not track it. False when it could not be started.
///
/// @param program  a file, or a command line whose first word is one
bool StartMinimised(const std::string& program);

/// The same for a program of which one is enough: does nothing while the one that this procedure
/// started last is still running.
bool StartMinimisedOnce(const std::string& program);

/// Hands a file to the program that the system has for its type. False when that failed.
bool OpenWithSystem(const std::string& file);

}  // namespace dravik
