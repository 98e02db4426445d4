#include "vehicle/CarModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "vehicle/Random.h"

namespace dravik::vehicle {
namespace {

constexpr double kStep = 0.05;  // seconds
constexpr int kStepsPerSecond = 20;

constexpr double kGearRatios[] = {3.58, 1.95, 1.28, 0.95, 0.76};
constexpr int kGears = 5;
constexpr double kFinalDrive = 4.06;
constexpr double kTyreCircumference = 1.93;  // metres
constexpr double kMass = 1350;               // kg
constexpr double kDragArea = 0.68;           // m2
constexpr double kRollingResistance = 0.012;
constexpr double kDrivelineEfficiency = 0.92;
constexpr double kShiftTime = 0.4;  // seconds with the clutch open
constexpr double kCrankTime = 0.8;  // seconds of the starter motor
constexpr double kTankLitres = 50;
constexpr double kFuelDensity = 745;           // g/l
constexpr double kIdealMixture = 14.7;         // g of air for a g of fuel
constexpr double kHeatOfFuel = 43;             // kJ/g
constexpr std::size_t kExhaustDelaySteps = 4;  // from the cylinder to the front sensor

/// Moves a value towards a target as a first-order system with the time constant tau does.
void Approach(double& value, double target, double tau) {
    value += (target - value) * (1 - std::exp(-kStep / tau));
}

/// The part of its displacement that the engine can breathe at this speed.
double VolumetricEfficiency(double engineSpeed) {
    const double offPeak = (engineSpeed - 4000) / 2200;
    return 0.80 + 0.13 * std::exp(-offPeak * offPeak);
}

double FrictionTorque(double engineSpeed, double coolant) {
    const double cold = std::max(0.0, 80 - coolant) * 0.12;
    return 17 + 7 * engineSpeed / 3000 + cold;
}

double FullTorque(double engineSpeed) {
    return 185 * VolumetricEfficiency(engineSpeed) / 0.93;
}

double IdleSpeed(double coolant) {
    return 780 + std::clamp(80 - coolant, 0.0, 90.0) * 6;
}

}  // namespace

double EngineSpeedInGear(double speed, int gear) {
    return speed / 3.6 / kTyreCircumference * 60 * kGearRatios[gear - 1] * kFinalDrive;
}

CarModel::CarModel(const Scenario& scenario)
    : phases_(scenario.Phases),
      repeatFrom_(scenario.RepeatFrom),
      warmUpFactor_(scenario.WarmUpFactor) {
    if (phases_.empty()) phases_.push_back({DriveAction::Idle, kForever, 0});
    Random random(scenario.Seed);
    for (double& phase : seedPhases_) phase = random.NextUnit() * 2 * std::numbers::pi;
    state_.Ambient = scenario.AmbientTemperature;
    state_.Coolant = scenario.CoolantTemperature;
    state_.Intake = scenario.AmbientTemperature;
    state_.FuelLevel = scenario.FuelLevel;
    state_.Odometer = scenario.Odometer.value_or(0);
    state_.Barometer = state_.ManifoldPressure = 98 + std::floor(random.NextUnit() * 4);
    for (Bank& bank : state_.Banks) {
        bank.CatalystFront = bank.CatalystRear = scenario.AmbientTemperature;
        bank.LongTrim = (random.NextUnit() - 0.5) * 4;
    }
    coldest_ = state_.Coolant;
    EnterPhase();
    TurnKey();
}

void CarModel::AdvanceTo(double seconds) {
    const auto wanted = static_cast<std::int64_t>(std::floor(seconds * kStepsPerSecond));
    while (steps_ < wanted) Step();
}

void CarModel::Step() {
    ++steps_;
    while (static_cast<double>(steps_) * kStep >= phaseEnd_) {
        const bool last = phase_ + 1 == phases_.size();
        if (last && repeatFrom_ == 0) {
            phaseEnd_ = kForever;
            break;
        }
        phase_ = last ? repeatFrom_ - 1 : phase_ + 1;
        EnterPhase();
    }
    TurnKey();
    Drive();
    TurnEngine();
    ControlMixture();
    Warm();
    Count();
}

void CarModel::EnterPhase() {
    phaseEnd_ += phases_[phase_].Seconds;
    holdSpeed_ = phases_[phase_].Speed > 0 ? phases_[phase_].Speed : state_.Speed;
}

void CarModel::TurnKey() {
    const DriveAction action = phases_[phase_].Action;
    state_.Ignition = action != DriveAction::Off;
    if (action == DriveAction::Off || action == DriveAction::Ignition) {
        state_.EngineRunning = false;
        crankTime_ = 0;
        return;
    }
    if (state_.EngineRunning) return;
    crankTime_ += kStep;
    if (crankTime_ >= kCrankTime) {
        state_.EngineRunning = true;
        state_.RunTime = state_.WarmTime = 0;
        coldest_ = state_.Coolant;
        warmedUp_ = false;
    }
}

/// The driver: how fast the car is to gain or lose speed, from what the phase asks for.
void CarModel::Drive() {
    constexpr double kStrongest = 2.6;  // m/s2
    const double speed = state_.Speed / 3.6;
    const DrivePhase& phase = phases_[phase_];
    const double missing = phase.Speed / 3.6 - speed;
    double wish = 0;
    switch (phase.Action) {
        case DriveAction::Accelerate:
            wish = std::clamp(missing * 0.6, -1.0, kStrongest * (1 - speed / 65));
            break;
        case DriveAction::Cruise:
        case DriveAction::Overheat:
            wish = std::clamp((holdSpeed_ / 3.6 - speed) * 0.4 + 0.12 * Wave(23, seedPhases_[0]) +
                                  0.08 * Wave(7, seedPhases_[1]),
                              -1.5, 1.5);
            if (holdSpeed_ < 1) wish = -2.5;
            break;
        case DriveAction::Brake:
            wish = std::clamp(missing * 0.8, -3.2, 0.0);
            break;
        case DriveAction::Start:
        case DriveAction::Idle:
            wish = -2.5;
            break;
        case DriveAction::Off:
        case DriveAction::Ignition:
            wish = -4;
            break;
    }
    if (!state_.EngineRunning || shiftTime_ > 0) wish = std::min(wish, -0.15);
    Approach(acceleration_, wish, 0.25);
    const double before = state_.Speed;
    state_.Speed = std::max(0.0, before + acceleration_ * 3.6 * kStep);
    if (state_.Speed < 0.5 && wish <= 0) state_.Speed = acceleration_ = 0;
    const double way = (before + state_.Speed) / 2 / 3600 * kStep;
    state_.Distance += way;
    state_.Odometer += way;
    ShiftGears(std::clamp(wish / kStrongest, 0.0, 1.0));
}

void CarModel::ShiftGears(double demand) {
    demand_ = demand;
    if (shiftTime_ > 0) {
        shiftTime_ -= kStep;
        return;
    }
    if (state_.Speed < 1) {
        state_.Gear = 1;
        return;
    }
    if (state_.Gear < kGears && acceleration_ > -0.3 &&
        EngineSpeedInGear(state_.Speed, state_.Gear) > 2500 + 1400 * demand) {
        ++state_.Gear;
        shiftTime_ = kShiftTime;
    }
    while (state_.Gear > 1 && EngineSpeedInGear(state_.Speed, state_.Gear) < 1150) {
        --state_.Gear;
        shiftTime_ = kShiftTime;
    }
    if (shiftTime_ > 0) state_.ClutchClosed = false;
}

void CarModel::TurnEngine() {
    const double idle = IdleSpeed(state_.Coolant);
    if (!state_.EngineRunning) {
        const double target = state_.Ignition && crankTime_ > 0 ? 230 : 0;
        Approach(state_.EngineSpeed, target, 0.25);
        if (state_.EngineSpeed < 1) state_.EngineSpeed = 0;
        state_.ClutchClosed = false;
        Breathe(0);
        return;
    }
    const double inGear = EngineSpeedInGear(state_.Speed, state_.Gear);
    const bool canClose = shiftTime_ <= 0 && state_.Speed >= 1 && inGear >= idle * 0.95;
    if (!canClose) state_.ClutchClosed = false;
    double power = 0;
    if (state_.Speed >= 1 && shiftTime_ <= 0) {
        const double speed = state_.Speed / 3.6;
        const double force = kMass * acceleration_ + 0.6 * kDragArea * speed * speed +
                             kRollingResistance * kMass * 9.81;
        // The brakes take what the engine's drag does not.
        power = force > 0 ? force * speed / kDrivelineEfficiency : force * speed * 0.1;
    }
    if (state_.ClutchClosed) {
        state_.EngineSpeed = inGear;
    } else {
        const double flare = state_.RunTime < 1.2 ? 350 : 0;
        const double target = canClose ? inGear
                              : state_.Speed >= 1 && shiftTime_ <= 0
                                  ? std::max(inGear, idle + 500 * demand_)
                                  : idle + flare + 8 * Wobble(1.7, 2);
        Approach(state_.EngineSpeed, target, canClose ? 0.12 : 0.35);
        if (canClose && std::abs(state_.EngineSpeed - inGear) < 80) {
            state_.ClutchClosed = true;
            state_.EngineSpeed = inGear;
        }
    }
    state_.RunTime += kStep;
    state_.EngineSeconds += kStep;
    Breathe(power);
}

/// Air, throttle and ignition: what the engine needs to give this power (W) to the wheels.
void CarModel::Breathe(double wheelPower) {
    if (state_.EngineSpeed < 50) {
        state_.Load = state_.AbsoluteLoad = state_.AirFlow = state_.Timing = 0;
        state_.ManifoldPressure = state_.Barometer;
        state_.Throttle = kClosedThrottle + 4;
        state_.Pedal = 0;
        state_.FuelCut = false;
        return;
    }
    const double speed = state_.EngineSpeed;
    const double torque = wheelPower / (speed * 2 * std::numbers::pi / 60);
    const double friction = FrictionTorque(speed, state_.Coolant);
    state_.FuelCut =
        state_.EngineRunning && state_.ClutchClosed && torque + friction < 8 && speed > 1300;
    const double indicated = std::clamp((torque + friction) / FullTorque(speed), 0.0, 0.97);
    const double wanted = state_.FuelCut         ? 0.17
                          : state_.EngineRunning ? 0.16 + 0.82 * indicated
                                                 : 0.85;  // the starter turns a full cylinder
    if (state_.Load <= 0) state_.Load = wanted;
    Approach(state_.Load, wanted + 0.004 * Wobble(2.3, 3), 0.15);

    const double cold = 298.15 / (state_.Intake + 273.15);
    state_.AbsoluteLoad =
        state_.Load * VolumetricEfficiency(speed) * cold * state_.Barometer / 101.325;
    state_.AirFlow = state_.AbsoluteLoad * kAirDensity * kDisplacement * speed / 120;
    state_.ManifoldPressure = state_.Barometer * state_.Load;
    const double opening = std::pow(std::max(0.0, (state_.Load - 0.15) / 0.85), 1.4);
    state_.Throttle = kClosedThrottle + 75 * opening * std::min(1.0, 0.3 + 0.7 * speed / 5000);
    state_.Pedal = state_.FuelCut || demand_ + state_.Speed < 1
                       ? 0
                       : std::min(100.0, (state_.Throttle - kClosedThrottle) / 0.75);
    Approach(state_.Timing,
             state_.FuelCut     ? 20
             : state_.Speed < 1 ? 8 + Wobble(0.9, 4)
                                : 16 + 18 * (1 - state_.Load) * speed / 3000,
             0.3);
    state_.Timing = std::clamp(state_.Timing, -10.0, 42.0);
}

void CarModel::ControlMixture() {
    const bool hotSensors = state_.RunTime > 12 && state_.Coolant > 35;
    if (!state_.EngineRunning) {
        state_.Loop = FuelLoop::Off;
    } else if (!hotSensors) {
        state_.Loop = FuelLoop::OpenCold;
    } else if (state_.FuelCut || state_.Load > 0.88) {
        state_.Loop = FuelLoop::OpenLoad;
    } else {
        state_.Loop = FuelLoop::Closed;
        state_.WarmTime += kStep;
    }
    state_.CommandedLambda = state_.FuelCut                      ? 1.99
                             : state_.Load > 0.88                ? 0.88
                             : state_.Loop == FuelLoop::OpenCold ? 0.94
                                                                 : 1.0;
    ControlBank(0);
    ControlBank(1);
    const bool warm = state_.Loop == FuelLoop::Closed && state_.Coolant > 60;
    Approach(state_.EgrCommand, warm && state_.Load < 0.7 && state_.Speed > 20 ? 14 : 0, 1);
    state_.EgrError = state_.EgrCommand > 1 ? 3 * Wobble(5, 5) : 0;
    Approach(state_.Purge, warm ? 10 + 20 * state_.Load : 0, 3);
    state_.VaporPressure = -40 - 3 * state_.Purge + 20 * Wobble(31, 6);
    state_.SecondaryAir = state_.EngineRunning && state_.RunTime < 60 && state_.Coolant < 40;
    Approach(state_.FuelPressure, state_.Ignition ? 380 + 4 * Wobble(3, 7) : 0, 0.4);
}

/// Two-point control: the trim goes on in one direction until the front sensor, which sees the
/// mixture a little later, tips over.
void CarModel::ControlBank(std::size_t index) {
    Bank& bank = state_.Banks[index];
    const double need = 0.03 * Wobble(140, index) + (index == 0 ? 0.01 : -0.015);
    const double trim = (bank.ShortTrim + bank.LongTrim) / 100;
    auto& exhaust = exhaust_[index];
    exhaust.push_back(state_.CommandedLambda * (1 + need) / (1 + trim));
    if (exhaust.size() > kExhaustDelaySteps) exhaust.pop_front();
    const double sensed = state_.EngineRunning ? exhaust.front() : 1.99;
    Approach(bank.FrontLambda, sensed, 0.1);
    Approach(bank.RearLambda, state_.FuelCut ? 1.9 : 1 + (bank.FrontLambda - 1) * 0.1, 0.8);
    const bool powered = state_.EngineRunning && state_.RunTime > 8;
    const auto volts = [powered](double lambda) {
        return powered ? 0.45 + 0.4 * std::tanh((1 - lambda) * 70) : 0.45;
    };
    Approach(bank.FrontVolts, volts(bank.FrontLambda), 0.04);
    Approach(bank.RearVolts,
             powered ? (state_.FuelCut ? 0.03 : 0.68 + 0.02 * Wobble(11, index)) : 0.45, 0.6);
    if (state_.Loop != FuelLoop::Closed) {
        Approach(bank.ShortTrim, 0, 0.5);
        return;
    }
    const double direction = bank.FrontVolts > 0.45 ? -1 : 1;
    bank.ShortTrim = std::clamp(bank.ShortTrim + direction * 6 * kStep, -25.0, 25.0);
    bank.LongTrim = std::clamp(bank.LongTrim + bank.ShortTrim * 0.01 * kStep, -25.0, 25.0);
}

void CarModel::Warm() {
    const double fuel = state_.EngineRunning && !state_.FuelCut
                            ? state_.AirFlow / kIdealMixture / state_.CommandedLambda
                            : 0;
    const bool broken = phases_[phase_].Action == DriveAction::Overheat;
    const double excess = state_.Coolant - state_.Ambient;
    const double thermostat = broken ? 0 : std::clamp((state_.Coolant - 86) / 10, 0.0, 1.0);
    const double heat =
        fuel * kHeatOfFuel * 0.3 * (state_.Coolant < 88 || broken ? warmUpFactor_ : 1) +
        (broken ? 14 : 0);                                    // kW
    const double loss = excess * (0.01 + 0.55 * thermostat);  // kW
    constexpr double kHeatCapacity = 35;                      // kJ/K
    state_.Coolant = std::min(132.0, state_.Coolant + (heat - loss) / kHeatCapacity * kStep);

    const double soak = std::max(0.0, excess) * 0.3 / (1 + state_.Speed / 20);
    Approach(state_.Intake, state_.Ambient + soak, 25);
    for (Bank& bank : state_.Banks) {
        const double hot =
            state_.EngineRunning ? 380 + 9 * std::min(state_.AirFlow, 45.0) : state_.Ambient;
        Approach(bank.CatalystFront, hot, state_.EngineRunning ? 35 : 400);
        Approach(bank.CatalystRear, state_.Ambient + (bank.CatalystFront - state_.Ambient) * 0.86,
                 15);
    }
    const double volts = state_.EngineRunning                ? 14.1 + 0.05 * Wobble(4, 1)
                         : state_.Ignition && crankTime_ > 0 ? 10.4
                                                             : 12.4;
    Approach(state_.Voltage, volts, 0.3);
    // A drive without end needs a filling station now and then.
    state_.FuelLevel -= fuel * kStep / kFuelDensity / kTankLitres * 100;
    if (state_.FuelLevel < 5) state_.FuelLevel = 95;
}

/// A warm-up: the coolant has risen by 22 K since the start and reached 70 degrees.
void CarModel::Count() {
    if (!warmedUp_ && state_.EngineRunning && state_.Coolant >= 70 &&
        state_.Coolant - coldest_ >= 22) {
        warmedUp_ = true;
        ++state_.WarmUps;
    }
}

double CarModel::Wave(double period, double phase) const {
    return std::sin(static_cast<double>(steps_) * kStep * 2 * std::numbers::pi / period + phase);
}

/// Two waves of unrelated periods: looks random, and depends on the time and the seed alone.
double CarModel::Wobble(double period, std::size_t which) const {
    return 0.6 * Wave(period, seedPhases_[which]) +
           0.4 * Wave(period * 0.387, seedPhases_[(which + 3) % seedPhases_.size()]);
}

}  // namespace dravik::vehicle
