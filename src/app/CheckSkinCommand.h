#pragma once

#include <string>

#include "app/CommandLine.h"

namespace dravik {

/// Carries out --check-skin: prints a line per finding on standard output, and on standard error
/// why there is nothing to check.
/// @return the exit status: 0 clean, 1 with findings, 2 when the skin cannot be read
int CheckSkinCommand(const CommandLine& line);

}  // namespace dravik
