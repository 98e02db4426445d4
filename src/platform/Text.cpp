#include "platform/Text.h"

#include <QLocale>
#include <QString>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

namespace dravik {
namespace {

// What Windows-1252 means by the bytes 80 to 9F; all others are their own code point.
constexpr std::uint16_t kWindows1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

unsigned char Byte(char c) {
    return static_cast<unsigned char>(c);
}

bool IsContinuation(char c) {
    return (Byte(c) & 0xC0) == 0x80;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

char LowerWindows1252(char c) {
    const unsigned char byte = Byte(c);
    if (byte < 0x80) return LowerAscii(c);
    if (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7) return static_cast<char>(byte + 0x20);
    if (byte == 0x8A || byte == 0x8C || byte == 0x8E) return static_cast<char>(byte + 0x10);
    if (byte == 0x9F) return static_cast<char>(0xFF);
    return c;
}

/// Number of bytes at the front that are plain ASCII.
std::size_t AsciiPrefix(std::string_view bytes) {
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + i, 8);
        if (word & 0x8080808080808080U) break;
    }
    while (i < bytes.size() && Byte(bytes[i]) < 0x80) ++i;
    return i;
}

/// Length of the well-formed sequence at the front of bytes that begins above ASCII; 0 when it is
/// malformed, overlong, a surrogate or beyond the last code point.
std::size_t SequenceLength(std::string_view bytes) {
    const unsigned char lead = Byte(bytes[0]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(bytes[i])) return 0;
    }
    const unsigned char second = Byte(bytes[1]);
    if (lead == 0xE0 && second < 0xA0) return 0;
    if (lead == 0xED && second > 0x9F) return 0;
    if (lead == 0xF0 && second < 0x90) return 0;
    if (lead == 0xF4 && second > 0x8F) return 0;
    return length;
}

void AppendUtf8(std::string& text, std::uint16_t codePoint) {
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | (codePoint >> 6));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (codePoint >> 12));
        text += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
    for (;;) {
        bytes.remove_prefix(AsciiPrefix(bytes));
        if (bytes.empty()) return true;
        const std::size_t length = SequenceLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
}

std::string ToUtf8(std::string_view bytes) {
    if (IsUtf8(bytes)) return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 4);
    for (const char c : bytes) {
        const unsigned char byte = Byte(c);
        AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
    }
    return text;
}

std::string_view CutBytes(std::string_view bytes, std::size_t maxBytes) {
    if (bytes.size() <= maxBytes) return bytes;
    std::size_t length = maxBytes;
    if (IsContinuation(bytes[length]) && IsUtf8(bytes)) {
        while (IsContinuation(bytes[length])) --length;
    }
    return bytes.substr(0, length);
}

void LowerCase(std::string& text) {
    if (AsciiPrefix(text) == text.size())
        std::transform(text.begin(), text.end(), text.begin(), LowerAscii);
    else if (IsUtf8(text))
        text = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))
                   .toLower()
                   .toStdString();
    else
        std::transform(text.begin(), text.end(), text.begin(), LowerWindows1252);
}

std::string LowerCased(std::string text) {
    LowerCase(text);
    return text;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return LowerAscii(x) == LowerAscii(y);
           });
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string ReplaceAll(std::string text, std::string_view what, std::string_view with) {
    if (what.empty()) return text;
    std::size_t found = text.find(what);
    if (found == std::string::npos) return text;
    std::string result;
    std::size_t from = 0;
    for (; found != std::string::npos; found = text.find(what, from)) {
        result.append(text, from, found - from).append(with);
        from = found + what.size();
    }
    return result.append(text, from);
}

std::string_view WithoutPlus(std::string_view number) {
    if (number.starts_with('+') && !number.starts_with("+-")) number.remove_prefix(1);
    return number;
}

double LeadingNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return 0;
    text.remove_prefix(first);
    const bool negative = text[0] == '-';
    if (negative || text[0] == '+') text.remove_prefix(1);

    // Words that other readers take for numbers ("inf", "nan") are none here.
    const bool digits = !text.empty() && (IsDigit(text[0]) ||
                                          (text.size() > 1 && text[0] == '.' && IsDigit(text[1])));
    if (!digits) return 0;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        const std::string_view number(text.data(), end);
        const std::size_t exponent = number.find_first_of("eE");
        const bool tiny = exponent == std::string_view::npos ? number[0] == '0' || number[0] == '.'
                                                             : number[exponent + 1] == '-';
        value = tiny ? 0 : std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

std::string GeneralNumber(float value) {
    if (value == 0) return "0";
    char digits[32];
    const auto [end, error] = std::to_chars(
        digits, digits + sizeof digits, static_cast<double>(value), std::chars_format::general, 7);
    std::string text(digits, end);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return std::isnan(value) ? "NAN" : text;
}

std::string FixedNumber(float value, int decimals) {
    constexpr float kGeneralFrom = 1e7F;
    if (!(std::abs(value) < kGeneralFrom)) return GeneralNumber(value);
    char digits[32];
    const auto [end, error] =
        std::to_chars(digits, digits + sizeof digits, static_cast<double>(value),
                      std::chars_format::fixed, std::clamp(decimals, 0, kMostDecimals));
    const std::string_view text(digits, end);
    const bool minusZero = text.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(minusZero && text.front() == '-' ? text.substr(1) : text);
}

std::string SystemDecimalSign() {
    return QLocale::system().decimalPoint().toStdString();
}

}  // namespace dravik
