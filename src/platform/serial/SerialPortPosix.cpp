#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <optional>
#include <utility>

#include "platform/DeleteLater.h"
#include "platform/serial/SerialChannel.h"
#include "platform/serial/SerialDriver.h"
#include "platform/serial/SerialPort.h"

namespace dravik {
namespace {

struct Speed {
    int Baudrate;
    speed_t Code;
};

constexpr Speed kSpeeds[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},
#ifdef B460800  // these are no part of POSIX, and come together
    {460800, B460800},   {500000, B500000},   {576000, B576000},   {921600, B921600},
    {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000}, {2000000, B2000000},
    {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
#endif
};

/// The first number of each family of devices, in steps of eight port numbers.
constexpr const char* kPortFamilies[] = {"/dev/ttyUSB", "/dev/ttyACM", "/dev/rfcomm", "/dev/ttyS"};
constexpr int kPortsPerFamily = 8;

// A sender without pause must not keep Read from returning.
constexpr std::size_t kReadLimit = std::size_t{64} * 1024;

std::optional<speed_t> FindSpeed(int baudrate) {
    const auto* found =
        std::find_if(std::begin(kSpeeds), std::end(kSpeeds),
                     [baudrate](const Speed& speed) { return speed.Baudrate == baudrate; });
    if (found == std::end(kSpeeds)) return std::nullopt;
    return found->Code;
}

int Descriptor(NativeHandle handle) {
    return static_cast<int>(handle);
}

bool Claim(int descriptor) {
    if (IsMarked(descriptor)) return false;
    // The lock also keeps out a privileged process, which the mark does not stop. The mark itself
    // would stay on a pseudo-terminal whose user was killed.
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) return false;
    return IsPseudoTerminal(descriptor) || ioctl(descriptor, TIOCEXCL) == 0;
}

/// What the system's error at the way to a device means.
OpenFailure FailureOf(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
            return OpenFailure::NoPermission;
        case EBUSY:
            return OpenFailure::InUse;
        default:
            return OpenFailure::NoSuchDevice;
    }
}

/// What SetLine cannot: a speed that has no name in termios.
bool SetSpeed(int descriptor, int baudrate) {
    return FindSpeed(baudrate) || SetUnnamedSpeed(descriptor, baudrate);
}

bool SetLine(int descriptor, speed_t speed) {
    termios line{};
    if (tcgetattr(descriptor, &line) != 0) return false;
    cfmakeraw(&line);
    line.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS | PARENB);
    line.c_cflag |= CS8 | CREAD | CLOCAL;
    line.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
    // With VMIN 0 an empty line would read like a device that is gone.
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    if (cfsetispeed(&line, speed) != 0 || cfsetospeed(&line, speed) != 0) return false;
    if (tcsetattr(descriptor, TCSANOW, &line) != 0) return false;
    tcflush(descriptor, TCIOFLUSH);
    return true;
}

/// Deleting a notifier inside its own signal is not safe.
struct NotifierDeleter {
    void operator()(QSocketNotifier* notifier) const {
        notifier->setEnabled(false);
        DeleteLater(notifier);
    }
};
using Notifier = std::unique_ptr<QSocketNotifier, NotifierDeleter>;

class TerminalChannel : public SerialChannel {
 public:
    TerminalChannel(int descriptor, std::weak_ptr<SerialListener> listener);
    ~TerminalChannel() override;
    TerminalChannel(const TerminalChannel&) = delete;
    TerminalChannel& operator=(const TerminalChannel&) = delete;

    bool Read(std::string& characters) override;
    bool TakeOverrun() override;
    bool Write(std::string_view bytes) override;
    void FlushInput() override { tcflush(descriptor_, TCIFLUSH); }

 private:
    std::size_t WriteSome(std::string_view bytes);
    void WriteQueued();
    void Report();

    int descriptor_;
    bool lost_ = false;
    int overruns_ = 0;
    std::string queue_;
    std::weak_ptr<SerialListener> listener_;
    Notifier readable_;
    Notifier writable_;
};

