#include <gtest/gtest.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "platform/serial/PortEvents.h"

namespace dravik {
namespace {

std::string DeviceAt(int port) {
    return "tcp://127.0.0.1:" + std::to_string(port);
}

/// A network interface for diagnosis: accepts one connection after the other.
class Device {
 public:
    explicit Device(QHostAddress address = QHostAddress::LocalHost) { server_.listen(address); }

    bool Listens() const { return server_.isListening(); }
    int Port() const { return server_.serverPort(); }
    QTcpServer& Server() { return server_; }

    bool Accept() {
        if (!WaitUntil([this] { return server_.hasPendingConnections(); })) return false;
        peer_.reset(server_.nextPendingConnection());
        peer_->setParent(nullptr);
        return true;
    }
    QTcpSocket& Peer() { return *peer_; }
    void Send(std::string_view bytes) {
        peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
        peer_->flush();
    }

 private:
    QTcpServer server_;
    std::unique_ptr<QTcpSocket> peer_;
};

class SerialPortTcpTest : public testing::Test {
 protected:
    void SetUp() override {
        port_.SetDevice(DeviceAt(device_.Port()));
        ASSERT_TRUE(port_.Open());
        ASSERT_TRUE(device_.Accept());
    }

    Device device_;
    SerialPort port_{9600};
    PortEvents events_{port_};
};

TEST_F(SerialPortTcpTest, EveryByteValuePassesUnchangedInBothDirections) {
    const std::string bytes = AllByteValues();
    ASSERT_TRUE(port_.Write(bytes));
    ASSERT_TRUE(WaitUntil([&] { return device_.Peer().bytesAvailable() >= 256; }));
    EXPECT_EQ(device_.Peer().readAll().toStdString(), bytes);
    device_.Send(bytes);
    WaitUntil([&] { return events_.text.size() >= bytes.size(); });
    EXPECT_EQ(events_.text, bytes);
}

TEST_F(SerialPortTcpTest, IgnoredEventComesBackOnlyWithTheNextCharacter) {
    events_.takes = false;
    device_.Send("ab");
    ASSERT_TRUE(WaitUntil([&] { return events_.data > 0 && port_.InputCount() == 2; }));
    for (int turn = 0; turn < 1000; ++turn) PumpEvents();
    EXPECT_LE(events_.data, 3);
    const int before = events_.data;
    device_.Send("c");
    EXPECT_TRUE(WaitUntil([&] { return events_.data > before; }));
    EXPECT_EQ(port_.ReadAll(), "abc");
}

TEST_F(SerialPortTcpTest, ReadsWhatTheEventLoopHasNotDelivered) {
    device_.Send("OK\r>");
    while (port_.InputCount() < 4) continue;
    EXPECT_EQ(events_.data, 0);
    EXPECT_EQ(port_.ReadAll(), "OK\r>");
}

TEST_F(SerialPortTcpTest, OverflowIsReportedOnce) {
    events_.takes = false;
    device_.Send(std::string(20000, 'x'));
    EXPECT_TRUE(WaitUntil([&] { return events_.overflow > 0; }));
    for (int turn = 0; turn < 100; ++turn) WaitForEvents(0.001);
    EXPECT_EQ(events_.overflow, 1);
    EXPECT_EQ(port_.ReadAll().size(), SerialPort::kBufferSize);
}

TEST_F(SerialPortTcpTest, DiscardForgetsWhatTheSystemHolds) {
    events_.takes = false;
    device_.Send("old");
    while (port_.InputCount() < 3) continue;
    port_.DiscardInput();
    device_.Send("new");
    EXPECT_TRUE(WaitUntil([&] { return port_.InputCount() == 3; }));
    EXPECT_EQ(port_.ReadAll(), "new");
}

// The last reply of a device that hangs up is still handed over, before the loss.
TEST_F(SerialPortTcpTest, ConnectionClosedByThePeerIsReportedOnceAfterItsData) {
    device_.Send("bye>");
    device_.Peer().disconnectFromHost();
    ASSERT_TRUE(WaitUntil([&] { return events_.lost > 0; }));
    for (int turn = 0; turn < 100; ++turn) PumpEvents();
    EXPECT_EQ(events_.text, "bye>");
    EXPECT_EQ(events_.lost, 1);
    EXPECT_FALSE(events_.openWhenLost);
    EXPECT_FALSE(port_.Write("ATZ\r"));
}

TEST_F(SerialPortTcpTest, ResetConnectionIsReportedAndMayBeOpenedAgain) {
    device_.Peer().setSocketOption(QAbstractSocket::LowDelayOption, 1);
    device_.Peer().abort();
    ASSERT_TRUE(WaitUntil([&] { return events_.lost > 0; }));
    ASSERT_TRUE(port_.Open());
    ASSERT_TRUE(device_.Accept());
    device_.Send("back");
    EXPECT_TRUE(WaitUntil([&] { return events_.text == "back"; }));
    EXPECT_EQ(events_.lost, 1);
}

TEST_F(SerialPortTcpTest, PeerThatReadsNothingBoundsTheQueue) {
    device_.Peer().setReadBufferSize(1);
    const std::string block(1000, 'x');
    std::size_t sent = 0;
    constexpr std::size_t kFarTooMuch = 1000 * 1000 * 1000;
    while (sent < kFarTooMuch && port_.Write(block)) sent += block.size();
    EXPECT_LT(sent, kFarTooMuch);
    EXPECT_TRUE(port_.IsOpen());
}

TEST_F(SerialPortTcpTest, HandlersMayDestroyThePort) {
    for (const bool vanish : {false, true}) {
        Device device;
        std::optional<SerialPort> port(9600);
        port->SetDevice(DeviceAt(device.Port()));
        int calls = 0;
        const auto end = [&] {
            ++calls;
            port.reset();
            for (int turn = 0; turn < 10; ++turn) PumpEvents();
        };
        port->OnReceive([&](int) { end(); });
        port->OnLost(end);
        ASSERT_TRUE(port->Open());
        ASSERT_TRUE(device.Accept());
        if (vanish)
            device.Peer().abort();
        else
            device.Send("x");
        EXPECT_TRUE(WaitUntil([&] { return calls > 0; }));
        for (int turn = 0; turn < 100; ++turn) PumpEvents();
        EXPECT_EQ(calls, 1);
    }
}

TEST(SerialPortTcpOpen, RefusedConnectionGivesFalse) {
    Device device;
    const int number = device.Port();
    device.Server().close();
    SerialPort port(9600);
    port.SetDevice(DeviceAt(number));
    EXPECT_FALSE(port.Open());
}

TEST(SerialPortTcpOpen, TakesAnIpv6AddressInBrackets) {
    Device device(QHostAddress::LocalHostIPv6);
    if (!device.Listens()) GTEST_SKIP() << "no IPv6 on this machine";
    SerialPort port(9600);
    port.SetDevice("tcp://[::1]:" + std::to_string(device.Port()));
    EXPECT_TRUE(port.Open());
}

SerialPort globalPort(9600);

TEST(SerialPortTcpGlobal, LeftOpenIsClosedSafelyAfterTheApplicationHasGone) {
    Device device;
    globalPort.SetDevice(DeviceAt(device.Port()));
    ASSERT_TRUE(globalPort.Open());
    ASSERT_TRUE(device.Accept());
    device.Send("unread");
    EXPECT_TRUE(WaitUntil([] { return globalPort.InputCount() == 6; }));
}

/// A port at which connections neither succeed nor fail: the queue of a server that accepts
/// nothing is full.
class DeadEnd {
 public:
    DeadEnd() {
        device_.Server().pauseAccepting();
        // Far more than any queue; the last ones stay on their way.
        device_.Server().setListenBacklogSize(1);
        device_.Server().close();
        device_.Server().listen(QHostAddress::LocalHost);
        device_.Server().pauseAccepting();
        for (int count = 0; count < 8; ++count) {
            fillers_.push_back(std::make_unique<QTcpSocket>());
            fillers_.back()->connectToHost(QHostAddress::LocalHost,
                                           static_cast<quint16>(device_.Port()));
        }
        for (int turn = 0; turn < 20; ++turn) WaitForEvents(0.01);
    }

