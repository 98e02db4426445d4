#pragma once

#include <QCoreApplication>
#include <QObject>

namespace dravik {

/// Deletes an object that may be in the middle of its own signal: from the event loop, with the
/// application at the latest, at once when there is none (any more).
inline void DeleteLater(QObject* object) {
    object->disconnect();
    if (QCoreApplication* application = QCoreApplication::instance()) {
        object->setParent(application);
        object->deleteLater();
    } else {
        delete object;
    }
}

}  // namespace dravik
