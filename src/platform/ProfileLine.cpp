#include "platform/ProfileLine.h"

#include "platform/Text.h"

namespace dravik {
namespace {

std::string_view WithoutQuotes(std::string_view value) {
    if (value.size() < 2 || value.front() != value.back()) return value;
    if (value.front() != '"' && value.front() != '\'') return value;
    return value.substr(1, value.size() - 2);
}

}  // namespace

ProfileLine ParseProfileLine(std::string_view line) {
    // A carriage return that ends no line counts as a blank at the end of one.
    while (line.ends_with('\r')) line.remove_suffix(1);
    const std::string_view text = Trimmed(line);
    if (text.empty()) return {.Kind = ProfileLineKind::Blank};
    if (text.front() == ';') return {};
    if (text.front() == '[') {
        const std::size_t close = text.find(']');
        if (close == std::string_view::npos) return {};
        return {.Kind = ProfileLineKind::Section, .Name = Trimmed(text.substr(1, close - 1))};
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return {};
    const std::string_view name = Trimmed(line.substr(0, equals));
    if (name.empty()) return {};

    std::size_t valueStart = line.find_first_not_of(" \t", equals + 1);
    if (valueStart == std::string_view::npos) valueStart = line.size();
    // A value is text: it ends where a zero byte would end it.
    const std::string_view value = line.substr(valueStart);
    return {.Kind = ProfileLineKind::Entry,
            .Name = name,
            .Value = WithoutQuotes(Trimmed(value.substr(0, value.find('\0')))),
            .Prefix = line.substr(0, valueStart)};
}

std::string_view TakeProfileLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end == std::string_view::npos ? end : end + 1);
    text.remove_prefix(line.size());
    return line;
}

std::string_view ProfileLineEnd(std::string_view line) {
    const std::size_t length = line.ends_with("\r\n") ? 2 : line.ends_with('\n') ? 1 : 0;
    return line.substr(line.size() - length);
}

std::string_view ProfileByteOrderMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return text.starts_with(kMark) ? text.substr(0, kMark.size()) : std::string_view();
}

}  // namespace dravik
