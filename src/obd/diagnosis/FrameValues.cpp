#include "core/basGlobal.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "platform/Text.h"

namespace dravik {

namespace {

double RawNumber(const std::vector<std::uint8_t>& bytes) {
    constexpr double kByte = 256;
    double number = 0;
    for (const std::uint8_t byte : bytes) number = number * kByte + byte;
    return number;
}

std::string ValueText(const SensorRecord& sensor, const std::vector<std::uint8_t>& bytes) {
    const auto value = static_cast<float>(sensor.Factor * RawNumber(bytes) + sensor.Offset);
    const std::string text = ReplaceAll(GeneralNumber(value), ".", basGlobal.DecimalSign);
    return sensor.Unit.empty() ? text : text + " " + sensor.Unit;
}

}  // namespace

std::vector<FrameValue> FrameValuesOf(std::uint8_t pid, const std::vector<std::uint8_t>& bytes) {
    const std::string source = "obd_" + HexText(pid, 2);
    std::vector<FrameValue> values;
    for (const SensorRecord& sensor : SensorsInUse()) {
        if (EqualsNoCase(sensor.Source, source))
            values.push_back({sensor.Caption, ValueText(sensor, bytes)});
    }
    if (!values.empty()) return values;
    std::string hex;
    for (const std::uint8_t byte : bytes) hex += (hex.empty() ? "" : " ") + HexText(byte, 2);
    return {{"PID " + HexText(pid, 2), hex}};
}

}  // namespace dravik
