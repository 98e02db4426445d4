#include <algorithm>
#include <string>

#include "obd/Reply.h"
#include "obd/basOBD.h"
#include "platform/Events.h"

namespace dravik {

namespace {

/// So long a unit may take for an answer that it has put off, and so often it is asked for it.
constexpr double kPatience = 6;
constexpr double kPause = 0.2;

bool PutOff(const Reply& reply) {
    return reply.End == ReplyEnd::Refused &&
           std::any_of(reply.Refusals.begin(), reply.Refusals.end(), [](const Refusal& refusal) {
               return refusal.Reason == kResponsePending || refusal.Reason == kBusyRepeat;
           });
}

/// False when nothing is to be waited for any more: the link is closed or the program ends.
bool Pause() {
    const GlobalState& g = basGlobal;
    const double end = HighResTimer() + kPause;
    for (double left = kPause; left > 0; left = end - HighResTimer()) {
        if (!g.comOBD.IsOpen() || g.Closing) return false;
        WaitForEvents(left);
    }
    return g.comOBD.IsOpen() && !g.Closing;
}

}  // namespace

Reply Ask(const Bytes& request, bool headers) {
    const std::string command = TextToHex(std::string(request.begin(), request.end()));
    const double end = HighResTimer() + kPatience;
    for (;;) {
        // The interface listens to nothing behind its prompt: the answer that will follow is
        // asked for once more.
        Reply reply = TakeApart(SendCommand(command), request, basGlobal.VehicleBus, headers);
        if (!PutOff(reply) || HighResTimer() >= end || !Pause()) return reply;
    }
}

}  // namespace dravik
