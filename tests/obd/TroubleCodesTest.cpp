#include <string>
#include <vector>

#include "support/LinkFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

class TroubleCodes : public LinkTest {
 protected:
    /// One read of the codes with this status byte and this reply to "03"; the codes that it took.
    std::vector<std::string> Read(const std::string& status, const std::string& reply) {
        interface_->On("0101", {"41 01 " + status + " 07 65 04\r\r>"});
        interface_->On("03", {reply});
        OpenIn(kReadingCodes);
        HardwareStep();
        const auto begin = basGlobal.DtcList.begin();
        return {begin, begin + basGlobal.DtcCount};
    }
};

TEST_F(TroubleCodes, RepliesAreReadByPosition) {
    const struct {
        const char* What;
        const char* Status;
        const char* Reply;
        const char* Codes;
    } rows[] = {
        {"three codes", "03", "43 01 33 C1 23 80 01 \r\r>", "P0133 U0123 B0001"},
        {"first code below 01: one to the left", "82", "43 02 45 03 67 00 00\r\r>", " 0 4  0 6"},
        {"count byte in front", "81", "43 01 01 33 00 00 00\r\r>", "P0101"},
        {"larger count byte in front", "82", "43 02 01 33 02 45 00\r\r>", " 0 0  3 0"},
        {"echo in front: counted before the lines are joined", "01", "03\r43 01 33 00 00\r\r>",
         "P3300"},
        {"three full units, blanks and empty lines between", "89",
         "43 01 33 01 34 01 35 \r\r43 02 45 02 46 02 47\r43 C1 23 C1 24 C1 25\r\r>",
         "P0133 P0134 P0135 P0245 P0246 P0247 U0123 U0124 U0125"},
        {"three units with padding", "83",
         "43 01 33 00 00 00 00 \r43 02 45 00 00 00 00 \r43 C1 23 00 00 00 00 \r\r>",
         "P0133 P0000 P0000"},
        {"empty line between frames", "84",
         "00A\r0: 43 04 01 33 02 45\r\r1: 01 23 04 56 00 00 00\r\r>", "P0133 P0245 P0123 P0456"},
        {"blank before the line end", "84", "0: 43 04 01 33 02 45 \r1: 01 23 04 56 00 00 00 \r\r>",
         "P0133 P0245  0 2  0 5"},
        {"a 43 01 among the codes shifts them", "82",
         "0: 43 04 43 01 02 45\r1: 01 23 04 56 00 00\r\r>", "C1 1  P3 4 "},
        {"ten frames behind the first", "A5",
         "0: 43 25 01 01 01 02\r1: 01 03 01 04 01 05 01\r2: 06 01 07 01 08 01 09\r"
         "3: 01 10 01 11 01 12 01\r4: 13 01 14 01 15 01 16\r5: 01 17 01 18 01 19 01\r"
         "6: 20 01 21 01 22 01 23\r7: 01 24 01 25 01 26 01\r8: 27 01 28 01 29 01 30\r"
         "9: 01 31 01 32 01 33 01\r10: 34 01 35 01 36 01 37\r\r>",
         "P0101 P0102 P0103 P0104 P0105 P0106 P0107 P0108 P0109 P0110 P0111 P0112 P0113 P0114 "
         "P0115 P0116 P0117 P0118 P0119 P0120 P0121 P0122 P0123 P0124 P0125 P0126 P0127 P0128 "
         "P0129 P0130 P0131 P0132 P0133 P0134 P0135 P0136 P0137"},
        {"lower case keeps its digits", "83", "43 01 3f c1 23 e0 01\r\r>", "P013f c123 e001"},
        {"no data", "81", "NO DATA\r\r>", " DTA"},
        {"cut off with its prompt", "83", "43 01 33 02\r\r>", "P0133 P02\r> "},
        {"nothing but a prompt", "82", ">", " "},
        {"every first digit", "90",
         "43 01 11 1A BC 2F FF 33 33 44 44 55 55 66 66 77 77 88 88 99 99 AA AA BB BB CC CC "
         "DD DD EE EE FF FF\r\r>",
         "P0111 P1ABC P2FFF P3333 C0444 C1555 C2666 C3777 B0888 B1999 B2AAA B3BBB U0CCC U1DDD "
         "U2EEE U3FFF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.What);
        std::string codes;
        const std::vector<std::string> read = Read(row.Status, row.Reply);
        for (const std::string& code : read) codes += (&code == &read.front() ? "" : " ") + code;
        EXPECT_EQ(basGlobal.ConnState, 3);
        EXPECT_EQ(codes, row.Codes);
        EXPECT_EQ(basGlobal.Lists[7].Entries.size(), read.size());
        EXPECT_EQ(basGlobal.MilOn, row.Status[0] > '7');
    }
}

TEST_F(TroubleCodes, TheLargestCountFillsItsEntries) {
    std::string reply = "43";
    for (int i = 100; i < 227; ++i)
        reply += " 0" + std::to_string(i / 100) + " " + std::to_string(i / 10 % 10) +
                 std::to_string(i % 10);
    const std::vector<std::string> codes = Read("FF", reply + "\r\r>");
    ASSERT_EQ(codes.size(), 127U);
    EXPECT_EQ(codes[0], "P0100");
    EXPECT_EQ(codes[126], "P0226");
    EXPECT_EQ(basGlobal.DtcList[127], "");
}

TEST_F(TroubleCodes, EntriesBeyondTheCountAreKept) {
    Read("83", "43 01 33 02 45 03 67\r\r>");
    EXPECT_THAT(Read("01", "43 01 99 00 00 00 00\r\r>"), ElementsAre("P0199"));
    EXPECT_EQ(basGlobal.DtcList[1], "P0245");
    EXPECT_EQ(basGlobal.DtcList[2], "P0367");
    EXPECT_FALSE(basGlobal.MilOn);

    Read("00", "43 00 00 00 00 00 00\r\r>");
    EXPECT_EQ(interface_->Commands.back(), "03") << "asked even when none are stored";
    EXPECT_EQ(basGlobal.DtcList[0], "P0199");
    ASSERT_EQ(basGlobal.Lists[7].Entries.size(), 1U);
    EXPECT_EQ(basGlobal.Lists[7].Entries[0].Text, "No Errors");
    EXPECT_TRUE(basGlobal.CodesRead);
    interface_->OnAllCommands();
    Connect();
    EXPECT_FALSE(basGlobal.CodesRead) << "perhaps another vehicle";
}

TEST_F(TroubleCodes, AFailedReadLeavesTheCodesAndTheLink) {
    struct Row {
        const char* Status;
        const char* Reply;
        int Count;
    };
    for (const Row& row :
         {Row{"NO DATA\r>", "43 01 99\r>", 1}, Row{"~", "43 01 99\r>", 1},
          Row{"41 01 82\r>", "43 01 99 01 98\r|~", 2}, Row{"41 01 82\r>", "~", 2}}) {
        SCOPED_TRACE(std::string(row.Status) + row.Reply);
        Read("81", "43 01 33 00 00 00 00\r\r>");
        interface_->On("0101", {row.Status});
        interface_->On("03", {row.Reply});
        basGlobal.ConnState = kReadingCodes;
        basGlobal.CodesRead = false;
        HardwareStep();
        EXPECT_FALSE(basGlobal.CodesRead);
        EXPECT_EQ(basGlobal.ConnState, 1);
        EXPECT_EQ(basGlobal.DtcCount, row.Count);
        EXPECT_EQ(basGlobal.DtcList[0], "P0133");
        EXPECT_EQ(basGlobal.Lists[7].Entries.size(), 1U);
    }
}

TEST_F(TroubleCodes, AnOutstandingLiveReplyIsAwaitedSoThatPollingGoesOnAfterwards) {
    basGlobal.PidWanted[5] = true;
    const struct {
        const char* Reply;
        bool PollsAgain;
    } rows[] = {{"41 05|11\r|>", true},
                {"41 05|~", false}};  // without its end it stays outstanding
    for (const auto& [reply, pollsAgain] : rows) {
        SCOPED_TRACE(reply);
        interface_ = std::make_unique<ScriptedInterface>();
        interface_->OnAllCommands();
        interface_->On("03", {"43 01 33 00 00 00 00\r\r>"});
        interface_->On("0105", {reply});
        OpenIn(kConnected);
        HardwareStep();
        ASSERT_TRUE(Until([] { return basGlobal.RxBuffer == "41 05"; }));
        EXPECT_TRUE(basGlobal.AwaitingReply);
        basGlobal.ConnState = kReadingCodes;
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 3);
        EXPECT_EQ(basGlobal.DtcList[0], "P0133");
        EXPECT_EQ(basGlobal.RxBuffer, pollsAgain ? "" : "41 05") << "the next reply begins anew";
        HardwareStep();
        std::vector<std::string> commands = {"0105", "0101", "03"};
        if (pollsAgain) commands.push_back("0105");
        EXPECT_TRUE(Until([&] { return interface_->Commands.size() >= commands.size(); }));
        EXPECT_EQ(interface_->Commands, commands);
        EXPECT_TRUE(basGlobal.AwaitingReply);
        basGlobal.AwaitingReply = false;
        basGlobal.RxBuffer.clear();
    }
}

