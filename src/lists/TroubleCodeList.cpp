#include <algorithm>
#include <string>

#include "core/UpCalls.h"
#include "lists/basFunctions.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kNoErrors = "No Errors";
constexpr std::size_t kFixedCharacters = 7;  // the code, its colon and its blank do not scroll

/// Where the character behind the one at `index` begins, at most the end of the text. A character
/// is a whole UTF-8 sequence, or one byte of any other text.
std::size_t NextCharacter(const std::string& text, std::size_t index) {
    const bool utf8 = IsUtf8(text);
    do {
        if (index >= text.size()) return text.size();
        ++index;
    } while (utf8 && (static_cast<unsigned char>(text[index]) & 0xC0) == 0x80);
    return index;
}

}  // namespace

void ShowTroubleCodes() {
    ListSlot& list = basGlobal.Lists[kCodeListSlot];
    ClearList(list);
    if (basGlobal.DtcCount < 1) {
        AddListEntry(list, {kNoErrors, "", kNoErrors});
        upCalls.SwitchCodeTicker();
        return;
    }
    for (const std::string& code : CodesInUse()) {
        // A code that the file does not know is shown with the reader's "0".
        const std::string line =
            code + ": " + ReadIniString(basGlobal.DescriptionFile, "errorcodes", code) + ". ";
        AddListEntry(list, {line, "", line});
    }
    upCalls.SwitchCodeTicker();
}

bool NoCodesListed() {
    const ListSlot& list = basGlobal.Lists[kCodeListSlot];
    return !list.Entries.empty() && list.Entries.front().Tag == kNoErrors;
}

bool CodesListed() {
    // The interface may count codes that have not been read, while the list says that there are
    // none.
    return basGlobal.DtcCount > 0 && !basGlobal.Lists[kCodeListSlot].Entries.empty() &&
           !NoCodesListed();
}

std::string SelectedTroubleCode() {
    const ListSlot& list = basGlobal.Lists[kCodeListSlot];
    if (!CodesListed() || list.Selected < 1) return {};
    // The tag is the line as it was before it scrolled.
    const std::string& line = At(list.Entries, list.Selected - 1).Tag;
    const std::string code = line.substr(0, line.find(':'));
    return line == code + ": 0. " ? code : std::string(Trimmed(line));
}

void ScrollTroubleCode() {
    ListSlot& list = basGlobal.Lists[kCodeListSlot];
    if (list.Entries.empty() || list.Selected < 1) return;
    std::string& text = At(list.Entries, list.Selected - 1).Text;
    std::size_t start = 0;
    for (std::size_t i = 0; i < kFixedCharacters; ++i) start = NextCharacter(text, start);
    const std::size_t next = NextCharacter(text, start);
    const auto at = [&text](std::size_t index) {
        return text.begin() + static_cast<std::ptrdiff_t>(index);
    };
    std::rotate(at(start), at(next), text.end());
    ++list.Changes;
}

}  // namespace dravik
