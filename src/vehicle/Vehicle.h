#pragma once

#include "vehicle/Pids.h"

namespace dravik::vehicle {

using Bytes = std::vector<std::uint8_t>;

/// The first byte of a refusal; the mode and the reason follow.
inline constexpr std::uint8_t kRefused = 0x7F;
/// The reason that is none: the answer takes longer and comes later.
inline constexpr std::uint8_t kAnswerPending = 0x78;

/// What one control unit answers to a request. A bus with long messages (CAN) carries one message
/// of any length, the others carry several of at most seven bytes.
struct UnitReply {
    int Unit = 1;
    std::vector<Bytes> Messages;
    double PendingTime = 0;  ///< seconds from a message that asks for patience to the next one
};

/// The car and its control units: the engine's, which answers everything, and as many others as the
/// scenario asks for, which answer a handful of PIDs and keep codes of their own.
class Vehicle {
 public:
    explicit Vehicle(const Scenario& scenario);

    /// Lets time pass; `seconds` counts from the beginning.
    void AdvanceTo(double seconds);

    /// False while no control unit is listening: no vehicle, or the ignition is off.
    bool Awake() const { return scenario_.VehiclePresent && car_.State().Ignition; }

    /// The answers of all units that have one, in the order in which they arrive.
    std::vector<UnitReply> Request(const Bytes& request);

    const CarState& Car() const { return car_.State(); }
    bool LongMessages() const { return scenario_.Protocol >= '6'; }

    /// Whether a unit answers a PID, masks included, in mode 01.
    bool Supports(int unit, int pid) const;

 private:
    UnitReply ReplyOf(int unit, const Bytes& request);
    std::vector<Bytes> Answer(int unit, const Bytes& request);
    std::vector<Bytes> LiveData(int unit, const Bytes& request) const;
    std::vector<Bytes> FrozenData(int unit, const Bytes& request) const;
    std::vector<Bytes> CodeList(int unit, std::uint8_t mode, CodeState state) const;
    std::vector<Bytes> ClearAll();
    std::vector<Bytes> Refusal(int unit, std::uint8_t mode, std::uint8_t reason) const;
    FrameValues TakeFrame(const CarState& car, std::uint16_t code) const;

    Scenario scenario_;
    std::vector<int> timesRefused_;  ///< by rule
    CarModel car_;
    TroubleMemory trouble_;
    bool cleared_ = false;  ///< by the request that is being answered
};

}  // namespace dravik::vehicle
