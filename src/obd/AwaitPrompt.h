#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// How the procedures of the link wait for the end of a reply.
namespace dravik {

/// True when the interface has finished its reply and waits for the next command.
bool HasPrompt(std::string_view text);

/// Reads from the interface until its prompt, pumping events and sleeping meanwhile. What has
/// arrived before counts, too.
///
/// @param timeLeft  seconds that may still be waited, nothing once the time is over; asked before
///                  every read, so that nothing is read after its end
/// @param take      is given all that is read, the characters up to and including ">" last
/// @return false when there is no prompt: the time is over, the port is closed or the program ends
bool AwaitPrompt(const std::function<std::optional<double>()>& timeLeft,
                 const std::function<void(const std::string& received)>& take);

}  // namespace dravik
