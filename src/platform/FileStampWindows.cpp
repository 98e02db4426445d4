#include <algorithm>

#include "platform/FileStamp.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

/// The file system of memory sticks stamps files in steps of two seconds.
constexpr std::int64_t kStampStep = std::int64_t{3} * 10'000'000;  // of 100 nanoseconds

std::int64_t Joined(DWORD high, DWORD low) {
    return static_cast<std::int64_t>(high) << 32 | low;
}

}  // namespace

std::optional<FileStamp> StampOf(const std::string& path) {
    const HANDLE file = ::CreateFileW(ToWide(path).c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    FILE_BASIC_INFO times{};
    BY_HANDLE_FILE_INFORMATION info{};
    const bool known = ::GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof times) &&
                       ::GetFileInformationByHandle(file, &info);
    ::CloseHandle(file);
    if (!known) return std::nullopt;
    return FileStamp{times.LastWriteTime.QuadPart, times.ChangeTime.QuadPart,
                     Joined(info.nFileSizeHigh, info.nFileSizeLow),
                     static_cast<std::uint64_t>(Joined(info.nFileIndexHigh, info.nFileIndexLow)),
                     info.dwVolumeSerialNumber};
}

bool IsSettled(const FileStamp& stamp) {
    FILETIME now;
    ::GetSystemTimeAsFileTime(&now);
    const std::int64_t age = Joined(static_cast<DWORD>(now.dwHighDateTime), now.dwLowDateTime) -
                             std::max(stamp.Modified, stamp.Changed);
    return age > kStampStep || age < -kStampStep;
}

}  // namespace dravik
