#include "vehicle/TroubleMemory.h"

#include <algorithm>
#include <memory>

namespace dravik::vehicle {
namespace {

/// How long a monitor needs after a start, counted while the mixture is under closed control.
struct Monitor {
    std::uint8_t Bit;
    double WarmSeconds;
};

constexpr Monitor kMonitorTimes[] = {
    {0x40, 30},    // oxygen sensor heaters
    {0x20, 120},   // oxygen sensors
    {0x01, 300},   // catalyst
    {0x04, 1800},  // fuel vapour system
};

/// Only the vapour monitor, which rarely finds its conditions, is open in a car that has been
/// driven for a while.
constexpr std::uint8_t kOpenAfterLongDrive = 0x04;

std::uint8_t IncompleteAfter(double warmSeconds) {
    std::uint8_t incomplete = 0;
    for (const auto& monitor : kMonitorTimes) {
        if (warmSeconds < monitor.WarmSeconds)
            incomplete = static_cast<std::uint8_t>(incomplete | monitor.Bit);
    }
    return incomplete;
}

bool LightsLamp(const CodeRule& rule) {
    return rule.Lamp && rule.State == CodeState::Stored;
}

}  // namespace

TroubleMemory::TroubleMemory(const Scenario& scenario, TakeFrame takeFrame)
    : takeFrame_(std::move(takeFrame)),
      distanceBase_(scenario.Distance),
      minutesBase_(scenario.Minutes),
      warmUpsBase_(scenario.WarmUps),
      incomplete_(scenario.OpenMonitors.value_or(scenario.MonitorsComplete ? kOpenAfterLongDrive
                                                                           : kMonitors)) {
    for (const UnitRule& rule : scenario.UnitRules) monitors_.push_back(rule.Monitors);
    for (const CodeRule& rule : scenario.Codes) {
        if (rule.At > 0) {
            waiting_.push_back(rule);
            continue;
        }
        Entry entry{rule, rule.HasFrame && rule.State == CodeState::Stored, {}};
        if (entry.HasFrame) {
            // An old code's frame shows the car as it was on an earlier drive like this one.
            const auto earlier = std::make_unique<CarModel>(scenario);
            earlier->AdvanceTo(rule.FrameAt);
            entry.Frame = takeFrame_(earlier->State(), rule.Code);
            for (const auto& [pid, bytes] : rule.FrameBytes) entry.Frame[pid] = bytes;
        }
        entries_.push_back(std::move(entry));
        if (LightsLamp(rule)) {
            // The lamp of an old code has been on for half of the way since the last clearing.
            lampDistance_ = scenario.Distance / 2;
            lampMinutes_ = scenario.Minutes / 2;
        }
    }
    std::stable_sort(waiting_.begin(), waiting_.end(),
                     [](const CodeRule& a, const CodeRule& b) { return a.At < b.At; });
}

void TroubleMemory::Update(double seconds, const CarState& car) {
    const bool lamp = std::any_of(entries_.begin(), entries_.end(),
                                  [](const Entry& entry) { return LightsLamp(entry.Rule); });
    if (lamp) {
        lampDistance_ += car.Distance - lastDistance_;
        lampMinutes_ += (car.EngineSeconds - lastSeconds_) / 60;
    }
    lastDistance_ = car.Distance;
    lastSeconds_ = car.EngineSeconds;
    while (!waiting_.empty() && waiting_.front().At <= seconds) {
        const CodeRule rule = waiting_.front();
        waiting_.erase(waiting_.begin());
        Entry entry{rule, rule.HasFrame && rule.State == CodeState::Stored, {}};
        if (entry.HasFrame) {
            entry.Frame = takeFrame_(car, rule.Code);
            for (const auto& [pid, bytes] : rule.FrameBytes) entry.Frame[pid] = bytes;
        }
        entries_.push_back(std::move(entry));
    }
    const double warm = std::min(car.WarmTime, car.EngineSeconds - clearedAt_);
    const bool open = incomplete_ != 0;
    incomplete_ = static_cast<std::uint8_t>(incomplete_ & IncompleteAfter(warm));
    // The last monitor has run and found nothing: what was only kept until then may go.
    if (open && incomplete_ == 0)
        std::erase_if(entries_,
                      [](const Entry& e) { return e.Rule.State == CodeState::Permanent; });
}

std::vector<std::uint16_t> TroubleMemory::Codes(int unit, CodeState state) const {
    std::vector<std::uint16_t> codes;
    for (const Entry& entry : entries_) {
        const bool both = state == CodeState::Permanent && entry.Rule.Permanent;
        if (entry.Rule.Unit == unit && (entry.Rule.State == state || both))
            codes.push_back(entry.Rule.Code);
    }
    return codes;
}

TroubleStatus TroubleMemory::Status(int unit, const CarState& car) const {
    TroubleStatus status;
    const auto codes = Codes(unit, CodeState::Stored);
    status.StoredCodes = static_cast<int>(std::min<std::size_t>(codes.size(), 127));
    if (!codes.empty()) status.FirstCode = codes.front();
    for (const Entry& entry : entries_) {
        if (entry.Rule.Unit == unit && LightsLamp(entry.Rule)) status.Lamp = true;
    }
    status.DistanceWithLamp = lampDistance_;
    status.MinutesWithLamp = lampMinutes_;
    status.DistanceSinceCleared = distanceBase_ + car.Distance;
    status.MinutesSinceCleared = minutesBase_ + car.EngineSeconds / 60;
    status.WarmUpsSinceCleared = warmUpsBase_ + car.WarmUps;
    status.MonitorsIncomplete = incomplete_;
    status.CycleIncomplete =
        IncompleteAfter(std::min(car.WarmTime, car.EngineSeconds - clearedAt_));
    const auto index = static_cast<std::size_t>(unit - 1);
    if (index < monitors_.size() && monitors_[index]) {
        status.Monitors = *monitors_[index];
        // Only the engine's unit sees misfires and the fuel system.
        if (unit > 1) status.Continuous = 0x04;
    }
    status.MonitorsIncomplete &= status.Monitors;
    status.CycleIncomplete &= status.Monitors;
    return status;
}

const FrameValues* TroubleMemory::Frame(int unit, std::size_t number) const {
    for (const Entry& entry : entries_) {
        if (entry.Rule.Unit != unit || entry.Rule.State != CodeState::Stored) continue;
        if (number-- == 0) return entry.HasFrame ? &entry.Frame : nullptr;
    }
    return nullptr;
}

void TroubleMemory::Clear(const CarState& car) {
    std::erase_if(entries_, [](const Entry& entry) {
        return !entry.Rule.Permanent && entry.Rule.State != CodeState::Permanent;
    });
    for (Entry& entry : entries_) {
        entry.Rule.State = CodeState::Permanent;
        entry.HasFrame = false;
    }
    distanceBase_ = -car.Distance;
    minutesBase_ = -car.EngineSeconds / 60;
    warmUpsBase_ = -car.WarmUps;
    lampDistance_ = lampMinutes_ = 0;
    incomplete_ = kMonitors;
    clearedAt_ = car.EngineSeconds;
}

}  // namespace dravik::vehicle
