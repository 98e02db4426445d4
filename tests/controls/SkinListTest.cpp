#include "controls/SkinList.h"

#include <gmock/gmock.h>

#include "ControlWindow.h"
#include "controls/SkinTextbox.h"
#include "core/basGlobal.h"
#include "support/SavePicture.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

/// A list of 40 entries, ten rows high, at 0, 0.
class SkinListTest : public ::testing::Test {
 protected:
    SkinListTest() {
        for (int i = 1; i <= 40; ++i)
            slot.Entries.push_back({"entry " + std::to_string(i), "", ""});
        slot.Selected = 1;
        list.SetLook({"", 10, 0x000000, 0, false, false}, 0xFFFF00);
        row = list.RowHeight();
        list.SetBox(0, 0, 200, 10 * row + row / 2);
        list.SetListSlot(&slot);
        list.SelectionChanged = [this](int index) { selections.push_back(index); };
        list.Activated = [this](int index) { activations.push_back(index); };
        window.Show();
    }

    int Middle(int visibleRow) const { return visibleRow * row - row / 2; }

    ListSlot slot;
    int row = 0;
    std::vector<int> selections;
    std::vector<int> activations;
    ControlWindow window;
    SkinList& list = *new SkinList(&window);
};

TEST_F(SkinListTest, PageSizeCountsWholeRows) {
    EXPECT_EQ(list.PageSize(), 10);
    list.SetScale(2);
    EXPECT_EQ(list.PageSize(), 10);
}

TEST_F(SkinListTest, SelectEntryScrollsIntoViewAndIgnoresWhatIsOutside) {
    list.SelectEntry(40);
    EXPECT_EQ(slot.Selected, 40);
    EXPECT_GE(list.FirstVisible() + 10, 40);
    list.SelectEntry(3);
    EXPECT_EQ(list.FirstVisible(), 3);
    for (const int outside : {0, -5, 41}) list.SelectEntry(outside);
    list.SelectEntry(3);
    EXPECT_EQ(slot.Selected, 3);
    EXPECT_THAT(selections, ElementsAre(40, 3));
}

TEST_F(SkinListTest, TapSelectsAndDoubleClickActivates) {
    window.Click(50, Middle(4));
    EXPECT_EQ(slot.Selected, 4);
    window.DoubleClick(50, Middle(6));
    EXPECT_THAT(selections, ElementsAre(4, 6));
    EXPECT_THAT(activations, ElementsAre(6));
}

TEST_F(SkinListTest, DragScrollsWithoutSelecting) {
    window.Press(50, Middle(9));
    window.Move(50, Middle(5));
    window.Release(50, Middle(5));
    EXPECT_EQ(list.FirstVisible(), 5);
    window.Press(50, Middle(2));
    window.Move(50, 299);
    window.Release(50, 299);
    EXPECT_EQ(list.FirstVisible(), 1) << "not beyond the first entry";
    EXPECT_EQ(slot.Selected, 1);
    EXPECT_THAT(selections, ElementsAre());
}

TEST_F(SkinListTest, RefreshFollowsTheSlotButNotARotatingLine) {
    slot.Selected = 30;
    list.Refresh();
    const int first = list.FirstVisible();
    EXPECT_GE(first + 10, 30);
    window.Press(50, Middle(2));
    window.Move(50, Middle(9));
    window.Release(50, Middle(9));
    const int scrolled = list.FirstVisible();
    ASSERT_LT(scrolled, first);
    slot.Entries[29].Text = "rotated";
    ++slot.Changes;
    list.Refresh();
    EXPECT_EQ(list.FirstVisible(), scrolled) << "the user's scrolling holds";
    slot.Entries.resize(5);
    slot.Selected = 0;
    ++slot.Changes;
    list.Refresh();
    EXPECT_EQ(list.FirstVisible(), 1);
    window.Click(50, Middle(8));
    EXPECT_EQ(slot.Selected, 0) << "below the last entry";
}

TEST_F(SkinListTest, RepaintsOnlyWhenTheSlotHasChanged) {
    PaintWatch watch(&list);
    list.Refresh();
    EXPECT_TRUE(watch.Take().isEmpty());
    slot.Selected = 2;
    list.Refresh();
    EXPECT_EQ(watch.Take(), QRegion(0, 0, 200, 2 * row));
}

TEST_F(SkinListTest, ShowsThePictureOfAKeyAndTheSelection) {
    const TemporaryFolder folder;
    SavePicture(folder / "mp3.bmp", 60, 60, Qt::red);  // higher than a row
    slot.Entries[1].Picture = "mp3";
    slot.Entries[2].Picture = "../mp3";
    slot.Entries[1].Text = slot.Entries[2].Text = slot.Entries[0].Text = "";
    slot.Selected = 3;
    ++slot.Changes;
    list.SetPictureFolder(folder / "");
    list.Refresh();
    for (const int scale : {1, 2}) {
        list.SetScale(scale);
        const QImage shown = window.grab().toImage();
        const int x = 12 * scale;
        EXPECT_EQ(shown.pixelColor(x, Middle(2) * scale), QColor(Qt::red));
        EXPECT_EQ(shown.pixelColor(x, Middle(1) * scale), QColor(0, 255, 255)) << "back colour";
        EXPECT_EQ(shown.pixelColor(x, Middle(3) * scale), QColor(0, 191, 191)) << "selected row";
    }
}

TEST_F(SkinListTest, HighRowsShowTheWholeTextInSeveralLines) {
    list.SetLeastRowHeight(64);
    EXPECT_EQ(list.RowHeight(), 64);
    EXPECT_EQ(list.PageSize(), (10 * row + row / 2) / 64);
    window.Click(50, 64 + 60);
    EXPECT_EQ(slot.Selected, 2);

    // Ink in the lower half of a row tells of a second line.
    const auto inkBelow = [&](const std::string& text) {
        slot.Entries[0].Text = text;
        ++slot.Changes;
        list.Refresh();
        const QImage shown = window.grab().toImage();
        int ink = 0;
        for (int x = 0; x < 200; ++x) {
            for (int y = 40; y < 62; ++y) ink += shown.pixelColor(x, y) != QColor(0, 255, 255);
        }
        return ink;
    };
    EXPECT_EQ(inkBelow("short"), 0);
    EXPECT_GT(inkBelow("a text of so many words that no row of this width holds it"), 50);
    EXPECT_GT(inkBelow(std::string(60, 'x')), 50) << "a name without blanks";
    list.SetLeastRowHeight(1);
    EXPECT_EQ(list.RowHeight(), row) << "never less than the text needs";
}

TEST(SkinTextboxTest, ShowsItsColoursAndScales) {
    ControlWindow window;
    auto& box = *new SkinTextbox(&window);
    box.SetBox(10, 20, 100, 30);
    box.SetLook({"", 12, 0x0000FF, 1, false, false}, 0x00FF00);
    box.SetText("caf\xE9");
    EXPECT_EQ(box.Text(), "caf\xC3\xA9");
    box.SetScale(1.5);
    window.Show();
    EXPECT_EQ(box.geometry(), QRect(15, 30, 150, 45));
    EXPECT_EQ(box.font().pixelSize(), 24);
    EXPECT_EQ(window.Pixel(20, 35), QColor(0, 255, 0));
}

}  // namespace
}  // namespace dravik
