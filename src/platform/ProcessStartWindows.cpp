#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/WindowsApi.h"
// Needs the system's basic types, so it comes last.
#include <shellapi.h>

namespace dravik {
namespace {

bool ShellOpen(const std::string& file, int showCommand) {
    const std::wstring name = ToWide(IsAddress(file) ? file : ResolvePath(file));
    const HINSTANCE result =
        ::ShellExecuteW(nullptr, L"open", name.c_str(), nullptr, nullptr, showCommand);
    constexpr INT_PTR kLastError = 32;
    return reinterpret_cast<INT_PTR>(result) > kLastError;
}

bool StartCommandLine(const std::string& commandLine) {
    std::wstring words = ToWide(commandLine);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMINIMIZED;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, words.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &process)) {
        return false;
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return true;
}

}  // namespace

bool StartMinimised(const std::string& program) {
    // A path may hold blanks; only what is no file is taken as a command line.
    return FileExists(program) ? ShellOpen(program, SW_SHOWMINIMIZED) : StartCommandLine(program);
}

bool OpenWithSystem(const std::string& file) {
    return (IsAddress(file) || FileExists(file)) && ShellOpen(file, SW_SHOWNORMAL);
}

}  // namespace dravik
