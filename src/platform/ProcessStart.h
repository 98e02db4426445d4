#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dravik {

/// Starts a program as a process of its own, minimised and with the focus where the system can do
/// that, and does not track it. False when it could not be started.
///
/// @param program  a file, or a command line whose first word is one
bool StartMinimised(const std::string& program);

/// The same for a program of which one is enough: does nothing while the one that this procedure
/// started last is still running.
bool StartMinimisedOnce(const std::string& program);

/// True for an address with a scheme: "http://host/stream", "file:///music/a.mp3".
bool IsAddress(std::string_view text);

/// The path that a "file://" address of this computer means, "%20" and the like resolved; nothing
/// for any other text.
std::optional<std::string> FileOfAddress(std::string_view address);

/// Hands a file to the program that the system has for its type, or an address, unchanged, to the
/// one for its scheme. False when that failed.
bool OpenWithSystem(const std::string& file);

}  // namespace dravik
