#include <algorithm>
#include "controls/SkinText.h"
#include "core/basGlobal.h"
#include "platform/Number.h"
#include "platform/Text.h"
#include "skin/ProgramTitle.h"
#include "skin/kinds/KindParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"FontSize", Integer, &E::FontSize, "16", "size in points"},
    {"X", Integer, &E::X, "100", "left edge"},
    {"Y", Integer, &E::Y, "220", "top edge"},
    {"Width", Integer, &E::Width, "200", "width; 0: to the edge of the page"},
    {"Height", Integer, &E::Height, "40", "height; 0: to the edge of the page"},
    {"Alignment", Integer, &E::Alignment, "2", "0 left, 1 right, 2 centre"},
    {"Color", Strict, &E::Color, "&HFFFFFF", "text colour"},
    {"Caption", Text, &E::Caption, "Engine speed", "fixed text, with `Function=text`"},
    {"Font", Read::Font, &E::Font, "DejaVu Sans", "font"},
    {"FontStyle", Text, &E::FontStyle, "Bold", "Bold, Italic or BoldItalic, else regular"},
    {"Lines", Lenient, &E::Lines, "1",
     "wraps the text at words into at most so many lines; without it, only its own line breaks "
     "count"},
    {"Decimals", Text, &E::Decimals, "1",
     "0 to 6: what a number is rounded to; `sensor`: to what the sensor's value is worth; without "
     "it, up to seven digits: `38.03922`"},
};

class TextItem : public PaintedItem {
 public:
    explicit TextItem(const SkinElement& element)
        : look_{element.Font,  static_cast<double>(element.FontSize),
                element.Color, element.Alignment,
                false,         false},
          lines_(element.Lines),
          toRight_(element.Width <= 0),
          toBottom_(element.Height <= 0) {
        SetFontStyle(look_, element.FontStyle);
        Box = {static_cast<double>(element.X), static_cast<double>(element.Y),
               static_cast<double>(element.Width), static_cast<double>(element.Height)};
    }

    /// A width or height of 0 reaches to the edge of the page. A text that is aligned to the right
    /// or centred needs the true edge, not just one far away.
    void FitInto(const QSizeF& page) override {
        if (toRight_) Box.Width = std::max(page.width() - Box.X, 0.0);
        if (toBottom_) Box.Height = std::max(page.height() - Box.Y, 0.0);
        wrapped_.clear();
    }
    void SetScale(double scale) override {
        PaintedItem::SetScale(scale);
        wrapped_.clear();
    }
    bool TakesPlace() const override { return !toRight_ && !toBottom_; }

    void Paint(QPainter& painter) const override {
        if (text_.isEmpty()) return;
        if (lines_ > 0 && wrapped_.isEmpty())
            wrapped_ = WrapText(text_, Place().width(), lines_, SkinFont(look_, Box.Scale));
        PaintText(painter, Place(), lines_ > 0 ? wrapped_ : text_, look_, Box.Scale);
    }

    void SetText(const std::string& text) {
        QString shown = ShownText(text);
        if (shown == text_) return;
        text_ = std::move(shown);
        wrapped_.clear();
        Repaint();
    }

 private:
    TextLook look_;
    int lines_;  ///< that the text may be wrapped into, 0 = it is not wrapped
    bool toRight_;
    bool toBottom_;
    QString text_;
    mutable QString wrapped_;  ///< the text in its lines; empty until it is painted
};

/// What a label shows from the start, where that is fixed.
std::string FixedText(const SkinElement& element) {
    if (element.Function == kTitleWord) return ProgramTitle();
    if (!EqualsNoCase(element.Function, kTextWord)) return {};
    return element.Caption == kTitleWord ? ProgramTitle() : element.Caption;
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int) {
    element.Shown = FixedText(element);
    element.FixedText = !element.Shown.empty() || EqualsNoCase(element.Function, kTextWord);
    element.SensorPlaces = EqualsNoCase(element.Decimals, kSensorPlaces);
    if (!element.Decimals.empty())
        element.Places = static_cast<int>(
            std::clamp(LeadingNumber(element.Decimals), 0.0, static_cast<double>(kMostDecimals)));
    AddItem(screen, element, std::make_unique<TextItem>(element)).SetText(element.Shown);
    if (element.Function.starts_with(kMediaTagWord)) screen.HasMediaTagLabel = true;
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int) {
    if (element.FixedText) return;
    if (element.SensorPlaces) element.Places = SensorDecimals(element.Evaluated);
    if (ShowText(element, LabelText(element.Evaluated, element.Places)))
        ItemOf<TextItem>(element).SetText(element.Shown);
}

void Check(const SkinElement& element, const Complain& complain) {
    CheckFontStyle("FontStyle", element.FontStyle, complain);
    const bool fixed = EqualsNoCase(element.Function, kTextWord);
    if (!element.Caption.empty() && !fixed) complain("Caption", "is shown with Function=text only");
    if (element.Caption.empty() && fixed)
        complain("Caption", "is missing, so Function=text shows nothing");
    const bool own = element.Decimals.empty() || EqualsNoCase(element.Decimals, kSensorPlaces);
    const auto decimals = StrictNumber(element.Decimals);
    if (!own && (!decimals || *decimals < 0 || *decimals > kMostDecimals))
        complain("Decimals", "\"" + element.Decimals +
                                 "\" is neither `sensor` nor one of the numbers 0 to " +
                                 std::to_string(kMostDecimals));
}

TextPlace PlaceOfText(const SkinElement& element) {
    const bool fixed = EqualsNoCase(element.Function, kTextWord);
    TextLook style;
    SetFontStyle(style, element.FontStyle);
    return {.Key = fixed ? "Caption" : "Function",
            .Function = element.Function,
            .Caption = element.Caption,
            .Decimals = element.Decimals,
            .Font = element.Font,
            .Points = element.FontSize,
            .Bold = style.Bold,
            .Italic = style.Italic,
            .X = element.X,
            .Width = element.Width,
            .Lines = element.Lines};
}

}  // namespace

extern constinit const SkinKind kLabelKind{
    .Word = "Label",
    .Meaning = "a text",
    .Keys = kKeys,
    .Role = &kCaptionRole,
    .FunctionSample = "text",
    .Limit = kLabelLimit,
    .Depth = 30,
    .Turn = 20,
    .Build = Build,
    .Refresh = Refresh,
    .Check = Check,
    .Text = PlaceOfText,
};

}  // namespace dravik
