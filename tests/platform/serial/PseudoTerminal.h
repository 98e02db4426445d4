#pragma once

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace dravik {

/// The far end of a pseudo-terminal, in the place of a device.
class PseudoTerminal {
 public:
    PseudoTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (grantpt(master_) == 0 && unlockpt(master_) == 0) path_ = ptsname(master_);
    }
    ~PseudoTerminal() { Vanish(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& Path() const { return path_; }

    /// The number of bytes that were taken.
    std::size_t Send(std::string_view bytes) const {
        const ssize_t count = write(master_, bytes.data(), bytes.size());
        return count < 0 ? 0 : static_cast<std::size_t>(count);
    }

    std::string Receive() const {
        std::string bytes(65536, '\0');
        const ssize_t count = read(master_, bytes.data(), bytes.size());
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return bytes;
    }

    /// The number of bytes for the program's end that its driver holds unread.
    std::size_t HeldByDriver() const {
        const int slave = open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
        int count = 0;
        ioctl(slave, FIONREAD, &count);
        close(slave);
        return static_cast<std::size_t>(count);
    }

    bool WasOpened() const {
        pollfd state{master_, POLLIN, 0};
        ::poll(&state, 1, 0);
        return (state.revents & POLLHUP) != 0;
    }

    void Vanish() {
        if (master_ >= 0) close(master_);
        master_ = -1;
    }

 private:
    int master_;
    std::string path_;
};

}  // namespace dravik
