#include "controls/ChartTrace.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/At.h"

namespace dravik {

namespace {

constexpr int kScaleDivisions = 4;
constexpr double kSmallestStep = 0.1;  ///< the labels show one decimal
constexpr float kNoSample = std::numeric_limits<float>::quiet_NaN();
constexpr double kNoiseShare = 1 / 100.0;  ///< a smaller part of the value is not spread out

/// The next of 1, 2, 5, 10, ... (times a power of ten) that is not below `value`.
double RoundStep(double value) {
    if (!(value > kSmallestStep)) return kSmallestStep;
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= value) return factor * power;
    }
    return 10 * power;
}

float ToFloat(double value) {
    constexpr double kHighest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -kHighest, kHighest));
}

/// Puts the scale's labels on whole steps around all values shown. Without any they stay.
void UpdateScale(ChartRecord& record) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (int i = kChartColumns - record.Filled; i < kChartColumns; ++i) {
        const double value = double{At(record.Samples, i)};
        if (value < low) low = value;
        if (value > high) high = value;
    }
    if (low > high) return;
    const double step =
        std::max(RoundStep((high - low) / kScaleDivisions),
                 RoundStep(std::max(std::fabs(low), std::fabs(high)) * kNoiseShare));
    double lower = std::floor(low / step) * step;
    double upper = std::ceil(high / step) * step;
    if (upper - lower < step / 2) {
        lower -= step;
        upper += step;
    }
    record.Samples[kChartUpper] = ToFloat(upper);
    record.Samples[kChartLower] = ToFloat(lower);
}

/// A new time span empties the chart.
void UseSpan(ChartRecord& record, std::int32_t timeSpanSeconds) {
    const int span = ChartSeconds(timeSpanSeconds);
    if (span == record.TimeSpan) return;
    ClearChart(record);
    record.TimeSpan = span;
}

double ColumnSeconds(const ChartRecord& record) {
    return double{static_cast<float>(record.TimeSpan)} / kChartColumns;
}

std::int64_t ColumnAt(const ChartRecord& record, double seconds) {
    return static_cast<std::int64_t>(std::floor(seconds / ColumnSeconds(record)));
}

/// Moves the columns on to the one given, which stays to be filled.
/// @param between  the sample of a passed column, by its distance from the newest
template <typename Sample>
void Scroll(ChartRecord& record, std::int64_t column, const Sample& between) {
    const auto columns = record.Samples.begin();
    const int steps =
        static_cast<int>(std::clamp<std::int64_t>(column - record.Column, 0, kChartColumns));
    std::move(columns + steps, columns + kChartColumns, columns);
    for (int back = steps - 1; back > 0; --back)
        At(record.Samples, kChartColumns - 1 - back) = between(back);
    record.Filled = std::min(record.Filled + steps, kChartColumns);
}

}  // namespace

int ChartSeconds(std::int32_t timeKey) {
    return timeKey > 0 ? timeKey : kDefaultChartSeconds;
}

void AddSample(ChartRecord& record, float value, double nowSeconds, std::int32_t timeSpanSeconds) {
    if (record.Paused || !std::isfinite(value)) return;
    UseSpan(record, timeSpanSeconds);
    const std::int64_t column = ColumnAt(record, nowSeconds);
    if (record.Filled == 0) {
        record.Filled = 1;
    } else {
        const double elapsed = nowSeconds - record.LastTime;
        const double rise = double{value} - double{record.LastValue};
        Scroll(record, column, [&](int back) {
            const double time = static_cast<double>(column - back) * ColumnSeconds(record);
            const double share = std::clamp((time - record.LastTime) / elapsed, 0.0, 1.0);
            return ToFloat(double{record.LastValue} + rise * share);
        });
    }
    // Between two columns, the newest column follows the value.
    record.Samples[kChartColumns - 1] = value;
    record.Column = column;
    record.LastTime = nowSeconds;
    record.LastValue = value;
    UpdateScale(record);
    ++record.Changes;
}

void AddGap(ChartRecord& record, double nowSeconds, std::int32_t timeSpanSeconds) {
    if (record.Paused) return;
    UseSpan(record, timeSpanSeconds);
    if (record.Filled == 0) return;
    const std::int64_t column = ColumnAt(record, nowSeconds);
    record.LastTime = nowSeconds;
    record.LastValue = kNoSample;
    if (column <= record.Column) return;
    Scroll(record, column, [](int) { return kNoSample; });
    record.Samples[kChartColumns - 1] = kNoSample;
    record.Column = column;
    UpdateScale(record);
    ++record.Changes;
}

void ClearChart(ChartRecord& record) {
    ChartRecord empty;
    empty.Paused = record.Paused;
    empty.TimeSpan = record.TimeSpan;
    empty.Changes = record.Changes + 1;
    record = empty;
}

}  // namespace dravik
