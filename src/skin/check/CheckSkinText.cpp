#include <cmath>

#include "controls/FontCheck.h"
#include "platform/Text.h"
#include "skin/check/CheckSkinParts.h"

namespace dravik {

using std::string;

namespace {

constexpr int kEndless = 1 << 24;

}  // namespace

/// A missing font is one mistake, not one per text.
void SkinFindings::CheckFont(const string& section, const string& key) {
    const string name = ReadSkinValue(section, key);
    if (!HasFont(name) && missingFonts_.insert(LowerCased(name)).second)
        Add(section, key, "there is no font \"" + name + "\": another one takes its place");
}

/// The width that a text has; endless where that cannot be told.
int SkinFindings::RoomOf(const TextPlace& place, const SkinElement& element) {
    if (place.Width > 0) return place.Width;
    const int edge = place.InPicture ? FactsOfPicture(element.Up).first.Width
                                     : ReadSkinInteger("General", "Width");
    return edge > 0 ? edge - place.X : kEndless;
}

/// A text that is wider than its place loses an end. In a font that is not there nobody can tell.
void SkinFindings::CheckText(const SkinElement& element) {
    if (element.Kind->Text == nullptr) return;
    const TextPlace place = element.Kind->Text(element);
    if (!HasFont(place.Font)) return;
    const int room = RoomOf(place, element);
    const MeasuredFont font{place.Font, place.Points, place.Bold, place.Italic};
    PossibleText widest;
    double most = 0;
    for (PossibleText& text : texts_.Of(place)) {
        const double width = TextWidth(text.Text, font);
        if (width <= most) continue;
        most = width;
        widest = std::move(text);
    }
    if (most <= room) return;
    const int lines = place.Lines > 0 ? WrappedLines(widest.Text, font, room) : 0;
    if (place.Lines > 0 && lines <= place.Lines) return;
    Add(element.Section, ElementKey(*element.Kind, element.Number, place.Key),
        "\"" + widest.Text + "\"" + (widest.Language.empty() ? "" : " (" + widest.Language + ")") +
            " is wider than its " + std::to_string(room) + " pixels: it takes " +
            (lines > 0 ? std::to_string(lines) + " lines"
                       : std::to_string(static_cast<int>(std::ceil(most)))));
}

}  // namespace dravik
