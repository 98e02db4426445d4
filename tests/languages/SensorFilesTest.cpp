#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <vector>

#include "languages/LanguageFolder.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {
namespace {

constexpr std::size_t kDialCharacters = 18;

/// What the data bytes of a live parameter, taken as one number, mean: so much for each step of the
/// number, from a value of its own on. The standard gives it so for the bytes A and B.
struct Formula {
    double Step;
    double Begin;
};
constexpr Formula Percent{100.0 / 255, 0};
constexpr Formula TrimPercent{1 / 1.28, -100};
constexpr Formula Celsius{1, -40};
constexpr Formula CatalystCelsius{0.1, -40};
constexpr Formula Byte{1, 0};
constexpr Formula Word{1, 0};
constexpr Formula ThreeKilopascal{3, 0};
constexpr Formula EngineSpeed{1.0 / 4, 0};
constexpr Formula Timing{1.0 / 2, -64};
constexpr Formula AirFlow{1.0 / 100, 0};
constexpr Formula RailVacuum{0.079, 0};
constexpr Formula RailDirect{10, 0};
constexpr Formula OxygenVolt{1.0 / 200, 0};
constexpr Formula WideRatio{2.0 / 65536, 0};
constexpr Formula WideVolt{8.0 / 65536, 0};
constexpr Formula WideCurrent{1.0 / 256, -128};
constexpr Formula ModuleVolt{1.0 / 1000, 0};
constexpr Formula AbsoluteLoad{100.0 / 255, 0};
constexpr Formula Equivalence{2.0 / 65536, 0};

struct Parameter {
    int Pid;
    std::string Function;
    int Bytes;
    Formula Value;
    const char* Unit;
    const char* ImperialUnit;  // the same text where the unit stays
    int Before = 0;            // data bytes in front of those of the sensor
    int Behind = 0;
};

// clang-format off
const std::vector<Parameter> kSingle = {
    {0x30, "count.warmupstroublecodescleared", 1, Byte,            "",     ""},
    {0x04, "value.loadcalculated",             1, Percent,         "%",    "%"},
    {0x05, "temp.enginecoolant",               1, Celsius,         "°C",   "°F"},
    {0x06, "value.shorttermfueltrimbank1",     1, TrimPercent,     "%",    "%"},
    {0x07, "value.longtermfueltrimbank1",      1, TrimPercent,     "%",    "%"},
    {0x08, "value.shorttermfueltrimbank2",     1, TrimPercent,     "%",    "%"},
    {0x09, "value.longtermfueltrimbank2",      1, TrimPercent,     "%",    "%"},
    {0x0A, "p.fuelrail",                       1, ThreeKilopascal, "kPa",  "psi"},
    {0x0B, "p.intakemanifold",                 1, Byte,            "kPa",  "inHg"},
    {0x0C, "rpm.engine",                       2, EngineSpeed,     "rpm",  "rpm"},
    {0x0D, "speed",                            1, Byte,            "km/h", "mph"},
    {0x0E, "angle.ignitiontiming",             1, Timing,          "°",    "°"},
    {0x0F, "temp.intake",                      1, Celsius,         "°C",   "°F"},
    {0x10, "value.airflowrate",                2, AirFlow,         "g/s",  "lb/min"},
    {0x11, "value.throttle",                   1, Percent,         "%",    "%"},
    {0x1F, "time.enginestart",                 2, Word,            "s",    "s"},
    {0x21, "dist.milactivated",                2, Word,            "km",   "mi"},
    {0x22, "p.fuelrailtomanifold",             2, RailVacuum,      "kPa",  "psi"},
    {0x23, "p.fuelraildirect",                 2, RailDirect,      "kPa",  "psi"},
    {0x2C, "value.commandedegr",               1, Percent,         "%",    "%"},
    {0x2D, "value.egrerror",                   1, TrimPercent,     "%",    "%"},
    {0x2E, "value.commandedevaporativepurge",  1, Percent,         "%",    "%"},
    {0x2F, "value.fuellevel",                  1, Percent,         "%",    "%"},
    {0x31, "dist.troublecodescleared",         2, Word,            "km",   "mi"},
    {0x33, "p.barometric",                     1, Byte,            "kPa",  "inHg"},
    {0x3C, "temp.catalystbank1sensor1",        2, CatalystCelsius, "°C",   "°F"},
    {0x3D, "temp.catalystbank2sensor1",        2, CatalystCelsius, "°C",   "°F"},
    {0x3E, "temp.catalystbank1sensor2",        2, CatalystCelsius, "°C",   "°F"},
    {0x3F, "temp.catalystbank2sensor2",        2, CatalystCelsius, "°C",   "°F"},
    {0x42, "volt.obdcontrolmodule",            2, ModuleVolt,      "V",    "V"},
    {0x43, "value.loadabsolute",               2, AbsoluteLoad,    "%",    "%"},
    {0x44, "value.commandedequivalence",       2, Equivalence,     "",     ""},
    {0x45, "value.throttlerelative",           1, Percent,         "%",    "%"},
    {0x46, "temp.ambient",                     1, Celsius,         "°C",   "°F"},
    {0x47, "value.throttlepositionb",          1, Percent,         "%",    "%"},
    {0x48, "value.throttlepositionc",          1, Percent,         "%",    "%"},
    {0x49, "value.acceleratorpedalpositiond",  1, Percent,         "%",    "%"},
    {0x4A, "value.acceleratorpedalpositione",  1, Percent,         "%",    "%"},
    {0x4B, "value.acceleratorpedalpositionf",  1, Percent,         "%",    "%"},
    {0x4C, "value.commandedthrottlecontrol",   1, Percent,         "%",    "%"},
    {0x4D, "time.enginerunningmil",            2, Word,            "min",  "min"},
    {0x4E, "time.dtcscleared",                 2, Word,            "min",  "min"},
};
// clang-format on

/// A quantity of the oxygen sensors, which have a parameter each: four on each of two banks.
std::vector<Parameter> OfOxygenSensors(const Parameter& first) {
    std::vector<Parameter> rows;
    for (const char* place : {"bank1sensor1", "bank1sensor2", "bank1sensor3", "bank1sensor4",
                              "bank2sensor1", "bank2sensor2", "bank2sensor3", "bank2sensor4"}) {
        Parameter& row = rows.emplace_back(first);
        row.Pid += static_cast<int>(rows.size()) - 1;
        row.Function.replace(row.Function.find('*'), 1, place);
    }
    return rows;
}

/// In the order of the sensor files.
std::vector<Parameter> AllParameters() {
    std::vector<Parameter> all = kSingle;
    const auto add = [&all](const Parameter& first, std::ptrdiff_t place) {
        const std::vector<Parameter> rows = OfOxygenSensors(first);
        all.insert(all.begin() + place, rows.begin(), rows.end());
    };
    add({0x14, "volt.lambda*", 1, OxygenVolt, "V", "V", 0, 1}, 15);
    add({0x14, "value.lambdatrim*", 1, TrimPercent, "%", "%", 1, 0}, std::ssize(all));
    add({0x24, "value.lambda*wrvolt", 2, WideRatio, "", "", 0, 2}, std::ssize(all));
    add({0x24, "volt.lambda*wr", 2, WideVolt, "V", "V", 2, 0}, std::ssize(all));
    add({0x34, "value.lambda*wramp", 2, WideRatio, "", "", 0, 2}, std::ssize(all));
    add({0x34, "amp.lambda*wr", 2, WideCurrent, "mA", "mA", 2, 0}, std::ssize(all));
    return all;
}
const std::vector<Parameter> kParameters = AllParameters();

/// A reply of ones but for the bytes of the sensor, which hold `pattern`.
void Receive(const Parameter& row, int pattern) {
    std::uint32_t number = UINT32_MAX;
    for (int bits = 0; bits < 8 * row.Bytes; ++bits) {
        const std::uint32_t bit = 1U << (bits + 8 * row.Behind);
        number = (pattern >> bits & 1) != 0 ? number | bit : number & ~bit;
    }
    const int size = row.Before + row.Bytes + row.Behind;
    basGlobal.LiveRaw[static_cast<std::size_t>(row.Pid)] =
        static_cast<std::int32_t>(number & UINT32_MAX >> (32 - 8 * size));
    basGlobal.LiveSize[static_cast<std::size_t>(row.Pid)] = static_cast<std::uint8_t>(size);
}

/// A metric quantity in an imperial unit, from the published sizes of the units.
double Imperial(double metric, const std::string& unit) {
    if (unit == "°F") return metric * 9 / 5 + 32;
    if (unit == "mph" || unit == "mi") return metric / 1.609344;
    if (unit == "psi") return metric * 0.1450377377;
    if (unit == "inHg") return metric * 0.2952998307;
    if (unit == "lb/min") return metric * 0.1322773573;
    return metric;
}

/// Engine speed is the one unit that languages write in their own way.
std::string UnitIn(const std::string& language, const std::string& unit) {
    if (unit != "rpm") return unit;
    if (language == "German") return "1/min";
    if (language == "French") return "tr/min";
    return unit;
}

/// A language and the units that are chosen; without a choice the language has its own.
using Choice = std::pair<std::string, std::string>;

std::vector<Choice> Choices() {
    std::vector<Choice> choices;
    for (const char* language : kLanguages) {
        for (const char* units : {"", kMetric, kImperial}) choices.emplace_back(language, units);
    }
    return choices;
}

class SensorFiles : public ::testing::TestWithParam<Choice> {
 protected:
    void SetUp() override { StartIn(GetParam().first, GetParam().second); }

