#include <algorithm>
#include <string_view>

#include "core/basGlobal.h"
#include "obd/DataBytes.h"
#include "obd/LinkFaults.h"
#include "obd/StandardCodes.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Number.h"

namespace dravik {

namespace {

constexpr int kSearchLimit = 79;
constexpr int kLastPid = kPidCount - 1;
constexpr char kLiveMode = 1;
constexpr char kFreezeMode = 2;
constexpr std::uint8_t kReplyOffset = 0x40;  // a reply names the mode of its request plus this

/// The requests begin at the first PID again.
void BeginRound() {
    GlobalState& g = basGlobal;
    const double now = HighResTimer();
    g.RoundSeconds = now - g.RoundBegan;
    g.RoundBegan = now;
}

/// Moves the cursor to the next wanted PID; false when the search gives up. A PID that is found
/// only by the last permitted step does not count.
bool FindWantedPid() {
    GlobalState& g = basGlobal;
    int counter = 0;
    while (!At(g.PidWanted, g.PidCursor) && counter < kSearchLimit) {
        ++counter;
        // From 79 the search goes on at 1: entry 0 is looked at only when the cursor already
        // stands there.
        if (g.PidCursor == kLastPid) {
            g.PidCursor = 0;
            BeginRound();
        }
        ++g.PidCursor;
    }
    return counter < kSearchLimit;
}

/// The frame of the trouble code that the user selected; the first frame while no codes are listed.
std::string SelectedFrame() {
    const ListSlot& codes = basGlobal.Lists[kCodeListSlot];
    if (codes.Entries.empty() || codes.Selected < 1) return "0";
    return std::to_string(codes.Selected - 1);
}

/// By the standard no value of another frame is left to be taken for one of this.
void TurnToFrame(const std::string& frame) {
    GlobalState& g = basGlobal;
    if (frame == g.FreezeFrameNo) return;
    g.FreezeFrameNo = frame;
    g.FreezeAt.fill(0);
    if (g.StandardDecoding) g.FreezeRaw.fill(0);
}

/// False when there is nothing to ask: the selected code has no freeze frame, or one that has been
/// read already.
bool FindFrame() {
    GlobalState& g = basGlobal;
    if (!FreezeFrameMode()) return true;
    if (!g.StandardDecoding) {
        TurnToFrame(SelectedFrame());
        return true;
    }
    const CodeOrigin origin = SelectedOrigin();
    const bool asked = origin.Frame && !origin.Kept;
    TurnToFrame(asked ? std::to_string(*origin.Frame) : std::string{});
    if (origin.Kept) {
        g.FreezeRaw.fill(0);
        for (const auto& [pid, value] : *origin.Kept) {
            At(g.FreezeRaw, pid) = value.Number;
            At(g.FreezeSize, pid) = value.Size;
        }
    }
    return asked;
}

std::string BuildRequest() {
    GlobalState& g = basGlobal;
    const char pid = static_cast<char>(g.PidCursor);
    if (!FreezeFrameMode()) {
        g.Requested = {kLiveMode, static_cast<std::uint8_t>(pid)};
        return TextToHex(std::string{kLiveMode, pid}) + "\r";
    }
    const char frame = static_cast<char>(std::stoi(g.FreezeFrameNo));
    g.Requested = {kFreezeMode, static_cast<std::uint8_t>(pid), static_cast<std::uint8_t>(frame)};
    return TextToHex(std::string{kFreezeMode, pid, frame}) + "\r";
}

void AdvanceCursor() {
    std::int16_t& cursor = basGlobal.PidCursor;
    if (cursor == kLastPid) BeginRound();
    cursor = cursor < kLastPid ? static_cast<std::int16_t>(cursor + 1) : std::int16_t{0};
}

/// A measurement has come.
void NoteValue(bool freeze, std::size_t pid, std::int32_t value) {
    GlobalState& g = basGlobal;
    if (!freeze) {
        const bool first = g.LiveAt[pid] == 0;
        g.LiveLeast[pid] = first ? value : std::min(g.LiveLeast[pid], value);
        g.LiveGreatest[pid] = first ? value : std::max(g.LiveGreatest[pid], value);
        NoteRanges(pid, first);
    }
    (freeze ? g.FreezeAt : g.LiveAt)[pid] = HighResTimer();
}

/// Stores the value of a reply's first line, given without its blanks; false when it has none.
bool StoreValue(const std::string& line) {
    // Text answers such as NO DATA are not hexadecimal and end here. The mode itself is not
    // compared with that of the request: whatever lies above 40 is stored under its second byte.
    GlobalState& g = basGlobal;
    const std::uint8_t mode = ReplyByte(line, 1);
    if (mode <= kReplyOffset) return false;
    const std::size_t pid = ReplyByte(line, 2);
    const std::optional<std::int32_t> value =
        HexNumber(std::string_view(line).substr(std::min<std::size_t>(4, line.size())));
    if (!value || pid >= g.LiveRaw.size()) return false;
    const bool freeze = FreezeFrameMode();
    (freeze ? g.FreezeRaw : g.LiveRaw)[pid] = *value;
    (freeze ? g.FreezeSize : g.LiveSize)[pid] = DataSize(line, freeze);
    // A refusal is stored, too, but nobody may take it for a measurement.
    if (mode == kReplyOffset + (freeze ? kFreezeMode : kLiveMode)) NoteValue(freeze, pid, *value);
    return true;
}

/// By the standard only what answers the request is stored, and of a freeze frame only what belongs
/// to the code that is selected now. The frame's number is no part of the value.
bool StoreStandardValue(const std::string& reply) {
    GlobalState& g = basGlobal;
    const std::optional<Bytes> data = FirstAnswer(reply, g.Requested);
    if (!data || g.Requested.size() < 2) return false;
    const std::size_t pid = g.Requested[1];
    const std::optional<std::int32_t> value =
        HexNumber(TextToHex(std::string(data->begin(), data->end())));
    if (!value || pid >= g.LiveRaw.size()) return false;
    const bool freeze = g.Requested[0] == kFreezeMode;
    if (freeze && std::to_string(g.Requested.back()) != g.FreezeFrameNo) return false;
    (freeze ? g.FreezeRaw : g.LiveRaw)[pid] = *value;
    (freeze ? g.FreezeSize : g.LiveSize)[pid] = static_cast<std::uint8_t>(data->size());
    NoteValue(freeze, pid, *value);
    return true;
}

/// True for an answer of a working link that there is nothing to tell. Behind an echo it is none:
/// an interface that echoes has forgotten how it was set up.
bool TellsNoData(const std::string& line, const std::string& reply) {
    const bool echoes = HexNumber(std::string_view(line).substr(0, 2)).has_value();
    return !echoes && reply.find("NO DATA") != std::string::npos;
}

/// True once replies have brought no value for too long although values were coming: what answers
/// then is an interface that has restarted by itself. Without the Reconnect setting never.
bool ValuesOverdue() {
    GlobalState& g = basGlobal;
    constexpr double kLongest = 5;  // seconds
    if (g.ReconnectSeconds <= 0 || !g.ValuesCame) return false;
    const double now = HighResTimer();
    if (g.ValuelessSince == 0) g.ValuelessSince = now;
    return now - g.ValuelessSince >= kLongest;
}

}  // namespace

bool FreezeFrameMode() {
    return basGlobal.CurrentMenu.find("freeze") != std::string::npos;
}

bool PidKnown(int pid) {
    const GlobalState& g = basGlobal;
    constexpr double kSeconds = 5;
    constexpr double kRounds = 3;
    if (g.ConnState != kConnected && g.ConnState != kReceivingData) return false;
    if (pid < 0 || pid >= kPidCount) return false;
    // Until the next request the numbers are still those of the code that was selected before.
    if (g.StandardDecoding && FreezeFrameMode()) {
        const CodeOrigin origin = SelectedOrigin();
        if (origin.Kept) {
            const auto kept = origin.Kept->find(pid);
            return g.FreezeFrameNo.empty() && kept != origin.Kept->end() &&
                   At(g.FreezeRaw, pid) == kept->second.Number;
        }
        if (!origin.Frame || std::to_string(*origin.Frame) != g.FreezeFrameNo) return false;
    }
    const double at = (FreezeFrameMode() ? g.FreezeAt : g.LiveAt)[static_cast<std::size_t>(pid)];
    return at != 0 && HighResTimer() - at <= std::max(kSeconds, kRounds * g.RoundSeconds);
}

void RequestNextPid() {
    GlobalState& g = basGlobal;
    g.StepOwed = g.AwaitingReply;
    if (g.AwaitingReply) return;  // only one live request is ever outstanding
    if (FindWantedPid() && FindFrame()) {
        g.comOBD.DiscardInput();
        g.comOBD.Write(BuildRequest());
        g.AwaitingReply = true;
        g.RequestedAt = HighResTimer();
    }
    AdvanceCursor();
}

void HandlePidReply(const std::string& reply) {
    GlobalState& g = basGlobal;
    if (reply.empty()) return;
    g.ConnState = kReceivingData;
    g.tiTimeout.Restart();

    std::string line = reply.substr(0, reply.find('\r'));
    std::erase(line, ' ');
    const bool value = g.StandardDecoding ? StoreStandardValue(reply) : StoreValue(line);
    NoteLiveReply(reply, value);
    if (value) {
        g.ValuesCame = true;
        g.ValuelessSince = 0;
    } else if (TellsNoData(line, reply)) {
        g.ValuelessSince = 0;
    } else if (ValuesOverdue()) {
        g.ConnState = kConnecting;
    }
}

void ClearPidWanted() {
    GlobalState& g = basGlobal;
    for (std::size_t pid = 0; pid < kLastPid; ++pid) g.PidWanted[pid] = false;  // 79 stays
    if (g.ConnState == kReceivingData) g.ConnState = kConnected;
    g.Report.NoValueSince = 0;
}

std::uint8_t ReplyByte(std::string_view text, std::size_t n) {
    const std::size_t start = 2 * n - 2;
    if (start >= text.size()) return 0;
    return static_cast<std::uint8_t>(HexNumber(text.substr(start, 2)).value_or(0));
}

std::string TextToHex(std::string_view text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        hex += kDigits[code >> 4];
        hex += kDigits[code & 15];
    }
    return hex;
}

std::optional<std::int32_t> HexNumber(std::string_view digits) {
    constexpr std::size_t kMostDigits = 8;
    if (digits.size() > kMostDigits) return std::nullopt;
    const auto value = WholeNumber<std::uint32_t>(digits, 16);
    if (!value) return std::nullopt;
    return static_cast<std::int32_t>(*value);
}

}  // namespace dravik
