#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/LinkFaults.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

namespace {

constexpr int kAttempts = 3;
constexpr double kReplySeconds = 50;  // for all attempts of one command together

// With the Reconnect setting a link that is quiet for so long is given up. A request goes to the
// vehicle's bus, and the search for that may be quiet until the vehicle answers; a reset takes its
// time. What else the interface is asked it answers at once, so that a sending without an answer
// was lost.
constexpr double kQuietInterface = 5;
constexpr double kQuietBus = 10;
constexpr double kQuietBeforeResend = 2;

// A line that talks without a prompt must not eat the memory or the disk.
constexpr std::size_t kTextLimit = std::size_t{64} * 1024;

/// True once the vehicle has answered the request, if only with the beginning: "41 01" to
/// "0101".
bool VehicleAnswered(const std::string& request, const std::string& reply) {
    return reply.find(std::string("4") + request[1]) != std::string::npos;
}

/// Seconds without a character after which the wait of this attempt ends. Without the setting that
/// is never before the time for the reply is over.
/// @param reply  what this attempt has brought so far
double QuietLimit(const std::string& command, const std::string& reply, int attempt) {
    if (basGlobal.ReconnectSeconds <= 0) return kReplySeconds;
    if (!command.starts_with("AT"))
        return VehicleAnswered(command, reply) ? kQuietInterface : kQuietBus;
    if (command == "ATZ") return kQuietInterface;
    return std::min(kQuietBeforeResend * attempt, kQuietInterface);
}

/// The trace tells how a connect began; what goes beyond the limit is left out.
void Trace(std::string_view text) {
    std::string& trace = basGlobal.CommTrace;
    trace.append(text.substr(0, kTextLimit - std::min(kTextLimit, trace.size())));
}

struct Answer {
    std::string Text;
    bool Quiet = false;  ///< no prompt, and nothing came for as long as the limit allows
};

/// Collects the reply until its prompt, the deadline or the end of patience. Of a longer text the
/// end is kept, where the prompt is.
///
/// @param heard  when the last character came; brought up to date
Answer AwaitReply(const std::string& command, int attempt, double deadline, double& heard) {
    Answer answer;
    double quietLimit = QuietLimit(command, {}, attempt);
    const auto timeLeft = [&]() -> std::optional<double> {
        const double now = HighResTimer();
        if (now >= deadline) return std::nullopt;
        answer.Quiet = now - heard >= quietLimit;
        if (answer.Quiet) return std::nullopt;
        return std::min(deadline, heard + quietLimit) - now;
    };
    AwaitPrompt(timeLeft, [&](const std::string& received) {
        heard = HighResTimer();
        Trace(received);
        answer.Text += received;
        if (answer.Text.size() > kTextLimit) answer.Text.erase(0, answer.Text.size() - kTextLimit);
        quietLimit = QuietLimit(command, answer.Text, attempt);
    });
    return answer;
}

/// Closes a link that has been silent for too long, as if its device had vanished. The silence
/// counts as waiting for the next connect.
void GiveUp(double heard) {
    basGlobal.comOBD.Close();
    basGlobal.FailedSince = heard;
}

}  // namespace

std::string SendCommand(const std::string& command) {
    SerialPort& port = basGlobal.comOBD;
    if (!port.IsOpen()) return {};

    const AwaitedAnswer wait(command, QuietLimit(command, {}, kAttempts));
    double heard = HighResTimer();
    const double deadline = heard + kReplySeconds;
    Answer answer;
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        port.DiscardInput();
        port.Write(command + "\r");
        Trace(command + "\r\n");
        answer = AwaitReply(command, attempt, deadline, heard);
        if (answer.Quiet && HighResTimer() - heard >= QuietLimit(command, answer.Text, kAttempts)) {
            GiveUp(heard);
            break;
        }
        // "?": not understood, try again
        if (!answer.Quiet && answer.Text.find('?') == std::string::npos) break;
    }
    return answer.Text;
}

namespace {

/// Makes up for the step that had to pass while this reply was outstanding: waiting for the next
/// tick would cost a fast interface a good part of its rate. Requests stay a whole interval apart.
void TakeOwedStep() {
    if (!std::exchange(basGlobal.StepOwed, false)) return;
    PostToUserInterface([] {
        if (basGlobal.tiHardware.Enabled()) HardwareStep();  // off: a step is running already
    });
}

}  // namespace

void HandleReceiveEvent(int code) {
    GlobalState& g = basGlobal;
    if (g.ConnState != kConnected && g.ConnState != kReceivingData) return;

    if (code == SerialPort::kBufferOverflow) {
        g.ConnState = kConnecting;
    } else if (code == SerialPort::kDataReceived) {
        const std::string received = g.comOBD.ReadAll();
        g.RxBuffer += received;
        if (HasPrompt(received)) {
            HandlePidReply(g.RxBuffer);
            g.RxBuffer.clear();
            g.AwaitingReply = false;
            TakeOwedStep();
        } else if (g.RxBuffer.size() > kTextLimit) {
            g.RxBuffer.clear();
        }
    }
}

void HandleReplyTimeout() {
    if (basGlobal.ConnState == kReceivingData) basGlobal.ConnState = kConnected;
    basGlobal.tiTimeout.SetEnabled(false);
}

}  // namespace dravik
