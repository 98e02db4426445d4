#include <algorithm>
#include <cstdio>
#include <set>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "report/LiveValues.h"
#include "report/ReportDocument.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

using Part = DiagnosisPart;
constexpr const char* kNothing = "\u2013";

/// A line of the label function diagnosis_NAME, which says why where the vehicle does not tell.
std::string Told(std::string_view name) {
    return DiagnosisText(name).value_or(kNothing);
}

void AddFact(ReportTable& table, std::string caption, std::string value, Mark how = Mark::None) {
    table.Rows.push_back({{std::move(caption), std::move(value)}, how});
}

/// The reasons why parts are missing, as notes of the section that would show them.
void NoteMissing(ReportSection& section, const Diagnosis& found,
                 std::initializer_list<Part> parts) {
    for (const Part part : parts) {
        if (const auto why = LackOf(found, part))
            section.Notes.push_back(PartText(part) + ": " + LackText(*why));
    }
}

// What matters most -------------------------------------------------------------------------------

ReportRow CodesVerdict(const Diagnosis& found) {
    if (found.Codes.empty()) {
        const auto unread = UnreadCodes(found);
        if (!unread) return {{Word("No trouble codes")}, Mark::Good};
        return {{PartText(unread->Part) + ": " + LackText(unread->Why)}, Mark::Open};
    }
    // By how urgent they are.
    for (const Severity severity :
         {Severity::Stop, Severity::SeeSoon, Severity::Manufacturer, Severity::DriveOn}) {
        const auto matches = [severity](const FoundCode& code) {
            return SeverityOf(code.Code) == severity;
        };
        if (std::none_of(found.Codes.begin(), found.Codes.end(), matches)) continue;
        return {{Word(SeverityText(severity))},
                severity == Severity::Stop ? Mark::Bad : Mark::Open};
    }
    return {};
}

std::vector<ReportRow> Verdicts(const Diagnosis& found) {
    std::vector<ReportRow> verdicts = {CodesVerdict(found)};
    if (found.SinceClear) {
        const bool lamp = found.SinceClear->Lamp;
        verdicts.push_back(
            {{Word("Malfunction lamp") + ": " + Told("lamp")}, lamp ? Mark::Bad : Mark::Good});
    }
    if (const auto verdict = ReadyForInspection(found))
        verdicts.push_back({{Told("ready")}, verdict->Ready ? Mark::Good : Mark::Open});
    return verdicts;
}

// The sections ------------------------------------------------------------------------------------

Mark VinMark(const Diagnosis& found) {
    if (!found.Vin || found.Check == VinCheck::NotChecked) return Mark::None;
    return found.Check == VinCheck::Holds ? Mark::Good : Mark::Bad;
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
    return all.empty() ? kNothing : all;
}

std::string AddressText(std::uint32_t address) {
    if (address == 0) return kNothing;
    char text[16];
    std::snprintf(text, sizeof text, "%02X", address);
    return text;
}

ReportSection VehicleSection(const Diagnosis& found) {
    ReportSection section{Word("Vehicle"), {}, {}};
    ReportTable facts;
    AddFact(facts, PartText(Part::Vin), Told("vin"), VinMark(found));
    if (found.Vin) AddFact(facts, Word("Check digit"), Told("vincheck"), VinMark(found));
    AddFact(facts, PartText(Part::Protocol), Told("protocol"));
    AddFact(facts, Word("Interface"), Told("interface"));
    AddFact(facts, PartText(Part::Voltage), Told("voltage"));
    AddFact(facts, PartText(Part::Odometer), Told("odometer"));
    AddFact(facts, PartText(Part::DistanceSinceClear), Told("distanceclear"));
    AddFact(facts, PartText(Part::TimeSinceClear), Told("timeclear"));
    AddFact(facts, PartText(Part::DistanceWithLamp), Told("distancelamp"));
    AddFact(facts, PartText(Part::TimeWithLamp), Told("timelamp"));
    section.Tables.push_back(std::move(facts));

    ReportTable units{Word("Control units"),
                      {Word("Name"), Word("Address"), Word("Calibration"), Word("Check number")},
                      {}};
    for (const ControlUnit& unit : found.Units)
        units.Rows.push_back({{UnitText(found, unit.Address), AddressText(unit.Address),
                               Joined(unit.Calibrations), Joined(unit.Verifications)}});
    if (!units.Rows.empty()) section.Tables.push_back(std::move(units));
    NoteMissing(section, found, {Part::Calibrations, Part::UnitNames});
    return section;
}

