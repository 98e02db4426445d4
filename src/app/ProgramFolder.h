#pragma once

#include <string>

#include "core/basGlobal.h"

namespace dravik {

/// The program folder: `asked` when it is not empty; else the folder of the program when it holds
/// Dravik.ini; else the user's own folder, filled from the installed data on first use. Without a
/// separator at its end.
///
/// A user's folder that is only partly filled is completed; what the user has changed in it stays.
/// When that cannot be done, `launch` is told to run on the installed data.
std::string FindProgramFolder(const std::string& asked, LaunchOptions& launch);

}  // namespace dravik
