#include "Desk.h"
#include "support/TemporaryFolder.h"

namespace dravik::vehicle {
namespace {

TEST(ScenarioFile, SaysWhatIsWrongWithFileSectionAndKey) {
    const std::pair<const char*, const char*> rows[] = {
        {"[car]\n", "[car]"},
        {"[vehicle]\ncolour = red\n", "[vehicle] colour:"},
        {"seed = 1\n", "[] seed:"},
        {"[vehicle]\nseed\n", "[vehicle] \"seed\" has no \"=\""},
        {"[vehicle\n", "\"[vehicle\" has no closing bracket"},
        {"[vehicle]\nseed = 1\nSeed = 2\n", "[vehicle] seed:"},
        {"[vehicle]\n[interface]\n[vehicle]\n", "[vehicle]"},
        {"[vehicle]\nunits = 5\n", "[vehicle] units:"},
        {"[vehicle]\nunits = 1.5\n", "[vehicle] units:"},
        {"[vehicle]\nfuel = full\n", "[vehicle] fuel:"},
        {"[vehicle]\nfuel =\n", "[vehicle] fuel:"},
        {"[vehicle]\nfuel = nan\n", "[vehicle] fuel:"},
        {"[vehicle]\npresent = maybe\n", "[vehicle] present:"},
        {"[interface]\nidentity = a\tb\n", "[interface] identity:"},
        {"[vehicle]\nvin = 123\n", "[vehicle] vin:"},
        {"[vehicle]\nunsupported-pids = 20\n", "[vehicle] unsupported-pids:"},
        {"[vehicle]\nunsupported-pids = 1G\n", "[vehicle] unsupported-pids:"},
        {"[vehicle]\nopen-monitors = vapour rust\n", "[vehicle] open-monitors:"},
        {"[code 1]\ncode = P0133\npermanent = yes\n", "[code 1] permanent:"},
        {"[unit 1]\n[unit 2]\n", "[unit 2]"},
        {"[unit 1]\nname = Gearbox\n", "[unit 1] name:"},
        {"[unit 1]\ncalibrations = 12345678901234567\n", "[unit 1] calibrations:"},
        {"[unit 1]\nverifications = 17 91 BC\n", "[unit 1] verifications:"},
        {"[test 1]\nmonitor = 21\n", "[test 1] needs service 06"},
        {"[test 1]\nmonitor = 20\n", "[test 1] monitor:"},
        {"[test 1]\nvalue = 21\n", "[test 1] value:"},
        {"[refusal 1]\nreason = 22\n", "[refusal 1] request:"},
        {"[refusal 1]\nthen = perhaps\n", "[refusal 1] then:"},
        {"[phase 2]\n", "[phase 2]"},
        {"[drive]\nrepeat-from = 1\n", "[drive] repeat-from:"},
        {"[code 1]\nlamp = on\n", "[code 1] code:"},
        {"[code 1]\ncode = X0133\n", "[code 1] code:"},
        {"[code 1]\ncode = P4133\n", "[code 1] code:"},
        {"[code 1]\ncode = P0133\nunit = 2\n", "[code 1] unit:"},
        {"[code 1]\ncode = P0133\nframe-zz = 1\n", "[code 1] frame-zz:"},
        {"[code 1]\ncode = P0133\nframe-0C = 1\n", "[code 1] frame-0c:"},
        {"[fault 1]\nat = 3\n", "[fault 1] kind:"},
        {"[fault 1]\nkind = fire\n", "[fault 1] kind:"},
        {"[fault 1]\nkind = lost\nprobability = 2\n", "[fault 1] probability:"},
        {"[fault 1]\nkind = lost\nfor = 5\nevery = 5\n", "[fault 1] for:"},
    };
    for (const auto& [text, problem] : rows) {
        Scenario scenario;
        scenario.Vin = "as it was";
        const std::string said = ParseScenario(text, "t.ini", scenario);
        EXPECT_TRUE(said.starts_with(std::string("t.ini: ") + problem)) << text << said;
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
              (std::vector<std::string>{"drive", "faults", "flaky", "ignition-off", "silent",
                                        "workshop"}));
    for (const auto& name : BuiltInScenarioNames()) {
        Scenario scenario;
        EXPECT_EQ(LoadScenario(name, scenario), "");
        EXPECT_FALSE(scenario.Phases.empty()) << name;
    }
    Scenario scenario;
    EXPECT_NE(LoadScenario("/nowhere/x.ini", scenario).find("/nowhere/x.ini: cannot be read"),
              std::string::npos);
    const TemporaryFolder folder;
    EXPECT_EQ(LoadScenario(folder.Write("x.ini", "[vehicle]\nseed = 77\n"), scenario), "");
    EXPECT_EQ(scenario.Seed, 77u);
}

TEST(ScenarioFile, WorkshopHasEverythingThatADiagnosisShows) {
    Desk desk(BuiltIn("workshop"));
    desk.Connect();
    desk.Ask("ATS0");
    const std::pair<const char*, const char*> rows[] = {
        {"0101", "410183076505\r410181040000\r410102040000\r\r>"},
        {"03", "008\r0:430301330301\r43010700\r430240 35C121\r1:1131AAAAAAAAAA\r\r>"},
        {"07", "47010171\r47010741\r4700\r\r>"},
        {"0A", "4A0203010420\r4A00\r4A00\r\r>"},
        {"020202", "4202021131\r\r>"},
        {"0601", "013\r0:460105100078\r1:00000064010610\r2:004600000064AA\r\r>"},
        {"0621", "00A\r0:462180050000\r1:00000000AAAAAA\r\r>"},
    };
    for (const auto& [request, reply] : rows) {
        std::string expected = reply;
        std::erase(expected, ' ');
        EXPECT_EQ(desk.Ask(request), expected) << request;
    }
}

TEST(ScenarioFile, IgnitionOffEndsInUnableToConnect) {
    Desk desk(BuiltIn("ignition-off"));
    desk.Ask("ATE0");
    desk.Ask("ATL0");
    EXPECT_EQ(desk.Ask("ATRV"), "12.4V\r\r>");
    EXPECT_EQ(desk.Ask("0101"), "SEARCHING...\rUNABLE TO CONNECT\r\r>");
}

}  // namespace
}  // namespace dravik::vehicle
