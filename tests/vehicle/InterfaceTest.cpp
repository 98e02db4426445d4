#include <algorithm>

#include "Desk.h"

namespace dravik::vehicle {
namespace {

TEST(Interface, ConnectSequenceOfTheFrontEndGetsTheExpectedReplies) {
    Desk desk(BuiltIn("faults"));
    EXPECT_EQ(desk.Ask("ATZ"), "ATZ\r\n\r\n\r\nDVI 1.0\r\n\r\n>");
    EXPECT_EQ(desk.Ask("ATE0"), "ATE0\r\nOK\r\n\r\n>");
    EXPECT_EQ(desk.Ask("ATL0"), "OK\r\r>");
    EXPECT_EQ(desk.Ask("ATH0"), "OK\r\r>");
    EXPECT_EQ(desk.Ask("AT!01"), "?\r\r>");
    EXPECT_EQ(desk.Ask("ATI"), "DVI 1.0\r\r>");
    EXPECT_EQ(desk.Ask("ATDP"), "AUTO\r\r>");
    EXPECT_EQ(desk.Ask("0101"), "SEARCHING...\r41 01 83 07 65 04 \r\r>");
    EXPECT_EQ(desk.Ask("0101"), "41 01 83 07 65 04 \r\r>");
    EXPECT_EQ(desk.Ask("ATDP"), "AUTO, ISO 14230-4 (KWP FAST)\r\r>");
    EXPECT_EQ(desk.Ask("ATDPN"), "A5\r\r>");
}

TEST(Interface, SwitchesChangeTheShapeOfReplies) {
    const struct {
        const char* Command;
        const char* Reply;  ///< to 0101 afterwards, the command's echo included where there is one
    } rows[] = {
        {"ATE1", "0101\r41 01 00 07 65 04 \r\r>"},
        {"ATE0", "41 01 00 07 65 04 \r\r>"},
        {"ATL1", "41 01 00 07 65 04 \r\n\r\n>"},
        {"ATL0", "41 01 00 07 65 04 \r\r>"},
        {"ATS0", "410100076504\r\r>"},
        {"ATH1", "86F11041010007650439\r\r>"},
        {"ATS1", "86 F1 10 41 01 00 07 65 04 39 \r\r>"},
        {"ATH0", "41 01 00 07 65 04 \r\r>"},
    };
    Desk desk(kIdle);
    desk.Connect();
    for (const auto& row : rows) {
        EXPECT_NE(desk.Ask(row.Command).find("OK\r"), std::string::npos) << row.Command;
        EXPECT_EQ(desk.Ask("0101"), row.Reply) << row.Command;
    }
    desk.Ask("ATS0");
    desk.Now = 10;
    EXPECT_EQ(desk.Ask("ATD"), "OK\r\n\r\n>") << "defaults include line feeds";
    EXPECT_EQ(desk.Ask("ATRV"), "ATRV\r\n14.1V\r\n\r\n>") << "defaults include the echo";
}

TEST(Interface, ReadsCommandsInAnyCaseWithAnyBlanksAndRepeatsOnAnEmptyLine) {
    Desk desk(kIdle);
    desk.Connect();
    const std::string reply = desk.Ask("0105");
    EXPECT_EQ(reply.substr(0, 6), "41 05 ");
    EXPECT_EQ(desk.Ask(" 0 1 05 "), reply);
    EXPECT_EQ(desk.Ask(""), reply);
    EXPECT_EQ(desk.Ask("01051"), reply) << "a last single digit is the number of answers wanted";
    EXPECT_EQ(desk.Ask(" at\td p"), "AUTO, ISO 14230-4 (KWP FAST)\r\r>");
    for (const char* unknown : {"AT", "ATXYZ", "ATE2", "ATSPX", "HELLO", "1", "01O5"})
        EXPECT_EQ(desk.Ask(unknown), "?\r\r>") << unknown;
    EXPECT_EQ(desk.Ask(std::string(2000, '0')), "?\r\r>");
    desk.Ask("ATWS");
    EXPECT_EQ(desk.Ask("").back(), '>') << "nothing to repeat after a reset";
}

TEST(Interface, GivesTheIdentitiesOfItsScenario) {
    Desk desk(
        "[interface]\nidentity = IFX 1.5\nextended-identity = QVX 2.1 rev 4\necho = off\n"
        "line-feeds = off\ndescription = desk\n");
    EXPECT_EQ(desk.Ask("AT!01"), "QVX 2.1 rev 4\r\r>");
    EXPECT_EQ(desk.Ask("ATI"), "IFX 1.5\r\r>");
    EXPECT_EQ(desk.Ask("AT@1"), "desk\r\r>");
}

TEST(Interface, FirstRequestShowsHowTheBusIsFound) {
    const struct {
        const char* Scenario;
        const char* Before;
        const char* Reply;
        const char* Protocol;
    } rows[] = {
        {"protocol = can-11-500", "ATSP0", "SEARCHING...\r41 01 00 07 65 04 \r\r>",
         "AUTO, ISO 15765-4 (CAN 11/500)"},
        {"protocol = can-29-250", "ATSP9", "41 01 00 07 65 04 \r\r>", "ISO 15765-4 (CAN 29/250)"},
        {"protocol = iso9141", "ATSP0", "BUS INIT: ...OK\r41 01 00 07 65 04 \r\r>",
         "AUTO, ISO 9141-2"},
        {"protocol = kwp-slow", "ATSP4", "BUS INIT: ...OK\r41 01 00 07 65 04 \r\r>",
         "ISO 14230-4 (KWP 5BAUD)"},
        {"protocol = kwp-fast", "ATSPA3", "SEARCHING...\r41 01 00 07 65 04 \r\r>",
         "AUTO, ISO 14230-4 (KWP FAST)"},
        {"protocol = kwp-fast", "ATSP3", "BUS INIT: ...ERROR\r\r>", "ISO 9141-2"},
        {"protocol = kwp-fast", "ATSP6", "CAN ERROR\r\r>", "ISO 15765-4 (CAN 11/500)"},
        {"protocol = j1850-vpw", "ATSP1", "NO DATA\r\r>", "SAE J1850 PWM"},
        {"present = no", "ATSP0", "SEARCHING...\rUNABLE TO CONNECT\r\r>", "AUTO"},
    };
    for (const auto& row : rows) {
        Desk desk(std::string("[vehicle]\n") + row.Scenario + "\n" + kIdle +
                  "[interface]\necho = off\nline-feeds = off\n");
        EXPECT_EQ(desk.Ask(row.Before), "OK\r\r>");
        EXPECT_EQ(desk.Ask("0101"), row.Reply) << row.Scenario << ", " << row.Before;
        EXPECT_EQ(desk.Ask("ATDP"), std::string(row.Protocol) + "\r\r>") << row.Scenario;
    }
}

TEST(Interface, LosesTheBusWhenTheIgnitionIsSwitchedOff) {
    Desk desk(
        "[phase 1]\naction = ignition\nfor = 10\n[phase 2]\naction = off\nfor = 10\n"
        "[phase 3]\naction = ignition\n");
    desk.Connect();
    EXPECT_EQ(desk.Ask("010C"), "41 0C 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("ATIGN"), "ON\r\r>");
    desk.Now = 12;
    EXPECT_EQ(desk.Ask("010C"), "NO DATA\r\r>");
    EXPECT_EQ(desk.Ask("010C"), "SEARCHING...\rUNABLE TO CONNECT\r\r>");
    EXPECT_EQ(desk.Ask("ATIGN"), "OFF\r\r>");
    desk.Now = 25;
    EXPECT_EQ(desk.Ask("010C"), "SEARCHING...\r41 0C 00 00 \r\r>");
}

TEST(Interface, CharacterDuringARequestStopsItAndTheNextCommandWorks) {
    Desk desk(kIdle);
    desk.Connect();
    EXPECT_EQ(desk.Exchange("010C\r0"), "STOPPED\r\r>");
    // The rest of the line that interrupted arrives before the prompt and is lost with it.
    EXPECT_EQ(desk.Exchange("010C\r0101\r"), "STOPPED\r\r>");
    EXPECT_EQ(desk.Ask("0101"), "41 01 00 07 65 04 \r\r>");

    // In the middle of a line that is being sent, the word begins a line of its own.
    desk.Interface.Receive(desk.Now, "0101\r");
    std::string output;
    while (output.size() < 5) output += desk.Interface.TakeOutput(desk.Now += 0.0005);
    EXPECT_NE(desk.Exchange(" ").find("\rSTOPPED\r\r>"), std::string::npos);

    // AT commands are not stopped: what comes too early waits for the prompt.
    EXPECT_EQ(desk.Exchange("ATI\rATDPN\r"), "DVI 1.0\r\r>A5\r\r>");
}

TEST(Interface, SecondReturnOfADoubledLineEndStopsNothing) {
    Desk desk(kIdle);
    desk.Connect();
    EXPECT_EQ(desk.Exchange("04\r\r"), "44 \r\r>");
    EXPECT_EQ(desk.Exchange("0101\r\n"), "41 01 00 07 65 65 \r\r>");
}

TEST(Interface, QueuesWhatComesEarlyWhenTheScenarioSaysSo) {
    Desk desk(std::string("[interface]\nwhen-interrupted = queue\n") + kIdle);
    desk.Connect();
    EXPECT_EQ(desk.Exchange("0101\rATDPN\r"), "41 01 00 07 65 04 \r\r>A5\r\r>");
}

TEST(Interface, EveryCharacterTakesItsTimeOnTheWire) {
    Desk desk(std::string("[interface]\nbaud = 1200\ncommand-latency = 0.5\necho = off\n") + kIdle);
    desk.Interface.Receive(0, "ATI\r");
    const double character = 10.0 / 1200;
    const double begin = 4 * character + 0.5;
    const std::string reply = "DVI 1.0\r\n\r\n>";
    EXPECT_EQ(desk.Interface.TakeOutput(begin + 0.5 * character), "");
    for (std::size_t i = 0; i < reply.size(); ++i) {
        const double now = begin + (static_cast<double>(i) + 1.5) * character;
        EXPECT_EQ(desk.Interface.TakeOutput(now), reply.substr(i, 1)) << i;
    }
    EXPECT_FALSE(desk.Interface.NextEvent()) << "idle, it must not wake its server";
}

TEST(Interface, LongRepliesHaveTheFormOfTheirBus) {
    const std::string codes =
        "[code 1]\ncode = P0133\n[code 2]\ncode = P0301\n[code 3]\ncode = U0420\n"
        "[code 4]\ncode = B1ABC\n";
    const struct {
        const char* Protocol;  ///< and further lines of the scenario
        const char* Headers;
        const char* Command;
        const char* Reply;
    } rows[] = {
        {"can-11-500\n[interface]\nblank-at-line-end = no", "ATH0", "03",
         "00A\r0: 43 04 01 33 03 01\r1: C4 20 9A BC 00 00 00\r\r>"},
        {"kwp-fast", "ATH0", "03", "43 01 33 03 01 C4 20 \r43 9A BC 00 00 00 00 \r\r>"},
        {"iso9141", "ATH1", "03",
         "48 6B 10 43 01 33 03 01 C4 20 22 \r48 6B 10 43 9A BC 00 00 00 00 5C \r\r>"},
        {"can-11-500", "ATH0", "03", "00A \r0: 43 04 01 33 03 01 \r1: C4 20 9A BC 00 00 00 \r\r>"},
        {"can-11-500", "ATH1", "03",
         "7E8 10 0A 43 04 01 33 03 01 \r7E8 21 C4 20 9A BC 00 00 00 \r\r>"},
        {"can-29-500", "ATH1", "0101", "18 DA F1 10 06 41 01 84 07 65 04 \r\r>"},
        {"kwp-fast", "ATH0", "0902",
         "49 02 01 00 00 00 57 \r49 02 02 44 52 41 56 \r49 02 03 31 4B 30 30 \r"
         "49 02 04 56 45 48 31 \r49 02 05 43 4C 45 30 \r\r>"},
        {"can-11-500", "ATH0", "0902",
         "014 \r0: 49 02 01 57 44 52 \r1: 41 56 31 4B 30 30 56 \r2: 45 48 31 43 4C 45 30 \r\r>"},
    };
    for (const auto& row : rows) {
        Desk desk("[vehicle]\nprotocol = " + std::string(row.Protocol) + "\n" + kIdle + codes);
        desk.Connect();
        desk.Ask(row.Headers);
        EXPECT_EQ(desk.Ask(row.Command), row.Reply) << row.Protocol << " " << row.Headers;
    }
}

TEST(Interface, RefusesAndKeepsSilentAsControlUnitsDo) {
    const struct {
        const char* Scenario;
        const char* Command;
        const char* Reply;
    } rows[] = {
        {"protocol = kwp-fast", "0A", "7F 0A 11 \r\r>"},
        {"protocol = kwp-fast", "01", "7F 01 12 \r\r>"},
        {"protocol = kwp-fast", "020C", "7F 02 12 \r\r>"},
        {"protocol = can-11-500", "0A", "NO DATA\r\r>"},
        {"protocol = kwp-fast", "0150", "NO DATA\r\r>"},
        {"protocol = kwp-fast", "011D", "NO DATA\r\r>"},
        {"clear-needs-engine-off = yes", "04", "7F 04 22 \r\r>"},
    };
    for (const auto& row : rows) {
        Desk desk(std::string("[vehicle]\n") + row.Scenario + "\n" + kIdle);
        desk.Connect();
        desk.Now = 10;
        EXPECT_EQ(desk.Ask(row.Command), row.Reply) << row.Scenario << ", " << row.Command;
    }
}

TEST(Interface, UnitsAskForPatienceRefuseOrFallSilentAsTheScenarioSays) {
    const struct {
        const char* Scenario;  ///< after the protocol of the vehicle
        const char* Headers;
        std::vector<std::string> Replies;  ///< to 03, asked as often
    } rows[] = {
        {"can-11-500\npadding = AA\n[refusal 1]\nrequest = 03\npending = 2\nthen = answer\n",
         "ATH0",
         {"7F 03 78 \r7F 03 78 \r43 01 01 33 \r43 01 07 00 \r\r>"}},
        {"can-11-500\npadding = AA\norder = interleaved\n"
         "[refusal 1]\nrequest = 03\npending = 1\nthen = answer\n",
         "ATH1",
         {"7E8 03 7F 03 78 AA AA AA AA \r7E9 04 43 01 07 00 AA AA AA \r"
          "7E8 04 43 01 01 33 AA AA AA \r\r>"}},
        {"can-29-500\n[refusal 1]\nrequest = 03\nunit = 2\nreason = 22\n",
         "ATH1",
         {"18 DA F1 10 04 43 01 01 33 \r18 DA F1 18 03 7F 03 22 \r\r>"}},
        {"kwp-fast\n[refusal 1]\nrequest = 03\nunit = 0\npending = 1\nreason = 10\ntimes = 1\n",
         "ATH1",
         {"83 F1 10 7F 03 78 7E \r83 F1 10 7F 03 10 16 \r"
          "87 F1 18 43 07 00 00 00 00 00 DA \r\r>",
          "87 F1 10 43 01 33 00 00 00 00 FF \r87 F1 18 43 07 00 00 00 00 00 DA \r\r>"}},
        {"can-11-500\n[refusal 1]\nrequest = 03\nunit = 0\npending = 1\nthen = silence\n",
         "ATH0",
         {"7F 03 78 \r7F 03 78 \r\r>"}},
        {"can-11-500\n[refusal 1]\nrequest = 03\npending = 3\nthen = answer\ntimes = 1\n"
         "[refusal 2]\nrequest = 03\nunit = 2\nthen = silence\n"
         "[interface]\nwaits-for-pending = no\n",
         "ATH0",
         {"7F 03 78 \r\r>", "43 01 01 33 \r\r>"}},
    };
    for (const auto& row : rows) {
        Desk desk(std::string(kIdle) +
                  "[code 1]\ncode = P0133\n[code 2]\ncode = P0700\nunit = 2\n" +
                  "[vehicle]\nunits = 2\nprotocol = " + row.Scenario);
        desk.Connect();
        desk.Ask(row.Headers);
        for (const auto& reply : row.Replies) EXPECT_EQ(desk.Ask("03"), reply) << row.Scenario;
    }
}

TEST(Interface, RefusedClearClearsNothingAndPatienceTakesItsTime) {
    Desk desk(std::string(kIdle) +
              "[code 1]\ncode = P0133\n[refusal 1]\nrequest = 04\nreason = 22\ntimes = 1\n"
              "[refusal 2]\nrequest = 04\npending = 2\npending-time = 3\nthen = answer\n");
    desk.Connect();
    EXPECT_EQ(desk.Ask("04"), "7F 04 22 \r\r>");
    EXPECT_EQ(desk.Ask("03"), "43 01 33 00 00 00 00 \r\r>");
    const double before = desk.Now;
    EXPECT_EQ(desk.Ask("04"), "7F 04 78 \r7F 04 78 \r44 \r\r>");
    EXPECT_NEAR(desk.Now - before, 6, 0.3) << "of the car, on the clock of the desk";
    EXPECT_EQ(desk.Ask("03"), "43 00 00 00 00 00 00 \r\r>");
}

TEST(Interface, SeveralControlUnitsAnswerOneAfterTheOther) {
    Desk desk(std::string("[vehicle]\nunits = 2\n") + kIdle +
              "[code 1]\ncode = P0133\n[code 2]\ncode = P0700\nunit = 2\n");
    desk.Connect();
    EXPECT_EQ(desk.Ask("0101"), "41 01 81 07 65 04 \r41 01 81 07 65 04 \r\r>");
    EXPECT_EQ(desk.Ask("03"), "43 01 33 00 00 00 00 \r43 07 00 00 00 00 00 \r\r>");
    EXPECT_EQ(desk.Ask("0111").find('\r'), desk.Ask("0111").find("\r\r>"))
        << "only the engine knows the throttle";
}

}  // namespace
}  // namespace dravik::vehicle