bool HungUp(int descriptor) {
    pollfd state{descriptor, 0, 0};
    return poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

TerminalChannel::TerminalChannel(int descriptor, std::weak_ptr<SerialListener> listener)
    : descriptor_(descriptor),
      overruns_(CountOverruns(descriptor)),
      listener_(std::move(listener)),
      readable_(new QSocketNotifier(descriptor, QSocketNotifier::Read)),
      writable_(new QSocketNotifier(descriptor, QSocketNotifier::Write)) {
    writable_->setEnabled(false);
    // Neither may touch the channel after Report: the listener may have destroyed it.
    QObject::connect(readable_.get(), &QSocketNotifier::activated, [this] { Report(); });
    QObject::connect(writable_.get(), &QSocketNotifier::activated, [this] { WriteQueued(); });
}

TerminalChannel::~TerminalChannel() {
    readable_.reset();
    writable_.reset();
    CloseNative(descriptor_);
}

bool TerminalChannel::Read(std::string& characters) {
    std::array<char, SerialPort::kBufferSize> chunk;
    const std::size_t limit = characters.size() + kReadLimit;
    while (characters.size() < limit) {
        const ssize_t count = read(descriptor_, chunk.data(), chunk.size());
        if (count > 0) {
            characters.append(chunk.data(), static_cast<std::size_t>(count));
            continue;
        }
        if (count < 0 && errno == EINTR) continue;
        const bool empty = count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
        if (!empty || HungUp(descriptor_)) lost_ = true;
        break;
    }
    return !lost_;
}

bool TerminalChannel::TakeOverrun() {
    const int before = std::exchange(overruns_, CountOverruns(descriptor_));
    return overruns_ > before;
}

bool TerminalChannel::Write(std::string_view bytes) {
    if (queue_.size() + bytes.size() > kWriteQueueLimit) return false;
    if (queue_.empty()) bytes.remove_prefix(WriteSome(bytes));
    if (lost_) return false;
    queue_.append(bytes);
    writable_->setEnabled(!queue_.empty());
    return true;
}

// The number of bytes that the driver has taken; sets lost_ when it never will again.
std::size_t TerminalChannel::WriteSome(std::string_view bytes) {
    std::size_t taken = 0;
    while (taken < bytes.size()) {
        const ssize_t count = write(descriptor_, bytes.data() + taken, bytes.size() - taken);
        if (count >= 0) {
            taken += static_cast<std::size_t>(count);
            if (count == 0) break;
        } else if (errno != EINTR) {
            lost_ = errno != EAGAIN && errno != EWOULDBLOCK;
            break;
        }
    }
    return taken;
}

void TerminalChannel::WriteQueued() {
    queue_.erase(0, WriteSome(queue_));
    if (queue_.empty()) writable_->setEnabled(false);
    if (lost_) Report();
}

void TerminalChannel::Report() {
    if (const auto listener = listener_.lock()) listener->ChannelReady();
}

}  // namespace

NativeHandle OpenNative(const std::string& device, int baudrate, OpenFailure& failure) {
    failure = OpenFailure::NoSuchSpeed;
    if (baudrate <= 0) return kNoHandle;
    struct stat info {};
    // Looked at first, because merely opening a file of another kind can have effects.
    const bool found = stat(device.c_str(), &info) == 0;
    failure = found ? OpenFailure::NoSuchDevice : FailureOf(errno);
    if (!found || !S_ISCHR(info.st_mode)) return kNoHandle;
    const int descriptor = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        failure = FailureOf(errno);
        return kNoHandle;
    }
    const bool terminal = isatty(descriptor) == 1;
    if (terminal && Claim(descriptor)) {
        if (SetLine(descriptor, FindSpeed(baudrate).value_or(B9600))) {
            if (SetSpeed(descriptor, baudrate)) {
                failure = OpenFailure::None;
                return descriptor;
            }
            failure = OpenFailure::NoSuchSpeed;
            std::fprintf(stderr, "dravik: %s does not take %d baud\n", device.c_str(), baudrate);
        }
        CloseNative(descriptor);
        return kNoHandle;
    }
    if (terminal) failure = OpenFailure::InUse;
    close(descriptor);
    return kNoHandle;
}

void CloseNative(NativeHandle handle) {
    const int descriptor = Descriptor(handle);
    // Unsent output would make close() wait for a device that takes nothing.
    int unsent = 0;
    if (ioctl(descriptor, TIOCOUTQ, &unsent) == 0 && unsent > 0) tcflush(descriptor, TCOFLUSH);
    if (!IsPseudoTerminal(descriptor)) ioctl(descriptor, TIOCNXCL);
    close(descriptor);
}

std::unique_ptr<SerialChannel> MakeNativeChannel(NativeHandle handle,
                                                 std::weak_ptr<SerialListener> listener) {
    return std::make_unique<TerminalChannel>(Descriptor(handle), std::move(listener));
}

std::string DefaultPortDevice(int number) {
    constexpr int kPorts = kPortsPerFamily * static_cast<int>(std::size(kPortFamilies));
    if (number < 1 || number > kPorts) return {};
    const int index = number - 1;
    return kPortFamilies[index / kPortsPerFamily] + std::to_string(index % kPortsPerFamily);
}

}  // namespace dravik
