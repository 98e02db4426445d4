#include "vehicle/ScenarioKeys.h"

#include <sstream>

namespace dravik::vehicle {
namespace {

constexpr Choice<DriveAction> kActions[] = {
    {"off", DriveAction::Off},
    {"ignition", DriveAction::Ignition},
    {"start", DriveAction::Start},
    {"idle", DriveAction::Idle},
    {"accelerate", DriveAction::Accelerate},
    {"cruise", DriveAction::Cruise},
    {"brake", DriveAction::Brake},
    {"overheat", DriveAction::Overheat},
};

constexpr Choice<FaultKind> kFaultKinds[] = {
    {"silence", FaultKind::Silence},   {"no-prompt", FaultKind::NoPrompt},
    {"garbage", FaultKind::Garbage},   {"pieces", FaultKind::Pieces},
    {"question", FaultKind::Question}, {"lost", FaultKind::Lost},
    {"words", FaultKind::Words},       {"unplug", FaultKind::Unplug},
};

constexpr Choice<CodeState> kCodeStates[] = {
    {"stored", CodeState::Stored},
    {"pending", CodeState::Pending},
    {"permanent", CodeState::Permanent},
};
constexpr Choice<bool> kMonitorStates[] = {{"complete", true}, {"not-run", false}};
constexpr Choice<bool> kInterruptions[] = {{"stop", true}, {"queue", false}};

constexpr Choice<char> kProtocols[] = {
    {"j1850-pwm", '1'},  {"j1850-vpw", '2'},  {"iso9141", '3'},
    {"kwp-slow", '4'},   {"kwp-fast", '5'},   {"can-11-500", '6'},
    {"can-29-500", '7'}, {"can-11-250", '8'}, {"can-29-250", '9'},
};

constexpr Choice<UnitOrder> kUnitOrders[] = {
    {"in-turn", UnitOrder::InTurn},
    {"interleaved", UnitOrder::Interleaved},
    {"reversed", UnitOrder::Reversed},
    {"shuffled", UnitOrder::Shuffled},
};

constexpr Choice<Padding> kPaddings[] = {
    {"last", {}},
    {"none", {false, false, 0}},
    {"00", {true, true, 0x00}},
    {"aa", {true, true, 0xAA}},
    {"55", {true, true, 0x55}},
    {"cc", {true, true, 0xCC}},
};

constexpr Choice<std::uint8_t> kMonitorNames[] = {
    {"none", 0x00},           {"catalyst", 0x01},       {"vapour", 0x04},
    {"oxygen-sensors", 0x20}, {"oxygen-heaters", 0x40},
};

constexpr Choice<RefusalRule::Ending> kRefusalEndings[] = {
    {"answer", RefusalRule::Ending::Answer},
    {"refusal", RefusalRule::Ending::Refusal},
    {"silence", RefusalRule::Ending::Silence},
};

constexpr double kLongest = 1e7;  // seconds; some months, and no clock arithmetic goes wrong

template <typename Target>
struct Key {
    const char* Name;
    Problem (*Read)(std::string_view text, Target& target);
};

using Text = std::string_view;

Problem ReadRequest(Text text, std::vector<std::uint8_t>& value) {
    const auto bytes = ToBytes(text);
    if (!bytes) return "expects the hexadecimal bytes of a request";
    value = *bytes;
    return {};
}

/// Names of monitors with blanks between them, as the bits of PID 01 byte C or D.
Problem ReadMonitors(Text text, std::uint8_t& value) {
    std::istringstream words{std::string(text)};
    std::uint8_t all = 0, one = 0;
    for (std::string word; words >> word; all = static_cast<std::uint8_t>(all | one)) {
        if (Problem problem = ReadChoice(word, kMonitorNames, one); !problem.empty())
            return problem;
    }
    value = all;
    return {};
}

constexpr Key<Scenario> kVehicleKeys[] = {
    {"present", [](Text t, Scenario& s) { return ReadSwitch(t, s.VehiclePresent); }},
    {"protocol", [](Text t, Scenario& s) { return ReadChoice(t, kProtocols, s.Protocol); }},
    {"units", [](Text t, Scenario& s) { return ReadInteger(t, 1, 4, s.Units); }},
    {"vin", [](Text t, Scenario& s) { return ReadVin(t, s.Vin); }},
    {"seed", [](Text t, Scenario& s) { return ReadInteger(t, 0, 1e9, s.Seed); }},
    {"ambient", [](Text t, Scenario& s) { return ReadNumber(t, -40, 60, s.AmbientTemperature); }},
    {"coolant", [](Text t, Scenario& s) { return ReadNumber(t, -40, 110, s.CoolantTemperature); }},
    {"warm-up", [](Text t, Scenario& s) { return ReadNumber(t, 0.1, 50, s.WarmUpFactor); }},
    {"fuel", [](Text t, Scenario& s) { return ReadNumber(t, 5, 100, s.FuelLevel); }},
    {"distance", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60000, s.Distance); }},
    {"warm-ups", [](Text t, Scenario& s) { return ReadInteger(t, 0, 255, s.WarmUps); }},
    {"minutes", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60000, s.Minutes); }},
    {"monitors",
     [](Text t, Scenario& s) { return ReadChoice(t, kMonitorStates, s.MonitorsComplete); }},
    {"open-monitors",
     [](Text t, Scenario& s) { return ReadMonitors(t, s.OpenMonitors.emplace()); }},
    {"clear-needs-engine-off",
     [](Text t, Scenario& s) { return ReadSwitch(t, s.ClearNeedsEngineOff); }},
    {"unsupported-pids", [](Text t, Scenario& s) { return ReadPids(t, s.UnsupportedPids); }},
    {"services", [](Text t, Scenario& s) { return ReadPids(t, s.Services); }},
    {"empty-frames", [](Text t, Scenario& s) { return ReadSwitch(t, s.EmptyFrames); }},
    {"odometer", [](Text t, Scenario& s) { return ReadNumber(t, 0, 1e7, s.Odometer.emplace()); }},
    {"order", [](Text t, Scenario& s) { return ReadChoice(t, kUnitOrders, s.Order); }},
    {"padding", [](Text t, Scenario& s) { return ReadChoice(t, kPaddings, s.FramePadding); }},
};

