#include "obd/Reply.h"

#include <algorithm>

#include "FuzzTarget.h"
#include "obd/ReplyFrames.h"

namespace dravik::fuzz {
namespace {

constexpr Bus kBuses[] = {Bus::Unknown, Bus::J1850, Bus::Iso9141,
                          Bus::Keyword, Bus::Can11, Bus::Can29};

void CheckReply(std::string_view text, const Bytes& request, Bus bus, bool headers) {
    const Reply reply = TakeApart(text, request, bus, headers);
    const bool prompt = text.find('>') != std::string_view::npos;
    Require(prompt != (reply.End == ReplyEnd::Unfinished), "only a prompt ends a reply");
    Require(reply.End != ReplyEnd::Answered || !reply.Messages.empty(), "an answer is there");
    std::size_t bytes = 0;
    for (const UnitMessage& message : reply.Messages) {
        Require(headers || message.Unit == 0, "units are told by headers");
        Require(!message.Data.empty() && message.Data[0] == ((request[0] + 0x40) & 0xFF),
                "a message answers its request");
        bytes += message.Data.size();
        const auto codes = CodesIn(message.Data, bus);
        if (!codes) continue;
        Require(codes->size() * 2 < message.Data.size(), "a code has two bytes");
        for (const std::string& code : *codes)
            Require(code.size() == 5 && code != "P0000", "a code has five characters", code);
    }
    Require(bytes * 2 <= text.size(), "nothing comes from nowhere");
}

}  // namespace

/// The first line is the request in hexadecimal, the rest the reply.
void Run(std::string_view input) {
    const Bytes request = BytesOf(TakeLine(input)).value_or(Bytes{});
    if (request.empty()) return;
    for (const Bus bus : kBuses) {
        for (const bool headers : {false, true}) CheckReply(input, request, bus, headers);
    }
    if (const auto data = FirstAnswer(input, request)) Require(!data->empty(), "data is there");
}

}  // namespace dravik::fuzz
