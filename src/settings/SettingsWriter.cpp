#include "settings/SettingsWriter.h"

#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

enum class Read { Text, Integer, OptIn };

struct TextSetting {
    const char* Section;
    const char* Key;
    std::string SettingsValues::*Value;
    Read As;
};

/// In the order in which they are written.
constexpr TextSetting kTextSettings[] = {
    {"Options", "Skin", &SettingsValues::Skin, Read::Text},
    {"Options", "Language", &SettingsValues::Language, Read::Text},
    {"Options", "OSKPath", &SettingsValues::OSKPath, Read::Text},
    {"OBD", "ComPort", &SettingsValues::ComPort, Read::Integer},
    {"OBD", "BusInitDelay", &SettingsValues::BusInitDelay, Read::Integer},
    {"OBD", "UpdateIntervall", &SettingsValues::UpdateIntervall, Read::Integer},
    {"OBD", "RefreshRate", &SettingsValues::RefreshRate, Read::Integer},
    {"OBD", "Baudrate", &SettingsValues::Baudrate, Read::OptIn},
    {"OBD", "Reconnect", &SettingsValues::Reconnect, Read::OptIn},
};

constexpr const char* kSensorSection = "SensorConfig";
constexpr std::size_t kOptInBytes = 4096;

std::string ReadOptIn(const char* section, const std::string& key) {
    return ReadProfileString(basGlobal.IniFile, section, key, "", kOptInBytes);
}

std::string ReadSetting(const TextSetting& setting) {
    switch (setting.As) {
        case Read::Integer:
            return std::to_string(
                ReadProfileInt(basGlobal.IniFile, setting.Section, setting.Key, 0));
        case Read::OptIn:
            return ReadOptIn(setting.Section, setting.Key);
        case Read::Text:
            break;
    }
    return ReadIniString(basGlobal.IniFile, setting.Section, setting.Key);
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
    for (const TextSetting& setting : kTextSettings) {
        const std::string& value = values.*setting.Value;
        if (setting.As == Read::OptIn)
            entries.push_back(OptInEntry(setting.Section, setting.Key, value));
        else
            entries.push_back({setting.Section, setting.Key, value});
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
        for (std::size_t i = 0; i < kSensorFields.size(); ++i)
            entries.push_back({kSensorSection, prefix + kSensorFields[i], sensors[n][i]});
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
bool SensorsLieOutside() {
    const GlobalState& g = basGlobal;
    return !LiesBeneath(g.SensorFile, g.ProgramFolder) &&
           !LiesBeneath(g.SensorFile, g.LanguagePath);
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
    for (const TextSetting& setting : kTextSettings) values.*setting.Value = ReadSetting(setting);
    for (int number = 1; number <= kPortCount; ++number)
        values.Ports[number] = ReadOptIn("Ports", PortKey(number));
    for (const std::string& slot : FolderSlots()) values.Folders[slot] = ReadOptIn("Folders", slot);
    return values;
}

std::optional<NotSaved> SaveSettings(const SettingsValues& values,
                                     const std::vector<SensorRow>& sensors) {
    const GlobalState& g = basGlobal;
    // The sensors on the screen are then those of the installation, and not the user's to change.
    if (!g.Launch.InstalledData.empty()) return NotSaved{g.IniFile};
    std::vector<ProfileChange> changes = {{g.IniFile, SettingsEntries(values)}};
    if (SensorsLieOutside()) {
        if (HaveChanged(sensors)) return NotSaved{g.SensorFile, true};
    } else if (!NeedsNoFile(sensors)) {
        changes.push_back({g.SensorFile, SensorEntries(sensors)});
    }
    if (const auto failed = WriteProfiles(changes)) return NotSaved{*failed};
    return std::nullopt;
}

}  // namespace dravik
