#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "obd/Reply.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "platform/Text.h"

namespace dravik {

namespace {

/// So long a unit may take for an answer that it has put off, and so often it is asked for it.
constexpr double kPatience = 6;
constexpr double kPause = 0.2;

bool PutOff(const Reply& reply) {
    return reply.End == ReplyEnd::Refused &&
           std::any_of(reply.Refusals.begin(), reply.Refusals.end(), PutsOff);
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

/// "A6" or "6", the A for a protocol that the interface has found by itself.
Bus BusOfNumber(std::string_view line) {
    if (line.size() == 2 && line[0] == 'A') line.remove_prefix(1);
    return line.size() == 1 ? BusOf(line[0]) : Bus::Unknown;
}

Bus BusOfWords(std::string_view protocol) {
    constexpr std::pair<std::string_view, Bus> kWords[] = {
        {"J1850", Bus::J1850},  {"9141", Bus::Iso9141}, {"14230", Bus::Keyword},
        {"CAN 29", Bus::Can29}, {"CAN 11", Bus::Can11},
    };
    for (const auto& [word, bus] : kWords) {
        if (protocol.find(word) != std::string_view::npos) return bus;
    }
    return Bus::Unknown;
}

}  // namespace

Bus AskBus() {
    const std::string reply = SendCommand("ATDPN");
    std::string_view lines = reply;
    Bus bus = Bus::Unknown;
    while (!lines.empty() && bus == Bus::Unknown) {
        const std::size_t end = std::min(lines.find_first_of("\r\n>"), lines.size());
        bus = BusOfNumber(Trimmed(lines.substr(0, end)));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return bus != Bus::Unknown ? bus : BusOfWords(basGlobal.ProtocolText);
}

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
