#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>

#include "vehicle/Transport.h"

namespace dravik::vehicle {
namespace {

std::string SystemError(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

void CloseDescriptor(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

bool MakeNonBlocking(int descriptor) {
    return fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK) == 0 &&
           fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0;
}

/// What both kinds share: waiting for a descriptor and for a wake-up at the same time.
class DescriptorTransport : public Transport {
 public:
    DescriptorTransport() {
        if (pipe(wake_) != 0) {
            wake_[0] = wake_[1] = -1;
            return;
        }
        MakeNonBlocking(wake_[0]);
        MakeNonBlocking(wake_[1]);
    }
    ~DescriptorTransport() override {
        CloseDescriptor(wake_[0]);
        CloseDescriptor(wake_[1]);
    }
    DescriptorTransport(const DescriptorTransport&) = delete;
    DescriptorTransport& operator=(const DescriptorTransport&) = delete;

    void Wake() override {
        const ssize_t written = write(wake_[1], "", 1);
        static_cast<void>(written);  // a full pipe wakes just as well
    }

    std::string Device() const override {
        const std::lock_guard lock(mutex_);
        return device_;
    }

 protected:
    void SetDevice(const std::string& device) {
        const std::lock_guard lock(mutex_);
        device_ = device;
    }

    /// True when the descriptor has something to read (or has come to its end).
    bool WaitFor(int descriptor, double seconds) {
        pollfd waiting[2] = {{wake_[0], POLLIN, 0}, {descriptor, POLLIN, 0}};
        // Finer than milliseconds, or every reply would come up to one too late.
        const double whole = std::floor(std::clamp(seconds, 0.0, 1e9));
        const timespec limit = {static_cast<time_t>(whole),
                                static_cast<long>(std::min(seconds - whole, 0.999999999) * 1e9)};
        if (ppoll(waiting, descriptor < 0 ? 1 : 2, seconds < 0 ? nullptr : &limit, nullptr) <= 0)
            return false;
        if (waiting[0].revents != 0) {
            char buffer[64];
            while (read(wake_[0], buffer, sizeof buffer) > 0) {
            }
        }
        return descriptor >= 0 && waiting[1].revents != 0;
    }

 private:
    int wake_[2] = {-1, -1};
    mutable std::mutex mutex_;
    std::string device_;
};

class PseudoTerminal : public DescriptorTransport {
 public:
    explicit PseudoTerminal(std::string link) : link_(std::move(link)) {}
    ~PseudoTerminal() override { PseudoTerminal::Close(); }

    std::string Open() override {
        std::string problem = OpenPair();
        if (!problem.empty()) Close();
        return problem;
    }

    void Close() override {
        RemoveLink();
        CloseDescriptor(slave_);
        CloseDescriptor(master_);
    }

    bool IsOpen() const override { return master_ >= 0; }

    std::string Wait(double seconds) override {
        if (!WaitFor(master_, seconds)) return {};
        char buffer[1024];
        const ssize_t count = read(master_, buffer, sizeof buffer);
        return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
    }

    void Send(std::string_view bytes) override {
        const ssize_t written = write(master_, bytes.data(), bytes.size());
        static_cast<void>(written);
    }

 private:
    std::string OpenPair() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY);
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0)
            return SystemError("no pseudo-terminal");
        if (!MakeNonBlocking(master_)) return SystemError("pseudo-terminal");
        const char* name = ptsname(master_);
        if (name == nullptr) return SystemError("pseudo-terminal");
        path_ = name;
        // Held open here, the terminal outlives its clients: without that every client that goes
        // away would end in errors on our side until the next one comes.
        slave_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings{};
        if (slave_ < 0 || tcgetattr(slave_, &settings) != 0) return SystemError(path_);
        cfmakeraw(&settings);
        settings.c_cflag |= CLOCAL | CREAD;
        cfsetspeed(&settings, B9600);
        if (tcsetattr(slave_, TCSANOW, &settings) != 0) return SystemError(path_);
        SetDevice(link_.empty() ? path_ : link_);
        return link_.empty() ? std::string() : MakeLink();
    }

    /// The link appears in one step: whoever looks sees the old state or the new one.
    std::string MakeLink() {
        struct stat existing {};
        if (lstat(link_.c_str(), &existing) == 0 && !S_ISLNK(existing.st_mode))
            return link_ + ": exists and is no symbolic link";
        const std::string temporary = link_ + "." + std::to_string(getpid());
        unlink(temporary.c_str());
        if (symlink(path_.c_str(), temporary.c_str()) != 0) return SystemError(temporary);
        if (rename(temporary.c_str(), link_.c_str()) != 0) {
            std::string problem = SystemError(link_);
            unlink(temporary.c_str());
            return problem;
        }
        linked_ = true;
        return {};
    }

    /// Only our own link: another vehicle may have put its own in place meanwhile.
    void RemoveLink() {
        if (!linked_) return;
        linked_ = false;
        char target[256];
        const ssize_t length = readlink(link_.c_str(), target, sizeof target);
        if (length > 0 && path_ == std::string_view(target, static_cast<std::size_t>(length)))
            unlink(link_.c_str());
    }

    std::string link_, path_;
    int master_ = -1, slave_ = -1;
    bool linked_ = false;
};

class Tcp : public DescriptorTransport {
 public:
    explicit Tcp(int port) : port_(port) {}
    ~Tcp() override { Tcp::Close(); }

    std::string Open() override {
        listener_ = socket(AF_INET, SOCK_STREAM, 0);
        if (listener_ < 0 || !MakeNonBlocking(listener_)) return SystemError("socket");
        const int on = 1;
        setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port_));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        if (bind(listener_, plain, size) != 0 || listen(listener_, 4) != 0 ||
            getsockname(listener_, plain, &size) != 0) {
            std::string problem = SystemError("port " + std::to_string(port_));
            Close();
            return problem;
        }
        port_ = ntohs(address.sin_port);
        SetDevice("tcp://127.0.0.1:" + std::to_string(port_));
        return {};
    }

    void Close() override {
        CloseDescriptor(client_);
        CloseDescriptor(listener_);
    }

    bool IsOpen() const override { return listener_ >= 0; }

    /// One client at a time, as on a serial line: a second one waits until the first has gone.
    std::string Wait(double seconds) override {
        if (!WaitFor(client_ >= 0 ? client_ : listener_, seconds)) return {};
        if (client_ < 0) {
            client_ = accept(listener_, nullptr, nullptr);
            if (client_ < 0) return {};
            MakeNonBlocking(client_);
            const int on = 1;
            setsockopt(client_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        }
        char buffer[1024];
        const ssize_t count = recv(client_, buffer, sizeof buffer, 0);
        if (count > 0) return std::string(buffer, static_cast<std::size_t>(count));
        if (count == 0 || (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR))
            CloseDescriptor(client_);
        return {};
    }

    void Send(std::string_view bytes) override {
        if (client_ < 0) return;
        const ssize_t sent = send(client_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        static_cast<void>(sent);
    }

 private:
    int port_;
    int listener_ = -1, client_ = -1;
};

}  // namespace

std::unique_ptr<Transport> MakeSerialLine(const std::string& link) {
    return std::make_unique<PseudoTerminal>(link);
}

std::unique_ptr<Transport> MakeTcp(int port) {
    return std::make_unique<Tcp>(port);
}

}  // namespace dravik::vehicle
