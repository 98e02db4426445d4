#include "skin/SkinScreen.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "controls/ButtonEx.h"
#include "controls/SkinList.h"
#include "controls/SkinTextbox.h"
#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "skin/PageCanvas.h"
#include "skin/PageControl.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// A page outside these sizes is a mistake in the skin, not a screen.
constexpr int kSmallestDesign = 64;
constexpr int kLargestDesign = 16384;

template <typename T>
int IndexOf(const std::vector<T*>& array, const QWidget* control) {
    const auto found = std::find(array.begin(), array.end(), control);
    return found == array.end() ? -1 : static_cast<int>(found - array.begin());
}

template <typename T>
void HideFrom(const std::vector<T*>& array, int first) {
    for (std::size_t i = static_cast<std::size_t>(first); i < array.size(); ++i) array[i]->hide();
}

template <typename T>
void ScaleAll(const std::vector<T*>& array, double scale) {
    for (T* control : array) control->SetScale(scale);
}

}  // namespace

SkinScreen::SkinScreen(QWidget* window)
    : window_(window),
      page_(new PageCanvas(window)),
      shield_(new PageCanvas(window)),
      popUp_(new PageCanvas(shield_)) {
    Events.ButtonClicked = Events.ButtonPressed = Events.ButtonReleased = Events.ButtonEntered =
        Events.ListActivated = [](int) {};
    Events.SliderChanged = [](int, std::int32_t&) {};
    Events.PageBuilt = Events.PressesDropped = [] {};
    shield_->hide();
    shield_->setFocusPolicy(Qt::NoFocus);
    shield_->BackgroundClicked = popUp_->BackgroundClicked = [this](bool beside) {
        if (beside && !BoxHasWayOut()) CloseBox();
    };
}

SkinScreen::~SkinScreen() = default;

bool SkinScreen::BoxShown() const {
    return !shield_->isHidden();
}

void SkinScreen::ShowBox(bool shown) {
    DropPresses();
    shield_->setVisible(shown);
}

void SkinScreen::DropPresses() {
    for (ButtonEx* button : Button) button->DropPress();
    for (Slider* slider : SliderArray) slider->DropPress();
    for (SkinList* list : List) list->DropPress();
    page_->DropPress();
    shield_->DropPress();
    popUp_->DropPress();
    Events.PressesDropped();
}

bool SkinScreen::BoxHasWayOut() const {
    const auto& elements = elements_[static_cast<std::size_t>(ElementKind::Button)];
    for (std::size_t i = 0; i < elements.size(); ++i) {
        // A button without a picture or off the page cannot be touched.
        const QRect place = Button[i]->geometry().translated(popUp_->pos());
        if (elements[i].InBox && LeavesBox(elements[i].Function) &&
            place.intersects(shield_->rect()))
            return true;
    }
    return false;
}

void SkinScreen::ReadDesignSize() {
    const QSize stated(ReadSkinInteger("General", "Width"), ReadSkinInteger("General", "Height"));
    const bool usable = std::min(stated.width(), stated.height()) >= kSmallestDesign &&
                        std::max(stated.width(), stated.height()) <= kLargestDesign;
    designSize_ = usable ? stated : QSize();
    Layout(windowSize_);
}

void SkinScreen::Layout(QSize window) {
    windowSize_ = window;
    double scale = 1;
    if (basGlobal.ImageScale > 0) {
        scale = static_cast<double>(basGlobal.ImageScale);
    } else if (!designSize_.isEmpty() && !window.isEmpty()) {
        scale = std::min(window.width() / static_cast<double>(designSize_.width()),
                         window.height() / static_cast<double>(designSize_.height()));
    }
    const double density = window_->devicePixelRatioF();
    if (scale != scale_ || density != density_) {
        scale_ = scale;
        density_ = density;
        SetPictureDensity(density);
        page_->SetScale(scale);
        popUp_->SetScale(scale);
        ScaleAll(Button, scale);
        ScaleAll(SliderArray, scale);
        ScaleAll(Bargraph, scale);
        ScaleAll(List, scale);
        ScaleAll(Textbox, scale);
    }
    Place();
}

