#pragma once

#include <string>
#include <vector>

/// What the files behind Paths.h share.
namespace dravik {

/// Names of the plain files of a folder, in the order in which the system gives them.
std::vector<std::string> FileNamesIn(const std::string& resolvedFolder);

}  // namespace dravik
