#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/Terminal.h"

namespace dravik {
namespace {

/// Whether a call that gave `result` is to be made again. Another program may have made a stream
/// that it shares with this one one that does not wait.
bool TryAgain(ssize_t result, int stream, short event) {
    if (result >= 0) return false;
    if (errno == EAGAIN) {
        pollfd ready{stream, event, 0};
        return ::poll(&ready, 1, -1) >= 0 || errno == EINTR;
    }
    return errno == EINTR;
}

}  // namespace

// Every program has the terminal that it was started from.
// A stream that was closed would be taken by whatever this program opens first, which would then
// get the console's answers or be read as its requests.
void JoinTerminal() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDWR));
    }
}

// A signal that is caught, unlike one that is ignored, is not handed down to other programs.
void OutliveReaders() {
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGPIPE, &action, nullptr);
}

std::size_t ReadStandardInput(char* buffer, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, buffer, size);
    } while (TryAgain(count, STDIN_FILENO, POLLIN));
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool WriteStandardOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (!TryAgain(count, STDOUT_FILENO, POLLOUT))
            return false;
    }
    return true;
}

}  // namespace dravik
