#include "obd/AwaitPrompt.h"

#include "core/basGlobal.h"
#include "platform/Events.h"

namespace dravik {

bool HasPrompt(std::string_view text) {
    return text.find('>') != std::string_view::npos;
}

bool AwaitPrompt(const std::function<std::optional<double>()>& timeLeft,
                 const std::function<void(const std::string& received)>& take) {
    SerialPort& port = basGlobal.comOBD;
    while (port.IsOpen() && !basGlobal.Closing) {
        const std::optional<double> left = timeLeft();
        if (!left) return false;
        // What waits already is no event any more; a line that never falls silent must not keep
        // the screen waiting either.
        WaitForEvents(port.InputCount() == 0 ? *left : 0);
        if (port.InputCount() == 0) continue;
        const std::string received = port.ReadAll();
        take(received);
        if (HasPrompt(received)) return true;
    }
    return false;
}

}  // namespace dravik
