#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text files are bytes: valid UTF-8 is UTF-8, anything else is Windows-1252.
namespace dravik {

/// True when the bytes form valid UTF-8.
bool IsUtf8(std::string_view bytes);

/// The bytes as UTF-8: unchanged when they are valid UTF-8, otherwise taken as Windows-1252.
std::string ToUtf8(std::string_view bytes);

/// At most maxBytes bytes from the front, never ending inside a UTF-8 sequence of valid UTF-8.
std::string_view CutBytes(std::string_view bytes, std::size_t maxBytes);

/// All letters in lower case, of any script when the text is UTF-8.
void LowerCase(std::string& text);

/// A copy of the text in lower case.
std::string LowerCased(std::string text);

/// ASCII comparison without regard to case, as for section and key names.
bool EqualsNoCase(std::string_view a, std::string_view b);

/// Blanks and tabs dropped at both ends.
std::string_view Trimmed(std::string_view text);

/// Every occurrence of `what` replaced by `with`; the replacement is not searched again.
std::string ReplaceAll(std::string text, std::string_view what, std::string_view with);

/// A number as text without its plus sign. A sign that another one follows stays, as what follows
/// is no number then.
std::string_view WithoutPlus(std::string_view number);

/// Leading-number conversion: blanks and tabs are skipped, then the longest prefix that is a
/// decimal number (sign, digits, ".", exponent) is taken; 0 when there is none. Independent of the
/// system's locale.
double LeadingNumber(std::string_view text);

/// A single-precision value in the general number format: up to seven significant digits, no
/// trailing zeros, "." as decimal point, exponent form ("1.5E+08") from 1E+07 up and below 1E-04.
std::string GeneralNumber(float value);

/// The value rounded to so many decimals, "." as decimal point and without a sign on a zero. A
/// value that the general number format writes with an exponent, or that is not finite, stays in
/// it.
/// @param decimals  0 to kMostDecimals, other numbers count as the nearer of these
std::string FixedNumber(float value, int decimals);

constexpr int kMostDecimals = 6;

/// The decimal sign of the system's region: on Windows as the user has set it, elsewhere by LC_ALL,
/// LC_NUMERIC or LANG, whichever is set first.
std::string SystemDecimalSign();

}  // namespace dravik
