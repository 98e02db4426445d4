#include <cmath>

#include "core/basGlobal.h"
#include "obd/DataBytes.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// Any text that is no number is PID 0; a number outside the shown PIDs is none.
std::optional<int> ReadPid(std::string_view argument) {
    const std::int32_t number = HexNumber(argument).value_or(0);
    if (number < 0 || number >= kShownPids) return std::nullopt;
    return number;
}

std::int32_t LinkValue(std::string_view source) {
    GlobalState& g = basGlobal;
    const std::optional<std::size_t> pid = ReadPid(SplitAtLast(source).Argument);
    if (!pid) return 0;
    g.PidWanted[*pid] = true;  // displaying a PID keeps it requested
    return (FreezeFrameMode() ? g.FreezeRaw : g.LiveRaw)[*pid];
}

std::int32_t SecondPortValue(std::string_view source) {
    for (const SensorRecord& sensor : SensorsInUse()) {
        if (sensor.Source == source) return sensor.Raw;
    }
    return 0;
}

struct SourceWord {
    FunctionWord Name;
    std::int32_t (*Value)(std::string_view source);
};

// The words of a value source, in the order in which they are tested.
constexpr SourceWord kSourceWords[] = {
    {{"obd", Takes::Pid, "0C", "the raw number of a PID, up to 4E"}, LinkValue},
    {{"can", Takes::Source, "1", "the raw number of the sensor that has this source"},
     SecondPortValue},
};

const SourceWord* FindSource(std::string_view source) {
    const FunctionText text = SplitAtLast(source);
    for (const SourceWord& row : kSourceWords) {
        if (Names(row.Name, text)) return &row;
    }
    return nullptr;
}

float Scaled(const SensorRecord& sensor, double raw) {
    return static_cast<float>(static_cast<double>(sensor.Factor) * raw +
                              static_cast<double>(sensor.Offset));
}

/// Asked in any case here, while the choice of the raw table asks for lower case.
bool FreezePage() {
    return LowerCased(basGlobal.CurrentMenu).find("freeze") != std::string::npos;
}

}  // namespace

std::int32_t SourceValue(std::string_view source) {
    const SourceWord* row = FindSource(source);
    return row == nullptr ? 0 : row->Value(source);
}

std::optional<int> SourcePid(std::string_view source) {
    const SourceWord* row = FindSource(source);
    if (row == nullptr || row->Value != LinkValue) return std::nullopt;
    const std::optional<std::size_t> pid = ReadPid(SplitAtLast(source).Argument);
    return pid ? std::optional(static_cast<int>(*pid)) : std::nullopt;
}

bool SensorShows(const SensorRecord& sensor) {
    return sensor.Active || FreezePage();
}

std::optional<std::int64_t> RawNumber(std::string_view source,
                                      const std::optional<ByteRange>& bytes) {
    const std::int32_t whole = SourceValue(source);
    const std::optional<std::size_t> pid = SourcePid(source);
    if (!bytes || !pid) return whole;
    return RangeOf(*pid, *bytes);
}

bool SensorKnown(const SensorRecord& sensor) {
    if (!SensorShows(sensor)) return false;
    const bool received = RawNumber(sensor.Source, sensor.Bytes).has_value();  // polled, too
    const std::optional<int> pid = SourcePid(sensor.Source);
    return received && pid && PidKnown(*pid);
}

float SensorValue(const SensorRecord& sensor) {
    if (!SensorShows(sensor)) return sensor.Offset;
    return Scaled(sensor, static_cast<double>(RawNumber(sensor.Source, sensor.Bytes).value_or(0)));
}

std::optional<float> SensorExtreme(const SensorRecord& sensor, bool greatest) {
    SensorValue(sensor);  // what is asked for is polled
    const GlobalState& g = basGlobal;
    const std::optional<std::size_t> pid = SourcePid(sensor.Source);
    if (!pid || g.LiveAt[*pid] == 0) return std::nullopt;
    const bool ofRaw = sensor.Factor < 0 ? !greatest : greatest;
    if (!sensor.Bytes) return Scaled(sensor, (ofRaw ? g.LiveGreatest : g.LiveLeast)[*pid]);
    const Extremes seen = SeenIn(*pid, *sensor.Bytes);
    if (seen.Least > seen.Greatest) return std::nullopt;
    return Scaled(sensor, ofRaw ? seen.Greatest : seen.Least);
}

int SensorDecimals(const SensorRecord& sensor) {
    return sensor.Decimals.value_or(1);
}

std::optional<int> SensorDecimals(const std::string& function) {
    const std::string lowered = LowerCased(function);
    const SensorRecord* sensor = FindSensor(SplitAtLast(lowered).Argument);
    return sensor == nullptr ? std::nullopt : std::optional(SensorDecimals(*sensor));
}

std::optional<float> ElementValue(const std::string& function) {
    std::string text = function;
    const float number = LabelNumber(text);
    if (number != kNoNumber) return number;
    const SourceWord* row = FindSource(function);
    if (row == nullptr) return std::nullopt;
    return static_cast<float>(row->Value(function));
}

bool ElementKnown(const std::string& function) {
    const std::string lowered = LowerCased(function);
    const FunctionText text = SplitAtLast(lowered);
    if (text.Word == kSensorWord || text.Word == kLiveWord) {
        const SensorRecord* sensor = FindSensor(text.Argument);
        return sensor != nullptr && SensorKnown(*sensor);
    }
    const SourceWord* row = FindSource(function);
    if (row == nullptr) return true;
    row->Value(function);  // polled, too
    const std::optional<int> pid = SourcePid(function);
    return pid && PidKnown(*pid);
}

std::vector<FunctionWord> SourceRows() {
    return NamesOf(kSourceWords);
}

}  // namespace dravik
