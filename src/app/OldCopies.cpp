#include "app/OldCopies.h"

#include <filesystem>
#include <optional>
#include <vector>

#include "platform/Paths.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

fs::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string TextOf(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

/// The plain files in a folder and beneath, or the one that the path names itself.
std::vector<fs::path> FilesIn(const fs::path& root) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(root, error);
    if (fs::is_regular_file(status)) return {root};
    std::vector<fs::path> files;
    if (!fs::is_directory(status)) return files;
    fs::recursive_directory_iterator entry(root, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (fs::is_regular_file(entry->symlink_status(ignored))) files.push_back(entry->path());
    }
    return files;
}

/// True for one and the same file by two names, as after linking one folder to the other.
bool IsSame(const fs::path& a, const fs::path& b) {
    std::error_code error;
    return fs::equivalent(a, b, error);
}

bool IsCopy(const fs::path& own, const std::string& installed, bool cutShort) {
    const std::optional<std::string> content = ReadWholeFile(TextOf(own));
    const std::optional<std::string> original = ReadWholeFile(installed);
    if (!content || !original) return false;
    return cutShort ? original->starts_with(*content) : *original == *content;
}

/// Takes away the folders that a file has left empty; not the root.
void RemoveEmptyFolders(const fs::path& root, fs::path name) {
    std::error_code error;
    do name = name.parent_path();
    while (!name.empty() && fs::remove(root / name, error));
}

}  // namespace

OldCopies RemoveOldCopies(const std::string& folder, const std::string& installed, bool cutShort) {
    OldCopies result;
    const fs::path root = PathOf(folder);
    for (const char* part : {"skins", "languages", "Dravik.jpg"}) {
        for (const fs::path& own : FilesIn(PathOf(ResolvePath(JoinPath(folder, part))))) {
            const fs::path name = own.lexically_relative(root);
            const std::string original = ResolvePath(JoinPath(installed, TextOf(name)));
            if (!FileExists(original) || IsSame(own, PathOf(original))) continue;
            std::error_code error;
            if (!IsCopy(own, original, cutShort))
                ++result.Differing;
            else if (fs::remove(own, error))
                RemoveEmptyFolders(root, name);
            else
                result.AllGone = false;
        }
    }
    return result;
}

}  // namespace dravik
