#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

#include "platform/Paths.h"

namespace dravik {
namespace {

using FileInfo = struct stat;

/// A writer holds its temporary file for a few milliseconds; one that is stuck must not hang us.
constexpr int kLockAttempts = 2000;
constexpr std::chrono::milliseconds kLockPause(1);

/// As many links in a row as the system itself follows.
constexpr int kLinkLimit = 40;

class Descriptor {
 public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&&) = delete;

    int Number() const { return number_; }
    bool IsOpen() const { return number_ >= 0; }
    bool Close() {
        const int number = number_;
        number_ = -1;
        return number < 0 || ::close(number) == 0;
    }

 private:
    int number_;
};

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

/// One name per file: what a killed writer left behind is taken over by the next one.
std::string TemporaryNameOf(const std::string& path) {
    const std::string folder = FolderOf(path);
    return folder + '.' + path.substr(path.rfind('/') + 1) + ".tmp";
}

/// True when the name still leads to the open file.
bool Names(const std::string& path, const Descriptor& file) {
    FileInfo named;
    FileInfo opened;
    return ::lstat(path.c_str(), &named) == 0 && ::fstat(file.Number(), &opened) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev &&
           S_ISREG(opened.st_mode);
}

/// Opens the temporary file for this writer alone. While another one was waited for, that one
/// renamed it: the name then leads to another file or none, and it is opened anew.
Descriptor OpenTemporary(const std::string& path) {
    for (int i = 0; i < kLockAttempts; ++i) {
        Descriptor file(
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
        if (!file.IsOpen()) return Descriptor();
        if (::flock(file.Number(), LOCK_EX | LOCK_NB) == 0) {
            if (Names(path, file)) return file;
        } else if (errno != EWOULDBLOCK && errno != EINTR) {
            return file;  // a file system without locks
        } else {
            std::this_thread::sleep_for(kLockPause);
        }
    }
    return Descriptor();
}

bool WriteAll(const Descriptor& file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(file.Number(), content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Gives the new file the permissions of the old one, and its owner where that is allowed.
bool TakeOver(const Descriptor& file, const FileInfo& old) {
    if (::fchown(file.Number(), old.st_uid, old.st_gid) != 0 && errno != EPERM) return false;
    return ::fchmod(file.Number(), old.st_mode & 07777) == 0;
}

bool Fill(const Descriptor& file, std::string_view content) {
    return ::ftruncate(file.Number(), 0) == 0 && WriteAll(file, content) &&
           ::fsync(file.Number()) == 0;
}

}  // namespace

bool ReplaceFile(std::string_view path, std::string_view content) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return false;
    const std::optional<std::string> found = TargetOf(ResolvePath(path));
    if (!found) return false;
    const std::string& target = *found;
    FileInfo old;
    const bool exists = ::stat(target.c_str(), &old) == 0;
    // A rename would get past a write protection.
    if (exists && (!S_ISREG(old.st_mode) || ::access(target.c_str(), W_OK) != 0)) return false;

    const std::string temporary = TemporaryNameOf(target);
    Descriptor file = OpenTemporary(temporary);
    if (!file.IsOpen()) return false;
    if ((exists && !TakeOver(file, old)) || !Fill(file, content) ||
        ::rename(temporary.c_str(), target.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    // The new content is in place; this makes the new name outlast a power cut.
    const Descriptor folder(::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) ::fsync(folder.Number());
    return true;
}

void FlushFiles() {
    ::sync();
}

}  // namespace dravik
