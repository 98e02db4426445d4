#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace dravik::test {

/// A raw client of a serial device or of "tcp://127.0.0.1:PORT", for tests that want to see every
/// character.
class SerialClient {
 public:
    explicit SerialClient(const std::string& device) {
        constexpr std::string_view kTcp = "tcp://127.0.0.1:";
        if (device.starts_with(kTcp))
            ConnectTcp(std::stoi(device.substr(kTcp.size())));
        else
            OpenTerminal(device);
    }
    ~SerialClient() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    SerialClient(const SerialClient&) = delete;
    SerialClient& operator=(const SerialClient&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }

    bool Write(std::string_view text) {
        return write(descriptor_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    }

    /// Everything up to and including `end`; what came so far when nothing more comes for a while
    /// or the other side has gone.
    std::string ReadUntil(std::string_view end, int patienceMs = 5000) {
        std::string text;
        while (text.find(end) == std::string::npos) {
            pollfd waiting = {descriptor_, POLLIN, 0};
            if (poll(&waiting, 1, patienceMs) <= 0) break;
            char byte = 0;
            if (read(descriptor_, &byte, 1) != 1) {
                gone_ = true;
                break;
            }
            text += byte;
        }
        return text;
    }

    /// Sends a command with its return and gives the reply up to the prompt.
    std::string Ask(const std::string& command) {
        return Write(command + "\r") ? ReadUntil(">") : std::string();
    }

    /// Whether reading has met the end of the line: unplugged or disconnected.
    bool Gone() const { return gone_; }

 private:
    void OpenTerminal(const std::string& path) {
        descriptor_ = open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (descriptor_ < 0) return;
        termios settings{};
        tcgetattr(descriptor_, &settings);
        cfmakeraw(&settings);
        tcsetattr(descriptor_, TCSANOW, &settings);
        tcflush(descriptor_, TCIOFLUSH);
    }

    void ConnectTcp(int port) {
        descriptor_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
            close(descriptor_);
            descriptor_ = -1;
        }
    }

    int descriptor_ = -1;
    bool gone_ = false;
};

}  // namespace dravik::test
