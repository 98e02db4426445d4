#include "skin/ProgramTitle.h"

#include <cstdio>

namespace dravik {

std::string ProgramTitle() {
    char text[64];
    std::snprintf(text, sizeof text, "Dravik V%d.%02d.%02d", DRAVIK_VERSION_MAJOR,
                  DRAVIK_VERSION_MINOR, DRAVIK_VERSION_PATCH);
    return text;
}

}  // namespace dravik
