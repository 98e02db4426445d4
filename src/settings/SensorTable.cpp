#include <cstdio>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "SensorConfig";

std::string ReadText(int sensor, std::string_view field) {
    std::string key = "Sensor" + std::to_string(sensor);
    key += field;
    return ReadIniString(basGlobal.SensorFile, kSection, key);
}

/// Decimal numbers may be written with a comma or a point.
float ReadNumber(int sensor, std::string_view field) {
    return static_cast<float>(LeadingNumber(ReplaceAll(ReadText(sensor, field), ",", ".")));
}

void ReadSensor(int number, const std::string& function) {
    SensorRecord& sensor = At(basGlobal.Sensors, number);
    sensor.Function = LowerCased(ToUtf8(function));
    sensor.Source = ReadText(number, "Source");
    sensor.Factor = ReadNumber(number, "Factor");
    sensor.Offset = ReadNumber(number, "Offset");
    sensor.Min = ReadNumber(number, "Min");
    sensor.Max = ReadNumber(number, "Max");
    sensor.Caption = ReadText(number, "Caption");
    sensor.Unit = ReadText(number, "Unit");
}

}  // namespace

bool LoadSensorConfig() {
    int count = 0;
    bool fits = true;
    for (;; ++count) {
        const std::string function = ReadText(count, "Function");
        if (function == "0") break;
        fits = count < kSensorLimit;
        if (!fits) break;
        ReadSensor(count, function);
    }
    basGlobal.SensorCount = static_cast<std::int16_t>(count);
    if (!fits)
        std::fprintf(stderr,
                     "%s: [%s] Sensor%dFunction: more than %d sensors; the rest is not loaded\n",
                     basGlobal.SensorFile.c_str(), kSection, count, kSensorLimit);
    return fits;
}

}  // namespace dravik
