#include "skin/ProgramTitle.h"

#include <QtGlobal>
#include <cstdio>

#include "core/basGlobal.h"

namespace dravik {

std::string ProgramTitle() {
    char text[64];
    std::snprintf(text, sizeof text, "Dravik V%d.%02d.%02d", DRAVIK_VERSION_MAJOR,
                  DRAVIK_VERSION_MINOR, DRAVIK_VERSION_PATCH);
    return text;
}

std::string ProgramBuild() {
    const std::string& commit = basGlobal.Launch.Commit;
    std::string text = commit.empty() ? "" : "commit " + commit + ", ";
    text += std::string("Qt ") + qVersion();
    if (text.ends_with(QT_VERSION_STR)) return text;
    return text + " (built with " QT_VERSION_STR ")";
}

}  // namespace dravik
