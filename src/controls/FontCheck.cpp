#include "controls/FontCheck.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <algorithm>
#include <limits>

#include "controls/SkinText.h"

namespace dravik {

namespace {

/// On a small page every character takes whole pixels; on a large one the text has its true width.
constexpr double kSmall = 1;
constexpr double kLarge = 8;

TextLook LookOf(const MeasuredFont& font) {
    return {font.Name, static_cast<double>(font.Points), 0, 0, font.Bold, font.Italic};
}

double WidestLine(const QString& text, const QFont& font) {
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return widest;
}

}  // namespace

bool HasFont(const std::string& name) {
    return name.empty() || QFontDatabase::hasFamily(ShownText(name));
}

double TextWidth(const std::string& text, const MeasuredFont& font) {
    const QString shown = ShownText(text);
    const QFont small = SkinFont(LookOf(font), kSmall);
    const QFont large = SkinFont(LookOf(font), kLarge);
    const double shrink = static_cast<double>(small.pixelSize()) / large.pixelSize();
    return std::max(WidestLine(shown, small), WidestLine(shown, large) * shrink);
}

int WrappedLines(const std::string& text, const MeasuredFont& font, int width) {
    constexpr int kAny = std::numeric_limits<int>::max();
    const QFont small = SkinFont(LookOf(font), kSmall);
    return 1 +
           static_cast<int>(WrapText(ShownText(text), width, kAny, small).count(QLatin1Char('\n')));
}

}  // namespace dravik
