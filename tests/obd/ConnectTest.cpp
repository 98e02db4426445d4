#include <algorithm>
#include <string>
#include <vector>

#include "support/LinkFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Answers = std::initializer_list<ScriptedInterface::Answer>;

class ConnectSequence : public LinkTest {
 protected:
    /// Values that tell whether a connect touched them.
    static void Mark() {
        GlobalState& g = basGlobal;
        g.InterfaceId = g.ProtocolText = "before";
        g.DtcCount = 77;
        g.MilOn = true;
        g.AwaitingReply = g.ValuesCame = true;
        g.LiveRaw.fill(5);
        g.FreezeRaw.fill(6);
    }
};

TEST_F(ConnectSequence, AsksInOrderAndKeepsWhatItLearns) {
    Mark();
    std::vector<int> states;
    const auto note = [&](const char* reply) {
        return ScriptedInterface::Answer([this, reply, &states] {
            states.push_back(basGlobal.ConnState);
            EXPECT_FALSE(basGlobal.tiHardware.Enabled());
            interface_->Say(reply);
        });
    };
    interface_->On("ATZ", {note("ATZ\r|\r\rIFX 1.5|\r\r>")});
    interface_->On("ATI", {note("IFX 1.5\r\r>")});
    interface_->On("0101", {note("41 01 83 07 65 04\r\r>")});
    interface_->On("ATDP", {note("AUTO, ISO 15765-4\n (CAN 11/500)\r\r>")});
    Connect();
    EXPECT_THAT(interface_->Commands, ElementsAre("ATZ", "ATE0", "ATL0", "ATH0", "AT!01", "AT!01",
                                                  "AT!01", "ATI", "0101", "ATDP"));
    EXPECT_THAT(states, ElementsAre(4, 4, 8, 8));
    const GlobalState& g = basGlobal;
    EXPECT_EQ(g.ConnState, 3);
    EXPECT_EQ(g.InterfaceId, "IFX 1.5");
    EXPECT_EQ(g.ProtocolText, "AUTO, ISO 15765-4 (CAN 11/500)");
    EXPECT_EQ(g.DtcCount, 3);
    EXPECT_TRUE(g.MilOn);
    EXPECT_FALSE(g.AwaitingReply || g.ValuesCame);
    EXPECT_TRUE(g.tiHardware.Enabled());
    EXPECT_TRUE(g.tiTimeout.Enabled());
    for (std::size_t pid = 0; pid < 80; ++pid) EXPECT_EQ(g.LiveRaw[pid] | g.FreezeRaw[pid], 0);
    EXPECT_EQ(ReadFile("log.txt"),
              "Connected.\r\n"
              "ATZ\r\nATZ\r\n\r\n\r\nIFX 1.5\r\n\r\n>"
              "ATE0\r\nATE0\r\nOK\r\n\r\n>"
              "ATL0\r\nOK\r\n\r\n>"
              "ATH0\r\nOK\r\n\r\n>"
              "AT!01\r\n?\r\n\r\n>AT!01\r\n?\r\n\r\n>AT!01\r\n?\r\n\r\n>"
              "ATI\r\nIFX 1.5\r\n\r\n>"
              "0101\r\n41 01 83 07 65 04\r\n\r\n>"
              "ATDP\r\nAUTO, ISO 15765-4\n (CAN 11/500)\r\n\r\n>");
}

