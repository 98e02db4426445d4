#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "settings/SensorEditor.h"

/// The settings as the settings dialog edits them: texts as typed.
namespace dravik {

struct SettingsValues {
    int Misc = 0;
    std::string Skin;
    std::string Language;
    std::string OSKPath;
    std::string ComPort;  ///< the number only
    std::string BusInitDelay;
    std::string UpdateIntervall;
    std::string RefreshRate;

    // Opt-in keys: an empty text stands for a key that is not there.
    std::string Baudrate;
    std::string Reconnect;
    std::map<int, std::string> Ports;            ///< device by port number, 1 to 32
    std::map<std::string, std::string> Folders;  ///< folder by the name of the list slot
};

/// The names of the list slots that show a folder.
std::vector<std::string> FolderSlots();

/// The settings that stand in the settings file. Numbers are read as the program reads them.
SettingsValues ReadSettings();

/// Writes the settings into the settings file and the rows into the current sensor file, with the
/// end mark behind them. Each file is written in one step, so that it is either the old or the new
/// one whatever happens. The larger one, the sensor file, goes first: a disk that has no room for
/// it leaves both as they were.
///
/// @return the file that could not be written; nothing when all is saved
std::optional<std::string> SaveSettings(const SettingsValues& values,
                                        const std::vector<SensorRow>& sensors);

}  // namespace dravik