constexpr Key<Scenario> kInterfaceKeys[] = {
    {"identity", [](Text t, Scenario& s) { return ReadText(t, 60, s.Identity); }},
    {"extended-identity", [](Text t, Scenario& s) { return ReadText(t, 60, s.ExtendedIdentity); }},
    {"description", [](Text t, Scenario& s) { return ReadText(t, 60, s.Description); }},
    {"baud", [](Text t, Scenario& s) { return ReadNumber(t, 300, 4e6, s.Baud); }},
    {"echo", [](Text t, Scenario& s) { return ReadSwitch(t, s.Echo); }},
    {"line-feeds", [](Text t, Scenario& s) { return ReadSwitch(t, s.LineFeeds); }},
    {"headers", [](Text t, Scenario& s) { return ReadSwitch(t, s.Headers); }},
    {"spaces", [](Text t, Scenario& s) { return ReadSwitch(t, s.Spaces); }},
    {"blank-at-line-end", [](Text t, Scenario& s) { return ReadSwitch(t, s.BlankAtLineEnd); }},
    {"when-interrupted",
     [](Text t, Scenario& s) { return ReadChoice(t, kInterruptions, s.StopOnInput); }},
    {"command-latency", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60, s.CommandLatency); }},
    {"reset-time", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60, s.ResetTime); }},
    {"search-time", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60, s.SearchTime); }},
    {"bus-latency", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60, s.BusLatency); }},
    {"waits-for-pending", [](Text t, Scenario& s) { return ReadSwitch(t, s.WaitsForPending); }},
    {"no-data-time", [](Text t, Scenario& s) { return ReadNumber(t, 0, 60, s.NoDataTime); }},
};

constexpr Key<Scenario> kDriveKeys[] = {
    {"repeat-from", [](Text t, Scenario& s) { return ReadInteger(t, 0, 999, s.RepeatFrom); }},
};

constexpr Key<DrivePhase> kPhaseKeys[] = {
    {"action", [](Text t, DrivePhase& p) { return ReadChoice(t, kActions, p.Action); }},
    {"for", [](Text t, DrivePhase& p) { return ReadNumber(t, 0.1, kLongest, p.Seconds); }},
    {"speed", [](Text t, DrivePhase& p) { return ReadNumber(t, 0, 200, p.Speed); }},
};

constexpr Key<UnitRule> kUnitKeys[] = {
    {"name", [](Text t, UnitRule& u) { return ReadUnitName(t, u.Name); }},
    {"calibrations", [](Text t, UnitRule& u) { return ReadCalibrations(t, u.Calibrations); }},
    {"verifications", [](Text t, UnitRule& u) { return ReadVerifications(t, u.Verifications); }},
    {"monitors", [](Text t, UnitRule& u) { return ReadMonitors(t, u.Monitors.emplace()); }},
};

constexpr Key<CodeRule> kCodeKeys[] = {
    {"code", [](Text t, CodeRule& c) { return ReadCode(t, c.Code); }},
    {"state", [](Text t, CodeRule& c) { return ReadChoice(t, kCodeStates, c.State); }},
    {"permanent", [](Text t, CodeRule& c) { return ReadSwitch(t, c.Permanent); }},
    {"lamp", [](Text t, CodeRule& c) { return ReadSwitch(t, c.Lamp); }},
    {"unit", [](Text t, CodeRule& c) { return ReadInteger(t, 1, 4, c.Unit); }},
    {"at", [](Text t, CodeRule& c) { return ReadNumber(t, 0, kLongest, c.At); }},
    {"frame", [](Text t, CodeRule& c) { return ReadSwitch(t, c.HasFrame); }},
    {"frame-at", [](Text t, CodeRule& c) { return ReadNumber(t, 0, 86400, c.FrameAt); }},
};

