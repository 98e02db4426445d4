#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "obd/DataBytes.h"
#include "obd/basOBD.h"
#include "support/LinkFixture.h"
#include "support/TestClock.h"

namespace dravik {
namespace {

class LiveData : public LinkTest {
 protected:
    /// Waits until the interface has received `count` carriage returns in all.
    bool UntilReceived(std::ptrdiff_t count) {
        return Until([this, count] {
            return std::count(interface_->Bytes.begin(), interface_->Bytes.end(), '\r') >= count;
        });
    }
};

TEST_F(LiveData, AReplyInPiecesIsTakenOnceWithItsPrompt) {
    OpenIn(kConnected);
    basGlobal.AwaitingReply = true;
    interface_->Say("41 0C 1A");
    ASSERT_TRUE(Until([] { return basGlobal.RxBuffer == "41 0C 1A"; }));
    interface_->Say("F8\r|\r");
    ASSERT_TRUE(Until([] { return basGlobal.RxBuffer == "41 0C 1AF8\r\r"; }));
    EXPECT_TRUE(basGlobal.AwaitingReply);
    EXPECT_EQ(basGlobal.ConnState, 3);
    EXPECT_EQ(basGlobal.LiveRaw[12], 0);
    interface_->Say(">");
    ASSERT_TRUE(Until([] { return !basGlobal.AwaitingReply; }));
    EXPECT_EQ(basGlobal.RxBuffer, "");
    EXPECT_EQ(basGlobal.ConnState, 9);
    EXPECT_EQ(basGlobal.LiveRaw[12], 6904);

    interface_->Say("41 0C 00 01\r>41 0D 02\r>41");  // one call, which looks at the first line
    ASSERT_TRUE(Until([] { return basGlobal.LiveRaw[12] == 1; }));
    EXPECT_EQ(basGlobal.LiveRaw[13], 0);
    EXPECT_EQ(basGlobal.RxBuffer, "");
}

TEST_F(LiveData, CharactersStayInThePortInEveryOtherState) {
    for (const int state : {1, 2, 4, 8, 16, 18}) {
        OpenIn(static_cast<std::uint8_t>(state));
        interface_->Say("41 0C 00 01\r>");
        ASSERT_TRUE(Until([] { return basGlobal.comOBD.InputCount() == 13; })) << state;
        Settle();
        EXPECT_EQ(basGlobal.RxBuffer, "") << state;
        EXPECT_EQ(basGlobal.comOBD.InputCount(), 13U) << state;
        EXPECT_EQ(basGlobal.ConnState, state);
    }
}

TEST_F(LiveData, APartialReplyIsJoinedToTheOneAfterAReconnect) {
    OpenIn(kReceivingData);
    interface_->Say("41 0C 12");
    ASSERT_TRUE(Until([] { return basGlobal.RxBuffer == "41 0C 12"; }));
    Connect();
    ASSERT_EQ(basGlobal.ConnState, 3);
    EXPECT_EQ(basGlobal.RxBuffer, "41 0C 12");
    interface_->Say(" 34\r>");
    EXPECT_TRUE(Until([] { return basGlobal.LiveRaw[12] == 0x1234; }));
}

TEST_F(LiveData, OverflowAsksForAConnectOnlyWhileConnected) {
    OpenIn(kConnected);
    for (const int state : {1, 2, 3, 4, 8, 9, 16, 18}) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        HandleReceiveEvent(1009);
        EXPECT_EQ(basGlobal.ConnState, state);
        HandleReceiveEvent(1008);
        EXPECT_EQ(basGlobal.ConnState, state == 3 || state == 9 ? 4 : state);
    }
}

// Expected by position: from entry c the search looks at c, c+1, ..., 79, 1, 2, ..., at most 79
// entries in all; entry 0 only when it begins there, and then 79 is out of its reach.
TEST_F(LiveData, TheSearchFindsTheNextWantedPidFromEveryEntry) {
    OpenIn(kConnected);
    std::string expected;
    for (int cursor = 0; cursor < 80; ++cursor) {
        std::vector<int> order;
        for (int p = cursor; p < 80; ++p) order.push_back(p);
        for (int p = 1; p < cursor; ++p) order.push_back(p);
        order.resize(79);
        for (int wanted = 0; wanted < 80; ++wanted) {
            const int second = (wanted * 7 + cursor) % 80;
            basGlobal.PidWanted.fill(false);
            for (const int pid : {wanted, second})
                basGlobal.PidWanted[static_cast<std::size_t>(pid)] = true;
            basGlobal.PidCursor = static_cast<std::int16_t>(cursor);
            basGlobal.AwaitingReply = false;
            RequestNextPid();

            const auto found = std::find_if(order.begin(), order.end(),
                                            [&](int p) { return p == wanted || p == second; });
            const bool sent = found != order.end();
            ASSERT_EQ(basGlobal.AwaitingReply, sent) << cursor << " " << wanted;
            char request[8] = "";
            if (sent) std::snprintf(request, sizeof request, "01%02X\r", *found & 0xFF);
            expected += request;
            const int last = sent ? *found : cursor == 0 ? 79 : cursor;
            ASSERT_EQ(basGlobal.PidCursor, last == 79 ? 0 : last + 1) << cursor << " " << wanted;
        }
        ASSERT_TRUE(UntilReceived(std::count(expected.begin(), expected.end(), '\r')));
    }
    EXPECT_EQ(interface_->Bytes, expected);
    EXPECT_EQ(basGlobal.CommTrace, "") << "live requests are not traced";
}

TEST_F(LiveData, OneRequestIsOutstandingAndStaleInputIsDropped) {
    OpenIn(kConnected);
    basGlobal.ConnState = kConnecting;  // so that the characters stay in the port
    interface_->Say("41 05 11\r>");
    ASSERT_TRUE(Until([] { return basGlobal.comOBD.InputCount() == 10; }));
    basGlobal.ConnState = kConnected;
    basGlobal.PidCursor = 5;
    basGlobal.PidWanted[5] = basGlobal.PidWanted[6] = true;
    HardwareStep();
    EXPECT_EQ(basGlobal.comOBD.InputCount(), 0U);
    HardwareStep();
    EXPECT_EQ(basGlobal.PidCursor, 6) << "waiting steps do not move the cursor";
    interface_->On("0106", {"41 06 01\r>"});
    interface_->Say("NO DATA\r>");
    ASSERT_TRUE(Until([] { return !basGlobal.AwaitingReply; }));
    HardwareStep();
    ASSERT_TRUE(Until([] { return basGlobal.LiveRaw[6] == 1; }));
    EXPECT_EQ(interface_->Bytes, "0105\r0106\r");
    EXPECT_EQ(basGlobal.LiveRaw[5], 0);

    basGlobal.PidWanted.fill(false);
    HardwareStep();
    EXPECT_EQ(basGlobal.PidCursor, 8);
    EXPECT_FALSE(basGlobal.AwaitingReply);
}

TEST_F(LiveData, AStepThatHadToPassIsMadeUpWhenTheReplyIsThere) {
    OpenIn(kConnected);
    basGlobal.PidCursor = 5;
    basGlobal.PidWanted[5] = basGlobal.PidWanted[6] = true;
    interface_->On("0106", {"41 06 01\r>"});
    HardwareStep();
    HardwareStep();  // passes: the reply is outstanding
    EXPECT_EQ(interface_->Bytes.find("0106"), std::string::npos);
    interface_->Say("41 05 11\r>");
    EXPECT_TRUE(Until([] { return basGlobal.LiveRaw[6] == 1; })) << "asked without a further tick";
    basGlobal.PidWanted.fill(false);
    PumpEvents();
    EXPECT_FALSE(basGlobal.AwaitingReply) << "one step was owed, and one was made up";
}

TEST_F(LiveData, FreezePagesAskForTheFrameOfTheSelectedCode) {
    const struct {
        const char* Menu;
        std::size_t Codes;
        int Selected;
        const char* Request;
        const char* FrameNo;
    } rows[] = {{"myfreeze2", 0, 0, "024E00\r", "0"},
                {"freezeframe", 30, 3, "024E02\r", "2"},
                {"freezeframe", 30, 28, "024E1B\r", "27"},
                {"Freeze", 3, 3, "014E\r", "none"},
                {"main", 3, 3, "014E\r", "none"}};
    std::string expected;
    OpenIn(kConnected);
    basGlobal.PidWanted[0x4E] = true;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Menu);
        basGlobal.CurrentMenu = row.Menu;
        basGlobal.Lists[7].Entries.assign(row.Codes, {"P0001: x", "", ""});
        basGlobal.Lists[7].Selected = row.Selected;
        basGlobal.CurrentList = 3;
        basGlobal.FreezeFrameNo = "none";
        basGlobal.AwaitingReply = false;
        RequestNextPid();
        expected += row.Request;
        EXPECT_EQ(basGlobal.FreezeFrameNo, row.FrameNo);
    }
    ASSERT_TRUE(UntilReceived(5));
    EXPECT_EQ(interface_->Bytes, expected);
}

