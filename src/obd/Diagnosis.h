#pragma once

#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "settings/Words.h"

/// The diagnosis of the whole vehicle: what its control units tell about themselves, their trouble
/// codes, monitors and tests, read by the standard in one run.
namespace dravik {

// What a diagnosis found
// ---------------------------------------------------------------------------

/// What a diagnosis asks for, in this order.
enum class DiagnosisPart : std::uint8_t {
    Protocol,
    Voltage,
    Supported,  ///< what the vehicle can be asked for at all
    Readiness,
    ThisDrive,
    Vin,
    Calibrations,
    UnitNames,
    StoredCodes,
    PendingCodes,
    PermanentCodes,
    FreezeFrames,
    DistanceWithLamp,
    TimeWithLamp,
    DistanceSinceClear,
    TimeSinceClear,
    Odometer,
    Tests,
};
constexpr int kDiagnosisParts = 18;

/// Why a part is not there, or not whole.
enum class Lack : std::uint8_t {
    NotSupported,  ///< the vehicle does not have it
    NoAnswer,      ///< nobody answered, although it should be there
    Refused,
    Unreadable,
    LinkLost,   ///< the run ended before: the interface or the line is gone
    Cancelled,  ///< the driver ended the run before
};

struct MissingPart {
    DiagnosisPart Part;
    Lack Why;
};

/// One control unit that answered anything.
struct ControlUnit {
    std::uint32_t Address = 0;               ///< on its bus: 0x7E8, 0x10; 0 where it gives none
    std::string Name;                        ///< as it calls itself; empty where it does not say
    std::vector<std::string> Calibrations;   ///< identifications of what it runs
    std::vector<std::string> Verifications;  ///< check numbers of these, eight hex digits each
};

enum class CodeKind : std::uint8_t { Stored, Pending, Permanent };

struct FoundCode {
    std::string Code;  ///< "P0133"
    CodeKind Kind = CodeKind::Stored;
    std::uint32_t Unit = 0;    ///< address of the control unit that holds it
    std::optional<int> Frame;  ///< number of its freeze frame; only stored codes have one
};

/// The values at the moment when a code was stored.
struct FreezeFrame {
    std::string Code;
    std::uint32_t Unit = 0;
    int Number = 0;
    std::map<std::uint8_t, std::vector<std::uint8_t>> Values;  ///< PID and its data bytes
};

/// One monitor: a part of the vehicle that watches itself.
struct Monitor {
    std::string_view Name;  ///< English, a word of the languages
    bool Fitted = false;    ///< of this drive: able to run during it
    bool Complete = false;
};

/// The lamp and the monitors of all units together: one that several have is complete when all of
/// them are through.
struct MonitorStatus {
    bool Lamp = false;
    int Codes = 0;             ///< stored codes that the units count themselves
    bool Compression = false;  ///< a compression ignition engine, which has other monitors
    std::vector<Monitor> Monitors;
};

/// The result of one test that the vehicle has made on itself.
struct TestResult {
    std::uint32_t Unit = 0;
    std::uint8_t MonitorId = 0;  ///< what was tested; 0 on the buses before CAN, which do not say
    std::uint8_t TestId = 0;
    std::uint8_t Component = 0;  ///< on the buses before CAN only, the maker's own number
    double Value = 0;
    std::optional<double> Low;   ///< the least value that passes
    std::optional<double> High;  ///< the greatest value that passes
    std::string UnitText;        ///< "V", "kPa"; empty for a plain number
    int Decimals = 0;            ///< that the three numbers are worth showing with
    bool Raw = false;            ///< of a scale that is not known: the numbers are as they came
    bool Ran = true;  ///< since the codes were cleared; else there is nothing to judge yet
    bool Passed = false;
};

/// Whether the check digit of a vehicle identification number holds. Only vehicles for North
/// America must have one: elsewhere the digit is an ordinary character.
enum class VinCheck : std::uint8_t {
    Holds,
    Fails,       ///< in a number that must have one, so it was misread or tampered with
    NotChecked,  ///< a number that need not have one, and has none
    NotANumber,  ///< not 17 of the characters that are allowed
};

using SupportMask = std::bitset<256>;

/// What one run has found. A part that the vehicle does not give is empty, never zero, and stands
/// in Missing. What was read before a run ended early stays.
struct Diagnosis {
    LocalTime Started;
    bool Cancelled = false;   ///< the driver ended it
    bool EndedEarly = false;  ///< interface or vehicle were silent or gone before its end
    bool Cleared = false;     ///< the codes were cleared since: this is how it was before

    std::string Interface;
    std::string Protocol;
    std::optional<double> Voltage;  ///< of the battery, as the interface measures it

    std::optional<std::string> Vin;
    VinCheck Check = VinCheck::NotANumber;
    std::vector<ControlUnit> Units;  ///< by address

    SupportMask LiveData;      ///< PIDs of mode 01 that any unit has
    SupportMask Information;   ///< the same of mode 09
    SupportMask TestMonitors;  ///< the same of mode 06

