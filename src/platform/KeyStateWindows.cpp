#include "platform/KeyState.h"
#include "platform/WindowsApi.h"

namespace dravik {

std::int16_t AsyncKeyState(int virtualKey) {
    return ::GetAsyncKeyState(virtualKey);
}

// The system keeps the state itself.
void NoteKeyEvent(int, bool) {}

}  // namespace dravik
