#include <cmath>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
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
float Hour(std::string_view) {
    const LocalTime now = SystemTime();
    return static_cast<float>(now.Hour) + static_cast<float>(now.Minute) / 60.0F;
}

template <auto Part>
float PartOfTime(std::string_view) {
    return static_cast<float>(SystemTime().*Part);
}

/// Position of the selection in percent of the list.
float ListPosition(std::string_view) {
    const ListSlot* list = CurrentList();
    if (list == nullptr || list->Entries.size() <= 1) return kNoNumber;
    return static_cast<float>((list->Selected - 1) / static_cast<double>(list->Entries.size() - 1) *
                              100);
}

float SensorNumber(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor == nullptr ? kNoNumber : SensorValue(*sensor);
}

float LiveNumber(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor != nullptr && SensorKnown(*sensor) ? SensorValue(*sensor) : kNoNumber;
}

template <bool Greatest>
float ExtremeNumber(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor != nullptr ? SensorExtreme(*sensor, Greatest).value_or(kNoNumber) : kNoNumber;
}

float CodeCount(std::string_view) {
    return static_cast<float>(basGlobal.DtcCount);
}

float DiagnosisDone(std::string_view) {
    return static_cast<float>(DiagnosisPercent());
}

struct NumberWord {
    FunctionWord Name;
    float (*Evaluate)(std::string_view argument);
};

using enum Takes;

// The words of a number function, in the order in which they are tested.
constexpr NumberWord kNumberWords[] = {
    {{"key", Number, "13",
      "the state of a key, by its virtual key number; negative while it is down"},
     KeyNumber},
    {{"time", Fixed, "hour",
      "hours with the minutes as a fraction, for the hand of a clock: 14:30 is 14.5"},
     Hour},
    {{"time", Fixed, "minute", "minutes"}, PartOfTime<&LocalTime::Minute>},
    {{"time", Fixed, "second", "seconds"}, PartOfTime<&LocalTime::Second>},
    {{"time", Fixed, "day", "day of the month"}, PartOfTime<&LocalTime::Day>},
    {{"time", Fixed, "month", "month"}, PartOfTime<&LocalTime::Month>},
    {{"time", Fixed, "year", "year"}, PartOfTime<&LocalTime::Year>},
    {{"listview", Nothing, "", "place of the selection in the list, in percent"}, ListPosition},
    {{"sensor", Sensor, "rpm.engine", "the value of a sensor, in its unit"}, SensorNumber},
    {{"live", Sensor, "rpm.engine", "the same, while it is known"}, LiveNumber},
    {{"lowest", Sensor, "rpm.engine", "the least value of a sensor since the connect"},
     ExtremeNumber<false>},
    {{"highest", Sensor, "rpm.engine", "its greatest value since the connect"},
     ExtremeNumber<true>},
    {{"obd", Fixed, "troublecodescount", "number of trouble codes that were read"}, CodeCount},
    {{"diagnosis", Fixed, "percent", "how far the diagnosis is, in percent"}, DiagnosisDone},
};

}  // namespace

float LabelNumber(std::string& function) {
    LowerCase(function);
    const FunctionText text = SplitAtLast(function);
    for (const NumberWord& row : kNumberWords) {
        if (!Names(row.Name, text)) continue;
        const float number = row.Evaluate(text.Argument);
        return std::isfinite(number) ? number : kNoNumber;
    }
    return kNoNumber;
}

std::vector<FunctionWord> NumberFunctionRows() {
    return NamesOf(kNumberWords);
}

}  // namespace dravik
