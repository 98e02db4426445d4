#include "skin/SkinVocabulary.h"

#include "core/basGlobal.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kButtonKeys[] = {
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "300", "top edge"},
    {"Up", Picture, &E::Up, "key-up.png",
     "picture of the released state; the button takes its size"},
    {"Over", Picture, &E::Over, "key-over.png", "picture while the pointer is over the button",
     true},
    {"Down", Picture, &E::Down, "key-down.png", "picture while the button is pressed", true},
    {"Tabindex", Lenient, &E::Tabindex, "1", "place in the navigation order", true},
    {"ImageFunction", Text, &E::ImageFunction, "sensoron_rpm.engine", "when `Image` is shown",
     false, &kStateRole},
    {"ImageX", Short, &E::ImageX, "8", "left edge of Image inside the button"},
    {"ImageY", Short, &E::ImageY, "18", "top edge of Image inside the button"},
    {"Image", Picture, &E::Image, "lamp.png", "picture drawn on the button"},
    {"LabelFunction", Text, &E::LabelFunction, "text",
     "what the caption shows; `text`: `LabelCaption`", false, &kCaptionRole},
    {"LabelCaption", Text, &E::LabelCaption, "Engine", "fixed caption, with `LabelFunction=text`"},
    {"LabelX", Lenient, &E::LabelX, "40", "left edge of the caption inside the button"},
    {"LabelY", Lenient, &E::LabelY, "18", "top edge of the caption inside the button"},
    {"LabelWidth", Lenient, &E::LabelWidth, "150", "width of the caption"},
    {"LabelHeight", Lenient, &E::LabelHeight, "30", "height of the caption"},
    {"LabelAlignment", Lenient, &E::LabelAlignment, "0", "0 left, 1 right, 2 centre"},
    {"LabelFontSize", Lenient, &E::LabelFontSize, "16", "size of the caption in points"},
    {"LabelFont", Text, &E::LabelFont, "DejaVu Sans", "font of the caption"},
    {"LabelColor", Lenient, &E::LabelColor, "&HFFFFFF", "colour of the caption"},
};

