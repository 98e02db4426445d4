#include <algorithm>
#include <string>

#include "lists/basFunctions.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr std::size_t kFixedCharacters = 7;  // the code, its colon and its blank do not scroll

/// Length in bytes of the character at the front of a text: a whole UTF-8 sequence, or one byte of
/// any other text.
std::size_t FirstCharacter(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

}  // namespace

void ShowTroubleCodes() {
    ListSlot& list = basGlobal.Lists[kCodeListSlot];
    ClearList(list);
    if (basGlobal.DtcCount < 1) {
        AddListEntry(list, {"No Errors", "", "No Errors"});
        return;
    }
    const std::size_t count =
        std::min<std::size_t>(static_cast<std::size_t>(basGlobal.DtcCount), kCodeLimit);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& code = basGlobal.DtcList[i];
        // A code that the file does not know is shown with the reader's "0".
        const std::string line =
            code + ": " + ReadIniString(basGlobal.DescriptionFile, "errorcodes", code) + ". ";
        AddListEntry(list, {line, "", line});
    }
}

void ScrollTroubleCode() {
    ListSlot& list = basGlobal.Lists[kCodeListSlot];
    if (list.Entries.empty() || list.Selected < 1) return;
    std::string& text = list.Entries[static_cast<std::size_t>(list.Selected - 1)].Text;
    if (text.size() <= kFixedCharacters) return;
    const std::string_view moving = std::string_view(text).substr(kFixedCharacters);
    const std::size_t first = IsUtf8(text) ? FirstCharacter(moving) : 1;
    std::rotate(text.begin() + kFixedCharacters,
                text.begin() + static_cast<std::ptrdiff_t>(kFixedCharacters + first), text.end());
    ++list.Changes;
}

}  // namespace dravik