TEST_F(LiveData, RepliesAreStoredUnderThePidThatTheyName) {
    struct Row {
        const char* Reply;
        std::size_t Pid;  ///< kPidCount: nothing is stored anywhere
        std::int32_t Value;
    };
    std::vector<Row> rows = {{"41 0C 1A F8\r\r>", 12, 6904},
                             {"410C1AF8\r>", 12, 6904},
                             {"41 0c 1a f8\r>", 12, 6904},
                             {"41 0D 8000\r>", 13, 0x8000},
                             {"7F 01 12\r>", 1, 0x12},
                             {"42 0C 1A F8\r>", 12, 6904},
                             {"FF 02 01\r>", 2, 1},
                             {"41 XX 05\r>", 0, 5},
                             {"41 0C 5", 12, 5},
                             {"41 0D FF\r41 0D 01\r>", 13, 255},
                             {"41 4F 7F FF FF FF\r>", 79, 0x7FFFFFFF}};
    rows.push_back({"41 00 BE 1F B8 10\r>", 0, static_cast<std::int32_t>(0xBE1FB810)});
    for (const char* other :
         {"41 4F 00 00 00 00 05\r>", "41 50 01\r>", "41 FF 01\r>", "40 0C 11\r>",
          "010C\r41 0C 1A F8\r>", "\r41 0C 1A F8\r>", " 41 0 D00 >\r>", "41 0C\r>", "41\r>",
          "41 0C 1G\r>", "41 0C -1\r>", "41 0C 0x1\r>", "41 0C 1A\n\r>", "NO DATA\r\r>",
          "BUS INIT: ...ERROR\r>", "FB ERROR\r>", ">"})
        rows.push_back({other, kPidCount, 0});
    for (const char* menu : {"main", "freeze"}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(menu) + " " + row.Reply);
            GlobalState& g = basGlobal;
            g.CurrentMenu = menu;
            g.LiveRaw.fill(-7);
            g.FreezeRaw.fill(-7);
            g.ConnState = kConnected;
            g.tiTimeout.SetEnabled(false);
            HandlePidReply(row.Reply);
            EXPECT_EQ(g.ConnState, 9) << "any reply shows that data arrive";
            EXPECT_TRUE(g.tiTimeout.Enabled());
            auto expected = std::array<std::int32_t, 80>{};
            expected.fill(-7);
            const auto untouched = expected;
            if (row.Pid < kPidCount) expected[row.Pid] = row.Value;
            const bool freeze = g.CurrentMenu == "freeze";
            EXPECT_EQ(freeze ? g.FreezeRaw : g.LiveRaw, expected);
            EXPECT_EQ(freeze ? g.LiveRaw : g.FreezeRaw, untouched);
        }
    }
    basGlobal.ConnState = kConnected;
    HandlePidReply("");
    EXPECT_EQ(basGlobal.ConnState, 3);
}

