#include <algorithm>
#include <cmath>

#include "obd/diagnosis/Decoders.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "settings/Words.h"

namespace dravik {

namespace {

// Scales ------------------------------------------------------------------------------------------

struct Scale {
    std::uint8_t Id;
    double Factor;
    const char* Unit;
    double Offset = 0;
};

// By number, those from 80 on for signed numbers.
constexpr Scale kScales[] = {
    {0x01, 1, ""},
    {0x02, 0.1, ""},
    {0x03, 0.01, ""},
    {0x04, 0.001, ""},
    {0x05, 0.0000305, ""},
    {0x06, 0.000305, ""},
    {0x07, 0.25, "rpm"},
    {0x08, 0.01, "km/h"},
    {0x09, 1, "km/h"},
    {0x0A, 0.122, "mV"},
    {0x0B, 0.001, "V"},
    {0x0C, 0.01, "V"},
    {0x0D, 0.00390625, "mA"},
    {0x0E, 0.001, "A"},
    {0x0F, 0.01, "A"},
    {0x10, 1, "ms"},
    {0x11, 100, "ms"},
    {0x12, 1, "s"},
    {0x13, 1, "mΩ"},
    {0x14, 1, "Ω"},
    {0x15, 1, "kΩ"},
    {0x16, 0.1, "°C", -40},
    {0x17, 0.01, "kPa"},
    {0x18, 0.0117, "kPa"},
    {0x19, 0.079, "kPa"},
    {0x1A, 1, "kPa"},
    {0x1B, 10, "kPa"},
    {0x1C, 0.01, "°"},
    {0x1D, 0.5, "°"},
    {0x1E, 0.0000305, "λ"},
    {0x1F, 0.05, ""},
    {0x20, 0.00390625, ""},
    {0x21, 1, "mHz"},
    {0x22, 1, "Hz"},
    {0x23, 1, "kHz"},
    {0x24, 1, ""},
    {0x25, 1, "km"},
    {0x26, 0.1, "mV/ms"},
    {0x27, 0.01, "g/s"},
    {0x28, 1, "g/s"},
    {0x29, 0.25, "Pa/s"},
    {0x2A, 0.001, "kg/h"},
    {0x2B, 1, ""},
    {0x2C, 0.01, "g"},
    {0x2D, 0.01, "mg"},
    {0x2E, 1, ""},
    {0x2F, 0.01, "%"},
    {0x30, 0.001526, "%"},
    {0x31, 0.001, "l"},
    {0x33, 0.00024414, "λ"},
    {0x34, 1, "min"},
    {0x35, 10, "ms"},
    {0x36, 0.01, "g"},
    {0x37, 0.1, "g"},
    {0x38, 1, "g"},
    {0x39, 0.01, "%", -327.68},
    {0x81, 1, ""},
    {0x82, 0.1, ""},
    {0x83, 0.01, ""},
    {0x84, 0.001, ""},
    {0x85, 0.0000305, ""},
    {0x86, 0.000305, ""},
    {0x8A, 0.122, "mV"},
    {0x8B, 0.001, "V"},
    {0x8C, 0.01, "V"},
    {0x8D, 0.00390625, "mA"},
    {0x8E, 0.001, "A"},
    {0x90, 1, "ms"},
    {0x96, 0.1, "°C"},
    {0x99, 0.1, "kPa"},
    {0x9C, 0.01, "°"},
    {0x9D, 0.5, "°"},
    {0xA8, 1, "g/s"},
    {0xA9, 0.25, "Pa/s"},
    {0xAF, 0.01, "%"},
    {0xB0, 0.003052, "%"},
    {0xB1, 2, "mV/s"},
    {0xFC, 0.01, "kPa"},
    {0xFD, 0.001, "kPa"},
    {0xFE, 0.25, "Pa"},
};

constexpr std::uint8_t kFirstSigned = 0x80;

const Scale* FindScale(std::uint8_t id) {
    const auto* const found = std::find_if(std::begin(kScales), std::end(kScales),
                                           [id](const Scale& row) { return row.Id == id; });
    return found == std::end(kScales) ? nullptr : found;
}

/// Digits behind the decimal sign that show single steps, as far as they fit on a page.
int DecimalsOf(double factor) {
    constexpr int kMost = 4;
    int decimals = 0;
    for (double step = factor; decimals < kMost && std::fabs(step - std::round(step)) > 1e-9;
         step *= 10)
        ++decimals;
    return decimals;
}

double NumberAt(const MessageBytes& message, std::size_t place, bool isSigned) {
    const auto bits = static_cast<std::uint16_t>(message[place] << 8 | message[place + 1]);
    return isSigned ? static_cast<double>(static_cast<std::int16_t>(bits)) : bits;
}

/// A test that has not run yet answers with zeros in the place of value and limits.
bool AllZero(const MessageBytes& message, std::size_t place, std::size_t numbers) {
    const auto first = message.begin() + static_cast<std::ptrdiff_t>(place);
    return std::all_of(first, first + static_cast<std::ptrdiff_t>(2 * numbers),
                       [](std::uint8_t byte) { return byte == 0; });
}

// A result on CAN: monitor, test, scale and three numbers of two bytes each.
constexpr std::size_t kRecord = 9;
// On the other buses: service, test, component with the kind of the limit, value and limit.
constexpr std::size_t kOldMessage = 7;

TestResult ResultAt(const MessageBytes& message, std::size_t place) {
    TestResult test;
    test.MonitorId = message[place];
    test.TestId = message[place + 1];
    const std::uint8_t id = message[place + 2];
    const Scale* const scale = FindScale(id);
    const auto number = [&](std::size_t offset) {
        const double raw = NumberAt(message, place + offset, id >= kFirstSigned);
        return scale == nullptr ? raw : raw * scale->Factor + scale->Offset;
    };
    test.Value = number(3);
    test.Low = number(5);
    test.High = number(7);
    test.Raw = scale == nullptr;
    if (scale != nullptr) {
        test.UnitText = scale->Unit;
        test.Decimals = DecimalsOf(scale->Factor);
    }
    test.Passed = *test.Low <= test.Value && test.Value <= *test.High;
    test.Ran = !AllZero(message, place + 3, 3);
    return test;
}

TestResult OldResult(const MessageBytes& message) {
    constexpr std::uint8_t kLeast = 0x80;  // the limit is the least value that passes
    TestResult test;
    test.TestId = message[1];
    test.Component = static_cast<std::uint8_t>(message[2] & ~kLeast);
    test.Value = NumberAt(message, 3, false);
    test.Raw = true;
    const double limit = NumberAt(message, 5, false);
    const bool least = (message[2] & kLeast) != 0;
    (least ? test.Low : test.High) = limit;
    test.Passed = least ? test.Value >= limit : test.Value <= limit;
    test.Ran = !AllZero(message, 3, 2);
    return test;
}

// Names -------------------------------------------------------------------------------------------

enum class Counts : std::uint8_t { Nothing, Banks, Sensors, Cylinders };

struct MonitorName {
    std::uint8_t First;
    std::uint8_t Last;
    std::string_view Word;
    Counts What;
};

constexpr MonitorName kMonitorNames[] = {
    {0x01, 0x10, "Oxygen sensor", Counts::Sensors},
    {0x21, 0x24, "Catalyst", Counts::Banks},
    {0x31, 0x34, "Exhaust recirculation", Counts::Banks},
    {0x35, 0x38, "Variable valve timing", Counts::Banks},
    {0x39, 0x3C, "Fuel vapour leak", Counts::Nothing},
    {0x3D, 0x3D, "Fuel vapour purge flow", Counts::Nothing},
    {0x41, 0x50, "Oxygen sensor heater", Counts::Sensors},
    {0x61, 0x64, "Heated catalyst", Counts::Banks},
    {0x71, 0x74, "Secondary air", Counts::Banks},
    {0x81, 0x84, "Fuel system", Counts::Banks},
    {0x85, 0x86, "Boost pressure", Counts::Banks},
    {0x90, 0x91, "NOx adsorber", Counts::Banks},
    {0x98, 0x99, "NOx catalyst", Counts::Banks},
    {0xA1, 0xA1, "Misfire", Counts::Nothing},
    {0xA2, 0xAD, "Misfire, cylinder", Counts::Cylinders},
    {0xB0, 0xB1, "Particulate filter", Counts::Banks},
};

constexpr std::string_view kMonitor = "Monitor";
constexpr std::string_view kTest = "Test %1";
constexpr std::string_view kTestOfComponent = "Test %1, component %2";

std::string Counted(const MonitorName& row, int number) {
    constexpr int kSensorsOfBank = 4;
    const auto bank = [](int n) { return " B" + std::to_string(n + 1); };
    switch (row.What) {
        case Counts::Nothing:
            break;
        case Counts::Banks:
            return bank(number);
        case Counts::Sensors:
            return bank(number / kSensorsOfBank) + " S" +
                   std::to_string(number % kSensorsOfBank + 1);
        case Counts::Cylinders:
            return " " + std::to_string(number + 1);
    }
    return {};
}

std::string NameOfMonitor(std::uint8_t id) {
    for (const MonitorName& row : kMonitorNames) {
        if (id >= row.First && id <= row.Last) return Word(row.Word) + Counted(row, id - row.First);
    }
    return Word(kMonitor) + " " + HexText(id, 2);
}

}  // namespace

std::optional<std::vector<TestResult>> TestsIn(const MessageBytes& message, bool can) {
    if (!can) {
        if (message.size() != kOldMessage) return std::nullopt;
        return std::vector{OldResult(message)};
    }
    if (message.size() < 1 + kRecord || (message.size() - 1) % kRecord != 0) return std::nullopt;
    std::vector<TestResult> tests;
    for (std::size_t place = 1; place < message.size(); place += kRecord)
        tests.push_back(ResultAt(message, place));
    return tests;
}

std::string TestName(const TestResult& test) {
    const std::string id = HexText(test.TestId, 2);
    if (test.MonitorId == 0) return Word(kTestOfComponent, {id, HexText(test.Component, 2)});
    return NameOfMonitor(test.MonitorId) + ", " + Word(kTest, {id});
}

std::string TestNumber(const TestResult& test, double number) {
    const std::string text = ShownDecimal(number, test.Decimals);
    return test.UnitText.empty() ? text : text + " " + test.UnitText;
}

std::vector<std::string_view> TestWords() {
    std::vector<std::string_view> words = {kMonitor, kTest, kTestOfComponent};
    for (const MonitorName& row : kMonitorNames) words.push_back(row.Word);
    return words;
}

}  // namespace dravik
