#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include "platform/Events.h"
#include "platform/SerialPort.h"

namespace dravik {

/// Pumps events until the condition holds. The limit only ends a test that has failed already.
inline bool WaitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        WaitForEvents(0.05);
    }
    return true;
}

/// Counts what a port reports, and keeps what it receives as the program does while connected.
struct PortEvents {
    explicit PortEvents(SerialPort& port) {
        port.OnReceive([this, &port](int code) {
            (code == SerialPort::kDataReceived ? data : overflow) += 1;
            if (code == SerialPort::kDataReceived && takes) text += port.ReadAll();
        });
        port.OnLost([this, &port] {
            ++lost;
            openWhenLost = port.IsOpen();
        });
    }
    PortEvents(const PortEvents&) = delete;
    PortEvents& operator=(const PortEvents&) = delete;

    bool takes = true;
    int data = 0;
    int overflow = 0;
    int lost = 0;
    bool openWhenLost = false;
    std::string text;
};

inline std::string AllByteValues() {
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
    return bytes;
}

}  // namespace dravik
