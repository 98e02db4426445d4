#include <QFontMetrics>
#include <QPainter>
#include <QPointF>
#include <QPolygonF>
#include <QVector>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "controls/ChartTrace.h"
#include "controls/SkinText.h"
#include "core/basGlobal.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr double kDefaultHeight = 200;  ///< of a chart without a background picture
constexpr int kGridColumns = 6;
constexpr int kGridRows = 4;
constexpr double kLabelPoints = 11;
constexpr double kLabelGap = 4;  ///< design pixels between a label and the chart's edge
constexpr double kPointSize = 2;
constexpr double kTraceWidth = 2;  ///< design pixels; seen at arm's length, unlike a hair line
constexpr int kAreaOpacity = 110;  ///< of 255; the grid stays visible through the area

constexpr std::int32_t kArea = 1;  ///< ChartLook::Mode
constexpr std::int32_t kPoints = 2;

struct ChartLayout {
    QRect Plot;   ///< grid and trace
    QRect Upper;  ///< for the labels of the scale
    QRect Lower;
    QRect Span;  ///< for the time span
};

QString SpanText(const ChartLook& look) {
    return QStringLiteral("< %1s >").arg(ChartSeconds(look.Time));
}

/// The labels have strips above and below the plot. Where a page has chosen their size and the
/// strips would leave little of a low chart, the labels stand in a column beside the plot.
ChartLayout LayOut(const QRect& target, const ChartLook& look, const TextLook& label,
                   double scale) {
    constexpr int kMostForStrips = 3;  // the part of the height
    const QFontMetrics metrics(SkinFont(label, scale));
    const int strip = metrics.height() + qRound(scale);
    const int gap = qRound(kLabelGap * scale);
    const QRect inner = target.adjusted(gap, qRound(scale), -gap, -qRound(scale));
    const QRect upper(inner.left(), inner.top(), inner.width(), strip);
    const QRect lower(inner.left(), inner.bottom() + 1 - strip, inner.width(), strip);
    const QRect between = inner.adjusted(0, strip, 0, -strip);
    if (look.FontSize <= 0 || 2 * strip * kMostForStrips <= target.height())
        return {between, upper, lower, lower};
    // As wide as the labels of most values, so that the plot stays where it is.
    const int column = gap + std::max(metrics.horizontalAdvance(QStringLiteral("00000.0")),
                                      metrics.horizontalAdvance(SpanText(look)));
    return {inner.adjusted(column, 0, 0, 0), upper, lower,
            QRect(inner.left(), between.center().y() - strip / 2, column - gap, strip)};
}

QString ScaleText(float value) {
    QString text = QString::number(double{value}, 'f', 1);
    if (text == QLatin1String("-0.0")) text = QStringLiteral("0.0");
    return text.replace(QLatin1Char('.'), QString::fromStdString(basGlobal.DecimalSign));
}

int PenPixels(double scale) {
    return std::max(1, qRound(scale));
}

void PaintGrid(QPainter& painter, const QRect& plot, const ChartLook& look, double scale) {
    const double right = plot.width() - 1;
    const double bottom = plot.height() - 1;
    QVector<QLine> lines;
    for (int i = 0; i <= kGridColumns; ++i) {
        const int x = plot.left() + qRound(right * i / kGridColumns);
        lines.append(QLine(x, plot.top(), x, plot.bottom()));
    }
    for (int i = 0; i <= kGridRows; ++i) {
        const int y = plot.top() + qRound(bottom * i / kGridRows);
        lines.append(QLine(plot.left(), y, plot.right(), y));
    }
    painter.setPen(QPen(SkinColor(look.GridColor), PenPixels(scale)));
    painter.drawLines(lines);
}

/// The filled columns as points of the plot, oldest first: a line for each stretch between gaps.
std::vector<QPolygonF> TraceLines(const QRect& plot, const ChartRecord& record) {
    const double upper = double{record.Samples[kChartUpper]};
    const double lower = double{record.Samples[kChartLower]};
    const double across = (plot.width() - 1) / double{kChartColumns - 1};
    const double up = (plot.height() - 1) / (upper - lower);
    std::vector<QPolygonF> lines;
    bool gap = true;
    for (int i = kChartColumns - record.Filled; i < kChartColumns; ++i) {
        const double value = double{At(record.Samples, i)};
        if (!std::isnan(value)) {
            if (gap) lines.emplace_back().reserve(kChartColumns - i + 2);
            lines.back().append(
                QPointF(plot.left() + i * across, plot.bottom() - (value - lower) * up));
        }
        gap = std::isnan(value);
    }
    return lines;
}

/// A wide line as hair lines side by side: a pen of more than one pixel takes thirty times as long.
void PaintLine(QPainter& painter, const QPolygonF& points, const QColor& color, int pixels) {
    painter.setPen(QPen(color, 1));
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i < pixels; ++i) {
        const double offset = i - (pixels - 1) / 2.0;
        painter.drawPolyline(points.translated(offset, 0));
        if (pixels > 1) painter.drawPolyline(points.translated(0, offset));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PaintStretch(QPainter& painter, const QRect& plot, QPolygonF points, const ChartLook& look,
                  double scale) {
    const QColor color = SkinColor(look.Color);
    if (look.Mode == kPoints || points.size() == 1) {
        painter.setPen(QPen(color, kPointSize * scale));
        painter.drawPoints(points);
        return;
    }
    PaintLine(painter, points, color, std::max(1, qRound(kTraceWidth * scale)));
    if (look.Mode == kArea) {
        points.append(QPointF(points.last().x(), plot.bottom()));
        points.append(QPointF(points.first().x(), plot.bottom()));
        QColor area = color;
        area.setAlpha(kAreaOpacity);
        painter.setPen(Qt::NoPen);
        painter.setBrush(area);
        painter.drawPolygon(points);
    }
}

void PaintTrace(QPainter& painter, const QRect& plot, const ChartRecord& record,
                const ChartLook& look, double scale) {
    for (QPolygonF& points : TraceLines(plot, record))
        PaintStretch(painter, plot, std::move(points), look, scale);
}

}  // namespace

QSizeF ChartSize(const ChartLook& look) {
    return look.Background.IsNull() ? QSizeF(kChartColumns, kDefaultHeight)
                                    : look.Background.DesignSize();
}

void PaintChart(QPainter& painter, const QRect& target, const ChartRecord& record,
                const ChartLook& look, double scale) {
    PaintPicture(painter, target, look.Background);
    const double points = look.FontSize > 0 ? look.FontSize : kLabelPoints;
    TextLook label{look.Font, points, look.Color, 0, false, false};
    const ChartLayout layout = LayOut(target, look, label, scale);
    painter.save();
    painter.setClipRect(target, Qt::IntersectClip);
    if (layout.Plot.width() > 1 && layout.Plot.height() > 1) {
        PaintGrid(painter, layout.Plot, look, scale);
        if (record.Filled > 0) PaintTrace(painter, layout.Plot, record, look, scale);
    }
    if (record.Filled > 0) {
        PaintText(painter, layout.Upper, ScaleText(record.Samples[kChartUpper]), label, scale);
        PaintText(painter, layout.Lower, ScaleText(record.Samples[kChartLower]), label, scale);
    }
    if (layout.Span == layout.Lower) label.Alignment = 2;
    PaintText(painter, layout.Span, SpanText(look), label, scale);
    painter.restore();
}

}  // namespace dravik
