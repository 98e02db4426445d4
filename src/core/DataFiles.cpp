#include "core/DataFiles.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace dravik {

namespace {

/// The same place beneath another folder; empty for a path that does not lie beneath `from`.
std::string Moved(const std::string& path, const std::string& from, const std::string& to) {
    if (!path.starts_with(from) || path.find_first_of("/\\", from.size()) != from.size()) return {};
    return JoinPath(to, path.substr(from.size()));
}

}  // namespace

std::vector<std::string> PlacesOf(const std::string& path) {
    std::vector<std::string> places = {path};
    const std::string& installed = basGlobal.Launch.InstalledData;
    if (installed.empty()) return places;
    if (std::string beneath = Moved(path, basGlobal.ProgramFolder, installed); !beneath.empty())
        places.push_back(std::move(beneath));
    return places;
}

std::string DataFile(const std::string& path) {
    for (std::string& place : PlacesOf(path)) {
        if (FileExists(place)) return std::move(place);
    }
    return path;
}

std::string DataFolder(const std::string& path) {
    for (std::string& place : PlacesOf(path)) {
        if (FolderExists(place)) return std::move(place);
    }
    return path;
}

std::vector<std::string> DataFilesMatching(const std::string& folder, std::string_view extension) {
    const std::vector<std::string> places = PlacesOf(folder);
    std::vector<std::string> names = FilesMatching(places.front(), extension);
    if (places.size() == 1) return names;
    std::set<std::string> known;
    for (const std::string& name : names) known.insert(LowerCased(name));
    for (std::string& name : FilesMatching(places.back(), extension)) {
        if (!known.contains(LowerCased(name))) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return LowerCased(a) < LowerCased(b);
    });
    return names;
}

std::string OwnFile(const std::string& file) {
    const GlobalState& g = basGlobal;
    if (g.Launch.InstalledData.empty()) return file;
    const std::string own = Moved(file, g.Launch.InstalledData, g.ProgramFolder);
    return own.empty() ? file : own;
}

}  // namespace dravik
