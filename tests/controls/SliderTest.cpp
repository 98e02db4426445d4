#include "controls/Slider.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "ControlWindow.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A slider of track 100 x 20 (lying) or 20 x 100 (standing) with a knob of 10 along the track, at
/// 10, 10 on the window, showing 0 to 90, so that a horizontal value is a position.
class SliderTest : public ::testing::Test {
 protected:
    SliderTest() {
        Build(1);
        slider.MoveTo(10, 10);
        slider.SetMax(90);
        slider.Change = [this](std::int32_t& value) { changes.push_back(value); };
        window.Show();
    }

    void Build(int direction) {
        const QSize track = direction ? QSize(100, 20) : QSize(20, 100);
        const QSize grip = direction ? QSize(10, 20) : QSize(20, 10);
        slider.SetDirection(direction);
        slider.SetPictureBack(Plain(track.width(), track.height(), Qt::black));
        slider.SetPictureProgress(Plain(track.width(), track.height(), Qt::red));
        slider.SetBar(Plain(grip.width(), grip.height(), Qt::blue));
        slider.SetBarOver(Plain(grip.width(), grip.height(), Qt::cyan));
        slider.SetBarDown(Plain(grip.width(), grip.height(), Qt::yellow));
    }

    QColor At(int x, int y) { return window.Pixel(10 + x, 10 + y); }

    std::vector<std::int32_t> changes;
    ControlWindow window;
    Slider& slider = *new Slider(&window);
};

TEST_F(SliderTest, KnobStandsWhereTheValueLies) {
    const struct {
        int Direction, Min, Max, Value, Position, Stored;
    } rows[] = {
        {1, 0, 90, 0, 0, 0},        {1, 0, 90, 90, 90, 90}, {1, 0, 90, 30, 30, 30},
        {1, 50, 230, 60, 5, 60},    {1, -90, 90, 0, 45, 0}, {1, 0, 90, 100, 100, 100},
        {1, 0, 180, 5, 2, 5},       {1, 0, 180, 7, 4, 7},  // 2.5 and 3.5: halves to even
        {0, 0, 90, 0, 90, 90},      {0, 0, 90, 90, 0, 0},   {0, 0, 180, 45, 68, 135},
        {0, -90, 90, 45, 22, -45},   // evenly about zero: the mirror image
        {0, -30, 60, 60, -30, -60},  // not evenly: the plain negative all the same
        {0, 30, 120, 30, 60, 90},    // max - value, whatever the minimum
    };
    for (const auto& row : rows) {
        Build(row.Direction);
        slider.Setmin(row.Min);
        slider.SetMax(row.Max);
        slider.SetValue(row.Value);
        const auto name =
            ::testing::PrintToString(std::vector<int>{row.Direction, row.Min, row.Max, row.Value});
        EXPECT_EQ(slider.Position(), row.Position) << name;
        EXPECT_EQ(slider.Value(), row.Stored) << name;
    }
}

TEST_F(SliderTest, SettingTheSameValueAgainKeepsAStandingKnobInPlace) {
    Build(0);
    slider.SetValue(30);
    for (int tick = 0; tick < 3; ++tick) {
        slider.SetValue(30);
        EXPECT_EQ(slider.Position(), 60);
    }
    slider.Draw(true);  // mirrors what is stored once more
    EXPECT_EQ(slider.Position(), 30);
    EXPECT_EQ(slider.Value(), 30);
}

TEST_F(SliderTest, PropertiesMayBeSetInAnyOrder) {
    Slider other(&window);
    other.SetValue(25);
    other.SetDirection(0);
    other.SetMax(100);
    other.SetPictureBack(Plain(20, 200, Qt::black));
    EXPECT_EQ(other.Position(), 150);
    EXPECT_EQ(other.size(), QSize(20, 200));
    other.SetPictureBack({});
    other.SetPictureProgress(Plain(70, 9, Qt::red));
    EXPECT_EQ(other.size(), QSize(70, 9)) << "without a background";
    other.SetPictureProgress({});
    EXPECT_TRUE(other.size().isEmpty());
}

TEST_F(SliderTest, EqualBoundsAndNumbersThatAreNoneChangeNothing) {
    slider.SetValue(30);
    for (const double number : {std::nan(""), std::numeric_limits<double>::infinity(), 1e10}) {
        slider.SetNumber(number);
        EXPECT_EQ(slider.Value(), 30) << number;
    }
    slider.SetNumber(32.5);
    EXPECT_EQ(slider.Value(), 32);
    slider.Setmin(90);
    slider.SetValue(60);
    EXPECT_EQ(slider.Position(), 32);
    window.Click(60, 15);
    EXPECT_THAT(changes, ElementsAre(60));
}

