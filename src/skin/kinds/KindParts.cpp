#include "skin/kinds/KindParts.h"

#include "core/basGlobal.h"
#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

SkinPicture PictureReader::Load(const char* key, const std::string& name) {
    SkinPicture picture = LoadSkinPicture(PicturePath(name), screen_.Scale());
    std::string fault = picture.Error();
    if (!screen_.CountPicture(picture)) {
        picture = {};
        fault = "the pictures of the page take more than " +
                std::to_string(screen_.PictureLimit >> 20) + " MB";
    }
    if (!fault.empty() && !error_) error_ = ElementError(element_, key, std::move(fault));
    return picture;
}

void CheckSize(const SkinElement& element, const Complain& complain) {
    if (element.Width <= 0) complain("Width", "without a width nothing is seen");
    if (element.Height <= 0) complain("Height", "without a height nothing is seen");
}

void SetFontStyle(TextLook& look, const std::string& style) {
    const bool both = style == "BoldItalic";
    look.Bold = both || style == "Bold";
    look.Italic = both || style == "Italic";
}

/// "Regular" is no word of its own, but means what it says.
void CheckFontStyle(const char* key, const std::string& style, const Complain& complain) {
    if (style.empty() || EqualsNoCase(style, "Regular")) return;
    std::string fault = " is none of Bold, Italic and BoldItalic; it counts as regular";
    for (const char* known : {"Bold", "Italic", "BoldItalic"}) {
        if (style == known) return;
        if (EqualsNoCase(style, known)) fault = std::string(" counts only when written ") + known;
    }
    complain(key, "\"" + style + "\"" + fault);
}

bool ShowText(ScreenElement& element, std::string text) {
    if (text == element.Shown) return false;
    element.Shown = std::move(text);
    return true;
}

bool ValueUnknown(ScreenElement& element) {
    if (element.Known == 0 || ElementKnown(element.Function)) return false;
    element.Shown.clear();
    return true;
}

std::optional<float> ShowValue(ScreenElement& element) {
    const std::optional<float> value = ElementValue(element.Function);
    if (value) ShowText(element, GeneralNumber(*value));
    return value;
}

}  // namespace dravik
