#include <cstdio>

#include "platform/Terminal.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

bool IsRedirected(DWORD stream) {
    return ::GetFileType(::GetStdHandle(stream)) != FILE_TYPE_UNKNOWN;
}

}  // namespace

// A program with windows starts without streams, unless they are redirected.
void JoinTerminal() {
    const bool input = IsRedirected(STD_INPUT_HANDLE);
    const bool output = IsRedirected(STD_OUTPUT_HANDLE);
    const bool errors = IsRedirected(STD_ERROR_HANDLE);
    if ((input && output && errors) || !::AttachConsole(ATTACH_PARENT_PROCESS)) return;
    if (!input) std::freopen("CONIN$", "r", stdin);
    if (!output) std::freopen("CONOUT$", "w", stdout);
    if (!errors) std::freopen("CONOUT$", "w", stderr);
}

}  // namespace dravik
