#include <optional>
#include <string>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/Diagnosis.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "obd/basOBD.h"
#include "obd/diagnosis/DiagnosisRun.h"

namespace dravik {

namespace {

/// True once the link has failed for as long as the Reconnect setting waits. Without the setting
/// (0) never.
bool ReconnectDue() {
    GlobalState& g = basGlobal;
    if (g.ReconnectSeconds <= 0 || !g.ConnectTried || g.LetGo) return false;
    const double now = HighResTimer();
    if (g.FailedSince == 0) g.FailedSince = now;
    return now - g.FailedSince >= g.ReconnectSeconds;
}

bool ReplyOverdue() {
    const GlobalState& g = basGlobal;
    return g.ReconnectSeconds > 0 && g.AwaitingReply &&
           HighResTimer() - g.RequestedAt >= g.ReconnectSeconds;
}

void Connect() {
    basGlobal.ConnectTried = true;
    basGlobal.LetGo = false;
    basGlobal.FailedSince = 0;
    NoteOtherVehicle();
    ConnectInterface();
    WriteConnectLog();
}

void PollLink() {
    if (ReplyOverdue())
        basGlobal.ConnState = kConnecting;
    else
        RequestNextPid();
}

void RestNotConnected() {
    const bool always = (basGlobal.Misc & kMiscAutoConnect) != 0 && !basGlobal.LetGo;
    if (always || ReconnectDue()) basGlobal.ConnState = kConnecting;
}

void RestWithoutPort() {
    if (ReconnectDue()) basGlobal.ConnState = kConnecting;
}

/// Takes the reply of the last live request before a command is sent: an interface stops what it is
/// doing when it receives a character, and would answer the command with the pieces. One that does
/// not answer is not waited for longer than a reply may take before the link counts as idle.
void SettleLiveRequest() {
    GlobalState& g = basGlobal;
    if (!g.AwaitingReply) return;
    constexpr double kLongestReply = 1;  // second, as tiTimeout
    const double deadline = HighResTimer() + kLongestReply;
    const auto timeLeft = [deadline] {
        const double left = deadline - HighResTimer();
        return left > 0 ? std::optional(left) : std::nullopt;
    };
    // A reply without its end stays outstanding.
    if (!AwaitPrompt(timeLeft, [](const std::string&) {})) return;
    g.RxBuffer.clear();
    g.AwaitingReply = false;
}

void ReadCodes() {
    SettleLiveRequest();
    ReadTroubleCodes();
    // What is left after a clear, and what has to run again.
    if (DiagnosisStale() && basGlobal.ConnState == kConnected) StartDiagnosis();
}

void ClearCodes() {
    SettleLiveRequest();
    ClearTroubleCodes();
    if (basGlobal.ConnState == kReadingCodes) NoteCleared();
}

void Diagnose() {
    SettleLiveRequest();
    RunDiagnosis();
}

struct StateAction {
    std::uint8_t State;
    void (*Act)();
};

// What a step does in each state, in the order in which the states are tested.
constexpr StateAction kStateActions[] = {
    {kConnecting, Connect},           {kConnected, PollLink},
    {kReceivingData, PollLink},       {kReadingCodes, ReadCodes},
    {kClearingCodes, ClearCodes},     {kNotConnected, RestNotConnected},
    {kPortNotFound, RestWithoutPort}, {kDiagnosing, Diagnose},
};

void Act(std::uint8_t state) {
    for (const StateAction& action : kStateActions) {
        if (action.State == state) return action.Act();
    }
}

/// A device that vanished has closed its port; the state follows unless a connect is asked for or
/// running, which finds out by itself.
void HandleLostDevice() {
    if (basGlobal.Search.Running) return;
    NoteFault(LinkFault::LineLost, basGlobal.comOBD.Device());
    const std::uint8_t state = basGlobal.ConnState;
    if (state != kPortNotFound && state != kConnecting) basGlobal.ConnState = kNotConnected;
}

}  // namespace

void InitLink() {
    basGlobal.comOBD.OnReceive(HandleReceiveEvent);
    basGlobal.comOBD.OnLost(HandleLostDevice);
    basGlobal.tiHardware.OnTick(HardwareStep);
    basGlobal.tiTimeout.OnTick(HandleReplyTimeout);
}

void HardwareStep() {
    // Off for the length of the step: a step that waits for the interface pumps events meanwhile
    // and must not be entered twice.
    basGlobal.tiHardware.SetEnabled(false);
    basGlobal.StepCancelled = false;
    if (basGlobal.Search.Wanted)
        RunSearch();
    else
        Act(basGlobal.ConnState);
    if (!basGlobal.Closing) basGlobal.tiHardware.SetEnabled(true);
}

void EndStep(std::uint8_t state) {
    if (!basGlobal.StepCancelled) basGlobal.ConnState = state;
}

void CloseLink() {
    GlobalState& g = basGlobal;
    const bool stepRuns = !g.tiHardware.Enabled();
    g.CutShort = g.CutShort || (g.comOBD.IsOpen() && (stepRuns || g.AwaitingReply));
    g.comOBD.Close();  // which ends every wait for an answer
    g.StepCancelled = true;
    g.AwaitingReply = g.StepOwed = false;
    g.RxBuffer.clear();
    g.ConnState = kNotConnected;
}

void Disconnect() {
    basGlobal.Search.Reconnects = false;
    CancelSearch();
    NoteFault(LinkFault::LetGo);
    CloseLink();
    basGlobal.LetGo = true;
}

bool LinkActive() {
    const GlobalState& g = basGlobal;
    if (g.ConnState > kPortNotFound || Searching()) return true;
    const bool always = (g.Misc & kMiscAutoConnect) != 0 && g.ConnState == kNotConnected;
    return !g.LetGo && (always || (g.ReconnectSeconds > 0 && g.ConnectTried));
}

const std::string& CurrentStatusText() {
    static const std::string kNone;
    const std::size_t state = basGlobal.ConnState;
    return state < basGlobal.StatusText.size() ? basGlobal.StatusText[state] : kNone;
}

}  // namespace dravik
