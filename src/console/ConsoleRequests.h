#pragma once

#include <string>
#include <string_view>

class QPixmap;
class QWidget;

/// What the console's requests do. Each returns its answer without the line end of its last line.
namespace dravik {

/// Carries out every request but "wait" and "quit". An unknown or malformed one gives "error: "
/// and the reason.
std::string AnswerRequest(std::string_view request);

/// Texts on one line: "\n", "\r", "\t" and "\\" for the characters that would break it.
std::string OneLine(const std::string& text);

// Reports, as lines closed by ".".
std::string ReportState();
std::string ReportElements();
std::string ReportList();

// The window on top gets the input and is what "elements" and "grab" show.

/// The main window.
QWidget* PanelWindow();
/// A dialog that lies over the main window, or the main window.
QWidget* WindowOnTop();
/// The named widgets of a dialog, as ReportElements lists the elements of a page; positions are
/// those in the dialog. Besides them the rows in view of its lists and of an open drop-down list.
std::string ReportWindow(QWidget* window);
/// A window's picture, with a drop-down list that is open over it.
QPixmap GrabWindow(QWidget* window);

// Synthetic input. Each returns "ok" after the event was handled, or an error.
std::string InputClick(std::string_view arguments);
std::string InputPress(std::string_view arguments);
std::string InputMove(std::string_view arguments);
std::string InputRelease(std::string_view arguments);
std::string InputWheel(std::string_view arguments);
std::string InputKey(std::string_view arguments);

}  // namespace dravik
