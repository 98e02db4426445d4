#include <map>

#include "Desk.h"

namespace dravik::vehicle {
namespace {

/// The number that a single-line reply carries after its first `skip` bytes.
unsigned long Value(const std::string& reply, std::size_t skip) {
    std::string digits;
    for (char c : reply.substr(0, reply.find('\r'))) {
        if (c != ' ') digits += c;
    }
    return digits.size() > skip * 2 ? std::stoul(digits.substr(skip * 2), nullptr, 16) : 999999;
}

TEST(TroubleCodes, StoredCodesComeWithLampCountAndAFrameEach) {
    Desk desk(BuiltIn("faults"));
    desk.Connect();
    EXPECT_EQ(desk.Ask("0101").substr(0, 8), "41 01 83");
    EXPECT_EQ(desk.Ask("03"), "43 01 33 03 01 04 20 \r\r>");
    EXPECT_EQ(desk.Ask("07"), "47 00 00 00 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020200"), "42 02 00 01 33 \r\r>");
    EXPECT_EQ(desk.Ask("020201"), "42 02 01 03 01 \r\r>");
    EXPECT_EQ(desk.Ask("020202"), "42 02 02 04 20 \r\r>");
    EXPECT_EQ(desk.Ask("020203"), "NO DATA\r\r>");
    EXPECT_EQ(desk.Ask("020D00"), "42 0D 00 00 \r\r>") << "P0133 was set standing";
    EXPECT_GT(Value(desk.Ask("020D02"), 3), 110u) << "P0420 on the motorway";
}

TEST(TroubleCodes, FramesStayAsTheyWereWhileTheCarDrivesOn) {
    Desk desk(BuiltIn("faults"));
    desk.Connect();
    const auto frame = [&desk] {
        std::vector<std::string> replies;
        for (unsigned pid = 0; pid <= 0x4E; ++pid) {
            char command[16];
            std::snprintf(command, sizeof command, "02%02X01", pid);
            replies.push_back(desk.Ask(command));
        }
        return replies;
    };
    const std::vector<std::string> before = frame();
    desk.Now += 300;
    EXPECT_EQ(frame(), before);
    for (std::size_t pid = 0; pid < 0x4E; ++pid) {
        const unsigned long mask = Value(before[pid / 32 * 32], 3);
        if (pid % 32 != 31) {
            EXPECT_EQ((mask >> (31 - pid % 32) & 1) != 0, before[pid + 1] != "NO DATA\r\r>")
                << pid + 1;
        }
    }
}

TEST(TroubleCodes, FrameValuesAreThoseOfTheDriveAtThatSecondUnlessGiven) {
    const std::string drive =
        "[phase 1]\naction = accelerate\nspeed = 80\n[code 1]\ncode = P0171\nframe-at = 15\n"
        "frame-05 = 7B\nframe-0c = 1A F8\n[code 2]\ncode = P0300\nframe = no\n";
    const Scenario scenario = ScenarioOf(drive);
    Vehicle then(scenario);
    then.AdvanceTo(15);
    Desk desk(scenario);
    desk.Connect();
    EXPECT_EQ(desk.Ask("020500"), "42 05 00 7B \r\r>");
    EXPECT_EQ(desk.Ask("020C00"), "42 0C 00 1A F8 \r\r>");
    EXPECT_EQ(Value(desk.Ask("020D00"), 3), then.Request({0x01, 0x0D})[0].Messages[0][2]);
    EXPECT_EQ(Value(desk.Ask("020400"), 3), then.Request({0x01, 0x04})[0].Messages[0][2]);
    EXPECT_EQ(desk.Ask("020501"), "NO DATA\r\r>") << "a code without a frame";
}

TEST(TroubleCodes, CodeAppearsDuringTheDriveWithTheFrameOfThatMoment) {
    Desk desk(
        std::string("[vehicle]\ndistance = 100\nminutes = 50\n[phase 1]\naction = cruise\n"
                    "speed = 120\n[code 1]\ncode = P0301\nat = 100\n"
                    "[code 2]\ncode = P0011\nstate = pending\n"));
    desk.Connect();
    desk.Now = 99;
    EXPECT_EQ(desk.Ask("0101").substr(0, 8), "41 01 00");
    EXPECT_EQ(desk.Ask("07"), "47 00 11 00 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020D00"), "NO DATA\r\r>");
    EXPECT_EQ(Value(desk.Ask("0121"), 2), 0u);
    desk.Now = 101;
    EXPECT_EQ(desk.Ask("0101").substr(0, 8), "41 01 81");
    EXPECT_EQ(desk.Ask("03"), "43 03 01 00 00 00 00 \r\r>");
    EXPECT_NEAR(static_cast<double>(Value(desk.Ask("020D00"), 3)), 120, 6);
    desk.Now = 401;
    EXPECT_NEAR(static_cast<double>(Value(desk.Ask("0121"), 2)), 10, 2) << "km with the lamp on";
    EXPECT_NEAR(static_cast<double>(Value(desk.Ask("014D"), 2)), 5, 1) << "minutes";
    EXPECT_NEAR(static_cast<double>(Value(desk.Ask("014E"), 2)), 56, 1);
}

