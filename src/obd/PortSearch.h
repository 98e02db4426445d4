#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/basGlobal.h"

/// Which of the serial ports COM1 to COM32 there are.
namespace dravik {

/// The ports 1 to 32 as the settings describe them. User-interface thread only.
std::vector<PortCandidate> PortCandidates();

/// Looks for the candidates one after the other, on a thread of its own, so that a device that is
/// slow to answer never holds up the screen. `found` is called on the user-interface thread, once
/// for each port that is there, in their order, with its state filled in.
///
/// @param look  what there is behind that name; called on the other thread
/// @param finished  called on the user-interface thread when all have been looked for
void SearchPorts(
    std::vector<PortCandidate> candidates, std::function<void(PortCandidate)> found,
    std::function<PortState(const std::string& device)> look,
    std::function<void()> finished = [] {});

}  // namespace dravik
