#include <string>
#include <vector>

#include "lists/basFunctions.h"
#include "support/LinkFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kNoData = "NO DATA\r\r>";

/// The link on CAN with the headers that the interface is told to send.
class StandardCodes : public LinkTest {
 protected:
    StandardCodes() {
        basGlobal.StandardDecoding = true;
        basGlobal.VehicleBus = Bus::Can11;
        interface_->On("ATH1", {"OK\r\r>"});
        interface_->On("0101", {"7E8 06 41 01 81 07 65 04 \r7E9 06 41 01 00 07 65 04 \r\r>"});
        interface_->On("020200", {kNoData});
        interface_->On("ATDPN", {"A6\r\r>"});
    }

    std::string Read(const std::string& reply) {
        interface_->On("03", {reply});
        return Read();
    }

    /// The codes after one read, with the number of their frame where they have one.
    std::string Read() {
        interface_->Commands.clear();
        fakeScreen.Calls.clear();
        if (!basGlobal.comOBD.IsOpen()) OpenIn(kReadingCodes);
        basGlobal.ConnState = kReadingCodes;
        HardwareStep();
        std::string text;
        for (std::size_t i = 0; i < CodesInUse().size(); ++i) {
            text += (i == 0 ? "" : " ") + CodesInUse()[i];
            if (const auto frame = basGlobal.CodeOrigins[i].Frame)
                text += "/" + std::to_string(*frame);
        }
        return text;
    }
};

TEST_F(StandardCodes, EveryUnitsCodesAreReadAndTheHeadersGoOffAgain) {
    EXPECT_EQ(Read("7E9 04 43 01 07 00 \r7E8 10 08 43 03 04 20 01 33 \r7E8 21 C1 23 00\r\r>"),
              "P0420 P0133 U0123 P0700");
    EXPECT_EQ(basGlobal.ConnState, kConnected);
    EXPECT_TRUE(basGlobal.MilOn);
    EXPECT_TRUE(basGlobal.CodesRead);
    EXPECT_EQ(basGlobal.Lists[kCodeListSlot].Entries.size(), 4U);
    EXPECT_THAT(interface_->Commands, ElementsAre("ATH1", "0101", "03", "020200", "ATH0"));

    EXPECT_EQ(Read("7E8 04 43 01 04 20\r7E9 06 43 02 04 20 04 20\r\r>"), "P0420 P0420")
        << "each unit's, once";
    interface_->On("0101", {"7E8 06 41 01 00 07 65 04 \r7E9 06 41 01 80 07 65 04 \r\r>"});
    EXPECT_EQ(Read("7E8 02 43 00\r7E9 02 43 00\r\r>"), "");
    EXPECT_TRUE(basGlobal.MilOn) << "one unit is enough";
    EXPECT_EQ(basGlobal.Lists[kCodeListSlot].Entries[0].Text, "No Errors");
    interface_->On("0101", {"7E8 06 41 01 00 07 65 04 \r\r>"});
    EXPECT_EQ(Read(kNoData), "");
    EXPECT_FALSE(basGlobal.MilOn);
    EXPECT_TRUE(basGlobal.CodesRead);
    EXPECT_THAT(fakeScreen.Calls, IsEmpty());
}

TEST_F(StandardCodes, OnOtherBusesThereIsNoCount) {
    basGlobal.VehicleBus = Bus::Iso9141;
    interface_->On("0101", {"48 6B 10 41 01 81 07 65 04 F6 \r\r>"});
    EXPECT_EQ(Read("48 6B 10 43 01 33 00 00 00 00 3A \r48 6B 18 43 07 00 07 05 00 00 21 \r\r>"),
              "P0133 P0700 P0705");
    // An interface without the command for headers is read without them.
    interface_->On("ATH1", {"?\r\r>"});
    interface_->On("ATH0", {"?\r\r>"});
    interface_->On("0101", {"41 01 81 07 65 04 \r\r>"});
    EXPECT_EQ(Read("43 01 33 00 00 00 00 \r43 07 00 07 05 00 00 \r\r>"), "P0133 P0700 P0705");
    EXPECT_EQ(basGlobal.ConnState, kConnected);
}

