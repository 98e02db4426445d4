#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/basGlobal.h"

/// Replies taken apart by the standard: the lines of an interface become the messages of the
/// control units.
namespace dravik {

using Bytes = std::vector<std::uint8_t>;

/// How the messages of a bus look, from the number that the interface gives its protocol: '1' to
/// '9', and 'B' and 'C' for those of the user.
Bus BusOf(char protocolNumber);

/// Asks the interface which bus the vehicle has; from the words of `ProtocolText` where it does not
/// know the question. Unknown when neither tells, and before the vehicle was found.
Bus AskBus();

/// One message of a control unit: the service byte first (0x43 ...), frames put together, without
/// header, length, checksum and frame numbers.
struct UnitMessage {
    /// Address on the bus: 0x7E8 on CAN with 11 bits, else the unit's own (0x10); 0 = headers off.
    std::uint32_t Unit = 0;
    Bytes Data;
};

/// A negative response: the unit names the service and why it does not carry it out.
struct Refusal {
    std::uint32_t Unit = 0;
    std::uint8_t Service = 0;
    std::uint8_t Reason = 0;
};

/// True for a refusal that only puts off the answer: busy, or the answer will follow.
constexpr bool PutsOff(const Refusal& refusal) {
    return refusal.Reason == 0x21 || refusal.Reason == 0x78;
}

/// What came of a request. Of several, the first that fits.
enum class ReplyEnd : std::uint8_t {
    Unfinished,     ///< no prompt: silence, or the port is gone
    BusFault,       ///< the interface tells what went wrong, see Words
    NotUnderstood,  ///< "?": the interface does not know the request
    Unreadable,     ///< a frame is missing or broken, or nothing answers what was asked
    Refused,        ///< a unit put off its answer and did not give it, or nobody did but refuse
    Answered,       ///< all that was sent is in Messages
    NoData,         ///< nobody has anything to answer
};

struct Reply {
    ReplyEnd End = ReplyEnd::Unfinished;
    /// In the order in which they were complete. With an end other than Answered, those of the
    /// units of which nothing was lost.
    std::vector<UnitMessage> Messages;
    std::vector<Refusal> Refusals;
    std::string Words;  ///< what the interface says in words of its own, 40 characters at most
};

/// Takes a whole reply apart; echoes and signs of progress in front are passed over.
///
/// @param reply    everything received up to and including ">"
/// @param request  service, and what else was sent. Only messages that answer it are kept: those of
///                 its service plus 0x40 that name its PID and freeze frame where it has them
/// @param headers  the lines begin with a header: a unit's frames are then told from another's, and
///                 checksums checked. Without headers frames that could belong to either of two
///                 messages make the reply Unreadable
Reply TakeApart(std::string_view reply, const Bytes& request, Bus bus, bool headers);

/// Sends a request on VehicleBus and takes its reply apart. A unit that is busy, or says that its
/// answer will follow, is asked again for some seconds. Pumps events, like SendCommand.
Reply Ask(const Bytes& request, bool headers);

/// The data of a live value: of the first line that answers the request, what stands behind the
/// bytes that name it. All other lines are passed over. Headers are off.
std::optional<Bytes> FirstAnswer(std::string_view reply, const Bytes& request);

/// Why a reply does not bring what was asked for, in the driver's language. Empty for one that is
/// Answered.
std::string ReasonOf(const Reply& reply);

/// "P0133" of the two bytes of a trouble code.
std::string CodeText(std::uint8_t high, std::uint8_t low);

/// The codes of a message that lists them (43, 47, 4A), zeros left out. On CAN their count stands
/// in front. Nothing when the count and the length do not fit.
std::optional<std::vector<std::string>> CodesIn(const Bytes& message, Bus bus);

}  // namespace dravik
