#include "core/basGlobal.h"
#include "platform/Text.h"
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

/// "mouseover_slider3" is a button test, too: only "mouseover_slider_slider3" asks for a slider.
bool Mouseover(std::string_view argument) {
    if (argument == "list")
        return basGlobal.FocusedButton == kNoFocus && basGlobal.FocusedSlider == kNoFocus;
    return ButtonSelected(argument);
}

bool LinkState(std::string_view argument) {
    if (argument == "connected")
        return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
    return argument == "malfunction" && basGlobal.MilOn;
}

std::optional<bool> SensorActive(std::string_view name) {
    const std::optional<int> index = FindSensor(name);
    if (!index) return std::nullopt;
    return basGlobal.Sensors[static_cast<std::size_t>(*index)].Active;
}

bool SensorOn(std::string_view name) {
    return SensorActive(name).value_or(false);
}

bool SensorOff(std::string_view name) {
    return !SensorActive(name).value_or(true);
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
    std::string_view Word;
    bool (*State)(std::string_view argument);
};

// The words of an image function, in the order in which they are tested.
constexpr ImageWord kImageWords[] = {
    {"mouseover", Mouseover},
    {"mouseover_button", ButtonSelected},
    {"mouseover_slider", SliderSelected},
    {"obd", LinkState},
    {"sensoron", SensorOn},
    {"sensoractive", SensorOn},
    {"sensoroff", SensorOff},
    {"pause", Pause},
    {"startup", Startup},
    {"resume", Resume},
};

}  // namespace

bool ImageState(std::string& function) {
    LowerCase(function);
    const auto [word, argument] = SplitAtLast(function);
    for (const ImageWord& row : kImageWords) {
        if (row.Word == word) return row.State(argument);
    }
    return false;
}

std::vector<std::string_view> ImageFunctionWords() {
    std::vector<std::string_view> words;
    for (const ImageWord& row : kImageWords) words.push_back(row.Word);
    return words;
}

}  // namespace dravik
