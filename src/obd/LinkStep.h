#pragma once

#include <cstdint>

/// What the steps of the link share. Only the files of this folder include this.
namespace dravik {

/// The state in which the running step ends, unless the driver has disconnected meanwhile.
void EndStep(std::uint8_t state);

}  // namespace dravik
