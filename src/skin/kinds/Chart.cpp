#include "controls/ChartTrace.h"
#include "core/basGlobal.h"
#include "platform/At.h"
#include "skin/kinds/KindParts.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "40", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Time", Integer, &E::Time, "60", "seconds across the chart; 0: 60"},
    {"Color", Lenient, &E::Color, "&H00FF00", "colour of trace and texts"},
    {"Mode", Lenient, &E::Mode, "0", "0 line, 1 filled area, 2 points"},
    {"GridColor", Lenient, &E::GridColor, "&H808080", "colour of the grid lines"},
    {"Background", Picture, &E::Background, "chart.png",
     "picture behind the trace; the chart takes its size, 518 by 200 without one"},
    {"FontSize", Integer, &E::FontSize, "14", "size of the scale's texts in points; 0: 11"},
    {"Font", Read::Font, &E::Font, "DejaVu Sans", "font of the scale's texts"},
    {"Known", Lenient, &E::Known, "1", "1: a gap in the trace while its value is not known"},
};

class Trace : public PaintedItem {
 public:
    Trace(const ChartLook& look, const ChartRecord& record) : look_(look), record_(record) {}

    void Paint(QPainter& painter) const override {
        PaintChart(painter, Place(), record_, look_, Box.Scale);
    }
    void SetScale(double scale) override {
        PaintedItem::SetScale(scale);
        look_.Background = look_.Background.AtScale(scale);
    }

 private:
    ChartLook look_;
    const ChartRecord& record_;
};

ChartRecord& RecordOf(int index) {
    return At(basGlobal.Charts, index);
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    PictureReader pictures(screen, element);
    ChartLook look;
    look.Background = pictures.Load("Background", element.Background);
    if (pictures.Error()) return pictures.Error();
    look.Color = element.Color;
    look.GridColor = element.GridColor;
    look.Mode = element.Mode;
    look.Time = element.Time;
    look.Font = element.Font;
    look.FontSize = element.FontSize;
    const QSizeF size = ChartSize(look);
    auto item = std::make_unique<Trace>(look, RecordOf(index));
    item->Box = {static_cast<double>(element.X), static_cast<double>(element.Y), size.width(),
                 size.height()};
    AddItem(screen, element, std::move(item));
    basGlobal.ChartCount = index + 1;
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int index) {
    const bool unknown = ValueUnknown(element);
    const std::optional<float> value = unknown ? std::nullopt : ShowValue(element);
    ChartRecord& record = RecordOf(index);
    if (record.Paused || (!value && !unknown)) return;
    const std::int64_t column = record.Column;
    const int filled = record.Filled;
    if (unknown)
        AddGap(record, HighResTimer(), element.Time);
    else
        AddSample(record, *value, HighResTimer(), element.Time);
    // A value within the newest column is seen when the column is complete.
    if (record.Column != column || record.Filled != filled) element.Item->Repaint();
}

}  // namespace

extern constinit const SkinKind kChartKind{
    .Word = "Chart",
    .Meaning = "a value over time",
    .Keys = kKeys,
    .Role = &kValueRole,
    .FunctionSample = "sensor_speed",
    .Limit = kChartLimit,
    .Depth = 40,
    .Turn = 30,
    .Build = Build,
    .Refresh = Refresh,
};

}  // namespace dravik
