#pragma once

#include <cstdint>
#include <string_view>

/// What the sensor editor asks of the evaluators.
namespace dravik {

/// The raw value that a source names ("obd_0C", "can_1"), 0 when it names nothing. Reading an OBD
/// value marks its PID as wanted, so that it is polled.
std::int32_t SourceValue(std::string_view source);

}  // namespace dravik
