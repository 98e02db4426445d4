#include <iterator>
#include <optional>
#include <span>

#include "core/basGlobal.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "platform/Text.h"

namespace dravik {

namespace {

using DataBytes = std::span<const std::uint8_t>;

double RawNumber(DataBytes bytes) {
    constexpr double kByte = 256;
    double number = 0;
    for (const std::uint8_t byte : bytes) number = number * kByte + byte;
    return number;
}

/// The number that a sensor is made of; nothing where the reply has no such bytes, or says with
/// them that there is no value.
std::optional<double> RawNumberOf(const SensorRecord& sensor, DataBytes bytes) {
    if (!sensor.Bytes) return RawNumber(bytes);
    const auto [first, last, absent] = *sensor.Bytes;
    if (first < 0 || first > last || last >= std::ssize(bytes)) return std::nullopt;
    const auto from = static_cast<std::size_t>(first);
    const double number = RawNumber(bytes.subspan(from, static_cast<std::size_t>(last) - from + 1));
    return absent && number == *absent ? std::nullopt : std::optional(number);
}

std::string ValueText(const SensorRecord& sensor, double number) {
    const auto value = static_cast<float>(sensor.Factor * number + sensor.Offset);
    const std::string plain =
        sensor.Decimals ? FixedNumber(value, *sensor.Decimals) : GeneralNumber(value);
    const std::string text = ReplaceAll(plain, ".", basGlobal.DecimalSign);
    return sensor.Unit.empty() ? text : text + " " + sensor.Unit;
}

}  // namespace

std::vector<FrameValue> FrameValuesOf(std::uint8_t pid, const std::vector<std::uint8_t>& bytes) {
    const std::string source = "obd_" + HexText(pid, 2);
    std::vector<FrameValue> values;
    bool known = false;  // to the sensor table
    for (const SensorRecord& sensor : SensorsInUse()) {
        if (!EqualsNoCase(sensor.Source, source)) continue;
        known = true;
        if (const auto number = RawNumberOf(sensor, bytes))
            values.push_back({sensor.Caption, ValueText(sensor, *number)});
    }
    if (known) return values;
    std::string hex;
    for (const std::uint8_t byte : bytes) hex += (hex.empty() ? "" : " ") + HexText(byte, 2);
    return {{"PID " + HexText(pid, 2), hex}};
}

}  // namespace dravik
