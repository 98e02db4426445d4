#pragma once

#include <cstdint>

namespace dravik {

/// The state of a key as a signed 16-bit number: negative (the top bit set) while it is down, the
/// lowest bit set when it was pressed since the last query.
///
/// @param virtualKey  a Windows virtual key number (13 Return, 27 Escape, 37..40 the arrow keys,
///                    48..57 digits, 65..90 letters, 112..123 F1 to F12, ...); others give 0
std::int16_t AsyncKeyState(int virtualKey);

/// Tells the key state of the program's own key events, where the system has no such query.
/// @param qtKey  the key as Qt numbers it (Qt::Key)
void NoteKeyEvent(int qtKey, bool down);

}  // namespace dravik
