#include <algorithm>
#include <string_view>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

namespace {

constexpr int kAttempts = 3;
constexpr double kReplySeconds = 50;  // for all attempts of one command together

// A line that talks without a prompt must not eat the memory or the disk.
constexpr std::size_t kTextLimit = 64 * 1024;

bool HasPrompt(std::string_view text) {
    return text.find('>') != std::string_view::npos;
}

/// The trace tells how a connect began; what goes beyond the limit is left out.
void Trace(std::string_view text) {
    std::string& trace = basGlobal.CommTrace;
    trace.append(text.substr(0, kTextLimit - std::min(kTextLimit, trace.size())));
}

/// Collects the reply until its prompt or the deadline. The time is tested before the read: once it
/// is over, nothing more is read. Of a longer text the end is kept, where the prompt is.
std::string AwaitReply(double deadline) {
    SerialPort& port = basGlobal.comOBD;
    std::string reply;
    for (bool complete = false; !complete && port.IsOpen() && !basGlobal.Closing;) {
        const double left = deadline - HighResTimer();
        if (left <= 0) break;
        WaitForEvents(left);
        if (port.InputCount() == 0) continue;
        const std::string received = port.ReadAll();
        complete = HasPrompt(received);
        Trace(received);
        reply += received;
        if (reply.size() > kTextLimit) reply.erase(0, reply.size() - kTextLimit);
    }
    return reply;
}

}  // namespace

std::string SendCommand(const std::string& command) {
    SerialPort& port = basGlobal.comOBD;
    if (!port.IsOpen()) return {};

    const double deadline = HighResTimer() + kReplySeconds;
    std::string reply;
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        port.DiscardInput();
        port.Write(command + "\r");
        Trace(command + "\r\n");
        reply = AwaitReply(deadline);
        if (reply.find('?') == std::string::npos) break;  // "?": not understood, try again
    }
    return reply;
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
