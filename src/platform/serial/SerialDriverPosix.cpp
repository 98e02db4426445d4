// For systems of which no more is known than what POSIX says.

#include "platform/serial/SerialDriver.h"

namespace dravik {

bool SetUnnamedSpeed(int, int) {
    return false;
}

bool IsPseudoTerminal(int) {
    return false;
}

bool IsMarked(int) {
    return false;
}

int CountOverruns(int) {
    return 0;
}

}  // namespace dravik
