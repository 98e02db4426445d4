#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/WindowsApi.h"
// Needs the system's basic types, so it comes last.
#include <shellapi.h>

namespace dravik {
namespace {

/// @param process  takes a handle of what was started, where there is one
bool ShellOpen(const std::string& file, int showCommand, HANDLE* process = nullptr) {
    const std::wstring name = ToWide(IsAddress(file) ? file : ResolvePath(file));
    SHELLEXECUTEINFOW what{};
    what.cbSize = sizeof what;
    what.fMask = process != nullptr ? SEE_MASK_NOCLOSEPROCESS : SEE_MASK_DEFAULT;
    what.lpVerb = L"open";
    what.lpFile = name.c_str();
    what.nShow = showCommand;
    if (!::ShellExecuteExW(&what)) return false;
    if (process != nullptr) *process = what.hProcess;
    return true;
}

bool StartCommandLine(const std::string& commandLine, HANDLE* started) {
    std::wstring words = ToWide(commandLine);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMINIMIZED;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, words.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &process))
        return false;
    ::CloseHandle(process.hThread);
    *started = process.hProcess;
    return true;
}

/// What was started, or null; the caller closes it.
bool Start(const std::string& program, HANDLE* process) {
    // A path may hold blanks; only what is no file is taken as a command line.
    return FileExists(program) ? ShellOpen(program, SW_SHOWMINIMIZED, process)
                               : StartCommandLine(program, process);
}

}  // namespace

bool StartMinimised(const std::string& program) {
    HANDLE process = nullptr;
    if (!Start(program, &process)) return false;
    if (process != nullptr) ::CloseHandle(process);
    return true;
}

bool StartMinimisedOnce(const std::string& program) {
    static HANDLE last = nullptr;
    if (last != nullptr) {
        if (::WaitForSingleObject(last, 0) == WAIT_TIMEOUT) return true;
        ::CloseHandle(last);
        last = nullptr;
    }
    return Start(program, &last);
}

bool OpenWithSystem(const std::string& file) {
    return (IsAddress(file) || FileExists(file)) && ShellOpen(file, SW_SHOWNORMAL);
}

}  // namespace dravik
