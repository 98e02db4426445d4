#include "platform/Number.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Text.h"

namespace dravik {

namespace {

constexpr std::string_view kHexMark = "&H";

bool HasHexMark(std::string_view text) {
    return EqualsNoCase(text.substr(0, kHexMark.size()), kHexMark);
}

std::optional<std::int32_t> WholeHexNumber(std::string_view digits) {
    const auto pattern = WholeNumber<std::uint32_t>(digits, 16);
    if (!pattern) return std::nullopt;
    return static_cast<std::int32_t>(*pattern);
}

std::optional<std::int32_t> ToInteger(double number) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max()))
        return std::nullopt;
    return static_cast<std::int32_t>(rounded);
}

}  // namespace

std::optional<std::int32_t> LenientNumber(std::string_view text) {
    text = Trimmed(text);
    if (!HasHexMark(text)) return ToInteger(LeadingNumber(text));
    text.remove_prefix(kHexMark.size());
    const std::string_view digits =
        text.substr(0, text.find_first_not_of("0123456789abcdefABCDEF"));
    return digits.empty() ? 0 : WholeHexNumber(digits);
}

std::optional<std::int32_t> ShortNumber(std::string_view text) {
    const std::optional<std::int32_t> number = LenientNumber(text);
    if (!number || *number != static_cast<std::int16_t>(*number)) return std::nullopt;
    return number;
}

std::optional<std::int32_t> StrictNumber(std::string_view text) {
    text = Trimmed(text);
    if (HasHexMark(text)) {
        text.remove_prefix(kHexMark.size());
        if (text.ends_with('&')) text.remove_suffix(1);  // marks the number as a long one
        return WholeHexNumber(text);
    }
    const auto number = WholeNumber<double>(WithoutPlus(text));
    return number ? ToInteger(*number) : std::nullopt;
}

}  // namespace dravik
