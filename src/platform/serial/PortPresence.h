#pragma once

#include <string>

namespace dravik {

/// True when there is a serial device behind the name and this user may use it. May be called from
/// any thread; may take as long as the system does to look the name up.
///
/// The device is never opened: opening a serial line raises its modem lines, and many interfaces
/// restart when that happens. A device that another program is using is therefore present too. A
/// network address ("tcp://host:port") counts as present without being asked.
bool PortPresent(const std::string& device);

}  // namespace dravik
