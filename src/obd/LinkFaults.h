#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/basGlobal.h"

/// How the link's procedures leave word of what they meet, for ReasonText. Only the files of this
/// folder include this.
namespace dravik {

struct Reply;

/// A text of the link in its final form: the pattern with the values in their places.
std::string Worded(const char* pattern, const std::array<std::string, 2>& values);

/// Takes down what is wrong, unless the driver has disconnected meanwhile.
/// @param first, second  what the text of the fault names
void NoteFault(LinkFault fault, std::string first = {}, std::string second = {});

/// The port would not open.
void NoteOpenFailure();

/// The interface did not end its answer to one of the first commands.
void NoteSilentInterface(std::string_view reply);

/// The vehicle's answer to a request is not the one that was asked for.
void NoteVehicleFault(std::string_view reply);

/// The same for a reply that was taken apart.
void NoteVehicleFault(const Reply& reply);

/// A live reply, and whether it brought a value.
void NoteLiveReply(std::string_view reply, bool value);

/// What the interface says in words of its own in a reply: its last line that is neither data nor
/// an echo nor a sign of progress, 40 characters at most. Empty when there is none.
std::string InterfaceWords(std::string_view reply);

/// For as long as it lives, a wait for the answer to a command (for the vehicle's bus when empty)
/// that may take so many seconds.
class AwaitedAnswer {
 public:
    AwaitedAnswer(std::string command, double seconds);
    ~AwaitedAnswer();
    AwaitedAnswer(const AwaitedAnswer&) = delete;
    AwaitedAnswer& operator=(const AwaitedAnswer&) = delete;
};

}  // namespace dravik