std::string Description(const std::string& code) {
    const std::string text = ReadIniString(basGlobal.DescriptionFile, "errorcodes", code);
    return text == "0" ? kNothing : text;
}

/// The codes of each control unit in a table of their own.
ReportSection CodesSection(const Diagnosis& found) {
    ReportSection section{Word("Trouble codes"), {}, {}};
    std::set<std::uint32_t> units;
    for (const FoundCode& code : found.Codes) units.insert(code.Unit);
    for (const std::uint32_t unit : units) {
        ReportTable table{
            UnitText(found, unit),
            {Word("Code"), Word("State"), Word("For the driver"), Word("Description")},
            {}};
        for (const FoundCode& code : found.Codes) {
            if (code.Unit != unit) continue;
            table.Rows.push_back(
                {{code.Code, CodeKindText(code.Kind), Word(SeverityText(SeverityOf(code.Code))),
                  Description(code.Code)},
                 code.Kind == CodeKind::Pending ? Mark::Open : Mark::Bad});
        }
        section.Tables.push_back(std::move(table));
    }
    if (found.Codes.empty() && !UnreadCodes(found))
        section.Notes.push_back(Word("No trouble codes"));
    NoteMissing(section, found, {Part::StoredCodes, Part::PendingCodes, Part::PermanentCodes});
    return section;
}

ReportSection FramesSection(const Diagnosis& found) {
    ReportSection section{PartText(Part::FreezeFrames), {}, {}};
    for (const FreezeFrame& frame : found.Frames) {
        ReportTable table{Word("Freeze frame of %1", {frame.Code}), {}, {}, true};
        if (found.Units.size() > 1) table.Title += " (" + UnitText(found, frame.Unit) + ")";
        for (const auto& [pid, bytes] : frame.Values) {
            for (FrameValue& value : FrameValuesOf(pid, bytes))
                AddFact(table, std::move(value.Caption), std::move(value.Text));
        }
        section.Tables.push_back(std::move(table));
    }
    if (found.Frames.empty() && !LackOf(found, Part::FreezeFrames))
        section.Notes.push_back(Word("No freeze frame"));
    NoteMissing(section, found, {Part::FreezeFrames});
    return section;
}

std::string ThisDriveText(const Diagnosis& found, std::string_view name) {
    if (!found.ThisDrive) return kNothing;
    for (const Monitor& monitor : found.ThisDrive->Monitors) {
        if (monitor.Name == name && monitor.Fitted) return MonitorText(monitor);
    }
    return kNothing;
}

ReportSection ReadinessSection(const Diagnosis& found) {
    ReportSection section{PartText(Part::Readiness), {}, {}};
    if (found.SinceClear) {
        section.Notes.push_back(Told("ready"));
        ReportTable table{{}, {Word("Monitor"), Word("Since clear"), Word("This drive")}, {}};
        for (const Monitor& monitor : found.SinceClear->Monitors) {
            const Mark how = !monitor.Fitted    ? Mark::None
                             : monitor.Complete ? Mark::Good
                                                : Mark::Open;
            table.Rows.push_back(
                {{Word(monitor.Name), MonitorText(monitor), ThisDriveText(found, monitor.Name)},
                 how});
        }
        section.Tables.push_back(std::move(table));
    }
    NoteMissing(section, found, {Part::Readiness, Part::ThisDrive});
    return section;
}

ReportRow TestRow(const TestResult& test) {
    if (!test.Ran) return {{TestName(test), kNothing, kNothing, Word("Not run yet")}, Mark::Open};
    const std::string limits = LimitsText(test);
    return {{TestName(test), TestNumber(test, test.Value), limits.empty() ? kNothing : limits,
             test.Passed ? Word("Passed") : Word("Failed")},
            test.Passed ? Mark::Good : Mark::Bad};
}

