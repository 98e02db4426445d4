#include "platform/Clock.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

constexpr int kTextLimit = 80;

SYSTEMTIME ToSystem(const LocalTime& time) {
    SYSTEMTIME parts{};
    parts.wYear = static_cast<WORD>(time.Year);
    parts.wMonth = static_cast<WORD>(time.Month);
    parts.wDay = static_cast<WORD>(time.Day);
    parts.wHour = static_cast<WORD>(time.Hour);
    parts.wMinute = static_cast<WORD>(time.Minute);
    parts.wSecond = static_cast<WORD>(time.Second);
    return parts;
}

}  // namespace

std::int64_t (*PerformanceCounter)() = [] {
    LARGE_INTEGER ticks;
    ::QueryPerformanceCounter(&ticks);
    return static_cast<std::int64_t>(ticks.QuadPart);
};

std::int64_t PerformanceFrequency() {
    LARGE_INTEGER ticksPerSecond;
    ::QueryPerformanceFrequency(&ticksPerSecond);
    return ticksPerSecond.QuadPart;
}

LocalTime SystemTime() {
    SYSTEMTIME parts;
    ::GetLocalTime(&parts);
    LocalTime time;
    time.Year = parts.wYear;
    time.Month = parts.wMonth;
    time.Day = parts.wDay;
    time.Hour = parts.wHour;
    time.Minute = parts.wMinute;
    time.Second = parts.wSecond;
    return time;
}

std::string TimeText(const LocalTime& time) {
    const SYSTEMTIME parts = ToSystem(time);
    wchar_t text[kTextLimit] = L"";
    ::GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &parts, nullptr, text, kTextLimit);
    return FromWide(text);
}

std::string ShortDateText(const LocalTime& time) {
    const SYSTEMTIME parts = ToSystem(time);
    wchar_t text[kTextLimit] = L"";
    ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &parts, nullptr, text, kTextLimit,
                      nullptr);
    return FromWide(text);
}

}  // namespace dravik
