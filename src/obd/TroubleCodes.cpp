#include <algorithm>
#include <cstddef>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "obd/StandardCodes.h"
#include "obd/basOBD.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr std::string_view kStatusAnswer = "41 01";
constexpr std::size_t kStatusByte = 6;  // from the start of "41 01" to its first data byte
constexpr int kCountMask = 127;
constexpr int kLampMask = 128;
constexpr int kMostFrames = 10;

/// Prefix of a code by the first of its four hex digits; only upper-case digits are codes.
constexpr std::string_view kCodeDigits = "0123456789ABCDEF";
constexpr const char* kCodePrefixes[] = {"P0", "P1", "P2", "P3", "C0", "C1", "C2", "C3",
                                         "B0", "B1", "B2", "B3", "U0", "U1", "U2", "U3"};

/// Position of `what`, counted from 1; 0 when it is not there.
std::size_t Position(const std::string& text, std::string_view what) {
    const std::size_t found = text.find(what);
    return found == std::string::npos ? 0 : found + 1;
}

/// `length` characters from a position counted from 1; fewer, or none, at the end of the text.
std::string Middle(const std::string& text, std::size_t position, std::size_t length) {
    return position > text.size() ? std::string{} : text.substr(position - 1, length);
}

/// Joins the lines of several frames, which the interface numbers "0:", "1:", ... The "0:" stays.
std::string JoinFrames(std::string reply) {
    for (int frame = 1; frame <= kMostFrames; ++frame) {
        const std::string mark = "\r" + std::to_string(frame) + ":";
        reply = ReplaceAll(reply, "\r" + mark, "");
        reply = ReplaceAll(reply, mark, "");
    }
    return reply;
}

/// Joins the "43" lines of several control units.
std::string JoinUnits(std::string reply) {
    reply = ReplaceAll(reply, " \r", "\r");
    reply = ReplaceAll(reply, "\r\r43", "");
    return ReplaceAll(reply, "\r43", "");
}

std::string DecodeCode(const std::string& digits) {
    if (digits.empty()) return digits;
    const std::size_t prefix = kCodeDigits.find(digits.front());
    if (prefix == std::string_view::npos) return digits;
    // The last three characters: of a code that is cut off, its first digit then stays as well.
    constexpr std::size_t kKept = 3;
    return kCodePrefixes[prefix] + digits.substr(digits.size() - std::min(kKept, digits.size()));
}

/// Decodes DtcCount codes. The positions assume one blank between bytes and are counted from the
/// "43 01" of a reply or the "0:" of its frames; without either, from its start, one character too
/// far to the left. Replies are read so on purpose.
void DecodeCodes(const std::string& reply) {
    std::size_t base = Position(reply, "43 01");
    const std::size_t firstFrame = Position(reply, "0:");
    if (firstFrame > 0) base += firstFrame + 6;
    const std::string line = firstFrame > 0 ? JoinFrames(reply) : JoinUnits(reply);

    for (std::string& code : CodesInUse()) {
        code = DecodeCode(Middle(line, base + 3, 2) + Middle(line, base + 6, 2));
        base += 6;
    }
}

void EndWithoutAnswer(const std::string& reply) {
    NoteVehicleFault(reply);
    EndStep(kNotConnected);
}

}  // namespace

bool ReadMonitorStatus(const std::string& reply) {
    const std::size_t start = reply.find(kStatusAnswer);
    if (start == std::string::npos) return false;
    const std::string digits = Middle(reply, start + kStatusByte + 1, 2);
    if (const std::optional<std::int32_t> status = HexNumber(digits)) {
        basGlobal.DtcCount = static_cast<std::int16_t>(*status & kCountMask);
        basGlobal.MilOn = (*status & kLampMask) != 0;
    }
    return true;
}

std::uint8_t StateIfOpen(std::uint8_t state) {
    return basGlobal.comOBD.IsOpen() ? state : static_cast<std::uint8_t>(kNotConnected);
}

void ReadTroubleCodes() {
    if (basGlobal.StandardDecoding) return ReadStandardCodes();
    const std::string status = SendCommand("0101");
    if (!ReadMonitorStatus(status)) return EndWithoutAnswer(status);
    const std::string reply = SendCommand("03");
    if (reply.find('>') == std::string::npos) return EndWithoutAnswer(reply);
    DecodeCodes(reply);
    basGlobal.CodesRead = true;
    ShowTroubleCodes();
    EndStep(StateIfOpen(kConnected));
}

void ClearTroubleCodes() {
    if (basGlobal.StandardDecoding) return ClearStandardCodes();
    // The interface gets two carriage returns: this one and that of every command.
    const std::string reply = SendCommand("04\r");
    if (reply.find("44") != std::string::npos) {
        upCalls.ShowMessage("Troublecodes cleared", kMessageInformation, "Dravik");
        EndStep(StateIfOpen(kReadingCodes));
    } else {
        upCalls.ShowMessage("Could not clear Troublecodes", kMessageCritical, "Dravik");
        EndStep(StateIfOpen(kConnected));
    }
}

}  // namespace dravik
