#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QSizeF>
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

/// The font of a look on a page shown at `scale`, at least one pixel high. Looked up once, then
/// kept.
QFont SkinFont(const TextLook& look, double scale);

/// Has the fonts looked up anew: there are more than before.
void ForgetSkinFonts();

/// 0 left, 1 right, 2 centre; anything else is left.
Qt::Alignment SkinAlignment(int alignment);

/// Bytes of a skin or of the program as text to show: UTF-8, otherwise Windows-1252.
QString ShownText(std::string_view bytes);

/// Draws text at the top of a rectangle given in window pixels. It breaks only at its own line
/// breaks and is clipped at the rectangle.
void PaintText(QPainter& painter, const QRect& rectangle, const QString& text, const TextLook& look,
               double scale);

/// A text broken at words into lines of at most that width in window pixels; of what is left when
/// the lines are full the beginning is kept, with "..." behind it.
QString WrapText(const QString& text, double width, int lines, const QFont& font);

/// A text in the form in which it fits somewhere.
struct FittedText {
    QString Text;
    QFont Font;
};

/// Height of a text that is wrapped at that width, in window pixels. A word that is longer than the
/// line wraps anywhere.
double WrappedHeight(const QString& text, const QFont& font, double width);

/// Makes a text fit into an area of that size in window pixels: it is wrapped, then set in a
/// smaller font down to kLeastFontPixels, and at last loses its middle. Its end stays, since a
/// message about a file ends in the file's name.
FittedText FitText(const QString& text, QSizeF area, const TextLook& look, double scale);

/// Draws a fitted text into the area that it was fitted to.
void PaintFitted(QPainter& painter, const QRect& area, const FittedText& text,
                 Qt::Alignment alignment);

/// The scale of what the program itself writes, without a skin, in a window of that size: it grows
/// with the window, and in a small one stays large enough for eyes and fingers. A design pixel is
/// then that of a window of 800 x 480.
double PlainScale(QSize window);

constexpr int kLeastFontPixels = 10;  ///< a text that is fitted is not made smaller

}  // namespace dravik
