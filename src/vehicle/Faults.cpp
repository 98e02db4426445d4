#include "vehicle/Faults.h"

#include <algorithm>
#include <cmath>

namespace dravik::vehicle {
namespace {

constexpr double kPlugTimeByChance = 3;  // seconds, for a rule that names no time

/// Seconds since the rule's window last opened; negative before the first time.
double SinceOpening(const FaultRule& rule, double now) {
    const double since = now - rule.At;
    return since >= 0 && rule.Every < kForever ? std::fmod(since, rule.Every) : since;
}

bool WindowOpen(const FaultRule& rule, double now) {
    const double since = SinceOpening(rule, now);
    return since >= 0 && since < rule.For;
}

/// Such a rule holds for everything in its window, whatever is asked and however often.
bool CoversAll(const FaultRule& rule) {
    return !rule.ByChance && rule.Match.empty() && rule.Times == std::numeric_limits<int>::max();
}

std::string Joined(const std::vector<Segment>& reply) {
    std::string text;
    for (const auto& segment : reply) text += segment.Text;
    return text;
}

/// Applies a change to every character position, as if the reply were one text.
template <typename Change>
void AtPosition(std::vector<Segment>& reply, std::size_t position, Change change) {
    for (auto& segment : reply) {
        if (position < segment.Text.size()) return change(segment.Text, position);
        position -= segment.Text.size();
    }
}

}  // namespace

Faults::Faults(const Scenario& scenario) : rules_(scenario.Faults), random_(scenario.Seed) {
    for (const auto& rule : rules_) timesLeft_.push_back(rule.Times);
}

bool Faults::Silent(double now) const {
    return std::any_of(rules_.begin(), rules_.end(), [now](const FaultRule& rule) {
        return rule.Kind == FaultKind::Silence && CoversAll(rule) && WindowOpen(rule, now);
    });
}

void Faults::Spoil(double now, const std::string& command, const std::string& lineEnd,
                   std::vector<Segment>& reply) {
    for (std::size_t i = 0; i < rules_.size(); ++i) {
        if (!Hits(i, now, command)) continue;
        return Apply(rules_[i], now, lineEnd, reply);
    }
}

bool Faults::Hits(std::size_t index, double now, const std::string& command) {
    const FaultRule& rule = rules_[index];
    if (rule.Kind == FaultKind::Unplug && !rule.ByChance) return false;  // goes by the clock
    const bool inWindow = rule.Kind == FaultKind::Unplug ? now >= rule.At : WindowOpen(rule, now);
    if (!inWindow || timesLeft_[index] <= 0 || !command.starts_with(rule.Match)) return false;
    if (rule.ByChance && random_.NextUnit() >= rule.Probability) return false;
    --timesLeft_[index];
    return true;
}

void Faults::Apply(const FaultRule& rule, double now, const std::string& lineEnd,
                   std::vector<Segment>& reply) {
    switch (rule.Kind) {
        case FaultKind::Silence:
            reply.clear();
            break;
        case FaultKind::NoPrompt:
            for (auto& segment : reply) std::erase(segment.Text, '>');
            break;
        case FaultKind::Garbage:
            // Never a prompt or a question mark: those are faults of their own.
            for (int i = 0; i < rule.Count; ++i) {
                const char byte = static_cast<char>(0x80 + random_.NextBelow(0x7F));
                AtPosition(reply, random_.NextBelow(std::max<std::size_t>(1, Joined(reply).size())),
                           [byte](std::string& text, std::size_t at) { text.insert(at, 1, byte); });
            }
            break;
        case FaultKind::Pieces: {
            const std::string text = Joined(reply);
            const auto count = std::min(text.size(), static_cast<std::size_t>(rule.Count));
            const double first = reply.empty() ? 0 : reply.front().Delay;
            reply.clear();
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t begin = text.size() * i / count;
                const std::size_t end = text.size() * (i + 1) / count;
                reply.push_back({i == 0 ? first : rule.Pause, text.substr(begin, end - begin)});
            }
            break;
        }
        case FaultKind::Question:
            reply = {{reply.empty() ? 0 : reply.front().Delay, "?" + lineEnd + lineEnd + ">"}};
            break;
        case FaultKind::Lost:
            for (int i = 0; i < rule.Count; ++i) {
                AtPosition(reply, random_.NextBelow(std::max<std::size_t>(1, Joined(reply).size())),
                           [](std::string& text, std::size_t at) { text.erase(at, 1); });
            }
            break;
        case FaultKind::Words: {
            // A reply is told in segments of a line each, and the last one holds the prompt.
            std::vector<Segment> spoken;
            int lines = 0;
            for (const Segment& segment : reply) {
                if (lines >= rule.After || segment.Text.ends_with('>')) break;
                spoken.push_back(segment);
                if (!segment.Text.empty()) ++lines;
            }
            spoken.push_back(
                {reply.empty() ? 0 : reply.front().Delay, rule.Text + lineEnd + lineEnd + ">"});
            reply = std::move(spoken);
            break;
        }
        case FaultKind::Unplug:
            reply.clear();
            unpluggedUntil_ = now + (rule.For < kForever ? rule.For : kPlugTimeByChance);
            break;
    }
}

bool Faults::Unplugged(double now) const {
    if (now < unpluggedUntil_) return true;
    return std::any_of(rules_.begin(), rules_.end(), [now](const FaultRule& rule) {
        return rule.Kind == FaultKind::Unplug && !rule.ByChance && WindowOpen(rule, now);
    });
}

double Faults::NextPlugChange(double now) const {
    double next = unpluggedUntil_ > now ? unpluggedUntil_ : kForever;
    for (const auto& rule : rules_) {
        if (rule.Kind != FaultKind::Unplug || rule.ByChance) continue;
        const double since = SinceOpening(rule, now);
        if (since < 0) {
            next = std::min(next, rule.At);
        } else {
            const double change = since < rule.For ? rule.For : rule.Every;
            next = std::min(next, now - since + change);
        }
    }
    return next;
}

}  // namespace dravik::vehicle
