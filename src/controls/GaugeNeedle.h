#pragma once

#include <QRect>
#include <cstdint>
#include <optional>

class QPainter;

namespace dravik {

/// The dial of a needle, in design pixels and degrees. Angle 0 points straight down from the
/// centre, and growing angles turn the needle clockwise.
struct NeedleDial {
    std::int32_t X = 0;  ///< centre
    std::int32_t Y = 0;
    std::int32_t Min = 0;
    std::int32_t Max = 0;
    std::int32_t AngleStart = 0;  ///< at Min
    std::int32_t AngleEnd = 0;    ///< at Max
    std::int32_t RadiusStart = 0;
    std::int32_t RadiusEnd = 0;
    std::int32_t StretchY = 0;  ///< percent; 100 is a circle
};

struct NeedleLook {
    std::int32_t Width = 1;  ///< below 1 counts as 1
    std::int32_t Color = 0;  ///< low byte red, then green, then blue
    std::int32_t Style = 0;  ///< 0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot, else solid
};

/// End points of a needle in design pixels.
struct NeedleLine {
    double X1 = 0;
    double Y1 = 0;
    double X2 = 0;
    double Y2 = 0;

    friend bool operator==(const NeedleLine&, const NeedleLine&) = default;
};

/// Where the needle stands for a value; a value outside Min to Max turns it beyond its end angles.
/// Nothing when Min equals Max or the value is not finite: the needle stays where it is.
std::optional<NeedleLine> NeedleGeometry(const NeedleDial& dial, float value);

/// Draws the needle on a page shown at `scale`.
void PaintNeedle(QPainter& painter, const NeedleLine& line, const NeedleLook& look, double scale);

/// The window pixels that PaintNeedle can touch.
QRect NeedleBounds(const NeedleLine& line, const NeedleLook& look, double scale);

}  // namespace dravik
