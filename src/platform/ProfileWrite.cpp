#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "platform/FileReplacement.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/ProfileCache.h"
#include "platform/ProfileEdit.h"
#include "platform/Text.h"

namespace dravik {
namespace {

// More bytes than any number that is meant as one has.
constexpr std::size_t kNumberBytes = 255;

/// The changes with one entry per file: a file that is named twice is still rewritten once.
std::vector<ProfileChange> Joined(const std::vector<ProfileChange>& changes) {
    std::vector<ProfileChange> joined;
    for (const ProfileChange& change : changes) {
        const std::string path = ResolvePath(change.File);
        const auto same = std::find_if(joined.begin(), joined.end(), [&](const ProfileChange& c) {
            return ResolvePath(c.File) == path;
        });
        if (same == joined.end())
            joined.push_back(change);
        else
            same->Entries.insert(same->Entries.end(), change.Entries.begin(), change.Entries.end());
    }
    return joined;
}

/// A file on its way from its old content to the new.
struct ProfileRewrite {
    std::string File;
    std::optional<std::string> Old;       ///< nothing when there was no file
    std::optional<FileReplacement> Next;  ///< nothing when the change leaves the file as it is
};

/// Nothing when the file cannot be written.
std::optional<ProfileRewrite> Prepare(const ProfileChange& change) {
    ProfileRewrite rewrite{change.File, ReadWholeFile(change.File, kLargestProfile), std::nullopt};
    if (!rewrite.Old && FileExists(change.File)) return std::nullopt;  // unread, not to be replaced
    const std::optional<std::string> start = rewrite.Old || change.From.empty()
                                                 ? rewrite.Old.value_or(std::string())
                                                 : ReadWholeFile(change.From, kLargestProfile);
    if (!start) return std::nullopt;
    const std::optional<std::string> after = EditProfile(*start, change.Entries);
    if (!after) return std::nullopt;
    if (*after == rewrite.Old.value_or(std::string())) return rewrite;
    rewrite.Next.emplace(change.File, *after);
    if (!rewrite.Next->Ready()) return std::nullopt;
    return rewrite;
}

void PutBack(const ProfileRewrite& rewrite) {
    if (rewrite.Old)
        FileReplacement(rewrite.File, *rewrite.Old).Commit();
    else
        RemoveFile(rewrite.File);
    ForgetProfile(rewrite.File);
}

}  // namespace

bool ProfileTooLarge(const std::string& file) {
    const std::optional<std::int64_t> size = FileSize(file);
    return size && *size > kLargestProfile;
}

bool RefusedForSize(const std::string& file) {
    static std::string told;
    if (!ProfileTooLarge(file)) return false;
    if (told != file) {
        told = file;
        std::fprintf(stderr, "%s: larger than 16 MB; it is not read\n", file.c_str());
    }
    return true;
}

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
    return !WriteProfiles({{file, entries}});
}

std::optional<std::string> WriteProfiles(const std::vector<ProfileChange>& changes) {
    std::vector<std::string> files;
    for (const ProfileChange& change : changes) files.push_back(change.File);
    // Held from before the reading on: nobody can change a file between that and the replacing.
    const FolderLock lock(files);
    if (!lock.Held()) return files.front();

    std::vector<ProfileRewrite> rewrites;
    for (const ProfileChange& change : Joined(changes)) {
        std::optional<ProfileRewrite> rewrite = Prepare(change);
        if (!rewrite) return change.File;
        if (rewrite->Next) rewrites.push_back(std::move(*rewrite));
    }
    for (std::size_t i = 0; i < rewrites.size(); ++i) {
        const bool done = rewrites[i].Next->Commit();
        ForgetProfile(rewrites[i].File);
        if (done) continue;
        for (std::size_t k = i; k > 0; --k) PutBack(rewrites[k - 1]);
        return rewrites[i].File;
    }
    return std::nullopt;
}

}  // namespace dravik
