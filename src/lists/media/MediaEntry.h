#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/basGlobal.h"

/// What the files of the media browser share.
namespace dravik {

// The word at the front of an entry's tag; all have the same length.
constexpr std::string_view kFolderTag = "folder";
constexpr std::string_view kPlaylistTag = "PlList";
constexpr std::string_view kMediumTag = "Medium";
constexpr std::string_view kPlaylistParentTag = "plspar";
constexpr std::string_view kTopTag = "rooootDesktop";
constexpr std::size_t kTagWordLength = 6;

/// Pictures of entries that stand for no file type.
constexpr const char* kParentPicture = "parent";
constexpr const char* kStandardPicture = "standard";

/// Extensions of the files that a player takes, as a filter; playlists are among them.
constexpr const char* kMediaFilter =
    "mp3,wav,ogg,oga,opus,flac,m4a,aac,wma,avi,mpg,mpeg,mp4,m4v,mkv,mov,wmv,webm,pls,m3u,"
    "m3u8,";
constexpr const char* kPlaylistFilter = "*.pls,*.m3u,*.m3u8,";

/// Which files a list shows, and with which picture: that of its extension when the skin has one.
class MediaFilter {
 public:
    /// @param filter  extensions, each followed by ","
    explicit MediaFilter(const std::string& filter);

    /// The entry of a file; nothing when the filter does not name its extension.
    std::optional<ListEntry> Entry(std::string_view fileName, const std::string& text,
                                   const std::string& path) const;

    /// The entry of something that is not on any disk, such as "http://host/stream".
    ListEntry Address(const std::string& text, const std::string& address) const;

 private:
    /// The picture key for an extension.
    std::string PictureFor(const std::string& extension) const;

    std::string filter_;
    std::string knownPictures_;  ///< ".mp3.wav": the extensions that the skin has a picture for
};

/// Picture key of a folder whose kind the system calls by that text.
const char* FolderPicture(std::string_view type);

/// True for the extension (lower case) of a file that lists others.
bool IsPlaylist(const std::string& extension);

/// True for a path that does not hang on any folder: "/x", "\x", "C:\x".
bool IsAbsolutePath(std::string_view path);

}  // namespace dravik
