#pragma once

#include <memory>
#include <string>

namespace dravik::vehicle {

/// A diagnostic interface with a car behind it, served on a pseudo-terminal or a TCP port by a
/// thread of its own.
class VehicleServer {
 public:
    VehicleServer();
    ~VehicleServer();  ///< stops serving and removes the link

    /// Takes a scenario file, or the name of a built-in scenario; empty means the built-in "drive".
    /// @return an empty text, or what is wrong with the scenario (file, section, key and reason)
    std::string LoadScenario(const std::string& fileOrName);

    /// Starts serving. Both give an empty text, or the reason why that is not possible.
    /// On a pseudo-terminal; on Windows, which has none, on a free TCP port.
    /// @param link  path of a symbolic link to make to the pseudo-terminal; none when empty
    std::string ServeSerialLine(const std::string& link = {});
    /// @param port  0 takes a free one; only connections from this machine are accepted
    std::string ServeTcp(int port);

    /// What a client opens: the pseudo-terminal's path (or the link), or "tcp://127.0.0.1:PORT".
    std::string Device() const;

    void Stop();

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace dravik::vehicle
