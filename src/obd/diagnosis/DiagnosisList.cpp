#include <algorithm>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "platform/At.h"
#include "platform/Number.h"
#include "platform/Text.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

using Part = DiagnosisPart;

constexpr const char* kGood = "good";
constexpr const char* kBad = "bad";
constexpr const char* kOpen = "open";
constexpr const char* kNone = "none";

constexpr std::string_view kCodeTag = "code";  // and the index of the code

constexpr std::string_view kNoCodes = "No trouble codes";
constexpr std::string_view kNoFrame = "No freeze frame";
constexpr std::string_view kFrameOf = "Freeze frame of %1";
constexpr std::string_view kThisDrive = "this drive: %1";
constexpr std::string_view kLimits = "%1 to %2";
constexpr std::string_view kAtLeast = "at least %1";
constexpr std::string_view kAtMost = "at most %1";
constexpr std::string_view kPassed = "Passed";
constexpr std::string_view kFailed = "Failed";
constexpr std::string_view kNotRun = "Not run yet";
constexpr std::string_view kLamp = "Malfunction lamp";

ListSlot& Slot() {
    return basGlobal.Lists[kDiagnosisSlot];
}

void Add(std::string text, const char* picture, std::string tag = {}) {
    AddListEntry(Slot(), {std::move(text), picture, std::move(tag)});
}

/// A line that tells a label function, unless that has nothing to tell.
void AddFact(std::string_view caption, const std::string& value, const char* picture = kNone) {
    Add(Word(caption) + ": " + value, picture);
}

void AddIfMissing(const Diagnosis& found, Part part) {
    if (const auto why = LackOf(found, part)) Add(PartText(part) + ": " + LackText(*why), kNone);
}

// Codes -------------------------------------------------------------------------------------------

std::string Description(const std::string& code) {
    const std::string text = ReadIniString(basGlobal.DescriptionFile, "errorcodes", code);
    return text == "0" ? Word(SeverityText(SeverityOf(code))) : text;
}

/// Which unit it was only matters where there are several.
std::string CodeLine(const Diagnosis& found, const FoundCode& code) {
    std::string text = code.Code + "  " + CodeKindText(code.Kind) + ": " + Description(code.Code);
    if (found.Units.size() > 1) text += " (" + UnitText(found, code.Unit) + ")";
    return text;
}

void ListCodes(const Diagnosis& found) {
    for (std::size_t i = 0; i < found.Codes.size(); ++i) {
        const FoundCode& code = found.Codes[i];
        Add(CodeLine(found, code), code.Kind == CodeKind::Pending ? kOpen : kBad,
            std::string(kCodeTag) + std::to_string(i));
    }
    // A page that opens while the run is under way must not say what nobody has asked yet.
    if (found.Codes.empty() && !Diagnosing() && !UnreadCodes(found)) Add(Word(kNoCodes), kGood);
    for (const Part part :
         {Part::StoredCodes, Part::PendingCodes, Part::PermanentCodes, Part::FreezeFrames})
        AddIfMissing(found, part);
}

// Freeze frame ------------------------------------------------------------------------------------

void ListFrame(const Diagnosis& found) {
    const FoundCode* const code = FindAt(found.Codes, basGlobal.Diagnosing.ShownCode);
    if (code == nullptr) return Add(Word(kNoFrame), kNone);
    const auto frame =
        std::find_if(found.Frames.begin(), found.Frames.end(), [&](const FreezeFrame& candidate) {
            return candidate.Unit == code->Unit && candidate.Number == code->Frame;
        });
    if (frame == found.Frames.end()) return Add(code->Code + ": " + Word(kNoFrame), kNone);
    Add(Word(kFrameOf, {CodeLine(found, *code)}), kBad);
    for (const auto& [pid, bytes] : frame->Values) {
        for (const FrameValue& value : FrameValuesOf(pid, bytes))
            Add(value.Caption + ": " + value.Text, kNone);
    }
}

// Readiness ---------------------------------------------------------------------------------------

const Monitor* FindMonitor(const std::optional<MonitorStatus>& status, std::string_view name) {
    if (!status) return nullptr;
    const auto found = std::find_if(status->Monitors.begin(), status->Monitors.end(),
                                    [name](const Monitor& row) { return row.Name == name; });
    return found == status->Monitors.end() ? nullptr : &*found;
}

void ListReadiness(const Diagnosis& found) {
    AddIfMissing(found, Part::Readiness);
    if (const auto verdict = ReadyForInspection(found)) {
        Add(*DiagnosisText("ready"), verdict->Ready ? kGood : kBad);
        AddFact(kLamp, *DiagnosisText("lamp"), verdict->Lamp ? kBad : kGood);
        for (const Monitor& monitor : found.SinceClear->Monitors) {
            std::string text = Word(monitor.Name) + ": " + MonitorText(monitor);
            const Monitor* const today = FindMonitor(found.ThisDrive, monitor.Name);
            if (monitor.Fitted && today != nullptr && today->Fitted)
                text += ", " + Word(kThisDrive, {MonitorText(*today)});
            Add(text, !monitor.Fitted ? kNone : monitor.Complete ? kGood : kOpen);
        }
    }
    AddIfMissing(found, Part::ThisDrive);
}

