#include "vehicle/Scenario.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "vehicle/ScenarioKeys.h"

namespace dravik::vehicle {
namespace {

using Text = std::string_view;

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
        for (std::size_t i = 0; i < scenario_.Refusals.size(); ++i) {
            if (scenario_.Refusals[i].Request.empty())
                return "[refusal " + std::to_string(i + 1) + "] request: missing";
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
        if (section_ == "vehicle") return Use(ReadVehicleKey, scenario_);
        if (section_ == "interface") return Use(ReadInterfaceKey, scenario_);
        if (section_ == "drive") return Use(ReadDriveKey, scenario_);
        if (section_.starts_with("phase ")) {
            if (Problem problem = Append(scenario_.Phases, 6); !problem.empty()) return problem;
            return Use(ReadElementKey, scenario_.Phases.back());
        }
        if (section_.starts_with("unit ")) {
            if (Problem problem = Append(scenario_.UnitRules, 5); !problem.empty()) return problem;
            return Use(ReadElementKey, scenario_.UnitRules.back());
        }
        if (section_.starts_with("code ")) {
            if (Problem problem = Append(scenario_.Codes, 5); !problem.empty()) return problem;
            return Use(ReadElementKey, scenario_.Codes.back());
        }
        if (section_.starts_with("test ")) {
            if (Problem problem = Append(scenario_.Tests, 5); !problem.empty()) return problem;
            return Use(ReadElementKey, scenario_.Tests.back());
        }
        if (section_.starts_with("refusal ")) {
            if (Problem problem = Append(scenario_.Refusals, 8); !problem.empty()) return problem;
            return Use(ReadElementKey, scenario_.Refusals.back());
        }
        if (section_.starts_with("fault ")) {
            if (Problem problem = Append(scenario_.Faults, 6); !problem.empty()) return problem;
            kindsGiven_.push_back(false);
            readKey_ = [this](const std::string& key, Text value) {
                if (key == "kind") kindsGiven_.back() = true;
                return ReadElementKey(key, value, scenario_.Faults.back());
            };
            return {};
        }
        return Where("") + "unknown section";
    }

    template <typename Target>
    Problem Use(Problem (*read)(const std::string& key, Text value, Target& target),
                Target& target) {
        readKey_ = [read, &target](const std::string& key, Text value) {
            return read(key, value, target);
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
