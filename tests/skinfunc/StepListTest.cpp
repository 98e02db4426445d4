#include <string>

#include "skinfunc/basValueProc.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

class ListStepping : public GlobalsTest {
 protected:
    static ListSlot& ShowList(int count, int selected) {
        basGlobal.CurrentList = 2;
        ListSlot& list = basGlobal.Lists[2];
        list.Entries.assign(static_cast<std::size_t>(count), {});
        list.Selected = selected;
        return list;
    }
};

// A number that would carry the selection beyond 16 bits is no step.
TEST_F(ListStepping, OperationsCountFromTheSelection) {
    const struct {
        int Selected;
        const char* Text;
        int Expected;  ///< of 25 entries
    } rows[] = {
        {3, "LISTVIEW_Down", 4},       {3, "listview_-", 4},          {3, "listview_+", 2},
        {3, "listview_up", 2},         {1, "listview_up", 1},         {25, "listview_down", 25},
        {17, "listview_pagedown", 25}, {15, "listview_pagedown", 25}, {14, "listview_pagedown", 24},
        {25, "listview_pagedown", 25}, {14, "listview_pageup", 4},    {11, "listview_pageup", 1},
        {10, "listview_pageup", 1},    {1, "listview_pageup", 1},     {3, "listview_+5", 8},
        {8, "listview_-5", 3},         {3, "listview_7 down", 10},    {3, "listview_100", 25},
        {3, "listview_-100", 1},       {3, "listview_x", 3},          {3, "listview", 3},
        {3, "listview_32764", 25},     {3, "listview_32767", 3},      {3, "listview_1e9", 3},
        {3, "gallery_down", 3},        {3, "x_listview_down", 3}};
    for (const auto& row : rows) {
        const ListSlot& list = ShowList(25, row.Selected);
        StepList(row.Text);
        EXPECT_EQ(list.Selected, row.Expected) << row.Selected << " " << row.Text;
    }
    fakeScreen.PageSize = 0;  // no list is shown, or no whole row fits
    for (const char* page : {"listview_pageup", "listview_pagedown"}) {
        const ListSlot& list = ShowList(25, 7);
        StepList(page);
        EXPECT_EQ(list.Selected, 7) << page;
    }
}

TEST_F(ListStepping, WithoutAListOrASelectionNothingHappens) {
    const ListSlot& empty = ShowList(0, 0);
    StepList("listview_down");
    EXPECT_EQ(empty.Selected, 0);
    const ListSlot& unselected = ShowList(3, 0);
    StepList("listview_down");
    EXPECT_EQ(unselected.Selected, 0);
    const ListSlot& hidden = ShowList(3, 1);
    basGlobal.CurrentList = -1;
    StepList("listview_down");
    EXPECT_EQ(hidden.Selected, 1);
}

}  // namespace
}  // namespace dravik
