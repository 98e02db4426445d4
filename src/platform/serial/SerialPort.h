#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace dravik {

/// Why a device could not be opened.
enum class OpenFailure : std::uint8_t {
    None,
    NoSuchDevice,  ///< there is none of that name, or it is no serial line
    NoPermission,  ///< this user may not use it
    InUse,         ///< another program has it
    NoSuchSpeed,   ///< it does not take the line speed
    Refused,       ///< nothing answers at that port of the network address
    UnknownHost,   ///< there is no computer of that name
    NoAnswer,      ///< it took too long, or there is no way to the address
    GivenUp,       ///< the wait was overtaken, or could not begin
};

/// A serial line to a device: termios on Linux, overlapped I/O on Windows, a socket for devices
/// named "tcp://host:port". 8 data bits, no parity, one stop bit, no flow control, exclusive.
///
/// Nothing here blocks. Everything runs on the user-interface thread, and the events are delivered
/// from its event loop. Their handlers may do anything with the port, destroying it included. A
/// moved-from port may only be assigned to or destroyed.
class SerialPort {
 public:
    /// Receive event codes.
    static constexpr int kDataReceived = 2;       ///< at least one character has arrived
    static constexpr int kBufferOverflow = 1008;  ///< more than 4,096 characters were waiting, or
                                                  ///< the driver lost some; the excess is dropped
    static constexpr std::size_t kBufferSize = 4096;

    explicit SerialPort(int baudrate);
    ~SerialPort();
    SerialPort(SerialPort&&) noexcept;
    SerialPort& operator=(SerialPort&&) noexcept;

    /// What Open opens: a device path, "\\.\COMn" or "tcp://host:port".
    void SetDevice(std::string device);
    const std::string& Device() const;

    /// Line speed, used by the next Open.
    void SetBaudrate(int baudrate);
    int Baudrate() const;

    /// Opens the device; false when it cannot be opened. A device that takes long to open (a
    /// network address, a radio link) is waited for while events are pumped, at most five seconds.
    /// False too when the wait was overtaken by another Open, a Close or AbortWaits. An open port
    /// is closed first.
    bool Open();

    /// Why the last Open failed; None when it did not, or when there was none yet.
    OpenFailure LastFailure() const;

    /// Makes every Open that is waiting return false at once, for the end of the program.
    static void AbortWaits();

    bool IsOpen() const;

    /// Closes the device and forgets everything that waits in either direction.
    void Close();

    /// Queues the bytes for sending; false when the port is not open, or when the device takes
    /// nothing and 64 KiB wait already. Then none of the bytes is queued.
    bool Write(std::string_view bytes);

    /// Number of received characters that wait, what the driver still holds included.
    std::size_t InputCount() const;

    /// Everything that waits, taken out of the buffer; empty when nothing waits.
    std::string ReadAll();

    /// Forgets everything that waits, what the driver still holds included.
    void DiscardInput();

    /// Called with kDataReceived or kBufferOverflow. Characters that the handler leaves stay in the
    /// buffer, and the next one that arrives raises the event again.
    void OnReceive(std::function<void(int code)> handler);

    /// Called once when an open device disappears, after the port has closed itself. What it sent
    /// before can still be read, until the next Open or Close.
    void OnLost(std::function<void()> handler);

 private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

/// What a port number stands for when the settings do not say: COM1-8 /dev/ttyUSB0-7, COM9-16
/// /dev/ttyACM0-7, COM17-24 /dev/rfcomm0-7, COM25-32 /dev/ttyS0-7; "\\.\COMn" for 1 to 255 on
/// Windows. Empty for other numbers.
std::string DefaultPortDevice(int number);

}  // namespace dravik
