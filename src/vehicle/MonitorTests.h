#pragma once

#include <vector>

#include "vehicle/TroubleMemory.h"

namespace dravik::vehicle {

/// The messages of a unit for one monitor of mode 06, or for a mask. On CAN all results of the
/// monitor in one message, each with scaling and both limits; on the older buses a message for each
/// result and limit. Empty for a monitor that the unit does not have.
///
/// @param status  of the unit: a monitor that has not run yet since the codes were cleared answers
///                with zeroes
std::vector<std::vector<std::uint8_t>> TestResultsOf(const Scenario& scenario, int unit,
                                                     std::uint8_t monitor, bool longMessages,
                                                     const TroubleStatus& status);

}  // namespace dravik::vehicle