// Tests -------------------------------------------------------------------------------------------

void AddTest(const TestResult& test) {
    const std::string name = TestName(test) + ": ";
    if (!test.Ran) return Add(name + Word(kNotRun), kOpen);
    std::string text = name + TestNumber(test, test.Value);
    if (const std::string limits = LimitsText(test); !limits.empty()) text += " (" + limits + ")";
    Add(text + "  " + Word(test.Passed ? kPassed : kFailed), test.Passed ? kGood : kBad);
}

void ListTests(const Diagnosis& found) {
    for (const TestResult& test : found.Tests) AddTest(test);
    AddIfMissing(found, Part::Tests);
}

// Vehicle -----------------------------------------------------------------------------------------

const char* VinPicture(const Diagnosis& found) {
    if (!found.Vin || found.Check == VinCheck::NotChecked) return kNone;
    return found.Check == VinCheck::Holds ? kGood : kBad;
}

void ListVehicle(const Diagnosis& found) {
    AddFact("Vehicle number (VIN)", *DiagnosisText("vin"), VinPicture(found));
    if (found.Vin) Add(*DiagnosisText("vincheck"), VinPicture(found));
    AddFact("Protocol", *DiagnosisText("protocol"));
    AddFact("Interface", *DiagnosisText("interface"));
    AddFact("Battery voltage", *DiagnosisText("voltage"));
    for (const ControlUnit& unit : found.Units) {
        std::string text = UnitText(found, unit.Address);
        if (!unit.Name.empty() && unit.Address != 0) text += " (" + HexText(unit.Address, 2) + ")";
        for (const std::string& calibration : unit.Calibrations) text += "  " + calibration;
        for (const std::string& number : unit.Verifications) text += "  " + number;
        Add(text, kNone);
    }
    AddFact("Odometer", *DiagnosisText("odometer"));
    AddFact("Distance since clear", *DiagnosisText("distanceclear"));
    AddFact("Time since clear", *DiagnosisText("timeclear"));
    AddFact("Distance with lamp on", *DiagnosisText("distancelamp"));
    AddFact("Time with lamp on", *DiagnosisText("timelamp"));
    for (const Part part : {Part::Calibrations, Part::UnitNames}) AddIfMissing(found, part);
}

struct SectionRow {
    std::string_view Name;
    void (*Fill)(const Diagnosis& found);
};

constexpr SectionRow kSections[] = {
    {"codes", ListCodes}, {"frame", ListFrame},     {"readiness", ListReadiness},
    {"tests", ListTests}, {"vehicle", ListVehicle},
};

/// The code that an entry of the section "codes" stands for; -1 for any other entry.
int CodeIndexOf(const ListEntry& entry) {
    if (!entry.Tag.starts_with(kCodeTag)) return -1;
    return WholeNumber(std::string_view(entry.Tag).substr(kCodeTag.size())).value_or(-1);
}

const ListEntry* SelectedEntry() {
    return FindAt(Slot().Entries, Slot().Selected - 1);
}

int SelectedCodeIndex() {
    const ListEntry* const entry = SelectedEntry();
    return entry == nullptr ? -1 : CodeIndexOf(*entry);
}

}  // namespace

std::string LimitsText(const TestResult& test) {
    if (test.Low && test.High)
        return Word(kLimits, {TestNumber(test, *test.Low), TestNumber(test, *test.High)});
    if (test.Low) return Word(kAtLeast, {TestNumber(test, *test.Low)});
    if (test.High) return Word(kAtMost, {TestNumber(test, *test.High)});
    return {};
}

void ShowDiagnosis(std::string_view section) {
    if (section.empty()) section = "codes";
    DiagnosisState& state = basGlobal.Diagnosing;
    if (state.Section == "codes" && section == "frame") state.ShownCode = SelectedCodeIndex();
    if (state.Section != section) Slot().Selected = 0;
    const bool back = state.Section == "frame" && section == "codes";
    state.Section = section;
    RenewDiagnosisList();
    if (back) SelectListEntry(Slot(), state.ShownCode + 1);
}

void RenewDiagnosisList() {
    const DiagnosisState& state = basGlobal.Diagnosing;
    if (state.Section == kReportSection) return upCalls.ListReports();
    const int selected = Slot().Selected;
    ClearList(Slot());
    if (!state.Found) return;
    for (const SectionRow& row : kSections) {
        if (row.Name == state.Section) row.Fill(*state.Found);
    }
    if (selected > 0) SelectListEntry(Slot(), selected);
}

const FoundCode* SelectedCodeOfDiagnosis() {
    const DiagnosisState& state = basGlobal.Diagnosing;
    if (!state.Found) return nullptr;
    const int index = state.Section == "frame" ? state.ShownCode : SelectedCodeIndex();
    return FindAt(state.Found->Codes, index);
}

std::string SelectedOfDiagnosis() {
    const ListEntry* const entry = SelectedEntry();
    return entry == nullptr ? std::string() : entry->Text;
}

std::vector<std::string_view> ListWords() {
    return {kNoCodes, kNoFrame, kFrameOf, kThisDrive, kLimits,
            kAtLeast, kAtMost,  kPassed,  kFailed,    kLamp};
}

}  // namespace dravik
