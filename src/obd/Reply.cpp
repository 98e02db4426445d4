#include "obd/Reply.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

#include "obd/LinkFaults.h"
#include "obd/ReplyFrames.h"
#include "platform/Number.h"

namespace dravik {

namespace {

constexpr std::uint8_t kAnswerOffset =
    0x40;  // an answer names the service of its request plus this
constexpr std::uint8_t kNegative = 0x7F;
constexpr std::uint8_t kFreezeService = 2;
constexpr std::uint8_t kServicesWithPid[] = {1, 2, 5, 6, 8, 9};

constexpr std::string_view kNoData = "NODATA";
/// What the interface says, without blanks, when the bus or it itself has failed. It may be cut
/// off or go on.
constexpr std::string_view kFaultWords[] = {
    "STOPPED", "CANERROR",        "BUSERROR",  "BUSBUSY",  "BUFFERFULL",
    "FBERROR", "UNABLETOCONNECT", "DATAERROR", "ACTALERT", "LVRESET",
    "LPALERT", "FCRXTIMEOUT",     "RXERROR",   "ERROR",    "ERR",
};

bool Is(std::string_view text, std::string_view word) {
    return text.starts_with(word);
}

bool AllHex(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; });
}

/// Takes a sign of progress off the front of a line without blanks: its data may follow at once.
std::string_view WithoutProgress(std::string_view line) {
    constexpr std::string_view kSearching = "SEARCHING";
    constexpr std::string_view kBusInit = "BUSINIT:";
    const bool starts = Is(line, kBusInit);
    for (const std::string_view sign : {kSearching, kBusInit}) {
        if (Is(line, sign)) line.remove_prefix(sign.size());
    }
    while (Is(line, ".")) line.remove_prefix(1);
    if (starts && Is(line, "OK")) line.remove_prefix(2);
    return line;
}

/// A line without its blanks and what slips in on the wire without meaning.
std::string Compact(std::string_view line) {
    std::string text;
    text.reserve(line.size());
    for (const char c : line) {
        if (c != ' ' && c != '\t' && c != '\0') text += c;
    }
    return text;
}

/// Bytes that name what is answered: the service, its PID and freeze frame.
std::size_t NamingBytes(const Bytes& request) {
    if (request.empty()) return 0;
    const auto* const end = std::end(kServicesWithPid);
    const bool hasPid = std::find(std::begin(kServicesWithPid), end, request[0]) != end;
    const std::size_t named = !hasPid ? 1 : request[0] == kFreezeService ? 3 : 2;
    return std::min(named, request.size());
}

bool Answers(const Bytes& message, const Bytes& request) {
    const std::size_t named = NamingBytes(request);
    if (named == 0 || message.size() < named ||
        message[0] != static_cast<std::uint8_t>(request[0] + kAnswerOffset))
        return false;
    const auto end = request.begin() + static_cast<std::ptrdiff_t>(named);
    return std::equal(request.begin() + 1, end, message.begin() + 1);
}

/// Takes the next line off the front of a reply.
std::string_view TakeLine(std::string_view& lines) {
    const std::size_t end = lines.find_first_of("\r\n>");
    const std::string_view line = lines.substr(0, end);
    lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
    return line;
}

/// The lines of one reply, sorted into frames and words.
class Reading {
 public:
    Reading(const Bytes& request, Bus bus, bool headers)
        : request_(request), headers_(headers), frames_(bus, headers) {}

    void Take(std::string_view line);
    Reply Finish();

 private:
    bool IsEcho(std::string_view text) const;
    void TakeMessage(const UnitMessage& message, Reply& reply) const;
    ReplyEnd End(const Reply& reply, bool whole) const;

    const Bytes& request_;
    bool headers_;
    ReplyFrames frames_;
    bool fault_ = false;
    bool noData_ = false;
    bool notUnderstood_ = false;
};

bool Reading::IsEcho(std::string_view text) const {
    const std::optional<Bytes> bytes = BytesOf(text);
    return bytes && *bytes == request_;
}

void Reading::Take(std::string_view line) {
    const std::string compact = Compact(line);
    const std::string_view text = WithoutProgress(compact);
    if (text.empty() || IsEcho(text)) return;
    if (AllHex(text)) return headers_ ? frames_.TakeFramed(text) : frames_.TakeBare(text);
    if (text.size() > 2 && text[1] == ':' && AllHex(text.substr(0, 1)) && AllHex(text.substr(2)))
        return frames_.TakeNumbered(*WholeNumber<unsigned>(text.substr(0, 1), 16), text.substr(2));
    if (text == "?")
        notUnderstood_ = true;
    else if (Is(text, kNoData))
        noData_ = true;
    else if (std::any_of(std::begin(kFaultWords), std::end(kFaultWords),
                         [text](std::string_view word) { return Is(text, word); }))
        fault_ = true;
    else
        frames_.TakeBroken();  // "<DATA ERROR" behind a line means that line, too
}

