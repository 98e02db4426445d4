#include <QWinEventNotifier>
#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/DeleteLater.h"
#include "platform/WindowsApi.h"
#include "platform/serial/SerialChannel.h"
#include "platform/serial/SerialPort.h"

namespace dravik {
namespace {

constexpr int kHighestPort = 255;

// A sender without pause must not keep Read from returning.
constexpr std::size_t kReadLimit = std::size_t{64} * 1024;

// How long a driver may take to give back a cancelled operation.
constexpr DWORD kCancelMs = 500;

HANDLE Handle(NativeHandle handle) {
    return reinterpret_cast<HANDLE>(handle);
}

/// Whether the line is set up now, else what stands in the way.
OpenFailure SetLine(HANDLE port, int baudrate) {
    DCB line{};
    line.DCBlength = sizeof(line);
    // Also the answer of what is no serial port.
    if (!GetCommState(port, &line)) return OpenFailure::NoSuchDevice;
    line.BaudRate = static_cast<DWORD>(baudrate);
    line.fBinary = TRUE;
    line.fParity = FALSE;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fDsrSensitivity = FALSE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fErrorChar = FALSE;
    line.fNull = FALSE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    line.fAbortOnError = FALSE;
    line.ByteSize = 8;
    line.Parity = NOPARITY;
    line.StopBits = ONESTOPBIT;
    if (!SetCommState(port, &line)) return OpenFailure::NoSuchSpeed;

    COMMTIMEOUTS none{};
    if (!SetCommTimeouts(port, &none)) return OpenFailure::NoSuchDevice;
    SetupComm(port, SerialPort::kBufferSize, SerialPort::kBufferSize);
    PurgeComm(port, PURGE_RXCLEAR | PURGE_TXCLEAR);
    return OpenFailure::None;
}

/// One overlapped read or write. The driver uses it until it has given it back.
struct Operation {
    Operation() { State.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr); }
    ~Operation() { CloseHandle(State.hEvent); }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    OVERLAPPED State{};
    bool Pending = false;
    DWORD Size = 0;
    std::array<char, SerialPort::kBufferSize> Bytes;
};

enum class Outcome { Pending, Done, Failed };

Outcome Started(BOOL accepted) {
    return accepted || GetLastError() == ERROR_IO_PENDING ? Outcome::Pending : Outcome::Failed;
}

/// Whether the driver has given the operation back, and the number of bytes that it moved.
Outcome Finish(HANDLE port, Operation& operation, DWORD& count) {
    count = 0;
    if (GetOverlappedResult(port, &operation.State, &count, FALSE)) {
        operation.Pending = false;
        return Outcome::Done;
    }
    if (GetLastError() == ERROR_IO_INCOMPLETE) return Outcome::Pending;
    operation.Pending = false;
    return Outcome::Failed;
}

void Cancel(HANDLE port, std::unique_ptr<Operation> operation) {
    if (!operation->Pending) return;
    CancelIoEx(port, &operation->State);
    // A driver that keeps it may still write to it: better to lose the memory.
    if (WaitForSingleObject(operation->State.hEvent, kCancelMs) != WAIT_OBJECT_0)
        static_cast<void>(operation.release());
}

/// Deleting a notifier inside its own signal is not safe.
struct NotifierDeleter {
    void operator()(QWinEventNotifier* notifier) const {
        notifier->setEnabled(false);
        DeleteLater(notifier);
    }
};
using Notifier = std::unique_ptr<QWinEventNotifier, NotifierDeleter>;

class ComChannel : public SerialChannel {
 public:
    ComChannel(HANDLE port, std::weak_ptr<SerialListener> listener);
    ~ComChannel() override;
    ComChannel(const ComChannel&) = delete;
    ComChannel& operator=(const ComChannel&) = delete;

    bool Read(std::string& characters) override;
    bool TakeOverrun() override;
    bool Write(std::string_view bytes) override;
    void FlushInput() override { PurgeComm(port_, PURGE_RXCLEAR); }

 private:
    std::optional<DWORD> Waiting();
    void StartRead();
    void StartWrite();
    void FinishWrite();
    void Report();

