#include <string_view>
#include <utility>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "obd/StandardCodes.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr int kDefaultBaudrate = 9600;
constexpr int kHighestPort = 255;
constexpr std::string_view kIdentityWord = "QVX";  // the one interface type that knows AT!01
constexpr std::size_t kIdentityLength = 12;

// Reset, echo off, line feeds off, headers off.
constexpr const char* kResetCommands[] = {"ATZ", "ATE0", "ATL0", "ATH0"};

/// Opens the configured port; false when there is none or it will not open.
bool OpenPort() {
    GlobalState& g = basGlobal;
    if (g.comOBD.IsOpen()) g.comOBD.Close();

    std::string device = g.Launch.DemoDevice;
    if (device.empty()) {
        const double number = LeadingNumber(ReadIniString(g.IniFile, "OBD", "ComPort"));
        if (!(number >= 1 && number <= kHighestPort)) {
            NoteFault(LinkFault::NoPortChosen);
            return false;
        }
        device = PortDevice(static_cast<int>(number));
        if (device.empty())
            NoteFault(LinkFault::NoSuchPort, "COM" + std::to_string(static_cast<int>(number)));
    }
    if (device.empty()) return false;

    const int baudrate = ReadProfileInt(g.IniFile, "OBD", "Baudrate", 0);
    g.comOBD.SetDevice(device);
    g.comOBD.SetBaudrate(baudrate > 0 ? baudrate : kDefaultBaudrate);
    if (g.comOBD.Open()) return true;
    NoteOpenFailure();
    return false;
}

/// An interface answers a command after all when the link was closed meanwhile, which would be
/// taken for the answer to the first one of the new link.
void TakeLateReply() {
    if (!std::exchange(basGlobal.CutShort, false)) return;
    constexpr double kLongestReset = 1.5;  // seconds
    const double deadline = HighResTimer() + kLongestReset;
    AwaitPrompt(
        [deadline] {
            const double left = deadline - HighResTimer();
            return left > 0 ? std::optional(left) : std::nullopt;
        },
        [](const std::string&) {});
}

bool ResetInterface() {
    for (const char* command : kResetCommands) {
        const std::string reply = SendCommand(command);
        if (reply.find('>') != std::string::npos) continue;
        NoteSilentInterface(reply);
        return false;
    }
    return true;
}

/// The identity never fails the connect: an interface that does not know AT!01 is asked ATI.
std::string AskIdentity() {
    std::string reply = SendCommand("AT!01");
    const std::size_t start = reply.find(kIdentityWord);
    if (start != std::string::npos)
        reply.erase(0, start);
    else
        reply = SendCommand("ATI").substr(0, kIdentityLength);
    return reply.substr(0, reply.find('\r'));
}

/// Gives the vehicle bus its time before the first request. Ends with the device.
void WaitForBus(int seconds) {
    const GlobalState& g = basGlobal;
    const AwaitedAnswer wait({}, seconds);
    const double end = HighResTimer() + seconds;
    for (double left = seconds; left > 0 && g.comOBD.IsOpen() && !g.Closing;
         left = end - HighResTimer())
        WaitForEvents(left);
}

std::string AskProtocol() {
    std::string text = SendCommand("ATDP");
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n' || c == '>'; });
    return text;
}

/// The first request to the vehicle: true when that answers.
bool AskStatus() {
    const std::string status = SendCommand("0101");
    const bool answers = ReadMonitorStatus(status);
    if (!answers) NoteVehicleFault(status);
    return answers;
}

bool AskStandardStatus() {
    const Reply status = Ask({0x01, 0x01}, false);
    const bool answers = status.End == ReplyEnd::Answered;
    if (answers)
        TakeMonitorStatus(status.Messages);
    else
        NoteVehicleFault(status);
    return answers;
}

/// Everything between the open port and the connected state; false when the interface or the
/// vehicle does not answer.
bool RunSequence() {
    GlobalState& g = basGlobal;
    TakeLateReply();
    if (!ResetInterface()) return false;
    g.InterfaceId = AskIdentity();
    g.tiTimeout.SetEnabled(true);

    if (g.StepCancelled) return false;  // before anything shows another state
    g.ConnState = kInitializing;
    WaitForBus(ReadProfileInt(g.IniFile, "OBD", "BusInitDelay", 0));
    if (!(g.StandardDecoding ? AskStandardStatus() : AskStatus())) return false;
    g.ProtocolText = AskProtocol();
    if (g.StandardDecoding) g.VehicleBus = AskBus();
    if (!g.comOBD.IsOpen()) NoteSilentInterface({});
    return g.comOBD.IsOpen() && !g.Closing;
}

}  // namespace

std::string PortDevice(int number) {
    const std::string name = "COM" + std::to_string(number);
    std::string device = ReadIniString(basGlobal.IniFile, "Ports", name);
    if (device != "0" && !device.empty()) return device;
    return DefaultPortDevice(number);
}

void ConnectInterface() {
    GlobalState& g = basGlobal;
    g.CommTrace.clear();
    g.LiveRaw.fill(0);
    g.FreezeRaw.fill(0);
    g.LiveAt.fill(0);
    g.FreezeAt.fill(0);
    g.ValuesCame = false;
    g.CodesRead = false;
    g.CodeOrigins.fill({});
    g.VehicleBus = Bus::Unknown;
    g.ValuelessSince = 0;

    if (!OpenPort()) {
        EndStep(kPortNotFound);
    } else if (!RunSequence()) {
        EndStep(kNotConnected);
    } else {
        EndStep(kConnected);
        g.AwaitingReply = false;
        // A part of an older reply would be read together with the next one.
        if (g.StandardDecoding) g.RxBuffer.clear();
        NoteFault(LinkFault::None);
    }
}

}  // namespace dravik
