#pragma once

#include <cstddef>
#include <iterator>
#include <optional>

/// The settings that have a text in the settings file and a field in the settings dialog: one row
/// each. Reading, writing and the dialog's tab "General" go over the rows; what the program does
/// with a setting is read where settings are loaded.
namespace dravik {

/// How a number is stepped.
struct NumberSteps {
    double Step = 1;  ///< above 1 the multiples of it are gone through; 0 for what is no number
    std::optional<double> Lowest{};
    bool OrNothing = false;  ///< below the lowest number the field is emptied
};

/// The settings, in the order of their rows.
enum class Setting : std::size_t {
    Skin,
    NightSkin,
    NightFrom,
    NightTo,
    Language,
    Units,
    OSKPath,
    ComPort,
    BusInitDelay,
    UpdateIntervall,
    RefreshRate,
    Baudrate,
    Reconnect,
    Decoding,
    Count,
};

/// How the text of a key is read and written.
enum class SettingForm {
    Text,     ///< a missing key reads as "0"
    Integer,  ///< the number that the program reads, missing as 0
    OptIn,    ///< an empty text stands for a key that is not there
};

/// The frame of the tab "General" that a field stands in.
enum class SettingFrame { Interface, Skin, Language, Keyboard, Additions };

/// What a field offers to choose from, besides what is typed.
enum class SettingChoice { None, Skins, Languages, Units, Ports, Baudrates };

struct SettingRow {
    const char* Section;
    const char* Key;
    SettingForm Form;

    const char* Field;  ///< name of the control
    SettingFrame Frame;
    const char* Caption = "";  ///< empty where the frame's title says it
    bool Wide = false;         ///< has a row of the frame to itself
    SettingChoice Choice = SettingChoice::None;
    const char* Prefix = "";  ///< stands before the value in the field only
    NumberSteps Steps{.Step = 0};
    const char* Unit = "";
    const char* WhenEmpty = "";  ///< shown in an empty field
    const char* Ticked = "";     ///< the field is a check box: what it writes when it is ticked
    const char* Note = "";       ///< explains it, below it
};

inline constexpr const char* kStandard = "standard";  ///< OBD/Decoding

constexpr NumberSteps kMilliseconds{.Step = 10, .Lowest = 1};

/// In the order in which they are written and stand in their frames.
inline constexpr SettingRow kSettingRows[] = {
    {.Section = "Options",
     .Key = "Skin",
     .Form = SettingForm::Text,
     .Field = "coSkin",
     .Frame = SettingFrame::Skin,
     .Wide = true,
     .Choice = SettingChoice::Skins},
    {.Section = "Options",
     .Key = "NightSkin",
     .Form = SettingForm::OptIn,
     .Field = "coNightSkin",
     .Frame = SettingFrame::Skin,
     .Caption = "At night",
     .Wide = true,
     .Choice = SettingChoice::Skins,
     .WhenEmpty = "the same"},
    {.Section = "Options",
     .Key = "NightFrom",
     .Form = SettingForm::OptIn,
     .Field = "tNightFrom",
     .Frame = SettingFrame::Skin,
     .Caption = "Night from",
     .WhenEmpty = "21:00"},
    {.Section = "Options",
     .Key = "NightTo",
     .Form = SettingForm::OptIn,
     .Field = "tNightTo",
     .Frame = SettingFrame::Skin,
     .Caption = "to",
     .WhenEmpty = "6:00"},
    {.Section = "Options",
     .Key = "Language",
     .Form = SettingForm::Text,
     .Field = "coLanguage",
     .Frame = SettingFrame::Language,
     .Wide = true,
     .Choice = SettingChoice::Languages},
    {.Section = "Options",
     .Key = "Units",
     .Form = SettingForm::OptIn,
     .Field = "coUnits",
     .Frame = SettingFrame::Language,
     .Caption = "Units",
     .Wide = true,
     .Choice = SettingChoice::Units,
     .WhenEmpty = "Like the language"},
    {.Section = "Options",
     .Key = "OSKPath",
     .Form = SettingForm::Text,
     .Field = "tOSKPath",
     .Frame = SettingFrame::Keyboard},
    {.Section = "OBD",
     .Key = "ComPort",
     .Form = SettingForm::Integer,
     .Field = "coCommSelect",
     .Frame = SettingFrame::Interface,
     .Caption = "Port",
     .Choice = SettingChoice::Ports,
     .Prefix = "COM"},
    {.Section = "OBD",
     .Key = "BusInitDelay",
     .Form = SettingForm::Integer,
     .Field = "tBusInitDelay",
     .Frame = SettingFrame::Interface,
     .Caption = "Businit Delay",
     .Steps = {.Lowest = 0},
     .Unit = "s"},
    {.Section = "OBD",
     .Key = "UpdateIntervall",
     .Form = SettingForm::Integer,
     .Field = "tUpdateIntervall",
     .Frame = SettingFrame::Interface,
     .Caption = "Update Intervall",
     .Steps = kMilliseconds,
     .Unit = "ms"},
    {.Section = "OBD",
     .Key = "RefreshRate",
     .Form = SettingForm::Integer,
     .Field = "tRefreshRate",
     .Frame = SettingFrame::Interface,
     .Caption = "Screen Refresh",
     .Steps = kMilliseconds,
     .Unit = "ms"},
    {.Section = "OBD",
     .Key = "Baudrate",
     .Form = SettingForm::OptIn,
     .Field = "coBaudrate",
     .Frame = SettingFrame::Additions,
     .Caption = "Baudrate",
     .Choice = SettingChoice::Baudrates,
     .WhenEmpty = "9600"},
    {.Section = "OBD",
     .Key = "Reconnect",
     .Form = SettingForm::OptIn,
     .Field = "tReconnect",
     .Frame = SettingFrame::Additions,
     .Caption = "Reconnect every",
     .Steps = {.Lowest = 1, .OrNothing = true},
     .Unit = "s",
     .WhenEmpty = "never"},
    {.Section = "OBD",
     .Key = "Decoding",
     .Form = SettingForm::OptIn,
     .Field = "chDecoding",
     .Frame = SettingFrame::Interface,
     .Caption = "Decode by the standard",
     .Wide = true,
     .Ticked = kStandard,
     .Note = "Reads the codes and freeze frames of every control unit, on all buses."},
};

constexpr std::size_t kSettingCount = static_cast<std::size_t>(Setting::Count);
static_assert(std::size(kSettingRows) == kSettingCount);

constexpr std::size_t Index(Setting setting) {
    return static_cast<std::size_t>(setting);
}

constexpr const SettingRow& RowOf(Setting setting) {
    return kSettingRows[Index(setting)];
}

}  // namespace dravik
