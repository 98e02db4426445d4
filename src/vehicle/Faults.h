#pragma once

#include <string>
#include <vector>

#include "vehicle/Random.h"
#include "vehicle/Scenario.h"

namespace dravik::vehicle {

/// A part of a reply: what is sent, and how long the interface waits before it.
struct Segment {
    double Delay = 0;  ///< seconds after the end of what was before
    std::string Text;
};

/// Makes things go wrong as the scenario's rules say. The same scenario and the same questions in
/// the same order give the same faults.
class Faults {
 public:
    explicit Faults(const Scenario& scenario);

    /// True while the interface as a whole is dead: it neither echoes nor answers.
    bool Silent(double now) const;

    /// Spoils a reply by the first rule that hits it.
    /// @param command  the command that is answered, upper case without blanks
    void Spoil(double now, const std::string& command, const std::string& lineEnd,
               std::vector<Segment>& reply);

    bool Unplugged(double now) const;

    /// When the answer of Unplugged changes next by the clock alone; kForever if it does not.
    double NextPlugChange(double now) const;

 private:
    bool Hits(std::size_t index, double now, const std::string& command);
    void Apply(const FaultRule& rule, double now, const std::string& lineEnd,
               std::vector<Segment>& reply);

    std::vector<FaultRule> rules_;
    std::vector<int> timesLeft_;
    Random random_;
    double unpluggedUntil_ = -1;  ///< by chance
};

}  // namespace dravik::vehicle
