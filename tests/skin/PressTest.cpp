#include <QApplication>
#include <QKeyEvent>
#include <QPointingDevice>

#include "SkinFixture.h"
#include "lists/basFunctions.h"
#include "platform/KeyState.h"

namespace dravik {
namespace {

constexpr const char* kListAndSlider =
    "Slider0Function=listview\nSlider0Background=track.png\nSlider0Bar=knob.png\nSlider0Y=200\n"
    "Slider0Direction=1\nList0Function=media\nList0X=700\nList0Width=100\nList0Height=200\n";

/// A page of buttons, a slider, a list and a text box. Another page and a box have other commands
/// at the same places, and the message's "ok" lies where the page has the button that opens it.
class PressTest : public SkinTest {
 protected:
    void SetUp() override {
        Picture("over.png", 64, 64, Qt::green);
        Picture("down.png", 64, 64, Qt::red);
        Picture("track.png", 100, 20, Qt::black);
        Picture("knob.png", 10, 20, Qt::white);
        Picture("box.png", 400, 200, Qt::darkGray);
        Start("[mainmenu]\n" +
              ButtonKeys({{"sensoron_a", 0, 0}, {"sensoron_b", 200, 0}, {"showinfo_x", 210, 260}}) +
              "Button0Over=over.png\nButton0Down=down.png\nTextbox0Function=x\nTextbox0X=500\n" +
              kListAndSlider + "[other]\n" +
              ButtonKeys({{"sensoron_c", 200, 0}, {"sensoron_d", 0, 0}}) + kListAndSlider +
              "[bare]\n[box]\n" + ButtonKeys({{"sensoron_e", 0, 0}, {"sensoron_f", 200, 0}}) +
              "[info]\nBackground=box.png\nButton0Function=ok\nButton0X=10\nButton0Y=120\n"
              "Button0Up=b64.png\n");
        ASSERT_TRUE(errors.empty());
        Finish();
        for (int i = 0; i < 40; ++i) AddListEntry(Media(), {"x", "", ""});
        basGlobal.LastCommand.clear();
    }
    static ListSlot& Media() { return *FindList(ListSlotByName("media")); }
    frWarning& Dialog() const { return window->Warning(); }

