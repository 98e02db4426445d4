#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <utility>

#include "core/basGlobal.h"
#include "obd/LinkFaults.h"
#include "obd/Reply.h"
#include "obd/basOBD.h"
#include "platform/Text.h"
#include "settings/Words.h"

namespace dravik {

namespace {

/// A wait that is over sooner needs no explanation.
constexpr double kShortWait = 2;

/// Replies without a value for so long are told; for longer where the requests take turns slowly,
/// since a vehicle does not have all that a page asks for.
constexpr double kValuelessSeconds = 5;
constexpr double kValuelessRounds = 3;

constexpr std::string_view kNoData = "NO DATA";
constexpr std::size_t kMostWords = 40;  ///< characters of the interface's own words

// What is said while something is waited for or values stay out; the texts of the faults follow.
constexpr const char* kAwaitsInterface = "No answer from the interface (%1 of %2 seconds)";
constexpr const char* kAwaitsVehicle = "No answer from the vehicle yet (%1 of %2 seconds)";
constexpr const char* kAwaitsBus = "Waiting for the vehicle's bus (%1 of %2 seconds)";
constexpr const char* kQuietInterface = "No answer from the interface for %1 seconds";
constexpr const char* kNoValues = "The vehicle sends no values";

struct FaultText {
    LinkFault Fault;
    const char* Text;  ///< %1 and %2 stand for the values of the report
};

constexpr FaultText kFaultTexts[] = {
    {LinkFault::NotYet, "Not connected yet"},
    {LinkFault::LetGo, "Disconnected by hand"},
    {LinkFault::NoPortChosen, "No port chosen"},
    {LinkFault::NoSuchPort, "There is no port %1"},
    {LinkFault::NoPermission, "No permission to use %1"},
    {LinkFault::PortInUse, "Another program uses %1"},
    {LinkFault::NoSuchSpeed, "%1 does not take %2 baud"},
    {LinkFault::Refused, "%1 refuses the connection"},
    {LinkFault::UnknownHost, "There is no address %1"},
    {LinkFault::NoWayToHost, "No answer from %1"},
    {LinkFault::NotOpened, "%1 could not be opened"},
    {LinkFault::InterfaceSilent, "No answer from the interface on %1 in %2 seconds"},
    {LinkFault::InterfaceUnread, "What comes from %1 cannot be read at %2 baud"},
    {LinkFault::VehicleSilent, "No answer from the vehicle in %1 seconds"},
    {LinkFault::VehicleUnread, "The vehicle's answer cannot be read"},
    {LinkFault::VehicleRefuses, "The vehicle refuses the request (%1)"},
    {LinkFault::VehicleBusy, "The vehicle is busy. Try again later."},
    {LinkFault::NotReached, "The interface does not reach the vehicle: %1"},
    {LinkFault::NoData, "The vehicle does not answer. Is the ignition on?"},
    {LinkFault::LineLost, "%1 was lost"},
};

std::string WholeSeconds(double seconds) {
    return std::to_string(static_cast<int>(seconds));
}

double SecondsSince(double time) {
    return time == 0 ? 0 : HighResTimer() - time;
}

std::string TextOf(LinkFault fault, const std::array<std::string, 2>& values) {
    for (const FaultText& row : kFaultTexts) {
        if (row.Fault == fault) return Worded(row.Text, values);
    }
    return {};
}

struct Fault {
    LinkFault Kind;
    std::array<std::string, 2> Values{};
};

void Note(Fault fault) {
    NoteFault(fault.Kind, std::move(fault.Values[0]), std::move(fault.Values[1]));
}

/// Why a reply is not the one that was asked for, by what the interface says in it.
Fault VehicleFault(const std::string& words, bool finished) {
    const SerialPort& port = basGlobal.comOBD;
    const bool givenUp = basGlobal.FailedSince != 0;
    if (!port.IsOpen() && !givenUp) return {LinkFault::LineLost, {port.Device()}};
    if (words == kNoData) return {LinkFault::NoData};
    if (!words.empty()) return {LinkFault::NotReached, {words}};
    if (finished) return {LinkFault::VehicleUnread};
    return {LinkFault::VehicleSilent, {std::to_string(basGlobal.Report.AwaitedSeconds)}};
}

Fault FaultOf(const Reply& reply) {
    const bool finished = reply.End != ReplyEnd::Unfinished;
    if (reply.End != ReplyEnd::Refused || reply.Refusals.empty())
        return VehicleFault(reply.Words, finished);
    for (const Refusal& refusal : reply.Refusals) {
        if (PutsOff(refusal)) return {LinkFault::VehicleBusy};
    }
    const char reason = static_cast<char>(reply.Refusals.front().Reason);
    return {LinkFault::VehicleRefuses, {TextToHex({&reason, 1})}};
}

/// What the last attempt met stays told during the next one, which may meet the same.
std::string FaultReason() {
    const LinkReport& report = basGlobal.Report;
    const bool idle = report.Fault == LinkFault::NotYet || report.Fault == LinkFault::LetGo;
    if (basGlobal.ConnState != kNotConnected && idle) return {};
    if (basGlobal.ConnState == kNotConnected && report.Fault == LinkFault::None)
        return TextOf(LinkFault::NotYet, {});
    return TextOf(report.Fault, report.Values);
}

/// Only a wait that is longer than usual is told.
std::string WaitReason() {
    const LinkReport& report = basGlobal.Report;
    const double seconds = SecondsSince(report.AwaitedSince);
    if (seconds < kShortWait) return {};
    const char* pattern = report.Awaited.empty()             ? kAwaitsBus
                          : report.Awaited.starts_with("AT") ? kAwaitsInterface
                                                             : kAwaitsVehicle;
    const double shown = std::min<double>(seconds, report.AwaitedSeconds);
    return Worded(pattern, {WholeSeconds(shown), std::to_string(report.AwaitedSeconds)});
}

std::string ValuelessReason() {
    const GlobalState& g = basGlobal;
    const LinkReport& report = g.Report;
    const double patience = std::max(kValuelessSeconds, kValuelessRounds * g.RoundSeconds);
    if (SecondsSince(report.NoValueSince) < patience) return {};
    // A frame that was not stored says nothing about the vehicle.
    if (FreezeFrameMode()) return {};
    if (report.NoValueWords.empty()) return kNoValues;
    const bool noData = report.NoValueWords == kNoData;
    return TextOf(noData ? LinkFault::NoData : LinkFault::NotReached, {report.NoValueWords});
}

std::string QuietReason() {
    const GlobalState& g = basGlobal;
    const double waited = g.AwaitingReply ? SecondsSince(g.RequestedAt) : 0;
    if (waited >= kValuelessSeconds) return Worded(kQuietInterface, {WholeSeconds(waited)});
    return ValuelessReason();
}

bool IsLineOfData(std::string_view line) {
    return std::all_of(line.begin(), line.end(), [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c)) != 0 || c == ' ' || c == ':';
    });
}

