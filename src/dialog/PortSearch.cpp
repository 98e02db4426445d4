#include "dialog/PortSearch.h"
#include "settings/basSettings.h"

#include <memory>
#include <thread>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

std::vector<PortCandidate> PortCandidates() {
    const SerialPort& port = basGlobal.comOBD;
    std::vector<PortCandidate> candidates;
    for (int number = 1; number <= kPortCount; ++number) {
        const std::string device = PortDevice(number);
        const bool ours = port.IsOpen() && !device.empty() && port.Device() == device;
        candidates.push_back({number, device, ours});
    }
    return candidates;
}

void SearchPorts(std::vector<PortCandidate> candidates, std::function<void(PortCandidate)> found,
                 std::function<bool(const std::string& device)> present) {
    auto handler = std::make_shared<std::function<void(PortCandidate)>>(std::move(found));
    // The thread is left alone: a device may hold it up for longer than the program runs.
    std::thread([candidates = std::move(candidates), handler = std::move(handler),
                 present = std::move(present)]() mutable {
        for (const PortCandidate& candidate : candidates) {
            if (!candidate.Ours && !present(candidate.Device)) continue;
            PostToUserInterface([handler, candidate] { (*handler)(candidate); });
        }
        // What the handler holds belongs to the user interface, so that thread lets go of it.
        PostToUserInterface([last = std::move(handler)] {});
    }).detach();
}

}  // namespace dravik
