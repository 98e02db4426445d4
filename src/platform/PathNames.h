#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the files behind Paths.h share.
namespace dravik {

/// Nothing that this program reads whole comes near this size; a file that does is a mistake.
constexpr std::int64_t kLargestFile = std::int64_t{256} << 20;

/// Names of the plain files of a folder, in the order in which the system gives them.
std::vector<std::string> FileNamesIn(const std::string& resolvedFolder);

}  // namespace dravik
