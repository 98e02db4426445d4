#pragma once

#include <string>

/// What commands ask of the main window.
namespace dravik {

void MinimizeMainWindow();

/// The normal end of the program: the shut-down steps run at once, the event loop ends as soon as
/// the handlers that are now running have returned.
void UnloadMainWindow();

/// Moves the focus to the next or the previous control in tab order.
void SendTabKey(bool backwards);

/// Moves the selection to the neighbouring button or slider: "left", "right", "up" or "down".
void MoveFocus(const std::string& direction);

/// Gives the main window the pointer that the settings ask for: the usual one, or none.
void ApplyPointerShape();

/// Shows the settings dialog, or brings it to the front.
void ShowSettingsDialog();

/// Writes pictures of the charts into the save folder: "all", or the number of one.
void TakeSnapshot(const std::string& argument);

}  // namespace dravik
