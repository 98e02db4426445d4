#include <cmath>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kPidLimit = 79;  // PID 4F has an entry in the tables but is never shown

/// A PID as a signed 16-bit number; a text that is no such number is PID 0.
int ReadPid(std::string_view argument) {
    constexpr std::int32_t kLargest = 0xFFFF;
    const std::int32_t number = HexNumber(argument).value_or(0);
    return number < 0 || number > kLargest ? 0 : static_cast<std::int16_t>(number);
}

std::int32_t LinkValue(std::string_view argument) {
    GlobalState& g = basGlobal;
    const int pid = ReadPid(argument);
    if (pid < 0 || pid >= kPidLimit) return 0;
    const auto index = static_cast<std::size_t>(pid);
    const std::int32_t value = (FreezeFrameMode() ? g.FreezeRaw : g.LiveRaw)[index];
    g.PidWanted[index] = true;  // displaying a PID keeps it requested
    return value;
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
