#pragma once

#include <cstdint>
#include <string>

namespace dravik {

/// The high-resolution performance counter and its ticks per second. A test that has no time to
/// wait puts another counter in its place.
extern std::int64_t (*PerformanceCounter)();
std::int64_t PerformanceFrequency();

/// The system's local time and date, with year, month 1..12, day 1..31, hour 0..23.
struct LocalTime {
    int Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
};
LocalTime SystemTime();

/// The time in its standard text form: HH:MM:SS, or as Windows' regional settings say.
std::string TimeText(const LocalTime& time);

/// The short date: MM/DD/YYYY, or as Windows' regional settings say.
std::string ShortDateText(const LocalTime& time);

}  // namespace dravik