bool IsPrintable(char c) {
    return c >= ' ' && c < '\x7F';
}

/// A line without what cannot be shown, and without the dots that only tell of progress.
std::string ReadableLine(std::string_view line) {
    std::string text;
    for (const char c : line) {
        if (IsPrintable(c) && c != '>') text += c;
    }
    constexpr std::string_view kProgress = "SEARCHING";
    if (text.starts_with(kProgress)) text.erase(0, text.find_first_not_of('.', kProgress.size()));
    return std::string(Trimmed(text));
}

}  // namespace

std::string InterfaceWords(std::string_view reply) {
    std::string words;
    while (!reply.empty()) {
        const std::size_t end = reply.find_first_of("\r\n");
        std::string line = ReadableLine(reply.substr(0, end));
        if (!IsLineOfData(line)) words = std::move(line);
        reply.remove_prefix(end == std::string_view::npos ? reply.size() : end + 1);
    }
    return words.substr(0, kMostWords);
}

std::string Worded(const char* pattern, const std::array<std::string, 2>& values) {
    return Word(pattern, {values[0], values[1]});
}

void NoteFault(LinkFault fault, std::string first, std::string second) {
    LinkReport& report = basGlobal.Report;
    if (basGlobal.StepCancelled) return;
    report.Fault = fault;
    report.Values = {std::move(first), std::move(second)};
    report.NoValueSince = 0;
}

