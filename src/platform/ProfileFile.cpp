#include <algorithm>
#include <memory>

#include "platform/FileStamp.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/ProfileCache.h"
#include "platform/ProfileEncoding.h"
#include "platform/ProfileIndex.h"
#include "platform/Text.h"

namespace dravik {
namespace {

/// The files that are read on one page change and some more.
constexpr std::size_t kCachedFiles = 16;

struct CachedProfile {
    std::string Name;         // as the callers write it
    std::string SlashedName;  // the same with the system's separators
    std::string Path;         // what that was resolved to
    FileStamp Stamp;
    bool Settled;  // else its parse serves only once
    std::unique_ptr<const ProfileIndex> Index;
};

// The file used last stands first.
std::vector<CachedProfile> cache;

// A name that had to be resolved still means that file unless one of exactly this name appears.
bool IsCurrent(const CachedProfile& profile) {
    std::optional<FileStamp> stamp = StampOf(profile.Name);
    if (!stamp && profile.SlashedName != profile.Name) stamp = StampOf(profile.SlashedName);
    if (!stamp && profile.Path != profile.SlashedName) stamp = StampOf(profile.Path);
    return profile.Settled && stamp == profile.Stamp;
}

std::optional<CachedProfile> Parse(const std::string& file) {
    std::string path = ResolvePath(file);
    // Stamped before it is read: a change in between shows as a new stamp next time.
    const std::optional<FileStamp> stamp = StampOf(path);
    if (!stamp || RefusedForSize(path)) return std::nullopt;
    const bool settled = IsSettled(*stamp);
    std::optional<std::string> text = ReadWholeFile(path, kLargestProfile);
    if (!text) return std::nullopt;
    std::string slashed = file;
    std::replace(slashed.begin(), slashed.end(), '\\', kPathSeparator);
    return CachedProfile{file,
                         std::move(slashed),
                         std::move(path),
                         *stamp,
                         settled,
                         std::make_unique<ProfileIndex>(DecodeProfile(std::move(*text)))};
}

/// The file's content as it is now; null when it is missing. Valid until the next call.
const ProfileIndex* Profile(const std::string& file) {
    const auto found = std::find_if(cache.begin(), cache.end(),
                                    [&](const CachedProfile& p) { return p.Name == file; });
    if (found != cache.end() && IsCurrent(*found)) {
        std::rotate(cache.begin(), found, found + 1);
        return cache.front().Index.get();
    }
    if (found != cache.end()) cache.erase(found);
    std::optional<CachedProfile> parsed = Parse(file);
    if (!parsed) return nullptr;
    if (cache.size() == kCachedFiles) cache.pop_back();
    cache.insert(cache.begin(), std::move(*parsed));
    return cache.front().Index.get();
}

}  // namespace

std::string ReadProfileString(const std::string& file, std::string_view section,
                              std::string_view key, std::string_view defaultValue,
                              std::size_t maxBytes) {
    const ProfileIndex* profile = Profile(file);
    const std::optional<std::string_view> value =
        profile ? profile->Find(Trimmed(section), Trimmed(key)) : std::nullopt;
    return std::string(CutBytes(value.value_or(defaultValue), maxBytes));
}

std::vector<std::string> ProfileSections(const std::string& file) {
    const ProfileIndex* profile = Profile(file);
    return profile ? profile->Sections() : std::vector<std::string>();
}

std::vector<std::string> ProfileKeys(const std::string& file, std::string_view section) {
    const ProfileIndex* profile = Profile(file);
    return profile ? profile->Keys(Trimmed(section)) : std::vector<std::string>();
}

// Several names may lead to one file, and a link to it may have changed: all are looked at again.
void ForgetProfile(const std::string&) {
    cache.clear();
}

}  // namespace dravik
