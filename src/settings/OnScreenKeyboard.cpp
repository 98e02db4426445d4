#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

std::string StartKeyboard() {
    const std::string& program = basGlobal.OSKPath;
    if (program.empty() || program == "0")
        return Word("No on-screen keyboard is set. It can be chosen in the settings.");
    if (!FileExists(program)) return Word("The on-screen keyboard was not found:") + "\n" + program;
    StartMinimised(ResolvePath(program));
    return {};
}

void BringUpKeyboard() {
    const std::string& program = basGlobal.OSKPath;
    if (FileExists(program)) StartMinimisedOnce(ResolvePath(program));
}

}  // namespace dravik
