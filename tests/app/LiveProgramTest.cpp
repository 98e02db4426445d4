#include <gmock/gmock.h>
#include <signal.h>

#include <filesystem>
#include <set>

#include "platform/Text.h"
#include "platform/serial/PseudoTerminal.h"
#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"
#include "vehicle/VehicleServer.h"

namespace dravik {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The program on one end of a real pseudo-terminal and the virtual vehicle on the other.
class LiveProgram : public ::testing::Test {
 protected:
    void Serve(const std::string& scenario) {
        ASSERT_EQ(vehicle_.LoadScenario(scenario), "");
        ASSERT_EQ(vehicle_.ServeSerialLine(program_.Folder / "interface"), "");
    }
    void WriteSettings(const std::string& more) {
        program_.Folder.Write("Dravik.ini", program_.Folder.Read("Dravik.ini") + more +
                                                "[Ports]\nCOM1=" + (program_.Folder / "interface") +
                                                "\n");
    }
    std::vector<std::string> Arguments() { return {"--folder", program_.Folder.Path()}; }

    ProgramFolderWithSkin program_;
    vehicle::VehicleServer vehicle_;
};

TEST_F(LiveProgram, ConnectsOverAPseudoTerminalAndItsValuesMove) {
    Serve("drive");
    WriteSettings("");
    ConsoleProgram dravik(Arguments());
    EXPECT_EQ(dravik.Ask("text obd_status"), "Not Connected.");
    EXPECT_EQ(dravik.Ask("do obd_connect"), "ok");

    std::vector<std::string> seen;
    dravik.Until(
        [&] {
            std::string status = dravik.Ask("text obd_status");
            if (seen.empty() || seen.back() != status) seen.push_back(status);
            return status;
        },
        "Receiving Data.");
    // "Connected." lasts no longer than the first live request, so it may be missed.
    EXPECT_EQ(seen.front(), "Connecting");
    EXPECT_THAT(seen, ::testing::Contains("Initializing."));
    EXPECT_EQ(seen.back(), "Receiving Data.");

    std::set<std::string> speeds;
    for (int i = 0; i < 200 && speeds.size() < 3; ++i) {
        speeds.insert(dravik.Ask("number sensor_rpm"));
        dravik.Ask("wait 100");
    }
    EXPECT_GE(speeds.size(), 3U) << "the engine speed moves";
    EXPECT_EQ(dravik.State("PidWanted"), "05,0C,0D") << "polled is what the page shows";
    EXPECT_EQ(dravik.State("InterfaceId"), "DVI 1.0");
    EXPECT_THAT(dravik.State("ProtocolText"), HasSubstr("ISO 14230-4"));
    EXPECT_EQ(dravik.State("DtcCount"), "0");
    EXPECT_EQ(dravik.State("MilOn"), "0");
    EXPECT_THAT(
        program_.Folder.Read("log.txt"),
        AllOf(StartsWith("Connected.\r\nATZ\r\n"), HasSubstr("\r\n41 01 "), HasSubstr("ATDP\r\n")));
    EXPECT_EQ(dravik.Finish(), 0);
}

TEST_F(LiveProgram, DemoChangesNothingInTheSettingsButTheResumeState) {
    const std::string before = program_.Folder.Read("Dravik.ini");
    ConsoleProgram dravik({"--folder", program_.Folder.Path(), "--demo"});
    const auto status = [&] { return dravik.Ask("text obd_status"); };
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
    EXPECT_EQ(dravik.Finish(), 0);
    EXPECT_EQ(program_.Folder.Read("Dravik.ini"), before + "[Resume]\nSensorActive=\n");
}

TEST_F(LiveProgram, ANewUserIsWelcomedUntilThatIsLeftAndMayTryTheDemo) {
    const std::string settings = program_.Folder.Read("Dravik.ini");
    program_.Folder.Write("Dravik.ini",
                          ReplaceAll(settings, "[Options]\n", "[Options]\nWelcome=1\n"));
    program_.Folder.Write("skins/test.ini", program_.Folder.Read("skins/test.ini") +
                                                "[welcome]\nCommand=\n[welcome2]\nCommand=\n");
    {
        ConsoleProgram dravik(Arguments());
        EXPECT_EQ(dravik.State("CurrentMenu"), "welcome");
        EXPECT_EQ(dravik.Ask("do openmenu_welcome2"), "ok");
        EXPECT_EQ(dravik.Ask("do demo"), "ok");
        const auto status = [&] { return dravik.Ask("text obd_status"); };
        EXPECT_EQ(dravik.Until(status, "Connected."), "Connected.") << "nothing is polled there";
        EXPECT_THAT(program_.Folder.Read("Dravik.ini"), HasSubstr("Welcome=1"))
            << "a cut power supply must not end it";
        EXPECT_EQ(dravik.Ask("do welcomedone"), "ok");
        EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu");
        EXPECT_EQ(dravik.Finish(), 0);
    }
    EXPECT_EQ(program_.Folder.Read("Dravik.ini"), settings + "[Resume]\nSensorActive=\n");
    ConsoleProgram dravik(Arguments());
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu");
}

TEST_F(LiveProgram, ANewUserOfAnUprightScreenStartsWithAnUprightSkin) {
    program_.Folder.Write("skins/upright.ini",
                          "[General]\nWidth=480\nHeight=800\n[mainmenu]\n[welcome]\nCommand=\n");
    const std::string settings = program_.Folder.Read("Dravik.ini");
    for (const std::string welcome : {"Welcome=1\n", ""}) {
        program_.Folder.Write("Dravik.ini",
                              ReplaceAll(settings, "[Options]\n", "[Options]\n" + welcome));
        ConsoleProgram dravik({"480x800", "--folder", program_.Folder.Path()});
        EXPECT_EQ(dravik.State("CurrentMenu"), welcome.empty() ? "mainmenu" : "welcome");
        EXPECT_EQ(dravik.Finish(), 0);
        EXPECT_THAT(program_.Folder.Read("Dravik.ini"),
                    HasSubstr(welcome.empty() ? "Skin=test" : "Skin=upright"));
    }
}

TEST_F(LiveProgram, TheDemoIsFoundAgainBehindAnotherTerminalAndLeavesNothingBehind) {
    const std::string temporary = program_.Folder / "tmp";
    const std::string scenario =
        program_.Folder.Write("unplug.ini", "[fault 1]\nkind=unplug\nat=5\nfor=2\nevery=10\n");
    std::filesystem::create_directory(temporary);
    program_.Folder.Write("Dravik.ini", program_.Folder.Read("Dravik.ini") + "Reconnect=1\n");
    ConsoleProgram dravik({"--folder", program_.Folder.Path(), "--demo", scenario}, DRAVIK_PROGRAM,
                          {{"TMPDIR", temporary}, {"XDG_RUNTIME_DIR", program_.Folder.Path()}});
    const auto status = [&] { return dravik.Ask("text obd_status"); };
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
    EXPECT_EQ(dravik.Until(status, "Comport not found."), "Comport not found.");
    const PseudoTerminal other;  // takes the number that has become free
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
    EXPECT_FALSE(std::filesystem::is_empty(temporary));
    EXPECT_EQ(dravik.Finish(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(LiveProgram, FailedConnectsAreLoggedAndRest) {
    WriteSettings("");  // nothing serves the port
    ConsoleProgram dravik(Arguments());
    EXPECT_EQ(dravik.Ask("do obd_connect"), "ok");
    const auto status = [&] { return dravik.Ask("text obd_status"); };
    EXPECT_EQ(dravik.Until(status, "Comport not found."), "Comport not found.");
    EXPECT_EQ(program_.Folder.Read("log.txt"), "Comport not found.\r\n");

    Serve("ignition-off");
    EXPECT_EQ(dravik.Ask("do obd_connect"), "ok");
    EXPECT_EQ(dravik.Until(status, "Not Connected."), "Not Connected.");
    EXPECT_THAT(program_.Folder.Read("log.txt"),
                AllOf(StartsWith("Not Connected.\r\n"), HasSubstr("UNABLE TO CONNECT")));
}

TEST_F(LiveProgram, SilentInterfaceLeavesTheScreenAliveAndAnEndIsAnEnd) {
    Serve("silent");
    WriteSettings("");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ConsoleProgram dravik(Arguments());
        EXPECT_EQ(dravik.Ask("do obd_connect"), "ok");
        const auto status = [&] { return dravik.Ask("text obd_status"); };
        EXPECT_EQ(dravik.Until(status, "Connecting"), "Connecting");
        EXPECT_EQ(dravik.Ask("wait 300"), "ok");
        EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
        EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
        EXPECT_EQ(dravik.State("ConnState"), "4") << "still waiting for its first reply";
        ::kill(dravik.Pid(), signal);
        EXPECT_EQ(dravik.WaitForEnd(), 0) << "signal " << signal;
        EXPECT_THAT(program_.Folder.Read("Dravik.ini"), HasSubstr("SensorActive="));
    }
}

TEST_F(LiveProgram, VanishedDeviceIsConnectedAgainWhenTheSettingsSaySo) {
    Serve("drive");
    WriteSettings("Reconnect=1\n");
    ConsoleProgram dravik(Arguments());
    const auto status = [&] { return dravik.Ask("text obd_status"); };
    EXPECT_EQ(dravik.Ask("do obd_connect"), "ok");
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
    vehicle_.Stop();
    EXPECT_EQ(dravik.Until(status, "Comport not found."), "Comport not found.");
    Serve("drive");
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
}

}  // namespace
}  // namespace dravik
