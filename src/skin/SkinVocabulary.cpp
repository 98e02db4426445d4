#include "skin/SkinVocabulary.h"

#include "platform/At.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SectionKey kGeneralKeys[] = {
    {"Imagefolder", Text, {}, "night", "folder of the pictures, in the skins folder"},
    {"Width", Integer, &E::Width, "800", "width of the design; the page is scaled to the screen"},
    {"Height", Integer, &E::Height, "480",
     "height of the design; a skin higher than wide is one for screens that stand upright"},
    {"Look", Text, {}, "day", "`day`: the settings dialog is light, as the skin is; else dark"},
    {"Menu#",
     Text,
     {},
     "dashboard",
     "a page of the menu list, for `openmenu_+` and `openmenu_-`",
     kLastCommonObject},
};

constexpr SectionKey kPageKeys[] = {
    {"Command", Text, &E::Function, "obd_gettroublecodes",
     "command that runs whenever the page is built", 0, &kCommandRole},
    {"BackgroundX", Integer, &E::X, "80", "left edge of the page when it is opened as a box"},
    {"BackgroundY", Integer, &E::Y, "60", "its top edge"},
    {"CommonObjects#", Text, &E::Section, "status",
     "a shared section, whose elements come before those of the page", kLastCommonObject},
};

constexpr SectionKey kMessageKeys[] = {
    {"Background", Picture, &E::Background, "box.png",
     "picture of the box; the box takes its size"},
    {"Dim", Integer, &E::Dim, "50", "percent by which the page beneath is darkened"},
    {"Label0Function", Text, &E::LabelFunction, kMessageWord,
     "`word_message`: the message in the user's language; without it, as the program words it", 0,
     &kMessageRole},
    {"Label0X", Integer, &E::X, "30", "left edge of the message"},
    {"Label0Y", Integer, &E::Y, "30", "top edge of the message"},
    {"Label0Width", Integer, &E::Width, "500", "width of the message"},
    {"Label0Height", Integer, &E::Height, "120", "height of the message"},
    {"Label0Font", Font, &E::Font, "DejaVu Sans", "font of the message"},
    {"Label0FontSize", Integer, &E::FontSize, "16", "its size in points"},
    {"Label0Alignment", Integer, &E::Alignment, "2", "0 left, 1 right, 2 centre"},
    {"Label0Color", Lenient, &E::Color, "&HFFFFFF", "its colour"},
    {"Button#Function", Text, &E::Function, "yes", "the answer that the button gives", kLastAnswer,
     &kAnswerRole},
    {"Button#X", Integer, &E::X, "60", "left edge of the button in the box", kLastAnswer},
    {"Button#Y", Integer, &E::Y, "180", "top edge of the button in the box", kLastAnswer},
    {"Button#Up", Picture, &E::Up, "yes-up.png", "picture of the released state", kLastAnswer},
    {"Button#Over", Picture, &E::Over, "yes-over.png", "picture while the pointer is over it",
     kLastAnswer},
    {"Button#Down", Picture, &E::Down, "yes-down.png", "picture while it is pressed", kLastAnswer},
    {"Button#LabelFunction", Text, &E::LabelFunction, "word_Yes",
     "its caption; without it, the pictures say it all", kLastAnswer, &kAnswerCaptionRole},
    {"Button#LabelX", Integer, &E::LabelX, "8", "left edge of the caption inside the button",
     kLastAnswer},
    {"Button#LabelY", Integer, &E::LabelY, "22", "top edge of the caption inside the button",
     kLastAnswer},
    {"Button#LabelWidth", Integer, &E::LabelWidth, "194", "width of the caption", kLastAnswer},
    {"Button#LabelHeight", Integer, &E::LabelHeight, "36", "height of the caption", kLastAnswer},
    {"Button#LabelAlignment", Integer, &E::LabelAlignment, "2", "0 left, 1 right, 2 centre",
     kLastAnswer},
    {"Button#LabelFontSize", Integer, &E::LabelFontSize, "18", "size of the caption in points",
     kLastAnswer},
    {"Button#LabelFont", Font, &E::LabelFont, "DejaVu Sans", "font of the caption", kLastAnswer},
    {"Button#LabelFontStyle", Text, &E::LabelFontStyle, "Bold",
     "Bold, Italic or BoldItalic, else regular", kLastAnswer},
    {"Button#LabelColor", Lenient, &E::LabelColor, "&HFFFFFF", "colour of the caption",
     kLastAnswer},
};

constexpr const char* kMessageSections[] = {"warning", "info", "query"};

}  // namespace

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

const char* MessageSection(int kind) {
    return At(kMessageSections, kind);
}

}  // namespace dravik
