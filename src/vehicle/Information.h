#pragma once

#include <vector>

#include "vehicle/Scenario.h"

namespace dravik::vehicle {

/// The messages of a unit for one type of mode 09: vehicle identification number, calibration
/// identifications and verification numbers, name of the unit, the masks. Empty for types that the
/// unit does not have.
///
/// @param longMessages  one message with a count of items, as on CAN; otherwise numbered messages
///                      of four bytes, whose number has a type of its own
std::vector<std::vector<std::uint8_t>> InformationOf(const Scenario& scenario, int unit,
                                                     std::uint8_t type, bool longMessages);

}  // namespace dravik::vehicle
