#include <algorithm>
#include <string>
#include <utility>

#include "core/DataFiles.h"
#include "core/UpCalls.h"
#include "lists/basFunctions.h"
#include "lists/media/MediaEntry.h"
#include "platform/Paths.h"
#include "platform/ShellFolder.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr const char* kPictureEndings[] = {".png", ".bmp", ".gif", ".jpg"};

struct DrivePicture {
    std::string_view Type;
    const char* Picture;
};

// The shell's own German words for drives; on a system in any other language, a drive looks like
// a folder. Skins rely on that.
constexpr DrivePicture kDrivePictures[] = {
    {"Lokaler Datenträger", "harddisk"},
    {"CD-Laufwerk", "cddrive"},
    {"Wechseldatenträger", "removeable"},
};

/// The shell shows archives as folders; they are kept out. The name that it shows may lack the
/// extension.
bool IsArchive(const std::string& path) {
    const std::string extension = FileExtension(path);
    return extension == "zip" || extension == "rar";
}

std::string Tag(std::string_view word, const std::string& path) {
    return std::string(word) + path;
}

/// Those extensions of a filter that the skin has a picture for.
std::string KnownPictures(const std::string& filter) {
    std::string known;
    for (const std::string_view ending : kPictureEndings) {
        for (const std::string& file : DataFilesMatching(basGlobal.ImageFolder, ending)) {
            const std::string name = LowerCased(file.substr(0, file.size() - ending.size()));
            if (filter.find(name + ",") != std::string::npos) known += "." + name;
        }
    }
    return known;
}

}  // namespace

const char* FolderPicture(std::string_view type) {
    for (const DrivePicture& row : kDrivePictures) {
        if (row.Type == type) return row.Picture;
    }
    return "folder";
}

std::string ListPictureFile(const std::string& folder, const std::string& pictureKey) {
    if (pictureKey.empty() || pictureKey.find_first_of("/\\") != std::string::npos) return {};
    for (const char* ending : kPictureEndings) {
        std::string file = folder + pictureKey + ending;
        if (FileExists(DataFile(file))) return file;
    }
    return {};
}

MediaFilter::MediaFilter(const std::string& filter)
    : filter_(LowerCased(filter)), knownPictures_(KnownPictures(filter_)) {}

std::optional<ListEntry> MediaFilter::Entry(std::string_view fileName, const std::string& text,
                                            const std::string& path) const {
    const std::string extension = FileExtension(fileName);
    if (extension.empty() || filter_.find(extension + ",") == std::string::npos)
        return std::nullopt;
    return ListEntry{text, PictureFor(extension),
                     Tag(IsPlaylist(extension) ? kPlaylistTag : kMediumTag, path)};
}

ListEntry MediaFilter::Address(const std::string& text, const std::string& address) const {
    return {text, PictureFor(FileExtension(address)), Tag(kMediumTag, address)};
}

std::string MediaFilter::PictureFor(const std::string& extension) const {
    const bool pictured =
        !extension.empty() && knownPictures_.find("." + extension) != std::string::npos;
    return pictured ? extension : kStandardPicture;
}

bool IsPlaylist(const std::string& extension) {
    return extension == "pls" || extension == "m3u" || extension == "m3u8";
}

bool IsAbsolutePath(std::string_view path) {
    return path.starts_with('/') || path.starts_with('\\') || (path.size() > 1 && path[1] == ':');
}

std::string FileExtension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string{}
                                         : LowerCased(std::string(name.substr(dot + 1)));
}

bool HasParentFolder(const std::string& folder) {
    return ParentFolder(folder).has_value();
}

bool ShowFolder(int slot, const std::string& filter, std::string folder) {
    ListSlot* list = FindList(slot);
    if (list == nullptr) return false;
    list->Folder = std::move(folder);
    ClearList(*list);
    const bool hasParent = HasParentFolder(list->Folder);
    AddListEntry(*list, {"..", kParentPicture, hasParent ? list->Folder : std::string(kTopTag)});

    const ShellListing listing = ReadShellFolder(list->Folder);
    for (const ShellItem& item : listing.Items) {
        if (!item.IsFolder || IsArchive(item.Path)) continue;
        AddListEntry(*list, {item.Name, FolderPicture(item.Type), Tag(kFolderTag, item.Path)});
    }
    const MediaFilter files(filter);
    for (const ShellItem& item : listing.Items) {
        if (item.IsFolder) continue;
        if (auto entry = files.Entry(item.Name, item.Name, item.Path))
            AddListEntry(*list, std::move(*entry));
    }
    if (!listing.Complete)
        upCalls.ShowPlainMessage("Media Directory not found!", kMessageCritical, "Dravik");
    return listing.Complete;
}

}  // namespace dravik
