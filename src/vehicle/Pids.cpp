#include "vehicle/Pids.h"

#include <algorithm>
#include <cmath>

namespace dravik::vehicle {
namespace {

using R = const Readings&;
using U32 = std::uint32_t;

U32 Limited(double value, double highest) {
    return static_cast<U32>(std::clamp(std::round(value), 0.0, highest));
}
U32 Byte(double value) {
    return Limited(value, 0xFF);
}
U32 Word(double value) {
    return Limited(value, 0xFFFF);
}
U32 Percent(double percent) {
    return Byte(percent * 255 / 100);
}
U32 Temperature(double celsius) {
    return Byte(celsius + 40);
}
U32 SignedPercent(double percent) {
    return Byte((percent + 100) * 128 / 100);
}
U32 Catalyst(double celsius) {
    return Word((celsius + 40) * 10);
}

/// Narrow-band sensor: volts / 200, then the trim, or FF for a sensor that does not control one.
U32 Narrow(double volts, double trim) {
    return Byte(volts * 200) << 8 | SignedPercent(trim);
}
U32 Narrow(double volts) {
    return Byte(volts * 200) << 8 | 0xFF;
}

/// Wide-band sensor: the mixture, then volts around 1.5 V or milliamperes around 0.
double Current(double lambda) {
    return std::clamp((lambda - 1) * 4, -3.0, 3.0);
}
U32 WideVolts(double lambda) {
    return Word(lambda * 32768) << 16 | Word((1.5 + Current(lambda) / 4) * 8192);
}
U32 WideCurrent(double lambda) {
    return Word(lambda * 32768) << 16 | Word((Current(lambda) + 128) * 256);
}

const Bank& B1(R r) {
    return r.Car.Banks[0];
}
const Bank& B2(R r) {
    return r.Car.Banks[1];
}

/// Third and fourth sensors sit further down the pipe, where the mixture hardly moves any more.
double FarVolts(const Bank& bank) {
    return 0.6 + (bank.RearVolts - 0.68) * 0.5;
}
double FarLambda(const Bank& bank) {
    return 1 + (bank.RearLambda - 1) * 0.5;
}

constexpr double kPerKilopascal = 1 / 0.079;  // the unit of PID 22

constexpr PidRow kPids[] = {
    // PID, bytes, name, in freeze frames, in every unit, value
    {0x01, 4, "monitor status since codes cleared", false, true,
     [](R r) {
         return (r.Trouble.Lamp ? 0x80000000u : 0u) |
                static_cast<U32>(r.Trouble.StoredCodes) << 24 | U32{r.Trouble.Continuous} << 16 |
                U32{r.Trouble.Monitors} << 8 | r.Trouble.MonitorsIncomplete;
     }},
    {0x02, 2, "code of the freeze frame", true, false,
     [](R r) { return U32{r.Trouble.FirstCode}; }},
    {0x03, 2, "fuel system status", true, false,
     [](R r) { return static_cast<U32>(r.Car.Loop) << 8 | static_cast<U32>(r.Car.Loop); }},
    {0x04, 1, "calculated load", true, false, [](R r) { return Percent(r.Car.Load * 100); }},
    {0x05, 1, "coolant temperature", true, true, [](R r) { return Temperature(r.Car.Coolant); }},
    {0x06, 1, "short term trim, bank 1", true, false,
     [](R r) { return SignedPercent(B1(r).ShortTrim); }},
    {0x07, 1, "long term trim, bank 1", true, false,
     [](R r) { return SignedPercent(B1(r).LongTrim); }},
    {0x08, 1, "short term trim, bank 2", true, false,
     [](R r) { return SignedPercent(B2(r).ShortTrim); }},
    {0x09, 1, "long term trim, bank 2", true, false,
     [](R r) { return SignedPercent(B2(r).LongTrim); }},
    {0x0A, 1, "fuel pressure", true, false, [](R r) { return Byte(r.Car.FuelPressure / 3); }},
    {0x0B, 1, "manifold pressure", true, false, [](R r) { return Byte(r.Car.ManifoldPressure); }},
    {0x0C, 2, "engine speed", true, true, [](R r) { return Word(r.Car.EngineSpeed * 4); }},
    {0x0D, 1, "road speed", true, true, [](R r) { return Byte(r.Car.Speed); }},
    {0x0E, 1, "ignition timing", true, false, [](R r) { return Byte((r.Car.Timing + 64) * 2); }},
    {0x0F, 1, "intake air temperature", true, false, [](R r) { return Temperature(r.Car.Intake); }},
    {0x10, 2, "air flow", true, false, [](R r) { return Word(r.Car.AirFlow * 100); }},
    {0x11, 1, "throttle position", true, false, [](R r) { return Percent(r.Car.Throttle); }},
    {0x12, 1, "secondary air", true, false, [](R r) { return r.Car.SecondaryAir ? 1u : 4u; }},
    {0x13, 1, "oxygen sensor places, two banks", false, false, [](R) { return 0xFFu; }},
    {0x14, 2, "oxygen sensor 1, bank 1", true, false,
     [](R r) { return Narrow(B1(r).FrontVolts, B1(r).ShortTrim); }},
    {0x15, 2, "oxygen sensor 2, bank 1", true, false, [](R r) { return Narrow(B1(r).RearVolts); }},
    {0x16, 2, "oxygen sensor 3, bank 1", true, false, [](R r) { return Narrow(FarVolts(B1(r))); }},
    {0x17, 2, "oxygen sensor 4, bank 1", true, false, [](R r) { return Narrow(FarVolts(B1(r))); }},
    {0x18, 2, "oxygen sensor 1, bank 2", true, false,
     [](R r) { return Narrow(B2(r).FrontVolts, B2(r).ShortTrim); }},
    {0x19, 2, "oxygen sensor 2, bank 2", true, false, [](R r) { return Narrow(B2(r).RearVolts); }},
    {0x1A, 2, "oxygen sensor 3, bank 2", true, false, [](R r) { return Narrow(FarVolts(B2(r))); }},
    {0x1B, 2, "oxygen sensor 4, bank 2", true, false, [](R r) { return Narrow(FarVolts(B2(r))); }},
    {0x1C, 1, "diagnostic standard", false, true, [](R) { return 6u; }},
    {0x1D, 1, "oxygen sensor places, four banks", false, false, [](R) { return 0x0Fu; }},
    {0x1E, 1, "power take-off", true, false, [](R) { return 0u; }},
    {0x1F, 2, "time since start", true, false, [](R r) { return Word(std::floor(r.Car.RunTime)); }},
    {0x21, 2, "distance with lamp on", false, false,
     [](R r) { return Word(std::floor(r.Trouble.DistanceWithLamp)); }},
    {0x22, 2, "fuel rail pressure over manifold", true, false,
     [](R r) {
         return Word((r.Car.FuelPressure + r.Car.Barometer - r.Car.ManifoldPressure) *
                     kPerKilopascal);
     }},
    {0x23, 2, "fuel rail pressure", true, false, [](R r) { return Word(r.Car.FuelPressure / 10); }},
    {0x24, 4, "mixture and voltage 1, bank 1", true, false,
     [](R r) { return WideVolts(B1(r).FrontLambda); }},
    {0x25, 4, "mixture and voltage 2, bank 1", true, false,
     [](R r) { return WideVolts(B1(r).RearLambda); }},
    {0x26, 4, "mixture and voltage 3, bank 1", true, false,
     [](R r) { return WideVolts(FarLambda(B1(r))); }},
    {0x27, 4, "mixture and voltage 4, bank 1", true, false,
     [](R r) { return WideVolts(FarLambda(B1(r))); }},
    {0x28, 4, "mixture and voltage 1, bank 2", true, false,
     [](R r) { return WideVolts(B2(r).FrontLambda); }},
    {0x29, 4, "mixture and voltage 2, bank 2", true, false,
     [](R r) { return WideVolts(B2(r).RearLambda); }},
    {0x2A, 4, "mixture and voltage 3, bank 2", true, false,
     [](R r) { return WideVolts(FarLambda(B2(r))); }},
    {0x2B, 4, "mixture and voltage 4, bank 2", true, false,
     [](R r) { return WideVolts(FarLambda(B2(r))); }},
    {0x2C, 1, "exhaust gas recirculation", true, false,
     [](R r) { return Percent(r.Car.EgrCommand); }},
    {0x2D, 1, "recirculation error", true, false,
     [](R r) { return SignedPercent(r.Car.EgrError); }},
    {0x2E, 1, "evaporative purge", true, false, [](R r) { return Percent(r.Car.Purge); }},
    {0x2F, 1, "fuel level", true, false, [](R r) { return Percent(r.Car.FuelLevel); }},
    {0x30, 1, "warm-ups since codes cleared", false, false,
     [](R r) { return Byte(r.Trouble.WarmUpsSinceCleared); }},
    {0x31, 2, "distance since codes cleared", false, false,
     [](R r) { return Word(std::floor(r.Trouble.DistanceSinceCleared)); }},
    {0x32, 2, "fuel vapour pressure", true, false,
     [](R r) {
         // Two's complement in quarters of a pascal.
         return static_cast<U32>(static_cast<std::int32_t>(std::round(r.Car.VaporPressure * 4))) &
                0xFFFFu;
     }},
    {0x33, 1, "barometric pressure", true, false, [](R r) { return Byte(r.Car.Barometer); }},
    {0x34, 4, "mixture and current 1, bank 1", true, false,
     [](R r) { return WideCurrent(B1(r).FrontLambda); }},
    {0x35, 4, "mixture and current 2, bank 1", true, false,
     [](R r) { return WideCurrent(B1(r).RearLambda); }},
    {0x36, 4, "mixture and current 3, bank 1", true, false,
     [](R r) { return WideCurrent(FarLambda(B1(r))); }},
    {0x37, 4, "mixture and current 4, bank 1", true, false,
     [](R r) { return WideCurrent(FarLambda(B1(r))); }},
    {0x38, 4, "mixture and current 1, bank 2", true, false,
     [](R r) { return WideCurrent(B2(r).FrontLambda); }},
    {0x39, 4, "mixture and current 2, bank 2", true, false,
     [](R r) { return WideCurrent(B2(r).RearLambda); }},
    {0x3A, 4, "mixture and current 3, bank 2", true, false,
     [](R r) { return WideCurrent(FarLambda(B2(r))); }},
    {0x3B, 4, "mixture and current 4, bank 2", true, false,
     [](R r) { return WideCurrent(FarLambda(B2(r))); }},
    {0x3C, 2, "catalyst temperature 1, bank 1", true, false,
     [](R r) { return Catalyst(B1(r).CatalystFront); }},
    {0x3D, 2, "catalyst temperature 1, bank 2", true, false,
     [](R r) { return Catalyst(B2(r).CatalystFront); }},
    {0x3E, 2, "catalyst temperature 2, bank 1", true, false,
     [](R r) { return Catalyst(B1(r).CatalystRear); }},
    {0x3F, 2, "catalyst temperature 2, bank 2", true, false,
     [](R r) { return Catalyst(B2(r).CatalystRear); }},
    {0x41, 4, "monitor status of this drive", false, false,
     [](R r) {
         return U32{r.Trouble.Continuous} << 16 | U32{r.Trouble.Monitors} << 8 |
                r.Trouble.CycleIncomplete;
     }},
    {0x42, 2, "control module voltage", true, true, [](R r) { return Word(r.Car.Voltage * 1000); }},
    {0x43, 2, "absolute load", true, false, [](R r) { return Word(r.Car.AbsoluteLoad * 255); }},
    {0x44, 2, "commanded mixture", true, false,
     [](R r) { return Word(r.Car.CommandedLambda * 32768); }},
    {0x45, 1, "relative throttle position", true, false,
     [](R r) { return Percent(r.Car.Throttle - kClosedThrottle); }},
    {0x46, 1, "ambient temperature", true, false, [](R r) { return Temperature(r.Car.Ambient); }},
    {0x47, 1, "throttle position B", true, false,
     [](R r) { return Percent(r.Car.Throttle + 0.5); }},
    {0x48, 1, "throttle position C", true, false, [](R r) { return Percent(r.Car.Throttle + 1); }},
    {0x49, 1, "pedal position D", true, false,
     [](R r) { return Percent(15 + 0.65 * r.Car.Pedal); }},
    {0x4A, 1, "pedal position E", true, false,
     [](R r) { return Percent((15 + 0.65 * r.Car.Pedal) / 2); }},
    {0x4B, 1, "pedal position F", true, false,
     [](R r) { return Percent((15 + 0.65 * r.Car.Pedal) / 2); }},
    {0x4C, 1, "commanded throttle", true, false,
     [](R r) { return Percent(r.Car.Throttle - kClosedThrottle); }},
    {0x4D, 2, "minutes with lamp on", false, false,
     [](R r) { return Word(std::floor(r.Trouble.MinutesWithLamp)); }},
    {0x4E, 2, "minutes since codes cleared", false, false,
     [](R r) { return Word(std::floor(r.Trouble.MinutesSinceCleared)); }},
    {0xA6, 4, "odometer", false, false, [](R r) { return static_cast<U32>(r.Car.Odometer * 10); }},
};

}  // namespace

const PidRow* FindPid(int pid) {
    const auto row = std::lower_bound(std::begin(kPids), std::end(kPids), pid,
                                      [](const PidRow& r, int wanted) { return r.Pid < wanted; });
    return row != std::end(kPids) && row->Pid == pid ? row : nullptr;
}

std::vector<std::uint8_t> EncodePid(const PidRow& row, const Readings& readings) {
    const std::uint32_t value = row.Encode(readings);
    std::vector<std::uint8_t> bytes;
    for (int shift = (row.Bytes - 1) * 8; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    return bytes;
}

std::vector<std::uint8_t> SupportMask(int base, const std::function<bool(int pid)>& supported) {
    std::uint32_t mask = 0;
    for (int i = 1; i <= 32; ++i) {
        if (supported(base + i)) mask |= 0x80000000u >> (i - 1);
    }
    std::vector<std::uint8_t> bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(mask >> shift));
    return bytes;
}

}  // namespace dravik::vehicle
