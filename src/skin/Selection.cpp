#include "skin/Selection.h"

#include <QKeyEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "controls/SkinList.h"
#include "controls/SkinTextbox.h"
#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/SkinScreen.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using Milliseconds = std::chrono::duration<int, std::milli>;
constexpr Milliseconds kRepeatDelay(400);     // until a held key repeats
constexpr Milliseconds kRepeatInterval(100);  // and between repeats
constexpr int kWheelNotch = 120;              // eighths of a degree

struct KeyCommand {
    int Key;
    const char* Command;
};

constexpr KeyCommand kKeyCommands[] = {
    {Qt::Key_Return, "object_select"}, {Qt::Key_Enter, "object_select"},
    {Qt::Key_Left, "object_left"},     {Qt::Key_Right, "object_right"},
    {Qt::Key_Up, "object_up"},         {Qt::Key_Down, "object_down"},
    {Qt::Key_Escape, "exit"},
};

/// Keys that work within a list. They repeat like those that step from element to element.
enum class ListStep { Up, Down, PageUp, PageDown, First, Last };

struct ListKey {
    int Key;
    ListStep Step;
};

constexpr ListKey kListKeys[] = {
    {Qt::Key_PageUp, ListStep::PageUp},
    {Qt::Key_PageDown, ListStep::PageDown},
    {Qt::Key_Home, ListStep::First},
    {Qt::Key_End, ListStep::Last},
};

/// Steps repeat while they are held; a selection does not, since it may open a question.
bool Repeats(const std::string& command) {
    const std::string lowered = LowerCased(command);
    if (lowered == "object_select") return false;
    return lowered.starts_with("value_") || lowered.starts_with("object_");
}

/// A rectangle seen so that the wanted direction is always towards growing Near..Far.
struct Extent {
    int Near, Far;   ///< along the direction
    int Start, End;  ///< across it
    double Along() const { return (Near + Far) / 2.0; }
    double Across() const { return (Start + End) / 2.0; }
    bool Overlaps(const Extent& other) const { return Start < other.End && other.Start < End; }
};

Extent Look(const QRect& r, Direction direction) {
    const int right = r.x() + r.width();
    const int bottom = r.y() + r.height();
    switch (direction) {
        case Direction::Left:
            return {-right, -r.x(), r.y(), bottom};
        case Direction::Up:
            return {-bottom, -r.y(), r.x(), right};
        case Direction::Down:
            return {r.y(), bottom, r.x(), right};
        case Direction::Right:
            break;
    }
    return {r.x(), right, r.y(), bottom};
}

/// Elements that do not overlap across the direction come after all that do.
double Distance(const Extent& from, const Extent& to, double along) {
    constexpr double kOffTrack = 1e6;
    const double across = std::abs(to.Across() - from.Across());
    return from.Overlaps(to) ? along + across / 4 : kOffTrack + along + 2 * across;
}

/// Number of the slot that a list shows, -1 for none.
int SlotOf(const SkinList* list) {
    if (list == nullptr || list->Slot() == nullptr) return -1;
    return static_cast<int>(list->Slot() - basGlobal.Lists.data());
}

int EntryAfter(const SkinList& list, ListStep step) {
    const int selected = list.Slot()->Selected;
    const int page = std::max(1, list.PageSize());
    switch (step) {
        case ListStep::Up:
            return selected - 1;
        case ListStep::Down:
            return selected + 1;
        case ListStep::PageUp:
            return selected - page;
        case ListStep::PageDown:
            return selected + page;
        case ListStep::First:
            return 1;
        case ListStep::Last:
            break;
    }
    return static_cast<int>(list.Slot()->Entries.size());
}

/// Selects another entry of a list that has the focus, stopping at its ends.
/// @return false when nothing that has entries has the focus
bool StepFocusedList(QWidget* focused, ListStep step) {
    auto* list = dynamic_cast<SkinList*>(focused);
    if (SlotOf(list) < 0 || list->Slot()->Entries.empty()) return false;
    const auto count = static_cast<int>(list->Slot()->Entries.size());
    list->SelectEntry(std::clamp(EntryAfter(*list, step), 1, count));
    return true;
}