TEST_F(ConnectSequence, EachReplyDecidesWhetherItGoesOn) {
    const char* const kProtocol = "AUTO, ISO 15765-4 (CAN 11/500)";
    const struct {
        const char* Command;
        Answers Replies;
        int State;
        const char* Identity;
        const char* Protocol;
        int Codes;
        int Lamp;
        std::size_t Sent;  ///< commands in all, repeats included
    } rows[] = {
        {"ATZ", {"~"}, 1, "before", "before", 77, 1, 1},
        {"ATE0", {"OK\r|~"}, 1, "before", "before", 77, 1, 2},
        {"ATH0", {"~"}, 1, "before", "before", 77, 1, 4},
        // The content of these four replies does not matter, only their prompt.
        {"ATH0", {"?\r>"}, 3, "IFX 1.5", kProtocol, 3, 1, 12},
        {"ATZ", {"?\r>", "?\r>", "OK>"}, 3, "IFX 1.5", kProtocol, 3, 1, 12},
        {"AT!01", {"AT!01\rQVX-2 v3\r\r>"}, 3, "QVX-2 v3", kProtocol, 3, 1, 7},
        {"AT!01", {"?>", "QVX 9 without end>"}, 3, "QVX 9 without end>", kProtocol, 3, 1, 8},
        {"AT!01", {"qvx\r>"}, 3, "IFX 1.5", kProtocol, 3, 1, 8},
        {"AT!01", {"~"}, 3, "IFX 1.5", kProtocol, 3, 1, 8},
        {"ATI", {"ABCDEFGHIJKLMNOP\r\r>"}, 3, "ABCDEFGHIJKL", kProtocol, 3, 1, 10},
        {"ATI", {"\rIFX\r>"}, 3, "", kProtocol, 3, 1, 10},
        {"ATI", {"~"}, 3, "", kProtocol, 3, 1, 10},
        {"0101", {"NO DATA\r\r>"}, 1, "IFX 1.5", "before", 77, 1, 9},
        {"0101", {"41  01 83\r>"}, 1, "IFX 1.5", "before", 77, 1, 9},
        {"0101", {"?\r>"}, 1, "IFX 1.5", "before", 77, 1, 11},
        {"0101", {"~"}, 1, "IFX 1.5", "before", 77, 1, 9},
        {"0101", {"41 01 00 07\r>"}, 3, "IFX 1.5", kProtocol, 0, 0, 10},
        {"0101", {"SEARCHING...\r41 01 7F\r>"}, 3, "IFX 1.5", kProtocol, 127, 0, 10},
        {"0101", {"0101\r41 01 ff\r>"}, 3, "IFX 1.5", kProtocol, 127, 1, 10},
        // What cannot be read leaves both values as they were.
        {"0101", {"41 01 XX 07\r>"}, 3, "IFX 1.5", kProtocol, 77, 1, 10},
        {"0101", {"41 01\r>"}, 3, "IFX 1.5", kProtocol, 77, 1, 10},
        // Here the prompt does not matter.
        {"0101", {"41 01 02 07|~"}, 3, "IFX 1.5", kProtocol, 2, 0, 10},
        {"ATDP", {"\rA\r\nB>\r"}, 3, "IFX 1.5", "AB", 3, 1, 10},
        {"ATDP", {"~"}, 3, "IFX 1.5", "", 3, 1, 10},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.Command) + " -> " + row.Replies.begin()->Text);
        Mark();
        interface_->OnAllCommands();
        interface_->On(row.Command, row.Replies);
        interface_->Commands.clear();
        Connect();
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_EQ(basGlobal.InterfaceId, row.Identity);
        EXPECT_EQ(basGlobal.ProtocolText, row.Protocol);
        EXPECT_EQ(basGlobal.DtcCount, row.Codes);
        EXPECT_EQ(basGlobal.MilOn, row.Lamp == 1);
        EXPECT_EQ(basGlobal.AwaitingReply, row.State != 3);
        EXPECT_EQ(interface_->Commands.size(), row.Sent);
        EXPECT_EQ(basGlobal.LiveRaw[79] + basGlobal.FreezeRaw[0], 0);
        EXPECT_EQ(ReadFile("log.txt").find(row.State == 3 ? "Connected.\r\nATZ\r\n"
                                                          : "Not Connected.\r\nATZ\r\n"),
                  0U);
    }
}

TEST_F(ConnectSequence, RepeatsShareOneBudgetOfTime) {
    const auto after = [this](int seconds, const char* reply) {
        return ScriptedInterface::Answer([this, seconds, reply] {
            AdvanceHighResTimer(seconds);
            interface_->Say(reply);
        });
    };
    interface_->On("ATZ", {after(20, "?\r>"), after(20, "?\r>"), after(11, "OK\r>")});
    Connect();
    EXPECT_EQ(basGlobal.ConnState, 1);
    EXPECT_EQ(ReadFile("log.txt"), "Not Connected.\r\nATZ\r\n?\r\n>ATZ\r\n?\r\n>ATZ\r\n");
}

