#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "Desk.h"
#include "support/SerialClient.h"

namespace dravik::vehicle {
namespace {

using test::SerialClient;
namespace fs = std::filesystem;

/// The real program with its output on pipes.
class Program {
 public:
    explicit Program(std::vector<std::string> arguments) {
        int out[2], errors[2];
        EXPECT_EQ(pipe2(out, O_CLOEXEC), 0);
        EXPECT_EQ(pipe2(errors, O_CLOEXEC), 0);
        arguments.insert(arguments.begin(), DRAVIK_VEHICLE_PROGRAM);
        std::vector<char*> pointers;
        for (auto& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        process_ = fork();
        if (process_ == 0) {
            dup2(out[1], STDOUT_FILENO);
            dup2(errors[1], STDERR_FILENO);
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        close(out[1]);
        close(errors[1]);
        out_ = out[0];
        errors_ = errors[0];
    }
    ~Program() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(out_);
        close(errors_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    std::string ReadLine() { return Read(out_, true); }
    std::string Output() { return Read(out_, false); }
    std::string Errors() { return Read(errors_, false); }
    void Signal(int signal) { kill(process_, signal); }

    /// The exit status, or -1 when a signal ended it.
    int Wait() {
        int status = 0;
        waitpid(std::exchange(process_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

 private:
    static std::string Read(int descriptor, bool line) {
        std::string text;
        char byte = 0;
        while (read(descriptor, &byte, 1) == 1) {
            if (line && byte == '\n') break;
            text += byte;
        }
        return text;
    }

    pid_t process_ = -1;
    int out_ = -1, errors_ = -1;
};

TEST(VehicleProgram, ServesALinkUntilItIsTerminated) {
    const fs::path link = fs::temp_directory_path() / ("obd-" + std::to_string(getpid()));
    for (int signal : {SIGTERM, SIGINT}) {
        Program program({"--link", link.string(), "--scenario", "faults"});
        EXPECT_EQ(program.ReadLine(), link.string());
        {
            SerialClient client(link.string());
            ASSERT_TRUE(client.IsOpen());
            EXPECT_NE(client.Ask("ATZ").find("DVI 1.0"), std::string::npos);
            EXPECT_NE(client.Ask("0101").find("41 01 83 07 65 04 \r"), std::string::npos);
        }
        program.Signal(signal);
        EXPECT_EQ(program.Wait(), 0);
        EXPECT_FALSE(fs::is_symlink(link));
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
    const std::string scenario =
        (fs::temp_directory_path() / ("bad-" + std::to_string(getpid()) + ".ini")).string();
    std::ofstream(scenario) << "[vehicle]\nwheels = 4\n";
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
        EXPECT_NE(program.Errors().find(row.Complaint), std::string::npos) << row.Complaint;
        EXPECT_EQ(program.Output(), "");
        EXPECT_EQ(program.Wait(), 2) << row.Complaint;
    }
    fs::remove(scenario);
}

TEST(VehicleProgram, ShowsHelpAndVersion) {
    Program help({"--help"});
    const std::string text = help.Output();
    for (const auto& name : BuiltInScenarioNames()) {
        EXPECT_NE(text.find(name), std::string::npos) << name;
    }
    EXPECT_EQ(help.Wait(), 0);
    Program version({"--version"});
    EXPECT_EQ(version.Output().find("dravik-vehicle "), 0u);
    EXPECT_EQ(version.Wait(), 0);
}

}  // namespace
}  // namespace dravik::vehicle
