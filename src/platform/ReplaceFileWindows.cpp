#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

#include "platform/FileReplacement.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

constexpr ULONGLONG kLockPatience = 400;  // milliseconds
constexpr const char* kLockName = ".dravik.lock";

HANDLE Handle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

const std::intptr_t kNoFile = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

/// Opens a file that nobody else can open until it is closed, waiting for those who have it open.
/// One that is just going away is denied, like one in a folder that is write-protected.
HANDLE OpenAlone(const std::wstring& path, DWORD flags, ULONGLONG deadline) {
    for (;;) {
        const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                          CREATE_ALWAYS, flags, nullptr);
        const DWORD error = file == INVALID_HANDLE_VALUE ? ::GetLastError() : ERROR_SUCCESS;
        const bool busy = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        if (!busy || ::GetTickCount64() >= deadline) {
            ::SetLastError(error);
            return file;
        }
        ::Sleep(1);
    }
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

std::string AbsolutePath(std::string_view path) {
    const std::wstring name = ToWide(ResolvePath(path));
    wchar_t absolute[32768];
    const DWORD length = ::GetFullPathNameW(name.c_str(), 32768, absolute, nullptr);
    return FromWide(std::wstring_view(absolute, length));
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind(kPathSeparator) + 1);
}

}  // namespace

FolderLock::FolderLock(const std::vector<std::string>& files) {
    const ULONGLONG deadline = ::GetTickCount64() + kLockPatience;
    // Once per folder, and in an order that all processes share.
    std::set<std::string> folders;
    for (const std::string& file : files) folders.insert(LowerCased(FolderOf(AbsolutePath(file))));
    for (const std::string& folder : folders) {
        if (!held_) return;
        const HANDLE lock = OpenAlone(ToWide(JoinPath(folder, kLockName)),
                                      FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, deadline);
        if (lock != INVALID_HANDLE_VALUE)
            handles_.push_back(reinterpret_cast<std::intptr_t>(lock));
        else
            held_ = ::GetLastError() != ERROR_SHARING_VIOLATION;
    }
}

FolderLock::~FolderLock() {
    for (const std::intptr_t handle : handles_) ::CloseHandle(Handle(handle));
}

FileReplacement::FileReplacement(std::string_view path, std::string_view content) : file_(kNoFile) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return;
    target_ = AbsolutePath(path);
    const std::string folder = FolderOf(target_);
    // Made anew: what stands there under this name may be a link to another file.
    temporary_ = folder + '.' + target_.substr(folder.size()) + ".tmp";
    const std::wstring name = ToWide(temporary_);
    ::DeleteFileW(name.c_str());
    const HANDLE file = ::CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    file_ = reinterpret_cast<std::intptr_t>(file);
    if (!WriteAll(file, content)) FileReplacement unfinished(std::move(*this));
}

FileReplacement::FileReplacement(FileReplacement&& other) noexcept
    : target_(std::move(other.target_)),
      temporary_(std::move(other.temporary_)),
      file_(std::exchange(other.file_, kNoFile)) {}

FileReplacement::~FileReplacement() {
    if (!Ready()) return;
    ::CloseHandle(Handle(file_));
    ::DeleteFileW(ToWide(temporary_).c_str());
}

bool FileReplacement::Ready() const {
    return file_ != kNoFile;
}

bool FileReplacement::Commit() {
    if (!Ready() || !RenameOver(Handle(file_), ToWide(target_))) return false;
    ::CloseHandle(Handle(std::exchange(file_, kNoFile)));
    return true;
}

void RemoveFile(std::string_view path) {
    ::DeleteFileW(ToWide(ResolvePath(path)).c_str());
}

}  // namespace dravik