TEST_F(ConnectSequence, WaitsForTheBusBeforeTheFirstRequest) {
    WriteSettings("BusInitDelay=30");
    int ticks = 0;
    std::size_t sentEarly = 0;
    FormTimer watch(2, true);
    watch.OnTick([&] {
        if (basGlobal.ConnState != 8) return;
        ++ticks;
        if (ticks <= 10) sentEarly = std::max(sentEarly, interface_->Commands.size());
        if (ticks == 5) AdvanceHighResTimer(29);
        if (ticks == 10) AdvanceHighResTimer(2);
    });
    Connect();
    EXPECT_EQ(sentEarly, 8U) << "up to ATI";
    EXPECT_EQ(basGlobal.ConnState, 3);
}

TEST_F(ConnectSequence, TheWaitForTheBusEndsWithTheDevice) {
    WriteSettings("BusInitDelay=30");
    int ticksAfterLoss = 0;
    FormTimer watch(2, true);
    watch.OnTick([&] {
        if (basGlobal.ConnState == 8) interface_->Vanish();
        if (basGlobal.ConnState == 1 && ++ticksAfterLoss == 5) AdvanceHighResTimer(31);
    });
    Connect();
    EXPECT_LT(ticksAfterLoss, 5) << "it waited on";
    EXPECT_EQ(basGlobal.ConnState, 1);
}

TEST_F(ConnectSequence, AConnectThatIsAskedForOutlastsTheLossOfTheDevice) {
    OpenIn(kConnecting);
    interface_->Vanish();
    ASSERT_TRUE(Until([] { return !basGlobal.comOBD.IsOpen(); }));
    Settle();
    EXPECT_EQ(basGlobal.ConnState, 4);
}

TEST_F(ConnectSequence, WithReconnectAQuietLinkIsGivenUpAndTriedAgain) {
    const auto quiet = [](double seconds) {
        return ScriptedInterface::Answer([seconds] { AdvanceHighResTimer(seconds); });
    };
    const auto after = [this](double seconds, const char* reply) {
        return ScriptedInterface::Answer([this, seconds, reply] {
            AdvanceHighResTimer(seconds);
            interface_->Say(reply);
        });
    };
    const char* const kStatus = "41 01 83 07 65 04\r\r>";
    double pause = 0;   // in the middle of an answer
    int ticksLeft = 0;  // until its rest
    FormTimer watch(2, true);
    watch.OnTick([&] {
        if (ticksLeft > 0 && --ticksLeft == 0) interface_->Say("83 07 65 04\r\r>");
        if (pause == 0 || !basGlobal.CommTrace.ends_with("41 01 ")) return;
        AdvanceHighResTimer(std::exchange(pause, 0));
        ticksLeft = 5;
    });
    const auto begun = [this, &pause](double seconds) {
        return ScriptedInterface::Answer([this, &pause, seconds] {
            interface_->Say("41 01 ");
            pause = seconds;
        });
    };
    const struct {
        int Reconnect;
        const char* Command;
        Answers Replies;
        int Sent;
        int State;
        int NextState;  ///< after one more step
    } rows[] = {
        {2, "ATZ", {quiet(5.5)}, 1, 1, 4},          {60, "ATZ", {quiet(5.5)}, 1, 1, 1},
        {2, "ATZ", {after(4.5, "OK\r>")}, 1, 3, 3}, {2, "ATE0", {quiet(2.5), "OK\r>"}, 2, 3, 3},
        {2, "ATI", {quiet(2.1)}, 3, 1, 4},          {2, "0101", {after(9, kStatus)}, 1, 3, 3},
        {2, "0101", {quiet(10.5)}, 1, 1, 4},        {0, "ATZ", {after(49, "OK\r>")}, 1, 3, 3},
        {0, "0101", {after(49, kStatus)}, 1, 3, 3}, {2, "0101", {begun(4.5)}, 1, 3, 3},
        {2, "0101", {begun(5.5)}, 1, 1, 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(&row - rows));
        basGlobal.ReconnectSeconds = row.Reconnect;
        interface_->OnAllCommands();
        interface_->On(row.Command, row.Replies);
        interface_->Commands.clear();
        Connect();
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_EQ(basGlobal.comOBD.IsOpen(), row.State == 3);
        const auto& sent = interface_->Commands;
        EXPECT_EQ(std::count(sent.begin(), sent.end(), row.Command), row.Sent);
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, row.NextState);
    }
}

