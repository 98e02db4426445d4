#include "app/InputWatch.h"

#include <QCoreApplication>
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
            return TakesKey(receiver, static_cast<QKeyEvent*>(event));
        default:
            return false;
    }
}

bool InputWatch::TakesKey(QObject* window, QKeyEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if (press && !event->isAutoRepeat() && IsRepeat(*event)) {
        QKeyEvent repeat(QEvent::KeyPress, event->key(), event->modifiers(),
                         event->nativeScanCode(), event->nativeVirtualKey(),
                         event->nativeModifiers(), event->text(), true,
                         static_cast<quint16>(event->count()), event->device());
        repeat.setTimestamp(event->timestamp());
        QCoreApplication::sendEvent(window, &repeat);
        event->setAccepted(repeat.isAccepted());
        return true;
    }
    if (press || !event->isAutoRepeat()) NoteKeyEvent(event->key(), press);
    if (event->nativeScanCode() != lastKey_.ScanCode) lastKey_ = {event->nativeScanCode(), 0, 0};
    (press ? lastKey_.Pressed : lastKey_.Released) = event->timestamp();
    return false;
}

/// X11 reports a held key as releases and presses, each release with the time of the press that
/// follows, and the two are not always recognised as a repeat. A key that was down for no time at
/// all has not been held, and what does not come from a keyboard has no scan code.
bool InputWatch::IsRepeat(const QKeyEvent& press) const {
    return press.nativeScanCode() != 0 && press.nativeScanCode() == lastKey_.ScanCode &&
           press.timestamp() == lastKey_.Released && lastKey_.Pressed < lastKey_.Released;
}

}  // namespace dravik
