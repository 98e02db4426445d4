// The system's header with the speeds that have no name does not go together with termios.h, so
// this file does without that.
#include <asm/termbits.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cstdlib>

#include "platform/serial/SerialDriver.h"

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

bool IsPseudoTerminal(int descriptor) {
    constexpr unsigned kFirstMajor = 136;
    constexpr unsigned kLastMajor = 143;
    struct stat info {};
    if (fstat(descriptor, &info) != 0) return false;
    const unsigned number = major(info.st_rdev);
    return number >= kFirstMajor && number <= kLastMajor;
}

bool IsMarked(int descriptor) {
    int marked = 0;
    return ioctl(descriptor, TIOCGEXCL, &marked) == 0 && marked != 0;
}

int CountOverruns(int descriptor) {
    serial_icounter_struct counts{};
    if (ioctl(descriptor, TIOCGICOUNT, &counts) != 0) return 0;
    return counts.overrun + counts.buf_overrun;
}

}  // namespace dravik
