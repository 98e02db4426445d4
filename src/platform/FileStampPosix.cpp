#include <sys/stat.h>

#include <algorithm>
#include <ctime>

#include "platform/FileStamp.h"

namespace dravik {
namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;

/// The system stamps files in steps of some milliseconds.
constexpr std::int64_t kStampStep = kNanoseconds / 50;

std::int64_t InNanoseconds(const timespec& time) {
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

}  // namespace

std::optional<FileStamp> StampOf(const std::string& path) {
    struct stat info;
    if (::stat(path.c_str(), &info) != 0) return std::nullopt;
    return FileStamp{InNanoseconds(info.st_mtim), InNanoseconds(info.st_ctim), info.st_size,
                     info.st_ino, info.st_dev};
}

bool IsSettled(const FileStamp& stamp) {
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = InNanoseconds(now) - std::max(stamp.Modified, stamp.Changed);
    return age > kStampStep || age < -kStampStep;
}

}  // namespace dravik