    static bool IsImperial() {
        const auto& [language, units] = GetParam();
        return units.empty() ? language == "English (miles)" : units == kImperial;
    }

    static double Expected(const Parameter& row, int raw) {
        const double metric = row.Value.Step * raw + row.Value.Begin;
        return IsImperial() ? Imperial(metric, row.ImperialUnit) : metric;
    }

    /// How far a value may be off: some steps of single precision at the end of the range.
    static double Tolerance(const Parameter& row) {
        const double top = std::abs(Expected(row, row.Bytes == 1 ? 0xFF : 0xFFFF));
        return std::max(top, 1.0) * 4 * std::numeric_limits<float>::epsilon();
    }
};

TEST_P(SensorFiles, HoldTheSameSensorsInTheSameOrderInEveryLanguage) {
    ASSERT_EQ(basGlobal.SensorCount, std::ssize(kParameters));
    for (std::size_t i = 0; i < kParameters.size(); ++i) {
        const Parameter& row = kParameters[i];
        const SensorRecord& sensor = basGlobal.Sensors[i];
        char source[] = "obd_00";
        std::snprintf(source, sizeof source, "obd_%02X", static_cast<unsigned>(row.Pid));
        EXPECT_EQ(sensor.Function, row.Function);
        EXPECT_EQ(sensor.Source, source) << row.Function;
    }
}

TEST_P(SensorFiles, ShowTheStandardsValuesForEveryPatternOfDataBytes) {
    for (std::size_t i = 0; i < kParameters.size(); ++i) {
        const Parameter& row = kParameters[i];
        SCOPED_TRACE(row.Function);
        basGlobal.Sensors[i].Active = true;
        const int top = row.Bytes == 1 ? 0xFF : 0xFFFF;
        for (const int pattern : {0, 1, 0x55, 0x80, 0xFF, 0x100, 0x1AF8, 0x8000, 0xFFFF}) {
            if (pattern > top) continue;
            Receive(row, pattern);
            if (row.Value.Begin == TrimPercent.Begin && row.Before > 0 && pattern == 0xFF) {
                const SensorRecord& sensor = basGlobal.Sensors[i];
                EXPECT_FALSE(RawNumber(sensor.Source, sensor.Bytes)) << "no part in a trim";
                continue;
            }
            EXPECT_NEAR(static_cast<double>(SensorValue(basGlobal.Sensors[i])),
                        Expected(row, pattern), Tolerance(row))
                << "raw " << pattern;
        }
        const SensorRecord& sensor = basGlobal.Sensors[i];
        EXPECT_NEAR(static_cast<double>(sensor.Min), Expected(row, 0), Tolerance(row));
        EXPECT_NEAR(static_cast<double>(sensor.Max), Expected(row, top), Tolerance(row));
    }
}

TEST_P(SensorFiles, NameEverySensorShortEnoughForADial) {
    std::set<std::string> captions;
    for (std::size_t i = 0; i < kParameters.size(); ++i) {
        const Parameter& row = kParameters[i];
        const SensorRecord& sensor = basGlobal.Sensors[i];
        SCOPED_TRACE(row.Function);
        EXPECT_NE(sensor.Caption, "0");
        EXPECT_GT(sensor.Caption.size(), 0U);
        EXPECT_LE(Characters(sensor.Caption), kDialCharacters) << sensor.Caption;
        EXPECT_TRUE(captions.insert(sensor.Caption).second) << "twice: " << sensor.Caption;
        EXPECT_EQ(sensor.Unit,
                  UnitIn(GetParam().first, IsImperial() ? row.ImperialUnit : row.Unit));
    }
}

TEST_P(SensorFiles, AreUtf8WithPlainLineEndsAndWithoutTheEndingOfALanguage) {
    const std::map<std::string, std::string> files = {{"language", basGlobal.LanguageFile},
                                                      {"sensors", basGlobal.SensorFile},
                                                      {"codes", basGlobal.DescriptionFile}};
    for (const auto& [kind, path] : files) {
        SCOPED_TRACE(path);
        // The settings dialog offers every file that ends in .ini as a language.
        EXPECT_EQ(path.ends_with(".ini"), kind == "language");
        std::ifstream file(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        ASSERT_FALSE(text.empty());
        EXPECT_TRUE(IsUtf8(text));
        EXPECT_FALSE(text.starts_with("\xEF\xBB\xBF")) << "a mark would hide the first section";
        EXPECT_EQ(text.find('\r'), std::string::npos);
        EXPECT_EQ(text.back(), '\n');
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, SensorFiles, ::testing::ValuesIn(Choices()),
                         [](const auto& choice) {
                             std::string name = choice.param.first + choice.param.second;
                             std::erase_if(name, [](char c) { return !std::isalpha(c); });
                             return name;
                         });

}  // namespace
}  // namespace dravik
