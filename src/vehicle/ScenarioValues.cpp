#include "vehicle/ScenarioValues.h"

#include <algorithm>
#include <charconv>
#include <sstream>

namespace dravik::vehicle {
namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

std::optional<double> ToNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string Plain(double value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

constexpr Choice<bool> kSwitches[] = {{"yes", true}, {"no", false}, {"on", true}, {"off", false}};

}  // namespace

std::string Lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

Problem ReadNumber(std::string_view text, double low, double high, double& value) {
    const auto number = ToNumber(text);
    if (!number) return "\"" + std::string(text) + "\" is not a number";
    if (*number < low || *number > high)
        return std::string(text) + " is not between " + Plain(low) + " and " + Plain(high);
    value = *number;
    return {};
}

Problem ReadSwitch(std::string_view text, bool& value) {
    return ReadChoice(text, kSwitches, value);
}

Problem ReadText(std::string_view text, std::size_t longest, std::string& value) {
    if (std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; }))
        return "contains a control character";
    if (text.size() > longest) return "longer than " + std::to_string(longest) + " characters";
    value = text;
    return {};
}

Problem ReadVin(std::string_view text, std::string& value) {
    if (text.size() != 17) return "a vehicle identification number has 17 characters";
    value = text;
    return {};
}

Problem ReadUnitName(std::string_view text, std::string& value) {
    const auto dash = text.find('-');
    if (dash < 1 || dash > 4 || text.size() - dash - 1 > 15)
        return "expects up to 4 characters, \"-\" and a name of up to 15";
    return ReadText(text, 20, value);
}

Problem ReadCalibrations(std::string_view text, std::vector<std::string>& value) {
    std::istringstream words{std::string(text)};
    std::vector<std::string> all;
    for (std::string word; words >> word;) {
        if (word.size() > 16) return "\"" + word + "\" has more than 16 characters";
        all.push_back(word);
    }
    if (all.size() > 8) return "more than 8 identifications";
    value = all;
    return {};
}

Problem ReadVerifications(std::string_view text, std::vector<std::uint8_t>& value) {
    const auto bytes = ToBytes(text);
    if (!bytes || bytes->size() % 4 != 0 || bytes->size() > 32)
        return "expects numbers of four hexadecimal bytes, up to 8";
    value = *bytes;
    return {};
}

Problem ReadPids(std::string_view text, std::set<int>& value) {
    std::set<int> pids;
    if (!text.empty()) {
        const auto bytes = ToBytes(text);
        if (!bytes) return "\"" + std::string(text) + "\" is no list of hexadecimal PIDs";
        pids.insert(bytes->begin(), bytes->end());
        for (int mask : {0x00, 0x20, 0x40}) {
            if (pids.count(mask) != 0)
                return "PIDs 00, 20 and 40 are masks and follow from the others";
        }
    }
    value = pids;
    return {};
}

Problem ReadCode(std::string_view text, std::uint16_t& value) {
    constexpr std::string_view kLetters = "PCBU";
    Problem wrong = "\"" + std::string(text) + "\" is no trouble code like P0133";
    if (text.size() != 5) return wrong;
    const auto letter = kLetters.find(Upper(text[0]));
    std::uint16_t number = 0;
    const char* end = text.data() + 5;
    if (letter == std::string_view::npos || text[1] > '3' ||
        std::from_chars(text.data() + 1, end, number, 16).ptr != end || number == 0)
        return wrong;
    value = static_cast<std::uint16_t>(letter << 14 | number);
    return {};
}

Problem ReadMatch(std::string_view text, std::string& value) {
    value.clear();
    for (char c : text) {
        if (c != ' ') value += Upper(c);
    }
    return {};
}

std::optional<std::vector<std::uint8_t>> ToBytes(std::string_view text) {
    std::string digits;
    for (char c : text) {
        if (c != ' ') digits += c;
    }
    if (digits.empty() || digits.size() % 2 != 0) return std::nullopt;
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        std::uint8_t byte = 0;
        const char* end = digits.data() + i + 2;
        if (std::from_chars(digits.data() + i, end, byte, 16).ptr != end) return std::nullopt;
        bytes.push_back(byte);
    }
    return bytes;
}

}  // namespace dravik::vehicle
