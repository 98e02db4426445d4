#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/ProfileCache.h"
#include "platform/Text.h"
#include "platform/WindowsApi.h"

namespace dravik {
namespace {

/// A UTF-8 sequence that the limit cuts must still be seen whole.
constexpr std::size_t kSequenceBytes = 4;

/// The absolute path as the byte-wise profile calls take it: a bare name would mean a file in the
/// system's folder. A name that the system's code page cannot express goes by its short form.
std::string ProfilePath(const std::string& file) {
    wchar_t path[32768];
    DWORD length = ::GetFullPathNameW(ToWide(ResolvePath(file)).c_str(), 32768, path, nullptr);
    if (::GetACP() == CP_UTF8) return FromWide(std::wstring_view(path, length));
    char bytes[65536];
    BOOL lossy = FALSE;
    ::WideCharToMultiByte(CP_ACP, 0, path, -1, bytes, sizeof bytes, nullptr, &lossy);
    if (lossy && ::GetShortPathNameW(path, path, 32768) > 0)
        ::WideCharToMultiByte(CP_ACP, 0, path, -1, bytes, sizeof bytes, nullptr, nullptr);
    return bytes;
}

/// The names that the system lists when no section or no key is given, each closed by a zero byte.
std::vector<std::string> Names(const std::string& file, const char* section) {
    if (RefusedForSize(file)) return {};
    const std::string path = ProfilePath(file);
    std::string buffer(4096, '\0');
    DWORD length = 0;
    for (;;) {
        length = ::GetPrivateProfileStringA(section, nullptr, "", buffer.data(),
                                            static_cast<DWORD>(buffer.size()), path.c_str());
        if (length + 2 < buffer.size()) break;
        buffer.resize(buffer.size() * 2);
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < length; i += names.back().size() + 1)
        names.emplace_back(buffer.c_str() + i);
    return names;
}

}  // namespace

std::string ReadProfileString(const std::string& file, std::string_view section,
                              std::string_view key, std::string_view defaultValue,
                              std::size_t maxBytes) {
    if (RefusedForSize(file)) return std::string(CutBytes(defaultValue, maxBytes));
    std::string buffer(maxBytes + kSequenceBytes + 1, '\0');
    const DWORD length = ::GetPrivateProfileStringA(
        std::string(section).c_str(), std::string(key).c_str(), std::string(defaultValue).c_str(),
        buffer.data(), static_cast<DWORD>(buffer.size()), ProfilePath(file).c_str());
    return std::string(CutBytes(std::string_view(buffer).substr(0, length), maxBytes));
}

std::vector<std::string> ProfileSections(const std::string& file) {
    return Names(file, nullptr);
}

std::vector<std::string> ProfileKeys(const std::string& file, std::string_view section) {
    return Names(file, std::string(section).c_str());
}

// The system keeps the file that was used last in memory; without any names it drops it.
void ForgetProfile(const std::string& file) {
    ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, ProfilePath(file).c_str());
}

}  // namespace dravik
