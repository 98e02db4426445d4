#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <cmath>

#include "controls/ButtonEx.h"
#include "controls/ChartTrace.h"
#include "controls/GaugeNeedle.h"
#include "controls/Slider.h"

using namespace dravik;

namespace {

SkinPicture Filled(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return MakeSkinPicture(image, 1);
}

/// What a paint costs, without the window system.
template <typename Widget>
void RenderAll(benchmark::State& state, Widget& widget) {
    QImage target(widget.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) widget.render(&target, QPoint(), QRegion(), QWidget::DrawChildren);
}

void PaintButton(benchmark::State& state) {
    ButtonEx button;
    button.SetSkinUp(Filled(120, 60, QColor(40, 50, 60, 200)));
    button.SetImage(Filled(16, 16, Qt::green));
    button.SetLabelX(30);
    button.SetLabelY(20);
    button.SetLabelFontSize(12);
    button.SetLabelCaption("Caption");
    RenderAll(state, button);
}
BENCHMARK(PaintButton);

void PaintSlider(benchmark::State& state) {
    Slider slider;
    slider.SetMax(100);
    slider.SetPictureBack(Filled(300, 24, Qt::black));
    slider.SetPictureProgress(Filled(300, 24, Qt::red));
    slider.SetBar(Filled(20, 24, QColor(255, 255, 255, 200)));
    slider.SetValue(60);
    RenderAll(state, slider);
}
BENCHMARK(PaintSlider);

void SetUnchangedSliderValue(benchmark::State& state) {
    Slider slider;
    slider.SetDirection(0);
    slider.SetMax(100);
    slider.SetPictureBack(Filled(24, 300, Qt::black));
    for (auto _ : state) slider.SetValue(60);
}
BENCHMARK(SetUnchangedSliderValue);

void PaintGaugeNeedle(benchmark::State& state) {
    QImage target(400, 400, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&target);
    const NeedleDial dial{200, 200, 0, 100, 45, 315, 20, 180, 100};
    float value = 0;
    for (auto _ : state) {
        value = value < 100 ? value + 0.37F : 0;
        if (const auto line = NeedleGeometry(dial, value))
            PaintNeedle(painter, *line, {4, 255, 0}, 1);
    }
}
BENCHMARK(PaintGaugeNeedle);

ChartRecord FullChart() {
    ChartRecord record;
    for (int i = 0; i < 700; ++i) {
        const double wave = 2200 + 1400 * std::sin(i * 0.07) + 300 * std::sin(i * 0.5);
        AddSample(record, static_cast<float>(wave), i * 0.1, 60);
    }
    return record;
}

/// All seven charts of a page, each 255 by 150; the argument is the mode.
void PaintSevenCharts(benchmark::State& state) {
    QImage target(1024, 600, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&target);
    const ChartRecord record = FullChart();
    const ChartLook look{Filled(255, 150, Qt::black), 0x60FF60, 0x405040,
                         static_cast<std::int32_t>(state.range(0)), 60};
    for (auto _ : state) {
        for (int i = 0; i < kChartLimit; ++i)
            PaintChart(painter, QRect(i % 4 * 256, i / 4 * 160, 255, 150), record, look, 1);
    }
}
BENCHMARK(PaintSevenCharts)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

void AddChartSample(benchmark::State& state) {
    ChartRecord record = FullChart();
    double now = 70;
    for (auto _ : state) {
        now += 0.1;
        AddSample(record, static_cast<float>(std::fmod(now, 7.0)), now, 60);
    }
}
BENCHMARK(AddChartSample);

}  // namespace