/// A list takes Up and Down for itself as long as it has entries to go to.
bool StepFocusedList(QWidget* focused, Direction direction) {
    if (direction == Direction::Up) return StepFocusedList(focused, ListStep::Up);
    return direction == Direction::Down && StepFocusedList(focused, ListStep::Down);
}

}  // namespace

Selection::Selection(SkinScreen& screen) : screen_(screen) {
    basGlobal.tiKeyrepeat.OnTick([this] {
        hasRepeated_ = true;
        nextRepeat_ = Clock::now() + kRepeatInterval;
        basGlobal.tiKeyrepeat.SetInterval(kRepeatInterval.count());
        const auto step = repeated_;  // it may start another repeat
        step();
    });
}

void Selection::FocusChanged(QWidget* now) {
    const auto index = [](int found) {
        return found < 0 ? kNoFocus : static_cast<std::uint16_t>(found);
    };
    basGlobal.FocusedButton = index(now == nullptr ? -1 : screen_.IndexOf(kButtonKind, now));
    basGlobal.FocusedSlider = index(now == nullptr ? -1 : screen_.IndexOf(kSliderKind, now));
    basGlobal.FocusedList = SlotOf(dynamic_cast<SkinList*>(now));
}

void Selection::PointerOver(QObject* object) {
    auto* slider = dynamic_cast<Slider*>(object);
    if (slider != nullptr && screen_.IndexOf(kSliderKind, slider) >= 0) SelectHovered(slider);
}

void Selection::PointerOverButton(int index) {
    SelectHovered(screen_.Control(kButtonKind, index));
}

void Selection::SelectHovered(QWidget* control) {
    const bool typing = dynamic_cast<SkinTextbox*>(control->window()->focusWidget()) != nullptr;
    if (!typing && !control->hasFocus()) control->setFocus();
}

void Selection::ButtonPressed(int index) {
    hasRepeated_ = false;
    if (const std::string* tag = FindAt(basGlobal.ButtonTag, index)) StartRepeat(*tag);
}

void Selection::ButtonClicked(int index) {
    // A held button has already run its command as often as the user wanted.
    if (std::exchange(hasRepeated_, false)) return;
    if (const std::string* tag = FindAt(basGlobal.ButtonTag, index))
        ExecuteCommand(std::string(*tag));
}

void Selection::WheelTurned(int delta) {
    wheelRest_ += delta;
    for (; wheelRest_ >= kWheelNotch; wheelRest_ -= kWheelNotch) ExecuteCommand("value_+");
    for (; wheelRest_ <= -kWheelNotch; wheelRest_ += kWheelNotch) ExecuteCommand("value_-");
}

bool Selection::KeyPressed(const QKeyEvent& event) {
    if (event.isAutoRepeat() && interrupted_ == event.key()) ResumeRepeat();
    for (const KeyCommand& row : kKeyCommands) {
        if (row.Key != event.key()) continue;
        if (event.isAutoRepeat()) return true;  // tiKeyrepeat sets the pace
        StartRepeat(row.Command);
        ExecuteCommand(row.Command);
        return true;
    }
    return ListKeyPressed(event);
}

bool Selection::ListKeyPressed(const QKeyEvent& event) {
    const auto* row = std::find_if(std::begin(kListKeys), std::end(kListKeys),
                                   [&event](const ListKey& key) { return key.Key == event.key(); });
    if (row == std::end(kListKeys)) return false;
    if (event.isAutoRepeat()) return true;
    const auto act = [this, step = row->Step] {
        return StepFocusedList(screen_.Page()->window()->focusWidget(), step);
    };
    if (!act()) return false;
    StartRepeat([act] { act(); });
    return true;
}

/// What looks like a release may be one half of a repeat; the other half then takes it back.
void Selection::KeyReleased(const QKeyEvent& event) {
    if (event.isAutoRepeat()) return;
    const bool repeating = basGlobal.tiKeyrepeat.Enabled();
    StopRepeat();
    if (repeating) interrupted_ = event.key();
}

