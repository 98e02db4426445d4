#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <QTimer>
#include <optional>

#include "platform/serial/PortEvents.h"
#include "platform/serial/PseudoTerminal.h"

namespace dravik {
namespace {

class SerialPortTest : public testing::Test {
 protected:
    void SetUp() override {
        port_.SetDevice(terminal_.Path());
        ASSERT_TRUE(port_.Open());
        ASSERT_TRUE(port_.IsOpen());
    }

    std::string ReceiveAtDevice(std::size_t count) {
        std::string received;
        WaitUntil([&] { return (received += terminal_.Receive()).size() >= count; });
        return received;
    }

    PseudoTerminal terminal_;
    SerialPort port_{9600};
    PortEvents events_{port_};
};

TEST_F(SerialPortTest, EveryByteValuePassesUnchangedInBothDirections) {
    const std::string bytes = AllByteValues();
    ASSERT_TRUE(port_.Write(bytes));
    EXPECT_EQ(ReceiveAtDevice(bytes.size()), bytes);
    ASSERT_EQ(terminal_.Send(bytes), bytes.size());
    WaitUntil([&] { return events_.text.size() >= bytes.size(); });
    EXPECT_EQ(events_.text, bytes);
    // Nothing was echoed by the line itself.
    EXPECT_EQ(terminal_.Receive(), "");
}

TEST_F(SerialPortTest, ReplyInPiecesArrivesWholeWithAnEventForEachPiece) {
    for (const char* piece : {"41 0C 1A", "F8\r", ">"}) {
        const int before = events_.data;
        terminal_.Send(piece);
        EXPECT_TRUE(WaitUntil([&] { return events_.data > before; })) << piece;
    }
    EXPECT_EQ(events_.text, "41 0C 1AF8\r>");
}

TEST_F(SerialPortTest, IgnoredEventComesBackOnlyWithTheNextCharacter) {
    events_.takes = false;
    terminal_.Send("ab");
    ASSERT_TRUE(WaitUntil([&] { return events_.data > 0 && port_.InputCount() == 2; }));
    const int ignored = events_.data;
    EXPECT_LE(ignored, 2);
    for (int turn = 0; turn < 1000; ++turn) PumpEvents();
    EXPECT_LE(events_.data, ignored + 1);

    const int before = events_.data;
    terminal_.Send("c");
    EXPECT_TRUE(WaitUntil([&] { return events_.data > before; }));
    EXPECT_EQ(port_.InputCount(), 3u);
    EXPECT_EQ(port_.ReadAll(), "abc");
    EXPECT_EQ(port_.ReadAll(), "");
}

// A command that waits for its reply polls; what the driver holds counts although no event has
// been delivered yet, and the event is not lost if nobody reads.
TEST_F(SerialPortTest, CountsAndReadsWhatTheEventLoopHasNotDelivered) {
    terminal_.Send("OK\r>");
    while (port_.InputCount() < 4) usleep(1000);
    EXPECT_EQ(events_.data, 0);
    EXPECT_TRUE(WaitUntil([&] { return events_.data > 0; }));
    EXPECT_EQ(events_.text, "OK\r>");

    terminal_.Send("41 00");
    std::string reply;
    while (reply.size() < 5) reply += port_.ReadAll();
    const int before = events_.data;
    for (int turn = 0; turn < 100; ++turn) PumpEvents();
    EXPECT_EQ(events_.data, before) << "an event without a character";
}

TEST_F(SerialPortTest, OverflowIsReportedOnceAndKeepsTheFirstCharacters) {
    events_.takes = false;
    const std::string block(1000, 'x');
    std::size_t sent = terminal_.Send("first");
    WaitUntil([&] {
        sent += terminal_.Send(block);
        return sent > 3 * SerialPort::kBufferSize && events_.overflow > 0;
    });
    // As many again: the same overflow.
    const std::size_t limit = sent + 10000;
    WaitUntil([&] { return (sent += terminal_.Send(block)) > limit; });
    for (int turn = 0; turn < 100; ++turn) WaitForEvents(0.001);
    EXPECT_EQ(events_.overflow, 1);
    EXPECT_EQ(port_.InputCount(), SerialPort::kBufferSize);
    EXPECT_EQ(port_.ReadAll().substr(0, 6), "firstx");

    // Once read, the next overflow is a new one.
    WaitUntil([&] {
        terminal_.Send(block);
        return events_.overflow > 1;
    });
    EXPECT_EQ(events_.overflow, 2);
}

TEST_F(SerialPortTest, DiscardForgetsTheBufferAndWhatTheDriverHolds) {
    events_.takes = false;
    terminal_.Send("buffered");
    ASSERT_TRUE(WaitUntil([&] { return port_.InputCount() == 8; }));
    terminal_.Send("in the driver");
    while (terminal_.HeldByDriver() < 13) usleep(1000);
    port_.DiscardInput();
    EXPECT_EQ(port_.InputCount(), 0u);
    terminal_.Send("new");
    EXPECT_TRUE(WaitUntil([&] { return port_.InputCount() == 3; }));
    EXPECT_EQ(port_.ReadAll(), "new");
}

TEST_F(SerialPortTest, VanishedDeviceClosesThePortAndIsReportedOnce) {
    events_.takes = false;
    terminal_.Send("last words");
    ASSERT_TRUE(WaitUntil([&] { return port_.InputCount() == 10; }));
    // Held open, so that no other program is given a terminal of this name meanwhile.
    const int name = open(terminal_.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    terminal_.Vanish();
    ASSERT_TRUE(WaitUntil([&] { return events_.lost > 0; }));
    EXPECT_FALSE(events_.openWhenLost);
    for (int turn = 0; turn < 1000; ++turn) PumpEvents();
    EXPECT_EQ(events_.lost, 1);
    EXPECT_FALSE(port_.Write("ATZ\r"));
    EXPECT_EQ(port_.ReadAll(), "last words");
    EXPECT_FALSE(port_.Open()) << "the device is still gone";
    EXPECT_EQ(events_.lost, 1);
    close(name);
}

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
        EXPECT_TRUE(WaitUntil([&] { return events_.lost == 1; }));
    }
}

TEST_F(SerialPortTest, LossIsNotReportedAfterTheProgramHasReopenedThePort) {
    PseudoTerminal other;
    terminal_.Vanish();
    EXPECT_EQ(port_.InputCount(), 0u);
    port_.SetDevice(other.Path());
    ASSERT_TRUE(port_.Open());
    for (int turn = 0; turn < 100; ++turn) PumpEvents();
    EXPECT_EQ(events_.lost, 0);
    EXPECT_TRUE(port_.IsOpen());
    other.Send("x");
    EXPECT_TRUE(WaitUntil([&] { return events_.text == "x"; }));
}

TEST_F(SerialPortTest, OpensAgainAfterTheDeviceHasComeBack) {
    for (int round = 0; round < 5; ++round) {
        PseudoTerminal returned;
        terminal_.Vanish();
        port_.SetDevice(returned.Path());
        ASSERT_TRUE(port_.Open());
        events_.text.clear();
        ASSERT_TRUE(port_.Write("ATZ\r"));
        std::string heard;
        EXPECT_TRUE(WaitUntil([&] { return (heard += returned.Receive()) == "ATZ\r"; }));
        returned.Send("\r>");
        EXPECT_TRUE(WaitUntil([&] { return events_.text == "\r>"; }));
    }
}

TEST_F(SerialPortTest, DeviceIsHeldExclusivelyUntilItIsClosed) {
    SerialPort second(9600);
    second.SetDevice(terminal_.Path());
    EXPECT_FALSE(second.Open());
    EXPECT_FALSE(second.IsOpen());
    port_.Close();
    EXPECT_TRUE(second.Open());
    EXPECT_FALSE(port_.Open());
    second = SerialPort(9600);
    EXPECT_TRUE(port_.Open());
}

TEST_F(SerialPortTest, OpeningAnOpenPortClosesItFirst) {
    terminal_.Send("stale");
    ASSERT_TRUE(WaitUntil([&] { return events_.text == "stale"; }));
    EXPECT_TRUE(port_.Open());
    EXPECT_TRUE(port_.IsOpen());
    terminal_.Send("fresh");
    EXPECT_TRUE(WaitUntil([&] { return events_.text == "stalefresh"; }));
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
    WaitUntil([&] { return (received += terminal_.Receive()).size() >= sent.size(); });
    EXPECT_EQ(received, sent);
    ASSERT_TRUE(port_.Write("on again\r"));
    EXPECT_EQ(ReceiveAtDevice(9), "on again\r");
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

TEST(SerialPortOpen, TakesTheLineSpeedsOfTheSystemAndNoOthers) {
    struct Row {
        int baudrate;
        bool opens;
    };
    for (const Row row :
         {Row{0, false}, Row{-1, false}, Row{9601, false}, Row{9600, true}, Row{115200, true}}) {
        PseudoTerminal terminal;
        SerialPort port(38400);
        port.SetDevice(terminal.Path());
        port.SetBaudrate(row.baudrate);
        EXPECT_EQ(port.Open(), row.opens) << row.baudrate;
    }
}

TEST(SerialPortOpen, ClosedPortTakesAndGivesNothing) {
    SerialPort port(9600);
    EXPECT_FALSE(port.Write("ATZ\r"));
    EXPECT_EQ(port.InputCount(), 0u);
    EXPECT_EQ(port.ReadAll(), "");
    port.DiscardInput();
    port.Close();
    EXPECT_FALSE(port.IsOpen());
}

// A program that was killed leaves nothing behind that keeps the next one out.
TEST(SerialPortOpen, DeviceOfAKilledProgramOpensAgain) {
    PseudoTerminal terminal;
    const pid_t child = fork();
    if (child == 0) {
        SerialPort port(9600);
        port.SetDevice(terminal.Path());
        port.Open();
        _exit(port.IsOpen() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
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
        ASSERT_TRUE(WaitUntil([&] { return calls == round; }));
        std::string heard;
        EXPECT_TRUE(WaitUntil([&] { return (heard += terminal.Receive()) == "again\r"; }));
    }
    EXPECT_EQ(received, "xxx");
}

TEST(SerialPortHandlers, MayDestroyOrReplaceThePort) {
    const std::function<void(std::optional<SerialPort>&)> ends[] = {
        [](std::optional<SerialPort>& port) { port.reset(); },
        [](std::optional<SerialPort>& port) { *port = SerialPort(9600); },
    };
    for (const auto& end : ends) {
        for (const bool vanish : {false, true}) {
            PseudoTerminal terminal;
            std::optional<SerialPort> port(9600);
            port->SetDevice(terminal.Path());
            int calls = 0;
            port->OnReceive([&](int) {
                ++calls;
                end(port);
                terminal.Send("y");
                for (int turn = 0; turn < 10; ++turn) WaitForEvents(0.001);
            });
            port->OnLost([&] {
                ++calls;
                end(port);
            });
            ASSERT_TRUE(port->Open());
            if (vanish)
                terminal.Vanish();
            else
                terminal.Send("x");
            EXPECT_TRUE(WaitUntil([&] { return calls > 0; }));
            for (int turn = 0; turn < 100; ++turn) PumpEvents();
            EXPECT_EQ(calls, 1);
            EXPECT_FALSE(port && port->IsOpen());
        }
    }
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
    EXPECT_TRUE(WaitUntil([&] { return lost == 1 && port.IsOpen(); }));
    second.Send("hello");
    EXPECT_TRUE(WaitUntil([&] { return port.InputCount() == 5; }));
    EXPECT_EQ(lost, 1);
}

// The program's port is global: it exists before the application object and outlives it.
SerialPort globalPort(9600);

TEST(SerialPortGlobal, LeftOpenIsClosedSafelyAfterTheApplicationHasGone) {
    static PseudoTerminal terminal;
    globalPort.SetDevice(terminal.Path());
    ASSERT_TRUE(globalPort.Open());
    terminal.Send("unread");
    EXPECT_TRUE(WaitUntil([] { return globalPort.InputCount() == 6; }));
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
    EXPECT_TRUE(WaitUntil([&] { return received == "moved"; }));
    SerialPort next(9600);
    next.SetDevice(dropped.Path());
    EXPECT_TRUE(next.Open()) << "the target's own device was not closed";
}

}  // namespace
}  // namespace dravik