TEST(TroubleCodes, ClearingForgetsEverythingAndStartsTheCountersAnew) {
    Desk desk(BuiltIn("faults"));
    desk.Connect();
    desk.Now = 400;
    EXPECT_GT(Value(desk.Ask("0131"), 2), 214u);
    EXPECT_GT(Value(desk.Ask("0130"), 2), 9u) << "this drive was a warm-up";
    EXPECT_GT(Value(desk.Ask("014E"), 2), 260u);
    EXPECT_GT(Value(desk.Ask("0121"), 2), 0u);
    EXPECT_EQ(desk.Ask("04"), "44 \r\r>");
    EXPECT_EQ(desk.Ask("0101"), "41 01 00 07 65 65 \r\r>");
    EXPECT_EQ(desk.Ask("03"), "43 00 00 00 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020200"), "NO DATA\r\r>");
    for (const char* counter : {"0121", "0130", "0131", "014D", "014E"})
        EXPECT_EQ(Value(desk.Ask(counter), 2), 0u) << counter;
    desk.Now += 660;
    EXPECT_EQ(desk.Ask("0101"), "41 01 00 07 65 04 \r\r>") << "most monitors have run again";
    EXPECT_EQ(Value(desk.Ask("014E"), 2), 11u);
    EXPECT_GT(Value(desk.Ask("0131"), 2), 5u);
    EXPECT_LT(Value(desk.Ask("0131"), 2), 25u);
}

TEST(TroubleCodes, PermanentOnesStayAfterAClearUntilAllMonitorsHaveRun) {
    const std::string drive =
        "services = 01 02 03 04 07 0A\nopen-monitors = catalyst\n[phase 1]\naction = cruise\n"
        "speed = 90\n[code 1]\ncode = P0420\npermanent = yes\n[code 2]\ncode = P0301\n"
        "[code 3]\ncode = P0442\nstate = permanent\n";
    Desk desk("[vehicle]\ncoolant = 85\n" + drive);
    desk.Connect();
    EXPECT_EQ(desk.Ask("0101"), "41 01 82 07 65 01 \r\r>");
    EXPECT_EQ(desk.Ask("03"), "43 04 20 03 01 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("0A"), "4A 04 20 04 42 00 00 \r\r>");
    desk.Now = 10;
    EXPECT_EQ(desk.Ask("04"), "44 \r\r>");
    EXPECT_EQ(desk.Ask("03"), "43 00 00 00 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("0A"), "4A 04 20 04 42 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020200"), "NO DATA\r\r>");
    desk.Now = 1700;
    EXPECT_EQ(desk.Ask("0101"), "41 01 00 07 65 04 \r\r>") << "the vapour system is still to come";
    EXPECT_EQ(desk.Ask("0A"), "4A 04 20 04 42 00 00 \r\r>");
    desk.Now = 2100;
    EXPECT_EQ(desk.Ask("0101"), "41 01 00 07 65 00 \r\r>");
    EXPECT_EQ(desk.Ask("0A"), "4A 00 00 00 00 00 00 \r\r>");

    Desk can("[vehicle]\nprotocol = can-11-500\n" + drive);
    can.Connect();
    EXPECT_EQ(can.Ask("0A"), "4A 02 04 20 04 42 \r\r>");
}

TEST(TroubleCodes, UnitWithoutAFrameSaysSoWhenTheScenarioWantsIt) {
    Desk desk(std::string("[vehicle]\nempty-frames = yes\n") + kIdle);
    desk.Connect();
    EXPECT_EQ(desk.Ask("020200"), "42 02 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020000"), "42 00 00 40 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("020C00"), "NO DATA\r\r>");
    EXPECT_EQ(desk.Ask("020201"), "NO DATA\r\r>");
}

}  // namespace
}  // namespace dravik::vehicle
