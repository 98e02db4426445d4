#include "vehicle/InterfaceProtocol.h"

#include <algorithm>

namespace dravik::vehicle {
namespace {

constexpr double kBitsPerCharacter = 10;  // start bit, eight data bits, stop bit
constexpr double kTogether = 0.005;       // seconds of output that are handed over in one go
constexpr double kLineGap = 0.004;        // seconds between two messages of a unit
constexpr double kReturnPair = 10;        // character times within which a second return belongs
                                          // to the first
constexpr std::size_t kLongestLine = 256;

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

Bytes FromHex(const std::string& digits) {
    const auto value = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(value(digits[i]) * 16 + value(digits[i + 1])));
    return bytes;
}

}  // namespace

InterfaceProtocol::InterfaceProtocol(const Scenario& scenario)
    : scenario_(scenario),
      vehicle_(scenario),
      faults_(scenario),
      random_(scenario.Seed),
      characterTime_(kBitsPerCharacter / scenario.Baud) {
    SetDefaults();
}

void InterfaceProtocol::SetDefaults() {
    echo_ = scenario_.Echo;
    lineFeeds_ = scenario_.LineFeeds;
    headers_ = scenario_.Headers;
    spaces_ = scenario_.Spaces;
    takeApart_ = true;
    automatic_ = true;
    protocol_ = '0';
    connected_ = false;
}

void InterfaceProtocol::PowerUp() {
    SetDefaults();
    input_.clear();
    output_.clear();
    line_.clear();
    lastLine_.clear();
    busy_ = Busy::No;
    busyUntil_ = deafUntil_ = 0;
    lastReturn_ = -1;
    lastSent_ = '\r';
}

void InterfaceProtocol::Receive(double now, std::string_view bytes) {
    for (char byte : bytes) {
        inputFree_ = std::max(inputFree_, now) + characterTime_;
        input_.push_back({inputFree_, byte});
    }
}

std::string InterfaceProtocol::TakeOutput(double now) {
    std::string sent;
    for (;;) {
        while (!input_.empty() && input_.front().Time < std::min(deafUntil_, now))
            input_.pop_front();
        double inputDue = kForever;
        if (!input_.empty()) inputDue = std::max(input_.front().Time, Waits() ? busyUntil_ : 0.0);
        const double outputDue = output_.empty() ? kForever : output_.front().Time;
        if (std::min(inputDue, outputDue) > now) return sent;
        if (outputDue <= inputDue) {
            lastSent_ = output_.front().Byte;
            if (!faults_.Silent(outputDue)) sent += lastSent_;
            output_.pop_front();
        } else {
            TimedByte input = input_.front();
            input_.pop_front();
            input.Time = inputDue;
            TakeByte(input);
        }
    }
}

std::optional<double> InterfaceProtocol::NextEvent() const {
    std::optional<double> next;
    if (!output_.empty()) {
        next = std::min(output_.back().Time, output_.front().Time + kTogether);
        // A pause in the output is a pause for the client too.
        for (std::size_t i = 1; i < output_.size() && output_[i].Time <= *next; ++i) {
            if (output_[i].Time - output_[i - 1].Time > 2 * characterTime_) {
                next = output_[i - 1].Time;
                break;
            }
        }
    }
    if (!input_.empty()) {
        const double first = input_.front().Time;
        double due = std::min(input_.back().Time, first + kTogether);
        if (busy_ == Busy::Request && scenario_.StopOnInput) due = first;
        if (Waits()) due = std::max(first, busyUntil_);
        next = std::min(next.value_or(kForever), due);
    }
    return next;
}

void InterfaceProtocol::TakeByte(const TimedByte& input) {
    if (busy_ != Busy::No && input.Time >= busyUntil_) busy_ = Busy::No;
    if (faults_.Silent(input.Time)) return;
    if (busy_ == Busy::Request) {
        // Some programs end a line with two returns: the second one belongs to the first.
        const bool lineEnd = input.Byte == '\r' || input.Byte == '\n';
        if (lineEnd && input.Time - lastReturn_ <= kReturnPair * characterTime_) return;
        Interrupt(input.Time);
        return;
    }
    if (input.Byte == '\0' || input.Byte == '\n') return;
    if (echo_) Send(input.Time, input.Byte == '\r' ? LineEnd() : std::string(1, input.Byte));
    if (input.Byte != '\r') {
        if (line_.size() < kLongestLine) line_ += input.Byte;
        return;
    }
    std::string line;
    for (char c : line_) {
        if (c == ' ' || c == '\t') continue;
        line += c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
    }
    const bool tooLong = line_.size() >= kLongestLine;
    line_.clear();
    if (line.empty()) line = lastLine_;
    if (tooLong) line = "TOO LONG";  // no command: it is answered with "?"
    lastLine_ = line;
    lastReturn_ = input.Time;
    RunLine(input.Time, line);
}

void InterfaceProtocol::Interrupt(double now) {
    while (!output_.empty() && output_.back().Time > now) output_.pop_back();
    outputFree_ = now;
    busy_ = Busy::Command;
    const bool insideLine = lastSent_ != '\r' && lastSent_ != '\n' && lastSent_ != '>';
    Send(now, (insideLine ? LineEnd() : "") + "STOPPED" + Ending());
    busyUntil_ = outputFree_;
    deafUntil_ = busyUntil_;  // it listens again when it shows its prompt
}

