// The commands for the interface itself, which begin with "AT".

#include <cstdio>
#include <cstring>

#include "vehicle/InterfaceProtocol.h"

namespace dravik::vehicle {
namespace {

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

bool Fits(const std::string& argument, std::string_view pattern) {
    if (argument.size() != pattern.size()) return false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = argument[i];
        switch (pattern[i]) {
            case 'b':
                if (c != '0' && c != '1') return false;
                break;
            case 'd':
                if (c < '0' || c > '9') return false;
                break;
            case 'h':
                if (!IsHexDigit(c)) return false;
                break;
            default:
                if (c != pattern[i]) return false;
        }
    }
    return true;
}

}  // namespace

const InterfaceProtocol::AtCommand InterfaceProtocol::kAtCommands[] = {
    {"Z", "", &InterfaceProtocol::Reset},
    {"WS", "", &InterfaceProtocol::Reset},
    {"I", "", &InterfaceProtocol::Identify},
    {"!01", "", &InterfaceProtocol::IdentifyExtended},
    {"@1", "", &InterfaceProtocol::Describe},
    {"D", "", &InterfaceProtocol::Defaults},
    {"E", "b", &InterfaceProtocol::SwitchEcho},
    {"L", "b", &InterfaceProtocol::SwitchLineFeeds},
    {"H", "b", &InterfaceProtocol::SwitchHeaders},
    {"S", "b", &InterfaceProtocol::SwitchSpaces},
    {"CAF", "b", &InterfaceProtocol::SwitchTakingApart},
    {"DP", "", &InterfaceProtocol::DescribeProtocol},
    {"DPN", "", &InterfaceProtocol::DescribeProtocolNumber},
    {"SP", "d", &InterfaceProtocol::SelectProtocol},
    {"SP", "Ad", &InterfaceProtocol::SelectProtocol},
    {"TP", "d", &InterfaceProtocol::SelectProtocol},
    {"TP", "Ad", &InterfaceProtocol::SelectProtocol},
    {"PC", "", &InterfaceProtocol::CloseProtocol},
    {"RV", "", &InterfaceProtocol::ReadVoltage},
    {"IGN", "", &InterfaceProtocol::ReadIgnition},
    // Understood and without an effect here.
    {"M", "b", &InterfaceProtocol::Accept},
    {"R", "b", &InterfaceProtocol::Accept},
    {"AL", "", &InterfaceProtocol::Accept},
    {"NL", "", &InterfaceProtocol::Accept},
    {"AT", "d", &InterfaceProtocol::Accept},
    {"ST", "hh", &InterfaceProtocol::Accept},
    {"SH", "hhh", &InterfaceProtocol::Accept},
    {"SH", "hhhhhh", &InterfaceProtocol::Accept},
    {"CFC", "b", &InterfaceProtocol::Accept},
    {"CRA", "hhh", &InterfaceProtocol::Accept},
    {"CRA", "hhhhhhhh", &InterfaceProtocol::Accept},
};

void InterfaceProtocol::RunAtCommand(double now, const std::string& command) {
    for (const auto& row : kAtCommands) {
        const std::size_t length = std::strlen(row.Name);
        if (!command.starts_with(row.Name) || !Fits(command.substr(length), row.Argument)) continue;
        resetting_ = false;
        const std::string text = (this->*row.Run)(command.substr(length));
        if (resetting_) {
            lastLine_.clear();
            Reply(now, {{scenario_.ResetTime, LineEnd() + LineEnd() + text + Ending()}});
        } else {
            Reply(now, {{scenario_.CommandLatency, text + Ending()}});
        }
        return;
    }
    Reply(now, {{scenario_.CommandLatency, "?" + Ending()}});
}

std::string InterfaceProtocol::Reset(const std::string&) {
    SetDefaults();
    resetting_ = true;
    return scenario_.Identity;
}

std::string InterfaceProtocol::Identify(const std::string&) {
    return scenario_.Identity;
}

std::string InterfaceProtocol::IdentifyExtended(const std::string&) {
    return scenario_.ExtendedIdentity.empty() ? "?" : scenario_.ExtendedIdentity;
}

std::string InterfaceProtocol::Describe(const std::string&) {
    return scenario_.Description;
}

std::string InterfaceProtocol::Defaults(const std::string&) {
    SetDefaults();
    return "OK";
}

std::string InterfaceProtocol::DescribeProtocol(const std::string&) {
    const ProtocolRow* row = FindProtocol(protocol_);
    if (row == nullptr) return "AUTO";
    return std::string(automatic_ ? "AUTO, " : "") + row->Name;
}

std::string InterfaceProtocol::DescribeProtocolNumber(const std::string&) {
    return std::string(automatic_ ? "A" : "") + protocol_;
}

std::string InterfaceProtocol::SelectProtocol(const std::string& argument) {
    automatic_ = argument.size() == 2 || argument == "0";
    protocol_ = automatic_ ? '0' : argument.back();
    connected_ = false;
    return "OK";
}

std::string InterfaceProtocol::ReadVoltage(const std::string&) {
    char text[16];
    std::snprintf(text, sizeof text, "%.1fV", vehicle_.Car().Voltage);
    return text;
}

std::string InterfaceProtocol::ReadIgnition(const std::string&) {
    return vehicle_.Awake() ? "ON" : "OFF";
}

std::string InterfaceProtocol::CloseProtocol(const std::string&) {
    connected_ = false;
    return "OK";
}

std::string InterfaceProtocol::SwitchEcho(const std::string& argument) {
    echo_ = argument == "1";
    return "OK";
}

std::string InterfaceProtocol::SwitchLineFeeds(const std::string& argument) {
    lineFeeds_ = argument == "1";
    return "OK";
}

std::string InterfaceProtocol::SwitchHeaders(const std::string& argument) {
    headers_ = argument == "1";
    return "OK";
}

std::string InterfaceProtocol::SwitchSpaces(const std::string& argument) {
    spaces_ = argument == "1";
    return "OK";
}

std::string InterfaceProtocol::SwitchTakingApart(const std::string& argument) {
    takeApart_ = argument == "1";
    return "OK";
}

std::string InterfaceProtocol::Accept(const std::string&) {
    return "OK";
}

}  // namespace dravik::vehicle