TEST_F(ConnectSequence, OfATalkWithoutEndTheTraceKeepsTheBeginningAndTheReplyItsEnd) {
    constexpr std::size_t kLimit = std::size_t{64} * 1024;
    OpenIn(kConnecting);
    std::string talk = "first";
    for (int piece = 0; piece < 40; ++piece) talk += "|" + std::string(4000, 'x');
    interface_->On("ATZ", {talk + "|last>"});
    const std::string reply = SendCommand("ATZ");
    EXPECT_EQ(reply.size(), kLimit);
    EXPECT_THAT(reply, ::testing::EndsWith("xlast>"));
    EXPECT_EQ(basGlobal.CommTrace.size(), kLimit);
    EXPECT_THAT(basGlobal.CommTrace, ::testing::StartsWith("ATZ\r\nfirstx"));
}

TEST_F(ConnectSequence, WithoutAPortItClosesTheOldOneAndRests) {
    for (const char* settings :
         {"[OBD]\nComPort=0\n", "[OBD]\n", "[OBD]\nComPort=none\n", "[OBD]\nComPort=99999999999\n",
          "[OBD]\nComPort=-3\n", "[OBD]\nComPort=3\n[Ports]\nCOM3=/dev/null\n",
          "[OBD]\nComPort=3\n[Ports]\nCOM3=/nowhere\n"}) {
        SCOPED_TRACE(settings);
        OpenIn(kConnected);
        Mark();
        WriteFile("Dravik.ini", settings);
        basGlobal.Misc = kMiscAutoConnect;
        Connect();
        EXPECT_EQ(basGlobal.ConnState, 2);
        EXPECT_FALSE(basGlobal.comOBD.IsOpen());
        EXPECT_EQ(basGlobal.LiveRaw[12] + basGlobal.FreezeRaw[12], 0);
        EXPECT_EQ(basGlobal.InterfaceId, "before");
        EXPECT_EQ(ReadFile("log.txt"), "Comport not found.\r\n");
        for (int step = 0; step < 3; ++step) HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 2) << "no automatic connect from here";
    }
    EXPECT_THAT(interface_->Commands, IsEmpty());
    WriteSettings("");
    Connect();
    EXPECT_EQ(basGlobal.ConnState, 3);
}

TEST_F(ConnectSequence, SettingsChooseTheDeviceAndItsSpeed) {
    EXPECT_EQ(PortDevice(3), interface_->Device());
    EXPECT_EQ(PortDevice(1), "/dev/ttyUSB0");
    EXPECT_EQ(PortDevice(16), "/dev/ttyACM7");
    EXPECT_EQ(PortDevice(17), "/dev/rfcomm0");
    EXPECT_EQ(PortDevice(32), "/dev/ttyS7");
    EXPECT_EQ(PortDevice(33), "");
    Connect();
    EXPECT_EQ(basGlobal.comOBD.Baudrate(), 9600);
    WriteSettings("Baudrate=38400");
    Connect();
    EXPECT_EQ(basGlobal.comOBD.Baudrate(), 38400);
    EXPECT_EQ(basGlobal.ConnState, 3);

    WriteFile("Dravik.ini", "[OBD]\nComPort=0\n");
    basGlobal.Launch.DemoDevice = interface_->Device();
    Connect();
    EXPECT_EQ(basGlobal.ConnState, 3) << "the demo needs no port number";
}

TEST_F(ConnectSequence, AutomaticConnectRepeatsThroughNotConnected) {
    basGlobal.Misc = kMiscAutoConnect;
    interface_->On("0101", {"UNABLE TO CONNECT\r\r>", "41 01 00 00\r>"});
    basGlobal.ConnState = kNotConnected;
    std::vector<int> states;
    for (int step = 0; step < 4; ++step) {
        HardwareStep();
        states.push_back(basGlobal.ConnState);
    }
    EXPECT_THAT(states, ElementsAre(4, 1, 4, 3));

    basGlobal.Misc = 0xFF & ~kMiscAutoConnect;
    for (const int state : {0, 1, 2, 5, 7, 8, 10, 17, 23, 200}) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, state);
    }
}

TEST_F(ConnectSequence, TheEndOfTheProgramEndsItAtOnce) {
    for (const char* command : {"ATL0", "ATDP"}) {
        interface_->OnAllCommands();
        interface_->On(command, {ScriptedInterface::Answer([] { basGlobal.Closing = true; })});
        basGlobal.Closing = false;
        Connect();
        EXPECT_EQ(basGlobal.ConnState, 1);
        EXPECT_FALSE(basGlobal.tiHardware.Enabled());
        EXPECT_EQ(interface_->Commands.back(), command);
        EXPECT_THAT(ReadFile("log.txt"), ::testing::StartsWith("Not Connected.\r\nATZ\r\n"));
    }
}

