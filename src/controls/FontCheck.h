#pragma once

#include <string>

namespace dravik {

/// Whether the system or a loaded font file has a font of that name; the empty name stands for the
/// font of the program, which is always there. Needs no display.
bool HasFont(const std::string& name);

/// What a text is to be measured in.
struct MeasuredFont {
    std::string Name;
    int Points = 0;  ///< 0 or less: the size of an element that states none
    bool Bold = false;
    bool Italic = false;
};

/// How wide a text becomes in design pixels, at the scale of the page at which it is widest. Of a
/// text of several lines the widest line counts. Needs no display.
double TextWidth(const std::string& text, const MeasuredFont& font);

/// How many lines a text has when it is wrapped at words into that width. Needs no display.
int WrappedLines(const std::string& text, const MeasuredFont& font, int width);

}  // namespace dravik
