#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <utility>

#include "lists/MediaEntry.h"
#include "lists/basFunctions.h"
#include "platform/Paths.h"
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
    const std::string_view digits = key.substr(word.size());
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

/// Takes the value unless an earlier line has named one.
void TakeValue(std::string& field, std::string_view value) {
    if (field.empty()) field = value;
}

/// The tracks by their numbers, which need not begin at 1 or be in order.
std::map<int, Track> ReadTracks(std::string_view text) {
    std::map<int, Track> tracks;
    bool inPlaylist = true;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = Trimmed(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        if (line.starts_with('[')) inPlaylist = EqualsNoCase(line, "[playlist]");
        const std::size_t equals = line.find('=');
        if (!inPlaylist || line.starts_with(';') || equals == std::string_view::npos) continue;
        const std::string_view key = Trimmed(line.substr(0, equals));
        const std::string_view value = Trimmed(line.substr(equals + 1));
        if (const auto number = NumberBehind(key, "file"))
            TakeValue(tracks[*number].File, value);
        else if (const auto titled = NumberBehind(key, "title"))
            TakeValue(tracks[*titled].Title, value);
    }
    return tracks;
}

/// A track that is named without a folder of its own lies beside its playlist.
std::string TrackPath(const std::string& playlist, const std::string& file) {
    if (IsAbsolutePath(file)) return file;
    const std::size_t separator = playlist.rfind(kPathSeparator);
    return separator == std::string::npos ? file
                                          : JoinPath(playlist.substr(0, separator + 1), file);
}

}  // namespace

bool ShowPlaylist(int slot, const std::string& playlist) {
    ListSlot* list = FindList(slot);
    const std::string path = ResolvePath(playlist);
    const std::optional<std::string> text = ReadWholeFile(path);
    if (list == nullptr || !text) return false;

    ClearList(*list);
    AddListEntry(*list, {"..", kParentPicture, std::string(kPlaylistParentTag) + path});
    const MediaFilter files(kMediaFilter);
    for (const auto& [number, track] : ReadTracks(*text)) {
        // A playlist may come from anywhere, so it leads to media files only, never to programs.
        const std::string_view name =
            std::string_view(track.File).substr(track.File.find_last_of("/\\") + 1);
        const std::string title = track.Title.empty() ? std::string(name) : track.Title;
        if (auto entry = files.Entry(name, title, TrackPath(path, track.File)))
            AddListEntry(*list, std::move(*entry));
    }
    return true;
}

}  // namespace dravik
