#include <QByteArray>
#include <algorithm>

#include "platform/ProcessStart.h"
#include "platform/Text.h"

namespace dravik {
namespace {

constexpr std::string_view kSchemeEnd = "://";

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool MayStandInScheme(char c) {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

/// True for "/C:/music", where the drive is the beginning of the path.
bool NamesDrive(std::string_view path) {
    return path.size() > 2 && path[0] == '/' && IsLetter(path[1]) && path[2] == ':';
}

}  // namespace

bool IsAddress(std::string_view text) {
    const std::string_view scheme = text.substr(0, text.find(kSchemeEnd));
    // A single letter is a drive.
    return scheme.size() > 1 && scheme.size() < text.size() && IsLetter(scheme[0]) &&
           std::all_of(scheme.begin(), scheme.end(), MayStandInScheme);
}

std::optional<std::string> FileOfAddress(std::string_view address) {
    constexpr std::string_view kFile = "file://";
    constexpr std::string_view kThisComputer = "localhost";
    if (!EqualsNoCase(address.substr(0, kFile.size()), kFile)) return std::nullopt;
    std::string_view path = address.substr(kFile.size());
    if (EqualsNoCase(path.substr(0, kThisComputer.size()), kThisComputer))
        path.remove_prefix(kThisComputer.size());
    if (!path.starts_with('/')) return std::nullopt;
    if (NamesDrive(path)) path.remove_prefix(1);
    return QByteArray::fromPercentEncoding(QByteArray(path.data(), static_cast<int>(path.size())))
        .toStdString();
}

}  // namespace dravik
