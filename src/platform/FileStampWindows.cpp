#include <algorithm>

#include "platform/FileStamp.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

// All in the system's unit of 100 nanoseconds.
constexpr std::int64_t kSecond = 10'000'000;
constexpr std::int64_t kStampStep = kSecond / 20;

/// Memory sticks stamp files in steps of two seconds, and with nothing between.
constexpr std::int64_t kLongStep = 2 * kSecond;

std::int64_t Joined(DWORD high, DWORD low) {
    return static_cast<std::int64_t>(high) << 32 | low;
}

std::int64_t Joined(const FILETIME& time) {
    return Joined(time.dwHighDateTime, time.dwLowDateTime);
}

}  // namespace

// By name, without opening the file: this is asked for every key that is read. A file put in its
// place was made at another time.
std::optional<FileStamp> StampOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA info{};
    if (!::GetFileAttributesExW(ToWide(path).c_str(), GetFileExInfoStandard, &info))
        return std::nullopt;
    return FileStamp{Joined(info.ftLastWriteTime), Joined(info.ftCreationTime),
                     Joined(info.nFileSizeHigh, info.nFileSizeLow), 0, 0};
}

bool IsSettled(const FileStamp& stamp) {
    FILETIME now;
    ::GetSystemTimeAsFileTime(&now);
    const std::int64_t step = stamp.Modified % kLongStep == 0 ? kLongStep : kStampStep;
    const std::int64_t age = Joined(now) - std::max(stamp.Modified, stamp.Changed);
    return age > step || age < -step;
}

}  // namespace dravik
