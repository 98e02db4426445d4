#pragma once

#include <optional>
#include <string>
#include <vector>

/// The name space in which folders are browsed: one top folder, beneath it everything that can be
/// reached. Folders are named by their paths; paths and names are bytes as the system has them.
namespace dravik {

/// The path of the top of the name space: the desktop on Windows; elsewhere a folder of this
/// program's own that lists the home folder and the mounted volumes.
constexpr const char* kTopFolder = "Desktop";

struct ShellItem {
    std::string Name;  ///< as shown; of a file always with its extension
    std::string Path;
    std::string Type;  ///< of a folder: what the system calls its kind; empty for files
    bool IsFolder = false;
};

struct ShellListing {
    std::vector<ShellItem> Items;
    bool Complete = false;  ///< false when reading failed; Items is then what was read before
};

/// The items of a folder, without hidden ones. On Windows in the order of the shell; elsewhere
/// folders and files each sorted by name without regard to case. Links appear as what they lead
/// to; a link that leads nowhere, or in a circle, does not appear.
ShellListing ReadShellFolder(const std::string& folder);

/// The folder above; nothing for the top of the name space. The folder itself need not exist.
std::optional<std::string> ParentFolder(const std::string& folder);

/// True when the folder exists now.
bool ShellFolderExists(const std::string& folder);

/// The path under which a folder is browsed: absolute, and without the detours that links make. A
/// folder that is one of those above it gives the path of that one, so that no path grows while
/// links are followed in a circle.
std::string BrowsedPath(const std::string& folder);

}  // namespace dravik