TEST_F(StandardCodes, MoreCodesThanTheListHoldsAreLeftOut) {
    std::string reply;
    for (int unit = 0; unit < 6; ++unit) {
        for (int line = 0; line < 10; ++line) {
            const int code = 100 + unit * 30 + line * 3;
            char text[64];
            std::snprintf(text, sizeof text, "43 0%d %02d 0%d %02d 0%d %02d\r", code / 100 % 10,
                          code % 100, (code + 1) / 100, (code + 1) % 100, (code + 2) / 100,
                          (code + 2) % 100);
            reply += text;
        }
    }
    basGlobal.VehicleBus = Bus::Keyword;
    interface_->On("ATH1", {"?\r\r>"});
    interface_->On("0101", {"41 01 FF 07 65 04 \r\r>"});
    Read(reply + "\r>");
    EXPECT_EQ(basGlobal.DtcCount, kCodeLimit);
    EXPECT_EQ(basGlobal.DtcList.back(), "P0228");
    EXPECT_EQ(basGlobal.Lists[kCodeListSlot].Entries.size(), 129U);
}

TEST_F(StandardCodes, AFailedReadTellsWhyAndKeepsWhatWasKnown) {
    Read("7E8 04 43 01 04 20\r\r>");
    const std::string could = "message 16 Dravik: Could not read Troublecodes\n";
    const struct {
        const char* What;
        const char* Status;  ///< "" = as before
        const char* Reply;
        int State;
        std::string Message;
    } rows[] = {
        {"refused", "", "7E8 03 7F 03 22\r\r>", 3, could + "The vehicle refuses the request (22)"},
        {"a frame lost", "", "7E8 10 0A 43 04 01 33 02 45\r\r>", 3,
         could + "The vehicle's answer cannot be read"},
        {"a count that does not fit", "", "7E8 04 43 02 01 33\r\r>", 3,
         could + "The vehicle's answer cannot be read"},
        {"interrupted", "", "7E8 04 43 01 01 33\rBUFFER FULL\r\r>", 3,
         could + "The interface does not reach the vehicle: BUFFER FULL"},
        {"codes are counted, but nobody answers", "", kNoData, 3,
         could + "The vehicle does not answer. Is the ignition on?"},
        {"garbage", "#*!\r>", "", 3, could + "The interface does not reach the vehicle: #*!"},
        {"the ignition is off", kNoData, "", 1, ""},
        {"the bus is gone", "CAN ERROR\r\r>", "", 1, ""},
        {"no prompt", "", "7E8 04 43 01 01 33\r|~", 1, ""},
        {"silence", "~", "", 1, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.What);
        basGlobal.CodesRead = false;
        basGlobal.MilOn = true;
        interface_->On("0101",
                       {*row.Status != '\0' ? row.Status : "7E8 06 41 01 01 07 65 04\r\r>"});
        EXPECT_EQ(Read(row.Reply), "P0420");
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_EQ(fakeScreen.Calls, row.Message.empty() ? std::vector<std::string>()
                                                        : std::vector<std::string>{row.Message});
        EXPECT_EQ(interface_->Commands.back(), "ATH0");
        EXPECT_FALSE(basGlobal.CodesRead);
        EXPECT_TRUE(basGlobal.MilOn);
        EXPECT_EQ(ReasonText().empty(), row.State == 3);
    }
}

