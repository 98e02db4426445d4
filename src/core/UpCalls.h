#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/ChartPicture.h"

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

/// Where the selection can be moved to from an element.
enum class Direction { Left, Right, Up, Down };

/// What lower rooms ask of rooms above them, which they may not include: pages, messages and the
/// main window. The room above sets its calls when it starts; until then they do nothing. Tests set
/// calls of their own in their place.
struct UpCalls {
    // The skin engine.

    /// Builds a page of the skin, or (box) a box over the current page.
    std::function<void(const std::string& name, bool box)> LoadSkinPage = [](const std::string&,
                                                                             bool) {};
    /// Opens the box of that name when none is open; otherwise closes the open one.
    std::function<void(const std::string& name)> ToggleBox = [](const std::string&) {};
    /// Hides the box container and loads the current page again.
    std::function<void()> CloseBox = [] {};
    /// True while a box is open over the page.
    std::function<bool()> BoxOpen = [] { return false; };
    /// Number of whole rows of the list that was built last on the page; 0 when there is none.
    std::function<int()> ListPageSize = [] { return 0; };
    /// Lets tiDTCScroll run while the page shows the trouble-code list and there is a code in it.
    std::function<void()> SwitchCodeTicker = [] {};
    /// Clears the samples of chart `index`.
    std::function<void(int index)> ClearChart = [](int) {};

    // The reports.

    /// Fills the list slot "diagnosis" with the reports.
    std::function<void()> ListReports = [] {};

    // The message box.

    /// Shows a message and waits for the answer, pumping events.
    ///
    /// @param text   the message; may end in ":" and a function text, which is not shown but run
    ///               when the answer is yes (split at the last ":")
    /// @param style  16 critical, 32 question (2 is taken as 32), 64 information; any other style
    ///               answers 7 at once
    /// @return 6 yes, 7 no (also when the box closes by itself or the program ends), 1 ok
    std::function<int(const std::string& text, int style, const std::string& title)> ShowMessage =
        [](const std::string&, int, const std::string&) { return static_cast<int>(kAnswerNo); };
    /// The same for messages whose text may hold a ":" of its own: nothing is split off or run.
    std::function<int(const std::string& text, int style, const std::string& title)>
        ShowPlainMessage =
            [](const std::string&, int, const std::string&) { return static_cast<int>(kAnswerNo); };
    /// Shows a message without waiting: kind 0 warning, 1 information, 2 question.
    std::function<void(const std::string& message, int kind)> ShowPopup = [](const std::string&,
                                                                             int) {};

    // The main window.

    std::function<void()> MinimizeMainWindow = [] {};
    /// Starts the virtual vehicle, whose device is from then on the one to connect to.
    /// @return an empty text, or the reason why it does not start
    std::function<std::string()> StartDemo = [] { return std::string{}; };
    /// The normal end of the program: the shut-down steps run at once, the event loop ends as soon
    /// as the handlers that are now running have returned.
    std::function<void()> UnloadMainWindow = [] {};
    /// Moves the focus to the next or the previous control in tab order.
    std::function<void(bool backwards)> SendTabKey = [](bool) {};
    /// Moves the selection to the neighbouring button or slider.
    std::function<void(Direction direction)> MoveFocus = [](Direction) {};
    /// Gives the main window the pointer that the settings ask for: the usual one, or none.
    std::function<void()> ApplyPointerShape = [] {};
    /// Shows the settings dialog, or brings it to the front.
    std::function<void()> ShowSettingsDialog = [] {};
    /// Pictures of the charts of the page that have something to show.
    std::function<std::vector<ChartPicture>()> ChartPictures = [] {
        return std::vector<ChartPicture>();
    };
    /// Writes pictures of these charts into the save folder.
    std::function<void(const std::vector<int>& charts)> TakeSnapshot = [](const auto&) {};
};

inline UpCalls upCalls;

}  // namespace dravik
