#include <QWheelEvent>
#include <map>
#include <set>

#include "SkinFixture.h"
#include "lists/basFunctions.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

class SelectionTest : public SkinTest {
 protected:
    void Wheel(int x, int y, int delta) const {
        QWheelEvent event(QPointF(x, y), QPointF(window->mapToGlobal(QPoint(x, y))), QPoint(),
                          QPoint(0, delta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    }
    /// Keys pressed one after the other; the selected button after each, -1 for none.
    std::vector<int> Walk(const std::vector<Qt::Key>& keys) const {
        std::vector<int> path;
        for (const Qt::Key key : keys) {
            Key(key);
            path.push_back(static_cast<std::int16_t>(basGlobal.FocusedButton));
        }
        return path;
    }
    void FillMedia(int entries) const {
        for (int i = 0; i < entries; ++i) AddListEntry(Media(), {"x", "", ""});
    }
    static ListSlot& Media() { return *FindList(ListSlotByName("media")); }
};

TEST_F(SelectionTest, TabGoesByTabindexAndStaysInTheBox) {
    Start("[mainmenu]\nCommonObjects0=shared\n" + ButtonKeys({{"a", 0, 0}, {"b", 100, 0}}) +
          "Button0Tabindex=30\nButton1Tabindex=10\n[shared]\n" + ButtonKeys({{"c", 200, 0}}) +
          "Button0Tabindex=20\n[box]\n" + ButtonKeys({{"d", 0, 200}, {"e", 100, 200}}) +
          "Button0Tabindex=1\nButton1Tabindex=0\n");
    Finish();
    EXPECT_THAT(Walk({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab}),
                ElementsAre(2, 0, 1, 2, 1));
    ExecuteCommand("object_+");
    EXPECT_EQ(basGlobal.FocusedButton, 2);
    ExecuteCommand("object_-");
    EXPECT_EQ(basGlobal.FocusedButton, 1);
    Load("box", true);
    EXPECT_EQ(basGlobal.FocusedButton, kNoFocus);
    EXPECT_THAT(Walk({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Left, Qt::Key_Left}),
                ElementsAre(4, 3, 4, 3, 4));
}

TEST_F(SelectionTest, ArrowKeysReachEveryElementAndWrap) {
    std::vector<PlacedButton> grid;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 5; ++column)
            grid.push_back({"sensoron_" + std::to_string(grid.size()), column * 80, row * 80});
    }
    Picture("track.png", 300, 24, Qt::black);
    Start("[mainmenu]\n" + ButtonKeys(grid) +
          "Slider0Function=x\nSlider0Background=track.png\nSlider0X=40\nSlider0Y=260\n"
          "List0Function=media\nList0X=450\nList0Y=10\nList0Width=200\nList0Height=300\n"
          "Button15Function=unseen\nButton15Up=b64.png\nButton15X=5000\n");
    EXPECT_THAT(Walk({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}),
                ElementsAre(0, 1, 6, 5, 0));
    EXPECT_THAT(Walk({Qt::Key_Left}), ElementsAre(-1));
    EXPECT_TRUE(List(0).hasFocus()) << "round the edge, the farthest on the right";
    Button(12).setFocus();
    EXPECT_THAT(Walk({Qt::Key_Down}), ElementsAre(-1));
    EXPECT_EQ(basGlobal.FocusedSlider, 0);
    EXPECT_EQ(Walk({Qt::Key_Down}).back() / 5, 0) << "and on at the top";

    std::set<QWidget*> reached;
    std::vector<QWidget*> open{&Button(0)};
    while (!open.empty()) {
        QWidget* from = open.back();
        open.pop_back();
        if (!reached.insert(from).second) continue;
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
            // Up and down step the entries of a list; left and right lead out of it.
            const bool steps = key == Qt::Key_Up || key == Qt::Key_Down;
            if (from == &List(0) && steps) continue;
            from->setFocus();
            Key(key);
            EXPECT_NE(window->focusWidget(), from) << "no key leads nowhere";
            open.push_back(window->focusWidget());
        }
    }
    EXPECT_EQ(reached.size(), grid.size() + 2) << "all but the one off the screen";
    Button(7).setFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_7");
    basGlobal.LastCommand.clear();
    Screen().Page()->setFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(basGlobal.LastCommand, "object_select") << "nothing is selected";
}

