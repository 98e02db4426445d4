#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "lists/basFunctions.h"
#include "lists/media/MediaEntry.h"
#include "platform/Number.h"
#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/Profile.h"
#include "platform/ProfileEncoding.h"
#include "platform/ProfileLine.h"
#include "platform/Text.h"

namespace dravik {

namespace {

struct Track {
    std::string File;
    std::string Title;
};

/// The number behind a key's word: 12 for "File12" and the word "file".
std::optional<int> NumberBehind(std::string_view key, std::string_view word) {
    if (!EqualsNoCase(key.substr(0, word.size()), word)) return std::nullopt;
    return WholeNumber(key.substr(word.size()));
}

/// Takes the value unless an earlier line has named one.
void TakeValue(std::string& field, std::string_view value) {
    if (field.empty()) field = value;
}

/// The next line of a playlist without its line end.
std::string_view TakeLine(std::string_view& text) {
    std::string_view line = TakeProfileLine(text);
    line.remove_suffix(ProfileLineEnd(line).size());
    return line;
}

/// A file of keys: the tracks by their numbers, which need not begin at 1 or be in order.
std::vector<Track> NumberedTracks(std::string_view text) {
    std::map<int, Track> numbered;
    bool inPlaylist = true;
    while (!text.empty()) {
        const ProfileLine line = ParseProfileLine(TakeLine(text));
        if (line.Kind == ProfileLineKind::Section) inPlaylist = EqualsNoCase(line.Name, "playlist");
        if (!inPlaylist || line.Kind != ProfileLineKind::Entry) continue;
        if (const auto number = NumberBehind(line.Name, "file"))
            TakeValue(numbered[*number].File, line.Value);
        else if (const auto titled = NumberBehind(line.Name, "title"))
            TakeValue(numbered[*titled].Title, line.Value);
    }
    std::vector<Track> tracks;
    for (auto& [number, track] : numbered) tracks.push_back(std::move(track));
    return tracks;
}

/// A file of names, one a line; "#EXTINF:seconds,title" in front of one gives its title, and every
/// other line with "#" is a comment.
std::vector<Track> ListedTracks(std::string_view text) {
    constexpr std::string_view kTitleMark = "#EXTINF:";
    std::vector<Track> tracks;
    std::string title;
    while (!text.empty()) {
        std::string_view line = Trimmed(TakeLine(text));
        while (line.ends_with('\r')) line.remove_suffix(1);
        if (EqualsNoCase(line.substr(0, kTitleMark.size()), kTitleMark)) {
            const std::size_t comma = line.find(',');
            title = comma == std::string_view::npos ? "" : Trimmed(line.substr(comma + 1));
        } else if (!line.empty() && !line.starts_with('#')) {
            tracks.push_back({std::string(line), std::exchange(title, {})});
        }
    }
    return tracks;
}

std::vector<Track> ReadTracks(const std::string& playlist, std::string content) {
    const std::string decoded = DecodeProfile(std::move(content));
    std::string_view text = decoded;
    text.remove_prefix(ProfileByteOrderMark(text).size());
    return FileExtension(playlist) == "pls" ? NumberedTracks(text) : ListedTracks(text);
}

/// A track that is named without a folder of its own lies beside its playlist.
std::string TrackPath(const std::string& playlist, const std::string& file) {
    if (IsAbsolutePath(file)) return file;
    const std::size_t separator = playlist.rfind(kPathSeparator);
    return separator == std::string::npos ? file
                                          : JoinPath(playlist.substr(0, separator + 1), file);
}

std::optional<ListEntry> TrackEntry(const MediaFilter& files, const std::string& playlist,
                                    const Track& track) {
    if (IsAddress(track.File) && !FileOfAddress(track.File))
        return files.Address(track.Title.empty() ? track.File : track.Title, track.File);
    // A playlist may come from anywhere, so it leads to media files only, never to programs.
    const std::string file = FileOfAddress(track.File).value_or(track.File);
    const std::string name = file.substr(file.find_last_of("/\\") + 1);
    return files.Entry(name, track.Title.empty() ? name : track.Title, TrackPath(playlist, file));
}

}  // namespace

bool ShowPlaylist(int slot, const std::string& playlist) {
    ListSlot* list = FindList(slot);
    const std::string path = ResolvePath(playlist);
    std::optional<std::string> content = ReadWholeFile(path, kLargestProfile);
    if (list == nullptr || !content) return false;

    ClearList(*list);
    AddListEntry(*list, {"..", kParentPicture, std::string(kPlaylistParentTag) + path});
    const MediaFilter files(kMediaFilter);
    for (const Track& track : ReadTracks(path, std::move(*content))) {
        if (auto entry = TrackEntry(files, path, track)) AddListEntry(*list, std::move(*entry));
    }
    return true;
}

}  // namespace dravik
