#include <QWidget>
#include <algorithm>
#include <utility>

#include "controls/ButtonEx.h"
#include "controls/SkinList.h"
#include "controls/SkinTextbox.h"
#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/ProgramTitle.h"
#include "skin/SkinScreen.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kSliderMax = 100;  // sliders show percent: a skin states no range for them

SkinError ElementError(const SkinElement& element, const char* key, std::string description) {
    return {basGlobal.SkinFile, element.Section,
            ElementKey(KindOf(element.Kind), element.Number, key), std::move(description)};
}

/// Loads the picture of a key; an empty name leaves it empty.
class PictureReader {
 public:
    PictureReader(const SkinElement& element, double scale) : element_(element), scale_(scale) {}

    SkinPicture Load(const char* key, const std::string& name) {
        SkinPicture picture = LoadSkinPicture(PicturePath(name), scale_);
        if (!picture.Error().empty() && !error_)
            error_ = ElementError(element_, key, picture.Error());
        return picture;
    }

    const std::optional<SkinError>& Error() const { return error_; }

 private:
    const SkinElement& element_;
    double scale_;
    std::optional<SkinError> error_;
};

/// What a label shows from the start, where that is fixed.
std::string FixedText(const SkinElement& element) {
    if (element.Function == kTitleWord) return ProgramTitle();
    if (!EqualsNoCase(element.Function, kTextWord)) return {};
    return element.Caption == kTitleWord ? ProgramTitle() : element.Caption;
}

TextLook ListLook(const SkinElement& element) {
    const bool both = element.FontStyle == "BoldItalic";
    return {element.Font,
            static_cast<double>(element.FontSize),
            element.FontColor,
            0,
            both || element.FontStyle == "Bold",
            both || element.FontStyle == "Italic"};
}

/// Whether an image's function (lower case) switches it: neither a fixed picture nor the highlight.
bool HasState(const std::string& function) {
    const auto words = ImageFunctionWords();
    return function != kHighlightWord &&
           std::find(words.begin(), words.end(), SplitAtLast(function).Word) != words.end();
}

/// What the refresh needs to know of an element, worked out once.
void Prepare(ScreenElement& element) {
    element.Evaluated = LowerCased(element.Function);
    element.EvaluatedImage = LowerCased(element.ImageFunction);
    element.EvaluatedLabel = LowerCased(element.LabelFunction);
    element.HasState = element.Kind == ElementKind::Image && HasState(element.Evaluated);
    element.ShowsEntry = element.Kind == ElementKind::Image && element.Evaluated == kEntryWord;
    if (element.Kind == ElementKind::Label) {
        element.Shown = FixedText(element);
        element.FixedText = !element.Shown.empty() || EqualsNoCase(element.Function, kTextWord);
        if (!element.Decimals.empty())
            element.Places = static_cast<int>(std::clamp(LeadingNumber(element.Decimals), 0.0,
                                                         static_cast<double>(kMostDecimals)));
    } else if (element.Kind == ElementKind::Button) {
        element.FixedText = EqualsNoCase(element.LabelFunction, kTextWord);
    }
}

}  // namespace

QRectF ImageArea(const SkinElement& element, const SkinPicture& picture) {
    const QSizeF natural = picture.DesignSize();
    return {static_cast<double>(element.X), static_cast<double>(element.Y),
            element.Width > 0 ? element.Width : natural.width(),
            element.Height > 0 ? element.Height : natural.height()};
}

template <typename T>
T* SkinScreen::Member(std::vector<T*>& array, int index, const SkinElement& element) {
    PageCanvas* container = ContainerOf(element);
    while (static_cast<int>(array.size()) <= index) {
        T* created = new T(container);
        created->SetScale(scale_);
        created->hide();
        Connect(created, static_cast<int>(array.size()));
        array.push_back(created);
    }
    T* member = array[static_cast<std::size_t>(index)];
    if (member->parentWidget() != container) member->setParent(container);
    return member;
}

void SkinScreen::Connect(ButtonEx* button, int index) {
    button->Click = [this, index] { Events.ButtonClicked(index); };
    button->MouseDown = [this, index](int, int, int, int) { Events.ButtonPressed(index); };
    button->MouseUp = [this, index](int, int, int, int) { Events.ButtonReleased(index); };
    button->MouseEnter = [this, index] { Events.ButtonEntered(index); };
}

void SkinScreen::Connect(Slider* slider, int index) {
    slider->Change = [this, index](std::int32_t& value) { Events.SliderChanged(index, value); };
}

