#include <QtCore/qnamespace.h>

#include <array>
#include <cstddef>

#include "platform/At.h"
#include "platform/KeyState.h"

namespace dravik {
namespace {

struct KeyNumber {
    int QtKey;
    int VirtualKey;
};

// Letters and digits have the same number on both sides and F1 to F24 follow one another; these
// are the others.
constexpr KeyNumber kKeyNumbers[] = {
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Help, 47},
    {Qt::Key_Meta, 91},
    {Qt::Key_Menu, 93},
    {Qt::Key_Sleep, 95},
    {Qt::Key_Asterisk, 106},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Back, 166},
    {Qt::Key_Forward, 167},
    {Qt::Key_Refresh, 168},
    {Qt::Key_VolumeMute, 173},
    {Qt::Key_VolumeDown, 174},
    {Qt::Key_VolumeUp, 175},
    {Qt::Key_MediaNext, 176},
    {Qt::Key_MediaPrevious, 177},
    {Qt::Key_MediaStop, 178},
    {Qt::Key_MediaPlay, 179},
    {Qt::Key_MediaTogglePlayPause, 179},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_Apostrophe, 222},
};

constexpr int kVirtualF1 = 112;
constexpr int kVirtualKeyLimit = 256;

struct KeyBits {
    bool Down = false;
    bool PressedSinceQuery = false;
};
std::array<KeyBits, kVirtualKeyLimit> keys;

/// The virtual key number of a Qt key; 0 when it has none.
int VirtualKeyOf(int qtKey) {
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) return qtKey;
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return kVirtualF1 + qtKey - Qt::Key_F1;
    for (const KeyNumber& key : kKeyNumbers) {
        if (key.QtKey == qtKey) return key.VirtualKey;
    }
    return 0;
}

}  // namespace

std::int16_t AsyncKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey >= kVirtualKeyLimit) return 0;
    KeyBits& key = At(keys, virtualKey);
    const int state = (key.Down ? -0x8000 : 0) + (key.PressedSinceQuery ? 1 : 0);
    key.PressedSinceQuery = false;
    return static_cast<std::int16_t>(state);
}

void NoteKeyEvent(int qtKey, bool down) {
    const int virtualKey = VirtualKeyOf(qtKey);
    if (virtualKey == 0) return;
    KeyBits& key = At(keys, virtualKey);
    key.Down = down;
    if (down) key.PressedSinceQuery = true;
}

}  // namespace dravik
