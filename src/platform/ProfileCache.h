#pragma once

#include <string>

namespace dravik {

/// Makes the next read of a profile file look at the file again, whatever its time stamp says.
void ForgetProfile(const std::string& file);

/// True for a file that is too large to be read, which is then said on standard error, once in a
/// row for each.
bool RefusedForSize(const std::string& file);

}  // namespace dravik
