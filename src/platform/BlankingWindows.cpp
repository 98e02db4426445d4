#include "platform/Blanking.h"
#include "platform/WindowsApi.h"

namespace dravik {

/// Without ES_CONTINUOUS the system's timer begins anew and nothing has to be taken back.
void PutOffBlanking() {
    ::SetThreadExecutionState(ES_DISPLAY_REQUIRED);
}

void AllowBlanking() {}

}  // namespace dravik