TEST_F(StandardCodes, WithTheHeadersPerhapsOnNothingIsPolled) {
    const std::string code = "7E8 04 43 01 04 20\r\r>";
    interface_->On("ATH0", {"!!\r\r>", "OK\r\r>"});
    Read(code);
    EXPECT_EQ(basGlobal.ConnState, kConnected) << "confirmed the second time";
    interface_->On("ATH0", {"OX\r\r>"});
    EXPECT_EQ(Read(code), "P0420");
    EXPECT_EQ(basGlobal.ConnState, kConnecting);
    interface_->On("ATH0", {"~"});
    Read(code);
    EXPECT_EQ(basGlobal.ConnState, kConnecting);
    interface_->On("ATH1", {"~"});  // it may have understood
    Read(code);
    EXPECT_EQ(basGlobal.ConnState, kNotConnected);
    EXPECT_EQ(interface_->Commands.back(), "ATH0");
    interface_->On("ATH1", {"OK\r\r>"});
    interface_->On("03", {"^"});
    Read();
    EXPECT_EQ(basGlobal.ConnState, kNotConnected);
    EXPECT_FALSE(basGlobal.comOBD.IsOpen());
}

TEST_F(StandardCodes, AnAnswerThatIsPutOffIsAskedForAgain) {
    interface_->On("03", {"7E8 03 7F 03 78\r\r>", "7E8 03 7F 03 21\r7E9 02 43 00\r\r>",
                          "7E8 04 43 01 04 20\r7E9 02 43 00\r\r>"});
    EXPECT_EQ(Read(), "P0420");
    const auto putsOff = [this] {
        AdvanceHighResTimer(3);
        interface_->Say("7E8 03 7F 03 78\r7E9 04 43 01 07 00\r\r>");
    };
    interface_->On("03", {std::function<void()>(putsOff)});
    EXPECT_EQ(Read(), "P0420") << "half of the codes are not all of them";
    EXPECT_EQ(basGlobal.ConnState, kConnected);
    EXPECT_THAT(fakeScreen.Calls, ElementsAre("message 16 Dravik: Could not read Troublecodes\n"
                                              "The vehicle is busy. Try again later."));
}

TEST_F(StandardCodes, ClearingListensToEveryUnit) {
    const char* const cleared = "message 64 Dravik: Troublecodes cleared";
    const char* const failed = "message 16 Dravik: Could not clear Troublecodes";
    const struct {
        const char* Reply;
        int State;
        const char* Message;
    } rows[] = {
        {"44\r44\r\r>", 16, cleared},
        {"SEARCHING...\r44 \r\r>", 16, cleared},
        {"7F 04 22\r\r>", 3, failed},
        {"44\r7F 04 22\r\r>", 16, failed},  // the codes of one unit remain
        {"NO DATA\r\r>", 3, failed},
        {"41 44 00\r\r>", 3, failed},
        {"~", 3, failed},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Reply);
        fakeScreen.Calls.clear();
        interface_->On("04", {row.Reply});
        OpenIn(kClearingCodes);
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_THAT(fakeScreen.Calls, ElementsAre(row.Message));
    }
}

class StandardFrames : public StandardCodes {
 protected:
    StandardFrames() { basGlobal.CurrentMenu = "freezeframe"; }

    /// The requests of some steps with this entry of the list selected.
    std::vector<std::string> Poll(int selected) {
        SelectListEntry(basGlobal.Lists[kCodeListSlot], selected);
        interface_->Commands.clear();
        for (int step = 0; step < 3; ++step) {
            HardwareStep();
            Until([] { return !basGlobal.AwaitingReply; });
        }
        std::vector<std::string> once;
        for (const std::string& command : interface_->Commands)
            if (once.empty() || once.back() != command) once.push_back(command);
        return once;
    }
};

