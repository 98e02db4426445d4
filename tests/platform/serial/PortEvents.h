#pragma once

#include <string>

#include "platform/serial/SerialPort.h"

namespace dravik {

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

}  // namespace dravik
