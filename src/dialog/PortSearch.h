#pragma once

#include <functional>
#include <string>
#include <vector>

/// Which of the serial ports COM1 to COM32 there are.
namespace dravik {

/// A port that may be offered, and the device that it stands for.
struct PortCandidate {
    int Number = 0;
    std::string Device;
    bool Ours = false;  ///< the interface is connected through it, so it is there
};

/// The ports 1 to 32 as the settings describe them. User-interface thread only.
std::vector<PortCandidate> PortCandidates();

/// Looks for the candidates one after the other, on a thread of its own, so that a device that is
/// slow to answer never holds up the screen. `found` is called on the user-interface thread, once
/// for each port that is there, in their order.
///
/// @param present  whether there is a device of that name; called on the other thread
void SearchPorts(std::vector<PortCandidate> candidates, std::function<void(PortCandidate)> found,
                 std::function<bool(const std::string& device)> present);

}  // namespace dravik
