#include "platform/Events.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace dravik {

void PumpEvents() {
    if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
}

void WaitForEvents(double seconds) {
    if (!(seconds > 0)) return PumpEvents();
    // Rounded up, so that a caller that waits for a deadline does not spin through the last
    // fraction of a millisecond.
    constexpr double kLongestMs = 1e9;
    const std::chrono::milliseconds wait(
        static_cast<int>(std::min(std::ceil(seconds * 1000), kLongestMs)));
    if (QCoreApplication::instance() == nullptr) return std::this_thread::sleep_for(wait);

    QTimer alarm;
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    alarm.start(wait);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void PostToUserInterface(std::function<void()> work) {
    if (QCoreApplication* application = QCoreApplication::instance())
        QMetaObject::invokeMethod(application, std::move(work), Qt::QueuedConnection);
}

}  // namespace dravik
