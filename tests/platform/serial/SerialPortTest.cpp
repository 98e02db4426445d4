#include <asm/termbits.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <QTimer>
#include <memory>
#include <optional>

#include "platform/serial/PortEvents.h"
#include "platform/serial/TerminalEnd.h"
#include "support/ChildProcess.h"

namespace dravik {
namespace {

std::unique_ptr<FarEnd> MakeFarEnd(bool network) {
    if (network) return std::make_unique<NetworkEnd>();
    return std::make_unique<TerminalEnd>();
}

/// What holds on a terminal (false) and over the network (true) alike.
class AnySerialPort : public testing::TestWithParam<bool> {
 protected:
    void SetUp() override { Connect(); }

    void Connect() {
        port_.SetDevice(end_->Device());
        ASSERT_TRUE(port_.Open());
        ASSERT_TRUE(port_.IsOpen());
        ASSERT_TRUE(end_->Accept());
    }
    bool UntilReceived(const std::string& bytes) {
        std::string received;
        return Until([&] { return (received += end_->Receive()) == bytes; });
    }

    std::unique_ptr<FarEnd> end_ = MakeFarEnd(GetParam());
    SerialPort port_{9600};
    PortEvents events_{port_};
};

INSTANTIATE_TEST_SUITE_P(Ends, AnySerialPort, testing::Bool());

TEST_P(AnySerialPort, EveryByteValuePassesUnchangedInBothDirections) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
    ASSERT_TRUE(port_.Write(bytes));
    EXPECT_TRUE(UntilReceived(bytes));
    end_->Send(bytes);
    EXPECT_TRUE(Until([&] { return events_.text == bytes; }));
    EXPECT_EQ(end_->Receive(), "") << "echoed by the line itself";
}

TEST_P(AnySerialPort, IgnoredEventComesBackOnlyWithTheNextCharacter) {
    events_.takes = false;
    end_->Send("ab");
    ASSERT_TRUE(Until([&] { return events_.data > 0 && port_.InputCount() == 2; }));
    const int ignored = events_.data;
    EXPECT_LE(ignored, 2);
    for (int turn = 0; turn < 1000; ++turn) PumpEvents();
    EXPECT_LE(events_.data, ignored + 1);

    const int before = events_.data;
    end_->Send("c");
    EXPECT_TRUE(Until([&] { return events_.data > before; }));
    EXPECT_EQ(port_.InputCount(), 3u);
    EXPECT_EQ(port_.ReadAll(), "abc");
    EXPECT_EQ(port_.ReadAll(), "");
}

// A command that waits for its reply polls; what the driver holds counts although no event has
// been delivered yet, and the event is not lost if nobody reads.
TEST_P(AnySerialPort, CountsAndReadsWhatTheEventLoopHasNotDelivered) {
    end_->Send("OK\r>");
    while (port_.InputCount() < 4) usleep(1000);
    EXPECT_EQ(events_.data, 0);
    EXPECT_TRUE(Until([&] { return events_.data > 0; }));
    EXPECT_EQ(events_.text, "OK\r>");

    end_->Send("41 00");
    std::string reply;
    while (reply.size() < 5) reply += port_.ReadAll();
    const int before = events_.data;
    for (int turn = 0; turn < 100; ++turn) PumpEvents();
    EXPECT_EQ(events_.data, before) << "an event without a character";
}

TEST_P(AnySerialPort, OverflowIsReportedOnceAndKeepsTheFirstCharacters) {
    events_.takes = false;
    const auto sendUntilOverflow = [this](int number) {
        return Until([this, number] {
            end_->Send(std::string(1000, 'x'));
            return events_.overflow == number;
        });
    };
    end_->Send("first");
    EXPECT_TRUE(sendUntilOverflow(1));
    for (int more = 0; more < 100; ++more) {
        end_->Send(std::string(1000, 'x'));
        WaitForEvents(0.001);
    }
    EXPECT_EQ(events_.overflow, 1);
    EXPECT_EQ(port_.InputCount(), SerialPort::kBufferSize);
    EXPECT_EQ(port_.ReadAll().substr(0, 6), "firstx");
    EXPECT_TRUE(sendUntilOverflow(2)) << "once read, the next overflow is a new one";
}

TEST_P(AnySerialPort, DiscardForgetsTheBufferAndWhatTheSystemHolds) {
    events_.takes = false;
    end_->Send("buffered");
    ASSERT_TRUE(Until([&] { return port_.InputCount() == 8; }));
    end_->Send("in the driver");
    usleep(20000);
    port_.DiscardInput();
    EXPECT_EQ(port_.InputCount(), 0u);
    end_->Send("new");
    EXPECT_TRUE(Until([&] { return port_.InputCount() == 3; }));
    EXPECT_EQ(port_.ReadAll(), "new");
}

TEST_P(AnySerialPort, VanishedDeviceClosesThePortAndIsReportedOnce) {
    events_.takes = false;
    end_->Send("last words");
    ASSERT_TRUE(Until([&] { return port_.InputCount() == 10; }));
    end_->Vanish();
    ASSERT_TRUE(Until([&] { return events_.lost > 0; }));
    EXPECT_FALSE(events_.openWhenLost);
    for (int turn = 0; turn < 1000; ++turn) PumpEvents();
    EXPECT_EQ(events_.lost, 1);
    EXPECT_FALSE(port_.Write("ATZ\r"));
    EXPECT_EQ(port_.ReadAll(), "last words");
    EXPECT_FALSE(port_.Open()) << "the device is still gone";
    EXPECT_EQ(events_.lost, 1);
}

TEST_P(AnySerialPort, OpensAgainAndForgetsALossThatIsNotReportedYet) {
    for (const bool noticed : {false, true, false}) {
        end_->Send("stale");
        ASSERT_TRUE(Until([&] { return events_.text == "stale"; }));
        end_->Vanish();
        if (noticed) port_.InputCount();
        end_ = MakeFarEnd(GetParam());
        Connect();
        events_.text.clear();
        ASSERT_TRUE(port_.Write("ATZ\r"));
        EXPECT_TRUE(UntilReceived("ATZ\r"));
        end_->Send("\r>");
        EXPECT_TRUE(Until([&] { return events_.text == "\r>"; }));
        events_.text.clear();
    }
    EXPECT_EQ(events_.lost, 0);
    Connect();  // closes the open port first
    EXPECT_EQ(events_.lost, 0);
}

TEST_P(AnySerialPort, HandlersMayDestroyOrReplaceThePort) {
    const std::function<void(std::optional<SerialPort>&)> ends[] = {
        [](std::optional<SerialPort>& port) { port.reset(); },
        [](std::optional<SerialPort>& port) { *port = SerialPort(9600); },
    };
    for (const auto& end : ends) {
        for (const bool vanish : {false, true}) {
            const auto far = MakeFarEnd(GetParam());
            std::optional<SerialPort> port(9600);
            port->SetDevice(far->Device());
            int calls = 0;
            const auto handle = [&] {
                ++calls;
                end(port);
                if (!vanish) far->Send("y");
                for (int turn = 0; turn < 10; ++turn) WaitForEvents(0.001);
            };
            port->OnReceive([&](int) { handle(); });
            port->OnLost(handle);
            ASSERT_TRUE(port->Open());
            ASSERT_TRUE(far->Accept());
            if (vanish)
                far->Vanish();
            else
                far->Send("x");
            EXPECT_TRUE(Until([&] { return calls > 0; }));
            for (int turn = 0; turn < 100; ++turn) PumpEvents();
            EXPECT_EQ(calls, 1);
            EXPECT_FALSE(port && port->IsOpen());
        }
    }
}

class SerialPortTest : public testing::Test {
 protected:
    void SetUp() override {
        port_.SetDevice(terminal_.Path());
        ASSERT_TRUE(port_.Open());
    }

