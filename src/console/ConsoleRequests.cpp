#include "console/ConsoleRequests.h"

#include <QPixmap>
#include <string>

#include "core/basGlobal.h"
#include "platform/Text.h"
#include "skin/SkinVocabulary.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

std::string RunCommand(std::string_view command) {
    ExecuteCommand(std::string(command));
    return "ok";
}

std::string TellText(std::string_view argument) {
    std::string function(argument);
    return OneLine(ToUtf8(LabelText(function)));
}

std::string TellNumber(std::string_view argument) {
    std::string function(argument);
    return GeneralNumber(LabelNumber(function));
}

std::string TellImage(std::string_view argument) {
    std::string function(argument);
    return ImageState(function) ? "on" : "off";
}

std::string TellSource(std::string_view argument) {
    return std::to_string(SourceValue(argument));
}

std::string TellMessage(std::string_view) {
    const frWarning* dialog = MessageDialog();
    if (dialog == nullptr || !dialog->IsOpen()) return "none";
    return std::string(MessageSection(dialog->Kind())) + "\t" + OneLine(ToUtf8(dialog->Message()));
}

std::string Grab(std::string_view file) {
    if (file.empty()) return "error: grab takes a file name";
    const bool written =
        GrabWindow(WindowOnTop())
            .save(QString::fromUtf8(file.data(), static_cast<int>(file.size())), "PNG");
    return written ? "ok" : "error: the file could not be written: " + std::string(file);
}

std::string TellState(std::string_view) {
    return ReportState();
}

std::string TellElements(std::string_view) {
    QWidget* window = WindowOnTop();
    return window == PanelWindow() ? ReportElements() : ReportWindow(window);
}

std::string TellList(std::string_view) {
    return ReportList();
}

struct Request {
    std::string_view Word;
    std::string (*Answer)(std::string_view argument);
};

constexpr Request kRequests[] = {
    {"do", RunCommand},         {"text", TellText},
    {"number", TellNumber},     {"image", TellImage},
    {"source", TellSource},     {"state", TellState},
    {"elements", TellElements}, {"list", TellList},
    {"message", TellMessage},   {"click", InputClick},
    {"press", InputPress},      {"move", InputMove},
    {"release", InputRelease},  {"wheel", InputWheel},
    {"key", InputKey},          {"grab", Grab},
};

}  // namespace

std::string OneLine(const std::string& text) {
    std::string line;
    for (const char c : text) {
        switch (c) {
            case '\\':
                line += "\\\\";
                break;
            case '\n':
                line += "\\n";
                break;
            case '\r':
                line += "\\r";
                break;
            case '\t':
                line += "\\t";
                break;
            default:
                line += c;
        }
    }
    return line;
}

std::string AnswerRequest(std::string_view request) {
    const std::size_t blank = request.find(' ');
    const std::string_view word = request.substr(0, blank);
    const std::string_view argument =
        blank == std::string_view::npos ? std::string_view{} : request.substr(blank + 1);
    for (const Request& row : kRequests) {
        if (row.Word == word) return row.Answer(argument);
    }
    return "error: unknown request: " + OneLine(std::string(word));
}

}  // namespace dravik
