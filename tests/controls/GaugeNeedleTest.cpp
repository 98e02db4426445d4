#include "controls/GaugeNeedle.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <limits>

namespace dravik {
namespace {

constexpr NeedleDial kDial{100, 100, 0, 100, 45, 315, 10, 50, 100};

TEST(GaugeNeedle, GrowingAnglesTurnFromDownClockwise) {
    const struct {
        int Angle;
        float Value;
        double X, Y;
    } rows[] = {{0, 0, 100, 150},   {90, 0, 50, 100},   {180, 0, 100, 50},
                {270, 0, 150, 100}, {-90, 0, 150, 100}, {45, -50.0F / 3, 100, 150}};
    for (const auto& row : rows) {
        NeedleDial dial = kDial;
        dial.AngleStart = row.Angle;
        const auto line = NeedleGeometry(dial, row.Value);
        ASSERT_TRUE(line);
        EXPECT_NEAR(line->X2, row.X, 0.05) << row.Angle;
        EXPECT_NEAR(line->Y2, row.Y, 0.05) << row.Angle;
        EXPECT_NEAR(line->X1, 100 + (row.X - 100) / 5, 0.05) << row.Angle;
        EXPECT_NEAR(line->Y1, 100 + (row.Y - 100) / 5, 0.05) << row.Angle;
    }
}

TEST(GaugeNeedle, MiddleOfTheRangePointsUpWithTheDialsOwnRadian) {
    const auto line = NeedleGeometry(kDial, 50);
    ASSERT_TRUE(line);
    EXPECT_DOUBLE_EQ(line->X2, 100 - std::sin(180 / 57.3) * 50);
    EXPECT_DOUBLE_EQ(line->Y2, 100 + std::cos(180 / 57.3) * 50);
    NeedleDial flattened = kDial;
    flattened.StretchY = 40;
    EXPECT_NEAR(NeedleGeometry(flattened, 50)->Y2, 80, 0.01);
}

TEST(GaugeNeedle, ThereIsNoNeedleWithoutARangeOrANumber) {
    NeedleDial flat = kDial;
    flat.Max = flat.Min;
    EXPECT_FALSE(NeedleGeometry(flat, 1));
    EXPECT_FALSE(NeedleGeometry(kDial, std::nanf("")));
    EXPECT_FALSE(NeedleGeometry(kDial, std::numeric_limits<float>::infinity()));
    EXPECT_FALSE(NeedleGeometry({0, 0, 0, 1, 0, 2'000'000'000, 0, 1, 100}, 3e38F * 10));
}

TEST(GaugeNeedle, ANeedleAlongThePixelsIsAsWideAsItSays) {
    for (const int width : {1, 2, 3, 4}) {
        for (const bool upright : {true, false}) {
            QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            const NeedleLine line =
                upright ? NeedleLine{32, 10, 32, 50} : NeedleLine{10, 32, 50, 32};
            PaintNeedle(painter, line, {width, 0x0000FF, 0}, 1);
            int full = 0;
            int touched = 0;
            for (int i = 0; i < 64; ++i) {
                const int alpha = image.pixelColor(upright ? i : 30, upright ? 30 : i).alpha();
                full += alpha == 255;
                touched += alpha > 0;
            }
            EXPECT_EQ(full, width);
            EXPECT_EQ(touched, width);
        }
    }
}

TEST(GaugeNeedle, PaintsItsColourAndNothingOutsideItsBounds) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const int width : {0, 1, 7}) {
            for (const int style : {0, 1, 2, 3, 4, 9}) {
                for (const float value : {0.0F, 16.7F, 50.0F, 83.0F}) {
                    const auto line = NeedleGeometry(kDial, value);
                    ASSERT_TRUE(line);
                    const NeedleLook look{width, 0x0000FF, style};
                    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
                    image.fill(Qt::transparent);
                    QPainter painter(&image);
                    PaintNeedle(painter, *line, look, scale);
                    const QRect bounds = NeedleBounds(*line, look, scale);
                    int inside = 0;
                    int outside = 0;
                    for (int y = 0; y < image.height(); ++y) {
                        for (int x = 0; x < image.width(); ++x) {
                            if (image.pixelColor(x, y).alpha() == 0) continue;
                            EXPECT_GE(image.pixelColor(x, y).red(), 250);
                            ++(bounds.contains(x, y) ? inside : outside);
                        }
                    }
                    EXPECT_GT(inside, 10) << style;
                    EXPECT_EQ(outside, 0) << scale << " " << width << " " << style << " " << value;
                }
            }
        }
    }
}

}  // namespace
}  // namespace dravik