    PseudoTerminal terminal_;
    SerialPort port_{9600};
    PortEvents events_{port_};
};

TEST_F(SerialPortTest, VanishedDeviceIsNoticedByWhicheverCallComesFirst) {
    const std::function<void()> calls[] = {
        [this] { port_.InputCount(); },
        [this] { port_.ReadAll(); },
        [this] { port_.DiscardInput(); },
        [this] { port_.Write("ATZ\r"); },
    };
    for (const auto& call : calls) {
        PseudoTerminal terminal;
        port_.SetDevice(terminal.Path());
        ASSERT_TRUE(port_.Open());
        events_.lost = 0;
        terminal.Vanish();
        call();
        EXPECT_FALSE(port_.IsOpen());
        EXPECT_EQ(events_.lost, 0) << "reported inside the call";
        EXPECT_TRUE(Until([&] { return events_.lost == 1; }));
    }
}

TEST_F(SerialPortTest, DeviceIsHeldExclusivelyUntilItIsClosed) {
    SerialPort second(9600);
    second.SetDevice(terminal_.Path());
    EXPECT_FALSE(second.Open());
    EXPECT_FALSE(second.IsOpen());
    port_.Close();
    EXPECT_FALSE(port_.Write("ATZ\r"));
    EXPECT_EQ(port_.ReadAll(), "");
    port_.DiscardInput();
    EXPECT_TRUE(second.Open());
    EXPECT_FALSE(port_.Open());
    second = SerialPort(9600);
    EXPECT_TRUE(port_.Open());
}

TEST_F(SerialPortTest, FullDeviceTakesEverythingInOrderWhenItReadsAgain) {
    std::string sent;
    const auto line = [](int number) { return "line " + std::to_string(number) + "\r"; };
    int count = 0;
    while (count < 1000000 && port_.Write(line(count))) sent += line(count++);
    // The queue is bounded, and so is what a driver keeps.
    ASSERT_LT(count, 1000000);
    EXPECT_GE(sent.size(), 64u * 1024 - 16);
    EXPECT_TRUE(port_.IsOpen());

    std::string received;
    Until([&] { return (received += terminal_.Receive()).size() >= sent.size(); });
    EXPECT_EQ(received, sent);
    ASSERT_TRUE(port_.Write("on again\r"));
    received.clear();
    EXPECT_TRUE(Until([&] { return (received += terminal_.Receive()) == "on again\r"; }));
}

TEST(SerialPortOpen, RefusesWhatIsNotATerminal) {
    const std::string file = testing::TempDir() + "serial-plain-file";
    const std::string pipe = testing::TempDir() + "serial-pipe";
    close(open(file.c_str(), O_CREAT | O_WRONLY, 0600));
    mkfifo(pipe.c_str(), 0600);
    for (const std::string& device :
         {file, pipe, testing::TempDir(), std::string("/dev/null"), std::string("/dev/no-such-tty"),
          std::string(), std::string("tcp://"), std::string("tcp://127.0.0.1"),
          std::string("tcp://127.0.0.1:0"), std::string("tcp://127.0.0.1:65536"),
          std::string("tcp://::1:80"), std::string("tcp://127.0.0.1:80x")}) {
        SerialPort port(9600);
        port.SetDevice(device);
        EXPECT_FALSE(port.Open()) << device;
        EXPECT_FALSE(port.IsOpen()) << device;
    }
    unlink(file.c_str());
    unlink(pipe.c_str());
}

unsigned SpeedOf(const std::string& device) {
    const int line = open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios2 settings{};
    ioctl(line, TCGETS2, &settings);
    close(line);
    return settings.c_ispeed == settings.c_ospeed ? settings.c_ospeed : 0;
}

TEST(SerialPortOpen, SetsTheSpeedOfTheLineNamedOrNot) {
    for (const unsigned baudrate : {0U, 9600U, 10400U, 115200U, 250000U}) {
        PseudoTerminal terminal;
        SerialPort port(38400);
        port.SetDevice(terminal.Path());
        port.SetBaudrate(static_cast<int>(baudrate));
        ASSERT_EQ(port.Open(), baudrate > 0) << baudrate;
        if (port.IsOpen()) {
            EXPECT_EQ(SpeedOf(terminal.Path()), baudrate);
        }
    }
}

// A program that was killed leaves nothing behind that keeps the next one out.
TEST(SerialPortOpen, DeviceOfAKilledProgramOpensAgain) {
    PseudoTerminal terminal;
    ASSERT_TRUE(HoldsInChild([&] {
        SerialPort port(9600);
        port.SetDevice(terminal.Path());
        return port.Open();
    }));
    SerialPort port(9600);
    port.SetDevice(terminal.Path());
    EXPECT_TRUE(port.Open());
}

TEST(SerialPortHandlers, MayCloseReopenWriteAndPump) {
    PseudoTerminal terminal;
    SerialPort port(9600);
    port.SetDevice(terminal.Path());
    int calls = 0;
    std::string received;
    port.OnReceive([&](int) {
        ++calls;
        received += port.ReadAll();
        port.Close();
        EXPECT_TRUE(port.Open());
        EXPECT_TRUE(port.Write("again\r"));
        WaitForEvents(0.001);
    });
    ASSERT_TRUE(port.Open());
    for (int round = 1; round <= 3; ++round) {
        terminal.Send("x");
        ASSERT_TRUE(Until([&] { return calls == round; }));
        std::string heard;
        EXPECT_TRUE(Until([&] { return (heard += terminal.Receive()) == "again\r"; }));
    }
    EXPECT_EQ(received, "xxx");
}

TEST(SerialPortHandlers, LossMayReconnectAtOnce) {
    PseudoTerminal first;
    PseudoTerminal second;
    SerialPort port(9600);
    int lost = 0;
    port.OnLost([&] {
        ++lost;
        port.SetDevice(second.Path());
        EXPECT_TRUE(port.Open());
    });
    port.SetDevice(first.Path());
    ASSERT_TRUE(port.Open());
    first.Vanish();
    EXPECT_TRUE(Until([&] { return lost == 1 && port.IsOpen(); }));
    second.Send("hello");
    EXPECT_TRUE(Until([&] { return port.InputCount() == 5; }));
    EXPECT_EQ(lost, 1);
}

// The program's port is global: it exists before the application object and outlives it.
SerialPort globalPort(9600);

TEST(SerialPortGlobal, LeftOpenIsClosedSafelyAfterTheApplicationHasGone) {
    static PseudoTerminal terminal;
    globalPort.SetDevice(terminal.Path());
    ASSERT_TRUE(globalPort.Open());
    terminal.Send("unread");
    EXPECT_TRUE(Until([] { return globalPort.InputCount() == 6; }));
}

TEST(SerialPortMove, ConnectionAndHandlersGoAlong) {
    PseudoTerminal kept;
    PseudoTerminal dropped;
    SerialPort source(9600);
    SerialPort target(57600);
    source.SetDevice(kept.Path());
    target.SetDevice(dropped.Path());
    std::string received;
    source.OnReceive([&](int) { received += target.ReadAll(); });
    ASSERT_TRUE(source.Open());
    ASSERT_TRUE(target.Open());
    target = std::move(source);
    EXPECT_EQ(target.Device(), kept.Path());
    EXPECT_EQ(target.Baudrate(), 9600);
    kept.Send("moved");
    EXPECT_TRUE(Until([&] { return received == "moved"; }));
    SerialPort next(9600);
    next.SetDevice(dropped.Path());
    EXPECT_TRUE(next.Open()) << "the target's own device was not closed";
}

}  // namespace
}  // namespace dravik
