#include "obd/Headers.h"

#include <optional>
#include <string>
#include <utility>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/basOBD.h"

namespace dravik {

namespace {

constexpr int kAttempts = 2;
constexpr double kAnswerSeconds = 2;  // an interface that is there answers at once

bool Contains(const std::string& text, const char* what) {
    return text.find(what) != std::string::npos;
}

/// What the interface answers in that time. A command's usual patience would hold up the program
/// for as long again as the silence that ended the read.
std::string SwitchOff() {
    basGlobal.comOBD.DiscardInput();
    basGlobal.comOBD.Write("ATH0\r");
    const double deadline = HighResTimer() + kAnswerSeconds;
    std::string reply;
    AwaitPrompt(
        [deadline] {
            const double left = deadline - HighResTimer();
            return left > 0 ? std::optional(left) : std::nullopt;
        },
        [&reply](const std::string& received) { reply += received; });
    return reply;
}

}  // namespace

HeadersOn::HeadersOn() {
    const std::string reply = SendCommand("ATH1");
    answered_ = HasPrompt(reply);
    on_ = Contains(reply, "OK");
}

bool HeadersOn::Off() {
    if (std::exchange(restored_, true)) return confirmed_;
    for (int attempt = 0; attempt < kAttempts && !confirmed_; ++attempt) {
        if (!basGlobal.comOBD.IsOpen()) return false;
        const std::string reply = SwitchOff();
        // One that did not take the first command need not know this one either.
        confirmed_ = Contains(reply, "OK") || (answered_ && !on_ && Contains(reply, "?"));
    }
    return confirmed_;
}

}  // namespace dravik
