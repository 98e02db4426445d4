#include "platform/WindowsApi.h"
#include "platform/serial/PortPresence.h"

namespace dravik {

bool PortPresent(const std::string& device) {
    if (device.starts_with("tcp://")) return true;
    constexpr std::string_view kPrefix = "\\\\.\\";
    const std::string name = device.starts_with(kPrefix) ? device.substr(kPrefix.size()) : device;
    wchar_t target[MAX_PATH];
    return !name.empty() && QueryDosDeviceW(ToWide(name).c_str(), target, MAX_PATH) != 0;
}

}  // namespace dravik