    bool IsDead() const { return fillers_.back()->state() == QAbstractSocket::ConnectingState; }
    std::string DeviceName() const { return DeviceAt(device_.Port()); }

 private:
    Device device_;
    std::vector<std::unique_ptr<QTcpSocket>> fillers_;
};

TEST(SerialPortTcpOpen, WaitingOpenIsEndedByShutDownByCloseAndByAnotherOpen) {
    DeadEnd deadEnd;
    ASSERT_TRUE(deadEnd.IsDead());
    Device device;
    SerialPort port(9600);
    struct Row {
        const char* name;
        std::function<void()> interrupt;
        bool open;
    };
    const Row rows[] = {
        {"shut-down", [] { SerialPort::AbortWaits(); }, false},
        {"close", [&] { port.Close(); }, false},
        {"open",
         [&] {
             port.SetDevice(DeviceAt(device.Port()));
             EXPECT_TRUE(port.Open());
         },
         true},
        {"assignment", [&] { port = SerialPort(9600); }, false},
    };
    for (const Row& row : rows) {
        port.SetDevice(deadEnd.DeviceName());
        bool interrupted = false;
        int turnsAfter = 0;  // of the event loop, which a wait that goes on would keep turning
        QTimer idle;
        QObject::connect(&idle, &QTimer::timeout, [&] { ++turnsAfter; });
        QTimer::singleShot(0, [&] {
            interrupted = true;
            row.interrupt();
            idle.start(0);
        });
        EXPECT_FALSE(port.Open()) << row.name;
        EXPECT_TRUE(interrupted) << row.name;
        EXPECT_LT(turnsAfter, 100) << row.name;
        EXPECT_EQ(port.IsOpen(), row.open) << row.name;
    }
}

// Timers go on while a connection that never comes about is waited for, and the wait has an end.
TEST(SerialPortTcpOpen, SilentAddressIsGivenUpWhileTheProgramLivesOn) {
    DeadEnd deadEnd;
    ASSERT_TRUE(deadEnd.IsDead());
    SerialPort port(9600);
    port.SetDevice(deadEnd.DeviceName());
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(10);
    EXPECT_FALSE(port.Open());
    EXPECT_GT(ticks, 10);
}

}  // namespace
}  // namespace dravik
