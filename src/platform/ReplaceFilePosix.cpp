#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <utility>

#include "platform/FileInfoPosix.h"
#include "platform/FileReplacement.h"
#include "platform/Paths.h"

namespace dravik {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLockPatience(400);
constexpr std::chrono::microseconds kLockPause(200);
constexpr std::intptr_t kNoFile = -1;

/// As many links in a row as the system itself follows.
constexpr int kLinkLimit = 40;

int Number(std::intptr_t handle) {
    return static_cast<int>(handle);
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// The file that a link leads to at last, existing or not, so that the link survives. Nothing when
/// the links go round in a circle.
std::optional<std::string> TargetOf(std::string path) {
    for (int i = 0; i < kLinkLimit; ++i) {
        char link[4096];
        const ssize_t length = ::readlink(path.c_str(), link, sizeof link);
        if (length <= 0) return path;
        const std::string target(link, static_cast<std::size_t>(length));
        path = target.front() == '/' ? target : FolderOf(path) + target;
    }
    return std::nullopt;
}

/// One name per file: what a killed writer left behind is taken away by the next one.
std::string TemporaryNameOf(const std::string& path) {
    const std::string folder = FolderOf(path);
    return folder + '.' + path.substr(path.rfind('/') + 1) + ".tmp";
}

/// True when the name still leads to the open file.
bool Names(const std::string& path, int file) {
    FileInfo named;
    FileInfo opened;
    return ::lstat(path.c_str(), &named) == 0 && ::fstat(file, &opened) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
}

bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Gives the new file the permissions of the old one, and its owner where that is allowed.
bool TakeOver(int file, const FileInfo& old) {
    if (::fchown(file, old.st_uid, old.st_gid) != 0 && errno != EPERM) return false;
    return ::fchmod(file, old.st_mode & 07777) == 0;
}

/// Waits for the lock of an open folder. A file system without locks counts as locked.
bool Lock(int folder, Clock::time_point deadline) {
    while (::flock(folder, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) return true;
        if (Clock::now() >= deadline) return false;
        std::this_thread::sleep_for(kLockPause);
    }
    return true;
}

struct OpenFolder {
    dev_t Device;
    ino_t Inode;
    int Descriptor;

    bool operator<(const OpenFolder& other) const {
        return std::tie(Device, Inode) < std::tie(other.Device, other.Inode);
    }
};

/// The folders of the files in an order that all processes share, so that no two of them wait for
/// each other. One that cannot be read is left out: it has no lock.
std::vector<OpenFolder> OpenFoldersOf(const std::vector<std::string>& files) {
    std::vector<OpenFolder> folders;
    for (const std::string& file : files) {
        const std::string folder = FolderOf(TargetOf(ResolvePath(file)).value_or(file));
        const int opened = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        FileInfo info;
        if (opened >= 0 && ::fstat(opened, &info) == 0)
            folders.push_back({info.st_dev, info.st_ino, opened});
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

}  // namespace

FolderLock::FolderLock(const std::vector<std::string>& files) {
    const Clock::time_point deadline = Clock::now() + kLockPatience;
    const std::vector<OpenFolder> folders = OpenFoldersOf(files);
    for (std::size_t i = 0; i < folders.size(); ++i) {
        handles_.push_back(folders[i].Descriptor);
        const bool again = i > 0 && !(folders[i - 1] < folders[i]);  // would wait for itself
        if (held_ && !again) held_ = Lock(folders[i].Descriptor, deadline);
    }
}

FolderLock::~FolderLock() {
    for (const std::intptr_t handle : handles_) ::close(Number(handle));
}

FileReplacement::FileReplacement(std::string_view path, std::string_view content) : file_(kNoFile) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return;
    const std::optional<std::string> target = TargetOf(ResolvePath(path));
    if (!target) return;
    target_ = *target;
    const std::optional<FileInfo> old = InfoOf(target_);
    // A rename would get past a write protection.
    if (old && (!S_ISREG(old->st_mode) || ::access(target_.c_str(), W_OK) != 0)) return;

    // Made anew: what stands there under this name may be a link to another file.
    temporary_ = TemporaryNameOf(target_);
    ::unlink(temporary_.c_str());
    const int file =
        ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
               old ? 0600 : 0666);
    if (file < 0) return;
    file_ = file;
    if ((!old || TakeOver(file, *old)) && WriteAll(file, content) && ::fsync(file) == 0) return;
    FileReplacement unfinished(std::move(*this));  // goes, and takes the file with it
}

FileReplacement::FileReplacement(FileReplacement&& other) noexcept
    : target_(std::move(other.target_)),
      temporary_(std::move(other.temporary_)),
      file_(std::exchange(other.file_, kNoFile)) {}

FileReplacement::~FileReplacement() {
    if (!Ready()) return;
    if (Names(temporary_, Number(file_))) ::unlink(temporary_.c_str());
    ::close(Number(file_));
}

bool FileReplacement::Ready() const {
    return file_ != kNoFile;
}

bool FileReplacement::Commit() {
    if (!Ready() || !Names(temporary_, Number(file_)) ||
        ::rename(temporary_.c_str(), target_.c_str()) != 0)
        return false;
    ::close(Number(std::exchange(file_, kNoFile)));
    // The new content is in place; this makes the new name outlast a power cut.
    const int folder = ::open(FolderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return true;
    ::fsync(folder);
    ::close(folder);
    return true;
}

void RemoveFile(std::string_view path) {
    ::unlink(ResolvePath(path).c_str());
}

}  // namespace dravik
