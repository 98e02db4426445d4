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

// Without a page size no list is shown, or no whole row fits. A number that the selection plus it
// would carry beyond 16 bits is no step.
TEST_F(ListStepping, OperationsCountFromTheSelection) {
    const struct {
        int Selected;
        const char* Text;
        int PageSize;
        int Expected;  ///< of 25 entries
    } rows[] = {{3, "listview_down", 10, 4},       {3, "LISTVIEW_Down", 10, 4},
                {3, "listview_-", 10, 4},          {3, "listview_+", 10, 2},
                {3, "listview_up", 10, 2},         {1, "listview_up", 10, 1},
                {25, "listview_down", 10, 25},     {17, "listview_pagedown", 10, 25},
                {15, "listview_pagedown", 10, 25}, {14, "listview_pagedown", 10, 24},
                {25, "listview_pagedown", 10, 25}, {14, "listview_pageup", 10, 4},
                {11, "listview_pageup", 10, 1},    {10, "listview_pageup", 10, 1},
                {1, "listview_pageup", 10, 1},     {7, "listview_pageup", 0, 7},
                {7, "listview_pagedown", 0, 7},    {3, "listview_+5", 10, 8},
                {8, "listview_-5", 10, 3},         {3, "listview_7 down", 10, 10},
                {3, "listview_100", 10, 25},       {3, "listview_-100", 10, 1},
                {3, "listview_x", 10, 3},          {3, "listview", 10, 3},
                {3, "listview_32764", 10, 25},     {3, "listview_32767", 10, 3},
                {3, "listview_1e9", 10, 3},        {3, "gallery_down", 10, 3},
                {3, "x_listview_down", 10, 3},     {3, "down", 10, 3}};
    for (const auto& row : rows) {
        fakeScreen.PageSize = row.PageSize;
        const ListSlot& list = ShowList(25, row.Selected);
        StepList(row.Text);
        EXPECT_EQ(list.Selected, row.Expected) << row.Selected << " " << row.Text;
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
