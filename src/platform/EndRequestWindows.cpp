#include <windows.h>

#include <utility>

#include "platform/EndRequest.h"
#include "platform/Events.h"

namespace dravik {

namespace {

std::function<void()> endHandler;

BOOL WINAPI HandleConsoleEvent(DWORD) {
    PostToUserInterface([] { endHandler(); });
    return TRUE;
}

}  // namespace

void OnEndRequest(std::function<void()> handler) {
    endHandler = std::move(handler);
    ::SetConsoleCtrlHandler(HandleConsoleEvent, TRUE);
}

}  // namespace dravik
