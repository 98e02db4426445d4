#pragma once

#include <QRect>
#include <QSizeF>
#include <cstdint>
#include <string>

#include "controls/PictureCache.h"
#include "core/basGlobal.h"

class QPainter;

namespace dravik {

constexpr int kChartColumns = kChartSamples - 2;  ///< the newest value is in the last column
constexpr int kChartUpper = kChartSamples - 2;    ///< index of the scale's upper label
constexpr int kChartLower = kChartSamples - 1;    ///< index of the scale's lower label
constexpr int kDefaultChartSeconds = 60;          ///< for a chart that states no time span

/// Time span of a chart: seconds as given, kDefaultChartSeconds when they are 0 or less.
int ChartSeconds(std::int32_t timeKey);

/// Takes a value into the chart. The columns stand for equal steps of time; those that lie between
/// the last value and this one are filled along the straight line between the two. The scale's
/// labels follow.
///
/// @param nowSeconds       time of the value, from a clock that only moves forward
/// @param timeSpanSeconds  see ChartSeconds; a new span empties the chart
///
/// A paused record and a value that is not finite change nothing.
void AddSample(ChartRecord& record, float value, double nowSeconds, std::int32_t timeSpanSeconds);

/// Takes into the chart that no value is known now: the trace has a gap from the last value to the
/// next one. A chart without any value stays empty. Otherwise as AddSample.
void AddGap(ChartRecord& record, double nowSeconds, std::int32_t timeSpanSeconds);

/// Empties the chart; it stays paused when it is.
void ClearChart(ChartRecord& record);

struct ChartLook {
    SkinPicture Background;
    std::int32_t Color = 0;  ///< of trace and texts; low byte red, then green, then blue
    std::int32_t GridColor = 0;
    std::int32_t Mode = 0;  ///< 0 line, 1 filled area, 2 points; else line
    std::int32_t Time = 0;  ///< seconds across, see ChartSeconds
    std::string Font = {};  ///< of the texts; empty: that of the application
    int FontSize = 0;       ///< of the texts, in points; 11 when it is 0 or less
};

/// Size of a chart in design pixels: that of its background, or one column a pixel without one.
QSizeF ChartSize(const ChartLook& look);

/// Draws the chart into `target` (window pixels).
void PaintChart(QPainter& painter, const QRect& target, const ChartRecord& record,
                const ChartLook& look, double scale);

}  // namespace dravik
