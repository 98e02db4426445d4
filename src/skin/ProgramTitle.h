#pragma once

#include <string>

namespace dravik {

/// The program's title and version: "Dravik V", the major version, ".", the minor version and the
/// revision as two digits each.
std::string ProgramTitle();

}  // namespace dravik
