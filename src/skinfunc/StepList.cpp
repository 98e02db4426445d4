#include <cmath>
#include <cstdint>
#include <limits>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

struct Position {
    int Selected;
    int Count;
    int PageSize;
};

int Up(const Position& at) {
    return at.Selected - 1;
}

int Down(const Position& at) {
    return at.Selected + 1;
}

/// From the first entry the step leads out of the list on purpose, as PageDown does from the last.
int PageUp(const Position& at) {
    if (at.Selected == 1) return 1 - at.PageSize;
    return at.Selected > at.PageSize ? at.Selected - at.PageSize : 1;
}

int PageDown(const Position& at) {
    if (at.Selected >= at.Count - at.PageSize && at.Selected != at.Count) return at.Count;
    return at.Selected + at.PageSize;
}

struct StepWord {
    std::string_view Operation;
    int (*NewIndex)(const Position& at);
    bool NeedsPageSize;
};

// "+" goes with "up", towards the top of the list.
constexpr StepWord kStepWords[] = {
    {"up", Up, false},  {"+", Up, false},         {"down", Down, false},
    {"-", Down, false}, {"pageup", PageUp, true}, {"pagedown", PageDown, true},
};

/// Indices are 16-bit numbers; a step that leaves their range does not take place.
bool FitsIndex(double value) {
    return value >= std::numeric_limits<std::int16_t>::min() &&
           value <= std::numeric_limits<std::int16_t>::max();
}

std::optional<int> NewIndex(std::string_view operation, const Position& at) {
    for (const StepWord& row : kStepWords) {
        if (row.Operation != operation) continue;
        if (row.NeedsPageSize && at.PageSize <= 0) return std::nullopt;
        return row.NewIndex(at);
    }
    const double distance = LeadingNumber(operation);
    if (!FitsIndex(distance)) return std::nullopt;
    return at.Selected + static_cast<int>(std::nearbyint(distance));
}

}  // namespace

std::vector<std::string_view> StepWords() {
    std::vector<std::string_view> words;
    for (const StepWord& row : kStepWords) words.push_back(row.Operation);
    return words;
}

void StepList(const std::string& text) {
    const std::string lowered = LowerCased(text);
    const auto [target, operation] = SplitAtLast(lowered);
    ListSlot* list = CurrentList();
    if (target != "listview" || list == nullptr || list->Selected < 1) return;

    const Position at{list->Selected, static_cast<int>(list->Entries.size()),
                      upCalls.ListPageSize()};
    const std::optional<int> index = NewIndex(operation, at);
    if (index && FitsIndex(*index)) SelectListEntry(*list, *index);
}

}  // namespace dravik
