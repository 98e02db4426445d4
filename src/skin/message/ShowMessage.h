#pragma once

#include <string>

#include "core/UpCalls.h"

/// The program's message box, for every module that has something to tell or to ask.
namespace dravik {

/// Tells that a chart was saved, %1 being its file. What the box shows of it is in the driver's
/// language.
constexpr const char* kChartSavedText = "Chart %1 saved.";

// Lower rooms reach these as upCalls, where they are described; InitMessages sets them.

int ShowMessage(const std::string& text, int style, const std::string& title);

int ShowPlainMessage(const std::string& text, int style, const std::string& title);

void ShowPopup(const std::string& message, int kind);

}  // namespace dravik
