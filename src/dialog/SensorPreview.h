#pragma once

#include <optional>
#include <string>

namespace dravik {

/// The output line of a sensor that is being edited: raw * factor + offset, directly followed by
/// the unit. The texts are read, and the result is written, as the user's region writes numbers,
/// unlike those of the sensor file.
///
/// @return nothing when one of the texts is no number
std::optional<std::string> PreviewOutput(const std::string& raw, const std::string& factor,
                                         const std::string& offset, const std::string& unit);

}  // namespace dravik
