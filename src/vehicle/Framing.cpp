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
constexpr std::size_t kCanFrame = 8;
constexpr std::size_t kSingleFrame = 7;  // bytes of a message that fit into one CAN frame
constexpr std::size_t kFirstFrame = 6;   // and into the first one of several,
constexpr std::size_t kNextFrame = 7;    // and into each of the others

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
    if (protocol.Header == HeaderStyle::Can11) return std::string("7E") + "89AB"[unit - 1] + " ";
    return Hex({0x18, 0xDA, kTester, Address(unit)});
}

bool IsCan(const ProtocolRow& protocol) {
    return protocol.Header == HeaderStyle::Can11 || protocol.Header == HeaderStyle::Can29;
}

void FillUp(Bytes& frame, std::uint8_t filler) {
    frame.resize(std::max(frame.size(), kCanFrame), filler);
}

/// One frame of a message on CAN: what is sent, and how it is shown without header and control
/// bytes.
struct CanFrame {
    Bytes Data;
    std::vector<std::string> Plain;
};

/// A message cut into frames: a single one, or a first one and numbered ones behind it. Without
/// headers a long message is shown as its length and numbered lines.
std::vector<CanFrame> CutForCan(const Bytes& message, const Padding& padding) {
    const auto size = static_cast<std::uint16_t>(message.size());
    if (size <= kSingleFrame) {
        Bytes data = Joined({static_cast<std::uint8_t>(size)}, message);
        if (padding.SingleFrames) FillUp(data, padding.Filler);
        return {{data, {Hex(message)}}};
    }
    const Bytes length = {static_cast<std::uint8_t>(0x10 | size >> 8),
                          static_cast<std::uint8_t>(size & 0xFF)};
    const Bytes first = Part(message, 0, kFirstFrame);
    const std::string digits = Hex(length).substr(1, 1) + Hex(length).substr(3);
    std::vector<CanFrame> frames = {{Joined(length, first), {digits, "0: " + Hex(first)}}};
    for (std::size_t from = kFirstFrame; from < size; from += kNextFrame) {
        const auto number = static_cast<std::uint8_t>(frames.size() & 0x0F);
        Bytes data = {static_cast<std::uint8_t>(0x20 | number)};
        data = Joined(std::move(data), Part(message, from, kNextFrame));
        if (padding.LastFrames) FillUp(data, padding.Filler);
        // The interface shows what fills up the last frame too: it goes by frames, not by length.
        const std::string plain =
            Hex({number}).substr(1, 1) + ": " + Hex(Part(data, 1, kNextFrame));
        frames.push_back({data, {plain}});
    }
    return frames;
}

bool IsPending(const Bytes& message) {
    return message.size() == 3 && message[0] == kRefused && message[2] == kAnswerPending;
}

}  // namespace

const ProtocolRow* FindProtocol(char number) {
    for (const auto& row : kProtocolRows) {
        if (row.Number == number) return &row;
    }
    return nullptr;
}

std::vector<ShownFrame> FormatReply(const ProtocolRow& protocol, const UnitReply& reply,
                                    const FrameStyle& style) {
    std::vector<ShownFrame> frames;
    for (const Bytes& message : reply.Messages) {
        std::optional<double> pending;
        if (IsPending(message)) pending = reply.PendingTime;
        if (!IsCan(protocol)) {
            frames.push_back(
                {reply.Unit,
                 pending,
                 {style.Headers ? ShortMessage(protocol, reply.Unit, message) : Hex(message)}});
            continue;
        }
        for (CanFrame& frame : CutForCan(message, style.Fill)) {
            if (style.Headers)
                frame.Plain = {CanHeader(protocol, reply.Unit) + Hex(frame.Data)};
            else if (!style.TakeApart)
                frame.Plain = {Hex(frame.Data)};
            frames.push_back({reply.Unit, pending, std::move(frame.Plain)});
        }
    }
    return frames;
}

std::vector<ShownFrame> OnTheBus(std::vector<std::vector<ShownFrame>> units, UnitOrder order,
                                 Random& random) {
    if (order == UnitOrder::Reversed) std::reverse(units.begin(), units.end());
    std::vector<std::size_t> next(units.size(), 0);
    std::vector<ShownFrame> frames;
    std::size_t turn = 0;
    const auto done = [&](std::size_t unit) { return next[unit] == units[unit].size(); };
    std::size_t left = 0;
    for (const auto& unit : units) left += unit.size();
    for (; left > 0; --left) {
        if (order == UnitOrder::Shuffled) turn = random.NextBelow(units.size());
        while (done(turn)) turn = (turn + 1) % units.size();
        frames.push_back(std::move(units[turn][next[turn]++]));
        if (order == UnitOrder::Interleaved) turn = (turn + 1) % units.size();
    }
    return frames;
}

}  // namespace dravik::vehicle
