#include "obd/StandardCodes.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "core/UpCalls.h"
#include "lists/basFunctions.h"
#include "obd/Headers.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "settings/Words.h"

namespace dravik {

namespace {

const Bytes kAskStatus = {0x01, 0x01};
const Bytes kAskCodes = {0x03};
const Bytes kClear = {0x04};

constexpr std::size_t kStatusByte = 2;  // behind service and PID
constexpr int kCountMask = 127;
constexpr int kLampMask = 128;

/// What a read has found, before any of it is shown.
struct CodeRead {
    Reply Status;  ///< of the monitors
    Reply Codes;
    std::vector<UnitCode> Found;
    std::vector<CodeOrigin> Origins;
};

int CountIn(const Reply& status) {
    int count = 0;
    for (const UnitMessage& message : status.Messages) {
        if (message.Data.size() > kStatusByte) count += message.Data[kStatusByte] & kCountMask;
    }
    return count;
}

/// The codes of all units, those of one unit together and each once; nothing when a list is not
/// what it says.
std::optional<std::vector<UnitCode>> CodesOf(std::vector<UnitMessage> messages) {
    std::stable_sort(messages.begin(), messages.end(),
                     [](const UnitMessage& a, const UnitMessage& b) { return a.Unit < b.Unit; });
    std::vector<UnitCode> found;
    for (const UnitMessage& message : messages) {
        const auto codes = CodesIn(message.Data, basGlobal.VehicleBus);
        if (!codes) return std::nullopt;
        for (const std::string& code : *codes) {
            const bool known = std::any_of(found.begin(), found.end(), [&](const UnitCode& each) {
                return each.Unit == message.Unit && each.Code == code;
            });
            if (!known && found.size() < kCodeLimit) found.push_back({message.Unit, code});
        }
    }
    return found;
}

/// The replies that tell of the vehicle's silence or of a bus that is gone end the link, all others
/// only the read.
bool LinkGone(const Reply& status) {
    return status.End == ReplyEnd::Unfinished || status.End == ReplyEnd::NoData ||
           status.End == ReplyEnd::BusFault;
}

/// The codes can be asked for although nobody tells the state of the monitors.
bool AsksOn(const Reply& status) {
    return status.End == ReplyEnd::Answered || status.End == ReplyEnd::Refused;
}

/// Nobody answers: there are no codes, unless a unit has counted some.
bool NoCodes(const CodeRead& read) {
    return read.Codes.End == ReplyEnd::NoData && CountIn(read.Status) == 0;
}

CodeRead Read(bool headers) {
    CodeRead read;
    if (basGlobal.VehicleBus == Bus::Unknown) basGlobal.VehicleBus = AskBus();
    read.Status = Ask(kAskStatus, headers);
    if (!AsksOn(read.Status)) return read;
    read.Codes = Ask(kAskCodes, headers);
    if (read.Codes.End != ReplyEnd::Answered) return read;
    auto found = CodesOf(read.Codes.Messages);
    if (!found) {
        read.Codes.End = ReplyEnd::Unreadable;
        return read;
    }
    read.Found = std::move(*found);
    read.Origins = AskFrameOrigins(read.Found, headers);
    return read;
}

void Keep(const CodeRead& read) {
    GlobalState& g = basGlobal;
    g.DtcCount = static_cast<std::int16_t>(read.Found.size());
    for (std::size_t i = 0; i < read.Found.size(); ++i) {
        g.DtcList[i] = read.Found[i].Code;
        g.CodeOrigins[i] = read.Origins[i];
    }
    // The number of a frame may be another code's now.
    g.FreezeFrameNo.clear();
    g.CodesRead = true;
    ShowTroubleCodes();
}

void TellFailure(const Reply& reply) {
    upCalls.ShowPlainMessage(Word("Could not read Troublecodes") + "\n" + ReasonOf(reply),
                             kMessageCritical, "Dravik");
}

}  // namespace

void TakeMonitorStatus(const std::vector<UnitMessage>& messages) {
    Reply status;
    status.Messages = messages;
    basGlobal.DtcCount = static_cast<std::int16_t>(std::min(CountIn(status), kCountMask));
    basGlobal.MilOn = std::any_of(messages.begin(), messages.end(), [](const UnitMessage& message) {
        return message.Data.size() > kStatusByte && (message.Data[kStatusByte] & kLampMask) != 0;
    });
}

void ReadStandardCodes() {
    CodeRead read;
    bool restored = false;
    {
        HeadersOn headers;
        if (headers.Answered()) read = Read(headers.On());
        restored = headers.Off();
    }
    const Reply& last = AsksOn(read.Status) ? read.Codes : read.Status;
    if (LinkGone(read.Status) || last.End == ReplyEnd::Unfinished) {
        NoteVehicleFault(last);
        return EndStep(kNotConnected);
    }
    const bool done = read.Codes.End == ReplyEnd::Answered || NoCodes(read);
    if (done) {
        if (read.Status.End == ReplyEnd::Answered) TakeMonitorStatus(read.Status.Messages);
        Keep(read);
    }
    // A message is waited for, and nothing may be asked with the headers on meanwhile.
    EndStep(StateIfOpen(restored ? kConnected : kConnecting));
    if (!done) TellFailure(last);
}

void ClearStandardCodes() {
    const Reply reply = Ask(kClear, false);
    const bool cleared = reply.End == ReplyEnd::Answered && reply.Refusals.empty();
    upCalls.ShowMessage(cleared ? "Troublecodes cleared" : "Could not clear Troublecodes",
                        cleared ? kMessageInformation : kMessageCritical, "Dravik");
    // Where one unit has cleared its codes and another has not, a read shows what remains.
    EndStep(StateIfOpen(reply.Messages.empty() ? kConnected : kReadingCodes));
}

}  // namespace dravik