void Selection::StartRepeat(const std::string& command) {
    StopRepeat();
    if (Repeats(command)) StartRepeat([command] { ExecuteCommand(command); });
}

void Selection::StartRepeat(std::function<void()> step) {
    StopRepeat();
    repeated_ = std::move(step);
    nextRepeat_ = Clock::now() + kRepeatDelay;
    ResumeRepeat();
}

/// Goes on as if there had been no interruption.
void Selection::ResumeRepeat() {
    interrupted_ = 0;
    const auto left = std::chrono::ceil<Milliseconds>(nextRepeat_ - Clock::now());
    basGlobal.tiKeyrepeat.SetInterval(std::max(1, left.count()));
    basGlobal.tiKeyrepeat.SetEnabled(true);
}

void Selection::StopRepeat() {
    basGlobal.tiKeyrepeat.SetEnabled(false);
    interrupted_ = 0;
}

std::vector<QWidget*> Selection::Candidates() const {
    std::vector<QWidget*> candidates;
    const bool inBox = screen_.BoxShown();
    for (const ScreenElement* element : screen_.Selectable()) {
        QWidget* control = element->Control;
        const bool belongs = element->InBox == inBox;
        const bool seen =
            !control->isHidden() && control->parentWidget()->rect().intersects(control->geometry());
        const bool works = control->focusPolicy() != Qt::NoFocus;
        if (belongs && seen && works) candidates.push_back(control);
    }
    return candidates;
}

QRect Selection::WindowRect(const QWidget* widget) const {
    return {widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()};
}

void Selection::MoveInTabOrder(bool backwards) {
    const std::vector<QWidget*> candidates = Candidates();
    if (candidates.empty()) return;
    QWidget* start = screen_.Page()->window()->focusWidget();
    if (start == nullptr) start = screen_.Page();
    for (QWidget* next = start;;) {
        next = backwards ? next->previousInFocusChain() : next->nextInFocusChain();
        if (next == start) return;
        if (std::find(candidates.begin(), candidates.end(), next) != candidates.end()) {
            next->setFocus(backwards ? Qt::BacktabFocusReason : Qt::TabFocusReason);
            return;
        }
    }
}

void Selection::Move(Direction direction) {
    const std::vector<QWidget*> candidates = Candidates();
    QWidget* focused = screen_.Page()->window()->focusWidget();
    if (std::find(candidates.begin(), candidates.end(), focused) == candidates.end()) {
        MoveInTabOrder(false);
        return;
    }
    if (StepFocusedList(focused, direction)) return;

    const Extent from = Look(WindowRect(focused), direction);
    QWidget* best = nullptr;
    double bestDistance = std::numeric_limits<double>::max();
    for (const bool wrapped : {false, true}) {
        for (QWidget* candidate : candidates) {
            if (candidate == focused) continue;
            const Extent to = Look(WindowRect(candidate), direction);
            const bool ahead = to.Along() > from.Along();
            // Round the edge, the element farthest back is the nearest.
            const double along = wrapped ? to.Along() + std::numeric_limits<std::int16_t>::max()
                                         : to.Along() - from.Along();
            if (!wrapped && !ahead) continue;
            const double distance = Distance(from, to, along);
            if (distance < bestDistance) {
                bestDistance = distance;
                best = candidate;
            }
        }
        if (best != nullptr) break;
    }
    if (best != nullptr) best->setFocus(Qt::OtherFocusReason);
}

void ScrollListBySlider(int slider, int percent) {
    const std::string* tag = FindAt(basGlobal.SliderTag, slider);
    ListSlot* list = CurrentList();
    if (tag == nullptr || list == nullptr || LowerCased(*tag) != "listview") return;
    const auto last = static_cast<double>(list->Entries.size()) - 1;
    SelectListEntry(*list, 1 + static_cast<int>(std::lround(last * percent / 100)));
}

}  // namespace dravik
