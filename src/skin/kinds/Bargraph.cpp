#include "controls/Slider.h"
#include "skin/kinds/KindParts.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "40", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Min", Integer, &E::Min, "0", "value at the start of the bar"},
    {"Max", Integer, &E::Max, "100", "value at its end"},
    {"Direction", Strict, &E::Direction, "1", "0 bottom to top, else left to right"},
    {"Progress", Picture, &E::Progress, "bar-full.png", "picture of the filled part"},
    {"Background", Picture, &E::Background, "bar-empty.png",
     "picture of the empty bar; the bar takes its size"},
    {"Bar", Picture, &E::Bar, "bar-end.png", "picture of the bar's end marker"},
    {"Known", Lenient, &E::Known, "1", "1: empty and dim while its value is not known"},
};

/// A bar is for the eye alone: it tells nobody anything.
void Connect(SkinScreen&, Slider& bar, int) {
    bar.SetDisplayOnly(true);
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    auto& bar = UseControl<Slider>(screen, element, index, Connect);
    PictureReader pictures(screen, element);
    bar.MoveTo(element.X, element.Y);
    bar.SetDirection(element.Direction);
    bar.SetPictureBack(pictures.Load("Background", element.Background));
    bar.SetPictureProgress(pictures.Load("Progress", element.Progress));
    bar.SetBar(pictures.Load("Bar", element.Bar));
    if (pictures.Error()) return pictures.Error();
    bar.StartAtMin(element.Min, element.Max);
    bar.SetDim(false);
    bar.show();
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int) {
    auto& bar = ControlOf<Slider>(element);
    bar.SetDim(ValueUnknown(element));
    if (bar.Dim()) return;
    if (const std::optional<float> value = ShowValue(element))
        bar.SetNumber(static_cast<double>(*value));
}

void Check(const SkinElement& element, const Complain& complain) {
    if (element.Background.empty())
        complain("Background", "without this picture the bar has no size");
    if (element.Min == element.Max) complain("Max", "equal to Min, so the bar never moves");
}

}  // namespace

extern constinit const SkinKind kBargraphKind{
    .Word = "Bargraph",
    .Meaning = "a value as a bar that fills up",
    .Keys = kKeys,
    .Role = &kValueRole,
    .FunctionSample = "sensor_value.loadcalculated",
    .Depth = 50,
    .Turn = 50,
    .Build = Build,
    .Refresh = Refresh,
    .Check = Check,
};

}  // namespace dravik
