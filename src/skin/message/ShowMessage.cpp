#include "skin/message/ShowMessage.h"

#include <optional>

#include "core/basGlobal.h"
#include "platform/Events.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kQueryStyle = 2;    // what "showquery" passes
constexpr double kLookAgain = 1;  // seconds; every answer is an event and ends the wait at once

frWarning* messageDialog = nullptr;
int messageAnswer = 0;  // one cell: 0 while a message is open

std::optional<int> KindOfStyle(int style) {
    switch (style) {
        case kMessageQuestion:
        case kQueryStyle:
            return 2;
        case kMessageInformation:
            return 1;
        case kMessageCritical:
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace

void InitMessages(frWarning* dialog) {
    messageDialog = dialog;
    upCalls.ShowMessage = ShowMessage;
    upCalls.ShowPlainMessage = ShowPlainMessage;
    upCalls.ShowPopup = ShowPopup;
}

frWarning* MessageDialog() {
    return messageDialog;
}

void SetMessageAnswer(int answer) {
    messageAnswer = answer;
}

int ShowPlainMessage(const std::string& text, int style, const std::string&) {
    const std::optional<int> kind = KindOfStyle(style);
    if (!kind || messageDialog == nullptr || basGlobal.Closing) return kAnswerNo;
    messageAnswer = 0;
    ShowPopup(text, *kind);
    while (messageAnswer == 0 && !basGlobal.Closing) WaitForEvents(kLookAgain);
    return messageAnswer == 0 ? static_cast<int>(kAnswerNo) : messageAnswer;
}

int ShowMessage(const std::string& text, int style, const std::string& title) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos) return ShowPlainMessage(text, style, title);
    const int answer = ShowPlainMessage(text.substr(0, colon), style, title);
    const std::string function = text.substr(colon + 1);
    if (answer == kAnswerYes && !function.empty()) ExecuteCommand(function);
    return answer;
}

void ShowPopup(const std::string& message, int kind) {
    if (messageDialog == nullptr) return;
    messageDialog->Open(message, kind, CurrentScreen() == nullptr ? 1 : CurrentScreen()->Scale());
}

}  // namespace dravik
