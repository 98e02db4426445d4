#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Private-profile files: sections in square brackets, lines of key, equals sign and value.
///
/// Section and key names are compared without regard to case, the first match wins. Blanks around
/// names and values are dropped, and so is one pair of matching quotes around a value. A line that
/// begins with ";" is a comment. File names are resolved as platform/Paths.h says, so they may be
/// written with "\" and in any case.
///
/// Files are bytes, or UTF-16 with a byte order mark, which is read as UTF-8 and stays UTF-16 when
/// the file is written. Other marks and lines that make no sense are passed over. Of several
/// sections of one name only the first is read.
///
/// Reading is cached per file and checked against the file's time stamp and size, so that hundreds
/// of keys cost one parse. The code is our own on Windows too: the system's calls turn bytes into
/// text by the code page of the process and back, which not every byte survives. User-interface
/// thread only.
namespace dravik {

/// No settings, skin or playlist comes near this size. A larger profile file is not read, which is
/// said on standard error, and not written.
constexpr std::int64_t kLargestProfile = std::int64_t{16} << 20;

/// True for a file above kLargestProfile.
bool ProfileTooLarge(const std::string& file);

/// The text of a key; defaultValue when the file, the section or the key is missing.
///
/// @param maxBytes  at most so many bytes are returned; a longer value is cut, never in the middle
///                  of a UTF-8 sequence
std::string ReadProfileString(const std::string& file, std::string_view section,
                              std::string_view key, std::string_view defaultValue,
                              std::size_t maxBytes);

/// The key as an integer: an optional sign and the decimal digits that follow it. Anything else
/// behind the digits is passed over; a value without leading digits is 0; a missing key gives
/// defaultValue. A number too large for 32 bits keeps its lowest 32 bits.
int ReadProfileInt(const std::string& file, std::string_view section, std::string_view key,
                   int defaultValue);

/// One key to write; an empty optional deletes the key.
struct ProfileEntry {
    std::string Section;
    std::string Key;
    std::optional<std::string> Value;
};

/// Writes one key: replaces its value in place, or adds it at the end of its section, or adds the
/// section at the end of the file (made when missing). Comments, order and other keys survive.
///
/// Line breaks in the value become blanks. The file is never half written: a kill at any instant
/// leaves the old file or the new one.
/// @return false when the file could not be written or the names could not be read back (an empty
///         key, "=" in a key, "]" in a section); it is then unchanged.
bool WriteProfileString(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value);

/// Writes many keys of one file in a single step: after a failure or a kill either all of them are
/// in the file or none. What another process writes into the file at the same time is kept.
bool WriteProfileEntries(const std::string& file, const std::vector<ProfileEntry>& entries);

/// What is to be written into one file.
struct ProfileChange {
    std::string File;
    std::vector<ProfileEntry> Entries;
    std::string From{};  ///< the file whose content a missing File starts with; empty: with none
};

/// Writes into several files in a single step: none is changed unless all of them can be.
/// @return the file that could not be written; nothing when all is done
std::optional<std::string> WriteProfiles(const std::vector<ProfileChange>& changes);

/// The names of all sections, in file order and as written; empty for a missing file.
std::vector<std::string> ProfileSections(const std::string& file);

/// The names of all keys of the first section of that name, in file order and as written.
std::vector<std::string> ProfileKeys(const std::string& file, std::string_view section);

}  // namespace dravik
