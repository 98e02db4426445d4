#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "settings/SensorEditor.h"
#include "settings/SettingsTable.h"

/// The settings as the settings dialog edits them: texts as typed.
namespace dravik {

struct SettingsValues {
    int Misc = 0;
    std::array<std::string, kSettingCount> Texts;  ///< by their rows

    // Opt-in keys: an empty text stands for a key that is not there.
    std::map<int, std::string> Ports;            ///< device by port number, 1 to 32
    std::map<std::string, std::string> Folders;  ///< folder by the name of the list slot

    const std::string& operator[](Setting setting) const { return Texts[Index(setting)]; }
};

/// The names of the list slots that show a folder.
std::vector<std::string> FolderSlots();

/// A file that could not be written.
struct NotSaved {
    std::string File;
    bool Outside = false;  ///< it lies outside the program folder and may not be
};

/// The settings that stand in the settings file. Numbers are read as the program reads them.
SettingsValues ReadSettings();

/// Writes the settings into the settings file and the rows into the current sensor file, with the
/// end mark behind them, in one step: when one of them cannot be written, both stay as they were.
///
/// Rows of an installed sensor file go, when they have changed, into a file of the same name in the
/// user's folder, which counts from then on.
///
/// The sensor file is named by the language file, which may come from anywhere. One that leads out
/// of the program folder, links included, is read but never written: rows that have changed are
/// then refused, and the settings are saved without them when they have not.
///
/// @return what could not be written; nothing when all is saved
std::optional<NotSaved> SaveSettings(const SettingsValues& values,
                                     const std::vector<SensorRow>& sensors);

/// Writes the port and its speed into the settings file; a speed of 0 leaves that as it is. The
/// demo's settings are not the user's and stay as they are.
/// @return false when they could not be written
bool SavePort(int number, int baudrate);

}  // namespace dravik
