#include <algorithm>
#include <array>
#include <cstdio>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "settings/Words.h"

namespace dravik {

namespace {

using Part = DiagnosisPart;
constexpr const char* kUnknown = "\u2013";

// The texts, in the order of their enumerators.
constexpr std::array<std::string_view, kDiagnosisParts> kPartTexts = {
    "Protocol",
    "Battery voltage",
    "Supported data",
    "Monitors",
    "Monitors of this drive",
    "Vehicle number (VIN)",
    "Calibrations",
    "Names of the control units",
    "Stored codes",
    "Pending codes",
    "Permanent codes",
    "Freeze frames",
    "Distance with lamp on",
    "Time with lamp on",
    "Distance since clear",
    "Time since clear",
    "Odometer",
    "Tests",
};
constexpr std::array<std::string_view, 6> kLackTexts = {
    "Not supported by this vehicle", "No answer",
    "Refused by the vehicle",        "Could not be read",
    "The link was lost before",      "Cancelled before",
};
constexpr std::array<std::string_view, 3> kKindTexts = {"Stored", "Pending", "Permanent"};
constexpr std::array<std::string_view, 4> kCheckTexts = {
    "Check digit correct",
    "Check digit wrong",
    "Has no check digit",
    "Not a valid number",
};
constexpr std::string_view kNotYet = "Not diagnosed yet";
constexpr std::string_view kComplete = "Diagnosis complete";
constexpr std::string_view kCancelled = "Diagnosis cancelled";
constexpr std::string_view kEndedEarly = "Diagnosis ended early";
constexpr std::string_view kCleared = "As it was before the codes were cleared";
constexpr std::string_view kReady = "Ready for inspection";
constexpr std::string_view kLampOn = "Not ready: the lamp is on";
constexpr std::string_view kOpen = "Not ready: %1 monitors open";
constexpr std::string_view kLampAndOpen = "Not ready: the lamp is on, %1 monitors open";
constexpr std::string_view kOneOpen = "Ready for inspection, one monitor open";
constexpr std::string_view kNothingMissing = "Nothing is missing";
constexpr std::string_view kControlUnit = "Control unit %1";
constexpr std::string_view kOnlyUnit = "Control unit";

constexpr const char* kWideNumber = "8";
/// Labels whose longest text is why there is nothing to show.
constexpr std::string_view kOfOneLine[] = {
    "vin",       "voltage",       "lamp",     "stored",       "pending",  "permanent",
    "timeclear", "distanceclear", "timelamp", "distancelamp", "odometer",
};

std::vector<std::string_view> SeverityTexts() {
    std::vector<std::string_view> texts;
    for (const Severity severity :
         {Severity::DriveOn, Severity::SeeSoon, Severity::Stop, Severity::Manufacturer})
        texts.push_back(SeverityText(severity));
    return texts;
}

template <typename Enum, std::size_t kCount>
std::string_view TextOf(const std::array<std::string_view, kCount>& texts, Enum value) {
    return At(texts, static_cast<int>(value));
}

const Diagnosis* Found() {
    return basGlobal.Diagnosing.Found.get();
}

/// What stands in the place of a part that is not there (yet).
std::string InsteadOf(Part part) {
    const Diagnosis* const found = Found();
    const std::optional<Lack> why = found == nullptr ? std::nullopt : LackOf(*found, part);
    return why ? LackText(*why) : kUnknown;
}

template <typename Value, typename Show>
std::string Shown(std::optional<Value> Diagnosis::*field, Part part, Show show) {
    const Diagnosis* const found = Found();
    return found != nullptr && found->*field ? show(*(found->*field)) : InsteadOf(part);
}

std::string OutcomeText(const Diagnosis& found) {
    if (found.Cancelled) return Word(kCancelled);
    if (found.EndedEarly) return Word(kEndedEarly);
    return Word(found.Cleared ? kCleared : kComplete);
}

std::string Progress() {
    const DiagnosisState& run = basGlobal.Diagnosing;
    if (!Diagnosing()) return run.Found ? OutcomeText(*run.Found) : Word(kNotYet);
    if (run.Step < 1) return {};
    return PartText(static_cast<Part>(run.Step - 1)) + "  " + std::to_string(run.Step) + "/" +
           std::to_string(kDiagnosisParts);
}

std::string VinLabel() {
    return Shown(&Diagnosis::Vin, Part::Vin, [](const std::string& vin) { return vin; });
}

std::string VinCheckLabel() {
    return Shown(&Diagnosis::Vin, Part::Vin,
                 [](const auto&) { return Word(TextOf(kCheckTexts, Found()->Check)); });
}

std::string ProtocolLabel() {
    return Found() == nullptr || Found()->Protocol.empty() ? kUnknown : Found()->Protocol;
}

std::string InterfaceLabel() {
    return Found() == nullptr || Found()->Interface.empty() ? kUnknown : Found()->Interface;
}

std::string UnitsLabel() {
    if (Found() == nullptr || Found()->Units.empty()) return kUnknown;
    std::string text;
    for (const ControlUnit& unit : Found()->Units)
        text += (text.empty() ? "" : ", ") + UnitText(*Found(), unit.Address);
    return text;
}

std::string VoltageLabel() {
    constexpr int kDecimals = 1;
    return Shown(&Diagnosis::Voltage, Part::Voltage,
                 [](double volts) { return ShownDecimal(volts, kDecimals) + " V"; });
}

std::string ReadyLabel() {
    const auto verdict = Found() == nullptr ? std::nullopt : ReadyForInspection(*Found());
    if (!verdict) return InsteadOf(Part::Readiness);
    if (verdict->Ready) return Word(verdict->Open == 0 ? kReady : kOneOpen);
    if (verdict->Lamp && verdict->Open == 0) return Word(kLampOn);
    return Word(verdict->Lamp ? kLampAndOpen : kOpen, {std::to_string(verdict->Open)});
}

std::string LampLabel() {
    return Shown(&Diagnosis::SinceClear, Part::Readiness,
                 [](const MonitorStatus& status) { return Word(status.Lamp ? "On" : "Off"); });
}

std::string CountLabel(CodeKind kind, Part part) {
    if (Found() == nullptr || LackOf(*Found(), part)) return InsteadOf(part);
    if (Diagnosing() && basGlobal.Diagnosing.Step <= static_cast<int>(part) + 1) return kUnknown;
    const auto& codes = Found()->Codes;
    return std::to_string(std::count_if(
        codes.begin(), codes.end(), [kind](const FoundCode& code) { return code.Kind == kind; }));
}

template <auto kField, Part kPart, auto kShow>
std::string CounterLabel() {
    return Shown(kField, kPart, kShow);
}

template <CodeKind kKind, Part kPart>
std::string CodesLabel() {
    return CountLabel(kKind, kPart);
}

std::string MissingLabel() {
    if (Found() == nullptr) return kUnknown;
    std::string text;
    for (const MissingPart& part : Found()->Missing)
        text += (text.empty() ? "" : "\n") + PartText(part.Part) + ": " + LackText(part.Why);
    return text.empty() && !Diagnosing() ? Word(kNothingMissing) : text;
}

std::string TimeLabel() {
    if (Found() == nullptr) return kUnknown;
    const LocalTime& time = Found()->Started;
    char date[32];
    std::snprintf(date, sizeof date, "%02d.%02d.%04d", time.Day, time.Month, time.Year);
    return TimeText(time) + " , " + date;
}

std::string SeverityLabel() {
    const FoundCode* const code = SelectedCodeOfDiagnosis();
    return code == nullptr ? std::string() : Word(SeverityText(SeverityOf(code->Code)));
}

struct TextRow {
    std::string_view Name;
    std::string (*Show)();
};

constexpr TextRow kTextRows[] = {
    {"progress", Progress},
    {"vin", VinLabel},
    {"vincheck", VinCheckLabel},
    {"protocol", ProtocolLabel},
    {"interface", InterfaceLabel},
    {"units", UnitsLabel},
    {"voltage", VoltageLabel},
    {"ready", ReadyLabel},
    {"lamp", LampLabel},
    {"stored", CodesLabel<CodeKind::Stored, Part::StoredCodes>},
    {"pending", CodesLabel<CodeKind::Pending, Part::PendingCodes>},
    {"permanent", CodesLabel<CodeKind::Permanent, Part::PermanentCodes>},
    {"distanceclear",
     CounterLabel<&Diagnosis::DistanceSinceClear, Part::DistanceSinceClear, DistanceText>},
    {"timeclear", CounterLabel<&Diagnosis::TimeSinceClear, Part::TimeSinceClear, DurationText>},
    {"distancelamp",
     CounterLabel<&Diagnosis::DistanceWithLamp, Part::DistanceWithLamp, DistanceText>},
    {"timelamp", CounterLabel<&Diagnosis::TimeWithLamp, Part::TimeWithLamp, DurationText>},
    {"odometer", CounterLabel<&Diagnosis::Odometer, Part::Odometer, DistanceText>},
    {"missing", MissingLabel},
    {"time", TimeLabel},
    {"selected", SelectedOfDiagnosis},
    {"severity", SeverityLabel},
};

}  // namespace

std::string HexText(std::uint32_t number, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, number);
    return text;
}

