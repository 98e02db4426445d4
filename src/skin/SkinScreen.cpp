#include "skin/SkinScreen.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/SkinFile.h"
#include "skin/basSkin.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// A page outside these sizes is a mistake in the skin, not a screen.
constexpr int kSmallestDesign = 64;
constexpr int kLargestDesign = 16384;

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
    for (const SkinKind* kind : SkinKinds()) rooms_.push_back({kind, {}, {}});
}

SkinScreen::~SkinScreen() = default;

SkinScreen::Room& SkinScreen::RoomOf(const SkinKind& kind) {
    return const_cast<Room&>(std::as_const(*this).RoomOf(kind));
}

const SkinScreen::Room& SkinScreen::RoomOf(const SkinKind& kind) const {
    return *std::find_if(rooms_.begin(), rooms_.end(),
                         [&kind](const Room& room) { return room.Kind == &kind; });
}

bool SkinScreen::BoxShown() const {
    return !shield_->isHidden();
}

void SkinScreen::ShowBox(bool shown) {
    DropPresses();
    shield_->setVisible(shown);
}

void SkinScreen::DropPresses() {
    for (const Room& room : rooms_) {
        for (const MemberControl& control : room.Controls) {
            if (control.Calls.DropPress) control.Calls.DropPress();
        }
    }
    page_->DropPress();
    shield_->DropPress();
    popUp_->DropPress();
    Events.PressesDropped();
}

bool SkinScreen::BoxHasWayOut() const {
    const auto& buttons = Elements(kButtonKind);
    return std::any_of(buttons.begin(), buttons.end(), [this](const ScreenElement& button) {
        // A button without a picture, off the page or dimmed cannot be touched.
        if (button.Control->focusPolicy() == Qt::NoFocus) return false;
        const QRect place = button.Control->geometry().translated(popUp_->pos());
        return button.InBox && LeavesBox(button.Function) && place.intersects(shield_->rect());
    });
}

void SkinScreen::ReadDesignSize() {
    const SkinElement general = ReadSectionKeys("General", GeneralKeys());
    const QSize stated(general.Width, general.Height);
    const bool usable = std::min(stated.width(), stated.height()) >= kSmallestDesign &&
                        std::max(stated.width(), stated.height()) <= kLargestDesign;
    designSize_ = usable ? stated : QSize();
    Layout(windowSize_);
}

