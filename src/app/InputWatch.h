#pragma once

#include <QtGlobal>

class QEvent;
class QKeyEvent;
class QObject;

namespace dravik {

/// Follows the input of the whole program as the window system delivers it: where the pointer is,
/// which keys are down, and which presses are only repeats of a held key.
class InputWatch {
 public:
    /// To be asked with every event before its receiver has it.
    /// @return true when the event has been dealt with and must not go on
    bool Takes(QObject* receiver, QEvent* event);

 private:
    bool TakesKey(QObject* window, QKeyEvent* event);
    bool IsRepeat(const QKeyEvent& press) const;

    /// The last press and release that a keyboard has told of. One key is enough: only the key
    /// that was pressed last repeats.
    struct {
        quint32 ScanCode = 0;
        quint64 Pressed = 0;  ///< time stamps
        quint64 Released = 0;
    } lastKey_;
};

}  // namespace dravik
