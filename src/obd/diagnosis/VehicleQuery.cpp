#include "obd/diagnosis/VehicleQuery.h"

#include <algorithm>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/LinkFaults.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

namespace {

/// So long nothing may arrive before the wait is given up. An awake vehicle answers in a fraction
/// of a second, one whose bus has to be woken in a few seconds, of which the interface tells.
constexpr double kQuietVehicle = 5;
constexpr double kQuietInterface = 2;
constexpr double kQuietOnceCancelled = 1;
constexpr double kLongestReply = 30;  // of one that never ends

constexpr int kAttempts = 3;
constexpr int kSilences = 2;           // of these attempts may bring nothing at all
constexpr int kMostUnanswered = 2;     // in a row, before it is looked whether anybody is there
constexpr double kPutOffSeconds = 20;  // that a unit may take for an answer which it has put off
constexpr double kPause = 0.2;         // before it is asked for that again
constexpr std::size_t kTextLimit = std::size_t{64} * 1024;

bool PutOff(const Reply& reply) {
    return reply.End == ReplyEnd::Refused &&
           std::any_of(reply.Refusals.begin(), reply.Refusals.end(), PutsOff);
}

bool Disturbed(ReplyEnd end) {
    return end == ReplyEnd::Unfinished || end == ReplyEnd::BusFault ||
           end == ReplyEnd::NotUnderstood || end == ReplyEnd::Unreadable;
}

/// A unit says itself that it does not have what it was asked for.
bool SaysUnsupported(const Refusal& refusal) {
    constexpr std::uint8_t kReasons[] = {0x11, 0x12, 0x31};  // service, what it names, its range
    return std::find(std::begin(kReasons), std::end(kReasons), refusal.Reason) !=
           std::end(kReasons);
}

std::optional<Lack> LackIn(const Reply& reply, Promise promise) {
    switch (reply.End) {
        case ReplyEnd::Answered:
            return std::nullopt;
        case ReplyEnd::NoData:
            return promise == Promise::Given ? Lack::NoAnswer : Lack::NotSupported;
        case ReplyEnd::Refused:
            if (PutOff(reply)) return Lack::NoAnswer;
            return std::all_of(reply.Refusals.begin(), reply.Refusals.end(), SaysUnsupported)
                       ? Lack::NotSupported
                       : Lack::Refused;
        case ReplyEnd::Unfinished:
        case ReplyEnd::BusFault:
            return Lack::NoAnswer;
        case ReplyEnd::NotUnderstood:
        case ReplyEnd::Unreadable:
            break;
    }
    return Lack::Unreadable;
}

/// Of the number of the protocol with an "A" in front of it where it was found by searching; of an
/// interface that does not know the question by other means, as for the link itself.
dravik::Bus BusIn(const std::string& reply) {
    const std::string number = reply.substr(0, reply.find_first_of("\r\n>"));
    const dravik::Bus bus = number.empty() ? Bus::Unknown : BusOf(number.back());
    return bus == Bus::Unknown ? AskBus() : bus;
}

void Pause() {
    const double end = HighResTimer() + kPause;
    for (double left = kPause; left > 0 && basGlobal.comOBD.IsOpen() && !basGlobal.Closing;
         left = end - HighResTimer())
        WaitForEvents(left);
}

}  // namespace

VehicleQuery::VehicleQuery() : bus_(basGlobal.VehicleBus) {
    if (bus_ == dravik::Bus::Unknown) {
        if (const auto reply = Command("ATDPN")) bus_ = BusIn(*reply);
    }
    headers_ = true;  // also when the answer to this is lost
    if (!Command("ATH1") && !givenUp_) givenUp_ = Lack::LinkLost;
    if (bus_ == dravik::Bus::Unknown && !givenUp_) givenUp_ = Lack::Unreadable;
}

VehicleQuery::~VehicleQuery() {
    Finish();
}

/// The driver has not cancelled, and nobody has asked for anything else of the link meanwhile.
bool VehicleQuery::Wanted() const {
    const GlobalState& g = basGlobal;
    return !g.Diagnosing.Cancelled && !g.StepCancelled && !g.Closing &&
           g.ConnState == kDiagnosing && g.comOBD.IsOpen();
}

std::optional<Lack> VehicleQuery::Over() const {
    if (givenUp_) return givenUp_;
    if (Wanted()) return std::nullopt;
    return basGlobal.Diagnosing.Cancelled && basGlobal.comOBD.IsOpen() ? Lack::Cancelled
                                                                       : Lack::LinkLost;
}

