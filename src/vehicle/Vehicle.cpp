#include "vehicle/Vehicle.h"

#include <algorithm>

#include "vehicle/Information.h"
#include "vehicle/MonitorTests.h"

namespace dravik::vehicle {
namespace {

constexpr int kEngineUnit = 1;
constexpr std::uint8_t kModeNotSupported = 0x11;
constexpr std::uint8_t kWrongFormat = 0x12;
constexpr std::uint8_t kConditionsNotCorrect = 0x22;
constexpr int kOdometer = 0xA6;

bool IsMask(int pid) {
    return pid % 0x20 == 0;
}

void Append(Bytes& message, const Bytes& more) {
    message.insert(message.end(), more.begin(), more.end());
}

void AppendCode(Bytes& message, std::uint16_t code) {
    message.push_back(static_cast<std::uint8_t>(code >> 8));
    message.push_back(static_cast<std::uint8_t>(code & 0xFF));
}

}  // namespace

Vehicle::Vehicle(const Scenario& scenario)
    : scenario_(scenario),
      timesRefused_(scenario.Refusals.size(), 0),
      car_(scenario_),
      trouble_(scenario_,
               [this](const CarState& car, std::uint16_t code) { return TakeFrame(car, code); }) {}

void Vehicle::AdvanceTo(double seconds) {
    car_.AdvanceTo(seconds);
    trouble_.Update(seconds, car_.State());
}

std::vector<UnitReply> Vehicle::Request(const Bytes& request) {
    std::vector<UnitReply> replies;
    if (!Awake() || request.empty()) return replies;
    cleared_ = false;
    for (int unit = 1; unit <= scenario_.Units; ++unit) {
        UnitReply reply = ReplyOf(unit, request);
        if (!reply.Messages.empty()) replies.push_back(std::move(reply));
    }
    return replies;
}

UnitReply Vehicle::ReplyOf(int unit, const Bytes& request) {
    for (std::size_t i = 0; i < scenario_.Refusals.size(); ++i) {
        const RefusalRule& rule = scenario_.Refusals[i];
        const bool meant = rule.Unit == 0 || rule.Unit == unit;
        const bool begins = rule.Request.size() <= request.size() &&
                            std::equal(rule.Request.begin(), rule.Request.end(), request.begin());
        if (!meant || !begins || timesRefused_[i] >= rule.Times) continue;
        ++timesRefused_[i];
        UnitReply reply{unit, {}, rule.PendingTime};
        if (rule.Then == RefusalRule::Ending::Answer) {
            reply.Messages = Answer(unit, request);
            if (reply.Messages.empty()) return reply;
        } else if (rule.Then == RefusalRule::Ending::Refusal) {
            reply.Messages = {{kRefused, request[0], rule.Reason}};
        }
        reply.Messages.insert(reply.Messages.begin(), static_cast<std::size_t>(rule.Pending),
                              {kRefused, request[0], kAnswerPending});
        return reply;
    }
    return {unit, Answer(unit, request)};
}

bool Vehicle::Supports(int unit, int pid) const {
    if (IsMask(pid)) {
        if (pid == 0x00) return true;
        for (int above = pid + 1; above <= kLastPid; ++above) {
            if (!IsMask(above) && Supports(unit, above)) return true;
        }
        return false;
    }
    const PidRow* row = FindPid(pid);
    if (pid == kOdometer && !scenario_.Odometer) return false;
    return row != nullptr && scenario_.UnsupportedPids.count(pid) == 0 &&
           (unit == kEngineUnit || row->Gearbox);
}

std::vector<Bytes> Vehicle::Answer(int unit, const Bytes& request) {
    if (scenario_.Services.count(request[0]) == 0)
        return Refusal(unit, request[0], kModeNotSupported);
    switch (request[0]) {
        case 0x01:
            return LiveData(unit, request);
        case 0x02:
            return FrozenData(unit, request);
        case 0x03:
            return CodeList(unit, 0x03, CodeState::Stored);
        case 0x04:
            return ClearAll();
        case 0x06:
            if (request.size() != 2) return Refusal(unit, 0x06, kWrongFormat);
            return TestResultsOf(scenario_, unit, request[1], LongMessages(),
                                 trouble_.Status(unit, car_.State()));
        case 0x07:
            return CodeList(unit, 0x07, CodeState::Pending);
        case 0x09:
            if (request.size() != 2) return Refusal(unit, 0x09, kWrongFormat);
            return InformationOf(scenario_, unit, request[1], LongMessages());
        case 0x0A:
            return CodeList(unit, 0x0A, CodeState::Permanent);
        default:
            return Refusal(unit, request[0], kModeNotSupported);
    }
}

std::vector<Bytes> Vehicle::LiveData(int unit, const Bytes& request) const {
    if (request.size() != 2) return Refusal(unit, 0x01, kWrongFormat);
    const int pid = request[1];
    if (!Supports(unit, pid)) return {};
    Bytes message = {0x41, request[1]};
    if (IsMask(pid)) {
        Append(message, SupportMask(pid, [this, unit](int p) { return Supports(unit, p); }));
    } else {
        const TroubleStatus status = trouble_.Status(unit, car_.State());
        Append(message, EncodePid(*FindPid(pid), {car_.State(), status}));
    }
    return {message};
}

std::vector<Bytes> Vehicle::FrozenData(int unit, const Bytes& request) const {
    if (request.size() != 3) return Refusal(unit, 0x02, kWrongFormat);
    const FrameValues* frame = trouble_.Frame(unit, request[2]);
    if (frame == nullptr) {
        if (!scenario_.EmptyFrames || request[2] != 0) return {};
        if (request[1] == 0x00) return {{0x42, 0x00, 0x00, 0x40, 0x00, 0x00, 0x00}};
        if (request[1] == 0x02) return {{0x42, 0x02, 0x00, 0x00, 0x00}};
        return {};
    }
    const auto kept = [unit, frame](int pid) {
        const PidRow* row = FindPid(pid);
        const bool ofUnit = unit == kEngineUnit || pid == 0x02 || (row != nullptr && row->Gearbox);
        return ofUnit && frame->count(pid) != 0;
    };
    const auto supported = [&kept](int pid) {
        if (!IsMask(pid)) return kept(pid);
        for (int above = pid + 1; above <= kLastPid; ++above) {
            if (kept(above)) return true;
        }
        return false;
    };
    const int pid = request[1];
    if (pid != 0x00 && !supported(pid)) return {};
    Bytes message = {0x42, request[1], request[2]};
    Append(message, IsMask(pid) ? SupportMask(pid, supported) : frame->at(pid));
    return {message};
}

std::vector<Bytes> Vehicle::CodeList(int unit, std::uint8_t mode, CodeState state) const {
    const auto codes = trouble_.Codes(unit, state);
    const auto answer = static_cast<std::uint8_t>(mode + 0x40);
    if (LongMessages()) {
        Bytes message = {answer, static_cast<std::uint8_t>(codes.size())};
        for (std::uint16_t code : codes) AppendCode(message, code);
        return {message};
    }
    // Three codes to a message, with zeroes for those that are missing.
    std::vector<Bytes> messages;
    for (std::size_t first = 0; first == 0 || first < codes.size(); first += 3) {
        Bytes message = {answer};
        for (std::size_t i = first; i < first + 3; ++i)
            AppendCode(message, i < codes.size() ? codes[i] : std::uint16_t{0});
        messages.push_back(message);
    }
    return messages;
}

std::vector<Bytes> Vehicle::ClearAll() {
    if (scenario_.ClearNeedsEngineOff && car_.State().EngineRunning)
        return {{0x7F, 0x04, kConditionsNotCorrect}};
    if (!cleared_) trouble_.Clear(car_.State());
    cleared_ = true;
    return {{0x44}};
}

/// Only the units of the keyword protocols refuse a request that went to all of them; the others
/// stay silent.
std::vector<Bytes> Vehicle::Refusal(int unit, std::uint8_t mode, std::uint8_t reason) const {
    const bool refuses = scenario_.Protocol == '4' || scenario_.Protocol == '5';
    if (!refuses || unit != kEngineUnit) return {};
    return {{0x7F, mode, reason}};
}

FrameValues Vehicle::TakeFrame(const CarState& car, std::uint16_t code) const {
    FrameValues frame;
    TroubleStatus status;
    status.FirstCode = code;
    for (int pid = 0x02; pid <= kLastPid; ++pid) {
        const PidRow* row = FindPid(pid);
        if (row == nullptr || !row->InFrame) continue;
        if (pid != 0x02 && !Supports(kEngineUnit, pid)) continue;
        frame[pid] = EncodePid(*row, {car, status});
    }
    return frame;
}

}  // namespace dravik::vehicle
