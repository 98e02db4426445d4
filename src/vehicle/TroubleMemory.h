#pragma once

#include <functional>
#include <map>

#include "vehicle/CarModel.h"

namespace dravik::vehicle {

/// The values of a freeze frame: data bytes by PID.
using FrameValues = std::map<int, std::vector<std::uint8_t>>;

/// What the trouble memory adds to the readings of the car.
struct TroubleStatus {
    int StoredCodes = 0;
    bool Lamp = false;
    std::uint16_t FirstCode = 0;  ///< the first stored code, 0 without one
    double DistanceWithLamp = 0;  ///< km
    double MinutesWithLamp = 0;
    double DistanceSinceCleared = 0;  ///< km
    double MinutesSinceCleared = 0;
    int WarmUpsSinceCleared = 0;
    std::uint8_t Continuous = 0x07;       ///< misfire, fuel system, components, as in PID 01 byte B
    std::uint8_t Monitors = kMonitors;    ///< the others that the unit has, as in PID 01 byte C
    std::uint8_t MonitorsIncomplete = 0;  ///< since the codes were cleared, as in PID 01 byte D
    std::uint8_t CycleIncomplete = 0;     ///< since the engine was started, as in PID 41 byte D
};

/// The trouble codes of all control units, with lamp, freeze frames and the counters that clearing
/// puts back.
class TroubleMemory {
 public:
    using TakeFrame = std::function<FrameValues(const CarState& car, std::uint16_t code)>;

    /// @param takeFrame  makes a freeze frame out of the car's readings at the time of a code
    TroubleMemory(const Scenario& scenario, TakeFrame takeFrame);

    /// Stores the codes that have become due and follows the monitors; call it with a rising time.
    void Update(double seconds, const CarState& car);

    /// Codes of one control unit (from 1) in the order in which they were stored.
    /// A stored code that is permanent too is among both.
    std::vector<std::uint16_t> Codes(int unit, CodeState state) const;

    TroubleStatus Status(int unit, const CarState& car) const;

    /// Values of a unit's freeze frame number n, which belongs to its n-th stored code (from 0).
    /// Null when there is no such code or no frame with it.
    const FrameValues* Frame(int unit, std::size_t number) const;

    /// Forgets codes, frames and monitor results of all units and starts the counters anew. What is
    /// permanent stays so until the monitors have run.
    void Clear(const CarState& car);

 private:
    struct Entry {
        CodeRule Rule;
        bool HasFrame = false;
        FrameValues Frame;
    };

    TakeFrame takeFrame_;
    std::vector<CodeRule> waiting_;
    std::vector<Entry> entries_;
    double distanceBase_, minutesBase_;  ///< counters: the car's total plus these
    int warmUpsBase_;
    double lampDistance_ = 0, lampMinutes_ = 0;
    double lastDistance_ = 0, lastSeconds_ = 0;
    std::uint8_t incomplete_;
    std::vector<std::optional<std::uint8_t>> monitors_;  ///< of each unit that is said to have some
    double clearedAt_ = 0;  ///< the car's engine seconds when it was cleared
};

}  // namespace dravik::vehicle
