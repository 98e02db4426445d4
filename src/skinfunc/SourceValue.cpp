#include <cmath>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kPidLimit = 79;  // PID 4F has an entry in the tables but is never shown

/// Any text that is no number is PID 0; a number outside the shown PIDs is none.
std::optional<std::size_t> ReadPid(std::string_view argument) {
    const std::int32_t number = HexNumber(argument).value_or(0);
    if (number < 0 || number >= kPidLimit) return std::nullopt;
    return static_cast<std::size_t>(number);
}

std::int32_t LinkValue(std::string_view argument) {
    GlobalState& g = basGlobal;
    const std::optional<std::size_t> pid = ReadPid(argument);
    if (!pid) return 0;
    g.PidWanted[*pid] = true;  // displaying a PID keeps it requested
    return (FreezeFrameMode() ? g.FreezeRaw : g.LiveRaw)[*pid];
}

std::int32_t SecondPortValue(std::string_view source) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(basGlobal.SensorCount); ++i) {
        if (basGlobal.Sensors[i].Source == source) return basGlobal.Sensors[i].Raw;
    }
    return 0;
}

constexpr std::string_view kSourceWords[] = {"obd", "can"};

/// Asked in any case here, while the choice of the raw table asks for lower case.
bool FreezePage() {
    return LowerCased(basGlobal.CurrentMenu).find("freeze") != std::string::npos;
}

}  // namespace

std::int32_t SourceValue(std::string_view source) {
    const auto [word, argument] = SplitAtLast(source);
    if (word == kSourceWords[0]) return LinkValue(argument);
    if (word == kSourceWords[1]) return SecondPortValue(source);
    return 0;
}

float SensorValue(int index) {
    const SensorRecord& sensor = basGlobal.Sensors.at(static_cast<std::size_t>(index));
    if (!sensor.Active && !FreezePage()) return sensor.Offset;
    const double raw = SourceValue(sensor.Source);
    return static_cast<float>(static_cast<double>(sensor.Factor) * raw +
                              static_cast<double>(sensor.Offset));
}

std::optional<float> ElementValue(const std::string& function) {
    std::string text = function;
    const float number = LabelNumber(text);
    if (number != kNoNumber) return number;
    const std::string_view word = SplitAtLast(function).Word;
    for (const std::string_view sourceWord : kSourceWords) {
        if (word == sourceWord) return static_cast<float>(SourceValue(function));
    }
    return std::nullopt;
}

std::vector<std::string_view> SourceWords() {
    return {std::begin(kSourceWords), std::end(kSourceWords)};
}

}  // namespace dravik
