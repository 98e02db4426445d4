#include <algorithm>
#include <optional>

#include "lists/basFunctions.h"
#include "obd/LinkStep.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr std::uint8_t kFreezeService = 2;
constexpr std::uint8_t kCausePid = 2;  // the code that caused the frame
constexpr std::size_t kCauseByte = 3;  // behind service, PID and frame

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
        if (causes.size() > 1) continue;
        const auto code = std::find_if(codes.begin(), codes.end(), [&causes](const UnitCode& each) {
            return each.Unit == causes[0].Unit && each.Code == causes[0].Code;
        });
        if (code == codes.end()) continue;
        std::optional<int>& known = At(origins, code - codes.begin()).Frame;
        if (!known) known = static_cast<int>(frame);
    }
    return origins;
}

std::optional<int> SelectedStandardFrame() {
    const ListSlot& list = basGlobal.Lists[kCodeListSlot];
    if (list.Entries.empty()) return 0;
    if (!CodesListed() || list.Selected < 1) return std::nullopt;
    const CodeOrigin* origin = FindAt(basGlobal.CodeOrigins, list.Selected - 1);
    return origin != nullptr ? origin->Frame : std::nullopt;
}

}  // namespace dravik
