#include <grp.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "obd/PortSearch.h"
#include "platform/Profile.h"
#include "settings/basSettings.h"
#include "support/LinkFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kName = "IFX 1.5 on COM3 ";

class FindingTheInterface : public LinkTest {
 protected:
    FindingTheInterface() {
        interface_->On("ATI", {"ATI\rIFX 1.5\r\r>"});
        // The program's clock runs ahead, so that silent ports need not be waited for.
        clock_.OnTick([this] {
            AdvanceHighResTimer(0.02);
            if (basGlobal.Search.Text != texts_.back()) texts_.push_back(basGlobal.Search.Text);
            if (WhileSearching && basGlobal.Search.Running) WhileSearching();
        });
    }

    PortCandidate Real(int number = 3) const { return {number, interface_->Device()}; }

    ScriptedInterface& AddSilent() { return others_.emplace_back(); }

    /// Runs a whole search, with the steps of the link.
    std::optional<FoundInterface> Find(std::vector<PortCandidate> ports) {
        std::optional<FoundInterface> result;
        int ends = 0;
        FindInterface(std::move(ports), [&](const std::optional<FoundInterface>& found) {
            result = found;
            ++ends;
        });
        EXPECT_TRUE(Searching());
        HardwareStep();
        EXPECT_EQ(ends, 1);
        EXPECT_FALSE(Searching());
        return result;
    }

    std::list<ScriptedInterface> others_;
    std::vector<std::string> texts_{""};
    std::function<void()> WhileSearching;

 private:
    FormTimer clock_{1, true};
};

speed_t SpeedOf(const std::string& device) {
    const int line = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    ::tcgetattr(line, &settings);
    ::close(line);
    return ::cfgetospeed(&settings);
}

TEST_F(FindingTheInterface, TriesEveryPortAndSpeedUntilOneAnswersReadably) {
    ScriptedInterface& silent = AddSilent();
    ScriptedInterface& echo = AddSilent();
    echo.On("ATI", {"ATI\r"});
    ScriptedInterface& console = AddSilent();
    console.On("ATI", {"ATI\r\nUnknown command\r\nrouter>"});
    ScriptedInterface& puzzled = AddSilent();
    puzzled.On("ATI", {"?\r\r>"});
    interface_->On("ATI", {ScriptedInterface::Answer([this] {
                       const bool right = SpeedOf(interface_->Device()) == B115200;
                       interface_->Say(right ? "ATI\rIFX 1.5\r\r>" : "\xF8\x80\r>");
                   })});
    const auto found = Find({{1, "/nowhere"},
                             {2, silent.Device()},
                             {4, echo.Device()},
                             {5, console.Device()},
                             {6, puzzled.Device()},
                             Real(),
                             {7, "/dev/null"}});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->Port, 3);
    EXPECT_EQ(found->Device, interface_->Device());
    EXPECT_EQ(found->Baudrate, 115200);
    EXPECT_EQ(found->Name, "IFX 1.5");
    EXPECT_EQ(FindingText(), "Found: " + std::string(kName) + interface_->Device() + " 115200");
    const std::string place = "COM2 " + silent.Device() + " ";
    EXPECT_THAT(texts_, ::testing::IsSupersetOf({place + "38400 ...", place + "9600 ...",
                                                 place + "115200 ...", place + "57600 ...",
                                                 place + "230400 ...", place + "500000 ..."}));
    EXPECT_FALSE(basGlobal.comOBD.IsOpen());
    EXPECT_EQ(basGlobal.ConnState, 1);
}

TEST_F(FindingTheInterface, TakesNoAnswerToWhatWentBeforeForTheName) {
    interface_->On("ATI", {"STOPPED\r\r>", "ATI\r\nIFX 1.5\r\n\r\n>"});
    EXPECT_EQ(Find({Real()})->Name, "IFX 1.5");
    interface_->On("ATI", {"", "?\r\r>", "IFX 1.5\r\r>"});
    EXPECT_EQ(Find({Real()})->Name, "IFX 1.5") << "the first call woke it up";
}

