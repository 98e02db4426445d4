#include "controls/SkinText.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "platform/Text.h"

namespace dravik {

namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;
constexpr std::size_t kFontLimit = 256;  ///< a skin uses a few; a scale or skin change brings more

std::unordered_map<std::string, QFont>& Fonts() {
    static std::unordered_map<std::string, QFont> fonts;
    return fonts;
}

QFont MakeFont(const TextLook& look, int pixels) {
    QFont font = look.Font.empty() ? QApplication::font() : QFont(ShownText(look.Font));
    font.setPixelSize(pixels);
    font.setBold(look.Bold);
    font.setItalic(look.Italic);
    return font;
}

}  // namespace

QColor SkinColor(std::int32_t value) {
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}

QFont SkinFont(const TextLook& look, double scale) {
    const double points = look.Points > 0 ? look.Points : kDefaultPoints;
    const int pixels = static_cast<int>(
        std::lround(std::clamp(points * kPixelsPerPoint * scale, 1.0, double{kMaxFontPixels})));
    const std::string key =
        std::to_string(pixels) + (look.Bold ? 'B' : ' ') + (look.Italic ? 'I' : ' ') + look.Font;
    auto& fonts = Fonts();
    const auto found = fonts.find(key);
    if (found != fonts.end()) return found->second;
    if (fonts.size() >= kFontLimit) fonts.clear();
    return fonts[key] = MakeFont(look, pixels);
}

void ForgetSkinFonts() {
    Fonts().clear();
}

Qt::Alignment SkinAlignment(int alignment) {
    if (alignment == 1) return Qt::AlignRight;
    if (alignment == 2) return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

QString ShownText(std::string_view bytes) {
    QString text = QString::fromUtf8(ToUtf8(bytes));
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

void PaintText(QPainter& painter, const QRect& rectangle, const QString& text, const TextLook& look,
               double scale) {
    if (text.isEmpty() || rectangle.isEmpty()) return;
    painter.setFont(SkinFont(look, scale));
    painter.setPen(SkinColor(look.Color));
    painter.drawText(rectangle, int(SkinAlignment(look.Alignment) | Qt::AlignTop), text);
}

QString WrapText(const QString& text, double width, int lines, const QFont& font) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QStringList wrapped;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout layout(paragraph, font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            if (wrapped.size() == lines - 1) {
                wrapped += QFontMetricsF(font).elidedText(paragraph.mid(line.textStart()),
                                                          Qt::ElideRight, width);
                return wrapped.join(QLatin1Char('\n'));
            }
            wrapped += paragraph.mid(line.textStart(), line.textLength()).trimmed();
        }
        layout.endLayout();
    }
    return wrapped.join(QLatin1Char('\n'));
}

// Fitted texts
// -------------------------------------------------------------------------------------

namespace {

QTextOption Wrapping(Qt::Alignment alignment) {
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

/// The text with only so many of its characters, half of them from either end.
QString WithoutMiddle(const QString& text, qsizetype kept) {
    return text.left(kept / 2) + QStringLiteral(" ... ") + text.right(kept - kept / 2);
}

}  // namespace

double WrappedHeight(const QString& text, const QFont& font, double width) {
    constexpr double kEndless = 1e6;
    QImage paper(1, 1, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&paper);
    painter.setFont(font);
    return painter.boundingRect(QRectF(0, 0, width, kEndless), text, Wrapping(Qt::AlignLeft))
        .height();
}

FittedText FitText(const QString& text, QSizeF area, const TextLook& look, double scale) {
    FittedText fitted{text, SkinFont(look, scale)};
    const auto fits = [&area](const FittedText& tried) {
        return WrappedHeight(tried.Text, tried.Font, area.width()) <= area.height();
    };
    while (!fits(fitted) && fitted.Font.pixelSize() > kLeastFontPixels)
        fitted.Font.setPixelSize(fitted.Font.pixelSize() - 1);
    if (fits(fitted)) return fitted;
    qsizetype most = text.size();  // the most characters that fit lie below this
    for (qsizetype least = 0; least + 1 < most;) {
        const qsizetype kept = (least + most) / 2;
        fitted.Text = WithoutMiddle(text, kept);
        (fits(fitted) ? least : most) = kept;
    }
    fitted.Text = WithoutMiddle(text, std::max<qsizetype>(most - 1, 0));
    return fitted;
}

void PaintFitted(QPainter& painter, const QRect& area, const FittedText& text,
                 Qt::Alignment alignment) {
    painter.setFont(text.Font);
    painter.drawText(QRectF(area), text.Text, Wrapping(alignment));
}

double PlainScale(QSize window) {
    constexpr double kWidth = 800;
    constexpr double kHeight = 480;
    constexpr double kLeast = 0.7;
    return std::max(std::min(window.width() / kWidth, window.height() / kHeight), kLeast);
}

}  // namespace dravik
