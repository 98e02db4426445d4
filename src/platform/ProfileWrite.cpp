#include <cstdint>

#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/ProfileCache.h"
#include "platform/ProfileEdit.h"
#include "platform/Text.h"

namespace dravik {
namespace {

// More bytes than any number that is meant as one has.
constexpr std::size_t kNumberBytes = 255;

}  // namespace

int ReadProfileInt(const std::string& file, std::string_view section, std::string_view key,
                   int defaultValue) {
    // No value of a file holds a line end, so this one marks absence.
    constexpr std::string_view kMissing = "\n";
    const std::string text = ReadProfileString(file, section, key, kMissing, kNumberBytes);
    if (text == kMissing) return defaultValue;
    std::string_view digits = Trimmed(text);
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    std::uint32_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return static_cast<std::int32_t>(negative ? 0 - number : number);
}

bool WriteProfileString(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) {
    return WriteProfileEntries(file, {{section, key, value}});
}

bool WriteProfileEntries(const std::string& file, const std::vector<ProfileEntry>& entries) {
    const std::optional<std::string> old = ReadWholeFile(file);
    if (!old && FileExists(file)) return false;  // what cannot be read must not be replaced
    const std::string before = old.value_or(std::string());
    const std::optional<std::string> after = EditProfile(before, entries);
    if (!after) return false;
    if (*after == before) return true;
    const bool written = ReplaceFile(file, *after);
    ForgetProfile(file);
    return written;
}

}  // namespace dravik
