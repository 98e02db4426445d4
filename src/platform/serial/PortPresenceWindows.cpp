#include "platform/WindowsApi.h"
#include "platform/serial/PortPresence.h"

namespace dravik {

PortState LookAtPort(const std::string& device) {
    if (device.starts_with("tcp://")) return PortState::Present;
    constexpr std::string_view kPrefix = "\\\\.\\";
    const std::string name = device.starts_with(kPrefix) ? device.substr(kPrefix.size()) : device;
    wchar_t target[MAX_PATH];
    const bool known = !name.empty() && QueryDosDeviceW(ToWide(name).c_str(), target, MAX_PATH);
    return known ? PortState::Present : PortState::Absent;
}

std::string PortGroup(const std::string&) {
    return {};
}

bool HasLockFile(const std::string&, const std::vector<std::string>&) {
    return false;
}

}  // namespace dravik