TEST_F(TroubleCodes, ClearingTellsItsOutcome) {
    struct Row {
        const char* Reply;
        int State;
        const char* Message;
    };
    for (const Row& row :
         {Row{"44\r\r>", 16, "message 64 Dravik: Troublecodes cleared"},
          Row{"SEARCHING...\r44|\r>", 16, "message 64 Dravik: Troublecodes cleared"},
          Row{"44|~", 16, "message 64 Dravik: Troublecodes cleared"},
          Row{"7F 04 22\r\r>", 3, "message 16 Dravik: Could not clear Troublecodes"},
          Row{"~", 3, "message 16 Dravik: Could not clear Troublecodes"}}) {
        SCOPED_TRACE(row.Reply);
        fakeScreen.Calls.clear();
        interface_->On("04", {row.Reply});
        interface_->Bytes.clear();
        OpenIn(kClearingCodes);
        interface_->Say("44 of an older reply>");
        ASSERT_TRUE(Until([] { return basGlobal.comOBD.InputCount() == 21; }));
        basGlobal.CommTrace.clear();
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_THAT(fakeScreen.Calls, ElementsAre(row.Message));
        EXPECT_EQ(interface_->Bytes, "04\r\r");
        EXPECT_EQ(basGlobal.CommTrace.substr(0, 5), "04\r\r\n");
    }
}

}  // namespace
}  // namespace dravik
