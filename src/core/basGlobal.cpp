#include "core/basGlobal.h"

#include <cmath>

#include "platform/Clock.h"
#include "platform/Paths.h"

namespace dravik {

void InitGlobals(const std::string& programFolder) {
    GlobalState& g = basGlobal;
    g.ProgramFolder = programFolder;
    g.IniFile =
        JoinPath(g.Launch.KeepsNothing ? g.Launch.InstalledData : programFolder, "Dravik.ini");
    g.SkinPath = JoinPath(programFolder, "skins") + kPathSeparator;
    g.LanguagePath = JoinPath(programFolder, "languages") + kPathSeparator;
    g.FolderName = {"extprog",   "gallery",  "playlist",     "media",    "dvdchapters",
                    "phonebook", "newfiles", "troublecodes", "diagnosis"};
    // Several states share a text on purpose: the dots only show that time passes.
    g.StatusText = {
        "",                           // 0
        "Not Connected.",             // 1
        "Comport not found.",         // 2
        "Connected.",                 // 3
        "Connecting",                 // 4
        "Connecting.",                // 5
        "Connecting..",               // 6
        "Connecting...",              // 7
        "Initializing.",              // 8
        "Receiving Data.",            // 9
        "Connecting.",                // 10
        "Connecting..",               // 11
        "Connecting...",              // 12
        "Connecting....",             // 13
        "Open Channel.",              // 14
        "Close Channel.",             // 15
        "Reading Trouble Codes.",     // 16
        "Reading Trouble Codes..",    // 17
        "Resetting Trouble Codes..",  // 18
        "Connecting.",                // 19
        "Diagnosing.",                // 20
        "",                           // 21
        "",                           // 22
        "",                           // 23
    };
    g.StartupFlag = true;
}

double HighResTimer() {
    static const double frequency = static_cast<double>(PerformanceFrequency());
    const double seconds = static_cast<double>(PerformanceCounter()) / frequency;
    return std::floor(seconds * 1e4) / 1e4;
}

}  // namespace dravik
