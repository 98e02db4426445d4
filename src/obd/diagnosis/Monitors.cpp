#include <algorithm>
#include <array>
#include <utility>

#include "obd/diagnosis/Decoders.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "settings/Words.h"

namespace dravik {

namespace {

constexpr std::size_t kMaskBytes = 4;
constexpr int kMaskSpan = 32;

constexpr std::string_view kComplete = "Complete";
constexpr std::string_view kIncomplete = "Incomplete";
constexpr std::string_view kNotFitted = "Not fitted";

// The monitors in the order of their bits. What runs all the time has its two halves in one byte,
// the others have a byte for "fitted" and one for "not complete".
constexpr std::array<std::string_view, 3> kContinuous = {"Misfire", "Fuel system", "Components"};
constexpr std::array<std::string_view, 8> kSpark = {
    "Catalyst",        "Heated catalyst", "Fuel vapour system",    "Secondary air system",
    "Air conditioner", "Oxygen sensors",  "Oxygen sensor heaters", "EGR and VVT",
};
constexpr std::array<std::string_view, 8> kCompression = {
    "NMHC catalyst",      "NOx aftertreatment", "", "Boost pressure", "", "Exhaust gas sensors",
    "Particulate filter", "EGR and VVT",
};

bool Bit(std::uint8_t byte, std::size_t bit) {
    return ((byte >> bit) & 1) != 0;
}

auto FittedCount(const MonitorStatus& status) {
    return std::count_if(status.Monitors.begin(), status.Monitors.end(),
                         [](const Monitor& monitor) { return monitor.Fitted; });
}

}  // namespace

bool AddSupported(const MessageBytes& message, SupportMask& supported) {
    // The services of tests and of the vehicle's data fill up to one length on the older buses.
    constexpr std::size_t kHead = 2;
    if (message.size() < kHead + kMaskBytes) return false;
    const bool filled = message[0] > 0x42 && message.size() > kHead + kMaskBytes;
    const std::size_t start = kHead + (filled || message[0] == 0x42 ? 1 : 0);
    if (message.size() < start + kMaskBytes) return false;
    const std::size_t first = message[1] + std::size_t{1};
    for (std::size_t i = 0; i < kMaskSpan && first + i < supported.size(); ++i) {
        if (Bit(message[start + i / 8], 7 - i % 8)) supported.set(first + i);
    }
    return true;
}

std::optional<std::uint8_t> NextMask(const SupportMask& supported, std::uint8_t first) {
    const std::size_t next = std::size_t{first} + kMaskSpan;
    if (next >= supported.size() || !supported.test(next)) return std::nullopt;
    return static_cast<std::uint8_t>(next);
}

std::optional<MonitorStatus> MonitorsIn(const MessageBytes& message) {
    constexpr std::size_t kLength = 6;
    constexpr std::uint8_t kSinceClear = 0x01;
    constexpr std::uint8_t kLampBit = 0x80;
    constexpr std::size_t kCompressionBit = 3;
    if (message.size() < kLength) return std::nullopt;
    MonitorStatus status;
    if (message[1] == kSinceClear) {
        status.Lamp = (message[2] & kLampBit) != 0;
        status.Codes = message[2] & ~kLampBit;
    }
    status.Compression = Bit(message[3], kCompressionBit);
    for (std::size_t i = 0; i < kContinuous.size(); ++i)
        status.Monitors.push_back({kContinuous[i], Bit(message[3], i), !Bit(message[3], i + 4)});
    const auto& names = status.Compression ? kCompression : kSpark;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!names[i].empty())
            status.Monitors.push_back({names[i], Bit(message[4], i), !Bit(message[5], i)});
    }
    return status;
}

void AddMonitors(std::optional<MonitorStatus>& all, MonitorStatus unit) {
    if (!all) {
        all = std::move(unit);
        return;
    }
    // The engine's list is the one to show: a gearbox has hardly any of it.
    if (FittedCount(unit) > FittedCount(*all)) std::swap(*all, unit);
    all->Lamp |= unit.Lamp;
    all->Codes += unit.Codes;
    for (const Monitor& monitor : unit.Monitors) {
        const auto same =
            std::find_if(all->Monitors.begin(), all->Monitors.end(),
                         [&](const Monitor& candidate) { return candidate.Name == monitor.Name; });
        if (same == all->Monitors.end()) {
            if (monitor.Fitted) all->Monitors.push_back(monitor);
        } else if (monitor.Fitted) {
            same->Complete = monitor.Complete && (same->Complete || !same->Fitted);
            same->Fitted = true;
        }
    }
}

std::optional<InspectionVerdict> ReadyForInspection(const Diagnosis& diagnosis) {
    constexpr int kMostOpen = 1;
    if (!diagnosis.SinceClear) return std::nullopt;
    const auto& monitors = diagnosis.SinceClear->Monitors;
    InspectionVerdict verdict;
    verdict.Lamp = diagnosis.SinceClear->Lamp;
    verdict.Open = static_cast<int>(
        std::count_if(monitors.begin(), monitors.end(),
                      [](const Monitor& monitor) { return monitor.Fitted && !monitor.Complete; }));
    verdict.Ready = !verdict.Lamp && verdict.Open <= kMostOpen;
    return verdict;
}

std::string MonitorText(const Monitor& monitor) {
    if (!monitor.Fitted) return Word(kNotFitted);
    return Word(monitor.Complete ? kComplete : kIncomplete);
}

std::vector<std::string_view> MonitorWords() {
    std::vector<std::string_view> words = {kComplete, kIncomplete, kNotFitted};
    words.insert(words.end(), kContinuous.begin(), kContinuous.end());
    for (const auto& names : {kSpark, kCompression}) {
        for (const std::string_view name : names) {
            if (!name.empty()) words.push_back(name);
        }
    }
    return words;
}

}  // namespace dravik
