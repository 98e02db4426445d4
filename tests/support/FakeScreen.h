#pragma once

#include <functional>
#include <string>
#include <vector>

namespace dravik {

/// Stands in the place of the main window, the skin engine and the message box: writes down what is
/// asked of them, a line each ("page mainmenu", "message 32 Dravik: Really?").
struct FakeScreen {
    std::vector<std::string> Calls;
    std::function<int()> Answer;         ///< what a message box answers, called while it is open
    std::function<void()> WhileLoading;  ///< runs inside LoadSkinPage, as a page's Command does
    bool BoxIsOpen = false;
    int PageSize = 10;
};

inline FakeScreen fakeScreen;

/// Puts a new fake screen behind all of upCalls.
void InstallFakeScreen();

}  // namespace dravik
