#include <algorithm>
#include <filesystem>

#include "platform/PathNames.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

DWORD AttributesOf(std::string_view path) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return INVALID_FILE_ATTRIBUTES;
    return ::GetFileAttributesW(ToWide(ResolvePath(path)).c_str());
}

std::string EnvironmentText(const wchar_t* name) {
    wchar_t text[32768];
    const DWORD length = ::GetEnvironmentVariableW(name, text, 32768);
    return FromWide(std::wstring_view(text, length));
}

}  // namespace

// The system finds names without regard to case by itself.
std::string ResolvePath(std::string_view path) {
    std::string resolved(path);
    std::replace(resolved.begin(), resolved.end(), '/', kPathSeparator);
    return resolved;
}

bool FileExists(std::string_view path) {
    const DWORD attributes = AttributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FolderExists(std::string_view path) {
    const DWORD attributes = AttributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool LiesBeneath(std::string_view path, std::string_view folder) {
    namespace fs = std::filesystem;
    const auto canonical = [](std::string_view name) {
        std::error_code error;
        const fs::path whole = fs::absolute(ToWide(ResolvePath(name)), error);
        return fs::path(ToWide(LowerCased(FromWide(fs::weakly_canonical(whole, error).native()))));
    };
    const fs::path relative = canonical(path).lexically_relative(canonical(folder));
    return !relative.empty() && relative != "." && *relative.begin() != "..";
}

std::optional<std::int64_t> FileSize(std::string_view path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!FileExists(path) ||
        !::GetFileAttributesExW(ToWide(ResolvePath(path)).c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

std::optional<std::string> ReadWholeFile(std::string_view path, std::int64_t maxBytes) {
    if (!FileExists(path)) return std::nullopt;
    const HANDLE file = ::CreateFileW(ToWide(ResolvePath(path)).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    LARGE_INTEGER size{};
    std::optional<std::string> content;
    if (::GetFileSizeEx(file, &size) && size.QuadPart <= maxBytes) {
        content.emplace(static_cast<std::size_t>(size.QuadPart), '\0');
        DWORD count = 0;
        if (::ReadFile(file, content->data(), static_cast<DWORD>(content->size()), &count, nullptr))
            content->resize(count);
        else
            content.reset();
    }
    ::CloseHandle(file);
    return content;
}

bool WriteFileAnew(std::string_view path, std::string_view content) {
    const std::wstring name = ToWide(ResolvePath(path));
    ::DeleteFileW(name.c_str());
    const HANDLE file = ::CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD count = 0;
    const BOOL written =
        ::WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &count, nullptr);
    ::CloseHandle(file);
    return written && count == content.size();
}

std::vector<std::string> FileNamesIn(const std::string& resolvedFolder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = ::FindFirstFileW(ToWide(JoinPath(resolvedFolder, "*")).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            names.push_back(FromWide(entry.cFileName));
    } while (::FindNextFileW(search, &entry));
    ::FindClose(search);
    return names;
}

std::string ExecutableFolder() {
    wchar_t name[32768];
    const DWORD length = ::GetModuleFileNameW(nullptr, name, 32768);
    const std::string path = FromWide(std::wstring_view(name, length));
    return path.substr(0, path.rfind(kPathSeparator));
}

std::string HomeFolder() {
    return EnvironmentText(L"USERPROFILE");
}

std::string UserFolder() {
    return JoinPath(EnvironmentText(L"APPDATA"), "Dravik");
}

}  // namespace dravik
