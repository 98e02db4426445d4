#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

/// Numbers in texts, read without regard to the system's locale. Blanks and a plus sign are no part
/// of a number, and a minus sign is only where the type has a sign.
namespace dravik {

/// Takes the number off the front of a text. Nothing, and the text as it was, when the text does
/// not begin with a number or when that does not fit into its type.
///
/// @param base  of a whole number that is not decimal, such as 16
template <typename Number = int, typename... Base>
std::optional<Number> TakeNumber(std::string_view& text, Base... base) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base...);
    if (error != std::errc{}) return std::nullopt;
    text = std::string_view(stop, end);
    return number;
}

/// The number that a whole text is; nothing, too, when anything stands behind it.
template <typename Number = int, typename... Base>
std::optional<Number> WholeNumber(std::string_view text, Base... base) {
    const std::optional<Number> number = TakeNumber<Number>(text, base...);
    return text.empty() ? number : std::nullopt;
}

// The numbers of skins, decimal or, after "&H", hexadecimal. A decimal one is rounded to the
// nearest whole number, halves to even, and eight hexadecimal digits are a pattern of 32 bits:
// "&HFFFFFFFF" is -1.

/// Lenient conversion: leading blanks skipped, then the number up to the first character that does
/// not belong to it; 0 when there is none. Nothing when the number does not fit into 32 bits.
std::optional<std::int32_t> LenientNumber(std::string_view text);

/// The same; nothing, too, when the number does not fit into 16 bits.
std::optional<std::int32_t> ShortNumber(std::string_view text);

/// Strict conversion of the whole text; nothing for an empty or other text.
std::optional<std::int32_t> StrictNumber(std::string_view text);

}  // namespace dravik
