#include "platform/Paths.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "platform/FileReplacement.h"
#include "platform/PathNames.h"
#include "platform/Text.h"

namespace dravik {

std::string JoinPath(std::string_view folder, std::string_view name) {
    constexpr std::string_view kSeparators = "/\\";
    if (folder.empty()) return std::string(name);
    while (!name.empty() && kSeparators.find(name.front()) != std::string_view::npos)
        name.remove_prefix(1);
    std::string path(folder);
    if (kSeparators.find(path.back()) == std::string_view::npos) path += kPathSeparator;
    return path.append(name);
}

std::vector<std::string> FilesMatching(std::string_view folder, std::string_view extension) {
    std::vector<std::pair<std::string, std::string>> matching;  // sort key, name
    for (std::string& name : FileNamesIn(ResolvePath(folder))) {
        if (name.size() < extension.size()) continue;
        const std::string_view tail = std::string_view(name).substr(name.size() - extension.size());
        if (EqualsNoCase(tail, extension)) matching.emplace_back(LowerCased(name), std::move(name));
    }
    std::sort(matching.begin(), matching.end());
    std::vector<std::string> names;
    for (auto& [key, name] : matching) names.push_back(std::move(name));
    return names;
}

bool MakeFolder(std::string_view path) {
    const std::string name = ResolvePath(path);
    std::error_code error;
    std::filesystem::create_directories(std::u8string(name.begin(), name.end()), error);
    return FolderExists(name);
}

bool ReplaceFile(std::string_view path, std::string_view content) {
    const FolderLock lock({std::string(path)});
    return lock.Held() && FileReplacement(path, content).Commit();
}

}  // namespace dravik
