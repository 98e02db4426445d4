#include "obd/ReplyFrames.h"

#include <algorithm>
#include <numeric>
#include <string_view>

#include "platform/Number.h"

namespace dravik {

namespace {

// CAN: a frame begins with its kind and, in the same byte, a length or number.
constexpr unsigned kSingle = 0;
constexpr unsigned kFirst = 1;
constexpr unsigned kConsecutive = 2;
constexpr unsigned kFlowControl = 3;
constexpr std::size_t kSingleBytes = 7;  ///< bytes of a message that fit into one frame
constexpr std::size_t kFirstBytes = 6;
constexpr unsigned kNumberMask = 0x0F;  ///< the number of a frame has four bits

constexpr std::size_t kCan11Digits = 3;
constexpr std::size_t kCan29Bytes = 4;
constexpr std::uint32_t kCan11Lowest = 0x7E8;  ///< units answer with these
constexpr std::uint32_t kCan11Highest = 0x7EF;
constexpr std::uint8_t kCan29Header[] = {0x18, 0xDA, 0xF1};  ///< and on 29 bits, to us

constexpr std::size_t kShortHeader = 3;  ///< priority, target, unit
constexpr std::size_t kLengthDigits = 3;

/// The checksum of J1850, over all bytes but itself.
std::uint8_t CyclicSum(Bytes::const_iterator begin, Bytes::const_iterator end) {
    unsigned crc = 0xFF;
    for (; begin != end; ++begin) {
        crc ^= *begin;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x80) != 0 ? (crc << 1) ^ 0x1D : crc << 1;
    }
    return static_cast<std::uint8_t>(~crc);
}

bool EndsWithSum(const Bytes& frame) {
    return static_cast<std::uint8_t>(std::accumulate(frame.begin(), frame.end() - 1, 0U)) ==
           frame.back();
}

Bytes Slice(const Bytes& bytes, std::size_t from, std::size_t count) {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

bool IsCan(Bus bus) {
    return bus == Bus::Can11 || bus == Bus::Can29;
}

}  // namespace

std::optional<Bytes> BytesOf(std::string_view digits) {
    if (digits.size() % 2 != 0) return std::nullopt;
    Bytes bytes;
    bytes.reserve(digits.size() / 2);
    for (; !digits.empty(); digits.remove_prefix(2)) {
        const auto byte = WholeNumber<std::uint8_t>(digits.substr(0, 2), 16);
        if (!byte) return std::nullopt;
        bytes.push_back(*byte);
    }
    return bytes;
}

void ReplyFrames::TakeBroken() {
    unreadable_ = true;
}

void ReplyFrames::TakeFramed(std::string_view digits) {
    std::uint32_t unit = 0;
    if (bus_ == Bus::Can11) {
        unit = WholeNumber<std::uint32_t>(digits.substr(0, kCan11Digits), 16).value_or(0);
        if (unit < kCan11Lowest || unit > kCan11Highest) return TakeBroken();
        digits.remove_prefix(kCan11Digits);
    }
    const std::optional<Bytes> bytes = BytesOf(digits);
    if (!bytes) return TakeBroken();
    switch (bus_) {
        case Bus::Can11:
            return TakeCanFrame(unit, *bytes);
        case Bus::Can29:
            if (bytes->size() < kCan29Bytes ||
                !std::equal(std::begin(kCan29Header), std::end(kCan29Header), bytes->begin()))
                return TakeBroken();
            return TakeCanFrame(bytes->at(kCan29Bytes - 1),
                                Slice(*bytes, kCan29Bytes, bytes->size() - kCan29Bytes));
        case Bus::Keyword:
            return TakeKeywordFrame(*bytes);
        case Bus::J1850:
        case Bus::Iso9141:
            return TakeShortFrame(*bytes);
        case Bus::Unknown:
            return TakeBroken();
    }
}

void ReplyFrames::TakeCanFrame(std::uint32_t unit, const Bytes& frame) {
    if (frame.empty()) return Break(unit);
    const unsigned kind = frame[0] >> 4;
    const unsigned low = frame[0] & kNumberMask;
    const auto open = std::find_if(open_.begin(), open_.end(),
                                   [unit](const Open& message) { return message.Unit == unit; });
    if (kind == kFlowControl) return;
    if (kind == kConsecutive) {
        if (open == open_.end() || open->Next != low) return Break(unit);
        return Continue(static_cast<std::size_t>(open - open_.begin()), frame.begin() + 1,
                        frame.end());
    }
    if (open != open_.end()) return Break(unit);
    if (kind == kFirst) return BeginLong(unit, frame);
    // What stands behind the length is padding.
    if (kind != kSingle || low == 0 || low > kSingleBytes || frame.size() < low + 1)
        return Break(unit);
    Messages.push_back({unit, Slice(frame, 1, low)});
}

void ReplyFrames::BeginLong(std::uint32_t unit, const Bytes& frame) {
    constexpr std::size_t kControl = 2;
    if (frame.size() != kControl + kFirstBytes) return Break(unit);
    const std::size_t length = (frame[0] & kNumberMask) << 8 | frame[1];
    if (length <= kSingleBytes) return Break(unit);
    open_.push_back({unit, length, 0, {}});
    Continue(open_.size() - 1, frame.begin() + kControl, frame.end());
}

/// Adds the bytes of the next frame; those behind the end of the message are padding.
void ReplyFrames::Continue(std::size_t index, Bytes::const_iterator begin,
                           Bytes::const_iterator end) {
    Open& open = open_[index];
    const std::size_t holds = open.Data.empty() ? kFirstBytes : kSingleBytes;
    const std::size_t wanted = std::min(holds, open.Length - open.Data.size());
    const auto there = static_cast<std::size_t>(end - begin);
    if (there < wanted || there > holds) return Break(open.Unit);
    open.Data.insert(open.Data.end(), begin, begin + static_cast<std::ptrdiff_t>(wanted));
    open.Next = (open.Next + 1) & kNumberMask;
    if (open.Data.size() < open.Length) return;
    Messages.push_back({open.Unit, std::move(open.Data)});
    open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(index));
}