TEST_F(SliderTest, ValuesFarOutsideAreDrawnNowhere) {
    slider.SetMax(1);
    slider.SetValue(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(At(99, 10), QColor(Qt::red));
    slider.SetValue(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(At(0, 10), QColor(Qt::black));
}

TEST_F(SliderTest, FillsUpToTheKnobAndShowsTrackBehindIt) {
    slider.SetValue(40);
    EXPECT_EQ(At(39, 10), QColor(Qt::red));
    EXPECT_EQ(At(40, 10), QColor(Qt::blue));
    EXPECT_EQ(At(49, 10), QColor(Qt::blue));
    EXPECT_EQ(At(50, 10), QColor(Qt::black));
    Build(0);
    slider.SetBar({});
    slider.SetMax(100);
    slider.SetValue(25);  // a bargraph: no knob
    EXPECT_EQ(At(10, 74), QColor(Qt::black));
    EXPECT_EQ(At(10, 75), QColor(Qt::red));
    slider.SetScale(2);
    EXPECT_EQ(window.Pixel(40, 20 + 149), QColor(Qt::black));
    EXPECT_EQ(window.Pixel(40, 20 + 150), QColor(Qt::red));
}

TEST_F(SliderTest, ProgressReplacesTheTracksPixelsAtTheSameCoordinates) {
    QImage image(60, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int x = 0; x < 60; ++x) image.setPixelColor(x, 5, QColor(x, 100, 100));
    slider.SetPictureProgress(MakeSkinPicture(image, 1));
    slider.SetBar({});
    slider.SetMax(100);
    slider.SetValue(80);
    EXPECT_EQ(At(37, 5), QColor(37, 100, 100));
    EXPECT_EQ(At(37, 9), QColor(Qt::white)) << "a transparent pixel lets the page through";
    EXPECT_EQ(At(70, 5), QColor(Qt::black)) << "beyond the progress picture lies the track";
}

TEST_F(SliderTest, KnobFollowsTheDragInsideTheTrack) {
    slider.SetValue(20);
    window.Press(10 + 23, 15);  // three pixels into the knob
    EXPECT_EQ(At(25, 10), QColor(Qt::yellow));
    window.Move(10 + 53, 15);
    EXPECT_EQ(slider.Position(), 50);
    window.Move(10 + 300, 15);
    EXPECT_EQ(slider.Position(), 90);
    window.Move(0, 200);
    EXPECT_EQ(slider.Position(), 0);
    window.Move(10 + 13, 15);
    window.Release(10 + 13, 15);
    EXPECT_THAT(changes, ElementsAre(50, 90, 0, 10));
    EXPECT_FALSE(slider.HeldDown());
}

TEST_F(SliderTest, DraggingAStandingKnobGivesTheUnmirroredValue) {
    for (const int min : {0, -90}) {
        Build(0);
        slider.Setmin(min);
        slider.SetMax(90);
        slider.SetValue(45);
        const int start = slider.Position();
        changes.clear();
        window.Press(15, 10 + start + 5);
        window.Move(15, 10 + start + 5 - 9);
        window.Release(15, 10 + start + 5 - 9);
        EXPECT_EQ(slider.Position(), start - 9) << "stays where it was let go, min " << min;
        EXPECT_THAT(changes, ElementsAre(min == 0 ? 54 : 64));
    }
}

TEST_F(SliderTest, PressWithoutADragSetsTheValueOnRelease) {
    std::vector<std::string> log;
    slider.MouseDown = [&](int button, int shift, int x, int y) {
        log.push_back("down " + ::testing::PrintToString(std::tuple(button, shift, x, y)));
    };
    slider.MouseUp = [&](int button, int, int, int) {
        log.push_back("up " + std::to_string(button));
    };
    window.Press(10 + 65, 15, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_THAT(changes, IsEmpty());
    window.Release(10 + 65, 15);
    EXPECT_THAT(changes, ElementsAre(60));
    EXPECT_EQ(slider.Position(), 60);
    EXPECT_THAT(log, ElementsAre("down (1, 2, 65, 5)", "up 1"));
}

TEST_F(SliderTest, ChangeMayAlterTheValue) {
    slider.Change = [](std::int32_t& value) { value = value / 50 * 50; };
    window.Click(10 + 75, 15);
    EXPECT_EQ(slider.Value(), 50);
    EXPECT_EQ(slider.Position(), 50);
}

TEST_F(SliderTest, RefreshDoesNotPullAHeldKnobBackButDoesSoOnceItIsFree) {
    slider.SetValue(20);
    window.Press(10 + 25, 15);
    window.Move(10 + 55, 15);
    slider.SetValue(20);
    EXPECT_EQ(slider.Position(), 50);
    window.Release(10 + 55, 15);
    slider.SetValue(20);
    EXPECT_EQ(slider.Position(), 20);
}

TEST_F(SliderTest, HoverPictureGoesWithoutAMouseEvent) {
    window.Move(15, 15);
    EXPECT_EQ(At(5, 10), QColor(Qt::cyan));
    QTest::qWait(100);
    EXPECT_TRUE(slider.PointerOver());
    window.Vanish();
    EXPECT_TRUE(Until([this] { return !slider.PointerOver(); }));
    EXPECT_EQ(At(5, 10), QColor(Qt::blue));
}

TEST_F(SliderTest, BargraphLeavesThePointerToThePage) {
    slider.SetDisplayOnly(true);
    window.Click(15, 15);
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_FALSE(slider.hasFocus());
}

TEST_F(SliderTest, RepaintsOnlyWhatTheKnobCrossed) {
    slider.SetValue(40);
    PaintWatch watch(&slider);
    slider.SetValue(40);
    slider.SetMax(90);
    EXPECT_TRUE(watch.Take().isEmpty());
    slider.SetValue(43);
    EXPECT_EQ(watch.Take(), QRegion(40, 0, 13, 20));
    slider.SetValue(40);
    EXPECT_EQ(watch.Take(), QRegion(40, 0, 13, 20));
}

}  // namespace
}  // namespace dravik
