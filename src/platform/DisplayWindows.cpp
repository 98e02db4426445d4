#include "platform/Display.h"

namespace dravik {

// Here every program has a desktop.
bool ChooseDisplay(bool) {
    return true;
}

}  // namespace dravik
