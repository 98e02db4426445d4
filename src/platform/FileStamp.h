#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace dravik {

/// What tells a file from the same file changed, or from another one put in its place.
struct FileStamp {
    std::int64_t Modified;  ///< in the system's own unit, like Changed
    std::int64_t Changed;   ///< of what the system notes about the file, or when it was made
    std::int64_t Size;
    std::uint64_t File;  ///< 0 where the system has no cheap answer, like Device
    std::uint64_t Device;
    bool operator==(const FileStamp&) const = default;
};

/// The stamp of the file of exactly this name; nothing when there is none.
std::optional<FileStamp> StampOf(const std::string& path);

/// False while the file may change again under the same stamp: systems count time in steps.
bool IsSettled(const FileStamp& stamp);

}  // namespace dravik
