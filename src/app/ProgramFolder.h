#pragma once

#include <string>

#include "core/basGlobal.h"

namespace dravik {

/// The program folder: `asked` when it is not empty; else the folder of the program when it holds
/// Dravik.ini; else the user's own folder. Without a separator at its end.
///
/// The user's folder lies over the installed data, which `launch` is told (see core/DataFiles.h).
/// On first use it gets its settings and nothing else; settings that it has stay, and missing ones
/// are added. When that cannot be done, `launch` is told to keep nothing. From a folder that an
/// earlier version has filled with copies, those that are as installed are taken away.
std::string FindProgramFolder(const std::string& asked, LaunchOptions& launch);

}  // namespace dravik
