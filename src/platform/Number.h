#pragma once

#include <charconv>
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

}  // namespace dravik