constexpr Key<TestRule> kTestKeys[] = {
    {"unit", [](Text t, TestRule& r) { return ReadInteger(t, 1, 4, r.Unit); }},
    {"monitor", [](Text t, TestRule& r) { return ReadHex(t, r.Monitor); }},
    {"test", [](Text t, TestRule& r) { return ReadHex(t, r.Test); }},
    {"scaling", [](Text t, TestRule& r) { return ReadHex(t, r.Scaling); }},
    {"value", [](Text t, TestRule& r) { return ReadHex(t, r.Value); }},
    {"low", [](Text t, TestRule& r) { return ReadHex(t, r.Low.emplace()); }},
    {"high", [](Text t, TestRule& r) { return ReadHex(t, r.High.emplace()); }},
};

constexpr Key<RefusalRule> kRefusalKeys[] = {
    {"request", [](Text t, RefusalRule& r) { return ReadRequest(t, r.Request); }},
    {"unit", [](Text t, RefusalRule& r) { return ReadInteger(t, 0, 4, r.Unit); }},
    {"pending", [](Text t, RefusalRule& r) { return ReadInteger(t, 0, 50, r.Pending); }},
    {"pending-time", [](Text t, RefusalRule& r) { return ReadNumber(t, 0, 60, r.PendingTime); }},
    {"then", [](Text t, RefusalRule& r) { return ReadChoice(t, kRefusalEndings, r.Then); }},
    {"reason", [](Text t, RefusalRule& r) { return ReadHex(t, r.Reason); }},
    {"times", [](Text t, RefusalRule& r) { return ReadInteger(t, 1, 1e6, r.Times); }},
};

constexpr Key<FaultRule> kFaultKeys[] = {
    {"kind", [](Text t, FaultRule& f) { return ReadChoice(t, kFaultKinds, f.Kind); }},
    {"at", [](Text t, FaultRule& f) { return ReadNumber(t, 0, kLongest, f.At); }},
    {"for", [](Text t, FaultRule& f) { return ReadNumber(t, 0.001, kLongest, f.For); }},
    {"every", [](Text t, FaultRule& f) { return ReadNumber(t, 0.01, kLongest, f.Every); }},
    {"probability",
     [](Text t, FaultRule& f) {
         f.ByChance = true;
         return ReadNumber(t, 0, 1, f.Probability);
     }},
    {"times", [](Text t, FaultRule& f) { return ReadInteger(t, 1, 1e6, f.Times); }},
    {"match", [](Text t, FaultRule& f) { return ReadMatch(t, f.Match); }},
    {"count", [](Text t, FaultRule& f) { return ReadInteger(t, 1, 1000, f.Count); }},
    {"text", [](Text t, FaultRule& f) { return ReadText(t, 60, f.Text); }},
    {"after", [](Text t, FaultRule& f) { return ReadInteger(t, 0, 1000, f.After); }},
    {"pause", [](Text t, FaultRule& f) { return ReadNumber(t, 0, 60, f.Pause); }},
};

template <typename Target, std::size_t kCount>
Problem ReadByTable(const Key<Target> (&keys)[kCount], const std::string& name, Text value,
                    Target& target) {
    for (const auto& key : keys) {
        if (name == key.Name) return key.Read(value, target);
    }
    return "unknown key";
}

}  // namespace

Problem ReadVehicleKey(const std::string& name, Text value, Scenario& scenario) {
    return ReadByTable(kVehicleKeys, name, value, scenario);
}

Problem ReadInterfaceKey(const std::string& name, Text value, Scenario& scenario) {
    return ReadByTable(kInterfaceKeys, name, value, scenario);
}

Problem ReadDriveKey(const std::string& name, Text value, Scenario& scenario) {
    return ReadByTable(kDriveKeys, name, value, scenario);
}

Problem ReadElementKey(const std::string& name, Text value, DrivePhase& phase) {
    return ReadByTable(kPhaseKeys, name, value, phase);
}

Problem ReadElementKey(const std::string& name, Text value, UnitRule& unit) {
    return ReadByTable(kUnitKeys, name, value, unit);
}

// "frame-0C = 1A F8" puts a value into the freeze frame; everything else is an ordinary key.
Problem ReadElementKey(const std::string& name, Text value, CodeRule& code) {
    if (name.size() == 8 && name.starts_with("frame-") && name != "frame-at") {
        const auto pid = ToBytes(Text(name).substr(6));
        const auto bytes = ToBytes(value);
        if (!pid) return "unknown key";
        if (!bytes || bytes->size() > 4) return "expects one to four hexadecimal bytes";
        code.FrameBytes[pid->front()] = *bytes;
        return {};
    }
    return ReadByTable(kCodeKeys, name, value, code);
}

Problem ReadElementKey(const std::string& name, Text value, TestRule& test) {
    return ReadByTable(kTestKeys, name, value, test);
}

Problem ReadElementKey(const std::string& name, Text value, RefusalRule& refusal) {
    return ReadByTable(kRefusalKeys, name, value, refusal);
}

Problem ReadElementKey(const std::string& name, Text value, FaultRule& fault) {
    return ReadByTable(kFaultKeys, name, value, fault);
}

}  // namespace dravik::vehicle
