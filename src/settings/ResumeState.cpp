#include <cstdio>

#include "core/basGlobal.h"
#include "platform/Profile.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "Resume";
constexpr const char* kFirstMenu = "mainmenu";
constexpr std::size_t kResumeSensors = 90;  // one character per sensor 1 to 90

bool HasOption(int bit) {
    return (basGlobal.Misc & bit) != 0;
}

}  // namespace

bool WelcomeAsked() {
    return ReadProfileInt(basGlobal.IniFile, "Options", "Welcome", 0) == 1;
}

void EndWelcome() {
    basGlobal.Welcoming = false;
    if (!KeepSettings({{"Options", "Welcome", std::nullopt}}))
        std::fprintf(stderr, "%s: could not be written\n", basGlobal.IniFile.c_str());
}

void LoadResumeState() {
    GlobalState& g = basGlobal;
    const std::string states = ReadIniString(g.IniFile, kSection, "SensorActive");
    // The two ranges differ on purpose: a saved text speaks of sensors 1 to 90, the default
    // switches on 0 to 89.
    if (states.size() == kResumeSensors && HasOption(kMiscResumeSensors)) {
        for (std::size_t i = 1; i <= kResumeSensors; ++i)
            g.Sensors[i].Active = states[i - 1] == '1';
    } else {
        for (std::size_t i = 0; i < kResumeSensors; ++i) g.Sensors[i].Active = true;
    }

    if (HasOption(kMiscResumeMenu)) {
        g.CurrentMenu = ReadIniString(g.IniFile, kSection, "Menu");
        g.PreviousMenu = ReadIniString(g.IniFile, kSection, "PreviousMenu");
    } else {
        g.CurrentMenu = kFirstMenu;
        g.PreviousMenu = kFirstMenu;
    }
}

void SaveResumeState() {
    const GlobalState& g = basGlobal;
    std::string states;  // stays empty without the option, so that all sensors come up active
    if (HasOption(kMiscResumeSensors)) {
        for (std::size_t i = 1; i <= kResumeSensors; ++i) states += g.Sensors[i].Active ? '1' : '0';
    }
    std::vector<ProfileEntry> entries = {{kSection, "SensorActive", states}};
    if (HasOption(kMiscResumeMenu)) {
        entries.push_back({kSection, "Menu", g.CurrentMenu});
        entries.push_back({kSection, "PreviousMenu", g.PreviousMenu});
    }
    if (!KeepSettings(entries))
        std::fprintf(stderr, "%s: the resume state could not be written\n", g.IniFile.c_str());
}

}  // namespace dravik
