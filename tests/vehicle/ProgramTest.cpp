#include <signal.h>

#include <QProcess>
#include <filesystem>

#include "Desk.h"
#include "support/SerialClient.h"
#include "support/TemporaryFolder.h"

namespace dravik::vehicle {
namespace {

using test::SerialClient;

/// The real program with its output on pipes.
class Program : public QProcess {
 public:
    explicit Program(const std::vector<std::string>& arguments) {
        QStringList list;
        for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
        start(QStringLiteral(DRAVIK_VEHICLE_PROGRAM), list);
    }
    ~Program() override {
        kill();
        waitForFinished();
    }

    std::string ReadLine() {
        while (!canReadLine() && waitForReadyRead()) continue;
        return readLine().trimmed().toStdString();
    }
    void Signal(int signal) const { ::kill(static_cast<pid_t>(processId()), signal); }

    /// The exit status, or -1 when a signal ended it.
    int Wait() {
        waitForFinished();
        return exitStatus() == NormalExit ? exitCode() : -1;
    }
};

TEST(VehicleProgram, ServesALinkUntilItIsTerminated) {
    const TemporaryFolder folder;
    const std::string link = folder / "obd";
    for (int signal : {SIGTERM, SIGINT}) {
        Program program({"--link", link, "--scenario", "faults"});
        EXPECT_EQ(program.ReadLine(), link);
        {
            SerialClient client(link);
            ASSERT_TRUE(client.IsOpen());
            EXPECT_NE(client.Ask("ATZ").find("DVI 1.0"), std::string::npos);
            EXPECT_NE(client.Ask("0101").find("41 01 83 07 65 04 \r"), std::string::npos);
        }
        program.Signal(signal);
        EXPECT_EQ(program.Wait(), 0);
        EXPECT_FALSE(std::filesystem::is_symlink(link));
    }
}

TEST(VehicleProgram, ServesATcpPort) {
    Program program({"--tcp", "0"});
    const std::string device = program.ReadLine();
    SerialClient client(device);
    ASSERT_TRUE(client.IsOpen()) << device;
    EXPECT_NE(client.Ask("ATI").find("DVI 1.0"), std::string::npos);
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 0);
}

TEST(VehicleProgram, ExplainsBadArgumentsAndEndsWithTwo) {
    const TemporaryFolder folder;
    const std::string scenario = folder.Write("bad.ini", "[vehicle]\nwheels = 4\n");
    const struct {
        std::vector<std::string> Arguments;
        std::string Complaint;
    } rows[] = {
        {{"--port", "3"}, "unknown argument \"--port\""},
        {{"--tcp", "70000"}, "\"70000\" is no port number"},
        {{"--tcp", "12x"}, "\"12x\" is no port number"},
        {{"--tcp"}, "--tcp needs a value"},
        {{"--link", ""}, "--link needs a value"},
        {{"--tcp", "0", "--link", "/tmp/x"}, "exclude each other"},
        {{"--scenario", "holiday"}, "holiday: cannot be read"},
        {{"--scenario", scenario}, scenario + ": [vehicle] wheels: unknown key"},
    };
    for (const auto& row : rows) {
        Program program(row.Arguments);
        EXPECT_EQ(program.Wait(), 2) << row.Complaint;
        const std::string errors = program.readAllStandardError().toStdString();
        EXPECT_NE(errors.find(row.Complaint), std::string::npos) << errors;
        EXPECT_EQ(program.readAllStandardOutput(), "");
    }
}

TEST(VehicleProgram, ShowsHelpAndVersion) {
    Program help({"--help"});
    EXPECT_EQ(help.Wait(), 0);
    const std::string text = help.readAllStandardOutput().toStdString();
    for (const auto& name : BuiltInScenarioNames())
        EXPECT_NE(text.find(name), std::string::npos) << name;
    Program version({"--version"});
    EXPECT_EQ(version.Wait(), 0);
    EXPECT_EQ(version.readAllStandardOutput().indexOf("dravik-vehicle "), 0);
}

}  // namespace
}  // namespace dravik::vehicle