/// Format byte with the length, target, unit, a byte for a length that the first does not give,
/// the message and the sum of it all.
void ReplyFrames::TakeKeywordFrame(const Bytes& frame) {
    constexpr std::uint8_t kAddressed = 0x80;
    constexpr std::uint8_t kLengthMask = 0x3F;
    if (frame.size() <= kShortHeader || (frame[0] & kAddressed) == 0) return TakeBroken();
    std::size_t header = kShortHeader;
    std::size_t length = frame[0] & kLengthMask;
    if (length == 0) length = frame[header++];
    if (length == 0 || frame.size() != header + length + 1 || !EndsWithSum(frame))
        return TakeBroken();
    Messages.push_back({frame[2], Slice(frame, header, length)});
}

/// Priority, target, unit, the message and its checksum. On J1850 the byte with which the receiver
/// has confirmed the frame may stand behind it.
void ReplyFrames::TakeShortFrame(const Bytes& frame) {
    const auto endsWell = [&](std::size_t size) {
        if (size < kShortHeader + 2) return false;
        const auto last = frame.begin() + static_cast<std::ptrdiff_t>(size) - 1;
        return bus_ == Bus::Iso9141 ? EndsWithSum(frame) : CyclicSum(frame.begin(), last) == *last;
    };
    std::size_t size = frame.size();
    if (!endsWell(size) && (bus_ != Bus::J1850 || !endsWell(--size))) return TakeBroken();
    Messages.push_back({frame[2], Slice(frame, kShortHeader, size - kShortHeader - 1)});
}

void ReplyFrames::TakeBare(std::string_view digits) {
    if (digits.size() == kLengthDigits && (IsCan(bus_) || bus_ == Bus::Unknown)) {
        const std::size_t length = WholeNumber<std::uint16_t>(digits, 16).value_or(0);
        if (length <= kSingleBytes) return TakeBroken();
        open_.push_back({0, length, 0, {}});
        return;
    }
    const std::optional<Bytes> bytes = BytesOf(digits);
    if (!bytes || bytes->empty()) return TakeBroken();
    Messages.push_back({0, *bytes});
}

/// Belongs to the message that waits for this number. When two do, their units cannot be told
/// apart.
void ReplyFrames::TakeNumbered(unsigned number, std::string_view digits) {
    const std::optional<Bytes> bytes = BytesOf(digits);
    const auto waits = [number](const Open& message) { return message.Next == number; };
    const auto found = std::find_if(open_.begin(), open_.end(), waits);
    if (!bytes || headers_ || found == open_.end() || std::any_of(found + 1, open_.end(), waits))
        return TakeBroken();
    Continue(static_cast<std::size_t>(found - open_.begin()), bytes->begin(), bytes->end());
}

bool ReplyFrames::Finish() {
    for (const Open& message : open_) Break(message.Unit);
    if (!headers_ && (unreadable_ || !broken_.empty())) Messages.clear();
    std::erase_if(Messages, [this](const UnitMessage& message) {
        return std::find(broken_.begin(), broken_.end(), message.Unit) != broken_.end();
    });
    return !unreadable_ && broken_.empty();
}

}  // namespace dravik
