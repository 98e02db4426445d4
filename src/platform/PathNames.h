#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dravik {

/// Names of the plain files of a folder, in the order in which the system gives them.
std::vector<std::string> FileNamesIn(const std::string& resolvedFolder);

}  // namespace dravik
