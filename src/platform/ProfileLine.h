#pragma once

#include <string_view>

/// How one line of a profile file is understood; reading and writing share it.
namespace dravik {

enum class ProfileLineKind {
    Blank,
    Section,
    Entry,
    Other,  ///< comments and everything that makes no sense: passed over, kept when writing
};

struct ProfileLine {
    ProfileLineKind Kind = ProfileLineKind::Other;
    std::string_view Name = {};   ///< of the section or the key
    std::string_view Value = {};  ///< of an entry, without blanks and quotes around it
    /// Of an entry: everything before the value, the equals sign and the blanks behind it included.
    std::string_view Prefix = {};
};

/// Understands a line without its line end. Carriage returns at its end are passed over.
ProfileLine ParseProfileLine(std::string_view line);

/// Takes the next line off the front of `text`, its line end ("\n" or "\r\n", nothing else is one)
/// included; empty when there is none.
std::string_view TakeProfileLine(std::string_view& text);

/// The line end of a line that TakeProfileLine gave; empty for a last line without one.
std::string_view ProfileLineEnd(std::string_view line);

/// The byte order mark at the front of the text, if there is one.
std::string_view ProfileByteOrderMark(std::string_view text);

}  // namespace dravik