std::string ShownDecimal(double number, int decimals) {
    return ReplaceAll(FixedNumber(static_cast<float>(number), decimals), ".",
                      basGlobal.DecimalSign);
}

std::string LackText(Lack why) {
    return Word(TextOf(kLackTexts, why));
}

std::string PartText(DiagnosisPart part) {
    return Word(TextOf(kPartTexts, part));
}

std::string CodeKindText(CodeKind kind) {
    return Word(TextOf(kKindTexts, kind));
}

std::string UnitText(const Diagnosis& diagnosis, std::uint32_t address) {
    const auto unit =
        std::find_if(diagnosis.Units.begin(), diagnosis.Units.end(),
                     [address](const ControlUnit& row) { return row.Address == address; });
    if (unit != diagnosis.Units.end() && !unit->Name.empty()) return unit->Name;
    if (address == 0) return Word(kOnlyUnit);
    return Word(kControlUnit, {HexText(address, 2)});
}

std::optional<std::string> DiagnosisText(std::string_view name) {
    for (const TextRow& row : kTextRows) {
        if (row.Name == name) return row.Show();
    }
    return std::nullopt;
}

std::string DistanceText(double kilometres) {
    constexpr double kMilesPerKilometre = 0.621371;
    return basGlobal.ImperialUnits ? ShownDecimal(kilometres * kMilesPerKilometre, 0) + " mi"
                                   : ShownDecimal(kilometres, 0) + " km";
}

