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