TEST_F(SelectionTest, EscapeClosesTheBoxThenGoesToTheFirstPage) {
    Start("[mainmenu]\n[other]\n[box]\n");
    Load("other");
    Load("box", true);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(BoxOpen());
    EXPECT_EQ(basGlobal.CurrentMenu, "other");
    Key(Qt::Key_Escape);
    EXPECT_EQ(basGlobal.CurrentMenu, "mainmenu");
    Load("other");
    Click(500, 400);
    EXPECT_EQ(basGlobal.CurrentMenu, "mainmenu") << "a click on the bare background";
}

TEST_F(SelectionTest, PointerSelectsAndTheSelectionIsTheFocus) {
    Picture("track.png", 200, 20, Qt::black);
    Start("[mainmenu]\n" + ButtonKeys({{"a", 0, 0}, {"b", 100, 0}}) +
          "Slider0Function=x\nSlider0Background=track.png\nSlider0Y=200\n");
    Finish();
    Move(110, 10);
    Move(112, 12);
    EXPECT_EQ(basGlobal.FocusedButton, 1);
    Move(10, 210);
    EXPECT_EQ(basGlobal.FocusedButton, kNoFocus);
    EXPECT_EQ(basGlobal.FocusedSlider, 0);
    Move(400, 400);
    EXPECT_EQ(basGlobal.FocusedSlider, 0) << "the selection stays";
}

TEST_F(SelectionTest, WheelNeedsItsOptionAndCountsNotches) {
    Start("[mainmenu]\nList0Function=media\nList0X=300\nList0Width=100\nList0Height=200\n" +
          ButtonKeys({{"a", 0, 0}}) + "[box]\nList0Function=media\n");
    FillMedia(9);
    SelectListEntry(Media(), 5);
    Wheel(10, 10, -120);
    EXPECT_EQ(Media().Selected, 5) << "without its option";
    basGlobal.Misc = kMiscMouseWheel;
    const struct {
        int X, Y, Delta, Selected;
    } rows[] = {{10, 10, -120, 6},  {600, 300, -240, 8}, {350, 50, 120, 7},
                {600, 300, -60, 7}, {600, 300, -60, 8},  {600, 300, 60, 8}};
    for (const auto& row : rows) {
        Wheel(row.X, row.Y, row.Delta);
        EXPECT_EQ(Media().Selected, row.Selected) << row.X << ' ' << row.Delta;
    }
    Load("box", true);
    Wheel(600, 300, 120);
    EXPECT_EQ(Media().Selected, 7);
    ShowPopup("look", 1);
    Wheel(600, 300, 120);
    EXPECT_EQ(Media().Selected, 7) << "beneath a message";
}

TEST_F(SelectionTest, PageKeysWorkInTheListThatHasTheFocus) {
    Start("[mainmenu]\nList0Function=media\nList0Width=100\nList0Height=200\n");
    FillMedia(50);
    SkinList* list = &List(0);
    list->setFocus();
    const int page = list->PageSize();
    const auto last = static_cast<int>(Media().Entries.size());
    const struct {
        Qt::Key Pressed;
        int Selected;
    } rows[] = {{Qt::Key_PageDown, 1 + page}, {Qt::Key_PageDown, 1 + 2 * page},
                {Qt::Key_PageUp, 1 + page},   {Qt::Key_Home, 1},
                {Qt::Key_PageUp, 1},          {Qt::Key_End, last},
                {Qt::Key_PageDown, last}};
    for (const auto& row : rows) {
        Key(row.Pressed);
        EXPECT_EQ(Media().Selected, row.Selected) << row.Pressed;
    }
    QTest::keyPress(window->windowHandle(), Qt::Key_PageUp);
    EXPECT_TRUE(Until([&] { return Media().Selected == last - 3 * page; })) << "held";
    QTest::keyRelease(window->windowHandle(), Qt::Key_PageUp);
    Screen().Page()->setFocus();
    Key(Qt::Key_End);
    EXPECT_EQ(Media().Selected, last - 3 * page) << "the page has the focus";
}

