#include "obd/StandardCodes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>

#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr std::uint8_t kFreezeService = 2;
constexpr std::uint8_t kCausePid = 2;  // the code that caused the frame
constexpr std::size_t kCauseByte = 3;  // behind service, PID and frame

/// What stands behind service, PID and frame.
std::optional<FrozenNumber> ValueIn(const Bytes& message) {
    if (message.size() <= kCauseByte) return std::nullopt;
    const std::string data(message.begin() + kCauseByte, message.end());
    const std::optional<std::int32_t> number = HexNumber(TextToHex(data));
    if (!number) return std::nullopt;
    return FrozenNumber{*number, static_cast<std::uint8_t>(data.size())};
}

/// The codes that caused a frame, one for each unit that has it.
std::vector<UnitCode> CausesIn(const Reply& reply) {
    std::vector<UnitCode> causes;
    for (const UnitMessage& message : reply.Messages) {
        if (message.Data.size() < kCauseByte + 2) continue;
        const std::uint8_t high = message.Data[kCauseByte];
        const std::uint8_t low = message.Data[kCauseByte + 1];
        if (high != 0 || low != 0) causes.push_back({message.Unit, CodeText(high, low)});
    }
    return causes;
}

/// The values of one frame of several units: by unit and PID.
using FrozenNumbers = std::map<std::uint32_t, std::map<int, FrozenNumber>>;

/// The PIDs that any unit has in a frame, from the masks of 32 that they answer.
std::vector<std::uint8_t> PidsIn(std::uint8_t frame, bool headers) {
    constexpr int kMaskPids = 32;
    std::vector<std::uint8_t> pids;
    for (int mask = 0; mask < kPidCount; mask += kMaskPids) {
        const Bytes request = {kFreezeService, static_cast<std::uint8_t>(mask), frame};
        std::uint32_t bits = 0;
        for (const UnitMessage& message : Ask(request, headers).Messages)
            bits |=
                static_cast<std::uint32_t>(ValueIn(message.Data).value_or(FrozenNumber{}).Number);
        for (int bit = 0; bit < kMaskPids; ++bit) {
            const int pid = mask + 1 + bit;
            const bool isMask = pid % kMaskPids == 0;
            if ((bits << bit & 0x80000000U) != 0 && pid < kPidCount && !isMask && pid != kCausePid)
                pids.push_back(static_cast<std::uint8_t>(pid));
        }
        if ((bits & 1U) == 0) break;  // no unit has the next mask
    }
    return pids;
}

FrozenNumbers ReadShared(std::uint8_t frame, bool headers) {
    FrozenNumbers values;
    for (const std::uint8_t pid : PidsIn(frame, headers)) {
        const Reply reply = Ask({kFreezeService, pid, frame}, headers);
        if (reply.End == ReplyEnd::Unfinished) break;
        for (const UnitMessage& message : reply.Messages) {
            if (const auto value = ValueIn(message.Data)) values[message.Unit][pid] = *value;
        }
    }
    return values;
}

/// The code's place among the codes; nothing for a frame of a code that is not stored any more.
std::optional<std::size_t> PlaceOf(const UnitCode& cause, const std::vector<UnitCode>& codes) {
    const auto code = std::find_if(codes.begin(), codes.end(), [&cause](const UnitCode& each) {
        return each.Unit == cause.Unit && each.Code == cause.Code;
    });
    if (code == codes.end()) return std::nullopt;
    return static_cast<std::size_t>(code - codes.begin());
}

}  // namespace

std::vector<CodeOrigin> AskFrameOrigins(const std::vector<UnitCode>& codes, bool headers) {
    std::vector<CodeOrigin> origins;
    origins.reserve(codes.size());
    for (const UnitCode& code : codes) origins.push_back({code.Unit, std::nullopt});
    for (std::size_t frame = 0; frame < codes.size(); ++frame) {
        const Reply reply =
            Ask({kFreezeService, kCausePid, static_cast<std::uint8_t>(frame)}, headers);
        if (reply.End != ReplyEnd::Answered) break;
        const std::vector<UnitCode> causes = CausesIn(reply);
        if (causes.empty()) break;
        const bool shared = causes.size() > 1;
        if (shared && !headers) continue;  // nobody knows whose it is
        FrozenNumbers values;
        if (shared) values = ReadShared(static_cast<std::uint8_t>(frame), headers);
        for (const UnitCode& cause : causes) {
            const auto place = PlaceOf(cause, codes);
            if (!place || origins[*place].Frame) continue;
            origins[*place].Frame = static_cast<int>(frame);
            if (shared) origins[*place].Kept = values[cause.Unit];
        }
    }
    return origins;
}

CodeOrigin SelectedOrigin() {
    const ListSlot& list = basGlobal.Lists[kCodeListSlot];
    if (list.Entries.empty()) return {0, 0};
    if (!CodesListed() || list.Selected < 1) return {};
    const CodeOrigin* origin = FindAt(basGlobal.CodeOrigins, list.Selected - 1);
    return origin != nullptr ? *origin : CodeOrigin{};
}

}  // namespace dravik
