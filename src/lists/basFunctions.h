#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "core/basGlobal.h"

/// The skin lists: nine slots with entries and a selection, which exist whether or not the page
/// shows them.
namespace dravik {

/// The slot of that number; numbers outside 0 to 8 have none.
ListSlot* FindList(int slot);

/// The slot of the list that was built last on the page; none when the page has no list.
ListSlot* CurrentList();

/// The slot that a list element's function names ("media", "troublecodes", ...); -1 for none.
int ListSlotByName(std::string_view name);

/// Empties a slot.
void ClearList(ListSlot& list);

/// Adds an entry; the first one becomes the selection.
void AddListEntry(ListSlot& list, ListEntry entry);

/// The list-selection routine: selects an entry by its 1-based index. Below 1 selects the first
/// entry, above the count the last; an empty list is left alone.
void SelectListEntry(ListSlot& list, int index);

/// Rebuilds the list of trouble codes (slot 7) from DtcList and DtcCount, with their descriptions;
/// one entry "No Errors" when there are none.
void ShowTroubleCodes();

/// File that holds the picture of an entry: the folder (with a separator at its end), the picture
/// key and ".png", ".bmp", ".gif" or ".jpg". Empty when there is none.
std::string ListPictureFile(const std::string& folder, const std::string& pictureKey);

// Media browser -----------------------------------------------------------------------------------

/// Fills a slot's list from a folder and makes that the slot's current folder: the way up, then the
/// folders, then the files that the filter names. A failure ends the filling with the message
/// "Media Directory not found!", which is waited for; what was added before stays.
///
/// The tag of the way up is the folder's path, or "rooootDesktop" at the top of the name space. The
/// tag of any other entry is a word of six characters, "folder", "PlList" (a playlist) or "Medium"
/// (any other file), and the path.
/// @param slot    0 to 8
/// @param filter  extensions, each followed by ",": "mp3,wav,pls,"; compared without regard to case
/// @param folder  a path, or kTopFolder
/// @return false after a failure, and for a slot number outside 0 to 8, which changes nothing
bool ShowFolder(int slot, const std::string& filter, std::string folder);

/// True when the folder has one above it; only the top of the name space has none.
bool HasParentFolder(const std::string& folder);

/// The lower-cased text after the last "." of a name, empty when there is none.
std::string FileExtension(std::string_view name);

/// Fills a slot's list with the tracks of a playlist file (".pls", ".m3u", ".m3u8"). The first
/// entry leads back to the playlists; its tag is "plspar" and the file's path. The slot's current
/// folder stays.
/// @return false when the slot does not exist or the file cannot be read; the list is then as it
/// was
bool ShowPlaylist(int slot, const std::string& playlist);

/// Fills a media list that shows nothing yet, or whose folder has gone, from its start folder: the
/// key of section Folders that is named like the slot, else a folder of that name in the program
/// folder, else the user's home. A slot that is no media list is left alone.
void FillMediaList(int slot);

/// The way up of a media list: from a playlist to the playlists of its folder, from a folder to the
/// one above it; the entry just left is selected. Does nothing at the top of the name space, and
/// for a list that shows no folder.
void OpenParentFolder(int slot);

/// Activates the selected entry of a media list: a folder or a playlist is shown in its place, the
/// first entry goes up, any other file is handed to the system's player for its type. A file that
/// cannot be opened is told to the user. An entry that stands for a report opens that. Other lists
/// are left alone.
void ActivateListEntry(int slot);

/// The word at the front of the tag of an entry that stands for a report; its path follows.
constexpr std::string_view kReportTag = "Report";

/// Hands a report to the system's viewer. One that cannot be opened is told to the user.
void OpenReportFile(const std::string& file);

/// Plays a file or what an address ("http://...") stands for; false when it cannot be. Replaceable;
/// from the start it asks the system.
extern std::function<bool(const std::string& file)> PlayMedium;

// Trouble codes -----------------------------------------------------------------------------------

/// True while the list of trouble codes shows at least one.
bool CodesListed();

/// True while the list's one entry says that there are no codes.
bool NoCodesListed();

/// The selected trouble code with its whole text, which does not scroll; the code alone where its
/// text is not known, and nothing while no code is listed.
std::string SelectedTroubleCode();

/// The tick of tiDTCScroll: rotates the text of the selected trouble code by one character, all of
/// it behind the code, its colon and its blank.
void ScrollTroubleCode();

}  // namespace dravik
