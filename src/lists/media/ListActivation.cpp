#include <algorithm>
#include <string>
#include <utility>

#include "core/UpCalls.h"
#include "lists/basFunctions.h"
#include "lists/media/MediaEntry.h"
#include "platform/At.h"
#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/Profile.h"
#include "platform/ShellFolder.h"
#include "platform/Text.h"
#include "settings/Words.h"

namespace dravik {

std::function<bool(const std::string& file)> PlayMedium = OpenWithSystem;

namespace {

constexpr std::size_t kLongestPath = 4096;

struct MediaSlot {
    int Slot;
    const char* Filter;
};

// The files that the lists with a folder show.
constexpr MediaSlot kMediaSlots[] = {
    {1, "jpg,jpeg,png,bmp,gif,webp,"},  // gallery
    {2, kPlaylistFilter},               // playlist
    {3, kMediaFilter},                  // media
    {6, kMediaFilter},                  // newfiles
};
static_assert(std::ranges::equal(kMediaSlots, kFolderSlots, {}, &MediaSlot::Slot));

const char* FilterOf(int slot) {
    for (const MediaSlot& row : kMediaSlots) {
        if (row.Slot == slot) return row.Filter;
    }
    return nullptr;
}

std::string StartFolder(int slot) {
    const std::string& name = At(basGlobal.FolderName, slot);
    const std::string stated =
        ReadProfileString(basGlobal.IniFile, "Folders", name, "", kLongestPath);
    if (EqualsNoCase(stated, kTopFolder)) return kTopFolder;
    const std::string own = JoinPath(basGlobal.ProgramFolder, stated.empty() ? name : stated);
    if (IsAbsolutePath(stated)) return BrowsedPath(ResolvePath(stated));
    if (!stated.empty() || FolderExists(own)) return BrowsedPath(ResolvePath(own));
    return BrowsedPath(HomeFolder());
}

void SelectByTag(ListSlot& list, const std::string& tag) {
    const auto found = std::find_if(list.Entries.begin(), list.Entries.end(),
                                    [&tag](const ListEntry& entry) { return entry.Tag == tag; });
    if (found != list.Entries.end())
        SelectListEntry(list, static_cast<int>(found - list.Entries.begin()) + 1);
}

/// The nearest folder above that is still there.
std::optional<std::string> FolderAbove(const std::string& folder) {
    std::optional<std::string> above = ParentFolder(folder);
    while (above && !ShellFolderExists(*above)) above = ParentFolder(*above);
    return above;
}

void OpenFolder(int slot, const std::string& folder) {
    const char* filter = FilterOf(slot);
    ShowFolder(slot, filter == nullptr ? "" : filter, BrowsedPath(folder));
}

void TellNotOpened() {
    upCalls.ShowPlainMessage("Media file could not be opened!", kMessageCritical, "Dravik");
}

}  // namespace

void OpenReportFile(const std::string& file) {
    if (!PlayMedium(file))
        upCalls.ShowPlainMessage(Word("The report could not be opened:") + "\n" + file,
                                 kMessageCritical, "Dravik");
}

void FillMediaList(int slot) {
    const char* filter = FilterOf(slot);
    const ListSlot* list = FindList(slot);
    if (filter == nullptr || list == nullptr) return;
    const bool folderGone = !list->Folder.empty() && !ShellFolderExists(list->Folder);
    if (list->Entries.empty() || folderGone) ShowFolder(slot, filter, StartFolder(slot));
}

void OpenParentFolder(int slot) {
    ListSlot* list = FindList(slot);
    if (list == nullptr || list->Entries.empty() || list->Folder.empty()) return;
    const std::string folder = list->Folder;
    const std::string way = list->Entries.front().Tag;
    if (way.starts_with(kPlaylistParentTag)) {
        ShowFolder(slot, kPlaylistFilter, folder);
        SelectByTag(*list, std::string(kPlaylistTag) + way.substr(kTagWordLength));
    } else if (const std::optional<std::string> above = FolderAbove(folder)) {
        OpenFolder(slot, *above);
        SelectByTag(*list, std::string(kFolderTag) + folder);
    }
}

void ActivateListEntry(int slot) {
    const ListSlot* list = FindList(slot);
    if (list == nullptr || list->Selected < 1) return;
    const std::string tag = At(list->Entries, list->Selected - 1).Tag;
    if (tag.starts_with(kReportTag)) return OpenReportFile(tag.substr(kReportTag.size()));
    if (list->Folder.empty()) return;
    if (list->Selected == 1) {
        OpenParentFolder(slot);
        return;
    }
    const std::string path = tag.substr(std::min(kTagWordLength, tag.size()));
    if (tag.starts_with(kFolderTag)) {
        OpenFolder(slot, path);
    } else if (tag.starts_with(kPlaylistTag)) {
        if (!ShowPlaylist(slot, path)) TellNotOpened();
    } else if (tag.starts_with(kMediumTag)) {
        if (!PlayMedium(path)) TellNotOpened();
    }
}

}  // namespace dravik
