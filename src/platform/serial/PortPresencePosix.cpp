#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <fstream>

#include "platform/serial/PortPresence.h"

namespace dravik {
namespace {

/// The system makes the names of its classic serial ports whether or not there is a chip behind
/// them; it states the kind of chip, and 0 for none. Other kinds of ports state nothing.
bool IsEmptySlot(const std::string& device) {
    const std::string name = device.substr(device.rfind('/') + 1);
    std::ifstream file("/sys/class/tty/" + name + "/type");
    int chip = 1;
    return file >> chip && chip == 0;
}

}  // namespace

bool PortPresent(const std::string& device) {
    if (device.empty()) return false;
    if (device.starts_with("tcp://")) return true;
    char target[PATH_MAX];
    struct stat info;
    return ::realpath(device.c_str(), target) != nullptr && ::stat(target, &info) == 0 &&
           S_ISCHR(info.st_mode) && ::access(target, R_OK | W_OK) == 0 && !IsEmptySlot(target);
}

}  // namespace dravik
