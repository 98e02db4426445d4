#include "vehicle/Scenario.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <sstream>

namespace dravik::vehicle {
namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

std::string Lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Readers of values: each gives an empty text, or what is wrong with the value.
using Problem = std::string;

std::optional<double> ToNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::string Plain(double value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

Problem ReadNumber(std::string_view text, double low, double high, double& value) {
    const auto number = ToNumber(text);
    if (!number) return "\"" + std::string(text) + "\" is not a number";
    if (*number < low || *number > high) {
        return std::string(text) + " is not between " + Plain(low) + " and " + Plain(high);
    }
    value = *number;
    return {};
}

template <typename Integer>
Problem ReadInteger(std::string_view text, double low, double high, Integer& value) {
    double number = 0;
    if (Problem problem = ReadNumber(text, low, high, number); !problem.empty()) return problem;
    if (number != std::floor(number)) return std::string(text) + " is not a whole number";
    value = static_cast<Integer>(number);
    return {};
}

template <typename Value>
struct Choice {
    const char* Word;
    Value Meaning;
};

template <typename Value, std::size_t kCount>
Problem ReadChoice(std::string_view text, const Choice<Value> (&choices)[kCount], Value& value) {
    std::string known;
    for (const auto& choice : choices) {
        if (Lowered(text) == choice.Word) {
            value = choice.Meaning;
            return {};
        }
        known += (known.empty() ? "" : ", ") + std::string(choice.Word);
    }
    return "\"" + std::string(text) + "\" is none of " + known;
}

constexpr Choice<bool> kSwitches[] = {{"yes", true}, {"no", false}, {"on", true}, {"off", false}};

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

constexpr Choice<bool> kCodeStates[] = {{"stored", false}, {"pending", true}};
constexpr Choice<bool> kMonitorStates[] = {{"complete", true}, {"not-run", false}};
constexpr Choice<bool> kInterruptions[] = {{"stop", true}, {"queue", false}};

constexpr Choice<char> kProtocols[] = {
    {"j1850-pwm", '1'},  {"j1850-vpw", '2'},  {"iso9141", '3'},
    {"kwp-slow", '4'},   {"kwp-fast", '5'},   {"can-11-500", '6'},
    {"can-29-500", '7'}, {"can-11-250", '8'}, {"can-29-250", '9'},
};

Problem ReadSwitch(std::string_view text, bool& value) {
    return ReadChoice(text, kSwitches, value);
}

/// A text without control characters: it is sent to the client as it stands.
Problem ReadText(std::string_view text, std::size_t longest, std::string& value) {
    if (text.size() > longest) return "longer than " + std::to_string(longest) + " characters";
    value = text;
    return {};
}

Problem ReadVin(std::string_view text, std::string& value) {
    if (text.size() != 17) return "a vehicle identification number has 17 characters";
    value = text;
    return {};
}

std::optional<std::vector<std::uint8_t>> ToBytes(std::string_view text) {
    std::string digits;
    for (char c : text) {
        if (c != ' ') digits += c;
    }
    if (digits.empty() || digits.size() % 2 != 0) return std::nullopt;
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        std::uint8_t byte = 0;
        const char* end = digits.data() + i + 2;
        if (std::from_chars(digits.data() + i, end, byte, 16).ptr != end) return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

Problem ReadPids(std::string_view text, std::set<int>& value) {
    std::set<int> pids;
    if (!text.empty()) {
        const auto bytes = ToBytes(text);
        if (!bytes) return "\"" + std::string(text) + "\" is no list of hexadecimal PIDs";
        pids.insert(bytes->begin(), bytes->end());
        for (int mask : {0x00, 0x20, 0x40}) {
            if (pids.count(mask) != 0) return "PIDs 00, 20 and 40 are the masks and always answer";
        }
    }
    value = pids;
    return {};
}

/// "P0133": letter, a digit up to 3, three hexadecimal digits.
Problem ReadCode(std::string_view text, std::uint16_t& value) {
    constexpr std::string_view kLetters = "PCBU";
    const Problem wrong = "\"" + std::string(text) + "\" is no trouble code like P0133";
    if (text.size() != 5) return wrong;
    const auto letter = kLetters.find(Upper(text[0]));
    std::uint16_t number = 0;
    const char* end = text.data() + 5;
    if (letter == std::string_view::npos || text[1] > '3' ||
        std::from_chars(text.data() + 1, end, number, 16).ptr != end || number == 0) {
        return wrong;
    }
    value = static_cast<std::uint16_t>(letter << 14 | number);
    return {};
}

Problem ReadMatch(std::string_view text, std::string& value) {
    value.clear();
    for (char c : text) {
        if (c != ' ') value += Upper(c);
    }
    return {};
}

constexpr double kLongest = 1e7;  // seconds; some months, and no clock arithmetic goes wrong

template <typename Target>
struct Key {
    const char* Name;
    Problem (*Read)(std::string_view text, Target& target);
};

using Text = std::string_view;

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
    {"clear-needs-engine-off",
     [](Text t, Scenario& s) { return ReadSwitch(t, s.ClearNeedsEngineOff); }},
    {"unsupported-pids", [](Text t, Scenario& s) { return ReadPids(t, s.UnsupportedPids); }},
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

constexpr Key<CodeRule> kCodeKeys[] = {
    {"code", [](Text t, CodeRule& c) { return ReadCode(t, c.Code); }},
    {"state", [](Text t, CodeRule& c) { return ReadChoice(t, kCodeStates, c.Pending); }},
    {"lamp", [](Text t, CodeRule& c) { return ReadSwitch(t, c.Lamp); }},
    {"unit", [](Text t, CodeRule& c) { return ReadInteger(t, 1, 4, c.Unit); }},
    {"at", [](Text t, CodeRule& c) { return ReadNumber(t, 0, kLongest, c.At); }},
    {"frame", [](Text t, CodeRule& c) { return ReadSwitch(t, c.HasFrame); }},
    {"frame-at", [](Text t, CodeRule& c) { return ReadNumber(t, 0, 86400, c.FrameAt); }},
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
        if (scenario_.RepeatFrom > scenario_.Phases.size()) {
            return "[drive] repeat-from: there is no phase " + std::to_string(scenario_.RepeatFrom);
        }
        for (std::size_t i = 0; i < scenario_.Codes.size(); ++i) {
            const std::string section = "[code " + std::to_string(i + 1) + "] ";
            if (scenario_.Codes[i].Code == 0) return section + "code: missing";
            if (scenario_.Codes[i].Unit > scenario_.Units) {
                return section + "unit: the vehicle has only " + std::to_string(scenario_.Units);
            }
        }
        for (std::size_t i = 0; i < scenario_.Faults.size(); ++i) {
            if (!kindsGiven_[i]) return "[fault " + std::to_string(i + 1) + "] kind: missing";
            const FaultRule& fault = scenario_.Faults[i];
            if (fault.Every < kForever && fault.For >= fault.Every) {
                return "[fault " + std::to_string(i + 1) + "] for: must be shorter than every";
            }
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
        if (section_.starts_with("code ")) {
            if (Problem problem = Append(scenario_.Codes, 5); !problem.empty()) return problem;
            readKey_ = [&code = scenario_.Codes.back()](const std::string& key, Text value) {
                return ReadCodeKey(key, value, code);
            };
            return {};
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
        if (section_.substr(numberAt) != expected) {
            return Where("") + "expected number " + expected + " here";
        }
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
        std::ifstream file(wanted, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        if (!file.is_open() || file.bad()) {
            problem = wanted + ": cannot be read, and there is no built-in scenario of that name (";
            std::string names;
            for (const auto& name : BuiltInScenarioNames()) {
                names += (names.empty() ? "" : ", ") + name;
            }
            return problem + names + ")";
        }
        problem = ParseScenario(text, wanted, fresh);
    }
    if (problem.empty()) scenario = std::move(fresh);
    return problem;
}

}  // namespace dravik::vehicle
