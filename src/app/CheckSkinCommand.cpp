#include "app/CheckSkinCommand.h"

#include <QGuiApplication>
#include <cstdio>

#include "app/ProgramFolder.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "settings/basSettings.h"
#include "skin/SkinFile.h"
#include "skin/check/CheckSkin.h"

namespace dravik {

namespace {

enum : int { kClean = 0, kWithFindings = 1, kNotReadable = 2 };

/// Why there is nothing to check; empty when there is.
std::string WhyNot() {
    const GlobalState& g = basGlobal;
    if (ProfileTooLarge(g.SkinFile)) return "the skin is larger than 16 MB: " + g.SkinFile;
    if (!ReadWholeFile(g.SkinFile)) return "the skin cannot be read: " + g.SkinFile;
    if (ProfileSections(g.SkinFile).empty()) return "the skin has no section: " + g.SkinFile;
    if (!FileExists(g.LanguageFile)) return "the language cannot be read: " + g.LanguageFile;
    if (!FileExists(g.SensorFile)) return "the sensor file cannot be read: " + g.SensorFile;
    return {};
}

}  // namespace

int CheckSkinCommand(const CommandLine& line) {
    int count = 1;
    char name[] = "dravik";
    char* arguments[] = {name, nullptr};
#ifndef _WIN32
    qputenv("QT_QPA_PLATFORM", "offscreen");  // needs no display
#endif
    const QGuiApplication application(count, arguments);  // finds the picture formats and the fonts
    basGlobal.Launch.Skin = line.Skin;
    basGlobal.Launch.Language = line.Language;
    InitGlobals(FindProgramFolder(line.Folder, basGlobal.Launch));
    LoadSettings();

    if (const std::string reason = WhyNot(); !reason.empty()) {
        std::fprintf(stderr, "dravik: %s\n", reason.c_str());
        return kNotReadable;
    }
    LoadSkinFonts();
    const std::vector<SkinError> findings = CheckSkin();
    for (const SkinError& finding : findings)
        std::printf("%s: %s\n", finding.Context().c_str(), finding.Description.c_str());
    return findings.empty() ? kClean : kWithFindings;
}

}  // namespace dravik
