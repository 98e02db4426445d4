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
    const SkinKind& kind = *element.Kind;
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
    const SkinKind& kind = *element.Kind;
    const auto add = [&](const char* key, const string& text) {
        Add(element.Section, ElementKey(kind, element.Number, key), text);
    };
    CheckRanges(element);
    if (kind.Check != nullptr) kind.Check(element, add);
}

/// An element of which no pixel is on the page. Only a skin that states its size has an edge.
void SkinFindings::CheckPlace(const SkinElement& element) {
    const int pageWidth = ReadSkinInteger("General", "Width");
    const int pageHeight = ReadSkinInteger("General", "Height");
    if (pageWidth <= 0 || pageHeight <= 0) return;
    const bool centred = element.Kind->Centred;
    const bool hasPicture = !element.Up.empty() || !element.Background.empty();
    PictureFacts picture;
    if (hasPicture)
        picture = FactsOfPicture(element.Up.empty() ? element.Background : element.Up).first;
    // How far it reaches from its place, to the left and above, and to the right and below. What
    // takes its size from elsewhere counts as reaching far.
    const std::int64_t reach = std::max(std::abs(std::int64_t{element.RadiusStart}),
                                        std::abs(std::int64_t{element.RadiusEnd}));
    const auto check = [&](const char* key, int place, int size, int page) {
        const std::int64_t before = centred ? reach : 0;
        const std::int64_t after = centred ? reach : size > 0 ? size : page;
        if (place - before < page && place + after > 0) return;
        Add(element.Section, ElementKey(*element.Kind, element.Number, key),
            "lies off the page of " + std::to_string(pageWidth) + " by " +
                std::to_string(pageHeight));
    };
    check("X", element.X, hasPicture ? picture.Width : element.Width, pageWidth);
    check("Y", element.Y, hasPicture ? picture.Height : element.Height, pageHeight);
}

}  // namespace dravik
