#include "support/FakeScreen.h"

#include "core/UpCalls.h"

namespace dravik {

namespace {

void Note(const std::string& call) {
    fakeScreen.Calls.push_back(call);
}

int Answer(const std::string& text, int style, const std::string& title) {
    Note("message " + std::to_string(style) + " " + title + ": " + text);
    return fakeScreen.Answer ? fakeScreen.Answer() : kAnswerNo;
}

}  // namespace

void InstallFakeScreen() {
    fakeScreen = FakeScreen{};
    upCalls.LoadSkinPage = [](const std::string& name, bool box) {
        Note((box ? "box " : "page ") + name);
        if (fakeScreen.WhileLoading) fakeScreen.WhileLoading();
    };
    upCalls.ToggleBox = [](const std::string& name) { Note("toggle " + name); };
    upCalls.CloseBox = [] { Note("closebox"); };
    upCalls.BoxOpen = [] { return fakeScreen.BoxIsOpen; };
    upCalls.ListPageSize = [] { return fakeScreen.PageSize; };
    upCalls.SwitchCodeTicker = [] {};
    upCalls.ClearChart = [](int index) { Note("clear " + std::to_string(index)); };
    upCalls.ShowMessage = upCalls.ShowPlainMessage = Answer;
    upCalls.ShowPopup = [](const std::string& message, int kind) {
        Note("popup " + std::to_string(kind) + " " + message);
    };
    upCalls.MinimizeMainWindow = [] { Note("minimize"); };
    upCalls.UnloadMainWindow = [] { Note("unload"); };
    upCalls.SendTabKey = [](bool backwards) { Note(backwards ? "tab back" : "tab"); };
    upCalls.MoveFocus = [](Direction direction) {
        constexpr const char* kNames[] = {"left", "right", "up", "down"};
        Note(std::string("focus ") + kNames[static_cast<int>(direction)]);
    };
    upCalls.ShowSettingsDialog = [] { Note("settings"); };
    upCalls.TakeSnapshot = [](const std::vector<int>& charts) {
        std::string call = "snapshot";
        for (const int chart : charts) call += " " + std::to_string(chart);
        Note(call);
    };
}

}  // namespace dravik
