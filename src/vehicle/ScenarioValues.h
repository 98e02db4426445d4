#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::vehicle {

/// Readers of the values in a scenario. Each gives an empty text, or what is wrong with the value;
/// then the target keeps what it had.
using Problem = std::string;

std::string Lowered(std::string_view text);
std::string_view Trimmed(std::string_view text);

Problem ReadNumber(std::string_view text, double low, double high, double& value);

template <typename Integer>
Problem ReadInteger(std::string_view text, double low, double high, Integer& value) {
    double number = 0;
    if (Problem problem = ReadNumber(text, low, high, number); !problem.empty()) return problem;
    if (number != std::floor(number)) return std::string(text) + " is not a whole number";
    value = static_cast<Integer>(number);
    return {};
}

/// Hexadecimal bytes with or without blanks: "1A F8"; nothing when the text is no such thing.
std::optional<std::vector<std::uint8_t>> ToBytes(std::string_view text);

/// A number of as many hexadecimal bytes as the target has, the highest first: "04 D2".
template <typename Integer>
Problem ReadHex(std::string_view text, Integer& value) {
    const auto bytes = ToBytes(text);
    if (!bytes || bytes->size() != sizeof(Integer))
        return "expects hexadecimal bytes: " + std::to_string(sizeof(Integer));
    std::uint32_t number = 0;
    for (std::uint8_t byte : *bytes) number = number << 8 | byte;
    value = static_cast<Integer>(number);
    return {};
}

template <typename Value>
struct Choice {
    const char* Word;
    Value Meaning;
};

template <typename Value, std::size_t kCount>
Problem ReadChoice(std::string_view text, const Choice<Value> (&choices)[kCount], Value& value) {
    std::string known;
    for (const auto& choice : choices) {
        if (Lowered(text) == choice.Word) {
            value = choice.Meaning;
            return {};
        }
        known += (known.empty() ? "" : ", ") + std::string(choice.Word);
    }
    return "\"" + std::string(text) + "\" is none of " + known;
}

/// "yes" or "on", "no" or "off".
Problem ReadSwitch(std::string_view text, bool& value);

/// A text without control characters: it is sent to the client as it stands.
Problem ReadText(std::string_view text, std::size_t longest, std::string& value);

Problem ReadVin(std::string_view text, std::string& value);

/// The name of a control unit: an acronym, a dash and a text, "TCM-Transmission".
Problem ReadUnitName(std::string_view text, std::string& value);

/// Calibration identifications without blanks, with blanks between them.
Problem ReadCalibrations(std::string_view text, std::vector<std::string>& value);

/// Calibration verification numbers of four bytes each: "17 91 BC 82".
Problem ReadVerifications(std::string_view text, std::vector<std::uint8_t>& value);

/// A list of PIDs in hexadecimal: "05 0C".
Problem ReadPids(std::string_view text, std::set<int>& value);

/// A trouble code: letter, a digit up to 3, three hexadecimal digits, like "P0133".
Problem ReadCode(std::string_view text, std::uint16_t& value);

/// The beginning of a command, which is kept in upper case without blanks.
Problem ReadMatch(std::string_view text, std::string& value);

}  // namespace dravik::vehicle