void SkinScreen::Connect(SkinList* list, int index) {
    list->Activated = [this, index](int) { Events.ListActivated(index); };
}

/// A text box keeps its text by function, so that it is there again when its page is.
void SkinScreen::Connect(SkinTextbox* field, int) {
    QObject::connect(field, &QLineEdit::textChanged, field, [field] {
        basGlobal.EditedTexts[LowerCased(field->Function)] = field->Text();
    });
}

std::optional<SkinError> SkinScreen::Build(SkinElement element) {
    using Builder = std::optional<SkinError> (SkinScreen::*)(const SkinElement&, int);
    // In the order of ElementKind.
    constexpr Builder kBuilders[kElementKinds] = {
        &SkinScreen::BuildButton,  &SkinScreen::BuildSlider, &SkinScreen::BuildBargraph,
        &SkinScreen::BuildGauge,   &SkinScreen::BuildList,   &SkinScreen::BuildLabel,
        &SkinScreen::BuildTextbox, &SkinScreen::BuildImage,  &SkinScreen::BuildChart,
    };
    const SkinKind& kind = KindOf(element.Kind);
    const int index = Count(element.Kind);
    if (index >= kind.Limit) {
        return ElementError(element, "Function",
                            "more than " + std::to_string(kind.Limit) + " elements of this kind");
    }
    const Builder build = kBuilders[static_cast<std::size_t>(element.Kind)];
    const auto error = (this->*build)(element, index);
    if (error) return error;

    ScreenElement built;
    static_cast<SkinElement&>(built) = std::move(element);
    Prepare(built);
    Elements(built.Kind).push_back(std::move(built));
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildButton(const SkinElement& element, int index) {
    ButtonEx* button = Member(Button, index, element);
    PictureReader pictures(element, scale_);
    button->MoveTo(element.X, element.Y);
    button->SetSkinDown({});
    button->SetSkinUp(pictures.Load("Up", element.Up));
    if (element.InBox) {
        button->SetSkinOver(pictures.Load("Over", element.Over));
        button->SetSkinDown(pictures.Load("Down", element.Down));
    }
    button->SetImage(pictures.Load("Image", element.Image));
    if (pictures.Error()) return pictures.Error();

    button->ImageFunction = element.ImageFunction;
    button->SetImageX(static_cast<std::int16_t>(element.ImageX));
    button->SetImageY(static_cast<std::int16_t>(element.ImageY));
    std::string imageFunction = element.ImageFunction;
    button->SetImageVisible(imageFunction.empty() || ImageState(imageFunction));

    button->LabelFunction = element.LabelFunction;
    button->SetLabelX(element.LabelX);
    button->SetLabelY(element.LabelY);
    button->SetLabelWidth(element.LabelWidth);
    button->SetLabelHeight(element.LabelHeight);
    button->SetLabelFontSize(element.LabelFontSize);
    button->SetLabelFont(element.LabelFont);
    button->SetLabelForecolor(std::to_string(element.LabelColor));
    button->SetLabelAlignment(element.LabelAlignment);
    const bool fixed = EqualsNoCase(element.LabelFunction, kTextWord);
    button->SetLabelCaption(fixed ? element.LabelCaption : std::string{});

    basGlobal.ButtonTag.push_back(element.Function);
    if (EqualsNoCase(element.Function, kDvdWord)) HasDvdButton = true;
    button->show();
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::FinishButton(const SkinElement& keys, int index) {
    if (index >= Count(ElementKind::Button)) return std::nullopt;
    ScreenElement& element = Elements(ElementKind::Button)[static_cast<std::size_t>(index)];
    // Where the load of the page ended early, a box's button may have that index.
    if (element.Section != keys.Section || element.Number != keys.Number) return std::nullopt;
    PictureReader pictures(keys, scale_);
    ButtonEx* button = Button[static_cast<std::size_t>(index)];
    element.Tabindex = keys.Tabindex;
    button->SetSkinOver(pictures.Load("Over", keys.Over));
    button->SetSkinDown(pictures.Load("Down", keys.Down));
    return pictures.Error();
}

std::optional<SkinError> SkinScreen::BuildSlider(const SkinElement& element, int index) {
    Slider* slider = Member(SliderArray, index, element);
    PictureReader pictures(element, scale_);
    slider->MoveTo(element.X, element.Y);
    slider->SetDirection(element.Direction);
    slider->SetPictureBack(pictures.Load("Background", element.Background));
    slider->SetPictureProgress(pictures.Load("Progress", element.Progress));
    slider->SetBar(pictures.Load("Bar", element.Bar));
    slider->SetBarOver(pictures.Load("BarOver", element.BarOver));
    slider->SetBarDown(pictures.Load("BarDown", element.BarDown));
    if (pictures.Error()) return pictures.Error();
    slider->StartAtMin(0, kSliderMax);
    basGlobal.SliderTag.push_back(element.Function);
    slider->show();
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildBargraph(const SkinElement& element, int index) {
    Slider* bar = Member(Bargraph, index, element);
    PictureReader pictures(element, scale_);
    bar->SetDisplayOnly(true);
    bar->MoveTo(element.X, element.Y);
    bar->SetDirection(element.Direction);
    bar->SetPictureBack(pictures.Load("Background", element.Background));
    bar->SetPictureProgress(pictures.Load("Progress", element.Progress));
    bar->SetBar(pictures.Load("Bar", element.Bar));
    if (pictures.Error()) return pictures.Error();
    bar->StartAtMin(element.Min, element.Max);
    bar->show();
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildGauge(const SkinElement& element, int index) {
    ContainerOf(element)->Add(PageCanvas::GaugeItem{
        index,
        {element.X, element.Y, element.Min, element.Max, element.AngleStart, element.AngleEnd,
         element.RadiusStart, element.RadiusEnd, element.StretchY},
        {element.Width, element.Color, element.Style},
        std::nullopt});
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildList(const SkinElement& element, int index) {
    SkinList* list = Member(List, index, element);
    list->SetBox(element.X, element.Y, element.Width, element.Height);
    list->SetLook(ListLook(element), element.BackColor);
    list->SetLeastRowHeight(element.RowHeight);
    list->SetPictureFolder(basGlobal.ImageFolder);
    const int slot = ListSlotByName(LowerCased(element.Function));
    list->SetListSlot(FindList(slot));
    basGlobal.CurrentList = slot;
    list->Refresh();
    list->show();
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildLabel(const SkinElement& element, int index) {
    ContainerOf(element)->Add(PageCanvas::LabelItem{
        index,
        {static_cast<double>(element.X), static_cast<double>(element.Y),
         static_cast<double>(element.Width), static_cast<double>(element.Height)},
        {element.Font, static_cast<double>(element.FontSize), element.Color, element.Alignment,
         false, false},
        ShownText(FixedText(element))});
    if (element.Function.starts_with(kMediaTagWord)) HasMediaTagLabel = true;
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildTextbox(const SkinElement& element, int index) {
    SkinTextbox* field = Member(Textbox, index, element);
    field->SetBox(element.X, element.Y, element.Width, element.Height);
    field->SetLook({element.Font, static_cast<double>(element.FontSize), element.FontColor,
                    element.Alignment, false, false},
                   element.BackColor);
    const std::string text = basGlobal.EditedTexts[LowerCased(element.Function)];
    field->Function = element.Function;
    field->SetText(text);
    field->show();
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildImage(const SkinElement& element, int index) {
    PictureReader pictures(element, scale_);
    const SkinPicture picture = pictures.Load("Picture", element.Picture);
    if (pictures.Error()) return pictures.Error();
    std::string function = LowerCased(element.Function);
    const bool highlight = function == kHighlightWord;
    if (highlight) Highlight = index;
    // A lamp that is off must not flash until the first refresh puts it out.
    const bool visible = !highlight && (!HasState(function) || ImageState(function));
    const QRectF area = ImageArea(element, picture);
    ContainerOf(element)->Add(PageCanvas::ImageItem{
        index, {area.x(), area.y(), area.width(), area.height()}, picture, visible});
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::BuildChart(const SkinElement& element, int index) {
    PictureReader pictures(element, scale_);
    ChartLook look;
    look.Background = pictures.Load("Background", element.Background);
    if (pictures.Error()) return pictures.Error();
    look.Color = element.Color;
    look.GridColor = element.GridColor;
    look.Mode = element.Mode;
    look.Time = element.Time;
    const QSizeF size = ChartSize(look);
    ContainerOf(element)->Add(
        PageCanvas::ChartItem{index,
                              {static_cast<double>(element.X), static_cast<double>(element.Y),
                               size.width(), size.height()},
                              look});
    basGlobal.ChartCount = index + 1;
    return std::nullopt;
}

}  // namespace dravik
