#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>

#include "tools/EndOfProgram.h"

namespace dravik {
namespace {

std::atomic<HANDLE> ended = nullptr;

BOOL WINAPI OnConsoleEvent(DWORD) {
    SetEvent(ended);
    return TRUE;
}

}  // namespace

void HoldBackEnd() {
    ended = CreateEvent(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

void WaitForEnd() {
    WaitForSingleObject(ended, INFINITE);
}

}  // namespace dravik
