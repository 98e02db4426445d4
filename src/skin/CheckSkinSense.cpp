#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/Text.h"
#include "skin/CheckSkinParts.h"

namespace dravik {

using std::string;

/// Values that are well written but show nothing.
void SkinFindings::CheckSense(const SkinElement& element) {
    const SkinKind& kind = KindOf(element.Kind);
    const auto add = [&](const char* key, const string& text) {
        Add(element.Section, ElementKey(kind, element.Number, key), text);
    };
    const auto isText = [](const string& function) { return EqualsNoCase(function, kTextWord); };
    switch (element.Kind) {
        case ElementKind::Button:
            if (element.Up.empty()) add("Up", "without this picture the button has no size");
            if (!element.LabelCaption.empty() && !isText(element.LabelFunction))
                add("LabelCaption", "is shown with LabelFunction=text only");
            break;
        case ElementKind::Slider:
            if (element.Background.empty())
                add("Background", "without this picture the slider has no size");
            break;
        case ElementKind::Bargraph:
            if (element.Background.empty())
                add("Background", "without this picture the bar has no size");
            if (element.Min == element.Max) add("Max", "equal to Min, so the bar never moves");
            break;
        case ElementKind::Gauge:
            if (element.Min == element.Max) add("Max", "equal to Min, so the needle never moves");
            if (element.RadiusStart == element.RadiusEnd)
                add("RadiusEnd", "equal to RadiusStart, so the needle has no length");
            if (element.StretchY == 0) add("StretchY", "0 is a flat dial; 100 is a round one");
            break;
        case ElementKind::Label:
            if (!element.Caption.empty() && !isText(element.Function))
                add("Caption", "is shown with Function=text only");
            break;
        case ElementKind::List:
            for (const char* style : {"Bold", "Italic", "BoldItalic"}) {
                if (EqualsNoCase(element.FontStyle, style) && element.FontStyle != style)
                    add("FontStyle", string("counts as ") + style + " in this spelling only");
            }
            [[fallthrough]];
        case ElementKind::Textbox:
            if (element.Width <= 0) add("Width", "without a width nothing is seen");
            if (element.Height <= 0) add("Height", "without a height nothing is seen");
            break;
        case ElementKind::Image:
            if (element.Picture.empty() && !EqualsNoCase(element.Function, kEntryWord))
                add("Picture", "without this picture nothing is seen");
            break;
        case ElementKind::Chart:
            break;
    }
}

/// An element of which no pixel is on the page. Only a skin that states its size has an edge.
void SkinFindings::CheckPlace(const SkinElement& element) {
    const int pageWidth = ReadSkinInteger("General", "Width");
    const int pageHeight = ReadSkinInteger("General", "Height");
    if (pageWidth <= 0 || pageHeight <= 0) return;
    const bool needle = element.Kind == ElementKind::Gauge;
    const bool hasPicture = !element.Up.empty() || !element.Background.empty();
    PictureFacts picture;
    if (hasPicture)
        picture = FactsOfPicture(element.Up.empty() ? element.Background : element.Up).first;
    // How far it reaches from its place, to the left and above, and to the right and below. What
    // takes its size from elsewhere counts as reaching far.
    const std::int64_t reach = std::max(std::abs(std::int64_t{element.RadiusStart}),
                                        std::abs(std::int64_t{element.RadiusEnd}));
    const auto check = [&](const char* key, int place, int size, int page) {
        const std::int64_t before = needle ? reach : 0;
        const std::int64_t after = needle ? reach : size > 0 ? size : page;
        if (place - before < page && place + after > 0) return;
        Add(element.Section, ElementKey(KindOf(element.Kind), element.Number, key),
            "lies off the page of " + std::to_string(pageWidth) + " by " +
                std::to_string(pageHeight));
    };
    check("X", element.X, hasPicture ? picture.Width : element.Width, pageWidth);
    check("Y", element.Y, hasPicture ? picture.Height : element.Height, pageHeight);
}

}  // namespace dravik
