#include <gtest/gtest.h>

#include <QTimer>
#include <array>

#include "platform/serial/FarEnd.h"
#include "platform/serial/PortEvents.h"

namespace dravik {
namespace {

class SerialPortTcpTest : public testing::Test {
 protected:
    void SetUp() override {
        port_.SetDevice(device_.Device());
        ASSERT_TRUE(port_.Open());
        ASSERT_TRUE(device_.Accept());
    }

    NetworkEnd device_;
    SerialPort port_{9600};
    PortEvents events_{port_};
};

// The last reply of a device that hangs up is still handed over, before the loss.
TEST_F(SerialPortTcpTest, ConnectionClosedByThePeerIsReportedOnceAfterItsData) {
    device_.Send("bye>");
    device_.Peer().disconnectFromHost();
    ASSERT_TRUE(Until([&] { return events_.lost > 0; }));
    for (int turn = 0; turn < 100; ++turn) PumpEvents();
    EXPECT_EQ(events_.text, "bye>");
    EXPECT_EQ(events_.lost, 1);
    EXPECT_FALSE(events_.openWhenLost);
    EXPECT_FALSE(port_.Write("ATZ\r"));
}

TEST_F(SerialPortTcpTest, PeerThatReadsNothingBoundsTheQueue) {
    device_.Peer().setReadBufferSize(1);
    const std::string block(1000, 'x');
    std::size_t sent = 0;
    constexpr std::size_t kFarTooMuch = std::size_t{1000} * 1000 * 1000;
    while (sent < kFarTooMuch && port_.Write(block)) sent += block.size();
    EXPECT_LT(sent, kFarTooMuch);
    EXPECT_TRUE(port_.IsOpen());
}

TEST(SerialPortTcpOpen, TakesAnIpv6AddressInBrackets) {
    NetworkEnd device(QHostAddress::LocalHostIPv6);
    if (!device.Server().isListening()) GTEST_SKIP() << "no IPv6 on this machine";
    SerialPort port(9600);
    port.SetDevice("tcp://[::1]:" + std::to_string(device.Port()));
    EXPECT_TRUE(port.Open());
}

SerialPort globalPort(9600);

TEST(SerialPortTcpGlobal, LeftOpenIsClosedSafelyAfterTheApplicationHasGone) {
    NetworkEnd device;
    globalPort.SetDevice(device.Device());
    ASSERT_TRUE(globalPort.Open());
    ASSERT_TRUE(device.Accept());
    device.Send("unread");
    EXPECT_TRUE(Until([] { return globalPort.InputCount() == 6; }));
}

/// A port at which connections neither succeed nor fail: the queue of a server that accepts
/// nothing is full.
class DeadEnd {
 public:
    DeadEnd() {
        server_.setListenBacklogSize(1);
        server_.listen(QHostAddress::LocalHost);
        server_.pauseAccepting();
        // Far more than any queue; the last ones stay on their way.
        for (QTcpSocket& filler : fillers_)
            filler.connectToHost(QHostAddress::LocalHost, server_.serverPort());
        for (int turn = 0; turn < 20; ++turn) WaitForEvents(0.01);
    }

    bool IsDead() const { return fillers_.back().state() == QAbstractSocket::ConnectingState; }
    std::string DeviceName() const { return DeviceAt(server_.serverPort()); }

 private:
    QTcpServer server_;
    std::array<QTcpSocket, 8> fillers_;
};

TEST(SerialPortTcpOpen, WaitingOpenIsEndedByShutDownByCloseAndByAnotherOpen) {
    DeadEnd deadEnd;
    ASSERT_TRUE(deadEnd.IsDead());
    NetworkEnd device;
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
             port.SetDevice(device.Device());
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
