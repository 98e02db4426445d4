#include <chrono>
#include <cstdio>
#include <ctime>

#include "platform/Clock.h"

namespace dravik {

using PerformanceClock = std::chrono::steady_clock;

std::int64_t (*PerformanceCounter)() = [] {
    return static_cast<std::int64_t>(PerformanceClock::now().time_since_epoch().count());
};

std::int64_t PerformanceFrequency() {
    return PerformanceClock::period::den / PerformanceClock::period::num;
}

LocalTime SystemTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    return {.Year = parts.tm_year + 1900,
            .Month = parts.tm_mon + 1,
            .Day = parts.tm_mday,
            .Hour = parts.tm_hour,
            .Minute = parts.tm_min,
            .Second = parts.tm_sec};
}

std::string TimeText(const LocalTime& time) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.Hour, time.Minute, time.Second);
    return text;
}

std::string ShortDateText(const LocalTime& time) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d", time.Month, time.Day, time.Year);
    return text;
}

}  // namespace dravik