void SkinScreen::Place() {
    QRect area(QPoint(0, 0), windowSize_);
    if (!designSize_.isEmpty()) {
        const QSize size = (QSizeF(designSize_) * scale_).toSize();
        const QPoint corner((windowSize_.width() - size.width()) / 2,
                            (windowSize_.height() - size.height()) / 2);
        area = QRect(corner, size);
    }
    page_->setGeometry(area);
    shield_->setGeometry(area);
    const DesignBox corner{static_cast<double>(boxX_), static_cast<double>(boxY_), 0, 0, scale_};
    const QPoint boxCorner = corner.Pixels().topLeft();
    popUp_->setGeometry(QRect(boxCorner, area.size()));
    page_->SetExtent(area.size());
    popUp_->SetExtent(area.size() - QSize(boxCorner.x(), boxCorner.y()));
}

void SkinScreen::BeginPage() {
    DropPresses();
    for (auto& elements : elements_) elements.clear();
    basGlobal.ButtonTag.clear();
    basGlobal.SliderTag.clear();
    basGlobal.ChartCount = 0;
    basGlobal.Charts = {};
    basGlobal.CurrentList = -1;
    Highlight = -1;
    HasDvdButton = false;
    HasMediaTagLabel = false;
    page_->Clear();
    popUp_->Clear();
}

void SkinScreen::BeginBox(int x, int y) {
    boxX_ = x;
    boxY_ = y;
    Place();
}

QWidget* SkinScreen::Control(ElementKind kind, int index) const {
    const auto member = [index](const auto& array) -> QWidget* {
        return index >= 0 && index < static_cast<int>(array.size())
                   ? array[static_cast<std::size_t>(index)]
                   : nullptr;
    };
    switch (kind) {
        case ElementKind::Button:
            return member(Button);
        case ElementKind::Slider:
            return member(SliderArray);
        case ElementKind::Bargraph:
            return member(Bargraph);
        case ElementKind::List:
            return member(List);
        case ElementKind::Textbox:
            return member(Textbox);
        default:
            return nullptr;
    }
}

PageCanvas* SkinScreen::ContainerOf(const SkinElement& element) const {
    return element.InBox ? popUp_ : page_;
}

int SkinScreen::ButtonIndex(const QWidget* control) const {
    return IndexOf(Button, control);
}

int SkinScreen::SliderIndex(const QWidget* control) const {
    return IndexOf(SliderArray, control);
}

void SkinScreen::HideSurplus() {
    HideFrom(Button, Count(ElementKind::Button));
    HideFrom(SliderArray, Count(ElementKind::Slider));
    HideFrom(Bargraph, Count(ElementKind::Bargraph));
    HideFrom(List, Count(ElementKind::List));
    HideFrom(Textbox, Count(ElementKind::Textbox));
}

void SkinScreen::StackControls() {
    constexpr ElementKind kBackToFront[] = {ElementKind::Bargraph, ElementKind::Slider,
                                            ElementKind::Button, ElementKind::Textbox,
                                            ElementKind::List};
    for (const ElementKind kind : kBackToFront) {
        for (int i = 0; i < Count(kind); ++i) Control(kind, i)->raise();
    }
}

void SkinScreen::ApplyTabOrder() {
    struct Stop {
        int Tabindex;
        QWidget* Control;
    };
    std::vector<Stop> stops;
    for (const ElementKind kind :
         {ElementKind::Button, ElementKind::Slider, ElementKind::List, ElementKind::Textbox}) {
        for (int i = 0; i < Count(kind); ++i)
            stops.push_back(
                {Elements(kind)[static_cast<std::size_t>(i)].Tabindex, Control(kind, i)});
    }
    std::stable_sort(stops.begin(), stops.end(),
                     [](const Stop& a, const Stop& b) { return a.Tabindex < b.Tabindex; });
    for (std::size_t i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1].Control, stops[i].Control);
}

void SkinScreen::SetInitialFocus() {
    PageCanvas* container = BoxShown() ? popUp_ : page_;
    for (int i = 0; i < Count(ElementKind::Textbox); ++i) {
        SkinTextbox* field = Textbox[static_cast<std::size_t>(i)];
        if (!field->isHidden() && field->parentWidget() == container) {
            field->setFocus();
            return;
        }
    }
    container->setFocus();
}

}  // namespace dravik
