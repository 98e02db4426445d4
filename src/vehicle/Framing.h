#pragma once

#include <optional>

#include "vehicle/Random.h"
#include "vehicle/Vehicle.h"

namespace dravik::vehicle {

/// How messages look on a bus.
enum class HeaderStyle { J1850, Keyword, Can11, Can29 };

/// One row per protocol that the interface knows.
struct ProtocolRow {
    char Number;
    const char* Name;
    HeaderStyle Header;
    const char* Connecting;  ///< shown while the bus is woken up; empty when there is nothing to do
    const char* Connected;   ///< follows it on the same line
    const char* Failed;      ///< shown instead when nobody answers
    bool SlowInit;           ///< its wake-up is shown even when the protocol is being searched
};

/// The row of a protocol number '1' .. '9'; null for others.
const ProtocolRow* FindProtocol(char number);

/// How the interface shows what came over the bus.
struct FrameStyle {
    bool Headers = false;
    bool TakeApart = true;  ///< CAN: without headers, control bytes are left out as well
    Padding Fill;           ///< CAN: how the units fill up their frames
};

/// One frame of a unit, as the lines, without their ends, in which the interface shows it. Every
/// byte is followed by a blank, the last one too.
struct ShownFrame {
    int Unit = 1;
    std::optional<double> Pending;  ///< it asks for patience: seconds until the next one
    std::vector<std::string> Lines;
};

/// The frames of one unit's answer, in their order.
std::vector<ShownFrame> FormatReply(const ProtocolRow& protocol, const UnitReply& reply,
                                    const FrameStyle& style);

/// Puts the frames of all units in the order in which they come over the bus. Those of one unit
/// never overtake each other.
std::vector<ShownFrame> OnTheBus(std::vector<std::vector<ShownFrame>> units, UnitOrder order,
                                 Random& random);

}  // namespace dravik::vehicle
