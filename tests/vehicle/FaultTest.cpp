#include <algorithm>

#include "Desk.h"

namespace dravik::vehicle {
namespace {

const std::string kReply = "41 01 00 07 65 04 \r\r>";

/// An idling car with one fault, and the reply to 0101 that it spoils.
struct SpoiltDesk : Desk {
    explicit SpoiltDesk(const std::string& fault)
        : Desk(std::string(kIdle) + "[fault 1]\nmatch = 0101\n" + fault) {
        Connect();
    }
};

TEST(Faults, SpoilTheirOwnRequestTheGivenNumberOfTimes) {
    for (const auto& [kind, spoilt] : {std::pair{"silence", ""},
                                       {"no-prompt", "41 01 00 07 65 04 \r\r"},
                                       {"question", "?\r\r>"}}) {
        SpoiltDesk desk("times = 2\nkind = " + std::string(kind) + "\n");
        EXPECT_EQ(desk.Ask("0101"), spoilt);
        EXPECT_EQ(desk.Ask("0105").substr(0, 6), "41 05 ") << "another command is not concerned";
        EXPECT_EQ(desk.Ask("0101"), spoilt);
        EXPECT_EQ(desk.Ask("0101"), kReply);
    }
}

TEST(Faults, WordsOfTheInterfaceEndAnAnswerWhereTheScenarioSays) {
    const std::string car =
        "[vehicle]\nprotocol = can-11-500\n[interface]\nblank-at-line-end = no\n[fault 1]\n"
        "kind = words\n";
    for (const auto& [keys, reply] :
         {std::pair{"match = 09\ntext = BUFFER FULL\nafter = 2\n",
                    "014\r0: 49 02 01 57 44 52\rBUFFER FULL\r\r>"},
          {"match = 09\nafter = 99\n",
           "014\r0: 49 02 01 57 44 52\r1: 41 56 31 4B 30 30 56\r2: 45 48 31 43 4C 45 30\r"
           "BUS ERROR\r\r>"},
          {"match = 09\ntext = CAN ERROR\n", "CAN ERROR\r\r>"}}) {
        Desk desk(car + keys);
        desk.Connect();
        EXPECT_EQ(desk.Ask("0902"), reply);
        EXPECT_EQ(desk.Ask("ATDPN"), "A6\r\r>");
    }
}

TEST(Faults, SilenceOfTheWholeInterfaceIncludesTheEcho) {
    Desk dead(BuiltIn("silent"));
    for (const char* command : {"ATZ", "ATE0", "0101"}) EXPECT_EQ(dead.Ask(command), "");

    Desk pausing(std::string(kIdle) + "[fault 1]\nkind = silence\nat = 100\nfor = 10\n");
    pausing.Connect();
    pausing.Now = 99.99;  // the request is on the wire when the silence begins
    EXPECT_EQ(pausing.Ask("0101"), "");
    pausing.Now = 109.9;
    EXPECT_EQ(pausing.Ask("0101"), "");
    pausing.Now = 110.1;
    EXPECT_EQ(pausing.Ask("0101"), kReply);
}

TEST(Faults, GarbageAddsBytesButNeitherPromptNorQuestionMark) {
    SpoiltDesk desk("kind = garbage\ncount = 5\n");
    std::string reply = desk.Ask("0101");
    EXPECT_EQ(reply.size(), kReply.size() + 5);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), '>'), 1);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), '?'), 0);
    std::erase_if(reply, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    EXPECT_EQ(reply, kReply);
}

TEST(Faults, PiecesPauseInTheMiddleOfTheReply) {
    SpoiltDesk desk("kind = pieces\ncount = 3\npause = 2\n");
    desk.Interface.Receive(desk.Now, "0101\r");
    std::vector<std::string> pieces;
    double last = desk.Now;
    while (const auto next = desk.Interface.NextEvent()) {
        const std::string part = desk.Interface.TakeOutput(*next);
        if (part.empty()) continue;
        if (pieces.empty() || *next - last > 1) pieces.emplace_back();
        pieces.back() += part;
        last = *next;
    }
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_EQ(pieces[0] + pieces[1] + pieces[2], kReply);
}

TEST(Faults, LostCharactersAreMissing) {
    SpoiltDesk desk("kind = lost\ncount = 4\ntimes = 1\n");
    const std::string reply = desk.Ask("0101");
    EXPECT_EQ(reply.size(), kReply.size() - 4);
    auto rest = kReply.begin();
    for (char c : reply) {  // what is left has kept its order
        rest = std::find(rest, kReply.end(), c);
        ASSERT_NE(rest, kReply.end());
        ++rest;
    }
    EXPECT_EQ(desk.Ask("0101"), kReply);
}

TEST(Faults, ChanceHitsAboutAsOftenAsItSaysAndTheSameForASeed) {
    const auto hits = [](const std::string& seed) {
        Desk desk("[vehicle]\nseed = " + seed + "\n" + kIdle +
                  "[fault 1]\nkind = question\nprobability = 0.2\nmatch = 0101\n");
        desk.Connect();
        std::vector<bool> result;
        for (int i = 0; i < 500; ++i) result.push_back(desk.Ask("0101") == "?\r\r>");
        return result;
    };
    const auto first = hits("3");
    EXPECT_EQ(first, hits("3"));
    EXPECT_NE(first, hits("4"));
    const auto count = std::count(first.begin(), first.end(), true);
    EXPECT_GT(count, 60);
    EXPECT_LT(count, 140);
}

TEST(Faults, WindowOpensAgainAndAgain) {
    SpoiltDesk desk("kind = question\nat = 10\nfor = 2\nevery = 20\n");
    for (const auto& [at, hit] : {std::pair{8, false},
                                  {11, true},
                                  {15, false},
                                  {29, false},
                                  {31, true},
                                  {33, false},
                                  {51, true}}) {
        desk.Now = at;
        EXPECT_EQ(desk.Ask("0101") == "?\r\r>", hit) << at;
    }
}

TEST(Faults, UnplugGoesByTheClockOrByChance) {
    Faults clock(ScenarioOf("[fault 1]\nkind = unplug\nat = 5\nfor = 2\nevery = 10\n"));
    EXPECT_FALSE(clock.Unplugged(4.9));
    EXPECT_DOUBLE_EQ(clock.NextPlugChange(4), 5);
    EXPECT_TRUE(clock.Unplugged(5.1));
    EXPECT_DOUBLE_EQ(clock.NextPlugChange(6), 7);
    EXPECT_FALSE(clock.Unplugged(7.1));
    EXPECT_DOUBLE_EQ(clock.NextPlugChange(8), 15);
    EXPECT_TRUE(clock.Unplugged(16));

    SpoiltDesk desk("kind = unplug\nprobability = 1\nfor = 3\ntimes = 1\n");
    EXPECT_EQ(desk.Ask("0101"), "");
    EXPECT_TRUE(desk.Interface.Trouble().Unplugged(desk.Now));
    EXPECT_FALSE(desk.Interface.Trouble().Unplugged(desk.Now + 3.1));
    desk.Interface.PowerUp();
    desk.Now += 4;
    EXPECT_EQ(desk.Ask("0101"), "0101\r\nSEARCHING...\r\n41 01 00 07 65 04 \r\n\r\n>")
        << "plugged in again, it knows nothing of before";
}

}  // namespace
}  // namespace dravik::vehicle
