#include "controls/ChartTrace.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <limits>

#include "ControlWindow.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::IsNan;

constexpr int kSpan = kChartColumns;  // seconds, so that a column is a second

/// The newest `count` columns, oldest first.
std::vector<float> Newest(const ChartRecord& record, int count) {
    return {record.Samples.begin() + kChartColumns - count, record.Samples.begin() + kChartColumns};
}

TEST(ChartTrace, ColumnsBetweenTwoValuesLieOnTheLineBetweenThem) {
    ChartRecord record;
    AddSample(record, 0, 1000, kSpan);
    AddSample(record, 40, 1004, kSpan);
    AddSample(record, 10, 1006, kSpan);
    EXPECT_EQ(record.Filled, 7);
    EXPECT_THAT(Newest(record, 7), ElementsAre(0, 10, 20, 30, 40, 25, 10));
    AddSample(record, 10010, 11006, kSpan);  // a gap longer than the chart
    EXPECT_EQ(record.Filled, kChartColumns);
    EXPECT_FLOAT_EQ(record.Samples[0], 10010 - (kChartColumns - 1));
}

TEST(ChartTrace, TheNewestColumnFollowsValuesThatComeFasterThanColumns) {
    ChartRecord record;
    AddSample(record, 1, 10.1, kSpan);
    AddSample(record, 2, 10.5, kSpan);
    AddSample(record, 3, 10.9, kSpan);
    EXPECT_EQ(record.Filled, 1);
    AddSample(record, 5, 11.2, kSpan);
    EXPECT_THAT(Newest(record, 2), ElementsAre(3, 5));
}

TEST(ChartTrace, AnUnknownValueLeavesAGapThatNoLineCrosses) {
    ChartRecord record;
    AddGap(record, 999, kSpan);
    EXPECT_EQ(record.Filled, 0) << "nothing yet that could end";
    AddSample(record, 20, 1000, kSpan);
    AddGap(record, 1000.5, kSpan);
    AddGap(record, 1002, kSpan);
    AddSample(record, 40, 1004, kSpan);
    AddSample(record, 44, 1006, kSpan);
    EXPECT_THAT(Newest(record, 7), ElementsAre(20, IsNan(), IsNan(), IsNan(), 40, 42, 44));
    EXPECT_FLOAT_EQ(record.Samples[kChartLower], 20);
    record.Paused = true;
    AddGap(record, 1010, kSpan);
    EXPECT_FLOAT_EQ(record.Samples[kChartColumns - 1], 44);
}

TEST(ChartTrace, TheGivenSecondsGoAcross) {
    // A value equal to its time: the oldest column is one time span older than the newest.
    for (const auto& [key, span] : {std::pair{60, 60}, {3, 3}, {0, 60}, {-7, 60}}) {
        ChartRecord record;
        for (int tick = 0; tick <= 1000; ++tick)
            AddSample(record, static_cast<float>(tick * 0.1), tick * 0.1, key);
        EXPECT_EQ(record.Filled, kChartColumns);
        EXPECT_FLOAT_EQ(record.Samples[kChartColumns - 1], 100);
        EXPECT_THAT(record.Samples[0], FloatNear(static_cast<float>(100 - span), 0.2F)) << key;
        EXPECT_THAT(record.Samples[259], FloatNear(static_cast<float>(100 - span / 2.0), 0.2F));
    }
}

TEST(ChartTrace, PausedOrMeaninglessValuesChangeNothing) {
    ChartRecord record;
    AddSample(record, 5, 100, kSpan);
    const int changes = record.Changes;
    AddSample(record, std::nanf(""), 101, kSpan);
    AddSample(record, std::numeric_limits<float>::infinity(), 101, kSpan);
    record.Paused = true;
    AddSample(record, 6, 102, kSpan);
    EXPECT_EQ(record.Changes, changes);
    EXPECT_EQ(record.Filled, 1);
    EXPECT_EQ(record.Samples[kChartColumns - 1], 5);
    ClearChart(record);
    EXPECT_EQ(record.Filled, 0);
    EXPECT_TRUE(record.Paused);
    EXPECT_NE(record.Changes, changes);
}