std::string DurationText(int minutes) {
    constexpr int kHour = 60;
    const std::string rest = std::to_string(minutes % kHour) + " min";
    return minutes < kHour ? rest : std::to_string(minutes / kHour) + " h " + rest;
}

std::vector<std::string> PossibleDiagnosisTexts(std::string_view name, const WordList& words) {
    std::vector<std::string> texts;
    const auto add = [&](const auto& names, const std::string& behind = {}) {
        for (const std::string_view text : names) {
            const std::string worded = words.Find(text).value_or(std::string(text));
            texts.push_back(ReplaceAll(worded, "%1", kWideNumber) + behind);
        }
    };
    if (name == "progress") {
        const std::string last = std::to_string(kDiagnosisParts);
        add(kPartTexts, "  " + last + "/" + last);
        add(std::array{kNotYet, kComplete, kCancelled, kEndedEarly, kCleared});
    } else if (name == "ready") {
        add(std::array{kReady, kLampOn, kOpen, kLampAndOpen, kOneOpen});
        add(kLackTexts);
    } else if (name == "vincheck") {
        add(kCheckTexts);
        add(kLackTexts);
    } else if (name == "severity") {
        add(SeverityTexts());
    } else if (std::find(std::begin(kOfOneLine), std::end(kOfOneLine), name) !=
               std::end(kOfOneLine)) {
        add(kLackTexts);
    }
    return texts;
}

std::vector<std::string_view> DiagnosisWords() {
    std::vector<std::string_view> words = {
        kNotYet, kComplete,    kCancelled, kEndedEarly,     kCleared,     kReady,   kLampOn,
        kOpen,   kLampAndOpen, kOneOpen,   kNothingMissing, kControlUnit, kOnlyUnit};
    const auto add = [&words](const auto& texts) {
        words.insert(words.end(), texts.begin(), texts.end());
    };
    add(kPartTexts);
    add(kLackTexts);
    add(kKindTexts);
    add(kCheckTexts);
    add(MonitorWords());
    add(TestWords());
    add(ListWords());
    add(SeverityTexts());
    return words;
}

}  // namespace dravik
