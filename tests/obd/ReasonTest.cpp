#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <vector>

#include "support/LinkFixture.h"
#include "support/SerialClient.h"

namespace dravik {
namespace {

class Reason : public LinkTest {
 protected:
    std::string AfterConnect() {
        Connect();
        EXPECT_EQ(basGlobal.comOBD.IsOpen(), basGlobal.ConnState != kPortNotFound);
        return ReasonText();
    }
    void SetPort(const std::string& device, const std::string& keys = "") {
        WriteFile("Dravik.ini", "[OBD]\nComPort=3\n" + keys + "\n[Ports]\nCOM3=" + device + "\n");
    }
    /// A live reply to the outstanding request.
    void Answer(const std::string& reply) {
        basGlobal.PidWanted[5] = true;
        HardwareStep();
        interface_->Say(reply);
        ASSERT_TRUE(Until([] { return !basGlobal.AwaitingReply; }));
    }
};

TEST_F(Reason, OfAPortThatDoesNotOpen) {
    EXPECT_EQ(ReasonText(), "");
    basGlobal.ConnState = kNotConnected;
    EXPECT_EQ(ReasonText(), "Not connected yet");

    for (const char* port : {"0", "none", "999"}) {
        WriteFile("Dravik.ini", std::string("[OBD]\nComPort=") + port + "\n");
        EXPECT_EQ(AfterConnect(), "No port chosen");
    }
    WriteFile("Dravik.ini", "[OBD]\nComPort=200\n");
    EXPECT_EQ(AfterConnect(), "There is no port COM200");

    SetPort("/nowhere");
    EXPECT_EQ(AfterConnect(), "There is no port /nowhere");
    SetPort("/dev/null");
    EXPECT_EQ(AfterConnect(), "There is no port /dev/null");
    SetPort("tcp://no colon");
    EXPECT_EQ(AfterConnect(), "There is no address tcp://no colon");
    // A port that was just closed again: nobody listens there.
    SetPort("tcp://127.0.0.1:1");
    EXPECT_EQ(AfterConnect(), "tcp://127.0.0.1:1 refuses the connection");

    const std::string device = interface_->Device();
    SetPort(device);
    {
        SerialPort other(9600);
        other.SetDevice(device);
        ASSERT_TRUE(other.Open());
        EXPECT_EQ(AfterConnect(), "Another program uses " + device);
    }
    {
        const int marked = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        ASSERT_EQ(::ioctl(marked, TIOCEXCL), 0);
        EXPECT_EQ(AfterConnect(), "Another program uses " + device);
        ::ioctl(marked, TIOCNXCL);
        ::close(marked);
    }
    EXPECT_EQ(AfterConnect(), "");
}

TEST_F(Reason, OfAPortWithoutPermission) {
    ASSERT_EQ(::chmod(interface_->Device().c_str(), 0), 0);
    // Permissions do not bind the superuser.
    const bool privileged = ::geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (privileged) {
        ASSERT_EQ(::seteuid(kNobody), 0);
    }
    basGlobal.comOBD.SetDevice(interface_->Device());
    const bool opened = basGlobal.comOBD.Open();
    if (privileged) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    EXPECT_FALSE(opened);
    EXPECT_EQ(basGlobal.comOBD.LastFailure(), OpenFailure::NoPermission);
}

TEST_F(Reason, OfAnInterfaceThatDoesNotBringTheVehicle) {
    const std::string device = interface_->Device();
    const struct {
        const char* Command;
        const char* Reply;
        std::string Text;
    } rows[] = {
        {"ATZ", "~", "No answer from the interface on " + device + " in 50 seconds"},
        {"ATE0", "\xF8\x80|~", "What comes from " + device + " cannot be read at 9600 baud"},
        {"0101", "~", "No answer from the vehicle in 50 seconds"},
        {"0101", "SEARCHING...\rUNABLE TO CONNECT\r\r>",
         "The interface does not reach the vehicle: UNABLE TO CONNECT"},
        {"0101", "0101\rSEARCHING...UNABLE TO CONNECT\r\r>",
         "The interface does not reach the vehicle: UNABLE TO CONNECT"},
        {"0101", "BUS INIT: ...ERROR\r\r>",
         "The interface does not reach the vehicle: BUS INIT: ...ERROR"},
        {"0101", "CAN ERROR\r\r>", "The interface does not reach the vehicle: CAN ERROR"},
        {"0101", "BUS BUSY\r\r>", "The interface does not reach the vehicle: BUS BUSY"},
        {"0101", "0101\r\nNO DATA\r\n\r\n>", "The vehicle does not answer. Is the ignition on?"},
        {"0101", "41 02 00\r\r>", "The vehicle's answer cannot be read"},
        {"0101", "41 01 83 07 65 04\r\r>", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.Command) + " " + row.Reply);
        interface_->OnAllCommands();
        interface_->On(row.Command, {row.Reply});
        EXPECT_EQ(AfterConnect(), row.Text);
        if (row.Text.empty()) continue;
        basGlobal.ConnState = kConnecting;
        EXPECT_EQ(ReasonText(), row.Text) << "until the next attempt has met something else";
    }
    interface_->On("0101", {"CAN ERROR\r\r>"});
    basGlobal.ConnState = kReadingCodes;
    HardwareStep();
    EXPECT_EQ(ReasonText(), "The interface does not reach the vehicle: CAN ERROR");
}

TEST_F(Reason, CountsTheSecondsOfAWait) {
    const struct {
        const char* Settings;
        const char* Command;
        int Reconnect;
        std::vector<std::string> Texts;  ///< after one, three and 30 seconds
    } rows[] = {
        {"",
         "ATZ",
         0,
         {"", "No answer from the interface (3 of 50 seconds)",
          "No answer from the interface (30 of 50 seconds)"}},
        {"",
         "0101",
         0,
         {"", "No answer from the vehicle yet (3 of 50 seconds)",
          "No answer from the vehicle yet (30 of 50 seconds)"}},
        {"",
         "ATZ",
         9,
         {"", "No answer from the interface (3 of 5 seconds)",
          "No answer from the interface (5 of 5 seconds)"}},
        {"BusInitDelay=40",
         "",
         0,
         {"", "Waiting for the vehicle's bus (3 of 40 seconds)",
          "Waiting for the vehicle's bus (30 of 40 seconds)"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.Command) + row.Settings);
        WriteSettings(row.Settings);
        basGlobal.ReconnectSeconds = row.Reconnect;
        basGlobal.Report = {};
        interface_->OnAllCommands();
        std::vector<std::string> texts;
        const auto count = [&texts] {
            texts.clear();
            for (const double seconds : {1.0, 2.2, 27.0}) {
                AdvanceHighResTimer(seconds);
                texts.push_back(ReasonText());
            }
            AdvanceHighResTimer(51);
        };
        if (*row.Command != '\0') interface_->On(row.Command, {ScriptedInterface::Answer(count)});
        FormTimer watch(2, true);
        watch.OnTick([&] {
            if (*row.Command == '\0' && basGlobal.ConnState == kInitializing && texts.empty())
                count();
        });
        Connect();
        EXPECT_EQ(texts, row.Texts);
    }
}

TEST_F(Reason, OfALinkThatIsConnectedAndQuiet) {
    Connect();
    EXPECT_EQ(ReasonText(), "");
    const struct {
        const char* Reply;
        const char* Text;
    } rows[] = {{"NO DATA\r\r>", "The vehicle does not answer. Is the ignition on?"},
                {"CAN ERROR\r\r>", "The interface does not reach the vehicle: CAN ERROR"},
                {"41\r\r>", "The vehicle sends no values"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Reply);
        Answer(row.Reply);
        AdvanceHighResTimer(4);
        EXPECT_EQ(ReasonText(), "") << "the vehicle need not have every value";
        AdvanceHighResTimer(2);
        EXPECT_EQ(ReasonText(), row.Text);
        Answer("41 05 7B\r\r>");
        EXPECT_EQ(ReasonText(), "");
    }
    Answer("NO DATA\r\r>");
    AdvanceHighResTimer(6);
    ClearPidWanted();
    EXPECT_EQ(ReasonText(), "") << "another page asks for other values";
    Answer("NO DATA\r\r>");
    AdvanceHighResTimer(6);
    basGlobal.CurrentMenu = "freezeframe";
    EXPECT_EQ(ReasonText(), "") << "a frame that was not stored";
    basGlobal.CurrentMenu = "";

    Answer("41 05 7B\r\r>");
    basGlobal.PidWanted[5] = true;
    HardwareStep();
    AdvanceHighResTimer(7.5);
    EXPECT_EQ(ReasonText(), "No answer from the interface for 7 seconds");
}

TEST_F(Reason, OfALineThatIsLostOrLetGo) {
    const std::string device = interface_->Device();
    Connect();
    Disconnect();
    EXPECT_EQ(ReasonText(), "Disconnected by hand");
    basGlobal.ConnState = kConnecting;
    EXPECT_EQ(ReasonText(), "");
    Connect();
    interface_->Vanish();
    ASSERT_TRUE(Until([] { return basGlobal.ConnState == 1; }));
    EXPECT_EQ(ReasonText(), device + " was lost");

    interface_ = std::make_unique<ScriptedInterface>();
    interface_->OnAllCommands();
    interface_->On("ATL0", {"^"});
    WriteSettings("");
    Connect();
    EXPECT_EQ(ReasonText(), interface_->Device() + " was lost");
    Settle();
    Disconnect();
    EXPECT_EQ(ReasonText(), "Disconnected by hand");
}

}  // namespace
}  // namespace dravik
