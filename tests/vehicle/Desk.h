#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "vehicle/InterfaceProtocol.h"

namespace dravik::vehicle {

inline Scenario ScenarioOf(std::string_view text) {
    Scenario scenario;
    EXPECT_EQ(ParseScenario(text, "test", scenario), "");
    return scenario;
}

inline Scenario BuiltIn(const char* name) {
    Scenario scenario;
    EXPECT_EQ(LoadScenario(name, scenario), "");
    return scenario;
}

/// The interface on a desk with a clock of its own: a conversation of hours takes no time.
class Desk {
 public:
    explicit Desk(const Scenario& scenario) : Interface(scenario) {}
    explicit Desk(std::string_view text = {}) : Desk(ScenarioOf(text)) {}

    /// Writes bytes and lets time pass until the interface has nothing more to do.
    std::string Exchange(std::string_view bytes) {
        Interface.Receive(Now, bytes);
        return Settle();
    }

    std::string Settle() {
        std::string output;
        while (const auto next = Interface.NextEvent()) {
            Now = std::max(Now, *next);
            output += Interface.TakeOutput(Now);
        }
        return output;
    }

    std::string Ask(const std::string& command) { return Exchange(command + "\r"); }

    /// As the front-end leaves the interface: no echo, no line feeds, bus connected.
    Desk& Connect() {
        Ask("ATE0");
        Ask("ATL0");
        Ask("0100");
        return *this;
    }

    double Now = 0;
    InterfaceProtocol Interface;
};

inline const char* const kIdle = "[phase 1]\naction = idle\n";

}  // namespace dravik::vehicle
