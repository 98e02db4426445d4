#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dravik {

/// The content of one profile file, parsed once and found by a hash of section and key.
class ProfileIndex {
 public:
    explicit ProfileIndex(std::string text);
    ProfileIndex(const ProfileIndex&) = delete;
    ProfileIndex& operator=(const ProfileIndex&) = delete;

    /// The value of the first such key of the first section of that name. It is a part of this
    /// index and lives as long.
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

    std::vector<std::string> Sections() const;
    std::vector<std::string> Keys(std::string_view section) const;

 private:
    // A section is an entry too, with an empty key, in front of its own entries.
    struct Entry {
        std::string_view Section;
        std::string_view Key;
        std::string_view Value;
        std::uint32_t Hash;
    };

    void Parse();
    bool Add(const Entry& entry);  // true when it is the first of its name
    void Grow();

    /// The place of an entry in slots_, or the free place where it would go.
    std::size_t SlotOf(std::uint32_t hash, std::string_view section, std::string_view key) const;

    const std::string text_;
    std::vector<Entry> entries_;        ///< in file order, repeated ones included
    std::vector<std::uint32_t> slots_;  ///< 0 or the number of an entry, counted from 1
    std::size_t used_ = 0;
};

}  // namespace dravik
