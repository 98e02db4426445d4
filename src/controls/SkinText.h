#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

class QPainter;

namespace dravik {

/// How a text of the skin looks.
struct TextLook {
    std::string Font;        ///< face; empty: that of the application
    double Points = 0;       ///< size at 96 dots per inch; 0 or less: kDefaultPoints
    std::int32_t Color = 0;  ///< low byte red, then green, then blue
    int Alignment = 0;       ///< 0 left, 1 right, 2 centre
    bool Bold = false;
    bool Italic = false;

    friend bool operator==(const TextLook&, const TextLook&) = default;
};

constexpr double kDefaultPoints = 8;  ///< for an element that states no font size
constexpr int kMaxFontPixels = 2000;  ///< larger fonts are shown at this size

/// A colour value of the skin: low byte red, then green, then blue; the top byte is ignored.
QColor SkinColor(std::int32_t value);

/// The colour value written in a text: decimal, or hexadecimal after "&H"; anything that does not
/// begin with a number is 0.
std::int32_t ColorValue(std::string_view text);

/// The font of a look on a page shown at `scale`, at least one pixel high. Looked up once, then
/// kept.
QFont SkinFont(const TextLook& look, double scale);

/// 0 left, 1 right, 2 centre; anything else is left.
Qt::Alignment SkinAlignment(int alignment);

/// Bytes of a skin or of the program as text to show: UTF-8, otherwise Windows-1252.
QString ShownText(std::string_view bytes);

/// Draws text at the top of a rectangle given in window pixels. It breaks only at its own line
/// breaks and is clipped at the rectangle.
void PaintText(QPainter& painter, const QRect& rectangle, const QString& text, const TextLook& look,
               double scale);

}  // namespace dravik
