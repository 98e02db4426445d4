#pragma once

class QObject;

namespace dravik {

/// Deletes an object that may be in the middle of its own signal: from the event loop, with the
/// application at the latest, at once when there is none (any more).
void DeleteLater(QObject* object);

}  // namespace dravik
