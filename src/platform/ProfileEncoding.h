#pragma once

#include <string>
#include <string_view>

/// The encodings of profile files: bytes, or UTF-16 with a byte order mark.
namespace dravik {

enum class ProfileEncoding {
    Bytes,  ///< UTF-8 or Windows-1252, with or without a mark: worked on as it is
    Utf16Little,
    Utf16Big,
};

/// What the mark at the front says.
ProfileEncoding EncodingOf(std::string_view content);

/// The content of a file as the bytes that lines are read from: UTF-16 becomes UTF-8, its mark
/// included; anything else stays as it is. Half a surrogate pair becomes three bytes of its own, so
/// that it comes back the same; an odd last byte is dropped.
std::string DecodeProfile(std::string content);

/// The way back.
/// @param text  what DecodeProfile gave; what was added to it is UTF-8
std::string EncodeProfile(std::string text, ProfileEncoding encoding);

}  // namespace dravik