TEST_F(ConnectSequence, AClosedPortTakesNoCommand) {
    EXPECT_EQ(SendCommand("ATZ"), "");
    EXPECT_EQ(basGlobal.CommTrace, "");
}

TEST_F(ConnectSequence, AVanishedDeviceNeverLeavesAConnectedState) {
    const struct {
        int StartState;
        const char* Command;  ///< at which the device vanishes
        const char* Reply;
    } rows[] = {{4, "ATZ", "^"},         {4, "ATE0", "OK|^"},
                {4, "AT!01", "?\r>|^"},  {4, "ATI", "^"},
                {4, "0101", "^"},        {4, "0101", "41 01 00\r>|^"},
                {4, "ATDP", "CAN|^"},    {4, "ATDP", ">|^"},
                {16, "0101", "41 01|^"}, {16, "03", "43|^"},
                {16, "03", "43>|^"},     {18, "04", "^"},
                {18, "04", "44>|^"},     {18, "04", "44|^"},
                {9, "0105", "41|^"},     {3, "0105", "41 05 11\r>|^"},
                {3, "0105", "^"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.StartState) + " " + row.Command + " " + row.Reply);
        basGlobal.AwaitingReply = false;
        basGlobal.PidWanted[5] = true;
        interface_ = std::make_unique<ScriptedInterface>();
        interface_->OnAllCommands();
        interface_->On(row.Command, {row.Reply});
        WriteSettings("");
        OpenIn(static_cast<std::uint8_t>(row.StartState));
        HardwareStep();
        if (!basGlobal.comOBD.IsOpen() && row.StartState != 3 && row.StartState != 9) {
            EXPECT_EQ(basGlobal.ConnState, 1);
        }
        EXPECT_TRUE(Until([] { return !basGlobal.comOBD.IsOpen(); }));
        Settle();
        for (int step = 0; step < 3; ++step) HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 1);
    }
    interface_ = std::make_unique<ScriptedInterface>();
    OpenIn(kConnected);
    interface_->Vanish();
    EXPECT_TRUE(Until([] { return basGlobal.ConnState == 1; })) << "idle";
}

TEST_F(ConnectSequence, ReconnectBringsALostOrSilentLinkBack) {
    basGlobal.ReconnectSeconds = 10;
    const auto stateAfter = [](double seconds) {
        AdvanceHighResTimer(seconds);
        HardwareStep();
        return static_cast<int>(basGlobal.ConnState);
    };
    basGlobal.ConnState = kNotConnected;
    EXPECT_EQ(stateAfter(100), 1);
    EXPECT_EQ(stateAfter(100), 1) << "nobody has asked for a link yet";

    Connect();
    basGlobal.PidWanted[5] = true;
    EXPECT_EQ(stateAfter(100), 3);
    EXPECT_TRUE(basGlobal.AwaitingReply);
    EXPECT_EQ(stateAfter(9), 3);
    EXPECT_EQ(stateAfter(2), 4) << "silent for eleven seconds";
    EXPECT_EQ(stateAfter(0), 3);
    EXPECT_FALSE(basGlobal.AwaitingReply);

    interface_->Vanish();
    ASSERT_TRUE(Until([] { return basGlobal.ConnState == 1; }));
    EXPECT_EQ(stateAfter(100), 1) << "its time begins with the first step that finds it lost";
    EXPECT_EQ(stateAfter(9), 1);
    EXPECT_EQ(stateAfter(2), 4);
    EXPECT_EQ(stateAfter(0), 2) << "the device is not back";
    EXPECT_EQ(stateAfter(0), 2);
    interface_ = std::make_unique<ScriptedInterface>();
    interface_->OnAllCommands();
    WriteSettings("; plugged in again");
    EXPECT_EQ(stateAfter(11), 4);
    EXPECT_EQ(stateAfter(0), 3);

    basGlobal.ReconnectSeconds = 0;
    EXPECT_EQ(stateAfter(0), 3);
    EXPECT_EQ(stateAfter(10000), 3) << "without the setting a silent link is left alone";
}

}  // namespace
}  // namespace dravik
