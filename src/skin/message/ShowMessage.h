#pragma once

#include <string>

/// The program's message box, for every module that has something to tell or to ask.
namespace dravik {

/// Styles of a message, and the answers.
enum : int {
    kMessageCritical = 16,
    kMessageQuestion = 32,
    kMessageInformation = 64,
    kAnswerOk = 1,
    kAnswerYes = 6,
    kAnswerNo = 7,
};

/// Shows a message and waits for the answer, pumping events.
///
/// @param text   the message; may end in ":" and a function text, which is not shown but run when
///               the answer is yes (split at the last ":")
/// @param style  16 critical, 32 question (2 is taken as 32), 64 information; any other style
///               answers 7 at once
/// @return 6 yes, 7 no (also when the box closes by itself or the program ends), 1 ok
int ShowMessage(const std::string& text, int style, const std::string& title);

/// The same for messages whose text may hold a ":" of its own: nothing is split off or run.
int ShowPlainMessage(const std::string& text, int style, const std::string& title);

/// Shows a message without waiting: kind 0 warning, 1 information, 2 question.
void ShowPopup(const std::string& message, int kind);

}  // namespace dravik
