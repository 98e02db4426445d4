#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/FileInfoPosix.h"
#include "platform/PathNames.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace dravik {
namespace {

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    DIR* const directory = ::opendir(folder.c_str());
    if (directory == nullptr) return names;
    while (const dirent* entry = ::readdir(directory)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") names.emplace_back(name);
    }
    ::closedir(directory);
    return names;
}

/// The entry of a folder that differs from the wanted name only in case (or in its encoding: skins
/// may be Windows-1252). The first in byte order where several do; empty where none does.
std::string EntryWithoutCase(const std::string& folder, std::string_view wanted) {
    const std::string wantedLower = LowerCased(ToUtf8(wanted));
    std::string found;
    for (std::string& name : NamesIn(folder)) {
        if (!found.empty() && found < name) continue;
        if (LowerCased(ToUtf8(name)) == wantedLower) found = std::move(name);
    }
    return found;
}

/// Follows a path component by component, without regard to case where the exact name is missing.
/// From the first missing component on, the rest stays as it is.
std::string PathWithoutCase(std::string_view path) {
    std::string resolved;
    bool missing = false;
    while (!path.empty()) {
        const std::size_t length = path.find('/');
        const std::string_view name = path.substr(0, length);
        if (!name.empty()) {
            std::string exact = resolved + std::string(name);
            if (!missing && !InfoOf(exact)) {
                const std::string entry = EntryWithoutCase(resolved.empty() ? "." : resolved, name);
                missing = entry.empty();
                if (!missing) exact = resolved + entry;
            }
            resolved = std::move(exact);
        }
        if (length == std::string_view::npos) break;
        if (!resolved.ends_with('/')) resolved += '/';
        path.remove_prefix(length + 1);
    }
    return resolved;
}

/// What a path means under which there is nothing. As a rule its folder is there, and only the last
/// name has to be looked for.
std::string OtherSpelling(const std::string& path) {
    const std::size_t name = path.rfind('/') + 1;
    std::string folder = path.substr(0, name);
    if (name < 2 || name == path.size() || !InfoOf(folder)) return PathWithoutCase(path);
    const std::string entry = EntryWithoutCase(folder, std::string_view(path).substr(name));
    return entry.empty() ? path : folder + entry;
}

struct ResolvedFile {
    std::string Path;
    std::optional<FileInfo> Info;
};

ResolvedFile Resolve(std::string_view path) {
    std::string exact(path);
    std::optional<FileInfo> info = InfoOf(exact);
    if (info || exact.find('\0') != std::string::npos) return {std::move(exact), info};
    if (exact.find('\\') != std::string::npos) {
        std::replace(exact.begin(), exact.end(), '\\', '/');
        info = InfoOf(exact);
        if (info) return {std::move(exact), info};
    }
    std::string found = OtherSpelling(exact);
    if (found != exact) info = InfoOf(found);
    return {std::move(found), info};
}

}  // namespace

std::string ResolvePath(std::string_view path) {
    return Resolve(path).Path;
}

bool FileExists(std::string_view path) {
    const std::optional<FileInfo> info = Resolve(path).Info;
    return info && !S_ISDIR(info->st_mode);
}

bool FolderExists(std::string_view path) {
    const std::optional<FileInfo> info = Resolve(path).Info;
    return info && S_ISDIR(info->st_mode);
}

bool LiesBeneath(std::string_view path, std::string_view folder) {
    namespace fs = std::filesystem;
    const auto canonical = [](std::string_view name) {
        std::error_code error;
        const fs::path whole = fs::absolute(ResolvePath(name), error);
        return fs::weakly_canonical(whole, error);
    };
    const fs::path relative = canonical(path).lexically_relative(canonical(folder));
    return !relative.empty() && relative != "." && *relative.begin() != "..";
}

std::optional<std::int64_t> FileSize(std::string_view path) {
    const std::optional<FileInfo> info = Resolve(path).Info;
    if (!info || !S_ISREG(info->st_mode)) return std::nullopt;
    return info->st_size;
}

std::optional<std::string> ReadWholeFile(std::string_view path, std::int64_t maxBytes) {
    const ResolvedFile file = Resolve(path);
    // Pipes and devices would block or never end.
    if (!file.Info || !S_ISREG(file.Info->st_mode) || file.Info->st_size > maxBytes)
        return std::nullopt;
    const int descriptor = ::open(file.Path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return std::nullopt;

    // One byte more than expected, so that the read that finds the end needs no larger buffer.
    std::string content(static_cast<std::size_t>(file.Info->st_size) + 1, '\0');
    std::size_t length = 0;
    ssize_t count = 0;
    do {
        if (length == content.size()) content.resize(length * 2);
        count = ::read(descriptor, content.data() + length, content.size() - length);
        if (count > 0) length += static_cast<std::size_t>(count);
        if (length > static_cast<std::size_t>(maxBytes)) break;  // it has grown meanwhile
    } while (count > 0 || (count < 0 && errno == EINTR));
    ::close(descriptor);
    if (count < 0 || length > static_cast<std::size_t>(maxBytes)) return std::nullopt;
    content.resize(length);
    return content;
}

bool WriteFileAnew(std::string_view path, std::string_view content) {
    const std::string name = ResolvePath(path);
    ::unlink(name.c_str());
    std::ofstream file(name, std::ios::binary);
    file << content;
    file.close();
    return !file.fail();
}

std::vector<std::string> FileNamesIn(const std::string& resolvedFolder) {
    std::vector<std::string> names = NamesIn(resolvedFolder);
    std::erase_if(names, [&](const std::string& name) {
        const std::optional<FileInfo> info = InfoOf(resolvedFolder + '/' + name);
        return !info || S_ISDIR(info->st_mode);
    });
    return names;
}

std::string ExecutableFolder() {
    std::string path(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0) return ".";
    path.resize(static_cast<std::size_t>(length));
    return path.substr(0, path.rfind('/'));
}

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') return home;
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr ? user->pw_dir : "/";
}

std::string UserFolder() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    // Only an absolute path counts there.
    if (config != nullptr && *config == '/') return JoinPath(config, "dravik");
    return JoinPath(HomeFolder(), ".config/dravik");
}

}  // namespace dravik
