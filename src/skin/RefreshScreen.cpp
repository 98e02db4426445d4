#include <algorithm>
#include <utility>

#include "controls/ButtonEx.h"
#include "controls/ChartTrace.h"
#include "controls/SkinList.h"
#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// Takes over a new text; false when it is the one already shown.
bool Changed(ScreenElement& element, std::string text) {
    if (text == element.Shown) return false;
    element.Shown = std::move(text);
    return true;
}

void RefreshButton(SkinScreen& screen, ScreenElement& element, int index) {
    ButtonEx* button = screen.Button[static_cast<std::size_t>(index)];
    if (!element.EvaluatedImage.empty())
        button->SetImageVisible(ImageState(element.EvaluatedImage));
    if (element.FixedText || element.EvaluatedLabel.empty()) return;
    if (Changed(element, LabelText(element.EvaluatedLabel))) button->SetLabelCaption(element.Shown);
}

void RefreshLabel(SkinScreen& screen, ScreenElement& element, int index) {
    if (element.FixedText) return;
    if (Changed(element, LabelText(element.Evaluated, element.Places)))
        screen.ContainerOf(element)->SetLabelText(index, element.Shown);
}

/// The value of an element, unless it has none now; the element then keeps what it shows.
std::optional<float> TakeValue(ScreenElement& element) {
    const std::optional<float> value = ElementValue(element.Function);
    if (value) Changed(element, GeneralNumber(*value));
    return value;
}

void RefreshChart(SkinScreen& screen, ScreenElement& element, int index) {
    const std::optional<float> value = TakeValue(element);
    ChartRecord& record = basGlobal.Charts[static_cast<std::size_t>(index)];
    if (!value || record.Paused) return;
    const std::int64_t column = record.Column;
    const int filled = record.Filled;
    AddSample(record, *value, HighResTimer(), element.Time);
    // A value within the newest column is seen when the column is complete.
    if (record.Column != column || record.Filled != filled)
        screen.ContainerOf(element)->RedrawChart(index);
}

void RefreshSlider(SkinScreen& screen, ScreenElement& element, int index) {
    Slider* slider = screen.SliderArray[static_cast<std::size_t>(index)];
    const std::optional<float> value = TakeValue(element);
    if (value && !slider->HeldDown()) slider->SetNumber(static_cast<double>(*value));
}

void RefreshBargraph(SkinScreen& screen, ScreenElement& element, int index) {
    if (const std::optional<float> value = TakeValue(element))
        screen.Bargraph[static_cast<std::size_t>(index)]->SetNumber(static_cast<double>(*value));
}

void RefreshGauge(SkinScreen& screen, ScreenElement& element, int index) {
    if (const std::optional<float> value = TakeValue(element))
        screen.ContainerOf(element)->SetNeedle(index, *value);
}

/// The highlight lies over the selected button or slider and is hidden without one.
void RefreshHighlight(SkinScreen& screen, const ScreenElement& element, int index) {
    PageCanvas* container = screen.ContainerOf(element);
    const QWidget* selected = screen.Control(ElementKind::Button, basGlobal.FocusedButton);
    if (selected == nullptr)
        selected = screen.Control(ElementKind::Slider, basGlobal.FocusedSlider);
    container->SetImageVisible(index, selected != nullptr);
    if (selected == nullptr) return;
    const QPointF corner = selected->mapTo(container->window(), QPoint(0, 0)) -
                           container->mapTo(container->window(), QPoint(0, 0));
    container->MoveImage(
        index, QRectF(corner / screen.Scale(), QSizeF(selected->size()) / screen.Scale()));
}

/// The picture of the selected entry of the current list; the image's own where the skin has none.
void RefreshEntryImage(SkinScreen& screen, ScreenElement& element, int index) {
    const ListSlot* list = CurrentList();
    std::string key;
    if (list != nullptr && list->Selected > 0)
        key = list->Entries[static_cast<std::size_t>(list->Selected) - 1].Picture;
    if (element.EntryPicture == key) return;
    element.EntryPicture = key;

    std::string file = ListPictureFile(basGlobal.ImageFolder, key);
    if (file.empty()) file = PicturePath(element.Picture);
    const SkinPicture picture = LoadSkinPicture(file, screen.Scale());
    element.Shown = file.substr(std::min(basGlobal.ImageFolder.size(), file.size()));
    PageCanvas* container = screen.ContainerOf(element);
    container->SetImagePicture(index, picture);
    container->MoveImage(index, ImageArea(element, picture));
}

void RefreshImage(SkinScreen& screen, ScreenElement& element, int index) {
    if (index == screen.Highlight)
        RefreshHighlight(screen, element, index);
    else if (element.ShowsEntry)
        RefreshEntryImage(screen, element, index);
    else if (element.HasState)
        screen.ContainerOf(element)->SetImageVisible(index, ImageState(element.Evaluated));
}

void RefreshList(SkinScreen& screen, ScreenElement& element, int index) {
    screen.List[static_cast<std::size_t>(index)]->Refresh();
    const ListSlot* slot = FindList(ListSlotByName(element.Evaluated));
    if (slot != nullptr && slot->Selected > 0)
        Changed(element, slot->Entries[static_cast<std::size_t>(slot->Selected) - 1].Text);
}

struct KindRefresh {
    ElementKind Kind;
    void (*Refresh)(SkinScreen& screen, ScreenElement& element, int index);
};

// The order of one refresh. Text boxes belong to the user and are left alone.
constexpr KindRefresh kRefreshOrder[] = {
    {ElementKind::Button, RefreshButton},     {ElementKind::Label, RefreshLabel},
    {ElementKind::Chart, RefreshChart},       {ElementKind::Slider, RefreshSlider},
    {ElementKind::Bargraph, RefreshBargraph}, {ElementKind::Gauge, RefreshGauge},
    {ElementKind::Image, RefreshImage},       {ElementKind::List, RefreshList},
};

}  // namespace

void RefreshScreen(SkinScreen& screen) {
    for (const KindRefresh& row : kRefreshOrder) {
        std::vector<ScreenElement>& elements = screen.Elements(row.Kind);
        for (std::size_t i = 0; i < elements.size(); ++i)
            row.Refresh(screen, elements[i], static_cast<int>(i));
    }
}

}  // namespace dravik
