#pragma once

#include <QRect>
#include <QtGlobal>
#include <algorithm>

namespace dravik {

/// Where a control lies in the skin's own pixels, and the factor at which the page is shown.
///
/// Edges are rounded, not sizes, so that controls which touch in the skin touch at every scale.
struct DesignBox {
    double X = 0;
    double Y = 0;
    double Width = 0;
    double Height = 0;
    double Scale = 1;

    /// The rectangle in window pixels, relative to the parent.
    QRect Pixels() const {
        const int left = Edge(X);
        const int top = Edge(Y);
        return QRect(left, top, Edge(X + Width) - left, Edge(Y + Height) - top);
    }

    /// A part of the control, given relative to the control's corner in design pixels, in window
    /// pixels relative to the same corner. Edges are rounded on the page, like those of Pixels.
    QRect Part(double x, double y, double width, double height) const {
        const DesignBox part{X + x, Y + y, width, height, Scale};
        return part.Pixels().translated(-Edge(X), -Edge(Y));
    }

 private:
    /// Whatever a skin states, an edge stays within what the window system can take.
    int Edge(double design) const {
        constexpr double kFarAway = 1 << 20;
        return qRound(std::clamp(design * Scale, -kFarAway, kFarAway));
    }
};

}  // namespace dravik
