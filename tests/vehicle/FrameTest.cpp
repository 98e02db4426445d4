// Frames and checksums as the bus standards define them, worked out by hand.

#include "Desk.h"

namespace dravik::vehicle {
namespace {

std::string Lines(std::initializer_list<const char*> lines) {
    std::string text;
    for (const char* line : lines) text += std::string(line) + "\r";
    return text + "\r>";
}

/// Four codes in the first unit, three in the second, one in the third.
Desk Workshop(const std::string& vehicleKeys) {
    const char* const codes[][2] = {{"P0133", "1"}, {"P0301", "1"}, {"U0420", "1"}, {"B1ABC", "1"},
                                    {"P0700", "2"}, {"P0715", "2"}, {"U0100", "2"}, {"C0035", "3"}};
    std::string text = "[vehicle]\nunits = 3\n" + vehicleKeys + kIdle;
    int number = 0;
    for (const auto& [code, unit] : codes) {
        text += "[code " + std::to_string(++number) + "]\ncode = " + code + "\nunit = " + unit;
        text += "\n";
    }
    return Desk(text + "[interface]\nblank-at-line-end = no\n");
}

TEST(Frames, CodesOfThreeUnitsHaveTheShapeOfTheirBus) {
    const struct {
        const char* Keys;
        std::vector<std::string> Switches;
        std::string Reply;
        const char* Request = "03";
    } rows[] = {
        {"protocol = can-11-500\n",
         {},
         Lines({"00A", "0: 43 04 01 33 03 01", "1: C4 20 9A BC 00 00 00", "008",
                "0: 43 03 07 00 07 15", "1: C1 00 00 00 00 00 00", "43 01 40 35"})},
        {"protocol = can-11-500\norder = interleaved\npadding = AA\n",
         {},
         Lines({"00A", "0: 43 04 01 33 03 01", "008", "0: 43 03 07 00 07 15", "43 01 40 35",
                "1: C4 20 9A BC AA AA AA", "1: C1 00 AA AA AA AA AA"})},
        {"protocol = can-11-500\norder = interleaved\npadding = AA\n",
         {"ATH1"},
         Lines({"7E8 10 0A 43 04 01 33 03 01", "7E9 10 08 43 03 07 00 07 15",
                "7EA 04 43 01 40 35 AA AA AA", "7E8 21 C4 20 9A BC AA AA AA",
                "7E9 21 C1 00 AA AA AA AA AA"})},
        {"protocol = can-29-500\norder = reversed\npadding = none\n",
         {"ATH1", "ATS0"},
         Lines({"18DAF1200443014035", "18DAF1181008430307000715", "18DAF11821C100",
                "18DAF110100A430401330301", "18DAF11021C4209ABC"})},
        {"protocol = can-29-250\norder = reversed\npadding = 55\n",
         {"ATCAF0"},
         Lines({"04 43 01 40 35 55 55 55", "10 08 43 03 07 00 07 15", "21 C1 00 55 55 55 55 55",
                "10 0A 43 04 01 33 03 01", "21 C4 20 9A BC 55 55 55"}),
         "01 03"},
        {"protocol = kwp-fast\norder = interleaved\n",
         {"ATH1"},
         Lines({"87 F1 10 43 01 33 03 01 C4 20 E7", "87 F1 18 43 07 00 07 15 C1 00 B7",
                "87 F1 20 43 40 35 00 00 00 00 50", "87 F1 10 43 9A BC 00 00 00 00 21"})},
        {"protocol = iso9141\norder = interleaved\n",
         {"ATH1"},
         Lines({"48 6B 10 43 01 33 03 01 C4 20 22", "48 6B 18 43 07 00 07 15 C1 00 F2",
                "48 6B 20 43 40 35 00 00 00 00 8B", "48 6B 10 43 9A BC 00 00 00 00 5C"})},
        {"protocol = j1850-vpw\n",
         {"ATH1", "ATS0"},
         Lines({"486B104301330301C420DB", "486B10439ABC000000004C", "486B184307000715C100B7",
                "486B2043403500000000A6"})},
        {"protocol = j1850-pwm\n",
         {"ATH1"},
         Lines({"41 6B 10 43 01 33 03 01 C4 20 9D", "41 6B 10 43 9A BC 00 00 00 00 0A",
                "41 6B 18 43 07 00 07 15 C1 00 F1", "41 6B 20 43 40 35 00 00 00 00 E0"})},
    };
    for (const auto& row : rows) {
        Desk desk = Workshop(row.Keys);
        desk.Connect();
        for (const auto& command : row.Switches) EXPECT_EQ(desk.Ask(command), "OK\r\r>");
        EXPECT_EQ(desk.Ask(row.Request), row.Reply) << row.Keys;
    }
}

TEST(Frames, EveryProtocolHasItsNumberHeaderAndChecksum) {
    const struct {
        const char* Protocol;
        const char* Number;
        const char* Frame;  ///< of the answer to 011C
    } rows[] = {
        {"j1850-pwm", "A1", "41 6B 10 41 1C 06 30"},
        {"j1850-vpw", "A2", "48 6B 10 41 1C 06 7C"},
        {"iso9141", "A3", "48 6B 10 41 1C 06 26"},
        {"kwp-slow", "A4", "83 F1 10 41 1C 06 E7"},
        {"kwp-fast", "A5", "83 F1 10 41 1C 06 E7"},
        {"can-11-500", "A6", "7E8 03 41 1C 06"},
        {"can-29-500", "A7", "18 DA F1 10 03 41 1C 06"},
        {"can-11-250", "A8", "7E8 03 41 1C 06"},
        {"can-29-250", "A9", "18 DA F1 10 03 41 1C 06"},
    };
    for (const auto& row : rows) {
        Desk desk("[vehicle]\nprotocol = " + std::string(row.Protocol) + "\n" + kIdle);
        EXPECT_EQ(desk.Connect().Ask("ATDPN"), row.Number + std::string("\r\r>"));
        EXPECT_EQ(desk.Ask("011C"), "41 1C 06 \r\r>") << row.Protocol;
        desk.Ask("ATH1");
        EXPECT_EQ(desk.Ask("011C"), row.Frame + std::string(" \r\r>")) << row.Protocol;
    }
}

TEST(Frames, FortyCodesAreCountedAndNumberedThrough) {
    std::string codes;
    for (int i = 1; i <= 40; ++i)
        codes += "[code " + std::to_string(i) + "]\ncode = P" + std::to_string(1000 + i) + "\n";
    Desk can("[vehicle]\nprotocol = can-11-500\n" + codes + kIdle);
    can.Connect();
    const std::string reply = can.Ask("03");
    // 2 + 40 x 2 bytes: six in the first frame and seven in each of eleven more, one of them spare.
    EXPECT_TRUE(reply.starts_with("052 \r0: 43 28 10 01 10 02 \r1: 10 03 10 04 10 05 10 \r"));
    EXPECT_TRUE(reply.ends_with("\rB: 10 38 10 39 10 40 00 \r\r>")) << reply;
    EXPECT_EQ(can.Ask("0101").substr(0, 8), "41 01 A8");

    Desk keyword("[vehicle]\nprotocol = kwp-slow\n" + codes + kIdle);
    keyword.Connect();
    const std::string messages = keyword.Ask("03");
    EXPECT_EQ(std::count(messages.begin(), messages.end(), '\r'), 14 + 1);
    EXPECT_TRUE(messages.ends_with("\r43 10 40 00 00 00 00 \r\r>"));
}

TEST(Frames, ShuffledUnitsKeepTheOrderOfTheirOwnFrames) {
    std::set<std::string> orders;
    for (int seed = 0; seed < 20; ++seed) {
        Desk desk = Workshop(
            "protocol = can-11-500\norder = shuffled\nseed = " + std::to_string(seed) + "\n");
        desk.Connect();
        desk.Ask("ATH1");
        const std::string reply = desk.Ask("03");
        EXPECT_LT(reply.find("7E8 10"), reply.find("7E8 21")) << reply;
        EXPECT_LT(reply.find("7E9 10"), reply.find("7E9 21")) << reply;
        EXPECT_EQ(std::count(reply.begin(), reply.end(), '\r'), 5 + 1);
        orders.insert(reply);
    }
    EXPECT_GT(orders.size(), 5u);
}

}  // namespace
}  // namespace dravik::vehicle
