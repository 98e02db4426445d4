#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::vehicle {

/// The monitors that this car has, as in PID 01 byte C: catalyst, vapour, oxygen sensors and their
/// heaters.
inline constexpr std::uint8_t kMonitors = 0x65;

inline constexpr double kForever = std::numeric_limits<double>::infinity();

/// What the driver does during a phase of the drive.
enum class DriveAction { Off, Ignition, Start, Idle, Accelerate, Cruise, Brake, Overheat };

/// One phase of the drive: an action, how long it lasts (seconds) and the speed (km/h) that it
/// aims at, where it has one.
struct DrivePhase {
    DriveAction Action = DriveAction::Idle;
    double Seconds = 10;
    double Speed = 0;
};

/// In which order the frames of several control units come over the bus.
enum class UnitOrder { InTurn, Interleaved, Reversed, Shuffled };

/// What fills up the frames on CAN that a message leaves short.
struct Padding {
    bool SingleFrames = false;  ///< messages of a single frame are filled up
    bool LastFrames = true;     ///< the last frame of a long message is
    std::uint8_t Filler = 0;
};

/// What a control unit says of itself; one that has no rule says nothing, and the engine's tells
/// one calibration.
struct UnitRule {
    std::string Name;                         ///< an acronym, "-" and a name: "ECM-EngineControl"
    std::vector<std::string> Calibrations;    ///< identifications of its software
    std::vector<std::uint8_t> Verifications;  ///< check sums over it, four bytes each
    std::optional<std::uint8_t> Monitors;     ///< of kMonitors; none given: all of them
};

/// One result of an on-board test.
struct TestRule {
    int Unit = 1;
    std::uint8_t Monitor = 0;  ///< what is tested; on the older buses the number of the test
    std::uint8_t Test = 1;     ///< which of its tests; on the older buses the component, up to 7F
    std::uint8_t Scaling = 1;  ///< unit and scaling of the numbers, CAN only; from 80 on signed
    std::uint16_t Value = 0;
    std::optional<std::uint16_t> Low, High;  ///< limits, where it has them
};

/// A request that a control unit does not simply answer. It may ask for patience first, as often as
/// Pending says; then it answers, refuses with a reason, or never says anything again.
struct RefusalRule {
    std::vector<std::uint8_t> Request;  ///< how the request begins; empty: any
    int Unit = 1;                       ///< 0: every unit
    int Pending = 0;
    double PendingTime = 0.05;  ///< seconds from one message to the next
    enum class Ending { Answer, Refusal, Silence } Then = Ending::Refusal;
    std::uint8_t Reason = 0x11;
    int Times = std::numeric_limits<int>::max();  ///< requests that it hits at most
};

/// What a control unit knows a code as. Pending: seen once, not yet confirmed (mode 07 only).
/// Permanent: cleared, but the monitors have not yet shown that the fault is gone (mode 0A only).
enum class CodeState { Stored, Pending, Permanent };

/// A trouble code that a control unit stores.
struct CodeRule {
    std::uint16_t Code = 0;  ///< the two bytes on the bus: 0x0133 is P0133
    CodeState State = CodeState::Stored;
    bool Permanent =
        false;             ///< a stored code that is permanent at the same time: clearing leaves it
    bool Lamp = true;      ///< switches the malfunction lamp on
    int Unit = 1;          ///< the control unit that stores it, from 1
    double At = 0;         ///< second of the drive at which it is set; 0: stored from the start
    bool HasFrame = true;  ///< a freeze frame belongs to it
    double FrameAt = 60;   ///< second of the drive that the frame of an old code shows
    std::map<int, std::vector<std::uint8_t>> FrameBytes;  ///< values put in place of those, by PID
};

enum class FaultKind { Silence, NoPrompt, Garbage, Pieces, Question, Lost, Words, Unplug };

