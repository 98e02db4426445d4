#include "app/ReportCommand.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "app/DemoVehicle.h"
#include "app/ProgramFolder.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/EndRequest.h"
#include "platform/Events.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/Report.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

enum : int { kNoCodes = 0, kWithCodes = 1, kNoReport = 2 };

constexpr double kLookAgain = 0.1;  // seconds

void Tell(const std::string& text) {
    std::fprintf(stderr, "dravik: %s\n", text.c_str());
}

int Fail(const std::string& reason) {
    Tell(reason);
    return kNoReport;
}

/// Tells every new state of the link or the report once. By a timer, since a step of the link that
/// waits for the vehicle keeps whoever waits for the step.
class Progress {
 public:
    Progress() {
        Look();
        timer_.OnTick([this] { Look(); });
    }

 private:
    void Look() {
        const bool reporting = basGlobal.Reporting.Stage != ReportStage::None;
        std::string now = reporting ? ReportStatus() : Word(CurrentStatusText());
        if (now.empty() || now == told_) return;
        told_ = std::move(now);
        Tell(told_);
    }

    std::string told_;
    FormTimer timer_{100, true};
};

template <typename Condition>
void WaitWhile(Condition condition) {
    while (condition() && !basGlobal.Closing) WaitForEvents(kLookAgain);
}

bool Connecting() {
    return basGlobal.ConnState == kConnecting || basGlobal.ConnState == kInitializing;
}

bool Connected() {
    return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
}

/// A report that was asked for in vain is known before the vehicle is asked.
std::string WhyNot(const std::string& file) {
    const std::size_t name = file.find_last_of("/\\");
    const std::string folder = name == std::string::npos ? "." : file.substr(0, name + 1);
    if (!FolderExists(folder)) return "no such folder: " + folder;
    if (FolderExists(file)) return "a folder, not a file: " + file;
    return {};
}

void Start(const CommandLine& line, const std::string& device) {
    GlobalState& g = basGlobal;
    g.Launch.Language = line.Language;
    InitGlobals(FindProgramFolder(line.Folder, g.Launch));
    g.Launch.DemoDevice = device;
    g.DecimalSign = SystemDecimalSign();
    LoadSettings();
    InitLink();
    InitReports();
    // A silent interface is given up after seconds, not after a minute.
    constexpr int kPatience = 5;
    g.ReconnectSeconds = std::max(g.ReconnectSeconds, kPatience);
    g.Misc = static_cast<std::int16_t>(g.Misc & ~kMiscAutoConnect);  // one attempt
    g.ConnState = kConnecting;
    g.tiHardware.SetEnabled(true);
}

/// @return the exit status
int WriteReport(const CommandLine& line) {
    GlobalState& g = basGlobal;
    const Progress progress;
    WaitWhile(Connecting);
    if (g.Closing) return Fail("ended before the report was written");
    if (!Connected()) return Fail(ReasonText());

    RequestReport(FileExtension(line.Report) == "txt" ? ReportFormat::Text : ReportFormat::Html,
                  line.Report);
    WaitWhile([] { return basGlobal.Reporting.Stage != ReportStage::None; });
    if (g.Reporting.Outcome != ReportOutcome::Written)
        return Fail(g.Closing ? "ended before the report was written" : ReportStatus());
    const Diagnosis& found = *LastDiagnosis();
    if (!found.Codes.empty()) return kWithCodes;
    if (const auto unread = UnreadCodes(found))
        return Fail(PartText(unread->Part) + ": " + LackText(unread->Why));
    return kNoCodes;
}

}  // namespace

int ReportCommand(int argc, char** argv, const CommandLine& line) {
    const QCoreApplication application(argc, argv);
    if (const std::string reason = WhyNot(line.Report); !reason.empty()) return Fail(reason);
    DemoVehicle vehicle;
    std::string device = line.Port;
    if (line.Demo) {
        if (const std::string error = vehicle.Start(line.Scenario); !error.empty())
            return Fail(error);
        device = vehicle.Device();
    }
    OnEndRequest([] {
        basGlobal.Closing = true;
        SerialPort::AbortWaits();
    });
    Start(line, device);
    const int status = WriteReport(line);
    basGlobal = GlobalState{};  // ports and timers go before the application does
    return status;
}

}  // namespace dravik
