#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Profile.h"

namespace dravik {

/// The content of a profile file after the entries were written into it: values replaced in place,
/// everything else as it was, encoding, line ends and a missing final line end included.
///
/// @return nothing when a section or key name could not be read back (empty, or with a character
///         that ends it)
std::optional<std::string> EditProfile(std::string_view content,
                                       const std::vector<ProfileEntry>& entries);

}  // namespace dravik