    std::optional<MonitorStatus> SinceClear;
    std::optional<MonitorStatus> ThisDrive;

    /// Stored, pending, permanent. A kind that stands in Missing was not read, and none of it here
    /// means nothing then.
    std::vector<FoundCode> Codes;
    std::vector<FreezeFrame> Frames;
    std::vector<TestResult> Tests;

    std::optional<int> DistanceWithLamp;    ///< km
    std::optional<int> DistanceSinceClear;  ///< km
    std::optional<int> TimeWithLamp;        ///< minutes that the engine ran
    std::optional<int> TimeSinceClear;      ///< minutes that the engine ran
    std::optional<double> Odometer;         ///< km

    std::vector<MissingPart> Missing;
};

/// The last diagnosis, or the one that runs, as far as it is; null before the first. A new connect
/// leaves it: its time says from when it is.
const Diagnosis* LastDiagnosis();

/// True between the command and the end of the run.
bool Diagnosing();

// The run -----------------------------------------------------------------------------------------

/// Asks for a diagnosis: the next step of the link runs it, from state 3 or 9. Does nothing in any
/// other state.
void StartDiagnosis();

/// Ends the run that is under way, or not begun, as soon as the answer to the request that is out
/// has come.
void CancelDiagnosis();

/// How far the run is, in percent: 0 before the first, 100 after a whole one.
int DiagnosisPercent();

// What it means -----------------------------------------------------------------------------------

/// How far the vehicle is from passing an inspection of its emissions. It is ready when the lamp is
/// off and at most one monitor is open.
struct InspectionVerdict {
    bool Ready = false;
    bool Lamp = false;
    int Open = 0;
};
/// Nothing while the monitors are not known.
std::optional<InspectionVerdict> ReadyForInspection(const Diagnosis& diagnosis);

/// Why a part is missing; nothing when it is there.
std::optional<Lack> LackOf(const Diagnosis& diagnosis, DiagnosisPart part);

/// A kind of codes that was not read, so that a diagnosis without codes does not mean a vehicle
/// without codes. Every vehicle has stored ones; one that does not support the others has none.
std::optional<MissingPart> UnreadCodes(const Diagnosis& diagnosis);

/// How a driver should take a trouble code.
enum class Severity : std::uint8_t { DriveOn, SeeSoon, Stop, Manufacturer };
Severity SeverityOf(std::string_view code);
/// English, a word of the languages.
std::string_view SeverityText(Severity severity);

// Texts in the driver's language, for labels, lists and reports
// -------------------------------------

std::string LackText(Lack why);
std::string PartText(DiagnosisPart part);
/// What a control unit is called: as it says itself, else by its address.
std::string UnitText(const Diagnosis& diagnosis, std::uint32_t address);
std::string CodeKindText(CodeKind kind);
/// "Catalyst B1", or "Monitor 21" where the standard leaves it to the maker.
std::string TestName(const TestResult& test);
/// "12345 km": kilometres, or miles where the sensor file has those.
std::string DistanceText(double kilometres);
/// "3 h 20 min".
std::string DurationText(int minutes);
/// "Complete", "Incomplete", "Not fitted".
std::string MonitorText(const Monitor& monitor);
/// "0.100 to 0.900 V", with the limits that there are; empty without any.
std::string LimitsText(const TestResult& test);
/// A number of a test with its unit: "0.455 V".
std::string TestNumber(const TestResult& test, double number);

/// One value of a freeze frame as it is shown.
struct FrameValue {
    std::string Caption;  ///< in the user's language already
    std::string Text;     ///< with its unit
};
/// What the data bytes of a PID mean by the sensor table; the bytes themselves where that does not
/// know the PID.
std::vector<FrameValue> FrameValuesOf(std::uint8_t pid, const std::vector<std::uint8_t>& bytes);

/// The text of a label function diagnosis_NAME; nothing for a name that is none.
std::optional<std::string> DiagnosisText(std::string_view name);

/// The texts that a label function diagnosis_NAME can show with those words, the longest numbers in
/// their places; none where what it shows comes from the vehicle.
std::vector<std::string> PossibleDiagnosisTexts(std::string_view name, const WordList& words);

// The list ----------------------------------------------------------------------------------------

/// The section of the list that shows the reports instead, see `upCalls.ListReports`.
constexpr std::string_view kReportSection = "reports";

/// Fills the list slot "diagnosis" with a section: "codes", "readiness", "tests" or "vehicle", or
/// "frame", which is the freeze frame of the code that is selected in "codes". It is filled anew
/// with that when a diagnosis ends; without a name it is "codes". The pictures of the entries say
/// how each stands: "good", "bad", "open" (not decided yet) or "none" (there is nothing to say).
void ShowDiagnosis(std::string_view section);

/// Fills the list with the section that it shows, in the language of now.
void RenewDiagnosisList();

/// The English texts that all of these are made from, for whoever puts them into other languages.
std::vector<std::string_view> DiagnosisWords();

}  // namespace dravik
