#include "platform/MountTable.h"

#include <algorithm>

namespace dravik {
namespace {

constexpr std::string_view kVolumeFolders[] = {"/media/", "/run/media/", "/mnt/"};

bool IsVolume(std::string_view folder) {
    return folder == "/" ||
           std::any_of(std::begin(kVolumeFolders), std::end(kVolumeFolders),
                       [folder](std::string_view start) { return folder.starts_with(start); });
}

/// The second field of a line; empty when there is none.
std::string_view FolderField(std::string_view line) {
    const std::size_t start = line.find(' ');
    if (start == std::string_view::npos) return {};
    line.remove_prefix(start + 1);
    return line.substr(0, line.find(' '));
}

/// "\040" and the like stand for the characters that would break up the line.
std::string Unescaped(std::string_view field) {
    constexpr std::size_t kDigits = 3;
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const std::string_view digits = field.substr(i + 1, kDigits);
        if (field[i] == '\\' && digits.size() == kDigits &&
            std::all_of(digits.begin(), digits.end(), isOctal)) {
            int code = 0;
            for (const char digit : digits) code = code * 8 + (digit - '0');
            text += static_cast<char>(code);
            i += kDigits;
        } else {
            text += field[i];
        }
    }
    return text;
}

}  // namespace

std::vector<std::string> VolumesIn(std::string_view mountTable) {
    std::vector<std::string> volumes;
    while (!mountTable.empty()) {
        const std::size_t length = std::min(mountTable.find('\n'), mountTable.size());
        std::string folder = Unescaped(FolderField(mountTable.substr(0, length)));
        const bool known = std::find(volumes.begin(), volumes.end(), folder) != volumes.end();
        if (!known && IsVolume(folder)) volumes.push_back(std::move(folder));
        mountTable.remove_prefix(std::min(length + 1, mountTable.size()));
    }
    return volumes;
}

}  // namespace dravik