TEST_F(LiveData, WithReconnectAnInterfaceThatRestartedIsConnectedAgain) {
    const char* const kValue = "41 0C 1A F8\r\r>";
    const char* const kEcho = "010C\r41 0C 1A F8\r\r>";
    const char* const kNoData = "NO DATA\r\r>";
    const char* const kUnknown = "?\r\r>";
    const char* const kName = "DVI 1.0\r\r>";
    const struct {
        int Reconnect;
        std::vector<const char*> Replies;  ///< three seconds apart
        int State;
    } rows[] = {
        {2, {kValue, kEcho, kEcho}, 9},
        {2, {kValue, kEcho, kUnknown, kName}, 4},
        {2, {kValue, kUnknown, kUnknown, kValue, kUnknown, kUnknown}, 9},
        {2, {kValue, kNoData, kNoData, kNoData}, 9},
        {2, {kValue, kUnknown, kNoData, kUnknown, kUnknown}, 9},
        {2, {kValue, "010C\rNO DATA\r\r>", kEcho, kEcho}, 4},
        {2, {kUnknown, kUnknown, kUnknown}, 9},
        {0, {kValue, kEcho, kEcho, kEcho}, 9},
    };
    for (const auto& row : rows) {
        basGlobal.ReconnectSeconds = row.Reconnect;
        basGlobal.ValuesCame = false;
        basGlobal.ValuelessSince = 0;
        for (const char* reply : row.Replies) {
            basGlobal.ConnState = kConnected;
            AdvanceHighResTimer(3);
            HandlePidReply(reply);
        }
        EXPECT_EQ(basGlobal.ConnState, row.State) << "row " << &row - rows;
    }
}

