#include "platform/DeleteLater.h"

#include <QCoreApplication>
#include <QObject>

namespace dravik {

void DeleteLater(QObject* object) {
    object->disconnect();
    if (QCoreApplication* application = QCoreApplication::instance()) {
        object->setParent(application);
        object->deleteLater();
    } else {
        delete object;
    }
}

}  // namespace dravik