constexpr SkinKey kSliderKeys[] = {
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

constexpr SkinKey kBargraphKeys[] = {
    {"X", Integer, &E::X, "40", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Min", Integer, &E::Min, "0", "value at the start of the bar"},
    {"Max", Integer, &E::Max, "100", "value at its end"},
    {"Direction", Strict, &E::Direction, "1", "0 bottom to top, else left to right"},
    {"Progress", Picture, &E::Progress, "bar-full.png", "picture of the filled part"},
    {"Background", Picture, &E::Background, "bar-empty.png",
     "picture of the empty bar; the bar takes its size"},
    {"Bar", Picture, &E::Bar, "bar-end.png", "picture of the bar's end marker"},
};

constexpr SkinKey kGaugeKeys[] = {
    {"X", Integer, &E::X, "200", "centre of the needle's rotation"},
    {"Y", Integer, &E::Y, "200", "centre of the needle's rotation"},
    {"Width", Integer, &E::Width, "5", "line width"},
    {"Style", Integer, &E::Style, "0", "0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot"},
    {"Min", Integer, &E::Min, "0", "value at AngleStart"},
    {"Max", Integer, &E::Max, "8000", "value at AngleEnd"},
    {"AngleStart", Integer, &E::AngleStart, "60", "degrees from straight down, clockwise"},
    {"AngleEnd", Integer, &E::AngleEnd, "300", "degrees from straight down, clockwise"},
    {"RadiusStart", Integer, &E::RadiusStart, "20", "where the needle starts, from the centre"},
    {"RadiusEnd", Integer, &E::RadiusEnd, "130", "where the needle ends, from the centre"},
    {"StretchY", Integer, &E::StretchY, "100", "percent; 100 is a round dial, less a flat one"},
    {"Color", Strict, &E::Color, "&H0000FF", "needle colour"},
};

constexpr SkinKey kListKeys[] = {
    {"FontSize", Integer, &E::FontSize, "16", "size in points"},
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Width", Integer, &E::Width, "500", "width"},
    {"Height", Integer, &E::Height, "300", "height"},
    {"FontColor", Lenient, &E::FontColor, "&HFFFFFF", "text colour"},
    {"BackColor", Lenient, &E::BackColor, "&H000000", "background colour"},
    {"Tabindex", Lenient, &E::Tabindex, "3", "place in the navigation order"},
    {"Font", Text, &E::Font, "DejaVu Sans", "font"},
    {"FontStyle", Text, &E::FontStyle, "Bold", "Bold, Italic or BoldItalic, else regular"},
    {"RowHeight", Integer, &E::RowHeight, "64",
     "least height of a row, for fingers; a text wraps where a row has room for more lines"},
};

constexpr SkinKey kLabelKeys[] = {
    {"FontSize", Integer, &E::FontSize, "24", "size in points"},
    {"X", Integer, &E::X, "100", "left edge"},
    {"Y", Integer, &E::Y, "220", "top edge"},
    {"Width", Integer, &E::Width, "200", "width; 0: to the edge of the page"},
    {"Height", Integer, &E::Height, "40", "height; 0: to the edge of the page"},
    {"Alignment", Integer, &E::Alignment, "2", "0 left, 1 right, 2 centre"},
    {"Color", Strict, &E::Color, "&HFFFFFF", "text colour"},
    {"Caption", Text, &E::Caption, "Engine speed", "fixed text, with `Function=text`"},
    {"Font", Text, &E::Font, "DejaVu Sans", "font"},
    {"Decimals", Text, &E::Decimals, "1",
     "0 to 6: what a number is rounded to; without it, up to seven digits: `38.03922`"},
};

constexpr SkinKey kTextboxKeys[] = {
    {"FontSize", Integer, &E::FontSize, "16", "size in points"},
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "380", "top edge"},
    {"Width", Integer, &E::Width, "300", "width"},
    {"Height", Integer, &E::Height, "40", "height"},
    {"Alignment", Integer, &E::Alignment, "0", "0 left, 1 right, 2 centre"},
    {"FontColor", Lenient, &E::FontColor, "&HFFFFFF", "text colour"},
    {"BackColor", Lenient, &E::BackColor, "&H202020", "background colour"},
    {"Font", Text, &E::Font, "DejaVu Sans", "font"},
};

constexpr SkinKey kImageKeys[] = {
    {"X", Integer, &E::X, "0", "left edge"},
    {"Y", Integer, &E::Y, "0", "top edge"},
    {"Width", Integer, &E::Width, "800", "width; 0: that of the picture"},
    {"Height", Integer, &E::Height, "480", "height; 0: that of the picture"},
    {"Picture", Picture, &E::Picture, "back.png", "picture"},
};

constexpr SkinKey kChartKeys[] = {
    {"X", Integer, &E::X, "40", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Time", Integer, &E::Time, "60", "seconds across the chart; 0: 60"},
    {"Color", Lenient, &E::Color, "&H00FF00", "colour of trace and texts"},
    {"Mode", Lenient, &E::Mode, "0", "0 line, 1 filled area, 2 points"},
    {"GridColor", Lenient, &E::GridColor, "&H808080", "colour of the grid lines"},
    {"Background", Picture, &E::Background, "chart.png",
     "picture behind the trace; the chart takes its size, 518 by 200 without one"},
};

constexpr SkinKind kKinds[kElementKinds] = {
    {ElementKind::Button, "Button", kButtonKeys, kMostElements, "a button that runs a command",
     &kCommandRole, "openmenu_mainmenu"},
    {ElementKind::Slider, "Slider", kSliderKeys, kMostElements, "a value with a knob to drag",
     &kValueRole, "listview"},
    {ElementKind::Bargraph, "Bargraph", kBargraphKeys, kMostElements,
     "a value as a bar that fills up", &kValueRole, "sensor_value.loadcalculated"},
    {ElementKind::Gauge, "Gauge", kGaugeKeys, kGaugeLimit, "a value as a needle", &kValueRole,
     "sensor_rpm.engine"},
    {ElementKind::List, "List", kListKeys, kMostElements, "a list of entries", &kListRole,
     "troublecodes"},
    {ElementKind::Label, "Label", kLabelKeys, kLabelLimit, "a text", &kCaptionRole, "text"},
    {ElementKind::Textbox, "Textbox", kTextboxKeys, kMostElements, "a text to edit", &kTextboxRole,
     "searchstring"},
    {ElementKind::Image, "Image", kImageKeys, kMostElements, "a picture", &kPictureRole, "picture"},
    {ElementKind::Chart, "Chart", kChartKeys, kChartLimit, "a value over time", &kValueRole,
     "sensor_speed"},
};

constexpr SectionKey kGeneralKeys[] = {
    {"Imagefolder", Text, "night", "folder of the pictures, in the skins folder"},
    {"Width", Integer, "800", "width of the design; the page is scaled to the screen"},
    {"Height", Integer, "480", "height of the design"},
    {"Menu#", Text, "dashboard", "a page of the menu list, for `openmenu_+` and `openmenu_-`",
     kLastCommonObject},
};

constexpr SectionKey kPageKeys[] = {
    {"Command", Text, "obd_gettroublecodes", "command that runs whenever the page is built", 0,
     &kCommandRole},
    {"BackgroundX", Integer, "80", "left edge of the page when it is opened as a box"},
    {"BackgroundY", Integer, "60", "its top edge"},
    {"CommonObjects#", Text, "status",
     "a shared section, whose elements come before those of the page", kLastCommonObject},
};

constexpr int kLastAnswer = 2;

constexpr SectionKey kMessageKeys[] = {
    {"Background", Picture, "box.png", "picture of the box; the box takes its size"},
    {"Label0X", Integer, "30", "left edge of the message"},
    {"Label0Y", Integer, "30", "top edge of the message"},
    {"Label0Width", Integer, "500", "width of the message"},
    {"Label0Height", Integer, "120", "height of the message"},
    {"Label0Font", Text, "DejaVu Sans", "font of the message"},
    {"Label0FontSize", Integer, "16", "its size in points"},
    {"Label0Alignment", Integer, "2", "0 left, 1 right, 2 centre"},
    {"Label0Color", Lenient, "&HFFFFFF", "its colour"},
    {"Button#Function", Text, "yes", "the answer that the button gives", kLastAnswer, &kAnswerRole},
    {"Button#X", Integer, "60", "left edge of the button in the box", kLastAnswer},
    {"Button#Y", Integer, "180", "top edge of the button in the box", kLastAnswer},
    {"Button#Up", Picture, "yes-up.png", "picture of the released state", kLastAnswer},
    {"Button#Over", Picture, "yes-over.png", "picture while the pointer is over it", kLastAnswer},
    {"Button#Down", Picture, "yes-down.png", "picture while it is pressed", kLastAnswer},
};

constexpr const char* kMessageSections[] = {"warning", "info", "query"};

}  // namespace

std::span<const SkinKind> SkinKinds() {
    return kKinds;
}

const SkinKind& KindOf(ElementKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

std::span<const SectionKey> GeneralKeys() {
    return kGeneralKeys;
}

std::span<const SectionKey> PageKeys() {
    return kPageKeys;
}

std::span<const SectionKey> MessageKeys() {
    return kMessageKeys;
}

std::span<const char* const> MessageSections() {
    return kMessageSections;
}

}  // namespace dravik
