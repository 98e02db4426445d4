#include <io.h>

#include <algorithm>
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

// Here a reader that goes away is no more than a write that fails.
void OutliveReaders() {}

std::size_t ReadStandardInput(char* buffer, std::size_t size) {
    const int count = ::_read(::_fileno(stdin), buffer, static_cast<unsigned>(size));
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool WriteStandardOutput(std::string_view text) {
    constexpr std::size_t kPiece =
        std::size_t{32} * 1024;  // a terminal takes no more than 64 KiB at a time
    while (!text.empty()) {
        const std::size_t size = std::min(text.size(), kPiece);
        const int count = ::_write(::_fileno(stdout), text.data(), static_cast<unsigned>(size));
        if (count <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace dravik
