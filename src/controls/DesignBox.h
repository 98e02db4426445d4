#pragma once

#include <QRect>
#include <QtGlobal>

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
        const int left = qRound(X * Scale);
        const int top = qRound(Y * Scale);
        return QRect(left, top, qRound((X + Width) * Scale) - left,
                     qRound((Y + Height) * Scale) - top);
    }

    /// A part of the control, given relative to the control's corner in design pixels, in window
    /// pixels relative to the same corner. Edges are rounded on the page, like those of Pixels.
    QRect Part(double x, double y, double width, double height) const {
        const DesignBox part{X + x, Y + y, width, height, Scale};
        return part.Pixels().translated(-qRound(X * Scale), -qRound(Y * Scale));
    }
};

}  // namespace dravik
