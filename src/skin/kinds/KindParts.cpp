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
