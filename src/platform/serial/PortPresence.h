#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dravik {

/// What there is behind the name of a serial device.
enum class PortState : std::uint8_t {
    Absent,
    NoPermission,  ///< a device that this user may not use
    InUse,         ///< a device that another program says it uses
    Present,
};

/// Looks a device up. May be called from any thread; may take as long as the system does to look
/// the name up.
///
/// The device is never opened: opening a serial line raises its modem lines, and many interfaces
/// restart when that happens. A device that another program is using without saying so is therefore
/// present too. A network address ("tcp://host:port") counts as present without being asked.
PortState LookAtPort(const std::string& device);

/// The group of users that may use the device; empty where there is none.
std::string PortGroup(const std::string& device);

/// True when a lock file in one of the folders says that a living process other than this one uses
/// the device. For systems that have such files.
bool HasLockFile(const std::string& device, const std::vector<std::string>& folders);

}  // namespace dravik
