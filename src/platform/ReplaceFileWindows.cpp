#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/PathNames.h"
#include "platform/Paths.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

/// A writer holds its temporary file for a few milliseconds; one that is stuck must not hang us.
constexpr int kOpenAttempts = 2000;

/// Opens the temporary file for this writer alone: nobody else can open it until it is closed.
HANDLE OpenTemporary(const std::wstring& path) {
    for (int i = 0; i < kOpenAttempts; ++i) {
        const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_SHARING_VIOLATION)
            return file;
        ::Sleep(1);
    }
    return INVALID_HANDLE_VALUE;
}

bool WriteAll(HANDLE file, std::string_view content) {
    if (content.size() > static_cast<std::size_t>(kLargestFile)) return false;
    DWORD count = 0;
    const auto size = static_cast<DWORD>(content.size());
    return ::WriteFile(file, content.data(), size, &count, nullptr) && count == size &&
           ::FlushFileBuffers(file);
}

// Renaming the open file, not its name, leaves no instant in which another writer could take it.
bool RenameOver(HANDLE file, const std::wstring& target) {
    const std::size_t nameBytes = target.size() * sizeof(wchar_t);
    std::vector<std::uint64_t> buffer((sizeof(FILE_RENAME_INFO) + nameBytes) / 8 + 2);
    auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    rename->ReplaceIfExists = TRUE;
    rename->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(rename->FileName, target.data(), nameBytes);
    return ::SetFileInformationByHandle(file, FileRenameInfo, rename,
                                        static_cast<DWORD>(buffer.size() * 8));
}

std::wstring AbsolutePath(std::string_view path) {
    const std::wstring name = ToWide(ResolvePath(path));
    wchar_t absolute[32768];
    const DWORD length = ::GetFullPathNameW(name.c_str(), 32768, absolute, nullptr);
    return std::wstring(absolute, length);
}

}  // namespace

bool ReplaceFile(std::string_view path, std::string_view content) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return false;
    const std::wstring target = AbsolutePath(path);
    const std::size_t nameStart = target.rfind(L'\\') + 1;
    const std::wstring temporary =
        target.substr(0, nameStart) + L'.' + target.substr(nameStart) + L".tmp";
    const HANDLE file = OpenTemporary(temporary);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool replaced = WriteAll(file, content) && RenameOver(file, target);
    ::CloseHandle(file);
    if (!replaced) ::DeleteFileW(temporary.c_str());
    return replaced;
}

/// Flushing all of a volume is for administrators alone; each file is flushed when it is replaced.
void FlushFiles() {}

}  // namespace dravik
