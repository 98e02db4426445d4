#pragma once

#include <QRect>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "core/UpCalls.h"

class QKeyEvent;
class QObject;
class QWidget;

namespace dravik {

class SkinScreen;

/// The selection and what moves it. The keyboard focus is the selection: a focused button is
/// `FocusedButton`, a focused slider `FocusedSlider`. Arrow keys, the Tab key, the pointer and the
/// wheel end here.
class Selection {
 public:
    explicit Selection(SkinScreen& screen);

    /// Follows the focus of the program.
    void FocusChanged(QWidget* now);

    // Pointer.
    void PointerOver(QObject* object);
    void PointerOverButton(int index);
    void ButtonPressed(int index);
    void ButtonClicked(int index);
    /// @param delta  eighths of a degree, positive away from the user
    void WheelTurned(int delta);

    // Keys. @return whether the key means something here
    bool KeyPressed(const QKeyEvent& event);

    void KeyReleased(const QKeyEvent& event);

    /// The key or the button is no longer held, or no longer meant for what is on the screen.
    void StopRepeat();

    /// To the next or the previous element in tab order.
    void MoveInTabOrder(bool backwards);

    /// To the nearest element in a direction, or on the far side when there is none. Without a
    /// selection the first element in tab order is selected. While a list has the focus, Up and
    /// Down step through its entries instead.
    void Move(Direction direction);

 private:
    using Clock = std::chrono::steady_clock;

    void StartRepeat(std::function<void()> step);
    void StartRepeat(const std::string& command);
    void ResumeRepeat();
    /// The selection follows the pointer, but hovering never takes the keyboard from a text box.
    void SelectHovered(QWidget* control);
    bool ListKeyPressed(const QKeyEvent& event);
    std::vector<QWidget*> Candidates() const;
    QRect WindowRect(const QWidget* widget) const;

    SkinScreen& screen_;
    std::function<void()> repeated_;  ///< what is repeated while the key or button is held
    Clock::time_point nextRepeat_;
    int interrupted_ = 0;       ///< key whose release has ended its repeat; 0 = none
    bool hasRepeated_ = false;  ///< at least once since it was pressed
    int wheelRest_ = 0;         ///< part of a notch that has been turned
};

/// A slider whose function is "listview" scrolls the current list: 0 is its first entry, 100 its
/// last.
void ScrollListBySlider(int slider, int percent);

}  // namespace dravik
