#include "skin/SkinVocabulary.h"

#include "core/basGlobal.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kButtonKeys[] = {
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Up", Picture, &E::Up, "picture of the released state; the button takes its size"},
    {"Over", Picture, &E::Over, "picture while the pointer is over the button", true},
    {"Down", Picture, &E::Down, "picture while the button is pressed", true},
    {"Tabindex", Lenient, &E::Tabindex, "place in the navigation order", true},
    {"ImageFunction", Text, &E::ImageFunction, "image function that shows or hides Image"},
    {"ImageX", Lenient, &E::ImageX, "left edge of Image inside the button"},
    {"ImageY", Lenient, &E::ImageY, "top edge of Image inside the button"},
    {"Image", Picture, &E::Image, "picture drawn on the button"},
    {"LabelFunction", Text, &E::LabelFunction, "label function of the caption; text: LabelCaption"},
    {"LabelCaption", Text, &E::LabelCaption, "fixed caption, with LabelFunction=text"},
    {"LabelX", Lenient, &E::LabelX, "left edge of the caption inside the button"},
    {"LabelY", Lenient, &E::LabelY, "top edge of the caption inside the button"},
    {"LabelWidth", Lenient, &E::LabelWidth, "width of the caption"},
    {"LabelHeight", Lenient, &E::LabelHeight, "height of the caption"},
    {"LabelAlignment", Lenient, &E::LabelAlignment, "0 left, 1 right, 2 centre"},
    {"LabelFontSize", Lenient, &E::LabelFontSize, "size of the caption in points"},
    {"LabelFont", Text, &E::LabelFont, "font of the caption"},
    {"LabelColor", Lenient, &E::LabelColor, "colour of the caption"},
};

constexpr SkinKey kSliderKeys[] = {
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Direction", Integer, &E::Direction, "0 bottom to top, else left to right"},
    {"Tabindex", Lenient, &E::Tabindex, "place in the navigation order"},
    {"Background", Picture, &E::Background, "picture of the track; the slider takes its size"},
    {"Progress", Picture, &E::Progress, "picture of the filled part of the track"},
    {"Bar", Picture, &E::Bar, "picture of the knob"},
    {"BarOver", Picture, &E::BarOver, "picture of the knob while the pointer is over it"},
    {"BarDown", Picture, &E::BarDown, "picture of the knob while it is dragged"},
};

constexpr SkinKey kBargraphKeys[] = {
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Min", Integer, &E::Min, "value at the start of the bar"},
    {"Max", Integer, &E::Max, "value at its end"},
    {"Direction", Strict, &E::Direction, "0 bottom to top, else left to right"},
    {"Progress", Picture, &E::Progress, "picture of the filled part"},
    {"Background", Picture, &E::Background, "picture of the empty bar; the bar takes its size"},
    {"Bar", Picture, &E::Bar, "picture of the bar's end marker"},
};

constexpr SkinKey kGaugeKeys[] = {
    {"X", Integer, &E::X, "centre of the needle's rotation"},
    {"Y", Integer, &E::Y, "centre of the needle's rotation"},
    {"Width", Integer, &E::Width, "line width"},
    {"Style", Integer, &E::Style, "0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot"},
    {"Min", Integer, &E::Min, "value at AngleStart"},
    {"Max", Integer, &E::Max, "value at AngleEnd"},
    {"AngleStart", Integer, &E::AngleStart, "degrees from straight down, clockwise"},
    {"AngleEnd", Integer, &E::AngleEnd, "degrees from straight down, clockwise"},
    {"RadiusStart", Integer, &E::RadiusStart, "where the needle starts, from the centre"},
    {"RadiusEnd", Integer, &E::RadiusEnd, "where the needle ends, from the centre"},
    {"StretchY", Integer, &E::StretchY, "percent; 100 is a round dial, less a flat one"},
    {"Color", Strict, &E::Color, "needle colour"},
};

constexpr SkinKey kListKeys[] = {
    {"FontSize", Integer, &E::FontSize, "size in points"},
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Width", Integer, &E::Width, "width"},
    {"Height", Integer, &E::Height, "height"},
    {"FontColor", Lenient, &E::FontColor, "text colour"},
    {"BackColor", Lenient, &E::BackColor, "background colour"},
    {"Tabindex", Lenient, &E::Tabindex, "place in the navigation order"},
    {"Font", Text, &E::Font, "font"},
    {"FontStyle", Text, &E::FontStyle, "Bold, Italic or BoldItalic"},
};

constexpr SkinKey kLabelKeys[] = {
    {"FontSize", Integer, &E::FontSize, "size in points"},
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Width", Integer, &E::Width, "width"},
    {"Height", Integer, &E::Height, "height"},
    {"Alignment", Integer, &E::Alignment, "0 left, 1 right, 2 centre"},
    {"Color", Strict, &E::Color, "text colour"},
    {"Caption", Text, &E::Caption, "fixed text, with Function=text"},
    {"Font", Text, &E::Font, "font"},
};

constexpr SkinKey kTextboxKeys[] = {
    {"FontSize", Integer, &E::FontSize, "size in points"},
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Width", Integer, &E::Width, "width"},
    {"Height", Integer, &E::Height, "height"},
    {"Alignment", Integer, &E::Alignment, "0 left, 1 right, 2 centre"},
    {"FontColor", Lenient, &E::FontColor, "text colour"},
    {"BackColor", Lenient, &E::BackColor, "background colour"},
    {"Font", Text, &E::Font, "font"},
};

constexpr SkinKey kImageKeys[] = {
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Width", Integer, &E::Width, "width; 0: that of the picture"},
    {"Height", Integer, &E::Height, "height; 0: that of the picture"},
    {"Picture", Picture, &E::Picture, "picture"},
};

constexpr SkinKey kChartKeys[] = {
    {"X", Integer, &E::X, "left edge"},
    {"Y", Integer, &E::Y, "top edge"},
    {"Time", Integer, &E::Time, "seconds across the chart"},
    {"Color", Lenient, &E::Color, "colour of the trace"},
    {"Mode", Lenient, &E::Mode, "0 line, 1 filled area, 2 points"},
    {"GridColor", Lenient, &E::GridColor, "colour of grid and texts"},
    {"Background", Picture, &E::Background, "picture behind the trace; the chart takes its size"},
};

constexpr SkinKind kKinds[kElementKinds] = {
    {ElementKind::Button, "Button", kButtonKeys, kMostElements, "a button that runs a command"},
    {ElementKind::Slider, "Slider", kSliderKeys, kMostElements, "a value with a knob to drag"},
    {ElementKind::Bargraph, "Bargraph", kBargraphKeys, kMostElements,
     "a value as a bar that fills up"},
    {ElementKind::Gauge, "Gauge", kGaugeKeys, kGaugeLimit, "a value as a needle"},
    {ElementKind::List, "List", kListKeys, kMostElements, "a list of entries"},
    {ElementKind::Label, "Label", kLabelKeys, kLabelLimit, "a text"},
    {ElementKind::Textbox, "Textbox", kTextboxKeys, kMostElements, "a text to edit"},
    {ElementKind::Image, "Image", kImageKeys, kMostElements, "a picture"},
    {ElementKind::Chart, "Chart", kChartKeys, kChartLimit, "a value over time"},
};

}  // namespace

std::span<const SkinKind> SkinKinds() {
    return kKinds;
}

const SkinKind& KindOf(ElementKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace dravik