TEST(ChartTrace, ScaleLiesOnWholeStepsAroundAllValuesShown) {
    const struct {
        float A, B, Upper, Lower;
    } rows[] = {
        {800, 3590, 4000, 0},       {-3, 7, 10, -5},     {83, 91, 92, 82}, {50, 50, 50.5F, 49.5F},
        {0.31F, 0.33F, 0.4F, 0.3F}, {0, 0, 0.1F, -0.1F},
    };
    for (const auto& row : rows) {
        ChartRecord record;
        AddSample(record, row.A, 1, kSpan);
        AddSample(record, row.B, 2, kSpan);
        EXPECT_FLOAT_EQ(record.Samples[kChartUpper], row.Upper) << row.A << " " << row.B;
        EXPECT_FLOAT_EQ(record.Samples[kChartLower], row.Lower) << row.A << " " << row.B;
    }
}

TEST(ChartTrace, ScaleStaysFiniteForTheLargestValues) {
    ChartRecord record;
    const float largest = std::numeric_limits<float>::max();
    AddSample(record, -largest, 1, kSpan);
    AddSample(record, largest, 5, kSpan);
    for (const float sample : record.Samples) EXPECT_TRUE(std::isfinite(sample));
}

QImage Painted(const ChartRecord& record, const ChartLook& look, double scale = 1) {
    const QSizeF size = ChartSize(look) * scale;
    QImage image(size.toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintChart(painter, image.rect(), record, look, scale);
    return image;
}

/// Pixels of the colour in a column.
int Count(const QImage& image, int x, const QColor& color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) count += image.pixelColor(x, y) == color ? 1 : 0;
    return count;
}

TEST(ChartPaint, DrawsTheTraceFromTheRightInItsMode) {
    ChartRecord record;
    for (int i = 0; i < 130; ++i) AddSample(record, 50, i, kSpan);
    ChartLook look{Plain(260, 120, Qt::black), 0x00FF00, 0x0000FF, 0, kSpan};
    const QColor trace(0, 255, 0);
    for (const double scale : {1.0, 2.0}) {
        const auto x = [scale](int design) { return int(design * scale) + 1; };
        for (const int mode : {0, 1, 2, 77}) {
            look.Mode = mode;
            const QImage image = Painted(record, look, scale);
            // 130 of 518 columns: a quarter of the width, at half height.
            EXPECT_EQ(Count(image, x(70), trace), 0) << mode;
            int bright = 0;
            int below = 0;
            for (int row = 0; row < image.height(); ++row) {
                const QColor pixel = image.pixelColor(x(240), row);
                bright += pixel.green() > 120;
                below += row > image.height() * 6 / 10 && pixel.green() > 60 && pixel.red() == 0;
            }
            EXPECT_GE(bright, 1) << mode;
            EXPECT_LE(bright, 3 * scale) << mode;
            EXPECT_EQ(below > 5, mode == 1) << mode;
        }
    }
}

TEST(ChartPaint, DrawsGridAndTextsInTheirColours) {
    ChartRecord record;
    ChartLook look{Plain(260, 120, Qt::black), 0x00FF00, 0x0000FF, 0, 30};
    const QImage empty = Painted(record, look);
    EXPECT_GT(Count(empty, 4, QColor(255, 0, 0)), 70) << "the grid's left edge";
    AddSample(record, 5, 1, 30);
    const QImage started = Painted(record, look);
    EXPECT_NE(empty.copy(0, 0, 100, 12), started.copy(0, 0, 100, 12)) << "the scale's upper label";
    EXPECT_EQ(empty.copy(100, 108, 60, 12), started.copy(100, 108, 60, 12));
    look.Time = 90;
    EXPECT_NE(empty.copy(100, 108, 60, 12), Painted(record, look).copy(100, 108, 60, 12))
        << "the time span";
}

TEST(ChartPaint, LargeTextsLeaveALowChartItsHeight) {
    ChartLook look{Plain(260, 60, Qt::black), 0x00FF00, 0x0000FF, 0, 30};
    const auto grid = [&look](int x) { return Count(Painted({}, look), x, QColor(255, 0, 0)); };
    EXPECT_LT(grid(255), 40) << "strips above and below";
    look.FontSize = 14;
    EXPECT_GT(grid(255), 55) << "a column beside the plot";
    EXPECT_EQ(grid(4), 0);
}

}  // namespace
}  // namespace dravik
