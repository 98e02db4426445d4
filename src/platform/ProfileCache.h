#pragma once

#include <string>

namespace dravik {

/// Makes the next read of a profile file look at the file again, whatever its time stamp says.
void ForgetProfile(const std::string& file);

}  // namespace dravik
