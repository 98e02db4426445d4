#include <csignal>
#include <initializer_list>

#include "tools/EndOfProgram.h"

namespace dravik {
namespace {

sigset_t EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&signals, signal);
    return signals;
}

}  // namespace

// Threads inherit the mask, so that all of them leave the signals to WaitForEnd.
void HoldBackEnd() {
    const sigset_t signals = EndSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

void WaitForEnd() {
    const sigset_t signals = EndSignals();
    int signal = 0;
    sigwait(&signals, &signal);
}

}  // namespace dravik
