#include "obd/DataBytes.h"

#include <algorithm>

#include "obd/basOBD.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr std::size_t kHeadDigits = 4;  // mode and PID

std::optional<std::uint32_t> Part(std::int32_t number, int size, ByteRange bytes) {
    if (bytes.First < 0 || bytes.First > bytes.Last || bytes.Last >= size) return std::nullopt;
    const std::uint32_t front = static_cast<std::uint32_t>(number) >> 8 * (size - 1 - bytes.Last);
    return front & UINT32_MAX >> 8 * (kDataBytes - 1 - (bytes.Last - bytes.First));
}

}  // namespace

std::uint8_t DataSize(std::string_view line, bool freeze) {
    const std::size_t digits = line.size() - std::min(kHeadDigits, line.size());
    const std::size_t bytes = digits / 2 - std::min<std::size_t>(freeze ? 1 : 0, digits / 2);
    return digits % 2 != 0 || bytes > kDataBytes ? 0 : static_cast<std::uint8_t>(bytes);
}

std::optional<std::uint32_t> RangeOf(std::size_t pid, ByteRange bytes) {
    const GlobalState& g = basGlobal;
    const bool freeze = FreezeFrameMode();
    const auto number = Part((freeze ? g.FreezeRaw : g.LiveRaw)[pid],
                             (freeze ? g.FreezeSize : g.LiveSize)[pid], bytes);
    return number == bytes.Absent ? std::nullopt : number;
}

void NoteRanges(std::size_t pid, bool first) {
    GlobalState& g = basGlobal;
    RangeExtremes& ranges = g.LiveRanges[pid];
    if (first) ranges = {};
    for (int from = 0; from < g.LiveSize[pid]; ++from) {
        for (int to = from; to < g.LiveSize[pid]; ++to) {
            const std::uint32_t number =
                *Part(g.LiveRaw[pid], g.LiveSize[pid], {.First = from, .Last = to});
            Extremes& seen = At(At(ranges, from), to);
            seen.Least = std::min(seen.Least, number);
            seen.Greatest = std::max(seen.Greatest, number);
        }
    }
}

Extremes SeenIn(std::size_t pid, ByteRange bytes) {
    if (bytes.First < 0 || bytes.Last >= kDataBytes) return {};
    const Extremes seen = At(At(basGlobal.LiveRanges[pid], bytes.First), bytes.Last);
    // A control unit that has no value once has none for good.
    const bool absent = seen.Least == bytes.Absent || seen.Greatest == bytes.Absent;
    return absent ? Extremes{} : seen;
}

}  // namespace dravik