/// @return everything up to and including the prompt; nothing without that
std::optional<std::string> VehicleQuery::Exchange(const std::string& command,
                                                  double quietSeconds) const {
    SerialPort& port = basGlobal.comOBD;
    if (!port.IsOpen()) return std::nullopt;
    port.DiscardInput();
    port.Write(command + "\r");
    const AwaitedAnswer wait(command, quietSeconds);
    double heard = HighResTimer();
    const double deadline = heard + kLongestReply;
    std::string text;
    const auto timeLeft = [&]() -> std::optional<double> {
        const double quiet = basGlobal.Diagnosing.Cancelled
                                 ? std::min(kQuietOnceCancelled, quietSeconds)
                                 : quietSeconds;
        const double left = std::min(deadline, heard + quiet) - HighResTimer();
        return left > 0 && text.size() < kTextLimit ? std::optional(left) : std::nullopt;
    };
    const bool whole = AwaitPrompt(timeLeft, [&](const std::string& received) {
        heard = HighResTimer();
        text += received;
    });
    return whole ? std::optional(text) : std::nullopt;
}

std::optional<std::string> VehicleQuery::Command(const std::string& command) {
    std::optional<std::string> text;
    for (int attempt = 0; attempt < kAttempts && !Over(); ++attempt) {
        text = Exchange(command, kQuietInterface);
        if (text && text->find('?') == std::string::npos) break;
    }
    return text;
}

/// A character that was lost or changed on the way spoils a reply, so it is asked for again. So is
/// a silence: what comes next may end what the interface is stuck in.
Reply VehicleQuery::AskOnce(const Bytes& request) {
    const std::string command = TextToHex(std::string(request.begin(), request.end()));
    Reply reply;
    int silences = 0;
    for (int attempt = 0; attempt < kAttempts && silences < kSilences && !Over(); ++attempt) {
        const auto text = Exchange(command, kQuietVehicle);
        reply = text ? TakeApart(*text, request, bus_, true) : Reply{};
        if (!Disturbed(reply.End)) break;
        // A bus that fails again takes its time each time.
        if (reply.End == ReplyEnd::BusFault && unanswered_ > 0) break;
        if (!text) ++silences;
    }
    return reply;
}

Reply VehicleQuery::AskUntilGiven(const Bytes& request) {
    const double end = HighResTimer() + kPutOffSeconds;
    for (;;) {
        Reply reply = AskOnce(request);
        if (!PutOff(reply) || Over() || HighResTimer() >= end) return reply;
        Pause();
    }
}

/// Every vehicle answers this, whatever else it leaves unanswered.
bool VehicleQuery::AnybodyThere() {
    return AskOnce({0x01, 0x00}).End == ReplyEnd::Answered;
}

/// An interface that is silent has nothing more to tell, nor has a vehicle whose ignition was
/// switched off.
void VehicleQuery::Judge(const Reply& reply, Promise promise) {
    const bool missed = reply.End == ReplyEnd::BusFault ||
                        (reply.End == ReplyEnd::NoData && promise == Promise::Given);
    unanswered_ = missed ? unanswered_ + 1 : 0;
    if (Over()) return;
    const bool gone = unanswered_ >= kMostUnanswered && !AnybodyThere();
    if (gone || reply.End == ReplyEnd::Unfinished)
        givenUp_ = Lack::NoAnswer;
    else if (unanswered_ >= kMostUnanswered)
        unanswered_ = 0;
}

Findings VehicleQuery::Ask(const Bytes& request, Promise promise) {
    if (const auto over = Over()) return {{}, over};
    Reply reply = AskUntilGiven(request);
    if (reply.End == ReplyEnd::NoData && promise == Promise::Given && !Over())
        reply = AskUntilGiven(request);
    Judge(reply, promise);
    std::optional<Lack> fault = LackIn(reply, promise);
    if (fault && reply.Messages.empty() && Over()) fault = Over();
    return {std::move(reply.Messages), fault};
}

bool VehicleQuery::Finish() {
    if (!headers_) return true;
    headers_ = false;
    for (int attempt = 0; attempt < kAttempts && basGlobal.comOBD.IsOpen(); ++attempt) {
        // The first one may only end what the interface was still busy with.
        const auto text = Exchange("ATH0", kQuietInterface);
        if (text && text->find("OK") != std::string::npos) return true;
    }
    return false;
}

}  // namespace dravik
