#include "controls/ButtonEx.h"

#include <gmock/gmock.h>

#include "ControlWindow.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A button with all three pictures at 10, 10 that notes its events; 5, 5 lies outside.
class ButtonExTest : public ::testing::Test {
 protected:
    ButtonExTest() {
        button.MoveTo(10, 10);
        button.SetSkinUp(up);
        button.SetSkinOver(over);
        button.SetSkinDown(down);
        const auto note = [this](const std::string& name) {
            return [this, name](int b, int shift, int x, int y) {
                log.push_back(name + " " + std::to_string(b) + " " + std::to_string(shift) + " " +
                              std::to_string(x) + " " + std::to_string(y));
            };
        };
        button.Click = [this] { log.push_back("Click"); };
        button.MouseDown = note("Down");
        button.MouseMove = note("Move");
        button.MouseUp = note("Up");
        button.MouseEnter = [this] { log.push_back("Enter"); };
        button.MouseExit = [this] { log.push_back("Exit"); };
        window.Show();
    }

    /// The events but MouseEnter, which every new place of the pointer brings along.
    std::vector<std::string> TakePresses() {
        std::erase(log, "Enter");
        return TakeLog();
    }
    std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

    const SkinPicture up = Plain(100, 50, Qt::darkBlue);
    const SkinPicture over = Plain(100, 50, Qt::darkGreen);
    const SkinPicture down = Plain(100, 50, Qt::darkRed);
    std::vector<std::string> log;
    ControlWindow window;
    ButtonEx& button = *new ButtonEx(&window);
};