void Reading::TakeMessage(const UnitMessage& message, Reply& reply) const {
    constexpr std::size_t kRefusalBytes = 3;
    const Bytes& data = message.Data;
    if (Answers(data, request_)) {
        reply.Messages.push_back(message);
    } else if (data.size() >= kRefusalBytes && data[0] == kNegative && !request_.empty() &&
               data[1] == request_[0]) {
        reply.Refusals.push_back({message.Unit, data[1], data[2]});
    }
}

ReplyEnd Reading::End(const Reply& reply, bool whole) const {
    if (fault_) return ReplyEnd::BusFault;
    if (notUnderstood_) return ReplyEnd::NotUnderstood;
    if (!whole) return ReplyEnd::Unreadable;
    if (std::any_of(reply.Refusals.begin(), reply.Refusals.end(), PutsOff))
        return ReplyEnd::Refused;
    if (!reply.Messages.empty()) return ReplyEnd::Answered;
    if (!reply.Refusals.empty()) return ReplyEnd::Refused;
    return noData_ ? ReplyEnd::NoData : ReplyEnd::Unreadable;
}

Reply Reading::Finish() {
    Reply reply;
    const bool whole = frames_.Finish();
    for (const UnitMessage& message : frames_.Messages) TakeMessage(message, reply);
    // A unit that put off its answer and has given it since has answered.
    std::erase_if(reply.Refusals, [&reply](const Refusal& refusal) {
        return PutsOff(refusal) && std::any_of(reply.Messages.begin(), reply.Messages.end(),
                                               [&refusal](const UnitMessage& message) {
                                                   return message.Unit == refusal.Unit;
                                               });
    });
    reply.End = End(reply, whole);
    return reply;
}

}  // namespace

Bus BusOf(char protocolNumber) {
    switch (protocolNumber) {
        case '1':
        case '2':
            return Bus::J1850;
        case '3':
            return Bus::Iso9141;
        case '4':
        case '5':
            return Bus::Keyword;
        case '6':
        case '8':
        case 'B':
        case 'C':
            return Bus::Can11;
        case '7':
        case '9':
            return Bus::Can29;
        default:
            return Bus::Unknown;
    }
}

Reply TakeApart(std::string_view reply, const Bytes& request, Bus bus, bool headers) {
    const std::size_t prompt = reply.find('>');
    std::string_view lines = reply.substr(0, prompt);
    Reply result;
    if (prompt != std::string_view::npos) {
        Reading reading(request, bus, headers);
        while (!lines.empty()) reading.Take(TakeLine(lines));
        result = reading.Finish();
    }
    result.Words = InterfaceWords(reply.substr(0, prompt));
    return result;
}

std::optional<Bytes> FirstAnswer(std::string_view reply, const Bytes& request) {
    while (!reply.empty()) {
        const std::string line = Compact(TakeLine(reply));
        std::optional<Bytes> bytes = BytesOf(WithoutProgress(line));
        if (!bytes || !Answers(*bytes, request) || bytes->size() == NamingBytes(request)) continue;
        bytes->erase(bytes->begin(),
                     bytes->begin() + static_cast<std::ptrdiff_t>(NamingBytes(request)));
        return bytes;
    }
    return std::nullopt;
}

std::string CodeText(std::uint8_t high, std::uint8_t low) {
    constexpr std::string_view kSystems = "PCBU";
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return {kSystems[high >> 6U], kDigits[high >> 4U & 3U], kDigits[high & 15U], kDigits[low >> 4U],
            kDigits[low & 15U]};
}

std::optional<std::vector<std::string>> CodesIn(const Bytes& message, Bus bus) {
    const bool counted = bus == Bus::Can11 || bus == Bus::Can29;
    const std::size_t begin = counted ? 2 : 1;
    if (bus == Bus::Unknown || message.size() < begin || (message.size() - begin) % 2 != 0)
        return std::nullopt;
    const std::size_t places = (message.size() - begin) / 2;
    if (counted && message[1] > places) return std::nullopt;
    std::vector<std::string> codes;
    for (std::size_t place = 0; place < places; ++place) {
        const std::uint8_t high = message[begin + 2 * place];
        const std::uint8_t low = message[begin + 2 * place + 1];
        if (high == 0 && low == 0) continue;
        if (counted && place >= message[1]) return std::nullopt;  // more than it counts
        codes.push_back(CodeText(high, low));
    }
    return codes;
}

}  // namespace dravik