void InterfaceProtocol::RunLine(double now, std::string line) {
    vehicle_.AdvanceTo(now);
    current_ = std::move(line);
    busyUntil_ = now;
    if (current_.empty()) {
        busy_ = Busy::Command;
        Reply(now, {{scenario_.CommandLatency, ">"}});
    } else if (current_.starts_with("AT")) {
        busy_ = Busy::Command;
        RunAtCommand(now, current_.substr(2));
    } else if (std::all_of(current_.begin(), current_.end(), IsHexDigit) && current_.size() > 1) {
        busy_ = Busy::Request;
        RunRequest(now, current_);
    } else {
        busy_ = Busy::Command;
        Reply(now, {{scenario_.CommandLatency, "?" + Ending()}});
    }
}

void InterfaceProtocol::RunRequest(double now, const std::string& digits) {
    std::vector<Segment> reply;
    if (!connected_ && !ConnectBus(reply)) return Reply(now, std::move(reply));
    if (reply.empty()) reply.push_back({scenario_.CommandLatency, ""});

    const auto frames = AnswerOf(digits);
    std::set<int> heard;
    std::optional<double> pending;
    for (const ShownFrame& frame : frames) {
        double delay = kLineGap;
        if (heard.empty())
            delay = scenario_.BusLatency;
        else if (pending)
            delay = *pending;
        else if (heard.count(frame.Unit) == 0)
            delay = scenario_.BusLatency / 2;
        pending = frame.Pending;
        heard.insert(frame.Unit);
        for (const std::string& line : frame.Lines) {
            std::string text = line;
            if (!spaces_) std::erase(text, ' ');
            if (!scenario_.BlankAtLineEnd && text.back() == ' ') text.pop_back();
            reply.push_back({delay, text + LineEnd()});
            delay = kLineGap;
        }
    }
    if (pending && scenario_.WaitsForPending)
        reply.push_back({*pending, ""});  // it has waited in vain
    if (frames.empty()) {
        if (!vehicle_.Awake()) connected_ = false;  // the next request has to search again
        reply.push_back({scenario_.NoDataTime, "NO DATA" + LineEnd()});
    }
    reply.push_back({0, LineEnd() + ">"});
    Reply(now, std::move(reply));
}

/// What the car sends for a request, as the interface shows it.
std::vector<ShownFrame> InterfaceProtocol::AnswerOf(const std::string& digits) {
    // A single digit at the end only says how many answers to wait for.
    Bytes request = FromHex(digits);
    const FrameStyle style{headers_, takeApart_, scenario_.FramePadding};
    // A client that takes frames apart itself gives the length in front of its request.
    if (!takeApart_ && vehicle_.LongMessages() && !request.empty()) request.erase(request.begin());
    std::vector<std::vector<ShownFrame>> units;
    for (const UnitReply& reply : vehicle_.Request(request))
        units.push_back(FormatReply(*FindProtocol(protocol_), reply, style));
    if (!scenario_.WaitsForPending) {
        // It takes a unit that asks for patience as one that has answered.
        for (auto& frames : units) {
            const auto last =
                std::find_if(frames.begin(), frames.end(),
                             [](const ShownFrame& frame) { return frame.Pending.has_value(); });
            if (last != frames.end()) frames.erase(last + 1, frames.end());
        }
    }
    return OnTheBus(std::move(units), scenario_.Order, random_);
}

/// Wakes the bus before a first request. Adds what the interface shows meanwhile to the reply; on
/// failure that is the whole of it.
bool InterfaceProtocol::ConnectBus(std::vector<Segment>& reply) {
    const ProtocolRow* own = FindProtocol(scenario_.Protocol);
    const bool answers = vehicle_.Awake() && (automatic_ || protocol_ == scenario_.Protocol);
    const ProtocolRow* shown = automatic_ ? own : FindProtocol(protocol_);
    const bool showInit = !automatic_ || (own->SlowInit && answers);
    const std::string connecting = showInit ? shown->Connecting : "SEARCHING...";
    reply.push_back({scenario_.CommandLatency, connecting});
    if (!answers) {
        const std::string failure = showInit ? shown->Failed : LineEnd() + "UNABLE TO CONNECT";
        reply.push_back({scenario_.SearchTime, failure + Ending()});
        return false;
    }
    connected_ = true;
    protocol_ = scenario_.Protocol;
    if (!connecting.empty())
        reply.push_back({scenario_.SearchTime, (showInit ? shown->Connected : "") + LineEnd()});
    return true;
}

void InterfaceProtocol::Reply(double now, std::vector<Segment> reply) {
    faults_.Spoil(now, current_, LineEnd(), reply);
    double time = now;
    for (const auto& segment : reply) {
        time = std::max(time + segment.Delay, outputFree_);
        Send(time, segment.Text);
        time = std::max(time, outputFree_);
    }
    busyUntil_ = std::max(time, now);
}

void InterfaceProtocol::Send(double now, std::string_view text) {
    for (char byte : text) {
        outputFree_ = std::max(outputFree_, now) + characterTime_;
        output_.push_back({outputFree_, byte});
    }
}

}  // namespace dravik::vehicle
