#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "platform/Text.h"
#include "skin/check/CheckSkinParts.h"

namespace dravik {

using std::string;

namespace {

using E = SkinElement;

struct Range {
    int E::*Field;
    int Last;  ///< the first is 0
};

constexpr int kNoEnd = std::numeric_limits<int>::max();
constexpr Range kRanges[] = {
    {&E::Alignment, 2}, {&E::LabelAlignment, 2}, {&E::Mode, 2},
    {&E::Style, 4},     {&E::FontSize, kNoEnd},  {&E::LabelFontSize, kNoEnd},
    {&E::Time, kNoEnd}, {&E::RowHeight, kNoEnd},
};

}  // namespace

/// Numbers that stand for nothing, or for a size below zero. They count as if they were missing.
void SkinFindings::CheckRanges(const SkinElement& element) {
    const SkinKind& kind = KindOf(element.Kind);
    for (const SkinKey& key : kind.Keys) {
        const auto* field = std::get_if<int E::*>(&key.Field);
        if (field == nullptr) continue;
        for (const Range& range : kRanges) {
            const int value = element.**field;
            if (range.Field != *field || (value >= 0 && value <= range.Last)) continue;
            Add(element.Section, ElementKey(kind, element.Number, key.Name),
                std::to_string(value) +
                    (range.Last == kNoEnd
                         ? " is below 0 and counts as missing"
                         : string(" is none of ") + key.Meaning + "; it counts as 0"));
        }
    }
}

/// Values that are well written but show nothing.
void SkinFindings::CheckSense(const SkinElement& element) {
    const SkinKind& kind = KindOf(element.Kind);
    const auto add = [&](const char* key, const string& text) {
        Add(element.Section, ElementKey(kind, element.Number, key), text);
    };
    const auto isText = [](const string& function) { return EqualsNoCase(function, kTextWord); };
    CheckRanges(element);
    switch (element.Kind) {
        case ElementKind::Button:
            if (element.Up.empty()) add("Up", "without this picture the button has no size");
            if (!element.LabelCaption.empty() && !isText(element.LabelFunction))
                add("LabelCaption", "is shown with LabelFunction=text only");
            if (element.LabelCaption.empty() && isText(element.LabelFunction))
                add("LabelCaption", "is missing, so LabelFunction=text shows nothing");
            if (element.LabelFunction == kTitleWord)
                add("LabelFunction", string(kTitleWord) + " works on a label only");
            if (!element.Down.empty() && element.Over.empty())
                add("Over",
                    "without this picture the one of Down stays after a touch until the pointer "
                    "moves away");
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
            if (element.Caption.empty() && isText(element.Function))
                add("Caption", "is missing, so Function=text shows nothing");
            if (const auto decimals = StrictNumber(element.Decimals);
                !element.Decimals.empty() &&
                (!decimals || *decimals < 0 || *decimals > kMostDecimals))
                add("Decimals", "\"" + element.Decimals + "\" is none of the numbers 0 to " +
                                    std::to_string(kMostDecimals));
            break;
        case ElementKind::List:
            CheckFontStyle(element);
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

/// The style of a list. "Regular" is no word of its own, but means what it says.
void SkinFindings::CheckFontStyle(const SkinElement& element) {
    const string& style = element.FontStyle;
    if (style.empty() || EqualsNoCase(style, "Regular")) return;
    string fault = " is none of Bold, Italic and BoldItalic; it counts as regular";
    for (const char* known : {"Bold", "Italic", "BoldItalic"}) {
        if (style == known) return;
        if (EqualsNoCase(style, known)) fault = string(" counts only when written ") + known;
    }
    Add(element.Section, ElementKey(KindOf(element.Kind), element.Number, "FontStyle"),
        "\"" + style + "\"" + fault);
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
