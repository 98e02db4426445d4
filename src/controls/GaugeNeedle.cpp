#include "controls/GaugeNeedle.h"

#include <QLineF>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "controls/SkinText.h"

namespace dravik {

namespace {

constexpr double kDegreesPerRadian = 57.3;  ///< dials are drawn for this value, not for 57.2958
constexpr double kFarAway = 1e5;            ///< beyond any screen, within what a painter can take

constexpr Qt::PenStyle kLineStyles[] = {
    Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine,
};

Qt::PenStyle LineStyle(std::int32_t style) {
    const bool known = style >= 0 && style < static_cast<std::int32_t>(std::size(kLineStyles));
    return known ? kLineStyles[style] : Qt::SolidLine;
}

double PenWidth(const NeedleLook& look, double scale) {
    return std::clamp(std::max(look.Width, 1) * scale, 1.0, kFarAway);
}

QLineF OnScreen(const NeedleLine& line, double scale) {
    const auto place = [scale](double x) { return std::clamp(x * scale, -kFarAway, kFarAway); };
    return QLineF(place(line.X1), place(line.Y1), place(line.X2), place(line.Y2));
}

}  // namespace

std::optional<NeedleLine> NeedleGeometry(const NeedleDial& dial, float value) {
    if (dial.Max == dial.Min || !std::isfinite(value)) return std::nullopt;
    const float ratio = (value - static_cast<float>(dial.Min)) /
                        (static_cast<float>(dial.Max) - static_cast<float>(dial.Min));
    const double sweep = double(dial.AngleEnd) - dial.AngleStart;
    const double angle = dial.AngleStart + sweep * double{ratio};
    if (!std::isfinite(angle)) return std::nullopt;
    const double a = angle / kDegreesPerRadian;
    const double acrossX = -std::sin(a);
    const double acrossY = std::cos(a) * dial.StretchY / 100.0;
    return NeedleLine{
        dial.X + acrossX * dial.RadiusStart,
        dial.Y + acrossY * dial.RadiusStart,
        dial.X + acrossX * dial.RadiusEnd,
        dial.Y + acrossY * dial.RadiusEnd,
    };
}

void PaintNeedle(QPainter& painter, const NeedleLine& line, const NeedleLook& look, double scale) {
    // Dashes end flat, or the round ends of a wide line would close the gaps.
    const Qt::PenStyle style = LineStyle(look.Style);
    const Qt::PenCapStyle cap = style == Qt::SolidLine ? Qt::RoundCap : Qt::FlatCap;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    const double width = PenWidth(look, scale);
    painter.setPen(QPen(SkinColor(look.Color), width, style, cap));
    // The middle of an odd number of pixels is the middle of a pixel, not the edge between two.
    if (std::lround(width) % 2 != 0) painter.translate(0.5, 0.5);
    painter.drawLine(OnScreen(line, scale));
    painter.restore();
}

QRect NeedleBounds(const NeedleLine& line, const NeedleLook& look, double scale) {
    const QLineF onScreen = OnScreen(line, scale);
    const double margin = PenWidth(look, scale) / 2 + 1;
    return QRectF(onScreen.p1(), onScreen.p2())
        .normalized()
        .adjusted(-margin, -margin, margin, margin)
        .toAlignedRect();
}

}  // namespace dravik
