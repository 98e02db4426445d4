// What the control units say of themselves and of their tests, byte by byte as the diagnostic
// standard lays it out.

#include "Desk.h"

namespace dravik::vehicle {
namespace {

const char* const kUnits =
    "units = 2\n"
    "[unit 1]\nname = ECM-EngineControl\ncalibrations = CAL-01 DRAVIKECM0000002\n"
    "verifications = 17 91 BC 82 16 E0 62 BE\n"
    "[unit 2]\nname = TCM-Gearbox\nmonitors = none\n[interface]\nblank-at-line-end = no\n";

struct Exchange {
    const char* Request;
    std::vector<std::string> Lines;
};

void Check(const std::string& scenario, const std::vector<Exchange>& rows) {
    Desk desk(scenario + kIdle);
    desk.Connect();
    for (const auto& row : rows) {
        std::string expected;
        for (const auto& line : row.Lines) expected += line + "\r";
        EXPECT_EQ(desk.Ask(row.Request), expected + "\r>") << row.Request;
    }
}

TEST(Information, OnCanComesWithACountOfItems) {
    Check(std::string("[vehicle]\nprotocol = can-11-500\n") + kUnits,
          {
              {"0900", {"49 00 54 40 00 00", "49 00 00 40 00 00"}},
              {"0901", {"NO DATA"}},
              {"0904",
               {"023", "0: 49 04 02 43 41 4C", "1: 2D 30 31 00 00 00 00", "2: 00 00 00 00 00 00 44",
                "3: 52 41 56 49 4B 45 43", "4: 4D 30 30 30 30 30 30", "5: 32 00 00 00 00 00 00"}},
              {"0906", {"00B", "0: 49 06 02 17 91 BC", "1: 82 16 E0 62 BE 00 00"}},
              {"090A",
               {"017", "0: 49 0A 01 45 43 4D", "1: 00 2D 45 6E 67 69 6E", "2: 65 43 6F 6E 74 72 6F",
                "3: 6C 00 00 00 00 00 00", "017", "0: 49 0A 01 54 43 4D", "1: 00 2D 47 65 61 72 62",
                "2: 6F 78 00 00 00 00 00", "3: 00 00 00 00 00 00 00"}},
              {"0101", {"41 01 00 07 65 04", "41 01 00 04 00 00"}},
          });
}

TEST(Information, OnOlderBusesComesInCountedMessagesOfFourBytes) {
    Check(std::string("[vehicle]\nprotocol = j1850-vpw\n") + kUnits,
          {
              {"0900", {"49 00 01 FC C0 00 00", "49 00 01 00 C0 00 00"}},
              {"0901", {"49 01 05"}},
              {"0903", {"49 03 08"}},
              {"0904",
               {"49 04 01 43 41 4C 2D", "49 04 02 30 31 00 00", "49 04 03 00 00 00 00",
                "49 04 04 00 00 00 00", "49 04 05 44 52 41 56", "49 04 06 49 4B 45 43",
                "49 04 07 4D 30 30 30", "49 04 08 30 30 30 32"}},
              {"0905", {"49 05 02"}},
              {"0906", {"49 06 01 17 91 BC 82", "49 06 02 16 E0 62 BE"}},
              {"0909", {"49 09 05", "49 09 05"}},
          });
}

const char* const kTests =
    "services = 01 02 03 04 06 07 09\nopen-monitors = oxygen-heaters\n"
    "[test 1]\nmonitor = 01\ntest = 01\nscaling = 0A\nvalue = 0B B0\nlow = 0A 00\nhigh = 0C 00\n"
    "[test 2]\nmonitor = 01\ntest = 85\nscaling = 24\nvalue = 00 96\nlow = 00 4B\n"
    "[test 3]\nmonitor = 41\ntest = 80\nscaling = 96\nvalue = FF 38\nhigh = 01 00\n"
    "[test 4]\nmonitor = A2\ntest = 0B\nscaling = FE\nvalue = 00 05\n"
    "[interface]\nblank-at-line-end = no\n";

TEST(TestResults, OnCanCarryScalingAndBothLimits) {
    Check(
        std::string("[vehicle]\nprotocol = can-11-500\n") + kTests,
        {
            {"0600", {"46 00 80 00 00 01"}},
            {"0620", {"46 20 00 00 00 01"}},
            {"0640", {"46 40 80 00 00 01"}},
            {"0660", {"46 60 00 00 00 01"}},
            {"0680", {"46 80 00 00 00 01"}},
            {"06A0", {"46 A0 40 00 00 00"}},
            {"06C0", {"NO DATA"}},
            {"0601",
             {"013", "0: 46 01 01 0A 0B B0", "1: 0A 00 0C 00 01 85 24", "2: 00 96 00 4B FF FF 00"}},
            // The heaters have not been tested yet.
            {"0641", {"00A", "0: 46 41 80 96 00 00", "1: 00 00 00 00 00 00 00"}},
            {"06A2", {"00A", "0: 46 A2 0B FE 00 05", "1: 80 00 7F FF 00 00 00"}},
            {"0602", {"NO DATA"}},
            // Nothing has been tested after a clear but what is watched all the time.
            {"04", {"44"}},
            {"0601",
             {"013", "0: 46 01 01 0A 00 00", "1: 00 00 00 00 01 85 24", "2: 00 00 00 00 00 00 00"}},
            {"06A2", {"00A", "0: 46 A2 0B FE 00 05", "1: 80 00 7F FF 00 00 00"}},
        });
}

TEST(TestResults, OnOlderBusesCarryOneLimitEach) {
    Check(std::string("[vehicle]\nprotocol = iso9141\n") + kTests,
          {
              {"0600", {"46 00 FF 80 00 00 01"}},
              {"0601", {"46 01 01 0B B0 0C 00", "46 01 81 0B B0 0A 00", "46 01 85 00 96 00 4B"}},
              {"06A2", {"46 A2 0B 00 05 FF FF"}},
          });
}

TEST(Information, NumbersOfFramesBeginAgainAfterFifteen) {
    Desk desk(std::string("[vehicle]\nprotocol = can-11-500\n[unit 1]\n") +
              "calibrations = 1 2 3 4 5 6 7 8\n" + kIdle);
    desk.Connect();
    // 3 + 8 x 16 bytes: 18 frames behind the first one.
    const std::string plain = desk.Ask("0904");
    EXPECT_TRUE(plain.starts_with("083 \r0: 49 04 08 31 00 00 \r"));
    EXPECT_NE(plain.find("\rF: 00 00 00 00 00 00 00 \r0: 00 "), std::string::npos) << plain;
    EXPECT_TRUE(plain.ends_with("\r2: 00 00 00 00 00 00 00 \r\r>"));
    desk.Ask("ATH1");
    const std::string frames = desk.Ask("0904");
    EXPECT_TRUE(frames.starts_with("7E8 10 83 49 04 08 31 00 00 \r7E8 21 "));
    EXPECT_NE(frames.find("\r7E8 2F 00 00 00 00 00 00 00 \r7E8 20 "), std::string::npos) << frames;
}

}  // namespace
}  // namespace dravik::vehicle