/// Something that goes wrong on the line. Within the window that opens at At (and again Every so
/// many seconds) and stays open For seconds, each reply to a command that begins with Match is hit
/// with Probability, at most Times times. Unplug without a probability needs no reply: it happens
/// at At, and For is the time until the interface is plugged in again.
struct FaultRule {
    FaultKind Kind = FaultKind::Silence;
    double At = 0;
    double For = kForever;
    double Every = kForever;
    double Probability = 1;
    bool ByChance = false;  ///< a probability was given
    int Times = std::numeric_limits<int>::max();
    std::string Match;               ///< upper case, without blanks
    int Count = 3;                   ///< garbage bytes, lost characters or pieces
    double Pause = 0.3;              ///< seconds between pieces
    std::string Text = "BUS ERROR";  ///< what the interface says in place of an answer
    int After = 0;                   ///< lines of the answer that come before these words
};

/// Everything that a scenario file decides. The values here are those of an empty file.
struct Scenario {
    // The car.
    bool VehiclePresent = true;
    char Protocol = '5';  ///< its bus, as the interface numbers protocols: '1' .. '9'
    int Units = 1;        ///< control units that answer, 1 .. 4
    std::string Vin = "WDRAV1K00VEH1CLE0";
    std::uint64_t Seed = 1;
    double AmbientTemperature = 18;
    double CoolantTemperature = 18;
    double WarmUpFactor = 1;  ///< how much faster than a real engine it warms up
    double FuelLevel = 80;    ///< percent
    double Distance = 0;      ///< km already driven since the codes were last cleared
    int WarmUps = 12;         ///< warm-ups since the codes were last cleared
    double Minutes = 600;     ///< minutes with the engine running since then
    bool MonitorsComplete = true;
    std::optional<std::uint8_t> OpenMonitors;  ///< of kMonitors, as in PID 01 byte D; instead
    bool ClearNeedsEngineOff = false;
    std::set<int> UnsupportedPids = {0x02, 0x1D};  ///< not answered in mode 01
    std::set<int> Services = {0x01, 0x02, 0x03, 0x04, 0x07, 0x09};
    bool EmptyFrames = false;        ///< a unit without a freeze frame answers that its code is 0
    std::optional<double> Odometer;  ///< km at the beginning, for PID A6; none: not supported
    UnitOrder Order = UnitOrder::InTurn;
    Padding FramePadding;

    // The interface.
    std::string Identity = "DVI 1.0";
    std::string ExtendedIdentity;  ///< the answer to AT!01; none: not understood
    std::string Description = "Virtual vehicle";
    double Baud = 9600;
    bool Echo = true;
    bool LineFeeds = true;
    bool Headers = false;
    bool Spaces = true;
    bool BlankAtLineEnd = true;     ///< after the last byte of a line too
    bool StopOnInput = true;        ///< a character during a request stops it
    double CommandLatency = 0.003;  ///< seconds, likewise below
    double ResetTime = 0.5;
    double SearchTime = 0.6;
    double BusLatency = 0.02;
    double NoDataTime = 0.1;
    bool WaitsForPending = true;  ///< goes on listening when a unit asks for patience

    std::vector<DrivePhase> Phases;
    std::size_t RepeatFrom =
        0;  ///< phase (from 1) that follows the last one; 0: the last one stays
    std::vector<UnitRule> UnitRules;  ///< of unit 1, 2 and so on, as far as there are any
    std::vector<CodeRule> Codes;
    std::vector<TestRule> Tests;
    std::vector<RefusalRule> Refusals;
    std::vector<FaultRule> Faults;
};

/// Reads a scenario's text. Everything that the text does not name keeps its value in `scenario`.
///
/// @param name  what the text is called in error messages, usually its file name
/// @return an empty text, or the first thing that is wrong: "NAME: [section] key: reason"
std::string ParseScenario(std::string_view text, const std::string& name, Scenario& scenario);

/// Finds the text of a built-in scenario; empty when there is none of that name.
std::string_view BuiltInScenario(std::string_view name);

/// The names of all built-in scenarios, in alphabetical order.
std::vector<std::string> BuiltInScenarioNames();

/// Takes a scenario file, or the name of a built-in scenario; empty means "drive".
/// @return an empty text, or what is wrong
std::string LoadScenario(const std::string& fileOrName, Scenario& scenario);

}  // namespace dravik::vehicle