    HANDLE port_;
    bool lost_ = false;
    bool overrun_ = false;
    std::string queue_;
    std::weak_ptr<SerialListener> listener_;
    std::unique_ptr<Operation> read_ = std::make_unique<Operation>();
    std::unique_ptr<Operation> write_ = std::make_unique<Operation>();
    Notifier readDone_;
    Notifier writeDone_;
};

ComChannel::ComChannel(HANDLE port, std::weak_ptr<SerialListener> listener)
    : port_(port),
      listener_(std::move(listener)),
      readDone_(new QWinEventNotifier(read_->State.hEvent)),
      writeDone_(new QWinEventNotifier(write_->State.hEvent)) {
    // Neither may touch the channel after Report: the listener may have destroyed it.
    QObject::connect(readDone_.get(), &QWinEventNotifier::activated, [this] { Report(); });
    QObject::connect(writeDone_.get(), &QWinEventNotifier::activated, [this] { FinishWrite(); });
    StartRead();
}

ComChannel::~ComChannel() {
    readDone_.reset();
    writeDone_.reset();
    Cancel(port_, std::move(read_));
    Cancel(port_, std::move(write_));
    CloseHandle(port_);
}

/// The number of characters that the driver holds; nothing when the device is gone.
std::optional<DWORD> ComChannel::Waiting() {
    DWORD errors = 0;
    COMSTAT status{};
    if (!ClearCommError(port_, &errors, &status)) return std::nullopt;
    // Asking clears the errors, so they are kept here.
    if ((errors & (CE_OVERRUN | CE_RXOVER)) != 0) overrun_ = true;
    return status.cbInQue;
}

// A read of what the driver holds ends at once, one of a single character with the next that comes.
void ComChannel::StartRead() {
    if (const std::optional<DWORD> waiting = Waiting()) {
        const DWORD size = std::clamp<DWORD>(*waiting, 1, SerialPort::kBufferSize);
        const BOOL accepted = ReadFile(port_, read_->Bytes.data(), size, nullptr, &read_->State);
        read_->Pending = Started(accepted) == Outcome::Pending;
    }
    if (!read_->Pending) lost_ = true;
}

bool ComChannel::Read(std::string& characters) {
    const std::size_t limit = characters.size() + kReadLimit;
    while (read_->Pending && characters.size() < limit) {
        DWORD count = 0;
        const Outcome outcome = Finish(port_, *read_, count);
        if (outcome == Outcome::Pending) break;
        characters.append(read_->Bytes.data(), count);
        if (outcome == Outcome::Failed) {
            lost_ = true;
            break;
        }
        StartRead();
        if (count == 0) break;
    }
    // Without a read under way nothing would announce the next character, nor the event be reset.
    if (!read_->Pending) lost_ = true;
    return !lost_;
}

bool ComChannel::TakeOverrun() {
    static_cast<void>(Waiting());
    return std::exchange(overrun_, false);
}

bool ComChannel::Write(std::string_view bytes) {
    const std::size_t waiting = queue_.size() + (write_->Pending ? write_->Size : 0);
    if (lost_ || waiting + bytes.size() > kWriteQueueLimit) return false;
    queue_.append(bytes);
    StartWrite();
    return !lost_;
}

void ComChannel::StartWrite() {
    if (lost_ || write_->Pending || queue_.empty()) return;
    const std::size_t size = std::min(queue_.size(), write_->Bytes.size());
    std::memcpy(write_->Bytes.data(), queue_.data(), size);
    queue_.erase(0, size);
    write_->Size = static_cast<DWORD>(size);
    const BOOL accepted =
        WriteFile(port_, write_->Bytes.data(), write_->Size, nullptr, &write_->State);
    write_->Pending = Started(accepted) == Outcome::Pending;
    if (!write_->Pending) lost_ = true;
}

void ComChannel::FinishWrite() {
    if (!write_->Pending) return;
    DWORD count = 0;
    const Outcome outcome = Finish(port_, *write_, count);
    if (outcome == Outcome::Pending) return;
    if (outcome == Outcome::Failed) lost_ = true;
    queue_.insert(0, write_->Bytes.data() + count, write_->Size - count);
    // Reset here, since no new write may follow to do it.
    ResetEvent(write_->State.hEvent);
    StartWrite();
    if (lost_) Report();
}

void ComChannel::Report() {
    if (const auto listener = listener_.lock()) listener->ChannelReady();
}

}  // namespace

NativeHandle OpenNative(const std::string& device, int baudrate, OpenFailure& failure) {
    failure = baudrate <= 0 ? OpenFailure::NoSuchSpeed : OpenFailure::NoSuchDevice;
    if (device.empty() || baudrate <= 0) return kNoHandle;
    const std::string name = device.starts_with("\\\\") ? device : "\\\\.\\" + device;
    // No sharing: the port is exclusive.
    const HANDLE port = CreateFileW(ToWide(name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (port == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        // A port that is open elsewhere denies access; there are no permissions to lack.
        if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION)
            failure = OpenFailure::InUse;
        return kNoHandle;
    }
    failure = SetLine(port, baudrate);
    if (failure == OpenFailure::None) return reinterpret_cast<NativeHandle>(port);
    CloseHandle(port);
    return kNoHandle;
}

void CloseNative(NativeHandle handle) {
    CloseHandle(Handle(handle));
}

std::unique_ptr<SerialChannel> MakeNativeChannel(NativeHandle handle,
                                                 std::weak_ptr<SerialListener> listener) {
    return std::make_unique<ComChannel>(Handle(handle), std::move(listener));
}

std::string DefaultPortDevice(int number) {
    if (number < 1 || number > kHighestPort) return {};
    return "\\\\.\\COM" + std::to_string(number);
}

}  // namespace dravik
