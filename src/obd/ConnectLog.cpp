#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace dravik {

void WriteConnectLog() {
    std::string& trace = basGlobal.CommTrace;
    trace = ReplaceAll(trace, "\r", "\r\n");
    trace = ReplaceAll(trace, "\r\n\n", "\r\n");  // a return that had its line feed already

    WriteFileAnew(JoinPath(basGlobal.ProgramFolder, "log.txt"),
                  CurrentStatusText() + "\r\n" + trace);
}

}  // namespace dravik
