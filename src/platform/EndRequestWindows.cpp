#include <utility>

#include "platform/EndRequest.h"
#include "platform/Events.h"
#include "platform/WindowsApi.h"

namespace dravik {

namespace {

std::function<void()> endHandler;

// Runs in a thread of its own. The system ends the process when this returns, unless only a key was
// pressed, or after some seconds; so it does not return before the program has ended itself.
BOOL WINAPI HandleConsoleEvent(DWORD event) {
    PostToUserInterface([] { endHandler(); });
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) ::Sleep(INFINITE);
    return TRUE;
}

}  // namespace

void OnEndRequest(std::function<void()> handler) {
    endHandler = std::move(handler);
    ::SetConsoleCtrlHandler(HandleConsoleEvent, TRUE);
}

}  // namespace dravik