TEST_F(LiveData, ASecondOfSilenceOnlyChangesWhatIsShown) {
    basGlobal.tiTimeout.SetInterval(1);
    basGlobal.AwaitingReply = true;
    HandlePidReply("41 0C 11\r>");
    EXPECT_TRUE(Until([] { return basGlobal.ConnState == 3; }));
    EXPECT_FALSE(basGlobal.tiTimeout.Enabled());
    EXPECT_TRUE(basGlobal.AwaitingReply);

    basGlobal.ConnState = kReadingCodes;
    basGlobal.tiTimeout.SetEnabled(true);
    EXPECT_TRUE(Until([] { return !basGlobal.tiTimeout.Enabled(); }));
    EXPECT_EQ(basGlobal.ConnState, 16);

    // Every reply begins the second anew: a timer that is started between two of them ends first.
    basGlobal.tiTimeout.SetInterval(40);
    HandlePidReply("41 0C 11\r>");
    usleep(5000);
    int state = 0;
    FormTimer between(40, true);
    between.OnTick([&] { state = basGlobal.ConnState; });
    usleep(5000);
    HandlePidReply("41 0C 11\r>");
    EXPECT_TRUE(Until([&] { return state != 0; }));
    EXPECT_EQ(state, 9);
}

TEST_F(LiveData, ForgettingTheWantedPidsSparesTheLast) {
    for (const int state : {1, 3, 9, 16}) {
        basGlobal.PidWanted.fill(true);
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        ClearPidWanted();
        std::array<bool, 80> expected{};
        expected[79] = true;
        EXPECT_EQ(basGlobal.PidWanted, expected);
        EXPECT_EQ(basGlobal.ConnState, state == 9 ? 3 : state);
    }
}

TEST_F(LiveData, OnlyAFreshAnswerOfThisConnectIsKnown) {
    basGlobal.ConnState = kReceivingData;
    HandlePidReply("41 0C 1A F8\r\r>");
    HandlePidReply("7F 01 12\r\r>");  // a refusal, stored under 01
    HandlePidReply("41 0C 10 00\r\r>");
    EXPECT_TRUE(PidKnown(12));
    EXPECT_FALSE(PidKnown(1));
    EXPECT_FALSE(PidKnown(13));
    EXPECT_FALSE(PidKnown(kPidCount));
    EXPECT_EQ(basGlobal.LiveLeast[12], 0x1000);
    EXPECT_EQ(basGlobal.LiveGreatest[12], 0x1AF8);
    basGlobal.CurrentMenu = "freezeframe";
    EXPECT_FALSE(PidKnown(12)) << "the frame has not been asked for";
    HandlePidReply("42 0C 00 1A F8\r\r>");
    EXPECT_TRUE(PidKnown(12));
    basGlobal.CurrentMenu.clear();

    AdvanceHighResTimer(5.1);
    EXPECT_FALSE(PidKnown(12));
    basGlobal.RoundSeconds = 2;  // a slow bus must not make values blink
    EXPECT_TRUE(PidKnown(12));
    AdvanceHighResTimer(1);
    EXPECT_FALSE(PidKnown(12));

    HandlePidReply("41 0C 1A F8\r\r>");
    for (const int state : {1, 2, 4, 8, 16, 18}) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        EXPECT_FALSE(PidKnown(12)) << state;
    }
    Connect();
    EXPECT_FALSE(PidKnown(12)) << "it came before the connect";
}

