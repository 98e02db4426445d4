#pragma once

#include <QSize>
#include <string>
#include <vector>

namespace dravik {

/// What the command line asks for.
struct CommandLine {
    std::string Folder;
    bool Demo = false;
    std::string Scenario;  ///< of the virtual vehicle; empty: the usual one
    bool Windowed = false;
    QSize WindowSize;
    std::string Skin;
    std::string Language;
    bool Console = false;
    bool CheckSkin = false;
    std::string Report;  ///< the file that a report is to be written to; empty: none
    std::string Port;    ///< for the report, in place of the settings' one
    bool Help = false;
    bool Version = false;
    std::string Error;  ///< what is wrong with the arguments; empty when nothing is
};

/// @param arguments  without the program's own name
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// The text of --help.
const char* UsageText();

}  // namespace dravik
