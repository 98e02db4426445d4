#include <cstdio>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "platform/Number.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "SensorConfig";
constexpr std::size_t kOptInBytes = 255;

constexpr ByteRange kNoBytes{-1, -1, {}};  // of no reply

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

    /// The text of a key that may be missing; empty then, as a "0" says something there.
    std::string OptIn(std::string_view field) const {
        std::string key = "Sensor" + std::to_string(Number);
        key += field;
        return ReadProfileString(File, kSection, key, "", kOptInBytes);
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
        sensor.Bytes = ReadByteRange(OptIn("Bytes"));
        sensor.Decimals = WholeNumber<int>(OptIn("Decimals"), 10);
    }
};

}  // namespace

std::optional<ByteRange> ReadByteRange(std::string_view text) {
    text = Trimmed(text);
    if (text.empty()) return std::nullopt;
    std::optional<std::uint32_t> absent;
    if (const std::size_t mark = text.find('!'); mark != text.npos) {
        absent = WholeNumber<std::uint32_t>(Trimmed(text.substr(mark + 1)), 16);
        if (!absent) return kNoBytes;
        text = text.substr(0, mark);
    }
    const std::size_t dash = text.find('-');
    const auto first = WholeNumber<int>(Trimmed(text.substr(0, dash)), 10);
    const auto last =
        dash == text.npos ? first : WholeNumber<int>(Trimmed(text.substr(dash + 1)), 10);
    const bool sound = first && last && 0 <= *first && *first <= *last && *last < kDataBytes;
    return sound ? ByteRange{*first, *last, absent} : kNoBytes;
}

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
        SensorRecord& sensor = At(basGlobal.Sensors, count);
        keys.Read(sensor);
        if (sensor.Bytes && sensor.Bytes->Last < 0)
            std::fprintf(stderr, "%s: [%s] Sensor%dBytes: \"%s\" names no bytes of a reply\n",
                         basGlobal.SensorFile.c_str(), kSection, count,
                         keys.OptIn("Bytes").c_str());
    }
    basGlobal.SensorCount = static_cast<std::int16_t>(count);
    if (!fits)
        std::fprintf(stderr,
                     "%s: [%s] Sensor%dFunction: more than %d sensors; the rest is not loaded\n",
                     basGlobal.SensorFile.c_str(), kSection, count, kSensorLimit);
    return fits;
}

}  // namespace dravik