ReportSection TestsSection(const Diagnosis& found) {
    ReportSection section{PartText(Part::Tests), {}, {}};
    std::set<std::uint32_t> units;
    for (const TestResult& test : found.Tests) units.insert(test.Unit);
    for (const std::uint32_t unit : units) {
        ReportTable table{units.size() > 1 ? UnitText(found, unit) : std::string(),
                          {Word("Test"), Word("Value"), Word("Limits"), Word("Result")},
                          {}};
        for (const TestResult& test : found.Tests) {
            if (test.Unit != unit) continue;
            table.Rows.push_back(TestRow(test));
        }
        section.Tables.push_back(std::move(table));
    }
    NoteMissing(section, found, {Part::Tests});
    return section;
}

ReportSection LiveSection(const LocalTime& now) {
    ReportSection section{Word("Live values"), {}, {}};
    ReportTable table{TimeStamp(now), {}, {}, true};
    for (FrameValue& value : KnownLiveValues())
        AddFact(table, std::move(value.Caption), std::move(value.Text));
    if (table.Rows.empty())
        section.Notes.push_back(Word("Not known: the vehicle was not connected"));
    else
        section.Tables.push_back(std::move(table));
    return section;
}

ReportSection MissingSection(const Diagnosis& found) {
    ReportSection section{Word("What is missing"), {}, {}};
    ReportTable table;
    for (const MissingPart& part : found.Missing)
        AddFact(table, PartText(part.Part), LackText(part.Why));
    if (table.Rows.empty())
        section.Notes.push_back(Word("Nothing is missing"));
    else
        section.Tables.push_back(std::move(table));
    return section;
}

std::string LanguageCode() {
    constexpr std::size_t kLongest = 255;
    const std::string locales =
        ReadProfileString(basGlobal.LanguageFile, "General", "Locales", "en", kLongest);
    return ReplaceAll(locales.substr(0, locales.find(',')), "_", "-");
}

}  // namespace

std::string TimeStamp(const LocalTime& time) {
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.Year, time.Month,
                  time.Day, time.Hour, time.Minute, time.Second);
    return text;
}

std::string PlainVin(const Diagnosis& diagnosis) {
    std::string vin = diagnosis.Vin.value_or("");
    std::erase_if(vin, [](char c) {
        return (c < '0' || c > '9') && (c < 'A' || c > 'Z') && (c < 'a' || c > 'z');
    });
    return vin;
}

std::string ReportLine(const Diagnosis& diagnosis, const LocalTime& now) {
    const std::string vin = PlainVin(diagnosis);
    std::string line = TimeStamp(now) + " " + (vin.empty() ? "-" : vin);
    if (UnreadCodes(diagnosis)) line += " ?";
    std::vector<std::string> told;  // a code may be stored and permanent
    for (const FoundCode& code : diagnosis.Codes) {
        if (std::find(told.begin(), told.end(), code.Code) != told.end()) continue;
        told.push_back(code.Code);
        line += " " + code.Code;
    }
    return line;
}

ReportDocument MakeReport(const Diagnosis& found, const std::vector<ChartPicture>& charts,
                          const LocalTime& now) {
    ReportDocument report;
    report.Line = ReportLine(found, now);
    report.Language = LanguageCode();
    report.Title = Word("Diagnosis report");
    report.About = {Told("vin"), Word("Diagnosis of %1", {TimeStamp(found.Started)})};
    if (const std::string outcome = Told("progress");
        found.Cleared || found.Cancelled || !found.Missing.empty())
        report.About.push_back(outcome);
    report.Verdicts = Verdicts(found);
    report.Sections = {CodesSection(found),  ReadinessSection(found), VehicleSection(found),
                       FramesSection(found), TestsSection(found),     LiveSection(now)};
    if (!charts.empty()) report.Sections.push_back({Word("Charts"), {}, {}, charts});
    report.Sections.push_back(MissingSection(found));
    report.Foot = "Dravik " DRAVIK_VERSION ", " + TimeStamp(now);
    return report;
}

}  // namespace dravik
