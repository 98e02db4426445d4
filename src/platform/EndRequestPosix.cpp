#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>
#include <utility>

#include "platform/EndRequest.h"

namespace dravik {

namespace {

// A signal handler may only write to the socket; the event loop reads it at the other end.
int signalSockets[2] = {-1, -1};

void TellEventLoop(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalSockets[0], &byte, 1);
}

}  // namespace

void OnEndRequest(std::function<void()> handler) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, signalSockets) != 0)
        return;
    auto* notifier =
        new QSocketNotifier(signalSockets[1], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [handler = std::move(handler)] {
                         char byte = 0;
                         while (::read(signalSockets[1], &byte, 1) > 0) continue;
                         handler();
                     });
    struct sigaction action = {};
    action.sa_handler = TellEventLoop;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
}

}  // namespace dravik
