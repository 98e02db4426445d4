#include <algorithm>
#include <cstdio>

#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr std::string_view kIniExtension = ".ini";

std::string ReadOption(std::string_view key) {
    return ReadProfileString(basGlobal.IniFile, "Options", key, "", 255);
}

/// Minutes since midnight of a time such as "21:30"; nothing for any other text.
std::optional<int> MinutesOf(const std::string& text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) return std::nullopt;
    const auto part = [](std::string_view digits, int limit) -> std::optional<int> {
        const bool number = !digits.empty() && digits.size() <= 2 &&
                            digits.find_first_not_of("0123456789") == std::string_view::npos;
        const int value = number ? static_cast<int>(LeadingNumber(digits)) : limit;
        return value < limit ? std::optional(value) : std::nullopt;
    };
    const auto hour = part(std::string_view(text).substr(0, colon), 24);
    const auto minute = part(std::string_view(text).substr(colon + 1), 60);
    if (!hour || !minute) return std::nullopt;
    return *hour * 60 + *minute;
}

/// Names of the ini files of a folder, without the extension.
std::vector<std::string> IniNames(const std::string& folder) {
    std::vector<std::string> names;
    for (const std::string& file : DataFilesMatching(folder, kIniExtension)) {
        // A file that is nothing but the extension has no name to choose it by.
        if (file.size() > kIniExtension.size())
            names.push_back(file.substr(0, file.size() - kIniExtension.size()));
    }
    return names;
}

/// The skin of that name, in any case, among all; the end when there is none.
auto FindSkin(const std::vector<std::string>& names, const std::string& name) {
    return std::find_if(names.begin(), names.end(),
                        [&name](const std::string& skin) { return EqualsNoCase(skin, name); });
}

bool SkinExists(const std::string& name) {
    const std::vector<std::string> names = SkinNames();
    return FindSkin(names, name) != names.end();
}

/// True from NightFrom to NightTo, over midnight if need be. Without both, or a skin for the night,
/// it is never night: at least the other one is there to be seen.
bool NightByClock() {
    const auto from = MinutesOf(ReadOption("NightFrom"));
    const auto to = MinutesOf(ReadOption("NightTo"));
    if (!from || !to || !SkinExists(ReadOption("NightSkin"))) return false;
    const LocalTime time = SystemTime();
    const int now = time.Hour * 60 + time.Minute;
    return *from <= *to ? now >= *from && now < *to : now >= *from || now < *to;
}

std::string SkinFileOf(const std::string& skin) {
    return DataFile(basGlobal.SkinPath + skin + std::string(kIniExtension));
}

/// True for a skin that is made for screens that stand upright.
bool Upright(const std::string& skin) {
    const std::string file = SkinFileOf(skin);
    const auto size = [&file](const char* key) { return ReadProfileInt(file, "General", key, 0); };
    return size("Height") > size("Width");
}

/// True when both are for the day, or neither.
bool SameLook(const std::string& one, const std::string& other) {
    const auto look = [](const std::string& skin) {
        return ReadProfileString(SkinFileOf(skin), "General", "Look", "", 255);
    };
    return EqualsNoCase(look(one), look(other));
}

/// The skins of that shape, in alphabetical order.
std::vector<std::string> SkinsThatStand(bool upright) {
    std::vector<std::string> names = SkinNames();
    std::erase_if(names, [upright](const std::string& name) { return Upright(name) != upright; });
    return names;
}

}  // namespace

std::vector<std::string> SkinNames() {
    return IniNames(basGlobal.SkinPath);
}

std::vector<std::string> LanguageNames() {
    return IniNames(basGlobal.LanguagePath);
}

std::string CurrentSkin() {
    const GlobalState& g = basGlobal;
    if (!g.Launch.Skin.empty()) return g.Launch.Skin;
    if (!g.ChosenSkin.empty()) return g.ChosenSkin;
    if (g.NightNow) return ReadOption("NightSkin");
    return ReadIniString(g.IniFile, "Options", "Skin");
}

bool ChooseSkin(const std::string& name) {
    GlobalState& g = basGlobal;
    const std::vector<std::string> names = SkinNames();
    const auto found = FindSkin(names, name);
    if (found == names.end()) return false;
    g.Launch.Skin.clear();
    g.ChosenSkin = *found;
    if (!KeepSettings({{"Options", "Skin", *found}}))
        std::fprintf(stderr, "%s: the skin could not be written\n", g.IniFile.c_str());
    FindSkinFiles();
    return true;
}

bool ChooseNextSkin() {
    const std::vector<std::string> names = SkinsThatStand(Upright(CurrentSkin()));
    if (names.empty()) return false;
    const auto found = FindSkin(names, CurrentSkin());
    const bool last = found == names.end() || std::next(found) == names.end();
    return ChooseSkin(last ? names.front() : *std::next(found));
}

void ChooseSkinForScreen(bool upright) {
    GlobalState& g = basGlobal;
    const std::string current = CurrentSkin();
    if (!g.Launch.Skin.empty() || Upright(current) == upright) return;
    const std::vector<std::string> names = SkinsThatStand(upright);
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        return SameLook(name, current);
    });
    if (found == names.end()) return;
    if (g.Launch.DemoDevice.empty())
        ChooseSkin(*found);
    else
        g.ChosenSkin = *found;
}

bool FollowClock() {
    GlobalState& g = basGlobal;
    const bool night = NightByClock();
    if (night == g.NightNow) return false;
    g.NightNow = night;
    g.ChosenSkin.clear();
    const std::string before = g.SkinFile;
    FindSkinFiles();
    return g.SkinFile != before;
}

}  // namespace dravik
