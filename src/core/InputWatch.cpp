#include "core/InputWatch.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/KeyState.h"
#include "platform/Pointer.h"

namespace dravik {

namespace {

/// A finger does not take the system's pointer along, so its place is noted; a mouse makes the
/// system's pointer count again, also after a request has put it somewhere.
void FollowPointer(const QMouseEvent& event) {
    const QInputDevice* device = event.device();
    if (device != nullptr && device->type() == QInputDevice::DeviceType::TouchScreen) {
        const QPoint at = event.globalPosition().toPoint();
        OverridePointer(at.x(), at.y());
    } else {
        ForgetPointerOverride();
    }
}

void NoteKey(const QKeyEvent& event) {
    if (!event.isAutoRepeat()) NoteKeyEvent(event.key(), event.type() == QEvent::KeyPress);
}

}  // namespace

bool InputWatch::Takes(QObject* receiver, QEvent* event) {
    // What a window gets comes from the window system; widgets get copies of it.
    if (!receiver->isWindowType()) return false;
    switch (event->type()) {
        case QEvent::MouseMove:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
            if (event->spontaneous()) FollowPointer(*static_cast<const QMouseEvent*>(event));
            return false;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            NoteKey(*static_cast<const QKeyEvent*>(event));
            return false;
        default:
            return false;
    }
}

}  // namespace dravik
