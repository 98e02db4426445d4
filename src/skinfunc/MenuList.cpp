#include "skinfunc/MenuList.h"

#include "core/basGlobal.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr int kLastMenu = 100;

std::string Menu(int index) {
    return ReadSkinValue("General", "Menu" + std::to_string(index));
}

}  // namespace

std::string NextMenu() {
    for (int i = 0; i <= kLastMenu; ++i) {
        const std::string menu = Menu(i);
        if (menu.empty()) return "mediaplayer";
        if (menu == basGlobal.CurrentMenu) {
            const std::string next = Menu(i + 1);
            return next.empty() ? Menu(0) : next;
        }
    }
    return "+";  // a full list without the current menu: a page that no skin has
}

std::string PreviousMenuInList() {
    // A menu that is not in the list keeps this start, the place of the "_" in "openmenu_-", and so
    // leads to Menu8.
    int match = 9;
    int count = 0;
    for (; count <= kLastMenu; ++count) {
        const std::string menu = Menu(count);
        if (menu == basGlobal.CurrentMenu) match = count;
        if (menu.empty()) break;
    }
    if (count == 0) return "mainmenu";
    if (match == 0) match = count;
    return Menu(match - 1);
}

}  // namespace dravik
