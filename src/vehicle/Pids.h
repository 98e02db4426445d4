#pragma once

#include <optional>

#include "vehicle/TroubleMemory.h"

namespace dravik::vehicle {

/// What a control unit knows when it answers a request.
struct Readings {
    const CarState& Car;
    const TroubleStatus& Trouble;
};

/// One row of the PID table.
struct PidRow {
    int Pid;
    int Bytes;  ///< 1 .. 4 data bytes
    const char* Name;
    bool InFrame;  ///< kept in freeze frames
    bool Gearbox;  ///< also answered by control units other than the engine's
    std::uint32_t (*Encode)(const Readings& readings);  ///< the data bytes as one number
};

inline constexpr int kLastPid = 0xA6;

/// The row of a PID; null for the masks and for those that this car does not know.
const PidRow* FindPid(int pid);

/// The data bytes of a row, first byte first.
std::vector<std::uint8_t> EncodePid(const PidRow& row, const Readings& readings);

/// The four bytes of a support mask: bit 31 stands for PID base + 1, bit 0 for base + 32.
std::vector<std::uint8_t> SupportMask(int base, const std::function<bool(int pid)>& supported);

}  // namespace dravik::vehicle