TEST_F(ButtonExTest, OnlyTheLeftButtonReleasedInsideClicks) {
    window.Press(12, 14);
    EXPECT_EQ(button.ShownPicture(), down);
    window.Release(20, 20);
    EXPECT_EQ(button.ShownPicture(), over);
    EXPECT_THAT(TakePresses(), ElementsAre("Down 1 0 30 60", "Up 1 0 150 150", "Click"));
    window.Press(12, 12, Qt::RightButton, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(button.State(), ButtonState::Down);
    window.Release(12, 12, Qt::RightButton);
    EXPECT_THAT(TakePresses(), ElementsAre("Down 2 5 30 30", "Up 2 0 30 30"));
    window.Press(50, 12);
    window.Release(5, 5);
    EXPECT_EQ(button.ShownPicture(), up);
    EXPECT_THAT(TakePresses(), ElementsAre("Down 1 0 600 30", "Up 1 0 -75 -75"));
}

TEST_F(ButtonExTest, DoubleClickRaisesClickThenABarePress) {
    window.DoubleClick(12, 12);
    EXPECT_THAT(TakePresses(), ElementsAre("Down 1 0 30 30", "Up 1 0 30 30", "Click", "Click",
                                           "Down 1 0 0 0", "Up 1 0 30 30"));
}

TEST_F(ButtonExTest, FirstMovementOnlyStartsTheWatchTheSecondShowsOver) {
    window.Move(20, 20);
    EXPECT_EQ(button.State(), ButtonState::Up);
    window.Move(21, 20);
    EXPECT_EQ(button.State(), ButtonState::Over);
    EXPECT_THAT(TakeLog(), ElementsAre("Enter", "Enter"));
}

TEST_F(ButtonExTest, LeavingIsNoticedWithoutAnEvent) {
    window.Move(20, 20);
    window.Move(21, 20);
    TakeLog();
    QTest::qWait(150);  // the watch leaves the button alone while the pointer is inside
    EXPECT_EQ(button.State(), ButtonState::Over);
    window.Vanish();
    EXPECT_TRUE(Until([this] { return button.State() == ButtonState::Up; }));
    EXPECT_THAT(TakeLog(), ElementsAre("Exit"));
}

TEST_F(ButtonExTest, DragWithTheLeftButtonShowsDown) {
    window.Move(20, 20);
    window.Move(21, 20);
    window.Press(21, 20);
    window.Vanish();
    ASSERT_TRUE(Until([this] { return button.State() == ButtonState::Up; }));
    window.Move(22, 20);  // arrives again
    EXPECT_EQ(button.State(), ButtonState::Up);
    window.Move(23, 20);
    EXPECT_EQ(button.State(), ButtonState::Down);
}

TEST_F(ButtonExTest, NewUpPictureResetsAndSwitchesHoveringOff) {
    window.Move(20, 20);
    window.Move(21, 20);
    std::string changed;
    button.PropertyChanged = [&](const std::string& name) { changed = name; };
    button.SetSkinUp(up);
    EXPECT_EQ(changed, "SkinUp");
    EXPECT_EQ(button.ShownPicture(), up);
    TakeLog();
    window.Move(22, 20);
    window.Move(23, 20);
    EXPECT_EQ(button.State(), ButtonState::Up);
    EXPECT_THAT(TakeLog(), IsEmpty());
    window.Press(23, 20);
    EXPECT_EQ(button.ShownPicture(), down);
    window.Release(23, 20);

    button.SetSkinOver(over);
    window.Move(24, 20);
    EXPECT_THAT(log, ::testing::Contains("Enter"));
}

TEST_F(ButtonExTest, WithOnlyAnUpPictureThePictureInPlaceStays) {
    button.SetSkinDown({});
    button.SetSkinOver({});
    window.Move(20, 20);
    window.Move(21, 20);
    EXPECT_EQ(button.ShownPicture(), up);
    window.Press(21, 20);
    EXPECT_EQ(button.State(), ButtonState::Down);
    EXPECT_EQ(button.ShownPicture(), up);
}

TEST_F(ButtonExTest, KeyboardFocusCountsAsArrivalAndKeysPassOn) {
    button.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(button.State(), ButtonState::Over);
    QTest::keyClick(window.windowHandle(), Qt::Key_Return);
    QTest::keyClick(window.windowHandle(), Qt::Key_Space);
    EXPECT_EQ(window.keys, 2);
    window.Vanish();
    button.clearFocus();
    EXPECT_EQ(button.State(), ButtonState::Up);
    EXPECT_THAT(TakeLog(), ElementsAre("Enter", "Exit"));
}

TEST_F(ButtonExTest, SizeFollowsThePictureByTheSkinsOwnFactor) {
    EXPECT_DOUBLE_EQ(ButtonTwips(1760), 1000);
    EXPECT_DOUBLE_EQ(ButtonTwips(880), 500);
    for (const auto& [pixels, extent] : {std::pair{100, 100}, {226, 226}, {228, 229}, {800, 802}})
        EXPECT_EQ(ButtonExtent(pixels), extent) << pixels;
    button.SetSkinUp(Plain(800, 228, Qt::red));
    EXPECT_EQ(button.geometry(), QRect(10, 10, 802, 229));
    button.SetScale(1.5);
    EXPECT_EQ(button.geometry(), QRect(15, 15, 1203, 344));
    EXPECT_EQ(button.ShownPicture().Pixmap().size(), QSize(1200, 342));
    window.Press(15 + 30, 15 + 24);
    EXPECT_THAT(TakePresses(), ElementsAre("Down 1 0 300 240")) << "twips of the design";
}

TEST_F(ButtonExTest, DrawsImageAndCaptionInsideAndBlendsWithThePage) {
    QImage clear(100, 50, QImage::Format_ARGB32_Premultiplied);
    clear.fill(Qt::transparent);
    button.SetSkinUp(MakeSkinPicture(clear, 1));
    button.SetImage(Plain(10, 10, Qt::green));
    button.SetImageX(20);
    button.SetImageY(30);
    button.SetLabelX(40);
    button.SetLabelWidth(30);
    button.SetLabelHeight(20);
    button.SetLabelFontSize(30);
    button.SetLabelForecolor("&HFF");
    const std::string blocks = "\xE2\x96\x88\xE2\x96\x88\xE2\x96\x88\xE2\x96\x88";
    button.SetLabelCaption(blocks);
    for (const double scale : {1.0, 2.0}) {
        button.SetScale(scale);
        const QImage shown = window.grab().toImage();
        const auto at = [&](int x, int y) {
            return shown.pixelColor(int((10 + x) * scale), int((10 + y) * scale));
        };
        EXPECT_EQ(at(25, 35), QColor(Qt::green)) << scale;
        EXPECT_EQ(at(31, 35), QColor(Qt::white)) << scale;
        EXPECT_EQ(at(50, 17), QColor(Qt::red)) << scale;
        EXPECT_EQ(at(39, 17), QColor(Qt::white)) << "left of the caption";
        EXPECT_EQ(at(71, 17), QColor(Qt::white)) << "clipped at the caption's width";
        EXPECT_EQ(at(50, 21), QColor(Qt::white)) << "clipped at the caption's height";
    }
    button.SetLabelWidth(0);
    button.SetLabelHeight(0);
    EXPECT_EQ(window.Pixel(2 * (10 + 95), 2 * (10 + 25)), QColor(Qt::red)) << "to the edges";
    button.SetImageVisible(false);
    EXPECT_EQ(window.Pixel(2 * (10 + 25), 2 * (10 + 35)), QColor(Qt::white));
}

TEST_F(ButtonExTest, RepaintsOnlyWhatChanged) {
    button.SetImage(Plain(10, 10, Qt::green));
    button.SetImageX(20);
    button.SetLabelX(40);
    button.SetLabelY(10);
    button.SetLabelWidth(30);
    button.SetLabelHeight(20);
    button.SetLabelCaption("a");
    PaintWatch watch(&button);
    button.SetImageVisible(false);
    EXPECT_EQ(watch.Take(), QRegion(20, 0, 10, 10));
    button.SetLabelCaption("b");
    EXPECT_EQ(watch.Take(), QRegion(40, 10, 30, 20));
    button.SetImageVisible(false);
    button.SetLabelCaption("b");
    button.SetLabelAlignment(0);
    button.SetSkinUp(up);
    button.SetSkinDown(down);
    EXPECT_TRUE(watch.Take().isEmpty());
}

TEST(SkinTextTest, ColoursAreReadFromTheLowByteUp) {
    EXPECT_EQ(SkinColor(0x030201), QColor(1, 2, 3));
}

TEST(SkinTextTest, FontsAreSizedAt96DotsPerInchTimesTheScale) {
    EXPECT_EQ(SkinFont({"", 12}, 1).pixelSize(), 16);
    EXPECT_EQ(SkinFont({"", 12}, 1.5).pixelSize(), 24);
    EXPECT_EQ(SkinFont({"", 0.1}, 0.1).pixelSize(), 1);
    EXPECT_TRUE(SkinFont({"", 12, 0, 0, true, true}, 1).bold());
    EXPECT_FALSE(SkinFont({"", 12, 0, 0, false, true}, 1).bold());
}

}  // namespace
}  // namespace dravik
