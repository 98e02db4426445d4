#include <cmath>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/Clock.h"
#include "platform/KeyState.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

float KeyNumber(std::string_view argument) {
    constexpr double kKeyNumbers = 256;
    const double key = LeadingNumber(argument);
    return key >= 0 && key < kKeyNumbers ? AsyncKeyState(static_cast<int>(key)) : 0;
}

/// Hours move on with the minutes, as the hand of a clock does.
float TimeNumber(std::string_view argument) {
    const LocalTime now = SystemTime();
    if (argument == "hour")
        return static_cast<float>(now.Hour) + static_cast<float>(now.Minute) / 60.0F;
    if (argument == "minute") return static_cast<float>(now.Minute);
    if (argument == "second") return static_cast<float>(now.Second);
    if (argument == "day") return static_cast<float>(now.Day);
    if (argument == "month") return static_cast<float>(now.Month);
    if (argument == "year") return static_cast<float>(now.Year);
    return kNoNumber;
}

/// Position of the selection in percent of the list.
float ListPosition(std::string_view) {
    const ListSlot* list = CurrentList();
    if (list == nullptr || list->Entries.size() <= 1) return kNoNumber;
    return static_cast<float>((list->Selected - 1) / static_cast<double>(list->Entries.size() - 1) *
                              100);
}

float SensorNumber(std::string_view name) {
    const std::optional<int> index = FindSensor(name);
    return index ? SensorValue(*index) : kNoNumber;
}

float LinkNumber(std::string_view argument) {
    return argument == "troublecodescount" ? static_cast<float>(basGlobal.DtcCount) : kNoNumber;
}

struct NumberWord {
    std::string_view Word;
    float (*Evaluate)(std::string_view argument);
};

// The words of a number function, in the order in which they are tested.
constexpr NumberWord kNumberWords[] = {
    {"key", KeyNumber},       {"time", TimeNumber}, {"listview", ListPosition},
    {"sensor", SensorNumber}, {"obd", LinkNumber},
};

}  // namespace

float LabelNumber(std::string& function) {
    LowerCase(function);
    const auto [word, argument] = SplitAtLast(function);
    for (const NumberWord& row : kNumberWords) {
        if (row.Word != word) continue;
        const float number = row.Evaluate(argument);
        return std::isfinite(number) ? number : kNoNumber;
    }
    return kNoNumber;
}

std::vector<std::string_view> NumberFunctionWords() {
    std::vector<std::string_view> words;
    for (const NumberWord& row : kNumberWords) words.push_back(row.Word);
    return words;
}

}  // namespace dravik
