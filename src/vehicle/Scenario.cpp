#include "vehicle/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "vehicle/ScenarioValues.h"

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
    {"unplug", FaultKind::Unplug},
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

constexpr double kLongest = 1e7;  // seconds; some months, and no clock arithmetic goes wrong

template <typename Target>
struct Key {
    const char* Name;
    Problem (*Read)(std::string_view text, Target& target);
};

using Text = std::string_view;

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
    {"pause", [](Text t, FaultRule& f) { return ReadNumber(t, 0, 60, f.Pause); }},
};

template <typename Target, std::size_t kCount>
Problem ReadKey(const Key<Target> (&keys)[kCount], const std::string& name, Text value,
                Target& target) {
    for (const auto& key : keys) {
        if (name == key.Name) return key.Read(value, target);
    }
    return "unknown key";
}

/// "frame-0C = 1A F8" puts a value into the freeze frame; everything else is an ordinary key.
Problem ReadCodeKey(const std::string& name, Text value, CodeRule& code) {
    if (name.size() == 8 && name.starts_with("frame-") && name != "frame-at") {
        const auto pid = ToBytes(Text(name).substr(6));
        const auto bytes = ToBytes(value);
        if (!pid) return "unknown key";
        if (!bytes || bytes->size() > 4) return "expects one to four hexadecimal bytes";
        code.FrameBytes[pid->front()] = *bytes;
        return {};
    }
    return ReadKey(kCodeKeys, name, value, code);
}

/// Reads one scenario text line by line and remembers the section that it is in.
class Reader {
 public:
    explicit Reader(Scenario& scenario) : scenario_(scenario) {}

    Problem ReadLine(Text line) {
        line = Trimmed(line);
        if (line.empty() || line.front() == ';' || line.front() == '#') return {};
        if (line.front() == '[') return EnterSection(line);
        const auto equals = line.find('=');
        if (equals == Text::npos) return Where("") + "\"" + std::string(line) + "\" has no \"=\"";
        const std::string key = Lowered(Trimmed(line.substr(0, equals)));
        if (!readKey_) return Where(key) + "key before the first section";
        if (!keysSeen_.insert(key).second) return Where(key) + "given twice";
        const Problem problem = readKey_(key, Trimmed(line.substr(equals + 1)));
        return problem.empty() ? Problem() : Where(key) + problem;
    }

    /// What can be judged only when the whole text is known.
    Problem Finish() {
        if (scenario_.RepeatFrom > scenario_.Phases.size())
            return "[drive] repeat-from: there is no phase " + std::to_string(scenario_.RepeatFrom);
        if (scenario_.UnitRules.size() > static_cast<std::size_t>(scenario_.Units))
            return "[unit " + std::to_string(scenario_.UnitRules.size()) +
                   "] the vehicle has only " + std::to_string(scenario_.Units);
        for (std::size_t i = 0; i < scenario_.Codes.size(); ++i) {
            const std::string section = "[code " + std::to_string(i + 1) + "] ";
            if (scenario_.Codes[i].Code == 0) return section + "code: missing";
            if (scenario_.Codes[i].Unit > scenario_.Units)
                return section + "unit: the vehicle has only " + std::to_string(scenario_.Units);
            const CodeRule& code = scenario_.Codes[i];
            const bool permanent = code.Permanent || code.State == CodeState::Permanent;
            if (permanent && scenario_.Services.count(0x0A) == 0)
                return section + "permanent: needs service 0A in [vehicle] services";
        }
        for (std::size_t i = 0; i < scenario_.Tests.size(); ++i) {
            const std::string section = "[test " + std::to_string(i + 1) + "] ";
            if (scenario_.Tests[i].Monitor % 0x20 == 0)
                return section + "monitor: missing, or the number of a mask";
            if (scenario_.Tests[i].Unit > scenario_.Units)
                return section + "unit: the vehicle has only " + std::to_string(scenario_.Units);
            if (scenario_.Services.count(0x06) == 0)
                return section + "needs service 06 in [vehicle] services";
        }
        for (std::size_t i = 0; i < scenario_.Faults.size(); ++i) {
            if (!kindsGiven_[i]) return "[fault " + std::to_string(i + 1) + "] kind: missing";
            const FaultRule& fault = scenario_.Faults[i];
            if (fault.Every < kForever && fault.For >= fault.Every)
                return "[fault " + std::to_string(i + 1) + "] for: must be shorter than every";
        }
        return {};
    }

