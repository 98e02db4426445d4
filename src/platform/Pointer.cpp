#include "platform/Pointer.h"

#include <QCursor>
#include <optional>

namespace dravik {

namespace {
std::optional<PointerPosition> override;
}  // namespace

PointerPosition PointerNow() {
    if (override) return *override;
    const QPoint position = QCursor::pos();
    return {position.x(), position.y()};
}

void OverridePointer(int x, int y) {
    override = PointerPosition{x, y};
}

void ForgetPointerOverride() {
    override.reset();
}

}  // namespace dravik
