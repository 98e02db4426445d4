#include "controls/ChartTrace.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/At.h"

namespace dravik {

namespace {

constexpr int kScaleDivisions = 4;
constexpr double kSmallestStep = 0.1;      ///< the labels show one decimal
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

/// Puts the scale's labels on whole steps around all values shown.
void UpdateScale(ChartRecord& record) {
    const auto end = record.Samples.begin() + kChartColumns;
    const auto [lowest, highest] = std::minmax_element(end - record.Filled, end);
    const double low = double{*lowest};
    const double high = double{*highest};
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

}  // namespace

int ChartSeconds(std::int32_t timeKey) {
    return timeKey > 0 ? timeKey : kDefaultChartSeconds;
}

void AddSample(ChartRecord& record, float value, double nowSeconds, std::int32_t timeSpanSeconds) {
    if (record.Paused || !std::isfinite(value)) return;
    const int span = ChartSeconds(timeSpanSeconds);
    if (span != record.TimeSpan) {
        ClearChart(record);
        record.TimeSpan = span;
    }
    const double columnSeconds = double{static_cast<float>(span)} / kChartColumns;
    const auto column = static_cast<std::int64_t>(std::floor(nowSeconds / columnSeconds));
    const auto columns = record.Samples.begin();
    if (record.Filled == 0) {
        record.Filled = 1;
    } else {
        const auto passed = std::clamp<std::int64_t>(column - record.Column, 0, kChartColumns);
        const int steps = static_cast<int>(passed);
        std::move(columns + steps, columns + kChartColumns, columns);
        const double elapsed = nowSeconds - record.LastTime;
        const double rise = double{value} - double{record.LastValue};
        for (int back = steps - 1; back > 0; --back) {
            const double time = static_cast<double>(column - back) * columnSeconds;
            const double share = std::clamp((time - record.LastTime) / elapsed, 0.0, 1.0);
            At(record.Samples, kChartColumns - 1 - back) =
                ToFloat(double{record.LastValue} + rise * share);
        }
        record.Filled = std::min(record.Filled + steps, kChartColumns);
    }
    // Between two columns, the newest column follows the value.
    record.Samples[kChartColumns - 1] = value;
    record.Column = column;
    record.LastTime = nowSeconds;
    record.LastValue = value;
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