 private:
    std::string Where(const std::string& key) const {
        return "[" + section_ + "] " + (key.empty() ? "" : key + ": ");
    }

    Problem EnterSection(Text line) {
        if (line.back() != ']') return "\"" + std::string(line) + "\" has no closing bracket";
        section_ = Lowered(Trimmed(line.substr(1, line.size() - 2)));
        keysSeen_.clear();
        readKey_ = nullptr;
        if (!sectionsSeen_.insert(section_).second) return Where("") + "section given twice";
        if (section_ == "vehicle") return Use(kVehicleKeys, scenario_);
        if (section_ == "interface") return Use(kInterfaceKeys, scenario_);
        if (section_ == "drive") return Use(kDriveKeys, scenario_);
        if (section_.starts_with("phase ")) {
            if (Problem problem = Append(scenario_.Phases, 6); !problem.empty()) return problem;
            return Use(kPhaseKeys, scenario_.Phases.back());
        }
        if (section_.starts_with("unit ")) {
            if (Problem problem = Append(scenario_.UnitRules, 5); !problem.empty()) return problem;
            return Use(kUnitKeys, scenario_.UnitRules.back());
        }
        if (section_.starts_with("code ")) {
            if (Problem problem = Append(scenario_.Codes, 5); !problem.empty()) return problem;
            readKey_ = [&code = scenario_.Codes.back()](const std::string& key, Text value) {
                return ReadCodeKey(key, value, code);
            };
            return {};
        }
        if (section_.starts_with("test ")) {
            if (Problem problem = Append(scenario_.Tests, 5); !problem.empty()) return problem;
            return Use(kTestKeys, scenario_.Tests.back());
        }
        if (section_.starts_with("fault ")) {
            if (Problem problem = Append(scenario_.Faults, 6); !problem.empty()) return problem;
            kindsGiven_.push_back(false);
            readKey_ = [this](const std::string& key, Text value) {
                if (key == "kind") kindsGiven_.back() = true;
                return ReadKey(kFaultKeys, key, value, scenario_.Faults.back());
            };
            return {};
        }
        return Where("") + "unknown section";
    }

    template <typename Target, std::size_t kCount>
    Problem Use(const Key<Target> (&keys)[kCount], Target& target) {
        readKey_ = [&keys, &target](const std::string& key, Text value) {
            return ReadKey(keys, key, value, target);
        };
        return {};
    }

    /// Numbered sections count from 1 without a gap, so that a forgotten one is noticed.
    template <typename Element>
    Problem Append(std::vector<Element>& list, std::size_t numberAt) {
        const std::string expected = std::to_string(list.size() + 1);
        if (section_.substr(numberAt) != expected)
            return Where("") + "expected number " + expected + " here";
        list.emplace_back();
        return {};
    }

    Scenario& scenario_;
    std::string section_;
    std::set<std::string> sectionsSeen_, keysSeen_;
    std::vector<bool> kindsGiven_;
    std::function<Problem(const std::string& key, Text value)> readKey_;
};

}  // namespace

std::string ParseScenario(std::string_view text, const std::string& name, Scenario& scenario) {
    Scenario result = scenario;
    Reader reader(result);
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const Problem problem = reader.ReadLine(text.substr(0, end));
        if (!problem.empty()) return name + ": " + problem;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const Problem problem = reader.Finish();
    if (!problem.empty()) return name + ": " + problem;
    scenario = std::move(result);
    return {};
}

std::string LoadScenario(const std::string& fileOrName, Scenario& scenario) {
    const std::string wanted = fileOrName.empty() ? "drive" : fileOrName;
    Scenario fresh;
    std::string problem;
    if (const auto builtIn = BuiltInScenario(wanted); !builtIn.empty()) {
        problem = ParseScenario(builtIn, wanted, fresh);
    } else {
        // As UTF-8: a name given as bytes would go through the code page on Windows.
        const std::filesystem::path path(std::u8string(wanted.begin(), wanted.end()));
        std::ifstream file(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        if (!file.is_open() || file.bad()) {
            problem = wanted + ": cannot be read, and there is no built-in scenario of that name (";
            std::string names;
            for (const auto& name : BuiltInScenarioNames())
                names += (names.empty() ? "" : ", ") + name;
            return problem + names + ")";
        }
        problem = ParseScenario(text, wanted, fresh);
    }
    if (problem.empty()) scenario = std::move(fresh);
    return problem;
}

}  // namespace dravik::vehicle
