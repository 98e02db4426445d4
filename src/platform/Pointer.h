#pragma once

namespace dravik {

/// Where the pointer is, in pixels of the whole screen.
struct PointerPosition {
    int X = 0;
    int Y = 0;
};

/// The pointer's position now: the system's, or the one set by OverridePointer.
PointerPosition PointerNow();

/// Makes PointerNow tell this position, for input that does not take the system's pointer along:
/// a finger's, or what no pointing device has made.
void OverridePointer(int x, int y);

/// PointerNow tells the system's position again. To be called on every event of a real mouse.
void ForgetPointerOverride();

}  // namespace dravik
