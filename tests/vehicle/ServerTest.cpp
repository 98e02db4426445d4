#include <filesystem>
#include <thread>

#include "Desk.h"
#include "support/SerialClient.h"
#include "support/TemporaryFolder.h"
#include "vehicle/VehicleServer.h"

namespace dravik::vehicle {
namespace {

using test::SerialClient;
namespace fs = std::filesystem;

class Server : public testing::Test {
 protected:
    std::string Link() const { return folder_ / "obd"; }

    void Load(const std::string& scenario) {
        ASSERT_EQ(server_.LoadScenario(folder_.Write("scenario.ini", scenario)), "");
    }

    /// Waits until a condition holds, with a patience that only a broken server exhausts.
    template <typename Condition>
    static bool Eventually(Condition condition) {
        for (int i = 0; i < 5000; ++i) {
            if (condition()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return false;
    }

    const TemporaryFolder folder_;
    VehicleServer server_;
};

TEST_F(Server, AnswersOnAPseudoTerminalAndLeavesNothingBehind) {
    fs::create_symlink("/dev/nowhere", Link());  // left over from a crash
    ASSERT_EQ(server_.ServeSerialLine(Link()), "");
    EXPECT_EQ(server_.Device(), Link());
    SerialClient client(Link());
    ASSERT_TRUE(client.IsOpen());
    EXPECT_EQ(client.Ask("ATE0"), "ATE0\r\nOK\r\n\r\n>");
    EXPECT_EQ(client.Ask("ATI"), "DVI 1.0\r\n\r\n>");
    EXPECT_NE(client.Ask("0100").find("41 00 "), std::string::npos);
    server_.Stop();
    EXPECT_FALSE(fs::is_symlink(Link()));
    EXPECT_EQ(client.ReadUntil(">"), "");
    EXPECT_TRUE(client.Gone());
}

TEST_F(Server, SurvivesClientsThatComeAndGo) {
    ASSERT_EQ(server_.ServeSerialLine(), "");
    for (int i = 0; i < 20; ++i) {
        SerialClient client(server_.Device());
        ASSERT_TRUE(client.IsOpen());
        if (i % 2 == 1) {
            client.Write("010C\r");  // gone in the middle of a request
            continue;
        }
        // What the one before has begun is stopped first; then the interface is this client's.
        std::string reply;
        for (int attempt = 0; attempt < 5 && reply.find("DVI 1.0") == std::string::npos; ++attempt)
            reply = client.Ask("ATI");
        EXPECT_NE(reply.find("DVI 1.0"), std::string::npos) << i;
    }
}

TEST_F(Server, NeverReplacesAFileByItsLink) {
    folder_.Write("obd", "precious");
    EXPECT_EQ(server_.ServeSerialLine(Link()), Link() + ": exists and is no symbolic link");
    EXPECT_TRUE(fs::is_regular_file(Link()));
    EXPECT_NE(server_.ServeSerialLine(folder_ / "missing/obd"), "");
    EXPECT_EQ(server_.ServeSerialLine(), "") << "a failed start does not block the next";
}

TEST_F(Server, ServesTcpToOneClientAfterTheOther) {
    ASSERT_EQ(server_.ServeTcp(0), "");
    ASSERT_EQ(server_.Device().find("tcp://127.0.0.1:"), 0u);
    for (int i = 0; i < 3; ++i) {
        SerialClient client(server_.Device());
        ASSERT_TRUE(client.IsOpen());
        EXPECT_NE(client.Ask("ATI").find("DVI 1.0"), std::string::npos);
    }
    VehicleServer other;
    const std::string port = server_.Device().substr(std::string("tcp://127.0.0.1:").size());
    EXPECT_NE(other.ServeTcp(std::stoi(port)), "") << "the port is taken";
}

TEST_F(Server, UnpluggedTerminalReallyGoesAndComesBackBehindItsLink) {
    Load("[fault 1]\nkind = unplug\nprobability = 1\nmatch = 04\nfor = 0.3\ntimes = 1\n");
    ASSERT_EQ(server_.ServeSerialLine(Link()), "");
    SerialClient client(Link());
    EXPECT_NE(client.Ask("ATI"), "");
    client.Ask("04");
    EXPECT_TRUE(client.Gone());
    ASSERT_TRUE(Eventually([this] { return fs::exists(Link()); }));
    SerialClient again(Link());
    ASSERT_TRUE(again.IsOpen());
    EXPECT_EQ(again.Ask("ATI"), "ATI\r\nDVI 1.0\r\n\r\n>");
}

TEST_F(Server, UnpluggedTcpClosesTheConnectionAndListensAgainLater) {
    Load("[fault 1]\nkind = unplug\nprobability = 1\nmatch = 04\nfor = 0.3\ntimes = 1\n");
    ASSERT_EQ(server_.ServeTcp(0), "");
    SerialClient client(server_.Device());
    client.Ask("04");
    EXPECT_TRUE(client.Gone());
    // A connection that was accepted just before the plug was pulled does not count as one that
    // came back, so it has to answer.
    EXPECT_TRUE(Eventually([this] {
        SerialClient again(server_.Device());
        return again.IsOpen() && again.Ask("ATI").find("DVI 1.0") != std::string::npos;
    }));
}

TEST_F(Server, StopsInTheMiddleOfAReplyAndServesAgain) {
    Load("[interface]\nreset-time = 60\n");
    ASSERT_EQ(server_.ServeSerialLine(Link()), "");
    SerialClient client(Link());
    client.Write("ATZ\r");
    EXPECT_NE(client.ReadUntil("\r"), "");
    EXPECT_NE(server_.ServeSerialLine(Link()), "") << "one device at a time";
    server_.Stop();
    EXPECT_EQ(server_.Device(), "");
    ASSERT_EQ(server_.ServeSerialLine(Link()), "");
    EXPECT_NE(SerialClient(Link()).Ask("ATI").find("DVI 1.0"), std::string::npos);
}

}  // namespace
}  // namespace dravik::vehicle