    /// A key as the system's keyboard reports it.
    void KeyAt(std::uint64_t time, QEvent::Type type, Qt::Key key) const {
        constexpr quint32 kScanCode = 36;
        QKeyEvent event(type, key, {}, kScanCode, 0, 0);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    }
    /// A repeat of a held key that nobody has recognised as one.
    void PairAt(std::uint64_t time, Qt::Key key) const {
        KeyAt(time, QEvent::KeyRelease, key);
        KeyAt(time, QEvent::KeyPress, key);
    }
};

TEST_F(PressTest, FingerHoldsThePressedPictureAndSlidesOffAndBack) {
    static QPointingDevice* const finger = QTest::createTouchDevice();
    ForgetPointerOverride();
    const auto touch = [&] { return QTest::touchEvent(window->windowHandle(), finger); };
    const auto slide = [&](int x, int y) {
        for (int step = 0; step < 2; ++step) touch().move(0, QPoint(x + step, y));
    };
    const ButtonEx& button = Button(1);
    touch().press(0, QPoint(220, 20));
    slide(222, 20);
    QTest::qWait(400);  // the watch over the pointer has looked several times
    EXPECT_EQ(button.State(), ButtonState::Down);
    slide(220, 150);
    EXPECT_TRUE(Until([&] { return button.State() == ButtonState::Up; }));
    slide(230, 20);
    EXPECT_EQ(button.State(), ButtonState::Down);
    touch().release(0, QPoint(231, 20));
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_b");
    EXPECT_EQ(button.State(), ButtonState::Over);
    QTest::mouseMove(window->windowHandle(), QPoint(600, 400));
    EXPECT_TRUE(Until([&] { return button.State() == ButtonState::Up; })) << "a mouse took over";
}

TEST_F(PressTest, IsForgottenWhenSomethingElseComesBeneathIt) {
    const struct {
        const char* Name;
        std::function<void()> Come;
    } rows[] = {{"page", [] { Load("other"); }},
                {"box", [] { Load("box", true); }},
                {"message", [] { ShowPopup("look", 1); }},
                {"page and message",
                 [] {
                     Load("bare");
                     ShowPopup("look", 1);
                 }},
                {"settings", [this] { window->ShowSettings(); }}};
    // Two buttons, the slider, the list and the bare background.
    for (const QPoint from : {QPoint(10, 10), {210, 10}, {20, 210}, {710, 10}, {600, 300}}) {
        for (const QPoint to : {from, QPoint(210, 10), QPoint(400, 240)}) {
            for (const auto& row : rows) {
                SCOPED_TRACE(testing::Message() << row.Name << ' ' << from.x() << ' ' << to.x());
                Load("mainmenu");
                SelectListEntry(Media(), 7);
                Press(from.x(), from.y());
                basGlobal.tiKeyrepeat.SetEnabled(true);
                row.Come();
                basGlobal.LastCommand.clear();
                EXPECT_FALSE(basGlobal.tiKeyrepeat.Enabled());
                const bool message = Dialog().IsOpen();
                Release(to.x(), to.y());
                EXPECT_EQ(basGlobal.LastCommand, "");
                EXPECT_EQ(Media().Selected, 7);
                EXPECT_EQ(Dialog().IsOpen(), message) << "a release alone answers nothing";
                EXPECT_NE(Button(0).State(), ButtonState::Down);
                if (message) Dialog().Answer(kAnswerNo);
                for (QWidget* other : QApplication::topLevelWidgets()) {
                    if (other != window.get()) other->close();
                }
            }
        }
    }
    Load("mainmenu");
    Click(10, 10);
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_a") << "the next press counts";
}

TEST_F(PressTest, MessageIgnoresTheRestOfADoubleClickThatOpenedIt) {
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(220, 270));
    EXPECT_TRUE(Dialog().IsOpen());
    ASSERT_TRUE(Dialog().ShownButton("ok")->geometry().contains(220, 270));
    Click(220, 270);
    EXPECT_FALSE(Dialog().IsOpen());
}

TEST_F(PressTest, HoveringLeavesTheKeyboardToATextBox) {
    const QWidget* field = &Textbox(0);
    ASSERT_EQ(window->focusWidget(), field);
    for (const QPoint at : {QPoint(10, 10), {12, 12}, {20, 210}, {22, 210}}) Move(at.x(), at.y());
    EXPECT_EQ(window->focusWidget(), field);
    Click(10, 10);
    EXPECT_EQ(window->focusWidget(), &Button(0));
}

TEST_F(PressTest, FreshPairsOfAHeldKeyAreItsRepeats) {
    const auto take = [] { return std::exchange(basGlobal.LastCommand, ""); };
    Button(0).setFocus();
    KeyAt(1000, QEvent::KeyPress, Qt::Key_Return);
    EXPECT_EQ(take(), "sensoron_a");
    AsyncKeyState(13);
    for (const std::uint64_t time : {1660u, 1700u, 1740u}) PairAt(time, Qt::Key_Return);
    EXPECT_EQ(take(), "");
#ifndef _WIN32  // there the system knows that nobody holds it
    EXPECT_LT(AsyncKeyState(13), 0) << "still down";
#endif
    ShowPopup("look", 1);
    PairAt(1780, Qt::Key_Return);
    EXPECT_TRUE(Dialog().IsOpen()) << "what opened a message does not answer it";
    KeyAt(1790, QEvent::KeyRelease, Qt::Key_Return);
    KeyAt(1900, QEvent::KeyPress, Qt::Key_Return);
    EXPECT_FALSE(Dialog().IsOpen());
    PairAt(1900, Qt::Key_Return);
    EXPECT_EQ(take(), "sensoron_a") << "never held: two taps that a program has sent";
    KeyAt(1950, QEvent::KeyRelease, Qt::Key_Return);

    List(0).setFocus();
    KeyAt(2000, QEvent::KeyPress, Qt::Key_Down);
    EXPECT_EQ(Media().Selected, 2);
    KeyAt(2660, QEvent::KeyRelease, Qt::Key_Down);
    EXPECT_FALSE(basGlobal.tiKeyrepeat.Enabled());
    KeyAt(2660, QEvent::KeyPress, Qt::Key_Down);
    EXPECT_TRUE(basGlobal.tiKeyrepeat.Enabled()) << "the timer goes on where it was";
    EXPECT_EQ(Media().Selected, 2);
    ShowPopup("look", 1);
    PairAt(2700, Qt::Key_Down);
    EXPECT_FALSE(basGlobal.tiKeyrepeat.Enabled()) << "beneath a message";
}

}  // namespace
}  // namespace dravik