TEST_F(StandardFrames, EachCodeShowsTheFrameThatItCaused) {
    interface_->On("020200", {"7E8 05 42 02 00 01 33\r\r>"});
    interface_->On("020201", {"7E8 05 42 02 01 04 20\r7E9 05 42 02 01 00 00\r\r>"});
    interface_->On("020202", {"7E8 05 42 02 02 01 33\r\r>"});
    interface_->On("020203", {"7E9 05 42 02 03 07 00\r\r>"});
    ASSERT_EQ(Read("7E8 08 43 03 04 20 01 33 C1 23\r7E9 04 43 01 07 00\r\r>"), "")
        << "eight bytes are no single frame";
    ASSERT_EQ(Read("7E8 10 08 43 03 04 20 01 33\r7E8 21 C1 23\r7E9 04 43 01 07 00\r\r>"),
              "P0420/1 P0133/0 U0123 P0700/3");

    basGlobal.PidWanted[0x0C] = true;
    interface_->On("020C01", {"42 0C 01 1A F8\r\r>"});
    interface_->On("020C00", {"42 0C 01 00 01\r42 0C 00 00 04\r\r>"});
    EXPECT_THAT(Poll(1), ElementsAre("020C01"));
    EXPECT_EQ(basGlobal.FreezeRaw[0x0C], 0x1AF8) << "without the number of the frame";
    EXPECT_EQ(basGlobal.FreezeSize[0x0C], 2);
    EXPECT_TRUE(PidKnown(0x0C));
    SelectListEntry(basGlobal.Lists[kCodeListSlot], 2);
    EXPECT_FALSE(PidKnown(0x0C)) << "nothing of another frame, not even for a moment";
    EXPECT_THAT(Poll(2), ElementsAre("020C00"));
    EXPECT_EQ(basGlobal.FreezeRaw[0x0C], 4);
    EXPECT_THAT(Poll(3), IsEmpty()) << "no frame is known of this code";
    EXPECT_FALSE(PidKnown(0x0C));
    EXPECT_EQ(basGlobal.FreezeRaw[0x0C], 0);

    interface_->OnAllCommands();
    Connect();
    EXPECT_THAT(Poll(1), IsEmpty()) << "perhaps another vehicle";
}

TEST_F(StandardFrames, AFrameThatTwoUnitsHaveIsReadWithItsHeaders) {
    interface_->On("020200", {"7E8 05 42 02 00 04 20\r7E9 05 42 02 00 07 00\r\r>"});
    interface_->On("020201", {"7E9 05 42 02 01 07 05\r\r>"});
    interface_->On("020202", {kNoData});
    interface_->On("020000", {"7E8 07 42 00 00 40 18 00 01\r7E9 07 42 00 00 40 08 00 00\r\r>"});
    interface_->On("022000", {"7E8 07 42 20 00 00 00 00 00\r\r>"});
    interface_->On("020C00", {"7E9 05 42 0C 00 00 04\r7E8 05 42 0C 00 1A F8\r\r>"});
    interface_->On("020D00", {"7E9 04 42 0D 00 11\r\r>"});
    const char* const codes = "7E8 04 43 01 04 20\r7E9 06 43 02 07 00 07 05\r\r>";
    EXPECT_EQ(Read(codes), "P0420/0 P0700/0 P0705/1");
    basGlobal.PidWanted[0x0C] = basGlobal.PidWanted[0x0D] = true;
    EXPECT_FALSE(PidKnown(0x0C)) << "not shown yet";
    EXPECT_THAT(Poll(1), IsEmpty());
    EXPECT_EQ(basGlobal.FreezeRaw[0x0C], 0x1AF8);
    EXPECT_TRUE(PidKnown(0x0C));
    EXPECT_FALSE(PidKnown(0x0D)) << "the other unit's";
    SelectListEntry(basGlobal.Lists[kCodeListSlot], 2);
    EXPECT_FALSE(PidKnown(0x0C));
    EXPECT_THAT(Poll(2), IsEmpty());
    EXPECT_EQ(basGlobal.FreezeRaw[0x0C], 4);
    EXPECT_EQ(basGlobal.FreezeRaw[0x0D], 0x11);
    EXPECT_EQ(basGlobal.FreezeSize[0x0D], 1);
    EXPECT_TRUE(PidKnown(0x0C) && PidKnown(0x0D));

    // Without headers nobody knows whose it is.
    interface_->On("ATH1", {"?\r\r>"});
    interface_->On("0101", {"41 01 83 07 65 04\r\r>"});
    interface_->On("020200", {"42 02 00 04 20\r42 02 00 07 00\r\r>"});
    interface_->On("020201", {"42 02 01 07 05\r\r>"});
    EXPECT_EQ(Read("43 01 04 20\r43 02 07 00 07 05\r\r>"), "P0420 P0700 P0705/1");
    EXPECT_THAT(Poll(1), IsEmpty());
    EXPECT_FALSE(PidKnown(0x0C));
}

