#pragma once

#include <array>
#include <cstdint>
#include <deque>

#include "vehicle/Scenario.h"

namespace dravik::vehicle {

/// How the engine control decides on the mixture at the moment; the values are those of PID 03.
enum class FuelLoop : std::uint8_t {
    Off = 0,
    OpenCold = 1,
    Closed = 2,
    OpenLoad = 4,
};

/// One exhaust bank: its mixture control and its two sensors.
struct Bank {
    double ShortTrim = 0, LongTrim = 0;            ///< percent
    double FrontLambda = 1, RearLambda = 1;        ///< 1 is the ideal mixture, above is lean
    double FrontVolts = 0.45, RearVolts = 0.45;    ///< below 0.45 V is lean
    double CatalystFront = 20, CatalystRear = 20;  ///< degrees Celsius
};

/// Everything that can be measured in the car at one instant.
struct CarState {
    bool Ignition = false, EngineRunning = false, ClutchClosed = false, FuelCut = false;
    int Gear = 1;             ///< 1 .. 5
    double EngineSpeed = 0;   ///< 1/min
    double Speed = 0;         ///< km/h
    double Load = 0;          ///< calculated load, 0 .. 1
    double AbsoluteLoad = 0;  ///< air mass per stroke, 1 is a full cylinder at 1.184 g/l
    double AirFlow = 0;       ///< g/s
    double ManifoldPressure = 100, Barometer = 100;  ///< kPa
    double Throttle = 12, Pedal = 0;                 ///< percent
    double Timing = 0;                               ///< degrees before top dead centre
    double Coolant = 20, Intake = 20, Ambient = 20;  ///< degrees Celsius
    double FuelPressure = 0;                         ///< kPa above the outside air
    double FuelLevel = 0;                            ///< percent
    double Voltage = 12.4;
    double CommandedLambda = 1;
    double EgrCommand = 0, EgrError = 0, Purge = 0;  ///< percent
    double VaporPressure = 0;                        ///< Pa
    FuelLoop Loop = FuelLoop::Off;
    bool SecondaryAir = false;
    std::array<Bank, 2> Banks;
    double RunTime = 0;   ///< seconds since the engine was started
    double WarmTime = 0;  ///< of these, with the mixture under closed control

    // Totals since the model began.
    double Distance = 0;       ///< km
    double Odometer = 0;       ///< km, with those before the model began
    double EngineSeconds = 0;  ///< seconds with the engine running
    int WarmUps = 0;
};

/// Data of the car that relate its readings to each other.
inline constexpr double kDisplacement = 1.6;   // litres
inline constexpr double kAirDensity = 1.184;   // g/l, the reference of the absolute load
inline constexpr double kClosedThrottle = 12;  // percent

/// The engine's speed for a road speed (km/h) in a gear (1 .. 5) with the clutch closed.
double EngineSpeedInGear(double speed, int gear);

/// A petrol car with a five-speed gearbox that is driven through the phases of a scenario. The
/// same scenario gives the same state at the same time, whatever steps lead there.
class CarModel {
 public:
    explicit CarModel(const Scenario& scenario);

    /// Lets time pass; `seconds` counts from the beginning, and an earlier time changes nothing.
    void AdvanceTo(double seconds);

    const CarState& State() const { return state_; }

 private:
    void Step();
    void EnterPhase();
    void TurnKey();
    void Drive();
    void ShiftGears(double demand);
    void TurnEngine();
    void Breathe(double wheelPower);
    void ControlMixture();
    void ControlBank(std::size_t index);
    void Warm();
    void Count();
    double Wave(double period, double phase) const;
    double Wobble(double period, std::size_t which) const;

    std::vector<DrivePhase> phases_;
    std::size_t repeatFrom_;
    double warmUpFactor_;

    CarState state_;
    std::int64_t steps_ = 0;
    double phaseEnd_ = 0;
    std::size_t phase_ = 0;
    double crankTime_ = 0, shiftTime_ = 0, holdSpeed_ = 0, demand_ = 0, acceleration_ = 0;
    bool warmedUp_ = false;
    double coldest_ = 0;
    std::array<double, 8> seedPhases_{};
    std::array<std::deque<double>, 2> exhaust_;  ///< mixtures on their way to the front sensors
};

}  // namespace dravik::vehicle
