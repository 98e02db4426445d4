#include "report/LiveValues.h"

#include <array>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr std::size_t kPidDigits = 2;

/// Which PIDs the sensors show.
std::array<bool, kPidCount> PidsOfSensors() {
    std::array<bool, kPidCount> pids{};
    for (const SensorRecord& sensor : SensorsInUse()) {
        const std::string source = LowerCased(sensor.Source);
        if (!source.starts_with("obd_")) continue;
        const auto pid = HexNumber(std::string_view(source).substr(source.size() - kPidDigits));
        if (pid && *pid >= 0 && *pid < kPidCount) At(pids, *pid) = true;
    }
    return pids;
}

/// The data bytes of the last reply.
std::vector<std::uint8_t> LiveBytes(int pid) {
    constexpr int kByte = 8;
    const auto raw = static_cast<std::uint32_t>(At(basGlobal.LiveRaw, pid));
    std::vector<std::uint8_t> bytes;
    for (int shift = (At(basGlobal.LiveSize, pid) - 1) * kByte; shift >= 0; shift -= kByte)
        bytes.push_back(static_cast<std::uint8_t>(raw >> shift));
    return bytes;
}

}  // namespace

std::vector<int> ReadablePids(const Diagnosis& diagnosis) {
    const auto shown = PidsOfSensors();
    std::vector<int> pids;
    for (int pid = 1; pid < kPidCount; ++pid) {
        if (At(shown, pid) && diagnosis.LiveData.test(static_cast<std::size_t>(pid)))
            pids.push_back(pid);
    }
    return pids;
}

std::vector<FrameValue> KnownLiveValues() {
    std::vector<FrameValue> values;
    if (FreezeFrameMode()) return values;
    const auto shown = PidsOfSensors();
    for (int pid = 0; pid < kPidCount; ++pid) {
        if (!At(shown, pid) || !PidKnown(pid)) continue;
        for (FrameValue& value : FrameValuesOf(static_cast<std::uint8_t>(pid), LiveBytes(pid)))
            values.push_back(std::move(value));
    }
    return values;
}

}  // namespace dravik
