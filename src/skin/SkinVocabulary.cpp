#include "skin/SkinVocabulary.h"

namespace dravik {

namespace {

using enum Read;

constexpr SectionKey kGeneralKeys[] = {
    {"Imagefolder", Text, "night", "folder of the pictures, in the skins folder"},
    {"Width", Integer, "800", "width of the design; the page is scaled to the screen"},
    {"Height", Integer, "480", "height of the design"},
    {"Look", Text, "day", "`day`: the settings dialog is light, as the skin is; else dark"},
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
    {"Dim", Integer, "50", "percent by which the page beneath is darkened"},
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
