#include <cstdio>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "SensorConfig";

/// One sensor of a sensor file.
struct SensorKeys {
    const std::string& File;
    int Number;

    std::string Text(std::string_view field) const {
        std::string key = "Sensor" + std::to_string(Number);
        key += field;
        return ReadIniString(File, kSection, key);
    }

    /// Decimal numbers may be written with a comma or a point.
    float Value(std::string_view field) const {
        return static_cast<float>(LeadingNumber(ReplaceAll(Text(field), ",", ".")));
    }

    bool Exists() const { return Text("Function") != "0"; }

    /// Leaves alone whether it is on.
    void Read(SensorRecord& sensor) const {
        sensor.Function = LowerCased(ToUtf8(Text("Function")));
        sensor.Source = Text("Source");
        sensor.Factor = Value("Factor");
        sensor.Offset = Value("Offset");
        sensor.Min = Value("Min");
        sensor.Max = Value("Max");
        sensor.Caption = Text("Caption");
        sensor.Unit = Text("Unit");
    }
};

}  // namespace

std::vector<SensorRecord> ReadSensors(const std::string& sensorFile) {
    std::vector<SensorRecord> sensors;
    for (int number = 0; number < kSensorLimit; ++number) {
        const SensorKeys keys{sensorFile, number};
        if (!keys.Exists()) break;
        keys.Read(sensors.emplace_back());
    }
    return sensors;
}

bool LoadSensorConfig() {
    int count = 0;
    bool fits = true;
    for (;; ++count) {
        const SensorKeys keys{basGlobal.SensorFile, count};
        if (!keys.Exists()) break;
        fits = count < kSensorLimit;
        if (!fits) break;
        keys.Read(At(basGlobal.Sensors, count));
    }
    basGlobal.SensorCount = static_cast<std::int16_t>(count);
    if (!fits)
        std::fprintf(stderr,
                     "%s: [%s] Sensor%dFunction: more than %d sensors; the rest is not loaded\n",
                     basGlobal.SensorFile.c_str(), kSection, count, kSensorLimit);
    return fits;
}

}  // namespace dravik
