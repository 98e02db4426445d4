#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

namespace {

constexpr int kAttempts = 3;
constexpr double kReplySeconds = 50;  // for all attempts of one command together

// A prompt that never comes must not let a babbling line eat the memory.
constexpr std::size_t kReceiveLimit = 64 * 1024;

bool HasPrompt(const std::string& text) {
    return text.find('>') != std::string::npos;
}

/// Collects the reply until its prompt or the deadline. The time is tested before the read: once it
/// is over, nothing more is read.
std::string AwaitReply(double deadline) {
    SerialPort& port = basGlobal.comOBD;
    std::string reply;
    while (!HasPrompt(reply) && port.IsOpen() && !basGlobal.Closing) {
        const double left = deadline - HighResTimer();
        if (left <= 0) break;
        WaitForEvents(left);
        if (port.InputCount() > 0) {
            const std::string received = port.ReadAll();
            reply += received;
            basGlobal.CommTrace += received;
        }
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
        basGlobal.CommTrace += command + "\r\n";
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
        g.RxBuffer += g.comOBD.ReadAll();
        if (HasPrompt(g.RxBuffer)) {
            HandlePidReply(g.RxBuffer);
            g.RxBuffer.clear();
            g.AwaitingReply = false;
            TakeOwedStep();
        } else if (g.RxBuffer.size() > kReceiveLimit) {
            g.RxBuffer.clear();
        }
    }
}

void HandleReplyTimeout() {
    if (basGlobal.ConnState == kReceivingData) basGlobal.ConnState = kConnected;
    basGlobal.tiTimeout.SetEnabled(false);
}

}  // namespace dravik