TEST_F(FindingTheInterface, AsksANetworkAddressOnce) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    int calls = 0;
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        ++calls;
        QTcpSocket* peer = server.nextPendingConnection();
        QObject::connect(peer, &QTcpSocket::readyRead, peer, [peer] {
            if (peer->readAll().contains('\r')) peer->write("ATI\rNET 2\r\r>");
        });
    });
    const std::string device = "tcp://127.0.0.1:" + std::to_string(server.serverPort());
    const auto found = Find({{1, "tcp://127.0.0.1:1"}, {2, device}});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->Baudrate, 0);
    EXPECT_EQ(FindingText(), "Found: NET 2 on COM2 " + device);
    EXPECT_EQ(calls, 1);
}

TEST_F(FindingTheInterface, NeverWritesToAPortThatAnotherProgramUses) {
    ScriptedInterface& locked = AddSilent();
    SerialPort other(9600);
    other.SetDevice(locked.Device());
    ASSERT_TRUE(other.Open());
    ScriptedInterface& marked = AddSilent();
    const int mark = ::open(marked.Device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_EQ(::ioctl(mark, TIOCEXCL), 0);

    std::vector<PortCandidate> ports = {{1, locked.Device()}, {2, marked.Device()}};
    std::string notes = "\n" + locked.Device() + ": used by another program\n" + marked.Device() +
                        ": used by another program";
    // The lock file of a living process, where this user may leave one.
    ScriptedInterface& filed = AddSilent();
    const std::string device = filed.Device();
    const std::string lock = "/var/lock/LCK.." + device.substr(device.rfind('/') + 1);
    const bool leaves = bool(std::ofstream(lock) << ::getppid() << "\n");
    if (leaves) {
        ports.push_back({3, device});
        notes += "\n" + device + ": used by another program";
    }
    EXPECT_FALSE(Find(ports));
    EXPECT_EQ(FindingText(), "No interface was found" + notes);
    if (leaves) ::unlink(lock.c_str());
    for (const ScriptedInterface& interface : others_) EXPECT_EQ(interface.Bytes, "");
    ::ioctl(mark, TIOCNXCL);
    ::close(mark);
}

TEST_F(FindingTheInterface, ListsPortsWithoutPermissionWithWhatToDo) {
    const std::string device = interface_->Device();
    // Permissions do not bind the superuser, who has to look like somebody else.
    const bool privileged = ::geteuid() == 0;
    const group* const dialout = ::getgrnam("dialout");
    const bool grouped = privileged && dialout != nullptr;
    ASSERT_EQ(::chmod(device.c_str(), grouped ? 0060 : 0), 0);
    if (grouped) {
        ASSERT_EQ(::chown(device.c_str(), 0, dialout->gr_gid), 0);
    }
    constexpr uid_t kNobody = 65534;
    if (privileged) {
        ASSERT_EQ(::setresuid(kNobody, 0, 0), 0);
    }
    const auto found = Find({Real()});
    if (privileged) {
        ASSERT_EQ(::setresuid(0, 0, 0), 0);
    }
    EXPECT_FALSE(found);
    EXPECT_EQ(FindingText(), "No interface was found\n" + device + ": no permission" +
                                 (grouped ? "; join the group dialout" : ""));
    EXPECT_THAT(interface_->Commands, IsEmpty());
}

TEST_F(FindingTheInterface, EndsWhenAnythingElseIsAskedOfTheLink) {
    const struct {
        const char* What;
        std::function<void()> Act;
        int State;  ///< afterwards, with a link that was up before
    } rows[] = {{"cancelled", CancelSearch, 4},
                {"let go", Disconnect, 1},
                {"connect", [] { basGlobal.ConnState = kConnecting; }, 4}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.What);
        interface_->OnAllCommands();
        Connect();
        ASSERT_EQ(basGlobal.ConnState, 3);
        interface_->Commands.clear();
        interface_->On("ATI", {""});
        WhileSearching = [this, &row] {
            if (!interface_->Commands.empty()) row.Act();
        };
        EXPECT_FALSE(Find({Real(), {4, AddSilent().Device()}}));
        EXPECT_EQ(FindingText(), "The search was cancelled");
        EXPECT_THAT(interface_->Commands, ElementsAre("ATI"));
        EXPECT_EQ(others_.back().Bytes, "");
        EXPECT_EQ(basGlobal.ConnState, row.State);
        EXPECT_FALSE(basGlobal.comOBD.IsOpen());
        WhileSearching = nullptr;
    }
    basGlobal.ConnState = kNotConnected;
    int ends = 0;
    FindInterface({Real()}, [&ends](const auto&) { ++ends; });
    CancelSearch();
    interface_->Commands.clear();
    HardwareStep();
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(interface_->Commands, IsEmpty());
    EXPECT_EQ(basGlobal.ConnState, 1) << "it was not connected before";
}

