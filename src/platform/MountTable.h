#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dravik {

/// The folders in a mount table (lines of device, folder, type, ...; octal escapes for blanks) that
/// a user knows as volumes: the root and what is mounted below /media, /run/media and /mnt. In the
/// order of the table, each once.
std::vector<std::string> VolumesIn(std::string_view mountTable);

}  // namespace dravik
