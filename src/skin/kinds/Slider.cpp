#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "skin/kinds/KindParts.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr int kSliderMax = 100;  // sliders show percent: a skin states no range for them

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "40", "left edge"},
    {"Y", Integer, &E::Y, "420", "top edge"},
    {"Direction", Integer, &E::Direction, "1", "0 bottom to top, else left to right"},
    {"Tabindex", Lenient, &E::Tabindex, "2", "place in the navigation order"},
    {"Background", Picture, &E::Background, "track.png",
     "picture of the track; the slider takes its size"},
    {"Progress", Picture, &E::Progress, "track-full.png",
     "picture of the filled part of the track"},
    {"Bar", Picture, &E::Bar, "knob.png", "picture of the knob"},
    {"BarOver", Picture, &E::BarOver, "knob-over.png",
     "picture of the knob while the pointer is over it"},
    {"BarDown", Picture, &E::BarDown, "knob-down.png", "picture of the knob while it is dragged"},
};

void Connect(SkinScreen& screen, Slider& slider, int index) {
    slider.Change = [&screen, index](std::int32_t& value) {
        screen.Events.SliderChanged(index, value);
    };
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    auto& slider = UseControl<Slider>(screen, element, index, Connect);
    PictureReader pictures(screen, element);
    slider.MoveTo(element.X, element.Y);
    slider.SetDirection(element.Direction);
    slider.SetPictureBack(pictures.Load("Background", element.Background));
    slider.SetPictureProgress(pictures.Load("Progress", element.Progress));
    slider.SetBar(pictures.Load("Bar", element.Bar));
    slider.SetBarOver(pictures.Load("BarOver", element.BarOver));
    slider.SetBarDown(pictures.Load("BarDown", element.BarDown));
    if (pictures.Error()) return pictures.Error();
    slider.StartAtMin(0, kSliderMax);
    basGlobal.SliderTag.push_back(element.Function);
    slider.show();
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int) {
    auto& slider = ControlOf<Slider>(element);
    const std::optional<float> value = ShowValue(element);
    if (value && !slider.HeldDown()) slider.SetNumber(static_cast<double>(*value));
}

void Check(const SkinElement& element, const Complain& complain) {
    if (element.Background.empty())
        complain("Background", "without this picture the slider has no size");
}

}  // namespace

extern constinit const SkinKind kSliderKind{
    .Word = "Slider",
    .Meaning = "a value with a knob to drag",
    .Keys = kKeys,
    .Role = &kValueRole,
    .FunctionSample = "listview",
    .Depth = 60,
    .Turn = 40,
    .Selectable = true,
    .Build = Build,
    .Refresh = Refresh,
    .Check = Check,
};

}  // namespace dravik
