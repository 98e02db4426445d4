#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// File names as they stand in settings and skins: "\" or "/" between folders, and outside Windows
/// without regard to case when the exact name does not exist.
namespace dravik {

#ifdef _WIN32
constexpr char kPathSeparator = '\\';
#else
constexpr char kPathSeparator = '/';
#endif

/// The name of the existing file or folder that `path` means; where there is none, the name under
/// which it would be created (existing folders resolved, separators those of the system).
///
/// A name that exists exactly as written wins. Otherwise each component that does not exist is
/// looked for without regard to case; of several such names the first in byte order is taken.
std::string ResolvePath(std::string_view path);

/// True when `path`, resolved, is an existing file (not a folder).
bool FileExists(std::string_view path);

/// True when `path`, resolved, is an existing folder.
bool FolderExists(std::string_view path);

/// Two parts of a path with one separator between them.
std::string JoinPath(std::string_view folder, std::string_view name);

/// True when `path`, resolved and with every link followed, lies beneath the folder. Neither of
/// them need exist.
bool LiesBeneath(std::string_view path, std::string_view folder);

/// Nothing that this program reads whole comes near this size; a file that does is a mistake.
constexpr std::int64_t kLargestFile = std::int64_t{256} << 20;

/// The whole file as bytes; nothing when it cannot be read, is no plain file (a device, a pipe) or
/// holds more than so many bytes.
std::optional<std::string> ReadWholeFile(std::string_view path,
                                         std::int64_t maxBytes = kLargestFile);

/// The size of a plain file in bytes; nothing when there is none.
std::optional<std::int64_t> FileSize(std::string_view path);

/// Replaces the file's content in one step: written beside it, flushed to the disk and renamed over
/// it, so that a kill at any instant leaves the old content or the new. False when that failed; the
/// old file is then unchanged. Permissions of an existing file are kept, a link stays a link, and a
/// write-protected file is not replaced. Of several writers at once the last one wins. A writer
/// that is stuck is waited for at most 400 ms.
bool ReplaceFile(std::string_view path, std::string_view content);

/// Deletes the file and writes it anew, for what is not worth the flush of ReplaceFile. False when
/// it could not be written; there may then be no file or a part of it.
bool WriteFileAnew(std::string_view path, std::string_view content);

/// Makes the folder and those above it, as far as they are missing; true when it is then there.
bool MakeFolder(std::string_view path);

/// Names (not paths) of the files of a folder, without its subfolders, whose names end in
/// `extension` (".ini", compared without regard to case), sorted by name without regard to case.
/// Empty for a missing folder.
std::vector<std::string> FilesMatching(std::string_view folder, std::string_view extension);

/// The folder that holds the running program.
std::string ExecutableFolder();

/// The user's home folder.
std::string HomeFolder();

/// The user's own Dravik folder: $XDG_CONFIG_HOME/dravik (~/.config/dravik), %APPDATA%\Dravik.
std::string UserFolder();

}  // namespace dravik
