#include "vehicle/MonitorTests.h"

#include "vehicle/Pids.h"

namespace dravik::vehicle {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kAnswer = 0x46;
constexpr std::uint8_t kLowerLimit = 0x80;  // in the component byte of the older buses
constexpr std::uint8_t kMaskFollows = 0xFF;
constexpr std::uint8_t kSigned = 0x80;  // scalings from here on are signed

/// Which of the car's monitors runs the tests of a range of numbers.
struct MonitorRange {
    int First, Last;
    std::uint8_t Bit;  ///< as in PID 01 byte C
};

constexpr MonitorRange kRanges[] = {
    {0x01, 0x10, 0x20},  // oxygen sensors
    {0x21, 0x24, 0x01},  // catalyst
    {0x39, 0x3D, 0x04},  // fuel vapour system
    {0x41, 0x50, 0x40},  // oxygen sensor heaters
};

/// The other tests go on all the time, so their results are there at once.
bool HasRun(int monitor, const TroubleStatus& status) {
    for (const MonitorRange& range : kRanges) {
        if (monitor >= range.First && monitor <= range.Last)
            return (status.MonitorsIncomplete & range.Bit) == 0;
    }
    return true;
}

void AppendWord(Bytes& message, std::uint16_t word) {
    message.push_back(static_cast<std::uint8_t>(word >> 8));
    message.push_back(static_cast<std::uint8_t>(word & 0xFF));
}

void AppendResult(Bytes& message, const TestRule& test, bool hasRun) {
    const bool isSigned = (test.Scaling & kSigned) != 0;
    const std::uint16_t lowest = isSigned ? 0x8000 : 0x0000, highest = isSigned ? 0x7FFF : 0xFFFF;
    message.insert(message.end(), {test.Monitor, test.Test, test.Scaling});
    AppendWord(message, hasRun ? test.Value : std::uint16_t{0});
    AppendWord(message, hasRun ? test.Low.value_or(lowest) : std::uint16_t{0});
    AppendWord(message, hasRun ? test.High.value_or(highest) : std::uint16_t{0});
}

Bytes ShortResult(const TestRule& test, std::uint8_t limitType, std::uint16_t limit, bool hasRun) {
    const int component = (test.Test & ~kLowerLimit) | limitType;
    Bytes message = {kAnswer, test.Monitor, static_cast<std::uint8_t>(component)};
    AppendWord(message, hasRun ? test.Value : std::uint16_t{0});
    AppendWord(message, hasRun ? limit : std::uint16_t{0});
    return message;
}

}  // namespace

std::vector<Bytes> TestResultsOf(const Scenario& scenario, int unit, std::uint8_t monitor,
                                 bool longMessages, const TroubleStatus& status) {
    std::set<int> monitors;
    for (const TestRule& test : scenario.Tests) {
        if (test.Unit == unit) monitors.insert(test.Monitor);
    }
    if (monitors.empty()) return {};
    if (monitor % 0x20 == 0) {
        if (monitor != 0 && *monitors.rbegin() <= monitor) return {};
        Bytes message = {kAnswer, monitor};
        if (!longMessages) message.push_back(kMaskFollows);
        const Bytes mask = SupportMask(monitor, [&monitors](int number) {
            return number % 0x20 == 0 ? *monitors.rbegin() > number : monitors.count(number) != 0;
        });
        message.insert(message.end(), mask.begin(), mask.end());
        return {message};
    }
    if (monitors.count(monitor) == 0) return {};

    const bool hasRun = HasRun(monitor, status);
    std::vector<Bytes> messages;
    if (longMessages) messages.push_back({kAnswer});
    for (const TestRule& test : scenario.Tests) {
        if (test.Unit != unit || test.Monitor != monitor) continue;
        if (longMessages) {
            AppendResult(messages.back(), test, hasRun);
            continue;
        }
        if (test.High || !test.Low)
            messages.push_back(ShortResult(test, 0, test.High.value_or(0xFFFF), hasRun));
        if (test.Low) messages.push_back(ShortResult(test, kLowerLimit, *test.Low, hasRun));
    }
    return messages;
}

}  // namespace dravik::vehicle
