#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace dravik::vehicle {

/// The wire between the interface and its client. All calls but Wake and Device come from the
/// server's own thread, or from its owner before that thread runs.
class Transport {
 public:
    virtual ~Transport() = default;

    /// Makes the device appear. Gives an empty text, or the reason why that is not possible.
    virtual std::string Open() = 0;

    /// Makes the device disappear, as if it were unplugged.
    virtual void Close() = 0;

    virtual bool IsOpen() const = 0;

    /// What a client opens. Any thread may ask.
    virtual std::string Device() const = 0;

    /// Sleeps until the client has written something, Wake is called or the time has passed.
    /// @param seconds  negative: without a limit
    /// @return what the client has written, possibly nothing
    virtual std::string Wait(double seconds) = 0;

    /// Hands characters to the client. Those that nobody takes are lost, as on a serial line.
    virtual void Send(std::string_view bytes) = 0;

    /// Ends a Wait that is going on or comes next. Any thread may call it.
    virtual void Wake() = 0;
};

/// A pseudo-terminal; a free TCP port on Windows, which has no pseudo-terminals.
/// @param link  path of the symbolic link to make to the pseudo-terminal; none when empty
std::unique_ptr<Transport> MakeSerialLine(const std::string& link);

/// @param port  0 takes a free one, and keeps it from then on
std::unique_ptr<Transport> MakeTcp(int port);

}  // namespace dravik::vehicle
