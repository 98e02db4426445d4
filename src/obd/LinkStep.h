#pragma once

#include <cstdint>

/// What the steps of the link share. Only the files of this folder include this.
namespace dravik {

/// The state in which the running step ends, unless the driver has disconnected meanwhile.
void EndStep(std::uint8_t state);

/// Closes the port and forgets what was outstanding. A step that runs ends and sets no state any
/// more; the state is 1.
void CloseLink();

/// One step of the link that is the whole search that FindInterface has asked for.
void RunSearch();

/// The state after an exchange that the interface may have ended by disappearing.
std::uint8_t StateIfOpen(std::uint8_t state);

}  // namespace dravik
