#include <algorithm>
#include <cctype>

#include "obd/diagnosis/Decoders.h"
#include "obd/diagnosis/DiagnosisParts.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr std::size_t kHead = 3;  // service, what was asked for, count or number of the message
constexpr std::size_t kPiece = 4;

/// The data of all messages of a unit in order; nothing where one is missing.
std::optional<MessageBytes> Joined(const std::vector<MessageBytes>& messages) {
    std::vector<MessageBytes> pieces = messages;
    std::sort(pieces.begin(), pieces.end());
    MessageBytes data;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (pieces[i].size() < kHead) return std::nullopt;
        if (pieces.size() > 1 && pieces[i][2] != i + 1) return std::nullopt;
        data.insert(data.end(), pieces[i].begin() + kHead, pieces[i].end());
    }
    if (data.empty()) return std::nullopt;
    return data;
}

/// The texts of the older buses are filled in front, so that whole messages come out.
std::size_t Filling(const MessageBytes& data, std::size_t length) {
    const std::size_t whole = (length + kPiece - 1) / kPiece * kPiece;
    return data.size() == whole ? whole - length : 0;
}

std::string Cleaned(std::string text) {
    const std::size_t begin = text.find_first_not_of(std::string_view("\0 ", 2));
    if (begin == std::string::npos) return {};
    text.erase(text.find_last_not_of(std::string_view("\0 ", 2)) + 1);
    return text.substr(begin);
}

constexpr std::size_t kVinLength = 17;
constexpr std::size_t kCheckPlace = 8;

/// What a character of the number counts; nothing for those that it may not hold.
std::optional<int> ValueOf(char character) {
    constexpr std::string_view kLetters = "ABCDEFGHJKLMNPRSTUVWXYZ";
    constexpr std::string_view kValues = "12345678123457923456789";
    if (character >= '0' && character <= '9') return character - '0';
    const std::size_t place = kLetters.find(character);
    if (place == std::string_view::npos) return std::nullopt;
    return kValues[place] - '0';
}

}  // namespace

std::optional<std::vector<std::string>> TextsIn(const std::vector<MessageBytes>& messages,
                                                std::size_t length) {
    const std::optional<MessageBytes> data = Joined(messages);
    if (!data) return std::nullopt;
    const std::size_t filling = Filling(*data, length);
    if (messages.size() > 1 && (data->size() - filling) % length != 0) return std::nullopt;
    std::vector<std::string> texts;
    for (std::size_t at = filling; at < data->size(); at += length) {
        const std::size_t end = std::min(at + length, data->size());
        const auto place = [&](std::size_t index) {
            return data->begin() + static_cast<std::ptrdiff_t>(index);
        };
        std::string text = Cleaned(std::string(place(at), place(end)));
        if (!text.empty()) texts.push_back(std::move(text));
    }
    return texts;
}

std::optional<std::vector<std::string>> NumbersIn(const std::vector<MessageBytes>& messages) {
    const std::optional<MessageBytes> data = Joined(messages);
    if (!data || data->size() % kPiece != 0) return std::nullopt;
    std::vector<std::string> numbers;
    for (std::size_t at = 0; at < data->size(); at += kPiece) {
        std::string number;
        for (std::size_t i = 0; i < kPiece; ++i) number += HexText((*data)[at + i], 2);
        numbers.push_back(number);
    }
    return numbers;
}

std::string UnitNameIn(const std::string& text) {
    std::string name = text;
    std::erase(name, '\0');
    std::erase_if(name, [](char c) { return c < ' ' || c > '~'; });
    return std::string(Trimmed(name));
}

VinCheck CheckVin(const std::string& vin) {
    constexpr int kWeights[kVinLength] = {8, 7, 6, 5, 4, 3, 2, 10, 0, 9, 8, 7, 6, 5, 4, 3, 2};
    constexpr int kModulus = 11;
    if (vin.size() != kVinLength) return VinCheck::NotANumber;
    int sum = 0;
    for (std::size_t i = 0; i < kVinLength; ++i) {
        const std::optional<int> value = ValueOf(vin[i]);
        if (!value) return VinCheck::NotANumber;
        sum += *value * kWeights[i];
    }
    const int rest = sum % kModulus;
    const char digit = rest == 10 ? 'X' : static_cast<char>('0' + rest);
    if (vin[kCheckPlace] == digit) return VinCheck::Holds;
    // The first character is the part of the world that the vehicle was built in.
    const bool northAmerican = vin[0] >= '1' && vin[0] <= '5';
    return northAmerican ? VinCheck::Fails : VinCheck::NotChecked;
}

std::optional<double> VoltsIn(const std::string& reply) {
    const std::size_t start = reply.find_first_of("0123456789");
    const std::size_t unit = reply.find('V');
    if (start == std::string::npos || unit == std::string::npos || unit < start)
        return std::nullopt;
    constexpr double kMost = 99;
    const double volts = LeadingNumber(std::string_view(reply).substr(start, unit - start));
    return volts > 0 && volts < kMost ? std::optional(volts) : std::nullopt;
}

}  // namespace dravik
