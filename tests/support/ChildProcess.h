#pragma once

#include <sys/wait.h>
#include <unistd.h>

namespace dravik {

/// Runs `work` in a copy of this process that ends right after it; gives the copy's process id.
template <typename Work>
pid_t StartChild(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

/// Runs `check` in a copy of this process; true when it returned true there.
template <typename Check>
bool HoldsInChild(Check check) {
    const pid_t child = StartChild([&] { ::_exit(check() ? 0 : 1); });
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

}  // namespace dravik
