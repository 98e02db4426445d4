#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/basGlobal.h"
#include "platform/Profile.h"

/// The settings file Dravik.ini, the files named through it, the sensor table and the resume state.
namespace dravik {

constexpr int kPortCount = 32;  ///< ports that the settings can name: COM1 to COM32

/// The text of a key of an ini file, at most 255 bytes. A missing key reads as "0", never as an
/// empty text, so a caller that tests for absence compares with "0".
std::string ReadIniString(const std::string& file, std::string_view section, std::string_view key);

constexpr std::size_t kSkinValueBytes = 63;

/// One key of the current skin file: at most kSkinValueBytes, empty when missing.
std::string ReadSkinValue(const std::string& section, const std::string& key);

/// Writes into the settings file. Nothing is written, which the user was told at the start, when no
/// settings are kept: the settings file is then an installed one.
/// @return false when it could not be written
bool KeepSettings(const std::vector<ProfileEntry>& entries);

/// Reads the settings file and the files named through it, loads the sensor table, sets the first
/// `ConnState` and the intervals of tiHardware and tiMain. tiMain and tiAux are off meanwhile and
/// then as they were before.
void LoadSettings();

/// The key of the section Options that names the sensor in a tile of the page "panel", 1 to 4.
std::string PanelKey(int tile);

// Skins -------------------------------------------------------------------------------------------

/// The names of the skins that there are, in alphabetical order.
std::vector<std::string> SkinNames();

/// The name of the skin to show: that of the command line, else the one that a command chose, else
/// the settings' one for the night while it is night, else the settings' one.
std::string CurrentSkin();

/// Makes a skin the one to show and keeps that in the settings; the page is the caller's business.
/// @param name  in any case
/// @return false when there is no such skin
bool ChooseSkin(const std::string& name);

/// The same with the skin behind the current one, the first behind the last, among those that are
/// made for screens of the same shape: upright, or not.
bool ChooseNextSkin();

/// For a new user: where the current skin is made for screens of the other shape, the first one of
/// this shape with the same look for day or night, if there is one, takes its place. A skin of the
/// command line stays. It is kept in the settings but for a demonstration.
void ChooseSkinForScreen(bool upright);

/// Looks whether the night has begun or ended by the settings NightFrom and NightTo; the skin that
/// a command chose then gives way.
/// @return whether another skin is to be shown
bool FollowClock();

/// Takes the skin file of the current skin, and its image folder.
void FindSkinFiles();

/// Looks anew where the file of the same skin and its image folder lie: the user may have got one
/// of his own, or the skin names another folder.
void FindSkinFilesAgain();

// Language ----------------------------------------------------------------------------------------

/// The names of the languages that there are, in alphabetical order.
std::vector<std::string> LanguageNames();

/// Takes the language from the command line or the settings file and the units from the settings
/// file, and loads what belongs to them: words, sensor table, the file with the texts of the codes.
/// Which sensors are on stays as it is.
void LoadLanguage();

/// Chooses a language by the name of its file, keeps it in the settings and loads it. What cannot
/// be kept, which is told on standard error, holds until the end of the program.
///
/// @return false when there is no such language; nothing is changed then
bool ChooseLanguage(const std::string& name);

/// Name of the current language.
std::string CurrentLanguage();

/// Chooses the units in the same manner, whatever those of the language are.
void ChooseUnits(const std::string& units);

constexpr const char* kMetric = "metric";
constexpr const char* kImperial = "imperial";

/// The units of the current sensor file: kMetric or kImperial.
std::string CurrentUnits();

// Keyboard, sensors, resume -----------------------------------------------------------------------

/// Starts the on-screen keyboard that the settings name.
///
/// @return what the user is to be told when there is none; empty when it was started
std::string StartKeyboard();

/// Starts it unless it is running already. Without one nothing happens.
void BringUpKeyboard();

/// The sensor files that a language file names, for all units.
std::vector<std::string> SensorFilesOf(const std::string& languageFile);

/// The bytes that a sensor names, "2" or "0-1", with the number that stands for no value behind
/// them if there is one, as in "1!FF"; nothing for an empty text. A text that names none of the
/// bytes that a number holds gives a range that no reply has.
std::optional<ByteRange> ReadByteRange(std::string_view text);

/// The sensors of the section SensorConfig of a sensor file, at most kSensorLimit, all of them off.
std::vector<SensorRecord> ReadSensors(const std::string& sensorFile);

/// Fills the sensor table from the section SensorConfig of the sensor file.
///
/// @return false when the file names more than 91 sensors: the first 91 are loaded and the fault is
///         reported on standard error
bool LoadSensorConfig();

/// The page that a new user is shown at the start; further ones of the welcome begin with that.
constexpr const char* kWelcomePage = "welcome";

/// True while the settings say that the welcome is to be shown: those of a new user do.
bool WelcomeAsked();

/// The user has left the welcome, which is never shown again.
void EndWelcome();

/// Takes the sensors' on/off states and the menus from the Resume section, as far as the options
/// ask for it.
void LoadResumeState();

/// Writes the Resume section.
void SaveResumeState();

}  // namespace dravik