void SkinScreen::Layout(QSize window) {
    windowSize_ = window;
    double scale = 1;
    if (basGlobal.ImageScale > 0)
        scale = static_cast<double>(basGlobal.ImageScale);
    else if (!designSize_.isEmpty() && !window.isEmpty())
        scale = std::min(window.width() / static_cast<double>(designSize_.width()),
                         window.height() / static_cast<double>(designSize_.height()));
    const double density = window_->devicePixelRatioF();
    if (scale != scale_ || density != density_) {
        scale_ = scale;
        density_ = density;
        // They would stay alive beside those of the new scale. The next load counts anew.
        ForgetPictures();
        SetPictureDensity(density);
        page_->SetScale(scale);
        popUp_->SetScale(scale);
        for (const Room& room : rooms_) {
            for (const MemberControl& control : room.Controls) control.Calls.SetScale(scale);
        }
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
    for (Room& room : rooms_) room.Elements.clear();
    basGlobal.ButtonTag.clear();
    basGlobal.SliderTag.clear();
    basGlobal.ChartCount = 0;
    basGlobal.Charts = {};
    basGlobal.CurrentList = -1;
    Highlight = -1;
    HasDvdButton = false;
    HasMediaTagLabel = false;
    ForgetPictures();
    page_->Clear();
    popUp_->Clear();
}

void SkinScreen::ForgetPictures() {
    pictures_.clear();
    pictureBytes_ = 0;
}

bool SkinScreen::CountPicture(const SkinPicture& picture) {
    if (picture.IsNull() ||
        std::find(pictures_.begin(), pictures_.end(), picture) != pictures_.end())
        return true;
    if (pictureBytes_ + picture.Bytes() > PictureLimit) return false;
    pictureBytes_ += picture.Bytes();
    pictures_.push_back(picture);
    return true;
}

void SkinScreen::BeginBox(int x, int y) {
    boxX_ = x;
    boxY_ = y;
    Place();
}

std::optional<SkinError> SkinScreen::Build(SkinElement element) {
    Room& room = RoomOf(*element.Kind);
    const int index = static_cast<int>(room.Elements.size());
    if (index >= room.Kind->Limit)
        return ElementError(
            element, "Function",
            "more than " + std::to_string(room.Kind->Limit) + " elements of this kind");
    ScreenElement built;
    static_cast<SkinElement&>(built) = std::move(element);
    built.Evaluated = EvaluatedForm(built.Function);
    if (auto error = room.Kind->Build(*this, built, index)) return error;
    room.Elements.push_back(std::move(built));
    return std::nullopt;
}

std::optional<SkinError> SkinScreen::Finish(const SkinElement& keys, int index) {
    ScreenElement* element = FindAt(Elements(*keys.Kind), index);
    if (element == nullptr) return std::nullopt;
    // Where the load of the page ended early, an element of a box may have that index.
    if (element->Section != keys.Section || element->Number != keys.Number) return std::nullopt;
    return keys.Kind->Finish(*this, *element, keys);
}

QWidget* SkinScreen::Control(const SkinKind& kind, int index) const {
    const auto* control = FindAt(RoomOf(kind).Controls, index);
    return control == nullptr ? nullptr : control->Widget;
}

void SkinScreen::AddControl(const SkinKind& kind, QWidget* control, ControlCalls calls) {
    calls.SetScale(scale_);
    RoomOf(kind).Controls.push_back({control, std::move(calls)});
}

int SkinScreen::IndexOf(const SkinKind& kind, const QWidget* control) const {
    const auto& controls = RoomOf(kind).Controls;
    const auto found = std::find_if(controls.begin(), controls.end(), [control](const auto& other) {
        return other.Widget == control;
    });
    return found == controls.end() ? -1 : static_cast<int>(found - controls.begin());
}

std::vector<const ScreenElement*> SkinScreen::Selectable() const {
    std::vector<const ScreenElement*> elements;
    for (const Room& room : rooms_) {
        if (!room.Kind->Selectable) continue;
        for (const ScreenElement& element : room.Elements) elements.push_back(&element);
    }
    return elements;
}

PageCanvas* SkinScreen::ContainerOf(const SkinElement& element) const {
    return element.InBox ? popUp_ : page_;
}

void SkinScreen::HideSurplus() {
    for (const Room& room : rooms_) {
        for (std::size_t i = room.Elements.size(); i < room.Controls.size(); ++i)
            room.Controls[i].Widget->hide();
    }
}

void SkinScreen::StackControls() {
    std::vector<const ScreenElement*> stack;
    for (const Room& room : rooms_) {
        for (const ScreenElement& element : room.Elements) {
            if (element.Control != nullptr) stack.push_back(&element);
        }
    }
    std::stable_sort(stack.begin(), stack.end(),
                     [](const auto* a, const auto* b) { return a->Kind->Depth < b->Kind->Depth; });
    for (const ScreenElement* element : stack) element->Control->raise();
}

void SkinScreen::ApplyTabOrder() {
    std::vector<const ScreenElement*> stops = Selectable();
    std::stable_sort(stops.begin(), stops.end(),
                     [](const auto* a, const auto* b) { return a->Tabindex < b->Tabindex; });
    for (std::size_t i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1]->Control, stops[i]->Control);
}

void SkinScreen::SetInitialFocus() {
    PageCanvas* container = BoxShown() ? popUp_ : page_;
    for (const ScreenElement& element : Elements(kTextboxKind)) {
        QWidget* field = element.Control;
        if (!field->isHidden() && field->parentWidget() == container) {
            field->setFocus();
            return;
        }
    }
    container->setFocus();
}

}  // namespace dravik
