#include "obd/PortSearch.h"

#include <memory>
#include <thread>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "settings/basSettings.h"

namespace dravik {

std::vector<PortCandidate> PortCandidates() {
    const SerialPort& port = basGlobal.comOBD;
    std::vector<PortCandidate> candidates;
    for (int number = 1; number <= kPortCount; ++number) {
        const std::string device = PortDevice(number);
        const bool ours = port.IsOpen() && !device.empty() && port.Device() == device;
        candidates.push_back({number, device, ours, PortState::Present});
    }
    return candidates;
}

void SearchPorts(std::vector<PortCandidate> candidates, std::function<void(PortCandidate)> found,
                 std::function<PortState(const std::string& device)> look,
                 std::function<void()> finished) {
    struct Handlers {
        std::function<void(PortCandidate)> Found;
        std::function<void()> Finished;
    };
    auto handlers = std::make_shared<Handlers>(Handlers{std::move(found), std::move(finished)});
    // The thread is left alone: a device may hold it up for longer than the program runs.
    std::thread([candidates = std::move(candidates), handlers = std::move(handlers),
                 look = std::move(look)]() mutable {
        for (PortCandidate& candidate : candidates) {
            if (!candidate.Ours) candidate.State = look(candidate.Device);
            if (candidate.State == PortState::Absent) continue;
            PostToUserInterface([handlers, candidate] { handlers->Found(candidate); });
        }
        // What the handlers hold belongs to the user interface, so that thread lets go of it.
        PostToUserInterface([last = std::move(handlers)] { last->Finished(); });
    }).detach();
}

}  // namespace dravik
