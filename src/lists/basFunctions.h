#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/basGlobal.h"
#include "lists/ShowTroubleCodes.h"

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

/// The tick of tiDTCScroll: rotates the text of the selected trouble code by one character, all of
/// it behind the code, its colon and its blank.
void ScrollTroubleCode();

}  // namespace dravik
