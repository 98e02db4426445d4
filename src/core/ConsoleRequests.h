#pragma once

#include <string>
#include <string_view>

/// What the console's requests do. Each returns its answer without the line end of its last line.
namespace dravik {

/// Carries out every request but "wait" and "quit". An unknown or malformed one gives "error: "
/// and the reason.
std::string AnswerRequest(std::string_view request);

/// Texts on one line: "\n", "\r", "\t" and "\\" for the characters that would break it.
std::string OneLine(const std::string& text);

// Reports, as lines closed by ".".
std::string ReportState();
std::string ReportElements();
std::string ReportList();

// Synthetic input. Each returns "ok" after the event was handled, or an error.
std::string InputClick(std::string_view arguments);
std::string InputPress(std::string_view arguments);
std::string InputMove(std::string_view arguments);
std::string InputRelease(std::string_view arguments);
std::string InputWheel(std::string_view arguments);
std::string InputKey(std::string_view arguments);

}  // namespace dravik
