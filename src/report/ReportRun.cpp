#include <algorithm>
#include <utility>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/LiveValues.h"
#include "report/Report.h"
#include "report/ReportDocument.h"
#include "settings/Words.h"

namespace dravik {

namespace {

ReportJob& State() {
    return basGlobal.Reporting;
}

bool Connected() {
    return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
}

// The end -----------------------------------------------------------------------------------------

void End(ReportOutcome outcome, std::string status) {
    basGlobal.tiReport.SetEnabled(false);
    State().Stage = ReportStage::None;
    State().Outcome = outcome;
    State().Status = std::move(status);
    State().Charts.clear();
    State().Before.reset();
    if (basGlobal.Diagnosing.Section == kReportSection) ListReports();
}

void Fail(ReportOutcome outcome, const std::string& text) {
    End(outcome, text);
    upCalls.ShowPlainMessage(text, kMessageCritical, "Dravik");
}

// Writing -----------------------------------------------------------------------------------------

/// A name that no file has yet: date, time and vehicle, counted on where that is taken. Without the
/// characters that some systems do not have in file names.
std::string FreeFile(const Diagnosis& found, const LocalTime& now, const std::string& ending) {
    std::string stem = ReplaceAll(TimeStamp(now), ":", "-");
    if (const std::string vin = PlainVin(found); !vin.empty()) stem += " " + vin;
    std::string file = JoinPath(ReportFolder(), stem + ending);
    for (int copy = 1; FileExists(file); ++copy)
        file = JoinPath(ReportFolder(), stem + "-" + std::to_string(copy) + ending);
    return file;
}

void Write() {
    const Diagnosis& found = *LastDiagnosis();
    const LocalTime now = SystemTime();
    const bool own = State().File.empty();
    if (own) State().File = FreeFile(found, now, State().AsText ? ".txt" : ".html");
    const ReportDocument report = MakeReport(found, State().Charts, now);
    const std::string content = State().AsText ? PlainTextOf(report) : HtmlOf(report);
    const std::string file = State().File;
    if ((own && !MakeFolder(ReportFolder())) || !ReplaceFile(file, content))
        return Fail(ReportOutcome::NotWritten,
                    Word("The report could not be saved:") + "\n" + file);
    const std::string name = file.substr(file.find_last_of("/\\") + 1);
    End(ReportOutcome::Written, name);
    upCalls.ShowPlainMessage(Word("The report was saved:") + "\n" + name, kMessageInformation,
                             "Dravik");
}

// The values of now -------------------------------------------------------------------------------

/// Has the vehicle asked for all values that it has, whatever the page shows.
void BeginReading() {
    ReportJob& state = State();
    if (!Connected() || FreezeFrameMode()) return Write();
    for (const int pid : ReadablePids(*LastDiagnosis())) {
        if (!std::exchange(At(basGlobal.PidWanted, pid), true)) state.Borrowed.push_back(pid);
    }
    state.Stage = ReportStage::ReadingValues;
    state.Status = Word("Reading live values");
    state.ReadingSince = HighResTimer();
    state.RoundBegan = basGlobal.RoundBegan;
}

/// True once every value has come, and at the latest when a whole round of requests is over: what
/// has not come by then is not given.
bool ReadingOver() {
    constexpr double kLongest = 30;  // seconds
    constexpr int kWholeRound = 2;   // rounds that begin, since the first was under way
    ReportJob& state = State();
    if (std::exchange(state.RoundBegan, basGlobal.RoundBegan) != basGlobal.RoundBegan)
        ++state.Rounds;
    const auto pids = ReadablePids(*LastDiagnosis());
    const bool all = std::all_of(pids.begin(), pids.end(), [&state](int pid) {
        return At(basGlobal.LiveAt, pid) > state.ReadingSince;
    });
    return all || !Connected() || FreezeFrameMode() || state.Rounds >= kWholeRound ||
           HighResTimer() - state.ReadingSince > kLongest;
}

/// What the page shows asks for itself again.
void EndReading() {
    for (const int pid : std::exchange(State().Borrowed, {})) At(basGlobal.PidWanted, pid) = false;
}

// The diagnosis -----------------------------------------------------------------------------------

void FailWithout() {
    Fail(ReportOutcome::NoDiagnosis, Word("There is nothing to report: no vehicle is connected"));
}

void AfterDiagnosis() {
    const auto& found = basGlobal.Diagnosing.Found;
    if (!found || found == State().Before) return FailWithout();
    if (found->Cancelled)
        return End(ReportOutcome::Cancelled, DiagnosisText("progress").value_or(""));
    BeginReading();
}

void Step() {
    if (basGlobal.Closing) return;
    if (State().Stage == ReportStage::Diagnosing) {
        State().Status = DiagnosisText("progress").value_or("");
        if (!Diagnosing()) AfterDiagnosis();
    } else if (State().Stage == ReportStage::ReadingValues && ReadingOver()) {
        EndReading();
        Write();
    }
}

}  // namespace

void InitReports() {
    basGlobal.tiReport.OnTick(Step);
    upCalls.ListReports = ListReports;
}

void RequestReport(ReportFormat format, const std::string& file) {
    ReportJob& state = State();
    if (state.Stage != ReportStage::None) return;
    state = ReportJob();
    state.AsText = format == ReportFormat::Text;
    state.File = file;
    state.Charts = upCalls.ChartPictures();
    // One that was made before the connect may be of another vehicle.
    if (!Diagnosing() && Connected() && !basGlobal.Diagnosing.OfThisVehicle) {
        state.Before = basGlobal.Diagnosing.Found;
        StartDiagnosis();
    }
    if (Diagnosing())
        state.Stage = ReportStage::Diagnosing;
    else if (LastDiagnosis() == nullptr)
        return FailWithout();
    else
        BeginReading();
    if (state.Stage != ReportStage::None) basGlobal.tiReport.SetEnabled(true);
}

std::string ReportFolder() {
    return JoinPath(basGlobal.ProgramFolder, "reports");
}

const std::string& ReportStatus() {
    return basGlobal.Reporting.Status;
}

}  // namespace dravik
