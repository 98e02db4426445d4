#include "controls/ButtonEx.h"
#include "core/basGlobal.h"
#include "platform/Text.h"
#include "skin/kinds/KindParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "300", "top edge"},
    {"Up", Picture, &E::Up, "key-up.png",
     "picture of the released state; the button takes its size"},
    {"Over", Picture, &E::Over, "key-over.png", "picture while the pointer is over the button",
     true},
    {"Down", Picture, &E::Down, "key-down.png", "picture while the button is pressed", true},
    {"Tabindex", Lenient, &E::Tabindex, "1", "place in the navigation order", true},
    {"Enabled", Text, &E::Enabled, "obd_connected",
     "when the button works; else it is dim and takes no press and no selection", false,
     &kStateRole},
    {"ImageFunction", Text, &E::ImageFunction, "sensoron_rpm.engine", "when `Image` is shown",
     false, &kStateRole},
    {"ImageX", Short, &E::ImageX, "8", "left edge of Image inside the button"},
    {"ImageY", Short, &E::ImageY, "18", "top edge of Image inside the button"},
    {"Image", Picture, &E::Image, "lamp.png", "picture drawn on the button"},
    {"LabelFunction", Text, &E::LabelFunction, "text",
     "what the caption shows; `text`: `LabelCaption`", false, &kCaptionRole},
    {"LabelCaption", Text, &E::LabelCaption, "Engine", "fixed caption, with `LabelFunction=text`"},
    {"LabelX", Lenient, &E::LabelX, "40", "left edge of the caption inside the button"},
    {"LabelY", Lenient, &E::LabelY, "18", "top edge of the caption inside the button"},
    {"LabelWidth", Lenient, &E::LabelWidth, "150", "width of the caption"},
    {"LabelHeight", Lenient, &E::LabelHeight, "30", "height of the caption"},
    {"LabelAlignment", Lenient, &E::LabelAlignment, "0", "0 left, 1 right, 2 centre"},
    {"LabelFontSize", Lenient, &E::LabelFontSize, "16", "size of the caption in points"},
    {"LabelFont", Font, &E::LabelFont, "DejaVu Sans", "font of the caption"},
    {"LabelFontStyle", Text, &E::LabelFontStyle, "Bold",
     "Bold, Italic or BoldItalic, else regular"},
    {"LabelColor", Lenient, &E::LabelColor, "&HFFFFFF", "colour of the caption"},
};

/// A press is told by index: the function text of a button is in ButtonTag.
void Connect(SkinScreen& screen, ButtonEx& button, int index) {
    const ScreenEvents& events = screen.Events;
    button.Click = [&events, index] { events.ButtonClicked(index); };
    button.MouseDown = [&events, index](int, int, int, int) { events.ButtonPressed(index); };
    button.MouseUp = [&events, index](int, int, int, int) { events.ButtonReleased(index); };
    button.MouseEnter = [&events, index] { events.ButtonEntered(index); };
}

/// A press that is still held, or its repeat, is not carried on by a button that no longer works.
void ShowWhetherItWorks(SkinScreen& screen, ScreenElement& element, ButtonEx& button) {
    const bool works = element.EvaluatedEnabled.empty() || ImageState(element.EvaluatedEnabled);
    if (works != button.Dimmed()) return;
    if (button.State() == ButtonState::Down) screen.Events.PressesDropped();
    button.SetDimmed(!works);
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    auto& button = UseControl<ButtonEx>(screen, element, index, Connect);
    PictureReader pictures(screen, element);
    button.MoveTo(element.X, element.Y);
    button.SetSkinDown({});
    button.SetSkinUp(pictures.Load("Up", element.Up));
    if (element.InBox) {
        button.SetSkinOver(pictures.Load("Over", element.Over));
        button.SetSkinDown(pictures.Load("Down", element.Down));
    }
    button.SetImage(pictures.Load("Image", element.Image));
    if (pictures.Error()) return pictures.Error();

    element.EvaluatedImage = LowerCased(element.ImageFunction);
    button.ImageFunction = element.ImageFunction;
    button.SetImageX(static_cast<std::int16_t>(element.ImageX));
    button.SetImageY(static_cast<std::int16_t>(element.ImageY));
    std::string imageFunction = element.ImageFunction;
    button.SetImageVisible(imageFunction.empty() || ImageState(imageFunction));

    element.EvaluatedLabel = EvaluatedForm(element.LabelFunction);
    element.FixedText = EqualsNoCase(element.LabelFunction, kTextWord);
    button.LabelFunction = element.LabelFunction;
    button.SetLabelX(element.LabelX);
    button.SetLabelY(element.LabelY);
    button.SetLabelWidth(element.LabelWidth);
    button.SetLabelHeight(element.LabelHeight);
    button.SetLabelFontSize(element.LabelFontSize);
    button.SetLabelFont(element.LabelFont);
    button.SetLabelForecolor(std::to_string(element.LabelColor));
    TextLook style;
    SetFontStyle(style, element.LabelFontStyle);
    button.SetLabelStyle(style.Bold, style.Italic);
    button.SetLabelAlignment(element.LabelAlignment);
    button.SetLabelCaption(element.FixedText ? element.LabelCaption : std::string{});

    element.EvaluatedEnabled = LowerCased(element.Enabled);
    ShowWhetherItWorks(screen, element, button);

    basGlobal.ButtonTag.push_back(element.Function);
    if (EqualsNoCase(element.Function, kDvdWord)) screen.HasDvdButton = true;
    button.show();
    return std::nullopt;
}

