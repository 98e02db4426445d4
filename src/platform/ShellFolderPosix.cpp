#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <system_error>
#include <tuple>
#include <utility>

#include "platform/FileInfoPosix.h"
#include "platform/MountTable.h"
#include "platform/Paths.h"
#include "platform/ShellFolder.h"
#include "platform/Text.h"

namespace dravik {
namespace {

constexpr const char* kFolderType = "folder";

std::string WithoutSlashAtEnd(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

/// Names that come from the file system may begin with "\", so they are not joined as written
/// paths are.
std::string ItemPath(const std::string& folder, std::string_view name) {
    std::string path = folder;
    if (!path.ends_with('/')) path += '/';
    return path.append(name);
}

std::string NameOf(const std::string& path) {
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

// The top ----------------------------------------------------------------------------------------

/// The home folder first, then the mounted volumes.
std::vector<std::string> TopFolders() {
    std::vector<std::string> folders = {WithoutSlashAtEnd(HomeFolder())};
    std::ifstream table("/proc/self/mounts", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(table), {}};
    for (std::string& volume : VolumesIn(text)) {
        if (volume != folders.front()) folders.push_back(std::move(volume));
    }
    return folders;
}

bool IsTopFolder(const std::string& path) {
    const std::vector<std::string> folders = TopFolders();
    return std::find(folders.begin(), folders.end(), path) != folders.end();
}

ShellListing ReadTop() {
    ShellListing listing;
    for (const std::string& path : TopFolders())
        listing.Items.push_back({NameOf(path), path, kFolderType, true});
    listing.Complete = true;
    return listing;
}

// Folders of the file system ----------------------------------------------------------------------

enum class EntryKind { Folder, File, Other };

/// The directory itself tells the kind of most entries; only a link has to be followed.
EntryKind KindOfEntry(int directory, const dirent& entry) {
    if (entry.d_type == DT_DIR) return EntryKind::Folder;
    if (entry.d_type == DT_REG) return EntryKind::File;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return EntryKind::Other;
    FileInfo info;
    if (::fstatat(directory, entry.d_name, &info, 0) != 0) return EntryKind::Other;
    if (S_ISDIR(info.st_mode)) return EntryKind::Folder;
    return S_ISREG(info.st_mode) ? EntryKind::File : EntryKind::Other;
}

struct SortedItem {
    bool IsFile;
    std::string Key;
    ShellItem Item;

    bool operator<(const SortedItem& other) const {
        return std::tie(IsFile, Key, Item.Name) <
               std::tie(other.IsFile, other.Key, other.Item.Name);
    }
};

}  // namespace

ShellListing ReadShellFolder(const std::string& folder) {
    if (folder == kTopFolder) return ReadTop();
    ShellListing listing;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), ::closedir);
    if (!directory) return listing;

    std::vector<SortedItem> items;
    errno = 0;
    while (const dirent* entry = ::readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        const EntryKind kind = name.starts_with('.')
                                   ? EntryKind::Other
                                   : KindOfEntry(::dirfd(directory.get()), *entry);
        if (kind != EntryKind::Other) {
            const bool isFolder = kind == EntryKind::Folder;
            items.push_back({!isFolder, LowerCased(ToUtf8(name)),
                             ShellItem{std::string(name), ItemPath(folder, name),
                                       isFolder ? kFolderType : "", isFolder}});
        }
        errno = 0;  // it alone tells an error from the end
    }
    listing.Complete = errno == 0;

    std::sort(items.begin(), items.end());
    listing.Items.reserve(items.size());
    for (SortedItem& item : items) listing.Items.push_back(std::move(item.Item));
    return listing;
}

std::optional<std::string> ParentFolder(const std::string& folder) {
    if (folder == kTopFolder) return std::nullopt;
    const std::string path = WithoutSlashAtEnd(folder);
    const std::size_t slash = path.rfind('/');
    if (path == "/" || slash == std::string::npos || IsTopFolder(path)) return kTopFolder;
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

bool ShellFolderExists(const std::string& folder) {
    if (folder == kTopFolder) return true;
    const std::optional<FileInfo> info = InfoOf(folder);
    return info && S_ISDIR(info->st_mode);
}

std::string BrowsedPath(const std::string& folder) {
    if (folder == kTopFolder) return folder;
    std::error_code ignored;
    const auto absolute = std::filesystem::absolute(folder, ignored).lexically_normal();
    std::string path = WithoutSlashAtEnd(absolute.native());
    const std::optional<FileInfo> target = InfoOf(path);
    if (!target) return path;
    for (std::size_t slash = 0; slash != std::string::npos; slash = path.find('/', slash + 1)) {
        std::string above = path.substr(0, std::max<std::size_t>(slash, 1));
        const std::optional<FileInfo> info = InfoOf(above);
        if (info && info->st_dev == target->st_dev && info->st_ino == target->st_ino) return above;
    }
    return path;
}

}  // namespace dravik
