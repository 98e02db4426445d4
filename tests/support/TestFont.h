#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace dravik {

/// The bytes of a TrueType font of that name in which every character from " " to "ÿ" is a box of
/// one width, in thousandths of the font's size.
inline std::string TestFont(const std::string& name, int width) {
    const auto u16 = [](auto... values) {
        std::string bytes;
        for (const int value : {static_cast<int>(values)...}) {
            bytes += static_cast<char>(value >> 8 & 0xFF);
            bytes += static_cast<char>(value & 0xFF);
        }
        return bytes;
    };
    const auto u32 = [&u16](std::uint32_t value) { return u16(value >> 16, value & 0xFFFF); };
    const auto zeros = [](std::size_t count) { return std::string(count, '\0'); };
    constexpr int kFirst = ' ', kLast = 0xFF, kCount = kLast - kFirst + 1;
    constexpr int kAscent = 800, kDescent = 200, kUnits = 1000;

    std::string utf16;
    for (const char c : name) utf16 += u16(c);
    const int length = static_cast<int>(utf16.size());
    std::string names = u16(0, 4, 6 + 4 * 12);
    for (const int id : {1, 2, 4, 6}) names += u16(3, 1, 0x409, id, length, 0);

    std::string glyphs;
    for (int i = 0; i < kCount; ++i) glyphs += u16(1);
    const std::string box = u16(1, 0, 0, width, kAscent, 3, 0) + std::string(4, '\1') +
                            u16(0, width, 0, -width) + u16(0, 0, kAscent, 0);
    const std::map<std::string, std::string> tables = {
        {"OS/2", u16(3, width, 400, 5, 0) + zeros(22) + zeros(10) + u32(3) + zeros(12) + "TEST" +
                     u16(0x40, kFirst, kLast, kAscent, -kDescent, 0, kAscent, kDescent) + u32(1) +
                     u32(0) + u16(500, 700, 0, ' ', 1)},
        {"cmap", u16(0, 1, 3, 1) + u32(12) + u16(4, 32 + 2 * kCount, 0, 4, 4, 1, 0, kLast, 0xFFFF) +
                     u16(0, kFirst, 0xFFFF, 0, 1, 4, 0) + glyphs},
        {"glyf", box},
        {"head", u32(0x10000) + u32(0x10000) + u32(0) + u32(0x5F0F3CF5) + u16(0, kUnits) +
                     zeros(16) + u16(0, 0, width, kAscent, 0, 8, 2, 0, 0)},
        {"hhea",
         u32(0x10000) + u16(kAscent, -kDescent, 0, width, 0, 0, width, 1) + zeros(14) + u16(1)},
        {"hmtx", u16(width, 0, 0)},
        {"loca", u16(0, 0, box.size() / 2)},
        {"maxp", u32(0x10000) + u16(2, 4, 1, 0, 0, 1) + zeros(16)},
        {"name", names + utf16},
        {"post", u32(0x30000) + zeros(28)},
    };
    const int count = static_cast<int>(tables.size());
    std::string font = u32(0x10000) + u16(count, 128, 3, 16 * count - 128);
    std::string content;
    for (const auto& [tag, table] : tables) {
        font += tag + u32(0) + u32(static_cast<std::uint32_t>(12 + 16 * count + content.size())) +
                u32(static_cast<std::uint32_t>(table.size()));
        content += table + zeros((4 - table.size() % 4) % 4);
    }
    return font + content;
}

}  // namespace dravik
