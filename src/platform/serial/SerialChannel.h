#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/serial/SerialPort.h"

/// What stands behind a SerialPort: one open device of any kind, and the way there. Only the
/// serial port's own files include this.
namespace dravik {

/// Told by a channel, from the event loop, that it has something to read or has lost its device.
class SerialListener {
 public:
    virtual void ChannelReady() = 0;

 protected:
    ~SerialListener() = default;
};

/// An open device. It is closed by its destruction, which may happen inside ChannelReady.
class SerialChannel {
 public:
    /// Bytes that may wait for a device which does not take them.
    static constexpr std::size_t kWriteQueueLimit = std::size_t{64} * 1024;

    virtual ~SerialChannel() = default;

    /// Appends everything that has arrived, without blocking; false when the device is gone.
    virtual bool Read(std::string& characters) = 0;

    /// True once after the driver has lost characters.
    virtual bool TakeOverrun() { return false; }

    /// Sends the bytes, from the event loop if need be; false when the device is gone or the queue
    /// has no room for all of them.
    virtual bool Write(std::string_view bytes) = 0;

    /// Drops what the driver holds; Read drops the rest.
    virtual void FlushInput() {}
};

/// A device on its way to being open. Destroying it gives up: a late success is closed again.
class SerialOpening {
 public:
    virtual ~SerialOpening() = default;
    virtual bool Finished() const = 0;

    /// After Finished: the open device, or nothing when it could not be opened.
    virtual std::unique_ptr<SerialChannel> Take(std::weak_ptr<SerialListener> listener) = 0;

    /// After Finished: why it could not be opened.
    virtual OpenFailure Failure() const = 0;
};

inline constexpr std::string_view kTcpPrefix = "tcp://";

/// Both give nothing when the device cannot even be tried.
std::unique_ptr<SerialOpening> StartNativeOpening(std::string device, int baudrate);
std::unique_ptr<SerialOpening> StartTcpOpening(std::string_view device);

/// A file descriptor or a HANDLE.
using NativeHandle = std::intptr_t;
inline constexpr NativeHandle kNoHandle = -1;

/// Opens and sets up the system's own serial device; may block, runs in a worker thread.
/// @param failure  set when there is no handle
NativeHandle OpenNative(const std::string& device, int baudrate, OpenFailure& failure);
void CloseNative(NativeHandle handle);
std::unique_ptr<SerialChannel> MakeNativeChannel(NativeHandle handle,
                                                 std::weak_ptr<SerialListener> listener);

}  // namespace dravik
