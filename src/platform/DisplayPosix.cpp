#include <QByteArray>
#include <cstdlib>

#include "platform/Display.h"
#include "platform/Paths.h"

namespace dravik {

bool ChooseDisplay(bool console) {
    for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != 0) return true;
    }
    if (console)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (FileExists("/dev/fb0"))
        qputenv("QT_QPA_PLATFORM", "linuxfb");
    else
        return false;
    return true;
}

}  // namespace dravik
