#pragma once

class QEvent;
class QObject;

namespace dravik {

/// Follows the input of the whole program as the window system delivers it: where the pointer is,
/// and which keys are down.
class InputWatch {
 public:
    /// To be asked with every event before its receiver has it.
    /// @return true when the event has been dealt with and must not go on
    bool Takes(QObject* receiver, QEvent* event);
};

}  // namespace dravik
