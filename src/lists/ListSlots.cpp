#include <algorithm>
#include <utility>

#include "lists/basFunctions.h"
#include "platform/At.h"

namespace dravik {

ListSlot* FindList(int slot) {
    return FindAt(basGlobal.Lists, slot);
}

ListSlot* CurrentList() {
    return FindList(basGlobal.CurrentList);
}

int ListSlotByName(std::string_view name) {
    const auto& names = basGlobal.FolderName;
    // The one slot with several contents: the section stands behind its name.
    if (name.starts_with(names[kDiagnosisSlot] + "_")) return kDiagnosisSlot;
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

void ClearList(ListSlot& list) {
    list.Entries.clear();
    list.Selected = 0;
    ++list.Changes;
}

void AddListEntry(ListSlot& list, ListEntry entry) {
    list.Entries.push_back(std::move(entry));
    if (list.Selected == 0) list.Selected = 1;
    ++list.Changes;
}

void SelectListEntry(ListSlot& list, int index) {
    if (list.Entries.empty()) return;
    list.Selected = std::clamp(index, 1, static_cast<int>(list.Entries.size()));
}

}  // namespace dravik
