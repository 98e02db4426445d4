#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "obd/Reply.h"

/// The frames of one reply on their way to whole messages. Only the files of this folder include
/// this.
namespace dravik {

class ReplyFrames {
 public:
    ReplyFrames(Bus bus, bool headers) : bus_(bus), headers_(headers) {}

    /// A line with a header, its digits only.
    void TakeFramed(std::string_view digits);
    /// A line without a header, its digits only: the bytes of one message, or, three digits on CAN,
    /// the length of one that follows in numbered lines.
    void TakeBare(std::string_view digits);
    /// A line with its number, 0 to 15, in front.
    void TakeNumbered(unsigned number, std::string_view digits);
    /// A line that cannot be read.
    void TakeBroken();

    /// The end of the reply: false when anything is missing or broken. Messages are then those of
    /// the units of which nothing was lost; without headers none is sure.
    bool Finish();

    std::vector<UnitMessage> Messages;

 private:
    /// A message whose frames have not all come.
    struct Open {
        std::uint32_t Unit;
        std::size_t Length;
        unsigned Next;  ///< number of the frame that it waits for
        Bytes Data;
    };

    void TakeCanFrame(std::uint32_t unit, const Bytes& frame);
    void TakeKeywordFrame(const Bytes& frame);
    void TakeShortFrame(const Bytes& frame);
    void BeginLong(std::uint32_t unit, const Bytes& frame);
    void Continue(std::size_t open, Bytes::const_iterator begin, Bytes::const_iterator end);
    void Break(std::uint32_t unit) { broken_.push_back(unit); }

    Bus bus_;
    bool headers_;
    bool unreadable_ = false;
    std::vector<Open> open_;
    std::vector<std::uint32_t> broken_;
};

/// Bytes of two hexadecimal digits each; nothing for any other text.
std::optional<Bytes> BytesOf(std::string_view digits);

}  // namespace dravik
