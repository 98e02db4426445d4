#include "platform/KeyState.h"

#include <gtest/gtest.h>

#include <QtCore/qnamespace.h>

namespace dravik {
namespace {

constexpr std::int16_t kDown = -0x8000;

TEST(KeyState, TellsDownAndPressedSinceTheLastQuery) {
    const struct {
        int QtKey;
        int VirtualKey;
    } rows[] = {
        {Qt::Key_Return, 13}, {Qt::Key_Enter, 13}, {Qt::Key_Escape, 27},    {Qt::Key_Left, 37},
        {Qt::Key_Down, 40},   {Qt::Key_0, 48},     {Qt::Key_Z, 90},         {Qt::Key_F1, 112},
        {Qt::Key_F12, 123},   {Qt::Key_Shift, 16}, {Qt::Key_VolumeUp, 175},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), 0) << row.VirtualKey;
        NoteKeyEvent(row.QtKey, true);
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), kDown + 1) << row.VirtualKey;
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), kDown) << row.VirtualKey;
        NoteKeyEvent(row.QtKey, false);
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), 0) << row.VirtualKey;
        NoteKeyEvent(row.QtKey, true);
        NoteKeyEvent(row.QtKey, false);
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), 1) << row.VirtualKey << " tapped in between";
        EXPECT_EQ(AsyncKeyState(row.VirtualKey), 0) << row.VirtualKey;
    }
}

TEST(KeyState, NumbersWithoutAKeyAreUp) {
    NoteKeyEvent(Qt::Key_unknown, true);
    for (const int number : {-1, 0, 256, 1'000'000}) EXPECT_EQ(AsyncKeyState(number), 0) << number;
}

}  // namespace
}  // namespace dravik
