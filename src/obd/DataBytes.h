#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/basGlobal.h"

/// The data bytes of which replies were made: the number that is kept of a reply has lost the zeros
/// in front of it.
namespace dravik {

/// How many data bytes a reply has.
/// @param line    the whole reply as hexadecimal digits, without blanks
/// @param freeze  whether the number of a frame stands in front of them
/// @return 0 for half a byte, and for more bytes than a number holds
std::uint8_t DataSize(std::string_view line, bool freeze);

/// The number that some bytes of the last reply of a PID give, live or of the frame, the first of
/// them the highest; nothing while that reply has no such bytes, or says that it has no value.
std::optional<std::uint32_t> RangeOf(std::size_t pid, ByteRange bytes);

/// Notes the live number of a PID in what its bytes went through since the connect.
/// @param first  whether it is the first one since the connect
void NoteRanges(std::size_t pid, bool first);

/// What some bytes of the live replies of a PID went through since the connect.
Extremes SeenIn(std::size_t pid, ByteRange bytes);

}  // namespace dravik
