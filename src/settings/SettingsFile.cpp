#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/SettingsTable.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr std::size_t kIniStringBytes = 255;
constexpr int kDefaultUpdateInterval = 50;  // milliseconds
constexpr int kDefaultRefreshRate = 100;    // milliseconds

std::string ReadOption(std::string_view key) {
    return ReadIniString(basGlobal.IniFile, "Options", key);
}

int ReadInterval(std::string_view key, int defaultMs) {
    const int interval = ReadProfileInt(basGlobal.IniFile, "OBD", key, 0);
    return interval < 1 ? defaultMs : interval;
}

void ReadMisc() {
    GlobalState& g = basGlobal;
    g.Misc = static_cast<std::int16_t>(ReadProfileInt(g.IniFile, "Options", "Misc", 0));
    g.HidePointer = (g.Misc & kMiscHidePointer) != 0;
}

void ReadPanel() {
    constexpr std::array<const char*, kPanelTiles> kUsual = {
        "rpm.engine", "speed", "temp.enginecoolant", "value.loadcalculated"};
    for (std::size_t i = 0; i < kUsual.size(); ++i) {
        const std::string sensor = ReadOption(PanelKey(static_cast<int>(i) + 1));
        basGlobal.PanelSensors[i] = sensor == "0" ? kUsual[i] : LowerCased(ToUtf8(sensor));
    }
}

/// The virtual vehicle of the demo is always connected to.
bool ConnectAtStart() {
    return (basGlobal.Misc & kMiscAutoConnect) != 0 || !basGlobal.Launch.DemoDevice.empty();
}

}  // namespace

std::string ReadIniString(const std::string& file, std::string_view section, std::string_view key) {
    return ReadProfileString(file, section, key, "0", kIniStringBytes);
}

std::string ReadSkinValue(const std::string& section, const std::string& key) {
    return ReadProfileString(basGlobal.SkinFile, section, key, "", kSkinValueBytes);
}

std::string PanelKey(int tile) {
    return "Panel" + std::to_string(tile);
}

bool KeepSettings(const std::vector<ProfileEntry>& entries) {
    const GlobalState& g = basGlobal;
    return g.Launch.KeepsNothing || WriteProfileEntries(g.IniFile, entries);
}

void FindSkinFiles() {
    GlobalState& g = basGlobal;
    g.SkinFile = g.SkinPath + CurrentSkin() + ".ini";
    FindSkinFilesAgain();
}

void FindSkinFilesAgain() {
    GlobalState& g = basGlobal;
    g.SkinFile = DataFile(OwnFile(g.SkinFile));
    g.ImageFolder = DataFolder(g.SkinPath + ReadIniString(g.SkinFile, "General", "Imagefolder")) +
                    kPathSeparator;
}

void LoadSettings() {
    GlobalState& g = basGlobal;
    const bool mainWasOn = g.tiMain.Enabled();
    const bool auxWasOn = g.tiAux.Enabled();
    g.tiMain.SetEnabled(false);
    g.tiAux.SetEnabled(false);

    const int scalePercent = ReadProfileInt(g.IniFile, "Options", "ScaleImageWidth", 0);
    g.ImageScale = static_cast<float>(scalePercent) / 100.0F;
    ReadMisc();
    LoadLanguage();
    g.OSKPath = ReadOption("OSKPath");
    g.OSKFound = FileExists(g.OSKPath);
    g.SaveFolder = JoinPath(g.ProgramFolder, "save");
    FollowClock();
    FindSkinFiles();
    ReadPanel();
    g.ConnState = ConnectAtStart() ? kConnecting : kNotConnected;
    g.ReconnectSeconds = ReadProfileInt(g.IniFile, "OBD", "Reconnect", 0);
    g.StandardDecoding = EqualsNoCase(ReadIniString(g.IniFile, "OBD", "Decoding"), kStandard);
    g.tiHardware.SetInterval(ReadInterval("UpdateIntervall", kDefaultUpdateInterval));
    g.tiMain.SetInterval(ReadInterval("RefreshRate", kDefaultRefreshRate));

    g.tiMain.SetEnabled(mainWasOn);
    g.tiAux.SetEnabled(auxWasOn);
}

}  // namespace dravik