void NoteOpenFailure() {
    const SerialPort& port = basGlobal.comOBD;
    constexpr std::pair<OpenFailure, LinkFault> kFaults[] = {
        {OpenFailure::NoSuchDevice, LinkFault::NoSuchPort},
        {OpenFailure::NoPermission, LinkFault::NoPermission},
        {OpenFailure::InUse, LinkFault::PortInUse},
        {OpenFailure::NoSuchSpeed, LinkFault::NoSuchSpeed},
        {OpenFailure::Refused, LinkFault::Refused},
        {OpenFailure::UnknownHost, LinkFault::UnknownHost},
        {OpenFailure::NoAnswer, LinkFault::NoWayToHost},
    };
    LinkFault fault = LinkFault::NotOpened;
    for (const auto& [failure, meaning] : kFaults) {
        if (failure == port.LastFailure()) fault = meaning;
    }
    NoteFault(fault, port.Device(), std::to_string(port.Baudrate()));
}

/// A wait that was given up has closed the port as well, and counts from its silence on.
void NoteSilentInterface(std::string_view reply) {
    const SerialPort& port = basGlobal.comOBD;
    const bool givenUp = basGlobal.FailedSince != 0;
    if (!port.IsOpen() && !givenUp) {
        NoteFault(LinkFault::LineLost, port.Device());
    } else if (reply.empty()) {
        NoteFault(LinkFault::InterfaceSilent, port.Device(),
                  std::to_string(basGlobal.Report.AwaitedSeconds));
    } else {
        NoteFault(LinkFault::InterfaceUnread, port.Device(), std::to_string(port.Baudrate()));
    }
}

void NoteVehicleFault(std::string_view reply) {
    const bool finished = reply.find('>') != std::string_view::npos;
    Note(VehicleFault(InterfaceWords(reply), finished));
}

void NoteVehicleFault(const Reply& reply) {
    Note(FaultOf(reply));
}

std::string ReasonOf(const Reply& reply) {
    if (reply.End == ReplyEnd::Answered) return {};
    const Fault fault = FaultOf(reply);
    return TextOf(fault.Kind, fault.Values);
}

void NoteLiveReply(std::string_view reply, bool value) {
    LinkReport& report = basGlobal.Report;
    if (value) {
        report.NoValueSince = 0;
        return;
    }
    if (report.NoValueSince == 0) report.NoValueSince = HighResTimer();
    report.NoValueWords = InterfaceWords(reply);
}

AwaitedAnswer::AwaitedAnswer(std::string command, double seconds) {
    LinkReport& report = basGlobal.Report;
    report.Awaited = std::move(command);
    report.AwaitedSince = HighResTimer();
    report.AwaitedSeconds = static_cast<int>(seconds);
}

AwaitedAnswer::~AwaitedAnswer() {
    basGlobal.Report.AwaitedSince = 0;
}

std::string ReasonText() {
    const GlobalState& g = basGlobal;
    if (g.ConnState == kConnected || g.ConnState == kReceivingData) return QuietReason();
    if (g.Search.Running) return g.Search.Text;
    std::string waiting = WaitReason();
    return waiting.empty() ? FaultReason() : waiting;
}

std::vector<std::string_view> ReasonTexts() {
    std::vector<std::string_view> texts = {kAwaitsInterface, kAwaitsVehicle, kAwaitsBus,
                                           kQuietInterface, kNoValues};
    for (const FaultText& row : kFaultTexts) texts.push_back(row.Text);
    return texts;
}

}  // namespace dravik
