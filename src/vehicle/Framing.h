#pragma once

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

/// The lines, without their ends, in which the interface shows the answer of one unit. Every byte
/// is followed by a blank, the last one too.
std::vector<std::string> FormatReply(const ProtocolRow& protocol, const UnitReply& reply,
                                     bool headers);

}  // namespace dravik::vehicle
