#pragma once

#include <string>

namespace dravik {

/// The program's title and version: "Dravik V", the major version, ".", the minor version and the
/// revision as two digits each.
std::string ProgramTitle();

/// What the program was made from and runs on: the commit, where it is known, and the version of
/// Qt.
std::string ProgramBuild();

}  // namespace dravik
