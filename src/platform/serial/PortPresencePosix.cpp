#include "platform/serial/PortPresence.h"

#include <grp.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

namespace dravik {
namespace {

/// The folders in which programs leave word of the serial lines that they use.
const std::vector<std::string> kLockFolders = {"/var/lock", "/run/lock"};

/// The system makes the names of its classic serial ports whether or not there is a chip behind
/// them; it states the kind of chip, and 0 for none. Other kinds of ports state nothing.
bool IsEmptySlot(const std::string& device) {
    const std::string name = device.substr(device.rfind('/') + 1);
    std::ifstream file("/sys/class/tty/" + name + "/type");
    int chip = 1;
    return file >> chip && chip == 0;
}

/// The names under which programs lock a device: its last part, or its path below /dev.
std::set<std::string> LockNames(const std::string& device) {
    std::set<std::string> names;
    char target[PATH_MAX];
    for (const char* path :
         {device.c_str(), static_cast<const char*>(::realpath(device.c_str(), target))}) {
        if (path == nullptr) continue;
        std::string name(path);
        names.insert(name.substr(name.rfind('/') + 1));
        constexpr std::string_view kFolder = "/dev/";
        if (!name.starts_with(kFolder)) continue;
        name.erase(0, kFolder.size());
        std::replace(name.begin(), name.end(), '/', '_');
        names.insert(name);
    }
    return names;
}

/// The process that a lock file names, in digits or as the machine's own number; 0 for none.
pid_t LockOwner(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const bool digits = std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || std::strchr(" \n\r\t", c) != nullptr;
    });
    pid_t owner = 0;
    if (!digits && text.size() == sizeof owner)
        std::memcpy(&owner, text.data(), sizeof owner);
    else
        owner = static_cast<pid_t>(std::strtol(text.c_str(), nullptr, 10));
    return owner;
}

/// A process of another user may not be signalled, and lives.
bool Lives(pid_t process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

}  // namespace

bool HasLockFile(const std::string& device, const std::vector<std::string>& folders) {
    for (const std::string& name : LockNames(device)) {
        for (const std::string& folder : folders) {
            const pid_t owner = LockOwner(folder + "/LCK.." + name);
            if (owner != ::getpid() && Lives(owner)) return true;
        }
    }
    return false;
}

PortState LookAtPort(const std::string& device) {
    if (device.empty()) return PortState::Absent;
    if (device.starts_with("tcp://")) return PortState::Present;
    char target[PATH_MAX];
    struct stat info;
    if (::realpath(device.c_str(), target) == nullptr || ::stat(target, &info) != 0 ||
        !S_ISCHR(info.st_mode) || IsEmptySlot(target))
        return PortState::Absent;
    if (::access(target, R_OK | W_OK) != 0)
        return errno == EACCES ? PortState::NoPermission : PortState::Absent;
    return HasLockFile(device, kLockFolders) ? PortState::InUse : PortState::Present;
}

std::string PortGroup(const std::string& device) {
    constexpr mode_t kMayUse = S_IRGRP | S_IWGRP;
    struct stat info;
    if (::stat(device.c_str(), &info) != 0 || (info.st_mode & kMayUse) != kMayUse) return {};
    if (info.st_gid == 0) return {};  // nobody should be told to join that one
    std::array<char, 4096> memory;
    struct group entry;
    struct group* found = nullptr;
    if (::getgrgid_r(info.st_gid, &entry, memory.data(), memory.size(), &found) != 0 ||
        found == nullptr)
        return {};
    return found->gr_name;
}

}  // namespace dravik
