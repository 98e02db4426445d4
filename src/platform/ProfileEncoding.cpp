#include "platform/ProfileEncoding.h"

#include <cstddef>
#include <cstdint>

namespace dravik {
namespace {

constexpr std::uint32_t kBeyondUnits = 0x10000;  // the first code point that needs two units

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::uint32_t Byte(std::string_view bytes, std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
}

std::uint32_t UnitAt(std::string_view bytes, std::size_t i, ProfileEncoding encoding) {
    const std::uint32_t first = Byte(bytes, i);
    const std::uint32_t second = Byte(bytes, i + 1);
    return encoding == ProfileEncoding::Utf16Big ? first << 8 | second : second << 8 | first;
}

void AppendUnit(std::string& bytes, std::uint32_t unit, ProfileEncoding encoding) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    const bool big = encoding == ProfileEncoding::Utf16Big;
    bytes += big ? high : low;
    bytes += big ? low : high;
}

void AppendUtf8(std::string& text, std::uint32_t codePoint) {
    const auto tail = [codePoint](int shift) {
        return static_cast<char>(0x80 | (codePoint >> shift & 0x3F));
    };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0 | codePoint >> 6);
    } else if (codePoint < kBeyondUnits) {
        text += static_cast<char>(0xE0 | codePoint >> 12);
        text += tail(6);
    } else {
        text += static_cast<char>(0xF0 | codePoint >> 18);
        text += tail(12);
        text += tail(6);
    }
    if (codePoint >= 0x80) text += tail(0);
}

/// The code point at `i`, which moves behind it.
std::uint32_t TakeCodePoint(std::string_view text, std::size_t& i) {
    const std::uint32_t lead = Byte(text, i++);
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    std::uint32_t codePoint = more == 0 ? lead : lead & (0x3FU >> more);
    for (int k = 0; k < more; ++k) codePoint = codePoint << 6 | (Byte(text, i++) & 0x3F);
    return codePoint;
}

}  // namespace

ProfileEncoding EncodingOf(std::string_view content) {
    if (content.starts_with("\xFF\xFE")) return ProfileEncoding::Utf16Little;
    if (content.starts_with("\xFE\xFF")) return ProfileEncoding::Utf16Big;
    return ProfileEncoding::Bytes;
}

std::string DecodeProfile(std::string content) {
    const ProfileEncoding encoding = EncodingOf(content);
    if (encoding == ProfileEncoding::Bytes) return content;
    std::string text;
    text.reserve(content.size());
    for (std::size_t i = 0; i + 1 < content.size(); i += 2) {
        std::uint32_t codePoint = UnitAt(content, i, encoding);
        const std::uint32_t next = UnitAt(content, i + 2, encoding);
        if (IsHighSurrogate(codePoint) && IsLowSurrogate(next)) {
            codePoint = kBeyondUnits + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
            i += 2;
        }
        AppendUtf8(text, codePoint);
    }
    return text;
}

std::string EncodeProfile(std::string text, ProfileEncoding encoding) {
    if (encoding == ProfileEncoding::Bytes) return text;
    std::string content;
    content.reserve(text.size() * 2);
    for (std::size_t i = 0; i < text.size();) {
        const std::uint32_t codePoint = TakeCodePoint(text, i);
        if (codePoint < kBeyondUnits) {
            AppendUnit(content, codePoint, encoding);
        } else {
            AppendUnit(content, 0xD800 + ((codePoint - kBeyondUnits) >> 10), encoding);
            AppendUnit(content, 0xDC00 + (codePoint & 0x3FF), encoding);
        }
    }
    return content;
}

}  // namespace dravik
