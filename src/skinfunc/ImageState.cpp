#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// The number behind any six characters: "button3" and "slider3" both give 3.
double NumberBehindName(std::string_view argument) {
    constexpr std::size_t kNameLength = 6;
    return argument.size() <= kNameLength ? 0 : LeadingNumber(argument.substr(kNameLength));
}

bool ButtonSelected(std::string_view argument) {
    return basGlobal.FocusedButton == NumberBehindName(argument);
}

bool SliderSelected(std::string_view argument) {
    return basGlobal.FocusedSlider == NumberBehindName(argument);
}

bool NothingSelected(std::string_view) {
    return basGlobal.FocusedButton == kNoFocus && basGlobal.FocusedSlider == kNoFocus;
}

bool Connected(std::string_view) {
    return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
}

bool Connecting(std::string_view) {
    return basGlobal.ConnState == kConnecting || basGlobal.ConnState == kInitializing;
}

bool Active(std::string_view) {
    return LinkActive();
}

bool Finding(std::string_view) {
    return Searching();
}

/// What the vehicle said of its lamp and codes holds while there is a link to it.
bool LinkUp() {
    const int state = basGlobal.ConnState;
    return state == kConnected || state == kReceivingData || state == kReadingCodes ||
           state == kClearingCodes;
}

bool CodeKnown(std::string_view) {
    return LinkUp() && basGlobal.DtcCount > 0;
}

bool CodesRead(std::string_view) {
    return basGlobal.CodesRead;
}

bool KeyboardFound(std::string_view) {
    return basGlobal.OSKFound;
}

bool Malfunction(std::string_view) {
    return basGlobal.MilOn;
}

bool LampKnownOn(std::string_view) {
    return LinkUp() && basGlobal.MilOn;
}

std::optional<bool> SensorActive(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor == nullptr ? std::nullopt : std::optional(sensor->Active);
}

bool SensorOn(std::string_view name) {
    return SensorActive(name).value_or(false);
}

bool SensorOff(std::string_view name) {
    return !SensorActive(name).value_or(true);
}

bool Known(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor != nullptr && SensorKnown(*sensor);
}

bool LanguageChosen(std::string_view name) {
    return LowerCased(CurrentLanguage()) == name;
}

bool UnitsChosen(std::string_view units) {
    return CurrentUnits() == units;
}

/// Dark on purpose, so that the pause lamp of a skin never lights.
bool Pause(std::string_view) {
    return false;
}

bool Startup(std::string_view) {
    return basGlobal.StartupFlag;
}

bool Resume(std::string_view) {
    return basGlobal.ResumeFlag;
}

struct ImageWord {
    FunctionWord Name;
    bool (*State)(std::string_view argument);
};

using enum Takes;

// The words of an image function, in the order in which they are tested. "mouseover_slider3" is a
// button test, too: only "mouseover_slider_slider3" asks for a slider.
constexpr ImageWord kImageWords[] = {
    {{"mouseover", Fixed, "list", "neither a button nor a slider is selected"}, NothingSelected},
    {{"mouseover", Control, "button3",
      "button 3 is selected; the buttons of shared sections count first"},
     ButtonSelected},
    {{"mouseover_button", Control, "button3", "the same"}, ButtonSelected},
    {{"mouseover_slider", Control, "slider0",
      "slider 0 is selected; those of shared sections count first"},
     SliderSelected},
    {{"obd", Fixed, "connected", "connected to the interface"}, Connected},
    {{"obd", Fixed, "connecting", "on the way to being connected"}, Connecting},
    {{"obd", Fixed, "active",
      "connected, on the way to it or about to be: there is something for `obd_disconnect`"},
     Active},
    {{"obd", Fixed, "finding", "the interface is being looked for"}, Finding},
    {{"obd", Fixed, "codes", "connected, and the vehicle has stored a trouble code at least"},
     CodeKnown},
    {{"obd", Fixed, "codesread", "the trouble codes were read since the connect"}, CodesRead},
    {{"obd", Fixed, "keyboard", "an on-screen keyboard is set, and its file is there"},
     KeyboardFound},
    {{"obd", Fixed, "malfunction",
      "the vehicle's malfunction lamp is on; stays after a disconnect"},
     Malfunction},
    {{"obd", Fixed, "lamp", "connected, and that lamp is on"}, LampKnownOn},
    {{"sensoron", Sensor, "rpm.engine", "the sensor is switched on"}, SensorOn},
    {{"sensoractive", Sensor, "rpm.engine", "the same"}, SensorOn},
    {{"sensoroff", Sensor, "rpm.engine", "the sensor is switched off"}, SensorOff},
    {{"known", Sensor, "rpm.engine",
      "the value of the sensor came from the vehicle within the last seconds"},
     Known},
    {{"language", Language, "German", "the language is that one"}, LanguageChosen},
    {{"units", Fixed, kMetric, "the units are metric"}, UnitsChosen},
    {{"units", Fixed, kImperial, "the units are imperial"}, UnitsChosen},
    {{"pause", Nothing, "", "never"}, Pause},
    {{"startup", Nothing, "", "the first second after the start"}, Startup},
    {{"resume", Nothing, "", "never"}, Resume},
};

}  // namespace

bool ImageState(std::string& function) {
    LowerCase(function);
    const FunctionText text = SplitAtLast(function);
    for (const ImageWord& row : kImageWords) {
        if (Names(row.Name, text)) return row.State(text.Argument);
    }
    return false;
}

std::vector<FunctionWord> ImageFunctionRows() {
    return NamesOf(kImageWords);
}

}  // namespace dravik
