// The system's header with the speeds that have no name does not go together with termios.h, so
// this file does without that.
#include <asm/termbits.h>
#include <sys/ioctl.h>

#include <cstdlib>

#include "platform/serial/SerialSpeed.h"

namespace dravik {

bool SetUnnamedSpeed(int descriptor, int baudrate) {
    termios2 line{};
    if (ioctl(descriptor, TCGETS2, &line) != 0) return false;
    line.c_cflag &= ~static_cast<tcflag_t>(CBAUD | CBAUD << IBSHIFT);
    line.c_cflag |= BOTHER | BOTHER << IBSHIFT;
    line.c_ispeed = line.c_ospeed = static_cast<speed_t>(baudrate);
    if (ioctl(descriptor, TCSETS2, &line) != 0 || ioctl(descriptor, TCGETS2, &line) != 0)
        return false;
    // A driver takes the nearest speed that it has. A character survives a few percent.
    constexpr long kTolerance = 3;  // percent
    const long off = std::labs(static_cast<long>(line.c_ospeed) - baudrate);
    return off * 100 <= baudrate * kTolerance;
}

}  // namespace dravik