std::optional<SkinError> Finish(SkinScreen& screen, ScreenElement& element,
                                const SkinElement& keys) {
    PictureReader pictures(screen, keys);
    auto& button = ControlOf<ButtonEx>(element);
    element.Tabindex = keys.Tabindex;
    button.SetSkinOver(pictures.Load("Over", keys.Over));
    button.SetSkinDown(pictures.Load("Down", keys.Down));
    return pictures.Error();
}

void Refresh(SkinScreen& screen, ScreenElement& element, int) {
    auto& button = ControlOf<ButtonEx>(element);
    ShowWhetherItWorks(screen, element, button);
    if (!element.EvaluatedImage.empty()) button.SetImageVisible(ImageState(element.EvaluatedImage));
    if (element.FixedText || element.EvaluatedLabel.empty()) return;
    if (ShowText(element, LabelText(element.EvaluatedLabel))) button.SetLabelCaption(element.Shown);
}

std::string Shown(const ScreenElement& element) {
    if (ControlOf<ButtonEx>(element).Dimmed()) return "dim";
    switch (ControlOf<ButtonEx>(element).State()) {
        case ButtonState::Down:
            return "down";
        case ButtonState::Over:
            return "over";
        case ButtonState::Up:
            break;
    }
    return "up";
}

void Check(const SkinElement& element, const Complain& complain) {
    CheckFontStyle("LabelFontStyle", element.LabelFontStyle, complain);
    const bool fixed = EqualsNoCase(element.LabelFunction, kTextWord);
    if (element.Up.empty()) complain("Up", "without this picture the button has no size");
    if (!element.LabelCaption.empty() && !fixed)
        complain("LabelCaption", "is shown with LabelFunction=text only");
    if (element.LabelCaption.empty() && fixed)
        complain("LabelCaption", "is missing, so LabelFunction=text shows nothing");
    if (element.LabelFunction == kTitleWord)
        complain("LabelFunction", std::string(kTitleWord) + " works on a label only");
    if (!element.Down.empty() && element.Over.empty())
        complain("Over",
                 "without this picture the one of Down stays after a touch until the pointer "
                 "moves away");
}

TextPlace PlaceOfText(const SkinElement& element) {
    const bool fixed = EqualsNoCase(element.LabelFunction, kTextWord);
    TextLook style;
    SetFontStyle(style, element.LabelFontStyle);
    return {.Key = fixed ? "LabelCaption" : "LabelFunction",
            .Function = element.LabelFunction,
            .Caption = element.LabelCaption,
            .Decimals = {},
            .Font = element.LabelFont,
            .Points = element.LabelFontSize,
            .Bold = style.Bold,
            .Italic = style.Italic,
            .X = element.LabelX,
            .Width = element.LabelWidth,
            .InPicture = true};
}

}  // namespace

extern constinit const SkinKind kButtonKind{
    .Word = "Button",
    .Meaning = "a button that runs a command",
    .Keys = kKeys,
    .Role = &kCommandRole,
    .FunctionSample = "openmenu_mainmenu",
    .Depth = 70,
    .Turn = 10,
    .Selectable = true,
    .Build = Build,
    .Finish = Finish,
    .Refresh = Refresh,
    .Shown = Shown,
    .Check = Check,
    .Text = PlaceOfText,
};

}  // namespace dravik
