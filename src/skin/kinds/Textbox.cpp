#include "controls/SkinTextbox.h"
#include "core/basGlobal.h"
#include "platform/Text.h"
#include "skin/kinds/KindParts.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"FontSize", Integer, &E::FontSize, "16", "size in points"},
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "380", "top edge"},
    {"Width", Integer, &E::Width, "300", "width"},
    {"Height", Integer, &E::Height, "40", "height"},
    {"Alignment", Integer, &E::Alignment, "0", "0 left, 1 right, 2 centre"},
    {"FontColor", Lenient, &E::FontColor, "&HFFFFFF", "text colour"},
    {"BackColor", Lenient, &E::BackColor, "&H202020", "background colour"},
    {"Font", Read::Font, &E::Font, "DejaVu Sans", "font"},
};

/// A text box keeps its text by function, so that it is there again when its page is.
void Connect(SkinScreen&, SkinTextbox& field, int) {
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&field] {
        basGlobal.EditedTexts[LowerCased(field.Function)] = field.Text();
    });
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    auto& field = UseControl<SkinTextbox>(screen, element, index, Connect);
    field.SetBox(element.X, element.Y, element.Width, element.Height);
    field.SetLook({element.Font, static_cast<double>(element.FontSize), element.FontColor,
                   element.Alignment, false, false},
                  element.BackColor);
    const std::string text = basGlobal.EditedTexts[element.Evaluated];
    field.Function = element.Function;
    field.SetText(text);
    field.show();
    return std::nullopt;
}

std::string Shown(const ScreenElement& element) {
    return ControlOf<SkinTextbox>(element).Text();
}

}  // namespace

extern constinit const SkinKind kTextboxKind{
    .Word = "Textbox",
    .Meaning = "a text to edit",
    .Keys = kKeys,
    .Role = &kTextboxRole,
    .FunctionSample = "searchstring",
    .Depth = 80,
    .Turn = 90,
    .Selectable = true,
    .Build = Build,
    .Shown = Shown,
    .Check = CheckSize,
};

}  // namespace dravik
