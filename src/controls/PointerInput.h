#pragma once

#include <QMouseEvent>
#include <QPoint>
#include <QWidget>

#include "platform/Pointer.h"

namespace dravik {

/// The button of a mouse event as the skin's events number it: 1 left, 2 right, 4 middle, else 0.
inline int ButtonNumber(const QMouseEvent& event) {
    switch (event.button()) {
        case Qt::LeftButton:
            return 1;
        case Qt::RightButton:
            return 2;
        case Qt::MiddleButton:
            return 4;
        default:
            return 0;
    }
}

/// The keys held during a mouse event: 1 shift, 2 control, 4 alt, added up.
inline int ShiftNumber(const QMouseEvent& event) {
    const Qt::KeyboardModifiers keys = event.modifiers();
    return (keys.testFlag(Qt::ShiftModifier) ? 1 : 0) +
           (keys.testFlag(Qt::ControlModifier) ? 2 : 0) + (keys.testFlag(Qt::AltModifier) ? 4 : 0);
}

/// The pointer's position on the screen.
inline QPoint ScreenPointer() {
    const PointerPosition position = PointerNow();
    return QPoint(position.X, position.Y);
}

}  // namespace dravik
