#include "settings/SettingsWriter.h"

#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSensorSection = "SensorConfig";
constexpr std::size_t kOptInBytes = 4096;

std::string ReadOptIn(const char* section, const std::string& key) {
    return ReadProfileString(basGlobal.IniFile, section, key, "", kOptInBytes);
}

std::string ReadSetting(const SettingRow& row) {
    switch (row.Form) {
        case SettingForm::Integer:
            return std::to_string(ReadProfileInt(basGlobal.IniFile, row.Section, row.Key, 0));
        case SettingForm::OptIn:
            return ReadOptIn(row.Section, row.Key);
        case SettingForm::Text:
            break;
    }
    return ReadIniString(basGlobal.IniFile, row.Section, row.Key);
}

std::string PortKey(int number) {
    return "COM" + std::to_string(number);
}

ProfileEntry OptInEntry(const char* section, const std::string& key, const std::string& value) {
    if (value.empty()) return {section, key, std::nullopt};
    return {section, key, value};
}

std::vector<ProfileEntry> SettingsEntries(const SettingsValues& values) {
    std::vector<ProfileEntry> entries = {{"Options", "Misc", std::to_string(values.Misc)}};
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        const SettingRow& row = kSettingRows[i];
        if (row.Form == SettingForm::OptIn)
            entries.push_back(OptInEntry(row.Section, row.Key, values.Texts[i]));
        else
            entries.push_back({row.Section, row.Key, values.Texts[i]});
    }
    for (const auto& [number, device] : values.Ports)
        entries.push_back(OptInEntry("Ports", PortKey(number), device));
    for (const auto& [slot, folder] : values.Folders)
        entries.push_back(OptInEntry("Folders", slot, folder));
    return entries;
}

std::vector<ProfileEntry> SensorEntries(const std::vector<SensorRow>& sensors) {
    std::vector<ProfileEntry> entries;
    for (std::size_t n = 0; n < sensors.size(); ++n) {
        const std::string prefix = "Sensor" + std::to_string(n);
        for (std::size_t i = 0; i < kSensorFields.size(); ++i) {
            const std::string key = prefix + kSensorFields[i];
            entries.push_back(i < kSensorColumns ? ProfileEntry{kSensorSection, key, sensors[n][i]}
                                                 : OptInEntry(kSensorSection, key, sensors[n][i]));
        }
    }
    // The end mark. Keys of a longer table behind it stay, but are never read.
    const std::string end = "Sensor" + std::to_string(sensors.size()) + "Function";
    entries.push_back({kSensorSection, end, "0"});
    return entries;
}

/// Without a language there is no sensor file, and perhaps no folder for one either. A table
/// without sensors is then kept as well without it, and the settings can be saved all the same.
bool NeedsNoFile(const std::vector<SensorRow>& sensors) {
    return sensors.empty() && !FileExists(basGlobal.SensorFile) &&
           !FolderExists(basGlobal.LanguagePath);
}

/// A folder of languages that is itself a link was made one by the user, and by no language file.
bool LiesOutside(const std::string& sensorFile) {
    const GlobalState& g = basGlobal;
    return !LiesBeneath(sensorFile, g.ProgramFolder) && !LiesBeneath(sensorFile, g.LanguagePath);
}

bool HaveChanged(const std::vector<SensorRow>& sensors) {
    SensorEditor saved;
    saved.Load(basGlobal.SensorFile);
    return saved.Rows() != sensors;
}

}  // namespace

std::vector<std::string> FolderSlots() {
    std::vector<std::string> slots;
    for (const int slot : kFolderSlots)
        slots.push_back(basGlobal.FolderName[static_cast<std::size_t>(slot)]);
    return slots;
}

SettingsValues ReadSettings() {
    SettingsValues values;
    values.Misc = ReadProfileInt(basGlobal.IniFile, "Options", "Misc", 0);
    for (std::size_t i = 0; i < kSettingCount; ++i) values.Texts[i] = ReadSetting(kSettingRows[i]);
    for (int number = 1; number <= kPortCount; ++number)
        values.Ports[number] = ReadOptIn("Ports", PortKey(number));
    for (const std::string& slot : FolderSlots()) values.Folders[slot] = ReadOptIn("Folders", slot);
    return values;
}

std::optional<NotSaved> SaveSettings(const SettingsValues& values,
                                     const std::vector<SensorRow>& sensors) {
    const GlobalState& g = basGlobal;
    if (g.Launch.KeepsNothing) return NotSaved{OwnFile(g.IniFile)};
    std::vector<ProfileChange> changes = {{g.IniFile, SettingsEntries(values)}};
    const std::string own = OwnFile(g.SensorFile);
    const bool installed = own != g.SensorFile;
    if (LiesOutside(own)) {
        if (HaveChanged(sensors)) return NotSaved{g.SensorFile, true};
    } else if (installed ? HaveChanged(sensors) : !NeedsNoFile(sensors)) {
        // The user's folder may lack the folder of a file that was not the user's until now.
        if (!g.Launch.InstalledData.empty()) MakeFolder(own.substr(0, own.find_last_of("/\\")));
        changes.push_back({own, SensorEntries(sensors), installed ? g.SensorFile : std::string()});
    }
    if (const auto failed = WriteProfiles(changes)) return NotSaved{*failed};
    return std::nullopt;
}

bool SavePort(int number, int baudrate) {
    const GlobalState& g = basGlobal;
    if (!g.Launch.DemoDevice.empty()) return true;
    const auto entry = [](Setting setting, int value) {
        return ProfileEntry{RowOf(setting).Section, RowOf(setting).Key, std::to_string(value)};
    };
    std::vector<ProfileEntry> entries = {entry(Setting::ComPort, number)};
    if (baudrate > 0) entries.push_back(entry(Setting::Baudrate, baudrate));
    return KeepSettings(entries);
}

}  // namespace dravik
