#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace dravik {

using FileInfo = struct stat;

/// What the system knows of a file or folder, links followed; nothing when it cannot be asked.
inline std::optional<FileInfo> InfoOf(const std::string& path) {
    FileInfo info;
    if (path.find('\0') != std::string::npos || ::stat(path.c_str(), &info) != 0)
        return std::nullopt;
    return info;
}

}  // namespace dravik
