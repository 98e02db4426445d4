#include "support/FakeScreen.h"

#include "core/MainWindow.h"
#include "skin/PageControl.h"
#include "skin/message/ShowMessage.h"

namespace dravik {

namespace {

void Note(const std::string& call) {
    fakeScreen.Calls.push_back(call);
}

}  // namespace

void LoadSkinPage(const std::string& name, bool box) {
    Note((box ? "box " : "page ") + name);
    if (fakeScreen.WhileLoading) fakeScreen.WhileLoading();
}

void ToggleBox(const std::string& name) {
    Note("toggle " + name);
}

void CloseBox() {
    Note("closebox");
}

bool BoxOpen() {
    return fakeScreen.BoxIsOpen;
}

int ListPageSize() {
    return fakeScreen.PageSize;
}

void SwitchCodeTicker() {}

void ClearChart(int index) {
    Note("clear " + std::to_string(index));
}

std::string ReadSkinValue(const std::string& section, const std::string& key) {
    for (std::size_t i = 0; i < fakeScreen.Menus.size(); ++i) {
        if (section == "General" && key == "Menu" + std::to_string(i)) return fakeScreen.Menus[i];
    }
    return {};
}

int ShowMessage(const std::string& text, int style, const std::string& title) {
    Note("message " + std::to_string(style) + " " + title + ": " + text);
    return fakeScreen.Answer ? fakeScreen.Answer() : kAnswerNo;
}

int ShowPlainMessage(const std::string& text, int style, const std::string& title) {
    return ShowMessage(text, style, title);
}

void ShowPopup(const std::string& message, int kind) {
    Note("popup " + std::to_string(kind) + " " + message);
}

void MinimizeMainWindow() {
    Note("minimize");
}

void UnloadMainWindow() {
    Note("unload");
}

void SendTabKey(bool backwards) {
    Note(backwards ? "tab back" : "tab");
}

void MoveFocus(const std::string& direction) {
    Note("focus " + direction);
}

void ShowSettingsDialog() {
    Note("settings");
}

void TakeSnapshot(const std::string& argument) {
    Note("snapshot " + argument);
}

}  // namespace dravik
