#include "app/CommandLine.h"

#include <cstdio>
#include <optional>

namespace dravik {

namespace {

constexpr const char* kUsage = R"(Usage: dravik [OPTION]...
Turns a touch-screen computer in a car into an instrument panel and a diagnostic tool.

  --folder DIR         program folder: settings, skins, languages, log
  --demo [SCENARIO]    connect to the built-in virtual vehicle; SCENARIO is a file or one of
                       drive, faults, workshop, silent, ignition-off, flaky
  --windowed [WxH]     a window instead of the full screen; without a size as large as the skin
                       was designed
  --skin NAME          use this skin instead of the one in the settings
  --language NAME      use this language instead of the one in the settings
  --console            read requests from standard input and answer them (docs/console.md)
  --check-skin         look for mistakes in the skin, a line each, and end: exit status 0 when
                       there are none, 1 with mistakes, 2 when the skin cannot be read
  --report FILE        without a window: connect, diagnose the vehicle, write a report on it and
                       end; a plain text when FILE ends in .txt, else HTML. Exit status 0 when
                       the vehicle has no trouble codes, 1 when it has, 2 when there is no report
                       or the codes could not be read
  --port DEVICE        with --report: the interface's device, in place of the one in the settings
  --help               show this text
  --version            show version, commit and libraries
)";

std::optional<QSize> ParseSize(const std::string& text) {
    int width = 0;
    int height = 0;
    char rest = 0;
    if (std::sscanf(text.c_str(), "%dx%d%c", &width, &height, &rest) != 2) return std::nullopt;
    if (width < 1 || height < 1) return std::nullopt;
    return QSize(width, height);
}

/// Walks over the arguments.
class Arguments {
 public:
    explicit Arguments(const std::vector<std::string>& all) : all_(all) {}

    bool AtEnd() const { return next_ >= all_.size(); }
    const std::string& Take() { return all_[next_++]; }

    /// The value behind an option, unless the next argument is an option itself.
    std::optional<std::string> TakeValue() {
        if (AtEnd() || all_[next_].starts_with("--")) return std::nullopt;
        return Take();
    }

 private:
    const std::vector<std::string>& all_;
    std::size_t next_ = 0;
};

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& all) {
    CommandLine line;
    Arguments arguments(all);
    const auto require = [&](const std::string& option, std::string& target) {
        if (auto value = arguments.TakeValue())
            target = *value;
        else
            line.Error = option + " needs a value";
    };
    while (!arguments.AtEnd() && line.Error.empty()) {
        const std::string option = arguments.Take();
        if (option == "--folder") {
            require(option, line.Folder);
        } else if (option == "--skin") {
            require(option, line.Skin);
        } else if (option == "--language") {
            require(option, line.Language);
        } else if (option == "--demo") {
            line.Demo = true;
            line.Scenario = arguments.TakeValue().value_or("");
        } else if (option == "--windowed") {
            line.Windowed = true;
            if (const auto text = arguments.TakeValue()) {
                const auto size = ParseSize(*text);
                if (!size) line.Error = "--windowed takes a size such as 800x480, not " + *text;
                line.WindowSize = size.value_or(QSize());
            }
        } else if (option == "--console") {
            line.Console = true;
        } else if (option == "--check-skin") {
            line.CheckSkin = true;
        } else if (option == "--report") {
            require(option, line.Report);
        } else if (option == "--port") {
            require(option, line.Port);
        } else if (option == "--help") {
            line.Help = true;
        } else if (option == "--version") {
            line.Version = true;
        } else {
            line.Error = "unknown option: " + option;
        }
    }
    if (!line.Port.empty() && line.Error.empty() && (line.Report.empty() || line.Demo))
        line.Error = line.Demo ? "--port and --demo exclude each other" : "--port needs --report";
    return line;
}

const char* UsageText() {
    return kUsage;
}

}  // namespace dravik