TEST_F(SelectionTest, AButtonThatIsNotEnabledTakesNoPartUntilItIs) {
    Start("[mainmenu]\n" + ButtonKeys({{"a", 0, 0}, {"b", 100, 0}}) + "[other]\n" +
          ButtonKeys({{"a", 0, 0}, {"value_-", 100, 0}, {"c", 200, 0}}) +
          "Button1Over=b64.png\nButton1Enabled=OBD_connected\n"
          "List0Function=media\nList0Y=300\nList0Width=100\nList0Height=100\n");
    Load("other");
    Finish();
    FillMedia(50);
    const auto becomes = [this](int state) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        Refresh();
    };
    const auto shown = [this] { return kButtonKind.Shown(Element(kButtonKind, 1)); };
    EXPECT_EQ(shown(), "dim") << "from the start";
    EXPECT_NEAR(Pixel(130, 30).blue(), 102, 3);
    EXPECT_EQ(Pixel(30, 30).blue(), 255);
    EXPECT_THAT(Walk({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Tab}),
                ElementsAre(0, 2, 0, 2));
    Move(130, 30);
    Move(132, 32);
    EXPECT_EQ(shown(), "dim");
    EXPECT_EQ(basGlobal.FocusedButton, 2);
    basGlobal.LastCommand.clear();
    Click(130, 30);
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(130, 30));
    EXPECT_EQ(basGlobal.LastCommand, "");
    EXPECT_EQ(basGlobal.CurrentMenu, "other") << "what lies beneath has no part in it either";

    becomes(3);
    EXPECT_EQ(Pixel(130, 30).blue(), 255);
    Button(1).setFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(Media().Selected, 2);
    becomes(16);
    EXPECT_EQ(basGlobal.FocusedButton, kNoFocus);
    Key(Qt::Key_Return);
    EXPECT_EQ(Media().Selected, 2);
    becomes(3);
    EXPECT_EQ(basGlobal.FocusedButton, 1) << "selected again, as nothing else was meanwhile";
    becomes(16);
    Button(0).setFocus();
    becomes(3);
    EXPECT_EQ(basGlobal.FocusedButton, 0);

    Press(130, 30);
    ASSERT_TRUE(basGlobal.tiKeyrepeat.Enabled());
    const int selected = Media().Selected;
    becomes(1);
    EXPECT_FALSE(basGlobal.tiKeyrepeat.Enabled()) << "a held press goes no further";
    becomes(3);
    Release(130, 30);
    EXPECT_EQ(Media().Selected, selected);

    Button(1).setFocus();
    becomes(1);
    Load("mainmenu");
    EXPECT_EQ(basGlobal.FocusedButton, kNoFocus);
    EXPECT_EQ(shown(), "up") << "another page, another button";
    EXPECT_THAT(Walk({Qt::Key_Right, Qt::Key_Right}), ElementsAre(0, 1));
}

TEST_F(SelectionTest, HeldArrowKeysAndStepButtonsRepeat) {
    Start("[mainmenu]\n" + ButtonKeys({{"value_-", 0, 0}, {"sensoron_x", 100, 0}, {"b", 200, 0}}) +
          "List0Function=media\nList0Y=300\nList0Width=100\nList0Height=100\n");
    FillMedia(50);
    const FormTimer& timer = basGlobal.tiKeyrepeat;
    const auto tickNow = [] { basGlobal.tiKeyrepeat.SetInterval(1); };
    QWindow* handle = window->windowHandle();

    Button(2).setFocus();
    QTest::keyPress(handle, Qt::Key_Left);
    EXPECT_EQ(basGlobal.FocusedButton, 1);
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.Interval(), 400);
    tickNow();
    EXPECT_TRUE(Until([] { return basGlobal.FocusedButton == 0; }));
    EXPECT_EQ(timer.Interval(), 100);
    QTest::keyRelease(handle, Qt::Key_Left);
    EXPECT_FALSE(timer.Enabled());

    Press(10, 10);
    EXPECT_EQ(Media().Selected, 1);
    tickNow();
    EXPECT_TRUE(Until([] { return Media().Selected == 3; }));
    Release(10, 10);
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(Media().Selected, 3) << "its click is one of the repeats";
    Move(300, 10);
    Click(10, 12);
    EXPECT_EQ(Media().Selected, 4) << "a short click is one step";

    Press(110, 10);
    EXPECT_FALSE(timer.Enabled()) << "a command that does not step";
    Release(110, 10);
    QTest::keyPress(handle, Qt::Key_Return);
    EXPECT_FALSE(timer.Enabled());
    QTest::keyRelease(handle, Qt::Key_Return);

    Press(10, 10);
    ASSERT_TRUE(timer.Enabled());
    Load("mainmenu");
    EXPECT_FALSE(timer.Enabled()) << "the held button is no longer there";
    Release(10, 10);
    QTest::keyPress(handle, Qt::Key_Left);
    ASSERT_TRUE(timer.Enabled());
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(Until([&] { return !timer.Enabled(); })) << "the release goes elsewhere";
}

}  // namespace
}  // namespace dravik