TEST_F(FindingTheInterface, ConnectsTheOldLinkAgainWhenNothingWasFound) {
    basGlobal.ReconnectSeconds = 2;
    Connect();
    interface_->On("ATI", {""});
    interface_->Commands.clear();
    bool sawReason = false;
    WhileSearching = [&] {
        sawReason = sawReason || ReasonText().starts_with("COM3 ");
        EXPECT_FALSE(basGlobal.tiHardware.Enabled());
    };
    EXPECT_FALSE(Find({Real()}));
    EXPECT_TRUE(sawReason);
    EXPECT_EQ(interface_->Commands.size(), 12U) << "twice at each speed";
    EXPECT_EQ(basGlobal.ConnState, 4);
    WhileSearching = nullptr;
    interface_->OnAllCommands();
    HardwareStep();
    EXPECT_EQ(basGlobal.ConnState, 3);
}

TEST_F(FindingTheInterface, BeginsByEndingAConnectThatHangs) {
    interface_->On(
        "ATZ",
        {ScriptedInterface::Answer([this] { FindInterface({Real()}, [](const auto&) {}); })});
    Connect();
    EXPECT_EQ(basGlobal.ConnState, 1);
    ASSERT_TRUE(Searching());
    HardwareStep();
    EXPECT_THAT(FindingText(), HasSubstr("Found: IFX 1.5"));
    EXPECT_EQ(basGlobal.ConnState, 4);
}

TEST_F(FindingTheInterface, TheCommandSavesWhatItFindsAndConnects) {
    std::string ports = "\n[Ports]\n";
    for (int number = 1; number <= kPortCount; ++number)
        ports += "COM" + std::to_string(number) + "=" +
                 (number == 21 ? interface_->Device() : "/nowhere") + "\n";
    const std::string settings = "; kept\n[OBD]\nComPort=3\nBusInitDelay=0\n" + ports;
    for (const bool demo : {true, false}) {
        WriteFile("Dravik.ini", settings);
        basGlobal.Launch.DemoDevice = demo ? interface_->Device() : "";
        basGlobal.Misc = 0;
        basGlobal.ConnState = kNotConnected;
        FindAndConnect();
        ASSERT_TRUE(Searching());
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 4);
        if (demo) {
            EXPECT_EQ(FindingText(), "Found: IFX 1.5 on " + interface_->Device() + " 38400");
            EXPECT_EQ(ReadFile("Dravik.ini"), settings);
        }
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 3);
        Disconnect();
    }
    EXPECT_EQ(ReadIniString(basGlobal.IniFile, "OBD", "ComPort"), "21");
    EXPECT_EQ(ReadIniString(basGlobal.IniFile, "OBD", "Baudrate"), "38400");
    EXPECT_THAT(ReadFile("Dravik.ini"), ::testing::StartsWith("; kept\n"));

    FindAndConnect();
    FindAndConnect();
    HardwareStep();
    EXPECT_EQ(FindingText(), "The search was cancelled") << "the same button again";
}

}  // namespace
}  // namespace dravik
