#pragma once

#include <string>

namespace dravik {

/// Starts a program as a process of its own, minimised and with the focus where the system can do
/// that, and does not track it. False when it could not be started.
///
/// @param program  a file, or a command line whose first word is one
bool StartMinimised(const std::string& program);

/// Hands a file to the program that the system has for its type. False when that failed.
bool OpenWithSystem(const std::string& file);

}  // namespace dravik
