#include <algorithm>

#include "FuzzTarget.h"
#include "vehicle/InterfaceProtocol.h"

namespace dravik::fuzz {
namespace {

constexpr int kMostLines = 30;
constexpr int kMostEvents = 20'000;  // of one request

}  // namespace

/// A scenario, and in the second part what a client sends, each line when the one before it is
/// answered.
void Run(std::string_view input) {
    vehicle::Scenario scenario;
    const std::string problem = vehicle::ParseScenario(TakePart(input), "fuzz.ini", scenario);
    Require(problem.empty() || problem.starts_with("fuzz.ini: "), "a problem names the file",
            problem);
    if (input.empty())
        input = "ATZ\n0100\n0101\n010C\n03\n020500\n0902\n090A\n0600\n0601\n04\n0A\nATH1\n07\n";
    vehicle::InterfaceProtocol interface(scenario);
    double now = 0;
    for (int line = 0; !input.empty() && line < kMostLines; ++line) {
        interface.Receive(now, std::string(TakeLine(input)) + "\r");
        int events = 0;
        while (const auto next = interface.NextEvent()) {
            Require(++events < kMostEvents, "a request comes to its end");
            now = std::max(now, *next);
            interface.TakeOutput(now);
        }
        now += 0.25;
    }
    interface.PowerUp();
}

}  // namespace dravik::fuzz
