// The virtual vehicle as a program of its own: see docs/vehicle.md.

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Number.h"
#include "tools/EndOfProgram.h"
#include "vehicle/VehicleServer.h"

namespace {

constexpr const char* kUsage =
    "usage: dravik-vehicle [--link PATH] [--tcp PORT] [--scenario FILE]\n"
    "\n"
    "Serves a diagnostic interface with a car behind it and prints what a client opens.\n"
    "\n"
    "  --link PATH      make a symbolic link to the pseudo-terminal\n"
    "  --tcp PORT       serve a TCP port of this machine instead; 0 takes a free one\n"
    "  --scenario FILE  a scenario file, or the name of a built-in scenario:\n"
    "                   drive (default), faults, workshop, silent, ignition-off, flaky\n"
    "  --help           show this text\n"
    "  --version        show the version\n";

struct Options {
    std::string Link, Scenario;
    std::optional<int> Port;
    bool Help = false, Version = false;
};

/// Gives an empty text, or what is wrong with the arguments.
std::string ReadArguments(int count, char** arguments, Options& options) {
    for (int i = 1; i < count; ++i) {
        const std::string_view option = arguments[i];
        if (option == "--help" || option == "--version") {
            (option == "--help" ? options.Help : options.Version) = true;
            continue;
        }
        if (option != "--link" && option != "--tcp" && option != "--scenario")
            return "unknown argument \"" + std::string(option) + "\"";
        if (++i == count || *arguments[i] == '\0') return std::string(option) + " needs a value";
        const std::string_view value = arguments[i];
        if (option == "--link") options.Link = value;
        if (option == "--scenario") options.Scenario = value;
        if (option == "--tcp") {
            options.Port = dravik::WholeNumber(value);
            if (!options.Port || *options.Port < 0 || *options.Port > 65535)
                return "\"" + std::string(value) + "\" is no port number from 0 to 65535";
        }
    }
    if (options.Port && !options.Link.empty()) return "--link and --tcp exclude each other";
    return {};
}

int Complain(const std::string& problem, int status) {
    std::fprintf(stderr, "dravik-vehicle: %s\n", problem.c_str());
    return status;
}

}  // namespace

int main(int count, char** arguments) {
    Options options;
    std::string problem = ReadArguments(count, arguments, options);
    if (!problem.empty()) return Complain(problem + " (see --help)", 2);
    if (options.Help || options.Version) {
        std::fputs(options.Help ? kUsage : "dravik-vehicle " DRAVIK_VERSION "\n", stdout);
        return 0;
    }
    dravik::HoldBackEnd();
    dravik::vehicle::VehicleServer server;
    problem = server.LoadScenario(options.Scenario);
    if (!problem.empty()) return Complain(problem, 2);
    problem = options.Port ? server.ServeTcp(*options.Port) : server.ServeSerialLine(options.Link);
    if (!problem.empty()) return Complain(problem, 1);
    std::printf("%s\n", server.Device().c_str());
    std::fflush(stdout);
    dravik::WaitForEnd();
    server.Stop();
    return 0;
}
