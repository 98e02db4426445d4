#pragma once

#include <string>

namespace dravik {

/// The program folder: `asked` when it is not empty; else the folder of the program when it holds
/// Dravik.ini; else the user's own folder, filled from the installed data on first use. Without a
/// separator at its end.
std::string FindProgramFolder(const std::string& asked);

}  // namespace dravik
