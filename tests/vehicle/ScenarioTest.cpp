#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "Desk.h"

namespace dravik::vehicle {
namespace {

TEST(ScenarioFile, SaysWhatIsWrongWithFileSectionAndKey) {
    const struct {
        const char* Text;
        const char* Problem;
    } rows[] = {
        {"[car]\n", "t.ini: [car] unknown section"},
        {"[vehicle]\ncolour = red\n", "t.ini: [vehicle] colour: unknown key"},
        {"seed = 1\n", "t.ini: [] seed: key before the first section"},
        {"[vehicle]\nseed\n", "t.ini: [vehicle] \"seed\" has no \"=\""},
        {"[vehicle\n", "t.ini: \"[vehicle\" has no closing bracket"},
        {"[vehicle]\nseed = 1\nSeed = 2\n", "t.ini: [vehicle] seed: given twice"},
        {"[vehicle]\n[interface]\n[vehicle]\n", "t.ini: [vehicle] section given twice"},
        {"[vehicle]\nunits = 5\n", "t.ini: [vehicle] units: 5 is not between 1 and 4"},
        {"[vehicle]\nunits = 1.5\n", "t.ini: [vehicle] units: 1.5 is not a whole number"},
        {"[vehicle]\nfuel = full\n", "t.ini: [vehicle] fuel: \"full\" is not a number"},
        {"[vehicle]\nfuel =\n", "t.ini: [vehicle] fuel: \"\" is not a number"},
        {"[vehicle]\nfuel = nan\n", "t.ini: [vehicle] fuel: \"nan\" is not a number"},
        {"[vehicle]\npresent = maybe\n",
         "t.ini: [vehicle] present: \"maybe\" is none of yes, no, on, off"},
        {"[interface]\nidentity = a\tb\n",
         "t.ini: [interface] identity: contains a control character"},
        {"[vehicle]\nvin = 123\n",
         "t.ini: [vehicle] vin: a vehicle identification number has 17 characters"},
        {"[vehicle]\nunsupported-pids = 20\n",
         "t.ini: [vehicle] unsupported-pids: PIDs 00, 20 and 40 are masks and follow from the "
         "others"},
        {"[vehicle]\nunsupported-pids = 1G\n",
         "t.ini: [vehicle] unsupported-pids: \"1G\" is no list of hexadecimal PIDs"},
        {"[phase 2]\n", "t.ini: [phase 2] expected number 1 here"},
        {"[drive]\nrepeat-from = 1\n", "t.ini: [drive] repeat-from: there is no phase 1"},
        {"[code 1]\nlamp = on\n", "t.ini: [code 1] code: missing"},
        {"[code 1]\ncode = X0133\n",
         "t.ini: [code 1] code: \"X0133\" is no trouble code like P0133"},
        {"[code 1]\ncode = P4133\n",
         "t.ini: [code 1] code: \"P4133\" is no trouble code like P0133"},
        {"[code 1]\ncode = P0133\nunit = 2\n", "t.ini: [code 1] unit: the vehicle has only 1"},
        {"[code 1]\ncode = P0133\nframe-zz = 1\n", "t.ini: [code 1] frame-zz: unknown key"},
        {"[code 1]\ncode = P0133\nframe-0C = 1\n",
         "t.ini: [code 1] frame-0c: expects one to four hexadecimal bytes"},
        {"[fault 1]\nat = 3\n", "t.ini: [fault 1] kind: missing"},
        {"[fault 1]\nkind = fire\n",
         "t.ini: [fault 1] kind: \"fire\" is none of silence, no-prompt, garbage, pieces, "
         "question, lost, unplug"},
        {"[fault 1]\nkind = lost\nprobability = 2\n",
         "t.ini: [fault 1] probability: 2 is not between 0 and 1"},
        {"[fault 1]\nkind = lost\nfor = 5\nevery = 5\n",
         "t.ini: [fault 1] for: must be shorter than every"},
    };
    for (const auto& row : rows) {
        Scenario scenario;
        scenario.Vin = "as it was";
        EXPECT_EQ(ParseScenario(row.Text, "t.ini", scenario), row.Problem);
        EXPECT_EQ(scenario.Vin, "as it was") << "a bad scenario changes nothing";
    }
}

TEST(ScenarioFile, ReadsEveryKeyWithCommentsAndCarriageReturns) {
    const Scenario scenario = ScenarioOf(
        "; comment\r\n# comment\r\n\r\n [ Vehicle ] \r\nPROTOCOL = Can-29-250\r\n"
        "vin = 12345678901234567\r\nunsupported-pids =\r\n[interface]\r\nidentity = a = b; c\r\n"
        "[phase 1]\r\naction = cruise\r\nspeed = 88.5\r\nfor = 3\r\n"
        "[code 1]\r\ncode = u3fff\r\nlamp = off\r\n"
        "[fault 1]\r\nkind = pieces\r\nmatch = at z\r\n");
    EXPECT_EQ(scenario.Protocol, '9');
    EXPECT_EQ(scenario.Vin, "12345678901234567");
    EXPECT_TRUE(scenario.UnsupportedPids.empty());
    EXPECT_EQ(scenario.Identity, "a = b; c");
    ASSERT_EQ(scenario.Phases.size(), 1u);
    EXPECT_EQ(scenario.Phases[0].Speed, 88.5);
    ASSERT_EQ(scenario.Codes.size(), 1u);
    EXPECT_EQ(scenario.Codes[0].Code, 0xFFFF);
    EXPECT_FALSE(scenario.Codes[0].Lamp);
    EXPECT_EQ(scenario.Faults.at(0).Match, "ATZ");
}

TEST(ScenarioFile, BuiltInNamesWorkWithoutFilesAndFilesByPath) {
    EXPECT_EQ(BuiltInScenarioNames(),
              (std::vector<std::string>{"drive", "faults", "flaky", "ignition-off", "silent"}));
    for (const auto& name : BuiltInScenarioNames()) {
        Scenario scenario;
        EXPECT_EQ(LoadScenario(name, scenario), "");
        EXPECT_FALSE(scenario.Phases.empty()) << name;
    }
    Scenario scenario;
    EXPECT_NE(LoadScenario("/nowhere/x.ini", scenario).find("/nowhere/x.ini: cannot be read"),
              std::string::npos);
    const std::string path =
        (std::filesystem::temp_directory_path() / ("vehicle-" + std::to_string(getpid()) + ".ini"))
            .string();
    std::ofstream(path) << "[vehicle]\nseed = 77\n";
    EXPECT_EQ(LoadScenario(path, scenario), "");
    EXPECT_EQ(scenario.Seed, 77u);
    std::filesystem::remove(path);
}

TEST(ScenarioFile, IgnitionOffEndsInUnableToConnect) {
    Scenario scenario;
    ASSERT_EQ(LoadScenario("ignition-off", scenario), "");
    Desk desk(scenario);
    desk.Ask("ATE0");
    desk.Ask("ATL0");
    EXPECT_EQ(desk.Ask("ATRV"), "12.4V\r\r>");
    EXPECT_EQ(desk.Ask("0101"), "SEARCHING...\rUNABLE TO CONNECT\r\r>");
}

}  // namespace
}  // namespace dravik::vehicle