TEST_F(LiveData, TheDataBytesOfAReplyAreToldApart) {
    const auto none = std::nullopt;
    const struct {
        const char* Menu;
        const char* Reply;
        ByteRange Bytes;
        std::optional<std::uint32_t> Number;
    } rows[] = {
        {"", "41 14 5A 80\r\r>", {0, 0, {}}, 0x5A},
        {"", "41 14 00 80\r\r>", {0, 0, {}}, 0},  // which the number has lost
        {"", "41 14 00 80\r\r>", {1, 1, {}}, 0x80},
        {"", "41 14 00 80\r\r>", {0, 1, {}}, 0x80},
        {"", "41 14 80 12 40 34\r\r>", {0, 1, {}}, 0x8012},
        {"", "41 14 80 12 40 34\r\r>", {2, 3, {}}, 0x4034},
        {"", "41 14 80 12 40 34\r\r>", {0, 3, {}}, 0x80124034},
        {"", "41 14 5A\r\r>", {1, 1, {}}, none},
        {"", "41 14 5A 8\r\r>", {0, 0, {}}, none},
        {"", "41 14 5A FF\r\r>", {1, 1, 0xFF}, none},
        {"", "41 14 5A FF\r\r>", {0, 0, 0xFF}, 0x5A},
        {"freeze", "42 14 03 5A 80\r\r>", {0, 0, {}}, 0x5A},
        {"freeze", "42 14 00 00 80\r\r>", {1, 1, {}}, 0x80},
        {"freeze", "42 14 03 5A\r\r>", {1, 1, {}}, none},
    };
    for (const auto& row : rows) {
        basGlobal.CurrentMenu = row.Menu;
        HandlePidReply("41 14 11 22 33 44\r\r>");
        HandlePidReply(row.Reply);
        EXPECT_EQ(RangeOf(0x14, row.Bytes), row.Number) << "row " << &row - rows;
    }
}

TEST_F(LiveData, TheLeastAndTheGreatestOfEachByteAreKeptApart) {
    const auto seen = [](ByteRange bytes) {
        const Extremes extremes = SeenIn(0x14, bytes);
        return std::pair(extremes.Least, extremes.Greatest);
    };
    for (const char* reply : {"41 14 10 90\r\r>", "41 14 20 70\r\r>", "41 14 30\r\r>"})
        HandlePidReply(reply);
    EXPECT_EQ(seen({0, 0, {}}), std::pair(0x10U, 0x30U));
    EXPECT_EQ(seen({1, 1, {}}), std::pair(0x70U, 0x90U));
    EXPECT_GT(seen({2, 2, {}}).first, seen({2, 2, {}}).second) << "there was none";
    EXPECT_GT(seen({1, 1, 0x90}).first, seen({1, 1, 0x90}).second) << "it meant no value";
    Connect();
    HandlePidReply("41 14 18 80\r\r>");
    EXPECT_EQ(seen({1, 1, {}}), std::pair(0x80U, 0x80U));
}

TEST_F(LiveData, ARoundLastsUntilTheRequestsBeginAgain) {
    OpenIn(kConnected);
    basGlobal.PidWanted[5] = basGlobal.PidWanted[12] = true;
    for (int request = 0; request < 6; ++request) {
        basGlobal.AwaitingReply = false;
        RequestNextPid();
        AdvanceHighResTimer(2);
    }
    EXPECT_NEAR(basGlobal.RoundSeconds, 4, 0.5);
}

}  // namespace
}  // namespace dravik
