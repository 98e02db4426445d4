#include "vehicle/Framing.h"

#include <algorithm>
#include <numeric>

namespace dravik::vehicle {
namespace {

// clang-format off
constexpr ProtocolRow kProtocolRows[] = {
    {'1', "SAE J1850 PWM",                HeaderStyle::J1850,   "", "", "NO DATA", false},
    {'2', "SAE J1850 VPW",                HeaderStyle::J1850,   "", "", "NO DATA", false},
    {'3', "ISO 9141-2",                   HeaderStyle::J1850,   "BUS INIT: ...", "OK", "ERROR", true},
    {'4', "ISO 14230-4 (KWP 5BAUD)",      HeaderStyle::Keyword, "BUS INIT: ...", "OK", "ERROR", true},
    {'5', "ISO 14230-4 (KWP FAST)",       HeaderStyle::Keyword, "BUS INIT: ", "OK", "ERROR", false},
    {'6', "ISO 15765-4 (CAN 11/500)",     HeaderStyle::Can11,   "", "", "CAN ERROR", false},
    {'7', "ISO 15765-4 (CAN 29/500)",     HeaderStyle::Can29,   "", "", "CAN ERROR", false},
    {'8', "ISO 15765-4 (CAN 11/250)",     HeaderStyle::Can11,   "", "", "CAN ERROR", false},
    {'9', "ISO 15765-4 (CAN 29/250)",     HeaderStyle::Can29,   "", "", "CAN ERROR", false},
};
// clang-format on

constexpr std::uint8_t kTester = 0xF1;
constexpr std::size_t kSingleFrame = 7;  // bytes of a message that fit into one CAN frame

std::string Hex(const Bytes& bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0x0F];
        text += ' ';
    }
    return text;
}

Bytes Part(const Bytes& bytes, std::size_t from, std::size_t count) {
    from = std::min(from, bytes.size());
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(std::min(count, bytes.size() - from)));
}

Bytes Joined(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Addresses that control units usually have: 10 for the engine, 18 for the gearbox and so on.
std::uint8_t Address(int unit) {
    return static_cast<std::uint8_t>(0x10 + (unit - 1) * 8);
}

std::uint8_t Crc8(const Bytes& bytes) {
    std::uint8_t crc = 0xFF;
    for (std::uint8_t byte : bytes) {
        crc = static_cast<std::uint8_t>(crc ^ byte);
        for (int i = 0; i < 8; ++i)
            crc = static_cast<std::uint8_t>((crc & 0x80) != 0 ? (crc << 1) ^ 0x1D : crc << 1);
    }
    return static_cast<std::uint8_t>(~crc);
}

std::string ShortMessage(const ProtocolRow& protocol, int unit, const Bytes& message) {
    Bytes frame;
    if (protocol.Header == HeaderStyle::Keyword)
        frame = {static_cast<std::uint8_t>(0x80 | message.size()), kTester, Address(unit)};
    else if (protocol.Number == '1')
        frame = {0x41, 0x6B, Address(unit)};
    else
        frame = {0x48, 0x6B, Address(unit)};
    frame = Joined(frame, message);
    const bool crc = protocol.Number <= '2';
    frame.push_back(
        crc ? Crc8(frame)
            : static_cast<std::uint8_t>(std::accumulate(frame.begin(), frame.end(), 0)));
    return Hex(frame);
}

std::string CanHeader(const ProtocolRow& protocol, int unit) {
    if (protocol.Header == HeaderStyle::Can11)
        return "7E" + std::string(1, static_cast<char>('7' + unit)) + " ";
    return Hex({0x18, 0xDA, kTester, Address(unit)});
}

/// A long CAN message: with headers as its raw frames, without them as its length and numbered
/// lines of which the last is filled up with zeroes.
std::vector<std::string> LongMessage(const std::string& header, const Bytes& message,
                                     bool headers) {
    std::vector<std::string> lines;
    const auto size = static_cast<std::uint16_t>(message.size());
    if (!headers) {
        const std::string digits =
            Hex({static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size & 0xFF)});
        lines.push_back(digits.substr(1, 1) + digits.substr(3, 2) + " ");
    }
    std::size_t from = 0;
    for (unsigned number = 0; from < message.size(); ++number) {
        const std::size_t count = number == 0 ? 6 : 7;
        Bytes data = Part(message, from, count);
        data.resize(count);
        from += count;
        if (headers) {
            const Bytes control = number == 0
                                      ? Bytes{static_cast<std::uint8_t>(0x10 | size >> 8),
                                              static_cast<std::uint8_t>(size & 0xFF)}
                                      : Bytes{static_cast<std::uint8_t>(0x20 | (number & 0x0F))};
            lines.push_back(header + Hex(Joined(control, data)));
        } else {
            lines.push_back(Hex({static_cast<std::uint8_t>(number & 0x0F)}).substr(1, 1) + ": " +
                            Hex(data));
        }
    }
    return lines;
}

}  // namespace

const ProtocolRow* FindProtocol(char number) {
    for (const auto& row : kProtocolRows) {
        if (row.Number == number) return &row;
    }
    return nullptr;
}

std::vector<std::string> FormatReply(const ProtocolRow& protocol, const UnitReply& reply,
                                     bool headers) {
    const bool can = protocol.Header == HeaderStyle::Can11 || protocol.Header == HeaderStyle::Can29;
    std::vector<std::string> lines;
    for (const Bytes& message : reply.Messages) {
        if (can && message.size() > kSingleFrame) {
            const auto more = LongMessage(CanHeader(protocol, reply.Unit), message, headers);
            lines.insert(lines.end(), more.begin(), more.end());
        } else if (!headers) {
            lines.push_back(Hex(message));
        } else if (can) {
            lines.push_back(CanHeader(protocol, reply.Unit) +
                            Hex(Joined({static_cast<std::uint8_t>(message.size())}, message)));
        } else {
            lines.push_back(ShortMessage(protocol, reply.Unit, message));
        }
    }
    return lines;
}

}  // namespace dravik::vehicle
