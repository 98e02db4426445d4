#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "obd/Diagnosis.h"

/// The messages of control units taken apart, as the diagnosis needs them. All of them are given
/// whole: the service byte first, then what it names, then the data.
namespace dravik {

using MessageBytes = std::vector<std::uint8_t>;

/// Adds what a support mask tells: "41 20" and four bytes stand for 21 to 40. One of service 06 or
/// 09 may have a byte in between, which the buses before CAN have there.
/// @return false when the message is none
bool AddSupported(const MessageBytes& message, SupportMask& supported);

/// What a mask begins at that continues the one for `first`; nothing when there is no more.
std::optional<std::uint8_t> NextMask(const SupportMask& supported, std::uint8_t first);

/// Monitors of one unit from "41 01", since the codes were cleared, or "41 41", of this drive;
/// nothing when the message is too short.
std::optional<MonitorStatus> MonitorsIn(const MessageBytes& message);

/// Puts what several units say together.
void AddMonitors(std::optional<MonitorStatus>& all, MonitorStatus unit);

/// The text that the messages of one unit to "09 NN" carry, in pieces of `length` characters:
/// CAN sends one message with a count in front, the other buses one for every four characters,
/// numbered from 1, with zeros in front of the first to fill it. Zeros at either end are dropped.
/// Nothing where a piece is missing.
std::optional<std::vector<std::string>> TextsIn(const std::vector<MessageBytes>& messages,
                                                std::size_t length);

/// The same for numbers of four bytes, as eight hex digits each.
std::optional<std::vector<std::string>> NumbersIn(const std::vector<MessageBytes>& messages);

/// A unit's name as it is shown: "ECM-EngineControl", of the four characters, the hyphen and the
/// name that the unit sends with zeros in between.
std::string UnitNameIn(const std::string& text);

VinCheck CheckVin(const std::string& vin);

/// The results that a message "46 NN" holds, without the unit. On CAN ("long messages") every one
/// names its scale and both limits, on the other buses there is one result with one limit.
/// Nothing when the length does not fit.
std::optional<std::vector<TestResult>> TestsIn(const MessageBytes& message, bool can);

/// Volts as the interface writes them: "14.1V".
std::optional<double> VoltsIn(const std::string& reply);

}  // namespace dravik
