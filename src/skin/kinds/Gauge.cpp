#include <algorithm>
#include "controls/GaugeNeedle.h"
#include "core/basGlobal.h"
#include "skin/kinds/KindParts.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "200", "centre of the needle's rotation"},
    {"Y", Integer, &E::Y, "200", "centre of the needle's rotation"},
    {"Width", Integer, &E::Width, "5", "line width"},
    {"Style", Integer, &E::Style, "0", "0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot"},
    {"Min", Integer, &E::Min, "0", "value at AngleStart"},
    {"Max", Integer, &E::Max, "8000", "value at AngleEnd"},
    {"AngleStart", Integer, &E::AngleStart, "60", "degrees from straight down, clockwise"},
    {"AngleEnd", Integer, &E::AngleEnd, "300", "degrees from straight down, clockwise"},
    {"RadiusStart", Integer, &E::RadiusStart, "20", "where the needle starts, from the centre"},
    {"RadiusEnd", Integer, &E::RadiusEnd, "130", "where the needle ends, from the centre"},
    {"StretchY", Integer, &E::StretchY, "100", "percent; 100 is a round dial, less a flat one"},
    {"Color", Strict, &E::Color, "&H0000FF", "needle colour"},
    {"Known", Lenient, &E::Known, "1", "1: no needle while its value is not known"},
};

class Needle : public PaintedItem {
 public:
    explicit Needle(const SkinElement& element)
        : dial_{element.X,           element.Y,          element.Min,
                element.Max,         element.AngleStart, element.AngleEnd,
                element.RadiusStart, element.RadiusEnd,  element.StretchY},
          look_{element.Width, element.Color, element.Style} {
        // The square that the needle sweeps.
        const double radius = std::max(element.RadiusStart, element.RadiusEnd);
        Box = {element.X - radius, element.Y - radius, 2 * radius, 2 * radius};
    }

    QRect Covers() const override {
        return line_ ? NeedleBounds(*line_, look_, Box.Scale) : QRect();
    }
    void Paint(QPainter& painter) const override { PaintNeedle(painter, *line_, look_, Box.Scale); }

    void Hide() {
        if (!line_) return;
        Repaint();
        line_.reset();
    }

    void PointTo(float value) {
        const std::optional<NeedleLine> line = NeedleGeometry(dial_, value);
        if (!line || line == line_) return;
        Repaint();
        line_ = line;
        Repaint();
    }

 private:
    NeedleDial dial_;
    NeedleLook look_;
    std::optional<NeedleLine> line_;  ///< nothing until it has its first value
};

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int) {
    AddItem(screen, element, std::make_unique<Needle>(element));
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int) {
    if (ValueUnknown(element))
        ItemOf<Needle>(element).Hide();
    else if (const std::optional<float> value = ShowValue(element))
        ItemOf<Needle>(element).PointTo(*value);
}

void Check(const SkinElement& element, const Complain& complain) {
    if (element.Min == element.Max) complain("Max", "equal to Min, so the needle never moves");
    if (element.RadiusStart == element.RadiusEnd)
        complain("RadiusEnd", "equal to RadiusStart, so the needle has no length");
    if (element.StretchY == 0) complain("StretchY", "0 is a flat dial; 100 is a round one");
}

}  // namespace

extern constinit const SkinKind kGaugeKind{
    .Word = "Gauge",
    .Meaning = "a value as a needle",
    .Keys = kKeys,
    .Role = &kValueRole,
    .FunctionSample = "sensor_rpm.engine",
    .Limit = kGaugeLimit,
    .Centred = true,
    .Depth = 20,
    .Turn = 60,
    .Build = Build,
    .Refresh = Refresh,
    .Check = Check,
};

}  // namespace dravik