class StandardValues : public LinkTest {
 protected:
    StandardValues() { basGlobal.StandardDecoding = true; }

    /// What the reply to "010C" leaves: the number of PID 0C, or -1.
    static int Stored(const std::string& reply) {
        basGlobal.Requested = {1, 0x0C};
        basGlobal.LiveRaw.fill(-1);
        basGlobal.LiveAt.fill(0);
        HandlePidReply(reply);
        for (std::size_t pid = 0; pid < basGlobal.LiveRaw.size(); ++pid)
            EXPECT_TRUE(pid == 0x0C || basGlobal.LiveRaw[pid] == -1) << pid;
        if (basGlobal.LiveRaw[0x0C] != -1) {
            EXPECT_EQ(basGlobal.LiveSize[0x0C], 2);
        }
        EXPECT_EQ(basGlobal.LiveAt[0x0C] != 0, basGlobal.LiveRaw[0x0C] != -1);
        return basGlobal.LiveRaw[0x0C];
    }
};

TEST_F(StandardValues, TheFirstLineThatAnswersIsTaken) {
    const struct {
        const char* Reply;
        int Value;
    } rows[] = {
        {"41 0C 1A F8 \r\r>", 0x1AF8},
        {"410C1AF8\r\r>", 0x1AF8},
        {"010C\r41 0C 1A F8\r\r>", 0x1AF8},
        {"SEARCHING...\r\n41 0C 1A F8\r\n>", 0x1AF8},
        {"BUS INIT: OK\r41 0C 1A F8\r>", 0x1AF8},
        {"41 0C 1A F8\r41 0C 00 00\r\r>", 0x1AF8},
        {"7F 01 12\r41 0C 00 08\r\r>", 8},
        {"41 0D 11\r41 0C\r41 0C 1\r41 0C 00 09 <DATA ERROR\r41 0C 00 08\r\r>", 8},
        {"41 0C 01 02 03 04 05\r\r>", -1},
        {"7F 01 78\r\r>", -1},
        {"7F 0C 12\r\r>", -1},
        {"42 0C 00 01\r\r>", -1},
        {"NO DATA\r\r>", -1},
        {"010C\r\r>", -1},
    };
    for (const auto& row : rows) EXPECT_EQ(Stored(row.Reply), row.Value) << row.Reply;
}

TEST_F(StandardValues, AConnectTakesTheLampOfEveryUnitAndAsksForTheBus) {
    interface_->On("0101", {"41 01 02 07 65 04\r41 01 81 07 65 04\r\r>"});
    const struct {
        const char* Number;
        const char* Words;
        Bus Expected;
    } rows[] = {
        {"A6\r\r>", "AUTO\r\r>", Bus::Can11},
        {"9\r\r>", "AUTO\r\r>", Bus::Can29},
        {"ATDPN\rA3\r\r>", "AUTO\r\r>", Bus::Iso9141},
        {"?\r\r>", "AUTO, ISO 14230-4 (KWP FAST)\r\r>", Bus::Keyword},
        {"?\r\r>", "ISO 15765-4 (CAN 29/500)\r\r>", Bus::Can29},
        {"A0\r\r>", "AUTO\r\r>", Bus::Unknown},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.Number) + row.Words);
        interface_->On("ATDPN", {row.Number});
        interface_->On("ATDP", {row.Words});
        Connect();
        EXPECT_EQ(basGlobal.ConnState, kConnected);
        EXPECT_EQ(basGlobal.VehicleBus, row.Expected);
        EXPECT_EQ(basGlobal.DtcCount, 3);
        EXPECT_TRUE(basGlobal.MilOn);
    }
    basGlobal.StandardDecoding = false;
    interface_->Commands.clear();
    Connect();
    EXPECT_EQ(interface_->Commands.back(), "ATDP");
    EXPECT_EQ(basGlobal.DtcCount, 2);
}

}  // namespace
}  // namespace dravik
